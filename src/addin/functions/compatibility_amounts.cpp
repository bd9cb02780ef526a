// Worksheet functions of spreads and payments under the names of older workbooks, with periods in years.
#include "addin/amount_arguments.h"
#include "addin/declare.h"
#include "projections/curves.h"
#include "projections/payments.h"

namespace qx::worksheet {

namespace {

constexpr Category category = Category::Compatibility;

constexpr Argument TimeInYears() {
    return {"Time", "The Time or Date that signifies the start of a time period. Usually accompanied by BaseYrs, the "
                    "length (years) or end of the time period."};
}
constexpr Argument BaseYrs() {
    return {"BaseYrs", "Length of the time period in years, or (from 1900 on) the date of its end"};
}

} // namespace

constexpr Function TimeSpreadB{
    .name = "TimeSpreadB",
    .category = category,
    .calls = twin<qx::TimeSpreadB>,
    .help = "Amount in a period of a total that is spread evenly between two dates. New workbooks use UniSpread",
    .args = {TimeInYears(), uniform_spread(), BaseYrs(), basis()},
    .examples = {"TimeSpreadB(2005, 2005, 2007, 2400, 1) ~ 1200 1e-9"},
    .see_also = "UniSpread",
};
QX_EXPORT(TimeSpreadB, 8);

constexpr Function SCurveB{
    .name = "SCurveB",
    .category = category,
    .calls = twin<qx::SCurveB>,
    .help = "Amount in a period of a total that is spent along an S-curve between two dates. New workbooks use SCurve",
    .args = {TimeInYears(), curved_spread(), BaseYrs(), basis()},
    .examples = {"SCurveB(2005.5, 2005, 2007, 1000, , , 1) ~ 707.1067811865476 1e-9"},
    .see_also = "SCurve",
};
QX_EXPORT(SCurveB, 10);

constexpr Function MakePmts{
    .name = "MakePmts",
    .category = category,
    .calls = twin<qx::MakePmts>,
    .help = "Sum of the payments whose dates lie in a period. New workbooks use MkPmts",
    .args = {TimeInYears(), payments(), BaseYrs()},
    .examples = {"MakePmts(2005, {2005;2005.5;2006}, {10;20;40}, 1) = 30"},
    .see_also = "MkPmts",
};
QX_EXPORT(MakePmts, 4);

constexpr Function MakePayment{
    .name = "MakePayment",
    .category = category,
    .calls = twin<qx::MakePayment>,
    .help = "A payment, if its date lies in a period. New workbooks use MkPmts",
    .args = {TimeInYears(), payment(), BaseYrs()},
    .examples = {"MakePayment(2005, 2005.5, 100, 1) = 100"},
    .see_also = "MkPmts",
};
QX_EXPORT(MakePayment, 4);

constexpr Function MakePayments{
    .name = "MakePayments",
    .category = category,
    .calls = twin<qx::MakePayments>,
    .help = "Sum of the payments whose dates lie in a period. New workbooks use MkPmts",
    .args = {TimeInYears(), payments(), BaseYrs()},
    .examples = {"MakePayments(2005, {2005;2005.5;2006}, {10;20;40}, 1) = 30"},
    .see_also = "MkPmts",
};
QX_EXPORT(MakePayments, 4);

} // namespace qx::worksheet
