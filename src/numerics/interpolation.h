// Curves through tables of points: step, line, wave, cubic and exponential.
//
//     Interp(years, yields, 7.5, no_fallback)       on the line between the yields of 7 and 8 years
//     Interpolate(CumTime, CumAmt, 0.4, 3, ...)     on a smooth curve
//
// A table is two lists of equal length, blank cells at their ends left off: where the points are, rising or falling,
// and their values. At a place that several points share the value jumps: the place itself belongs to what lies above
// it. Dates are measured in days. All routines throw errlibinsuffrange without a point, inputrangelength2 for lists of
// different length, errlibbadlistprogression for places that neither rise nor fall.
#pragma once

#include "calendar/date.h"
#include "core/range.h"
#include "core/switches.h"

namespace qx {

class Routine;

/// The curves, as InterpType counts them.
enum InterpolationType : int {
    by_step = 0,
    by_line = 1,
    by_cosine = 2,
    by_cubic = 3,
    by_growth = 4, ///< exponential
};
inline constexpr SwitchValue interpolation_values[] = {
    {by_step, "Step"},   {by_line, "Straight line"}, {by_cosine, "Cosine"},
    {by_cubic, "Cubic"}, {by_growth, "Exponential"},
};

/// No limit to what is looked up: the presets of XMin and XMax.
inline constexpr double no_XMin = -1e12;
inline constexpr double no_XMax = 1e12;

// The curves between two values, at mu from 0 (the first) to 1 (the second).

inline double interpolate_step(double y1, double y2, double mu) { return mu < 1.0 ? y1 : y2; }
inline double interpolate_linear(double y1, double y2, double mu) { return y1 + (y2 - y1) * mu; }
/// Half a cosine wave: level at both ends.
double interpolate_cosine(double y1, double y2, double mu);
/// Hermite's cubic: leaves y1 with slope1 and reaches y2 with slope2, both per unit of mu.
double interpolate_cubic(double y1, double slope1, double y2, double slope2, double mu);
/// Growth at a constant rate. Throws errlibbadexponentiation unless both values have one sign (or both are zero).
double interpolate_exponential(double y1, double y2, double mu);

/// Throws errlibmin, errlibmax for an unknown curve; see Interpolate.
void check_curve(Routine& here, int InterpType, double Tension, double Bias);

/// The value on the line between the points that neighbour InputValue. Outside the table OnErrorN is the answer; with
/// no_fallback it throws errliblookupfailed.
double Interp(View<double> InputRange, View<double> OutputRange, double InputValue, double OnErrorN);
/// The same; outside the table the value of the nearer end.
double InterpCollar(View<double> InputRange, View<double> OutputRange, double InputValue);
/// The same; outside the table the line of the end's two points goes on.
double InterpExtrap(View<double> InputRange, View<double> OutputRange, double InputValue);

double InterpDate(View<date> InputDateRange, View<double> OutputRange, const date& TheDate, double OnErrorN);
double InterpDateCollar(View<date> InputDateRange, View<double> OutputRange, const date& TheDate);
double InterpDateExtrap(View<date> InputDateRange, View<double> OutputRange, const date& TheDate);

/// The value at InputValue, first held between XMin and XMax, on the curve of an InterpolationType. Outside the table
/// step and cosine keep the end's value; line, cubic and exponential go on as they end.
///
/// The cubic's slope at a point is the mean of the lines' slopes on either side, after Kochanek and Bartels: Tension
/// from -1 (loose) to 1 (level at each point) and Bias from -1 (the slope after the point) to 1 (the one before) weigh
/// them. Throws errlibmin, errlibmax for these three, errlibnonsenseinputs for XMin above XMax.
double Interpolate(View<double> InputRange, View<double> OutputRange, double InputValue, int InterpType, double XMin,
                   double XMax, double Tension, double Bias);
/// The same without limits, in a table of two lists of equal length, for switches that were checked.
double interpolate(View<double> places, View<double> values, double place, int InterpType, double Tension, double Bias);
/// The same over dates; a limit of the zero date is no limit.
double InterpolateDate(View<date> InputDateRange, View<double> OutputRange, const date& TheDate, int InterpType,
                       const date& DateMin, const date& DateMax, double Tension, double Bias);

} // namespace qx
