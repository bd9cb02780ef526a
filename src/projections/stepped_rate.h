// Streams of money whose rate changes at given dates.
//
// Rate n is that of step n; a single rate serves for all steps, otherwise one that is missing throws outofrange when its
// step is reached. Only the first step is measured with the start stub of a composite day count, and only the last with
// its end stub.
#pragma once

#include "calendar/time_period.h"
#include "projections/steps.h"

namespace qx {

/// The amount that falls into a period of a stream that runs at AnnualRates(n) a year through step n: FStep and TStep.
template <class Steps>
double Step(const timeperiod& Time, const Steps& steps, View<double> AnnualRates, const Basis& basis);

/// The years of a period that are under steps which go on for ever: by from-dates all of it, once its end has reached
/// the first date.
double FStepTime(const timeperiod& Time, View<date> FromDates, const Basis& basis);

} // namespace qx
