// The headless workbook as a class for Python.
#pragma once

#include "commands/trace_tree.h"

#include <memory>
#include <string>

namespace pybind11 {
class module_;
}

namespace qx::python {

/// A trace as Python sees it: its lines with their depths, and its page.
struct Trace {
    std::shared_ptr<const TraceTree> tree;
    std::string subject; ///< what was calculated, as a formula
};

void bind_workbook(pybind11::module_& module);

} // namespace qx::python
