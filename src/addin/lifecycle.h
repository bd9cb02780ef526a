// The life of the add-in: a host opens it, which registers every function and command, and closes it.
#pragma once

#include "addin/api.h"
#include "addin/oper.h"

#include <string>
#include <string_view>

namespace qx {

/// Registers all rows with the host and sets up what calculations share. With a log, the steps are written to
/// qx_AutoOpen.qxl beside the add-in. Never fails: what goes wrong is shown to the user by the host.
void open_addin(bool with_log);

/// The help file that belongs to an add-in's full path.
std::string help_file_of(std::string_view addin);
/// The help file of the add-in that is open, "" before.
const std::string& help_file();

} // namespace qx

extern "C" {
QX_API int xlAutoOpen();                               ///< the host has loaded the add-in
QX_API int xlAutoClose();                              ///< the host removes the functions' names
QX_API int xlAutoRemove();                             ///< the user has taken the add-in off the list of add-ins
QX_API int CPPQX_xlAutoClose();                        ///< the command that takes every row out of the host
QX_API qx::OPER* xlAddInManagerInfo(qx::OPER* action); ///< the title for action 1, #VALUE! for any other
}
