// Lists made out of lists of numbers and texts.
#include "addin/declare.h"
#include "core/combine.h"
#include "lists/lists.h"
#include "lists/seek.h"

namespace qx::worksheet {

namespace {

constexpr Category category = Category::RangeOperations;

constexpr Argument List(const char* name) { return {name, "A list of numbers, or one number for a whole list"}; }
constexpr Argument OptionalList(const char* name) { return optional(name, "A further list of numbers, or one number"); }

} // namespace

constexpr Function ApplyToList{
    .name = "ApplyToList",
    .category = category,
    .calls = core<qx::ApplyToList>,
    .help = "Each number of a list combined with one number: multiplied by it, or added to it, and so on",
    .args = {CombineBy(), {"Values", "The numbers"}, {"Value", "The number to combine each of them with"}},
    .examples = {"ApplyToList(0,{100;200},1.05) ~ {105,210} 1e-9", "ApplyToList(4,{-5;7},0) = {0,7}"},
    .see_also = "CombineLists,DescribeCombineSwitch",
};
QX_EXPORT(ApplyToList, 3);

constexpr Function CombineLists{
    .name = "CombineLists",
    .category = category,
    .calls = core<qx::CombineLists>,
    .help = "Two to four lists combined item by item: multiplied, added, and so on",
    .args = {CombineBy(), List("Values"), List("Values2"), OptionalList("Values3"), OptionalList("Values4")},
    .examples = {"CombineLists(2,{1;2;3},{10;20;30},{100;200;300}) = {111,222,333}",
                 "CombineLists(1,{10;20},{5;0}) = {2,0}"},
    .see_also = "SumCombine,ApplyToList,DescribeCombineSwitch",
};
QX_EXPORT(CombineLists, 5);

constexpr Function SumCombine{
    .name = "SumCombine",
    .category = category,
    .calls = core<qx::SumCombine>,
    .help = "The sum of two to four lists that are combined item by item, such as a sum of products",
    .args = {CombineBy(), List("Values"), List("Values2"), OptionalList("Values3"), OptionalList("Values4")},
    .examples = {"SumCombine(0,{1;2;3},{10;20;30}) = 140"},
    .see_also = "CombineLists,SumDiv,WeightAv",
};
QX_EXPORT(SumCombine, 5);

constexpr Function DescribeCombineSwitch{
    .name = "DescribeCombineSwitch",
    .category = Category::Miscellaneous,
    .calls = core<qx::DescribeCombineSwitch>,
    .help = "The CombineSwitch of the functions that combine lists or steps in words",
    .args = {Argument{"CombineSwitch", "0 to 7"}.of(combine_switch_values)},
    .examples = {"DescribeCombineSwitch(0) = \"Multiply\"", "DescribeCombineSwitch(8) ! #NUM!"},
    .see_also = "CombineLists,SumCombine",
};
QX_EXPORT(DescribeCombineSwitch, 1);

constexpr Function TransposeNum{
    .name = "TransposeNum",
    .category = category,
    .calls = core<qx::TransposeNum>,
    .help = "A rectangle of numbers with its rows and columns exchanged",
    .args = {{"Values", "The rectangle"}},
    .examples = {"TransposeNum({1,2,3;4,5,6}) = {1,4;2,5;3,6}"},
    .see_also = "OneD,PickMatrix",
};
QX_EXPORT(TransposeNum, 1);

constexpr Function Unique{
    .name = "Unique",
    .category = category,
    .calls = core<qx::Unique>,
    .help = "The different values of a list, numbers or text, in the order in which they first occur",
    .args = {{"InputRangePoly", "The list; its blank cells are passed over"}},
    .examples = {"Unique({\"a\";\"b\";\"a\";\"c\"}) = {\"a\",\"b\",\"c\"}"},
    .see_also = "SortText,SumCat",
};
QX_EXPORT(Unique, 1);

constexpr Function CRC_fl{
    .name = "CRC_fl",
    .category = category,
    .calls = core<qx::CRC_fl>,
    .help = "A check value of the library's cyclic redundancy sums: the same for any list",
    .args = {{"InputRange", "Any numbers"}},
    .examples = {"CRC_fl({1;2}) = CRC_fl(7)"},
    .see_also = "QXVer",
};
QX_EXPORT(CRC_fl, 1);

constexpr Function AddGaps{
    .name = "AddGaps",
    .category = Category::Miscellaneous,
    .calls = core<qx::AddGaps>,
    .help = "A list that starts with a value and adds each gap in turn",
    .args = {{"FirstValue", "The first item"}, {"Gaps", "The differences between consecutive items"}},
    .examples = {"AddGaps(100,{5;10;-20}) = {100,105,115,95}"},
    .see_also = "DiffGaps",
};
QX_EXPORT(AddGaps, 2);

constexpr Function DiffGaps{
    .name = "DiffGaps",
    .category = Category::Miscellaneous,
    .calls = core<qx::DiffGaps>,
    .help = "The gaps between the neighbours of a list: each value less the one before",
    .args = {{"Values", "The list"}},
    .examples = {"DiffGaps({100;105;115;95}) = {5,10,-20}"},
    .see_also = "AddGaps",
};
QX_EXPORT(DiffGaps, 1);

constexpr Function RoundList{
    .name = "RoundList",
    .category = Category::Miscellaneous,
    .calls = core<qx::RoundList>,
    .help = "A list rounded to multiples so that it still sums to its rounded total",
    .args = {{"Values", "The numbers to round"},
             optional("Multiple", 1.0, "The step to round to, such as 0.01; its sign does not matter"),
             optional("KeepTotal", true, "FALSE to round each number by itself")},
    .examples = {"RoundList({33.4;33.3;33.3}) = {34,33,33}", "RoundList({0.5;1.5;2.5}, 1, FALSE) = {1,2,3}",
                 "SUM(RoundList({1.25;1.25;1.25;1.25}, 0.5)) = 5"},
    .see_also = "SRound,Disperse",
};
QX_EXPORT(RoundList, 3);

constexpr Function Disperse{
    .name = "Disperse",
    .category = Category::Miscellaneous,
    .calls = core<qx::Disperse>,
    .help = "A whole number spread over positions of a list as evenly as whole numbers can be",
    .args = {{"Tot", "The whole number to spread"},
             {"iStart", "The first position that takes part, counting from 1; 0 before it"},
             {"iFinish", "The last position, where the list ends"}},
    .examples = {"Disperse(10, 1, 4) = {2,3,2,3}", "Disperse(6, 3, 5) = {0,0,2,2,2}"},
    .see_also = "RoundList",
};
QX_EXPORT(Disperse, 3);

} // namespace qx::worksheet
