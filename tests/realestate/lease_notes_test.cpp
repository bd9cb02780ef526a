// What the trace shows of the choices that a lease function made for its user.
#include "support/traced.h"

#include <gtest/gtest.h>
#include <hosts/sheet/workbook.h>

#include <algorithm>
#include <string_view>

namespace qx::test {
namespace {

/// True if the trace of a formula has an item with some words in it.
bool notes(std::string_view formula, std::string_view words) {
    sheet::Workbook book;
    trace().TraceStart();
    book.evaluate(book.read(formula), sheet::Area(sheet::CellAddress{}));
    const std::vector<std::string> lines = trace_lines();
    trace().TraceShow();
    return std::any_of(lines.begin(), lines.end(),
                       [&](const std::string& line) { return line.find(words) != std::string::npos; });
}

TEST(LeaseNotes, AbsoluteFinishLeavesOneBreak) {
    constexpr std::string_view note = "Breaks array getting reduced in size to just 1 entry";
    EXPECT_TRUE(notes("RentGrowR(2006,24,2005,{2008;2015},2010,100,90,2005,0,60,0,0,0,5,0,4,0,2007)", note));
    EXPECT_FALSE(notes("RentGrowR(2006,24,2005,{2008;2015},2010,100,90,2005,0,60)", note));
    EXPECT_FALSE(notes("RentGrowR(2006,24,2005,2008,2010,100,90,2005,0,60,0,0,0,5,0,4,0,2007)", note));
}

TEST(LeaseNotes, RentsToFillAreNamedByTheirList) {
    EXPECT_TRUE(notes("FStepRentGrow(2006,12,2020,100,{2005;2008},{0;90},2005,0,2010,60)",
                      "Zero initial rent encountered with rent no 1"));
    EXPECT_TRUE(notes("TStepRentGrow(2006,12,2005,2020,100,{2008;2010},{0;90},2005,0,60)",
                      "Zero initial rent encountered, reviewing to market at Rent Start Date of 1Jan2005"));
    EXPECT_TRUE(notes("TStepRentGrow(2006,12,2005,2020,100,ZZ99,ZZ99,2005,0,60)",
                      "Warning: No fixed initial rent or review specified, assuming an initial rent based on market of "
                      "100.000 and a first review of 1Jan2010"));
    EXPECT_TRUE(notes("FStepRentGrow(2006,12,2020,100,ZZ99,ZZ99,2005,0)", "No rents or reviews specified"));
}

TEST(LeaseNotes, OptionsAreNamed) {
    constexpr std::string_view relets = "RentGrowR(2006,24,2005,2008,2010,100,90,2005,0,60,0,0,0,5,0,4,0,0,0,5)";
    EXPECT_TRUE(notes(relets, "Daycount for calculating new rent start is the same as for rent."));
    EXPECT_TRUE(notes(relets, "Market Rents on relet grow from Lease Start"));
    constexpr std::string_view steps =
        "TStepIdxRentGrowR(2006,12,2005,2015,100,2007,90,2005,0,2005,0,12,2005,2006,0,0,5,0,4,0,2006,0,3072)";
    EXPECT_TRUE(
        notes(steps, "Indexed Step Option (ROpts=1024): The input stepped rents will be escalated with indexation"));
    EXPECT_TRUE(notes(steps, "AbStart overrides RentStart."));
    EXPECT_TRUE(notes("LeaseInfo(2005,6,DATE(2005,7,1),,,2020,15,0,1)", "Strict ambiguity testing"));
}

} // namespace
} // namespace qx::test
