// Reading cells: what all conversions share.
#pragma once

#include "addin/host.h"
#include "core/context.h"

#include <string>

namespace qx {

inline constexpr const char* type_warning =
    "The TYPE of cell or cell reference that you input is not valid as far as Excel is concerned.";
inline constexpr const char* unexpected_reference =
    "A reference type was received. which was not expected.  It's not critical, but it needs looking at.";

/// The text of a text cell.
std::string text_in(const OPER& cell);

/// The cells of an array as a signed count: a broken array may have negative dimensions.
long long cell_count(const OPER& array);

/// Throws the class of an error cell. Returns for a code without one, #NULL! above all: the slot then keeps what
/// it held.
void throw_error_cell(const OPER& cell, FunctionContext& context);

/// Resolves a reference into an array of its cells. Throws uncalc if one is not calculated yet, inputerror on any
/// other failure.
void coerce(HostCell& cells, const OPER& reference, FunctionContext& context);

} // namespace qx
