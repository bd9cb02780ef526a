// Texts that stand for cells: a name, a reference or a formula, looked up by the host.
#pragma once

#include "addin/cells.h"
#include "core/routine.h"

#include <string_view>

namespace qx {

/// The values of the reference, name or formula in a string. A reference to one range on several sheets,
/// "Jan:Mar!B2:B5", gives one column, sheet by sheet. Throws errinput for a string that is no reference, name or
/// formula and for a reference that is not valid, uncalc if a cell is still to be calculated.
void evaluate(KeptCell& values, std::string_view text, const Routine& here);

} // namespace qx
