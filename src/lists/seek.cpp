#include "lists/seek.h"

#include "core/options.h"
#include "core/routine.h"
#include "lists/criteria.h"

#include <algorithm>
#include <compare>

namespace qx {

namespace {

/// The item of a place, of which one below 1 is the first.
double pick(int WhichOne, View<double> list) { return list.get(std::max(WhichOne, 1)); }

void sort_copy(Range<double>& sorted, View<double> Values, int Direction) {
    sorted = Values;
    sorted.setname(Values.name());
    sorted.heapsort(Direction == ascending);
}

/// The place of the first cell that equals the one sought, or 0.
int place_of(const anyvalue& sought, View<anyvalue> list) {
    for (int i = 1; i <= list.size(); ++i)
        if (list.get(i) == sought) return i;
    return 0;
}

/// A new item at the end of a list.
anyvalue& next_of(Range<anyvalue>& list) {
    list.dimension(list.size() + 1);
    return list(list.size());
}

/// True for a list without content: omitted, or nothing but blank cells.
bool is_empty(View<anyvalue> list) { return list.size() == 0 || list.lastnonblank() == 0; }

} // namespace

double PickNum(int WhichOne, View<double> OutputRange) {
    Routine here{"PickNum"};
    here.inputs(WhichOne, OutputRange);
    return here.returning(pick(WhichOne, OutputRange));
}

double PickMatrix(View<double> OutputMatrix, int i, int j) {
    Routine here{"PickMatrix"};
    here.inputs(OutputMatrix, i, j);
    return here.returning(OutputMatrix.getxy(std::max(i, 1), std::max(j, 1)));
}

WorkList<double> SortNum(View<double> Values, int Direction) {
    Routine here{"SortNum"};
    here.inputs(Values, Direction);
    here.limit(Direction, ascending, descending, "Direction");
    WorkList<double> sorted;
    sort_copy(sorted, Values, Direction);
    here.returning();
    return sorted;
}

double SortPick(int WhichOne, View<double> Values, int Direction) {
    Routine here{"SortPick"};
    here.inputs(WhichOne, Values, Direction);
    here.limit(Direction, ascending, descending, "Direction");
    WorkList<double> sorted;
    sort_copy(sorted, Values, Direction);
    return here.returning(pick(WhichOne, sorted));
}

WorkList<anyvalue> Seek(View<anyvalue> InputRangePoly, View<anyvalue> OutputRangePoly, View<anyvalue> InputPoly_s,
                        const Maybe<anyvalue>& DefaultPoly) {
    Routine here{"Seek"};
    here.inputs(InputRangePoly, OutputRangePoly, InputPoly_s, DefaultPoly);
    WorkList<anyvalue> results;
    results->dimension(InputPoly_s.size());
    for (int i = 1; i <= InputPoly_s.size(); ++i) {
        const auto pass = here.pass(i, InputPoly_s.get(i));
        const int found = place_of(InputPoly_s.get(i), InputRangePoly);
        if (found > 0) {
            here.info("Found at position ", found);
            results(i) = OutputRangePoly.get(found);
            continue;
        }
        if (DefaultPoly.is_missing())
            here.fail<errliblookupfailed>("InputPoly_s", "Failed to find what we were looking for and no default "
                                                         "specified, so its going to have to be an error");
        here.info("Failed to find what we were after, so we are returning the default instead");
        results(i) = DefaultPoly.value;
    }
    here.returning();
    return results;
}

WorkList<anyvalue> SeekList(View<anyvalue> InputRangePoly, View<anyvalue> OutputMatrixPoly, const anyvalue& InputPoly) {
    Routine here{"SeekList"};
    here.inputs(InputRangePoly, OutputMatrixPoly, InputPoly);
    const int columns = OutputMatrixPoly.getcolumns(), rows = OutputMatrixPoly.getrows();
    const bool across = InputRangePoly.size() == columns;
    if (!across && InputRangePoly.size() != rows)
        here.fail<inputrangelength2>("InputRangePoly",
                                     "The length of InputRangePoly must be the same as the x (horizontal) dimension of "
                                     "OutputMatrixPoly, and it is not (",
                                     InputRangePoly.size(), " != ", columns, ")");
    const int found = place_of(InputPoly, InputRangePoly);
    if (found == 0) here.fail<errliblookupfailed>("InputPoly", "Lookup Failed");
    here.info("Found at position ", found, across ? ", returning the column" : ", returning the row");
    WorkList<anyvalue> results;
    results->dimension(across ? rows : columns);
    for (int i = 1; i <= results.size(); ++i)
        results(i) = across ? OutputMatrixPoly.getxy(found, i) : OutputMatrixPoly.getxy(i, found);
    here.returning();
    return results;
}

WorkList<anyvalue> FindIf(View<anyvalue> InpList, View<anyvalue> OutList, View<anyvalue> Criteria, int FindSwitch,
                          int CritOpts) {
    Routine here{"FindIf"};
    here.inputs(InpList, OutList, Criteria, FindSwitch, CritOpts);
    here.limit(FindSwitch, find_values, find_all_positions, "FindSwitch");
    const View<anyvalue> values = is_empty(OutList) ? InpList : OutList;
    InpList.checksamesize(values);
    here.info(option_present(all_criteria, CritOpts) ? "Condition is AND" : "Condition is OR");
    const bool positions = FindSwitch == find_positions || FindSwitch == find_all_positions;
    const FunctionContext context = here.context("Criteria");
    WorkList<anyvalue> found;
    found->dimension(0);
    for (int i = 1; i <= InpList.size(); ++i) {
        const auto pass = here.pass(i, InpList.get(i));
        if (!meets_criteria(InpList.get(i), Criteria, CritOpts, context)) continue;
        if (positions)
            next_of(found).setnumber(i);
        else
            next_of(found) = values.get(i);
    }
    here.returning();
    return found;
}

WorkList<anyvalue> Unique(View<anyvalue> InputRangePoly) {
    Routine here{"Unique"};
    here.inputs(InputRangePoly);
    // Equal items are together in order; the first of each, in the order of the list, are the result.
    static int order[range_capacity];
    int* end = order;
    for (int i = 1; i <= InputRangePoly.size(); ++i)
        if (!InputRangePoly.get(i).isblank()) *end++ = i;
    const auto item = [&](int position) -> const anyvalue& { return InputRangePoly.get(position); };
    std::sort(order, end, [&](int a, int b) {
        const anyvalue &x = item(a), &y = item(b);
        if (x.kind() != y.kind()) return x.kind() < y.kind();
        const std::weak_ordering by_value =
            x.istext() ? std::weak_ordering(x.text() <=> y.text()) : std::weak_order(x.number(), y.number());
        return by_value != 0 ? by_value < 0 : a < b;
    });
    int* last = order;
    for (const int* at = order; at < end; ++at)
        if (at == order || !(item(*at) == item(at[-1])))
            *last++ = *at;
        else
            last[-1] = std::min(last[-1], *at); // numbers within the tolerance may be out of their order
    std::sort(order, last);
    WorkList<anyvalue> values;
    values->dimension(0);
    for (const int* at = order; at < last; ++at) next_of(values) = item(*at);
    here.returning();
    return values;
}

} // namespace qx
