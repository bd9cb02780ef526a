// Opening and closing the add-in against a host that keeps what it is given.
#include "addin/cells.h"
#include "addin/excel_operations.h"
#include "addin/lifecycle.h"
#include "addin/registration.h"
#include "addin/routines/goal_seeks.h"
#include "core/trace.h"
#include "numerics/random.h"
#include "stub_host.h"

#include <gtest/gtest.h>

#include <fstream>
#include <set>

namespace qx::test {
namespace {

struct Alert {
    std::string text;
    int type;
};

/// A host that takes registrations and answers with ids; row `refused` fails.
class RegisteringHost : public Host {
  public:
    RegisteringHost() : former_(set_host(this)) {}
    ~RegisteringHost() override { set_host(former_); }

    std::string path = "C:\\Models\\QuexelLb.xll";
    int refused = -1;
    int refusal = xlretFailed;
    bool refuse_all = false;
    bool has_menus = true;
    std::vector<std::vector<std::string>> menu; ///< rows, while there is a menu
    std::vector<std::vector<std::string>> registered;
    std::vector<std::string> forgotten, asked_ids, boxes;
    std::vector<int> removed;
    std::vector<Alert> alerts;

    int call(int xlfn, OPER* result, int count, OPER* const* arguments) override {
        switch (xlfn) {
        case xlGetName:
            if (path.empty()) return xlretFailed;
            *result = cells_.text(path);
            return xlretSuccess;
        case xlfRegister: {
            if (refuse_all) return refusal;
            if (static_cast<int>(registered.size()) == refused) {
                refused = -1;
                return refusal;
            }
            std::vector<std::string>& row = registered.emplace_back();
            for (int i = 0; i < count; ++i) {
                EXPECT_EQ(arguments[i]->type(), xltypeStr);
                row.push_back(text_in(*arguments[i]));
            }
            *result = number_cell(static_cast<double>(registered.size()));
            return xlretSuccess;
        }
        case xlfRegisterId:
            EXPECT_EQ(count, 2);
            EXPECT_EQ(text_in(*arguments[0]), path);
            asked_ids.push_back(text_in(*arguments[1]));
            *result = number_cell(100.0 + static_cast<double>(asked_ids.size()));
            return xlretSuccess;
        case xlfUnregister:
            removed.push_back(static_cast<int>(arguments[0]->val.num));
            return xlretSuccess;
        case xlfSetName:
            EXPECT_EQ(count, 1);
            forgotten.push_back(text_in(*arguments[0]));
            return xlretSuccess;
        case xlfAddMenu: {
            EXPECT_EQ(arguments[0]->val.num, 10.0);
            if (!has_menus) return xlretFailed;
            const auto& table = arguments[1]->val.array;
            for (int row = 0; row < table.rows; ++row) {
                menu.emplace_back();
                for (int i = 0; i < table.columns; ++i)
                    menu.back().push_back(text_in(table.lparray[row * table.columns + i]));
            }
            return xlretSuccess;
        }
        case xlfDeleteMenu:
            EXPECT_EQ(text_in(*arguments[1]), "Quexel");
            if (!has_menus) return xlretFailed;
            menu.clear();
            return xlretSuccess;
        case xlcAlert:
            alerts.push_back({text_in(*arguments[0]), arguments[1]->val.w});
            return xlretSuccess;
        case xlCoerce:
            if (arguments[0]->type() != xltypeNum) return xlretFailed;
            *result = int_cell(static_cast<int>(arguments[0]->val.num));
            return xlretSuccess;
        default:
            return xlretSuccess;
        }
    }
    void message_box(std::string_view, std::string_view text) override { boxes.emplace_back(text); }

  private:
    Host* former_;
    Cells cells_;
};

TEST(Lifecycle, OpeningRegistersEveryRowWithTheHelpFile) {
    RegisteringHost host;
    GoalSeekRegistering = true;
    seed_random(7);
    EXPECT_EQ(xlAutoOpen(), 1);
    const auto& rows = the_register();
    ASSERT_EQ(host.registered.size(), rows.size());
    for (std::size_t i = 0; i < rows.size(); ++i) {
        const auto& told = host.registered[i];
        const auto columns = rows[i].columns();
        ASSERT_EQ(told.size(), 30u) << "the file and 29 columns";
        EXPECT_EQ(told[0], host.path);
        for (int c = 0; c < passed_columns; ++c) {
            const std::string expected = (c == column_topic ? "C:\\Models\\\\Help\\Quexel.chm" : "") + columns[c];
            EXPECT_EQ(told[1 + c], expected.substr(0, 200)) << rows[i].name();
        }
    }
    EXPECT_FALSE(GoalSeekRegistering);
    EXPECT_EQ(help_file(), "C:\\Models\\\\Help\\Quexel.chm");
    const double first = next_random();
    seed_random(3167);
    EXPECT_EQ(next_random(), first);
    EXPECT_FALSE(tracing);
    EXPECT_TRUE(host.alerts.empty());
}

TEST(Lifecycle, ARefusedRowIsToldAndTheOthersAreRegistered) {
    RegisteringHost host;
    host.refused = 2;
    EXPECT_EQ(xlAutoOpen(), 1);
    EXPECT_EQ(host.registered.size(), the_register().size() - 1);
    EXPECT_TRUE(tracing);
    ASSERT_EQ(trace().count(), 1);
    EXPECT_EQ(trace().text(1), "Error\tREG01\tError: Failed to register function");
    EXPECT_EQ(trace().kind(1), TraceKind::error);
    ASSERT_EQ(host.boxes.size(), 1u);
    EXPECT_EQ(host.boxes[0], "xlfRegister failed to register function number 3,255, err = 32");
    trace().TraceShow();
}

TEST(Lifecycle, AllRefusedRowsAreToldInOneBox) {
    RegisteringHost host;
    host.refuse_all = true;
    EXPECT_EQ(xlAutoOpen(), 1);
    EXPECT_EQ(trace().count(), static_cast<int>(the_register().size()));
    ASSERT_EQ(host.boxes.size(), 1u);
    EXPECT_EQ(host.boxes[0].find("xlfRegister failed to register function number 1,255, err = 32\nxlfRegister"), 0u);
    EXPECT_NE(
        host.boxes[0].find("number 10,255, err = 32\nand " + std::to_string(the_register().size() - 10) + " more"),
        std::string::npos);
    trace().TraceShow();
}

TEST(Lifecycle, TheMenuHasEveryCommandOnceAndGoesOnClosing) {
    RegisteringHost host;
    EXPECT_EQ(xlAutoOpen(), 1);
    EXPECT_EQ(xlAutoOpen(), 1); // no second one
    ASSERT_FALSE(host.menu.empty());
    EXPECT_EQ(host.menu[0][0], "Quexel");
    std::multiset<std::string> commands, expected;
    for (const auto& row : host.menu) {
        ASSERT_EQ(row.size(), 5u);
        if (!row[1].empty()) commands.insert(row[1]);
        EXPECT_EQ(row[1].empty(), row[3].empty()) << row[0] << " is explained in the status bar";
    }
    for (const RegisterRow& row : the_register())
        if (row.command != nullptr) expected.insert(row.command->name);
    EXPECT_EQ(commands, expected);
    EXPECT_EQ(xlAutoClose(), 1);
    EXPECT_TRUE(host.menu.empty());

    host.has_menus = false;
    EXPECT_EQ(xlAutoOpen(), 1);
    EXPECT_EQ(xlAutoClose(), 1);
    EXPECT_TRUE(host.boxes.empty());
    EXPECT_TRUE(host.alerts.empty());
}

TEST(Lifecycle, AHostWithoutAPathIsAlertedAndStillOpened) {
    RegisteringHost host;
    host.path.clear();
    EXPECT_EQ(xlAutoOpen(), 1);
    ASSERT_EQ(host.alerts.size(), 1u);
    EXPECT_EQ(host.alerts[0].text,
              "Quexel Error: Exception thrown whilst loading functions, we suggest to contact support.");
    EXPECT_EQ(host.alerts[0].type, 2);
}

TEST(Lifecycle, ALogOfTheStartStandsBesideTheAddIn) {
    RegisteringHost host;
    host.path = "./QuexelLb.xll";
    open_addin(true);
    std::ifstream file("qx_AutoOpen.qxl");
    std::string line, all;
    std::getline(file, line);
    EXPECT_EQ(line.rfind("Quexel Log File ./qx_AutoOpen.qxl ", 0), 0u) << line;
    while (std::getline(file, line)) all += line + "\n";
    EXPECT_EQ(all.rfind("Commencing QuexelLB.xll: AutoOpen\nSetting Help File ...\n", 0), 0u) << all;
    EXPECT_NE(all.find("Success: " + std::to_string(the_register().size()) + " functions registered OK\n"),
              std::string::npos);
}

TEST(Lifecycle, HelpFileStandsInAFolderBesideTheAddIn) {
    EXPECT_EQ(help_file_of("D:\\lb\\Lb\\quexellb.xll"), "D:\\LB\\LB\\\\Help\\Quexel.chm");
    EXPECT_EQ(help_file_of("D:\\Quexel 2\\QUEXELlB.XLL"), "D:\\QUEXEL 2\\\\Help\\Quexel.chm");
    EXPECT_EQ(help_file_of(""), "");
}

TEST(Lifecycle, ClosingTakesBackWhatOpeningGave) {
    RegisteringHost host;
    EXPECT_EQ(CPPQX_xlAutoClose(), 0);
    const auto& rows = the_register();
    ASSERT_EQ(host.asked_ids.size(), rows.size());
    ASSERT_EQ(host.removed.size(), rows.size());
    ASSERT_EQ(host.forgotten.size(), rows.size());
    for (std::size_t i = 0; i < rows.size(); ++i) {
        EXPECT_EQ(host.asked_ids[i], rows[i].procedure());
        EXPECT_EQ(host.removed[i], 101 + static_cast<int>(i));
        EXPECT_EQ(host.forgotten[i], rows[i].name());
    }
    EXPECT_EQ(xlAutoClose(), 1);
    EXPECT_EQ(host.forgotten.size(), 2 * rows.size());
    EXPECT_EQ(xlAutoRemove(), 1);
    ASSERT_EQ(host.alerts.size(), 1u);
    EXPECT_EQ(host.alerts[0].text, "Quexel removed.  You can reload it using the Tools/Add-Ins menu.");
    EXPECT_EQ(host.alerts[0].type, 2);
}

TEST(Lifecycle, TheAddInManagerAsksForTheTitleWithActionOne) {
    RegisteringHost host;
    OPER action = number_cell(1);
    EXPECT_EQ(shown(xlAddInManagerInfo(&action)), "\"Quexel\"");
    action = number_cell(2);
    EXPECT_EQ(shown(xlAddInManagerInfo(&action)), "#VALUE!");
    action = missing_cell();
    EXPECT_EQ(shown(xlAddInManagerInfo(&action)), "#VALUE!");
    EXPECT_EQ(shown(xlAddInManagerInfo(nullptr)), "#VALUE!");
}

} // namespace
} // namespace qx::test
