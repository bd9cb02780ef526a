// Where the forecast of an index is 1.
#pragma once

#include "calendar/anyvalue.h"
#include "projections/forecast.h"

namespace qx {

/// The date of the base, the rate there and the value of the index.
struct IndexBase {
    date when;
    double rate, value;
};

/// The base of a rate of a stream: a date (its start if none is given), or a level of the index, below 1910, to which
/// the rate is restated at the start of the forecast.
IndexBase index_base(const Routine& here, const date& Start, double InitialAnnRate, const Forecast& index,
                     const dateorfloat& BaseDateOrIdx);

} // namespace qx
