#include "projections/constant_rate.h"

namespace qx {

bool runs_forward(const Routine& here, const timeperiod& period) {
    if (period.to() >= period.from()) return true;
    here.info("End of timeperiod (", period.to(), ") less than start (", period.from(), "), returning 0");
    return false;
}

bool screen_period(const Routine& here, timeperiod& period, const Life& life, const Basis& basis) {
    if (!runs_forward(here, period)) return false;
    const bool outside = period.to() < life.Start || period.from() > life.Finish;
    if (basis.cash()) {
        if (outside)
            here.info("  Timeperiod(", period, ") falls outside Start(", life.Start, ") and Finish(", life.Finish,
                      ") dates, but may produce payment due to timing of cash payment.");
        period = CashTime(period, basis.Periods, life.Start, life.Finish, true, basis.ProjMode);
        return true;
    }
    if (outside)
        here.info("Timeperiod(", period, ") falls outside Start(", life.Start, ") and Finish(", life.Finish,
                  ") dates, returning zero.");
    return !outside;
}

double ConX(const timeperiod& Time, const Life& life, double AnnualRate, const Basis& basis, bool ComponentPart) {
    Routine here{"ConX", Routine::internal};
    here.arguments("Time,Start,Finish,AnnualRate,DayCount,Periods,ProjMode,ComponentPart", Time, life.Start,
                   life.Finish, AnnualRate, basis.DayCount, basis.Periods, basis.ProjMode, ComponentPart);
    basis.check(here);
    timeperiod period = Time;
    if (!screen_period(here, period, life, basis)) return here.returning(0.0);
    if (period.to() < life.Start || period.from() > life.Finish) {
        here.info("Timeperiod outside Start and Finish, returning zero");
        return here.returning(0.0);
    }
    const double months =
        period.lenmonths(life.Start, life.Finish, basis.DayCount, basis.Periods, false, ComponentPart);
    return here.returning(AnnualRate * months / 12.0);
}

double Con(const timeperiod& Time, const Streams& streams, const Basis& basis) {
    Routine here{"Con"};
    here.inputs(Time, streams, basis);
    basis.check(here);
    if (!runs_forward(here, Time)) return here.returning(0.0);
    return here.returning(streams.sum(
        here, [&](const Life& life, double AnnualRate) { return ConX(Time, life, AnnualRate, basis, false); }));
}

} // namespace qx
