// Lookups in lists of numbers and dates: with a direction, a tolerance, and a value to fall back on.
//
//     LookupN(2005.5, years, rates, 0, -1, no_fallback)    the rate of the last year at or before 2005.5
//
// A list is walked item by item: the first match in the direction of the mode decides, and a list may hold
// duplicates.
#pragma once

#include "calendar/date.h"
#include "core/range.h"
#include "core/switches.h"

namespace qx {

/// The OnErrorN that stands for no fallback: a lookup that fails is an error.
inline constexpr double no_fallback = -63291.0;
/// The LookupTol that sets no tolerance, as any value of 0 or below does.
inline constexpr double no_lookup_tolerance = -1.0;

/// What is looked for, and in which direction. To descend is to walk from the last item to the first.
enum LookupMode : int {
    descend_less_or_equal = 0,
    descend_less = 1,
    ascend_greater_or_equal = 2,
    ascend_greater = 3,
    ascend_equal = 4,
    ascend_unequal = 5,
    descend_equal = 6,
    descend_unequal = 7,
    closest = 8,
};
inline constexpr SwitchValue lookup_mode_values[] = {
    {descend_less_or_equal, "DESCEND the list, find first value LESS THAN OR EQUAL to Input Value"},
    {descend_less, "DESCEND the list, find first value LESS THAN Input Value "},
    {ascend_greater_or_equal, "ASCEND the list, find first value GREATER THAN OR EQUAL to Input Value"},
    {ascend_greater, "ASCEND the list, find first value GREATER THAN Input Value"},
    {ascend_equal, "ASCEND the list, find first value EQUAL to Input Value"},
    {ascend_unequal, "ASCEND the list, find first value NOT EQUAL to Input Value"},
    {descend_equal, "DESCEND the list, find first value EQUAL to Input Value"},
    {descend_unequal, "DESCEND the list, find first value NOT EQUAL to Input Value"},
    {closest,
     "Find the value in the OutputRange where the corresponding value in the InputRange is closest to the InputValue"},
};
/// The order of a list that is looked up.
inline constexpr SwitchValue direction_values[] = {{0, "Ascending"}, {1, "Descending"}};

/// The item of OutputRange at the position where InputVal is found in InputRange. LookupSwitch is a LookupMode. With
/// LookupTol above 0 the item found must lie within LookupTol of InputVal. OnErrorN other than no_fallback is the
/// answer of a lookup that fails. The modes 0 to 3 need a list in order; a list of equal items (or one) is tested once
/// and needs an OutputRange of equal items. Throws errlibmin, errlibmax for the switch, errlibbadlistprogression for
/// the order, errliblookupfailed if nothing is found, outofrange if OutputRange is too short.
double LookupN(double InputVal, View<double> InputRange, View<double> OutputRange, int LookupSwitch, double LookupTol,
               double OnErrorN);

/// LookupN with its arguments in another order.
double LookupNum(View<double> InputRange, View<double> OutputRange, double InputValue, int LookupSwitch,
                 double LookupTol, double OnErrorN);

/// LookupN without a tolerance or a fallback, for older models.
double LookUpB(View<double> InputRange, View<double> OutputRange, double InputValue, int Look_UpSwitch);

/// The position, from 1, at which LookupN finds InputVal; or OnErrorN.
double LookupNIndex(double InputVal, View<double> InputRange, int LookupSwitch, double LookupTol, double OnErrorN);

/// The same in a list of dates, compared by their date numbers; LookupTol is in days.
double LookupDIndex(const date& TheDate, View<date> InputDateRange, int LookupSwitch, double LookupTol,
                    double OnErrorN);

/// The item of OutputMatrix in the column at which InputValueX is found on AxisRangeX and the row at which
/// InputValueY is found on AxisRangeY. Throws errliblookupfailed for a value that is not found, outofrange for a
/// position outside the matrix.
double LookUpNum2D(View<double> OutputMatrix, View<double> AxisRangeX, View<double> AxisRangeY, double InputValueX,
                   double InputValueY, int LookupSwitch);

/// The item of OutputRange beside the first item of InputRange that equals InputValue. Throws errliblookupfailed.
double SeekNum(View<double> InputRange, View<double> OutputRange, double InputValue);

/// A LookupSwitch in words.
std::string DescribeLookup(int LookupSwitch);

} // namespace qx
