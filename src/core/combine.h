// Several amounts made into one by a CombineSwitch: the item-by-item arithmetic of lists and of merged steps.
#pragma once

#include "core/limits.h"
#include "core/switches.h"

#include <string>

namespace qx {

enum class CombineSwitch : int {
    multiply,
    division,
    add,
    subtraction,
    maximum,
    minimum,
    maximum_nonzero,
    minimum_nonzero,
};
inline constexpr SwitchValue combine_switch_values[] = {
    {0, "Multiply"},
    {1, "Division"},
    {2, "Add"},
    {3, "Subtraction"},
    {4, "Maximum"},
    {5, "Minimum"},
    {6, "Maximum (but non-zero)"},
    {7, "Minimum (but non-zero)"},
};
inline constexpr int last_combine_switch = static_cast<int>(CombineSwitch::minimum_nonzero);
inline constexpr Limits combine_switch_limits{0, last_combine_switch};

/// A further amount taken into the combination of those before it. Division by zero gives 0; the last two switches
/// pass over zeros.
double combined(double so_far, double amount, CombineSwitch combine);

/// The amounts combined in their order; 0 for none.
double combined(const double* amounts, int count, CombineSwitch combine);

/// The name of a switch 0 to 7, as "Maximum (but non-zero)"; empty for any other.
const char* combine_switch_name(int combine_switch);

/// A CombineSwitch in words. Throws errlibmin, errlibmax outside 0 to 7.
std::string DescribeCombineSwitch(int CombineSwitch);

} // namespace qx
