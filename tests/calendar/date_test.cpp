// Dates against the C++20 calendar, and the moves at the ends of months, years and the calendar itself.
#include "calendar/date.h"
#include "support/calendar.h"
#include "support/traced.h"

#include <gtest/gtest.h>

#include <chrono>
#include <cmath>
#include <limits>
#include <string>

namespace qx::test {
namespace {

using std::chrono::days;
using std::chrono::sys_days;
using std::chrono::year_month_day;

// Excel's serial numbers are days since 30 December 1899, from 1 March 1900 on.
year_month_day calendar_day(int number) {
    return sys_days{std::chrono::year{1899} / std::chrono::December / 30} + days{number};
}

date numbered(double number) {
    date value;
    value = number;
    return value;
}

constexpr int first = 3654;  // 1 January 1910
constexpr int last = 640637; // 31 December 3653
bool is_missing_day(int number) { return number == 182622 || number == 328719 || number == 474816 || number == 620913; }

TEST(Date, AgreesWithTheCalendarOnEveryDay) {
    for (int number = first; number <= last; ++number) {
        if (is_missing_day(number)) {
            const year_month_day day = calendar_day(number);
            ASSERT_TRUE(day.month() == std::chrono::December && day.day() == std::chrono::day{31} &&
                        static_cast<int>(day.year()) % 400 == 399);
            ASSERT_THROW(numbered(number), errlibnonsensicaldate) << number;
            continue;
        }
        const year_month_day day = calendar_day(number);
        const date found = numbered(number);
        const int year = static_cast<int>(day.year());
        const int month = static_cast<int>(static_cast<unsigned>(day.month()));
        const int day_of_month = static_cast<int>(static_cast<unsigned>(day.day()));
        ASSERT_TRUE(found.year() == year && found.month() == month && found.day() == day_of_month)
            << number << " is " << describe(found);
        ASSERT_EQ(found.leap(), day.year().is_leap()) << number;
        ASSERT_EQ(found.dayofweek(), static_cast<int>(std::chrono::weekday{sys_days{day}}.c_encoding()) + 1) << number;
        const int length =
            static_cast<int>(static_cast<unsigned>((day.year() / day.month() / std::chrono::last).day()));
        ASSERT_EQ(found.daysinmonth(), length) << number;
        ASSERT_EQ(found.months(), year * 12 + (month - 1) + static_cast<double>(day_of_month - 1) / length) << number;
        ASSERT_EQ(date(year, month, day_of_month).dtn(), number);
    }
}

// A walk of month ends over 400 years: by single months, and at once.
TEST(Date, MonthEndsStayMonthEnds) {
    date walked(1910, 1, 31);
    for (int i = 1; i <= 4800; ++i) {
        const auto month =
            std::chrono::year_month{std::chrono::year{1910}, std::chrono::January} + std::chrono::months{i};
        const sys_days expected{month / std::chrono::last};
        const int number = static_cast<int>((expected - sys_days{std::chrono::year{1899} / 12 / 30}).count());
        walked.addmonths(1, true);
        ASSERT_EQ(walked.dtn(), number) << i;
        ASSERT_EQ(date(1910, 1, 31).plusmonths(i, false), walked) << i;
        ASSERT_EQ(walked.plusmonths(-i, true), date(1910, 1, 31)) << i;
        ASSERT_EQ(walked.monthstart().monthend(), walked);
    }
}

TEST(Date, ReadsNumbers) {
    EXPECT_TRUE(numbered(0).iszero());
    EXPECT_EQ(numbered(1910).dtn(), first);
    EXPECT_EQ(numbered(2005).dtn(), 38353);
    EXPECT_EQ(describe(numbered(2005.5)), "1Jul2005");
    EXPECT_EQ(numbered(2005.3).months(), 2005.3 * 12.0) << "a decimal year keeps its count of months";
    EXPECT_EQ(numbered(38000.99), date(2004, 1, 14)) << "the time of day is dropped";
    EXPECT_EQ(numbered(3653), DateCrit);
    EXPECT_EQ(numbered(3653.5), DateCrit);
    EXPECT_EQ(numbered(3654), date(1910, 1, 1));
    EXPECT_EQ(numbered(641003).year(), 3653);
    EXPECT_EQ(numbered(641003).dtn(), 641003);
    EXPECT_THROW(numbered(641004), outofrange);
    EXPECT_THROW(numbered(std::nan("")), outofrange);
    EXPECT_THROW(numbered(std::numeric_limits<double>::infinity()), outofrange);
    EXPECT_THROW(numbered(-std::numeric_limits<double>::infinity()), errlibmindate);
    EXPECT_THROW(numbered(-1), errlibmindate);
    EXPECT_THROW(date(1909.0), errlibconstructorerror);
    EXPECT_THROW(date(2005, 13, 1), errlibconstructorerror);
    EXPECT_EQ(date(2005, 6, 31).dtn(), date(2005, 7, 1).dtn()) << "a day past its month runs on";
}

TEST_F(Traced, ATooLowNumberTellsItsValue) {
    EXPECT_EQ(failure<errlibmindate>([] { numbered(1909.99); }),
              "Error LIB40: Date less than minimum allowed value \nMessage:  (Value was 1909.990). \nClass 'Date'. ");
}

TEST(Date, MovesByMonthsAndYears) {
    const auto plus = [](const date& day, int n, bool keep) { return describe(day.plusmonths(n, keep)); };
    EXPECT_EQ(plus(date(2005, 1, 31), 1, false), "28Feb2005");
    EXPECT_EQ(plus(date(2004, 1, 31), 1, false), "29Feb2004");
    EXPECT_EQ(plus(date(2005, 2, 28), 1, true), "31Mar2005");
    EXPECT_EQ(plus(date(2005, 2, 28), 1, false), "28Mar2005");
    EXPECT_EQ(plus(date(2005, 2, 1), -1, true), "1Jan2005");
    EXPECT_EQ(plus(date(2005, 1, 15), -13, true), "15Dec2003");
    EXPECT_EQ(plus(date(2005, 12, 15), 12, true), "15Dec2006");
    EXPECT_EQ(describe(date(2005, 1, 1).plusmonths(0.5)), "16Jan2005");
    EXPECT_EQ(describe(date(2005, 1, 1).plusmonths(0.3)), "10Jan2005") << "9.3 days, not rounded";
    EXPECT_EQ(describe(date(2005, 1, 1).plusmonths(0.35)), "11Jan2005") << "10.85 days, not rounded";
    EXPECT_EQ(describe(date(2004, 2, 29).plusyears(1, true)), "28Feb2005");
    EXPECT_EQ(describe(date(2007, 2, 28).plusyears(1, true)), "29Feb2008");
    EXPECT_EQ(describe(date(2007, 2, 28).plusyears(1, false)), "28Feb2008");
    EXPECT_EQ(describe(date(2005, 1, 1).plusyears(0.5, false)), "1Jul2005");
    EXPECT_EQ(describe(date(3653, 12, 31).plusyears(5, true)), "31Dec3653");
    for (date zero : {date(), date(0.0)}) {
        EXPECT_TRUE(zero.adddays(400).iszero());
        EXPECT_TRUE(zero.addmonths(5, true).iszero());
        EXPECT_TRUE(zero.addmonths(0.5).iszero());
        EXPECT_TRUE(zero.addyears(3, true).iszero());
    }
}

// Any move ends in a date or in an error, never in a day that there is not.
TEST(Date, MovesPastTheEndsFailCleanly) {
    const date day(2005, 5, 31);
    for (const double n : {1e300, -1e300, 2147483647.0, -2147483648.0, 1e9, -1e9, -24000.0, -23999.5, 20000.25,
                           std::nan(""), std::numeric_limits<double>::infinity()}) {
        for (const auto& move :
             {+[](date d, double x) { return d.addmonths(x); }, +[](date d, double x) { return d.addyears(x, true); },
              +[](date d, double x) { return d.adddays(whole(x)); }}) {
            try {
                const date moved = move(day, n);
                EXPECT_TRUE(moved.month() >= 1 && moved.month() <= 12 && moved.day() >= 1 && moved.day() <= 31)
                    << n << " gives " << describe(moved);
                EXPECT_LE(moved.year(), date::maxyear);
            } catch (const cls_exception&) {}
        }
    }
}

TEST(Date, Anniversaries) {
    const date day(2005, 6, 24);
    EXPECT_EQ(day.prevanniversary(6, 24, false), day);
    EXPECT_EQ(day.prevanniversary(6, 24, true), date(2004, 6, 24));
    EXPECT_EQ(day.nextanniversary(6, 24, false), date(2006, 6, 24));
    EXPECT_EQ(day.nextanniversary(6, 24, true), day);
    EXPECT_EQ(date(2005, 1, 1).nearestanniversary(2, 29, 2), date(2005, 2, 28));
    EXPECT_EQ(date(2004, 1, 1).nearestanniversary(2, 29, 2), date(2004, 2, 29));
    EXPECT_EQ(date(2005, 9, 1).nearestanniversary(1, 1, 0), date(2006, 1, 1));
    // 183 days each way: a leap year of 366 days between
    EXPECT_EQ(date(2004, 7, 2).nearestanniversary(1, 1, 0), date(2004, 1, 1)) << "the previous one at a tie";
    EXPECT_THROW(day.nearestanniversary(1, 1, 3), errlibbadnum);
}

TEST(Date, ToADayOfTheWeekOrMonth) {
    const date saturday(2005, 1, 1);
    const auto to_weekday = [&](int weekday, int mode) {
        return days_between(saturday, date(saturday).movetoweekday(weekday, mode));
    };
    EXPECT_EQ(to_weekday(7, 2), 0);
    EXPECT_EQ(to_weekday(4, 0), 4) << "4 days on is nearer than 3 back";
    EXPECT_EQ(to_weekday(5, 0), -2);
    EXPECT_EQ(to_weekday(1, 1), -6);
    EXPECT_EQ(to_weekday(6, 2), 6);
    EXPECT_EQ(to_weekday(1, 3), 0);
    const auto to_day = [](date day, int of_month, int mode) { return describe(day.movetomonthday(of_month, mode)); };
    EXPECT_EQ(to_day(date(2005, 2, 10), 31, 0), "31Jan2005");
    EXPECT_EQ(to_day(date(2005, 2, 10), 31, 1), "31Jan2005");
    EXPECT_EQ(to_day(date(2005, 2, 10), 31, 2), "28Feb2005");
    EXPECT_EQ(to_day(date(2005, 4, 30), 31, 0), "30Apr2005");
    EXPECT_EQ(to_day(date(2005, 4, 16), 1, 0), "1May2005") << "15 days each way: the later";
    EXPECT_EQ(to_day(date(2005, 1, 5), 20, 1), "20Dec2004");
    EXPECT_EQ(to_day(date(2005, 12, 25), 20, 2), "20Jan2006");
}

TEST(Date, Words) {
    EXPECT_EQ(describe(date(2004, 2, 29)), "29Feb2004");
    EXPECT_STREQ(date(2000, 1, 1).dayname(), "Saturday");
    EXPECT_STREQ(weekday_name(8), "Unknown day");
    EXPECT_EQ(ordinal(3) + ordinal(11) + ordinal(20), "3rd11st20th");
}

} // namespace
} // namespace qx::test
