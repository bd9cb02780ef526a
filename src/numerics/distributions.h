// Simulation: draws from distributions given by three points, and their cumulative probabilities.
//
//     Distribution(80, 100, 130, 2, -1)     a draw from a triangle
//     Distribution(80, 100, 130, 2, 0.9)    what lies above nine draws in ten
//     CumProb(120, 80, 100, 130, 2, 0)      how many draws lie below 120
//
// A RandOpt from 0 to 1 is the probability to use, one below 0 (down to -1) means a draw. DistType is one of the types
// below; a type without a meaning gives 0. Unless said otherwise a routine throws errlibmin, errlibmax for a DistType
// outside 0 to 10 and a RandOpt outside -1 to 1, and errlibbaddistribution for points that do not ascend.
#pragma once

#include "core/pools.h"
#include "core/switches.h"

#include <string>

namespace qx {

enum DistributionType : int {
    uniform_distribution = 1,           ///< between DistMin and DistMax
    triangular_distribution = 2,        ///< DistMid is the mode
    double_triangular_distribution = 3, ///< two triangles of half the probability each, which meet at DistMid
    normal_distribution = 4,            ///< DistMin the 1% point, DistMid the mean, DistMax the 99% point
    lognormal_distribution = 5,         ///< the same three points of a variable whose logarithm is normal
};
inline constexpr SwitchValue distribution_values[] = {
    {uniform_distribution, "Uniform Distribution"},
    {triangular_distribution, "Triangular Distribution"},
    {double_triangular_distribution, "Double Triangular Distribution"},
    {normal_distribution, "Normal Distribution"},
    {lognormal_distribution, "Lognormal Distribution"},
};
/// How a cumulative table is read between its points.
inline constexpr SwitchValue cumulative_values[] = {
    {0, "On the line between two points"}, {1, "Point below"}, {2, "Point above"}};

/// The normal deviate of the 99% point.
inline constexpr double normal_99 = 2.326347;

/// The next uniform number of the sequence.
double RandNum();
/// The position of that number, from 1.
int NRandom();
/// The uniform number at a position, without a move of the sequence.
double PickRandom(int WhichOne);

/// A deviate. The normal is held between its points; one whose points are not even is split at the mean, and a draw
/// from it has the lower half's spread on both sides. Lognormal points must not be zero.
double Distribution(double DistMin, double DistMid, double DistMax, int DistType, double RandOpt);
/// The probability of a variable at or below Deviate. A ClipTailLevel above 0 (to 1) cuts the tails of the normal
/// types: 0 up to the deviate of that probability, 1 from its counterpart.
double CumProb(double Deviate, double DistMin, double DistMid, double DistMax, int DistType, double ClipTailLevel);
/// A deviate from a table of cumulative probabilities. CumSwitch 0 takes the line between the table's points, 1 the
/// point below, 2 the point above; any other throws inputerror.
double DistCumulative(View<double> CumProbs, View<double> Values, int CumSwitch, double RandOpt);
/// A deviate of a distribution whose points depend on another variable: each is read at InputValueX on the line
/// through its values along AxisRangeX.
double PartialDependency(View<double> AxisRangeX, double InputValueX, View<double> InputValuesMin,
                         View<double> InputValuesMid, View<double> InputValuesMax, int DistType, double RandOpt);

double DistUniform(double DistMin, double DistMax, double RandOpt);
double DistTriangular(double DistMin, double DistMid, double DistMax, double RandOpt);
double DistDoubleTri(double DistMin, double DistMid, double DistMax, double RandOpt);
/// StanDev, which must not be negative (errlibmin), and Mean are those of the variable; there is no deviate at the
/// probabilities 0 and 1 (errlibbaddistribution).
double DistNormal(double StanDev, double Mean, double RandOpt);
/// StanDev and Mean are those of the variable's logarithm.
double DistLogNormal(double StanDev, double Mean, double RandOpt);

std::string DescribeDistType(int DistType);
/// The values as they are.
WorkList<double> Shuffle(View<double> Values);

// In reserve: no worksheet function reaches these.

/// A gamma deviate of a whole order, at least 1: by sums of logarithms below order 7, by rejection from there. A
/// probability at or above 0 stands for every uniform number of the sum.
double gamma_deviate(int order, double probability);
/// Names kept for distributions to come: each checks its RandOpt and gives 0.
double DistGamma(View<double> Alphas, double RandOpt);
double DistPoisson(View<double> Means, double RandOpt);
double DistExponential(double Lambda, double RandOpt);
double DistBeta(View<double> Alphas, View<double> Betas, double RandOpt);
double DistBinomial(double RandOpt);

} // namespace qx
