// A repeated pair of arguments: a condition and its result, a case and its result.
#pragma once

#include "core/maybe.h"

#include <string>

namespace qx {

/// Up to n pairs, as the arguments First1, Second1, First2, Second2 ... of a worksheet function.
template <class A, class B, int n>
struct Pairs {
    static constexpr int most = n;
    A first[n]{};
    B second[n]{};
};

/// The pairs as text, up to the last one of which anything was given.
template <class A, class B, int n>
std::string describe(const Pairs<Maybe<A>, Maybe<B>, n>& pairs) {
    int last = n;
    while (last > 0 && pairs.first[last - 1].is_missing() && pairs.second[last - 1].is_missing()) --last;
    std::string text;
    for (int i = 0; i < last; ++i)
        text += (i == 0 ? "" : ", ") + describe(pairs.first[i]) + ": " + describe(pairs.second[i]);
    return text;
}

} // namespace qx
