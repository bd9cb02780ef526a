// Public holidays against published dates, and the business-day test that remembers against the one that works it out.
#include "calendar/business_days.h"
#include "calendar/holidays.h"
#include "support/calendar.h"
#include "support/traced.h"

#include <gtest/gtest.h>

#include <map>
#include <set>
#include <vector>

namespace qx::test {
namespace {

// United States Naval Observatory, The Date of Easter, and the tables of the Book of Common Prayer.
TEST(Holidays, EasterIsThatOfTheTables) {
    const std::map<int, std::pair<int, int>> published = {
        {1913, {3, 23}}, {1943, {4, 25}}, {1954, {4, 18}}, {1961, {4, 2}},  {1981, {4, 19}}, {1999, {4, 4}},
        {2000, {4, 23}}, {2001, {4, 15}}, {2005, {3, 27}}, {2008, {3, 23}}, {2011, {4, 24}}, {2016, {3, 27}},
        {2019, {4, 21}}, {2024, {3, 31}}, {2025, {4, 20}}, {2038, {4, 25}}, {2049, {4, 18}}, {2285, {3, 22}}};
    for (const auto& [year, day] : published) EXPECT_EQ(easter_sunday(year), date(year, day.first, day.second)) << year;
}

std::set<int> weekday_holidays(int year, int BusDaySwitch) {
    std::set<int> found;
    for (date day(year, 1, 1); day.year() == year; day.adddays(1))
        if (day.dayofweek() != 1 && day.dayofweek() != 7 && !isbd(day, BusDaySwitch))
            found.insert(day.month() * 100 + day.day());
    return found;
}

// Bank holidays as gov.uk, the New York Stock Exchange and the Canadian government published them, for years
// without special days and without two holidays moved to one Monday.
TEST(Holidays, OfEngland) {
    EXPECT_EQ(weekday_holidays(2007, 101), (std::set<int>{101, 406, 409, 507, 528, 827, 1225, 1226}));
    EXPECT_EQ(weekday_holidays(2019, 101), (std::set<int>{101, 419, 422, 506, 527, 826, 1225, 1226}));
}

TEST(Holidays, OfScotlandAndNorthernIreland) {
    EXPECT_EQ(weekday_holidays(2019, 102), (std::set<int>{101, 102, 419, 422, 506, 527, 805, 1225, 1226}));
    EXPECT_EQ(weekday_holidays(2019, 103), (std::set<int>{101, 318, 419, 422, 506, 527, 712, 826, 1225, 1226}));
}

TEST(Holidays, OfTheNewYorkStockExchange) {
    EXPECT_EQ(weekday_holidays(2007, 200), (std::set<int>{101, 115, 219, 406, 528, 704, 903, 1122, 1225}));
    EXPECT_EQ(weekday_holidays(2010, 200), (std::set<int>{101, 118, 215, 402, 531, 705, 906, 1125, 1224}));
}

TEST(Holidays, OfTheFederalGovernmentOfTheUnitedStates) {
    EXPECT_EQ(weekday_holidays(2019, 201), (std::set<int>{101, 121, 218, 419, 527, 704, 902, 1014, 1111, 1128, 1225}));
}

TEST(Holidays, OfCanadaAndAustralia) {
    EXPECT_EQ(weekday_holidays(2019, 300), (std::set<int>{101, 419, 422, 520, 701, 902, 1014, 1111, 1225, 1226}));
    EXPECT_EQ(weekday_holidays(2018, 400), (std::set<int>{101, 126, 330, 402, 425, 611, 1225, 1226}));
}

// Carnival Monday and Tuesday, Good Friday and Corpus Christi of 2019 by the Brazilian banks' calendar.
TEST(Holidays, OfBrazil) {
    EXPECT_EQ(weekday_holidays(2019, 500), (std::set<int>{101, 304, 305, 419, 501, 620, 1115, 1225}));
}

TEST(Holidays, MovedFromAWeekend) {
    EXPECT_EQ(holiday(date(2004, 6, 1), 5), date(2004, 12, 27));
    EXPECT_EQ(holiday(date(2004, 6, 1), 6), date(2004, 12, 27)) << "no chain from Christmas to Boxing Day";
    EXPECT_EQ(holiday(date(2011, 6, 1), 17), date(2010, 12, 31)) << "from a Saturday to the Friday";
}

TEST(Holidays, NumbersWithoutAHolidayFail) {
    EXPECT_THROW(holiday(date(2005, 1, 1), 20), errlibnonsensicaldate);
    EXPECT_THROW(holiday(date(2005, 1, 1), 101), errlibbadnum);
    EXPECT_THROW(holiday(date(2005, 1, 1), -1), errlibbadnum);
    EXPECT_STREQ(holiday_name(58), "");
    EXPECT_STREQ(holiday_name(100), "");
    EXPECT_THROW(holiday_name(101), errlibbadnum);
}

TEST(Holidays, TheRuleEngineChecksWhatBelongsTogether) {
    const auto event = [](int month, int day, int occurrence, int weekday, int relativity, int relative = 0) {
        return calcdatex(date(2005, 1, 1), month, day, occurrence, weekday, relativity, 0, 0, 0, date(), relative);
    };
    EXPECT_THROW(event(5, 0, 0, 2, 1), errliboptreq);
    EXPECT_THROW(event(5, 0, 1, 0, 1), errliboptreq);
    EXPECT_THROW(event(5, 0, 1, 2, 0), errliboptreq);
    EXPECT_THROW(event(0, 0, 1, 2, 1), errliboptreq);
    EXPECT_EQ(event(0, 0, 0, 0, 3, 39), date(2005, 5, 5)) << "Ascension Day";
    EXPECT_EQ(event(5, 24, 1, 2, 6), date(2005, 5, 23)) << "the Monday on or before 24 May";
    EXPECT_EQ(event(6, 0, 1, 6, 2), date(2005, 7, 1)) << "day 31 of June is 1 July, itself a Friday";
    EXPECT_EQ(event(9, 0, 3, 2, 1), date(2005, 9, 19)) << "the third Monday";
    EXPECT_EQ(event(9, 15, 1, 4, 5), date(2005, 9, 21)) << "the first Wednesday from 15 September";
}

TEST(Holidays, EventsThatRecurInSomeYears) {
    const auto olympics = [](int year, const date& after = {}) {
        return calcdate(date(year, 1, 1), 8, 1, 2000, 4, 1, after);
    };
    EXPECT_TRUE(olympics(2003).iszero());
    EXPECT_EQ(olympics(2004), date(2004, 8, 2)) << "a Sunday moved";
    EXPECT_EQ(olympics(1996), date(1996, 8, 1)) << "years before the first count as well";
    EXPECT_EQ(olympics(2004, date(2004, 8, 10)), date(2004, 8, 11));
}

// What a year's memory says must be what the table says, day by day, in every family; tracing takes the table's road.
TEST(Holidays, TheMemoryOfAYearIsTheTablesAnswer) {
    for (const int family : {20, 21, 22, 100, 101, 102, 103, 200, 201, 300, 400, 500})
        for (const int year : {1910, 1999, 2000, 2010, 2011, 2012, 2400, 3653})
            for (date day(year, 1, 1); day.year() == year && day.isregular();
                 day.adddays(day.dtn() == 182621 ? 2 : 1)) {
                std::string remembered, worked_out;
                for (std::string* answer : {&remembered, &worked_out}) {
                    tracing = answer == &worked_out;
                    try {
                        *answer = isbd(day, family) ? "yes" : "no";
                    } catch (const cls_exception& error) {
                        *answer = error.kind().name;
                    }
                    tracing = false;
                }
                ASSERT_EQ(remembered, worked_out) << family << " " << describe(day);
            }
}

TEST(Holidays, BusinessDaysOfASpanAreThoseOfAWalk) {
    for (const int family : {1, 20, 100, 201, 500})
        for (const auto& [from, to] : std::vector<std::pair<date, date>>{{{2004, 12, 20}, {2005, 1, 10}},
                                                                         {{2005, 1, 1}, {2005, 1, 1}},
                                                                         {{2004, 2, 29}, {2055, 3, 1}},
                                                                         {{2005, 5, 5}, {2004, 5, 5}},
                                                                         {{1908, 6, 1}, {1912, 6, 1}}}) {
            int walked = 0;
            for (date day = from; day < to; day.adddays(1)) walked += isbd(day, family) ? 1 : 0;
            EXPECT_EQ(diffbusdays(from, to, family), walked) << family << describe(from) << describe(to);
        }
}

TEST(Holidays, WithoutASwitchAPartWeekLosesThreeDaysToAWeekend) {
    EXPECT_EQ(diffbusdays(date(2005, 1, 7), date(2005, 1, 10), 0), 0) << "Friday to Monday";
    EXPECT_EQ(diffbusdays(date(2005, 1, 3), date(2005, 1, 24), 0), 15) << "three weeks";
}

// 50 years of working days: the whole test of a call, one day at a time, against the formula.
TEST(BusinessDays, LongSpans) {
    static Range<int> weekend;
    static Range<date> dates;
    weekend.dimension(2);
    weekend(1) = 1;
    weekend(2) = 7;
    dates.dimension(0);
    AnnualSequence holidays;
    holidays.clear("AnnHols", DefaultSequence::none);
    const date from(2005, 1, 1), to(2054, 12, 31);
    EXPECT_EQ(NetWorkDaysX(from, to, weekend, holidays, dates, 0),
              NetWorkDaysX(from, to, weekend, holidays, dates, 20));
    EXPECT_EQ(NetWorkDaysX(from, to, weekend, holidays, dates, 100), diffbusdays(from, to.plusdays(1), 100));
    holidays.setentry(1, 12.24);
    EXPECT_EQ(
        NetWorkDaysX(from, to, weekend, holidays, dates, 20),
        NetWorkDaysX(from, to, weekend, AnnualSequence(), dates, 20) - [&] {
            int weekdays = 0;
            for (int year = 2005; year <= 2054; ++year) {
                const int weekday = date(year, 12, 24).dayofweek();
                weekdays += weekday != 1 && weekday != 7;
            }
            return weekdays;
        }());
}

TEST(RollingFloat, HoldsASwitchAndAConvention) {
    EXPECT_EQ(RollingFloat::of(100.05).switch_number, 100);
    EXPECT_EQ(RollingFloat::of(100.05).convention, 5);
    EXPECT_EQ(RollingFloat::of(99.999999).switch_number, 100);
    EXPECT_EQ(RollingFloat::of(201.29).convention, 29);
}

} // namespace
} // namespace qx::test
