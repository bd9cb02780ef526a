// What an amount is worth at a date under dated annual growth rates.
//
// Growth counts months and no days: from 15 March to 15 April is one month, whatever the month's length. It starts on
// the first growth date, before which an amount is worth its starting value. With reviews every so many months, from
// the first growth date on, it shows only at the reviews.
//
// All throw missinggrowthdate (Growth::check), and errlibmin and errlibmax for months between reviews outside 0 to
// 1000.
#pragma once

#include "calendar/time_period.h"
#include "core/pools.h"
#include "projections/terms.h"

#include <optional>

namespace qx {

/// A discount of the market rate at reviews, where its sign says nothing.
inline constexpr Limits review_discount_limits{0, 1};

/// How a growth rate works through its section.
enum GrowthType : int {
    growth_exponential = 0, ///< (1 + rate) ^ years
    growth_linear = 1,      ///< 1 + rate x years
};

/// The last review on or before a date, the zero date if there is none; the date itself if RevMonths is 0.
date review_before(const date& TheDate, const date& FirstRev, int RevMonths);
/// The first review after a date; the date itself if RevMonths is 0.
date review_after(const date& TheDate, const date& FirstRev, int RevMonths);

/// StartingValue grown from Date1 to Date2, or to the last review before it. A value of zero stays zero. Throws
/// errlibillegalswitch for an unknown GrowthType, errlibmin and errlibmax for a DayCount outside 0 to 999 (which
/// has no effect on growth), outofrange for a rate without a date, errlibbadexponentiation for a rate below -100%.
double GrowFromTo(const date& Date1, const date& Date2, double StartingValue, const Growth& growth, int GrowthType,
                  int RevMonthsOpt, const Measure& measure);

/// The value at a date: growth from the first growth date.
double Grow(const date& TheDate, double StartingValue, const Growth& growth, int RevMonthsOpt);
/// The same with linear growth.
double GrowLin(const date& TheDate, double StartingValue, const Growth& growth, int RevMonthsOpt);
/// Grow without reviews, which took its place.
double GrowQ(const date& TheDate, double StartingValue, const Growth& growth);
/// GrowQ with the rates before the dates.
double MarketG(const date& TheDate, double Amt, View<double> GrowthRates, View<date> GrowthDates);
/// A single payment, grown at one annual rate from GrowFrom to its date, if that lies in the period from Time on that
/// is BaseYrs years long (timeperiod::settime_in_years); otherwise 0.
double OneGrow(double Time, const date& EventDate, double Amt, const date& GrowFrom, double GrowthRatePA,
               double BaseYrs);

/// The value at a date of something that is reviewed to the market every RevMos months (0 is read as 1) from the first
/// growth date on, less a discount of RevDisc (0 to 1), upward-only as UOTog says (ReviewedRate). Without discount and
/// toggles it is Grow. At most 200 reviews are made. Throws errlibmin and errlibmax for a RevDisc outside 0 to 1.
double GrowMkt(const date& TheDate, double StartingValue, const Growth& growth, int RevMos, double RevDisc,
               View<date> UOTog);

/// The seasonal index of a period: what a stream with these weights of the seasons (seasonal_amount) brings in it, as a
/// ratio to what an even stream of the same annual amount brings. 1 for whole years, above 1 in a season that is
/// heavier than the average; 0 for a period without length. Without a sequence the factors weigh equal parts of the
/// year.
double SIndex(const timeperiod& Time, const Range<double>& SeasonFactors, const AnnualSequence& SeasonSeq,
              const Measure& measure);

/// Exponential growth without reviews from one date to others: what GrowFromTo returns for each, bit for bit, with the
/// growth of each section worked out once. The trace shows the calls of GrowFromTo instead, with their measure.
class GrowthWalk {
  public:
    /// Both must outlive it.
    GrowthWalk(const date& Date1, const Growth& growth) : from_(Date1), growth_(growth) {}
    /// From the first growth date.
    explicit GrowthWalk(const Growth& growth) : GrowthWalk(growth.first_or(DateCrit), growth) {}

    const Growth& growth() const { return growth_; }
    /// An amount grown to a date.
    double to(const date& Date2, double StartingValue, const Measure& measure);
    /// The section in which a date lies, the first for one before them all.
    int section_at(const date& day) const;
    /// An amount grown through the sections from `first` to `last`, which must not be the last of all.
    double through(int first, int last, double amount, const Measure& measure);

  private:
    /// Throws outofrange if a rate follows that of section n, but no date.
    void check_next(int n) const;
    /// Works out the growth of the sections up to n, which must not be the last.
    void reach(int n);
    /// The growth of a section up to a date.
    double section(int n, const date& ToDate) const;

    const date& from_;
    const Growth& growth_;
    /// The growth of each section, and the product of those up to it and its own.
    struct Sections {
        WorkList<double> growth, factors;
    };
    std::optional<Sections> sections_; ///< none until a section after the first is reached
};

/// Grow without reviews at many dates.
class GrownAmounts {
  public:
    explicit GrownAmounts(const Growth& growth) : walk_(growth) {}
    double operator()(const date& TheDate, double StartingValue) {
        const Growth& growth = walk_.growth();
        return traced() || growth.none() ? Grow(TheDate, StartingValue, growth, 0)
                                         : walk_.to(TheDate, StartingValue, any_measure());
    }

  private:
    GrowthWalk walk_;
};

} // namespace qx
