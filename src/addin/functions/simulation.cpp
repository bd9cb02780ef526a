// Worksheet functions that draw from distributions.
#include "addin/declare.h"
#include "numerics/distributions.h"

namespace qx::worksheet {

namespace {

constexpr Category category = Category::SimulationModelling;

constexpr Argument DistMin{"DistMin",
                           "Lowest value; for a normal or lognormal distribution the value that one draw in a "
                           "hundred lies below"};
constexpr Argument DistMid{"DistMid", "Most likely value (triangular), the value where two triangles meet, or the mean "
                                      "(normal); not used by the uniform distribution"};
constexpr Argument DistMax{"DistMax",
                           "Highest value; for a normal or lognormal distribution the value that one draw in "
                           "a hundred lies above"};
constexpr Argument DistType =
    Argument{"DistType", "1 uniform, 2 triangular, 3 double triangular, 4 normal, 5 lognormal"}.of(distribution_values);
constexpr Argument RandOpt =
    optional("RandOpt", -1.0, "Probability to use, 0 to 1; -1 draws a random one", "a random draw");

} // namespace

constexpr Function CumProb{
    .name = "CumProb",
    .category = category,
    .calls = core<qx::CumProb>,
    .help = "The probability that a variable of a distribution lies at or below a value",
    .args = {{"Deviate", "The value"},
             DistMin,
             DistMid,
             DistMax,
             DistType,
             optional("ClipTailLevel", 0.0,
                      "Probability at which the tails of a normal or lognormal are cut off: 0.05 gives 0 up to the 5% "
                      "point and 1 from the 95% point")},
    .examples = {"CumProb(120, 80, 100, 130, 2) ~ 0.9333333333 1e-9", "CumProb(30, 10, 20, 30, 4) = 1"},
    .see_also = "Distribution,DescribeDistType",
};
QX_EXPORT(CumProb, 6);

constexpr Function DescribeDistType{
    .name = "DescribeDistType",
    .category = category,
    .calls = core<qx::DescribeDistType>,
    .help = "The name of a type of distribution",
    .args = {DistType},
    .examples = {"DescribeDistType(4) = \"Normal Distribution\""},
    .see_also = "Distribution",
};
QX_EXPORT(DescribeDistType, 1);

constexpr Function DistCumulative{
    .name = "DistCumulative",
    .category = category,
    .calls = core<qx::DistCumulative>,
    .help = "A draw from a table of cumulative probabilities, or the value at a given probability",
    .args = {{"CumProbs", "Cumulative probabilities, ascending from 0 to 1"},
             {"Values", "The value at each probability"},
             optional("CumSwitch", 0,
                      "0 on the line between two points of the table, 1 the point below, 2 the point above")
                 .of(cumulative_values),
             RandOpt},
    .examples = {"DistCumulative({0;0.2;1}, {10;20;40}, 0, 0.6) = 30",
                 "DistCumulative({0;0.2;1}, {10;20;40}, 1, 0.6) = 20",
                 "DistCumulative({0;0.2;1}, {10;20;40}, 2, 0.6) = 40"},
    .see_also = "Interpolate,LookupN",
};
QX_EXPORT(DistCumulative, 4);

constexpr Function DistDoubleTri{
    .name = "DistDoubleTri",
    .category = category,
    .calls = core<qx::DistDoubleTri>,
    .help = "A draw from two triangles that meet at a middle value, each with half the probability",
    .args = {DistMin, DistMid, DistMax, RandOpt},
    .examples = {"DistDoubleTri(10, 20, 50, 0.5) = 20", "DistDoubleTri(10, 20, 50, 0.125) = 15"},
    .see_also = "DistTriangular,Distribution",
};
QX_EXPORT(DistDoubleTri, 4);

constexpr Argument StanDev{"StanDev", "Standard deviation, not negative"};

constexpr Function DistLogNormal{
    .name = "DistLogNormal",
    .category = category,
    .calls = core<qx::DistLogNormal>,
    .help = "A draw from a lognormal distribution, given by the mean and standard deviation of the logarithm",
    .args = {StanDev, {"Mean", "Mean of the logarithm"}, RandOpt},
    .examples = {"DistLogNormal(0.5, 2, 0.5) ~ 7.389056099 1e-9"},
    .see_also = "DistNormal,Distribution",
};
QX_EXPORT(DistLogNormal, 3);

constexpr Function DistNormal{
    .name = "DistNormal",
    .category = category,
    .calls = core<qx::DistNormal>,
    .help = "A draw from a normal distribution, given by its mean and standard deviation",
    .args = {StanDev, {"Mean", "Mean of the variable"}, RandOpt},
    .examples = {"DistNormal(15, 100, 0.975) ~ 129.3994598 1e-7"},
    .see_also = "DistLogNormal,Distribution",
};
QX_EXPORT(DistNormal, 3);

constexpr Function Distribution{
    .name = "Distribution",
    .category = category,
    .calls = core<qx::Distribution>,
    .help = "A draw from a distribution given by three points, or its value at a given probability",
    .args = {DistMin, DistMid, DistMax, DistType, RandOpt},
    .examples = {"Distribution(80, 100, 130, 2, 0.4) = 100", "Distribution(10, 20, 30, 4, 0.5) = 20",
                 "Distribution(10, 20, 30, 4, 1) = 30"},
    .see_also = "CumProb,DescribeDistType,PartialDependency",
};
QX_EXPORT(Distribution, 5);

constexpr Function DistTriangular{
    .name = "DistTriangular",
    .category = category,
    .calls = core<qx::DistTriangular>,
    .help = "A draw from a triangular distribution",
    .args = {DistMin, DistMid, DistMax, RandOpt},
    .examples = {"DistTriangular(10, 20, 30, 0.5) = 20", "DistTriangular(10, 20, 30, 0.125) = 15"},
    .see_also = "DistDoubleTri,Distribution",
};
QX_EXPORT(DistTriangular, 4);

constexpr Function DistUniform{
    .name = "DistUniform",
    .category = category,
    .calls = core<qx::DistUniform>,
    .help = "A draw from a uniform distribution",
    .args = {DistMin, DistMax, RandOpt},
    .examples = {"DistUniform(10, 30, 0.25) = 15"},
    .see_also = "Distribution,RandNum",
};
QX_EXPORT(DistUniform, 3);

constexpr Function NRandom{
    .name = "NRandom",
    .category = category,
    .calls = core<qx::NRandom>,
    .help = "The position in the sequence of the random number that comes next",
    .examples = {"NRandom() > 0 = TRUE"},
    .see_also = "RandNum,PickRandom",
};
QX_EXPORT(NRandom, 0);

constexpr Function PartialDependency{
    .name = "PartialDependency",
    .category = category,
    .calls = core<qx::PartialDependency>,
    .help = "A draw from a distribution whose three points depend on another variable",
    .args = {{"AxisRangeX", "Values of the other variable for which the points are given"},
             {"InputValueX", "Its value now"},
             {"InputValuesMin", "DistMin at each of these values"},
             {"InputValuesMid", "DistMid at each of these values"},
             {"InputValuesMax", "DistMax at each of these values"},
             DistType,
             RandOpt},
    .examples = {"PartialDependency({0;10}, 5, {0;10}, {10;30}, {20;50}, 2, 0.5) = 20"},
    .see_also = "Distribution,Interpolate",
};
QX_EXPORT(PartialDependency, 7);

constexpr Function PickRandom{
    .name = "PickRandom",
    .category = category,
    .calls = core<qx::PickRandom>,
    .help = "The random number at a position of the sequence, always the same for one seed",
    .args = {{"WhichOne", "Position, from 1"}},
    .examples = {"PickRandom(5) < 1 = TRUE"},
    .see_also = "RandNum,NRandom",
};
QX_EXPORT(PickRandom, 1);

constexpr Function RandNum{
    .name = "RandNum",
    .category = category,
    .calls = core<qx::RandNum>,
    .help = "The next random number from 0 up to 1, a new one at each recalculation",
    .examples = {"RandNum() < 1 = TRUE"},
    .see_also = "PickRandom,NRandom,DistUniform",
    .is_volatile = true,
};
QX_EXPORT(RandNum, 0);

constexpr Function Shuffle{
    .name = "Shuffle",
    .category = category,
    .calls = core<qx::Shuffle>,
    .help = "The values as they are, in their order",
    .args = {{"Values", "A list or a rectangle of numbers"}},
    .examples = {"Shuffle({3;1;2}) = {3,1,2}"},
    .see_also = "SortNum",
};
QX_EXPORT(Shuffle, 1);

} // namespace qx::worksheet
