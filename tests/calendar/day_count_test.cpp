// Day counts against published tables of 30/360 and against sums and inverses.
#include "calendar/date_arithmetic.h"
#include "calendar/day_count.h"
#include "calendar/time_period.h"
#include "support/calendar.h"
#include "support/traced.h"

#include <gtest/gtest.h>

#include <cmath>
#include <random>
#include <tuple>
#include <vector>

namespace qx::test {
namespace {

const AnnualSequence& quarters() {
    static const AnnualSequence sequence(4);
    return sequence;
}

double months(const date& from, const date& to, double DayCount, const AnnualSequence& Periods = quarters()) {
    return diffmonths(from, to, DayCount, Periods);
}

struct Row {
    date from, to;
    int bond_basis, eurobond, us;
};

// ISDA's own spreadsheet of examples for its definitions of 30/360 and 30E/360 (30-360-2006ISDADefs.xls), and the
// rule of the Securities Industry Association for the third.
TEST(DayCount, ThirtyDayMonthsAreThoseOfTheIsdaExamples) {
    const Row rows[] = {
        {{2007, 1, 15}, {2007, 1, 30}, 15, 15, 15},    {{2007, 1, 15}, {2007, 2, 15}, 30, 30, 30},
        {{2007, 1, 15}, {2007, 7, 15}, 180, 180, 180}, {{2007, 9, 30}, {2008, 3, 31}, 180, 180, 180},
        {{2007, 9, 30}, {2007, 10, 31}, 30, 30, 30},   {{2007, 9, 30}, {2008, 9, 30}, 360, 360, 360},
        {{2007, 1, 15}, {2007, 1, 31}, 16, 15, 16},    {{2007, 1, 31}, {2007, 2, 28}, 28, 28, 28},
        {{2007, 2, 28}, {2007, 3, 31}, 33, 32, 30},    {{2006, 8, 31}, {2007, 2, 28}, 178, 178, 178},
        {{2007, 2, 28}, {2007, 8, 31}, 183, 182, 180}, {{2007, 2, 14}, {2007, 2, 28}, 14, 14, 14},
        {{2007, 2, 26}, {2008, 2, 29}, 363, 363, 363}, {{2008, 2, 29}, {2009, 2, 28}, 359, 359, 360},
        {{2008, 2, 29}, {2008, 3, 30}, 31, 31, 30},    {{2008, 2, 29}, {2008, 3, 31}, 32, 31, 30},
        {{2007, 2, 28}, {2007, 3, 5}, 7, 7, 5},        {{2007, 10, 31}, {2007, 11, 28}, 28, 28, 28},
        {{2007, 8, 31}, {2008, 2, 29}, 179, 179, 179}, {{2008, 2, 29}, {2008, 8, 31}, 182, 181, 180},
        {{2008, 8, 31}, {2009, 2, 28}, 178, 178, 178}, {{2009, 2, 28}, {2009, 8, 31}, 183, 182, 180},
    };
    for (const Row& row : rows) {
        EXPECT_EQ(daycountdays(row.from, row.to, 10), row.bond_basis) << describe(row.from) << describe(row.to);
        EXPECT_EQ(daycountdays(row.from, row.to, 4), row.eurobond) << describe(row.from) << describe(row.to);
        EXPECT_EQ(daycountdays(row.from, row.to, 12), row.us) << describe(row.from) << describe(row.to);
        EXPECT_NEAR(months(row.from, row.to, 4), row.eurobond / 30.0, 1e-12);
    }
}

TEST(DayCount, FebruaryEndsOfTheOtherRules) {
    const date january(2005, 1, 31), february(2005, 2, 28), march(2005, 3, 31), leap(2004, 2, 29);
    EXPECT_EQ(daycountdays(january, february, 0), 28);
    EXPECT_EQ(daycountdays(february, march, 0), 30);
    EXPECT_EQ(daycountdays(leap, february, 0), 358) << "only the first February is adjusted";
    EXPECT_EQ(daycountdays(leap, february, 12), 360) << "both are";
    EXPECT_EQ(daycountdays(january, february, 11), 30) << "the second is, whatever the first";
    EXPECT_EQ(daycountdays(date(2005, 1, 15), february, 11), 45);
    EXPECT_EQ(daycountdays(january, february, 9), 28) << "days of 9 go by the rule of 0";
    EXPECT_DOUBLE_EQ(months(january, february, 9), 30 * 12 / 365.0) << "months of 9 by the rule of 11";
    EXPECT_EQ(daycountdays(date(2005, 3, 31), date(2005, 5, 31), 4), 60);
    EXPECT_EQ(daycountdays(january, february, 7), daycountdays(january, february, 0));
}

TEST(DayCount, AYearInMonths) {
    const date y2003(2003, 1, 1), y2004(2004, 1, 1), y2005(2005, 1, 1);
    for (const int code : {0, 1, 4, 5, 7, 8, 10, 11, 12}) {
        EXPECT_DOUBLE_EQ(months(y2003, y2004, code), 12.0) << code;
        EXPECT_DOUBLE_EQ(months(y2004, y2005, code), 12.0) << code;
    }
    EXPECT_DOUBLE_EQ(months(y2003, y2004, 2), 12.0 * 365 / 360);
    EXPECT_DOUBLE_EQ(months(y2004, y2005, 3), 12.0 * 366 / 365);
    EXPECT_DOUBLE_EQ(months(y2004, y2005, 6), 12.0);
    EXPECT_DOUBLE_EQ(months(date(2003, 7, 1), date(2004, 7, 1), 1), 6.0 * 368 / 365 + 12.0 * 182 / 366);
    EXPECT_EQ(months(y2004, y2004, 5), 0.0);
    EXPECT_EQ(months(y2005, y2004, 5), -12.0);
    EXPECT_EQ(diffmonths(y2005, y2004, 5, quarters(), false), 0.0);
    // 252 business days of Brazil: 2019 had 253 (the weekdays of 2019 less 8 holidays)
    EXPECT_DOUBLE_EQ(months(date(2019, 1, 1), date(2020, 1, 1), 13), 253 * 12.0 / 252);
}

// Code 8 skips the 29 Februarys from the first date up to the day before the last.
TEST(DayCount, LeapDaysLeftOut) {
    for (const date& from :
         {date(1910, 1, 1), date(1999, 2, 28), date(2000, 2, 29), date(2000, 3, 1), date(2003, 6, 15)}) {
        int leap_days = 0;
        for (date to = from; to < date(2110, 1, 1); to.adddays(1)) {
            ASSERT_EQ(daycountdays(from, to, 8), days_between(from, to) - leap_days)
                << describe(from) << " " << describe(to);
            if (to.month() == 2 && to.day() == 29) ++leap_days;
        }
    }
}

TEST(DayCount, CompositesSplit) {
    const auto split = [](double code) {
        const DayCountCodes codes = DayCountCodes::of(code);
        return std::tuple(codes.core, codes.start_stub, codes.end_stub);
    };
    EXPECT_EQ(split(5), std::tuple(5, 5, 5));
    EXPECT_EQ(split(2.03), std::tuple(2, 3, 3));
    EXPECT_EQ(split(1.0306), std::tuple(1, 3, 6));
    EXPECT_EQ(split(1.0003), std::tuple(1, 0, 3));
    EXPECT_EQ(split(5.2), std::tuple(5, 20, 20));
    EXPECT_EQ(split(20), std::tuple(2, 0, 0));
    EXPECT_EQ(split(35), std::tuple(3, 5, 5));
    EXPECT_EQ(split(154), std::tuple(1, 5, 4));
    EXPECT_EQ(split(999), std::tuple(9, 9, 9));
    EXPECT_THROW(split(2.21), errrbaddaycount);
    EXPECT_THROW(split(2.0021), errrbaddaycount);
    EXPECT_THROW(split(1000), errrbaddaycount);
    EXPECT_EQ(daycount_text(2.03), "Main Period:Actual Days/360Stub Periods:Actual Days/365");
    EXPECT_EQ(daycount_text(5.05), daycount_text(5));
    EXPECT_EQ(daycount_text(19), "Default: Actual Days/Actual Days In Month ('Decimal Year')");
}

// Stubs by actual/365, whole quarters by the core: 15 February to 15 November 2005.
TEST(DayCount, CompositesMeasureStubsApart) {
    const date from(2005, 2, 15), to(2005, 11, 15);
    EXPECT_DOUBLE_EQ(months(from, to, 4.03), (45 + 45) * 12.0 / 365 + 6.0);
    EXPECT_DOUBLE_EQ(months(from, to, 4.0302), 45 * 12.0 / 365 + 6.0 + 45 * 12.0 / 360);
    EXPECT_DOUBLE_EQ(months(from, to, 6), 3.0 * (45.0 / 90) + 6.0 + 3.0 * (45.0 / 92));
    EXPECT_DOUBLE_EQ(months(date(2005, 1, 10), date(2005, 2, 10), 2.03), 31 * 12.0 / 365) << "no core: all start stub";
}

// A stretch cut into parts that are measured as components sums to the whole, wherever the cut between two dates of
// the sequence.
TEST(DayCount, ComponentPartsSumToTheWhole) {
    const date start(2005, 1, 1), finish(2008, 1, 1);
    timeperiod all;
    all.setends(date(2000, 1, 1), date(2020, 1, 1));
    for (const double code : {2.03, 2.0305, 2.0008, 6.0})
        for (date cut = start.plusdays(1); cut < finish; cut.adddays(1)) {
            if (quarters().isdate(cut)) continue;
            const double parts = all.lenmonths(start, cut, code, quarters(), false, true) +
                                 all.lenmonths(cut, finish, code, quarters(), false, true);
            ASSERT_NEAR(parts, all.lenmonths(start, finish, code, quarters(), false, true), 1e-9)
                << code << " cut at " << describe(cut);
        }
}

// Lengths over successive time periods add up to the whole under additive codes.
TEST(DayCount, TimePeriodsAddUp) {
    const date start(2005, 2, 17), finish(2007, 8, 3);
    for (const double code : {1.0, 2.0, 3.0, 5.0, 6.0, 8.0}) {
        double sum = 0.0;
        timeperiod month;
        for (date from(2005, 1, 1); from < finish; from.addmonths(1, true)) {
            month.setends(from, from.plusmonths(1, true));
            sum += month.lenmonths(start, finish, code, quarters());
        }
        EXPECT_NEAR(sum, months(start, finish, code), 1e-10) << code;
    }
}

TEST(DayCount, ThereAndBack) {
    std::mt19937 random(7);
    std::uniform_int_distribution<int> day(36000, 48000), length(-4000, 4000), part(1, 200);
    for (int i = 0; i < 2000; ++i) {
        const date from = date::from_dtn(day(random));
        const int days = length(random);
        for (const double code : {1.0, 2.0, 3.0, 5.0})
            ASSERT_EQ(daycountdays(from, plusdays(from, days, code), code), days) << describe(from);
        // thirty-day months and leap days have lengths that no date is at; they are a day or two off at most
        for (const double code : {0.0, 4.0, 8.0, 10.0, 11.0, 12.0})
            ASSERT_NEAR(daycountdays(from, plusdays(from, days, code), code), days, 2.0)
                << describe(from) << " plus " << days << " under " << code;
        const int months = part(random);
        for (const double code : {1.0, 2.0, 3.0, 5.0, 2.03})
            ASSERT_NEAR(diffmonths(from, plusmonths(from, months, code, quarters()), code, quarters()), months, 0.05)
                << describe(from) << " plus " << months << " months under " << code;
        ASSERT_EQ(diffmonths(from, date::from_dtn(from.dtn() + 500), 5, quarters()),
                  -diffmonths(date::from_dtn(from.dtn() + 500), from, 5, quarters()));
    }
}

TEST(DayCount, TheMiddleOfTwoDates) {
    EXPECT_EQ(midpoint(date(2005, 1, 1), date(2006, 1, 1), 5, quarters()), date(2005, 7, 1));
    EXPECT_EQ(midpoint(date(2006, 1, 1), date(2005, 1, 1), 5, quarters()), date(2005, 7, 1));
}

TEST(DayCount, TheRightCodeForAPeriod) {
    const date start(2005, 2, 15), finish(2005, 11, 15);
    const auto code_in = [&](int month) {
        timeperiod period;
        period.setends(date(2005, month, 1), date(2005, month, 1).plusmonths(1, true));
        return ChooseRightDC(5.0, 2.0, 3.0, start, finish, period);
    };
    EXPECT_EQ(code_in(2), 2.0);
    EXPECT_EQ(code_in(11), 3.0);
    EXPECT_EQ(code_in(5), 5.0);
    timeperiod last;
    last.setends(date(2005, 11, 1), date(2005, 12, 1));
    const DayCountCodes codes = DayCountCodes::of(ChooseRightDC(5.0300, start, finish, last));
    EXPECT_EQ(std::tuple(codes.core, codes.start_stub, codes.end_stub), std::tuple(5, 5, 3));
}

} // namespace
} // namespace qx::test
