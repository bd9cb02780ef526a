// Business days of a worksheet call: a family of business days, holidays that recur every year, and one-off dates.
//
// A BusDaySwitch (0 to 1000) names the family: see holidays.h. Every routine throws errlibmin or errlibmax outside
// these limits, before anything else. An empty AnnHols or HolDates adds no holidays.
#pragma once

#include "calendar/annual_sequence.h"
#include "calendar/date.h"
#include "core/range.h"

#include <string>

namespace qx {

/// The holiday arguments of one call.
struct Holidays {
    int BusDaySwitch;
    const AnnualSequence& AnnHols;
    View<date> HolDates;

    /// A business day of the family that is none of the holidays.
    bool isbd(const date& day) const;
    /// The date, or the next or previous business day, at most 30 days off. With a switch of 0 always the date.
    date nextbd(const date& day) const;
    date prevbd(const date& day) const;
};

// The business-day test, and the nearest business day on or after, or on or before, a date.
bool IsBD(const date& TheDate, int BusDaySwitch, const AnnualSequence& AnnHols, View<date> HolDates);
date NextBD(const date& TheDate, int BusDaySwitch, const AnnualSequence& AnnHols, View<date> HolDates);
date PrevBD(const date& TheDate, int BusDaySwitch, const AnnualSequence& AnnHols, View<date> HolDates);
// The same with the switch as the whole part of a rolling float.
bool IsBDX(const date& TheDate, double BusDaySwitch, const AnnualSequence& AnnHols, View<date> HolDates);
date NextBDX(const date& TheDate, double BusDaySwitch, const AnnualSequence& AnnHols, View<date> HolDates);
date PrevBDX(const date& TheDate, double BusDaySwitch, const AnnualSequence& AnnHols, View<date> HolDates);

/// True if the date's weekday (1 Sunday to 7 Saturday) is one of WeekendDays, which are 1 and 7 if there are none.
bool IsWE(const date& TheDate, View<int> WeekendDays);
/// True on a holiday of the family and on a weekend; the names of the holidays on a date.
bool IsHol(const date& TheDate, int BusDaySwitch);
std::string WhatHol(const date& TheDate, int BusDaySwitch);
/// A numbered holiday in a year: its date and its name.
date Holiday(int HolNum, const date& YearOrDate);
std::string DescribeHol(int HolNum);
date WesternEaster(const date& YearOrDate);
std::string DescribeBD(int BusDaySwitch, const AnnualSequence& AnnHols, View<date> HolDates);

/// A yearly event's date: see calcdatex() in holidays.h.
date CreateDate(const date& YearOrDate, int MonthInYearOpt, int DayInMonthOpt, int OccurrenceNo, int DayinWeekOpt,
                int Relativity, int FirstYear, int RecurringYrs, int MoveWeekend, const date& AfterDate,
                int DaysRelative);
date CalcDateX(const date& YearOrDate, int MonthInYearOpt, int DayInMonthOpt, int OccurrenceNo, int DayinWeekOpt,
               int Relativity, int FirstYear, int RecurringYrs, int MoveWeekend, const date& AfterDate,
               int DaysRelative);
date CalcDate(const date& YearOrDate, int MonthInYear, int DayInMonth, int FirstYear, int RecurringYrs, int MoveWeekend,
              const date& AfterDate);

/// Working days from one date to another, both counted: days that are neither a weekday of WeekendDays nor a holiday.
/// Without holidays and with a switch of 0, no WeekendDays means none; otherwise it means Sunday and Saturday.
double NetWorkDaysX(const date& FromDate, const date& ToDate, View<int> WeekendDays, const AnnualSequence& AnnHols,
                    View<date> HolDates, int BusDaySwitch);
double NetWorkDaysQX(const date& FromDate, const date& ToDate, View<int> WeekendDays, const AnnualSequence& AnnHols,
                     View<date> HolDates, int BusDaySwitch);

// A date plus days, months or years under a day count, rolled on to a business day.

/// With a BDOption of 1 the days are business days.
date DpDBD(const date& TheDate, double Days, int BusDaySwitch, const AnnualSequence& AnnHols, View<date> HolDates,
           double DayCount, const AnnualSequence& Periods, int BDOption);
date DpMBD(const date& TheDate, double Months, int BusDaySwitch, const AnnualSequence& AnnHols, View<date> HolDates,
           double DayCount, const AnnualSequence& Periods);
date DpYBD(const date& TheDate, double Yrs, int BusDaySwitch, const AnnualSequence& AnnHols, View<date> HolDates,
           double DayCount, const AnnualSequence& Periods);
date DpDBDX(const date& TheDate, double Days, double BusDaySwitch, const AnnualSequence& AnnHols, View<date> HolDates,
            double DayCount, const AnnualSequence& Periods);
date DpMBDX(const date& TheDate, double Months, double BusDaySwitch, const AnnualSequence& AnnHols, View<date> HolDates,
            double DayCount, const AnnualSequence& Periods);
date DpYBDX(const date& TheDate, double Yrs, double BusDaySwitch, const AnnualSequence& AnnHols, View<date> HolDates,
            double DayCount, const AnnualSequence& Periods);

// The next and previous date of a sequence and a list, rolled on to a business day. The lists are in any order.

date NextDateSeqBD(const date& TheDate, const AnnualSequence& AnnDateSeq, View<date> SpecificDates, int BusDaySwitch,
                   const AnnualSequence& AnnHols, View<date> HolDates);
date PrevDateSeqBD(const date& TheDate, const AnnualSequence& AnnDateSeq, View<date> SpecificDates, int BusDaySwitch,
                   const AnnualSequence& AnnHols, View<date> HolDates);
date NextDateSeqBDX(const date& TheDate, const AnnualSequence& AnnDateSeq, View<date> SpecificDates,
                    double BusDaySwitch, const AnnualSequence& AnnHols, View<date> HolDates);
date PrevDateSeqBDX(const date& TheDate, const AnnualSequence& AnnDateSeq, View<date> SpecificDates,
                    double BusDaySwitch, const AnnualSequence& AnnHols, View<date> HolDates);
date NextDateListBD(const date& TheDate, View<date> SpecificDates, int BusDaySwitch);
date PrevDateListBD(const date& TheDate, View<date> SpecificDates, int BusDaySwitch);

} // namespace qx
