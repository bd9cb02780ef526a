#include "realestate/letting_costs.h"

#include "projections/curves.h"
#include "projections/growth.h"

namespace qx {

namespace {

double letting_costs(const Routine& here, const timeperiod& Time, View<date> BrksOrExp, const Payments& payments,
                     const SpreadCosts& expiry_costs, const SpreadCosts& relet_costs, const Growth& growth,
                     const ReletTerms& relets, const LettingEnd& end) {
    const LeaseCalendar calendar = plain_calendar();
    const ChainEnd chain{end.AbFin, calendar.ROpts, end.Brk};
    const date& limit = chain.limit();
    const date any; // costs may be spread over years after a relet
    Kept<date> end_of_first{here, 1};
    ReletWalk walk = relet_walk(here, relets.relets(), calendar, limit);
    return over(here, Time, [&](const timeperiod& period) {
        double amount = MkPmts(period, payments);
        const date& first_expiry = end_of_first(1, [&] { return chain.expiry(BrksOrExp, calendar); });
        if (period.to() <= first_expiry) return amount;
        here.info("Timeperiod is after or partly after the first lease Expiry, calculating relets...");
        each_relet(here, first_expiry, walk, any, period.to(), [&](const Relet& relet, const date& expiry) {
            const bool last_expiry = !end.AbFin.iszero() && relet.expiry >= limit;
            if (!last_expiry || !option_present(without_last_expiry, end.Options))
                amount += expiry_costs.in(period, relet.number, expiry, growth);
            if (relet.lease_start < limit) amount += relet_costs.in(period, relet.number, relet.lease_start, growth);
        });
        return amount;
    });
}

} // namespace

double SpreadCosts::in(const timeperiod& Time, int n, const date& day, const Growth& growth) const {
    const double duration = series_item(months, n);
    const date completion = duration > 0.0 ? day.plusmonths(duration) : day;
    if (day > Time.to() || completion < Time.from()) return 0.0;
    const double cost = Grow(day, series_item(costs, n), growth, 0);
    if (completion == day) return payment_in(Time, day, cost);
    return spread_over(Time, GeneralSpread{day, cost, completion, series_item(curves, n), series_item(shapes, n)},
                       any_measure());
}

double LetCostRQ(const timeperiod& Time, const date& LeaseStartDate, View<date> BrksOrExp, const Payments& payments,
                 View<double> ExpCost_s, View<double> RelCost_s, const Growth& growth, const ReletTerms& relets,
                 const LettingEnd& end) {
    Routine here{"LetCostRQ"};
    here.inputs(Time, LeaseStartDate, BrksOrExp, payments, ExpCost_s, RelCost_s, growth, relets, end);
    growth.check(here);
    return here.returning(letting_costs(here, Time, BrksOrExp, payments, {ExpCost_s, {}, {}, {}},
                                        {RelCost_s, {}, {}, {}}, growth, relets, end));
}

double LetCostR(const timeperiod& Time, const date& LeaseStartDate, View<date> BrksOrExp, const Payments& payments,
                const SpreadCosts& expiry_costs, const SpreadCosts& relet_costs, const Growth& growth,
                const ReletTerms& relets, const LettingEnd& end) {
    Routine here{"LetCostR"};
    here.inputs(Time, LeaseStartDate, BrksOrExp, payments, expiry_costs, relet_costs, growth, relets, end);
    growth.check(here);
    return here.returning(
        letting_costs(here, Time, BrksOrExp, payments, expiry_costs, relet_costs, growth, relets, end));
}

} // namespace qx
