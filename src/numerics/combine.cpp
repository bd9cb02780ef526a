#include "numerics/combine.h"

#include "core/routine.h"

#include <algorithm>

namespace qx {

namespace {

constexpr const char* switch_texts[] = {
    "Multiply",
    "Division",
    "Add",
    "Subtraction",
    "Maximum",
    "Minimum",
    "Maximum (but non-zero)",
    "Minimum (but non-zero)",
};

double combined(int CombineSwitch, double before, double amount) {
    switch (CombineSwitch) {
    case combine_multiply:
        return before * amount;
    case combine_divide:
        return safe_divide(before, amount);
    case combine_add:
        return before + amount;
    case combine_subtract:
        return before - amount;
    case combine_greatest:
    case combine_greatest_nonzero:
        return std::max(before, amount);
    default:
        return std::min(before, amount);
    }
}

} // namespace

double combine(int CombineSwitch, const double* amounts, int count) {
    double result = 0.0;
    bool begun = false;
    for (int i = 0; i < count; ++i) {
        if (CombineSwitch >= combine_greatest_nonzero && iszero(amounts[i])) continue;
        result = begun ? combined(CombineSwitch, result, amounts[i]) : amounts[i];
        begun = true;
    }
    return result;
}

std::string DescribeCombineSwitch(int CombineSwitch) {
    Routine here{"DescribeCombineSwitch"};
    here.arguments(QX_NAMED(CombineSwitch));
    here.limit(CombineSwitch, combine_multiply, combine_smallest_nonzero, "CombineSwitch");
    return here.returning(std::string(switch_texts[CombineSwitch]));
}

} // namespace qx
