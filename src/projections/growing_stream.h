// A stream whose rate follows a growing market, asked for one period after the other.
#pragma once

#include "projections/constant_rate.h"
#include "projections/growth.h"

namespace qx {

/// ConGrowMktX without a lag, with the growth of each section worked out once for all periods. What it is made of must
/// outlive it.
class GrowingStream {
  public:
    GrowingStream(const date& FirstRev, double MktAnnRate, double InitialAnnRate, const Growth& growth,
                  const date& GrowthBaseDate, int RevMonthsOpt, const Measure& measure)
        : FirstRev_(FirstRev), GrowthBaseDate_(GrowthBaseDate), MktAnnRate_(MktAnnRate),
          InitialAnnRate_(InitialAnnRate), growth_(growth), RevMonthsOpt_(RevMonthsOpt),
          walk_(GrowthBaseDate, MktAnnRate, growth, measure) {}
    /// One of con_grow: a rate that grows from the first growth date on.
    GrowingStream(double AnnualRate, const date& Start, const Growth& growth, int RevMonthsOpt, const Measure& measure)
        : GrowingStream(growth.first_or(Start), AnnualRate, AnnualRate, growth, growth.first_or(Start), RevMonthsOpt,
                        measure) {}

    double in(const timeperiod& Time, const Life& life, const Basis& basis, bool ComponentPart);

  private:
    const date& FirstRev_;
    const date& GrowthBaseDate_;
    double MktAnnRate_, InitialAnnRate_;
    const Growth& growth_;
    int RevMonthsOpt_;
    GrowthWalk walk_;
};

} // namespace qx
