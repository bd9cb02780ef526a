#include "rates/flow_schedule.h"

#include "core/routine.h"

#include <cmath>
#include <cstring>

namespace qx {

namespace {

constexpr double received_at_once = -1.0;
constexpr double largest_rate = 1e10; ///< of a period, beyond which nothing is corrected
constexpr int lanes = 4;              ///< partial sums: flow i goes into sum i % 4

double2 load(const double* values) {
    double2 two;
    std::memcpy(&two, values, sizeof two);
    return two;
}

/// What a flow received evenly over a period is worth, over the same received at the period's start. `log_growth` is
/// the logarithm of the growth over the period.
double evenly_received(double log_growth) {
    const double rate = std::expm1(log_growth);
    if (traced()) trace().info(text_of("Periodic Effective Rate=", rate, " per period"));
    if (rate >= largest_rate || rate <= -largest_rate) return 1.0;
    const double continuous = safe_divide(rate, log_growth);
    const double factor = iszero(log_growth) ? 0.0 : -std::expm1(-log_growth) / log_growth;
    if (traced()) trace().info(text_of("Continuous Correction Factor=", continuous, ", CorrectionM=", factor));
    return factor;
}

} // namespace

void FlowSchedule::add(double amount, double years) {
    if (n_ == capacity) throw outofrange(FunctionContext("FlowSchedule", "Cashflows"));
    amounts_[n_] = amount;
    years_[n_] = years;
    years_high_[n_] = PowersOf::split(years);
    years_low_[n_] = years - years_high_[n_];
    periods_[n_] = received_at_once;
    if (std::fabs(years) > longest_) longest_ = std::fabs(years);
    ++n_;
}

void FlowSchedule::add_spread(double amount, double years, double period) {
    add(amount, years);
    periods_[n_ - 1] = period;
    spread_ = true;
}

double FlowSchedule::value(int i, const PowersOf& growth) const {
    const double value = amounts_[i] / growth(years_[i]);
    return periods_[i] == received_at_once ? value : value * evenly_received(periods_[i] * growth.log());
}

double FlowSchedule::present_value(double rate) const {
    const PowersOf growth(1.0 + rate);
    double2 sums[lanes / 2] = {};
    int i = 0;
    if (!spread_ && !traced() && growth.serves(longest_)) {
        const auto pair = [&](int at) {
            return load(amounts_ + at) / growth.pair(load(years_high_ + at), load(years_low_ + at));
        };
        double2 first = {}, second = {}; // not the array, which would be stored and loaded each time
        for (; i + lanes <= n_; i += lanes) {
            first += pair(i);
            second += pair(i + 2);
        }
        sums[0] = first;
        sums[1] = second;
    }
    for (; i < n_; ++i) {
        const double flow = value(i, growth);
        if (traced()) trace().info(text_of("PV(", amounts_[i], ") at time ", years_[i], " years = ", flow));
        sums[i % lanes / 2][i % 2] += flow;
    }
    return (sums[0][0] + sums[0][1]) + (sums[1][0] + sums[1][1]);
}

} // namespace qx
