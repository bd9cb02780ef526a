// A rate that a forecast gives at reviews, for the streams that run at it.
#pragma once

#include "calendar/time_period.h"
#include "projections/terms.h"

namespace qx {

/// The market of ConFcstMktX. The review period in which a period ends serves the next one.
class ForecastRate {
  public:
    /// FirstRev and the start of the forecast must outlive this.
    ForecastRate(const date& FirstRev, const Forecast& forecast, int RevMonthsOpt)
        : FirstRev_(FirstRev), forecast_(forecast), RevMonthsOpt_(RevMonthsOpt) {}

    const Forecast& forecast() const { return forecast_; }
    const date& first_review() const { return FirstRev_; }
    int review_months() const { return RevMonthsOpt_; }
    /// The amount in a period of a stream that starts at InitialAnnRate.
    double in(const timeperiod& Time, const Life& life, double InitialAnnRate, const Basis& basis, bool ComponentPart);

  private:
    /// ReviewPeriodFcst of a date; from the date on that an earlier call asked for it gives the same rate.
    timeperiod review_period(const date& day, const date& FirstReview);

    const date& FirstRev_;
    Forecast forecast_;
    int RevMonthsOpt_;
    date asked_;
    timeperiod known_;
};

} // namespace qx
