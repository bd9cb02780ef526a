// Worksheet functions of streams whose rate changes at given dates: by from-dates and by to-dates.
#include "projections/stepped_rate.h"
#include "addin/declare.h"

namespace qx::worksheet {

namespace {

constexpr Category category = Category::SteppedRate;

constexpr Argument StepRates() {
    return {"AnnualRates",
            "Amounts a year, one for each of the dates. Either a single AnnualRate or a  range of annual rates."};
}
constexpr Argument InitialAnnRate() { return {"InitialAnnRate", "Amount a year, as at the first growth date"}; }
constexpr Argument MktAnnRate() {
    return {"MktAnnRate", "Market rate a year, as at the first growth date, for steps whose rate is zero"};
}
constexpr Argument MarketGaps() {
    return {"AnnualRates", "Amounts a year, one for each of the dates; zero for the grown market rate"};
}
constexpr Argument ForecastGaps() {
    return {"AnnualRates", "Amounts a year, one for each of the dates; zero for the forecast"};
}
constexpr Argument MktPrice() { return {"MktPrice", "Price of a unit, as at the first growth date"}; }
constexpr Argument Quantities() {
    return {"AnnualRates", "Quantities a year, one for each of the dates, or a single one for all"};
}
constexpr ArgumentGroup overall() {
    return {Start("Date before which nothing counts"), Finish("Date from which nothing counts")};
}
/// A further list of steps.
constexpr ArgumentGroup more_steps(const char* dates, const char* rates) {
    return {optional(dates, "Dates of a further list of steps, ascending").in_ascending_order(),
            optional(rates, "Its rates, one for each of its dates, or a single one for all")};
}
constexpr ArgumentGroup price_steps(const char* dates) {
    return {Argument{dates, "Dates on which the price changes, ascending"}.in_ascending_order(),
            {"MktPrices", "Prices of a unit, one for each of these dates, or a single one for all"}};
}

} // namespace

// --- As given -------------------------------------------------------------------------------------------------------

constexpr Function FStep{
    .name = "FStep",
    .category = category,
    .calls = twin<qx::Step<FromSteps>>,
    .help = "Amount in a period of a stream whose annual rate changes on from-dates",
    .args = {time_period(), from_steps(), StepRates(), basis()},
    .examples = {"FStep(2005, 12, 2010, {2004;2005.5}, {1000;1200}) ~ 1100 1e-9"},
    .see_also = "TStep,Con,FStepGrow,FStepFcst,FStepCombine",
};
QX_EXPORT(FStep, 8);

constexpr Function TStep{
    .name = "TStep",
    .category = category,
    .calls = twin<qx::Step<ToSteps>>,
    .help = "Amount in a period of a stream whose annual rate changes on to-dates",
    .args = {time_period(), to_steps(), StepRates(), basis()},
    .examples = {"TStep(2005, 12, 2004, {2005.5;2010}, {1000;1200}) ~ 1100 1e-9"},
    .see_also = "FStep,Con,TStepGrow,TStepFcst,TStepCombine",
};
QX_EXPORT(TStep, 8);

constexpr Function FStepSF{
    .name = "FStepSF",
    .category = category,
    .calls = twin<qx::StepSF<FromSteps>>,
    .help = "Amount in a period of a stream whose annual rate changes on from-dates, as far as it lies "
            "between two overall dates",
    .args = {time_period(), overall(), FromDates(), StepRates(), basis()},
    .examples = {"FStepSF(2005, 12, 2005.25, 2005.75, {2004;2005.5}, {1000;1200}) ~ 550 1e-9"},
    .see_also = "FStep,ConSF",
};
QX_EXPORT(FStepSF, 9);

constexpr Function TStepSF{
    .name = "TStepSF",
    .category = category,
    .calls = twin<qx::StepSF<ToSteps>>,
    .help = "Amount in a period of a stream whose annual rate changes on to-dates, as far as it lies between "
            "two overall dates",
    .args = {time_period(), overall(), ToDates(), StepRates(), basis()},
    .examples = {"TStepSF(2005, 12, 2005.25, 2005.75, {2005.5;2010}, {1000;1200}) ~ 550 1e-9"},
    .see_also = "TStep,ConSF",
};
QX_EXPORT(TStepSF, 9);

constexpr Function FStepS{
    .name = "FStepS",
    .category = category,
    .calls = twin<qx::StepS<FromSteps>>,
    .help = "Amount in a period of a stream whose annual rate changes on from-dates and is spread over the "
            "year by seasons",
    .args = {time_period(), from_steps(), StepRates(), seasons(), basis()},
    .examples = {"FStepS(2005, 6, 2010, {2004;2005.25}, {1000;2000}, {1;2;3;2}) ~ 625 1e-9"},
    .see_also = "FStep,ConS",
};
QX_EXPORT(FStepS, 10);

constexpr Function TStepS{
    .name = "TStepS",
    .category = category,
    .calls = twin<qx::StepS<ToSteps>>,
    .help = "Amount in a period of a stream whose annual rate changes on to-dates and is spread over the "
            "year by seasons",
    .args = {time_period(), to_steps(), StepRates(), seasons(), basis()},
    .examples = {"TStepS(2005, 6, 2004, {2005.25;2010}, {1000;2000}, {1;2;3;2}) ~ 625 1e-9"},
    .see_also = "TStep,ConS",
};
QX_EXPORT(TStepS, 10);

constexpr Function MultiFStep{
    .name = "MultiFStep",
    .category = category,
    .calls = twin<qx::MultiFStep>,
    .help = "Sum in a period of streams side by side, each of one step, from its from-date to its finish",
    .args = {time_period(),
             {"Finishes", "Dates on which the streams finish, or one for all"},
             {"FromDates", "Dates from which the streams run, or one for all"},
             {"AnnualRates", "Amounts a year, or one for all"},
             basis()},
    .examples = {"MultiFStep(2005, 12, {2006;2005.5}, {2004;2005}, {1000;1200}) ~ 1600 1e-9"},
    .see_also = "FStep,Con",
};
QX_EXPORT(MultiFStep, 8);

constexpr Function MultiTStep{
    .name = "MultiTStep",
    .category = category,
    .calls = twin<qx::MultiTStep>,
    .help = "Sum in a period of streams side by side, each of one step, from its start to its to-date",
    .args = {time_period(),
             {"Starts", "Dates on which the streams start, or one for all"},
             {"ToDates", "Dates up to which the streams run, or one for all"},
             {"AnnualRates", "Amounts a year, or one for all"},
             basis()},
    .examples = {"MultiTStep(2005, 12, {2004;2005}, {2006;2005.5}, {1000;1200}) ~ 1600 1e-9"},
    .see_also = "TStep,Con",
};
QX_EXPORT(MultiTStep, 8);

// --- Growth ---------------------------------------------------------------------------------------------------------

constexpr Function FStepGrow{
    .name = "FStepGrow",
    .category = category,
    .calls = twin<qx::StepGrow<FromSteps>>,
    .help = "Amount in a period of a stream whose annual rate is an initial rate grown to the from-date of "
            "the step",
    .args = {time_period(), Finish(), InitialAnnRate(), FromDates(), growth(), basis()},
    .examples = {"FStepGrow(2006, 12, 2010, 1000, {2005;2006}, 2005, 0.1) ~ 1100 1e-9"},
    .see_also = "TStepGrow,FStepGrown,FStepGrowX",
};
QX_EXPORT(FStepGrow, 10);

constexpr Function TStepGrow{
    .name = "TStepGrow",
    .category = category,
    .calls = twin<qx::StepGrow<ToSteps>>,
    .help = "Amount in a period of a stream whose annual rate is an initial rate grown to the to-date of the "
            "step",
    .args = {time_period(), Start(), InitialAnnRate(), ToDates(), growth(), basis()},
    .examples = {"TStepGrow(2006, 12, 2005, 1000, {2006;2007}, 2005, 0.1) ~ 1210 1e-9"},
    .see_also = "FStepGrow,TStepGrown,TStepGrowX",
};
QX_EXPORT(TStepGrow, 10);

constexpr Function FStepGrown{
    .name = "FStepGrown",
    .category = category,
    .calls = twin<qx::StepGrown<FromSteps>>,
    .help = "Amount in a period of a stream whose annual rates are grown to the from-date of their step",
    .args = {time_period(), from_steps(), StepRates(), growth(), basis()},
    .examples = {"FStepGrown(2006, 12, 2010, {2005;2006}, {1000;2000}, 2005, 0.1) ~ 2200 1e-9"},
    .see_also = "TStepGrown,FStepGrow,FStepGrowX",
};
QX_EXPORT(FStepGrown, 10);

constexpr Function TStepGrown{
    .name = "TStepGrown",
    .category = category,
    .calls = twin<qx::StepGrown<ToSteps>>,
    .help = "Amount in a period of a stream whose annual rates are grown to the to-date of their step",
    .args = {time_period(), to_steps(), StepRates(), growth(), basis()},
    .examples = {"TStepGrown(2006, 12, 2005, {2006;2007}, {1000;2000}, 2005, 0.1) ~ 2420 1e-9"},
    .see_also = "FStepGrown,TStepGrow,TStepGrowX",
};
QX_EXPORT(TStepGrown, 10);

constexpr Function FStepGrowX{
    .name = "FStepGrowX",
    .category = category,
    .calls = twin<qx::StepGrowX<FromSteps>>,
    .help = "Amount in a period of a stream whose annual rates change on from-dates and grow within their "
            "steps too",
    .args = {time_period(), from_steps(), StepRates(), growth(), RevMonthsOpt(), basis()},
    .examples = {"FStepGrowX(2006, 12, 2010, {2005;2006.5}, {1000;2000}, 2005, 0.1, 12) ~ 1650 1e-6"},
    .see_also = "FStepGrow,FStepGrown,ConGrow",
};
QX_EXPORT(FStepGrowX, 11);

constexpr Function TStepGrowX{
    .name = "TStepGrowX",
    .category = category,
    .calls = twin<qx::StepGrowX<ToSteps>>,
    .help = "Amount in a period of a stream whose annual rates change on to-dates and grow within their "
            "steps too",
    .args = {time_period(), to_steps(), StepRates(), growth(), RevMonthsOpt(), basis()},
    .examples = {"TStepGrowX(2006, 12, 2005, {2006.5;2010}, {1000;2000}, 2005, 0.1, 12) ~ 1650 1e-6"},
    .see_also = "TStepGrow,TStepGrown,ConGrow",
};
QX_EXPORT(TStepGrowX, 11);

constexpr Function FStepGrowMkt{
    .name = "FStepGrowMkt",
    .category = category,
    .calls = twin<qx::StepGrowMkt<FromSteps>>,
    .help = "Amount in a period of a stream whose annual rate changes on from-dates; steps of a zero rate "
            "take the market rate, grown to their from-date",
    .args = {time_period(), Finish(), MktAnnRate(), FromDates(), MarketGaps(), growth(), basis()},
    .examples = {"FStepGrowMkt(2006, 12, 2010, 1000, {2005;2006}, {800;0}, 2005, 0.1) ~ 1100 1e-9"},
    .see_also = "FStepFcstMkt,FStepGrow",
};
QX_EXPORT(FStepGrowMkt, 11);

constexpr Function TStepGrowMkt{
    .name = "TStepGrowMkt",
    .category = category,
    .calls = twin<qx::StepGrowMkt<ToSteps>>,
    .help = "Amount in a period of a stream whose annual rate changes on to-dates; steps of a zero rate take "
            "the market rate, grown to their to-date",
    .args = {time_period(), Start(), MktAnnRate(), ToDates(), MarketGaps(), growth(), basis()},
    .examples = {"TStepGrowMkt(2006, 12, 2005, 1000, {2006;2007}, {800;0}, 2005, 0.1) ~ 1210 1e-9"},
    .see_also = "TStepFcstMkt,TStepGrow",
};
QX_EXPORT(TStepGrowMkt, 11);

constexpr Function FStepThenGrow{
    .name = "FStepThenGrow",
    .category = category,
    .calls = twin<qx::StepThenGrow<FromSteps>>,
    .help = "Amount in a period of a stream whose annual rate changes on from-dates and grows from the last "
            "of them on",
    .args = {time_period(), from_steps(), StepRates(), growth(), RevMonthsOpt(), basis()},
    .examples = {"FStepThenGrow(2007, 12, 2010, {2005;2006}, {1000;2000}, 2006, 0.1, 12) ~ 2200 1e-6"},
    .see_also = "FStep,ConGrow,FStepThenGrowRev",
};
QX_EXPORT(FStepThenGrow, 11);

constexpr Function TStepThenGrow{
    .name = "TStepThenGrow",
    .category = category,
    .calls = twin<qx::StepThenGrow<ToSteps>>,
    .help = "Amount in a period of a stream whose annual rate changes on to-dates; after the last of them "
            "its rate continues for ever and grows",
    .args = {time_period(), to_steps(), StepRates(), growth(), RevMonthsOpt(), basis()},
    .examples = {"TStepThenGrow(2007, 12, 2005, {2005.5;2006}, {1000;2000}, 2006, 0.1, 12) ~ 2200 1e-6"},
    .see_also = "TStep,ConGrow,TStepThenGrowRev",
};
QX_EXPORT(TStepThenGrow, 11);

// --- Forecasts ------------------------------------------------------------------------------------------------------

constexpr Function FStepFcst{
    .name = "FStepFcst",
    .category = category,
    .calls = twin<qx::StepFcst<FromSteps>>,
    .help = "Amount in a period of a stream whose annual rate is a forecast, read at the from-date of each "
            "step",
    .args = {time_period(), from_steps(), forecast(), basis()},
    .examples = {"FStepFcst(2006, 12, 2010, {2005;2006.5}, {1000;1100}, 2005, 12) ~ 1050 1e-9"},
    .see_also = "TStepFcst,FStepFcstMkt,ConFcstMkt",
};
QX_EXPORT(FStepFcst, 10);

constexpr Function TStepFcst{
    .name = "TStepFcst",
    .category = category,
    .calls = twin<qx::StepFcst<ToSteps>>,
    .help = "Amount in a period of a stream whose annual rate is a forecast, read at the to-date of each "
            "step",
    .args = {time_period(), to_steps(), forecast(), basis()},
    .examples = {"TStepFcst(2005, 12, 2005, {2005.5;2006}, {1000;1100}, 2005, 12) ~ 1050 1e-9"},
    .see_also = "FStepFcst,TStepFcstMkt,ConFcstMkt",
};
QX_EXPORT(TStepFcst, 10);

constexpr Function FStepFcstMkt{
    .name = "FStepFcstMkt",
    .category = category,
    .calls = twin<qx::StepFcstMkt<FromSteps>>,
    .help = "Amount in a period of a stream whose annual rate changes on from-dates; steps of a zero rate "
            "take a forecast, read at their from-date",
    .args = {time_period(), from_steps(), ForecastGaps(), forecast(), basis()},
    .examples = {"FStepFcstMkt(2006, 12, 2010, {2005;2006}, {800;0}, {1000;1100}, 2005, 12) ~ 1100 1e-9"},
    .see_also = "FStepGrowMkt,FStepFcst",
};
QX_EXPORT(FStepFcstMkt, 11);

constexpr Function TStepFcstMkt{
    .name = "TStepFcstMkt",
    .category = category,
    .calls = twin<qx::StepFcstMkt<ToSteps>>,
    .help = "Amount in a period of a stream whose annual rate changes on to-dates; steps of a zero rate take "
            "a forecast, read at their to-date",
    .args = {time_period(), to_steps(), ForecastGaps(), forecast(), basis()},
    .examples = {"TStepFcstMkt(2006, 12, 2005, {2006;2007}, {800;0}, {1000;1100}, 2005, 12) ~ 1100 1e-9"},
    .see_also = "TStepGrowMkt,TStepFcst",
};
QX_EXPORT(TStepFcstMkt, 11);

// --- Several lists --------------------------------------------------------------------------------------------------

constexpr Function FStepCombine{
    .name = "FStepCombine",
    .category = category,
    .calls = twin<qx::StepCombine<FromSteps>>,
    .help = "Amount in a period of a stream whose annual rate combines up to four lists of rates that change "
            "on from-dates",
    .args = {time_period(), CombineBy().within(combine_switch_limits), from_steps(), StepRates(),
             more_steps("FromDates2", "AnnualRates2"), more_steps("FromDates3", "AnnualRates3"),
             more_steps("FromDates4", "AnnualRates4"), basis()},
    .examples = {"FStepCombine(2006, 12, 0, 2010, {2005;2006.5}, {100;200}, 2005, 10) ~ 1500 1e-9",
                 "FStepCombine(2006, 12, 2, 2010, 2005, 100, 2006.5, 50) ~ 125 1e-9"},
    .see_also = "FStep,FStepRev",
};
QX_EXPORT(FStepCombine, 15);

constexpr Function TStepCombine{
    .name = "TStepCombine",
    .category = category,
    .calls = twin<qx::StepCombine<ToSteps>>,
    .help = "Amount in a period of a stream whose annual rate combines up to four lists of rates that change "
            "on to-dates",
    .args = {time_period(), CombineBy().within(combine_switch_limits), to_steps(), StepRates(),
             more_steps("ToDates2", "AnnualRates2"), more_steps("ToDates3", "AnnualRates3"),
             more_steps("ToDates4", "AnnualRates4"), basis()},
    .examples = {"TStepCombine(2006, 12, 0, 2005, {2006.5;2010}, {100;200}, 2010, 10) ~ 1500 1e-9",
                 "TStepCombine(2006, 12, 2, 2005, 2010, 100, 2006.5, 50) ~ 125 1e-9"},
    .see_also = "TStep,TStepRev",
};
QX_EXPORT(TStepCombine, 15);

constexpr Function FStepRev{
    .name = "FStepRev",
    .category = category,
    .calls = twin<qx::StepRev<FromSteps>>,
    .help = "Revenue in a period of a quantity and a price that both change on from-dates",
    .args = {time_period(), Finish(), price_steps("MktPriceFromDates"), FromDates(), Quantities(), basis()},
    .examples = {"FStepRev(2006, 12, 2010, {2005;2006.5}, {10;12}, 2005, 100) ~ 1100 1e-9"},
    .see_also = "FStepRevGrow,FStepRevFcst,FStepCombine",
};
QX_EXPORT(FStepRev, 10);

constexpr Function TStepRev{
    .name = "TStepRev",
    .category = category,
    .calls = twin<qx::StepRev<ToSteps>>,
    .help = "Revenue in a period of a quantity and a price that both change on to-dates",
    .args = {time_period(), Start(), price_steps("MktPriceToDates"), ToDates(), Quantities(), basis()},
    .examples = {"TStepRev(2006, 12, 2005, {2006.5;2010}, {10;12}, 2010, 100) ~ 1100 1e-9"},
    .see_also = "TStepRevGrow,TStepRevFcst,TStepCombine",
};
QX_EXPORT(TStepRev, 10);

constexpr Function FStepRevGrow{
    .name = "FStepRevGrow",
    .category = category,
    .calls = twin<qx::StepRevGrow<FromSteps>>,
    .help = "Revenue in a period of a quantity that changes on from-dates at a price that grows and is "
            "reviewed",
    .args = {time_period(), Finish(), MktPrice(), FirstRev(), FromDates(), Quantities(), growth(), RevMonthsOpt(),
             basis()},
    .examples = {"FStepRevGrow(2006, 12, 2010, 10, 2005, {2005;2006.5}, {100;200}, 2005, 0.1, 12) ~ 1650 1e-6"},
    .see_also = "FStepRev,ConRevGrow",
};
QX_EXPORT(FStepRevGrow, 13);

constexpr Function TStepRevGrow{
    .name = "TStepRevGrow",
    .category = category,
    .calls = twin<qx::StepRevGrow<ToSteps>>,
    .help = "Revenue in a period of a quantity that changes on to-dates at a price that grows and is "
            "reviewed",
    .args = {time_period(), Start(), MktPrice(), FirstRev(), ToDates(), Quantities(), growth(), RevMonthsOpt(),
             basis()},
    .examples = {"TStepRevGrow(2006, 12, 2005, 10, 2005, {2006.5;2010}, {100;200}, 2005, 0.1, 12) ~ 1650 1e-6"},
    .see_also = "TStepRev,ConRevGrow",
};
QX_EXPORT(TStepRevGrow, 13);

constexpr Function FStepRevFcst{
    .name = "FStepRevFcst",
    .category = category,
    .calls = twin<qx::StepRevFcst<FromSteps>>,
    .help = "Revenue in a period of a quantity that changes on from-dates at the price of a forecast, read "
            "at reviews",
    .args = {time_period(), Finish(), FirstRev(), FromDates(), Quantities(), forecast(), RevMonthsOpt(), basis()},
    .examples = {"FStepRevFcst(2006, 12, 2010, 2006, {2005;2006.5}, {100;200}, {10;11}, 2005, 12, 12) ~ 1650 1e-9"},
    .see_also = "FStepRev,ConRevFcst",
};
QX_EXPORT(FStepRevFcst, 13);

constexpr Function TStepRevFcst{
    .name = "TStepRevFcst",
    .category = category,
    .calls = twin<qx::StepRevFcst<ToSteps>>,
    .help = "Revenue in a period of a quantity that changes on to-dates at the price of a forecast, read at "
            "reviews",
    .args = {time_period(), Start(), FirstRev(), ToDates(), Quantities(), forecast(), RevMonthsOpt(), basis()},
    .examples = {"TStepRevFcst(2006, 12, 2005, 2006, {2006.5;2010}, {100;200}, {10;11}, 2005, 12, 12) ~ 1650 1e-9"},
    .see_also = "TStepRev,ConRevFcst",
};
QX_EXPORT(TStepRevFcst, 13);

constexpr Function FStepThenGrowRev{
    .name = "FStepThenGrowRev",
    .category = category,
    .calls = twin<qx::StepThenGrowRev<FromSteps>>,
    .help = "Revenue in a period of a quantity that changes on from-dates and grows from the last of them "
            "on, at a price that grows",
    .args = {time_period(), Finish(), MktPrice(), FromDates(), Quantities(), growth(),
             growth("GrowthDatesAnnRate", "GrowthAnnRate"), RevMonthsOpt(), RevMonthsOpt("RevMonthsAnnRateOpt"),
             basis()},
    .examples = {"FStepThenGrowRev(2006, 12, 2010, 10, 2005, 100, 2005, 0.1, 2005, 0.2, 12, 12) ~ 1320 1e-6"},
    .see_also = "FStepThenGrow,ConRevGrow2",
};
QX_EXPORT(FStepThenGrowRev, 15);

constexpr Function TStepThenGrowRev{
    .name = "TStepThenGrowRev",
    .category = category,
    .calls = twin<qx::StepThenGrowRev<ToSteps>>,
    .help = "Revenue in a period of a quantity that changes on to-dates and after the last of them continues for ever "
            "and grows, at a price that grows",
    .args = {time_period(), Start(), MktPrice(), ToDates(), Quantities(), growth(),
             growth("GrowthDatesAnnRate", "GrowthAnnRate"), RevMonthsOpt(), RevMonthsOpt("RevMonthsAnnRateOpt"),
             basis()},
    .examples = {"TStepThenGrowRev(2006, 12, 2004, 10, 2005, 100, 2005, 0.1, 2005, 0.2, 12, 12) ~ 1320 1e-6"},
    .see_also = "TStepThenGrow,ConRevGrow2",
};
QX_EXPORT(TStepThenGrowRev, 15);

} // namespace qx::worksheet
