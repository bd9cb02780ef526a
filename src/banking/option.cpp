#include "banking/option.h"

#include "core/pools.h"
#include "core/routine.h"
#include "numerics/normal.h"
#include "numerics/random.h"

#include <algorithm>
#include <cmath>
#include <cstdint>
#include <initializer_list>
#include <limits>
#include <numbers>

namespace qx {

namespace {

void check(Routine& here, const OptionTerms& terms) {
    const auto above_zero = [&](double value, const char* name) {
        if (!(value > 0.0)) here.fail<errlibmin>(name);
    };
    above_zero(terms.SpotPrice, "SpotPrice");
    above_zero(terms.StrikePrice, "StrikePrice");
    here.at_least(terms.TermYrs, 0.0, "TermYrs");
    here.at_least(terms.Volatility, 0.0, "Volatility");
}

/// Refuses an output that a function does not have.
void check_output(const Routine& here, int OptionOutput, std::initializer_list<int> outputs) {
    if (std::find(outputs.begin(), outputs.end(), OptionOutput) == outputs.end())
        here.fail<errlibillegalswitch>("OptionOutput", "OptionOutput ", OptionOutput, " is invalid in ", here.name());
}

/// 1 for a call, -1 for a put.
double side(bool PutOption) { return PutOption ? -1.0 : 1.0; }

double normal_density(double x) { return std::exp(-0.5 * x * x) * std::numbers::inv_sqrtpi / std::numbers::sqrt2; }
double normal(double x) { return std::isinf(x) ? (x > 0.0 ? 1.0 : 0.0) : normal_probability(x); }

} // namespace

double OptionBS(const OptionTerms& terms, bool PutOption, int OptionOutput) {
    Routine here{"OptionBS"};
    here.inputs(terms, PutOption, OptionOutput);
    check(here, terms);
    check_output(
        here, OptionOutput,
        {option_price, option_delta, option_gamma, option_vega, option_theta, option_rho, option_dividend_rho});
    const auto& [S, K, T, r, sigma, q] = terms;
    const double sign = side(PutOption);
    const double spot = S * std::exp(-q * T);   // the asset without the dividends until the end
    const double strike = K * std::exp(-r * T); // the strike price today
    const double deviation = sigma * std::sqrt(T);
    const double distance = std::log(spot / strike);
    // Without any chance the end is known, and at the strike price nothing is gained.
    const double d1 = deviation > 0.0
                          ? distance / deviation + 0.5 * deviation
                          : sign * (sign * distance > 0.0 ? 1.0 : -1.0) * std::numeric_limits<double>::infinity();
    const double d2 = deviation > 0.0 ? d1 - deviation : d1;
    const double of_spot = sign * normal(sign * d1);
    const double of_strike = sign * normal(sign * d2);
    const auto density = [&] { return deviation > 0.0 ? normal_density(d1) : 0.0; };
    here.info("d1=", d1, " d2=", d2);
    switch (OptionOutput) {
    case option_price:
        return here.returning(spot * of_spot - strike * of_strike);
    case option_delta:
        return here.returning(spot / S * of_spot);
    case option_gamma:
        return here.returning(deviation > 0.0 ? spot / S * density() / (S * deviation) : 0.0);
    case option_vega:
        return here.returning(spot * density() * std::sqrt(T));
    case option_theta:
        return here.returning(q * spot * of_spot - r * strike * of_strike -
                              (deviation > 0.0 ? spot * density() * sigma / (2.0 * std::sqrt(T)) : 0.0));
    case option_rho:
        return here.returning(T * strike * of_strike);
    default:
        return here.returning(-T * spot * of_spot);
    }
}

double OptionBinom(const OptionTerms& terms, bool PutOption, bool American, int Steps, int OptionOutput) {
    constexpr int fewest_steps = 3;
    Routine here{"OptionBinom"};
    here.inputs(terms, PutOption, American, Steps, OptionOutput);
    check(here, terms);
    if (!(terms.TermYrs > 0.0)) here.fail<errlibmin>("TermYrs");
    if (!(terms.Volatility > 0.0)) here.fail<errlibmin>("Volatility");
    here.limit(Steps, fewest_steps, range_capacity - 1, "Steps");
    check_output(here, OptionOutput, {option_price, option_delta, option_gamma, option_theta});
    const auto payoff = [&](double price) { return std::max(side(PutOption) * (price - terms.StrikePrice), 0.0); };
    const double dt = terms.TermYrs / Steps;
    const double log_up = terms.Volatility * std::sqrt(dt);
    const double up = std::exp(log_up), down = 1.0 / up;
    const double up_chance = (std::exp((terms.InterestCont - terms.DividendCont) * dt) - down) / (up - down);
    if (!(up_chance >= 0.0 && up_chance <= 1.0))
        here.fail<errlibnovalidanswer>("Steps", "A step of ", dt, " years is too long for its growth");
    const double discount = std::exp(-terms.InterestCont * dt);
    const double at_up = discount * up_chance, at_down = discount * (1.0 - up_chance);
    here.info("up=", up, " probability=", up_chance);

    // Node j of a step has gone up j times and down the others: the asset at node j of step n is up^(2 j - n).
    WorkList<double> value(Steps + 1);
    const auto asset = [&](int ups_less_downs) { return terms.SpotPrice * std::exp(ups_less_downs * log_up); };
    for (int j = 0; j <= Steps; ++j) value(j + 1) = payoff(asset(2 * j - Steps));
    double second[3] = {}, first[2] = {}; // of the first steps
    for (int n = Steps - 1; n >= 0; --n) {
        double price = asset(-n);
        const double up_twice = up * up;
        for (int j = 0; j <= n; ++j) {
            double kept = at_up * value.get(j + 2) + at_down * value.get(j + 1);
            if (American) kept = std::max(kept, payoff(price));
            value(j + 1) = kept;
            price *= up_twice;
        }
        if (n == 2) std::copy_n(value.begin(), 3, second);
        if (n == 1) std::copy_n(value.begin(), 2, first);
    }
    const double S = terms.SpotPrice;
    const double delta = (first[1] - first[0]) / (S * (up - down));
    switch (OptionOutput) {
    case option_price:
        return here.returning(double{value.get(1)});
    case option_delta:
        return here.returning(delta);
    case option_gamma: {
        const double upper = (second[2] - second[1]) / (S * (up * up - 1.0));
        const double lower = (second[1] - second[0]) / (S * (1.0 - down * down));
        return here.returning((upper - lower) / (0.5 * S * (up * up - down * down)));
    }
    default:
        return here.returning((second[1] - value.get(1)) / (2.0 * dt));
    }
}

double OptionMonte(const OptionTerms& terms, bool PutOption, double Paths, int Seed, int OptionOutput) {
    constexpr double fewest_paths = 4.0; // two pairs, so that there is an error
    Routine here{"OptionMonte"};
    here.inputs(terms, PutOption, Paths, Seed, OptionOutput);
    check(here, terms);
    here.limit(Paths, fewest_paths, most_paths, "Paths");
    check_output(here, OptionOutput, {simulated_price, simulated_error});
    const auto& [S, K, T, r, sigma, q] = terms;
    const auto payoff = [sign = side(PutOption), strike = K](double price) {
        return std::max(sign * (price - strike), 0.0);
    };
    const auto pairs = static_cast<std::uint32_t>(std::ceil(Paths / 2.0));
    const auto seed = static_cast<std::uint32_t>(Seed);
    const double deviation = sigma * std::sqrt(T);
    const double middle = S * std::exp((r - q) * T - 0.5 * deviation * deviation);
    const double discount = std::exp(-r * T);
    double sum = 0.0, squares = 0.0;
    for (std::uint32_t i = 1; i <= pairs; ++i) {
        const double moved = std::exp(deviation * PPND16(random_of(seed, i) + half_random_step));
        const double paid = 0.5 * (payoff(middle * moved) + payoff(middle / moved));
        sum += paid;
        squares += paid * paid;
    }
    const double mean = sum / pairs;
    here.info("Pairs of paths=", static_cast<double>(pairs), " Average payoff=", mean);
    if (OptionOutput == simulated_price) return here.returning(discount * mean);
    const double variance = std::max(squares / pairs - mean * mean, 0.0) * pairs / (pairs - 1.0);
    return here.returning(discount * std::sqrt(variance / pairs));
}

} // namespace qx
