#include "addin/routines/any_cells.h"

#include "addin/argument_cells.h"
#include "addin/text_reference.h"
#include "core/routine.h"

#include <algorithm>
#include <iterator>

namespace qx {

namespace {

OPER scratch[range_capacity];

/// Each cell of the input by a rule, in the shape of the input.
template <class Rule>
OPER each(const Cells& input, const Routine& here, const Rule& rule) {
    if (input.count() > range_capacity)
        here.fail<erroutrange>("", "Tried to output a range bigger than limit of ", range_capacity, " cells");
    static KeptCell result;
    if (input.is_array()) {
        for (int i = 1; i <= input.count(); ++i) scratch[i - 1] = rule(i, input(i));
        result.keep(array_cell(scratch, input.rows(), input.columns()));
    } else {
        result.keep(rule(1, input(1)));
    }
    return result.cell();
}

bool is_empty(const OPER& cell) {
    return cell.type() == xltypeNil || cell.type() == xltypeMissing ||
           (cell.type() == xltypeStr && view_of(cell).empty());
}

/// A cell as one that can be compared by number, text or blank; false for errors and truth values.
bool comparable(const OPER& cell, anyvalue& value) {
    switch (cell.type()) {
    case xltypeNum:
        value.setnumber(cell.val.num);
        return true;
    case xltypeStr:
        value.settext(view_of(cell));
        return true;
    case xltypeNil:
        value.setblank();
        return true;
    default:
        return false;
    }
}

bool matches(const OPER& variable, const OPER& one_case) {
    static anyvalue a, b;
    if (comparable(variable, a) && comparable(one_case, b)) return case_matches(a, b);
    if (variable.type() != one_case.type()) return false;
    if (variable.type() == xltypeErr) return variable.val.err == one_case.val.err;
    return variable.type() == xltypeBool && (variable.val.xbool != 0) == (one_case.val.xbool != 0);
}

KeptCell& formula_variable(int number) {
    static KeptCell variables[11];
    return variables[number];
}

/// The number of a formula variable.
int number_of(const Cell& VarNo, const Routine& here) {
    const Cells argument(VarNo, "VarNo", here);
    if (argument.is_missing()) return 1;
    const OPER* cell = &argument.single("VarNo", here);
    static KeptCell named;
    if (cell->type() == xltypeStr) {
        evaluate(named, view_of(*cell), here);
        cell = &named.cell();
    }
    FunctionContext context = here.context("VarNo");
    if (cell->type() == xltypeErr) throw_error_cell(*cell, context);
    const double number = cell->type() == xltypeNum ? cell->val.num : 0.0;
    if (cell->type() != xltypeNum && cell->type() != xltypeNil) throw inputerror(context);
    if (!iszero(fraction(number)))
        here.fail<errinpint>("VarNo", "Floating point number (", number, ") found instead of an integer.");
    if (number < 0.0) here.fail<errlibmin>("VarNo");
    if (number > 10.0) here.fail<errlibmax>("VarNo");
    return whole(number);
}

} // namespace

OPER Safe(const Cell& InputPoly_s, const Cell& OnErr_s, const Cell& OnNum_s, const Cell& OnNA_s, const Cell& OnName_s,
          const Cell& OnRef_s, const Cell& OnValue_s, const Cell& OnDiv0_s, const Cell& OnNull_s) {
    Routine here{"Safe"};
    here.inputs(InputPoly_s, OnErr_s, OnNum_s, OnNA_s, OnName_s, OnRef_s, OnValue_s, OnDiv0_s, OnNull_s);
    const Cells input(InputPoly_s, "InputPoly_s", here);
    if (input.is_missing()) here.fail<missingarg>("InputPoly_s");
    const Cells on_any(OnErr_s, "OnErr_s", here);
    const struct {
        std::uint16_t code;
        Cells fallback;
    } kinds[] = {
        {xlerrNum, {OnNum_s, "OnNum_s", here}},       {xlerrNA, {OnNA_s, "OnNA_s", here}},
        {xlerrName, {OnName_s, "OnName_s", here}},    {xlerrRef, {OnRef_s, "OnRef_s", here}},
        {xlerrValue, {OnValue_s, "OnValue_s", here}}, {xlerrDiv0, {OnDiv0_s, "OnDiv0_s", here}},
        {xlerrNull, {OnNull_s, "OnNull_s", here}},
    };
    return here.returning(each(input, here, [&](int i, const OPER& cell) -> OPER {
        if (cell.type() != xltypeErr) return cell;
        const auto kind = std::find_if(std::begin(kinds), std::end(kinds), [&](const auto& known) {
            return known.code == cell.val.err && !known.fallback.is_missing();
        });
        const Cells& fallback = kind == std::end(kinds) ? on_any : kind->fallback;
        if (fallback.is_missing() || fallback.count() == 0) return cell;
        here.info(error_name(cell.val.err), " in cell ", i, " replaced by ", fallback.entry(i));
        return fallback.entry(i);
    }));
}

OPER Def(const Cell& InputPoly_s, const Cell& DefaultPoly_s) {
    Routine here{"Def"};
    here.inputs(InputPoly_s, DefaultPoly_s);
    const Cells input(InputPoly_s, "InputPoly_s", here);
    const Cells fallback(DefaultPoly_s, "DefaultPoly_s", here);
    if (fallback.is_missing() || fallback.count() == 0) here.fail<missingarg>("DefaultPoly_s");
    return here.returning(each(input, here, [&](int i, const OPER& cell) -> OPER {
        if (!is_empty(cell)) return cell;
        here.info("Cell ", i, " is blank, taking the default ", fallback.entry(i));
        return fallback.entry(i);
    }));
}

OPER Ev(const Cell& Textstring) {
    Routine here{"Ev"};
    here.inputs(Textstring);
    const Cells text(Textstring, "Textstring", here);
    if (text.is_missing()) here.fail<missingarg>("Textstring");
    static KeptCell values;
    const OPER& cell = text.single("Textstring", here);
    if (cell.type() == xltypeStr)
        evaluate(values, view_of(cell), here);
    else
        values.keep(cell);
    return here.returning(OPER(values.cell()));
}

OPER SwitchX(const Cell& SwitchVar, const Cell& Default, const Pairs<Cell, Cell, most_choices>& Choices) {
    Routine here{"SwitchX"};
    here.inputs(SwitchVar, Default, Choices);
    const Cells variable(SwitchVar, "SwitchVar", here);
    if (variable.is_missing()) here.fail<missingarg>("SwitchVar");
    if (Default.oper->type() == xltypeMissing) here.fail<missingarg>("Default");
    if (Choices.first[0].oper->type() == xltypeMissing) here.fail<missingarg>("Case1");
    if (Choices.second[0].oper->type() == xltypeMissing) here.fail<missingarg>("Res1");
    const Cell* chosen = &Default;
    for (int i = 0; i < Choices.most && chosen == &Default; ++i) {
        const Cells one_case(Choices.first[i], "Case", here);
        if (!one_case.is_missing() && matches(variable.single("SwitchVar", here), one_case.single("Case", here))) {
            here.info("case ", i + 1, " decides");
            chosen = &Choices.second[i];
        }
    }
    static KeptCell result;
    result.keep(Cells(*chosen, "Res", here).value());
    return here.returning(OPER(result.cell()));
}

OPER SV(const Cell& InputPoly, const Cell& VarNo) {
    Routine here{"SV"};
    here.inputs(InputPoly, VarNo);
    const Cells input(InputPoly, "InputPoly", here);
    if (input.is_missing()) here.fail<missingarg>("InputPoly");
    KeptCell& variable = formula_variable(number_of(VarNo, here));
    variable.keep(input.value());
    return here.returning(OPER(variable.cell()));
}

OPER GV(const Cell& VarNo) {
    Routine here{"GV"};
    here.inputs(VarNo);
    return here.returning(OPER(formula_variable(number_of(VarNo, here)).cell()));
}

void clear_formula_variables() {
    for (int number = 0; number <= 10; ++number) formula_variable(number).clear();
}

} // namespace qx
