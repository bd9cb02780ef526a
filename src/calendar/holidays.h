// Holidays and business days of a date: the table of public holidays, the rule engine that finds a holiday's date in
// a year, and the test whether a date is a business day.
//
// A BusDaySwitch names a family of business days: 0 none, 20 to 22 weekends only, 100 to 103 United Kingdom, 200 and
// 201 United States, 300 Canada, 400 Australia, 500 Brazil. Under any other switch every day is a business day.
//
//     isbd(date(2004, 12, 27), 100);   // false: Christmas Day, moved from the Saturday
#pragma once

#include "calendar/date.h"
#include "core/switches.h"

#include <string>

namespace qx {

inline constexpr int last_holiday = 100;

/// A figure that names a BusDaySwitch (its whole part) and a rolling convention (its two decimals).
struct RollingFloat {
    int switch_number;
    int convention;

    static RollingFloat of(double figure);
};

/// True if the date is a business day of the family: no weekend, and no holiday of the family in the date's year.
bool isbd(const date& day, int BusDaySwitch);
/// The date itself if it is a business day, otherwise the next one or the one before. After 30 days without any, the
/// date arrived at.
date nextbd(const date& day, int BusDaySwitch);
date prevbd(const date& day, int BusDaySwitch);
/// Business days from one date, which is counted, to another, which is not. With a switch of 0 whole weeks count 5
/// days, and in the days over a Sunday takes off 2 and a Saturday 1.
int diffbusdays(const date& date1, const date& date2, int BusDaySwitch);

/// Easter Sunday of a year by the Gregorian computus (the anonymous algorithm).
date easter_sunday(int year);

/// A yearly event at a fixed day of a month, in the year of a date. The zero date in a year in which it does not
/// recur. MoveWeekendsOpt 1 moves a Saturday and a Sunday to the Monday, 2 a Saturday to the Friday. Never on or
/// before AfterDate.
date calcdate(const date& day, int MonthInYear, int DayInMonth, int FirstYear, int RecurringYears, int MoveWeekendsOpt,
              const date& AfterDate);
/// What happens to an event on a weekend.
inline constexpr SwitchValue weekend_move_values[] = {
    {0, "Not moved"}, {1, "Forward to Monday"}, {2, "Saturday back, Sunday forward"}};
/// The same for an event that may also be relative to a month's start or end, to Easter or to a day of a month, by
/// occurrences of a day of the week and by days. Throws errliboptreq for settings that belong together.
date calcdatex(const date& day, int MonthInYear, int DayInMonth, int OccurrenceNo, int DayinWeekOpt, int Relativity,
               int FirstYear, int RecurringYears, int MoveWeekendsOpt, const date& AfterDate, int DaysRelative);
/// The date of a numbered holiday in the year of a date. Throws errlibbadnum outside 0 to 100 and
/// errlibnonsensicaldate for a number without a holiday.
date holiday(const date& day, int HolNum);
/// The name of a numbered holiday; empty for a number without one. Throws errlibbadnum outside 0 to 100.
const char* holiday_name(int HolNum);
/// The switches that name a family of business days.
inline constexpr SwitchValue business_day_values[] = {
    {0, "No Business Day Convention: ie no days excluded. no holidays"},
    {20, "Plain Business Days: Weekends only excluded"},
    {21, "Plain Business Days 1: Weekends only excluded (if date on Saturday needs moving it goes to Monday UK-style)"},
    {22, "Plain Business Days 2: Weekends only excluded (if date on Saturday needs moving it goes to Friday US-style)"},
    {100, "UK Business Days (National): UK National Bank Holidays and weekends excluded. See List of Holidays"},
    {101, "UK Business Days (English and Wales)"},
    {102, "UK Business Days (Scotland)"},
    {103, "UK Business Days (Northern Ireland)"},
    {200, "USA Business Days: US New York Stock Exchange Holidays and weekends excluded"},
    {201, "USA Business Days: US Federal Government Holidays and weekends excluded"},
    {300, "Canada Business Days: Federal Holidays and weekends excluded"},
    {400, "Australian Business Days: Federal (not state) Holidays and weekends excluded"},
    {500, "Brazilian Business Days: National Holidays and Weekends Excluded"},
};
/// The name of a family of business days.
std::string business_days_name(int BusDaySwitch);
/// The names of the family's holidays that fall on a date, and "Weekend "; empty on a business day.
std::string holidays_on(const date& day, int BusDaySwitch);

} // namespace qx
