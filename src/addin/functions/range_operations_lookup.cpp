// Lookups, picks and searches in lists.
#include "addin/declare.h"
#include "lists/criteria.h"
#include "lists/lists.h"
#include "lists/seek.h"
#include "numerics/lookup.h"

namespace qx::worksheet {

namespace {

constexpr Category category = Category::RangeOperations;

constexpr Argument InputRange() { return {"InputRange", "The list in which to look"}; }
constexpr Argument OutputRange() {
    return {"OutputRange", "The list, beside InputRange, from which the result is taken"};
}
constexpr Argument OutputMatrix() { return {"OutputMatrix", "The rectangle of numbers from which to pick"}; }
constexpr Argument InputVal(const char* name) { return {name, "The value to look for"}; }
constexpr Argument WhichOne() { return {"WhichOne", "Which item, counting from 1; below 1 is the first"}; }
constexpr Argument SortedDirection() {
    return optional("Direction", 0, "0 ascending, 1 descending", "ascending").of(direction_values);
}
constexpr Argument LookupSwitch(const char* name = "LookupSwitch") {
    return optional(
               name, 0,
               "0 last item at or below the value, 1 last below, 2 first at or above, 3 first above, 4 first equal, 5 "
               "first not equal, 6 last equal, 7 last not equal, 8 closest",
               "DESCEND the list, find first value LESS THAN OR EQUAL to Input Value")
        .of(lookup_mode_values);
}
constexpr Argument LookupTol() {
    return optional("LookupTol", no_lookup_tolerance,
                    "How far the item found may lie from the value; 0 or below for any distance", "no tolerance");
}
constexpr Argument OnErrorN() {
    return optional("OnErrorN", no_fallback, "The result if nothing is found; an error if omitted", "an error");
}

} // namespace

constexpr Function LookupNum{
    .name = "LookupNum",
    .category = category,
    .calls = core<qx::LookupNum>,
    .help = "Looks a number up in one list and returns its counterpart in another",
    .args = {InputRange(), OutputRange(), InputVal("InputValue"), LookupSwitch(), LookupTol(), OnErrorN()},
    .examples = {"LookupNum({1;2;3},{10;20;30},2.5) = 20", "LookupNum({1;2;3},{10;20;30},2.5,2) = 30",
                 "LookupNum({1;2;3},{10;20;30},0.5) ! #NUM!", "LookupNum({1;2;3},{10;20;30},0.5,0,-1,0) = 0"},
    .see_also = "LookupN,LookupNIndex,SeekNum,LookUpNum2D,DescribeLookup",
};
QX_EXPORT(LookupNum, 6);

constexpr Function LookupN{
    .name = "LookupN",
    .category = category,
    .calls = twin<qx::LookupN>,
    .help = "Looks a number, or each of several, up in one list and returns its counterpart in another",
    .args = {InputVal("InputVal"), InputRange(), OutputRange(), LookupSwitch(), LookupTol(), OnErrorN()},
    .examples = {"LookupN(2.5,{1;2;3},{10;20;30}) = 20", "LookupN({1.5;3.5},{1;2;3},{10;20;30}) = {10,30}"},
    .see_also = "LookupNum,LookupNIndex,DescribeLookup",
};
QX_EXPORT(LookupN, 6);

constexpr Function LookupNIndex{
    .name = "LookupNIndex",
    .category = category,
    .calls = core<qx::LookupNIndex>,
    .help = "Looks a number up in a list and returns its position, counting from 1",
    .args = {InputVal("InputVal"), InputRange(), LookupSwitch(), LookupTol(), OnErrorN()},
    .examples = {"LookupNIndex(2.5,{1;2;3}) = 2", "LookupNIndex(2.6,{1;2;3},8) = 3"},
    .see_also = "LookupN,PickNum,DescribeLookup",
};
QX_EXPORT(LookupNIndex, 5);

constexpr Function LookUpNum2D{
    .name = "LookUpNum2D",
    .category = category,
    .calls = core<qx::LookUpNum2D>,
    .help = "Looks two numbers up on the axes of a table and returns the item where they cross",
    .args = {OutputMatrix(),
             {"AxisRangeX", "The values along the top of the table, one for each column"},
             {"AxisRangeY", "The values down the side of the table, one for each row"},
             {"InputValueX", "The value to look for along the top"},
             {"InputValueY", "The value to look for down the side"},
             LookupSwitch()},
    .examples = {"LookUpNum2D({1,2,3;4,5,6},{10,20,30},{100;200},25,250) = 5"},
    .see_also = "LookupNum,PickMatrix,SeekList,DescribeLookup",
};
QX_EXPORT(LookUpNum2D, 6);

constexpr Function LookUpB{
    .name = "LookUpB",
    .category = Category::Compatibility,
    .calls = core<qx::LookUpB>,
    .help =
        "Looks a number up in one list and returns its counterpart in another. Kept for older models: use LookupNum",
    .args = {InputRange(), OutputRange(), InputVal("InputValue"), LookupSwitch("Look_UpSwitch")},
    .examples = {"LookUpB({1;2;3},{10;20;30},2.5) = 20"},
    .see_also = "LookupNum",
};
QX_EXPORT(LookUpB, 4);

constexpr Function DescribeLookup{
    .name = "DescribeLookup",
    .category = Category::Miscellaneous,
    .calls = core<qx::DescribeLookup>,
    .help = "The LookupSwitch of the lookup functions in words",
    .args = {Argument{"LookupSwitch", "0 to 8"}.of(lookup_mode_values)},
    .examples = {"DescribeLookup(4) = \"ASCEND the list, find first value EQUAL to Input Value\""},
    .see_also = "LookupNum,LookupNIndex",
};
QX_EXPORT(DescribeLookup, 1);

constexpr Function PickNum{
    .name = "PickNum",
    .category = category,
    .calls = core<qx::PickNum>,
    .help = "An item of a list of numbers, by its place",
    .args = {WhichOne(), {"OutputRange", "The list"}},
    .examples = {"PickNum(2,{10;20;30}) = 20", "PickNum(4,{10;20;30}) ! #NUM!"},
    .see_also = "PickMatrix,SortPick,LookupNIndex",
};
QX_EXPORT(PickNum, 2);

constexpr Function PickMatrix{
    .name = "PickMatrix",
    .category = category,
    .calls = core<qx::PickMatrix>,
    .help = "An item of a rectangle of numbers, by its column and row",
    .args = {OutputMatrix(), {"i", "The column, counting from 1"}, {"j", "The row, counting from 1"}},
    .examples = {"PickMatrix({1,2,3;4,5,6},3,2) = 6"},
    .see_also = "PickNum,LookUpNum2D",
};
QX_EXPORT(PickMatrix, 3);

constexpr Function SeekNum{
    .name = "SeekNum",
    .category = category,
    .calls = core<qx::SeekNum>,
    .help = "The counterpart in one list of the first number of another that equals the value sought",
    .args = {InputRange(), OutputRange(), InputVal("InputValue")},
    .examples = {"SeekNum({3;1;2;1},{30;10;20;11},1) = 10"},
    .see_also = "Seek,LookupNum",
};
QX_EXPORT(SeekNum, 3);

constexpr Function Seek{
    .name = "Seek",
    .category = category,
    .calls = core<qx::Seek>,
    .help = "For each value sought, a number or text, the counterpart in one list of the first cell of another that "
            "equals it",
    .args = {{"InputRangePoly", "The list in which to look, of numbers or text"},
             {"OutputRangePoly", "The list, beside InputRangePoly, from which the results are taken"},
             {"InputPoly_s", "The value or values to look for"},
             optional("DefaultPoly", "The result for a value that is not found; an error if omitted")},
    .examples = {"Seek({\"a\";\"b\"},{1;2},\"b\") = 2", "Seek({\"a\";\"b\"},{1;2},{\"b\";\"c\"},0) = {2,0}"},
    .see_also = "SeekList,SeekNum,FindIf",
};
QX_EXPORT(Seek, 4);

constexpr Function SeekList{
    .name = "SeekList",
    .category = category,
    .calls = core<qx::SeekList>,
    .help = "A whole column (or row) of a table, found by its heading",
    .args = {{"InputRangePoly", "The headings: one for each column of the table or, failing that, one for each row"},
             {"OutputMatrixPoly", "The table"},
             {"InputPoly", "The heading to look for, a number or text"}},
    .examples = {"SeekList({\"a\",\"b\",\"c\"},{1,2,3;4,5,6},\"b\") = {2,5}",
                 "SeekList({\"x\";\"y\"},{1,2,3;4,5,6},\"y\") = {4,5,6}"},
    .see_also = "Seek,LookUpNum2D",
};
QX_EXPORT(SeekList, 3);

constexpr Function FindIf{
    .name = "FindIf",
    .category = category,
    .calls = core<qx::FindIf>,
    .help = "The items of a list that meet criteria, or their counterparts in another list, or their positions",
    .args = {{"InpList", "The list whose items are tested"},
             optional("OutList", "The list, beside InpList, from which the results are taken; InpList if omitted"),
             {"Criteria",
              "One criterion or several: ?>5 with ? for the item, or >5, or a number or text to be equal to"},
             optional("FindSwitch", 0, "0 values, 1 positions, 2 all values, 3 all positions",
                      "First matched value, or if an array is returned, all matched values in order")
                 .of(find_switch_values),
             optional("CritOpts", 0, "0 one criterion has to be met, 1 all of them", "Criteria are OR Criteria")
                 .of(criteria_option_values)},
    .examples = {"FindIf({1;5;9},,\">4\") = {5,9}", "FindIf({1;5;9},{\"a\";\"b\";\"c\"},{\">4\";\"<9\"},0,1) = \"b\"",
                 "FindIf({1;5;9},,\"?>4\",3) = {2,3}"},
    .see_also = "DoIf,Seek",
};
QX_EXPORT(FindIf, 5);

constexpr Function SortNum{
    .name = "SortNum",
    .category = category,
    .calls = core<qx::SortNum>,
    .help = "Numbers sorted",
    .args = {{"Values", "The numbers"}, SortedDirection()},
    .examples = {"SortNum({3;1;2}) = {1,2,3}", "SortNum({3;1;2},1) = {3,2,1}"},
    .see_also = "SortPick,SortText,RangeDir",
};
QX_EXPORT(SortNum, 2);

constexpr Function SortPick{
    .name = "SortPick",
    .category = category,
    .calls = core<qx::SortPick>,
    .help = "An item of the sorted list of some numbers: the second smallest, or the third largest",
    .args = {WhichOne(), {"Values", "The numbers"}, SortedDirection()},
    .examples = {"SortPick(2,{3;1;2}) = 2", "SortPick(1,{3;1;2},1) = 3"},
    .see_also = "SortNum,PickNum",
};
QX_EXPORT(SortPick, 3);

constexpr Function SortText{
    .name = "SortText",
    .category = category,
    .calls = core<qx::SortText>,
    .help = "Text sorted alphabetically, small and capital letters alike, empty cells last",
    .args = {{"Texts", "The strings to sort"}, SortedDirection()},
    .examples = {"SortText({\"rent\";\"Costs\";\"fees\"}) = {\"Costs\",\"fees\",\"rent\"}"},
    .see_also = "SortNum,Unique",
};
QX_EXPORT(SortText, 2);

} // namespace qx::worksheet
