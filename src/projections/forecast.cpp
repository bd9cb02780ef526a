#include "projections/forecast.h"

#include "projections/constant_rate.h"
#include "projections/growth.h"

#include <cmath>

namespace qx {

namespace {

/// Where a date lies in a forecast: 1.0 at its start and before, 2.0 at the start of the second value.
double place_in(const Forecast& forecast, const date& day) {
    return std::max((day.months() - forecast.start.months()) / forecast.base + 1.0, 1.0);
}

/// The number of the value that holds at a date, from the first to the last.
int value_at(const Forecast& forecast, const date& day) {
    return std::min(whole(place_in(forecast, day)), forecast.values.size());
}

double between(double from, double to, double part) { return from + (to - from) * part; }

double part_of(const date& from, const date& to, const date& day) {
    return safe_divide(days_between(from, day), days_between(from, to));
}

} // namespace

double Fcst(const date& TheDate, const Forecast& forecast, int FcstSwitchOpt, const Maybe<double>& FcstDef_Pre,
            const Maybe<double>& FcstDef_Post) {
    Routine here{"Fcst"};
    here.inputs(TheDate, forecast, FcstSwitchOpt, FcstDef_Pre, FcstDef_Post);
    forecast.check(here);
    here.at_least(FcstSwitchOpt, 0, "FcstSwitchOpt");
    const int maxn = forecast.values.size();
    if (TheDate < forecast.start) {
        if (!FcstDef_Pre.is_given()) return here.returning(0.0);
        here.info("Date is before limit of forecast, the pre-forecast default value is returned ", FcstDef_Pre.value);
        return here.returning(FcstDef_Pre.value);
    }
    if (TheDate > forecast.start_of(maxn + 1)) {
        if (FcstDef_Post.is_given()) {
            here.info("Date is beyond limit of forecast, the post-forecast default value is returned ",
                      FcstDef_Post.value);
            return here.returning(FcstDef_Post.value);
        }
        if (maxn > 0) {
            here.info("Date is beyond limit of forecast, the last forecast value is returned");
            return here.returning(forecast.values.last());
        }
    }
    if (maxn == 0) return here.returning(0.0);
    if (maxn == 1) return here.returning(forecast.values.first());
    const double place = place_in(forecast, TheDate);
    const int i = whole(place);
    if (i >= maxn) return here.returning(forecast.values.last());
    const double value = forecast.values(i);
    if (FcstSwitchOpt != forecast_interpolated) return here.returning(value);
    return here.returning(between(value, forecast.values(i + 1), fraction(place)));
}

double fcst(const date& TheDate, const Forecast& forecast) { return Fcst(TheDate, forecast, forecast_steps, {}, {}); }

double FcstCollar(const date& TheDate, double Minimum, double Maximum, const Forecast& forecast, int FcstSwitchOpt) {
    Routine here{"FcstCollar"};
    here.inputs(TheDate, Minimum, Maximum, forecast, FcstSwitchOpt);
    const double value = Fcst(TheDate, forecast, FcstSwitchOpt, {}, {});
    return here.returning(value > Maximum ? Maximum : value < Minimum ? Minimum : value);
}

double FcstGrow(const date& TheDate, const Forecast& forecast, const Growth& growth, int RevMonthsOpt,
                int FcstSwitchOpt) {
    Routine here{"FcstGrow"};
    here.inputs(TheDate, forecast, growth, RevMonthsOpt, FcstSwitchOpt);
    const double value = Fcst(TheDate, forecast, FcstSwitchOpt, {}, {});
    return here.returning(value * Grow(TheDate, 1.0, growth, RevMonthsOpt));
}

double SumFcstX(const date& Date1, const date& Date2, const Forecast& forecast, const Measure& measure,
                bool ComponentPart) {
    Routine here{"SumFcstFromTo", Routine::internal};
    here.arguments("FcstVals,Date1,Date2,StartFcst,FcstBase,DayCount,Periods,ComponentPart", forecast.values, Date1,
                   Date2, forecast.start, forecast.base, measure.DayCount, measure.Periods, ComponentPart);
    measure.check(here);
    here.limit(forecast.base, 0, forecast_base_limits.high, "FcstBase");
    const int maxn = forecast.values.size();
    if (forecast.base == 0 || maxn == 0 || Date2.months() <= Date1.months()) return here.returning(0.0);
    const Life life{Date1, Date2};
    const date end = forecast.start_of(maxn + 1);
    if (Date1 > end) return here.returning(ConX({Date1, Date2}, life, forecast.values.last(), measure, ComponentPart));
    double sum = Date2 > end ? ConX({end, Date2}, life, forecast.values.last(), measure, false) : 0.0;
    int first = value_at(forecast, Date1), last = value_at(forecast, Date2);
    const bool stub = last < maxn && (Date2 > end || ComponentPart);
    // Months of different lengths may put a date into the value beside the one whose months it lies in.
    if (first > 1 && forecast.start_of(first) > Date1) --first;
    if (last < maxn && forecast.start_of(last + 1) < Date2) ++last;
    for (int i = first; i <= last; ++i) {
        const timeperiod slot{forecast.start_of(i), forecast.start_of(i + 1)};
        const TraceBlock pass = here.pass(i, "Forecast value ", forecast.values(i), ", ", slot);
        sum += ConX(slot, life, forecast.values(i), measure, stub);
    }
    return here.returning(sum);
}

double SumFcst(const date& Date1, const date& Date2, const Forecast& forecast, const Measure& measure) {
    Routine here{"SumFcst"};
    here.inputs(Date1, Date2, forecast, measure);
    return here.returning(SumFcstX(Date1, Date2, forecast, measure, false));
}

double FcstT(const date& TheDate, View<date> FcstFromDates, View<double> FcstValues, int FcstSwitchOpt) {
    Routine here{"FcstT"};
    here.inputs(TheDate, FcstFromDates, FcstValues, FcstSwitchOpt);
    here.at_least(FcstSwitchOpt, 0, "FcstSwitchOpt");
    int n = FcstFromDates.size();
    while (n >= 1 && FcstFromDates(n) > TheDate) --n;
    if (n == 0) return here.returning(0.0);
    if (FcstSwitchOpt != forecast_interpolated || n == FcstFromDates.size()) return here.returning(FcstValues(n));
    return here.returning(
        between(FcstValues(n), FcstValues(n + 1), part_of(FcstFromDates(n), FcstFromDates(n + 1), TheDate)));
}

double TFcstT(const date& TheDate, View<date> FcstToDates, View<double> FcstValues, int FcstSwitchOpt) {
    Routine here{"TFcstT"};
    here.inputs(TheDate, FcstToDates, FcstValues, FcstSwitchOpt);
    here.at_least(FcstSwitchOpt, 0, "FcstSwitchOpt");
    const int maxn = FcstToDates.size();
    int n = 1;
    while (n <= maxn && FcstToDates(n) <= TheDate) ++n;
    if (n > maxn) return here.returning(0.0);
    if (FcstSwitchOpt != forecast_interpolated || n == 1) return here.returning(FcstValues(n));
    return here.returning(
        between(FcstValues(n - 1), FcstValues(n), part_of(FcstToDates(n - 1), FcstToDates(n), TheDate)));
}

bool is_base_date(const dateorfloat& BaseDateOrIdx) { return BaseDateOrIdx.number() >= 1910.0; }

double IdxFromTo(const dateorfloat& BaseDateOrIdx, const date& TheDate, const Forecast& index) {
    Routine here{"IdxFromTo"};
    here.inputs(BaseDateOrIdx, TheDate, index);
    index.check(here, "IdxFcstBase");
    const double base =
        is_base_date(BaseDateOrIdx) ? fcst(date(BaseDateOrIdx.number()), index) : BaseDateOrIdx.number();
    const double current = fcst(TheDate, index);
    if (!iszero(base)) return here.returning(current / base);
    if (!iszero(current)) here.fail<errlibnovalidanswer>("BaseDateOrIdx", "First forecast value is zero");
    return here.returning(1.0);
}

} // namespace qx
