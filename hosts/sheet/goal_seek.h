// Goal seek: the value of one cell that brings another, a formula's, to a target.
#pragma once

#include "hosts/sheet/value.h"

namespace qx::sheet {

class Workbook;

/// Varies the number in a cell until a formula's cell shows the target, starting from the present number. Returns false
/// and leaves the cell as it was if no value is found. Throws std::invalid_argument if the one holds no formula, or the
/// other does.
bool goal_seek(Workbook& book, CellAddress formula, double target, CellAddress changing);

} // namespace qx::sheet
