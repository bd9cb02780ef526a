#include "numerics/date_plus_periods.h"

#include "calendar/date_arithmetic.h"
#include "calendar/date_functions.h"
#include "core/routine.h"
#include "numerics/solver.h"

namespace qx {

namespace {

constexpr double tolerance_in_months = 1e-10;
constexpr int most_iterations = 100;

/// The unknown is a number of months; its value the periods within them, less the periods asked for.
class DpPSolve : public clsSolveBase {
  public:
    DpPSolve(const date& from, double periods, const AnnualSequence& sequence)
        : from_(from), periods_(periods), sequence_(sequence) {}

    double eval(double months) override {
        return sequence_.periodsbetween(from_, plusmonths(from_, months, default_daycount, sequence_)) - periods_;
    }
    void setup() override {}

  private:
    const date& from_;
    double periods_;
    const AnnualSequence& sequence_;
};

} // namespace

date DpP(const date& TheDate, double NPer, const AnnualSequence& Periods) {
    Routine here{"DpP"};
    here.inputs(TheDate, NPer, Periods);
    if (iszero(NPer) || TheDate.iszero()) return here.returning("DateResult", date(TheDate));
    DpPSolve problem(TheDate, NPer, Periods);
    problem.setup();
    const double guess = safe_divide(NPer * 12.0, Periods.size());
    const double months =
        problem.solve(guess, 1.0, tolerance_in_months, most_iterations, rate_of_return, here.context("NPer"));
    return here.returning("DateResult", DpM(TheDate, months, default_daycount, Periods));
}

} // namespace qx
