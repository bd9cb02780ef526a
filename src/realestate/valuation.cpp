#include "realestate/valuation.h"

#include "calendar/date_arithmetic.h"
#include "calendar/day_count.h"
#include "core/routine.h"
#include "projections/forecast.h"
#include "projections/growth.h"
#include "realestate/rent_chain.h"
#include "realestate/yield_solve.h"

#include <algorithm>

namespace qx {

namespace {

void note_cap_options(const Routine& here) {
    here.change_note(174, "See Change in Behaviour 174, Oct-05 :New variable CapOption added to allow for averaging of "
                          "capitalisation cashflow.");
}

} // namespace

void check_costs(const Routine& here, double CostsPerc) {
    if (!(CostsPerc > -1.0)) here.fail<illegalvalue>("CostsPerc", "CostsPerc must be greater than -1!");
}

// --- Lists of rents --------------------------------------------------------------------------------------------------

void RentStepList::add(double rent, const date& from, const date& ValuationDate) {
    constexpr bool backwards = false;
    add(rent, in_years(diffmonths(ValuationDate, from, default_daycount, any_measure().Periods, backwards)));
}

void RentStepList::raise_last(const Routine& here) {
    if (rents_.size() == 0) return;
    here.info("Last annual rent set to the maximum of all previous as a result of CapOptions value of 4");
    double greatest = 0.0;
    for (const double rent : rents_) greatest = std::max(greatest, rent);
    rents_(rents_.size()) = greatest;
}

// --- Valuations ------------------------------------------------------------------------------------------------------

double clsYieldSolve::value(double yield) {
    const Perpetuity perpetuity(here_, yield, terms_);
    if (perpetuity.infinite() && goes_below_zero()) { // the layers end in nothing: their rents up to then
        double sum = 0.0;
        steps_.visit_layers(steps_.size(), [&](int, double rent, double years) { sum -= rent * years; });
        here_.info("Accumulated value=", sum);
        return sum / costs_;
    }
    // A layer that starts now, and what its deferral takes off, are summed apart: where the layers end in nothing the
    // first sum is nothing, and what is left keeps all its digits at a yield near zero.
    const double now = perpetuity.now(here_);
    double rents = 0.0, off = 0.0;
    steps_.visit_layers(steps_.size(), [&](int n, double rent, double years) {
        const double deferral = perpetuity.deferral(years);
        here_.info("Layer ", n, " Value=", rent * now * (1.0 + deferral));
        rents += rent;
        off += rent * deferral;
    });
    if (goes_below_zero()) rents = 0.0;
    const double sum = (rents + off) * now;
    here_.info("Accumulated value=", sum);
    return sum / costs_;
}

double clsYieldSolve::highest_rate() const {
    const bool in_advance = terms_.PmtsPerYearOpt > 0.0;
    return terms_.nominal() && in_advance ? std::min(terms_.PmtsPerYearOpt, highest) : highest;
}

clsYieldSolveDCF::clsYieldSolveDCF(const Routine& here, const RentLayers& steps, double CostsPerc,
                                   const ReviewedMarket& market, LastRent last)
    : here_(here), market_(market), costs_(1.0 + CostsPerc), last_(last), rent_(steps.last_rent()),
      years_(steps.last_year()) {
    steps.visit_layers(steps.size() - 1, [&](int n, double rent, double years) {
        const double layer = rent * market.level().between(years, years_);
        here.info("Layer ", n, " Value=", layer);
        term_ += layer;
    });
}

double clsYieldSolveDCF::value(double yield) {
    const double years_purchase = iszero(rent_)                    ? 0.0
                                  : last_ == LastRent::as_of_today ? market_.reversion(here_, yield, years_)
                                                                   : market_.perpetuity(here_, yield, years_);
    const double reversion = rent_ * years_purchase;
    here_.info("Value of the term ", term_, ", of the reversion ", reversion);
    here_.info("Accumulated value=", term_ + reversion);
    return (term_ + reversion) / costs_;
}

double clsYieldSolveDCF::highest_rate() const {
    constexpr double below = 1.0 - 1e-12; // at a growth of -100% itself there is no value
    return iszero(years_) ? highest : std::min(market_.highest_yield() * below, highest);
}

// --- Term and reversion ----------------------------------------------------------------------------------------------

namespace {

/// Calls `give` with the two rents of a term and reversion.
template <class Give>
double with_two_rents(const Routine& here, double MktRent, double PassingAnnRent, double MonthsNextRev,
                      double RentFreeMonths, Give give) {
    const double rents[] = {PassingAnnRent, MktRent};
    const double years[] = {in_years(RentFreeMonths), in_years(MonthsNextRev)};
    if (years[0] > years[1]) here.warning("The rent-free months end after the next review");
    return give(RentLayers{{rents, 2}, {years, 2}});
}

/// Calls `give` with the rents of a list and the months at which they start; blank rows at the end are no rents.
template <class Give>
double with_rents(View<double> AnnRents, View<double> DeferralMonths, Give give) {
    RentStepList list;
    const int n = std::min(std::max(AnnRents.lastnonblank(), DeferralMonths.lastnonblank()), DeferralMonths.size());
    for (int i = 1; i <= n; ++i) list.add(AnnRents.single_or(i), in_years(DeferralMonths(i)));
    return give(list.steps());
}

/// The same of the dates at which they start.
template <class Give>
double with_dated_rents(const Routine& here, const date& ValuationDate, View<date> FromDates, View<double> AnnRents,
                        const CapTerms& terms, Give give) {
    RentStepList list;
    for (int i = 1; i <= FromDates.size(); ++i) list.add(AnnRents.single_or(i), FromDates(i), ValuationDate);
    if (option_present(cap_maximum_rent, terms.CapOptions)) list.raise_last(here);
    return give(list.steps());
}

/// The same with a review to the market, which zero rents too are let at.
template <class Give>
double with_market_rents(const Routine& here, const date& ValuationDate, View<date> FromDates, View<double> AnnRents,
                         const Market& market, const date& RevToMkt, const CapTerms& terms, Give give) {
    RentStepList list;
    for (int i = 1; i <= FromDates.size(); ++i) {
        const date& from = FromDates(i);
        if (!RevToMkt.iszero() && from >= RevToMkt) break;
        double rent = AnnRents.single_or(i);
        if (iszero(rent)) {
            rent = market.at(from);
            here.info("Zero rent encountered at ", from, ", reviewing to market of ", rent);
        }
        list.add(rent, from, ValuationDate);
    }
    if (RevToMkt.iszero()) {
        here.info("No Review to Market specified: the last rent is capitalised as it is");
    } else {
        const double rent = market.at(RevToMkt);
        here.info("Review to market of ", rent, " at ", RevToMkt);
        list.add(rent, RevToMkt, ValuationDate);
    }
    if (option_present(cap_maximum_rent, terms.CapOptions)) list.raise_last(here);
    return give(list.steps());
}

/// What a function asks of a valuation: its value at a yield, or its yield at a price.
struct Question {
    const char* function;
    bool wants_yield;
    double given;

    double answer(const Routine& here, clsYieldSearch& valuation) const {
        return wants_yield ? valuation.find(here, given) : valuation.value(given);
    }
};
Question value_at(double Yield, const char* function) { return {function, false, Yield}; }
Question yield_of(double Valuation, const char* function) { return {function, true, Valuation}; }

/// How rents are valued: by layers, or by discounted cash flow.
struct ByLayers {
    double CostsPerc;

    void check(Routine& here, const YieldTerms& terms) const {
        check_costs(here, CostsPerc);
        terms.check(here);
    }
    auto asking(const Routine& here, const Question& question, const YieldTerms& terms) const {
        return [=, this, &here](const RentLayers& steps) {
            clsYieldSolve valuation(here, steps, CostsPerc, terms);
            return question.answer(here, valuation);
        };
    }
};
struct ByCashFlow {
    double DisAER, CostsPerc, RevMos;

    void check(Routine& here, const YieldTerms& terms) const {
        check_costs(here, CostsPerc);
        ReviewedMarket::check(here, DisAER, RevMos, terms);
    }
    auto asking(const Routine& here, const Question& question, const YieldTerms& terms) const {
        return [=, this, &here](const RentLayers& steps) {
            const ReviewedMarket market(here, DisAER, RevMos, terms);
            clsYieldSolveDCF valuation(here, steps, CostsPerc, market);
            return question.answer(here, valuation);
        };
    }
};

double term_and_reversion(const Question& question, double MktRent, double PassingAnnRent, double MonthsNextRev,
                          double RentFreeMonths, double CostsPerc, const YieldTerms& terms) {
    Routine here{question.function};
    here.inputs(question.given, MktRent, PassingAnnRent, MonthsNextRev, RentFreeMonths, CostsPerc, terms);
    const ByLayers method{CostsPerc};
    method.check(here, terms);
    return here.returning(with_two_rents(here, MktRent, PassingAnnRent, MonthsNextRev, RentFreeMonths,
                                         method.asking(here, question, terms)));
}

double layers(const Question& question, View<double> AnnRents, View<double> DeferralMonths, double CostsPerc,
              const YieldTerms& terms) {
    Routine here{question.function};
    here.inputs(question.given, AnnRents, DeferralMonths, CostsPerc, terms);
    const ByLayers method{CostsPerc};
    method.check(here, terms);
    return here.returning(with_rents(AnnRents, DeferralMonths, method.asking(here, question, terms)));
}

double dated_layers(const date& ValuationDate, const Question& question, View<date> FromDates, View<double> AnnRents,
                    double CostsPerc, const CapTerms& terms) {
    Routine here{question.function};
    here.inputs(ValuationDate, question.given, FromDates, AnnRents, CostsPerc, terms);
    note_cap_options(here);
    const ByLayers method{CostsPerc};
    method.check(here, terms.yield());
    return here.returning(with_dated_rents(here, ValuationDate, FromDates, AnnRents, terms,
                                           method.asking(here, question, terms.yield())));
}

double grown_layers(const date& ValuationDate, const Question& question, double MktRent, View<date> FromDates,
                    View<double> AnnRents, const Growth& growth, const date& RevToMkt, double CostsPerc,
                    const CapTerms& terms) {
    Routine here{question.function};
    here.inputs(ValuationDate, question.given, MktRent, FromDates, AnnRents, growth, RevToMkt, CostsPerc, terms);
    note_cap_options(here);
    growth.check(here);
    const ByLayers method{CostsPerc};
    method.check(here, terms.yield());
    return here.returning(with_market_rents(here, ValuationDate, FromDates, AnnRents, {{&growth, nullptr}, MktRent},
                                            RevToMkt, terms, method.asking(here, question, terms.yield())));
}

double forecast_layers(const date& ValuationDate, const Question& question, View<date> FromDates, View<double> AnnRents,
                       const Forecast& forecast, const date& RevToMkt, double CostsPerc, const CapTerms& terms) {
    Routine here{question.function};
    here.inputs(ValuationDate, question.given, FromDates, AnnRents, forecast, RevToMkt, CostsPerc, terms);
    note_cap_options(here);
    forecast.check(here);
    const ByLayers method{CostsPerc};
    method.check(here, terms.yield());
    return here.returning(with_market_rents(here, ValuationDate, FromDates, AnnRents, {{nullptr, &forecast}, 0.0},
                                            RevToMkt, terms, method.asking(here, question, terms.yield())));
}

double term_and_reversion(const Question& question, double DisAER, double MktRent, double PassingAnnRent,
                          double MonthsNextRev, double RentFreeMonths, double CostsPerc, double RevMos,
                          const YieldTerms& terms) {
    Routine here{question.function};
    here.inputs(question.given, DisAER, MktRent, PassingAnnRent, MonthsNextRev, RentFreeMonths, CostsPerc, RevMos,
                terms);
    const ByCashFlow method{DisAER, CostsPerc, RevMos};
    method.check(here, terms);
    return here.returning(with_two_rents(here, MktRent, PassingAnnRent, MonthsNextRev, RentFreeMonths,
                                         method.asking(here, question, terms)));
}

double layers(const Question& question, double DisAER, View<double> AnnRents, View<double> DeferralMonths,
              double CostsPerc, double RevMos, const YieldTerms& terms) {
    Routine here{question.function};
    here.inputs(question.given, DisAER, AnnRents, DeferralMonths, CostsPerc, RevMos, terms);
    const ByCashFlow method{DisAER, CostsPerc, RevMos};
    method.check(here, terms);
    return here.returning(with_rents(AnnRents, DeferralMonths, method.asking(here, question, terms)));
}

double dated_layers(const date& ValuationDate, const Question& question, double DisAER, View<date> FromDates,
                    View<double> AnnRents, double CostsPerc, double RevMos, const CapTerms& terms) {
    Routine here{question.function};
    here.inputs(ValuationDate, question.given, DisAER, FromDates, AnnRents, CostsPerc, RevMos, terms);
    note_cap_options(here);
    const ByCashFlow method{DisAER, CostsPerc, RevMos};
    method.check(here, terms.yield());
    return here.returning(with_dated_rents(here, ValuationDate, FromDates, AnnRents, terms,
                                           method.asking(here, question, terms.yield())));
}

} // namespace

double CapValue(double Yield, double MktRent, double PassingAnnRent, double MonthsNextRev, double RentFreeMonths,
                double CostsPerc, const YieldTerms& terms) {
    return term_and_reversion(value_at(Yield, "CapValue"), MktRent, PassingAnnRent, MonthsNextRev, RentFreeMonths,
                              CostsPerc, terms);
}
double EqYield(double Valuation, double MktRent, double PassingAnnRent, double MonthsNextRev, double RentFreeMonths,
               double CostsPerc, const YieldTerms& terms) {
    return term_and_reversion(yield_of(Valuation, "EqYield"), MktRent, PassingAnnRent, MonthsNextRev, RentFreeMonths,
                              CostsPerc, terms);
}

double CapValueG(double Yield, View<double> AnnRents, View<double> DeferralMonths, double CostsPerc,
                 const YieldTerms& terms) {
    return layers(value_at(Yield, "CapValueG"), AnnRents, DeferralMonths, CostsPerc, terms);
}
double EqYieldG(double Valuation, View<double> AnnRents, View<double> DeferralMonths, double CostsPerc,
                const YieldTerms& terms) {
    return layers(yield_of(Valuation, "EqYieldG"), AnnRents, DeferralMonths, CostsPerc, terms);
}

double CapValueGD(const date& ValuationDate, double Yield, View<date> FromDates, View<double> AnnRents,
                  double CostsPerc, const CapTerms& terms) {
    return dated_layers(ValuationDate, value_at(Yield, "CapValueGD"), FromDates, AnnRents, CostsPerc, terms);
}
double EqYieldGD(const date& ValuationDate, double Valuation, View<date> FromDates, View<double> AnnRents,
                 double CostsPerc, const CapTerms& terms) {
    return dated_layers(ValuationDate, yield_of(Valuation, "EqYieldGD"), FromDates, AnnRents, CostsPerc, terms);
}

double CapValueGrowGD(const date& ValuationDate, double Yield, double MktRent, View<date> FromDates,
                      View<double> AnnRents, const Growth& growth, const date& RevToMkt, double CostsPerc,
                      const CapTerms& terms) {
    return grown_layers(ValuationDate, value_at(Yield, "CapValueGrowGD"), MktRent, FromDates, AnnRents, growth,
                        RevToMkt, CostsPerc, terms);
}
double EqYieldGrowGD(const date& ValuationDate, double Valuation, double MktRent, View<date> FromDates,
                     View<double> AnnRents, const Growth& growth, const date& RevToMkt, double CostsPerc,
                     const CapTerms& terms) {
    return grown_layers(ValuationDate, yield_of(Valuation, "EqYieldGrowGD"), MktRent, FromDates, AnnRents, growth,
                        RevToMkt, CostsPerc, terms);
}

double CapValueFcstGD(const date& ValuationDate, double Yield, View<date> FromDates, View<double> AnnRents,
                      const Forecast& forecast, const date& RevToMkt, double CostsPerc, const CapTerms& terms) {
    return forecast_layers(ValuationDate, value_at(Yield, "CapValueFcstGD"), FromDates, AnnRents, forecast, RevToMkt,
                           CostsPerc, terms);
}
double EqYieldFcstGD(const date& ValuationDate, double Valuation, View<date> FromDates, View<double> AnnRents,
                     const Forecast& forecast, const date& RevToMkt, double CostsPerc, const CapTerms& terms) {
    return forecast_layers(ValuationDate, yield_of(Valuation, "EqYieldFcstGD"), FromDates, AnnRents, forecast, RevToMkt,
                           CostsPerc, terms);
}

double CapValueDCF(double Yield, double DisAER, double MktRent, double PassingAnnRent, double MonthsNextRev,
                   double RentFreeMonths, double CostsPerc, double RevMos, const YieldTerms& terms) {
    return term_and_reversion(value_at(Yield, "CapValueDCF"), DisAER, MktRent, PassingAnnRent, MonthsNextRev,
                              RentFreeMonths, CostsPerc, RevMos, terms);
}
double EqYieldDCF(double Valuation, double DisAER, double MktRent, double PassingAnnRent, double MonthsNextRev,
                  double RentFreeMonths, double CostsPerc, double RevMos, const YieldTerms& terms) {
    return term_and_reversion(yield_of(Valuation, "EqYieldDCF"), DisAER, MktRent, PassingAnnRent, MonthsNextRev,
                              RentFreeMonths, CostsPerc, RevMos, terms);
}

double CapValueDCFG(double Yield, double DisAER, View<double> AnnRents, View<double> DeferralMonths, double CostsPerc,
                    double RevMos, const YieldTerms& terms) {
    return layers(value_at(Yield, "CapValueDCFG"), DisAER, AnnRents, DeferralMonths, CostsPerc, RevMos, terms);
}
double EqYieldDCFG(double Valuation, double DisAER, View<double> AnnRents, View<double> DeferralMonths,
                   double CostsPerc, double RevMos, const YieldTerms& terms) {
    return layers(yield_of(Valuation, "EqYieldDCFG"), DisAER, AnnRents, DeferralMonths, CostsPerc, RevMos, terms);
}

double CapValueDCFGD(const date& ValuationDate, double Yield, double DisAER, View<date> FromDates,
                     View<double> AnnRents, double CostsPerc, double RevMos, const CapTerms& terms) {
    return dated_layers(ValuationDate, value_at(Yield, "CapValueDCFGD"), DisAER, FromDates, AnnRents, CostsPerc, RevMos,
                        terms);
}
double EqYieldDCFGD(const date& ValuationDate, double Valuation, double DisAER, View<date> FromDates,
                    View<double> AnnRents, double CostsPerc, double RevMos, const CapTerms& terms) {
    return dated_layers(ValuationDate, yield_of(Valuation, "EqYieldDCFGD"), DisAER, FromDates, AnnRents, CostsPerc,
                        RevMos, terms);
}

} // namespace qx
