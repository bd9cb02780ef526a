// One figure out of chosen items of a list: their sum, average, count and so on, and what lies between two ends.
#pragma once

#include "core/switches.h"

namespace qx {

/// What of the two ends counts.
enum InclusiveOpts : int {
    first_end_only = 0, ///< as in a time period
    both_ends = 1,
    neither_end = 2,
    second_end_only = 3,
};

/// Which of two ends count.
inline constexpr SwitchValue inclusive_values[] = {
    {first_end_only, "First end only"},
    {both_ends, "Both ends"},
    {neither_end, "Neither end"},
    {second_end_only, "Second end only"},
};
/// True if a value lies between two ends, by an InclusiveOpt. Values within the tolerance of an end lie on it.
bool lies_between(double value, double from, double to, int InclusiveOpt);

enum RangeOperations : int {
    operation_sum = 0,
    operation_average = 1,
    operation_count = 2,
    operation_greatest = 3,
    operation_smallest = 4,
    operation_product = 5,
};
inline constexpr SwitchValue range_operation_values[] = {
    {operation_sum, "Sum"},           {operation_average, "Average"},   {operation_count, "Count"},
    {operation_greatest, "Greatest"}, {operation_smallest, "Smallest"}, {operation_product, "Product"},
};

/// The figures of a list that is added item by item.
class Tally {
  public:
    void add(double amount);
    /// An item that has no amount, such as a string: it counts, and is no part of anything else.
    void add_item() { ++items_; }

    /// The result of a RangeOperation; 0 if there is nothing to work on.
    double result(int RangeOperation) const;

  private:
    int items_ = 0;
    int amounts_ = 0;
    double sum_ = 0.0;
    double greatest_ = 0.0, smallest_ = 0.0;
    double product_ = 0.0;
};

} // namespace qx
