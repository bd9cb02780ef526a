// Seasonal averaging: an annual rate spread over the year by factors of its seasons.
#pragma once

#include "calendar/annual_sequence.h"
#include "calendar/date.h"
#include "calendar/time_period.h"
#include "core/view.h"

namespace qx {

/// What of an annual Rate from Start to Finish falls in a period, by the seasons of a sequence, each weighted by its
/// factor: whole years count by their length, and the parts of a year at both ends by their share of the weights of
/// the year. Rate times the years with fewer than two factors; 0 without a sequence. Throws errlibmax for
/// more than 366 factors, errlibseas unless the sequence ascends from 1.01.
double seasonal_amount(const timeperiod& period, const date& Start, const date& Finish, double Rate,
                       View<double> SeasonFactors, const AnnualSequence& SeasonSeq, double DayCount,
                       const AnnualSequence& Periods, bool ComponentPart = false);
/// The same with as many even seasons as there are factors.
double even_seasonal_amount(const timeperiod& period, const date& Start, const date& Finish, double Rate,
                            View<double> SeasonFactors, double DayCount, const AnnualSequence& Periods,
                            bool ComponentPart = false);

} // namespace qx
