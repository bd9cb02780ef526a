// Worksheet functions of rents of a share of turnover.
#include "realestate/turnover_rents.h"
#include "addin/declare.h"
#include "addin/rent_arguments.h"

namespace qx::worksheet {

namespace {

constexpr Category category = Category::RealEstate;

constexpr ArgumentGroup turnover_rates() {
    return {{"MargTurnRates", "Shares of turnover due as rent, as fractions: a row for each threshold, a column for "
                              "each date; or one for all"},
            optional("RateFromThresholds", "Turnovers a year above which the rates of a row apply, ascending; if "
                                           "omitted one row applies to all turnover")
                .in_ascending_order(),
            optional("RateFromDates", "Dates from which the rates of a column apply, ascending; before the first one "
                                      "no rent is due")
                .in_ascending_order()};
}
constexpr ArgumentGroup turnovers() {
    return {Argument{"ToDates", "Dates up to which the turnovers apply, ascending; the last one applies from then on"}
                .in_ascending_order(),
            {"Turnovers", "Turnovers a year before growth, one for each of the dates or one for all"}};
}
constexpr Argument GrowEvery() {
    return optional("GrowEvery", 0,
                    "Months between steps of growth, 0 to 1000; 0 for growth to the start of the period and to "
                    "wherever turnovers or rates change in it",
                    "no steps")
        .within(review_months_limits);
}
constexpr Argument TurnSwitch() {
    return optional("TurnSwitch", 0, "0 the rent, 1 the turnover above the first threshold", "the rent");
}
constexpr ArgumentGroup turnover_relets() {
    return {optional("RelVoid", "Months of void before each relet, or a list of them"),
            optional("RelRF", "Months without rent at the start of each relet, or a list of them"),
            optional("RelTerm", "Term of each relet in years, or a list of them; 15 if omitted")};
}

} // namespace

constexpr Function TStepGTurnRentGrow{
    .name = "TStepGTurnRentGrow",
    .category = category,
    .calls = twin<qx::TStepGTurnRentGrow>,
    .help = "Rent in a period of a lease that pays a share of turnover, by bands above thresholds, with turnovers up "
            "to given dates that grow",
    .args = {time_period(), lease(), turnover_rates(), growth("GrowDatesTh", "GrowRatesTh"), turnovers(), growth(),
             GrowEvery(), TurnSwitch(), basis(), Brk()},
    .examples = {"TStepGTurnRentGrow(2008, 12, 2005, 2020, 0.07, , , , , 2010, 50000) ~ 3500 1e-9",
                 "TStepGTurnRentGrow(2008, 12, 2005, 2020, {0.1;0.05}, {20000;40000}, , , , 2010, 50000) ~ 2500 1e-9",
                 "TStepGTurnRentGrow(2008, 12, 2005, 2020, 0.1, 20000, , , , 2010, 50000, , , , 1) ~ 30000 1e-9"},
    .see_also = "TStepGTurnRentGrowR,TStepRentGrow",
};
QX_EXPORT(TStepGTurnRentGrow, 19);

constexpr Function TStepGTurnRentGrowR{
    .name = "TStepGTurnRentGrowR",
    .category = category,
    .calls = twin<qx::TStepGTurnRentGrowR>,
    .help = "TStepGTurnRentGrow, and the turnover rent of the relets after it",
    .args = {time_period(), lease(), turnover_rates(), growth("GrowDatesTh", "GrowRatesTh"), turnovers(), growth(),
             GrowEvery(), turnover_relets(), TurnSwitch(), basis(), AbFin(), Brk()},
    .examples = {"TStepGTurnRentGrowR(2010, 12, 2005, 2010, 0.07, , , , , 2010, 50000, , , , 6) ~ 1750 1e-9"},
    .see_also = "TStepGTurnRentGrow,TStepRentGrowR",
};
QX_EXPORT(TStepGTurnRentGrowR, 23);

} // namespace qx::worksheet
