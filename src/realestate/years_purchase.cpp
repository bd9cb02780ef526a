#include "realestate/years_purchase.h"

#include "core/routine.h"
#include "rates/compounding.h"
#include "realestate/yield_search.h"

#include <limits>

namespace qx {

namespace {

constexpr Limits yield_type_limits{true_yield, nominal_yield};

void check_payments(const Routine& here, double PmtsPerYear, const char* variable) {
    if (iszero(PmtsPerYear)) here.fail<illegalvalue>(variable, variable, " can't be zero!");
}
void check_discount(const Routine& here, double DisAER) {
    if (!(DisAER > 0.0)) here.fail<illegalvalue>("DisAER", "DisAER must be greater than zero!");
}

/// The discount rate of a yield: the annual equivalent rate or its nominal form.
double rate_of(double DisAER, const YieldTerms& terms) {
    return terms.nominal() ? nominal_rate(DisAER, terms.PmtsPerYearOpt) : DisAER;
}

void check_growth(const Routine& here, double GrowthRatePA) {
    if (GrowthRatePA < -1.0) here.fail<illegalvalue>("GrowthRatePA", "GrowthRatePA must be -1 or greater!");
}

void note_yield_type(const Routine& here, const YieldTerms& terms) {
    if (terms.nominal())
        here.info("Yield Type 1, yield returned will be a Nominal Yield");
    else
        here.info("Yield Type 0, yield returned will be True (APR) Yield");
}

} // namespace

void YieldTerms::check(Routine& here) const {
    check_payments(here, PmtsPerYearOpt, "PmtsPerYearOpt");
    here.limit(YieldTypeOpt, yield_type_limits, "YieldTypeOpt");
}

double nominal_rate(double rate, double m) { return -m * std::expm1(-std::log1p(rate) / m); }

// --- A perpetuity ----------------------------------------------------------------------------------------------------

Perpetuity::Perpetuity(const Routine& here, double yield, const YieldTerms& terms) {
    const double m = terms.PmtsPerYearOpt;
    infinite_ = iszero(yield);
    if (terms.nominal()) {
        base_ = 1.0 - yield / m;
        exponent_ = m;
        log_ = base_ > tolerance ? -m * std::log1p(-yield / m) : std::numeric_limits<double>::quiet_NaN();
        if (!infinite_) now_ = 1.0 / yield;
    } else {
        if (yield <= -1.0) here.fail<illegalvalue>("Yield", "Yield must be greater than -1!");
        base_ = 1.0 + yield;
        exponent_ = -1.0;
        log_ = std::log1p(yield);
        if (!infinite_) now_ = 1.0 / (-m * std::expm1(-log_ / m));
    }
}

double Perpetuity::now(const Routine& here) const {
    if (infinite_) here.fail<errlibinfiniteresult>("Yield", "A rent for ever has no value at a yield of zero");
    return now_;
}

double Perpetuity::deferred(double years) const {
    if (iszero(years)) return 1.0;
    return std::isnan(log_) ? SafePow(base_, exponent_ * years) : std::exp(-log_ * years);
}

double Perpetuity::deferral(double years) const {
    if (iszero(years)) return 0.0;
    return std::isnan(log_) ? SafePow(base_, exponent_ * years) - 1.0 : std::expm1(-log_ * years);
}

double Perpetuity::between(double start, double finish) const {
    if (infinite_) return finish - start;
    return -now_ * deferred(start) * deferral(finish - start);
}

// --- Reviews to a market that grows ----------------------------------------------------------------------------------

ReviewedMarket::ReviewedMarket(const Routine& here, double DisAER, double RevMonths, const YieldTerms& terms)
    : level_(here, DisAER, {terms.PmtsPerYearOpt, true_yield}), review_years_(in_years(RevMonths)),
      discount_(compound_less_one(DisAER, review_years_)), rate_(rate_of(DisAER, terms)) {}

void ReviewedMarket::check(Routine& here, double DisAER, const YieldTerms& terms) {
    check_discount(here, DisAER);
    terms.check(here);
}

void ReviewedMarket::check(Routine& here, double DisAER, double RevMonths, const YieldTerms& terms) {
    check(here, DisAER, terms);
    if (!(RevMonths > 0.0)) here.fail<illegalvalue>("RevMonths", "RevMonths must be greater than zero!");
}

double ReviewedMarket::growth_factor(const Routine& here, double yield) const {
    const double compound = 1.0 + discount_;
    double factor = compound - discount_ * yield / rate_;
    if (std::fabs(factor) <= 1e-14 * compound) factor = 0.0; // at the highest yield
    if (factor < 0.0)
        here.fail<illegalvalue>("Yield", "A yield above ", highest_yield(), " implies a growth below -100% a year");
    here.info("Implied growth from one review to the next: ", factor - 1.0);
    return factor;
}

double ReviewedMarket::perpetuity(const Routine& here, double yield, double years) const {
    if (iszero(yield)) here.fail<errlibinfiniteresult>("Yield", "A rent for ever has no value at a yield of zero");
    return rate_ * level_.now(here) / yield * level_.deferred(years);
}

double ReviewedMarket::reversion(const Routine& here, double yield, double years) const {
    const double value = perpetuity(here, yield, years);
    if (iszero(years)) return value;
    return value * SafePow(growth_factor(here, yield), years / review_years_);
}

// --- Years' purchase -------------------------------------------------------------------------------------------------

double YPPDef(double Yield, double MonthsDeferred, const YieldTerms& terms) {
    Routine here{"YPPDef"};
    here.inputs(Yield, MonthsDeferred, terms);
    terms.check(here);
    const double years = in_years(MonthsDeferred), m = terms.PmtsPerYearOpt;
    if (terms.nominal()) here.info("YPPDef", "(1-", Yield / m, ")^(", m * years, ")/", Yield);
    return here.returning(Perpetuity(here, Yield, terms).from(here, years));
}

double YPP(double Yield, const YieldTerms& terms) {
    Routine here{"YPP"};
    here.inputs(Yield, terms);
    return here.returning(YPPDef(Yield, 0.0, terms));
}

double YPADef(double Yield, double Months, double MonthsDeferred, const YieldTerms& terms) {
    Routine here{"YPADef"};
    here.inputs(Yield, Months, MonthsDeferred, terms);
    terms.check(here);
    const double start = in_years(MonthsDeferred);
    return here.returning(Perpetuity(here, Yield, terms).between(start, start + in_years(Months)));
}

double YPA(double Yield, double Months, const YieldTerms& terms) {
    Routine here{"YPA"};
    here.inputs(Yield, Months, terms);
    return here.returning(YPADef(Yield, Months, 0.0, terms));
}

double YPPDefDCF(double Yield, double DisAER, double MonthsDeferred, double RevMonths, const YieldTerms& terms) {
    Routine here{"YPPDefDCF"};
    here.inputs(Yield, DisAER, MonthsDeferred, RevMonths, terms);
    ReviewedMarket::check(here, DisAER, RevMonths, terms);
    return here.returning(
        ReviewedMarket(here, DisAER, RevMonths, terms).reversion(here, Yield, in_years(MonthsDeferred)));
}

double YPADefDCF(double DisAER, double MonthsDeferred, double AnnuityEndMonths, double PmtsPerYearOpt) {
    Routine here{"YPADefDCF"};
    here.inputs(DisAER, MonthsDeferred, AnnuityEndMonths, PmtsPerYearOpt);
    const YieldTerms terms{PmtsPerYearOpt, true_yield};
    ReviewedMarket::check(here, DisAER, terms);
    return here.returning(
        Perpetuity(here, DisAER, terms).between(in_years(MonthsDeferred), in_years(AnnuityEndMonths)));
}

// --- Yields ----------------------------------------------------------------------------------------------------------

double TrueToNom(double TrueYield, double PmtsPerYear) {
    Routine here{"TrueToNom"};
    here.inputs(TrueYield, PmtsPerYear);
    check_payments(here, PmtsPerYear, "PmtsPerYear");
    if (TrueYield <= -1.0) here.fail<illegalvalue>("TrueYield", "TrueYield must be greater than -1!");
    return here.returning(nominal_rate(TrueYield, PmtsPerYear));
}

double NomToTrue(double NomYield, double PmtsPerYear) {
    Routine here{"NomToTrue"};
    here.inputs(NomYield, PmtsPerYear);
    check_payments(here, PmtsPerYear, "PmtsPerYear");
    const double payment = NomYield / PmtsPerYear;
    if (payment >= 1.0)
        here.fail<errlibbadexponentiation>("NomYield",
                                           "A yield in advance must be below the number of payments a year");
    return here.returning(compound_less_one(-payment, -PmtsPerYear));
}

namespace {

double nominal_to_true(const Routine& here, double PmtsPerYear, double DisAER) {
    check_payments(here, PmtsPerYear, "PmtsPerYear");
    check_discount(here, DisAER);
    return nominal_rate(DisAER, PmtsPerYear) / DisAER;
}

} // namespace

double TrueToNomDCF(double TrueYield, double PmtsPerYear, double DisAER) {
    Routine here{"TrueToNomDCF"};
    here.inputs(TrueYield, PmtsPerYear, DisAER);
    return here.returning(TrueYield * nominal_to_true(here, PmtsPerYear, DisAER));
}

double NomToTrueDCF(double NomYield, double PmtsPerYear, double DisAER) {
    Routine here{"NomToTrueDCF"};
    here.inputs(NomYield, PmtsPerYear, DisAER);
    return here.returning(NomYield / nominal_to_true(here, PmtsPerYear, DisAER));
}

double TheorYield(double DisAER, double GrowthRatePA, double RevMonths, const YieldTerms& terms) {
    Routine here{"TheorYield"};
    here.inputs(DisAER, GrowthRatePA, RevMonths, terms);
    ReviewedMarket::check(here, DisAER, RevMonths, terms);
    check_growth(here, GrowthRatePA);
    note_yield_type(here, terms);
    const ReviewedMarket market(here, DisAER, RevMonths, terms);
    return here.returning(market.yield(compound_less_one(GrowthRatePA, market.review_years())));
}

double PVRent(double DisAER, double GrowthRatePA, double RevMonths, double PmtsPerYearOpt) {
    Routine here{"PVRent"};
    here.inputs(DisAER, GrowthRatePA, RevMonths, PmtsPerYearOpt);
    const YieldTerms terms{PmtsPerYearOpt, nominal_yield};
    ReviewedMarket::check(here, DisAER, RevMonths, terms);
    check_growth(here, GrowthRatePA);
    if (GrowthRatePA >= DisAER - tolerance)
        here.fail<errlibinfiniteresult>("GrowthRatePA",
                                        "Infinite PV when Growth rate is the same or greater than the Discount Rate");
    const ReviewedMarket market(here, DisAER, RevMonths, terms);
    return here.returning(1.0 / market.yield(compound_less_one(GrowthRatePA, market.review_years())));
}

double ImpGrowth(double Yield, double DisAER, double RevMonths, const YieldTerms& terms) {
    Routine here{"ImpGrowth"};
    here.inputs(Yield, DisAER, RevMonths, terms);
    ReviewedMarket::check(here, DisAER, RevMonths, terms);
    const ReviewedMarket market(here, DisAER, RevMonths, terms);
    return here.returning(compound_less_one(market.growth_factor(here, Yield) - 1.0, 1.0 / market.review_years()));
}

namespace {

/// The yield at a discount rate.
class clsYieldSolveDCFd : public clsYieldSearch {
  public:
    clsYieldSolveDCFd(const Routine& here, double growth, double RevMonths, const YieldTerms& terms)
        : clsYieldSearch({"discount rate", "Yield"}), here_(here), growth_(growth), RevMonths_(RevMonths),
          terms_(terms) {}

    double value(double DisAER) override {
        const ReviewedMarket market(here_, DisAER, RevMonths_, terms_);
        const double yield = market.yield(compound_less_one(growth_, market.review_years()));
        here_.info("Yield at a discount rate of ", DisAER, ": ", yield);
        return yield;
    }

  private:
    const Routine& here_;
    double growth_, RevMonths_;
    const YieldTerms& terms_;
};

} // namespace

double ImpDiscRate(double Yield, double GrowthRatePA, double RevMonths, const YieldTerms& terms) {
    Routine here{"ImpDiscRate"};
    here.inputs(Yield, GrowthRatePA, RevMonths, terms);
    constexpr double any_discount = 1.0;
    ReviewedMarket::check(here, any_discount, RevMonths, terms);
    check_growth(here, GrowthRatePA);
    return here.returning(clsYieldSolveDCFd(here, GrowthRatePA, RevMonths, terms).find(here, Yield));
}

} // namespace qx
