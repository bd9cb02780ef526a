#include "numerics/distributions.h"
#include "core/routine.h"
#include "numerics/interpolation.h"
#include "numerics/lookup.h"
#include "numerics/normal.h"
#include "numerics/random.h"

#include <cmath>
#include <utility>

namespace qx {

namespace {

void check_type(Routine& here, int DistType) { here.limit(DistType, 0, 10, "DistType"); }
void check_probability(Routine& here, double RandOpt) { here.limit(RandOpt, -1, 1, "RandOpt"); }

// Written so that a point that is no number is refused too.
void check_ascent(const Routine& here, double DistMin, double DistMid, double DistMax) {
    if (!(DistMin <= DistMid && DistMid <= DistMax))
        here.fail<errlibbaddistribution>("", "DistMin, DistMid and DistMax should be in ascending order");
}

double probability(const Routine& here, double RandOpt) {
    if (RandOpt >= 0.0) return RandOpt;
    const double drawn = next_random();
    here.info("Random number drawn: ", drawn);
    return drawn;
}

double held(double value, double low, double high) { return value < low ? low : value > high ? high : value; }
double square(double x) { return x * x; }

// --- The deviate of a probability ---------------------------------------------------------------------------------

double uniform_deviate(double min, double max, double p) { return (max - min) * p + min; }

double triangular_deviate(double min, double mid, double max, double p) {
    if (safe_divide(mid - min, max - min) >= p) return min + std::sqrt((mid - min) * p * (max - min));
    return max - std::sqrt((1.0 - p) * (max - mid) * (max - min));
}

double double_triangular_deviate(double min, double mid, double max, double p) {
    return p <= 0.5 ? triangular_deviate(min, mid, mid, 2.0 * p) : triangular_deviate(mid, mid, max, 2.0 * (p - 0.5));
}

// --- The normal of three points, or of the logarithms of three ----------------------------------------------------

struct HalfNormals {
    double lower, upper; ///< standard deviations on either side of the mean
};

HalfNormals half_normals(const Routine& here, double min, double mid, double max) {
    if (!(min < mid && mid < max))
        here.fail<errlibbaddistribution>("", "Your Normal Distribution needs to be ascending");
    if (std::fabs(max - 2.0 * mid + min) > 0.01 * (max - min))
        here.warning("Warning: Your Normal Distribution is not symmetrical, it is being split into two half-Normal "
                     "distributions either side of the mean");
    return {(mid - min) / normal_99, (max - mid) / normal_99};
}

/// The deviate of a probability, whose standard normal deviate a routine gives.
double normal_deviate(const HalfNormals& half, double min, double mid, double max, double p,
                      double (*standard)(double)) {
    if (iszero(p)) return min;
    if (isequal(p, 1.0)) return max;
    const double deviation = p >= 0.5 ? half.upper : half.lower;
    return held(standard(p) * deviation + mid, min, max);
}
double normal_deviate(const Routine& here, double min, double mid, double max, double RandOpt) {
    return normal_deviate(half_normals(here, min, mid, max), min, mid, max, RandOpt, NormalDeviate);
}

double normal_cumulative(const Routine& here, double deviate, double min, double mid, double max,
                         double ClipTailLevel) {
    const HalfNormals half = half_normals(here, min, mid, max);
    if (deviate <= normal_deviate(half, min, mid, max, ClipTailLevel, PPND16)) return 0.0;
    if (deviate >= normal_deviate(half, min, mid, max, 1.0 - ClipTailLevel, PPND16)) return 1.0;
    return normal_probability((deviate - mid) / (deviate < mid ? half.lower : half.upper));
}

void check_logarithms(const Routine& here, double DistMin, double DistMid, double DistMax) {
    if (iszero(DistMin) || iszero(DistMid) || iszero(DistMax))
        here.fail<errlibbaddistribution>(
            "", "One of the min, mid or max points in your lognormal distribution is zero and the distribution cannot, "
                "therefore, be evaluated because log(0) is undefined (infinite)");
}

// --- The probability of a deviate ---------------------------------------------------------------------------------

double triangular_cumulative(double deviate, double min, double mid, double max) {
    if (deviate <= min) return 0.0;
    if (deviate >= max) return 1.0;
    if (isequal(deviate, mid)) return safe_divide(mid - min, max - min);
    if (deviate < mid) return square(deviate - min) / ((max - min) * (mid - min));
    return 1.0 - square(max - deviate) / ((max - min) * (max - mid));
}

double double_triangular_cumulative(double deviate, double min, double mid, double max) {
    if (deviate <= min) return 0.0;
    if (deviate >= max) return 1.0;
    if (isequal(deviate, mid)) return 0.5;
    return deviate < mid ? 0.5 * triangular_cumulative(deviate, min, mid, mid)
                         : 0.5 + 0.5 * triangular_cumulative(deviate, mid, mid, max);
}

double reserved(const char* name, double RandOpt) {
    Routine here{name};
    check_probability(here, RandOpt);
    return here.returning(0.0);
}

} // namespace

double RandNum() {
    Routine here{"RandNum"};
    here.change_note(28, "See Change in Behaviour 28, Sep-03 :Changed Name (was Random)");
    return here.returning(next_random());
}

int NRandom() {
    Routine here{"NRandom"};
    return here.returning(static_cast<int>(random_position()));
}

double PickRandom(int WhichOne) {
    Routine here{"PickRandom"};
    here.inputs(WhichOne);
    return here.returning(pick_random(WhichOne));
}

double Distribution(double DistMin, double DistMid, double DistMax, int DistType, double RandOpt) {
    Routine here{"Distribution"};
    here.inputs(DistMin, DistMid, DistMax, DistType, RandOpt);
    check_type(here, DistType);
    check_probability(here, RandOpt);
    check_ascent(here, DistMin, DistMid, DistMax);
    switch (DistType) {
    case uniform_distribution:
        return here.returning(uniform_deviate(DistMin, DistMax, probability(here, RandOpt)));
    case triangular_distribution:
        return here.returning(triangular_deviate(DistMin, DistMid, DistMax, probability(here, RandOpt)));
    case double_triangular_distribution:
        return here.returning(double_triangular_deviate(DistMin, DistMid, DistMax, probability(here, RandOpt)));
    case normal_distribution:
        return here.returning(normal_deviate(here, DistMin, DistMid, DistMax, RandOpt));
    case lognormal_distribution:
        check_logarithms(here, DistMin, DistMid, DistMax);
        return here.returning(
            held(std::exp(normal_deviate(here, std::log(DistMin), std::log(DistMid), std::log(DistMax), RandOpt)),
                 DistMin, DistMax));
    default:
        return here.returning(0.0);
    }
}

double CumProb(double Deviate, double DistMin, double DistMid, double DistMax, int DistType, double ClipTailLevel) {
    Routine here{"CumProb"};
    here.inputs(Deviate, DistMin, DistMid, DistMax, DistType, ClipTailLevel);
    check_type(here, DistType);
    here.limit(ClipTailLevel, 0, 1, "ClipTailLevel");
    check_ascent(here, DistMin, DistMid, DistMax);
    switch (DistType) {
    case uniform_distribution:
        if (Deviate < DistMin || Deviate > DistMax) here.warning("The deviate lies outside the distribution");
        return here.returning(safe_divide(Deviate - DistMin, DistMax - DistMin));
    case triangular_distribution:
        return here.returning(triangular_cumulative(Deviate, DistMin, DistMid, DistMax));
    case double_triangular_distribution:
        return here.returning(double_triangular_cumulative(Deviate, DistMin, DistMid, DistMax));
    case normal_distribution:
        return here.returning(normal_cumulative(here, Deviate, DistMin, DistMid, DistMax, ClipTailLevel));
    case lognormal_distribution:
        check_logarithms(here, DistMin, DistMid, DistMax);
        // The logarithm of zero is minus infinity, where the probability is 0; below zero it is 0 as well.
        return here.returning(normal_cumulative(here, std::log(Deviate > 0.0 ? Deviate : 0.0), std::log(DistMin),
                                                std::log(DistMid), std::log(DistMax), ClipTailLevel));
    default:
        return here.returning(0.0);
    }
}

double DistCumulative(View<double> CumProbs, View<double> Values, int CumSwitch, double RandOpt) {
    Routine here{"DistCumulative"};
    here.inputs(CumProbs, Values, CumSwitch, RandOpt);
    here.limit(CumSwitch, 0, 10, "CumSwitch");
    check_probability(here, RandOpt);
    if (CumSwitch > 2) here.fail<inputerror>("CumSwitch", "Illegal CumSwitch");
    const double p = probability(here, RandOpt);
    if (CumSwitch == 0) return here.returning(Interpolate(CumProbs, Values, p, by_line, no_XMin, no_XMax, 0.0, 0.0));
    return here.returning(LookupN(p, CumProbs, Values, CumSwitch == 1 ? descend_less_or_equal : ascend_greater_or_equal,
                                  0.0, no_fallback));
}

double PartialDependency(View<double> AxisRangeX, double InputValueX, View<double> InputValuesMin,
                         View<double> InputValuesMid, View<double> InputValuesMax, int DistType, double RandOpt) {
    Routine here{"PartialDependency"};
    here.inputs(AxisRangeX, InputValueX, InputValuesMin, InputValuesMid, InputValuesMax, DistType, RandOpt);
    check_type(here, DistType);
    check_probability(here, RandOpt);
    const auto at_x = [&](View<double> values) {
        return Interpolate(AxisRangeX, values, InputValueX, by_line, no_XMin, no_XMax, 0.0, 0.0);
    };
    const double DistMin = at_x(InputValuesMin);
    const double DistMid = at_x(InputValuesMid);
    const double DistMax = at_x(InputValuesMax);
    return here.returning(Distribution(DistMin, DistMid, DistMax, DistType, RandOpt));
}

double DistUniform(double DistMin, double DistMax, double RandOpt) {
    Routine here{"DistUniform"};
    here.inputs(DistMin, DistMax, RandOpt);
    check_probability(here, RandOpt);
    check_ascent(here, DistMin, DistMin, DistMax);
    return here.returning(uniform_deviate(DistMin, DistMax, probability(here, RandOpt)));
}

double DistTriangular(double DistMin, double DistMid, double DistMax, double RandOpt) {
    Routine here{"DistTriangular"};
    here.inputs(DistMin, DistMid, DistMax, RandOpt);
    check_probability(here, RandOpt);
    check_ascent(here, DistMin, DistMid, DistMax);
    return here.returning(triangular_deviate(DistMin, DistMid, DistMax, probability(here, RandOpt)));
}

double DistDoubleTri(double DistMin, double DistMid, double DistMax, double RandOpt) {
    Routine here{"DistDoubleTri"};
    here.inputs(DistMin, DistMid, DistMax, RandOpt);
    check_probability(here, RandOpt);
    check_ascent(here, DistMin, DistMid, DistMax);
    return here.returning(double_triangular_deviate(DistMin, DistMid, DistMax, probability(here, RandOpt)));
}

double DistNormal(double StanDev, double Mean, double RandOpt) {
    Routine here{"DistNormal"};
    here.inputs(StanDev, Mean, RandOpt);
    here.at_least(StanDev, 0, "StanDev");
    check_probability(here, RandOpt);
    return here.returning(NormalDeviate(RandOpt) * StanDev + Mean);
}

double DistLogNormal(double StanDev, double Mean, double RandOpt) {
    Routine here{"DistLogNormal"};
    here.inputs(StanDev, Mean, RandOpt);
    here.at_least(StanDev, 0, "StanDev");
    check_probability(here, RandOpt);
    return here.returning(std::exp(NormalDeviate(RandOpt) * StanDev + Mean));
}

std::string DescribeDistType(int DistType) {
    Routine here{"DescribeDistType"};
    here.inputs(DistType);
    check_type(here, DistType);
    return here.returning(std::string(
        SwitchTable(distribution_values).words(DistType, "Don't recognise the distribution type supplied.")));
}

WorkList<double> Shuffle(View<double> Values) {
    Routine here{"Shuffle"};
    here.inputs(Values);
    WorkList<double> shuffled;
    *shuffled = Values;
    here.returning();
    return shuffled;
}

double gamma_deviate(int order, double probability) {
    if (order < 1) order = 1;
    if (order < 7 || probability >= 0.0) {
        double sum = 0.0;
        for (int i = 0; i < order; ++i)
            sum -= std::log(probability >= 0.0 ? probability : 1.0 - next_random()); // never the logarithm of 0
        return sum;
    }
    const double am = order - 1;
    const double s = std::sqrt(2.0 * am + 1.0);
    for (;;) {
        const double v1 = next_random();
        const double v2 = 2.0 * next_random() - 1.0;
        if (v1 * v1 + v2 * v2 > 1.0 || iszero(v1)) continue;
        const double tangent = v2 / v1;
        const double x = s * tangent + am;
        if (x <= 0.0) continue;
        if (next_random() <= (1.0 + tangent * tangent) * std::exp(am * std::log(x / am) - s * tangent)) return x;
    }
}

double DistGamma(const Range<double>&, double RandOpt) { return reserved("DistGamma", RandOpt); }
double DistPoisson(const Range<double>&, double RandOpt) { return reserved("DistPoisson", RandOpt); }
double DistExponential(double, double RandOpt) { return reserved("DistExponential", RandOpt); }
double DistBeta(const Range<double>&, const Range<double>&, double RandOpt) { return reserved("DistBeta", RandOpt); }
double DistBinomial(double RandOpt) { return reserved("DistBinomial", RandOpt); }

} // namespace qx
