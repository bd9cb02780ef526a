// Sums, averages and extremes of chosen items of a list, and where two curves meet.
#pragma once

#include "calendar/anyvalue.h"
#include "core/maybe.h"
#include "core/pools.h"

namespace qx {

double SumPos(View<double> Values); ///< the sum of the values above zero
double SumNeg(View<double> Values); ///< the sum of the values below zero

/// The sum of the values from MinValue to MaxValue, both counting; a bound that is not given does not bind.
double SumBounds(View<double> Values, const Maybe<double>& MinValue, const Maybe<double>& MaxValue);

/// The sum of the items at the positions FirstOne to LastOne, as sub_range takes them.
double SumSubRange(View<double> Values, int FirstOne, int LastOne);

/// The sum of each value over its divisor, 0 for a divisor of zero. A single value or divisor serves all of the other
/// list. Throws inputrangelength2.
double SumDiv(View<double> Values, View<double> Divisors);

/// The sum of the values in one category, a number or a string. Throws inputrangelength2.
double SumCat(View<double> Values, View<anyvalue> Categories, const anyvalue& ChosenCategory);

/// The sum of the values whose category is among those chosen and, if there is a second set of categories, whose
/// second category is among those chosen of it. Blanks choose nothing. Throws inputrangelength2, and errliboptreq if
/// the second set or its choice is missing beside the other.
double SumCats(View<double> Values, View<anyvalue> Categories, View<anyvalue> ChosenCategories,
               View<anyvalue> Categories2, View<anyvalue> ChosenCategories2);
/// The values that SumCats sums.
WorkList<double> SelCats(View<double> Values, View<anyvalue> Categories, View<anyvalue> ChosenCategories,
                         View<anyvalue> Categories2, View<anyvalue> ChosenCategories2);

double MeanNZ(View<double> Values); ///< the mean of the values that are not zero; 0 if there are none

/// The average of the values by weight; 0 if the weights sum to zero. Throws inputrangelength2.
double WeightAv(View<double> Values, View<double> Weights);

/// How a list runs: 0 ascending, 1 descending, 3 neither, 4 mixed.
int RangeDir(View<double> Values);

/// The greatest, the smallest of the values dated from FromDate to ToDate, of which InclusiveOpt says what counts; 0 if
/// there are none. The shorter of the two lists governs.
double MaxBetween(const date& FromDate, const date& ToDate, View<date> Dates, View<double> Values, int InclusiveOpt);
double MinBetween(const date& FromDate, const date& ToDate, View<date> Dates, View<double> Values, int InclusiveOpt);

/// A RangeOperation over the items of OutputRange whose counterparts in InputRange lie between two values. The shorter
/// of the two lists governs.
double DoBetweenX(double FromValue, double ToValue, View<double> InputRange, View<double> OutputRange, int InclusiveOpt,
                  int RangeOperation);

/// The point of the axis InputRange at which the straight lines through OutputRange and those through OutputRange2 meet
/// for the first, second ... time along the list. A stretch on which both agree is one meeting, at its start. Throws
/// inputrangelength2, errlibmin for WhichOne below 1, errlibbadlistprogression for an axis that turns back, and
/// errliblookupfailed if there is no such meeting, unless OnErrorN gives an answer for it.
double Intersection(View<double> InputRange, View<double> OutputRange, View<double> OutputRange2, int WhichOne,
                    double OnErrorN);

} // namespace qx
