// Worksheet functions of choices, named variables and cells of any kind.
#include "lists/logic.h"
#include "addin/declare.h"
#include "addin/numbered_arguments.h"
#include "addin/routines/any_cells.h"
#include "lists/variables.h"

namespace qx::worksheet {

namespace {

constexpr Category category = Category::Miscellaneous;

constexpr Argument SwitchVar() { return {"SwitchVar", "The cell that decides: a number, text or a blank"}; }
constexpr Argument VarNo() { return optional("VarNo", "Number of the variable, 0 to 10; 1 if omitted"); }
constexpr Argument fallback(const char* name, const char* help) { return optional(name, help); }

using Choice = Numbered<most_choices>;
constexpr Choice condition{"Cond#", "Condition #, TRUE or FALSE", {Preset::boolean}};
constexpr Choice a_case{"Case#", "Case #: a value that SwitchVar may have"};
constexpr Choice result{"Res#", "Result if choice # is the first that holds", {Preset::number}};
constexpr Choice result_text{"ResText#", "Text if choice # is the first that holds", {Preset::text, 0.0, ""}};
constexpr Choice result_cells{"Res#", "Result if choice # is the first that holds: a cell or a range"};

/// The pairs of choices from one to another, at most four.
constexpr ArgumentGroup pairs(const Choice& first, const Choice& second, int from, int to) {
    ArgumentGroup group{};
    for (int n = from; n <= to; ++n) {
        group.items[group.count++] = first.number(n);
        group.items[group.count++] = second.number(n);
    }
    return group;
}

} // namespace

constexpr Function IfElse{
    .name = "IfElse",
    .category = category,
    .calls = core<qx::IfElse>,
    .help = "The number beside the first of up to twelve conditions that is true, or a default",
    .args = {{"Default", "Result if no condition is true"},
             {"Cond1", "Condition 1, TRUE or FALSE"},
             {"Res1", "Result if condition 1 is true"},
             pairs(condition, result, 2, 5),
             pairs(condition, result, 6, 9),
             pairs(condition, result, 10, 12)},
    .examples = {"IfElse(0, FALSE, 10, TRUE, 20, TRUE, 30) = 20", "IfElse(5, FALSE, 10) = 5"},
    .see_also = "IfElseR,IfElseT,Switch",
};
QX_EXPORT(IfElse, 25);

constexpr Function IfElseT{
    .name = "IfElseT",
    .category = category,
    .calls = core<qx::IfElseT>,
    .help = "The text beside the first of up to twelve conditions that is true, or a default",
    .args = {{"DefaultText", "Text if no condition is true"},
             {"Cond1", "Condition 1, TRUE or FALSE"},
             {"ResText1", "Text if condition 1 is true"},
             pairs(condition, result_text, 2, 5),
             pairs(condition, result_text, 6, 9),
             pairs(condition, result_text, 10, 12)},
    .examples = {"IfElseT(\"low\", FALSE, \"high\", TRUE, \"middle\") = \"middle\""},
    .see_also = "IfElse,IfElseRT,SwitchT",
};
QX_EXPORT(IfElseT, 25);

constexpr Function IfElseR{
    .name = "IfElseR",
    .category = category,
    .calls = core<qx::IfElseR>,
    .help = "The number beside the first true condition of a range, or a default",
    .args = {{"Default", "Result if no condition is true"},
             {"Conds", "Range of conditions, TRUE or FALSE; a blank is FALSE"},
             {"Results", "Range of results, one for each condition"}},
    .examples = {"IfElseR(0, {FALSE;TRUE;TRUE}, {10;20;30}) = 20"},
    .see_also = "IfElse,IfElseRT",
};
QX_EXPORT(IfElseR, 3);

constexpr Function IfElseRT{
    .name = "IfElseRT",
    .category = category,
    .calls = core<qx::IfElseRT>,
    .help = "The text beside the first true condition of a range, or a default",
    .args = {{"DefaultTxt", "Text if no condition is true"},
             {"Conds", "Range of conditions, TRUE or FALSE; a blank is FALSE"},
             {"ResultsText", "Range of strings, one for each condition"}},
    .examples = {"IfElseRT(\"none\", {FALSE;TRUE}, {\"a\";\"b\"}) = \"b\""},
    .see_also = "IfElseT,IfElseR",
};
QX_EXPORT(IfElseRT, 3);

constexpr Function Switch{
    .name = "Switch",
    .category = category,
    .calls = core<qx::Switch>,
    .help = "The number beside the first of up to twelve cases that equals a cell, or a default",
    .args = {SwitchVar(),
             {"Default", "Result if no case equals SwitchVar"},
             {"Case1", "Case 1: a value that SwitchVar may have"},
             {"Res1", "Result if SwitchVar equals case 1"},
             pairs(a_case, result, 2, 5),
             pairs(a_case, result, 6, 9),
             pairs(a_case, result, 10, 12)},
    .examples = {"Switch(\"b\", 0, \"a\", 1, \"b\", 2) = 2", "Switch(5, 0, \"5.00\", 1) = 1",
                 "Switch(7, -1, 5, 1) = -1"},
    .see_also = "SwitchR,SwitchT,SwitchX,IfElse",
};
QX_EXPORT(Switch, 26);

constexpr Function SwitchT{
    .name = "SwitchT",
    .category = category,
    .calls = core<qx::SwitchT>,
    .help = "The text beside the first of up to twelve cases that equals a cell, or a default",
    .args = {SwitchVar(),
             {"DefaultText", "Text if no case equals SwitchVar"},
             {"Case1", "Case 1: a value that SwitchVar may have"},
             {"ResText1", "Text if SwitchVar equals case 1"},
             pairs(a_case, result_text, 2, 5),
             pairs(a_case, result_text, 6, 9),
             pairs(a_case, result_text, 10, 12)},
    .examples = {"SwitchT(2, \"other\", 1, \"one\", 2, \"two\") = \"two\""},
    .see_also = "Switch,SwitchRT,SwitchX",
};
QX_EXPORT(SwitchT, 26);

constexpr Function SwitchR{
    .name = "SwitchR",
    .category = category,
    .calls = core<qx::SwitchR>,
    .help = "The number beside the first case of a range that equals a cell, or a default",
    .args = {SwitchVar(),
             {"Default", "Result if no case equals SwitchVar"},
             {"Cases", "Range of values that SwitchVar may have"},
             {"Results", "Range of results, one for each case"}},
    .examples = {"SwitchR(\"b\", 0, {\"a\";\"b\"}, {1;2}) = 2"},
    .see_also = "Switch,SwitchRT",
};
QX_EXPORT(SwitchR, 4);

constexpr Function SwitchRT{
    .name = "SwitchRT",
    .category = category,
    .calls = core<qx::SwitchRT>,
    .help = "The text beside the first case of a range that equals a cell, or a default",
    .args = {SwitchVar(),
             {"DefaultTxt", "Text if no case equals SwitchVar"},
             {"Cases", "Range of values that SwitchVar may have"},
             {"ResultsText", "Range of strings, one for each case"}},
    .examples = {"SwitchRT(2, \"other\", {1;2}, {\"one\";\"two\"}) = \"two\""},
    .see_also = "SwitchT,SwitchR",
};
QX_EXPORT(SwitchRT, 4);

constexpr Function SwitchX{
    .name = "SwitchX",
    .category = category,
    .calls = core<qx::SwitchX>,
    .help = "The cell or range beside the first of up to twelve cases that equals a cell, or a default; errors in "
            "the alternatives not chosen are ignored",
    .args = {{"SwitchVar", "The cell that decides: a number, text, a blank, TRUE or FALSE, or an error"},
             {"Default", "Result if no case equals SwitchVar: a cell or a range"},
             {"Case1", "Case 1: a value that SwitchVar may have"},
             {"Res1", "Result if SwitchVar equals case 1: a cell or a range"},
             pairs(a_case, result_cells, 2, 5),
             pairs(a_case, result_cells, 6, 9),
             pairs(a_case, result_cells, 10, 12)},
    .examples = {"SwitchX(2, 0, 1, #N/A, 2, \"two\") = \"two\"", "SwitchX(#N/A, 0, #N/A, \"missing\") = \"missing\""},
    .see_also = "Switch,Safe",
    .errors_as_data = true,
};
QX_EXPORT(SwitchX, 26);

constexpr Function SetNum{
    .name = "SetNum",
    .category = category,
    .calls = core<qx::SetNum>,
    .help = "Keeps a number under a name for GetNum in other cells, and returns it",
    .args = {{"Value", "The number to keep"}, optional("VarName", "", "Name of the variable")},
    .examples = {"SetNum(12.5, \"rent\") = 12.5"},
    .see_also = "GetNum,SetStr",
};
QX_EXPORT(SetNum, 2);

constexpr Function GetNum{
    .name = "GetNum",
    .category = category,
    .calls = core<qx::GetNum>,
    .help = "The number kept under a name by SetNum; the cell waits until it is set",
    .args = {{"VarName", "Name of the variable"}},
    .examples = {"SetNum(12.5, \"rent\") + GetNum(\"rent\") = 25"},
    .see_also = "SetNum,GetStr",
};
QX_EXPORT(GetNum, 1);

constexpr Function SetStr{
    .name = "SetStr",
    .category = category,
    .calls = core<qx::SetStr>,
    .help = "Keeps text under a name for GetStr in other cells, and returns it",
    .args = {{"Textstring", "The text to keep"}, optional("VarName", "", "Name of the variable")},
    .examples = {"SetStr(\"north\", \"region\") = \"north\""},
    .see_also = "GetStr,SetNum",
};
QX_EXPORT(SetStr, 2);

constexpr Function GetStr{
    .name = "GetStr",
    .category = category,
    .calls = core<qx::GetStr>,
    .help = "The text kept under a name by SetStr; the cell waits until it is set",
    .args = {{"VarName", "Name of the variable"}},
    .examples = {"SetStr(\"north\", \"region\") & GetStr(\"region\") = \"northnorth\""},
    .see_also = "SetStr,GetNum",
};
QX_EXPORT(GetStr, 1);

constexpr Function SV{
    .name = "SV",
    .category = category,
    .calls = core<qx::SV>,
    .help = "Keeps a cell or range under a number for GV in the same formula, and returns it",
    .args = {{"InputPoly", "The cell or range to keep"}, VarNo()},
    .examples = {"SV(3, 2) + GV(2) = 6"},
    .see_also = "GV,SetNum",
    .errors_as_data = true,
};
QX_EXPORT(SV, 2);

constexpr Function GV{
    .name = "GV",
    .category = category,
    .calls = core<qx::GV>,
    .help = "The cell or range that SV has kept under a number in the same formula",
    .args = {VarNo()},
    .examples = {"SV(10) * GV() = 100"},
    .see_also = "SV,GetNum",
    .errors_as_data = true,
};
QX_EXPORT(GV, 1);

constexpr Function Safe{
    .name = "Safe",
    .category = category,
    .calls = core<qx::Safe>,
    .help = "Cells with their error values replaced, by one fallback or by one for each kind of error",
    .args = {{"InputPoly_s", "A cell or range that may hold error values"},
             fallback("OnErr_s",
                      "What replaces an error that has no fallback of its own; a series is used cell by cell, "
                      "its last entry for all that follow"),
             fallback("OnNum_s", "What replaces #NUM!"),
             fallback("OnNA_s", "What replaces #N/A"),
             fallback("OnName_s", "What replaces #NAME?"),
             fallback("OnRef_s", "What replaces #REF!"),
             fallback("OnValue_s", "What replaces #VALUE!"),
             fallback("OnDiv0_s", "What replaces #DIV/0!"),
             fallback("OnNull_s", "What replaces #NULL!")},
    .examples = {"Safe(#DIV/0!, 0) = 0", "Safe({1,#N/A,#NUM!}, 0, -1) = {1,0,-1}", "Safe(#N/A) = #N/A"},
    .see_also = "Def,CountErrors",
    .errors_as_data = true,
};
QX_EXPORT(Safe, 9);

constexpr Function Def{
    .name = "Def",
    .category = category,
    .calls = core<qx::Def>,
    .help = "Cells with a default in place of each blank and each empty string",
    .args = {{"InputPoly_s", "A cell or range that may hold blanks"},
             {"DefaultPoly_s",
              "What replaces a blank; a series is used cell by cell, its last entry for all that follow"}},
    .examples = {"Def(\"\", 5) = 5", "Def({1,\"\",3}, {7,8,9}) = {1,8,3}"},
    .see_also = "Safe",
    .errors_as_data = true,
};
QX_EXPORT(Def, 2);

constexpr Function Ev{
    .name = "Ev",
    .category = category,
    .calls = core<qx::Ev>,
    .help = "The values of a reference, a name or a formula that is given as text",
    .args = {{"Textstring", "A name, a reference such as Sheet1!A1:B2 or Jan:Mar!B2, or a formula"}},
    .examples = {"Ev(\"=2*3\") = 6"},
    .see_also = "GetRef",
    .errors_as_data = true,
};
QX_EXPORT(Ev, 1);

constexpr Function OptionPresent{
    .name = "OptionPresent",
    .category = category,
    .calls = core<qx::OptionPresent>,
    .help = "True if an option is part of a sum of options",
    .args = {{"TheOption", "The option: 1, 2, 4, 8 and so on"}, {"Options", "The sum of options"}},
    .examples = {"OptionPresent(4, 5) = TRUE", "OptionPresent(2, 5) = FALSE"},
};
QX_EXPORT(OptionPresent, 2);

constexpr Function QXVer{
    .name = "QXVer",
    .category = category,
    .calls = core<qx::QXVer>,
    .help = "The version of the library",
    .examples = {"LEN(QXVer()) > 0 = TRUE"},
};
QX_EXPORT(QXVer, 0);

} // namespace qx::worksheet
