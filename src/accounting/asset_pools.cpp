#include "accounting/asset_pools.h"

#include "accounting/years_later.h"
#include "core/routine.h"
#include "projections/payments.h"
#include "projections/simple_growth.h"

#include <algorithm>
#include <numeric>

namespace qx {

namespace {

/// The dates of a selection without those of one that is blank.
View<date> given_dates(View<date> dates) { return dates.size() == 1 && dates.first().iszero() ? View<date>() : dates; }

double sum_of(View<double> amounts) { return std::accumulate(amounts.begin(), amounts.end(), 0.0); }

void check_pool(Routine& here, const PoolCosts& costs, const PoolTerms& terms, const Measure& measure,
                const Measure& interest) {
    here.limit(terms.DepSwitch, dep_switch_limits, "DepSwitch");
    measure.check(here);
    here.limit(interest.DayCount, daycount_limits, "DayCountDisc");
    check_rates(here, costs.IntSimple);
    check_arrears(here, interest.Periods, "PrdsDisc");
}

/// The note of a change to the cumulative in-service amount, which each function numbers for itself.
void note_in_service_change(const Routine& here, int number) {
    if (!here.traced()) return;
    const auto text = text_of("See Change in Behaviour ", number,
                              ", Feb-05 :Cumulative In Service Amount  (DepSwitch=6) is now 1 period later (bugfix)");
    here.change_note(number, text.c_str());
}

/// What goes into service when, and what has not yet.
class Pool {
  public:
    Pool(const Routine& here, const PoolCosts& costs, View<date> ISDates, const PoolTerms& terms,
         const Measure& measure, const Measure& interest)
        : here_(here), rates_(costs.FromDatesInt, costs.IntSimple, interest.DayCount, interest.Periods),
          dates_(given_dates(costs.AdditionDates).upto(costs.Additions.size())),
          additions_(costs.Additions.upto(dates_.size())), in_service_(given_dates(ISDates)), terms_(terms),
          measure_(measure) {}

    View<date> addition_dates() const { return dates_; }
    View<date> in_service_dates() const { return in_service_; }
    double all_additions() const { return sum_of(additions_); }

    /// Each lot is what was spent since the in-service date before it.
    void make_lots_of_spending() {
        for (int i = 1, first = 0; i <= in_service_.size(); ++i) {
            const int past = up_to_and_on(in_service_(i));
            lots_->append(spent(first, past, in_service_(i)));
            first = past;
            here_.info("Into service on ", in_service_(i), ": ", lots_(i));
        }
    }
    /// Each lot is a portion of all that is spent. False if the portions come to nothing.
    bool make_lots_of_portions(View<double> portions);

    double result(const timeperiod& Time) const;

  private:
    /// The places in the list of additions from which on they are after a date, and before which they are before it.
    int up_to_and_on(const date& day) const {
        return static_cast<int>(std::upper_bound(dates_.begin(), dates_.end(), day) - dates_.begin());
    }
    int before(const date& day) const {
        return static_cast<int>(std::lower_bound(dates_.begin(), dates_.end(), day) - dates_.begin());
    }
    /// Where the additions of lot i begin.
    int since(int i) const { return i == 1 ? 0 : up_to_and_on(in_service_(i - 1)); }

    double growth(const date& from, const date& to) const { return GrowthTo(to, rates_)(from); }
    /// What the additions from one place up to another are worth on a day that none of them is after.
    double spent(int first, int past, const date& day) const {
        if (first >= past) return 0.0;
        GrowthTo growth(day, rates_);
        double sum = 0.0;
        for (int i = past; i > first; --i) sum += additions_(i) * growth(dates_(i)); // backward: growth is shared
        return sum;
    }
    /// The first in-service date on or after a day; one more than there are if none is.
    int next_lot(const date& day) const {
        return static_cast<int>(std::lower_bound(in_service_.begin(), in_service_.end(), day) - in_service_.begin()) +
               1;
    }

    /// The day from which on every lot is written off.
    date written_off() const {
        if (in_service_.empty()) return DateCrit;
        return years_later(here_, in_service_.last(), DepLife(terms_.DepType, terms_.LifeOrDecRate), measure_);
    }
    double work_in_progress(const date& day) const {
        const int next = next_lot(day);
        const double sum = spent(since(next), before(day), day);
        return next > 1 && next <= in_service_.size() ? sum + balance_on(next, day) : sum;
    }
    /// By portions: the balance of additions and lots that is carried to a day between in-service date `next` and the
    /// one before it. Lots that are what was spent leave none.
    double balance_on(int next, const date& day) const {
        if (!by_portions_) return 0.0;
        double balance = 0.0;
        for (int i = 1, first = 0; i < next; ++i) {
            const date& when = in_service_(i);
            const int past = up_to_and_on(when);
            const double added = spent(first, past, when),
                         factor = growth(when, i + 1 < next ? in_service_(i + 1) : day);
            here_.info("Balance ", i, " = (", balance, " + ", added, " - ", lots_(i), ") * ", factor);
            balance = (balance + added - lots_(i)) * factor;
            first = past;
        }
        return balance;
    }
    double in_service_to(const date& day) const {
        return day >= written_off() ? 0.0 : sum_of(View<double>(lots_).upto(next_lot(day) - 1));
    }
    /// What of the additions to date is in progress or in lots that are not all written off.
    double additions_to(const date& day) const {
        const int first = day >= written_off() ? since(in_service_.size() + 1) : 0, past = before(day);
        return first >= past ? 0.0 : sum_of(additions_.from(first + 1).upto(past - first));
    }
    double interest_to(const date& day) const { return in_service_to(day) + work_in_progress(day) - additions_to(day); }
    double depreciated(const date& day) const {
        return sum_lots(
            [&](const date& start, const Asset& lot) { return DepreciatedValue(day, start, start, lot, measure_); });
    }
    /// A lot of nothing has no value and no depreciation.
    template <class Of>
    double sum_lots(Of of) const {
        double sum = 0.0;
        for (int i = 1; i <= in_service_.size(); ++i) {
            if (iszero(lots_(i))) continue;
            const TraceBlock pass = here_.pass(i, "Lot of ", lots_(i), " from ", in_service_(i));
            sum += of(in_service_(i), Asset{terms_.LifeOrDecRate, terms_.DepType, lots_(i), terms_.FinalValue});
        }
        return sum;
    }

    const Routine& here_;
    const DatedRates rates_;
    const View<date> dates_;
    const View<double> additions_;
    const View<date> in_service_;
    const PoolTerms& terms_;
    const Measure& measure_;
    WorkList<double> lots_; ///< what goes into service on each in-service date
    bool by_portions_ = false;
};

bool Pool::make_lots_of_portions(View<double> given) {
    const int n = in_service_.size();
    const date& last = in_service_.last();
    const double fv_additions = spent(0, dates_.size(), last);
    // Each portion grown to the last in-service date, from that date backwards.
    const auto portion = [&](int i) { return i <= given.size() ? given(i) : 0.0; };
    double fv_portions = portion(n), growth_to_last = 1.0;
    for (int i = n - 1; i >= 1; --i) {
        growth_to_last *= growth(in_service_(i), in_service_(i + 1));
        fv_portions += portion(i) * growth_to_last;
    }
    if (iszero(fv_portions)) {
        here_.warning("The portions come to nothing, returning zero");
        return false;
    }
    const double CapAmt = fv_additions / fv_portions;
    here_.info("FV Additions=", fv_additions, ". FVPortions=", fv_portions, ". CapAmt=", CapAmt);
    for (int i = 1; i <= n; ++i) lots_->append(portion(i) * CapAmt);
    by_portions_ = true;
    return true;
}

double Pool::result(const timeperiod& Time) const {
    const auto going_into_service = [&] { return MkPmts(Time, {in_service_, lots_}); };
    switch (terms_.DepSwitch) {
    case pool_depreciation:
        return sum_lots([&](const date& start, const Asset& lot) { return Depreciate(Time, start, lot, measure_); });
    case pool_value_at_start:
        return depreciated(Time.from());
    case pool_value_at_finish:
        return depreciated(Time.to().plusdays(-1));
    case pool_wip_at_start:
        return work_in_progress(Time.from());
    case pool_wip_at_finish:
        return work_in_progress(Time.to());
    case pool_in_service_to_start:
        return in_service_to(Time.from());
    case pool_in_service_to_finish:
        return in_service_to(Time.to());
    case pool_in_service:
        return going_into_service();
    case pool_interest_to_start:
        return interest_to(Time.from());
    case pool_interest_to_finish:
        return interest_to(Time.to());
    default:
        return work_in_progress(Time.to()) - work_in_progress(Time.from()) + going_into_service() -
               MkPmts(Time, {dates_, additions_});
    }
}

} // namespace

double DepPool(const timeperiod& Time, const PoolCosts& costs, View<date> ISDates, View<double> ISPortions,
               const PoolTerms& terms, const Measure& measure, const Measure& interest) {
    Routine here{"DepPool"};
    here.inputs(Time, costs, ISDates, ISPortions, terms, measure, interest);
    note_in_service_change(here, 155);
    if (!iszero(sum_of(ISPortions)))
        return here.returning(DepPoolRatio(Time, costs, ISDates, ISPortions, terms, measure, interest));
    here.info("WIP Method Selected (ISPortions missing)");
    return here.returning(DepPoolWIP(Time, costs, ISDates, terms, measure, interest));
}

double DepPoolWIP(const timeperiod& Time, const PoolCosts& costs, View<date> ISDates, const PoolTerms& terms,
                  const Measure& measure, const Measure& interest) {
    Routine here{"DepPoolWIP"};
    here.inputs(Time, costs, ISDates, terms, measure, interest);
    note_in_service_change(here, 152);
    check_pool(here, costs, terms, measure, interest);
    Pool pool(here, costs, ISDates, terms, measure, interest);
    if (pool.addition_dates().empty()) {
        here.info("No AdditionDates entered");
        return here.returning(0.0);
    }
    if (iszero(pool.all_additions())) {
        here.info("Sum of all Additions comes to zero");
        return here.returning(0.0);
    }
    pool.make_lots_of_spending();
    return here.returning(pool.result(Time));
}

double DepPoolRatio(const timeperiod& Time, const PoolCosts& costs, View<date> ISDates, View<double> ISPortions,
                    const PoolTerms& terms, const Measure& measure, const Measure& interest) {
    Routine here{"DepPoolRatio"};
    here.inputs(Time, costs, ISDates, ISPortions, terms, measure, interest);
    note_in_service_change(here, 154);
    check_pool(here, costs, terms, measure, interest);
    Pool pool(here, costs, ISDates, terms, measure, interest);
    const View<date> additions = pool.addition_dates(), in_service = pool.in_service_dates();
    if (in_service.empty()) here.fail<errlibnovalidanswer>("ISDates", "You must have at least one In-Service Date");
    if (additions.empty()) here.fail<errlibnovalidanswer>("AdditionDates", "You must have at least one Addition");
    if (additions.last() > in_service.last())
        here.fail<errlibnovalidanswer>("AdditionDates", "You can't have an Addition Date (", additions.last(),
                                       ") after the last In-Service Date (", in_service.last(), ").");
    if (!pool.make_lots_of_portions(ISPortions)) return here.returning(0.0);
    return here.returning(pool.result(Time));
}

} // namespace qx
