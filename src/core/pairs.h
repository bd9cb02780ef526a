// A repeated pair of arguments: a condition and its result, a case and its result.
#pragma once

namespace qx {

/// Up to n pairs, as the arguments First1, Second1, First2, Second2 ... of a worksheet function.
template <class A, class B, int n>
struct Pairs {
    static constexpr int most = n;
    A first[n]{};
    B second[n]{};
};

} // namespace qx
