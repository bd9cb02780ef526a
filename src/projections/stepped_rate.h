// Streams of money whose rate changes at given dates.
#pragma once

#include "calendar/time_period.h"
#include "core/range.h"

namespace qx {

/// The amount that falls into a period of a stream that runs at rate n a year from date n to date n + 1, the last one
/// to Finish. A single rate serves for all dates; otherwise a rate that is missing throws outofrange when its step is
/// reached. Only the first step is measured with the start stub of a composite day count, and only the last with its
/// end stub.
double FStep(const timeperiod& Time, const date& Finish, const Range<date>& FromDates, const Range<double>& AnnualRates,
             double DayCount, const AnnualSequence& Periods, double ProjMode);
/// The years of a period that stand under steps which go on for ever: all of it, once its end has reached the first
/// from-date.
double FStepTime(const timeperiod& Time, const Range<date>& FromDates, double DayCount, const AnnualSequence& Periods,
                 double ProjMode);

/// Entry n of a list that may hold a single value for all.
inline double single_or(const Range<double>& values, int n) { return values.get(values.size() == 1 ? 1 : n); }

} // namespace qx
