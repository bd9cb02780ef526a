// View: a list as a routine reads it. Where its items live (a range, one value, a literal) makes no difference, and
// nothing is copied: a view is where the items begin, how many there are, and the name under which messages speak of
// them.
//
//     double total(View<double> amounts);
//     total(range);                      // a Range<double>
//     total(View<double>::of(100.0));    // one value, which must outlive the view
#pragma once

#include "core/errors.h"
#include "core/trace.h"
#include "core/utilities.h"

#include <string>

namespace qx {

/// What "zero" means for an item of a range, beside iszero(double). Other item types add theirs.
inline bool iszero_item(double value) { return iszero(value); }
inline bool iszero_item(int value) { return value == 0; }
inline bool iszero_item(long long value) { return value == 0; }
inline bool iszero_item(const std::string& value) { return value.empty(); }
template <class T>
requires requires(const T& value) { value.iszero(); }
bool iszero_item(const T& value) { return value.iszero(); }

inline bool isequal_item(double a, double b) { return isequal(a, b); }
template <class T>
bool isequal_item(const T& a, const T& b) {
    return a == b;
}

/// Directions of a list, as thisdirection() codes them.
enum Direction : int { ascending = 0, descending = 1, no_direction = 3, mixed = 4 };

template <class T>
class View {
  public:
    using value_type = T;

    constexpr View() = default; ///< of nothing
    constexpr View(const T* items, int size, const char* name = nullptr, int columns = 1)
        : View(items, size, name, columns, size) {}
    /// Of a list whose last cell with content is at a position before its end.
    constexpr View(const T* items, int size, const char* name, int columns, int lastnonblank)
        : items_(items), n_(size), columns_(columns < 1 ? 1 : columns), lastnonblank_(lastnonblank), name_(name) {}
    /// One value as a list; it must outlive the view.
    static constexpr View of(const T& value, const char* name = nullptr) { return {&value, 1, name}; }
    static View of(T&&, const char* = nullptr) = delete;

    constexpr int size() const { return n_; }
    constexpr bool empty() const { return n_ == 0; }
    constexpr int getcolumns() const { return columns_; }
    constexpr int getrows() const { return n_ / columns_; }
    /// Position of the last cell with content on the sheet.
    constexpr int lastnonblank() const { return lastnonblank_; }
    /// The name used in messages.
    const char* name() const { return name_ == nullptr ? "Unspecified" : name_; }

    // Items are numbered from 1; an index outside throws outofrange.
    const T& get(int i) const { return (*this)(i); }
    const T& operator()(int i) const {
        if (i > n_ || i < 1) outside(i);
        return items_[i - 1];
    }
    /// Column x of row y.
    const T& getxy(int x, int y) const {
        if (x > columns_ || static_cast<long long>(x) * y > n_) outside(x, y);
        return (*this)((y - 1) * columns_ + x);
    }
    const T& first() const { return (*this)(1); }
    const T& last() const { return (*this)(n_); }
    /// Entry i of a series, of which the last applies to all that follow.
    const T& entry(int i) const { return (*this)(i < n_ ? i : n_); }
    /// Entry i of a list that may hold a single value for all.
    const T& single_or(int i) const { return (*this)(n_ == 1 ? 1 : i); }

    const T* begin() const { return items_; }
    const T* end() const { return items_ + n_; }

    /// The first n items.
    View upto(int n) const { return {items_, n < n_ ? n : n_, name_, 1}; }
    /// The items from number i on.
    View from(int i) const { return i > n_ ? View{nullptr, 0, name_} : View{items_ + (i - 1), n_ - (i - 1), name_}; }

    /// The items up to the last cell with content.
    View upto_last_nonblank() const {
        if (lastnonblank_ >= n_) return *this;
        if (traced()) {
            trace().if_clause(text_of("Last non blank position ", lastnonblank_, " is less than the array length (", n_,
                                      "), reducing length accordingly"));
            trace().changelevel(-1);
        }
        return {items_, lastnonblank_, name_, columns_};
    }

    /// True if there are fewer than two items or all are alike within the tolerance.
    bool allequal() const {
        for (int i = 1; i < n_; ++i)
            if (!isequal_item(items_[i], items_[0])) return false;
        return true;
    }
    /// The direction of the list; equal neighbours keep the direction before them.
    Direction thisdirection() const {
        Direction step = no_direction;
        for (int i = 1; i < n_; ++i) {
            const Direction before = step;
            if (items_[i] > items_[i - 1])
                step = ascending;
            else if (items_[i] < items_[i - 1])
                step = descending;
            if (i > 1 && before != no_direction && step != before) return mixed;
        }
        return step;
    }
    /// Throws notascending, or notdescending, unless the list is in that order; equal neighbours pass.
    void checkascending() const {
        for (int i = 1; i < n_; ++i)
            if (!(items_[i - 1] <= items_[i])) out_of_order<notascending>(i, "checkascending");
    }
    void checkdescending() const {
        for (int i = 1; i < n_; ++i)
            if (!(items_[i - 1] >= items_[i])) out_of_order<notdescending>(i, "checkdescending");
    }

    /// Throws inputrangelength2 unless both have the same length.
    template <class U>
    void checksamesize(const View<U>& other) const {
        if (size() != other.size())
            fail_as<inputrangelength2>("Length of ", name(), " = ", size(), " Length of ", other.name(), "= ",
                                       other.size());
    }

    /// Throws an error of class E in the name of this list.
    template <class E, class... Pieces>
    [[noreturn, gnu::cold, gnu::noinline]] void fail_as(const Pieces&... pieces) const {
        FunctionContext context;
        if (tracing) {
            context.setvariable(name());
            context.setclass("Range");
            context.setmessage(text_of(pieces...));
        }
        throw E(context);
    }

  private:
    [[noreturn, gnu::cold, gnu::noinline]] void outside(int i) const {
        fail_as<outofrange>("Tried to access a item using () outside the list. (", n_, ",", i, ").");
    }
    [[noreturn, gnu::cold, gnu::noinline]] void outside(int x, int y) const {
        fail_as<outofrange>("Tried to get a range variable outside the dimensions in routine 'getxy' (", y, ", ", x,
                            ").");
    }
    template <class E>
    [[noreturn]] void out_of_order(int i, const char* routine) const {
        fail_as<E>("Problem with item number ", i, " in a range ", name(), " in routine ", routine, ". It wasn't.");
    }

    const T* items_ = nullptr;
    int n_ = 0;
    int columns_ = 1;
    int lastnonblank_ = 0;
    const char* name_ = nullptr;
};

/// A list as text: its name and length, then the items, of which a long list shows the first hundred.
template <class T>
std::string describe(const View<T>& list) {
    constexpr int shown = 100;
    std::string text = std::string(list.name()) + " (" + std::to_string(list.size()) + ")";
    for (int i = 1; i <= (list.size() < shown ? list.size() : shown); ++i)
        text += (i == 1 ? ": " : ", ") + describe(list(i));
    if (list.size() > shown) text += ", ...";
    return text;
}

} // namespace qx
