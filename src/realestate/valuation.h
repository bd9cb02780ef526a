// Capital values of let property, and the equivalent yields that are their inverses.
//
// The rents of a property are layers: each rent is let for ever from its date on, and where the rent changes the
// difference is another layer, less than zero where it falls. An equivalent yield values all layers alike; growth is
// in the yield. By discounted cash flow (DCF in the names) the rents passing are discounted at DisAER as they are, and
// the last rent, which is the market rent of today, is let at the market of its date: it has grown, and grows on every
// RevMos months, as the yield implies (realestate/years_purchase.h).
//
// Rents are annual; the value is net of the purchaser's costs, a fraction of it. Yields and payments are as in
// years_purchase.h. Deferrals are counted from the valuation date in decimal years, and rents of before it are let.
//
// All throw what YieldTerms::check and ReviewedMarket::check throw, illegalvalue for costs of -100% or less, and
// errlibinfiniteresult for a rent for ever at a yield of zero; those with lists outofrange for fewer rents than dates,
// unless there is one rent for all. Each EqYield throws errlibnotbracketed for a price that no yield gives
// (clsYieldSearch).
#pragma once

#include "core/options.h"
#include "projections/terms.h"
#include "realestate/years_purchase.h"

namespace qx {

/// Options of valuations by dates, as bits of a sum.
enum CapOption : int {
    cap_nominal_yield = 1, ///< the yield is nominal
    cap_maximum_rent = 2,  ///< the last rent is the greatest of all, and not below zero: an upward-only reversion
};

/// How rent is paid, and what a valuation by dates does beyond its rules.
struct CapTerms {
    using takes = Takes<double, int>;
    double PmtsPerYearOpt; ///< positive in advance, negative in arrears
    int CapOptions;        ///< a sum of CapOption

    YieldTerms yield() const {
        return {PmtsPerYearOpt, option_present(cap_nominal_yield, CapOptions) ? nominal_yield : true_yield};
    }
};

// --- Term and reversion ----------------------------------------------------------------------------------------------

/// The passing rent from the end of the rent-free months on, and the market rent from the next review on.
double CapValue(double Yield, double MktRent, double PassingAnnRent, double MonthsNextRev, double RentFreeMonths,
                double CostsPerc, const YieldTerms& terms);
double EqYield(double Valuation, double MktRent, double PassingAnnRent, double MonthsNextRev, double RentFreeMonths,
               double CostsPerc, const YieldTerms& terms);

/// Rent n from DeferralMonths n on.
double CapValueG(double Yield, View<double> AnnRents, View<double> DeferralMonths, double CostsPerc,
                 const YieldTerms& terms);
double EqYieldG(double Valuation, View<double> AnnRents, View<double> DeferralMonths, double CostsPerc,
                const YieldTerms& terms);

/// Rent n from date n on.
double CapValueGD(const date& ValuationDate, double Yield, View<date> FromDates, View<double> AnnRents,
                  double CostsPerc, const CapTerms& terms);
double EqYieldGD(const date& ValuationDate, double Valuation, View<date> FromDates, View<double> AnnRents,
                 double CostsPerc, const CapTerms& terms);

/// The same up to RevToMkt, and the market rent of that date from then on; the zero date for no such review. A rent of
/// zero is the market rent at its date. The market rent grows from the first growth date, or is a forecast. Throw what
/// Grow and fcst throw.
double CapValueGrowGD(const date& ValuationDate, double Yield, double MktRent, View<date> FromDates,
                      View<double> AnnRents, const Growth& growth, const date& RevToMkt, double CostsPerc,
                      const CapTerms& terms);
double EqYieldGrowGD(const date& ValuationDate, double Valuation, double MktRent, View<date> FromDates,
                     View<double> AnnRents, const Growth& growth, const date& RevToMkt, double CostsPerc,
                     const CapTerms& terms);
double CapValueFcstGD(const date& ValuationDate, double Yield, View<date> FromDates, View<double> AnnRents,
                      const Forecast& forecast, const date& RevToMkt, double CostsPerc, const CapTerms& terms);
double EqYieldFcstGD(const date& ValuationDate, double Valuation, View<date> FromDates, View<double> AnnRents,
                     const Forecast& forecast, const date& RevToMkt, double CostsPerc, const CapTerms& terms);

// --- By discounted cash flow -----------------------------------------------------------------------------------------

double CapValueDCF(double Yield, double DisAER, double MktRent, double PassingAnnRent, double MonthsNextRev,
                   double RentFreeMonths, double CostsPerc, double RevMos, const YieldTerms& terms);
double EqYieldDCF(double Valuation, double DisAER, double MktRent, double PassingAnnRent, double MonthsNextRev,
                  double RentFreeMonths, double CostsPerc, double RevMos, const YieldTerms& terms);

/// The last of the rents is the market rent.
double CapValueDCFG(double Yield, double DisAER, View<double> AnnRents, View<double> DeferralMonths, double CostsPerc,
                    double RevMos, const YieldTerms& terms);
double EqYieldDCFG(double Valuation, double DisAER, View<double> AnnRents, View<double> DeferralMonths,
                   double CostsPerc, double RevMos, const YieldTerms& terms);
double CapValueDCFGD(const date& ValuationDate, double Yield, double DisAER, View<date> FromDates,
                     View<double> AnnRents, double CostsPerc, double RevMos, const CapTerms& terms);
double EqYieldDCFGD(const date& ValuationDate, double Valuation, double DisAER, View<date> FromDates,
                    View<double> AnnRents, double CostsPerc, double RevMos, const CapTerms& terms);

} // namespace qx
