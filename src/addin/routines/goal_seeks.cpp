#include "addin/routines/goal_seeks.h"

#include "addin/host.h"
#include "core/routine.h"

namespace qx {

namespace {

void require_references(const Routine& here, const Reference& TargetCell, const Reference& ChangingCell) {
    const auto may_refer = [](const Reference& cell) {
        const std::uint16_t type = cell.oper->type();
        return type == xltypeRef || type == xltypeSRef || type == xltypeMulti;
    };
    if (!may_refer(TargetCell)) here.fail<inputerror>("TargetCell", "Target Cell must be a reference to a cell.");
    if (!may_refer(ChangingCell))
        here.fail<inputerror>("ChangingCell", "The Changing Cell must be a reference to a cell that is editable, or "
                                              "changeable, by the GoalSeek.  It can't be a formula.");
}

/// Asks the host to convert a cell to a type. Throws uncalc; a message is for other failures.
void coerce(const Routine& here, const char* variable, const OPER* cell, std::uint16_t type, HostCell& result,
            const char* message = "") {
    const int code = Excel(xlCoerce, result.get(), 2, const_cast<OPER*>(cell), TempInt(type));
    if (code == xlretUncalced) here.fail<uncalc>(variable);
    if (code != xlretSuccess) here.fail<inputerror>(variable, message);
}

KeptReference kept(const Routine& here, const char* variable, const Reference& reference, const char* message) {
    HostCell cell;
    coerce(here, variable, reference.oper, xltypeRef, cell);
    if (cell->type() != xltypeRef || cell->val.mref.lpmref == nullptr || cell->val.mref.lpmref->count == 0)
        here.fail<inputerror>(variable, message);
    return KeptReference(*cell);
}

} // namespace

GoalSeekList& goal_seeks() {
    static GoalSeekList list;
    return list;
}

std::string register_goal_seek(const Reference& TargetCell, const Cell& TargetValue, const Reference& ChangingCell,
                               double Order) {
    Routine here{"GoalSeek"};
    here.inputs(TargetCell, TargetValue, ChangingCell, Order);
    require_references(here, TargetCell, ChangingCell);
    GoalSeekList& list = goal_seeks();
    if (list.count >= most_goal_seeks) {
        here.info("Too many goal seeks, exceeded ", most_goal_seeks);
        here.fail<errlibgoalseek>("", "Too many goal seeks, exceeded ", most_goal_seeks);
    }
    GoalSeekEntry entry;
    entry.target = kept(here, "TargetCell", TargetCell, "Target Cell must be a reference to a valid cell.");
    HostCell value;
    coerce(here, "TargetValue", TargetValue.oper, xltypeNum, value,
           "General Error: The TargetValue (or whatever it referred to) didn't evaluate to a number");
    if (value->type() != xltypeNum)
        here.fail<inputerror>("TargetValue",
                              "Error: The TargetValue (or whatever it referred to) didn't evaluate to a number");
    entry.value = number_cell(value->val.num);
    entry.changing = kept(here, "ChangingCell", ChangingCell, "Changing Cell must be a reference to a valid cell.");
    entry.order = Order;
    entry.index = ++list.count;
    list.entries[list.count] = entry;
    return here.returning(!iszero(Order) ? "GoalSeeking [" + describe(Order) + "] = ..."
                                         : std::string("GoalSeeking..."));
}

double goal_seek_target(const Reference& TargetCell, const Reference& ChangingCell) {
    Routine here{"GoalSeekTarget", Routine::internal};
    here.arguments(QX_NAMED(TargetCell, ChangingCell));
    require_references(here, TargetCell, ChangingCell);
    HostCell value;
    coerce(here, "TargetCell", TargetCell.oper, xltypeNum, value);
    if (value->type() != xltypeNum) here.fail<inputerror>("TargetCell");
    here.info("GoalSeek variables accepted, target cell currently showing a value of ", value->val.num);
    return here.returning(value->val.num);
}

} // namespace qx
