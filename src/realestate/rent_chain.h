// What the rents of all kinds of leases share: the market, and the walk over a lease and its relets.
#pragma once

#include "core/routine.h"
#include "projections/constant_rate.h"
#include "projections/forecast.h"
#include "projections/growth.h"
#include "realestate/lease.h"

#include <algorithm>

namespace qx {

/// Where market rents come from: a forecast, or else growth.
struct MarketSource {
    const Growth* growth;
    const Forecast* forecast;
};

/// The market rent of one lease: a rent that grows, or a forecast.
struct Market {
    MarketSource source;
    double rent;

    double at(const date& day) const {
        return source.forecast != nullptr ? fcst(day, *source.forecast) : Grow(day, rent, *source.growth, 0);
    }
};

/// False, with a note, if a period lies outside a lease, from its rent start to its end.
bool within_lease(const Routine& here, const timeperiod& period, const date& start, const date& end);
/// The period in which a lease is measured, in place of a worksheet period; false if it lies outside.
bool screen_rent(const Routine& here, timeperiod& period, const date& start, const date& end, const Basis& basis);

/// How a chain of leases ends, and what it is made of.
struct Chain {
    View<date> BrksOrExp;
    int Brk;
    const date& AbFin;
    const Relets& relets;
    int ROpts;
};

/// Dates rounded as a calendar does.
inline WorkList<date> rounded(View<date> dates, const LeaseCalendar& calendar) {
    WorkList<date> list;
    for (const date& day : dates) list->append(calendar.rounded(day));
    return list;
}

/// The dates between which a chain is measured: zero dates bound nothing.
struct StreamBounds {
    date Start, Finish;
    bool none() const { return Start.iszero() && Finish.iszero(); }
    void narrow(timeperiod& period) const {
        if (!Start.iszero()) period.setfrom(std::max(period.from(), Start));
        if (!Finish.iszero()) period.setto(std::min(period.to(), Finish));
    }
};

/// The market rent of lease n of a chain at the first growth date: 0 is the original lease, then the relets.
inline double relet_market(View<double> MktRent_s, int n) { return MktRent_s.empty() ? 0.0 : MktRent_s.entry(n + 1); }

/// The market of a relet. With the option for it, growth counts from the start of the relet only.
inline Market market_of(const Routine& here, const Relet& relet, View<double> MktRent_s, const MarketSource& source,
                        int ROpts) {
    Market market{source, relet_market(MktRent_s, relet.number)};
    if (source.growth != nullptr && option_present(deflate_market, ROpts)) {
        market.rent = safe_divide(market.rent, Grow(relet.lease_start, 1.0, *source.growth, 0));
        here.info("In Relet number ", relet.number, " the market rent was deflated to ", market.rent);
    }
    return market;
}

/// The notes of the options that change how relets are dated and let.
inline void note_options(const Routine& here, int ROpts) {
    if (option_present(deflate_market, ROpts)) here.info("Market Rents on relet grow from Lease Start");
    if (option_present(move_by_day_count, ROpts))
        here.info("Daycount for calculating new rent start is the same as for rent.");
}

/// The sum over a lease that starts on a date and its relets. `first` takes the period in which it is measured, under
/// accruals, and the end of the lease; `later` the period and a relet.
template <class First, class Later>
double follow_chain(const Routine& here, const timeperiod& Time, const date& RentStart, const Chain& chain, int RevMos,
                    const Basis& basis, const StreamBounds& bounds, First first, Later later) {
    const LeaseCalendar calendar{{basis.DayCount, basis.Periods}, chain.ROpts};
    note_options(here, chain.ROpts);
    const date& limit = chain.AbFin.iszero() ? DateCrit : chain.AbFin;
    const date& start = std::max(bounds.Start, RentStart);
    const date& end = bounds.Finish.iszero() ? limit : std::min(limit, bounds.Finish);
    const bool as_accrued = !basis.cash() && bounds.none();
    Kept<date> end_of_first{here, 1};
    ReletWalk walk{here, chain.relets, RevMos, calendar, limit};
    return over(here, Time, [&](const timeperiod& given) {
        if (!runs_forward(here, given)) return 0.0;
        if (given.to() < start || given.from() > end) {
            here.info("Time ", given, " is outside of RentStart ", start, " and AbFin ", end, " returning zero.");
            return 0.0;
        }
        const auto amount_in = [&](const timeperiod& period) {
            if (period.to() < period.from()) return 0.0;
            const date& expiry = end_of_first(
                1, [&] { return calendar.rounded(lease_end(here, chain.BrksOrExp, chain.Brk, chain.AbFin)); });
            double amount = walk.first_is_past(period.from()) ? 0.0 : first(period, expiry);
            walk(expiry, period.from(), period.to(), [&](const Relet& relet, const date&) {
                if (relet.rent_start > period.to() || relet.rent_start >= limit) return false;
                if (relet.expiry < period.from()) return true;
                const TraceBlock pass = here.pass(relet.number, "Number of Relets needed: ", relet.number);
                amount += later(period, relet);
                return true;
            });
            return amount;
        };
        if (as_accrued) return amount_in(given);
        timeperiod period = basis.cash() ? CashTime(given, basis.Periods, start, end, true, basis.ProjMode) : given;
        bounds.narrow(period);
        return amount_in(period);
    });
}

} // namespace qx
