// Operations that only commands ask of a host: the contents of cells, windows and menus. Numbers as in the function and
// command tables of the published binary workbook format.
#pragma once

#include "addin/oper.h"

namespace qx {

inline constexpr int xlfActiveCell = 94;
inline constexpr int xlfAddMenu = 152;
inline constexpr int xlfDeleteMenu = 158;
inline constexpr int xlfGetBar = 182;
inline constexpr int xlfGetDocument = 188;
inline constexpr int xlfFormulaConvert = 241;
inline constexpr int xlcFormula = xlCommandBit | 96;

} // namespace qx
