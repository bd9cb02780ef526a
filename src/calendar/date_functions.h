// Dates on the worksheet: differences, dates moved by a length, sequences and lists of dates, weeks and rounding.
//
// DayCount is 0 to 999 (see day_count.h); every routine that takes one throws errlibmin or errlibmax outside these
// limits before anything else. Lists of SpecificDates are sorted by the routines that search them; blanks in them are
// no dates. A date that does not exist is the zero date, which a cell shows as empty.
#pragma once

#include "core/pools.h"

#include "calendar/annual_sequence.h"
#include "calendar/date.h"
#include "calendar/time_period.h"
#include "core/range.h"
#include "core/switches.h"

#include <string>

namespace qx {

// --- Differences ----------------------------------------------------------------------------------------------

/// Days from Date1 to Date2 under a day count. Periods is not used: it keeps the arguments alike.
double DiffD(const date& Date1, const date& Date2, double DayCount, const AnnualSequence& Periods);
/// Months and years from Date1 to Date2, negative if Date1 is the later.
double DiffM(const date& Date1, const date& Date2, double DayCount, const AnnualSequence& Periods);
double DiffY(const date& Date1, const date& Date2, double DayCount, const AnnualSequence& Periods);
/// Periods, or months by periods of equal weight, of a sequence between two dates; 0 unless they ascend.
double DiffP(const date& FromDate, const date& ToDate, const AnnualSequence& AnnDateSeq);
double DiffPSeq(const date& FromDate, const date& ToDate, const AnnualSequence& AnnDateSeq);
double DiffMSeq(const date& FromDate, const date& ToDate, const AnnualSequence& AnnDateSeq);
// Old forms of the above.

// --- Date plus ------------------------------------------------------------------------------------------------

/// A date plus whole days, months or years, such that the length between both is that number under the day count.
/// Where Periods has a BusDaySwitch, rolled on to a business day.
date DpD(const date& TheDate, double Days, double DayCount, const AnnualSequence& Periods);
date DpM(const date& TheDate, double Months, double DayCount, const AnnualSequence& Periods);
date DpY(const date& TheDate, double Yrs, double DayCount, const AnnualSequence& Periods);
// Old forms of the above.
/// A date plus whole months of the calendar; a month's end that is not in both months falls back.
date EDateQX(const date& TheDate, double Months);
/// The first payment's date plus a number of periods of Periodicity (0 or more) months.
date DatePer(double WhichOne, const date& FirstPmtDate, double Periodicity);

// --- Time periods ---------------------------------------------------------------------------------------------

/// Days, months and years in a period.
double TpD(const timeperiod& Time, double DayCount, const AnnualSequence& Periods);
double TpM(const timeperiod& Time, double DayCount, const AnnualSequence& Periods);
double TpY(const timeperiod& Time, double DayCount, const AnnualSequence& Periods);
/// True if one of the dates falls in a period.
bool Occurs(const timeperiod& Time, View<date> EventDates);
/// Start, end and length in years of the span that is paid for in a period (see CashTime). ProjMode is 0 to 7.
date CashStart(const timeperiod& Time, double DayCount, const AnnualSequence& CashBasis, double ProjMode);
date CashFinish(const timeperiod& Time, double DayCount, const AnnualSequence& CashBasis, double ProjMode);
double CashLenYrs(const timeperiod& Time, double DayCount, const AnnualSequence& CashBasis, double ProjMode);
/// Dates that lie end to end: Start, then the dates of the sequence, either NumOfPrds in all or up to the first on or
/// after AbFin. Throws errinput if neither is given.
WorkList<date> CreateTimeBase(const date& Start, const AnnualSequence& Periods, const date& AbFin, int NumOfPrds);
/// The months of each period of a time base.
WorkList<double> TimeBaseLengths(View<date> Timebase, double DayCount, const AnnualSequence& Periods);

// --- Next and previous ----------------------------------------------------------------------------------------

/// The first date of a list after a date, and the last before it.
date NextDateList(const date& TheDate, View<date> SpecificDates);
date PrevDateList(const date& TheDate, View<date> SpecificDates);
/// The first date of a sequence or list after a date, and the last before it.
date NextDateSeq(const date& TheDate, const AnnualSequence& AnnDateSeq, View<date> SpecificDates);
date PrevDateSeq(const date& TheDate, const AnnualSequence& AnnDateSeq, View<date> SpecificDates);
/// The first date of up to four sequences and lists after a date. Those omitted have no part in it.
date NextDateCombine(const date& TheDate, const AnnualSequence& AnnDateSeq1, View<date> SpecificDates1,
                     const AnnualSequence& AnnDateSeq2, View<date> SpecificDates2, const AnnualSequence& AnnDateSeq3,
                     View<date> SpecificDates3, const AnnualSequence& AnnDateSeq4, View<date> SpecificDates4);
/// The latest date of up to four lists on or before a date; strictly before it with RoundDown. DefaultDate if there is
/// none.
date MostRecent(const date& TheDate, View<date> Dates, View<date> Dates2, View<date> Dates3, View<date> Dates4,
                bool RoundDown, const date& DefaultDate);
/// The earliest date on or after a date; strictly after it without RoundDown. DefaultDate if there is none.
date MostImminent(const date& TheDate, View<date> Dates, View<date> Dates2, View<date> Dates3, View<date> Dates4,
                  bool RoundDown, const date& DefaultDate);

// --- Sequences as lists ---------------------------------------------------------------------------------------

/// The dates of a sequence and a list strictly between two dates, at most 999.
WorkList<date> DateSeq(const date& FromDate, const date& ToDate, const AnnualSequence& AnnDateSeq,
                       View<date> SpecificDates);
/// The same of up to four sequences and lists. Throws errinput if none is given.
WorkList<date> DateSeqCombine(const date& FromDate, const date& ToDate, const AnnualSequence& AnnDateSeq1,
                              View<date> SpecificDates1, const AnnualSequence& AnnDateSeq2, View<date> SpecificDates2,
                              const AnnualSequence& AnnDateSeq3, View<date> SpecificDates3,
                              const AnnualSequence& AnnDateSeq4, View<date> SpecificDates4);
/// The figures of a sequence of NumPmtsPerYr payments a year (1, 2, 3, 4, 6, 12, or 13 for the English quarter days)
/// from a first figure on; a negative one means arrears.
WorkList<double> AnnSeq(double AnnSeqNum, int NumPmtsPerYr, bool EOMRule);
/// Dates of a sequence in a year.
int NumPers(const AnnualSequence& Periods);
/// True if a date is one of a sequence; true if Date2 is an anniversary of Date1 (28 February one of the 29th).
bool IsSeqDate(const date& TheDate, const AnnualSequence& AnnualDateSeq);
bool IsAnniversary(const date& Date1, const date& Date2);

// --- Weeks ----------------------------------------------------------------------------------------------------

/// The number of a date's week. StartOfWeek is the weekday (1 Sunday to 7 Saturday) on which weeks start. With a
/// StartOfWeek1 of 0 week 1 is that of 1 January; otherwise week 1 is the week with the year's first day of that
/// weekday, so that 2 and 5 give the weeks of ISO 8601.
int WeekNumber(const date& TheDate, int StartOfWeek, int StartOfWeek1);
/// The first day of a week of a year.
date WeekNumberToDate(int WeekNum, int StartOfWeek, int StartOfWeek1, const date& Yr);

// --- Rounding -------------------------------------------------------------------------------------------------

/// A date rounded to a date of a sequence: Round 0 to the nearest (the earlier at a tie), 1 down, 2 up; from 3 up not
/// at all.
date DateRound(const date& TheDate, const AnnualSequence& Periods, int Round);
date DateCeiling(const date& TheDate, const AnnualSequence& Periods);
date DateFloor(const date& TheDate, const AnnualSequence& Periods);
date RoundDateSeq(const date& TheDate, const AnnualSequence& AnnDateSeq, int RoundMethod);
/// How DateRound rounds, and how RoundDateSeq does.
inline constexpr SwitchValue date_rounding_values[] = {
    {0, "Rounded to the NEAREST payment/accrual date"},
    {1, "Rounded DOWN to the LAST payment/accrual date"},
    {2, "Rounded UP to the NEXT payment/accrual date"},
    {3, "Not rounded"},
};
inline constexpr SwitchValue round_method_values[] = {{0, "Nearest"}, {1, "Back"}, {2, "Forward"}};
/// The Round of DateRound in words. Throws errlibmin below 0.
std::string DescribeRounding(int Round);
/// A date rounded to a day of the year, of the month or of the week: RoundMethod 0 to the nearest, 1 back, 2 forward.
date RoundMD(const date& TheDate, int Mnth, int Day, int RoundMethod);
date RoundMonthDay(const date& TheDate, int DayInMonth, int RoundMethod);
date RoundWeekDay(const date& TheDate, int DayInWeek, int RoundMethod);

// --- Limits ---------------------------------------------------------------------------------------------------

/// A date, but none before MinDate or after MaxDate; a zero date is no limit.
date CollarDate(const date& TheDate, const date& MinDate, const date& MaxDate);
/// An amount, but none below Minimum or above Maximum; a limit of zero is no limit.
double Collar(double Amt, double Minimum, double Maximum);
/// True if a date is on or after StartDate and before FinishDate.
bool InBetween(const date& TheDate, const date& StartDate, const date& FinishDate);

// --- In words -------------------------------------------------------------------------------------------------

std::string DescribeDayCount(double DayCount);
std::string DescribePeriods(const AnnualSequence& Periods);
std::string DescribeCashBasis(double ProjMode);
/// PmtsPerYear is -1e6 to 1e6: positive in advance, negative in arrears, 0 annually in arrears.
std::string DescribePmtsPerYear(double PmtsPerYear);

// --- Names of older workbooks ---------------------------------------------------------------------------------

/// A date plus years, decimal or whole.
date DatePlusYears(const date& TheDate, double Yrs);
/// A date as a decimal year, and the decimal years between two dates.
double DecYear(const date& TheDate);
double DiffYears(const date& Date1, const date& Date2);
/// True if a date falls in a period.
bool Happens(const timeperiod& Time, const date& EventDate);
/// A date plus whole months; a month's end stays one.
date IncDate(const date& TheDate, int Months);
/// The date of a year, month and day; a year of 0 to 199 counts from 1900.
date LotusDate(int Yr, int Mnth, int Day);

} // namespace qx
