// Lists of cells of any kind, error values among them: as data, and not as failures of the call.
//
// A result is laid along the selection of the formula: in a row if that is one row high, else in a column; the
// selection's cells past its end are empty. A string in place of a list names the cells, as evaluate() takes it, but
// for OneD, CreateList and CountErrors.
#pragma once

#include "addin/frame.h"
#include "core/range.h"
#include "core/repeated.h"
#include "core/switches.h"

namespace qx {

inline constexpr int most_lists = 20;

/// A row, a column or a single value, laid out. Throws rangenot1d for a rectangle.
OPER OneD(const Cell& InputRange);

/// One list of single cells; those omitted before the last one given are empty. Throws gotarange for several cells in
/// one, missingarg without the first.
OPER CreateList(const Repeated<Cell, most_lists>& Items);

/// Lists one after the other, rectangles row by row. Throws missingarg without the first, outofrange above 10,000
/// cells.
OPER JoinLists(const Repeated<Cell, most_lists>& Lists);

/// The cells from FirstOne to LastOne, as sub_range of lists/lists.h takes them.
OPER SubList(const Cell& InputRange, int FirstOne, int LastOne);

/// Every n-th cell, starting with FirstOne. Throws errlibmin for either below 1.
OPER PickEveryNth(const Cell& InputRange, int Nth, int FirstOne);

enum TrimOption : int { trim_start = 1, trim_middle = 2, trim_zeros = 4 };
inline constexpr SwitchValue trim_option_values[] = {
    {0, "At the end"}, {trim_start, "At the start too"}, {trim_middle, "In the middle too"}, {trim_zeros, "Zeros too"}};

/// The list without the empty cells and empty texts at its end; by the sum TrimOpts also without those at its start, in
/// its middle, and with zeros taken for empty.
OPER TrimList(const Cell& InputRange, int TrimOpts);

/// The number of error values.
int CountErrors(const Cell& InputRange);

/// A RangeOperation over the cells of OutList, or of InpList if it is missing, whose counterparts in InpList meet the
/// criteria of lists/criteria.h. Blank cells and error values meet none. An error value among the cells worked on is
/// the result, but for a count; texts and truth values only count. Throws inputrangelength2, invalidcriteria, errinput.
OPER DoIf(const Cell& InpList, const Cell& OutList, const Range<anyvalue>& Criteria, int RangeOperation, int CritOpts);

} // namespace qx
