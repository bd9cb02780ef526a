// Years' purchase: what a rent of 1 a year is worth at a yield, as a number of years of rent. And yields themselves:
// true and nominal, and those that follow from a discount rate and the growth of rents.
//
// Yields, discount and growth rates are fractions a year: 0.08 is 8%. PmtsPerYearOpt is how often rent is paid,
// positive in advance and negative in arrears: 4 is quarterly in advance, -4 quarterly in arrears. A true yield is an
// annual equivalent rate; a nominal one is the rate of one payment period times the payments a year, so that a
// perpetuity is worth the rent over the yield.
//
// Capital values by discounted cash flow ("DCF math") discount at a rate e (DisAER) and take the growth of rents from
// the yield: a rent that is reviewed every R years and grows at g is worth
//
//     1 / y   with   y = D ((1 + e)^R - (1 + g)^R) / ((1 + e)^R - 1)
//
// where D is e for a true yield and the nominal rate m (1 - (1 + e)^(-1 / m)) of m payments a year for a nominal one.
//
// All throw illegalvalue for payments of zero a year, and errlibmin and errlibmax for a type of yield that is none;
// those with a discount rate illegalvalue unless it, and the months between reviews, are above zero, and for growth
// below -100%.
#pragma once

#include "core/switches.h"
#include "core/takes.h"
#include "core/view.h"

#include <cmath>

namespace qx {

class Routine;

enum YieldType : int {
    true_yield = 0,   ///< annual equivalent
    nominal_yield = 1 ///< simple, by the payment
};

inline constexpr SwitchValue yield_type_values[] = {
    {true_yield, "True (annual equivalent)"},
    {nominal_yield, "Nominal"},
};

/// How rent is paid, and how its yield is quoted.
struct YieldTerms {
    using takes = Takes<double, int>;
    double PmtsPerYearOpt; ///< positive in advance, negative in arrears
    int YieldTypeOpt;      ///< a YieldType

    bool nominal() const { return YieldTypeOpt == nominal_yield; }
    void check(Routine& here) const;
};

// --- What the valuations share ---------------------------------------------------------------------------------------

inline double in_years(double months) { return months / 12.0; }

/// A rent of 1 a year for ever, at a yield. Throws illegalvalue for a true yield of -100% or less.
class Perpetuity {
  public:
    Perpetuity(const Routine& here, double yield, const YieldTerms& terms);

    /// At a yield of zero a rent for ever has no value.
    bool infinite() const { return infinite_; }
    /// The value of a rent that starts now. Throws errlibinfiniteresult at a yield of zero.
    double now(const Routine& here) const;
    /// What a delay of some years makes of 1, and what it adds to it: at a yield above zero less than none.
    double deferred(double years) const;
    double deferral(double years) const;
    /// The values of a rent from some years on, and of one for a term from then on.
    double from(const Routine& here, double years) const { return now(here) * deferred(years); }
    double between(double start, double finish) const;

  private:
    double base_, exponent_; ///< what a year's delay makes of 1 is base ^ exponent
    double log_;             ///< of that, negated; not a number where SafePow must decide
    double now_ = 0.0;
    bool infinite_ = false;
};

/// Rents that grow between reviews, valued by discounted cash flow.
class ReviewedMarket {
  public:
    ReviewedMarket(const Routine& here, double DisAER, double RevMonths, const YieldTerms& terms);

    /// Throws illegalvalue unless both are above zero, after the checks of the terms of the yield.
    static void check(Routine& here, double DisAER, double RevMonths, const YieldTerms& terms);
    static void check(Routine& here, double DisAER, const YieldTerms& terms);

    /// The yield that growth leads to.
    double yield(double growth_over_review) const { return rate_ * (discount_ - growth_over_review) / discount_; }
    /// The growth from one review to the next that a yield implies, as a factor. Throws illegalvalue for a yield above
    /// the highest.
    double growth_factor(const Routine& here, double yield) const;
    /// The yield that implies a growth of -100%.
    double highest_yield() const { return rate_ * (1.0 + discount_) / discount_; }
    /// The value of a rent of 1 a year at today's market, let in some years at the market of that time. Throws
    /// errlibinfiniteresult at a yield of zero, illegalvalue for a yield above the highest.
    double reversion(const Routine& here, double yield, double years) const;
    /// The same of a rent that is as at its start.
    double perpetuity(const Routine& here, double yield, double years) const;

    double review_years() const { return review_years_; }
    /// (1 + e)^R - 1, and the rate D.
    double discount() const { return discount_; }
    /// A rent of 1 a year that does not grow, at the discount rate.
    const Perpetuity& level() const { return level_; }

  private:
    Perpetuity level_;
    double review_years_, discount_, rate_;
};

/// The nominal rate of an annual equivalent one, m payments a year.
double nominal_rate(double rate, double m);

// --- Years' purchase -------------------------------------------------------------------------------------------------

/// Of a perpetuity that starts now, or in some months. Throw errlibinfiniteresult for a yield of zero.
double YPP(double Yield, const YieldTerms& terms);
double YPPDef(double Yield, double MonthsDeferred, const YieldTerms& terms);
/// Of a rent for some months, that starts now, or in some months. At a yield of zero it is the years.
double YPA(double Yield, double Months, const YieldTerms& terms);
double YPADef(double Yield, double Months, double MonthsDeferred, const YieldTerms& terms);

/// Of a perpetuity that is let in MonthsDeferred at the market of that time and reviewed every RevMonths from then on,
/// discounted at DisAER; rents grow as the yield implies. Throws what ReviewedMarket::reversion throws.
double YPPDefDCF(double Yield, double DisAER, double MonthsDeferred, double RevMonths, const YieldTerms& terms);
/// Of a rent from MonthsDeferred to AnnuityEndMonths, discounted at DisAER.
double YPADefDCF(double DisAER, double MonthsDeferred, double AnnuityEndMonths, double PmtsPerYearOpt);

// --- Yields ----------------------------------------------------------------------------------------------------------

/// Nominal yields of true ones and back. NomToTrue throws errlibbadexponentiation for a yield in advance of a whole
/// payment or more.
double TrueToNom(double TrueYield, double PmtsPerYear);
double NomToTrue(double NomYield, double PmtsPerYear);
/// The same of yields of discounted cash flow, which are in the ratio of the discount rate's two forms.
double TrueToNomDCF(double TrueYield, double PmtsPerYear, double DisAER);
double NomToTrueDCF(double NomYield, double PmtsPerYear, double DisAER);

/// The yield of a rent that grows at GrowthRatePA and is reviewed every RevMonths, at the discount rate.
double TheorYield(double DisAER, double GrowthRatePA, double RevMonths, const YieldTerms& terms);
/// The present value of such a rent of 1 a year. Throws errlibinfiniteresult unless it grows at less than DisAER.
double PVRent(double DisAER, double GrowthRatePA, double RevMonths, double PmtsPerYearOpt);
/// The growth a year that a yield implies at a discount rate. Throws illegalvalue if that is below -100%.
double ImpGrowth(double Yield, double DisAER, double RevMonths, const YieldTerms& terms);
/// The discount rate that a yield and growth imply. Throws errlibnotbracketed if none does.
double ImpDiscRate(double Yield, double GrowthRatePA, double RevMonths, const YieldTerms& terms);

} // namespace qx
