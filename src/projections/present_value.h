// The present value of a projection, without a time line on the sheet: a walk from payment date to payment date that
// asks the projection for the cash of each and discounts it.
//
//     present_value(here, life, at, terms, [&](const timeperiod& period) { return Con(period, streams, cash); });
//
// A period of the walk runs from a date to the next one of CashBasis, but not past the end of the stream; one more
// period starts on the end itself, in which a stream in arrears has its last payment. The cash of a period is
// discounted from its start. So the value is that of the time line whose columns are these periods.
#pragma once

#include "calendar/time_period.h"
#include "core/routine.h"
#include "projections/steps.h"
#include "projections/terms.h"
#include "rates/compounding.h"
#include "rates/powers.h"

#include <algorithm>

namespace qx {

inline constexpr Limits discount_rate_limits{-0.999999, std::numeric_limits<double>::infinity()};

/// The date to which flows are discounted, and the rate.
struct Discount {
    using takes = Takes<date, double>;
    const date& NPVDate;
    double DisAER; ///< annual equivalent rate, -0.999999 or more
};

/// How a projection is paid, and how and between which dates its flows are discounted. A flow on StartDCF or on
/// FinishDCF counts; a zero date leaves that side open.
struct CashTerms {
    using takes = Takes<double, AnnualSequence, double, AnnualSequence, date, date>;
    double DayCount; ///< 0 to 999, as DayCountDisc
    const AnnualSequence& CashBasis;
    double DayCountDisc;
    const AnnualSequence& PrdsDisc;
    const date& StartDCF;
    const date& FinishDCF;

    /// How the projection is measured: when it is paid.
    Basis cash() const { return {DayCount, CashBasis, 1.0}; }
    bool too_early(const date& day) const { return !StartDCF.iszero() && day < StartDCF; }
    bool too_late(const date& day) const { return !FinishDCF.iszero() && day > FinishDCF; }
    /// The years over which a flow is discounted, negative for one before NPVDate.
    double years(const date& NPVDate, const date& day) const {
        return years_between(NPVDate, day, DayCountDisc, PrdsDisc);
    }
    /// Throws errlibmin, errlibmax for a day count outside 0 to 999, errlibmin for a rate below -0.999999.
    void check(Routine& here) const {
        here.limit(DayCount, daycount_limits, "DayCount");
        here.limit(DayCountDisc, daycount_limits, "DayCountDisc");
    }
    void check(Routine& here, double DisAER) const {
        check(here);
        here.limit(DisAER, discount_rate_limits, "DisAER");
    }
    void check(Routine& here, View<double> DisAER) const {
        check(here);
        for (const double rate : DisAER) here.limit(rate, discount_rate_limits, "DisAER");
    }
};

/// The dates between which steps are paid: without to-dates, or with nothing but a blank one, they never end.
inline Life whole_extent(const FromSteps& steps) { return steps.extent(); }
inline Life whole_extent(const ToSteps& steps) {
    const bool endless = steps.ToDates.empty() || (steps.count() == 1 && steps.ToDates.first().iszero());
    return {steps.Start, endless ? DateCrit : steps.ToDates.last()};
}

/// Visits the periods between the payments of a stream, from its start to its end, whose start lies between StartDCF
/// and FinishDCF. Throws errliboveriterated at 2000 of them.
template <class Visit>
void each_payment_period(const Routine& here, const Life& life, const CashTerms& terms, Visit visit) {
    constexpr int most_rounds = 2000;
    timeperiod period;
    period.setends(life.Start, life.Start);
    for (int n = 1; n <= most_rounds; ++n) {
        const date from = period.to();
        if (from > life.Finish) {
            here.info("Breaking, because the current 'to' date exceeds the finish of the projection (", life.Finish,
                      ")");
            return;
        }
        if (terms.too_late(from)) {
            here.info("Breaking, because the current date exceeds FinishDCF");
            return;
        }
        const date next = terms.CashBasis.nextdate(from, false);
        period.setends(from, from < life.Finish ? std::min(next, life.Finish) : next);
        if (terms.too_early(from)) continue;
        const TraceBlock pass = here.pass(n, "Payment period ", period);
        visit(std::as_const(period));
    }
    here.fail<errliboveriterated>("");
}

/// The value of a flow at a time in years, under the growth of a year, 1 + rate.
inline double discounted(const Routine& here, double flow, double years, const PowersOf& growth) {
    const double value = flow / growth(years);
    here.info("PV(", flow, ") at time ", years, " years = ", value);
    return value;
}

/// The present value of a stream: `flow` takes a period and gives the cash in it.
template <class Flow>
double present_value(const Routine& here, const Life& life, const Discount& at, const CashTerms& terms, Flow flow) {
    const PowersOf growth(1.0 + at.DisAER);
    double sum = 0.0;
    each_payment_period(here, life, terms, [&](const timeperiod& period) {
        const double cash = flow(period);
        if (cash != 0.0) sum += discounted(here, cash, terms.years(at.NPVDate, period.from()), growth);
    });
    return sum;
}

/// The present value of a stream of steps, each with a discount rate of its own: `flow` takes a period and the time in
/// years to discount over, and gives what the steps pay in it, discounted.
template <class Flow>
double present_value_by_step(const Routine& here, const Life& life, const date& NPVDate, const CashTerms& terms,
                             Flow flow) {
    double sum = 0.0;
    each_payment_period(here, life, terms, [&](const timeperiod& period) {
        const double years = terms.years(NPVDate, period.from());
        const double value = flow(period, years);
        if (value != 0.0) here.info("PV at time ", years, " years = ", value);
        sum += value;
    });
    return sum;
}

} // namespace qx
