// Projections along curves: levels read from dated points, and amounts of rates that follow a line or a fitted curve.
//
// A level has a value at a date, a rate gives an amount in a time period. Amounts of periods that lie end to end add up
// to the amount of the whole.
#pragma once

#include "calendar/anyvalue.h"
#include "calendar/time_period.h"

namespace qx {

/// The level at a date on a curve through dated levels: zero before the first date and from Finish, the last level from
/// the last date. InterpType, Tension and Bias are those of Interpolate. Throws notascending for dates out of order.
double InterpedLevel(const date& TheDate, const date& Finish, View<date> FromDates, View<double> Levels, int InterpType,
                     double Tension, double Bias);

/// The level at a date, from Start up to but not counting Finish, on the polynomial of a degree (0 to 10) that fits
/// dated levels best over the years. Points without a date or a level do not count. Throws as FittedPolynomial.
double FittedLevel(const date& TheDate, const date& Start, const date& Finish, View<date> LevelDates,
                   View<floatblank> Levels, int Degree);

/// The amount in a time period of an annual rate, from Start to Finish, that follows the polynomial of a degree (0 to
/// 10) that fits dated annual rates best over the years from Start. Throws errlibmin, errlibmax for a DayCount outside
/// 0 to 999 and a ProjMode outside 0 to 7, and as FittedPolynomial.
double FittedRate(const timeperiod& Time, const date& Start, const date& Finish, View<date> RateDates,
                  View<floatblank> AnnualRates, int Degree, double DayCount, AnnualSequence& Periods, double ProjMode);

/// The amount in a time period of an annual rate that runs in a straight line from StartRate at Start to FinishRate at
/// Finish.
double Ramp(const timeperiod& Time, const date& Start, const date& Finish, double StartRate, double FinishRate,
            double DayCount, AnnualSequence& Periods, double ProjMode);

} // namespace qx
