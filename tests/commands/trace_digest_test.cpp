// What a trace says in short, and how two traces differ.
#include "commands/trace_comparison.h"
#include "commands/trace_digest.h"

#include <gtest/gtest.h>

#include <algorithm>

namespace qx::test {
namespace {

class TraceDigest : public testing::Test {
  protected:
    void SetUp() override { trace().TraceStart(); }
    void TearDown() override { trace().TraceShow(); }

    /// A search for a rate by trials at the given rates.
    static TraceTree search(const std::vector<double>& rates) {
        trace().TraceStart();
        trace().external_call("IRRT");
        trace().inputs();
        trace().variable("Cashflows");
        for (int i = 2; i >= 1; --i) trace().argument("Cashflows(" + std::to_string(i) + ")", i == 1 ? -100.0 : 110.0);
        trace().return_value(std::string("Cashflows had 2 elements"), "AssignRange", 2);
        trace().variable("DayCountDisc");
        trace().info(text_of("DayCountDisc set to default value of ", 5.0, " (Decimal Year)"));
        trace().return_value(5.0, "AssignCellOpt", 2);
        trace().variable("PrdsDisc");
        trace().warning("rounded");
        trace().return_value(std::string("PrdsDisc had 4 elements"), "AssignannseqOpt", 2);
        trace().variable("Start");
        trace().return_value(std::string("Start had 1 elements"), "AssignRange", 2);
        trace().inputs_concluded("IRRT");
        trace().function_call("IRRT");
        trace().arguments();
        trace().argument("Start", std::string("Start (1): 1Jun2003"));
        trace().argument("DayCountDisc", 5.0, "Day count convention");
        trace().argument("PrdsDisc", std::string(" in arrear, quarterly"), "Dates in the year");
        trace().changelevel(-1);
        trace().info(text_of("Solve. Tolerance=", 1e-10));
        for (const double rate : rates) {
            trace().internal_call("pvt");
            trace().arguments();
            trace().argument("rate", rate);
            trace().changelevel(-1);
            trace().info(text_of("PV at ", rate));
            trace().return_value(110.0 / (1.0 + rate) - 100.0, "pvt", 2);
        }
        trace().return_value(0.1, "IRRT", 1);
        trace().result(0.1);
        return build_trace_tree(trace());
    }
};

TEST_F(TraceDigest, SaysWhatACallWasGivenAndDid) {
    const std::vector<CallDigest> calls = digest(search({0.000001, 0.25, 0.1}));
    ASSERT_EQ(calls.size(), 1u);
    const CallDigest& call = calls[0];
    EXPECT_EQ(call.function, "IRRT");
    EXPECT_FALSE(call.failed);
    EXPECT_EQ(call.results, std::vector<std::string>{"0.1"});
    ASSERT_EQ(call.inputs.size(), 4u);
    EXPECT_EQ(call.inputs[3].values, std::vector<std::string>{"1Jun2003"});
    EXPECT_EQ(call.inputs[0].values, (std::vector<std::string>{"-100", "110"}));
    EXPECT_FALSE(call.inputs[0].is_default);
    EXPECT_EQ(call.inputs[1].values, std::vector<std::string>{"5"});
    EXPECT_TRUE(call.inputs[1].is_default);
    EXPECT_EQ(call.inputs[1].note, "Decimal Year");
    EXPECT_EQ(call.inputs[1].description, "Day count convention");
    EXPECT_EQ(call.inputs[2].values, std::vector<std::string>{"in arrear, quarterly"});
    EXPECT_EQ(call.inputs[2].note, "rounded");
    EXPECT_EQ(call.solving, std::vector<std::string>{"Solve. Tolerance=1e-10"});
    EXPECT_EQ(call.warnings, std::vector<std::string>{"rounded"});
    ASSERT_EQ(call.steps.size(), 1u);
    const StepDigest& trials = call.steps[0];
    EXPECT_EQ(trials.name, "pvt");
    EXPECT_EQ(trials.times, 3);
    EXPECT_EQ(trials.argument, "rate");
    EXPECT_EQ(trials.least, 0.000001);
    EXPECT_EQ(trials.most, 0.25);
    EXPECT_EQ(trials.last, "-1.4210854715202e-14");
    EXPECT_EQ(trials.details, std::vector<std::string>{"PV at 0.1"});
}

TEST_F(TraceDigest, SaysWhichCallFailedAndWhy) {
    trace().external_call("DYear");
    trace().result(2004.0);
    trace().setlevel(0);
    trace().external_call("DpD");
    trace().function_call("DpD");
    trace().error("", "Error LIB17: Value less than minimum allowed value  Variable Days \nFunction: DpD. ");
    const TraceTree tree = build_trace_tree(trace());
    const std::vector<CallDigest> calls = digest(tree);
    ASSERT_EQ(calls.size(), 2u);
    EXPECT_FALSE(calls[0].failed);
    EXPECT_TRUE(calls[1].failed);
    EXPECT_EQ(calls[1].reason, "Value less than minimum allowed value (Days).");
    EXPECT_EQ(tree.nodes[calls[1].error_node].kind, TraceKind::error);
}

TEST_F(TraceDigest, AReasonIsOneSentence) {
    EXPECT_EQ(
        reason_of(
            "Error LIB05: Root not bracketed  \nFunction: IRRT. \nMessage: We tried.  It may be. . \nClass 'x'. "),
        "Root not bracketed: We tried.");
    EXPECT_EQ(reason_of("Error LIB08: Infinite result.  Probably caused by a divide by zero. "),
              "Infinite result. Probably caused by a divide by zero.");
    EXPECT_EQ(reason_of("Unspecified exception error"), "Unspecified exception error.");
    EXPECT_EQ(reason_of(""), "");
}

TEST_F(TraceDigest, ComparedTracesShowEachLineOfBothOnce) {
    const TraceTree before = search({0.01, 0.02, 0.1}), after = search({0.01, 0.03, 0.02, 0.1});
    const std::vector<ComparedNode> lines = compare(before, after);
    std::size_t old_lines = 0, new_lines = 0, changed = 0;
    for (const ComparedNode& line : lines) {
        const bool is_old = line.before != ComparedNode::absent, is_new = line.after != ComparedNode::absent;
        EXPECT_TRUE(!is_old || line.before == old_lines++) << "in the order of the trace";
        EXPECT_TRUE(!is_new || line.after == new_lines++);
        EXPECT_EQ(line.difference == Difference::only_after, line.before == ComparedNode::absent);
        EXPECT_EQ(line.difference == Difference::only_before, line.after == ComparedNode::absent);
        EXPECT_TRUE(line.difference != Difference::none || before.text(line.before) == after.text(line.after));
        changed += line.difference == Difference::changed;
    }
    EXPECT_EQ(old_lines, before.size());
    EXPECT_EQ(new_lines, after.size());
    EXPECT_GT(changed, 0u);
    EXPECT_TRUE(lines[0].differs_below && lines[0].expanded);
    const auto inputs = std::find_if(lines.begin(), lines.end(), [&](const ComparedNode& line) {
        return line.before != ComparedNode::absent && before.columns(line.before).name == "Inputs";
    });
    EXPECT_FALSE(inputs->differs_below || inputs->expanded) << "they are the same";

    for (const ComparedNode& line : compare(before, search({0.01, 0.02, 0.1})))
        EXPECT_TRUE(line.difference == Difference::none && !line.differs_below);
    EXPECT_EQ(compare(before, TraceTree()).size(), before.size());
}

/// Lines of one level, with the names given.
TraceTree lines_of(const std::vector<std::string>& names) {
    TraceTree tree;
    for (const std::string& name : names) tree.add(name, 0, TraceKind::argument);
    tree.close();
    return tree;
}

TEST_F(TraceDigest, SiblingsArePairedByTheirNames) {
    const TraceTree before = lines_of({"a", "b", "c", "d", "e"}), after = lines_of({"a", "x", "c", "d", "y", "z", "e"});
    std::string pattern;
    for (const ComparedNode& line : compare(before, after)) pattern += "=*-+"[static_cast<int>(line.difference)];
    EXPECT_EQ(pattern.size(), 8u);
    EXPECT_EQ(std::count(pattern.begin(), pattern.end(), '='), 4);
    EXPECT_EQ(std::count(pattern.begin(), pattern.end(), '-'), 1);
    EXPECT_EQ(std::count(pattern.begin(), pattern.end(), '+'), 3);

    std::vector<std::string> names, others; // too many for the table of pairs
    for (int i = 0; i < 3000; ++i) {
        names.push_back("v" + std::to_string(i));
        others.push_back(i % 3 == 0 ? "w" + std::to_string(i) : names.back());
    }
    others.emplace_back("last");
    std::size_t same = 0, all = 0;
    for (const ComparedNode& line : compare(lines_of(names), lines_of(others))) {
        ++all;
        same += line.difference == Difference::none;
    }
    EXPECT_EQ(same, 2000u);
    EXPECT_EQ(all, 4001u);
}

} // namespace
} // namespace qx::test
