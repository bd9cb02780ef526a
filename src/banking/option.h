// Options on an asset whose price follows a geometric Brownian motion: a call or a put to buy or sell it at a strike
// price. Rates and the dividend yield are continuously compounded annual rates, the volatility is the standard
// deviation of a year's continuous return (0.2 is 20%), times are in years.
//
// All throw errlibmin for a spot or strike price that is not above 0 and for a negative term or volatility, and
// errlibillegalswitch for an unknown OptionOutput.
#pragma once

#include "core/takes.h"

namespace qx {

/// What is optioned, and on what terms.
struct OptionTerms {
    using takes = Takes<double, double, double, double, double, double>;
    double SpotPrice;
    double StrikePrice;
    double TermYrs;
    double InterestCont;
    double Volatility;
    double DividendCont;
};

/// What an option function reports: OptionOutput. Sensitivities are to a change of 1 in what they are named after: vega
/// and rho of 1.00 (100 percentage points), theta of a year that passes.
enum OptionOutputs : int {
    option_price = 0,
    option_delta = 1, ///< to the spot price
    option_gamma = 2, ///< of delta to the spot price
    option_vega = 3,  ///< to the volatility
    option_theta = 4, ///< to the time that passes
    option_rho = 5,   ///< to the interest rate
    option_dividend_rho = 6,
};
/// Of OptionMonte.
enum SimulationOutputs : int {
    simulated_price = 0,
    simulated_error = 1,
};
inline constexpr double most_paths = 1e8;

/// A European option by Black, Scholes (1973) and Merton (1973).
double OptionBS(const OptionTerms& terms, bool PutOption, int OptionOutput);

/// A European or American option by the binomial tree of Cox, Ross and Rubinstein (1979) with so many steps, 3 to 9999
/// (errlibmin, errlibmax); its price, and delta, gamma and theta from the tree's first nodes. Throws errlibmin for a
/// volatility or term of 0, errlibnovalidanswer where a step is so long that no probability gives its growth.
double OptionBinom(const OptionTerms& terms, bool PutOption, bool American, int Steps, int OptionOutput);

/// A European option as the average of simulated ends, each path with its antithetic one: its price or the standard
/// error of that. Paths is 4 to 1e8, an odd number is rounded up. The numbers are those of the library's sequence of
/// the seed, from its first one on, so that the same arguments give the same result.
double OptionMonte(const OptionTerms& terms, bool PutOption, double Paths, int Seed, int OptionOutput);

} // namespace qx
