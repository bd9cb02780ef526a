// An argument that a function takes several times over: Item1, Item2, Item3 ...
#pragma once

namespace qx {

template <class T, int n>
struct Repeated {
    static constexpr int most = n;
    T items[n]{};
};

} // namespace qx
