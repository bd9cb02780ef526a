// Functions that work on references themselves and not on the contents of their cells.
#pragma once

#include "addin/frame.h"

#include <string>

namespace qx {

/// First row, first column, last row and last column of a reference, counted from 1; of the calling formula's cells if
/// it is missing. Throws notaref for what is no reference to one rectangle.
WorkList<int> Coordinates(const Reference& TheRef);

/// The reference to the cells from FirstRow and FirstColumn to LastRow and LastColumn, where 0 stands for the first; on
/// the sheet of a name, or on the caller's if it is empty. Throws errlibmin, errlibmax outside the 65,536 rows and 256
/// columns that a reference can hold, inputref if there is no such sheet.
OPER GetRef(int FirstRow, int FirstColumn, int LastRow, int LastColumn, const std::string& SheetName);

/// A reference moved by rows down and columns to the right, with a height and a width of its own unless they are 0.
/// Throws notaref, errlibmin for a negative height or width, inputref for cells off the sheet.
OPER RefPlus(const Reference& TheRef, int Rows, int Columns, int Height, int Width);

/// The name of the sheet of a reference, of the caller's if it is missing. Throws notaref.
std::string WorkSheetName(const Reference& TheRef);

} // namespace qx
