// Worksheet functions of spreads that are reforecast, that follow a history, or that recur.
#include "addin/amount_arguments.h"
#include "addin/declare.h"
#include "projections/curves.h"
#include "projections/reforecast.h"

namespace qx::worksheet {

namespace {

constexpr Category category = Category::DistributedAmount;

constexpr Argument ActualsToDate() {
    return optional("ActualsToDate", 0.0, "What was in fact spent up to the start of this period", "nothing");
}
constexpr ArgumentGroup history() {
    return {optional("DatesHistory", "Dates of the payments made so far; the forecast starts on the last of them"),
            optional("PmtsHistory", "The payments made so far; zeros at the end do not count")};
}
constexpr ArgumentGroup recurring() {
    return {Start(),
            Finish(),
            AbsFinish(),
            {"Totals", "The amount of each repetition in turn; the last one applies to all that follow"}};
}

} // namespace

// --- Against actuals to date -----------------------------------------------------------------------------------------

constexpr Function UniSpreadAdj{
    .name = "UniSpreadAdj",
    .category = category,
    .calls = twin<qx::spread_adjusted<UniformSpread>>,
    .help = "UniSpread scaled so that it lands on the total after the actuals to date",
    .args = {time_period(), uniform_spread(), ActualsToDate(), basis()},
    .examples = {"UniSpreadAdj(2006, 12, 2005, 2007, 2400, 1800) ~ 600 1e-9"},
    .see_also = "UniSpread,UniSpreadH",
};
QX_EXPORT(UniSpreadAdj, 9);

constexpr Function SCurveAdj{
    .name = "SCurveAdj",
    .category = category,
    .calls = twin<qx::spread_adjusted<CurvedSpread>>,
    .help = "SCurve scaled so that it lands on the total after the actuals to date",
    .args = {time_period(), curved_spread(), ActualsToDate(), basis()},
    .examples = {"SCurveAdj(2006, 12, 2005, 2007, 2400, , , 1800) ~ 600 1e-9"},
    .see_also = "SCurve,SCurveH",
};
QX_EXPORT(SCurveAdj, 11);

constexpr Function GSpreadAdj{
    .name = "GSpreadAdj",
    .category = category,
    .calls = twin<qx::spread_adjusted<GeneralSpread>>,
    .help = "GSpread scaled so that it lands on the total after the actuals to date",
    .args = {time_period(), general_spread(), ActualsToDate(), basis()},
    .examples = {"GSpreadAdj(2006, 12, 2005, 2400, 2007, , , 1800) ~ 600 1e-9"},
    .see_also = "GSpread,GSpreadH",
};
QX_EXPORT(GSpreadAdj, 11);

constexpr Function WeightSpreadAdj{
    .name = "WeightSpreadAdj",
    .category = category,
    .calls = twin<qx::spread_adjusted<WeightedSpread>>,
    .help = "WeightSpread scaled so that it lands on the total after the actuals to date",
    .args = {time_period(), weighted_spread(), ActualsToDate(), basis()},
    .examples = {"WeightSpreadAdj(2006, 12, 2005, 2007, 2400, {1;1}, 1800) ~ 600 1e-9"},
    .see_also = "WeightSpread,WeightSpreadH",
};
QX_EXPORT(WeightSpreadAdj, 10);

constexpr Function FWeightSpreadAdj{
    .name = "FWeightSpreadAdj",
    .category = category,
    .calls = twin<qx::spread_adjusted<FWeightedSpread>>,
    .help = "FWeightSpread scaled so that it lands on the total after the actuals to date",
    .args = {time_period(), from_weighted_spread(), ActualsToDate(), basis()},
    .examples = {"FWeightSpreadAdj(2006, 12, 2007, 2400, {2005;2006}, {1;1}, 1800) ~ 600 1e-9"},
    .see_also = "FWeightSpread,FWeightSpreadH",
};
QX_EXPORT(FWeightSpreadAdj, 10);

constexpr Function TWeightSpreadAdj{
    .name = "TWeightSpreadAdj",
    .category = category,
    .calls = twin<qx::spread_adjusted<TWeightedSpread>>,
    .help = "TWeightSpread scaled so that it lands on the total after the actuals to date",
    .args = {time_period(), to_weighted_spread(), ActualsToDate(), basis()},
    .examples = {"TWeightSpreadAdj(2006, 12, 2005, 2400, {2006;2007}, {1;1}, 1800) ~ 600 1e-9"},
    .see_also = "TWeightSpread,TWeightSpreadH",
};
QX_EXPORT(TWeightSpreadAdj, 10);

constexpr Function DistSpreadAdj{
    .name = "DistSpreadAdj",
    .category = category,
    .calls = twin<qx::spread_adjusted<DistributedSpread>>,
    .help = "DistSpread scaled so that it lands on the total after the actuals to date",
    .args = {time_period(), distributed_spread(), ActualsToDate(), basis()},
    .examples = {"DistSpreadAdj(2006, 12, 2005, 2006, 2007, 2400, 1, 1800) ~ 600 1e-9"},
    .see_also = "DistSpread,DistSpreadH",
};
QX_EXPORT(DistSpreadAdj, 11);

// --- After a history -------------------------------------------------------------------------------------------------

constexpr Function UniSpreadH{
    .name = "UniSpreadH",
    .category = category,
    .calls = twin<qx::spread_with_history<UniformSpread>>,
    .help = "Payments made so far, then the rest of the total as UniSpread spreads it from the last of them on",
    .args = {time_period(), uniform_spread(), history(), basis()},
    .examples = {"UniSpreadH(2006, 12, 2005, 2007, 2400, {2005;2006}, {1000;800}) ~ 1400 1e-9"},
    .see_also = "UniSpread,UniSpreadAdj",
};
QX_EXPORT(UniSpreadH, 10);

constexpr Function SCurveH{
    .name = "SCurveH",
    .category = category,
    .calls = twin<qx::spread_with_history<CurvedSpread>>,
    .help = "Payments made so far, then the rest of the total as SCurve spreads it from the last of them on",
    .args = {time_period(), curved_spread(), history(), basis()},
    .examples = {"SCurveH(2006, 12, 2005, 2007, 2400, , , {2005;2006}, {1000;800}) ~ 1400 1e-9"},
    .see_also = "SCurve,SCurveAdj",
};
QX_EXPORT(SCurveH, 12);

constexpr Function GSpreadH{
    .name = "GSpreadH",
    .category = category,
    .calls = twin<qx::spread_with_history<GeneralSpread>>,
    .help = "Payments made so far, then the rest of the total as GSpread spreads it from the last of them on",
    .args = {time_period(), general_spread(), history(), basis()},
    .examples = {"GSpreadH(2006, 12, 2005, 2400, 2007, , , {2005;2006}, {1000;800}) ~ 1400 1e-9"},
    .see_also = "GSpread,GSpreadAdj",
};
QX_EXPORT(GSpreadH, 12);

constexpr Function WeightSpreadH{
    .name = "WeightSpreadH",
    .category = category,
    .calls = twin<qx::spread_with_history<WeightedSpread>>,
    .help = "Payments made so far, then the rest of the total as WeightSpread spreads it from the last of them on",
    .args = {time_period(), weighted_spread(), history(), basis()},
    .examples = {"WeightSpreadH(2006, 12, 2005, 2007, 2400, {1;1}, {2005;2006}, {1000;800}) ~ 1400 1e-9"},
    .see_also = "WeightSpread,WeightSpreadAdj",
};
QX_EXPORT(WeightSpreadH, 11);

constexpr Function FWeightSpreadH{
    .name = "FWeightSpreadH",
    .category = category,
    .calls = twin<qx::spread_with_history<FWeightedSpread>>,
    .help = "Payments made so far, then the rest of the total as FWeightSpread spreads it from the last of them on",
    .args = {time_period(), from_weighted_spread(), history(), basis()},
    .examples = {"FWeightSpreadH(2006, 12, 2007, 2400, {2005;2006}, {1;1}, {2005;2006}, {1000;800}) ~ 1400 1e-9"},
    .see_also = "FWeightSpread,FWeightSpreadAdj",
};
QX_EXPORT(FWeightSpreadH, 11);

constexpr Function TWeightSpreadH{
    .name = "TWeightSpreadH",
    .category = category,
    .calls = twin<qx::spread_with_history<TWeightedSpread>>,
    .help = "Payments made so far, then the rest of the total as TWeightSpread spreads it from the last of them on",
    .args = {time_period(), to_weighted_spread(), history(), basis()},
    .examples = {"TWeightSpreadH(2006, 12, 2005, 2400, {2006;2007}, {1;1}, {2005;2006}, {1000;800}) ~ 1400 1e-9"},
    .see_also = "TWeightSpread,TWeightSpreadAdj",
};
QX_EXPORT(TWeightSpreadH, 11);

constexpr Function DistSpreadH{
    .name = "DistSpreadH",
    .category = category,
    .calls = twin<qx::spread_with_history<DistributedSpread>>,
    .help = "Payments made so far, then the rest of the total as DistSpread spreads it from the last of them on",
    .args = {time_period(), distributed_spread(), history(), basis()},
    .examples = {"DistSpreadH(2006, 12, 2005, 2006, 2007, 2400, 1, {2005;2006}, {1000;800}) ~ 1400 1e-9"},
    .see_also = "DistSpread,DistSpreadAdj",
};
QX_EXPORT(DistSpreadH, 12);

// --- Recurring -------------------------------------------------------------------------------------------------------

constexpr Function UniSpreadPer{
    .name = "UniSpreadPer",
    .category = category,
    .calls = twin<qx::UniSpreadPer>,
    .help = "Amount in a period of totals that are spread evenly one after another, every so many months",
    .args = {time_period(), recurring(), Periodicity(), basis()},
    .examples = {"UniSpreadPer(2006, 12, 2005, 2006, 2010, {100;200}, 12) ~ 200 1e-9"},
    .see_also = "UniSpread,UniSpreadGrowPer,ConPer",
};
QX_EXPORT(UniSpreadPer, 10);

constexpr Function UniSpreadGrowPer{
    .name = "UniSpreadGrowPer",
    .category = category,
    .calls = twin<qx::UniSpreadGrowPer>,
    .help = "Amount in a period of totals that are spread evenly one after another, each grown up to its own start",
    .args = {time_period(), recurring(), growth(), Periodicity(), basis()},
    .examples = {"UniSpreadGrowPer(2006, 12, 2005, 2006, 2010, 100, 2005, 0.1, 12) ~ 110 1e-9"},
    .see_also = "UniSpreadGrow,UniSpreadPer",
};
QX_EXPORT(UniSpreadGrowPer, 12);

constexpr Function SCurvePer{
    .name = "SCurvePer",
    .category = category,
    .calls = twin<qx::SCurvePer>,
    .help = "Amount in a period of totals that are spent along S-curves one after another, every so many months",
    .args = {time_period(), recurring(), Skew(), Peakness(), Periodicity(), basis()},
    .examples = {"SCurvePer(2006, 12, 2005, 2006, 2010, {100;200}, , , 12) ~ 200 1e-9"},
    .see_also = "SCurve,SCurveGrowPer,ConPer",
};
QX_EXPORT(SCurvePer, 12);

constexpr Function SCurveGrowPer{
    .name = "SCurveGrowPer",
    .category = category,
    .calls = twin<qx::SCurveGrowPer>,
    .help = "Amount in a period of totals that are spent along S-curves one after another, each grown up to its own "
            "start",
    .args = {time_period(), recurring(), Skew(), Peakness(), growth(), Periodicity(), basis()},
    .examples = {"SCurveGrowPer(2006, 12, 2005, 2006, 2010, 100, , , 2005, 0.1, 12) ~ 110 1e-9"},
    .see_also = "SCurveGrow,SCurvePer",
};
QX_EXPORT(SCurveGrowPer, 14);

} // namespace qx::worksheet
