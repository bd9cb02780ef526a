// Runs formulas: the stack of values, the coercions of a spreadsheet, calls of the library's functions.
#pragma once

#include "addin/function.h"
#include "hosts/sheet/arena.h"
#include "hosts/sheet/builtins.h"
#include "hosts/sheet/formula.h"
#include "hosts/sheet/sheet_host.h"
#include "hosts/sheet/value.h"

namespace qx::sheet {

class Workbook;
struct Node;

/// Thrown where a cell has to be calculated first but the stack has no room to do it at once.
struct TooDeep {
    Node* node;
};
/// Thrown where a function waits for something that no cell gives.
struct NotReady {};
/// Thrown in a formula that a function has evaluated: these cells have to be calculated first.
struct Uncalculated {
    Area area;
};

class Calculator {
  public:
    explicit Calculator(Workbook& book) : book_(book), host_(book, *this) {}

    /// The value of a formula for the cells of its caller.
    Value run(const Formula& formula, const Area& caller);

    Workbook& book() { return book_; }
    const Area& caller() const { return *caller_; }
    /// True while a function of the library runs: it cannot be called once more, nor can cells be calculated.
    bool in_function() const { return in_function_; }
    void set_uncalculated(const Area& area) {
        uncalculated_ = area;
        has_uncalculated_ = true;
    }
    /// Causes of failures are looked for anew; there is a limit to how many.
    void forget_explanations() { explanations_ = 0; }
    /// Throws TooDeep for the node if too little of the stack is left.
    void check_stack(Node& node);
    /// Bytes of the thread's stack that are left, as far as one can tell, but at most so many.
    int stack_left(int most) const;
    /// Sets the place from which the depth of the stack is counted, and the host of the library, for its lifetime.
    class Entry {
      public:
        explicit Entry(Calculator& calculator);
        ~Entry();
        Entry(const Entry&) = delete;
        Entry& operator=(const Entry&) = delete;

      private:
        Calculator& calculator_;
        const char* const former_base_;
        Host* const former_host_;
    };

    // --- Coercions --------------------------------------------------------------------------------------------------

    /// The value, or that of the cell to which it refers.
    const Value& operand(const Value& value);
    /// The value with a reference to one cell looked up.
    Value single(const Value& value);
    /// The same, with a reference to several cells as an array.
    Value looked_up(const Value& value);
    /// Of a range the cell in the row or the column of a cell; if `arrays`, of an array the first item.
    Value intersected(const Value& value, CellAddress cell, bool arrays);
    /// One element of a value that may be an array; scalars repeat, and so do single rows and columns. #N/A beyond.
    Value element(const Value& value, std::uint32_t row, std::uint32_t column);

  private:
    Value apply(Code code, const Value& a, const Value& b);
    Value apply_single(Code code, const Value& a, const Value& b);
    Value sign(Code code, const Value& value);
    Value range_between(const Value& a, const Value& b);
    Value spilled(const Value& value);
    Value choose(const Value& condition, const Value& yes, const Value& no);
    Value replace_errors(const Value& value, const Value& instead, bool only_na);
    Value call(const Builtin& builtin, Value* arguments, int count);
    Value call_single(const Builtin& builtin, Value* arguments, int count);
    Value call(const Function& function, const Value* arguments, int count);
    std::string failed_variable(const Function& function, OPER* const* cells);
    Value explained(const Function& function, std::uint16_t code, OPER* const* cells, const Value* arguments,
                    int count);
    void to_oper(OPER& cell, const Value& value);
    Area meant(Area area);
    void to_oper(OPER& cell, const Area& area);
    bool to_reference(OPER& cell, const Area& area);
    void require(const Area& area);

    Workbook& book_;
    SheetHost host_;
    Arena arena_;
    const Area first_cell_;
    const Area* caller_ = &first_cell_; ///< of the formula that runs
    Area uncalculated_;
    bool has_uncalculated_ = false;
    bool in_function_ = false;
    int explanations_ = 0; ///< failures called once more for their cause
    std::size_t stack_used() const;
    const char* stack_base_ = nullptr;
};

// Conversions of single values. Each gives false and an error when there is none.
bool to_number(const Value& value, double& number, Value& error);
bool to_truth(const Value& value, bool& truth, Value& error);
/// The text of a value that is no error.
Value to_text(const Value& value);
/// Equal as a spreadsheet compares: in the first fifteen digits.
inline bool same_number(double a, double b) {
    const double difference = a - b;
    return difference == 0.0 || (difference < 0.0 ? -difference : difference) <= (a < 0.0 ? -a : a) * 0x1p-50;
}
/// Below, at or above zero as a is before, with or after b in a spreadsheet's order: numbers, texts, truth values.
int compare(const Value& a, const Value& b);

/// base to the power of exponent; #NUM! for 0^0 and for a fractional power of a negative number.
Value raised(double base, double exponent);

/// The most bytes of a string that a formula may make.
inline constexpr std::size_t longest_text = 32767;

/// A cell that the library has given back, as a value; references beyond the sheets become #REF!.
Value from_oper(const OPER& cell, const Workbook& book);

} // namespace qx::sheet
