// FlowSchedule: a cash flow reduced to what a present value needs, amounts and their times in years. The times are
// measured once; present_value() is then asked at as many rates as a search for the internal rate of return needs.
//
//     schedule.clear();
//     schedule.add(-1000.0, 0.0);
//     schedule.add(1100.0, 1.0);
//     schedule.present_value(0.1);   // 0
#pragma once

#include "core/range.h"
#include "rates/powers.h"

#include <limits>
#include <utility>

namespace qx {

class FlowSchedule {
  public:
    static constexpr int capacity = 4 * range_capacity + 4;
    static constexpr int lanes = 4; ///< flows valued at a time; flow i goes into sum i % 4

    void clear() {
        n_ = n_lengths_ = 0;
        longest_ = 0.0;
        spread_ = false;
        for (int i = 0; i < lanes - 1; ++i) amounts_[i] = years_[i] = 0.0;
    }
    int size() const { return n_; }
    /// A flow at a time in years, received at once.
    void add(double amount, double years) {
        if (n_ == capacity) fail_full();
        amounts_[n_] = amount;
        years_[n_] = years;
        periods_[n_] = received_at_once;
        if (std::fabs(years) > longest_) longest_ = std::fabs(years);
        ++n_;
        amounts_[n_ + lanes - 2] = years_[n_ + lanes - 2] = 0.0;
    }
    /// A flow received evenly over a period of some years from that time on, or back where dates descend.
    void add_spread(double amount, double years, double period);

    double amount(int i) const { return amounts_[i]; } ///< of flow i, from 0
    double years(int i) const { return years_[i]; }
    /// The value of flow i at time 0 under the growth of a year, 1 + rate.
    double value(int i, const PowersOf& growth) const;
    /// The sum of all values. With the trace on it shows each.
    double present_value(double rate) const;

  private:
    static constexpr double received_at_once = std::numeric_limits<double>::infinity();

    [[noreturn]] static void fail_full();
    /// The present value with each flow shown; of flows received at once whose powers need no special care; and of any.
    double shown_value(const PowersOf& growth) const;
    double value_at_once(const PowersOf& growth) const;
    double value_of_any(const PowersOf& growth) const;

    int n_ = 0;
    double longest_ = 0.0; ///< of the times, without sign
    bool spread_ = false;  ///< some flow is not received at once
    // After the last flow come three of nothing, which make up a four.
    alignas(32) double amounts_[capacity + lanes - 1] = {};
    alignas(32) double years_[capacity + lanes - 1] = {};
    double periods_[capacity] = {}; ///< years over which a flow is received; negative for one received at once

    // The different lengths of these periods, so that each is looked at once per rate.
    static constexpr int most_lengths = 256;
    int n_lengths_ = 0;
    double lengths_[most_lengths] = {};
    int length_of_[capacity] = {}; ///< of a spread flow; most_lengths for one beyond the list
};

/// A schedule for the work of one routine: empty at first, free again at the end of its scope.
class WorkSchedule {
  public:
    WorkSchedule(); ///< throws outofrange if all schedules are in use
    WorkSchedule(WorkSchedule&& other) noexcept : schedule_(std::exchange(other.schedule_, nullptr)) {}
    WorkSchedule& operator=(WorkSchedule&&) = delete;
    ~WorkSchedule();

    operator const FlowSchedule&() const { return *schedule_; }
    FlowSchedule& operator*() { return *schedule_; }
    FlowSchedule* operator->() { return schedule_; }
    const FlowSchedule* operator->() const { return schedule_; }

  private:
    FlowSchedule* schedule_;
};

} // namespace qx
