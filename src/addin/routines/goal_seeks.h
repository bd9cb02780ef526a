// The goal seeks that a model's cells ask for: the list that GoalSeek() fills and the command runs.
#pragma once

#include "addin/frame.h"

#include <string>

namespace qx {

inline constexpr int most_goal_seeks = 100;

/// A reference kept beyond the call that brought it.
class KeptReference {
  public:
    KeptReference() = default;
    /// Keeps the first rectangle of an xltypeRef cell.
    explicit KeptReference(const OPER& reference)
        : areas_{1, {reference.val.mref.lpmref->reftbl[0]}}, sheet_(reference.val.mref.idSheet) {}
    /// The reference as a cell, valid as long as the object.
    OPER cell() {
        OPER cell{{.num = 0.0}, xltypeRef};
        cell.val.mref = {&areas_, sheet_};
        return cell;
    }

  private:
    XLMREF areas_ = {};
    std::uintptr_t sheet_ = 0;
};

struct GoalSeekEntry {
    KeptReference target;
    OPER value = {};
    KeptReference changing;
    double order = 0.0;
    double index = 0.0; ///< the entry's number as it was registered, from 1
};

/// The entries, from 1.
struct GoalSeekList {
    int count = 0;
    GoalSeekEntry entries[most_goal_seeks + 1];
};
GoalSeekList& goal_seeks();

/// The list is open: a cell that calculates GoalSeek() enters itself.
inline bool GoalSeekRegistering = false;

/// Enters a goal seek into the list and returns the text that its cell shows. Throws inputerror for a target or a
/// changing cell that is no reference or a value that is no number, errlibgoalseek for the 101st, and uncalc.
std::string register_goal_seek(const Reference& TargetCell, const Cell& TargetValue, const Reference& ChangingCell,
                               double Order);
/// The value that the target shows now. Throws as register_goal_seek().
double goal_seek_target(const Reference& TargetCell, const Reference& ChangingCell);

} // namespace qx
