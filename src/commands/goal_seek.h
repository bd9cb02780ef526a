// The commands of embedded goal seeks: open the list, and after a full recalculation run what the cells have entered.
#pragma once

#include "addin/api.h"

#include <string>

namespace qx {

/// What the last run of the goal seeks reports, one line each, with the failures and the time at its end.
const std::string& goal_seek_report();
/// How many goal seeks of the last run failed; one that was broken off counts too.
int goal_seek_failures();

} // namespace qx

extern "C" {
QX_API int CPPQX_GoalSeekInit(); ///< empties and opens the list
QX_API int CPPQX_GoalSeek();     ///< runs the list
}
