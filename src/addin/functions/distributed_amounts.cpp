// Worksheet functions that lay a known total out over time.
#include "addin/amount_arguments.h"
#include "addin/declare.h"
#include "projections/curves.h"
#include "projections/payments.h"
#include "projections/spreads.h"

namespace qx::worksheet {

namespace {

constexpr Category category = Category::DistributedAmount;

} // namespace

constexpr Function UniSpread{
    .name = "UniSpread",
    .category = category,
    .calls = twin<qx::UniSpread>,
    .help = "Amount in a period of a total that is spread evenly between two dates, or the sum of several spreads",
    .args = {time_period(), streams("Total"), basis()},
    .examples = {"UniSpread(2005, 12, 2005, 2007, 2400) ~ 1200 1e-9",
                 "UniSpread(2005, 12, 2005, 2005, 2400) ~ 2400 1e-9",
                 "UniSpread(2005, 12, {2005;2004}, 2007, {2400;600}) ~ 1400 1e-9"},
    .see_also = "SCurve,GSpread,WeightSpread,Con",
};
QX_EXPORT(UniSpread, 8);

constexpr Function MultiUniSpread{
    .name = "MultiUniSpread",
    .category = category,
    .calls = twin_alias_of<qx::UniSpread>,
    .help = "Sum over several totals, each spread evenly between two dates. New workbooks use UniSpread",
    .args = {time_period(),
             {"Starts", "Date on which each spread starts, or a single one for all"},
             {"Finishes", "Date on which each spread finishes, or a single one for all"},
             {"Totals", "The amount of each spread, or a single one for all"},
             basis()},
    .examples = {"MultiUniSpread(2005, 12, {2005;2004}, 2007, {2400;600}) ~ 1400 1e-9"},
    .see_also = "UniSpread",
    .change = {69, "See Change in Behaviour 69, Oct-03 :Function hidden: superceded (compatibly) by UniSpread",
               "UniSpread"},
};
QX_EXPORT(MultiUniSpread, 8);

constexpr Function UniSpreadGrow{
    .name = "UniSpreadGrow",
    .category = category,
    .calls = twin<qx::UniSpreadGrow>,
    .help = "Amount in a period of a total that is spread evenly between two dates after it has grown up to the start",
    .args = {time_period(), uniform_spread(), growth(), basis()},
    .examples = {"UniSpreadGrow(2006, 12, 2006, 2008, 1000, 2005, 0.1) ~ 550 1e-9"},
    .see_also = "UniSpread,SCurveGrow,Grow",
};
QX_EXPORT(UniSpreadGrow, 10);

constexpr Function UniSpreadS{
    .name = "UniSpreadS",
    .category = category,
    .calls = twin<qx::UniSpreadS>,
    .help = "Amount in a period of a total that is spread between two dates by the weights of the seasons",
    .args = {time_period(), uniform_spread(), seasons(), basis()},
    .examples = {"UniSpreadS(2005, 6, 2005, 2007, 2400, {3;1}) ~ 900 1e-9"},
    .see_also = "UniSpread,ConS",
};
QX_EXPORT(UniSpreadS, 10);

constexpr Function SCurve{
    .name = "SCurve",
    .category = category,
    .calls = twin<qx::SCurve>,
    .help = "Amount in a period of a total that is spent along an S-curve between two dates, or the sum of several "
            "curves",
    .args = {time_period(), streams("Total"), Skew(), Peakness(), basis()},
    .examples = {"SCurve(2005.5, 12, 2005, 2007, 1000) ~ 707.1067811865476 1e-9",
                 "SCurve(2005, 24, 2005, 2007, 1000, 0.8, 3) ~ 1000 1e-9"},
    .see_also = "GSpread,SCumCurve,UniSpread,SCurveAdj,SCurveH",
};
QX_EXPORT(SCurve, 10);

constexpr Function SCurveGrow{
    .name = "SCurveGrow",
    .category = category,
    .calls = twin<qx::SCurveGrow>,
    .help = "Amount in a period of a total that is spent along an S-curve after it has grown up to the start",
    .args = {time_period(), curved_spread(), growth(), basis()},
    .examples = {"SCurveGrow(2005, 24, 2005, 2007, 1000, , , 2004, 0.1) ~ 1100 1e-9"},
    .see_also = "SCurve,UniSpreadGrow,Grow",
};
QX_EXPORT(SCurveGrow, 12);

constexpr Function SCumCurve{
    .name = "SCumCurve",
    .category = category,
    .calls = twin<qx::spread_over<CumulativeSpread>>,
    .help = "Amount in a period of a total that is spent along a cumulative curve given by its points",
    .args = {time_period(), cumulative_spread(), basis()},
    .examples = {"SCumCurve(2005, 12, 2005, 2007, 1000, {0;0.5;1}, {0;0.2;1}) ~ 200 1e-9"},
    .see_also = "SCurve,DistSpread,Interpolate",
};
QX_EXPORT(SCumCurve, 13);

constexpr Function GSpread{
    .name = "GSpread",
    .category = category,
    .calls = twin<qx::spread_over<GeneralSpread>>,
    .help = "Amount in a period of a total whose spread one number shapes: even, peaked, skewed or a single payment",
    .args = {time_period(), general_spread(), basis()},
    .examples = {"GSpread(2005, 12, 2005, 1000, 2007) ~ 500 1e-9", "GSpread(2005, 1, 2005, 1000, 2007, , 100) = 1000",
                 "GSpread(2006, 1, 2005, 1000, 2007, , 0.99) = 1000"},
    .see_also = "SCurve,UniSpread,DescribeShape",
};
QX_EXPORT(GSpread, 10);

constexpr Function WeightSpread{
    .name = "WeightSpread",
    .category = category,
    .calls = twin<qx::spread_over<WeightedSpread>>,
    .help = "Amount in a period of a total that is spread over equal slices of time by their weights",
    .args = {time_period(), weighted_spread(), basis()},
    .examples = {"WeightSpread(2005, 12, 2005, 2007, 1000, {1;3}) ~ 250 1e-9"},
    .see_also = "FWeightSpread,TWeightSpread,UniSpread",
};
QX_EXPORT(WeightSpread, 9);

constexpr Function FWeightSpread{
    .name = "FWeightSpread",
    .category = category,
    .calls = twin<qx::spread_over<FWeightedSpread>>,
    .help = "Amount in a period of a total that is spread over slices from given dates by their weights",
    .args = {time_period(), from_weighted_spread(), basis()},
    .examples = {"FWeightSpread(2005, 12, 2007, 1000, {2005;2006}, {1;3}) ~ 250 1e-9"},
    .see_also = "TWeightSpread,WeightSpread,FStepSpread",
};
QX_EXPORT(FWeightSpread, 9);

constexpr Function TWeightSpread{
    .name = "TWeightSpread",
    .category = category,
    .calls = twin<qx::spread_over<TWeightedSpread>>,
    .help = "Amount in a period of a total that is spread over slices up to given dates by their weights",
    .args = {time_period(), to_weighted_spread(), basis()},
    .examples = {"TWeightSpread(2006, 12, 2005, 1000, {2006;2007}, {1;3}) ~ 750 1e-9"},
    .see_also = "FWeightSpread,WeightSpread,TStepSpread",
};
QX_EXPORT(TWeightSpread, 9);

constexpr Function DistSpread{
    .name = "DistSpread",
    .category = category,
    .calls = twin<qx::spread_over<DistributedSpread>>,
    .help = "Amount in a period of a total that is spread between two dates as a probability distribution is",
    .args = {time_period(), distributed_spread(), basis()},
    .examples = {"DistSpread(2005, 12, 2005, 2006, 2007, 1000, 1) ~ 500 1e-9"},
    .see_also = "CumProb,DescribeDistType,SCumCurve",
};
QX_EXPORT(DistSpread, 10);

constexpr Function FStepSpread{
    .name = "FStepSpread",
    .category = category,
    .calls = twin<qx::spread_over<FSteppedSpread>>,
    .help = "Amount in a period of a stream whose annual rate changes on from-dates and which stops when it has paid a "
            "total",
    .args = {time_period(), from_stepped_spread(), basis()},
    .examples = {"FStepSpread(2006, 12, 1500, 2005, 1000) ~ 500 1e-9"},
    .see_also = "TStepSpread,FStep,DepletionDate",
};
QX_EXPORT(FStepSpread, 8);

constexpr Function TStepSpread{
    .name = "TStepSpread",
    .category = category,
    .calls = twin<qx::spread_over<TSteppedSpread>>,
    .help = "Amount in a period of a stream whose annual rate changes on to-dates and which starts in time to pay a "
            "total up to the last of them",
    .args = {time_period(), to_stepped_spread(), basis()},
    .examples = {"TStepSpread(2005, 12, 1500, 2007, 1000) ~ 500 1e-9"},
    .see_also = "FStepSpread,TStep,DepletionDateStart",
};
QX_EXPORT(TStepSpread, 8);

constexpr Function MkPmtsWeighted{
    .name = "MkPmtsWeighted",
    .category = category,
    .calls = twin<qx::MkPmtsWeighted>,
    .help = "Amount in a period of a total that is paid on given dates in proportion to weights",
    .args = {time_period(), weighted_payments()},
    .examples = {"MkPmtsWeighted(2005, 12, 1000, {2005.5;2006.5}, {1;3}) ~ 250 1e-9"},
    .see_also = "MkPmts,WeightSpread",
};
QX_EXPORT(MkPmtsWeighted, 5);

constexpr Function DepletionDate{
    .name = "DepletionDate",
    .category = category,
    .calls = core<qx::DepletionDate>,
    .help = "Date on which a stream whose annual rate changes on from-dates has paid a total",
    .args = {from_stepped_spread(), measure(5.0)},
    .examples = {"DepletionDate(1500, 2005, 1000) = DATE(2006,7,1)",
                 "DepletionDate(1500, {2005;2006}, {1000;2000}) = DATE(2006,4,1)"},
    .see_also = "DepletionDateStart,FStepSpread",
};
QX_EXPORT(DepletionDate, 5);

constexpr Function DepletionDateStart{
    .name = "DepletionDateStart",
    .category = category,
    .calls = core<qx::DepletionDateStart>,
    .help = "Date from which a stream whose annual rate changes on to-dates pays a total up to the last of them",
    .args = {to_stepped_spread(), measure(5.0)},
    .examples = {"DepletionDateStart(1500, 2007, 1000) = DATE(2005,7,1)"},
    .see_also = "DepletionDate,TStepSpread",
};
QX_EXPORT(DepletionDateStart, 5);

} // namespace qx::worksheet
