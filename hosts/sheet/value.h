// Values of the headless workbook: what a cell holds and what a formula works on.
//
//     Value total = Value::number(38000);
//     Value list = Value::array(2, 1);
//     list.cell(1, 0) = Value::text("Rent");
#pragma once

#include "addin/oper.h"

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>
#include <utility>

namespace qx::sheet {

inline constexpr std::uint32_t max_rows = 1048576;
inline constexpr std::uint32_t max_columns = 16384;

/// A place on a sheet; rows, columns and sheets count from 0.
struct CellAddress {
    std::uint32_t row = 0;
    std::uint16_t column = 0;
    std::uint16_t sheet = 0;

    bool operator==(const CellAddress&) const = default;
};

/// A rectangle of cells, the ends included.
struct Area {
    std::uint32_t first_row = 0, last_row = 0;
    std::uint16_t first_column = 0, last_column = 0;
    std::uint16_t sheet = 0;

    Area() = default;
    Area(std::uint16_t sheet, std::uint32_t first_row, std::uint16_t first_column, std::uint32_t last_row,
         std::uint16_t last_column)
        : first_row(first_row), last_row(last_row), first_column(first_column), last_column(last_column), sheet(sheet) {
    }
    explicit Area(CellAddress cell) : Area(cell.sheet, cell.row, cell.column, cell.row, cell.column) {}

    std::uint32_t rows() const { return last_row - first_row + 1; }
    std::uint32_t columns() const { return last_column - first_column + 1u; }
    bool is_cell() const { return first_row == last_row && first_column == last_column; }
    CellAddress first() const { return {first_row, first_column, sheet}; }
    bool contains(CellAddress cell) const {
        return cell.sheet == sheet && cell.row >= first_row && cell.row <= last_row && cell.column >= first_column &&
               cell.column <= last_column;
    }
    bool operator==(const Area&) const = default;
};

/// "A1", "$" omitted.
std::string address_text(CellAddress cell);
/// "A1:B3", or "A1" for one cell.
std::string address_text(const Area& area);

enum class Type : std::uint8_t {
    blank,
    number,
    boolean,
    area,         ///< a reference, not looked up yet
    missing,      ///< an omitted argument
    uncalculated, ///< the formula waits for something that never came
    error,        // from here on with memory that is shared
    text,
    array
};

// Error codes beyond those of oper.h; the library's functions receive them as #VALUE!.
inline constexpr std::uint16_t error_spill = 45; ///< #SPILL!: something is in the way of an array
inline constexpr std::uint16_t error_calc = 50;  ///< #CALC!: an array without cells

/// One value. Texts and arrays are shared and never changed once shared.
class Value {
  public:
    Value() : Value(Type::blank) {}
    Value(const Value& other) : payload_(other.payload_), type_(other.type_), date_(other.date_), code_(other.code_) {
        keep();
    }
    Value(Value&& other) noexcept
        : payload_(other.payload_), type_(other.type_), date_(other.date_), code_(other.code_) {
        other.type_ = Type::blank;
    }
    Value& operator=(const Value& other) {
        Value copy(other);
        swap(copy);
        return *this;
    }
    Value& operator=(Value&& other) noexcept {
        const Payload payload = other.payload_;
        const Type type = std::exchange(other.type_, Type::blank); // before the drop, which may take the other with it
        const bool date = other.date_;
        const std::uint16_t code = other.code_;
        if (counted()) drop();
        payload_ = payload;
        type_ = type;
        date_ = date;
        code_ = code;
        return *this;
    }
    ~Value() {
        if (counted()) drop();
    }
    void swap(Value& other) noexcept {
        std::swap(payload_, other.payload_);
        std::swap(type_, other.type_);
        std::swap(date_, other.date_);
        std::swap(code_, other.code_);
    }

    static Value number(double x) {
        Value value(Type::number);
        value.payload_.number = x;
        return value;
    }
    /// A number that is to be shown as a date.
    static Value date(double x) {
        Value value = number(x);
        value.date_ = true;
        return value;
    }
    static Value boolean(bool x) {
        Value value(Type::boolean);
        value.payload_.boolean = x;
        return value;
    }
    /// An error by its code in oper.h.
    static Value error(std::uint16_t code) {
        Value value(Type::error);
        value.payload_.error = {nullptr, no_row, 0, 0};
        value.code_ = code;
        return value;
    }
    /// An error with its cause in words, as "division by zero".
    static Value error(std::uint16_t code, std::string_view reason);
    static Value text(std::string_view bytes);
    static Value array(std::uint32_t rows, std::uint32_t columns); ///< of blanks
    static Value reference(const Area& area) {
        Value value(Type::area);
        value.payload_.area = area;
        return value;
    }
    static Value missing() { return Value(Type::missing); }
    static Value uncalculated() { return Value(Type::uncalculated); }

    Type type() const { return type_; }
    bool is(Type type) const { return type_ == type; }
    bool is_number() const { return type_ == Type::number; }
    bool is_date() const { return type_ == Type::number && date_; }
    bool is_error() const { return type_ == Type::error; }
    bool is_text() const { return type_ == Type::text; }
    bool is_blank() const { return type_ == Type::blank || type_ == Type::missing; }
    /// More than one cell: an array, or a reference to several cells.
    bool is_many() const { return type_ == Type::array || (type_ == Type::area && !payload_.area.is_cell()); }

    // Each is for a value of its type only.
    double number() const { return payload_.number; }
    bool boolean() const { return payload_.boolean; }
    std::uint16_t error() const { return code_; }
    /// What caused an error, in words; empty if nobody said so.
    std::string_view reason() const {
        return payload_.error.reason == nullptr
                   ? std::string_view()
                   : std::string_view{payload_.error.reason->bytes(), payload_.error.reason->size};
    }
    /// The cell whose formula or content an error came from first.
    bool has_origin() const { return payload_.error.row != no_row; }
    CellAddress origin() const { return {payload_.error.row, payload_.error.column, payload_.error.sheet}; }
    void set_origin(CellAddress cell) {
        payload_.error.row = cell.row;
        payload_.error.column = cell.column;
        payload_.error.sheet = cell.sheet;
    }
    std::string_view text() const { return {payload_.text->bytes(), payload_.text->size}; }
    const Area& area() const { return payload_.area; }
    std::uint32_t rows() const { return payload_.array->rows; }
    std::uint32_t columns() const { return payload_.array->columns; }
    Value& cell(std::uint32_t row, std::uint32_t column) { return payload_.array->cells()[row * columns() + column]; }
    const Value& cell(std::uint32_t row, std::uint32_t column) const {
        return payload_.array->cells()[row * columns() + column];
    }

    /// The text with the count byte in front: at most 255 bytes, cut between characters.
    unsigned char* counted_text() const { return &payload_.text->count; }

    /// Equal in type and content, numbers to the bit, shown as dates or not.
    bool identical(const Value& other) const;

  private:
    struct Text {
        std::uint32_t references;
        std::uint32_t size;
        unsigned char count;

        char* bytes() { return reinterpret_cast<char*>(this) + offsetof(Text, count) + 1; }
    };
    struct alignas(8) Array {
        std::uint32_t references;
        std::uint32_t rows, columns;

        Value* cells() { return reinterpret_cast<Value*>(this + 1); }
    };
    struct Error {
        Text* reason;
        std::uint32_t row; ///< of the cell that it came from
        std::uint16_t column, sheet;
    };
    static constexpr std::uint32_t no_row = 0xFFFFFFFF;
    union Payload {
        Payload() : number(0.0) {}
        double number;
        bool boolean;
        Error error;
        Text* text;
        Array* array;
        Area area;
    };

    explicit Value(Type type) : type_(type) {}
    bool counted() const { return type_ >= Type::error; }
    void keep() {
        if (counted()) [[unlikely]]
            keep_shared();
    }
    void keep_shared() {
        if (type_ == Type::array)
            ++payload_.array->references;
        else if (Text* const text = type_ == Type::text ? payload_.text : payload_.error.reason; text != nullptr)
            ++text->references;
    }
    void drop();
    static Text* make_text(std::string_view bytes);

    Payload payload_;
    Type type_;
    bool date_ = false;
    std::uint16_t code_ = 0; ///< of an error
};

/// The value or, when it is no finite number, #NUM!.
inline Value number_or_error(double x) { return x - x == 0.0 ? Value::number(x) : Value::error(xlerrNum); }

/// "#NUM!" and its like.
const char* error_text(std::uint16_t code);
/// What an error of this code means in general, as "division by zero".
const char* error_meaning(std::uint16_t code);
/// The error that a string begins with, as "#N/A": its length, and the code; 0 if it is none.
std::size_t match_error(std::string_view text, std::uint16_t& code);

} // namespace qx::sheet
