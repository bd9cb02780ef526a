// Worksheet functions of streams under the names of older workbooks, whose period is a date and a length in years.
#include "addin/amount_arguments.h"
#include "addin/declare.h"
#include "projections/constant_rate.h"
#include "projections/curves.h"
#include "projections/payments.h"

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

constexpr Function TimeSpreadB{
    .name = "TimeSpreadB",
    .category = category,
    .calls = twin<qx::TimeSpreadB>,
    .help = "Amount in a period of a total that is spread evenly between two dates. New workbooks use UniSpread",
    .args = {StartOfTime(), streams("Total"), BaseYrs(), basis()},
    .examples = {"TimeSpreadB(2005, 2005, 2007, 2400, 1) ~ 1200 1e-9"},
    .see_also = "UniSpread",
};
QX_EXPORT(TimeSpreadB, 8);

constexpr Function SCurveB{
    .name = "SCurveB",
    .category = category,
    .calls = twin<qx::SCurveB>,
    .help = "Amount in a period of a total that is spent along an S-curve between two dates. New workbooks use SCurve",
    .args = {StartOfTime(), streams("Total"), Skew(), Peakness(), BaseYrs(), basis()},
    .examples = {"SCurveB(2005.5, 2005, 2007, 1000, , , 1) ~ 707.1067811865476 1e-9"},
    .see_also = "SCurve",
};
QX_EXPORT(SCurveB, 10);

constexpr Function MakePmts{
    .name = "MakePmts",
    .category = category,
    .calls = twin<qx::MakePmts>,
    .help = "Sum of the payments whose dates lie in a period. New workbooks use MkPmts",
    .args = {StartOfTime(), payments(), BaseYrs()},
    .examples = {"MakePmts(2005, {2005;2005.5;2006}, {10;20;40}, 1) = 30"},
    .see_also = "MkPmts",
};
QX_EXPORT(MakePmts, 4);

constexpr Function MakePayment{
    .name = "MakePayment",
    .category = category,
    .calls = twin<qx::MakePayment>,
    .help = "A payment, if its date lies in a period. New workbooks use MkPmts",
    .args = {StartOfTime(), payment(), BaseYrs()},
    .examples = {"MakePayment(2005, 2005.5, 100, 1) = 100"},
    .see_also = "MkPmts",
};
QX_EXPORT(MakePayment, 4);

constexpr Function MakePayments{
    .name = "MakePayments",
    .category = category,
    .calls = twin<qx::MakePayments>,
    .help = "Sum of the payments whose dates lie in a period. New workbooks use MkPmts",
    .args = {StartOfTime(), payments(), BaseYrs()},
    .examples = {"MakePayments(2005, {2005;2005.5;2006}, {10;20;40}, 1) = 30"},
    .see_also = "MkPmts",
};
QX_EXPORT(MakePayments, 4);

} // namespace qx::worksheet
