// The inputs from which something that is kept was made: it is used again while the next call brings the same.
#pragma once

#include "calendar/annual_sequence.h"
#include "core/range.h"
#include "core/trace.h"

#include <algorithm>
#include <tuple>

namespace qx {

template <class... Inputs>
class SavedInputs {
  public:
    /// True if what is kept was made from these inputs and was finished. While a trace runs, what was made without it
    /// is made again, so that the trace shows how.
    bool are(const Inputs&... inputs) {
        const bool shown = shown_ || !traced();
        shown_ = traced();
        return finished_ && shown && equal(std::tie(inputs...), std::index_sequence_for<Inputs...>{});
    }
    /// Takes the inputs of what is about to be made.
    void save(const Inputs&... inputs) {
        finished_ = false;
        store(std::tie(inputs...), std::index_sequence_for<Inputs...>{});
    }
    /// What is kept is about to be changed, and was changed. An error in between leaves nothing that a call reads.
    void begin() { finished_ = false; }
    void finish() { finished_ = true; }

  private:
    template <class T>
    struct StoreOf {
        using type = T;
    };
    template <class T>
    struct StoreOf<View<T>> {
        using type = Range<T>;
    };

    template <class Given, std::size_t... I>
    bool equal(const Given& given, std::index_sequence<I...>) const {
        return (same(std::get<I>(given), std::get<I>(saved_)) && ...);
    }
    template <class Given, std::size_t... I>
    void store(const Given& given, std::index_sequence<I...>) {
        ((std::get<I>(saved_) = std::get<I>(given)), ...);
    }

    static bool same(double a, double b) { return a == b; }
    static bool same(int a, int b) { return a == b; }
    static bool same(const date& a, const date& b) { return a == b && a.months() == b.months(); }
    static bool same(const AnnualSequence& a, const AnnualSequence& b) { return a.same_as(b); }
    template <class T>
    static bool same(const View<T>& list, const Range<T>& saved) {
        return list.size() == saved.size() &&
               std::equal(list.begin(), list.end(), saved.begin(), [](const T& a, const T& b) { return same(a, b); });
    }

    std::tuple<typename StoreOf<Inputs>::type...> saved_;
    bool finished_ = false;
    bool shown_ = false;
};

} // namespace qx
