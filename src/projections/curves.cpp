#include "projections/curves.h"

#include "calendar/date_arithmetic.h"
#include "numerics/interpolation.h"
#include "projections/constant_rate.h"
#include "projections/growth.h"
#include "projections/payments.h"
#include "projections/periodic.h"

#include <algorithm>
#include <cmath>
#include <numbers>

namespace qx {

namespace {

/// How much of a spread's life has passed, as a part of it.
class Progress {
  public:
    Progress(const Life& life, const Basis& basis)
        : life_(life), basis_(basis), months_(diffmonths(life.Start, life.Finish, basis.DayCount, basis.Periods)) {}

    /// False of a life that its day count measures as nothing.
    bool measured() const { return !iszero(months_); }
    double at(const date& day) const {
        if (day == life_.Start) return 0.0;
        if (day == life_.Finish) return 1.0;
        return diffmonths(life_.Start, day, basis_.DayCount, basis_.Periods) / months_;
    }

  private:
    const Life& life_;
    const Basis& basis_;
    double months_;
};

/// What Total times the rise of a curve over a life, from 0 to 1, is in a period.
template <class Curve>
double along(const Routine& here, const timeperiod& Time, const Life& life, double Total, const Basis& basis,
             Curve curve) {
    if (life.Start == life.Finish) {
        here.info("Start Date equals the Finish Date, doing a simple MkPmts instead of an S Curve");
        return payment_in(Time, life.Start, Total);
    }
    timeperiod period = Time;
    if (!screen_period(here, period, life, basis)) return 0.0;
    const date& t1 = std::max(period.from(), life.Start);
    const date& t2 = std::min(period.to(), life.Finish);
    if (t2 < t1) return 0.0;
    const Progress progress(life, basis);
    if (!progress.measured()) {
        here.info("Under this day count there is no time from ", life.Start, " to ", life.Finish);
        return payment_in(Time, life.Start, Total);
    }
    const double before = curve(progress.at(t1));
    return Total * (curve(progress.at(t2)) - before);
}

} // namespace

double CurvedSpread::in(const Routine& here, const timeperiod& Time, const Basis& basis) const {
    constexpr double flat = 1000.0;
    if (Total == 0.0) return 0.0;
    if (Peakness >= flat) {
        here.info("Peakness greater than or equal to 1000. At this high level of peakness (", Peakness,
                  ") its so flat we are doing a simple UniSpread");
        return UniformSpread{Start, Finish, Total}.in(here, Time, basis);
    }
    if (iszero(Skew)) {
        here.info("Skew is zero, doing a simple MkPmts instead of an S Curve");
        return payment_in(Time, Start, Total);
    }
    return along(here, Time, {Start, Finish}, Total, basis, [&](double time) {
        const double x = Skew == 1.0 ? time : SafePow(time, Skew);
        return (Peakness * x - std::cos(std::numbers::pi * x)) / (2.0 + Peakness);
    });
}

double GeneralSpread::in(const Routine& here, const timeperiod& Time, const Basis& basis) const {
    constexpr double all_at_start = 100.0, all_at_completion = -100.0, one_payment = 99.0, flattest = 98.0;
    if (!runs_forward(here, Time)) return 0.0;
    const Life life{Start, end()};
    timeperiod period = Time;
    if (!screen_period(here, period, life, basis) || Total == 0.0) return 0.0;
    const double skew = std::trunc(Shape);
    // Degrees come as decimals, so that a whole one may miss it by its last bits.
    const double written = std::fabs(Shape - skew) * 100.0, whole_degree = std::round(written);
    const double peak = std::fabs(written - whole_degree) < 1e-9 ? whole_degree : written;
    here.info("Skew ", skew, ", peakedness ", peak);
    if (skew == all_at_start || life.Start == life.Finish) return payment_in(Time, life.Start, Total);
    if (skew == all_at_completion) return payment_in(Time, life.Finish, Total);
    if (peak == 0.0) return UniformSpread{life.Start, life.Finish, Total}.in(here, Time, basis);
    if (peak >= one_payment) {
        const double months = diffmonths(life.Start, life.Finish, basis.DayCount, basis.Periods);
        const date when = plusmonths(life.Start, months * (skew + 1.0) / 2.0, basis.DayCount, basis.Periods);
        here.info("A single payment on ", when);
        return payment_in(Time, when, Total);
    }
    const CurvedSpread curve{life.Start, life.Finish, Total, 1.0 - skew / 100.0, (flattest - peak) / 10.0};
    Routine checks{"SCurve", Routine::internal};
    curve.check(checks);
    return checks.returning(curve.in(here, Time, basis));
}

// --- By points -------------------------------------------------------------------------------------------------------

double CumulativeCurve::at(double time) const {
    return interpolate(CumTime, CumAmt, std::min(time, CumTime.last()), InterpType, Tension, Bias);
}

namespace {

void check_parts(const Routine& here, View<double> parts, const char* name) {
    for (int i = 1; i <= parts.size(); ++i)
        if (!(parts(i) >= -tolerance && parts(i) <= 1.0 + tolerance))
            here.fail<illegalvalue>(name, name, " must be between 0 and 1, entry number ", i);
}

} // namespace

void CumulativeSpread::check(Routine& here) const {
    if (curve.CumTime.empty()) here.fail<illegalvalue>("CumTime", "Must have a non-zero length range for CumTime");
    check_parts(here, curve.CumTime, "CumTime");
    check_parts(here, curve.CumAmt, "CumAmt");
    if (!iszero(curve.CumTime.first()))
        here.fail<illegalvalue>("CumTime", "The starting point for CumTime must be zero");
    if (curve.CumTime.size() != curve.CumAmt.size())
        here.fail<inputrangelength2>("CumAmt", "Length of CumTime = ", curve.CumTime.size(),
                                     " Length of CumAmt= ", curve.CumAmt.size());
    curve.CumTime.checkascending();
    check_curve(here, curve.InterpType, curve.Tension, curve.Bias);
}

double CumulativeSpread::in(const Routine& here, const timeperiod& Time, const Basis& basis) const {
    int end = 0;
    return along(here, Time, {Start, Finish}, Total, basis, [&](double time) {
        const double paid = curve.at(time);
        here.info("Area under curve up to t", ++end, " (", time, " of the time)=", paid);
        return paid;
    });
}

// --- Worksheet functions ---------------------------------------------------------------------------------------------

double SCurve(const timeperiod& Time, const Streams& streams, double Skew, double Peakness, const Basis& basis) {
    Routine here{"SCurve"};
    here.inputs(Time, streams, Skew, Peakness, basis);
    basis.check(here);
    CurvedSpread{DateCrit, DateCrit, 0.0, Skew, Peakness}.check(here);
    if (!runs_forward(here, Time)) return here.returning(0.0);
    return here.returning(streams.sum(here, [&](const Life& life, double Total) {
        return CurvedSpread{life.Start, life.Finish, Total, Skew, Peakness}.in(here, Time, basis);
    }));
}

double SCurveGrow(const timeperiod& Time, const CurvedSpread& spread, const Growth& growth, const Basis& basis) {
    Routine here{"SCurveGrow"};
    here.inputs(Time, spread, growth, basis);
    basis.check(here);
    spread.check(here);
    const double Total = Grow(spread.Start, spread.Total, growth, 0);
    return here.returning(
        CurvedSpread{spread.Start, spread.Finish, Total, spread.Skew, spread.Peakness}.in(here, Time, basis));
}

double SCurvePer(const timeperiod& Time, const Life& life, const date& AbsFinish, View<double> Totals, double Skew,
                 double Peakness, int Periodicity, const Basis& basis) {
    Routine here{"SCurvePer"};
    here.inputs(Time, life, AbsFinish, Totals, Skew, Peakness, Periodicity, basis);
    basis.check(here);
    CurvedSpread{DateCrit, DateCrit, 0.0, Skew, Peakness}.check(here);
    return here.returning(sum_repetitions(
        here, Time, life, AbsFinish, Totals, Periodicity, basis, [&](const Life& repetition, double Total) {
            return CurvedSpread{repetition.Start, repetition.Finish, Total, Skew, Peakness}.in(here, Time, basis);
        }));
}

double SCurveGrowPer(const timeperiod& Time, const Life& life, const date& AbsFinish, View<double> Totals, double Skew,
                     double Peakness, const Growth& growth, int Periodicity, const Basis& basis) {
    Routine here{"SCurveGrowPer"};
    here.inputs(Time, life, AbsFinish, Totals, Skew, Peakness, growth, Periodicity, basis);
    basis.check(here);
    CurvedSpread{DateCrit, DateCrit, 0.0, Skew, Peakness}.check(here);
    growth.check(here);
    return here.returning(sum_repetitions(
        here, Time, life, AbsFinish, Totals, Periodicity, basis, [&](const Life& repetition, double Total) {
            const double grown = Grow(repetition.Start, Total, growth, 0);
            return CurvedSpread{repetition.Start, repetition.Finish, grown, Skew, Peakness}.in(here, Time, basis);
        }));
}

double SCurveB(double Time, const Streams& streams, double Skew, double Peakness, double BaseYrs, const Basis& basis) {
    Routine here{"SCurveB"};
    here.inputs(Time, streams, Skew, Peakness, BaseYrs, basis);
    return here.returning(SCurve(period_in_years(Time, BaseYrs), streams, Skew, Peakness, basis));
}

} // namespace qx
