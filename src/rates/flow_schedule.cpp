#include "rates/flow_schedule.h"

#include "core/routine.h"

#include <algorithm>
#include <cmath>
#include <cstring>
#include <iterator>

namespace qx {

namespace {

constexpr double largest_rate = 1e10;      ///< of a period, beyond which nothing is corrected
constexpr double modest_log_growth = 23.0; ///< below that of the largest rate
constexpr int lanes = FlowSchedule::lanes;

template <class Vector>
[[gnu::always_inline]] inline void load(Vector& loaded, const double* values) {
    std::memcpy(&loaded, values, sizeof loaded);
}

/// The sum of the partial sums, in the same order however they were made.
double total(double a, double b, double c, double d) { return (a + b) + (c + d); }

/// Flows received at once, in fours.
struct Fours {
    const double *amounts, *years;
    int n; ///< how many; after them come flows of nothing that make up the last four

    template <class Vector>
    [[gnu::always_inline]] double present_value(const PowersOf& growth) const {
        constexpr int width = sizeof(Vector) / sizeof(double), parts = lanes / width;
        Vector sum[parts] = {};
        for (int i = 0; i < n; i += lanes) {
#pragma GCC unroll 2
            for (int part = 0; part < parts; ++part) {
                const int at = i + part * width;
                Vector amount, time, power;
                load(amount, amounts + at);
                load(time, years + at);
                growth.powers(power, -time);
                sum[part] += amount * power;
            }
        }
        const auto lane = [&](int i) { return sum[i / width][i % width]; };
        return total(lane(0), lane(1), lane(2), lane(3));
    }
};

#if defined(__x86_64__) && !defined(_WIN32) // on Windows GCC leaves four numbers unaligned on the stack
#define QX_FOUR_AT_A_TIME
[[gnu::target("avx2")]] double value_by_four(const Fours& fours, const PowersOf& growth) {
    return fours.present_value<double4>(growth);
}
const bool four_at_a_time = __builtin_cpu_supports("avx2");
#endif

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

void FlowSchedule::add_spread(double amount, double years, double period) {
    add(amount, years);
    periods_[n_ - 1] = period;
    int k = 0;
    while (k < n_lengths_ && lengths_[k] != period) ++k;
    if (k == n_lengths_ && k < most_lengths) lengths_[n_lengths_++] = period;
    length_of_[n_ - 1] = k;
    spread_ = true;
}

void FlowSchedule::fail_full() { throw outofrange(FunctionContext("FlowSchedule", "Cashflows")); }

double FlowSchedule::value(int i, const PowersOf& growth) const {
    const double value = amounts_[i] * growth(-years_[i]);
    return periods_[i] == received_at_once ? value : value * evenly_received(periods_[i] * growth.log());
}

double FlowSchedule::present_value(double rate) const {
    const PowersOf growth(1.0 + rate);
    if (traced()) return shown_value(growth);
    return !spread_ && growth.serves(longest_) ? value_at_once(growth) : value_of_any(growth);
}

double FlowSchedule::value_at_once(const PowersOf& growth) const {
    const Fours fours{amounts_, years_, n_};
#ifdef QX_FOUR_AT_A_TIME
    if (four_at_a_time) return value_by_four(fours, growth);
#endif
    return fours.present_value<double2>(growth);
}

double FlowSchedule::value_of_any(const PowersOf& growth) const {
    double corrections[most_lengths];
    for (int k = 0; k < n_lengths_; ++k) corrections[k] = evenly_received(lengths_[k] * growth.log());
    const auto correction = [&](int at) {
        if (at >= n_ || periods_[at] == received_at_once) return 1.0;
        if (length_of_[at] < n_lengths_) return corrections[length_of_[at]];
        return evenly_received(periods_[at] * growth.log());
    };
    const auto pair = [&](int at) {
        double2 amounts, years, powers;
        load(amounts, amounts_ + at);
        load(years, years_ + at);
        if (growth.serves(years[0]) && growth.serves(years[1]))
            growth.powers(powers, -years);
        else
            powers = double2{growth(-years[0]), growth(-years[1])};
        const double2 values = amounts * powers;
        return spread_ ? values * double2{correction(at), correction(at + 1)} : values;
    };
    double2 first = {}, second = {};
    for (int i = 0; i < n_; i += lanes) {
        first += pair(i);
        second += pair(i + 2);
    }
    return total(first[0], first[1], second[0], second[1]);
}

double FlowSchedule::shown_value(const PowersOf& growth) const {
    double sums[lanes] = {};
    for (int i = 0; i < n_; ++i) {
        const double flow = value(i, growth);
        trace().info(text_of("PV(", amounts_[i], ") at time ", years_[i], " years = ", flow));
        sums[i % lanes] += flow;
    }
    return total(sums[0], sums[1], sums[2], sums[3]);
}

} // namespace qx
