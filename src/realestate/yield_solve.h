// The valuations as problems of a solver: what a list of rents is worth at a yield. A capital value asks once, an
// equivalent yield until it has the price, so that the two cannot part ways.
#pragma once

#include "core/pools.h"
#include "projections/terms.h"
#include "realestate/valuation.h"
#include "realestate/yield_search.h"

namespace qx {

/// Rent n a year from years n on, for ever. A rent equal to the one before it makes no layer.
struct RentLayers {
    View<double> rents, years;

    int size() const { return years.size(); }
    double last_rent() const { return size() == 0 ? 0.0 : rents(size()); }
    double last_year() const { return size() == 0 ? 0.0 : years.last(); }
    /// Calls `visit` with the number, the rent and the years of each layer of the first n rents.
    template <class Visit>
    void visit_layers(int n, Visit visit) const {
        double before = 0.0;
        for (int i = 1; i <= n; ++i) {
            const double rent = rents(i);
            if (i == 1 || !isequal(rent, before)) visit(i, rent - before, years(i));
            before = rent;
        }
    }
};

/// A list of rents that grows step by step.
class RentStepList {
  public:
    void add(double rent, double years) {
        rents_->append(rent);
        years_->append(years);
    }
    /// Of dated rents: the deferral is counted from the valuation date.
    void add(double rent, const date& from, const date& ValuationDate);
    /// The last rent becomes the greatest of all, and not less than zero.
    void raise_last(const Routine& here);
    RentLayers steps() const { return {rents_, years_}; }

  private:
    WorkList<double> rents_, years_;
};

/// By layers at an equivalent yield.
class clsYieldSolve : public clsYieldSearch {
  public:
    clsYieldSolve(const Routine& here, const RentLayers& steps, double CostsPerc, const YieldTerms& terms)
        : here_(here), steps_(steps), costs_(1.0 + CostsPerc), terms_(terms) {}

    double value(double yield) override;

  protected:
    double highest_rate() const override;
    bool goes_below_zero() const override { return iszero(steps_.last_rent()); }

  private:
    const Routine& here_;
    RentLayers steps_;
    double costs_;
    YieldTerms terms_;
};

/// What the last rent of a discounted cash flow is.
enum class LastRent {
    as_of_today,    ///< the market rent of today: it is let at the market of its start
    as_at_its_start ///< the market rent of its date
};

/// By discounted cash flow: the term at the discount rate, the last rent at the yield.
class clsYieldSolveDCF : public clsYieldSearch {
  public:
    clsYieldSolveDCF(const Routine& here, const RentLayers& steps, double CostsPerc, const ReviewedMarket& market,
                     LastRent last = LastRent::as_of_today);

    double value(double yield) override;

  protected:
    double highest_rate() const override;

  private:
    const Routine& here_;
    const ReviewedMarket& market_;
    double costs_;
    LastRent last_;
    double term_ = 0.0, rent_, years_; ///< the value of the term; the last rent and when it starts
};

/// Throws illegalvalue for costs of -100% or less.
void check_costs(const Routine& here, double CostsPerc);

} // namespace qx
