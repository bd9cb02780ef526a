// Payments whose amount is what something is worth on their dates: grown, read off a forecast, moved with an index; and
// payments that recur.
//
// Growth is continuous, a forecast is read in steps. Where a market fills in, it takes the place of a payment of zero.
// All throw missinggrowthdate, and errlibmin and errlibmax for a forecast base outside 1 to 1000 months.
#pragma once

#include "projections/payments.h"
#include "projections/terms.h"

namespace qx {

/// The date of a payment.
struct PaymentDate {
    using takes = Takes<date>;
    const date& PmtDate;

    static constexpr bool many = false;
    static constexpr int count() { return 1; }
    const date& when(int) const { return PmtDate; }
    static constexpr double amount(int) { return 0.0; }
};
/// The dates of payments.
struct PaymentDates {
    using takes = Takes<Range<date>>;
    View<date> PmtDates;

    static constexpr bool many = true;
    int count() const { return PmtDates.size(); }
    const date& when(int i) const { return PmtDates(i); }
    static constexpr double amount(int) { return 0.0; }
};
/// An index and what it is based on: a date, its value there, or nothing for its first value.
struct Index {
    using takes = Takes<Range<double>, date, int, dateorfloat>;
    View<double> values;
    const date& start;
    int base;
    const dateorfloat& BaseDateOrIdx;

    Forecast forecast() const { return {values, start, base}; }
};

/// Each payment grown from the first growth date to its own date.
template <class Pmts>
double MkPmtGrow(const timeperiod& Time, const Pmts& payments, const Growth& growth);
/// The same at one rate from one date.
double MkPmtGrowQ(const timeperiod& Time, const Payment& payment, const date& GrowFrom, double GrowthRatePA);
/// The forecast at the dates of the payments.
template <class Dates>
double MkPmtFcst(const timeperiod& Time, const Dates& dates, const Forecast& forecast);
/// Each payment; where it is zero the forecast at its date, or the market value grown to its date.
template <class Pmts>
double MkPmtFcstMkt(const timeperiod& Time, const Pmts& payments, const Forecast& forecast);
double MkPmtsGrowMkt(const timeperiod& Time, double MktValue, const Payments& payments, const Growth& growth);
/// Each payment times the ratio of an index from its base to the payment's date.
double MkPmtsIdx(const timeperiod& Time, const Payments& payments, const Index& index);

// The same every Periodicity months from their dates up to AbsFinish, each repetition by its own date. Throw
// errlibmaxrevs where a period comes 100 repetitions or more after a payment's date.

template <class Pmts>
double MkPmtPer(const timeperiod& Time, const date& AbsFinish, const Pmts& payments, int Periodicity);
template <class Pmts>
double MkPmtPerGrow(const timeperiod& Time, const date& AbsFinish, const Pmts& payments, const Growth& growth,
                    int Periodicity);
double MkPmtsPerFcst(const timeperiod& Time, const date& AbsFinish, const PaymentDates& dates, const Forecast& forecast,
                     int Periodicity);
template <class Pmts>
double MkPmtPerFcstMkt(const timeperiod& Time, const date& AbsFinish, const Pmts& payments, const Forecast& forecast,
                       int Periodicity);
double MkPmtsPerGrowMkt(const timeperiod& Time, const date& AbsFinish, double MktValue, const Payments& payments,
                        const Growth& growth, int Periodicity);
double MkPmtsIdxPer(const timeperiod& Time, const date& AbsFinish, const Payments& payments, const Index& index,
                    int Periodicity);

} // namespace qx
