// What is reset at the start of every worksheet call.
#pragma once

#include <limits>

namespace qx {

/// Slot number that the rounding routines pass to the pool of integer ranges.
inline int DisperseSlot = 0;
/// What the depreciation pool routines remember within one call.
inline bool depreciation_memo[2] = {};

/// Steps that a worksheet call may take: calls of routines, and what loops without them count themselves. Lists of
/// thousands multiply (streams by growth rates by payments), and no model needs such a product.
inline constexpr long long most_steps = 50'000'000;
inline constexpr long long steps_without_limit = std::numeric_limits<long long>::max();
/// What is left of them; without limit outside worksheet calls.
inline long long steps_left = steps_without_limit;

inline void reset_call_state() {
    steps_left = steps_without_limit;
    DisperseSlot = 0;
    depreciation_memo[0] = depreciation_memo[1] = false;
}

} // namespace qx
