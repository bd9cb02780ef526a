#include "numerics/range_operation.h"

#include "core/utilities.h"

#include <algorithm>

namespace qx {

bool lies_between(double value, double from, double to, int InclusiveOpt) {
    if (isequal(value, from) || isequal(value, to)) {
        if (InclusiveOpt == both_ends) return true;
        if (isequal(from, to)) return false;
        return InclusiveOpt == (isequal(value, from) ? first_end_only : second_end_only);
    }
    return value > from && value < to;
}

void Tally::add(double amount) {
    greatest_ = amounts_ == 0 ? amount : std::max(greatest_, amount);
    smallest_ = amounts_ == 0 ? amount : std::min(smallest_, amount);
    product_ = amounts_ == 0 ? amount : product_ * amount;
    sum_ += amount;
    ++amounts_;
    ++items_;
}

double Tally::result(int RangeOperation) const {
    switch (RangeOperation) {
    case operation_sum:
        return sum_;
    case operation_average:
        return amounts_ == 0 ? 0.0 : sum_ / amounts_;
    case operation_count:
        return items_;
    case operation_greatest:
        return greatest_;
    case operation_smallest:
        return smallest_;
    default:
        return product_;
    }
}

} // namespace qx
