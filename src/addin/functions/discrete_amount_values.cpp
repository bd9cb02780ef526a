// Worksheet functions of payments that grow, follow a forecast or an index, or recur.
#include "addin/amount_arguments.h"
#include "addin/declare.h"
#include "projections/payment_values.h"

namespace qx::worksheet {

namespace {

constexpr Category category = Category::DiscreteAmount;

constexpr Argument FirstPmtDate() { return PmtDate("FirstPmtDate"); }
constexpr ArgumentGroup first_payment() { return {FirstPmtDate(), {"Pmt", "The payment"}}; }
constexpr ArgumentGroup payment_or_market() {
    return {PmtDate(), {"Pmt", "The payment; where it is zero the market takes its place"}};
}
constexpr ArgumentGroup payments_or_market() {
    return {PmtDates(), {"Pmts", "The payments, one for each date; where one is zero the market takes its place"}};
}
constexpr Argument MktValue() { return {"MktValue", "Value of the market on the first growth date"}; }
constexpr ArgumentGroup index() {
    return {forecast("IdxFcstVals", "IdxStartFcst", "IdxFcstBase").items[0],
            forecast("IdxFcstVals", "IdxStartFcst", "IdxFcstBase").items[1],
            forecast("IdxFcstVals", "IdxStartFcst", "IdxFcstBase").items[2],
            optional("BaseDateOrIdx",
                     "What the payments are based on: a date, or (below 1910) the index itself; the start of the index "
                     "if omitted")};
}

} // namespace

constexpr Function MkPmtGrow{
    .name = "MkPmtGrow",
    .category = category,
    .calls = twin<qx::MkPmtGrow<Payment>>,
    .help = "A payment grown to its date, if that lies in a period",
    .args = {time_period(), payment(), growth()},
    .examples = {"MkPmtGrow(2006, 12, 2006, 100, 2005, 0.1) ~ 110 1e-9"},
    .see_also = "MkPmtsGrow,Grow",
};
QX_EXPORT(MkPmtGrow, 6);

constexpr Function MkPmtsGrow{
    .name = "MkPmtsGrow",
    .category = category,
    .calls = twin<qx::MkPmtGrow<Payments>>,
    .help = "Sum of the payments in a period, each grown to its date",
    .args = {time_period(), payments(), growth()},
    .examples = {"MkPmtsGrow(2005, 36, {2006;2007}, {100;100}, 2005, 0.1) ~ 231 1e-9"},
    .see_also = "MkPmts,MkPmtsGrowMkt,Grow",
};
QX_EXPORT(MkPmtsGrow, 6);

constexpr Function MkPmtGrowQ{
    .name = "MkPmtGrowQ",
    .category = category,
    .calls = twin<qx::MkPmtGrowQ>,
    .help = "A payment grown at one rate to its date, if that lies in a period",
    .args = {time_period(),
             payment(),
             {"GrowFrom", "Date from which the payment grows"},
             {"GrowthRatePA", "Annual equivalent growth rate as a fraction: 0.03 is 3% a year"}},
    .examples = {"MkPmtGrowQ(2007, 12, 2007, 100, 2005, 0.1) ~ 121 1e-9"},
    .see_also = "MkPmtsGrow",
};
QX_EXPORT(MkPmtGrowQ, 6);

constexpr Function MkPmtFcst{
    .name = "MkPmtFcst",
    .category = category,
    .calls = twin<qx::MkPmtFcst<PaymentDate>>,
    .help = "Value of a forecast on the date of a payment, if that date lies in a period",
    .args = {time_period(), PmtDate(), forecast()},
    .examples = {"MkPmtFcst(2006, 12, 2006.5, {10;20;30}, 2005, 12) = 20"},
    .see_also = "MkPmtsFcst,Fcst",
};
QX_EXPORT(MkPmtFcst, 6);

constexpr Function MkPmtsFcst{
    .name = "MkPmtsFcst",
    .category = category,
    .calls = twin<qx::MkPmtFcst<PaymentDates>>,
    .help = "Sum of the values of a forecast on those payment dates that lie in a period",
    .args = {time_period(), PmtDates(), forecast()},
    .examples = {"MkPmtsFcst(2005, 24, {2005.5;2006.5;2007}, {10;20;30}, 2005, 12) = 30"},
    .see_also = "MkPmtsFcstMkt,Fcst",
};
QX_EXPORT(MkPmtsFcst, 6);

constexpr Function MkPmtFcstMkt{
    .name = "MkPmtFcstMkt",
    .category = category,
    .calls = twin<qx::MkPmtFcstMkt<Payment>>,
    .help = "A payment, if its date lies in a period; the value of a forecast there if it is zero",
    .args = {time_period(), payment_or_market(), forecast()},
    .examples = {"MkPmtFcstMkt(2006, 12, 2006.5, 0, {10;20;30}, 2005, 12) = 20",
                 "MkPmtFcstMkt(2006, 12, 2006.5, 5, {10;20;30}, 2005, 12) = 5"},
    .see_also = "MkPmtsFcstMkt,MkPmtFcst",
};
QX_EXPORT(MkPmtFcstMkt, 7);

constexpr Function MkPmtsFcstMkt{
    .name = "MkPmtsFcstMkt",
    .category = category,
    .calls = twin<qx::MkPmtFcstMkt<Payments>>,
    .help = "Sum of the payments in a period; where one is zero, the value of a forecast on its date",
    .args = {time_period(), payments_or_market(), forecast()},
    .examples = {"MkPmtsFcstMkt(2005, 24, {2005.5;2006.5}, {5;0}, {10;20;30}, 2005, 12) = 25"},
    .see_also = "MkPmtsFcst,MkPmtsGrowMkt",
};
QX_EXPORT(MkPmtsFcstMkt, 7);

constexpr Function MkPmtsGrowMkt{
    .name = "MkPmtsGrowMkt",
    .category = category,
    .calls = twin<qx::MkPmtsGrowMkt>,
    .help = "Sum of the payments in a period; where one is zero, the market's value grown to its date",
    .args = {time_period(), MktValue(), payments_or_market(), growth()},
    .examples = {"MkPmtsGrowMkt(2005, 24, 100, {2005.5;2006}, {5;0}, 2005, 0.1) ~ 115 1e-9"},
    .see_also = "MkPmtsGrow,MkPmtsFcstMkt",
};
QX_EXPORT(MkPmtsGrowMkt, 7);

constexpr Function MkPmtsIdx{
    .name = "MkPmtsIdx",
    .category = category,
    .calls = twin<qx::MkPmtsIdx>,
    .help = "Sum of the payments in a period, each moved with an index from its base to the date of the payment",
    .args = {time_period(), payments(), index()},
    .examples = {"MkPmtsIdx(2006, 12, 2006.5, 100, {200;210}, 2005, 12) ~ 105 1e-9",
                 "MkPmtsIdx(2006, 12, 2006.5, 100, {200;210}, 2005, 12, 100) ~ 210 1e-9"},
    .see_also = "IdxFromTo,MkPmtsGrow",
};
QX_EXPORT(MkPmtsIdx, 8);

// --- Recurring -------------------------------------------------------------------------------------------------------

constexpr Function MkPmtPer{
    .name = "MkPmtPer",
    .category = category,
    .calls = twin<qx::MkPmtPer<Payment>>,
    .help = "The payments in a period when one recurs every so many months",
    .args = {time_period(), AbsFinish(), first_payment(), Periodicity()},
    .examples = {"MkPmtPer(2006, 12, 2010, 2005, 100, 6) = 200"},
    .see_also = "MkPmtsPer,MkPmtPerGrow,ConPer",
};
QX_EXPORT(MkPmtPer, 6);

constexpr Function MkPmtPerGrow{
    .name = "MkPmtPerGrow",
    .category = category,
    .calls = twin<qx::MkPmtPerGrow<Payment>>,
    .help = "The payments in a period when one recurs every so many months, each grown to its date",
    .args = {time_period(), AbsFinish(), first_payment(), growth(), Periodicity()},
    .examples = {"MkPmtPerGrow(2006, 12, 2010, 2005, 100, 2005, 0.1, 12) ~ 110 1e-9"},
    .see_also = "MkPmtPer,MkPmtsPerGrow",
};
QX_EXPORT(MkPmtPerGrow, 8);

constexpr Function MkPmtPerFcstMkt{
    .name = "MkPmtPerFcstMkt",
    .category = category,
    .calls = twin<qx::MkPmtPerFcstMkt<Payment>>,
    .help = "The payments in a period when one recurs every so many months; the value of a forecast on each date if it "
            "is zero",
    .args = {time_period(),
             AbsFinish(),
             FirstPmtDate(),
             {"Pmt", "The payment; where it is zero the market takes its place"},
             forecast(),
             Periodicity()},
    .examples = {"MkPmtPerFcstMkt(2006, 12, 2010, 2005, 0, {10;20;30}, 2005, 12, 6) = 40"},
    .see_also = "MkPmtFcstMkt,MkPmtsPerFcstMkt",
};
QX_EXPORT(MkPmtPerFcstMkt, 9);

constexpr Function MkPmtsPer{
    .name = "MkPmtsPer",
    .category = category,
    .calls = twin<qx::MkPmtPer<Payments>>,
    .help = "Sum of the payments in a period when each of a list recurs every so many months",
    .args = {time_period(), AbsFinish(), payments(), Periodicity()},
    .examples = {"MkPmtsPer(2006, 12, 2010, {2005;2005.5}, {100;20}, 12) = 120"},
    .see_also = "MkPmts,MkPmtPer,MkPmtsPerGrow",
};
QX_EXPORT(MkPmtsPer, 6);

constexpr Function MkPmtsPerGrow{
    .name = "MkPmtsPerGrow",
    .category = category,
    .calls = twin<qx::MkPmtPerGrow<Payments>>,
    .help = "Sum of the payments in a period when each of a list recurs every so many months and grows to each of its "
            "dates",
    .args = {time_period(), AbsFinish(), payments(), growth(), Periodicity()},
    .examples = {"MkPmtsPerGrow(2006, 12, 2010, {2005;2005}, {100;20}, 2005, 0.1, 12) ~ 132 1e-9"},
    .see_also = "MkPmtsPer,MkPmtsGrow",
};
QX_EXPORT(MkPmtsPerGrow, 8);

constexpr Function MkPmtsPerFcst{
    .name = "MkPmtsPerFcst",
    .category = category,
    .calls = twin<qx::MkPmtsPerFcst>,
    .help = "Sum of the values of a forecast on dates that recur every so many months, as far as they lie in a period",
    .args = {time_period(), AbsFinish(), PmtDates(), forecast(), Periodicity()},
    .examples = {"MkPmtsPerFcst(2006, 12, 2010, {2005;2005.5}, {10;20;30}, 2005, 12, 12) = 40"},
    .see_also = "MkPmtsFcst,MkPmtsPerFcstMkt",
};
QX_EXPORT(MkPmtsPerFcst, 8);

constexpr Function MkPmtsPerFcstMkt{
    .name = "MkPmtsPerFcstMkt",
    .category = category,
    .calls = twin<qx::MkPmtPerFcstMkt<Payments>>,
    .help = "Sum of the payments in a period when each of a list recurs every so many months; the value of a forecast "
            "on each date where one is zero",
    .args = {time_period(), AbsFinish(), payments_or_market(), forecast(), Periodicity()},
    .examples = {"MkPmtsPerFcstMkt(2006, 12, 2010, {2005;2005.5}, {5;0}, {10;20;30}, 2005, 12, 12) = 25"},
    .see_also = "MkPmtsFcstMkt,MkPmtsPerGrowMkt",
};
QX_EXPORT(MkPmtsPerFcstMkt, 9);

constexpr Function MkPmtsPerGrowMkt{
    .name = "MkPmtsPerGrowMkt",
    .category = category,
    .calls = twin<qx::MkPmtsPerGrowMkt>,
    .help = "Sum of the payments in a period when each of a list recurs every so many months; the market's value grown "
            "to each date where one is zero",
    .args = {time_period(), AbsFinish(), MktValue(), payments_or_market(), growth(), Periodicity()},
    .examples = {"MkPmtsPerGrowMkt(2006, 12, 2010, 100, {2005;2005}, {5;0}, 2005, 0.1, 12) ~ 115 1e-9"},
    .see_also = "MkPmtsGrowMkt,MkPmtsPerFcstMkt",
};
QX_EXPORT(MkPmtsPerGrowMkt, 9);

constexpr Function MkPmtsIdxPer{
    .name = "MkPmtsIdxPer",
    .category = category,
    .calls = twin<qx::MkPmtsIdxPer>,
    .help = "Sum of the payments in a period when each of a list recurs every so many months and moves with an index",
    .args = {time_period(), AbsFinish(), payments(), index(), Periodicity()},
    .examples = {"MkPmtsIdxPer(2006, 12, 2010, 2005, 100, {200;210}, 2005, 12, , 12) ~ 105 1e-9"},
    .see_also = "MkPmtsIdx,MkPmtsPer",
};
QX_EXPORT(MkPmtsIdxPer, 10);

} // namespace qx::worksheet
