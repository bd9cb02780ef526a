// Error classes and contexts: what an error says with the trace on and off, and what a context costs.
#include "core/routine.h"
#include "support/allocations.h"
#include "support/traced.h"

#include <limits>
#include <set>

namespace qx::test {
namespace {

using Errors = Traced;

double bounded(double DayCount) {
    Routine here{"DpD"};
    here.limit(DayCount, 0, 999, "DayCount");
    return DayCount;
}

TEST(ErrorTable, CodesAreUniqueAndOpenTheMessage) {
    std::set<std::string> codes, names;
    for (const ErrorClass* error : error_classes) {
        codes.insert(error->code);
        names.insert(error->name);
        EXPECT_EQ(std::string(error->text).rfind("Error " + std::string(error->code) + ": ", 0), 0u) << error->text;
        EXPECT_EQ(std::string(error->text).back(), ' ') << error->name;
    }
    EXPECT_EQ(codes.size(), 83u);
    EXPECT_EQ(names.size(), 83u);
}

TEST(ErrorTable, MessagesAreThoseThatUsersLookUp) {
    const FunctionContext none;
    EXPECT_EQ(uncalc(none).errortext, "Error INP18: UnCalced Cell ");
    EXPECT_EQ(inputdiv(none).errortext,
              "Error INP25: Quexel Function was an #DIV/0! error.   #DIV/0! error value occurs "
              "when a formula divides by 0 (zero). ");
    EXPECT_EQ(OnlyOneDoIf(none).errortext, "Error INP40: Only one DoIf function  per formula allowed ");
    EXPECT_EQ(errrbaddaycount(none).errortext, "Error LIB47: Bad DayCount ");
    EXPECT_EQ(errinconsistent(none).errortext, "Error LIB67: Inconsistent. More than one non-identical answers were "
                                               "possible from the the inputs you specified ");
    EXPECT_EQ(erroutrange(none).errortext, "Error OUT01: Error outputting range ");
}

TEST(ErrorsUntraced, DescriptionIsTheFixedMessageAlone) {
    EXPECT_EQ(failure<errlibmax>([] { bounded(1000); }), "Error LIB16: Value greater than maximum allowed value ");
    FunctionContext context("DpD", "DayCount");
    context.setmessage("dropped");
    EXPECT_EQ(context.text(), "");
    const std::size_t before = allocations();
    EXPECT_EQ(FunctionContext(context).text(), "");
    EXPECT_EQ(allocations(), before) << "a context costs nothing";
}

TEST_F(Errors, DescriptionTellsVariableFunctionMessageAndClassInThisOrder) {
    EXPECT_EQ(failure<errlibmin>([] { bounded(-1); }), "Error LIB17: Value less than minimum allowed value  Variable "
                                                       "DayCount \nFunction: DpD. \nVariable: DayCount. ");
    FunctionContext context("F", "V");
    context.setclass("Range");
    context.setmessage("M");
    EXPECT_EQ(outofrange(context).description(),
              "Error INP02: Out Of Range  Variable V \nFunction: F. \nVariable: V. \nMessage: M. \nClass 'Range'. ");
    EXPECT_EQ(inputerror(FunctionContext()).description(), "Error INP05: General Input Error ");
}

TEST_F(Errors, BoundNamesItsArgumentOnlyWhileItemsAreStored) {
    TraceMuted = true;
    EXPECT_EQ(failure<errlibmax>([] { bounded(1000); }),
              "Error LIB16: Value greater than maximum allowed value \nFunction: DpD. ");
}

TEST_F(Errors, BoundsIncludeTheirEndsAndLetNaNPass) {
    EXPECT_EQ(bounded(0), 0);
    EXPECT_EQ(bounded(999), 999);
    EXPECT_TRUE(std::isnan(bounded(std::numeric_limits<double>::quiet_NaN())));
}

TEST_F(Errors, ContextsMadeInATraceAreNotCopiedAfterIt) {
    const FunctionContext kept("F", "V");
    EXPECT_EQ(inputerror(kept).context.function(), "F");
    trace().TraceShow();
    EXPECT_EQ(inputerror(kept).description(), "Error INP05: General Input Error ");
}

TEST_F(Errors, ANewTraceForgetsTheTextsOfTheOneBefore) {
    const FunctionContext kept("F", "V"), alike("F", "V");
    trace().TraceStart(false);
    const FunctionContext of_this_trace("G", "W");
    EXPECT_EQ(kept.text(), "");
    EXPECT_EQ(alike.function(), "");
    EXPECT_EQ(of_this_trace.variable(), "W");
}

} // namespace
} // namespace qx::test
