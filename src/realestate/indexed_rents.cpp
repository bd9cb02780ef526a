#include "realestate/indexed_rents.h"

#include "calendar/reviews.h"
#include "core/routine.h"
#include "projections/constant_rate.h"
#include "realestate/rent_chain.h"

#include <optional>

namespace qx {

namespace {

/// The setting of lease n of a chain, or a preset where a series has no entries.
template <class T>
T setting(View<T> series, int n, const T& preset = T()) {
    return series.empty() ? preset : series.entry(n + 1);
}

void note_first_index_date(const Routine& here, const date& FirstIdx, const date& RentStart) {
    if (!FirstIdx.iszero() && FirstIdx < RentStart)
        here.info("FirstIdxDate predates the RentStart date.  The indexation date should start after the rent start "
                  "date.");
}

/// The rent of one lease in a period under accruals: as given until FirstIdx, then taken up every IdxReg months to what
/// an index made of it since a base date.
double indexed_rent(const Routine& here, const timeperiod& period, const Life& life, double rent, const Growth& index,
                    int IdxReg, const date& base, const date& FirstIdx, const Measure& measure) {
    if (!screen_accruals(here, period, life)) return 0.0;
    if (period.to() < FirstIdx || index.none()) return con(period, life, rent, measure);
    const DayCountCodes codes = DayCountCodes::of(measure.DayCount);
    const double at_base = Grow(base, 1.0, index, 0);
    const Life indexed = life.within(FirstIdx, life.Finish);
    double sum =
        con(period, {life.Start, std::min(life.Finish, FirstIdx)}, rent, {codes.with_start(), measure.Periods, 0.0});
    if (IdxReg == 0)
        return sum + ConGrowMktX(period, indexed, FirstIdx, safe_divide(rent, at_base), rent, index,
                                 index.dates.first(), 0, measure, false, 0);
    const date& end = std::min(period.to(), life.Finish);
    const date& first = std::max(period.from(), indexed.Start);
    date from = last_review(first, FirstIdx, IdxReg, false).when;
    for (int n = 1; from < end; ++n) {
        timeperiod step{from, next_review(from, FirstIdx, IdxReg, false).when};
        const double rate = safe_divide(rent * Grow(from, 1.0, index, 0), at_base);
        const TraceBlock pass = here.pass(n, "Indexed from ", from, " to ", step.to());
        from = step.to();
        step.intersect(period);
        if (step.to() > step.from())
            sum += con(step, indexed, rate,
                       {ChooseRightDC(measure.DayCount, life.Start, life.Finish, step), measure.Periods, 0.0});
    }
    return sum;
}

} // namespace

double IdxRentGrowR(const timeperiod& Time, const date& RentStart, View<date> BrksOrExp, View<double> MktRent_s,
                    double AnnRent, const Growth& growth, const Growth& index, const GrowthIndexation& indexation,
                    const Relets& relets, const Basis& basis, const date& AbFin, int ROpts, int Brk,
                    View<int> IdxLag_s) {
    Routine here{"IdxRentGrowR"};
    here.inputs(Time, RentStart, BrksOrExp, MktRent_s, AnnRent, growth, index, indexation, relets, basis, AbFin, ROpts,
                Brk, IdxLag_s);
    basis.check(here);
    growth.check(here);
    index.check(here);
    const Measure measure{basis.DayCount, basis.Periods};
    const LeaseCalendar calendar{measure, ROpts};
    std::optional<WorkList<date>> dates;
    if (calendar.rounds()) dates.emplace(rounded(growth.dates, calendar));
    const Growth market_growth{dates ? View<date>(*dates) : growth.dates, growth.rates};
    const MarketSource source{&market_growth, nullptr};

    const auto indexed = [&](const timeperiod& period, const Life& life, int n, double rent) {
        const int reg = setting(indexation.IdxReg_s, n), lag = setting(IdxLag_s, n);
        check_reviews(here, reg, "IdxReg_s");
        WorkList<date> later;
        for (const date& day : index.dates) later->append(day.plusmonths(lag, true));
        date FirstIdx = setting(indexation.FirstIdxDate_s, n);
        note_first_index_date(here, FirstIdx, life.Start);
        if (FirstIdx.iszero()) FirstIdx = index.none() ? life.Start : std::max(life.Start, later(1));
        date base = setting(indexation.IdxBaseDate_s, n);
        if (base.iszero()) {
            here.info("There was no idxBaseDate_s range, so BaseDate was made equal to the RentStart.");
            base = life.Start;
        }
        return indexed_rent(here, period, life, rent, {later, index.rates}, reg, base, FirstIdx, measure);
    };
    const date start = calendar.rounded(RentStart);
    return here.returning(follow_chain(
        here, Time, start, {BrksOrExp, Brk, AbFin, relets, ROpts}, 0, basis, {},
        [&](const timeperiod& period, const date& expiry) {
            return indexed(period, {start, expiry}, 0, AnnRent);
        },
        [&](const timeperiod& period, const Relet& relet) {
            const Market market = market_of(here, relet, MktRent_s, source, ROpts);
            return indexed(period, {relet.rent_start, relet.expiry}, relet.number, market.at(relet.lease_start));
        }));
}

double IdxRentFcstR(const timeperiod& Time, const date& RentStart, View<date> BrksOrExp, double AnnRent,
                    const Forecast& forecast, const Forecast& index, const ForecastIndexation& indexation,
                    const Relets& relets, const Basis& basis, const date& AbFin, int ROpts, int Brk,
                    View<int> IdxLag_s) {
    Routine here{"IdxRentFcstR"};
    here.inputs(Time, RentStart, BrksOrExp, AnnRent, forecast, index, indexation, relets, basis, AbFin, ROpts, Brk,
                IdxLag_s);
    basis.check(here);
    forecast.check(here);
    index.check(here, "IdxFcstBase");
    const Measure measure{basis.DayCount, basis.Periods};
    const MarketSource source{nullptr, &forecast};

    const auto indexed = [&](const timeperiod& period, const Life& life, int n, double rent) {
        const date index_start = index.start.plusmonths(setting(IdxLag_s, n), true);
        const date FirstIdx = setting(indexation.FirstIdxDate_s, n);
        note_first_index_date(here, FirstIdx, life.Start);
        return ConIdx(period, life, rent, {index.values, index_start, index.base}, setting(indexation.IdxReg_s, n),
                      setting(indexation.BaseDateOrIdx_s, n), FirstIdx, measure);
    };
    const date start = LeaseCalendar{measure, ROpts}.rounded(RentStart);
    return here.returning(follow_chain(
        here, Time, start, {BrksOrExp, Brk, AbFin, relets, ROpts}, 0, basis, {},
        [&](const timeperiod& period, const date& expiry) {
            return indexed(period, {start, expiry}, 0, AnnRent);
        },
        [&](const timeperiod& period, const Relet& relet) {
            const Market market{source, 0.0};
            return indexed(period, {relet.rent_start, relet.expiry}, relet.number, market.at(relet.lease_start));
        }));
}

} // namespace qx
