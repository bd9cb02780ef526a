// Worksheet functions of depreciation: single assets, vintages, and pools under construction.
#include "accounting/depreciation.h"
#include "accounting/asset_pools.h"
#include "addin/declare.h"

namespace qx::worksheet {

namespace {

constexpr Category category = Category::AccountingAndTax;

constexpr Argument StartDep(const char* help = "Date from which the asset is depreciated") {
    return {"StartDep", help};
}
constexpr Argument FirstStartDep() {
    return StartDep("Date on which the first asset is bought and from which it is depreciated");
}
constexpr Argument LifeOrDecRate() {
    return {"LifeOrDecRate", "1 or more: the life in years; below 1: the annual rate of decline as a fraction, 0.2 for "
                             "20% a year"};
}
constexpr Argument DepType() {
    return {"DepType", "0 straight line, 1 declining balance that reaches the final value at the end of the life, 2 "
                       "double declining balance, below 0 n-declining balance (-3 is 3 / life a year), 3 sum of "
                       "years' digits"};
}
/// Asset.
constexpr ArgumentGroup asset() {
    return {LifeOrDecRate(),
            DepType(),
            {"InitialValue", "Value before depreciation: what the asset cost"},
            optional("FinalValue", 0.0, "Value at the end of the life, below which depreciation does not go")};
}
constexpr ArgumentGroup dep_basis() { return {DayCount(), Periods(), ProjMode()}; }
constexpr Argument AbsFinish() { return {"AbsFinish", "Date from which no more assets are bought"}; }
constexpr Argument Periodicity() {
    return Argument{"Periodicity", "Months from one purchase to the next, 0 or more; a hundred purchases count"}.within(
        {0});
}

/// PoolCosts.
constexpr ArgumentGroup pool_costs() {
    return {FromDatesInt(), IntSimple(),
            Argument{"AdditionDates", "Dates on which money is spent, ascending"}.in_ascending_order(),
            Argument{"Additions", "What is spent, one amount for each of the dates"}};
}
constexpr Argument ISDates() {
    return Argument{"ISDates", "In-service dates, ascending: from each of them a lot is depreciated"}
        .in_ascending_order();
}
constexpr Argument ISPortions() {
    return {"ISPortions", "Weight of each in-service date in the whole spend; they need not sum to 1", {Preset::empty}};
}
/// PoolTerms.
constexpr ArgumentGroup pool_terms() {
    return {LifeOrDecRate(), DepType(), optional("FinalValue", 0.0, "Value of each lot at the end of its life"),
            optional("DepSwitch", 0,
                     "0 depreciation; pool's value 1 at start, 2 on the last day; work in progress 3 at start, 4 at "
                     "end; in service to date 5 at start, 6 at end, 7 in the period; interest capitalised to date 8 at "
                     "start, 9 at end, 10 in the period")
                .within(dep_switch_limits)};
}
constexpr ArgumentGroup pool_measure() { return {DayCount(), Periods()}; }
constexpr ArgumentGroup pool_interest() { return {DayCountDisc(), PrdsDisc()}; }

} // namespace

// --- One asset ------------------------------------------------------------------------------------------------------

constexpr Function DepreciatedValue{
    .name = "DepreciatedValue",
    .category = category,
    .calls = twin<qx::DepreciatedValue>,
    .help = "Value of an asset on a date, after depreciation by a chosen method",
    .args = {TheDate(),
             {"InitialDate", "Date on which the asset is bought; it is worth 0 before"},
             StartDep(),
             asset(),
             dep_basis()},
    .examples = {"DepreciatedValue(2007, 2005, 2005, 10, 0, 1000, 100) ~ 820 1e-9",
                 "DepreciatedValue(2006, 2005, 2005, 5, 3, 1000, 100) ~ 700 1e-9",
                 "DepreciatedValue(2006, 2005, 2005, 0.25, 1, 1000, 100) ~ 750 1e-9"},
    .see_also = "Depreciate,DepreciatePer,DepPool",
};
QX_EXPORT(DepreciatedValue, 10);

constexpr Function Depreciate{
    .name = "Depreciate",
    .category = category,
    .calls = twin<qx::Depreciate>,
    .help = "Depreciation of an asset in a period, by a chosen method",
    .args = {time_period(), StartDep(), asset(), dep_basis()},
    .examples = {"Depreciate(2006, 12, 2005, 10, 0, 1000, 100) ~ 90 1e-9",
                 "Depreciate(2005, 12, 2005, 5, 3, 1000, 100) ~ 300 1e-9"},
    .see_also = "DepreciatedValue,DepreciatePer,DepPool",
};
QX_EXPORT(Depreciate, 10);

// --- Assets bought at intervals -------------------------------------------------------------------------------------

constexpr Function DepreciatePer{
    .name = "DepreciatePer",
    .category = category,
    .calls = twin<qx::DepreciatePer>,
    .help = "Depreciation in a period of assets bought at regular intervals",
    .args = {time_period(), AbsFinish(), FirstStartDep(), asset(), Periodicity(), dep_basis()},
    .examples = {"DepreciatePer(2007, 12, 2010, 2005, 10, 0, 1000, 100, 12) ~ 270 1e-9"},
    .see_also = "Depreciate,DepreciateGrowPer,DepreciateFcstPer,DepreciateIdxPer",
};
QX_EXPORT(DepreciatePer, 12);

constexpr Function DepreciateGrowPer{
    .name = "DepreciateGrowPer",
    .category = category,
    .calls = twin<qx::DepreciateGrowPer>,
    .help = "Depreciation in a period of assets bought at regular intervals, whose values grow from the first purchase "
            "on",
    .args = {time_period(), AbsFinish(), FirstStartDep(), asset(), growth(), Periodicity(), dep_basis()},
    .examples = {"DepreciateGrowPer(2006, 12, 2010, 2005, 10, 0, 1000, 0, 2005, 0.1, 12) ~ 210 1e-9"},
    .see_also = "DepreciatePer,DepreciateFcstPer,DepreciateIdxPer,GrowFromTo",
};
QX_EXPORT(DepreciateGrowPer, 14);

constexpr Function DepreciateFcstPer{
    .name = "DepreciateFcstPer",
    .category = category,
    .calls = twin<qx::DepreciateFcstPer>,
    .help = "Depreciation in a period of assets bought at regular intervals, whose values follow a forecast from the "
            "first purchase on",
    .args = {time_period(), AbsFinish(), FirstStartDep(), asset(), forecast(), Periodicity(), dep_basis()},
    .examples = {"DepreciateFcstPer(2006, 12, 2010, 2005, 10, 0, 1000, 0, {50;60}, 2005, 12, 12) ~ 220 1e-9"},
    .see_also = "DepreciatePer,DepreciateGrowPer,DepreciateIdxPer,Fcst",
};
QX_EXPORT(DepreciateFcstPer, 15);

constexpr Function DepreciateIdxPer{
    .name = "DepreciateIdxPer",
    .category = category,
    .calls = twin<qx::DepreciateIdxPer>,
    .help = "Depreciation in a period of assets bought at regular intervals, whose values follow an index from its "
            "base on",
    .args = {time_period(), AbsFinish(), FirstStartDep(), asset(),
             forecast("IdxFcstVals", "IdxStartFcst", "IdxFcstBase"),
             optional("BaseDateOrIdx", "Date of the index at which the values hold, or the index itself (below 1910); "
                                       "StartDep if omitted"),
             Periodicity(), dep_basis()},
    .examples = {"DepreciateIdxPer(2006, 12, 2010, 2005, 10, 0, 1000, 0, {50;60}, 2005, 12, 40, 12) ~ 275 1e-9"},
    .see_also = "DepreciatePer,DepreciateGrowPer,DepreciateFcstPer,IdxFromTo",
};
QX_EXPORT(DepreciateIdxPer, 16);

// --- Pools ----------------------------------------------------------------------------------------------------------

constexpr Function DepPool{
    .name = "DepPool",
    .category = category,
    .calls = twin<qx::DepPool>,
    .help = "Depreciation, value, work in progress or capitalised interest of a pool of assets, by portions of the "
            "whole spend (DepPoolRatio) if there are any, otherwise by what was spent (DepPoolWIP)",
    .args = {time_period(), pool_costs(), ISDates(), ISPortions(), pool_terms(), pool_measure(), pool_interest()},
    .examples = {"DepPool(2006, 12, 2005, 0.08, 2005, 1000, 2006, , 10, 0) ~ 108.243216 1e-9",
                 "DepPool(2006, 12, 2005, 0, 2005, 1000, {2006;2007}, {3;1}, 10, 0, 0, 7) ~ 750 1e-9"},
    .see_also = "DepPoolWIP,DepPoolRatio,Depreciate",
};
QX_EXPORT(DepPool, 16);

constexpr Function DepPoolWIP{
    .name = "DepPoolWIP",
    .category = category,
    .calls = twin<qx::DepPoolWIP>,
    .help = "Depreciation, value, work in progress or capitalised interest of a pool of assets, each of which is what "
            "was spent since the last in-service date, with interest",
    .args = {time_period(), pool_costs(), ISDates(), pool_terms(), pool_measure(), pool_interest()},
    .examples = {"DepPoolWIP(2006, 12, 2005, 0, {2005;2006.5}, {1000;500}, {2006;2007}, 10, 0, 0, 4) ~ 500 1e-9"},
    .see_also = "DepPool,DepPoolRatio,Depreciate",
};
QX_EXPORT(DepPoolWIP, 15);

constexpr Function DepPoolRatio{
    .name = "DepPoolRatio",
    .category = category,
    .calls = twin<qx::DepPoolRatio>,
    .help = "Depreciation, value, work in progress or capitalised interest of a pool of assets, whose whole spend with "
            "interest is shared over the in-service dates by portions",
    .args = {time_period(), pool_costs(), ISDates(), ISPortions(), pool_terms(), pool_measure(), pool_interest()},
    .examples = {"DepPoolRatio(2006, 12, 2005, 0, 2005, 1000, {2006;2007}, {3;1}, 10, 0, 0, 4) ~ 250 1e-9"},
    .see_also = "DepPool,DepPoolWIP,Depreciate",
};
QX_EXPORT(DepPoolRatio, 16);

} // namespace qx::worksheet
