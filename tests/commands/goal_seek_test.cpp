// Embedded goal seeks against a host of four cells in which the target is a function of the changing cell.
#include "addin/cells.h"
#include "addin/routines/goal_seeks.h"
#include "addin/stub_host.h"
#include "commands/goal_seek.h"

#include <gtest/gtest.h>

#include <functional>
#include <map>

namespace qx::test {
namespace {

/// One column of numbers on a sheet with id 9; a row without an entry holds a string.
class ColumnHost : public Host {
  public:
    ColumnHost() : former_(set_host(this)) {}
    ~ColumnHost() override { set_host(former_); }

    std::map<int, double> cells;
    int uncalculated = -1; ///< row
    std::function<int(OPER*, double&, double)> seek = [](OPER*, double& target, double value) {
        target = value;
        return xlretSuccess;
    };
    std::vector<int> sought; ///< changing rows, in the order of the run
    bool break_pending = false, cancels = false;
    int alerts = 0;

    int call(int xlfn, OPER* result, int count, OPER* const* arguments) override {
        switch (xlfn) {
        case xlCoerce:
            return coerce(result, *arguments[0], static_cast<std::uint16_t>(arguments[1]->val.w));
        case xlSheetNm:
            *result = name_.text("[Book1]Rents");
            return xlretSuccess;
        case xlAbort:
            *result = bool_cell(break_pending);
            return xlretSuccess;
        case xlcAlert:
            ++alerts;
            *result = bool_cell(cancels);
            return xlretSuccess;
        case xlcGoalSeek: {
            EXPECT_EQ(count, 3);
            sought.push_back(row_of(*arguments[2]));
            return seek(result, cells[row_of(*arguments[0])], arguments[1]->val.num);
        }
        default:
            return xlretSuccess;
        }
    }

  private:
    static int row_of(const OPER& reference) {
        return reference.type() == xltypeRef ? reference.val.mref.lpmref->reftbl[0].rwFirst
                                             : reference.val.sref.ref.rwFirst;
    }
    int coerce(OPER* result, const OPER& cell, std::uint16_t type) {
        if (cell.type() == xltypeNum) {
            *result = cell;
            return xlretSuccess;
        }
        if (cell.type() != xltypeRef && cell.type() != xltypeSRef) return xlretFailed;
        const int row = row_of(cell);
        if (type == xltypeRef) {
            areas_ = {1, {{static_cast<std::uint16_t>(row), static_cast<std::uint16_t>(row), 0, 0}}};
            *result = {{.num = 0.0}, xltypeRef};
            result->val.mref = {&areas_, 9};
            return xlretSuccess;
        }
        if (row == uncalculated) return xlretUncalced;
        if (!cells.contains(row)) return xlretFailed;
        *result = number_cell(cells[row]);
        return xlretSuccess;
    }

    Host* former_;
    XLMREF areas_ = {};
    Cells name_;
};

OPER at(int row) { return sref_cell({static_cast<std::uint16_t>(row), static_cast<std::uint16_t>(row), 0, 0}); }

const Function& goal_seek() { return *find_function("GoalSeek"); }

std::string enter(int target, double value, int changing, const OPER& order = missing_cell()) {
    return shown(call(goal_seek(), {at(target), number_cell(value), at(changing), order}));
}

TEST(GoalSeek, ShowsTheTargetWhileTheListIsClosed) {
    ColumnHost host;
    host.cells = {{1, 42.5}, {2, 0}};
    GoalSeekRegistering = false;
    goal_seeks().count = 0;
    EXPECT_EQ(enter(1, 10, 2), "42.5");
    EXPECT_EQ(enter(1, 10, 2, error_cell(xlerrNA)), "42.5") << "the order counts only for the list";
    EXPECT_EQ(goal_seeks().count, 0);
    host.uncalculated = 1;
    EXPECT_EQ(enter(1, 10, 2), "uncalculated");
    EXPECT_EQ(shown(call(goal_seek(), {number_cell(1), number_cell(10), at(2), missing_cell()})), "#NUM!");
    EXPECT_EQ(shown(call(goal_seek(), {at(1), number_cell(10), number_cell(2), missing_cell()})), "#NUM!");
}

TEST(GoalSeek, EntersTheOpenListUpToAHundredTimes) {
    ColumnHost host;
    host.cells = {{1, 42.5}, {2, 0}};
    EXPECT_EQ(CPPQX_GoalSeekInit(), 0);
    EXPECT_EQ(enter(1, 10, 2), "\"GoalSeeking...\"");
    EXPECT_EQ(enter(1, 10, 2, number_cell(3)), "\"GoalSeeking [3.000] = ...\"");
    Cells cells;
    EXPECT_EQ(shown(call(goal_seek(), {at(1), cells.text("ten"), at(2), missing_cell()})), "#NUM!");
    EXPECT_EQ(goal_seeks().count, 2) << "what fails is not entered";
    for (int i = 3; i <= 100; ++i) EXPECT_EQ(enter(1, 10, 2), "\"GoalSeeking...\"");
    EXPECT_EQ(enter(1, 10, 2), "#NUM!");
    EXPECT_EQ(last_class(), "errlibgoalseek");
    EXPECT_EQ(goal_seeks().count, 100);
    EXPECT_EQ(CPPQX_GoalSeekInit(), 0);
    EXPECT_EQ(goal_seeks().count, 0);
}

class GoalSeekRun : public ::testing::Test {
  protected:
    GoalSeekRun() {
        host.cells = {{1, 1}, {2, 2}, {3, 3}, {11, 0}, {12, 0}, {13, 0}};
        CPPQX_GoalSeekInit();
    }
    ~GoalSeekRun() override { CPPQX_GoalSeekInit(), GoalSeekRegistering = false; }
    const std::string& run() {
        EXPECT_EQ(CPPQX_GoalSeek(), 0);
        return goal_seek_report();
    }
    ColumnHost host;
};

const std::string end = "\r\nGoal Seek concluded in 0 seconds.";

TEST_F(GoalSeekRun, FollowsTheOrder) {
    enter(1, 10, 11, number_cell(3));
    enter(2, 20, 12, number_cell(-1));
    enter(3, 30, 13, number_cell(2));
    EXPECT_EQ(run(), "\r\nGS Order:-1.000 - GoalSeek Completed, value = 20.000"
                     "\r\nGS Order:2.000 - GoalSeek Completed, value = 30.000"
                     "\r\nGS Order:3.000 - GoalSeek Completed, value = 10.000" +
                         end);
    EXPECT_EQ(host.sought, (std::vector{12, 13, 11}));
    EXPECT_FALSE(GoalSeekRegistering);
}

TEST_F(GoalSeekRun, EqualOrdersFollowTheExchanges) {
    // 2, 2, 1: the exchange puts the first entry behind the second.
    enter(1, 0, 11, number_cell(2));
    enter(2, 0, 12, number_cell(2));
    enter(3, 0, 13, number_cell(1));
    run();
    EXPECT_EQ(host.sought, (std::vector{13, 12, 11}));
}

TEST_F(GoalSeekRun, AnEmptyListDoesNothing) {
    EXPECT_EQ(run(), "");
    EXPECT_FALSE(GoalSeekRegistering);
}

TEST_F(GoalSeekRun, ATenthFromTheValueIsThere) {
    host.seek = [](OPER*, double& target, double value) {
        target = value == 5 ? value + 0.05 : value - 0.2;
        return xlretSuccess;
    };
    enter(1, 5, 11);
    enter(2, 6, 12);
    EXPECT_EQ(run(), "\r\nGS Order:0.000 - GoalSeek Completed, value = 5.050"
                     "\r\nGS Order:0.000 - Warning: GoalSeek Non-Solution Failure, TargetCell=5.800 , "
                     "TargetValue=6.000 Sheet:[Book1]Rents"
                     "\r\nThere was a GoalSeek failure." +
                         end);
}

TEST_F(GoalSeekRun, TellsEachFailureAndGoesOn) {
    enter(1, 10, 11, number_cell(1));
    enter(2, 20, 12, number_cell(2));
    enter(3, 30, 13, number_cell(3));
    host.cells.erase(1);
    host.cells.erase(12);
    host.seek = [](OPER* result, double&, double) {
        *result = error_cell(xlerrDiv0);
        return xlretSuccess;
    };
    EXPECT_EQ(run(),
              "\r\nGS Order:1.000 - Warning: General GoalSeek Failure. The TargetCell doesn't evaluate to a number. "
              "Sheet:[Book1]Rents"
              "\r\nGS Order:2.000 - Warning: General GoalSeek Failure. The ChangingCell doesn't evaluate to a number. "
              "Sheet:[Book1]Rents"
              "\r\nGS Order:3.000: Warning - GoalSeek failed due an error resulting from the GoalSeek. Div/0 "
              "encountered  Sheet:[Book1]Rents"
              "\r\nThere were 3 GoalSeek failures" +
                  end);
}

TEST_F(GoalSeekRun, TellsARefusalOfTheHost) {
    enter(1, 10, 11);
    host.seek = [](OPER*, double&, double) { return xlretFailed; };
    EXPECT_EQ(run().rfind("\r\nGS Order:0.000: Warning - General GoalSeek Failure whilst GoalSeeking.  Check", 0), 0u);
}

TEST_F(GoalSeekRun, AsksBeforeItIsCancelled) {
    enter(1, 10, 11);
    enter(2, 20, 12);
    host.break_pending = true;
    run();
    EXPECT_EQ(host.alerts, 2) << "once an entry, and the user goes on";
    EXPECT_EQ(host.sought.size(), 2u);
    host.cancels = true;
    EXPECT_EQ(run(), "\r\nQuexel GoalSeek was cancelled" + end);
    EXPECT_EQ(host.sought.size(), 2u);
}

TEST_F(GoalSeekRun, TheReportReachesTheTrace) {
    enter(1, 10, 11);
    trace().TraceStart();
    run();
    ASSERT_EQ(trace().count(), 2);
    EXPECT_EQ(trace().text(1), "Info\t\t\r\nGS Order:0.000 - GoalSeek Completed, value = 10.000");
    EXPECT_EQ(trace().text(2), "Info\t\t" + end);
    host.uncalculated = 1;
    trace().TraceStart();
    run();
    ASSERT_EQ(trace().count(), 1);
    EXPECT_EQ(trace().text(1).substr(0, 14), "Quexel Error\t\t");
    EXPECT_EQ(trace().kind(1), TraceKind::info);
    trace().TraceShow();
}

} // namespace
} // namespace qx::test
