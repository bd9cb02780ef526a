// Worksheet functions of returns on investments.
#include "rates/returns.h"
#include "addin/declare.h"

namespace qx::worksheet {

namespace {

constexpr Argument HistoryPeriod() {
    return {"HistoryPeriod", "Months up to CalculationDate whose values count, above zero"};
}
constexpr Argument CalculationDate() {
    return {"CalculationDate", "Date up to which values count; the day itself counts"};
}
constexpr Argument value_dates() { return Argument{"Dates", "Dates of the values, ascending"}.in_ascending_order(); }
constexpr Argument Values() { return {"Values", "Values of the investment, one for each of the dates"}; }
constexpr Argument ReturnSwitch(bool with_index) {
    return optional("ReturnSwitch", 0,
                    with_index ? "What is returned: 0 annualised return, 1 range, 2 minimum, 3 maximum, 4 mean, 5 "
                                 "median, 6 standard deviation, 7 sample variance, 8 kurtosis, 9 skewness, 10 "
                                 "cumulative return; 20 to 24 as 0 to 4, of the index"
                               : "What is returned: 0 annualised return, 1 range, 2 minimum, 3 maximum, 4 mean, 5 "
                                 "median, 6 standard deviation, 7 sample variance, 8 kurtosis, 9 skewness, 10 "
                                 "cumulative return",
                    "annualised return")
        .of(return_values);
}
constexpr Argument dates_of_flows(const char* name, const char* help) {
    return Argument{name, help, {Preset::empty}}.in_ascending_order();
}

} // namespace

constexpr Function TWRR{
    .name = "TWRR",
    .category = Category::RealEstate,
    .calls = core<qx::TWRR>,
    .help = "Time-weighted rate of return of an investment that is valued from time to time, in one period or several",
    .args =
        {{"FromDate_s", "Dates from which returns count, one for each period or one for all; the day itself counts"},
         {"ToDate_s", "Dates up to which returns count, one for each period or one for all; the day itself counts"},
         Argument{"Dates", "Dates of the valuations, ascending"}.in_ascending_order(),
         {"CapVals", "Capital values, one for each of the dates"},
         optional("NetIncomes", "Net incomes since the valuation before, one for each of the dates; zeros if omitted"),
         optional("CapExps", "Capital expenditures since the valuation before, as positive amounts; zeros if omitted"),
         optional("CapRecs", "Capital receipts since the valuation before; zeros if omitted"),
         optional("TWRRSwitch", 0,
                  "What is returned: 0 total return, 1 its part from capital, 2 its part from income; 10 to 12 the "
                  "same of the last valuation in the period alone (elemental return)",
                  "total return")
             .of(twrr_values),
         optional("TWRROptions", 0, "Sum of options: 1 annualises the return of the period", "none")},
    .examples = {"TWRR(2005, 2007, {2005;2006;2007}, {100;110;121}) ~ 0.21 1e-12",
                 "TWRR(2005, 2007, {2005;2006;2007}, {100;110;121}, {0;5;5.5}, , , 0, 1) ~ 0.15 1e-12",
                 "TWRR(2007, 2007, {2005;2006;2007}, {100;110;121}, {0;5;5.5}, , , 12) ~ 0.05 1e-12"},
    .see_also = "TotalReturn,IRRT",
};
QX_EXPORT(TWRR, 9);

constexpr Function TotalReturn{
    .name = "TotalReturn",
    .category = Category::Banking,
    .calls = core<qx::TotalReturn>,
    .help = "Total return of an investment from its values and cash flows up to a date, or a statistic of its returns "
            "from value to value or of those of an index",
    .args = {HistoryPeriod(), CalculationDate(), value_dates(), Values(),
             dates_of_flows("CashFlowDates",
                            "Dates of the cash flows, ascending; if omitted there is a cash flow for each value"),
             optional("Cash_Flows", "Cash flows, received positive: they count up to the value that follows them"),
             ReturnSwitch(true), optional("IndexValues", "Values of an index, one for each of the dates"),
             dates_of_flows("IndexCashDates",
                            "Dates of the cash flows of the index, ascending; if omitted there is one for each value"),
             optional("IndexCashFlows", "Cash flows of the index, received positive"),
             optional("ExchangeRates",
                      "Exchange rates by which values and cash flows are multiplied, one for each of the dates")},
    .examples = {"TotalReturn(24, 2007, {2005;2006;2007}, {100;110;121}) ~ 0.1 1e-12",
                 "TotalReturn(24, 2007, {2005;2006;2007}, {100;110;121}, {2005.5;2006.5}, {5;5.5}, 10) ~ 0.3225 1e-12",
                 "TotalReturn(24, 2007, {2005;2006;2007}, {100;110;121}, , , 23, {50;60;66}) ~ 0.2 1e-12"},
    .see_also = "TotalReturnQ,DescribeReturn,TWRR,BetaIndex",
};
QX_EXPORT(TotalReturn, 11);

constexpr Function TotalReturnQ{
    .name = "TotalReturnQ",
    .category = Category::Banking,
    .calls = core<qx::TotalReturnQ>,
    .help =
        "Total return of an investment from its values and a cash flow for each, or a statistic of its returns from "
        "value to value (quick version)",
    .args = {HistoryPeriod(), CalculationDate(), value_dates(), Values(),
             optional("Cash_Flows", "Cash flows since the value before, one for each of the dates, received positive"),
             optional("CashFlowTiming", 0.0,
                      "When in its period a cash flow is received: 0 at the end, 1 at the start, or a part of the "
                      "period before its end",
                      "at the end")
                 .within({0, 1}),
             ReturnSwitch(false)},
    .examples = {"TotalReturnQ(24, 2007, {2005;2006;2007}, {100;110;121}, {0;5;5.5}) ~ 0.15 1e-12",
                 "TotalReturnQ(12, 2006, {2005;2006}, {100;95}, {0;10}, 1) ~ 0.0555555556 1e-9"},
    .see_also = "TotalReturn,DescribeReturn",
};
QX_EXPORT(TotalReturnQ, 7);

constexpr Function DescribeReturn{
    .name = "DescribeReturn",
    .category = Category::Banking,
    .calls = core<qx::DescribeReturn>,
    .help = "The ReturnSwitch of TotalReturn in words",
    .args = {Argument{"ReturnSwitch", "0 to 10, or 20 to 24 for the index"}.of(return_values)},
    .examples = {"DescribeReturn(6) = \"Standard Deviation of returns\""},
    .see_also = "TotalReturn,TotalReturnQ",
};
QX_EXPORT(DescribeReturn, 1);

constexpr Function BetaReturns{
    .name = "BetaReturns",
    .category = Category::Banking,
    .calls = core<qx::BetaReturns>,
    .help = "Beta of the returns of an investment against those of an index: their covariance over the variance of the "
            "index",
    .args = {{"Returns", "Returns of the investment"}, {"IndexReturns", "Returns of the index, one for each of them"}},
    .examples = {"BetaReturns({0.1;0.05;-0.02}, {0.05;0.025;-0.01}) ~ 2 1e-12"},
    .see_also = "BetaIndex,TotalReturn",
};
QX_EXPORT(BetaReturns, 2);

constexpr Function BetaIndex{
    .name = "BetaIndex",
    .category = Category::Banking,
    .calls = core<qx::BetaIndex>,
    .help = "Beta of an investment against an index, from the values of both",
    .args = {{"Values", "Values of the investment"},
             optional("IndexValues", "Values of the index, one for each of them; without an index there is no beta")},
    .examples = {"BetaIndex({100;110;115.5}, {100;105;107.625}) ~ 2 1e-12"},
    .see_also = "BetaReturns,TotalReturn",
};
QX_EXPORT(BetaIndex, 2);

} // namespace qx::worksheet
