// Items picked out of lists: by their place, by what is beside them, by criteria.
#pragma once

#include "calendar/anyvalue.h"
#include "core/maybe.h"
#include "core/pools.h"
#include "core/switches.h"

namespace qx {

/// An item of a list by its place, from 1; a place below 1 is the first. Throws outofrange above the length.
double PickNum(int WhichOne, View<double> OutputRange);

/// The item in column i and row j of a matrix, each from 1; below 1 counts as 1. Throws outofrange outside.
double PickMatrix(View<double> OutputMatrix, int i, int j);

/// The values in ascending (Direction 0) or descending (1) order.
WorkList<double> SortNum(View<double> Values, int Direction);

/// An item, as PickNum picks it, of the sorted values.
double SortPick(int WhichOne, View<double> Values, int Direction);

/// For each of the inputs the cell of OutputRangePoly beside the first cell of InputRangePoly that equals it, number
/// with number and text with text; DefaultPoly if there is none. Throws errliblookupfailed if there is no default.
WorkList<anyvalue> Seek(View<anyvalue> InputRangePoly, View<anyvalue> OutputRangePoly, View<anyvalue> InputPoly_s,
                        const Maybe<anyvalue>& DefaultPoly);

/// The column of the matrix under the first cell of InputRangePoly that equals the input or, if InputRangePoly is as
/// long as the matrix is high and not as it is wide, the row beside it. Throws inputrangelength2 if it is neither,
/// errliblookupfailed if no cell equals the input.
WorkList<anyvalue> SeekList(View<anyvalue> InputRangePoly, View<anyvalue> OutputMatrixPoly, const anyvalue& InputPoly);

enum FindSwitches : int {
    find_values = 0,
    find_positions = 1,
    find_all_values = 2,
    find_all_positions = 3,
};
inline constexpr SwitchValue find_switch_values[] = {
    {find_values, "Values"},
    {find_positions, "Positions"},
    {find_all_values, "All values"},
    {find_all_positions, "All positions"},
};

/// The items of OutList (of InpList if that is empty), or their positions, whose counterparts in InpList meet one of
/// the criteria, or all of them with CritOpts 1. FindSwitch says whether values or positions are wanted; one cell shows
/// the first of them. Throws inputrangelength2, and what MeetsCriteria throws.
WorkList<anyvalue> FindIf(View<anyvalue> InpList, View<anyvalue> OutList, View<anyvalue> Criteria, int FindSwitch,
                          int CritOpts);

/// The different values of a list in the order in which they first occur, blank cells omitted.
WorkList<anyvalue> Unique(View<anyvalue> InputRangePoly);

} // namespace qx
