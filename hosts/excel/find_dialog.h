// The window of find and replace.
#pragma once

#include "commands/find_replace.h"

namespace qx::excel {

/// Shows the dialog until its user closes it. Nothing without a screen.
void show_find_replace(clsfindreplace& state);

} // namespace qx::excel
