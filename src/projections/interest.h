// Simple interest on balances: how much of it falls into a period.
//
// An advance is a positive balance, and interest on it is a payment, so negative. Rates are simple annual rates; dated
// rates hold from FromDatesInt on and are averaged over the time they hold in a period; before the first of them the
// rate is 0. Interest accrues under a DayCount (0 to 999) and the dates of PrdsInt; under a cash ProjMode (1 or 3) a
// period holds what the payment dates in it settle.
#pragma once

#include "calendar/time_period.h"
#include "core/range.h"
#include "projections/terms.h"

namespace qx {

/// Dated simple rates and how interest accrues at them: made once for a walk over many spans, each of which costs only
/// the rates that hold in it.
class Accrual {
  public:
    Accrual(View<date> FromDatesInt, View<double> IntSimple, double DayCount, const AnnualSequence& PrdsInt);

    /// The time-weighted average of the rates over a span, which lies in the life of a balance: each rate counts
    /// by the length of the part of the span in which it holds, and the lengths divide their sum. So equal rates
    /// average to themselves under every DayCount. `goes_on` as in interest().
    double rate(const Life& span, const Life& life, bool goes_on) const;
    /// The interest in a span of the life of a balance at the average rate and a margin. `goes_on`: a balance of the
    /// same sign follows, so that the span's length is that of a part.
    double interest(const Life& span, const Life& life, double Balance, double AddMargin, bool goes_on) const;

  private:
    /// The rate of a span from the first of the rates that hold in it on.
    double average(const Routine& here, const Life& span, const Life& life, bool goes_on, int first) const;

    View<date> FromDatesInt_;
    View<double> IntSimple_;
    double DayCount_;
    const AnnualSequence& PrdsInt_;
    bool ascending_;
};

/// The span whose interest a period holds, in place of the period: itself under accruals, what is settled in it under
/// cash. False, with a note in the trace, if nothing of a balance with this life accrues in it. `unlimited`: under cash
/// the span is not cut to the life.
bool find_interest_span(const Routine& here, timeperiod& period, const Life& life, const AnnualSequence& PrdsInt,
                        double ProjMode, bool unlimited);

/// Balances that hold from their from-dates up to Finish, and the interest on them.
class SteppedBalances {
  public:
    SteppedBalances(const date& Finish, const View<date>& FromDates, const View<double>& Balances);
    /// Of dates that are known to ascend, so that a walk over many spans looks at none but their own.
    static SteppedBalances ascending(const date& Finish, const View<date>& FromDates, const View<double>& Balances) {
        return {Finish, FromDates, Balances, true};
    }
    double interest(const timeperiod& period, const Accrual& accrual, double AddMargin) const;

  private:
    SteppedBalances(const date& Finish, const View<date>& FromDates, const View<double>& Balances, bool ascending)
        : Finish_(Finish), FromDates_(FromDates), Balances_(Balances), ascending_(ascending) {}

    const date& Finish_;
    View<date> FromDates_;
    View<double> Balances_;
    bool ascending_;
};

/// On one balance at one rate.
double Interest(const timeperiod& Time, double InterestSimple, const date& Start, const date& Finish, double Balance,
                double DayCount, const AnnualSequence& PrdsInt, double ProjMode);
/// On one balance at dated rates.
double InterestX(const timeperiod& Time, View<date> FromDatesInt, View<double> IntSimple, const date& Start,
                 const date& Finish, double Balance, double DayCount, const AnnualSequence& PrdsInt, double ProjMode);
double InterestXX(const timeperiod& Time, View<date> FromDatesInt, View<double> IntSimple, const date& Start,
                  const date& Finish, double Balance, double AddMargin, double DayCount, const AnnualSequence& PrdsInt,
                  double ProjMode);
/// On balances that hold from their from-dates up to Finish.
double FInterest(const timeperiod& Time, View<date> FromDatesInt, View<double> IntSimple, const date& Finish,
                 View<date> FromDates, View<double> Balances, double DayCount, const AnnualSequence& PrdsInt,
                 double ProjMode);
/// On balances that hold from Start up to their to-dates.
double TInterest(const timeperiod& Time, View<date> FromDatesInt, View<double> IntSimple, const date& Start,
                 View<date> ToDates, View<double> Balances, double DayCount, const AnnualSequence& PrdsInt,
                 double ProjMode);
/// All interest accrued from Start to Finish.
double TotInterestSF(const date& Start, const date& Finish, View<date> FromDatesInt, View<double> IntSimple,
                     View<date> FromDates, View<double> Balances, double DayCount, const AnnualSequence& PrdsInt);

/// Options of FInterestM, a sum.
enum InterestOption : int {
    unlimited_cash = 1,        ///< the span that a period settles is not cut to the dates of the balances
    zero_is_no_override = 256, ///< an override of zero does not count
    ignore_overrides = 512,
};
/// The heart of every loan: FInterest with a margin on the rates, and with amounts of interest that take the place of
/// the calculated ones in periods between the first and the last of their dates.
double FInterestM(const timeperiod& Time, View<date> FromDatesInt, View<double> IntSimple, const date& Finish,
                  View<date> FromDates, View<double> Balances, View<date> IntOverRideDates, View<double> IntOverRide,
                  double AddMargin, int Options, double DayCount, const AnnualSequence& PrdsInt, double ProjMode);

} // namespace qx
