#include "projections/constant_rate.h"

namespace qx {

void check_projection(Routine& here, double DayCount, double ProjMode) {
    here.limit(DayCount, 0, 999, "DayCount");
    here.limit(ProjMode, 0, 7, "ProjMode");
}

bool screen_period(const Routine& here, timeperiod& period, const date& Start, const date& Finish,
                   const AnnualSequence& Periods, double ProjMode) {
    if (period.to() < period.from()) {
        here.info("End of timeperiod (", period.to(), ") less than start (", period.from(), "), returning 0");
        return false;
    }
    const bool outside = period.to() < Start || period.from() > Finish;
    if (iscash(ProjMode)) {
        if (outside)
            here.info("  Timeperiod(", period, ") falls outside Start(", Start, ") and Finish(", Finish,
                      ") dates, but may produce payment due to timing of cash payment.");
        period = CashTime(period, Periods, Start, Finish, true, ProjMode);
        return true;
    }
    if (outside)
        here.info("Timeperiod(", period, ") falls outside Start(", Start, ") and Finish(", Finish,
                  ") dates, returning zero.");
    return !outside;
}

double ConX(const timeperiod& Time, const date& Start, const date& Finish, double AnnualRate, double DayCount,
            const AnnualSequence& Periods, double ProjMode, bool ComponentPart) {
    Routine here{"ConX", Routine::internal};
    here.arguments(QX_NAMED(Time, Start, Finish, AnnualRate, DayCount, Periods, ProjMode, ComponentPart));
    check_projection(here, DayCount, ProjMode);
    timeperiod period = Time;
    if (!screen_period(here, period, Start, Finish, Periods, ProjMode)) return here.returning(0.0);
    if (period.to() < Start || period.from() > Finish) {
        here.info("Timeperiod outside Start and Finish, returning zero");
        return here.returning(0.0);
    }
    const double months = period.lenmonths(Start, Finish, DayCount, Periods, false, ComponentPart);
    return here.returning(AnnualRate * months / 12.0);
}

} // namespace qx
