// Sums, averages and extremes of chosen items of lists.
#include "addin/declare.h"
#include "lists/sums.h"
#include "numerics/lookup.h"

namespace qx::worksheet {

namespace {

constexpr Category category = Category::RangeOperations;

constexpr Argument Values() { return {"Values", "The numbers"}; }
constexpr Argument Categories() { return {"Categories", "The category of each value, a number or text"}; }
constexpr Argument ChosenCategories() { return {"ChosenCategories", "The categories to include"}; }
constexpr Argument Categories2() {
    return optional("Categories2", "A second category of each value, which must be included as well");
}
constexpr Argument ChosenCategories2() {
    return optional("ChosenCategories2", "The categories to include of the second kind");
}
constexpr Argument Dates() { return {"Dates", "The date of each value"}; }

} // namespace

constexpr Function SumPos{
    .name = "SumPos",
    .category = category,
    .calls = core<qx::SumPos>,
    .help = "The sum of the positive numbers of a list",
    .args = {Values()},
    .examples = {"SumPos({5;-3;2}) = 7"},
    .see_also = "SumNeg,SumBounds",
};
QX_EXPORT(SumPos, 1);

constexpr Function SumNeg{
    .name = "SumNeg",
    .category = category,
    .calls = core<qx::SumNeg>,
    .help = "The sum of the negative numbers of a list",
    .args = {Values()},
    .examples = {"SumNeg({5;-3;2}) = -3"},
    .see_also = "SumPos,SumBounds",
};
QX_EXPORT(SumNeg, 1);

constexpr Function SumBounds{
    .name = "SumBounds",
    .category = category,
    .calls = core<qx::SumBounds>,
    .help = "The sum of those numbers of a list that lie within bounds",
    .args = {Values(), optional("MinValue", 0.0, "The least number to include; no lower bound if omitted", "no bound"),
             optional("MaxValue", 0.0, "The greatest number to include; no upper bound if omitted", "no bound")},
    .examples = {"SumBounds({1;5;10},2,10) = 15", "SumBounds({1;5;10},,5) = 6"},
    .see_also = "SumPos,SumNeg,DoBetweenX",
};
QX_EXPORT(SumBounds, 3);

constexpr Function SumSubRange{
    .name = "SumSubRange",
    .category = category,
    .calls = core<qx::SumSubRange>,
    .help = "The sum of the items of a list from one place to another",
    .args = {Values(),
             {"FirstOne", "The place of the first item to include, counting from 1"},
             optional("LastOne", 0, "The place of the last item to include; 0 for the end of the list", "the end")},
    .examples = {"SumSubRange({1;2;4;8},2,3) = 6", "SumSubRange({1;2;4;8},3) = 12"},
    .see_also = "SubList,SumBounds",
};
QX_EXPORT(SumSubRange, 3);

constexpr Function SumDiv{
    .name = "SumDiv",
    .category = category,
    .calls = core<qx::SumDiv>,
    .help = "The sum of each number divided by its divisor; a division by zero counts as 0",
    .args = {Values(),
             {"Divisors", "The divisor of each number, or one for all; a single number is divided by all divisors"}},
    .examples = {"SumDiv({10;20;5},{5;4;0}) = 7"},
    .see_also = "SumCombine,SDiv",
};
QX_EXPORT(SumDiv, 2);

constexpr Function SumCat{
    .name = "SumCat",
    .category = category,
    .calls = core<qx::SumCat>,
    .help = "The sum of the numbers that are in one category",
    .args = {Values(), Categories(), {"ChosenCategory", "The category to include"}},
    .examples = {"SumCat({10;20;30},{\"rent\";\"fees\";\"rent\"},\"rent\") = 40"},
    .see_also = "SumCats,SelCats,Unique",
};
QX_EXPORT(SumCat, 3);

constexpr Function SumCats{
    .name = "SumCats",
    .category = category,
    .calls = core<qx::SumCats>,
    .help = "The sum of the numbers whose category is among those chosen",
    .args = {Values(), Categories(), ChosenCategories(), Categories2(), ChosenCategories2()},
    .examples = {"SumCats({10;20;30},{1;2;3},{1;3}) = 40", "SumCats({10;20;30},{1;2;3},{1;3},{7;7;8},8) = 30"},
    .see_also = "SumCat,SelCats",
};
QX_EXPORT(SumCats, 5);

constexpr Function SelCats{
    .name = "SelCats",
    .category = category,
    .calls = core<qx::SelCats>,
    .help = "The numbers whose category is among those chosen",
    .args = {Values(), Categories(), ChosenCategories(), Categories2(), ChosenCategories2()},
    .examples = {"SelCats({10;20;30},{1;2;3},{1;3}) = {10,30}"},
    .see_also = "SumCats,FindIf",
};
QX_EXPORT(SelCats, 5);

constexpr Function MeanNZ{
    .name = "MeanNZ",
    .category = category,
    .calls = core<qx::MeanNZ>,
    .help = "The mean of those numbers of a list that are not zero",
    .args = {Values()},
    .examples = {"MeanNZ({4;0;8}) = 6", "MeanNZ({0;0}) = 0"},
    .see_also = "WeightAv,MeanAvg",
};
QX_EXPORT(MeanNZ, 1);

constexpr Function WeightAv{
    .name = "WeightAv",
    .category = category,
    .calls = core<qx::WeightAv>,
    .help = "The average of a list by weight",
    .args = {Values(), {"Weights", "The weight of each number; they need not sum to 1"}},
    .examples = {"WeightAv({5;8},{2;1}) = 6"},
    .see_also = "MeanNZ,SumCombine",
};
QX_EXPORT(WeightAv, 2);

constexpr Function RangeDir{
    .name = "RangeDir",
    .category = category,
    .calls = core<qx::RangeDir>,
    .help = "How a list runs: 0 ascending, 1 descending, 3 all equal, 4 mixed",
    .args = {Values()},
    .examples = {"RangeDir({1;2;2;3}) = 0", "RangeDir({3;2;1}) = 1", "RangeDir({2;2}) = 3", "RangeDir({1;2;1}) = 4"},
    .see_also = "SortNum,LookupNum",
};
QX_EXPORT(RangeDir, 1);

constexpr Function MaxBetween{
    .name = "MaxBetween",
    .category = category,
    .calls = core<qx::MaxBetween>,
    .help = "The greatest of the values that are dated between two dates; 0 if there are none",
    .args = {FromDate(), ToDate(), Dates(), Values(), InclusiveOpt()},
    .examples = {"MaxBetween(2005,2007,{2004;2005;2006;2007},{9;3;5;8}) = 5"},
    .see_also = "MinBetween,SumBetween,DoBetween",
};
QX_EXPORT(MaxBetween, 5);

constexpr Function MinBetween{
    .name = "MinBetween",
    .category = category,
    .calls = core<qx::MinBetween>,
    .help = "The smallest of the values that are dated between two dates; 0 if there are none",
    .args = {FromDate(), ToDate(), Dates(), Values(), InclusiveOpt()},
    .examples = {"MinBetween(2005,2007,{2004;2005;2006;2007},{1;3;5;2},1) = 2"},
    .see_also = "MaxBetween,SumBetween,DoBetween",
};
QX_EXPORT(MinBetween, 5);

constexpr Function DoBetweenX{
    .name = "DoBetweenX",
    .category = category,
    .calls = core<qx::DoBetweenX>,
    .help =
        "The sum, average, count and so on of those items of one list whose counterparts in another lie between two "
        "numbers",
    .args = {{"FromValue", "The first number"},
             {"ToValue", "The last number; by default it does not count itself"},
             {"InputRange", "The list that is compared with the two numbers"},
             {"OutputRange", "The list, beside InputRange, from which the items are taken"},
             InclusiveOpt(),
             RangeOperation()},
    .examples = {"DoBetweenX(1,3,{1;2;3},{10;20;30}) = 30", "DoBetweenX(1,3,{1;2;3},{10;20;30},1,1) = 20"},
    .see_also = "DoBetween,DoIf,MaxBetween",
};
QX_EXPORT(DoBetweenX, 6);

constexpr Function Intersection{
    .name = "Intersection",
    .category = category,
    .calls = core<qx::Intersection>,
    .help = "Where two curves meet: the point of the axis at which straight lines through two lists cross",
    .args = {{"InputRange", "The axis of both curves, ascending or descending"},
             {"OutputRange", "The first curve at the points of the axis"},
             {"OutputRange2", "The second curve at the points of the axis"},
             optional("WhichOne", 1, "Which of the points at which they meet, counting from 1"),
             optional("OnErrorN", no_fallback, "The result if they do not meet; an error if omitted", "an error")},
    .examples = {"Intersection({0;10},{0;100},{50;50}) = 5", "Intersection({0;1},{0;1},{2;3}) ! #NUM!",
                 "Intersection({0;1},{0;1},{2;3},1,-1) = -1"},
    .see_also = "Interp,LookupNum",
};
QX_EXPORT(Intersection, 5);

} // namespace qx::worksheet
