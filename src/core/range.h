// Range: the library's list. Up to N items held inside the object, numbered from 1, with a shape of rows and
// columns in the sheet's order (row by row). Nothing is allocated: a range lives in a pool slot or in a static.
//
//     static Range<double> amounts;
//     amounts.dimension(3);
//     amounts(1) = 100.0;
//
// Items past those ever dimensioned are untouched memory, so an unused range costs no resident memory.
#pragma once

#include "core/view.h"

#include <algorithm>
#include <memory>
#include <new>
#include <string>
#include <type_traits>

namespace qx {

inline constexpr int range_capacity = 10000;

template <class T, int N = range_capacity>
class Range {
  public:
    using value_type = T;
    static constexpr int capacity = N;

    constexpr Range() noexcept = default;
    Range(const Range&) = delete; // far too big to be copied by accident; assignment is meant
    Range& operator=(const Range& other) {
        if (this == &other) return *this;
        dimension(other.n_, other.getcolumns());
        for (int i = 1; i <= n_; ++i) item(i) = other.item(i);
        lastnonblank_ = other.lastnonblank_;
        given_ = other.given_;
        return *this;
    }
    Range& operator=(const View<T>& other) {
        dimension(other.size(), other.getcolumns());
        for (int i = 1; i <= n_; ++i) item(i) = other(i);
        lastnonblank_ = other.lastnonblank();
        return *this;
    }
    ~Range() {
        if constexpr (!std::is_trivially_destructible_v<T>) std::destroy_n(data(), built_);
    }

    // --- Shape -----------------------------------------------------------------------------------------------

    /// Makes the range a list of n items, or a rectangle of n items in rows of `columns`. Items that were there
    /// keep their values. Throws outofrange unless 0 <= n <= N.
    void dimension(int n, int columns = 1) {
        if (n < 0) fail("Range length negative in routine 'dimension' (", n, "<0).");
        if (n > N) fail("Range length beyond limits in routine 'dimension' (", N, ",", n, ").");
        if (n > 0) given_ = true;
        build(n);
        n_ = n;
        columns_ = columns;
        lastnonblank_ = n;
    }
    /// One more item at the end. Throws outofrange above N.
    void append(const T& value) {
        dimension(n_ + 1, columns_ < 1 ? 1 : columns_);
        item(n_) = value;
    }
    /// As if never used: no items, and those to come are zeros again. Costs as much as there were items.
    void renew() {
        if constexpr (zero_is_built) {
            std::fill_n(data(), built_, T{});
        } else {
            std::destroy_n(data(), built_);
        }
        n_ = columns_ = lastnonblank_ = built_ = 0;
        given_ = false;
        name_ = nullptr;
    }
    /// The number of items; 0 while the range was never given a length above 0.
    int size() const { return given_ ? n_ : 0; }
    int getcolumns() const { return columns_ < 1 ? 1 : columns_; }
    int getrows() const { return n_ / getcolumns(); }
    bool blank() const { return !given_; }
    /// Position of the last cell with content on the sheet; the length after dimension.
    int lastnonblank() const { return lastnonblank_; }
    void setlastnonblank(int position) { lastnonblank_ = position; }

    /// The name used in messages: "Unspecified" until set. The text must outlive the range.
    void setname(const char* name) { name_ = name; }
    const char* name() const { return name_ == nullptr ? "Unspecified" : name_; }

    // --- Access; an index above the length throws outofrange, one below 1 reads or writes the unused item 0 ----

    const T& get(int i) const {
        if (i > n_) fail("Tried to access variable outside limits in routine 'get' (", n_, ",", i, ").");
        return item(i);
    }
    const T& operator()(int i) const {
        if (i > n_) fail("Tried to access a item using () outside the list. (", n_, ",", i, ").");
        return item(i);
    }
    T& operator()(int i) {
        if (i > n_) fail("Tried to access an item using () outside the list (", n_, ",", i, ").");
        return item(i);
    }
    void set(int i, const T& value) {
        if (i > n_) fail("Tries to set an item outside the list. (", n_, ",", i, ").");
        item(i) = value;
    }
    const T& operator()(int x, int y) const {
        return item(index(x, y, "Tried to set a range variable outside the dimensions with operator() (",
                          "Tried to access an item outside the (2D) list. ("));
    }
    T& operator()(int x, int y) {
        return item(index(x, y, "Tried to set a range variable outside the dimensions with operator() (",
                          "Tried to set an item outside the (2D) list.  ("));
    }
    const T& getxy(int x, int y) const {
        return item(index(x, y, "Tried to get a range variable outside the dimensions in routine 'getxy' (",
                          "Tried to access an item outside the (2D) list. ("));
    }
    void setxy(int x, int y, const T& value) {
        item(index(x, y, "Tried to set a range variable outside the dimensions in routine 'setxy' (",
                   "Tried to set an item outside the (2D) list.  (")) = value;
    }
    const T& first() const { return get(1); }
    const T& last() const { return get(n_); }

    // --- Order -----------------------------------------------------------------------------------------------

    operator View<T>() const { return {data() + 1, size(), name_, columns_, lastnonblank_}; }
    View<T> view() const { return *this; }
    bool allequal() const { return view().allequal(); }
    Direction thisdirection() const { return view().thisdirection(); }
    void checkascending() const { view().checkascending(); }
    void checkdescending() const { view().checkdescending(); }

    /// Sorts in place by Floyd's heap sort; not stable.
    void heapsort(bool ascending_order) {
        int level = -1;
        if (traced()) {
            level = trace().currentlevel();
            trace().additem(text_of("heapsort\t\t", describe(*this)), TraceKind::internal_call, +1);
        }
        for (int i = n_ / 2; i >= 1; --i) sift(i, n_, ascending_order);
        for (int k = n_; k > 1; --k) {
            std::swap(item(1), item(k));
            sift(1, k - 1, ascending_order);
        }
        if (traced()) trace().returning("heapsort", level);
    }

    // --- Length by content -----------------------------------------------------------------------------------

    /// Drops the zeros at the end.
    void trailingzerosize() {
        while (n_ >= 1 && iszero_item(item(n_))) {
            --n_;
            if (traced()) trace().info(text_of("TrailingZeroSize: Array length reduced by 1 to ", n_));
        }
    }
    /// Drops the zeros at the end, but never the first item.
    void trailingzerosizenz() {
        while (n_ > 1 && iszero_item(item(n_))) --n_;
    }
    /// Shortens both ranges to the shorter length, then drops the ends at which both are zero.
    template <class U, int M>
    void trailingzerosize(Range<U, M>& other) {
        int n = std::min(size(), other.size());
        while (n >= 1 && iszero_item(item(n)) && iszero_item(other.get(n))) --n;
        dimension(n);
        other.dimension(n);
    }
    /// Drops the leading run of zeros.
    void precedingzerosize() {
        int zeros = 0;
        while (zeros < n_ && iszero_item(item(zeros + 1))) ++zeros;
        if (zeros == 0) return;
        for (int i = zeros + 1; i <= n_; ++i) item(i - zeros) = item(i);
        dimension(n_ - zeros);
    }
    /// Drops the cells after the last one with content.
    void trailingblanksize() { n_ = view().upto_last_nonblank().size(); }
    /// Shortens two ranges to one length by the blanks of each.
    template <class U, int M>
    void trailingblanksize1(Range<U, M>& other) {
        int n = n_;
        const auto reduce = [&n](int to, auto&&... pieces) {
            if (traced()) {
                trace().if_clause(text_of(pieces...));
                trace().changelevel(-1);
            }
            n = to;
        };
        if (lastnonblank_ < n)
            reduce(lastnonblank_, "Array 1: Last non blank position (", n,
                   ") is less than the array length of array 1 (", lastnonblank_, "), reducing length accordingly");
        else
            reduce(n, "Range size set initially to ", n, ", conducting further tests");
        if (other.size() < n)
            reduce(other.size(), "Array 2: Last item  position of array 2 (", other.size(),
                   ") is less than the array 1 length (", n, "), reducing length accordingly");
        if (other.lastnonblank() < n)
            reduce(other.lastnonblank(), "Array 2: Last non blank position of array 2 ", other.lastnonblank(),
                   " is less than the array length (", n, "), reducing length accordingly");
        dimension(n);
        other.dimension(n);
    }

    /// Gives two or three ranges the shortest of their lengths, and returns it. With `single_for_all` a second
    /// argument of one item stands for a whole list: nothing is shortened then.
    template <class U, int M>
    int makesamesize(Range<U, M>& other) {
        return shorten_to(std::min(size(), other.size()), *this, other);
    }
    template <class U, int M, class V, int L>
    int makesamesize(Range<U, M>& first, Range<V, L>& second, bool single_for_all = false) {
        if (single_for_all && second.size() == 1 && size() >= 2 && first.size() > 1) return shorten_to(size());
        return shorten_to(std::min({size(), first.size(), second.size()}), *this, first, second);
    }
    int makesamesizegeneric(Range& other) { return makesamesize(other); }
    template <class U, int M>
    int makesamesizespecific(Range<U, M>& other) {
        return makesamesize(other);
    }
    template <class U, int M>
    void checksamesize(const Range<U, M>& other) const {
        view().checksamesize(other.view());
    }

    /// On a range of dates: ties one or more ranges of amounts to it. All get the shortest length, less the items
    /// at the end that have no date; then rows whose date and amounts are all zero are taken out. Returns the
    /// length.
    template <class... Amounts>
    int datesize(Amounts&... amounts) {
        if (traced()) {
            std::string call = text_of("DateSize (", 1 + static_cast<int>(sizeof...(amounts)), " ranges)\t\t", name());
            ((call += ",", call += amounts.name()), ...);
            trace().additem(call, TraceKind::internal_call, +1);
        }
        const int shortest = std::min({range_capacity, size(), amounts.size()...});
        int length = shortest;
        while (length >= 1 && item(length).iszero()) --length;
        if (length < shortest && traced())
            trace().info(sizeof...(amounts) == 1
                             ? text_of("Warning - one or more range elements were ignored because there was no "
                                       "corresponding date (range size=",
                                       length, ")")
                             : text_of("Warning - a range element was ignored because there was no corresponding "
                                       "date (range size=",
                                       length, ")"));
        dimension(length);
        (amounts.dimension(length), ...);
        int kept = 0;
        for (int i = 1; i <= length; ++i) {
            if (item(i).iszero() && (iszero_item(amounts.get(i)) && ...)) continue;
            if (++kept == i) continue;
            item(kept) = item(i);
            (amounts.set(kept, amounts.get(i)), ...);
        }
        if (kept < length) {
            if (traced())
                trace().info(text_of("Note - a range that had blanks has been compacted from ", length, " to ", kept));
            dimension(kept);
            (amounts.dimension(kept), ...);
        }
        if (traced()) trace().changelevel(-1);
        return kept;
    }

    /// Swaps rows and columns.
    void transpose() {
        static Range work;
        const int columns = getcolumns();
        const int rows = n_ / columns;
        work.dimension(n_, rows < 1 ? 1 : rows);
        for (int y = 1; y <= rows; ++y)
            for (int x = 1; x <= columns; ++x) {
                if (traced()) trace().info(text_of("Translating (", x, ",", y, ") -> (", y, ",", x, ")"));
                work.item((x - 1) * rows + y) = item((y - 1) * columns + x);
            }
        for (int i = 1; i <= n_; ++i) item(i) = work.item(i);
        dimension(n_, rows < 1 ? 1 : rows);
    }

    // Plain iteration over items 1..n.
    T* begin() { return data() + 1; }
    T* end() { return data() + 1 + size(); }
    const T* begin() const { return data() + 1; }
    const T* end() const { return data() + 1 + size(); }

    /// Throws an error of class E in the name of this range.
    template <class E, class... Pieces>
    [[noreturn]] void fail_as(const Pieces&... pieces) const {
        view().template fail_as<E>(pieces...);
    }

  protected:
    T& item(int i) { return i < 1 ? unused_item() : data()[i]; }
    const T& item(int i) const { return i < 1 ? const_cast<Range*>(this)->unused_item() : data()[i]; }

  private:
    template <class U, int M>
    friend class Range;

    static constexpr bool zero_is_built = std::is_arithmetic_v<T>;

    T* data() { return std::launder(reinterpret_cast<T*>(storage_)); }
    const T* data() const { return std::launder(reinterpret_cast<const T*>(storage_)); }

    // What an index below 1 reaches, in a range that was never dimensioned too.
    T& unused_item() {
        build(0);
        return data()[0];
    }

    // Items 0..n exist; arithmetic items are the zeros that the storage starts with.
    void build(int n) {
        if (n + 1 <= built_) return;
        if constexpr (!zero_is_built) std::uninitialized_value_construct_n(data() + built_, n + 1 - built_);
        built_ = n + 1;
    }

    template <class... Pieces>
    [[noreturn]] void fail(const Pieces&... pieces) const {
        fail_as<outofrange>(pieces...);
    }

    int index(int x, int y, const char* outside, const char* beyond) const {
        if (x > getcolumns() || static_cast<long long>(x) * y > n_) fail(outside, y, ", ", x, ").");
        const int i = (y - 1) * getcolumns() + x;
        if (i > n_) fail(beyond, n_, ",", i, ").");
        return i;
    }

    void sift(int i, int n, bool up) {
        for (int child = 2 * i; child <= n; i = child, child = 2 * i) {
            if (child < n && before(item(child), item(child + 1), up)) ++child;
            if (!before(item(i), item(child), up)) return;
            std::swap(item(i), item(child));
        }
    }
    static bool before(const T& a, const T& b, bool up) { return up ? a < b : b < a; }

    template <class... Ranges>
    static int shorten_to(int n, Ranges&... ranges) {
        int level = -1;
        if (traced()) {
            level = trace().currentlevel();
            trace().internal_call("makesamesize");
        }
        (ranges.dimension(n), ...);
        if (traced()) trace().return_value(n, "makesamesize", level);
        return n;
    }

    // All zero at the start, so that a static range takes no room in the library's file.
    alignas(T) unsigned char storage_[sizeof(T) * (N + 1)]{};
    int n_ = 0;
    int columns_ = 0;
    int lastnonblank_ = 0;
    int built_ = 0;
    bool given_ = false;
    const char* name_ = nullptr;
};

template <class T, int N>
std::string describe(const Range<T, N>& range) {
    return describe(range.view());
}

} // namespace qx
