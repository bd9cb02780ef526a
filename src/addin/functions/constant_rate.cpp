// Worksheet functions of streams that run at so much a year, or at a rate that is reviewed.
#include "projections/constant_rate.h"
#include "addin/declare.h"

namespace qx::worksheet {

namespace {

constexpr Category category = Category::ConstantRate;

constexpr Argument AnnualRate(const char* help = "Amount a year") { return {"AnnualRate", help}; }
constexpr Argument InitialAnnRate() { return {"InitialAnnRate", "Amount a year up to the first review"}; }
constexpr Argument MktAnnRate() {
    return {"MktAnnRate", "Market rate a year, as at the first growth date, that reviews take up"};
}
constexpr Argument MktPrice() { return {"MktPrice", "Price of a unit, as at the first growth date"}; }
constexpr Argument Quantity() { return {"AnnualRate", "Quantity a year, which is multiplied by the price"}; }
constexpr Argument Operator() {
    return optional("Operator", 0,
                    "How price and rate combine: 0 price x rate, 1 price / rate, 2 rate / price, 3 price + rate, 4 "
                    "price - rate, 5 rate - price, 6 the greater, 7 the smaller",
                    "price x rate");
}
constexpr Argument RevMos() { return RevMonthsOpt("RevMos"); }
constexpr Argument GrowFrom() { return {"GrowFrom", "Date from which it grows"}; }
constexpr Argument GrowthRatePA() { return {"GrowthRatePA", "Growth rate a year as a fraction: 0.03 is 3%"}; }

/// The stream of a function that comes back, and its last date.
constexpr ArgumentGroup repetition() {
    return {Start("Date on which it starts for the first time; the day itself counts"),
            Finish("Date on which it finishes for the first time; the day itself does not count"),
            {"AbsFinish", "Date from which it no longer starts again"},
            {"AnnualRates", "Amounts a year, one for each time; the last one applies to the times that follow"}};
}
constexpr Argument Periodicity() { return {"Periodicity", "Months from one start to the next"}; }

} // namespace

// --- At a constant rate ---------------------------------------------------------------------------------------------

constexpr Function Con{
    .name = "Con",
    .category = category,
    .calls = twin<qx::Con>,
    .help = "Amount in a period of a stream that runs at a constant rate a year between two dates, or the sum of "
            "several streams",
    .args = {time_period(), streams(), basis()},
    .examples = {"Con(2005, 12, 2005, 2010, 1200) ~ 1200 1e-9", "Con(2005.5, 3, 2005, 2010, 1200) ~ 300 1e-9",
                 "Con(2005, 12, {2005;2005.5}, 2010, {1200;600}) ~ 1500 1e-9"},
    .see_also = "ConGrow,FStep,TStep",
};
QX_EXPORT(Con, 8);

constexpr Function MultiCon{
    .name = "MultiCon",
    .category = category,
    .calls = twin<qx::MultiCon>,
    .help = "Sum in a period of several streams at constant rates a year. New workbooks use Con",
    .args = {time_period(), several_streams(), basis()},
    .examples = {"MultiCon(2005, 12, {2005;2005.5}, 2010, {1200;600}) ~ 1500 1e-9"},
    .see_also = "Con",
};
QX_EXPORT(MultiCon, 8);

constexpr Function ConSF{
    .name = "ConSF",
    .category = category,
    .calls = twin<qx::ConSF>,
    .help = "Amount in a period of a stream at a constant rate a year, as far as it lies between two overall dates",
    .args = {time_period(),
             streams(),
             {{"OverallStartDate", "Date before which nothing counts"},
              {"OverallFinishDate", "Date from which nothing counts"}},
             basis()},
    .examples = {"ConSF(2005, 12, 2004, 2010, 1200, 2005.25, 2005.75) ~ 600 1e-9"},
    .see_also = "Con,FStepSF",
};
QX_EXPORT(ConSF, 10);

constexpr Function ConS{
    .name = "ConS",
    .category = category,
    .calls = twin<qx::ConS>,
    .help = "Amount in a period of a stream at a constant rate a year that is spread over the year by seasons",
    .args = {time_period(), streams(), seasons(), basis()},
    .examples = {"ConS(2005, 3, 2005, 2010, 1200, {1;2;3;2}) ~ 150 1e-9",
                 "ConS(2005, 6, 2005, 2010, 1200, {1;3}, {1.01;7.01}) ~ 300 1e-9"},
    .see_also = "Con,FStepS",
};
QX_EXPORT(ConS, 10);

constexpr Function AnnRate{
    .name = "AnnRate",
    .category = category,
    .calls = core<qx::AnnRate>,
    .help = "The rate a year at which a stream amounts to so much in a period: the inverse of Con",
    .args = {time_period(), life(), {"AmountDisbursed", "Amount of the stream in the period"}, basis()},
    .examples = {"AnnRate(2005, 12, 2005.5, 2010, 300) ~ 600 1e-9"},
    .see_also = "Con",
};
QX_EXPORT(AnnRate, 8);

constexpr Function RePhaseCon{
    .name = "RePhaseCon",
    .category = category,
    .calls = twin<qx::RePhaseCon>,
    .help = "Change in a period if a stream moves to other dates and keeps its total: its amount on the new dates less "
            "that on the old ones",
    .args = {time_period(),
             {{"FromStart", "Date on which the stream starts now"},
              {"FromFinish", "Date on which it finishes now"},
              {"ToStart", "Date on which it is to start"},
              {"ToFinish", "Date on which it is to finish"}},
             AnnualRate("Amount a year on the dates of now"),
             basis()},
    .examples = {"RePhaseCon(2005, 12, 2005, 2006, 2006, 2008, 1200) ~ -1200 1e-9",
                 "RePhaseCon(2006, 12, 2005, 2006, 2006, 2008, 1200) ~ 600 1e-9"},
    .see_also = "Con",
};
QX_EXPORT(RePhaseCon, 10);

constexpr Function ConEvent{
    .name = "ConEvent",
    .category = category,
    .calls = twin<qx::ConEvent>,
    .help = "Event of a stream in a period: 2 it starts, 3 it finishes, 1 it runs throughout, 0 none of these",
    .args = {time_period(), Start("Date on which it starts; 0 if it always ran"),
             Finish("Date on which it finishes; 0 if it never does")},
    .examples = {"ConEvent(2005, 12, 2005.5, 2010) = 2", "ConEvent(2006, 12, 2005.5, 2010) = 1",
                 "ConEvent(2010, 12, 2005.5, 2010) = 3", "ConEvent(2011, 12, 2005.5, 2010) = 0"},
    .see_also = "Con",
};
QX_EXPORT(ConEvent, 4);

constexpr Function ConPer{
    .name = "ConPer",
    .category = category,
    .calls = twin<qx::ConPer>,
    .help = "Amount in a period of a stream that recurs every so many months: a refit every five years",
    .args = {time_period(), repetition(), Periodicity(), basis()},
    .examples = {"ConPer(2010, 12, 2005, 2005.5, 2020, 1200, 60) ~ 600 1e-9",
                 "ConPer(2010, 12, 2005, 2005.5, 2020, {1200;2000}, 60) ~ 1000 1e-9",
                 "ConPer(2007, 12, 2005, 2005.5, 2020, 1200, 60) = 0"},
    .see_also = "Con,ConGrowPer",
};
QX_EXPORT(ConPer, 10);

constexpr Function AnnGrowPer{
    .name = "AnnGrowPer",
    .category = category,
    .calls = twin<qx::AnnGrowPer>,
    .help = "Amount in a period of a stream that recurs every so many months and grows once a year",
    .args = {time_period(), repetition(), growth(), Periodicity(), basis()},
    .examples = {"AnnGrowPer(2007, 12, 2005, 2005.5, 2020, 1200, 2005, 0.1, 24) ~ 726 1e-6"},
    .see_also = "ConPer,ConGrowPer,AnnGrow",
};
QX_EXPORT(AnnGrowPer, 12);

constexpr Function ConGrowPer{
    .name = "ConGrowPer",
    .category = category,
    .calls = twin<qx::ConGrowPer>,
    .help = "Amount in a period of a stream that recurs every so many months and grows in steps",
    .args = {time_period(), repetition(), growth(), RevMos(), Periodicity(), basis()},
    .examples = {"ConGrowPer(2007, 12, 2005, 2005.5, 2020, 1200, 2005, 0.1, 24, 24) ~ 726 1e-6"},
    .see_also = "ConPer,AnnGrowPer,ConGrow",
};
QX_EXPORT(ConGrowPer, 13);

// --- Reviewed to a growing rate -------------------------------------------------------------------------------------

constexpr Function ConGrow{
    .name = "ConGrow",
    .category = category,
    .calls = twin<qx::ConGrow>,
    .help = "Amount in a period of a stream whose rate grows from the first growth date on, in steps every so many "
            "months or continuously, or the sum of several streams",
    .args = {time_period(), streams(), growth(), RevMonthsOpt(), basis()},
    .examples = {"ConGrow(2006, 12, 2005, 2010, 1000, 2005, 0.1, 12) ~ 1100 1e-6",
                 "ConGrow(2006, 12, 2005, 2010, 1000, 2005, 0.1, 24) ~ 1000 1e-6",
                 "ConGrow(2007, 12, 2005, 2010, 1000, {2005;2006}, {0.1;0.2}, 12) ~ 1320 1e-6"},
    .see_also = "Con,AnnGrow,ConGrowMkt,FStepThenGrow",
};
QX_EXPORT(ConGrow, 11);

constexpr Function MultiConGrow{
    .name = "MultiConGrow",
    .category = category,
    .calls = twin<qx::MultiConGrow>,
    .help = "Sum in a period of several streams that grow in steps. New workbooks use ConGrow",
    .args = {time_period(), several_streams(), growth(), RevMos(), basis()},
    .examples = {"MultiConGrow(2006, 12, 2005, 2010, {1000;2000}, 2005, 0.1, 12) ~ 3300 1e-6"},
    .see_also = "ConGrow",
};
QX_EXPORT(MultiConGrow, 11);

constexpr Function AnnGrow{
    .name = "AnnGrow",
    .category = category,
    .calls = twin<qx::AnnGrow>,
    .help = "Amount in a period of a stream whose rate grows once a year from the first growth date on, or the sum of "
            "several streams",
    .args = {time_period(), streams(), growth(), basis()},
    .examples = {"AnnGrow(2006, 12, 2005, 2010, 1000, 2005, 0.1) ~ 1100 1e-6"},
    .see_also = "ConGrow,MultiAnnGrow",
};
QX_EXPORT(AnnGrow, 10);

constexpr Function MultiAnnGrow{
    .name = "MultiAnnGrow",
    .category = category,
    .calls = twin<qx::MultiAnnGrow>,
    .help = "Sum in a period of several streams that grow once a year. New workbooks use AnnGrow",
    .args = {time_period(), several_streams(), growth(), basis()},
    .examples = {"MultiAnnGrow(2006, 12, 2005, 2010, {1000;2000}, 2005, 0.1) ~ 3300 1e-6"},
    .see_also = "AnnGrow",
};
QX_EXPORT(MultiAnnGrow, 10);

constexpr Function ConGrowQ{
    .name = "ConGrowQ",
    .category = category,
    .calls = twin<qx::ConGrowQ>,
    .help = "Amount in a period of a stream that grows at one rate from one date on. Continuous growth counts from "
            "Start. New workbooks use ConGrow",
    .args = {time_period(), life(), AnnualRate(), GrowFrom(), GrowthRatePA(), RevMos(), basis()},
    .examples = {"ConGrowQ(2006, 12, 2005, 2010, 1000, 2005, 0.1, 12) ~ 1100 1e-6"},
    .see_also = "ConGrow",
};
QX_EXPORT(ConGrowQ, 11);

constexpr Function ConGrowMkt{
    .name = "ConGrowMkt",
    .category = category,
    .calls = twin<qx::ConGrowMkt>,
    .help =
        "Amount in a period of a stream at an initial rate up to its first review and then at a growing market rate, "
        "taken up every so many months. A section of 0% growth keeps the rate that it starts with",
    .args = {time_period(), life(), FirstRev(), MktAnnRate(), InitialAnnRate(), growth(), RevMonthsOpt(), basis()},
    .examples = {"ConGrowMkt(2005, 12, 2005, 2015, 2006, 1000, 800, 2005, 0.1, 12) ~ 800 1e-6",
                 "ConGrowMkt(2006, 12, 2005, 2015, 2006, 1000, 800, 2005, 0.1, 12) ~ 1100 1e-6",
                 "ConGrowMkt(2006, 12, 2005, 2015, 2006, 1000, 800) ~ 1000 1e-6"},
    .see_also = "ConGrow,ConFcstMkt",
};
QX_EXPORT(ConGrowMkt, 13);

constexpr Function ConGrowMktQ{
    .name = "ConGrowMktQ",
    .category = category,
    .calls = twin<qx::ConGrowMktQ>,
    .help = "Amount in a period of a stream at a market rate that grows at one rate from one date on, reviewed from "
            "Start. New workbooks use ConGrowMkt",
    .args = {time_period(), life(), MktAnnRate(), InitialAnnRate(), GrowFrom(), GrowthRatePA(), RevMos(), basis()},
    .examples = {"ConGrowMktQ(2006, 12, 2005, 2010, 1000, 900, 2005, 0.1, 12) ~ 1100 1e-6"},
    .see_also = "ConGrowMkt",
};
QX_EXPORT(ConGrowMktQ, 12);

// --- Reviewed to a forecast -----------------------------------------------------------------------------------------

constexpr Function ConFcstMkt{
    .name = "ConFcstMkt",
    .category = category,
    .calls = twin<qx::ConFcstMkt>,
    .help = "Amount in a period of a stream at an initial rate up to its first review and then at the value of a "
            "forecast, read at every review",
    .args = {time_period(), life(), FirstRev(), InitialAnnRate(), forecast(), RevMonthsOpt(), basis()},
    .examples = {"ConFcstMkt(2005, 12, 2005, 2015, 2006, 800, {900;1000;1100}, 2005, 12, 12) ~ 800 1e-9",
                 "ConFcstMkt(2007, 12, 2005, 2015, 2006, 800, {900;1000;1100}, 2005, 12, 12) ~ 1100 1e-9",
                 "ConFcstMkt(2007, 12, 2005, 2015, 2006, 800, {900;1000;1100}, 2005, 12, 60) ~ 1000 1e-9"},
    .see_also = "ConGrowMkt,ConFcstGrowMkt",
};
QX_EXPORT(ConFcstMkt, 13);

constexpr Function ConFcstGrowMkt{
    .name = "ConFcstGrowMkt",
    .category = category,
    .calls = twin<qx::ConFcstGrowMkt>,
    .help =
        "Amount in a period of a stream reviewed to a forecast, scaled by what growth makes of a stream of 1 in the "
        "period",
    .args = {time_period(), life(), FirstRev(), InitialAnnRate(), forecast(), growth(), RevMos(), basis()},
    .examples = {"ConFcstGrowMkt(2006, 12, 2005, 2015, 2006, 800, {900;1000}, 2005, 12, 2005, 0.1, 12) ~ 1100 1e-6"},
    .see_also = "ConFcstMkt,ConGrow",
};
QX_EXPORT(ConFcstGrowMkt, 15);

constexpr Function ConIdx{
    .name = "ConIdx",
    .category = category,
    .calls = twin<qx::ConIdx>,
    .help = "Amount in a period of a stream whose rate follows an index, taken up every so many months. Continuous "
            "indexation (IdxReg 0) is a rough approximation: a review interval is better",
    .args = {time_period(),
             life(),
             {"InitialAnnRate", "Amount a year while the index is at its base"},
             forecast("IdxFcstVals", "IdxStartFcst", "IdxFcstBase"),
             optional("IdxReg", 12, "Months from one indexation to the next, 0 to 1000; 0 for continuous, 999 for none")
                 .within(review_months_limits),
             optional("BaseDateOrIdx", "Date at whose index the initial rate holds (Start if omitted), or the level of "
                                       "the index, a number below 1910"),
             optional("FirstIdxDate",
                      "Date of the first indexation; when stream and index have both started if omitted"),
             basis()},
    .examples = {"ConIdx(2005, 12, 2005, 2015, 1000, {100;105;110}, 2005, 12) ~ 1000 1e-9",
                 "ConIdx(2007, 12, 2005, 2015, 1000, {100;105;110}, 2005, 12) ~ 1100 1e-9",
                 "ConIdx(2007, 12, 2005, 2015, 1000, {100;105;110}, 2005, 12, 12, 200) ~ 550 1e-9"},
    .see_also = "ConFcstMkt,ConGrow",
};
QX_EXPORT(ConIdx, 14);

// --- Price and quantity ---------------------------------------------------------------------------------------------

constexpr Function ConFcstCombine{
    .name = "ConFcstCombine",
    .category = category,
    .calls = twin<qx::ConFcstCombine>,
    .help = "Amount in a period of a stream whose annual rate combines two forecasts, such as a price and a quantity",
    .args = {time_period(),
             life(),
             forecast(),
             {"FcstAnnRates", "Values of the second forecast, one for each of its periods"},
             Argument{"FcstRatesBase", "Months that each value of the second forecast holds, 1 to 1000"}.within(
                 forecast_base_limits),
             {"StartFcstRates", "Date from which the first value of the second forecast holds"},
             Operator(),
             basis()},
    .examples = {"ConFcstCombine(2005, 12, 2005, 2010, {10;20}, 2005, 6, {100;200}, 12, 2005) ~ 1500 1e-9"},
    .see_also = "ConGrowCombine,FStepCombine",
};
QX_EXPORT(ConFcstCombine, 14);

constexpr Function ConGrowCombine{
    .name = "ConGrowCombine",
    .category = category,
    .calls = twin<qx::ConGrowCombine>,
    .help =
        "Amount in a period of a stream whose annual rate combines a growing price and a growing rate, both read at "
        "the reviews of either",
    .args = {time_period(), life(), MktPrice(), growth("PriceGrowthDates", "PriceGrowthRates"),
             RevMonthsOpt("GrowPriceEvery"), AnnualRate("Rate or quantity a year, as at its first growth date"),
             growth(), RevMonthsOpt(), Operator(), basis()},
    .examples = {"ConGrowCombine(2006, 12, 2005, 2010, 10, 2005, 0.1, 12, 100, 2005, 0.2, 12) ~ 1320 1e-6"},
    .see_also = "ConFcstCombine,ConRevGrow2",
};
QX_EXPORT(ConGrowCombine, 16);

constexpr Function ConRev{
    .name = "ConRev",
    .category = category,
    .calls = twin<qx::ConRev>,
    .help = "Revenue in a period of a constant quantity a year at a constant price",
    .args = {time_period(), life(), {"MktPrice", "Price of a unit"}, Quantity(), basis()},
    .examples = {"ConRev(2005, 6, 2005, 2010, 10, 100) ~ 500 1e-9"},
    .see_also = "Con,ConRevGrow,ConRevFcst",
};
QX_EXPORT(ConRev, 9);

constexpr Function ConRevGrow{
    .name = "ConRevGrow",
    .category = category,
    .calls = twin<qx::ConRevGrow>,
    .help = "Revenue in a period of a constant quantity a year at a price that grows and is reviewed",
    .args = {time_period(), life(), MktPrice(), FirstRev(), Quantity(), growth(), RevMonthsOpt(), basis()},
    .examples = {"ConRevGrow(2006, 12, 2005, 2010, 10, 2005, 100, 2005, 0.1, 12) ~ 1100 1e-6"},
    .see_also = "ConRev,ConRevGrow2,FStepRevGrow",
};
QX_EXPORT(ConRevGrow, 13);

constexpr Function ConRevFcst{
    .name = "ConRevFcst",
    .category = category,
    .calls = twin<qx::ConRevFcst>,
    .help =
        "Revenue in a period of a constant quantity a year at the price of a forecast, read at the start and then at "
        "every review",
    .args = {time_period(), life(), FirstRev(), Quantity(), forecast(), RevMonthsOpt(), basis()},
    .examples = {"ConRevFcst(2006, 12, 2005, 2010, 2006, 100, {10;11}, 2005, 12, 12) ~ 1100 1e-9"},
    .see_also = "ConRev,ConFcstMkt,FStepRevFcst",
};
QX_EXPORT(ConRevFcst, 13);

constexpr Function ConRevGrow2{
    .name = "ConRevGrow2",
    .category = category,
    .calls = twin<qx::ConRevGrow2>,
    .help = "Revenue in a period of a quantity a year and a price that grow on dates of their own",
    .args = {time_period(), life(), MktPrice(), FirstRev("Date of the first review of the quantity; 0 for none at all"),
             Quantity(), growth(), growth("GrowthDatesAnnRate", "GrowthAnnRate"), RevMonthsOpt(),
             RevMonthsOpt("RevMonthsAnnRateOpt"), basis()},
    .examples = {"ConRevGrow2(2006, 12, 2005, 2010, 10, 2005, 100, 2005, 0.1, 2005, 0.2, 12, 12) ~ 1320 1e-6"},
    .see_also = "ConRevGrow,ConGrowCombine",
};
QX_EXPORT(ConRevGrow2, 16);

} // namespace qx::worksheet
