// What is reset at the start of every worksheet call.
#pragma once

namespace qx {

/// Slot number that the rounding routines pass to the pool of integer ranges.
inline int DisperseSlot = 0;
/// What the depreciation pool routines remember within one call.
inline bool depreciation_memo[2] = {};

inline void reset_call_state() {
    DisperseSlot = 0;
    depreciation_memo[0] = depreciation_memo[1] = false;
}

} // namespace qx
