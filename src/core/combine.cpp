#include "core/combine.h"

#include "core/routine.h"

#include <algorithm>
#include <iterator>

namespace qx {

double combined(double so_far, double amount, CombineSwitch combine) {
    switch (combine) {
    case CombineSwitch::multiply:
        return so_far * amount;
    case CombineSwitch::division:
        return safe_divide(so_far, amount);
    case CombineSwitch::add:
        return so_far + amount;
    case CombineSwitch::subtraction:
        return so_far - amount;
    case CombineSwitch::maximum:
        return std::max(so_far, amount);
    case CombineSwitch::minimum:
        return std::min(so_far, amount);
    case CombineSwitch::maximum_nonzero:
    case CombineSwitch::minimum_nonzero:
        break;
    }
    if (iszero(so_far)) return amount;
    if (iszero(amount)) return so_far;
    return combine == CombineSwitch::maximum_nonzero ? std::max(so_far, amount) : std::min(so_far, amount);
}

double combined(const double* amounts, int count, CombineSwitch combine) {
    if (count < 1) return 0.0;
    double result = amounts[0];
    for (int i = 1; i < count; ++i) result = combined(result, amounts[i], combine);
    return result;
}

const char* combine_switch_name(int combine_switch) {
    return SwitchTable(combine_switch_values).words(combine_switch, "");
}

std::string DescribeCombineSwitch(int CombineSwitch) {
    Routine here{"DescribeCombineSwitch"};
    here.inputs(CombineSwitch);
    here.limit(CombineSwitch, 0, last_combine_switch, "CombineSwitch");
    return here.returning(std::string(combine_switch_name(CombineSwitch)));
}

} // namespace qx
