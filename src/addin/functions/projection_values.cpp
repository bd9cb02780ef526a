// Worksheet functions of the present values of projections: streams, spreads and dated payments.
#include "projections/projection_values.h"
#include "addin/amount_arguments.h"
#include "addin/declare.h"
#include "addin/present_value_arguments.h"

namespace qx::worksheet {

namespace {

constexpr Category category = Category::ProjectionsNPV;

constexpr ArgumentGroup discount_by_step() {
    return discount_in_step("Discount rates, annual equivalent rates, one for each of the annual rates in their order; "
                            "the last one applies to the rest");
}

} // namespace

// --- Streams ---------------------------------------------------------------------------------------------------------

constexpr Function PVCon{
    .name = "PVCon",
    .category = category,
    .calls = core<qx::PVCon>,
    .help = "Present value of a stream at a constant annual rate, or of several, paid on the dates of CashBasis",
    .args = {discount(), streams(), cash_terms()},
    .examples = {"PVCon(2005, 0.1, 2005, 2007, 1000, , 1) ~ 1909.090909090909 1e-9",
                 "PVCon(2005, 0.1, 2005, 2007, 1000, , -1) ~ 1735.537190082645 1e-9"},
    .see_also = "Con,PVConGrow,PVFStep,PVTStep,PVT",
};
QX_EXPORT(PVCon, 11);

constexpr Function PVConQ{
    .name = "PVConQ",
    .category = category,
    .calls = alias_of<qx::PVCon>,
    .help = "Present value of a stream at a constant annual rate. New workbooks use PVCon",
    .args = {discount(), streams(), cash_terms()},
    .examples = {"PVConQ(2005, 0.1, 2005, 2007, 1000, , 1) ~ 1909.090909090909 1e-9"},
    .see_also = "PVCon",
    .change = {77, "See Change in Behaviour 77, Oct-03 :Superceded by PVCon", "PVCon"},
};
QX_EXPORT(PVConQ, 11);

constexpr Function PVConGrow{
    .name = "PVConGrow",
    .category = category,
    .calls = core<qx::PVConGrow>,
    .help = "Present value of a stream, or of several, whose annual rate grows from the first growth date on, taken up "
            "every so many months, and which is paid on the dates of CashBasis",
    .args = {discount(), streams(), growth(), RevMonthsOpt(), cash_terms()},
    .examples = {"PVConGrow(2005, 0.1, 2005, 2007, 1000, 2005, 0.1, 12, , 1) ~ 2000 1e-9"},
    .see_also = "ConGrow,PVAnnGrow,PVCon",
};
QX_EXPORT(PVConGrow, 14);

constexpr Function PVConGrowQ{
    .name = "PVConGrowQ",
    .category = category,
    .calls = core<qx::PVConGrowQ>,
    .help = "Present value of a stream that grows at one rate from one date on. New workbooks use PVConGrow",
    .args = {discount(),
             life(),
             {"AnnualRate", "Amount a year"},
             {"GrowFrom", "Date from which the stream grows"},
             {"GrowthRatePA", "Annual equivalent growth rate as a fraction: 0.03 is 3% a year"},
             optional("RevMos", 0, "Months between steps of growth; 0 for continuous growth", "continuous"),
             cash_terms()},
    .examples = {"PVConGrowQ(2005, 0.1, 2005, 2007, 1000, 2005, 0.1, 12, , 1) ~ 2000 1e-9"},
    .see_also = "PVConGrow,ConGrowQ",
};
QX_EXPORT(PVConGrowQ, 14);

constexpr Function PVAnnGrow{
    .name = "PVAnnGrow",
    .category = category,
    .calls = core<qx::PVAnnGrow>,
    .help = "Present value of a stream, or of several, whose annual rate grows once a year from the first growth date "
            "on, and which is paid on the dates of CashBasis",
    .args = {discount(), streams(), growth(), cash_terms()},
    .examples = {"PVAnnGrow(2005, 0.1, 2005, 2007, 1000, 2005, 0.1, , 1) ~ 2000 1e-9"},
    .see_also = "AnnGrow,PVConGrow,PVCon",
};
QX_EXPORT(PVAnnGrow, 13);

// --- Steps -----------------------------------------------------------------------------------------------------------

constexpr Function PVFStep{
    .name = "PVFStep",
    .category = category,
    .calls = core<qx::PVStep<FromSteps>>,
    .help = "Present value of a stream whose annual rate changes on from-dates, paid on the dates of CashBasis",
    .args = {discount(), from_steps(), AnnualRates(), cash_terms()},
    .examples = {"PVFStep(2005, 0.1, 2007, {2005;2006}, {1000;1100}, , 1) ~ 2000 1e-9"},
    .see_also = "FStep,PVTStep,PVFStepIC,PVCon",
};
QX_EXPORT(PVFStep, 11);

constexpr Function PVFStepQ{
    .name = "PVFStepQ",
    .category = category,
    .calls = alias_of<qx::PVStep<FromSteps>>,
    .help = "Present value of a stream whose annual rate changes on from-dates. New workbooks use PVFStep",
    .args = {discount(), from_steps(), AnnualRates(), cash_terms()},
    .examples = {"PVFStepQ(2005, 0.1, 2007, {2005;2006}, {1000;1100}, , 1) ~ 2000 1e-9"},
    .see_also = "PVFStep",
    .change = {86, "See Change in Behaviour 86, Oct-03 :Superceded compatibly by PVFStep", "PVFStep"},
};
QX_EXPORT(PVFStepQ, 11);

constexpr Function PVFStepIC{
    .name = "PVFStepIC",
    .category = category,
    .calls = core<qx::PVStepIC<FromSteps>>,
    .help = "Present value of a stream whose annual rate changes on from-dates, each rate with a discount rate of its "
            "own: what a step pays is discounted at its rate all the way to NPVDate",
    .args = {discount_by_step(), from_steps(), AnnualRates(), cash_terms()},
    .examples = {"PVFStepIC(2005, {0.1;0.25}, 2007, {2005;2006}, {1000;1000}, , 1) ~ 1800 1e-9"},
    .see_also = "PVFStep,PVTStepIC",
};
QX_EXPORT(PVFStepIC, 11);

constexpr Function PVFStepICQ{
    .name = "PVFStepICQ",
    .category = category,
    .calls = alias_of<qx::PVStepIC<FromSteps>>,
    .help = "Present value of a stream by from-dates with a discount rate for each rate. New workbooks use PVFStepIC",
    .args = {discount_by_step(), from_steps(), AnnualRates(), cash_terms()},
    .examples = {"PVFStepICQ(2005, {0.1;0.25}, 2007, {2005;2006}, {1000;1000}, , 1) ~ 1800 1e-9"},
    .see_also = "PVFStepIC",
    .change = {86, "See Change in Behaviour 86, Oct-03 :Superceded compatibly by PVFStepIC", "PVFStepIC"},
};
QX_EXPORT(PVFStepICQ, 11);

constexpr Function PVTStep{
    .name = "PVTStep",
    .category = category,
    .calls = core<qx::PVStep<ToSteps>>,
    .help = "Present value of a stream whose annual rate changes on to-dates, paid on the dates of CashBasis",
    .args = {discount(), to_steps(), AnnualRates(), cash_terms()},
    .examples = {"PVTStep(2005, 0.1, 2005, {2006;2007}, {1000;1100}, , 1) ~ 2000 1e-9"},
    .see_also = "TStep,PVFStep,PVTStepIC,PVCon",
};
QX_EXPORT(PVTStep, 11);

constexpr Function PVTStepQ{
    .name = "PVTStepQ",
    .category = category,
    .calls = alias_of<qx::PVStep<ToSteps>>,
    .help = "Present value of a stream whose annual rate changes on to-dates. New workbooks use PVTStep",
    .args = {discount(), to_steps(), AnnualRates(), cash_terms()},
    .examples = {"PVTStepQ(2005, 0.1, 2005, {2006;2007}, {1000;1100}, , 1) ~ 2000 1e-9"},
    .see_also = "PVTStep",
    .change = {87, "See Change in Behaviour 87, Oct-03 :Superceded compatibly by PVTStep", "PVTStep"},
};
QX_EXPORT(PVTStepQ, 11);

constexpr Function PVTStepIC{
    .name = "PVTStepIC",
    .category = category,
    .calls = core<qx::PVStepIC<ToSteps>>,
    .help = "Present value of a stream whose annual rate changes on to-dates, each rate with a discount rate of its "
            "own: what a step pays is discounted at its rate all the way to NPVDate",
    .args = {discount_by_step(), to_steps(), AnnualRates(), cash_terms()},
    .examples = {"PVTStepIC(2005, {0.1;0.25}, 2005, {2006;2007}, {1000;1000}, , 1) ~ 1800 1e-9"},
    .see_also = "PVTStep,PVFStepIC",
};
QX_EXPORT(PVTStepIC, 11);

constexpr Function PVTStepICQ{
    .name = "PVTStepICQ",
    .category = category,
    .calls = alias_of<qx::PVStepIC<ToSteps>>,
    .help = "Present value of a stream by to-dates with a discount rate for each rate. New workbooks use PVTStepIC",
    .args = {discount_by_step(), to_steps(), AnnualRates(), cash_terms()},
    .examples = {"PVTStepICQ(2005, {0.1;0.25}, 2005, {2006;2007}, {1000;1000}, , 1) ~ 1800 1e-9"},
    .see_also = "PVTStepIC",
    .change = {87, "See Change in Behaviour 87, Oct-03 :Superceded compatibly by PVTStepIC", "PVTStepIC"},
};
QX_EXPORT(PVTStepICQ, 11);

// --- Spreads ---------------------------------------------------------------------------------------------------------

constexpr Function PVUniSpread{
    .name = "PVUniSpread",
    .category = category,
    .calls = core<qx::PVUniSpread>,
    .help = "Present value of a total that is spread evenly between two dates, or of several, paid on the dates of "
            "CashBasis",
    .args = {discount(), streams("Total"), cash_terms()},
    .examples = {"PVUniSpread(2005, 0.1, 2005, 2007, 2000, , 1) ~ 1909.090909090909 1e-9",
                 "PVUniSpread(2005, 0.1, 2006, 2006, 1100) ~ 1000 1e-9"},
    .see_also = "UniSpread,PVSCurve,PVGSpread,PVCon",
};
QX_EXPORT(PVUniSpread, 11);

constexpr Function PVSCurve{
    .name = "PVSCurve",
    .category = category,
    .calls = core<qx::PVSCurve>,
    .help = "Present value of a total that is spent along an S-curve between two dates, or of several, paid on the "
            "dates of CashBasis",
    .args = {discount(), streams("Total"), Skew(), Peakness(), cash_terms()},
    .examples = {"PVSCurve(2005, 0.1, 2005, 2007, 2000, , , , 1) ~ 1909.090909090909 1e-9"},
    .see_also = "SCurve,PVSCurveGrow,PVGSpread,PVUniSpread",
};
QX_EXPORT(PVSCurve, 13);

constexpr Function PVSCurveGrow{
    .name = "PVSCurveGrow",
    .category = category,
    .calls = core<qx::PVSCurveGrow>,
    .help = "Present value of a total that is spent along an S-curve after it has grown up to the start",
    .args = {discount(), curved_spread(), growth(), cash_terms()},
    .examples = {"PVSCurveGrow(2005, 0.1, 2005, 2007, 2000, , , 2004, 0.1, , 1) ~ 2100 1e-9"},
    .see_also = "SCurveGrow,PVSCurve",
};
QX_EXPORT(PVSCurveGrow, 15);

constexpr Function PVSCumCurve{
    .name = "PVSCumCurve",
    .category = category,
    .calls = core<qx::PVSpread<CumulativeSpread>>,
    .help = "Present value of a total that is spent along a cumulative curve given by its points",
    .args = {discount(), cumulative_spread(), cash_terms()},
    .examples = {"PVSCumCurve(2005, 0.1, 2005, 2007, 1000, {0;0.5;1}, {0;0.45;1}, , , , , 1) ~ 950 1e-9"},
    .see_also = "SCumCurve,PVSCurve",
};
QX_EXPORT(PVSCumCurve, 16);

constexpr Function PVGSpread{
    .name = "PVGSpread",
    .category = category,
    .calls = core<qx::PVSpread<GeneralSpread>>,
    .help = "Present value of a total whose spread one number shapes: even, peaked, skewed or a single payment",
    .args = {discount(), general_spread(), cash_terms()},
    .examples = {"PVGSpread(2005, 0.1, 2005, 2000, 2007, , , , 1) ~ 1909.090909090909 1e-9",
                 "PVGSpread(2005, 0.1, 2005, 1210, 2007, , -100) ~ 1000 1e-9"},
    .see_also = "GSpread,PVSCurve,PVUniSpread",
};
QX_EXPORT(PVGSpread, 13);

constexpr Function PVDistSpread{
    .name = "PVDistSpread",
    .category = category,
    .calls = core<qx::PVSpread<DistributedSpread>>,
    .help = "Present value of a total that is spread by a probability distribution between two dates",
    .args = {discount(), distributed_spread(), cash_terms()},
    .examples = {"PVDistSpread(2005, 0.1, 2005, 2006, 2007, 2000, 1, , 1) ~ 1909.090909090909 1e-9"},
    .see_also = "DistSpread,PVSCurve",
};
QX_EXPORT(PVDistSpread, 13);

constexpr Function PVFStepSpread{
    .name = "PVFStepSpread",
    .category = category,
    .calls = core<qx::PVSpread<FSteppedSpread>>,
    .help = "Present value of a stream whose annual rate changes on from-dates, until it has paid a total",
    .args = {discount(), from_stepped_spread(), cash_terms()},
    .examples = {"PVFStepSpread(2005, 0.1, 2100, {2005;2006}, {1000;1100}, , 1) ~ 2000 1e-9"},
    .see_also = "FStepSpread,PVTStepSpread,PVFStep",
};
QX_EXPORT(PVFStepSpread, 11);

constexpr Function PVTStepSpread{
    .name = "PVTStepSpread",
    .category = category,
    .calls = core<qx::PVSpread<TSteppedSpread>>,
    .help = "Present value of a stream whose annual rate changes on to-dates and which starts so as to pay a total by "
            "the last of them",
    .args = {discount(), to_stepped_spread(), cash_terms()},
    .examples = {"PVTStepSpread(2005, 0.1, 2100, {2006;2007}, {1000;1100}, , 1) ~ 2000 1e-9"},
    .see_also = "TStepSpread,PVFStepSpread,PVTStep",
};
QX_EXPORT(PVTStepSpread, 11);

// --- Dated payments --------------------------------------------------------------------------------------------------

constexpr Function PVMkPmts{
    .name = "PVMkPmts",
    .category = category,
    .calls = core<qx::PVMkPmts>,
    .help = "Present value of payments on given dates",
    .args = {discount(), payments(), discount_terms()},
    .examples = {"PVMkPmts(2005, 0.1, {2006;2007}, {1100;1210}) ~ 2000 1e-9"},
    .see_also = "MkPmts,PVMkPmtsSF,PVMkPmtsWeighted,PVT",
};
QX_EXPORT(PVMkPmts, 10);

constexpr Function PVMkPmtsSF{
    .name = "PVMkPmtsSF",
    .category = category,
    .calls = core<qx::PVMkPmtsSF>,
    .help = "Present value of the payments on given dates that lie between two dates",
    .args = {discount(), life(), payments(), discount_terms()},
    .examples = {"PVMkPmtsSF(2005, 0.1, 2006, 2007, {2006;2007}, {1100;1210}) ~ 1000 1e-9"},
    .see_also = "MkPmtsSF,PVMkPmts",
};
QX_EXPORT(PVMkPmtsSF, 12);

constexpr Function PVMkPmtsWeighted{
    .name = "PVMkPmtsWeighted",
    .category = category,
    .calls = core<qx::PVMkPmtsWeighted>,
    .help = "Present value of a total paid on given dates in proportion to weights",
    .args = {discount(), weighted_payments(), discount_terms()},
    .examples = {"PVMkPmtsWeighted(2005, 0.1, 2310, {2006;2007}, {1;1.1}) ~ 2000 1e-9"},
    .see_also = "MkPmtsWeighted,PVMkPmts",
};
QX_EXPORT(PVMkPmtsWeighted, 11);

} // namespace qx::worksheet
