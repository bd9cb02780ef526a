#include "commands/goal_seek.h"

#include "addin/cells.h"
#include "addin/registration.h"
#include "addin/routines/goal_seeks.h"
#include "core/logs.h"
#include "core/routine.h"

#include <cmath>
#include <utility>

namespace qx {

namespace {

constexpr double reached = 0.1; ///< a target this near to its value is reached, on purpose an absolute distance
constexpr int alert_question = 1;

std::string report;
int failures = 0;

/// A cell's value as the host gives it.
struct Number {
    enum { found, not_a_number, failed } state = failed;
    double value = 0.0;
};

Number number_of(OPER cell) {
    HostCell result;
    const int code = Excel(xlCoerce, result.get(), 2, &cell, TempInt(xltypeNum));
    if (code == xlretUncalced) throw uncalc(FunctionContext("GoalSeek", ""));
    if (code != xlretSuccess) return {Number::failed};
    if (result->type() != xltypeNum) return {Number::not_a_number};
    return {Number::found, result->val.num};
}

std::string sheet_of(OPER reference) {
    HostCell name;
    if (Excel(xlSheetNm, name.get(), 1, &reference) != xlretSuccess || name->type() != xltypeStr) return {};
    return text_in(*name);
}

bool is_true(const OPER& cell) { return cell.type() == xltypeBool && cell.val.xbool != 0; }

const char* words_of_error(std::uint16_t code) {
    switch (code) {
    case xlerrNull:
        return "Null encountered";
    case xlerrDiv0:
        return "Div/0 encountered";
    case xlerrValue:
        return "Value! encountered";
    case xlerrRef:
        return "Ref! encountered";
    case xlerrName:
        return "Name! encountered";
    case xlerrNum:
        return "Num! encountered";
    case xlerrNA:
        return "NA encountered";
    default:
        return "Other error encountered";
    }
}

/// Sorts by order. Only order and index move: the rest of an entry is reached through its index.
void sort_by_order(GoalSeekList& list) {
    for (int i = 1; i < list.count; ++i)
        for (int j = i + 1; j <= list.count; ++j)
            if (list.entries[j].order < list.entries[i].order) {
                std::swap(list.entries[i].order, list.entries[j].order);
                std::swap(list.entries[i].index, list.entries[j].index);
            }
}

/// Runs one goal seek and reports on it. Returns the number of failures to count: 0 or 1.
int run(GoalSeekEntry& entry, double order) {
    const std::string sheet = sheet_of(entry.target.cell());
    const auto tell = [order](const auto&... pieces) { report += text_of("\r\nGS Order:", order, pieces...); };

    const Number target = number_of(entry.target.cell());
    if (target.state == Number::failed) {
        tell(" - Warning: General GoalSeek Failure. The TargetCell doesn't evaluate to a number. Sheet:", sheet);
        return 1;
    }
    if (target.state == Number::not_a_number) {
        tell(" - Warning: GoalSeek Failure.  The TargetCell doesn't evaluate to a number.  Sheet:", sheet);
        return 0;
    }
    const Number value = number_of(entry.value);
    if (value.state == Number::failed) {
        tell(" - Warning: General GoalSeek Failure. The TargetValue doesn't evaluate to a number. Sheet:", sheet);
        return 1;
    }
    if (value.state == Number::not_a_number) {
        tell(" - Warning: GoalSeek Failure.  The TargetCell doesn't evaluate to a number.  Sheet:", sheet);
        return 1;
    }
    const Number changing = number_of(entry.changing.cell());
    if (changing.state == Number::failed) {
        tell(" - Warning: General GoalSeek Failure. The ChangingCell doesn't evaluate to a number. Sheet:", sheet);
        return 1;
    }
    if (changing.state == Number::not_a_number) {
        tell(" - Warning: GoalSeek Failure.  The ChangingCell doesn't evaluate to a number.  Sheet:", sheet);
        return 1;
    }

    OPER arguments[] = {entry.target.cell(), entry.value, entry.changing.cell()};
    HostCell result;
    if (Excel(xlcGoalSeek, result.get(), 3, &arguments[0], &arguments[1], &arguments[2]) != xlretSuccess) {
        tell(": Warning - General GoalSeek Failure whilst GoalSeeking.  Check that the input cells are valid and that "
             "convergence is possible. Note that the ChangingCell must be a value, not a formula.  Sheet:",
             sheet);
        return 1;
    }
    if (result->type() == xltypeErr) {
        tell(": Warning - GoalSeek failed due an error resulting from the GoalSeek. ", words_of_error(result->val.err),
             "  Sheet:", sheet);
        return 1;
    }

    const Number after = number_of(entry.target.cell());
    const Number wanted = number_of(entry.value);
    if (after.state == Number::failed || wanted.state == Number::failed) {
        tell(" - Warning: General GoalSeek Failure. After the Goalseek, the TargetCell doesn't evaluate to a number. "
             "Sheet:",
             sheet);
        return 1;
    }
    if (after.state == Number::not_a_number || wanted.state == Number::not_a_number) {
        tell(" - Warning: GoalSeek Failure.  Afte the Goalseek, the TargetCell doesn't evaluate to a number.  Sheet:",
             sheet);
        return 0;
    }
    if (std::fabs(after.value - wanted.value) <= reached) {
        tell(" - GoalSeek Completed, value = ", after.value);
        return 0;
    }
    tell(" - Warning: GoalSeek Non-Solution Failure, TargetCell=", after.value, " , TargetValue=", wanted.value,
         " Sheet:", sheet);
    return 1;
}

/// True if the user wants to leave the run.
bool is_cancelled() {
    HostCell answer;
    return Excel(xlcAlert, answer.get(), 2, TempStr("Are you sure you want to cancel?"), TempInt(alert_question)) ==
               xlretSuccess &&
           is_true(*answer);
}

void add_to_report(const std::string& text) {
    report += text;
    if (traced()) trace().info(text);
}

void run_all() {
    GoalSeekList& list = goal_seeks();
    TraceTimer().reset(true);
    HostCell abort;
    const bool break_pending = Excel(xlAbort, abort.get(), 0) == xlretSuccess && is_true(*abort);
    sort_by_order(list);
    for (int i = 1; i <= list.count; ++i) {
        if (break_pending && is_cancelled()) {
            report += "\r\nQuexel GoalSeek was cancelled";
            break;
        }
        failures += run(list.entries[static_cast<int>(list.entries[i].index)], list.entries[i].order);
    }
    if (traced()) trace().info(report);
    if (failures == 1) add_to_report("\r\nThere was a GoalSeek failure.");
    if (failures > 1) add_to_report(text_of("\r\nThere were ", failures, " GoalSeek failures"));
    add_to_report(text_of("\r\nGoal Seek concluded in ", TraceTimer().milliseconds() / 1000, " seconds."));
}

/// Ends a run that an error has broken off.
void report_error(const std::string& description) {
    ++failures;
    report += description;
    if (traced()) trace().additem("Quexel Error\t\t" + report, TraceKind::info, 0);
}

} // namespace

const std::string& goal_seek_report() { return report; }
int goal_seek_failures() { return failures; }

} // namespace qx

using namespace qx;

QX_COMMAND(GoalSeek, "Runs the goal seeks that the model's cells have entered since the list was opened, in order") {
    GoalSeekRegistering = false;
    report.clear();
    failures = 0;
    try {
        if (goal_seeks().count > 0) run_all();
    } catch (const cls_exception& e) {
        report_error(e.description());
    } catch (...) {
        report_error("Exception Error.");
    }
    free_temporary_memory();
    return 0;
}

QX_COMMAND(GoalSeekInit, "Opens the list of goal seeks, which a full recalculation then fills") {
    goal_seeks().count = 0;
    GoalSeekRegistering = true;
    return 0;
}
