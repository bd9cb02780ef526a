// The frame of a worksheet call: the catch ladder, the trace's levels, the monitor, the host call.
#include "addin/declare.h"
#include "core/call_state.h"
#include "core/routine.h"
#include "stub_host.h"
#include "support/allocations.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <fstream>
#include <functional>
#include <thread>

namespace qx::test {
namespace {

double half(double Value, double Divisor) {
    Routine here{"Half"};
    here.arguments(QX_NAMED(Value, Divisor));
    here.limit(Divisor, 1, 9, "Divisor");
    return here.returning(Value / Divisor);
}
double inner_fails(double Value) {
    Routine here{"Outer"};
    try {
        Routine inner{"Inner"};
        const auto pass = inner.pass(1, "about to fail");
        inner.fail<errlibnotbracketed>("");
    } catch (const errlibnotbracketed&) {}
    return here.returning(Value);
}
double standard_failure(double) { throw std::runtime_error("no matter"); }
double carries(double code) {
    if (code == 1) throw inputna(FunctionContext());
    throw uncalc(FunctionContext());
}
double state_seen(double) { return DisperseSlot + depreciation_memo[0] + depreciation_memo[1]; }
double sum_list(Range<double>& Values, double Factor) {
    Routine here{"SumList"};
    here.arguments(QX_NAMED(Values, Factor));
    double sum = 0.0;
    for (const double value : Values) sum += value;
    return here.returning(sum * Factor);
}

const Function halve = test_function("Halve", core<half>, {{"Value", "A value"}, optional("Divisor", 2.0, "What by")});

std::vector<std::string> traced_lines;
std::vector<int> traced_levels;

void keep_trace(clsTrace2& the_trace) {
    traced_lines.clear();
    traced_levels.clear();
    for (int i = 1; i <= the_trace.count(); ++i) {
        traced_lines.emplace_back(the_trace.text(i));
        traced_levels.push_back(the_trace.level(i));
    }
}

class FrameTest : public ::testing::Test {
  protected:
    FrameTest() { trace().viewer = keep_trace; }
    ~FrameTest() override {
        trace().TraceShow();
        trace().viewer = nullptr;
        std::remove("qx_Trace.qxl");
    }
    StubHost host;
    Cells cells;
};

TEST_F(FrameTest, TraceOfACall) {
    trace().TraceStart();
    EXPECT_EQ(shown(call(halve, {number_cell(5), missing_cell()})), "2.5");
    trace().TraceShow();
    const std::vector<std::string> expected = {
        "1 Halve\t\tExternal Function Call from Excel. Initialization follows, before call of the main Halve "
        "function.  Click the + sign to find out more.",
        "2 Inputs\t\tThese are the inputs to the functions as provided by Excel and interpreted by the "
        "Quexel "
        "initialization routine.",
        "3 Value",
        "2 Return Value (Value)\t5.000\tReturning from AssignCell",
        "3 Divisor",
        "3 Info\t\tDivisor set to default value of 2.000 ()",
        "2 Return Value (Divisor)\t2.000\tReturning from AssignCellOpt",
        "1 Inputs concluded for Halve",
        "2 Half\t\tFunction Call.",
        "3 Arguments\t\tThe Inputs to the function.",
        "3 Value\t5.000\t",
        "2 Divisor\t2.000\t",
        "1 Return Value\t2.500\tReturning from Half",
        "0 Return Value\t2.500\t",
    };
    std::vector<std::string> seen;
    for (std::size_t i = 0; i < traced_lines.size(); ++i)
        seen.push_back(std::to_string(traced_levels[i]) + " " + traced_lines[i]);
    EXPECT_EQ(seen, expected);
}

TEST_F(FrameTest, TraceDescribesTheInputsOfAFunction) {
    const Function& function = *find_function("DYear");
    trace().TraceStart();
    call(function, {number_cell(38000)});
    trace().TraceShow();
    EXPECT_EQ(std::count(traced_lines.begin(), traced_lines.end(),
                         std::string("TheDate\t14Jan2004\t") + function.args[0].help),
              1);
}

TEST_F(FrameTest, FailureEndsTheTraceAndTellsWhy) {
    trace().TraceStart();
    EXPECT_EQ(shown(call(halve, {number_cell(5), number_cell(10)})), "#NUM!");
    EXPECT_FALSE(trace().ison()) << "the viewer has been shown";
    EXPECT_EQ(traced_lines.back(), "Error\t\tError LIB16: Value greater than maximum allowed value  Variable Divisor "
                                   "\nFunction: Half. \nVariable: Divisor. ");
    EXPECT_EQ(shown(call(halve, {number_cell(5), number_cell(5)})), "1") << "a later call runs untraced";
    EXPECT_EQ(trace().count(), 0);
}

TEST_F(FrameTest, LevelComesBackAfterACaughtError) {
    const Function function = test_function("Outer", core<inner_fails>, {{"Value", "A value"}});
    trace().TraceStart();
    trace().info("before");
    const int before = trace().currentlevel();
    call(function, {number_cell(1)});
    EXPECT_EQ(trace().currentlevel(), before);
}

TEST_F(FrameTest, CatchLadder) {
    const Function function = test_function("Carries", core<carries>, {{"Code", "What to throw"}});
    EXPECT_EQ(shown(call(function, {number_cell(1)})), "#N/A");
    EXPECT_EQ(call(function, {number_cell(2)}), nullptr);
    Function short_ladder = function;
    short_ladder.errors_as_data = true;
    EXPECT_EQ(shown(call(short_ladder, {number_cell(1)})), "#NUM!");
    EXPECT_EQ(call(short_ladder, {number_cell(2)}), nullptr);
    const Function other = test_function("Other", core<standard_failure>, {{"Value", "A value"}});
    EXPECT_EQ(shown(call(other, {number_cell(1)})), "#NUM!");
    trace().TraceStart();
    call(other, {number_cell(1)});
    EXPECT_EQ(traced_lines.back(), "Error\t\tUnspecified exception error");
    TraceMuted = true;
    call(other, {number_cell(1)});
    EXPECT_FALSE(TraceMuted) << "every failure ends a mute";
}

TEST_F(FrameTest, StateResetPerCall) {
    const Function function = test_function("State", core<state_seen>, {{"Value", "A value"}});
    DisperseSlot = 3;
    depreciation_memo[0] = depreciation_memo[1] = true;
    EXPECT_EQ(shown(call(function, {number_cell(0)})), "0");
    TempStr("left over");
    call(function, {number_cell(0)});
    EXPECT_EQ(temporary_memory_used(), 0u);
}

TEST_F(FrameTest, NothingIsAllocatedWithoutATrace) {
    const Function list =
        test_function("SumList", core<sum_list>, {{"Values", "Values"}, optional("Factor", 2.0, "By")});
    const OPER numbers = cells.numbers(10000, 1, 1.0);
    const auto run = [&] {
        call(halve, {number_cell(5), missing_cell()});
        call(list, {numbers, missing_cell()});
    };
    run(); // the first call of a function may build its pool
    const std::size_t before = allocations();
    run();
    EXPECT_EQ(allocations(), before);
}

TEST_F(FrameTest, MonitorWritesALinePerCall) {
    CalcMonStart();
    call(halve, {number_cell(5), missing_cell()});
    call(halve, {number_cell(5), number_cell(99)});
    call(halve, {number_cell(5), missing_cell()});
    CalcMonStop();
    call(halve, {number_cell(5), missing_cell()});
    std::ifstream file("qx_CalcMon.qxl");
    std::string line;
    std::vector<int> fields;
    std::getline(file, line);
    EXPECT_EQ(line.rfind("Quexel Log File qx_CalcMon.qxl ", 0), 0u) << line;
    while (std::getline(file, line)) {
        EXPECT_EQ(line.rfind("Halve,", 0), 0u) << line;
        fields.push_back(1 + static_cast<int>(std::count(line.begin(), line.end(), ',')));
    }
    EXPECT_EQ(fields, (std::vector<int>{3, 2, 3})) << "a call that fails has no total";
    std::remove("qx_CalcMon.qxl");
}

TEST_F(FrameTest, LowStackEndsTheTrace) {
    host.stack_left = 9999;
    trace().TraceStart();
    EXPECT_EQ(shown(call(halve, {number_cell(5), missing_cell()})), "2.5") << "the result does not suffer";
    EXPECT_FALSE(trace().ison());
    EXPECT_EQ(host.boxed,
              "Quexel warning: Stack getting low in Halve.9 kb left out of initial estimate of 44 kb.\n  We "
              "suggest you report this error to the Quexel support.");
    EXPECT_TRUE(trace().stackflag);
    host.stack_left = 10000;
    EXPECT_TRUE(stackok("Halve", true));
    host.fail_all = true;
    EXPECT_TRUE(stackok("Halve", true)) << "a host that does not say";
}

TEST_F(FrameTest, ACallFromATextThatTheHostEvaluatesIsRefused) {
    struct Evaluating : StubHost {
        std::string inner;
        int call(int xlfn, OPER* result, int count, OPER* const* arguments) override {
            if (xlfn != xlfEvaluate) return StubHost::call(xlfn, result, count, arguments);
            OPER day = number_cell(38000);
            OPER* const cells[] = {&day, nullptr};
            *result = *perform(*find_function("MonthEnd"), cells);
            inner = shown(result);
            return xlretSuccess;
        }
    } calling_back;
    Cells cells;
    EXPECT_EQ(shown(call(*find_function("Ev"), {cells.text("MonthEnd(38000)")})), "#NUM!"); // and no waiting for ever
    EXPECT_EQ(calling_back.inner, "#VALUE!");
    EXPECT_EQ(last_class(), "errinput");
    EXPECT_EQ(shown(call(*find_function("MonthEnd"), {number_cell(38000)})), "38017");
}

TEST_F(FrameTest, ThreadsThatHoldTheLockUntilTheResultIsReadSeeTheirOwn) {
    const Function& month_end = *find_function("MonthEnd");
    const auto calls = [&](double day, double expected, int& wrong) {
        OPER cell = number_cell(day);
        OPER* cells[] = {&cell};
        for (int i = 0; i < 100000; ++i) {
            const CalculationLock lock;
            const OPER* const result = perform(month_end, cells);
            if (i % 64 == 0) std::this_thread::yield();
            if (result->type() != xltypeNum || result->val.num != expected) ++wrong;
        }
    };
    int wrong = 0;
    int wrong_there = 0;
    std::thread other(calls, 38000.0, 38017.0, std::ref(wrong_there));
    calls(38018.0, 38046.0, wrong);
    other.join();
    EXPECT_EQ(wrong, 0);
    EXPECT_EQ(wrong_there, 0);
}

TEST_F(FrameTest, HostCall) {
    OPER result = nil_cell();
    OPER argument = nil_cell();
    OPER* const none = nullptr;
    EXPECT_EQ(Excel(xlfEvaluate, &result, 2, &argument, none), xlretFailed);
    EXPECT_TRUE(host.asked.empty()) << "not forwarded";
    EXPECT_EQ(host.debugged, "Error! A zero parameter is being passed to Excel. Check memory...\r");
    host.debugged.clear();
    TempInt(1);
    EXPECT_EQ(Excel(xlCommandBit | xlPromptBit | 20, &result, 1, &argument), xlretInvXlfn);
    EXPECT_EQ(host.debugged, "Error! Excel4(xlCommand | xlPrompt | 20) callback failed: Invalid Function Number\r");
    EXPECT_EQ(temporary_memory_used(), 0u);
    EXPECT_STREQ(host_return_text(xlretUncalced), "uncalced cell");
    EXPECT_STREQ(host_return_text(3), "unspecified xl code error.");
    const OPER* const text = TempStr(std::string(300, 'a'));
    EXPECT_EQ(text->val.str[0], 200);
    free_temporary_memory();
    set_host(nullptr);
    EXPECT_EQ(Excel(xlfCaller, &result, 0), xlretFailed) << "no host at all";
    set_host(&host);
}

} // namespace
} // namespace qx::test
