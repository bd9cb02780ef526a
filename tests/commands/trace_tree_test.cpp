#include "commands/trace_tree.h"

#include <gtest/gtest.h>

namespace qx {
namespace {

/// The tree as text, a line a node: two blanks a level, + for a node shown open.
std::string outline(const std::vector<TraceNode>& nodes, int depth = 0) {
    std::string text;
    for (const TraceNode& node : nodes)
        text += std::string(static_cast<std::size_t>(2 * depth), ' ') + (node.expanded ? "+" : "") + node.name + "\n" +
                outline(node.children, depth + 1);
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
    EXPECT_EQ(outline(tree.roots), "DYear\n"
                                   "  Inputs\n"
                                   "    TheDate\n"
                                   "      Return Value\n"
                                   "    Inputs concluded for DYear\n"
                                   "  DYear\n"
                                   "    Return Value (TheYear)\n");
    const TraceNode& last = tree.roots[0].children[1].children[0];
    EXPECT_EQ(last.value, "2004.000");
    EXPECT_EQ(last.description, "Returning from DYear");
    EXPECT_EQ(last.kind, TraceKind::return_value);
    EXPECT_NE(tree.summary.find(" msecs 7 lines "), std::string::npos);
}

TEST_F(TraceTreeTest, AnErrorOpensAllNodesAboveIt) {
    trace().external_call("A");
    trace().function_call("B");
    trace().function_call("C");
    trace().returning("C", 2);
    trace().function_call("D");
    trace().error("", "no");
    EXPECT_EQ(outline(build_trace_tree(trace()).roots), "+A\n"
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
    EXPECT_EQ(outline(build_trace_tree(trace()).roots), "A\n"
                                                        "  Returning\n"
                                                        "B\n"
                                                        "  deep\n"
                                                        "    deep\n");
}

TEST_F(TraceTreeTest, AnEmptyStoreSaysSo) {
    const TraceTree tree = build_trace_tree(trace());
    ASSERT_EQ(tree.roots.size(), 1u);
    EXPECT_EQ(tree.roots[0].name, "Nothing To Report");
    EXPECT_EQ(tree.roots[0].kind, TraceKind::info);
}

TEST_F(TraceTreeTest, DepthIsNotBoundByTheStack) {
    for (int depth = 0; depth < 200000; ++depth) trace().additem("x", TraceKind::loop_pass, +1);
    trace().error("", "at the bottom");
    const TraceTree tree = build_trace_tree(trace());
    EXPECT_TRUE(tree.roots.at(0).expanded);
}

} // namespace
} // namespace qx
