// A formula, read once and kept as a list of steps for a stack of values.
//
//     Formula formula = read_formula("SUM(A1:A3)*2", names, 0);
#pragma once

#include "addin/function.h"
#include "hosts/sheet/value.h"

#include <cstddef>
#include <stdexcept>
#include <string>
#include <string_view>

namespace qx::sheet {

struct Builtin;

/// A formula that cannot be read: what is wrong, and at which character, counted from 1.
struct FormulaError : std::runtime_error {
    FormulaError(const std::string& message, std::size_t column) : std::runtime_error(message), column(column) {}
    std::size_t column;
};

enum class Code : std::uint8_t {
    constant,  ///< pushes constants[index]
    reference, ///< pushes areas[index]
    name,      ///< pushes what the workbook's name number `index` stands for
    plus,
    minus,
    percent,
    add,
    subtract,
    multiply,
    divide,
    power,
    concatenate,
    equal,
    unequal,
    less,
    at_most,
    greater,
    at_least,
    set_local, ///< takes a value and keeps it as local number `index`
    local,     ///< pushes local number `index`
    intersect, ///< of a range the cell in the caller's row or column; count 0: of an array the first item
    spill,     ///< the cells that the formula of a cell fills
    range,     ///< the smallest rectangle around two references
    builtin,   ///< builtins[index] of `count` arguments
    function,  ///< functions[index] of `count` arguments
    unknown,   ///< a function that does not exist: unknown[index]
    // Choices: a branch not taken is jumped over unless the condition is an array.
    if_then, ///< on false goes on after the if_else at `index`
    if_else, ///< the end of the first branch; goes on at the if_end at `index`
    if_end,
    if_error, ///< without an error goes on at the error_end at `index`; count 1 catches #N/A only
    error_end,
};

struct Step {
    Code code;
    std::uint16_t count = 0;
    std::uint32_t index = 0;
};

/// What a formula does with a result of several values.
enum class Fill : std::uint8_t {
    spill,    ///< fills the cells below and to the right; #SPILL! if one of them is taken
    intersect ///< shows one: of a range the cell in its own row or column, of an array the first
};

/// A part of a formula: objects side by side.
template <class T>
class List {
  public:
    List() = default;
    List(T* data, std::size_t size) : data_(data), size_(static_cast<std::uint32_t>(size)) {}
    T* data() const { return data_; }
    std::size_t size() const { return size_; }
    bool empty() const { return size_ == 0; }
    T* begin() const { return data_; }
    T* end() const { return data_ + size_; }
    T& operator[](std::size_t i) const { return data_[i]; }

  private:
    T* data_ = nullptr;
    std::uint32_t size_ = 0;
};

/// The text of a formula; it goes together with strings.
struct FormulaText : std::string_view {
    using std::string_view::string_view;
    FormulaText(std::string_view text) : std::string_view(text) {}
    operator std::string() const { return std::string(data(), size()); }
    friend std::string operator+(std::string before, const FormulaText& text) { return before.append(text); }
};

/// A formula is one block of memory with its steps and what they refer to.
struct Formula {
    Formula() = default;
    Formula(Formula&& other) noexcept { *this = std::move(other); }
    Formula& operator=(Formula&& other) noexcept;
    ~Formula();
    explicit operator bool() const { return block_ != nullptr; }

    List<const Step> steps;
    List<const Value> constants;
    List<const Area> areas;
    List<const Builtin* const> builtins;
    List<const Function*> functions;
    std::uint32_t depth = 0;   ///< the most values that wait at once
    std::uint32_t choices = 0; ///< the most choices that are open at once
    std::uint32_t locals = 0;  ///< values with names of their own
    bool is_volatile = false;
    Fill fill = Fill::spill;
    List<const std::uint32_t> names;
    List<const std::string> unknown; ///< what the formula asks for and nobody knows, as messages
    FormulaText text;                ///< as written, without the equals sign

    /// Asks for the memory of the steps and what they work on ahead of a calculation.
    void prefetch() const {
        constexpr std::size_t line = 64, most = 4 * line;
        const auto end = reinterpret_cast<std::size_t>(text.data());
        const auto begin = reinterpret_cast<std::size_t>(block_);
        for (std::size_t at = 0; at < most && begin + at < end; at += line) __builtin_prefetch(block_ + at);
    }

  private:
    friend struct FormulaDraft;
    std::byte* block_ = nullptr;
};

/// What a formula may refer to beside cells.
class Names {
  public:
    virtual ~Names() = default;
    virtual int sheet_number(std::string_view name) const = 0; ///< -1 for none
    /// The number of a name as seen from a sheet.
    virtual std::uint32_t name_number(std::string_view name, std::uint16_t sheet) = 0;
};

/// Reads a formula, with or without the equals sign in front. Its references without a sheet are to `sheet`. Throws
/// FormulaError.
Formula read_formula(std::string_view text, Names& names, std::uint16_t sheet, Fill fill = Fill::spill);

/// The text of a formula as it reads when it is copied so many rows down and columns to the right: "A1+$B$1" one down
/// is "A2+$B$1". References that leave the sheet become #REF!.
std::string moved_formula(std::string_view text, std::int64_t rows, std::int64_t columns);

/// Reads a reference such as "B7" or "$A$1:C3". False if the text is something else.
bool read_area(std::string_view text, std::uint16_t sheet, Area& area);

/// Reads a reference such as "R7C2" or "R[-1]C:RC[2]", as it reads in a cell.
bool read_r1c1_area(std::string_view text, CellAddress cell, std::uint16_t sheet, Area& area);

/// True if the text can be given to a cell or range as a name.
bool is_name(std::string_view text);

inline constexpr int deepest_nesting = 256;

} // namespace qx::sheet
