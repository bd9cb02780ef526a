#include "realestate/leasing_fees.h"

#include "realestate/rent_chain.h"

namespace qx {

namespace {

double leasing_fees(const Routine& here, const timeperiod& Time, View<double> FeePerc_s, const date& LeaseStartDate,
                    View<date> BrksOrExp, View<double> MktRent_s, double InitRent, const MarketSource& source,
                    const ReletTerms& relets, const date& AbFin, int Brk) {
    const LeaseCalendar calendar = plain_calendar();
    const ChainEnd chain{AbFin, calendar.ROpts, Brk};
    const date& limit = chain.limit();
    Kept<date> end_of_first{here, 1};
    ReletWalk walk = relet_walk(here, relets.relets(), calendar, limit);
    return over(here, Time, [&](const timeperiod& period) {
        double amount = 0.0;
        if (period.contains(LeaseStartDate)) {
            amount = series_item(FeePerc_s, 1) * InitRent;
            here.info("Main Lease Start ", LeaseStartDate, ": fee ", amount);
        }
        const date& expiry = end_of_first(1, [&] { return chain.expiry(BrksOrExp, calendar); });
        each_relet(here, expiry, walk, period.from(), period.to(), [&](const Relet& relet, const date&) {
            if (!period.contains(relet.lease_start) || relet.lease_start >= limit) return;
            const Market market{source, relet_market(MktRent_s, relet.number)};
            const double fee = series_item(FeePerc_s, relet.number + 1) * market.at(relet.lease_start);
            here.info("at Relet No ", relet.number, ": fee ", fee);
            amount += fee;
        });
        return amount;
    });
}

} // namespace

double LeasingFeeGrowR(const timeperiod& Time, View<double> FeePerc_s, const date& LeaseStartDate, View<date> BrksOrExp,
                       View<double> MktRent_s, double InitRent, const Growth& growth, const ReletTerms& relets,
                       const date& AbFin, int Brk) {
    Routine here{"LeasingFeeGrowR"};
    here.inputs(Time, FeePerc_s, LeaseStartDate, BrksOrExp, MktRent_s, InitRent, growth, relets, AbFin, Brk);
    growth.check(here);
    return here.returning(leasing_fees(here, Time, FeePerc_s, LeaseStartDate, BrksOrExp, MktRent_s, InitRent,
                                       {&growth, nullptr}, relets, AbFin, Brk));
}

double LeasingFeeFcstR(const timeperiod& Time, View<double> FeePerc_s, const date& LeaseStartDate, View<date> BrksOrExp,
                       double InitRent, const Forecast& forecast, const ReletTerms& relets, const date& AbFin,
                       int Brk) {
    Routine here{"LeasingFeeFcstR"};
    here.inputs(Time, FeePerc_s, LeaseStartDate, BrksOrExp, InitRent, forecast, relets, AbFin, Brk);
    forecast.check(here);
    return here.returning(leasing_fees(here, Time, FeePerc_s, LeaseStartDate, BrksOrExp, {}, InitRent,
                                       {nullptr, &forecast}, relets, AbFin, Brk));
}

} // namespace qx
