// Functions that take cells of any kind as data, error values among them.
#pragma once

#include "addin/frame.h"
#include "core/pairs.h"
#include "lists/logic.h"

namespace qx {

/// The cells of the input, each error replaced by the fallback for its kind or by that for all kinds; an error without
/// either stays. Fallbacks are series: entry i serves cell i, the last entry all that follow. Throws missingarg without
/// an input, erroutrange above 10000 cells.
OPER Safe(const Cell& InputPoly_s, const Cell& OnErr_s, const Cell& OnNum_s, const Cell& OnNA_s, const Cell& OnName_s,
          const Cell& OnRef_s, const Cell& OnValue_s, const Cell& OnDiv0_s, const Cell& OnNull_s);

/// The cells of the input, each blank and each empty string replaced by the default, a series. Without an input the
/// first default.
OPER Def(const Cell& InputPoly_s, const Cell& DefaultPoly_s);

/// The values of the reference, name or formula in a cell of text; any other is returned as it is. Throws as
/// evaluate() does.
OPER Ev(const Cell& Textstring);

/// The result beside the first case equal to the variable, or the default, whatever they are. Numbers and texts compare
/// as in Switch, errors and truth values with their like. Throws gotarange for a variable or a case of several cells.
OPER SwitchX(const Cell& SwitchVar, const Cell& Default, const Pairs<Cell, Cell, most_choices>& Choices);

/// Keeps a value under a number from 0 to 10, 1 if omitted, and returns it; GV gives what was kept last, a blank
/// if nothing was. VarNo as text is evaluated as by Ev. Throws errlibmin, errlibmax, errinpint.
OPER SV(const Cell& InputPoly, const Cell& VarNo);
OPER GV(const Cell& VarNo);

/// Blanks all that SV has kept.
void clear_formula_variables();

} // namespace qx
