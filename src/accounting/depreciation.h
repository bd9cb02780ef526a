// Depreciation: what an asset is worth on a date, and how much of its cost a period bears.
//
// An asset is at its initial value up to StartDep and is then written off to its final value by a method:
//
// | DepType  | method                                                                                             |
// |        0 | straight line                                                                                      |
// |        1 | declining balance at the rate that reaches the final value at the end of the life                  |
// |        2 | double declining balance: a rate of 2 / life a year, down to the final value                       |
// |  below 0 | the same with n / life, n being the absolute value                                                 |
// |        3 | sum of the years' digits                                                                           |
//
// LifeOrDecRate is a life in years from 1 on, an annual rate of decline below 1. Declining balances run continuously:
// value = InitialValue e^(-k t), k = -ln(1 - rate). They cannot reach zero, so a final value of zero is worked with as
// 0.001, which an asset past its life still shows; a value below it is shown as 0.
//
// All throw errlibmin and errlibmax for a DayCount outside 0 to 999 or a ProjMode outside 0 to 7, and
// errlibnonsenseinputs for sum of years' digits with a rate or a life that is not a whole number.
#pragma once

#include "calendar/anyvalue.h"
#include "calendar/time_period.h"
#include "projections/payment_values.h"
#include "projections/terms.h"

namespace qx {

/// The methods by name; any negative DepType is an n-declining balance.
enum DepreciationType : int {
    straight_line = 0,
    declining_balance = 1,
    double_declining = 2,
    sum_of_years_digits = 3,
};

/// An asset and how it is written off.
struct Asset {
    using takes = Takes<double, int, double, double>;
    double LifeOrDecRate;
    int DepType;
    double InitialValue;
    double FinalValue;
};

/// The life in years that a DepType and its LifeOrDecRate come to. A rate of declining balance (DepType 1) is returned
/// as it is: the life at that rate depends on the values.
double DepLife(int DepType, double LifeOrDecRate);

/// The value on a date of an asset bought on InitialDate (0 before it) and depreciated from StartDep. A cash ProjMode
/// matters to sum of years' digits alone.
double DepreciatedValue(const date& TheDate, const date& InitialDate, const date& StartDep, const Asset& asset,
                        const Basis& basis);

/// The depreciation in a period. Under cash (ProjMode 1 or 3) it is that of the span which the dates of Periods in the
/// period settle. Throws errlibnonsenseinputs for a date in place of LifeOrDecRate: a call in the form used before
/// January 2004, which had one more argument.
double Depreciate(const timeperiod& Time, const date& StartDep, const Asset& asset, const Basis& basis);

// An asset bought from StartDep on every Periodicity months before AbsFinish, a hundred times at most. Throw errlibmin
// for a negative Periodicity.

/// Each at the same values.
double DepreciatePer(const timeperiod& Time, const date& AbsFinish, const date& StartDep, const Asset& asset,
                     int Periodicity, const Basis& basis);
/// Each at values that grow from StartDep to its own start (GrowFromTo).
double DepreciateGrowPer(const timeperiod& Time, const date& AbsFinish, const date& StartDep, const Asset& asset,
                         const Growth& growth, int Periodicity, const Basis& basis);
/// Each at values that follow a forecast: its own start's over that of StartDep.
double DepreciateFcstPer(const timeperiod& Time, const date& AbsFinish, const date& StartDep, const Asset& asset,
                         const Forecast& forecast, int Periodicity, const Basis& basis);
/// The same from a base of the index, StartDep if there is none (IdxFromTo).
double DepreciateIdxPer(const timeperiod& Time, const date& AbsFinish, const date& StartDep, const Asset& asset,
                        const Index& index, int Periodicity, const Basis& basis);

} // namespace qx
