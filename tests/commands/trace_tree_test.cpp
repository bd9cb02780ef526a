#include "commands/trace_tree.h"

#include <gtest/gtest.h>

#include <algorithm>

namespace qx {
namespace {

/// The tree as text, a line a node: two blanks a level, + for a node shown open.
std::string outline(const TraceTree& tree) {
    std::string text;
    for (std::size_t i = 0; i < tree.size(); ++i)
        text += std::string(static_cast<std::size_t>(2 * tree.nodes[i].depth), ' ') +
                (tree.nodes[i].expanded ? "+" : "") + std::string(tree.columns(i).name) + "\n";
    return text;
}

class TraceTreeTest : public testing::Test {
  protected:
    void SetUp() override { trace().TraceStart(); }
    void TearDown() override { trace().TraceShow(); }
};

TEST_F(TraceTreeTest, ItemsNestByTheirLevels) {
    trace().external_call("DYear");
    trace().inputs();
    trace().variable("TheDate");
    trace().return_value(2004.0, "", -1);
    trace().inputs_concluded("DYear");
    trace().function_call("DYear");
    trace().return_value("TheYear", 2004.0, "DYear", 1);
    const TraceTree tree = build_trace_tree(trace());
    EXPECT_EQ(outline(tree), "DYear\n"
                             "  Inputs\n"
                             "    TheDate\n"
                             "      Return Value\n"
                             "    Inputs concluded for DYear\n"
                             "  DYear\n"
                             "    Return Value (TheYear)\n");
    const TraceColumns last = tree.columns(tree.size() - 1);
    EXPECT_EQ(last.value, "2004");
    EXPECT_EQ(last.description, "Returning from DYear");
    EXPECT_EQ(tree.nodes.back().kind, TraceKind::return_value);
    EXPECT_EQ(tree.nodes[1].end, 5u) << "the inputs end before the function's call";
    EXPECT_NE(tree.summary.find(" msecs 7 lines "), std::string::npos);
}

TEST_F(TraceTreeTest, AnErrorOpensAllNodesAboveIt) {
    trace().external_call("A");
    trace().function_call("B");
    trace().function_call("C");
    trace().returning("C", 2);
    trace().function_call("D");
    trace().error("", "no");
    EXPECT_EQ(outline(build_trace_tree(trace())), "+A\n"
                                                  "  +B\n"
                                                  "    C\n"
                                                  "      Returning\n"
                                                  "    +D\n"
                                                  "      Error\n");
}

TEST_F(TraceTreeTest, ALevelBelowTheRootStartsANewRootAtLevelOne) {
    trace().external_call("A");
    trace().returning("A");
    trace().external_call("B");
    trace().additem("deep\t\t", TraceKind::info, 0, 3); // two levels at once: a node for each
    EXPECT_EQ(outline(build_trace_tree(trace())), "A\n"
                                                  "  Returning\n"
                                                  "B\n"
                                                  "  deep\n"
                                                  "    deep\n");
}

TEST_F(TraceTreeTest, AnEmptyStoreSaysSo) {
    const TraceTree tree = build_trace_tree(trace());
    ASSERT_EQ(tree.size(), 1u);
    EXPECT_EQ(tree.columns(0).name, "Nothing To Report");
    EXPECT_EQ(tree.nodes[0].kind, TraceKind::info);
}

TEST_F(TraceTreeTest, DepthIsNotBoundByTheStack) {
    for (int depth = 0; depth < 200000; ++depth) trace().additem("x", TraceKind::loop_pass, +1);
    trace().error("", "at the bottom");
    const TraceTree tree = build_trace_tree(trace());
    EXPECT_TRUE(tree.nodes.at(0).expanded);
}

TEST_F(TraceTreeTest, NumbersHaveAllDigitsAndTheStoredItemThree) {
    trace().external_call("A");
    trace().argument("IRRAccOpt", 1e-10, "Tolerance of the rate");
    trace().info(text_of("rate ", 0.000123, " of ", 2));
    EXPECT_EQ(trace().text(2), "IRRAccOpt\t0.000    \tTolerance of the rate");
    EXPECT_EQ(trace().text(3), "Info\t\trate 0.000 of 2");
    const TraceTree tree = build_trace_tree(trace());
    EXPECT_EQ(tree.columns(1).value, "1e-10");
    EXPECT_EQ(tree.columns(2).description, "rate 0.000123 of 2");
}

TEST_F(TraceTreeTest, ListsRunForwards) {
    trace().external_call("A");
    trace().inputs();
    trace().variable("Dates");
    for (int i = 3; i >= 1; --i) trace().argument("Dates(" + std::to_string(i) + ")", i);
    trace().return_value(std::string("Dates had 3 elements"), "AssignRange", 2);
    trace().variable("Rates");
    for (int i = 2; i >= 1; --i) trace().argument("Rates(" + std::to_string(i) + ")", i);
    EXPECT_EQ(outline(build_trace_tree(trace())),
              "A\n  Inputs\n    Dates\n      Dates(1)\n      Dates(2)\n      Dates(3)\n"
              "      Return Value\n    Rates\n      Rates(1)\n      Rates(2)\n");
}

TEST_F(TraceTreeTest, LongRunsOfLikeBlocksFold) {
    trace().external_call("IRRT");
    for (int trial = 1; trial <= 40; ++trial) {
        trace().internal_call("pvt");
        trace().argument("rate", 0.01 * trial);
        if (trial == 20) trace().error("", "no");
        trace().return_value(1.0, "pvt", 1);
    }
    const TraceTree whole = build_trace_tree(trace()), tree = folded(whole);
    EXPECT_EQ(tree.size(), whole.size() + 1);
    const auto fold = std::find_if(tree.nodes.begin(), tree.nodes.end(), [](const TraceNode& n) { return n.fold; });
    ASSERT_NE(fold, tree.nodes.end());
    const auto at = static_cast<std::size_t>(fold - tree.nodes.begin());
    EXPECT_EQ(tree.columns(at).value, "36 more");
    EXPECT_EQ(tree.columns(at).description, "Numbers 3 to 38 of 40 that are alike");
    EXPECT_EQ(at, 7u) << "the root and two trials of three lines are before it";
    EXPECT_EQ(tree.nodes[at].end, tree.size() - 6);
    EXPECT_EQ(tree.nodes[at + 1].depth, tree.nodes[at].depth + 1);
    EXPECT_TRUE(tree.nodes[at].expanded) << "an error is inside";
    EXPECT_EQ(tree.columns(tree.size() - 2).value, "0.4");
}

} // namespace
} // namespace qx
