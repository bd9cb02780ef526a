// Reading cells: what all conversions share.
#pragma once

#include "addin/host.h"
#include "core/context.h"

#include <string>
#include <string_view>
#include <vector>

namespace qx {

inline constexpr const char* type_warning =
    "The TYPE of cell or cell reference that you input is not valid as far as Excel is concerned.";
inline constexpr const char* unexpected_reference =
    "A reference type was received. which was not expected.  It's not critical, but it needs looking at.";

/// The text of a string cell.
std::string text_in(const OPER& cell);
std::string_view view_of(const OPER& cell);

/// An error value as a sheet writes it: "#N/A".
const char* error_name(std::uint16_t code);
/// A cell as text, for the trace.
std::string describe(const OPER& cell);
/// The letters of a column, counted from 0: "A", "IV", "XFD".
std::string column_text(std::uint32_t column);
/// A rectangle as a sheet writes it: "B2:C9".
std::string describe(const XLREF& cells);

/// A cell or an array kept with all that it points to, for longer than a call.
class KeptCell {
  public:
    KeptCell() = default;
    KeptCell(const KeptCell&) = delete;
    KeptCell& operator=(const KeptCell&) = delete;
    void keep(const OPER& cell);
    /// Adds the cells of a value at the end, which makes the whole one column.
    void append(const OPER& cell);
    void clear() { keep(nil_cell()); }
    const OPER& cell() const { return cell_; }

  private:
    OPER cell_ = nil_cell();
    std::vector<OPER> cells_;
    std::string texts_; ///< counted, in the order of the cells
};

/// The cells of an array as a signed count: a broken array may have negative dimensions.
long long cell_count(const OPER& array);

/// Throws the class of an error cell. Returns for a code without one, #NULL! above all: the slot then keeps what
/// it held.
void throw_error_cell(const OPER& cell, FunctionContext& context);

/// Resolves a reference into an array of its cells. Throws uncalc if one is not calculated yet, inputerror on any
/// other failure.
void coerce(HostCell& cells, const OPER& reference, FunctionContext& context);

} // namespace qx
