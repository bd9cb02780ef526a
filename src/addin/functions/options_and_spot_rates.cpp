// Worksheet functions of options and of spot rates.
#include "addin/arguments.h"
#include "addin/declare.h"
#include "banking/option.h"
#include "banking/spot_rates.h"

namespace qx::worksheet {

namespace {

constexpr Category category = Category::Banking;

/// OptionTerms.
constexpr ArgumentGroup option_terms() {
    return {{"SpotPrice", "Price of the asset today, above 0"},
            {"StrikePrice", "Price at which the asset may be bought or sold, above 0"},
            {"TermYrs", "Years until the option expires"},
            {"InterestCont", "Risk-free interest rate, continuously compounded: 0.05 is 5%"},
            {"Volatility", "Standard deviation of the continuous return of a year: 0.2 is 20%"},
            optional("DividendCont", 0.0, "Dividend yield, continuously compounded: 0.03 is 3%"),
            optional("PutOption", false, "FALSE a call, the right to buy; TRUE a put, the right to sell")};
}

constexpr Argument SpotOutput() {
    return optional("SpotOutput", 0, "0 annual equivalent rates, 1 continuously compounded rates, 2 discount factors",
                    "annual equivalent rates");
}
/// Measure of a discount.
constexpr ArgumentGroup discount_measure() { return {DayCountDisc(), PrdsDisc()}; }

} // namespace

constexpr Function OptionBS{
    .name = "OptionBS",
    .category = category,
    .calls = core<qx::OptionBS>,
    .help = "Price or sensitivity of a European option on an asset with a dividend yield, by Black, Scholes and Merton",
    .args = {option_terms(),
             optional(
                 "OptionOutput", 0,
                 "0 price; change of the price with 1 delta, the spot price, 3 vega, 1.00 of volatility, 4 theta, "
                 "a year passing, 5 rho, 1.00 of interest, 6 1.00 of dividend yield; 2 gamma, change of delta with "
                 "the spot price",
                 "price")},
    .examples = {"OptionBS(42, 40, 0.5, 0.1, 0.2) ~ 4.7594 0.0001",
                 "OptionBS(42, 40, 0.5, 0.1, 0.2, 0, TRUE) ~ 0.8086 0.0001"},
    .see_also = "OptionBinom,OptionMonte",
};
QX_EXPORT(OptionBS, 8);

constexpr Function OptionBinom{
    .name = "OptionBinom",
    .category = category,
    .calls = core<qx::OptionBinom>,
    .help = "Price or sensitivity of a European or American option by the binomial tree of Cox, Ross and Rubinstein",
    .args = {option_terms(),
             optional("American", false, "TRUE: the option may be exercised at any time; FALSE: only at expiry"),
             Argument{optional("Steps", 200, "Steps of the tree, 3 to 9999: twice as many take four times as long")}
                 .within({3, 9999}),
             optional("OptionOutput", 0,
                      "0 price; change of the price with 1 delta, the spot price, 4 theta, a year passing; 2 gamma, "
                      "change of delta with the spot price",
                      "price")},
    .examples = {"OptionBinom(50, 50, 5/12, 0.1, 0.4, 0, TRUE, TRUE, 5) ~ 4.488 0.001",
                 "OptionBinom(42, 40, 0.5, 0.1, 0.2, 0, FALSE, FALSE, 1000) ~ 4.7594 0.002"},
    .see_also = "OptionBS,OptionMonte",
};
QX_EXPORT(OptionBinom, 10);

constexpr Function OptionMonte{
    .name = "OptionMonte",
    .category = category,
    .calls = core<qx::OptionMonte>,
    .help = "Price of a European option as the average of simulated paths, each with its mirror image, or the standard "
            "error of that price. The same seed gives the same result",
    .args = {option_terms(),
             Argument{optional("Paths", 100000.0, "Number of paths, 4 to 1e8: four times as many halve the error")}
                 .within({4, 1e8}),
             optional("Seed", 1, "Seed of the random numbers"),
             optional("OptionOutput", 0, "0 price, 1 its standard error", "price")},
    .examples = {"OptionMonte(42, 40, 0.5, 0.1, 0.2) ~ 4.76 0.05"},
    .see_also = "OptionBS,OptionBinom,RandNum",
};
QX_EXPORT(OptionMonte, 10);

constexpr Function ZeroCoupon{
    .name = "ZeroCoupon",
    .category = category,
    .calls = core<qx::ZeroCoupon>,
    .help = "Spot rates from the prices of bonds, or from par yields, one for each maturity, by bootstrap",
    .args = {{"SettlementDate", "Date on which the bonds are bought"},
             {"MaturityDates", "Dates on which the bonds are redeemed at 1, ascending"},
             {"CouponRates", "Coupon a year of each bond as a fraction of the nominal; par yields where no prices are "
                             "given"},
             optional("Prices",
                      "Price of each bond with accrued interest, for a nominal of 1: 0.96 is 96 for 100; 1 for "
                      "all if omitted"),
             optional("PmtsPerYear", 2, "Coupons a year: 1, 2, 3, 4, 6 or 12, counted back from the maturity; 0 none",
                      "half-yearly"),
             SpotOutput(),
             discount_measure()},
    .examples = {"ZeroCoupon(2025, {2026;2027}, {0.05;0.06}, , 1) ~ {0.05,0.060303} 1e-6"},
    .see_also = "SpotToSpot,FutureToSpot",
};
QX_EXPORT(ZeroCoupon, 8);

constexpr Function SpotToSpot{
    .name = "SpotToSpot",
    .category = category,
    .calls = core<qx::SpotToSpot>,
    .help = "The forward rate, an annual equivalent, between two dates of a curve of spot rates",
    .args = {FromDate(), ToDate(), Argument{"SpotDate", "Date from which the spot rates run"},
             Argument{"SpotDates", "Dates up to which the spot rates run, ascending"},
             Argument{"SpotRates", "Annual equivalent spot rates, one for each date: 0.05 is 5%"}, discount_measure()},
    .examples = {"SpotToSpot(2026, 2027, 2025, {2026;2027}, {0.04;0.05}) ~ 0.0600961538 1e-9"},
    .see_also = "ZeroCoupon,FutureToSpot",
};
QX_EXPORT(SpotToSpot, 7);

constexpr Function FutureToSpot{
    .name = "FutureToSpot",
    .category = category,
    .calls = core<qx::FutureToSpot>,
    .help = "Spot rates from a chain of forward rates or futures, each for the time from one date to the next",
    .args = {Argument{"SpotDate", "Date from which the first forward rate and the spot rates run"},
             Argument{"ToDates", "Dates up to which the forward rates run, ascending"},
             Argument{"Quotes", "Forward rate or futures price for the time up to each date"},
             optional("QuoteType", 0, "0 simple annual rates, 0.05 is 5%; 1 prices of futures, 95 is 5%",
                      "simple annual rates"),
             optional(
                 "Volatility", 0.0,
                 "Standard deviation of a year's change of the short rate, 0.012 is 1.2%, by which rates of futures "
                 "are brought down to forward rates; 0 for forward rates"),
             SpotOutput(), discount_measure()},
    .examples = {"FutureToSpot(2025, {2025.25;2025.5}, {0.04;0.06}, 0, 0, 2) ~ {0.99009901,0.975467} 1e-8",
                 "FutureToSpot(2025, {2025.25;2025.5}, {96;94}, 1, 0, 2) ~ {0.99009901,0.975467} 1e-8"},
    .see_also = "ZeroCoupon,SpotToSpot",
};
QX_EXPORT(FutureToSpot, 8);

} // namespace qx::worksheet
