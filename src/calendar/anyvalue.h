// Cells that may hold one of several kinds of value: a number, a string, a date, or nothing.
//
//     anyvalue cell;
//     cell.setnumber(5.0);
//     if (cell.isnumber()) use(cell.number());
#pragma once

#include "calendar/date.h"

#include <string>
#include <string_view>

namespace qx {

/// What a mixed cell holds. The numbers show in the trace of functions that compare cells.
enum class CellKind : int { number = 0, text = 2, blank = 4 };

/// A number, or a blank cell.
class floatblank {
  public:
    void setnumber(double number) { set(CellKind::number, number); }
    void setblank() { set(CellKind::blank, 0.0); }

    bool isnumber() const { return kind_ == CellKind::number; }
    bool isblank() const { return kind_ == CellKind::blank; }
    /// The number; 0 for a blank.
    double number() const { return value_; }
    CellKind kind() const { return kind_; }
    bool isset() const { return state_ == 0; } ///< a cell was read, be it a blank one
    bool iszero() const { return qx::iszero(value_); }

    friend bool operator==(const floatblank& a, const floatblank& b) {
        return a.kind_ == b.kind_ && isequal(a.value_, b.value_);
    }

  private:
    void set(CellKind kind, double number) {
        kind_ = kind;
        value_ = number;
        state_ = 0;
    }

    double value_ = 0.0;
    CellKind kind_ = CellKind::blank;
    int state_ = 1;
};

/// A number that may turn out to be a date or an index, or a blank cell.
class dateorfloat : public floatblank {
  public:
    void setblank() {
        floatblank::setblank();
        date_ = date();
    }
    void setnumber(double number) {
        floatblank::setnumber(number);
        date_ = date();
    }
    /// The number read as a date, by the rule of date's assignment; the zero date for a blank. Throws as that
    /// does.
    const date& asdate() {
        if (isnumber()) date_ = number();
        return date_;
    }

  private:
    date date_;
};

/// A number, a string or a blank cell.
class anyvalue {
  public:
    void setnumber(double number) {
        set(CellKind::number);
        value_ = number;
    }
    void settext(std::string_view text) {
        set(CellKind::text);
        text_ = text;
    }
    void setblank() { set(CellKind::blank); }

    bool isnumber() const { return kind_ == CellKind::number; }
    bool istext() const { return kind_ == CellKind::text; }
    bool isblank() const { return kind_ == CellKind::blank; }
    /// The number; 0 for a string or a blank.
    double number() const { return value_; }
    /// The text; empty for a number or a blank.
    const std::string& text() const { return text_; }
    /// The number read as a date, by the rule of date's assignment; the zero date for a string or a blank.
    const date& asdate() {
        date_ = date();
        if (isnumber()) date_ = value_;
        return date_;
    }
    CellKind kind() const { return kind_; }
    bool isset() const { return state_ == 0; } ///< a cell was read, be it a blank one
    bool iszero() const { return !istext() && qx::iszero(value_); }

    /// Of one kind and alike: numbers within the tolerance, texts byte by byte.
    friend bool operator==(const anyvalue& a, const anyvalue& b) {
        return a.kind_ == b.kind_ && isequal(a.value_, b.value_) && a.text_ == b.text_;
    }
    /// Numbers by size, texts by their bytes; cells of different kinds have no order.
    friend bool operator<(const anyvalue& a, const anyvalue& b) {
        if (a.kind_ != b.kind_) return false;
        return a.istext() ? a.text_ < b.text_ : a.value_ < b.value_;
    }
    friend bool operator>(const anyvalue& a, const anyvalue& b) { return b < a; }

  private:
    void set(CellKind kind) {
        kind_ = kind;
        value_ = 0.0;
        text_.clear();
        state_ = 0;
    }

    date date_;
    std::string text_;
    double value_ = 0.0;
    int state_ = 1;
    CellKind kind_ = CellKind::blank;
};

inline std::string describe(const floatblank& value) { return value.isblank() ? "blank" : describe(value.number()); }
inline std::string describe(const anyvalue& value) {
    return value.istext() ? value.text() : value.isblank() ? "blank" : describe(value.number());
}

QX_RANGE_POOL(anyvalue, 7);
QX_WORK_LISTS(anyvalue, 4);
QX_RANGE_POOL(dateorfloat, 3);
QX_RANGE_POOL(floatblank, 1);

} // namespace qx
