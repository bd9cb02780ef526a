// A parameter of a routine that takes several cells of a worksheet call: what travels together is one type.
//
//     struct Life {
//         using takes = Takes<date, date>;   // what its cells are, in their order
//         const date& Start;
//         const date& Finish;
//     };
//
// The frame converts each cell on its own and makes the parameter of them by aggregate initialisation; the trace shows
// each under the name of its argument. A composite may hold other composites.
#pragma once

#include <type_traits>

namespace qx {

/// The types of the cells of a composite parameter, and so of its members.
template <class... T>
struct Takes {
    static constexpr int members = sizeof...(T);
};

template <class T>
concept Composite = requires {
    typename std::remove_cvref_t<T>::takes;
};

/// Calls `visit` on each member of a composite, in the order of its cells.
template <Composite T, class Visit>
void visit_members(const T& value, Visit visit) {
    constexpr int members = T::takes::members;
    static_assert(members >= 1 && members <= 6, "a composite has one to six members");
    if constexpr (members == 1) {
        const auto& [a] = value;
        visit(a);
    } else if constexpr (members == 2) {
        const auto& [a, b] = value;
        visit(a), visit(b);
    } else if constexpr (members == 3) {
        const auto& [a, b, c] = value;
        visit(a), visit(b), visit(c);
    } else if constexpr (members == 4) {
        const auto& [a, b, c, d] = value;
        visit(a), visit(b), visit(c), visit(d);
    } else if constexpr (members == 5) {
        const auto& [a, b, c, d, e] = value;
        visit(a), visit(b), visit(c), visit(d), visit(e);
    } else {
        const auto& [a, b, c, d, e, f] = value;
        visit(a), visit(b), visit(c), visit(d), visit(e), visit(f);
    }
}

} // namespace qx
