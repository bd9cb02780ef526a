// What an argument may be: one table for the check in the routine and for the words in help.
#pragma once

#include <limits>

namespace qx {

/// The least and the greatest value of an argument, both allowed.
struct Limits {
    double low = -std::numeric_limits<double>::infinity();
    double high = std::numeric_limits<double>::infinity();

    constexpr bool has_low() const { return low > -std::numeric_limits<double>::infinity(); }
    constexpr bool has_high() const { return high < std::numeric_limits<double>::infinity(); }
    constexpr bool any() const { return has_low() || has_high(); }
};

inline constexpr Limits daycount_limits{0, 999};
inline constexpr Limits projmode_limits{0, 7};
inline constexpr Limits review_months_limits{0, 1000};
inline constexpr Limits forecast_base_limits{1, 1000};

} // namespace qx
