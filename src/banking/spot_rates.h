// Spot rates: what money lent from one day to another earns a year, by the day of repayment. A curve of them is known
// on some dates; between two, and before the first, the discount factor falls at a constant rate, which goes on after
// the last.
//
// Rates are annual equivalents as fractions. Times are years under a day count, 0 to 999 (errlibmin, errlibmax), of
// PrdsDisc. All throw errlibbadlistprogression for dates that do not rise from the curve's own date on,
// inputrangelength2 for lists of different length, errlibinsuffrange without a date.
#pragma once

#include "core/pools.h"
#include "projections/terms.h"

namespace qx {

/// What a function that makes a curve gives for each date: SpotOutput.
enum SpotOutputs : int {
    spot_annual = 0,     ///< annual equivalent rate
    spot_continuous = 1, ///< continuously compounded rate
    spot_factor = 2,     ///< discount factor
};

/// The spot rates that give bonds their prices, from the first maturity on (bootstrap). Coupons are paid PmtsPerYear
/// times a year (0 to 12, dividing 12; 0 for none), counted back from the maturity; prices are for a nominal of 1 with
/// the accrued interest, and without any the coupons are par yields. Throws errlibillegalswitch for another number of
/// payments or an unknown SpotOutput, errlibnotbracketed for a price that no rate gives.
WorkList<double> ZeroCoupon(const date& SettlementDate, View<date> MaturityDates, View<double> CouponRates,
                            View<double> Prices, int PmtsPerYear, int SpotOutput, const Measure& measure);

/// The forward rate from one date to another of spot rates from SpotDate to SpotDates. Throws errlibnovalidanswer
/// unless ToDate is after FromDate, errlibmin for a rate at or below -0.999999.
double SpotToSpot(const date& FromDate, const date& ToDate, const date& SpotDate, View<date> SpotDates,
                  View<double> SpotRates, const Measure& measure);

/// How a forward rate is quoted: QuoteType.
enum QuoteTypes : int {
    quoted_rate = 0,  ///< simple annual rate, 0.05
    quoted_price = 1, ///< price of a futures contract, 95 for 5%
};
/// The spot rates to ToDates from forward rates for the time from each date to the next, the first from SpotDate. With
/// a volatility of the short rate (standard deviation of a year's change) those of futures are lowered by half its
/// square times the years to the start and to the end of the contract (Ho and Lee, 1986), as continuous rates.
WorkList<double> FutureToSpot(const date& SpotDate, View<date> ToDates, View<double> Quotes, int QuoteType,
                              double Volatility, int SpotOutput, const Measure& measure);

} // namespace qx
