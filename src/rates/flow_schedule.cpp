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
constexpr int lanes = 4;                   ///< partial sums: flow i goes into sum i % 4

template <class Vector>
[[gnu::always_inline]] inline void load(Vector& loaded, const double* values) {
    std::memcpy(&loaded, values, sizeof loaded);
}

/// Flows in fours: each four are added to the four partial sums.
struct Fours {
    const double *amounts, *years_high, *years_low;
    int end; ///< a multiple of four

    template <class Vector>
    [[gnu::always_inline]] void add_to(double2 (&sums)[lanes / 2], const PowersOf& growth) const {
        constexpr int width = sizeof(Vector) / sizeof(double), parts = lanes / width;
        Vector sum[parts] = {};
        for (int i = 0; i < end; i += lanes) {
#pragma GCC unroll 2
            for (int part = 0; part < parts; ++part) {
                const int at = i + part * width;
                Vector amount, high, low, power;
                load(amount, amounts + at);
                load(high, years_high + at);
                load(low, years_low + at);
                growth.powers(power, high, low);
                sum[part] += amount / power;
            }
        }
        std::memcpy(sums, sum, sizeof sums);
    }
};

#if defined(__x86_64__) && !defined(_WIN32) // on Windows GCC leaves four numbers unaligned on the stack
#define QX_FOUR_AT_A_TIME
[[gnu::target("avx2")]] void add_by_four(const Fours& fours, double2 (&sums)[lanes / 2], const PowersOf& growth) {
    fours.add_to<double4>(sums, growth);
}
const bool four_at_a_time = __builtin_cpu_supports("avx2");
#endif

void add_fours(const Fours& fours, double2 (&sums)[lanes / 2], const PowersOf& growth) {
#ifdef QX_FOUR_AT_A_TIME
    if (four_at_a_time) return add_by_four(fours, sums, growth);
#endif
    fours.add_to<double2>(sums, growth);
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
    const bool all_served = growth.serves(longest_);
    if (!traced() && !spread_ && all_served) {
        i = n_ - n_ % lanes;
        add_fours({amounts_, years_high_, years_low_, i}, sums, growth);
    } else if (!traced()) {
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
            double2 amounts, high, low, powers;
            load(amounts, amounts_ + at);
            load(high, years_high_ + at);
            load(low, years_low_ + at);
            growth.powers(powers, high, low);
            return corrected(at, amounts / powers);
        };
        const auto one_by_one = [&](int at) {
            return corrected(at, double2{amounts_[at], amounts_[at + 1]} /
                                     double2{growth(years_[at]), growth(years_[at + 1])});
        };
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
