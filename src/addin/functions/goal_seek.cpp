// The worksheet function by which a cell asks for a goal seek.
#include "addin/declare.h"
#include "addin/routines/goal_seeks.h"

namespace qx::worksheet {

namespace {

/// The order of the run counts only while the list is open.
void run_goal_seek(Frame& frame) {
    Reference TargetCell{}, ChangingCell{};
    Cell TargetValue{};
    double Order = 0.0;
    frame.input(TargetCell);
    frame.input(TargetValue);
    frame.input(ChangingCell);
    if (GoalSeekRegistering) frame.input(Order);
    frame.inputs_concluded();
    if (GoalSeekRegistering)
        frame.reply(register_goal_seek(TargetCell, TargetValue, ChangingCell, Order));
    else
        frame.reply(goal_seek_target(TargetCell, ChangingCell));
}

} // namespace

constexpr Function GoalSeek{
    .name = "GoalSeek",
    .category = Category::Miscellaneous,
    .calls = {&run_goal_seek, 4, {Kind::reference, Kind::cell, Kind::reference, Kind::number}},
    .help = "Asks for a goal seek, which the goal seek command runs with all others of the model in their order; until "
            "then shows the target's value",
    .args = {{"TargetCell", "Cell that is to reach the target value. It holds a formula."},
             {"TargetValue", "Value that the target cell is to reach"},
             {"ChangingCell", "Cell to vary until the target is reached. It holds a number, not a formula."},
             optional("Order", 0.0, "Position in the run of all goal seeks, lowest first", "Defaulted to 0")},
    .examples = {"GoalSeek(B19, 0.2, B11, 1) = 0", "GoalSeek(5, 0, ZZ99) ! #NUM!"},
    .errors_as_data = true,
};
QX_EXPORT(GoalSeek, 4);

} // namespace qx::worksheet
