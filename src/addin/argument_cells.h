// The cells of an argument that takes cells of any kind as data, error values among them.
#pragma once

#include "addin/cells.h"
#include "addin/frame.h"
#include "addin/text_reference.h"
#include "core/routine.h"

#include <algorithm>

namespace qx {

/// The cells of an argument, row by row; a reference is looked up.
class Cells {
  public:
    /// What a string in place of the cells is: a value like any other, or the name of cells.
    enum Text { as_value, as_reference };

    Cells(const Cell& argument, const char* name, const Routine& here, Text text = as_value) : source_(argument.oper) {
        if (source_->type() == xltypeRef || source_->type() == xltypeSRef) {
            if (traced()) trace().warning(unexpected_reference);
            FunctionContext context = here.context(name);
            coerce(looked_up_, *source_, context);
            source_ = looked_up_.get();
        }
        if (text == as_reference && source_->type() == xltypeStr) {
            evaluate(named_, view_of(*source_), here);
            source_ = &named_.cell();
        }
        if (!is_array()) return;
        const long long count = cell_count(*source_);
        if (count < 0 || (count > 0 && source_->val.array.lparray == nullptr)) here.fail<inputerror>(name);
    }

    bool is_missing() const { return source_->type() == xltypeMissing; }
    bool is_array() const { return source_->type() == xltypeMulti; }
    int count() const { return is_array() ? static_cast<int>(cell_count(*source_)) : 1; }
    int rows() const { return is_array() ? source_->val.array.rows : 1; }
    int columns() const { return is_array() ? source_->val.array.columns : 1; }
    const OPER& value() const { return *source_; }
    const OPER& operator()(int i) const { return is_array() ? source_->val.array.lparray[i - 1] : *source_; }
    /// Entry i of a series, of which the last applies to all that follow.
    const OPER& entry(int i) const { return (*this)(std::min(i, count())); }
    /// The one cell of the argument. Throws gotarange if there are several.
    const OPER& single(const char* name, const Routine& here) const {
        if (count() != 1) here.fail<gotarange>(name, "Expected a single value, got ", count(), " cells");
        return (*this)(1);
    }

    const OPER* begin() const { return is_array() ? source_->val.array.lparray : source_; }
    const OPER* end() const { return begin() + count(); }

  private:
    HostCell looked_up_;
    KeptCell named_;
    const OPER* source_;
};

} // namespace qx
