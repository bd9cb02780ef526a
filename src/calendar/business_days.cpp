#include "calendar/business_days.h"

#include "calendar/date_arithmetic.h"
#include "calendar/date_functions.h"
#include "calendar/day_count.h"
#include "calendar/holidays.h"
#include "core/routine.h"

#include <algorithm>
#include <cstdint>
#include <cstdlib>
#include <iterator>

namespace qx {

namespace {

constexpr int longest_slip = 30; ///< days tried for a business day

void limit_switch(Routine& here, double BusDaySwitch) { here.limit(BusDaySwitch, 0, 1000, "BusDaySwitch"); }
void limit_daycount(Routine& here, double DayCount) { here.limit(DayCount, 0, 999, "DayCount"); }

int switch_of(double rolling_float) { return RollingFloat::of(rolling_float).switch_number; }

/// The entry of an old form: its arguments, the limit of its switch and the note of what took its place.
template <class... Values>
Routine superseded(const char* name, const char* by, double BusDaySwitch, const Values&... values) {
    Routine here{name};
    here.inputs(values...);
    limit_switch(here, BusDaySwitch);
    here.superseded_by(by);
    return here;
}

bool isweekend(const date& day, View<int> WeekendDays) {
    const int weekday = day.dayofweek();
    if (WeekendDays.size() == 0) return weekday == 1 || weekday == 7;
    return std::find(WeekendDays.begin(), WeekendDays.end(), weekday) != WeekendDays.end();
}

constexpr int first_day = 3654, last_day = 640637; ///< of the regular dates

/// Days of the week that are no business days, 1 Sunday to 7 Saturday.
using Weekend = bool[8];

/// Business days of a stretch, without a walk from day to day: those of the family by its counted years, less those
/// of a weekend of the user's own, less the holidays given that fall on any of the rest.
class BusinessDays {
  public:
    BusinessDays(const Weekend& weekend, const Holidays& holidays) : weekend_(weekend), holidays_(holidays) {}

    /// From one regular date to another, both counted. Throws errlibnonsensicaldate across a day that has no date.
    int between(const date& from, const date& to) const {
        return by_family(from, to) - on_own_weekend(from, to) - on_given_holidays(from, to);
    }

  private:
    int family() const { return holidays_.BusDaySwitch == 0 ? every_day : holidays_.BusDaySwitch; }
    bool counts(const date& day) const { return !weekend_[day.dayofweek()] && isbd(day, family()); }

    int by_family(const date& from, const date& to) const {
        return diffbusdays(from, to, family()) + (isbd(to, family()) ? 1 : 0);
    }
    int on_own_weekend(const date& from, const date& to) const {
        int days = 0;
        for (int weekday = 1; weekday <= 7; ++weekday) {
            if (!weekend_[weekday]) continue;
            const int ahead = (weekday + 7 - from.dayofweek()) % 7;
            if (days_between(from, to) < ahead) continue;
            const int weeks = (days_between(from, to) - ahead) / 7;
            if (every_day_counts_) {
                days += weeks + 1;
            } else if (weekday != 1 && weekday != 7) { // which no family has as business days
                for (int week = 0; week <= weeks; ++week) days += isbd(from.plusdays(ahead + 7 * week), family());
            }
        }
        return days;
    }
    /// Each day once, however often it is given.
    int on_given_holidays(const date& from, const date& to) const {
        static std::uint64_t given[(last_day - first_day) / 64 + 1];
        if (holidays_.HolDates.size() == 0 && holidays_.AnnHols.size() == 0) return 0;
        std::fill(given, given + days_between(from, to) / 64 + 1, 0);
        int days = 0;
        const auto take = [&](const date& day) {
            if (day < from || day > to || !counts(day)) return;
            const int i = days_between(from, day);
            const std::uint64_t bit = std::uint64_t{1} << (i & 63);
            if ((given[i >> 6] & bit) == 0) ++days;
            given[i >> 6] |= bit;
        };
        for (const date& day : holidays_.HolDates) take(day);
        const AnnualSequence& yearly = holidays_.AnnHols;
        const bool rolls = yearly.BusDaySwitch() != 0; // dates of the year before may roll into the first one
        for (int i = 1; i <= yearly.size(); ++i) {
            const auto [month, day] = AnnualSequence::month_day(yearly(i));
            for (int year = from.year() - (rolls ? 1 : 0); year <= to.year(); ++year) {
                const int length = date::days_in_month(month, date::is_leap(year));
                const date fixed = date::from_ymd(year, month, std::min(day, length));
                take(rolls ? nextbd(fixed, yearly.BusDaySwitch()) : fixed);
            }
        }
        return days;
    }

    static constexpr int every_day = 1; ///< a switch that names no family

    const Weekend& weekend_;
    const Holidays& holidays_;
    const bool every_day_counts_ =
        holidays_.BusDaySwitch == 0 || SwitchTable(business_day_values).find(holidays_.BusDaySwitch) == nullptr;
};

[[noreturn]] void fail_beyond_calendar() {
    FunctionContext context("DpDBD", "Days");
    throw errlibdateoutofrange(context);
}

/// The date a number of business days after (or before) another, in leaps. There are at least as many days as business
/// days to it, so a leap of the business days left never goes too far, and the last leap ends on one. While leaps find
/// none, they double, and halve again once one has gone too far.
date plus_business_days(const date& from, int days, const Holidays& holidays) {
    date day = from;
    if (day.iszero() || days == 0) return day;
    static constexpr Weekend none = {};
    const BusinessDays business_days(none, holidays);
    const int step = days < 0 ? -1 : 1;
    long long left = std::abs(static_cast<long long>(days));
    if (!day.isregular()) { // the first step alone may lead into the calendar
        day.adddays(step);
        if (!day.isregular()) fail_beyond_calendar();
        if (holidays.isbd(day)) --left;
    }
    int doublings = 0;
    while (left > 0) {
        const int room = step > 0 ? last_day - day.dtn() : day.dtn() - first_day;
        if (room <= 0) fail_beyond_calendar();
        const int leap = static_cast<int>(std::min<long long>(left << doublings, room));
        const date first = day.plusdays(step), last = day.plusdays(step * leap);
        const int found = step > 0 ? business_days.between(first, last) : business_days.between(last, first);
        if (leap > left && found >= left) {
            --doublings;
            continue;
        }
        day = last;
        left -= found;
        doublings = found == 0 ? doublings + 1 : 0;
    }
    return day;
}

} // namespace

// --- The test -------------------------------------------------------------------------------------------------

bool Holidays::isbd(const date& day) const {
    if (!qx::isbd(day, BusDaySwitch)) return false;
    if (std::find(HolDates.begin(), HolDates.end(), day) != HolDates.end()) return false;
    return AnnHols.size() == 0 || !AnnHols.isdate(day);
}

date Holidays::nextbd(const date& day) const {
    if (BusDaySwitch == 0) return day;
    date slipped = day;
    for (int tests = 1; tests <= longest_slip && !isbd(slipped); ++tests) slipped.adddays(1);
    if (traced() && slipped != day) trace().info(text_of(day, " slipped to next Business Day ", slipped));
    return slipped;
}

date Holidays::prevbd(const date& day) const {
    if (BusDaySwitch == 0) return day;
    date slipped = day;
    for (int tests = 1; tests <= longest_slip && !isbd(slipped); ++tests) slipped.adddays(-1);
    if (traced() && slipped != day) trace().info(text_of(day, " slipped to previous Business Day ", slipped));
    return slipped;
}

bool IsBD(const date& TheDate, int BusDaySwitch, const AnnualSequence& AnnHols, View<date> HolDates) {
    Routine here{"IsBD"};
    here.inputs(TheDate, BusDaySwitch, AnnHols, HolDates);
    limit_switch(here, BusDaySwitch);
    return here.returning(Holidays{BusDaySwitch, AnnHols, HolDates}.isbd(TheDate));
}

date NextBD(const date& TheDate, int BusDaySwitch, const AnnualSequence& AnnHols, View<date> HolDates) {
    Routine here{"NextBD"};
    here.inputs(TheDate, BusDaySwitch, AnnHols, HolDates);
    limit_switch(here, BusDaySwitch);
    return here.returning("DateResult", Holidays{BusDaySwitch, AnnHols, HolDates}.nextbd(TheDate));
}

date PrevBD(const date& TheDate, int BusDaySwitch, const AnnualSequence& AnnHols, View<date> HolDates) {
    Routine here{"PrevBD"};
    here.inputs(TheDate, BusDaySwitch, AnnHols, HolDates);
    limit_switch(here, BusDaySwitch);
    return here.returning("DateResult", Holidays{BusDaySwitch, AnnHols, HolDates}.prevbd(TheDate));
}

bool IsBDX(const date& TheDate, double BusDaySwitch, const AnnualSequence& AnnHols, View<date> HolDates) {
    const Routine here = superseded("IsBDX", "IsBD", BusDaySwitch, TheDate, BusDaySwitch, AnnHols, HolDates);
    return here.returning(IsBD(TheDate, switch_of(BusDaySwitch), AnnHols, HolDates));
}

date NextBDX(const date& TheDate, double BusDaySwitch, const AnnualSequence& AnnHols, View<date> HolDates) {
    const Routine here = superseded("NextBDX", "NextBD", BusDaySwitch, TheDate, BusDaySwitch, AnnHols, HolDates);
    return here.returning("DateResult", NextBD(TheDate, switch_of(BusDaySwitch), AnnHols, HolDates));
}

date PrevBDX(const date& TheDate, double BusDaySwitch, const AnnualSequence& AnnHols, View<date> HolDates) {
    const Routine here = superseded("PrevBDX", "PrevBD", BusDaySwitch, TheDate, BusDaySwitch, AnnHols, HolDates);
    return here.returning("DateResult", PrevBD(TheDate, switch_of(BusDaySwitch), AnnHols, HolDates));
}

bool IsWE(const date& TheDate, View<int> WeekendDays) {
    Routine here{"IsWE"};
    here.inputs(TheDate, WeekendDays);
    return here.returning(isweekend(TheDate, WeekendDays));
}

// --- Named holidays -------------------------------------------------------------------------------------------

bool IsHol(const date& TheDate, int BusDaySwitch) {
    Routine here{"IsHol"};
    here.inputs(TheDate, BusDaySwitch);
    limit_switch(here, BusDaySwitch);
    return here.returning(!isbd(TheDate, BusDaySwitch));
}

std::string WhatHol(const date& TheDate, int BusDaySwitch) {
    Routine here{"WhatHol"};
    here.inputs(TheDate, BusDaySwitch);
    limit_switch(here, BusDaySwitch);
    return here.returning(holidays_on(TheDate, BusDaySwitch));
}

date Holiday(int HolNum, const date& YearOrDate) {
    Routine here{"Holiday"};
    here.inputs(HolNum, YearOrDate);
    return here.returning("DateResult", holiday(YearOrDate, HolNum));
}

std::string DescribeHol(int HolNum) {
    Routine here{"DescribeHol"};
    here.inputs(HolNum);
    return here.returning(std::string(holiday_name(HolNum)));
}

date WesternEaster(const date& YearOrDate) {
    Routine here{"WesternEaster"};
    here.inputs(YearOrDate);
    return here.returning("DateResult", easter_sunday(YearOrDate.year()));
}

std::string DescribeBD(int BusDaySwitch, const AnnualSequence& AnnHols, View<date> HolDates) {
    Routine here{"DescribeBD"};
    here.inputs(BusDaySwitch, AnnHols, HolDates);
    limit_switch(here, BusDaySwitch);
    std::string text = business_days_name(BusDaySwitch);
    if (AnnHols.size() > 0) text += ", and annual holidays (" + describe(AnnHols) + ")";
    if (HolDates.size() > 0) text += ", and " + describe(HolDates.size()) + " other dates";
    return here.returning(std::move(text));
}

date CreateDate(const date& YearOrDate, int MonthInYearOpt, int DayInMonthOpt, int OccurrenceNo, int DayinWeekOpt,
                int Relativity, int FirstYear, int RecurringYrs, int MoveWeekend, const date& AfterDate,
                int DaysRelative) {
    Routine here{"CreateDate"};
    here.inputs(YearOrDate, MonthInYearOpt, DayInMonthOpt, OccurrenceNo, DayinWeekOpt, Relativity, FirstYear,
                RecurringYrs, MoveWeekend, AfterDate, DaysRelative);
    return here.returning("DateResult",
                          calcdatex(YearOrDate, MonthInYearOpt, DayInMonthOpt, OccurrenceNo, DayinWeekOpt, Relativity,
                                    FirstYear, RecurringYrs, MoveWeekend, AfterDate, DaysRelative));
}

date CalcDateX(const date& YearOrDate, int MonthInYearOpt, int DayInMonthOpt, int OccurrenceNo, int DayinWeekOpt,
               int Relativity, int FirstYear, int RecurringYrs, int MoveWeekend, const date& AfterDate,
               int DaysRelative) {
    Routine here{"CalcDateX"};
    here.inputs(YearOrDate, MonthInYearOpt, DayInMonthOpt, OccurrenceNo, DayinWeekOpt, Relativity, FirstYear,
                RecurringYrs, MoveWeekend, AfterDate, DaysRelative);
    return here.returning("DateResult",
                          CreateDate(YearOrDate, MonthInYearOpt, DayInMonthOpt, OccurrenceNo, DayinWeekOpt, Relativity,
                                     FirstYear, RecurringYrs, MoveWeekend, AfterDate, DaysRelative));
}

date CalcDate(const date& YearOrDate, int MonthInYear, int DayInMonth, int FirstYear, int RecurringYrs, int MoveWeekend,
              const date& AfterDate) {
    Routine here{"CalcDate"};
    here.inputs(YearOrDate, MonthInYear, DayInMonth, FirstYear, RecurringYrs, MoveWeekend, AfterDate);
    here.info("Function hidden: superceded (compatibly) by CreateDate");
    return here.returning(
        "DateResult", calcdate(YearOrDate, MonthInYear, DayInMonth, FirstYear, RecurringYrs, MoveWeekend, AfterDate));
}

// --- Counting -------------------------------------------------------------------------------------------------

namespace {

/// Working days by whole weeks, without holidays.
double weeks_and_rest(const date& FromDate, const date& ToDate, View<int> WeekendDays) {
    const int days = days_between(FromDate, ToDate) + 1;
    const int weeks = days / 7;
    const int rest = days - 7 * weeks;
    int result = days - weeks * WeekendDays.size();
    for (int i = 1; i <= rest; ++i) {
        const int weekday = (ToDate.dayofweek() - (i - 1) + 6) % 7 + 1;
        result -= static_cast<int>(std::count(WeekendDays.begin(), WeekendDays.end(), weekday));
    }
    return result;
}

/// Working days where an end lies outside the regular dates, one by one.
double day_by_day(const date& FromDate, const date& ToDate, const Weekend& weekend, const Holidays& holidays) {
    int count = 0;
    for (date day = FromDate; day <= ToDate && !day.iszero(); day.adddays(1)) // the zero date does not move
        if (!weekend[day.dayofweek()] && holidays.isbd(day)) ++count;
    return count;
}

double working_days(const date& FromDate, const date& ToDate, View<int> WeekendDays, const AnnualSequence& AnnHols,
                    View<date> HolDates, int BusDaySwitch) {
    if (AnnHols.size() == 0 && HolDates.size() == 0 && BusDaySwitch == 0)
        return weeks_and_rest(FromDate, ToDate, WeekendDays);
    Weekend weekend = {};
    for (int weekday = 1; weekday <= 7; ++weekday)
        weekend[weekday] = WeekendDays.size() == 0
                               ? weekday == 1 || weekday == 7
                               : std::find(WeekendDays.begin(), WeekendDays.end(), weekday) != WeekendDays.end();
    const Holidays holidays{BusDaySwitch, AnnHols, HolDates};
    if (FromDate > ToDate) return 0.0;
    if (!FromDate.isregular() || !ToDate.isregular()) return day_by_day(FromDate, ToDate, weekend, holidays);
    return BusinessDays(weekend, holidays).between(FromDate, ToDate);
}

} // namespace

double NetWorkDaysX(const date& FromDate, const date& ToDate, View<int> WeekendDays, const AnnualSequence& AnnHols,
                    View<date> HolDates, int BusDaySwitch) {
    Routine here{"NetWorkDaysX"};
    here.inputs(FromDate, ToDate, WeekendDays, AnnHols, HolDates, BusDaySwitch);
    limit_switch(here, BusDaySwitch);
    return here.returning(working_days(FromDate, ToDate, WeekendDays, AnnHols, HolDates, BusDaySwitch));
}

double NetWorkDaysQX(const date& FromDate, const date& ToDate, View<int> WeekendDays, const AnnualSequence& AnnHols,
                     View<date> HolDates, int BusDaySwitch) {
    Routine here{"NetWorkDaysQX"};
    here.inputs(FromDate, ToDate, WeekendDays, AnnHols, HolDates, BusDaySwitch);
    limit_switch(here, BusDaySwitch);
    return here.returning(working_days(FromDate, ToDate, WeekendDays, AnnHols, HolDates, BusDaySwitch));
}

// --- Date plus, rolled ----------------------------------------------------------------------------------------

date DpDBD(const date& TheDate, double Days, int BusDaySwitch, const AnnualSequence& AnnHols, View<date> HolDates,
           double DayCount, const AnnualSequence& Periods, int BDOption) {
    Routine here{"DpDBD"};
    here.inputs(TheDate, Days, BusDaySwitch, AnnHols, HolDates, DayCount, Periods, BDOption);
    limit_switch(here, BusDaySwitch);
    limit_daycount(here, DayCount);
    here.limit(BDOption, 0, 1, "BDOption");
    const Holidays holidays{BusDaySwitch, AnnHols, HolDates};
    const date moved =
        BDOption == 1 ? plus_business_days(TheDate, whole(Days), holidays) : plusdays(TheDate, Days, DayCount);
    return here.returning("DateResult", holidays.nextbd(moved));
}

date DpMBD(const date& TheDate, double Months, int BusDaySwitch, const AnnualSequence& AnnHols, View<date> HolDates,
           double DayCount, const AnnualSequence& Periods) {
    Routine here{"DpMBD"};
    here.inputs(TheDate, Months, BusDaySwitch, AnnHols, HolDates, DayCount, Periods);
    limit_switch(here, BusDaySwitch);
    limit_daycount(here, DayCount);
    return here.returning(
        "DateResult", Holidays{BusDaySwitch, AnnHols, HolDates}.nextbd(plusmonths(TheDate, Months, DayCount, Periods)));
}

date DpYBD(const date& TheDate, double Yrs, int BusDaySwitch, const AnnualSequence& AnnHols, View<date> HolDates,
           double DayCount, const AnnualSequence& Periods) {
    Routine here{"DpYBD"};
    here.inputs(TheDate, Yrs, BusDaySwitch, AnnHols, HolDates, DayCount, Periods);
    limit_switch(here, BusDaySwitch);
    limit_daycount(here, DayCount);
    return here.returning("DateResult", Holidays{BusDaySwitch, AnnHols, HolDates}.nextbd(
                                            plusmonths(TheDate, Yrs * 12.0, DayCount, Periods)));
}

date DpDBDX(const date& TheDate, double Days, double BusDaySwitch, const AnnualSequence& AnnHols, View<date> HolDates,
            double DayCount, const AnnualSequence& Periods) {
    const Routine here =
        superseded("DpDBDX", "DpDBD", BusDaySwitch, TheDate, Days, BusDaySwitch, AnnHols, HolDates, DayCount, Periods);
    return here.returning("DateResult",
                          DpDBD(TheDate, Days, switch_of(BusDaySwitch), AnnHols, HolDates, DayCount, Periods, 0));
}

date DpMBDX(const date& TheDate, double Months, double BusDaySwitch, const AnnualSequence& AnnHols, View<date> HolDates,
            double DayCount, const AnnualSequence& Periods) {
    const Routine here = superseded("DpMBDX", "DpMBD", BusDaySwitch, TheDate, Months, BusDaySwitch, AnnHols, HolDates,
                                    DayCount, Periods);
    return here.returning("DateResult",
                          DpMBD(TheDate, Months, switch_of(BusDaySwitch), AnnHols, HolDates, DayCount, Periods));
}

date DpYBDX(const date& TheDate, double Yrs, double BusDaySwitch, const AnnualSequence& AnnHols, View<date> HolDates,
            double DayCount, const AnnualSequence& Periods) {
    const Routine here =
        superseded("DpYBDX", "DpYBD", BusDaySwitch, TheDate, Yrs, BusDaySwitch, AnnHols, HolDates, DayCount, Periods);
    return here.returning("DateResult",
                          DpYBD(TheDate, Yrs, switch_of(BusDaySwitch), AnnHols, HolDates, DayCount, Periods));
}

// --- Next and previous, rolled --------------------------------------------------------------------------------

date NextDateSeqBD(const date& TheDate, const AnnualSequence& AnnDateSeq, View<date> SpecificDates, int BusDaySwitch,
                   const AnnualSequence& AnnHols, View<date> HolDates) {
    Routine here{"NextDateSeqBD"};
    here.inputs(TheDate, AnnDateSeq, SpecificDates, BusDaySwitch, AnnHols, HolDates);
    limit_switch(here, BusDaySwitch);
    return here.returning("DateResult", Holidays{BusDaySwitch, AnnHols, HolDates}.nextbd(
                                            NextDateSeq(TheDate, AnnDateSeq, SpecificDates)));
}

date PrevDateSeqBD(const date& TheDate, const AnnualSequence& AnnDateSeq, View<date> SpecificDates, int BusDaySwitch,
                   const AnnualSequence& AnnHols, View<date> HolDates) {
    Routine here{"PrevDateSeqBD"};
    here.inputs(TheDate, AnnDateSeq, SpecificDates, BusDaySwitch, AnnHols, HolDates);
    limit_switch(here, BusDaySwitch);
    return here.returning("DateResult", Holidays{BusDaySwitch, AnnHols, HolDates}.nextbd(
                                            PrevDateSeq(TheDate, AnnDateSeq, SpecificDates)));
}

date NextDateSeqBDX(const date& TheDate, const AnnualSequence& AnnDateSeq, View<date> SpecificDates,
                    double BusDaySwitch, const AnnualSequence& AnnHols, View<date> HolDates) {
    const Routine here = superseded("NextDateSeqBDX", "NextDateSeqBD", BusDaySwitch, TheDate, AnnDateSeq, SpecificDates,
                                    BusDaySwitch, AnnHols, HolDates);
    return here.returning(
        "DateResult", NextDateSeqBD(TheDate, AnnDateSeq, SpecificDates, switch_of(BusDaySwitch), AnnHols, HolDates));
}

date PrevDateSeqBDX(const date& TheDate, const AnnualSequence& AnnDateSeq, View<date> SpecificDates,
                    double BusDaySwitch, const AnnualSequence& AnnHols, View<date> HolDates) {
    const Routine here = superseded("PrevDateSeqBDX", "PrevDateSeqBD", BusDaySwitch, TheDate, AnnDateSeq, SpecificDates,
                                    BusDaySwitch, AnnHols, HolDates);
    return here.returning(
        "DateResult", PrevDateSeqBD(TheDate, AnnDateSeq, SpecificDates, switch_of(BusDaySwitch), AnnHols, HolDates));
}

date NextDateListBD(const date& TheDate, View<date> SpecificDates, int BusDaySwitch) {
    Routine here{"NextDateListBD"};
    here.inputs(TheDate, SpecificDates, BusDaySwitch);
    limit_switch(here, BusDaySwitch);
    return here.returning("DateResult", nextbd(NextDateList(TheDate, SpecificDates), BusDaySwitch));
}

date PrevDateListBD(const date& TheDate, View<date> SpecificDates, int BusDaySwitch) {
    Routine here{"PrevDateListBD"};
    here.inputs(TheDate, SpecificDates, BusDaySwitch);
    limit_switch(here, BusDaySwitch);
    return here.returning("DateResult", nextbd(PrevDateList(TheDate, SpecificDates), BusDaySwitch));
}

} // namespace qx
