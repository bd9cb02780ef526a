// Moments and signs of a list of numbers. Blank cells do not count.
#pragma once

#include "calendar/anyvalue.h"
#include "core/range.h"

namespace qx {

/// The arithmetic mean, by Neumaier's compensated sum. Throws errlibinsuffrange without a value.
double MeanAvg(View<floatblank> Values);
/// The variance of a sample: the sum of squares about the mean, less what rounding of the mean adds, over one less than
/// the number of values. Throws errlibinsuffrange for fewer than two.
double SampleVar(View<floatblank> Values);
/// The standard deviation of a sample: the root of its variance.
double SampleSD(View<floatblank> Values);
/// How often the sign changes along the list, zeros passed over. By Descartes' rule of signs no more roots above zero
/// has a polynomial with these coefficients, and no more rates of return above -100% a cash flow.
int SignChanges(View<floatblank> Values);

} // namespace qx
