#include "accounting/average_rates.h"

#include "core/routine.h"
#include "projections/steps.h"

namespace qx {

namespace {

template <class Steps>
double average_rate(const Routine& here, const timeperiod& period, const Steps& steps, View<double> Rates,
                    const Measure& measure) {
    double weighed = 0.0, length = 0.0;
    sum_steps(here, period, steps, measure, [&](int n, const Life& step, const Basis& stub, bool ComponentPart) {
        const double years = ConX(period, step, 1.0, stub, ComponentPart);
        weighed += Rates.single_or(n) * years;
        length += years;
        return years;
    });
    here.info("Rates times years ", weighed, ", years ", length);
    return safe_divide(weighed, length);
}

const date from_ever{};

timeperiod year_to_date(const Routine& here, const timeperiod& Time, const AnnualSequence& YearStart) {
    const timeperiod year(YearStart.prevdate(Time.to(), true), Time.to());
    here.info("Year to date: ", year);
    return year;
}

} // namespace

double FAvRate(const timeperiod& Time, View<date> FromDates, View<double> Rates, const Measure& measure) {
    Routine here{"FAvRate"};
    here.inputs(Time, FromDates, Rates, measure);
    measure.check(here);
    return here.returning(average_rate(here, Time, FromSteps{DateCrit, FromDates}, Rates, measure));
}

double TAvRate(const timeperiod& Time, View<date> ToDates, View<double> Rates, const Measure& measure) {
    Routine here{"TAvRate"};
    here.inputs(Time, ToDates, Rates, measure);
    measure.check(here);
    return here.returning(average_rate(here, Time, ToSteps{from_ever, ToDates}, Rates, measure));
}

double FAvRateTD(const timeperiod& Time, View<date> FromDates, View<double> Rates, const AnnualSequence& YearStart,
                 const Measure& measure) {
    Routine here{"FAvRateTD"};
    here.inputs(Time, FromDates, Rates, YearStart, measure);
    measure.check(here);
    return here.returning(FAvRate(year_to_date(here, Time, YearStart), FromDates, Rates, measure));
}

double TAvRateTD(const timeperiod& Time, View<date> ToDates, View<double> Rates, const AnnualSequence& YearStart,
                 const Measure& measure) {
    Routine here{"TAvRateTD"};
    here.inputs(Time, ToDates, Rates, YearStart, measure);
    measure.check(here);
    return here.returning(TAvRate(year_to_date(here, Time, YearStart), ToDates, Rates, measure));
}

} // namespace qx
