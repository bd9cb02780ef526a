// The average of a rate that changes on given dates, as a tax or an interest charge for a whole period needs it: each
// rate counts by the time in the period for which it holds, under a day count. Time for which there is no rate (before
// the first from-date, after the last to-date) does not count, so that the average of a flat rate is that rate; it is 0
// where no rate holds at all.
//
// One rate serves for all dates. All throw errlibmin and errlibmax for a DayCount outside 0 to 999, and outofrange for
// a date without a rate.
#pragma once

#include "calendar/time_period.h"
#include "projections/terms.h"

namespace qx {

/// The average over a period: rate n holds from from-date n up to the next one, the last one for ever; or up to to-date
/// n, the first one from ever.
double FAvRate(const timeperiod& Time, View<date> FromDates, View<double> Rates, const Measure& measure);
double TAvRate(const timeperiod& Time, View<date> ToDates, View<double> Rates, const Measure& measure);

/// The same for the year to date: from the start of the year that is running on the last day of the period up to the
/// period's end. YearStart says on which date of the year it starts (several make quarters, or other parts of it).
double FAvRateTD(const timeperiod& Time, View<date> FromDates, View<double> Rates, const AnnualSequence& YearStart,
                 const Measure& measure);
double TAvRateTD(const timeperiod& Time, View<date> ToDates, View<double> Rates, const AnnualSequence& YearStart,
                 const Measure& measure);

} // namespace qx
