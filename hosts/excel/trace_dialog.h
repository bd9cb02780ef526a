// The window that shows a trace: a tree in three columns that is filled as it is opened.
#pragma once

#include "core/trace.h"

namespace qx::excel {

/// Shows the store of a trace until its user closes the window. Nothing without a screen.
void show_trace(clsTrace2& trace);

} // namespace qx::excel
