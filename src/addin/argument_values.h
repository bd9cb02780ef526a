// What an argument may be, for lists to choose from.
#pragma once

#include "core/pools.h"

#include <string>

namespace qx {

/// The values of an argument that is a switch, each with its words: "0:Accruals". The name is that of the argument in
/// any case. Throws errliblookupfailed for an argument without set values.
WorkList<std::string> ArgValues(const std::string& ArgName);

} // namespace qx
