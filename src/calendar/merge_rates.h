// Merging of stepped rates: lists of dates and rates to one list of dates and combined rates.
#pragma once

#include "calendar/date.h"
#include "core/combine.h"
#include "core/range.h"
#include "core/takes.h"
#include "core/view.h"

namespace qx {

/// Stepped rates, a single one for all steps or one for each: from their dates on until the next, or up to their dates.
struct SteppedRates {
    using takes = Takes<Range<date>, Range<double>>;
    View<date> dates;
    View<double> rates;
};

/// How lists are merged.
struct Merging {
    bool by_to_dates = false;     ///< rates hold up to their dates
    bool missing_is_zero = false; ///< where a list has no rate, not yet or no more, it is not passed over
    int most = 999;               ///< dates of the result
};

/// Merges lists of ascending dates: the rate on each date combines the rates in force. Throws outofrange if a list has
/// fewer rates than dates are reached, and errliboveriterated if there are more dates than allowed.
void merge_rates(const SteppedRates* lists, int count, CombineSwitch combine, Range<date>& dates, Range<double>& rates,
                 const Merging& how = {});

} // namespace qx
