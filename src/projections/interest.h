// Simple interest on balances: how much of it falls into a period.
//
// An advance is a positive balance, and interest on it is a payment, so negative. Rates are simple annual rates; dated
// rates hold from FromDatesInt on and are averaged over the time they stand in a period; before the first of them the
// rate is 0. Interest accrues under a DayCount (0 to 999) and the dates of PrdsInt; under a cash ProjMode (1 or 3) a
// period holds what the payment dates in it settle.
#pragma once

#include "calendar/time_period.h"
#include "core/range.h"

namespace qx {

/// On one balance at one rate.
double Interest(const timeperiod& Time, double InterestSimple, const date& Start, const date& Finish, double Balance,
                double DayCount, const AnnualSequence& PrdsInt, double ProjMode);
/// On one balance at dated rates.
double InterestX(const timeperiod& Time, const Range<date>& FromDatesInt, const Range<double>& IntSimple,
                 const date& Start, const date& Finish, double Balance, double DayCount, const AnnualSequence& PrdsInt,
                 double ProjMode);
double InterestXX(const timeperiod& Time, const Range<date>& FromDatesInt, const Range<double>& IntSimple,
                  const date& Start, const date& Finish, double Balance, double AddMargin, double DayCount,
                  const AnnualSequence& PrdsInt, double ProjMode);
/// On balances that hold from their from-dates up to Finish.
double FInterest(const timeperiod& Time, const Range<date>& FromDatesInt, const Range<double>& IntSimple,
                 const date& Finish, const Range<date>& FromDates, const Range<double>& Balances, double DayCount,
                 const AnnualSequence& PrdsInt, double ProjMode);
/// On balances that hold from Start up to their to-dates.
double TInterest(const timeperiod& Time, const Range<date>& FromDatesInt, const Range<double>& IntSimple,
                 const date& Start, const Range<date>& ToDates, const Range<double>& Balances, double DayCount,
                 const AnnualSequence& PrdsInt, double ProjMode);
/// All interest accrued from Start to Finish.
double TotInterestSF(const date& Start, const date& Finish, const Range<date>& FromDatesInt,
                     const Range<double>& IntSimple, const Range<date>& FromDates, const Range<double>& Balances,
                     double DayCount, const AnnualSequence& PrdsInt);

/// Options of FInterestM, a sum.
enum InterestOption : int {
    unlimited_cash = 1,        ///< the span that a period settles is not cut to the dates of the balances
    zero_is_no_override = 256, ///< an override of zero is none
    ignore_overrides = 512,
};
/// The heart of every loan: FInterest with a margin on the rates, and with amounts of interest that take the place of
/// the calculated ones in periods between the first and the last of their dates.
double FInterestM(const timeperiod& Time, const Range<date>& FromDatesInt, const Range<double>& IntSimple,
                  const date& Finish, const Range<date>& FromDates, const Range<double>& Balances,
                  const Range<date>& IntOverRideDates, const Range<double>& IntOverRide, double AddMargin, int Options,
                  double DayCount, const AnnualSequence& PrdsInt, double ProjMode);

} // namespace qx
