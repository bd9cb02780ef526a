#include "projections/reforecast.h"

#include "projections/constant_rate.h"
#include "projections/curves.h"
#include "projections/payments.h"

namespace qx {

template <Spread S>
double spread_adjusted(const timeperiod& Time, const S& spread, double ActualsToDate, const Basis& basis) {
    Routine here{S::names.adjusted};
    here.inputs(Time, spread, ActualsToDate, basis);
    basis.check(here);
    spread.check(here);
    if (!runs_forward(here, Time)) return here.returning(0.0);
    const double budget = spread.in(here, {spread.start(), Time.from()}, basis);
    here.info("Budget To Date=", budget);
    const double factor = safe_divide(spread.Total - ActualsToDate, spread.Total - budget);
    here.info("Adjustment Factor=", factor);
    return here.returning(iszero(factor) ? 0.0 : spread.in(here, Time, basis) * factor);
}
template double spread_adjusted(const timeperiod&, const UniformSpread&, double, const Basis&);
template double spread_adjusted(const timeperiod&, const CurvedSpread&, double, const Basis&);
template double spread_adjusted(const timeperiod&, const GeneralSpread&, double, const Basis&);
template double spread_adjusted(const timeperiod&, const WeightedSpread&, double, const Basis&);
template double spread_adjusted(const timeperiod&, const FWeightedSpread&, double, const Basis&);
template double spread_adjusted(const timeperiod&, const TWeightedSpread&, double, const Basis&);
template double spread_adjusted(const timeperiod&, const DistributedSpread&, double, const Basis&);

namespace {

/// How many payments of a history count: up to the last one that is not zero.
int length_of(View<date> dates, View<double> payments) {
    int n = std::min(dates.size(), payments.size());
    while (n > 0 && iszero(payments(n))) --n;
    return n;
}

} // namespace

template <Spread S>
double spread_with_history(const timeperiod& Time, const S& spread, View<date> DatesHistory, View<double> PmtsHistory,
                           const Basis& basis) {
    Routine here{S::names.with_history};
    here.inputs(Time, spread, DatesHistory, PmtsHistory, basis);
    here.change_note(19,
                     "See Change in Behaviour 19, Mar-03 :DatesHistory and PmtsHistory are automatically contracted "
                     "(shrunk) to the last non-zero payment.  This means that you can specify the start of the "
                     "forecast by putting in a small non-zero amount as the last payment");
    basis.check(here);
    spread.check(here);
    const int n = length_of(DatesHistory, PmtsHistory);
    if (n == 0) {
        here.info("No history data");
        return here.returning(spread.in(here, Time, basis));
    }
    if (!runs_forward(here, Time)) return here.returning(0.0);
    here.info("Simply using a MkPmts() on the history inputs");
    const double history = MkPmts(Time, {DatesHistory.upto(n), PmtsHistory.upto(n)});
    const date& projection = DatesHistory(n);
    here.info("Projection start ", projection, ". Based upon the last date entry in the input history ");
    if (Time.to() < projection) return here.returning(history);

    const double paid = TotPmts({DatesHistory.upto(n), PmtsHistory.upto(n)});
    const double rest = spread.Total - paid;
    here.info("To be projected ", rest, ". Based on Total ", spread.Total, " less history payments ", paid);
    const double incurred = spread.in(here, {spread.start(), projection}, basis);
    const double factor = safe_divide(rest, spread.Total - incurred);
    here.info("Adjustment Factor=", factor);
    const timeperiod revised(std::max(projection, Time.from()), Time.to());
    here.info("RevisedTimePeriod ", revised);
    return here.returning(history + (iszero(factor) ? 0.0 : spread.in(here, revised, basis) * factor));
}
template double spread_with_history(const timeperiod&, const UniformSpread&, View<date>, View<double>, const Basis&);
template double spread_with_history(const timeperiod&, const CurvedSpread&, View<date>, View<double>, const Basis&);
template double spread_with_history(const timeperiod&, const GeneralSpread&, View<date>, View<double>, const Basis&);
template double spread_with_history(const timeperiod&, const WeightedSpread&, View<date>, View<double>, const Basis&);
template double spread_with_history(const timeperiod&, const FWeightedSpread&, View<date>, View<double>, const Basis&);
template double spread_with_history(const timeperiod&, const TWeightedSpread&, View<date>, View<double>, const Basis&);
template double spread_with_history(const timeperiod&, const DistributedSpread&, View<date>, View<double>,
                                    const Basis&);

} // namespace qx
