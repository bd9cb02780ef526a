#include "projections/stepped_rate.h"

#include "projections/forecast.h"
#include "projections/forecast_rate.h"
#include "projections/grown_rate.h"

namespace qx {

namespace {

/// True if there are steps. Without to-dates, or with nothing but a blank one, there is one that never ends, at a rate
/// of 0 unless there is one.
bool has_steps(const Routine&, const FromSteps& steps, View<double>&) { return steps.count() > 0; }
bool has_steps(const Routine& here, ToSteps& steps, View<double>& rates) {
    static constexpr double no_rate = 0.0;
    if (steps.count() > 1 || (steps.count() == 1 && !steps.ToDates.first().iszero())) return true;
    steps.ToDates = View<date>::of(DateCrit);
    if (rates.empty()) rates = View<double>::of(no_rate);
    here.info("A set of To Dates and Annual Rates was of zero size nad has been defaulted to a rate of ",
              rates.first());
    return true;
}

/// The sum over steps of a stream under accruals or cash; 0 if a period can hold nothing of it.
template <class Steps, class Amount>
double sum_stream(const Routine& here, const timeperiod& Time, const Steps& steps, const Basis& basis, Amount amount,
                  LastStep last_step = LastStep::given) {
    return over(here, Time, [&](const timeperiod& given) {
        return in_measured_period(here, given, steps.extent(), basis, [&](const timeperiod& period) {
            return sum_steps(
                here, period, steps, basis,
                [&](int n, const Life& step, const Measure& stub, bool ComponentPart) {
                    return amount(period, n, step, stub, ComponentPart);
                },
                last_step);
        });
    });
}

/// A stepped stream of which rate_of(n) is the annual rate of step n.
template <class Steps, class Rate>
double sum_rates(const Routine& here, const timeperiod& Time, const Steps& steps, const Basis& basis, Rate rate_of,
                 LastStep last_step = LastStep::given) {
    Kept<double> rates{here, steps.count()};
    return sum_stream(
        here, Time, steps, basis,
        [&](const timeperiod& period, int n, const Life& step, const Measure& stub, bool ComponentPart) {
            return ConX(Life{period.from(), period.to()}, step, rates(n, [&] { return rate_of(n); }), stub,
                        ComponentPart);
        },
        last_step);
}

template <class Steps>
double sum_given(const Routine& here, const timeperiod& Time, const Steps& steps, View<double> AnnualRates,
                 const Basis& basis) {
    return sum_stream(
        here, Time, steps, basis,
        [&](const timeperiod& period, int n, const Life& step, const Measure& stub, bool ComponentPart) {
            return ConX(Life{period.from(), period.to()}, step, AnnualRates.single_or(n), stub, ComponentPart);
        });
}

template <class Steps>
double sum_revenue(const Routine& here, const timeperiod& Time, const Steps& steps, View<double> AnnualRates,
                   GrownRate& price, const Basis& basis) {
    return sum_stream(here, Time, steps, basis,
                      [&](const timeperiod& period, int n, const Life& step, const Basis& stub, bool ComponentPart) {
                          return ConRevGrowX(period, step, price, AnnualRates.single_or(n), stub, ComponentPart);
                      });
}

template <class Steps>
double sum_revenue(const Routine& here, const timeperiod& Time, const Steps& steps, View<double> AnnualRates,
                   ForecastRate& price, const Basis& basis) {
    return sum_stream(here, Time, steps, basis,
                      [&](const timeperiod& period, int n, const Life& step, const Basis& stub, bool ComponentPart) {
                          return ConRevFcstX(period, step, price, AnnualRates.single_or(n), stub, ComponentPart);
                      });
}

/// The years of a period in steps, all measured alike.
template <class Steps>
double step_time(const char* name, const timeperiod& Time, const Steps& steps, View<date> dates, const Basis& basis) {
    Routine here{name, Routine::internal};
    here.arguments("Time,Dates,DayCount,Periods,ProjMode", Time, dates, basis.DayCount, basis.Periods, basis.ProjMode);
    basis.check(here);
    if (steps.count() == 0) return here.returning(0.0);
    return here.returning(
        sum_stream(here, Time, steps, basis, [&](const timeperiod& period, int, const Life& step, const Basis&, bool) {
            return ConX(period, step, 1.0, basis.accruals(), false);
        }));
}

/// One-step streams side by side: MultiFStep and MultiTStep.
double multi_step(Routine& here, const timeperiod& Time, const Streams& streams, const Basis& basis) {
    basis.check(here);
    if (!runs_forward(here, Time)) return 0.0;
    return streams.sum(here, [&](const Life& life, double AnnualRate) {
        return ConX(Time, life, AnnualRate,
                    {DayCountCodes::of(basis.DayCount).with_end(), basis.Periods, basis.ProjMode}, false);
    });
}

} // namespace

template <class Steps>
SteppedRevenue<Steps>::SteppedRevenue(const SteppedRates& prices, const SteppedRates& quantities) {
    constexpr int most_mini_periods = 10000;
    const SteppedRates lists[] = {prices, quantities};
    merge_rates(lists, 2, CombineSwitch::multiply, dates_, rates_,
                {.by_to_dates = !Steps::by_from_dates, .missing_is_zero = true, .most = most_mini_periods});
    // What lies before both have begun, or after one has ended, is no part of the stream.
    last_ = dates_.size();
    if constexpr (Steps::by_from_dates)
        while (dates_(first_) < std::max(quantities.dates.first(), prices.dates.first())) ++first_;
    else
        while (dates_(last_) > std::min(quantities.dates.last(), prices.dates.last())) --last_;
}

// --- As given -------------------------------------------------------------------------------------------------------

template <class Steps>
double Step(const timeperiod& Time, const Steps& given, View<double> AnnualRates, const Basis& basis) {
    Routine here{by_side<Steps>("FStep", "TStep")};
    here.inputs(Time, given, AnnualRates, basis);
    basis.check(here);
    Steps steps = given;
    if (!runs_forward(here, Time) || !has_steps(here, steps, AnnualRates)) return here.returning(0.0);
    return here.returning(sum_given(here, Time, steps, AnnualRates, basis));
}

template <class Steps>
double DiscountedStep(const timeperiod& Time, const Steps& given, View<double> AnnualRates, View<double> DisAER,
                      double years, const Basis& basis) {
    Routine here{by_side<Steps>("DiscountedFStep", "DiscountedTStep"), Routine::internal};
    here.arguments(QX_NAMED(Time, DisAER, years));
    Steps steps = given;
    if (!runs_forward(here, Time) || !has_steps(here, steps, AnnualRates)) return here.returning(0.0);
    return here.returning(sum_rates(here, Time, steps, basis, [&](int n) {
        return AnnualRates.single_or(n) / SafePow(1.0 + DisAER.entry(n), years);
    }));
}

template <class Steps>
double StepSF(const timeperiod& Time, const Life& overall, View<date> dates, View<double> AnnualRates,
              const Basis& basis) {
    Routine here{by_side<Steps>("FStepSF", "TStepSF")};
    here.inputs(Time, overall, dates, AnnualRates, basis);
    basis.check(here);
    Steps steps{Steps::by_from_dates ? overall.Finish : overall.Start, dates};
    if (!runs_forward(here, Time) || !has_steps(here, steps, AnnualRates)) return here.returning(0.0);
    return here.returning(sum_given(here, Time, StepsWithin<Steps>{steps, overall}, AnnualRates, basis));
}

template <class Steps>
double StepS(const timeperiod& Time, const Steps& given, View<double> AnnualRates, const Seasons& seasons,
             const Basis& basis) {
    Routine here{by_side<Steps>("FStepS", "TStepS")};
    here.inputs(Time, given, AnnualRates, seasons, basis);
    basis.check(here);
    Steps steps = given;
    if (!runs_forward(here, Time) || !has_steps(here, steps, AnnualRates)) return here.returning(0.0);
    return here.returning(
        sum_stream(here, Time, steps, basis,
                   [&](const timeperiod& period, int n, const Life& step, const Basis& stub, bool ComponentPart) {
                       return con_seasonal(period, step, AnnualRates.single_or(n), seasons, stub, ComponentPart);
                   }));
}

double MultiFStep(const timeperiod& Time, View<date> Finishes, View<date> FromDates, View<double> AnnualRates,
                  const Basis& basis) {
    Routine here{"MultiFStep"};
    here.inputs(Time, Finishes, FromDates, AnnualRates, basis);
    return here.returning(multi_step(here, Time, {FromDates, Finishes, AnnualRates}, basis));
}

double MultiTStep(const timeperiod& Time, View<date> Starts, View<date> ToDates, View<double> AnnualRates,
                  const Basis& basis) {
    Routine here{"MultiTStep"};
    here.inputs(Time, Starts, ToDates, AnnualRates, basis);
    return here.returning(multi_step(here, Time, {Starts, ToDates, AnnualRates}, basis));
}

double FStepTime(const timeperiod& Time, View<date> FromDates, const Basis& basis) {
    return step_time("FStepTime", Time, FromSteps{DateCrit, FromDates}, FromDates, basis);
}

double TStepTime(const timeperiod& Time, View<date> ToDates, const Basis& basis) {
    static const date no_start;
    return step_time("TStepTime", Time, ToSteps{no_start, ToDates}, ToDates, basis);
}

// --- Growth ---------------------------------------------------------------------------------------------------------

template <class Steps>
double StepGrow(const timeperiod& Time, const date& end, double InitialAnnRate, View<date> dates, const Growth& growth,
                const Basis& basis) {
    Routine here{by_side<Steps>("FStepGrow", "TStepGrow")};
    here.inputs(Time, end, InitialAnnRate, dates, growth, basis);
    note_where_growth_is_read<Steps>(here);
    basis.check(here);
    growth.check(here);
    Steps steps{end, dates};
    View<double> rates = View<double>::of(InitialAnnRate);
    if (!runs_forward(here, Time) || !has_steps(here, steps, rates)) return here.returning(0.0);
    GrownAmounts grown(growth);
    return here.returning(sum_rates(
        here, Time, steps, basis, [&](int n) { return grown(steps.date_of(n), InitialAnnRate); },
        LastStep::cut_off_too));
}

template <class Steps>
double StepGrown(const timeperiod& Time, const Steps& given, View<double> AnnualRates, const Growth& growth,
                 const Basis& basis) {
    Routine here{by_side<Steps>("FStepGrown", "TStepGrown")};
    here.inputs(Time, given, AnnualRates, growth, basis);
    note_where_growth_is_read<Steps>(here);
    basis.check(here);
    growth.check(here);
    Steps steps = given;
    if (!runs_forward(here, Time) || !has_steps(here, steps, AnnualRates)) return here.returning(0.0);
    GrownAmounts grown(growth);
    return here.returning(sum_rates(
        here, Time, steps, basis, [&](int n) { return grown(steps.date_of(n), AnnualRates.single_or(n)); },
        LastStep::cut_off_too));
}

template <class Steps>
double StepGrowX(const timeperiod& Time, const Steps& given, View<double> AnnualRates, const Growth& growth,
                 int RevMonthsOpt, const Basis& basis) {
    Routine here{by_side<Steps>("FStepGrowX", "TStepGrowX")};
    here.inputs(Time, given, AnnualRates, growth, RevMonthsOpt, basis);
    basis.check(here);
    check_reviews(here, RevMonthsOpt);
    growth.check(here);
    Steps steps = given;
    if (!runs_forward(here, Time) || !has_steps(here, steps, AnnualRates)) return here.returning(0.0);
    const Life whole = steps.extent();
    const date& anchor = growth.first_or(whole.Start);
    GrowthWalk walk(anchor, growth);
    Kept<GrownRate> rates{here, steps.count()};
    return here.returning(
        sum_stream(here, Time, steps, basis,
                   [&](const timeperiod& period, int n, const Life& step, const Basis& stub, bool ComponentPart) {
                       const auto grown = [&] {
                           const double rate = AnnualRates.single_or(n);
                           return GrownRate{walk, rate, rate, RevMonthsOpt, &anchor, &anchor};
                       };
                       return rates(n, grown).in(period, step, stub, ComponentPart);
                   }));
}

template <class Steps>
double StepGrowMkt(const timeperiod& Time, const date& end, double MktAnnRate, View<date> dates,
                   View<double> AnnualRates, const Growth& growth, const Basis& basis) {
    Routine here{by_side<Steps>("FStepGrowMkt", "TStepGrowMkt")};
    here.inputs(Time, end, MktAnnRate, dates, AnnualRates, growth, basis);
    basis.check(here);
    growth.check(here);
    Steps steps{end, dates};
    if (!runs_forward(here, Time) || !has_steps(here, steps, AnnualRates)) return here.returning(0.0);
    GrownAmounts grown(growth);
    return here.returning(sum_rates(here, Time, steps, basis, [&](int n) {
        const double rate = AnnualRates.single_or(n);
        return iszero(rate) ? grown(steps.date_of(n), MktAnnRate) : rate;
    }));
}

template <class Steps>
double StepThenGrow(const timeperiod& Time, const Steps& steps, View<double> AnnualRates, const Growth& growth,
                    int RevMonthsOpt, const Basis& basis) {
    Routine here{by_side<Steps>("FStepThenGrow", "TStepThenGrow")};
    here.inputs(Time, steps, AnnualRates, growth, RevMonthsOpt, basis);
    basis.check(here);
    check_reviews(here, RevMonthsOpt);
    growth.check(here);
    if (!runs_forward(here, Time)) return here.returning(0.0);
    if (AnnualRates.empty()) {
        here.warning("Warning: No annual rates specified in ", here.name(), ".  returning zero");
        return here.returning(0.0);
    }
    const auto& all = then_steps(steps);
    const int maxn = all.count();
    if (maxn == 0) return here.returning(0.0);
    GrowthWalk walk(growth);
    Kept<GrownRate> last_rate{here, 1};
    return here.returning(
        sum_stream(here, Time, all, basis,
                   [&](const timeperiod& period, int n, const Life& step, const Basis& stub, bool ComponentPart) {
                       if (n < maxn) return ConX(period, step, AnnualRates.single_or(n), stub, ComponentPart);
                       const auto grown = [&] {
                           const double rate = AnnualRates.single_or(std::max(steps.count(), 1));
                           return GrownRate{walk, rate, rate, RevMonthsOpt};
                       };
                       return last_rate(1, grown).in(period, step, stub, false);
                   }));
}

// --- Forecasts ------------------------------------------------------------------------------------------------------

template <class Steps>
double StepFcst(const timeperiod& Time, const Steps& given, const Forecast& forecast, const Basis& basis) {
    Routine here{by_side<Steps>("FStepFcst", "TStepFcst")};
    here.inputs(Time, given, forecast, basis);
    check_forecast(here, basis, forecast, 0);
    Steps steps = given;
    View<double> rates = forecast.values;
    if (!runs_forward(here, Time) || !has_steps(here, steps, rates)) return here.returning(0.0);
    return here.returning(sum_rates(here, Time, steps, basis, [&](int n) { return fcst(steps.date_of(n), forecast); }));
}

template <class Steps>
double StepFcstMkt(const timeperiod& Time, const Steps& given, View<double> AnnualRates, const Forecast& forecast,
                   const Basis& basis) {
    Routine here{by_side<Steps>("FStepFcstMkt", "TStepFcstMkt")};
    here.inputs(Time, given, AnnualRates, forecast, basis);
    check_forecast(here, basis, forecast, 0);
    Steps steps = given;
    if (!runs_forward(here, Time) || !has_steps(here, steps, AnnualRates)) return here.returning(0.0);
    return here.returning(sum_rates(here, Time, steps, basis, [&](int n) {
        const double rate = AnnualRates.single_or(n);
        return iszero(rate) ? fcst(steps.date_of(n), forecast) : rate;
    }));
}

// --- Several lists --------------------------------------------------------------------------------------------------

template <class Steps>
double StepCombine(const timeperiod& Time, int CombineSwitch, const Steps& given, View<double> AnnualRates,
                   const SteppedRates& second, const SteppedRates& third, const SteppedRates& fourth,
                   const Basis& basis) {
    Routine here{by_side<Steps>("FStepCombine", "TStepCombine")};
    here.inputs(Time, CombineSwitch, given, AnnualRates, second, third, fourth, basis);
    basis.check(here);
    here.limit(CombineSwitch, combine_switch_limits, "CombineSwitch");
    Steps steps = given;
    View<date>& dates = [&]() -> View<date>& {
        if constexpr (Steps::by_from_dates)
            return steps.FromDates;
        else
            return steps.ToDates;
    }();
    const SteppedRates lists[] = {{dates, AnnualRates}, second, third, fourth};
    WorkList<date> merged_dates;
    WorkList<double> merged_rates;
    merge_rates(lists, 4, static_cast<enum CombineSwitch>(CombineSwitch), merged_dates, merged_rates,
                {.by_to_dates = !Steps::by_from_dates});
    dates = merged_dates;
    View<double> rates = merged_rates;
    if (!runs_forward(here, Time) || !has_steps(here, steps, rates)) return here.returning(0.0);
    return here.returning(sum_given(here, Time, steps, rates, basis));
}

template <class Steps>
double StepRev(const timeperiod& Time, const date& end, View<date> MktPriceDates, View<double> MktPrices,
               View<date> dates, View<double> AnnualRates, const Basis& basis) {
    Routine here{by_side<Steps>("FStepRev", "TStepRev")};
    here.inputs(Time, end, MktPriceDates, MktPrices, dates, AnnualRates, basis);
    basis.check(here);
    if (!runs_forward(here, Time) || dates.empty() || MktPriceDates.empty()) return here.returning(0.0);
    const SteppedRevenue<Steps> revenue({MktPriceDates, MktPrices}, {dates, AnnualRates});
    return here.returning(sum_given(here, Time, Steps{end, revenue.dates()}, revenue.rates(), basis));
}

template <class Steps>
double StepRevGrow(const timeperiod& Time, const date& end, double MktPrice, const date& FirstRev, View<date> dates,
                   View<double> AnnualRates, const Growth& growth, int RevMonthsOpt, const Basis& basis) {
    Routine here{by_side<Steps>("FStepRevGrow", "TStepRevGrow")};
    here.inputs(Time, end, MktPrice, FirstRev, dates, AnnualRates, growth, RevMonthsOpt, basis);
    basis.check(here);
    check_reviews(here, RevMonthsOpt);
    growth.check(here);
    Steps steps{end, dates};
    if (!runs_forward(here, Time) || !has_steps(here, steps, AnnualRates)) return here.returning(0.0);
    GrowthWalk walk(growth);
    GrownRate price{walk, MktPrice, MktPrice, RevMonthsOpt, &FirstRev};
    return here.returning(sum_revenue(here, Time, steps, AnnualRates, price, basis));
}

template <class Steps>
double StepRevFcst(const timeperiod& Time, const date& end, const date& FirstRev, View<date> dates,
                   View<double> AnnualRates, const Forecast& forecast, int RevMonthsOpt, const Basis& basis) {
    Routine here{by_side<Steps>("FStepRevFcst", "TStepRevFcst")};
    here.inputs(Time, end, FirstRev, dates, AnnualRates, forecast, RevMonthsOpt, basis);
    check_forecast(here, basis, forecast, RevMonthsOpt);
    Steps steps{end, dates};
    if (!runs_forward(here, Time) || !has_steps(here, steps, AnnualRates)) return here.returning(0.0);
    ForecastRate price{FirstRev, forecast, RevMonthsOpt};
    return here.returning(sum_revenue(here, Time, steps, AnnualRates, price, basis));
}

double FStepRevSF(const timeperiod& Time, const Life& overall, const SteppedRates& prices,
                  const SteppedRates& quantities, Kept<SteppedRevenue<FromSteps>>& revenue, const Basis& basis) {
    Routine here{"FStepRevSF", Routine::internal};
    here.arguments("Time,Start,Finish,MktPriceFromDates,MktPrices,FromDates,AnnualRates,DayCount,Periods,ProjMode",
                   Time, overall.Start, overall.Finish, prices.dates, prices.rates, quantities.dates, quantities.rates,
                   basis.DayCount, basis.Periods, basis.ProjMode);
    basis.check(here);
    if (!runs_forward(here, Time) || quantities.dates.empty() || prices.dates.empty()) return here.returning(0.0);
    const auto& merged = revenue(1, [&] { return SteppedRevenue<FromSteps>(prices, quantities); });
    const FromSteps steps{overall.Finish, merged.dates()};
    return here.returning(sum_given(here, Time, StepsWithin<FromSteps>{steps, overall}, merged.rates(), basis));
}

double FStepRevGrowSF(const timeperiod& Time, const Life& overall, GrownRate& price, View<date> FromDates,
                      View<double> AnnualRates, const Basis& basis) {
    const Growth& growth = price.growth();
    Routine here{"FStepRevGrowSF", Routine::internal};
    here.arguments("Time,Start,Finish,MktPrice,FirstRev,FromDates,AnnualRates,GrowthDates,GrowthRates,RevMonthsOpt,"
                   "DayCount,Periods,ProjMode",
                   Time, overall.Start, overall.Finish, price.rate(), price.first_review(overall), FromDates,
                   AnnualRates, growth.dates, growth.rates, price.review_months(), basis.DayCount, basis.Periods,
                   basis.ProjMode);
    basis.check(here);
    check_reviews(here, price.review_months());
    growth.check(here);
    const FromSteps steps{overall.Finish, FromDates};
    if (!runs_forward(here, Time) || !has_steps(here, steps, AnnualRates)) return here.returning(0.0);
    return here.returning(sum_revenue(here, Time, StepsWithin<FromSteps>{steps, overall}, AnnualRates, price, basis));
}

double FStepRevFcstSF(const timeperiod& Time, const Life& overall, ForecastRate& price, View<date> FromDates,
                      View<double> AnnualRates, const Basis& basis) {
    const Forecast& forecast = price.forecast();
    Routine here{"FStepRevFcstSF", Routine::internal};
    here.arguments("Time,Start,Finish,FirstRev,FromDates,AnnualRates,FcstVals,StartFcst,FcstBase,RevMonthsOpt,DayCount,"
                   "Periods,ProjMode",
                   Time, overall.Start, overall.Finish, price.first_review(), FromDates, AnnualRates, forecast.values,
                   forecast.start, forecast.base, price.review_months(), basis.DayCount, basis.Periods, basis.ProjMode);
    check_forecast(here, basis, forecast, price.review_months());
    const FromSteps steps{overall.Finish, FromDates};
    if (!runs_forward(here, Time) || !has_steps(here, steps, AnnualRates)) return here.returning(0.0);
    return here.returning(sum_revenue(here, Time, StepsWithin<FromSteps>{steps, overall}, AnnualRates, price, basis));
}

template <class Steps>
double StepThenGrowRev(const timeperiod& Time, const date& end, double MktPrice, View<date> dates,
                       View<double> AnnualRates, const Growth& growth, const Growth& rate_growth, int RevMonthsOpt,
                       int RevMonthsAnnRateOpt, const Basis& basis) {
    Routine here{by_side<Steps>("FStepThenGrowRev", "TStepThenGrowRev")};
    here.inputs(Time, end, MktPrice, dates, AnnualRates, growth, rate_growth, RevMonthsOpt, RevMonthsAnnRateOpt, basis);
    basis.check(here);
    check_reviews(here, RevMonthsOpt);
    check_reviews(here, RevMonthsAnnRateOpt, "RevMonthsAnnRateOpt");
    growth.check(here);
    rate_growth.check(here);
    const Steps steps{end, dates};
    const auto& all = then_steps(steps);
    const int maxn = all.count();
    if (!runs_forward(here, Time) || maxn == 0 || AnnualRates.empty()) return here.returning(0.0);
    GrowthWalk walk(growth);
    GrownRate price{walk, MktPrice, MktPrice, std::max(RevMonthsOpt, 1)};
    return here.returning(
        sum_stream(here, Time, all, basis,
                   [&](const timeperiod& period, int n, const Life& step, const Basis& stub, bool ComponentPart) {
                       if (n < maxn)
                           return ConRevGrowX(period, step, price, AnnualRates.single_or(n), stub, ComponentPart);
                       return ConRevGrow2X(period, step, MktPrice, rate_growth.first_or(step.Start),
                                           AnnualRates.single_or(std::max(steps.count(), 1)), growth, rate_growth,
                                           RevMonthsOpt, RevMonthsAnnRateOpt, stub, ComponentPart);
                   }));
}

// --- Both sides -----------------------------------------------------------------------------------------------------

#define QX_ROUTINES_OVER(Steps)                                                                                        \
    template double Step(const timeperiod&, const Steps&, View<double>, const Basis&);                                 \
    template double DiscountedStep(const timeperiod&, const Steps&, View<double>, View<double>, double, const Basis&); \
    template double StepSF<Steps>(const timeperiod&, const Life&, View<date>, View<double>, const Basis&);             \
    template double StepS(const timeperiod&, const Steps&, View<double>, const Seasons&, const Basis&);                \
    template double StepGrow<Steps>(const timeperiod&, const date&, double, View<date>, const Growth&, const Basis&);  \
    template double StepGrown(const timeperiod&, const Steps&, View<double>, const Growth&, const Basis&);             \
    template double StepGrowX(const timeperiod&, const Steps&, View<double>, const Growth&, int, const Basis&);        \
    template double StepGrowMkt<Steps>(const timeperiod&, const date&, double, View<date>, View<double>,               \
                                       const Growth&, const Basis&);                                                   \
    template double StepThenGrow(const timeperiod&, const Steps&, View<double>, const Growth&, int, const Basis&);     \
    template double StepFcst(const timeperiod&, const Steps&, const Forecast&, const Basis&);                          \
    template double StepFcstMkt(const timeperiod&, const Steps&, View<double>, const Forecast&, const Basis&);         \
    template double StepCombine(const timeperiod&, int, const Steps&, View<double>, const SteppedRates&,               \
                                const SteppedRates&, const SteppedRates&, const Basis&);                               \
    template double StepRev<Steps>(const timeperiod&, const date&, View<date>, View<double>, View<date>, View<double>, \
                                   const Basis&);                                                                      \
    template double StepRevGrow<Steps>(const timeperiod&, const date&, double, const date&, View<date>, View<double>,  \
                                       const Growth&, int, const Basis&);                                              \
    template double StepRevFcst<Steps>(const timeperiod&, const date&, const date&, View<date>, View<double>,          \
                                       const Forecast&, int, const Basis&);                                            \
    template double StepThenGrowRev<Steps>(const timeperiod&, const date&, double, View<date>, View<double>,           \
                                           const Growth&, const Growth&, int, int, const Basis&)
QX_ROUTINES_OVER(FromSteps);
QX_ROUTINES_OVER(ToSteps);
template class SteppedRevenue<FromSteps>;

} // namespace qx
