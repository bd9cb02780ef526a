// What a forecast says at a date.
//
// An even forecast has a value for every so many months from its start on; where it is read lies in decimal months, of
// which day d of a month with n days is (d - 1) / n. Beyond its end the last value applies; before its start it is 0.
//
// All throw errlibmin and errlibmax for a forecast base outside 1 to 1000 months, or for a negative switch.
#pragma once

#include "calendar/anyvalue.h"
#include "core/maybe.h"
#include "projections/terms.h"

namespace qx {

/// How a value between two others is read.
enum ForecastSwitch : int {
    forecast_steps = 0,        ///< each value holds until the next one; so under any switch but 1
    forecast_interpolated = 1, ///< on the straight line to the next value
};

/// An even forecast read at a date, with values of its own for dates before its start and beyond its end.
double Fcst(const date& TheDate, const Forecast& forecast, int FcstSwitchOpt, const Maybe<double>& FcstDef_Pre,
            const Maybe<double>& FcstDef_Post);
/// The same in steps and without these values.
double fcst(const date& TheDate, const Forecast& forecast);
/// A forecast held between two values; a value above Maximum is Maximum even if that is below Minimum.
double FcstCollar(const date& TheDate, double Minimum, double Maximum, const Forecast& forecast, int FcstSwitchOpt);
/// A forecast times the growth of 1 to the date.
double FcstGrow(const date& TheDate, const Forecast& forecast, const Growth& growth, int RevMonthsOpt,
                int FcstSwitchOpt);

/// The amount from Date1 to Date2 of a stream whose annual rates are a forecast. A base of 0 gives 0.
double SumFcst(const date& Date1, const date& Date2, const Forecast& forecast, const Measure& measure);
/// The same of a piece of a longer stream.
double SumFcstX(const date& Date1, const date& Date2, const Forecast& forecast, const Measure& measure,
                bool ComponentPart);

/// A forecast of general dates: the value of the last from-date on or before TheDate, 0 before the first one.
double FcstT(const date& TheDate, View<date> FcstFromDates, View<double> FcstValues, int FcstSwitchOpt);
/// By to-dates: the value of the first one after TheDate, 0 from the last one on.
double TFcstT(const date& TheDate, View<date> FcstToDates, View<double> FcstValues, int FcstSwitchOpt);

/// True if a base of an index is a date: a number from 1910 on. A smaller number is the index itself.
bool is_base_date(const dateorfloat& BaseDateOrIdx);
/// An index at a date as a ratio to a base, which is a date of the forecast of the index or the index itself. 1 if both
/// are zero. Throws errlibnovalidanswer if the base alone is zero.
double IdxFromTo(const dateorfloat& BaseDateOrIdx, const date& TheDate, const Forecast& index);

} // namespace qx
