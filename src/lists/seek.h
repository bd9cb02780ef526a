// Items picked out of lists: by their place, by what stands beside them, by criteria.
#pragma once

#include "calendar/anyvalue.h"
#include "core/maybe.h"
#include "core/range.h"

namespace qx {

/// An item of a list by its place, from 1; a place below 1 is the first. Throws outofrange above the length.
double PickNum(int WhichOne, const Range<double>& OutputRange);

/// The item in column i and row j of a matrix, each from 1; below 1 counts as 1. Throws outofrange outside.
double PickMatrix(const Range<double>& OutputMatrix, int i, int j);

/// The values in ascending (Direction 0) or descending (1) order.
const Range<double>& SortNum(const Range<double>& Values, int Direction);

/// An item, as PickNum picks it, of the sorted values.
double SortPick(int WhichOne, const Range<double>& Values, int Direction);

/// For each of the inputs the cell of OutputRangePoly beside the first cell of InputRangePoly that equals it, number
/// with number and text with text; DefaultPoly if there is none. Throws errliblookupfailed if there is no default.
const Range<anyvalue>& Seek(const Range<anyvalue>& InputRangePoly, const Range<anyvalue>& OutputRangePoly,
                            const Range<anyvalue>& InputPoly_s, const Maybe<anyvalue>& DefaultPoly);

/// The column of the matrix under the first cell of InputRangePoly that equals the input or, if InputRangePoly is as
/// long as the matrix is high and not as it is wide, the row beside it. Throws inputrangelength2 if it is neither,
/// errliblookupfailed if no cell equals the input.
const Range<anyvalue>& SeekList(const Range<anyvalue>& InputRangePoly, const Range<anyvalue>& OutputMatrixPoly,
                                const anyvalue& InputPoly);

enum FindSwitches : int {
    find_values = 0,
    find_positions = 1,
    find_all_values = 2,
    find_all_positions = 3,
};

/// The items of OutList (of InpList if that is empty), or their positions, whose counterparts in InpList meet one of
/// the criteria, or all of them with CritOpts 1. FindSwitch says whether values or positions are wanted; one cell shows
/// the first of them. Throws inputrangelength2, and what MeetsCriteria throws.
const Range<anyvalue>& FindIf(const Range<anyvalue>& InpList, const Range<anyvalue>& OutList,
                              const Range<anyvalue>& Criteria, int FindSwitch, int CritOpts);

/// The different values of a list in the order in which they first occur, blank cells left out.
const Range<anyvalue>& Unique(const Range<anyvalue>& InputRangePoly);

} // namespace qx
