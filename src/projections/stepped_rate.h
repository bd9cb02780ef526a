// Streams of money whose rate changes at given dates. Each function has two sides, by from-dates (FStep...) and by
// to-dates (TStep...), and is one template over them.
//
// Rate n is that of step n; a single rate serves for all steps, otherwise one that is missing throws outofrange when
// its step is reached. Only the first step is measured with the start stub of a composite day count, and only the last
// with its end stub. No from-dates give 0; no to-dates are one step from Start that never ends. What is read at the
// date of a step is read where a step by from-dates begins and one by to-dates ends.
//
// Errors as in constant_rate.h.
#pragma once

#include "calendar/merge_rates.h"
#include "calendar/time_period.h"
#include "core/twin_run.h"
#include "projections/steps.h"

namespace qx {

/// The amount that falls into a period of a stream that runs at AnnualRates(n) a year through step n.
template <class Steps>
double Step(const timeperiod& Time, const Steps& steps, View<double> AnnualRates, const Basis& basis);
/// The same with what step n pays discounted over a time in years, at its own rate DisAER(n) or the last one.
template <class Steps>
double DiscountedStep(const timeperiod& Time, const Steps& steps, View<double> AnnualRates, View<double> DisAER,
                      double years, const Basis& basis);
/// Step of what lies between overall dates.
template <class Steps>
double StepSF(const timeperiod& Time, const Life& overall, View<date> dates, View<double> AnnualRates,
              const Basis& basis);
/// The same with the annual rates spread over the year by seasons (con_seasonal).
template <class Steps>
double StepS(const timeperiod& Time, const Steps& steps, View<double> AnnualRates, const Seasons& seasons,
             const Basis& basis);
/// The sum of several streams side by side, each of one step: from its own from-date to its own Finish, or from its own
/// Start to its own to-date.
double MultiFStep(const timeperiod& Time, View<date> Finishes, View<date> FromDates, View<double> AnnualRates,
                  const Basis& basis);
double MultiTStep(const timeperiod& Time, View<date> Starts, View<date> ToDates, View<double> AnnualRates,
                  const Basis& basis);

/// The years of a period that lie in steps: from the first from-date on for ever, or up to the last to-date.
double FStepTime(const timeperiod& Time, View<date> FromDates, const Basis& basis);
double TStepTime(const timeperiod& Time, View<date> ToDates, const Basis& basis);

// --- Growth ---------------------------------------------------------------------------------------------------------

/// The rate of a step is InitialAnnRate grown to the date of the step. A step that Finish cuts off is measured as the
/// last one.
template <class Steps>
double StepGrow(const timeperiod& Time, const date& end, double InitialAnnRate, View<date> dates, const Growth& growth,
                const Basis& basis);
/// The rate of a step is its own grown to the date of the step, measured in the same way.
template <class Steps>
double StepGrown(const timeperiod& Time, const Steps& steps, View<double> AnnualRates, const Growth& growth,
                 const Basis& basis);
/// The rate of a step grows within the step, every RevMonthsOpt months from the first growth date on.
template <class Steps>
double StepGrowX(const timeperiod& Time, const Steps& steps, View<double> AnnualRates, const Growth& growth,
                 int RevMonthsOpt, const Basis& basis);
/// A rate of zero is a gap, which takes the market rate grown to the date of the step.
template <class Steps>
double StepGrowMkt(const timeperiod& Time, const date& end, double MktAnnRate, View<date> dates,
                   View<double> AnnualRates, const Growth& growth, const Basis& basis);
/// Steps as given, then growth: by from-dates within the last step, by to-dates of the last rate after the last date.
template <class Steps>
double StepThenGrow(const timeperiod& Time, const Steps& steps, View<double> AnnualRates, const Growth& growth,
                    int RevMonthsOpt, const Basis& basis);

// --- Forecasts ------------------------------------------------------------------------------------------------------

/// The rate of a step is the forecast at its date.
template <class Steps>
double StepFcst(const timeperiod& Time, const Steps& steps, const Forecast& forecast, const Basis& basis);
/// A rate of zero is a gap, which takes the forecast at the date of the step.
template <class Steps>
double StepFcstMkt(const timeperiod& Time, const Steps& steps, View<double> AnnualRates, const Forecast& forecast,
                   const Basis& basis);

// --- Several lists --------------------------------------------------------------------------------------------------

/// Up to four lists merged to one (merge_rates). A list counts from its first from-date on, or up to its last to-date.
/// Throws errlibmin, errlibmax for a CombineSwitch outside 0 to 7.
template <class Steps>
double StepCombine(const timeperiod& Time, int CombineSwitch, const Steps& steps, View<double> AnnualRates,
                   const SteppedRates& second, const SteppedRates& third, const SteppedRates& fourth,
                   const Basis& basis);

/// Revenue: a stepped quantity at a stepped price, where there are both.
template <class Steps>
double StepRev(const timeperiod& Time, const date& end, View<date> MktPriceDates, View<double> MktPrices,
               View<date> dates, View<double> AnnualRates, const Basis& basis);
/// A stepped quantity at a price that grows and is reviewed (ConRevGrow), or is read from a forecast (ConRevFcst).
template <class Steps>
double StepRevGrow(const timeperiod& Time, const date& end, double MktPrice, const date& FirstRev, View<date> dates,
                   View<double> AnnualRates, const Growth& growth, int RevMonthsOpt, const Basis& basis);
template <class Steps>
double StepRevFcst(const timeperiod& Time, const date& end, const date& FirstRev, View<date> dates,
                   View<double> AnnualRates, const Forecast& forecast, int RevMonthsOpt, const Basis& basis);
/// Steps of price times quantity, where there are both.
template <class Steps>
class SteppedRevenue {
  public:
    SteppedRevenue(const SteppedRates& prices, const SteppedRates& quantities);
    View<date> dates() const { return View<date>(dates_).upto(last_).from(first_); }
    View<double> rates() const { return View<double>(rates_).upto(last_).from(first_); }

  private:
    WorkList<date> dates_;
    WorkList<double> rates_;
    int first_ = 1, last_ = 0;
};
/// StepRev and both of these by from-dates, of what lies between overall dates.
double FStepRevSF(const timeperiod& Time, const Life& overall, const SteppedRates& prices,
                  const SteppedRates& quantities, Kept<SteppedRevenue<FromSteps>>& revenue, const Basis& basis);
double FStepRevGrowSF(const timeperiod& Time, const Life& overall, GrownRate& price, View<date> FromDates,
                      View<double> AnnualRates, const Basis& basis);
double FStepRevFcstSF(const timeperiod& Time, const Life& overall, ForecastRate& price, View<date> FromDates,
                      View<double> AnnualRates, const Basis& basis);
/// StepThenGrow as revenue: steps of quantity as given and then growing (ConRevGrow2), at a price that grows
/// throughout.
template <class Steps>
double StepThenGrowRev(const timeperiod& Time, const date& end, double MktPrice, View<date> dates,
                       View<double> AnnualRates, const Growth& growth, const Growth& rate_growth, int RevMonthsOpt,
                       int RevMonthsAnnRateOpt, const Basis& basis);

} // namespace qx
