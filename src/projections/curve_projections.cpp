#include "projections/curve_projections.h"

#include "calendar/date_arithmetic.h"
#include "calendar/dated_amounts.h"
#include "core/twin_run.h"
#include "numerics/interpolation.h"
#include "numerics/polynomials.h"

namespace qx {

namespace {

// The fit of dated values over the years that `years` gives for a date.
template <class Years>
FittedPolynomial fitted_over_time(Routine& here, View<date> dates, View<floatblank> values, int Degree, Years years) {
    dates.checksamesize(values);
    WorkList<double> x(dates.size()), y(dates.size());
    int count = 0;
    for (int i = 1; i <= dates.size(); ++i) {
        if (dates.get(i).iszero() || values.get(i).isblank()) continue;
        ++count;
        x(count) = years(dates.get(i));
        y(count) = values.get(i).number();
    }
    x->dimension(count);
    y->dimension(count);
    return FittedPolynomial(here, x, y, Degree);
}

// The part of a stream's life that counts in a time period, in years from its start.
struct Span {
    double from, to;
};

Span span_of(const Routine& here, const timeperiod& Time, const date& Start, const date& Finish, double DayCount,
             AnnualSequence& Periods, double ProjMode) {
    if (Time.to() < Time.from()) {
        here.info("End of timeperiod (", Time.to(), ") less than start (", Time.from(), "), returning 0");
        return {0.0, 0.0};
    }
    const timeperiod period = iscash(ProjMode) ? CashTime(Time, Periods, Start, Finish, true, ProjMode) : Time;
    const date from = std::max(period.from(), Start);
    const date to = std::min(period.to(), Finish);
    if (to <= from) {
        here.info("Timeperiod outside Start and Finish, returning zero");
        return {0.0, 0.0};
    }
    const auto years_to = [&](const date& day) { return diffmonths(Start, day, DayCount, Periods) / 12.0; };
    const Span span{years_to(from), years_to(to)};
    here.info("Years from Start: ", span.from, " to ", span.to);
    return span;
}

void check_projection(Routine& here, double DayCount, double ProjMode) {
    here.limit(DayCount, 0, 999, "DayCount");
    here.limit(ProjMode, 0, 7, "ProjMode");
}

} // namespace

double InterpedLevel(const date& TheDate, const date& Finish, View<date> FromDates, View<double> Levels, int InterpType,
                     double Tension, double Bias) {
    Routine here{"InterpedLevel"};
    here.inputs(TheDate, Finish, FromDates, Levels, InterpType, Tension, Bias);
    check_curve(here, InterpType, Tension, Bias);
    const DatedAmounts curve(FromDates, Levels);
    const View<date> dates = curve.Dates();
    if (dates.empty()) here.fail<errlibinsuffrange>("FromDates");
    dates.checkascending();
    if (TheDate < dates.first() || TheDate >= Finish) {
        here.info("The date is before the first level or not before Finish, returning 0");
        return here.returning(0.0);
    }
    return here.returning(
        InterpolateDate(dates, curve.Amounts(), TheDate, InterpType, date(), dates.last(), Tension, Bias));
}

double FittedLevel(const date& TheDate, const date& Start, const date& Finish, View<date> LevelDates,
                   View<floatblank> Levels, int Degree) {
    Routine here{"FittedLevel"};
    here.inputs(TheDate, Start, Finish, LevelDates, Levels, Degree);
    const FittedPolynomial level =
        fitted_over_time(here, LevelDates, Levels, Degree, [](const date& day) { return day.decimal_year(); });
    return here.returning(over(here, TheDate, [&](const date& day) {
        if (Start <= day && day < Finish) return level(day.decimal_year());
        here.info("The date is before Start or not before Finish, returning 0");
        return 0.0;
    }));
}

double FittedRate(const timeperiod& Time, const date& Start, const date& Finish, View<date> RateDates,
                  View<floatblank> AnnualRates, int Degree, double DayCount, AnnualSequence& Periods, double ProjMode) {
    Routine here{"FittedRate"};
    here.inputs(Time, Start, Finish, RateDates, AnnualRates, Degree, DayCount, Periods, ProjMode);
    here.limit(Degree, 0, max_fit_degree, "Degree");
    check_projection(here, DayCount, ProjMode);
    const FittedPolynomial rate = fitted_over_time(here, RateDates, AnnualRates, Degree, [&](const date& day) {
        return diffmonths(Start, day, DayCount, Periods) / 12.0;
    });
    return here.returning(over(here, Time, [&](const timeperiod& period) {
        const Span years = span_of(here, period, Start, Finish, DayCount, Periods, ProjMode);
        return rate.integral(years.from, years.to);
    }));
}

double Ramp(const timeperiod& Time, const date& Start, const date& Finish, double StartRate, double FinishRate,
            double DayCount, AnnualSequence& Periods, double ProjMode) {
    Routine here{"Ramp"};
    here.inputs(Time, Start, Finish, StartRate, FinishRate, DayCount, Periods, ProjMode);
    check_projection(here, DayCount, ProjMode);
    const Span years = span_of(here, Time, Start, Finish, DayCount, Periods, ProjMode);
    const double life = diffmonths(Start, Finish, DayCount, Periods) / 12.0;
    const double middle = safe_divide((years.from + years.to) / 2.0, life);
    const double rate = StartRate + (FinishRate - StartRate) * middle;
    here.info("Average annual rate: ", rate);
    return here.returning((years.to - years.from) * rate);
}

} // namespace qx
