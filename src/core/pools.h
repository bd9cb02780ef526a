// Pools: the static stores of numbered slots in which worksheet arguments and work ranges live.
//
// A slot's number is fixed in the code of the routine that uses it. Slots are numbered from 1 and keep what they
// held from call to call.
#pragma once

#include "core/range.h"

namespace qx {

/// The store of one-value arguments of a type: 19 usable slots.
template <class T>
class VarPool {
  public:
    static constexpr int slots = 20; ///< number 0 is never asked for

    /// The object of a number. Throws outofrange for 20 or more.
    static T& get(int slot) {
        static T objects[slots];
        if (slot >= slots || slot < 0) {
            FunctionContext context;
            context.setclass("VarPool");
            throw outofrange(context);
        }
        return objects[slot];
    }
};

/// How many range slots a type has.
template <class T>
inline constexpr int range_slots = 0;
template <>
inline constexpr int range_slots<double> = 25;
template <>
inline constexpr int range_slots<int> = 6;
template <>
inline constexpr int range_slots<std::string> = 3;
template <>
inline constexpr int range_slots<bool> = 3;
template <>
inline constexpr int range_slots<ministring> = 2;

/// The store of ranges of a type.
template <class T>
class RangePool {
  public:
    static constexpr int slots = range_slots<T>;
    static_assert(slots > 0, "no range pool for this type");

    /// The range of a number, 1 to `slots`. Throws outofrange beyond.
    static Range<T>& get(int slot) {
        static Range<T> ranges[slots];
        if (slot > slots || slot < 1) {
            FunctionContext context;
            context.setclass("RangePool");
            if (tracing)
                context.setmessage(text_of("The range number required (", slot,
                                           ") exceeds the dimensions of the this particular RangePool class (",
                                           slots - 1, ")"));
            throw outofrange(context);
        }
        return ranges[slot - 1];
    }
};

} // namespace qx
