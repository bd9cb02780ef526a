// clsYieldSearch: the search for the rate at which a valuation comes to a price. A valuation derives from it and says
// what it is worth at a rate; the search looks for two rates that have the price between them, from the lowest rate
// upwards, and has them refined by the solver.
//
//     class Annuity : public clsYieldSearch {
//         double value(double yield) override { return rent / yield; }
//     };
//     double yield = annuity.find(here, price);
#pragma once

#include "core/routine.h"
#include "numerics/solver.h"

namespace qx {

/// The words of a search: what it looks for, and the argument that this is to give.
struct SearchWords {
    const char* rate = "yield";
    const char* target = "Valuation";
};

class clsYieldSearch : public clsSolveBase {
  public:
    static constexpr double lowest = 0.000001;
    static constexpr double highest = 10000.0;
    static constexpr double lowest_below_zero = -0.99999;

    /// What it comes to at a rate.
    virtual double value(double rate) = 0;
    /// The rate at which it comes to the target, to within 1e-9 of it. Throws errlibnotbracketed if there is none, with
    /// a message that says at which end of the rates tried it ends, and whatever value() throws.
    double find(const Routine& here, double target);

  protected:
    explicit clsYieldSearch(const SearchWords& words = {}) : words_(words) {}

    /// The highest rate that has a value.
    virtual double highest_rate() const { return highest; }
    /// True if rates below zero have a value that goes on smoothly from those above.
    virtual bool goes_below_zero() const { return false; }

    /// The value less the target, in units of the target: the solver's tolerances then mean the same for any price.
    double eval(double rate) override { return (value(rate) - target_) / unit_; }
    void setup() override {}

  private:
    Pair bracket(const Routine& here);
    bool has_target(const Pair& pair) const;
    double polished(double rate);
    double halved(const Routine& here, Pair pair);

    SearchWords words_;
    double target_ = 0.0, unit_ = 1.0;
};

} // namespace qx
