// Merging of stepped rates: up to four lists of dates and rates to one list of dates and combined rates.
#pragma once

#include "calendar/date.h"
#include "core/combine.h"
#include "core/range.h"

namespace qx {

/// Stepped rates: each holds from its date on until the next.
struct SteppedRates {
    View<date> dates;
    View<double> rates;
};

/// Merges lists of ascending dates: the rate on each date combines the rates in force of those lists that have begun.
/// Throws outofrange if a list has fewer rates than dates are reached, and errliboveriterated at 1000 dates.
void merge_rates(const SteppedRates* lists, int count, CombineSwitch combine, Range<date>& dates, Range<double>& rates);

} // namespace qx
