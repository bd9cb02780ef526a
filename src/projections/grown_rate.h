// A rate that grows by sections and is taken up at reviews, for the streams that run at it.
#pragma once

#include "projections/growth.h"
#include "projections/terms.h"
#include "rates/growing_annuities.h"

#include <optional>

namespace qx {

/// The market of ConGrowMktX, without a lag. What one period works out of the section of growth that it lies in serves
/// the periods and the streams that follow.
class GrownRate {
  public:
    /// MktAnnRate is the market rate where the walk starts, which is the first growth date unless another is given.
    /// Streams are reviewed from FirstRev on, from where the walk starts if there is none. The walk and both dates must
    /// outlive this.
    GrownRate(GrowthWalk& walk, double MktAnnRate, double InitialAnnRate, int RevMonthsOpt,
              const date* FirstRev = nullptr, const date* GrowthBaseDate = nullptr)
        : walk_(walk), MktAnnRate_(MktAnnRate), InitialAnnRate_(InitialAnnRate), RevMonthsOpt_(RevMonthsOpt),
          FirstRev_(FirstRev), GrowthBaseDate_(GrowthBaseDate) {}
    double rate() const { return MktAnnRate_; }
    const Growth& growth() const { return walk_.growth(); }
    int review_months() const { return RevMonthsOpt_; }
    const date& base(const Life& life) const {
        return GrowthBaseDate_ != nullptr ? *GrowthBaseDate_ : growth().first_or(life.Start);
    }
    const date& first_review(const Life& life) const { return FirstRev_ != nullptr ? *FirstRev_ : base(life); }
    /// The amount of a stream in a period.
    double in(const timeperiod& Time, const Life& life, const Basis& basis, bool ComponentPart);

  private:
    /// A section under a day count.
    struct Section {
        int number = 0;
        double day_count = 0.0;
        date next_review;
        double passing = 0.0;                ///< the rate with which it begins
        std::optional<SteppedGrowth> stream; ///< from its beginning on
    };

    GrowthWalk& walk_;
    double MktAnnRate_, InitialAnnRate_;
    int RevMonthsOpt_;
    const date *FirstRev_, *GrowthBaseDate_;
    Section section_; ///< the one asked for last; number 0 is none
};

} // namespace qx
