// Dates and lengths of time under any day count: the months from one date to another, the date so many months or days
// on, the date half way.
#pragma once

#include "calendar/annual_sequence.h"
#include "calendar/date.h"
#include "calendar/day_count.h"
#include "calendar/time_period.h"

namespace qx {

/// Months between two dates under any DayCount. A date1 after date2 gives the negative of the reverse if AllowNeg,
/// otherwise 0. With ComponentPart the end stub is measured so that parts add up to the whole.
double diffmonths(const date& date1, const date& date2, double DayCount, const AnnualSequence& Periods,
                  bool AllowNeg = true, bool ComponentPart = false);

/// The date a number of days on (its fraction is dropped), such that the day count between both is that number as
/// near as may be. Throws errliboveriterated.
date plusdays(const date& from, double days, double DayCount);
/// The date a number of months on, such that the months between both are that number as near as may be.
date plusmonths(const date& from, double months, double DayCount, const AnnualSequence& Periods);
/// Moves a date by single steps until the day count from date1 is the number of days as near as may be.
void AdjustToDayCountDays(date& day, double days, const date& date1, double DayCount);
/// The same for months.
void AdjustToDayCountMonths(date& day, double months, const date& date1, double DayCount,
                            const AnnualSequence& Periods);
/// The date half way between two dates.
date midpoint(const date& date1, const date& date2, double DayCount, const AnnualSequence& Periods);

/// The code for a period of a stretch: that of the start if the period holds it, otherwise that of the finish if the
/// period holds that, otherwise the core's.
double ChooseRightDC(double DCCore, double DCStart, double DCFinish, const date& Start, const date& Finish,
                     const timeperiod& ThisTimePeriod);
/// The same by a composite DayCount: a period with the start keeps the start stub's code, one with the finish the end
/// stub's.
double ChooseRightDC(double DayCount, const date& Start, const date& Finish, const timeperiod& ThisTimePeriod);

/// Period i (from 1) of dates that lie end to end. The last one is as many months long as the one before it, by decimal
/// months; a single one is a year long. Throws outofrange past the end.
timeperiod timebase_period(View<date> timebase, int i);

} // namespace qx
