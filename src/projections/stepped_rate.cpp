#include "projections/stepped_rate.h"

#include "core/routine.h"

namespace qx {

template <class Steps>
double Step(const timeperiod& Time, const Steps& steps, View<double> AnnualRates, const Basis& basis) {
    Routine here{by_side<Steps>("FStep", "TStep")};
    here.inputs(Time, steps, AnnualRates, basis);
    basis.check(here);
    timeperiod period = Time;
    if (steps.count() == 0 || !screen_period(here, period, steps.extent(), basis)) return here.returning(0.0);
    return here.returning(sum_steps(here, period, steps, basis,
                                    [&](int n, const Life& step, const Basis& stub, bool ComponentPart) {
                                        return ConX(period, step, AnnualRates.single_or(n), stub, ComponentPart);
                                    }));
}
template double Step(const timeperiod&, const FromSteps&, View<double>, const Basis&);
template double Step(const timeperiod&, const ToSteps&, View<double>, const Basis&);

double FStepTime(const timeperiod& Time, View<date> FromDates, const Basis& basis) {
    Routine here{"FStepTime"};
    here.inputs(Time, FromDates, basis);
    basis.check(here);
    const int maxn = FromDates.size();
    static const date no_start;
    timeperiod period = Time;
    if (maxn == 0 || !screen_period(here, period, {no_start, DateCrit}, basis)) return here.returning(0.0);
    double sum = 0.0;
    for (int n = 1; n <= maxn && FromDates(n) <= period.to(); ++n) {
        const Life step{n == 1 ? no_start : FromDates(n), n == maxn ? DateCrit : FromDates(n + 1)};
        if (n < maxn && step.Finish < period.from() && !traced()) continue;
        sum += ConX(period, step, 1.0, basis.accruals(), n < maxn);
    }
    return here.returning(sum);
}

} // namespace qx
