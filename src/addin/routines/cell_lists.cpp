#include "addin/routines/cell_lists.h"

#include "addin/argument_cells.h"
#include "core/options.h"
#include "core/routine.h"
#include "lists/criteria.h"
#include "lists/lists.h"
#include "numerics/range_operation.h"

#include <algorithm>
#include <optional>
#include <string>

namespace qx {

namespace {

/// The cells of a list that is required, or of what a string names.
Cells list_of(const Cell& argument, const char* name, const Routine& here, Cells::Text text = Cells::as_reference) {
    if (argument.oper->type() == xltypeMissing) here.fail<missingarg>(name);
    return Cells(argument, name, here, text);
}

/// A list on its way out: filled cell by cell, then laid along the selection of the formula.
class ListOut {
  public:
    explicit ListOut(const Routine& here) : here_(here) {}

    void add(const OPER& cell) {
        if (count_ == range_capacity) here_.fail<outofrange>("", "A list of more than ", range_capacity, " cells");
        cells_[count_++] = cell.type() == xltypeMissing ? nil_cell() : cell;
    }

    OPER laid_out() {
        static KeptCell result;
        const Target target = this->target();
        if (count_ == 0) return nil_cell();
        if (target.length > range_capacity)
            here_.fail<erroutrange>("", "Tried to output a range to a destination reference bigger than limit of ",
                                    range_capacity, " cells (", target.length, ")");
        const int length = std::max(count_, target.length);
        std::fill(cells_ + count_, cells_ + length, nil_cell());
        here_.info("Returning a 1-dimensional array of size ", count_);
        result.keep(length == 1 ? cells_[0] : array_cell(cells_, target.row ? 1 : length, target.row ? length : 1));
        return result.cell();
    }

  private:
    /// How the selection runs, and how long it is.
    struct Target {
        bool row;
        int length;
    };
    Target target() const {
        HostCell caller;
        if (Excel(xlfCaller, caller.get(), 0) != xlretSuccess || caller->type() != xltypeSRef) {
            here_.info("Target is not a reference (may well be VBA), assuming row major array orientation (y=1)");
            return {true, 1};
        }
        const XLREF& cells = caller->val.sref.ref;
        const bool row = cells.rwFirst == cells.rwLast;
        here_.info("Target(return) range is ", row ? "row-major" : "column-major");
        return {row, row ? cells.colLast - cells.colFirst + 1 : cells.rwLast - cells.rwFirst + 1};
    }

    static inline OPER cells_[range_capacity];
    const Routine& here_;
    int count_ = 0;
};

bool is_empty(const OPER& cell, bool zeros_too) {
    switch (cell.type()) {
    case xltypeNil:
    case xltypeMissing:
        return true;
    case xltypeStr:
        return view_of(cell).empty();
    case xltypeNum:
        return zeros_too && iszero(cell.val.num);
    default:
        return false;
    }
}

/// A cell as written in the formula of a criterion; false for a cell that meets none.
bool render(const OPER& cell, std::string& text) {
    text.clear();
    switch (cell.type()) {
    case xltypeNum:
        append_to_formula(text, cell.val.num);
        return true;
    case xltypeStr:
        append_to_formula(text, view_of(cell));
        return true;
    case xltypeBool:
        text = cell.val.xbool != 0 ? "TRUE" : "FALSE";
        return true;
    default:
        return false;
    }
}

} // namespace

OPER OneD(const Cell& InputRange) {
    Routine here{"OneD"};
    here.inputs(InputRange);
    const Cells input = list_of(InputRange, "InputRange", here, Cells::as_value);
    if (input.rows() > 1 && input.columns() > 1)
        here.fail<rangenot1d>("InputRange", "Input MUST be a 1-dimensional range or a single value");
    ListOut list(here);
    for (const OPER& cell : input) list.add(cell);
    if (input.count() != 1) return here.returning(list.laid_out());
    here.info("Input size of 1, returning Input");
    static KeptCell result;
    result.keep(input(1));
    return here.returning(OPER(result.cell()));
}

OPER CreateList(const Repeated<Cell, most_lists>& Items) {
    Routine here{"CreateList"};
    here.inputs(Items);
    std::optional<Cells> items[most_lists];
    int last = 0;
    for (int i = 0; i < most_lists; ++i) {
        items[i].emplace(Items.items[i], "Item", here);
        if (!items[i]->is_missing()) last = i + 1;
    }
    if (items[0]->is_missing()) here.fail<missingarg>("Item1");
    ListOut list(here);
    for (int i = 0; i < last; ++i) list.add(items[i]->single("Item", here));
    return here.returning(list.laid_out());
}

OPER JoinLists(const Repeated<Cell, most_lists>& Lists) {
    Routine here{"JoinLists"};
    here.inputs(Lists);
    if (Lists.items[0].oper->type() == xltypeMissing) here.fail<missingarg>("List1");
    std::optional<Cells> lists[most_lists];
    ListOut joined(here);
    for (int i = 0; i < most_lists; ++i) {
        lists[i].emplace(Lists.items[i], "List", here, Cells::as_reference);
        if (lists[i]->is_missing()) continue;
        here.info("List ", i + 1, " has ", lists[i]->count(), " cells");
        for (const OPER& cell : *lists[i]) joined.add(cell);
    }
    return here.returning(joined.laid_out());
}

OPER SubList(const Cell& InputRange, int FirstOne, int LastOne) {
    Routine here{"SubList"};
    here.inputs(InputRange, FirstOne, LastOne);
    const Cells input = list_of(InputRange, "InputRange", here);
    const SubRange part = sub_range(FirstOne, LastOne, input.count());
    ListOut list(here);
    for (int i = part.first; i <= part.last; ++i) list.add(input(i));
    return here.returning(list.laid_out());
}

OPER PickEveryNth(const Cell& InputRange, int Nth, int FirstOne) {
    Routine here{"PickEveryNth"};
    here.inputs(InputRange, Nth, FirstOne);
    here.at_least(Nth, 1, "Nth");
    here.at_least(FirstOne, 1, "FirstOne");
    const Cells input = list_of(InputRange, "InputRange", here);
    ListOut list(here);
    for (long long i = FirstOne; i <= input.count(); i += Nth) list.add(input(static_cast<int>(i)));
    return here.returning(list.laid_out());
}

OPER TrimList(const Cell& InputRange, int TrimOpts) {
    Routine here{"TrimList"};
    here.inputs(InputRange, TrimOpts);
    const Cells input = list_of(InputRange, "InputRange", here);
    const bool zeros_too = option_present(trim_zeros, TrimOpts);
    const auto stays = [&](int i) { return !is_empty(input(i), zeros_too); };
    int first = 1, last = input.count();
    while (last >= first && !stays(last)) --last;
    if (option_present(trim_start, TrimOpts))
        while (first <= last && !stays(first)) ++first;
    // The blanks at the start are none of the middle.
    int content = first;
    while (content <= last && !stays(content)) ++content;
    ListOut list(here);
    for (int i = first; i <= last; ++i)
        if (i < content || stays(i) || !option_present(trim_middle, TrimOpts)) list.add(input(i));
    return here.returning(list.laid_out());
}

int CountErrors(const Cell& InputRange) {
    Routine here{"CountErrors"};
    here.inputs(InputRange);
    const Cells input = list_of(InputRange, "InputRange", here, Cells::as_value);
    const auto errors =
        std::count_if(input.begin(), input.end(), [](const OPER& cell) { return cell.type() == xltypeErr; });
    return here.returning(static_cast<int>(errors));
}

OPER DoIf(const Cell& InpList, const Cell& OutList, const Range<anyvalue>& Criteria, int RangeOperation, int CritOpts) {
    Routine here{"DoIf"};
    here.inputs(InpList, OutList, Criteria, RangeOperation, CritOpts);
    here.limit(RangeOperation, operation_sum, operation_product, "RangeOperation");
    const Cells input = list_of(InpList, "InpList", here);
    const Cells output(OutList, "OutList", here, Cells::as_reference);
    const bool has_output = !output.is_missing() && output.value().type() != xltypeNil;
    if (has_output && output.count() != input.count())
        here.fail<inputrangelength2>("OutList", "The lengths differ: ", input.count(), " and ", output.count());
    here.info(option_present(all_criteria, CritOpts) ? "Condition is AND" : "Condition is OR");
    const FunctionContext context = here.context("Criteria");
    Tally tally;
    const OPER* error = nullptr;
    for (int i = 1; i <= input.count() && error == nullptr; ++i) {
        static std::string value;
        if (!render(input(i), value)) continue;
        const TraceBlock pass = here.pass(i, value);
        if (!meets_criteria(value, Criteria, CritOpts, context)) continue;
        const OPER& cell = has_output ? output(i) : input(i);
        if (cell.type() == xltypeErr && RangeOperation != operation_count)
            error = &cell;
        else if (cell.type() == xltypeNum)
            tally.add(cell.val.num);
        else
            tally.add_item();
    }
    return here.returning(error != nullptr ? OPER(*error) : number_cell(tally.result(RangeOperation)));
}

} // namespace qx
