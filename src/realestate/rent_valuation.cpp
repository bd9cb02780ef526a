#include "realestate/rent_valuation.h"

#include "core/routine.h"
#include "projections/constant_rate.h"
#include "realestate/rent_chain.h"
#include "realestate/yield_solve.h"

#include <algorithm>

namespace qx {

namespace {

constexpr int most_reviews = 100;

/// When the rents of a lease and its relets change, and from when on the last one is capitalised.
class RentDates {
  public:
    /// The dates of a lease that ends, or else is capitalised from its first review to the market on.
    void add_lease(const date& RentStart, View<date> ReviewDates, const date& expiry, int RevMos) {
        dates_->append(RentStart);
        for (const date& day : ReviewDates) dates_->append(day);
        const date& to_market = ReviewDates.empty() || ReviewDates.last().iszero() ? RentStart : ReviewDates.last();
        add_reviews(RevMos == 0 ? date() : to_market.plusmonths(RevMos, true), RevMos, expiry);
        dates_->append(expiry);
        capitalised_ = expiry < DateCrit ? expiry : to_market;
    }
    void add_relet(const Relet& relet, int RevMos) {
        capitalised_ = relet.rent_start;
        dates_->append(relet.rent_start);
        add_reviews(relet.first_review, RevMos, relet.expiry);
        dates_->append(relet.expiry);
    }
    void capitalise_at(const date& day) { capitalised_ = day; }

    const date& capitalised() const { return capitalised_; }
    /// The dates from the valuation on, in order, the date of capitalisation last.
    View<date> from(const date& ValuationDate) {
        capitalised_ = std::max(capitalised_, ValuationDate);
        dates_->append(ValuationDate);
        dates_->append(capitalised_);
        std::sort(dates_->begin(), dates_->end());
        date* const first = std::lower_bound(dates_->begin(), dates_->end(), ValuationDate);
        date* const last = std::unique(first, std::lower_bound(first, dates_->end(), capitalised_));
        *last = capitalised_;
        return {first, static_cast<int>(last - first) + 1};
    }

  private:
    void add_reviews(const date& first, int RevMos, const date& end) {
        if (first.iszero()) return;
        for (int i = 0; i < most_reviews; ++i) {
            const date review = first.plusmonths(i * RevMos, true);
            if (review >= end) break;
            dates_->append(review);
            if (RevMos == 0) break;
        }
    }

    WorkList<date> dates_;
    date capitalised_;
};

/// As many relets as the longest of their series, and one at least.
int number_of_relets(View<double> MktRent_s, const Relets& relets) {
    const int longest =
        std::max({MktRent_s.size() - 1, relets.RelVoid_s.size(), relets.RelRF_s.size(), relets.RelTerm_s.size()});
    return std::clamp(longest, 1, Relets::most);
}

} // namespace

double CapValueTStepRentGrowR(const date& ValuationDate, double Yield, double DisAER, const date& RentStart,
                              View<date> BrksOrExp, View<double> MktRent_s, View<date> ReviewDates,
                              View<double> AnnRents, const Growth& growth, const Reviews& reviews, const Relets& relets,
                              const Measure& measure, const date& AbFin, View<date> UOTog, int ROpts, int Brk,
                              double CostsPerc, const CapTerms& terms) {
    constexpr double any_review = 12.0; // growth is in the rents
    Routine here{"CapValueTStepRentGrowR"};
    here.inputs(ValuationDate, Yield, DisAER, RentStart, BrksOrExp, MktRent_s, ReviewDates, AnnRents, growth, reviews,
                relets, measure, AbFin, UOTog, ROpts, Brk, CostsPerc, terms);
    measure.check(here);
    reviews.check(here);
    check_costs(here, CostsPerc);
    ReviewedMarket::check(here, DisAER, terms.yield());

    const LeaseCalendar calendar{measure, ROpts};
    const date& limit = AbFin.iszero() ? DateCrit : AbFin;
    date expiry = calendar.rounded(lease_end(here, BrksOrExp, Brk, AbFin));
    RentDates changes;
    changes.add_lease(calendar.rounded(RentStart), rounded(ReviewDates, calendar), expiry, reviews.RevMos);
    const int relet_count = AbFin.iszero() ? number_of_relets(MktRent_s, relets) : Relets::most;
    for (int i = 1; i <= relet_count && expiry < limit; ++i) {
        const Relet relet = next_relet(i, expiry, relets, reviews.RevMos, calendar, limit);
        changes.add_relet(relet, reviews.RevMos);
        expiry = relet.expiry;
    }
    if (!AbFin.iszero()) changes.capitalise_at(std::max(AbFin, expiry)); // an expiry may be rounded past it

    const Basis basis = measure;
    const auto rent_in = [&](const date& from, const date& to) {
        const timeperiod period(from, to);
        const double rent = safe_divide(TStepRentGrowR(period, RentStart, BrksOrExp, MktRent_s, ReviewDates, AnnRents,
                                                       growth, reviews, relets, basis, AbFin, UOTog, ROpts, Brk),
                                        con(period, {from, to}, 1.0, basis));
        here.info("Rent a year from ", from, ": ", rent);
        return rent;
    };
    RentStepList list;
    const View<date> dates = changes.from(ValuationDate);
    for (int i = 1; i < dates.size(); ++i) list.add(rent_in(dates(i), dates(i + 1)), dates(i), ValuationDate);
    const date& last = dates.last();
    if (AbFin.iszero()) {
        list.add(rent_in(last, last.plusmonths(1, true)), last, ValuationDate);
        here.info("Capitalised from ", last, " on");
        if (option_present(cap_maximum_rent, terms.CapOptions)) list.raise_last(here);
    } else {
        list.add(0.0, last, ValuationDate);
    }
    const ReviewedMarket market(here, DisAER, any_review, terms.yield());
    return here.returning(
        clsYieldSolveDCF(here, list.steps(), CostsPerc, market, LastRent::as_at_its_start).value(Yield));
}

} // namespace qx
