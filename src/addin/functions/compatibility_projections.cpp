// Worksheet functions of streams under the names of older workbooks, whose period is a date and a length in years.
#include "addin/declare.h"
#include "projections/constant_rate.h"

namespace qx::worksheet {

namespace {

constexpr Category category = Category::Compatibility;

constexpr Argument StartOfTime() {
    return {"Time", "Start of the time period, as a date, a date number or a (decimal) year"};
}
constexpr Argument BaseYrs() {
    return {"BaseYrs", "Length of the time period in years, in whole months: 0.25 is a quarter; from 1900 on its end"};
}

} // namespace

constexpr Function PerAnn{
    .name = "PerAnn",
    .category = category,
    .calls = twin<qx::PerAnn>,
    .help = "Amount in a period of a stream at a constant rate a year. New workbooks use Con",
    .args = {StartOfTime(), streams(), BaseYrs(), basis()},
    .examples = {"PerAnn(2005.5, 2005, 2010, 1200, 0.25) ~ 300 1e-9"},
    .see_also = "Con",
};
QX_EXPORT(PerAnn, 8);

constexpr Function MultiPerAnn{
    .name = "MultiPerAnn",
    .category = category,
    .calls = twin<qx::MultiPerAnn>,
    .help = "Sum in a period of several streams at constant rates a year. New workbooks use Con",
    .args = {StartOfTime(), several_streams(), BaseYrs(), basis()},
    .examples = {"MultiPerAnn(2005, {2005;2005.5}, 2010, {1200;600}, 1) ~ 1500 1e-9"},
    .see_also = "Con",
};
QX_EXPORT(MultiPerAnn, 8);

constexpr Function AnnGrowB{
    .name = "AnnGrowB",
    .category = category,
    .calls = twin<qx::AnnGrowB>,
    .help = "Amount in a period of a stream that grows once a year at one rate. New workbooks use AnnGrow",
    .args = {StartOfTime(),
             life(),
             {"AnnualRate", "Amount a year"},
             {"GrowthRatePA", "Growth rate a year as a fraction: 0.03 is 3%"},
             {"GrowFrom", "Date from which it grows"},
             BaseYrs(),
             basis()},
    .examples = {"AnnGrowB(2006, 2005, 2010, 1000, 0.1, 2005, 1) ~ 1100 1e-6"},
    .see_also = "AnnGrow",
};
QX_EXPORT(AnnGrowB, 10);

} // namespace qx::worksheet
