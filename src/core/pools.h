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

/// The store of ranges of a type.
template <class T>
class RangePool {
  public:
    static constexpr int slots = range_slots<T>;
    static_assert(slots > 0, "no range pool for this type");

    /// The range of a number, 1 to `slots`. Throws outofrange beyond.
    static Range<T>& get(int slot) {
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

  private:
    static Range<T> ranges[slots];
};

/// Gives a type a pool of ranges: this in a header, and in one source file QX_RANGE_POOL_STORAGE. (The definition of
/// a template would stand in the library's file on Windows with all its zeros.)
#define QX_RANGE_POOL(type_, slots_)                                                                                   \
    template <>                                                                                                        \
    inline constexpr int range_slots<type_> = slots_;                                                                  \
    template <>                                                                                                        \
    Range<type_> RangePool<type_>::ranges[slots_]
#define QX_RANGE_POOL_STORAGE(type_)                                                                                   \
    template <>                                                                                                        \
    Range<type_> RangePool<type_>::ranges[range_slots<type_>] {}

QX_RANGE_POOL(double, 25);
QX_RANGE_POOL(int, 6);
QX_RANGE_POOL(std::string, 3);
QX_RANGE_POOL(bool, 3);
QX_RANGE_POOL(ministring, 2);

} // namespace qx
