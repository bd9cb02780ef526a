// Spreads along a curve: the S-curve of building costs, the general spread that one number shapes, and a curve given by
// its points. See spreads.h.
#pragma once

#include "projections/spreads.h"

namespace qx {

inline constexpr Limits skew_limits{0, std::numeric_limits<double>::infinity()};
inline constexpr Limits peakness_limits{0, std::numeric_limits<double>::infinity()};

/// Along an S-curve: of the time x that has passed, raised to Skew (below 1 earlier, above 1 later), the part
/// (1 + Peakness x^2 - cos(pi x)) / (2 + Peakness) is paid. A Peakness of 1000 or more is an even spread, a Skew of 0
/// one payment on Start. Throws errlibmin for a negative Skew or Peakness.
struct CurvedSpread {
    using takes = Takes<date, date, double, double, double>;
    const date& Start;
    const date& Finish;
    double Total;
    double Skew;
    double Peakness;

    static constexpr SpreadNames names{"SCurve", "SCurveAdj", "SCurveH"};
    const date& start() const { return Start; }
    void check(Routine& here) const {
        here.limit(Skew, skew_limits, "Skew");
        here.limit(Peakness, peakness_limits, "Peakness");
    }
    double in(const Routine& here, const timeperiod& Time, const Basis& basis) const;
};

/// By one number: the whole part of Shape is the skew from 100 (all on Start) to -100 (all on completion), its decimals
/// are how peaked it is, from 0 (even, whatever the skew) to 0.99 (one payment). A CompletionDate that is not after
/// Start is Start.
struct GeneralSpread {
    using takes = Takes<date, double, date, double, double>;
    const date& Start;
    double Total;
    const date& CompletionDate;
    double CurveModel; ///< reserved
    double Shape;

    static constexpr SpreadNames names{"GSpread", "GSpreadAdj", "GSpreadH"};
    const date& start() const { return Start; }
    const date& end() const { return std::max(Start, CompletionDate); }
    void check(Routine&) const {}
    double in(const Routine& here, const timeperiod& Time, const Basis& basis) const;
};

/// A curve of what is paid, as a part of the total, by the part of the time that has passed.
struct CumulativeCurve {
    using takes = Takes<Range<double>, Range<double>, int, double, double>;
    View<double> CumTime;
    View<double> CumAmt;
    int InterpType; ///< an InterpolationType
    double Tension;
    double Bias;

    /// What is paid at a time; after the last point what is paid there.
    double at(double time) const;
};
/// Along a curve given by its points. Throws illegalvalue for points outside 0 to 1 or times that do not start at 0,
/// notascending for times that fall, inputrangelength2 for lists of different length, and for the curve's switches as
/// Interpolate does.
struct CumulativeSpread {
    using takes = Takes<date, date, double, CumulativeCurve>;
    const date& Start;
    const date& Finish;
    double Total;
    CumulativeCurve curve;

    static constexpr SpreadNames names{"SCumCurve"};
    void check(Routine& here) const;
    double in(const Routine& here, const timeperiod& Time, const Basis& basis) const;
};

/// Along an S-curve: one total, or several side by side.
double SCurve(const timeperiod& Time, const Streams& streams, double Skew, double Peakness, const Basis& basis);
/// The same of a total that grows up to the start.
double SCurveGrow(const timeperiod& Time, const CurvedSpread& spread, const Growth& growth, const Basis& basis);
/// Every Periodicity months up to AbsFinish, as UniSpreadPer.
double SCurvePer(const timeperiod& Time, const Life& life, const date& AbsFinish, View<double> Totals, double Skew,
                 double Peakness, int Periodicity, const Basis& basis);
double SCurveGrowPer(const timeperiod& Time, const Life& life, const date& AbsFinish, View<double> Totals, double Skew,
                     double Peakness, const Growth& growth, int Periodicity, const Basis& basis);
/// Under the name of older workbooks: SCurve in a period of years from Time on.
double SCurveB(double Time, const Streams& streams, double Skew, double Peakness, double BaseYrs, const Basis& basis);

} // namespace qx
