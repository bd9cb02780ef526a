// Lists of cells of any kind, and counts and sums of those that meet criteria.
#include "addin/arguments.h"
#include "addin/declare.h"
#include "addin/numbered_arguments.h"
#include "addin/routines/cell_lists.h"
#include "lists/criteria.h"

namespace qx::worksheet {

namespace {

constexpr Category category = Category::RangeOperations;

constexpr Argument TheList() { return {"InputRange", "A cell or range, or the name of one as text"}; }
constexpr Numbered<most_lists> item{"Item#", "Item #: a single cell"};
constexpr Numbered<most_lists> list{"List#", "List #: a cell or range, or the name of one as text"};

} // namespace

constexpr Function OneD{
    .name = "OneD",
    .category = category,
    .calls = core<qx::OneD>,
    .help = "A row or column, laid along the selection of the formula: in a row if that is one row high, else in a "
            "column",
    .args = {{"InputRange", "A row, a column or a single cell"}},
    .examples = {"OneD({1;2;3}) = {1,2,3}", "OneD({1,2;3,4}) ! #NUM!"},
    .see_also = "TransposeNum,JoinLists",
    .errors_as_data = true,
};
QX_EXPORT(OneD, 1);

constexpr Function CreateList{
    .name = "CreateList",
    .category = category,
    .calls = core<qx::CreateList>,
    .help = "One list of up to twenty single cells, of numbers, text or error values",
    .args = {item.required(1), item.numbers(2, 8), item.numbers(9, 14), item.numbers(15, 20)},
    .examples = {"CreateList(1, \"two\", 3) = {1,\"two\",3}"},
    .see_also = "JoinLists,TrimList",
    .errors_as_data = true,
};
QX_EXPORT(CreateList, 20);

constexpr Function JoinLists{
    .name = "JoinLists",
    .category = category,
    .calls = core<qx::JoinLists>,
    .help = "Up to twenty lists one after the other, rectangles row by row",
    .args = {list.required(1), list.numbers(2, 8), list.numbers(9, 14), list.numbers(15, 20)},
    .examples = {"JoinLists({1;2}, {3;4}) = {1,2,3,4}"},
    .see_also = "CreateList,SubList,CombineLists",
    .errors_as_data = true,
};
QX_EXPORT(JoinLists, 20);

constexpr Function SubList{
    .name = "SubList",
    .category = category,
    .calls = core<qx::SubList>,
    .help = "The cells of a list from one position to another",
    .args = {TheList(),
             {"FirstOne", "Position of the first cell, counting from 1"},
             optional("LastOne", 0, "Position of the last cell; 0 for the end of the list", "the end of the list")},
    .examples = {"SubList({10;20;30;40}, 2, 3) = {20,30}", "SubList({10;20;30;40}, 3) = {30,40}"},
    .see_also = "PickEveryNth,TrimList,SumSubRange",
    .errors_as_data = true,
};
QX_EXPORT(SubList, 3);

constexpr Function PickEveryNth{
    .name = "PickEveryNth",
    .category = category,
    .calls = core<qx::PickEveryNth>,
    .help = "Every n-th cell of a list, such as the quarter ends of a list of months",
    .args = {TheList(),
             {"Nth", "The step from one cell to the next, 1 or more"},
             optional("FirstOne", 1, "Position of the first cell, counting from 1")},
    .examples = {"PickEveryNth({1;2;3;4;5;6;7}, 3) = {1,4,7}", "PickEveryNth({1;2;3;4;5;6;7}, 3, 3) = {3,6}"},
    .see_also = "SubList,TrimList",
    .errors_as_data = true,
};
QX_EXPORT(PickEveryNth, 3);

constexpr Function TrimList{
    .name = "TrimList",
    .category = category,
    .calls = core<qx::TrimList>,
    .help = "A list without the empty cells at its end, and at its start or in its middle if wanted",
    .args = {TheList(),
             optional("TrimOpts", 0,
                      "A sum: 1 empty cells at the start too, 2 those in the middle too, 4 zeros count as empty",
                      "empty cells at the end only")
                 .of(trim_option_values)},
    .examples = {"TrimList({1,\"\",3,\"\",\"\"}) = {1,\"\",3}", "TrimList({0,1,0,3,0}, 7) = {1,3}"},
    .see_also = "SubList,Unique",
    .errors_as_data = true,
};
QX_EXPORT(TrimList, 2);

constexpr Function DoIf{
    .name = "DoIf",
    .category = category,
    .calls = core<qx::DoIf>,
    .help = "The sum, average, count, greatest, smallest or product of the items of a list whose counterparts meet "
            "criteria",
    .args = {{"InpList", "The list to test, or its name as text"},
             optional("OutList", "The list to work on, as long as InpList; InpList itself if omitted"),
             {"Criteria", "Conditions such as \">5\", \"?>=A1\" or \"Office\""},
             RangeOperation(),
             optional("CritOpts", 0, "0 one of the criteria has to be met, 1 all of them", "one of them")
                 .of(criteria_option_values)},
    .examples = {"DoIf({1;5;9}, {10;50;90}, \">4\") = 140", "DoIf({\"a\";\"b\";\"a\"}, , \"a\", 2) = 2",
                 "DoIf({1;5;9}, , {\">1\";\"<9\"}, 0, 1) = 5"},
    .see_also = "FindIf,DoBetweenX,SumCats",
    .errors_as_data = true,
};
QX_EXPORT(DoIf, 5);

constexpr Function CountErrors{
    .name = "CountErrors",
    .category = Category::Miscellaneous,
    .calls = core<qx::CountErrors>,
    .help = "How many cells of a range hold an error value",
    .args = {{"InputRange", "The cells to look at"}},
    .examples = {"CountErrors({1,#N/A,\"x\",#DIV/0!}) = 2"},
    .see_also = "Safe",
    .errors_as_data = true,
};
QX_EXPORT(CountErrors, 1);

} // namespace qx::worksheet
