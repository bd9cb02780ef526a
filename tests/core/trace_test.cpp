// The trace's store and file: levels, kinds and texts of items, limits, start and end.
#include "core/routine.h"
#include "support/allocations.h"
#include "support/traced.h"

#include <chrono>
#include <filesystem>
#include <fstream>
#include <thread>

namespace qx::test {
namespace {

using Trace = Traced;

/// The lines of the trace's file after its first, which holds name and time.
std::vector<std::string> file_lines() {
    std::ifstream file("qx_Trace.qxl", std::ios::binary);
    std::vector<std::string> lines;
    std::string line;
    std::getline(file, line);
    while (std::getline(file, line)) lines.push_back(line);
    return lines;
}

TEST(TraceOff, EveryAdderReturnsMinusOneAndStoresNothing) {
    ASSERT_FALSE(trace().ison());
    clsTrace2& t = trace();
    const std::size_t before = allocations();
    for (const int level : {t.error("", "x"),
                            t.info("x"),
                            t.warning("x"),
                            t.change_note(1, "x"),
                            t.elapsed_msecs("x"),
                            t.external_call("x"),
                            t.inputs(),
                            t.inputs_concluded("x"),
                            t.variable("x"),
                            t.function_call("x"),
                            t.internal_call("x"),
                            t.array_call("x"),
                            t.arguments(),
                            t.range_screening(),
                            t.if_block("x"),
                            t.if_clause("x"),
                            t.timeperiod_loop("x", "y"),
                            t.loop_pass(1, "x"),
                            t.returning("x"),
                            t.return_values(),
                            t.argument("x", 1.0),
                            t.return_value("x", 1.0, "f"),
                            t.return_value(1.0, "f"),
                            t.result(1.0),
                            t.element(1, 1.0)})
        EXPECT_EQ(level, -1);
    EXPECT_EQ(allocations(), before) << "no text is built";
    EXPECT_EQ(t.count(), 0);
    t.TraceShow(); // safe in every catch clause
    EXPECT_EQ(t.count(), 0);
}

TEST_F(Trace, ItemsHaveTheirTextKindAndLevel) {
    clsTrace2& t = trace();
    struct Item {
        int level, returned;
        TraceKind kind;
        std::string text;
    };
    const Item items[] = {
        {1, t.external_call("DpD"), TraceKind::external_call,
         "DpD\t\tExternal Function Call from Excel. Initialization follows, before call of the main DpD function.  "
         "Click the + sign to find out more."},
        {2, t.inputs(), TraceKind::arguments,
         "Inputs\t\tThese are the inputs to the functions as provided by Excel and interpreted by the Quexel "
         "initialization routine."},
        {3, t.variable("TheDate"), TraceKind::variable, "TheDate"},
        {2, t.return_value("TheDate", 38000, "AssignCell"), TraceKind::return_value,
         "Return Value (TheDate)\t38000\tReturning from AssignCell"},
        {1, t.inputs_concluded("DpD"), TraceKind::returning, "Inputs concluded for DpD"},
        {2, t.function_call("DpD"), TraceKind::function_call, "DpD\t\tFunction Call."},
        {3, t.arguments(), TraceKind::arguments, "Arguments\t\tThe Inputs to the function."},
        {3, t.argument("Days", 30.0, "Days to add"), TraceKind::argument, "Days\t30.000\tDays to add"},
        {3, t.info("note"), TraceKind::info, "Info\t\tnote"},
        {3, t.warning("look"), TraceKind::warning, "Warning\t\tlook"},
        {3, t.change_note(143, "changed"), TraceKind::info, "PECB\t143\tchanged"},
        {4, t.internal_call("Inner"), TraceKind::internal_call, "Inner\t\tCall of an internal function."},
        {3, t.returning("Inner"), TraceKind::returning, "Returning\t\tReturning from Inner"},
        {4, t.array_call("DpDAF"), TraceKind::array_call, "DpDAF\t\tArray Function Call."},
        {3, t.returning(""), TraceKind::returning, "Returning"},
        {4, t.range_screening(), TraceKind::range_screening,
         "Range Screening\t\tProcessing the input ranges to check for validity and consistency."},
        {5, t.timeperiod_loop("Periods", "each"), TraceKind::timeperiod_loop, "Periods\t\teach"},
        {6, t.loop_pass(7, "a pass"), TraceKind::loop_pass, "Loop Pass\t7\ta pass"},
        {7, t.if_block("b"), TraceKind::if_clause, "If Block\t\tb"},
        {8, t.if_clause("c"), TraceKind::if_clause, "If Clause\t\tc"},
        {8, t.error("REG01", "failed"), TraceKind::error, "Error\tREG01\tfailed"},
        {9, t.return_values(), TraceKind::return_value, "Return Values\t\t"},
        {9, t.element(2, true), TraceKind::element, "Return Value 2\ttrue\t"},
        {2, t.return_value("Sum", 1.5, "DpD", 2, "Capped"), TraceKind::return_value,
         "Return Value (Sum)\t1.500\tReturning from DpD. Capped"},
        {1, t.return_value(std::string("text"), "DpD"), TraceKind::return_value,
         "Return Value\ttext\tReturning from DpD"},
        {0, t.result(1.0), TraceKind::return_value, "Return Value\t1.000\t"},
    };
    int i = 0;
    for (const Item& item : items) {
        SCOPED_TRACE(item.text);
        EXPECT_EQ(t.text(++i), item.text);
        EXPECT_EQ(t.level(i), item.level);
        EXPECT_EQ(item.returned, item.level);
        EXPECT_EQ(t.kind(i), item.kind);
    }
    EXPECT_EQ(t.count(), i);
    t.TraceShow();
    const std::vector<std::string> lines = file_lines();
    ASSERT_EQ(lines.size(), std::size(items));
    for (std::size_t line = 0; line < lines.size(); ++line) EXPECT_EQ(lines[line], items[line].text + "\r");
}

TEST_F(Trace, ElapsedShowsWholeMilliseconds) {
    trace().elapsed_msecs("so far");
    const std::string text(trace().text(1));
    EXPECT_EQ(text.rfind("Elapsed msecs\t", 0), 0u);
    EXPECT_EQ(text.find_first_not_of("0123456789", 14), text.rfind('\t')) << text;
    EXPECT_EQ(trace().kind(1), TraceKind::elapsed);
}

TEST_F(Trace, TheSummaryTellsTheTimeOfAllCallsAndNotOfTheLast) {
    std::this_thread::sleep_for(std::chrono::milliseconds(3));
    TraceTimer().reset(true); // as each call does
    trace().prepare_viewing();
    EXPECT_GE(std::stoi(trace().summary()), 3);
}

TEST_F(Trace, EmptyTextAndMutedItemsAreNotStored) {
    trace().external_call("F");
    EXPECT_EQ(trace().additem("", TraceKind::info, +1), 1) << "the level of the last item";
    EXPECT_EQ(trace().info(""), -1);
    TraceMuted = true;
    EXPECT_EQ(trace().info("x"), -1);
    EXPECT_EQ(trace().additem("x", TraceKind::info, +1), 1);
    trace().changelevel(+1);
    TraceMuted = false;
    EXPECT_EQ(trace_lines().size(), 1u);
    EXPECT_EQ(trace().currentlevel(), 1);
}

TEST_F(Trace, LevelsOfTheLastItemCanBeSet) {
    EXPECT_EQ(trace().currentlevel(), 0);
    trace().if_clause("first");
    trace().loop_pass(1, "x");
    trace().changelevel(-1);
    EXPECT_EQ(trace().currentlevel(), 1);
    trace().setlevel(-1);
    EXPECT_EQ(trace().currentlevel(), 1);
    trace().setlevel(4);
    EXPECT_EQ(trace().info("after"), 4);
    EXPECT_EQ(trace().additem("absolute", TraceKind::info, +1, 2), 2);
    EXPECT_EQ(trace().additem("zero is no absolute level", TraceKind::info, +1, 0), 3);
}

TEST_F(Trace, KindsThatEndTheFunctionStart) {
    for (const auto opened :
         {+[] { trace().function_call("f"); }, +[] { trace().array_call("f"); }, +[] { trace().if_block("b"); },
          +[] { trace().if_clause("c"); }, +[] { trace().loop_pass(1, "p"); }}) {
        trace().external_call("f");
        trace().info("still at the start");
        EXPECT_TRUE(trace().atfunctionstart);
        opened();
        EXPECT_FALSE(trace().atfunctionstart);
    }
}

double fails_at_three(int depth) {
    Routine here{"Deep"};
    const TraceBlock block = here.branch("deeper");
    if (depth == 3) here.fail<errlibunexpected>("");
    return here.returning(depth > 3 ? 0.0 : fails_at_three(depth + 1));
}

TEST_F(Trace, ReturnValueAfterAThrowHasTheLevelOfEntry) {
    trace().external_call("F");
    {
        Routine here{"Outer"};
        EXPECT_THROW(fails_at_three(1), errlibunexpected);
        EXPECT_GT(trace().currentlevel(), 4);
        here.returning(1.0);
    }
    EXPECT_EQ(trace().currentlevel(), 1);
}

TEST_F(Trace, BlocksOfARoutineCloseWithTheirScope) {
    Routine here{"F"};
    double A = 1, B = 2;
    here.arguments(QX_NAMED(A, B));
    for (int i = 1; i <= 2; ++i) {
        const TraceBlock pass = here.pass(i, "round ", i);
        here.info("inside");
    }
    here.returning();
    EXPECT_EQ(trace_lines(), (std::vector<std::string>{
                                 "1 F\t\tFunction Call.", "2 Arguments\t\tThe Inputs to the function.", "2 A\t1.000\t",
                                 "1 B\t2.000\t", "2 Loop Pass\t1\tround 1", "1 Info\t\tinside",
                                 "2 Loop Pass\t2\tround 2", "1 Info\t\tinside", "0 Returning\t\tReturning from F"}));
}

TEST_F(Trace, StartingTwiceEmptiesStoreAndFile) {
    trace().external_call("first");
    trace().stackflag = true;
    trace().TraceStart();
    EXPECT_EQ(trace().count(), 0);
    EXPECT_FALSE(trace().atfunctionstart);
    EXPECT_FALSE(trace().stackflag);
    trace().info("second");
    trace().TraceShow();
    EXPECT_EQ(file_lines(), std::vector<std::string>{"Info\t\tsecond\r"});
}

TEST_F(Trace, ShowingOpensTheViewerOnceAndClearsTheStore) {
    static int shown;
    static std::string summary;
    shown = 0;
    trace().viewer = [](clsTrace2& t) {
        ++shown;
        EXPECT_FALSE(t.ison());
        t.prepare_viewing();
        summary = t.summary();
    };
    trace().info("a");
    trace().info("b");
    TraceMuted = true;
    trace().TraceShow();
    EXPECT_EQ(shown, 0) << "not while muted";
    TraceMuted = false;
    trace().TraceShow();
    trace().TraceShow();
    EXPECT_EQ(shown, 1);
    EXPECT_TRUE(summary.ends_with(" msecs 2 lines ")) << summary;
    EXPECT_EQ(trace().count(), 0);
    trace().TraceStart();
    trace().stackflag = true;
    trace().info("a");
    trace().TraceShow();
    EXPECT_EQ(summary, "Error: Excel Stack became dangerously low, 1 items");
    trace().viewer = nullptr;
}

TEST_F(Trace, AnEmptyTraceReportsThatThereIsNothing) {
    trace().prepare_viewing();
    EXPECT_EQ(trace().count(), 1);
    EXPECT_EQ(trace().text(1),
              "Nothing To Report\t\tIt may be that there are no Quexel Functions in the cells selected, or that the "
              "function selected has no Trace output to report.  Please make sure that the cursor (the highlighted "
              "rectangle) is over a cell that contains a Quexel Function before calling Trace.");
    EXPECT_EQ(trace().kind(1), TraceKind::info);
}

TEST_F(Trace, GoesOnInMemoryWhenItsFileCannotBeOpened) {
    trace().TraceShow();
    std::filesystem::remove("qx_Trace.qxl");
    std::filesystem::create_directory("qx_Trace.qxl"); // a folder in the file's place
    trace().TraceStart();
    trace().external_call("F");
    trace().info("kept");
    const std::vector<std::string> lines = trace_lines();
    ASSERT_EQ(lines.size(), 3u);
    EXPECT_EQ(lines[0].substr(0, 4), "1 F\t") << "the first item stays the root of the tree";
    EXPECT_EQ(lines[1], "1 Warning\t\tFailed to open log file:qx_Trace.qxl(fail error)");
    EXPECT_EQ(lines[2], "1 Info\t\tkept");
    EXPECT_FALSE(trace().file_complete());
    trace().TraceShow();
    std::filesystem::remove("qx_Trace.qxl");
}

TEST_F(Trace, TheStoreHoldsAMillionItemsAndTheFileGoesOn) {
    constexpr int limit = 1'000'000;
    trace().external_call("F");
    while (trace().count() < limit - 1) trace().additem("x", TraceKind::info, 0);
    EXPECT_EQ(trace().text(limit - 1), "x");
    EXPECT_EQ(trace().currentlevel(), 1);
    EXPECT_EQ(trace().info("the limit takes this one's place"), 0);
    EXPECT_EQ(trace().text(limit), "Max number of lines exceeded (1000000)");
    EXPECT_EQ(trace().kind(limit), TraceKind::warning);
    EXPECT_EQ(trace().level(limit), 0);
    trace().info("in the file only");
    trace().setlevel(5);
    EXPECT_EQ(trace().count(), limit + 1);
    EXPECT_EQ(trace().text(limit + 1), "");
    EXPECT_EQ(trace().currentlevel(), 0) << "no level past the limit";
    trace().return_value(1.0, "F", 1);
    trace().returning("F", 1);
    EXPECT_EQ(trace().count(), limit + 1) << "returns are not added any more";
    trace().TraceShow();
    const std::vector<std::string> lines = file_lines();
    EXPECT_EQ(lines.size(), static_cast<std::size_t>(limit));
    EXPECT_EQ(lines.back(), "Info\t\tin the file only\r");
}

} // namespace
} // namespace qx::test
