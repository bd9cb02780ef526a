// Several amounts made into one by a CombineSwitch: the item-by-item arithmetic of lists and of merged steps.
#pragma once

#include <string>

namespace qx {

enum CombineSwitches : int {
    combine_multiply = 0,
    combine_divide = 1,
    combine_add = 2,
    combine_subtract = 3,
    combine_greatest = 4,
    combine_smallest = 5,
    combine_greatest_nonzero = 6,
    combine_smallest_nonzero = 7,
};

/// The amounts combined in their order, by a CombineSwitch from 0 to 7: the product, the first divided by the others
/// (0 where either is zero), the sum, the first less the others, the greatest, the smallest, and the greatest and the
/// smallest of those that are not zero. 0 for no amounts.
double combine(int CombineSwitch, const double* amounts, int count);

/// A CombineSwitch in words: "Multiply". Throws errlibmin, errlibmax outside 0 to 7.
std::string DescribeCombineSwitch(int CombineSwitch);

} // namespace qx
