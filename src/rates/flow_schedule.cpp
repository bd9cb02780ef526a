#include "rates/flow_schedule.h"

#include "core/routine.h"

#include <algorithm>
#include <cmath>
#include <cstring>
#include <iterator>

namespace qx {

namespace {

constexpr double received_at_once = -1.0;
constexpr double largest_rate = 1e10;      ///< of a period, beyond which nothing is corrected
constexpr double modest_log_growth = 23.0; ///< below that of the largest rate
constexpr int lanes = 4;                   ///< partial sums: flow i goes into sum i % 4

double2 load(const double* values) {
    double2 two;
    std::memcpy(&two, values, sizeof two);
    return two;
}

/// What a flow received evenly over a period is worth, over the same received at the period's start. `log_growth` is
/// the logarithm of the growth over the period.
double evenly_received(double log_growth) {
    const double rate = traced() || log_growth > modest_log_growth ? std::expm1(log_growth) : 0.0;
    if (traced()) trace().info(text_of("Periodic Effective Rate=", rate, " per period"));
    if (rate >= largest_rate || rate <= -largest_rate) return 1.0;
    const double factor = iszero(log_growth) ? 0.0 : -std::expm1(-log_growth) / log_growth;
    if (traced())
        trace().info(text_of("Continuous Correction Factor=", safe_divide(rate, log_growth), ", CorrectionM=", factor));
    return factor;
}

/// One for the flows, one for their capital value, and one to spare.
FlowSchedule schedules[3];
bool in_use[std::size(schedules)];

} // namespace

WorkSchedule::WorkSchedule() {
    const auto free = std::find(std::begin(in_use), std::end(in_use), false);
    if (free == std::end(in_use)) throw outofrange(FunctionContext("FlowSchedule", "Cashflows"));
    *free = true;
    schedule_ = &schedules[free - in_use];
    schedule_->clear();
}

WorkSchedule::~WorkSchedule() {
    if (schedule_ != nullptr) in_use[schedule_ - schedules] = false;
}

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
    int k = 0;
    while (k < n_lengths_ && lengths_[k] != period) ++k;
    if (k == n_lengths_ && k < most_lengths) lengths_[n_lengths_++] = period;
    length_of_[n_ - 1] = k;
    spread_ = true;
}

double FlowSchedule::value(int i, const PowersOf& growth) const {
    const double value = amounts_[i] / growth(years_[i]);
    return periods_[i] == received_at_once ? value : value * evenly_received(periods_[i] * growth.log());
}

bool FlowSchedule::served_from(int i, const PowersOf& growth) const {
    const double* years = years_ + i;
    return growth.serves(years[0]) && growth.serves(years[1]) && growth.serves(years[2]) && growth.serves(years[3]);
}

double FlowSchedule::present_value(double rate) const {
    const PowersOf growth(1.0 + rate);
    double2 sums[lanes / 2] = {};
    int i = 0;
    if (!traced()) {
        double corrections[most_lengths];
        for (int k = 0; k < n_lengths_; ++k) corrections[k] = evenly_received(lengths_[k] * growth.log());
        const auto correction = [&](int at) {
            if (periods_[at] == received_at_once) return 1.0;
            if (length_of_[at] < n_lengths_) return corrections[length_of_[at]];
            return evenly_received(periods_[at] * growth.log());
        };
        const auto corrected = [&](int at, double2 values) {
            return spread_ ? values * double2{correction(at), correction(at + 1)} : values;
        };
        const auto pair = [&](int at) {
            return corrected(at, load(amounts_ + at) / growth.pair(load(years_high_ + at), load(years_low_ + at)));
        };
        const auto one_by_one = [&](int at) {
            return corrected(at, load(amounts_ + at) / double2{growth(years_[at]), growth(years_[at + 1])});
        };
        const bool all_served = growth.serves(longest_);
        double2 first = {}, second = {}; // not the array, which would be stored and loaded each time
        for (; i + lanes <= n_; i += lanes) {
            const bool served = all_served || served_from(i, growth);
            first += served ? pair(i) : one_by_one(i);
            second += served ? pair(i + 2) : one_by_one(i + 2);
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
