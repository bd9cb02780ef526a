// A worksheet function called as a spreadsheet calls it: cells in, a cell out.
#pragma once

#include "addin/frame.h"
#include "addin/function.h"

#include <array>
#include <cstddef>
#include <cstdint>
#include <span>

namespace qx {

class WorksheetCall {
  public:
    explicit WorksheetCall(const char* function) : function_(*find_function(function)) {
        cells_.fill(missing_cell());
        for (int i = 0; i < max_arguments; ++i)
            arguments_[static_cast<std::size_t>(i)] = &cells_[static_cast<std::size_t>(i)];
    }
    WorksheetCall(const WorksheetCall&) = delete;
    WorksheetCall& operator=(const WorksheetCall&) = delete;

    /// The next argument.
    WorksheetCall& with(double value) { return with(number_cell(value)); }
    /// A column of cells.
    WorksheetCall& with(std::span<OPER> column) {
        return with(array_cell(column.data(), static_cast<std::int32_t>(column.size()), 1));
    }
    double operator()() const { return perform(function_, arguments_.data())->val.num; }

  private:
    WorksheetCall& with(const OPER& cell) {
        cells_[n_++] = cell;
        return *this;
    }

    const Function& function_;
    std::array<OPER, max_arguments> cells_;
    std::array<OPER*, max_arguments> arguments_;
    std::size_t n_ = 0;
};

} // namespace qx
