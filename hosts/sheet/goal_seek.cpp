#include "hosts/sheet/goal_seek.h"

#include "core/errors.h"
#include "hosts/sheet/workbook.h"
#include "numerics/solver.h"

#include <algorithm>
#include <cmath>
#include <limits>
#include <stdexcept>

namespace qx::sheet {

namespace {

class Seek : public clsSolveBase {
  public:
    Seek(Workbook& book, CellAddress formula, double target, CellAddress changing)
        : book_(book), formula_(formula), changing_(changing), target_(target) {}

    /// How far the formula is from the target; no number where the formula shows none.
    double eval(double x) override {
        book_.set_value(changing_, Value::number(x));
        const Value shown = book_.value(formula_);
        return shown.is_number() ? shown.number() - target_ : std::numeric_limits<double>::quiet_NaN();
    }
    void setup() override {}

    /// True if the formula shows the target at x, as nearly as its numbers can.
    bool reaches(double x) {
        constexpr double near = 1e-6;
        return std::fabs(eval(x)) <= near * std::max(1.0, std::fabs(target_));
    }

  private:
    Workbook& book_;
    const CellAddress formula_, changing_;
    const double target_;
};

} // namespace

bool goal_seek(Workbook& book, CellAddress formula, double target, CellAddress changing) {
    if (book.formula(formula) == nullptr) throw std::invalid_argument("the target cell holds no formula");
    if (book.formula(changing) != nullptr) throw std::invalid_argument("the changing cell holds a formula");
    const Value before = book.value(changing);
    const double start = before.is_number() ? before.number() : 0.0;
    const double step = std::max(0.1, std::fabs(start) / 10.0);
    const double tolerance = 1e-12 * std::max(1.0, std::fabs(start));
    constexpr int rounds = 200;
    Seek seek(book, formula, target, changing);
    // A formula may have values on one side of zero only, so that searches on both sides meet no number.
    for (const SolveMode mode : {guess_any_sign, guess_positive}) try {
            if (seek.reaches(seek.solve(start, step, tolerance, rounds, mode))) return true;
        } catch (const cls_exception&) {} // not found this way
    book.set_value(changing, before);
    return false;
}

} // namespace qx::sheet
