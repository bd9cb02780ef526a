#include "accounting/average_rates.h"

#include "core/routine.h"
#include "projections/steps.h"

namespace qx {

namespace {

const date from_ever{};

/// The average over a period, as the function of a name.
template <class Steps>
double average_rate(const char* function, const timeperiod& Time, View<date> dates, const Steps& steps,
                    View<double> Rates, const Measure& measure) {
    Routine here{function};
    here.inputs(Time, dates, Rates, measure);
    measure.check(here);
    double weighed = 0.0, length = 0.0;
    sum_steps(here, Time, steps, measure, [&](int n, const Life& step, const Basis& stub, bool ComponentPart) {
        const double years = ConX(Time, step, 1.0, stub, ComponentPart);
        weighed += Rates.single_or(n) * years;
        length += years;
        return years;
    });
    here.info("Rates times years ", weighed, ", years ", length);
    return here.returning(safe_divide(weighed, length));
}

/// The average over the year to date by one of the functions of a period.
template <class Average>
double average_to_date(const char* function, Average average, const timeperiod& Time, View<date> dates,
                       View<double> Rates, const AnnualSequence& YearStart, const Measure& measure) {
    Routine here{function};
    here.inputs(Time, dates, Rates, YearStart, measure);
    measure.check(here);
    const timeperiod year(YearStart.prevdate(Time.to(), true), Time.to());
    here.info("Year to date: ", year);
    return here.returning(average(year, dates, Rates, measure));
}

} // namespace

double FAvRate(const timeperiod& Time, View<date> FromDates, View<double> Rates, const Measure& measure) {
    return average_rate("FAvRate", Time, FromDates, FromSteps{DateCrit, FromDates}, Rates, measure);
}

double TAvRate(const timeperiod& Time, View<date> ToDates, View<double> Rates, const Measure& measure) {
    return average_rate("TAvRate", Time, ToDates, ToSteps{from_ever, ToDates}, Rates, measure);
}

double FAvRateTD(const timeperiod& Time, View<date> FromDates, View<double> Rates, const AnnualSequence& YearStart,
                 const Measure& measure) {
    return average_to_date("FAvRateTD", FAvRate, Time, FromDates, Rates, YearStart, measure);
}

double TAvRateTD(const timeperiod& Time, View<date> ToDates, View<double> Rates, const AnnualSequence& YearStart,
                 const Measure& measure) {
    return average_to_date("TAvRateTD", TAvRate, Time, ToDates, Rates, YearStart, measure);
}

} // namespace qx
