// Returns on investments that are valued from time to time.
//
// An elemental return is that from one valuation to the next, as a fraction of what was invested at its start. Chained,
// (1 + r1)(1 + r2)... - 1, elemental returns are the time-weighted return, which does not depend on when money was paid
// in or out; raised to one over the years it is annualised. Times are in decimal years.
#pragma once

#include "calendar/date.h"
#include "core/pools.h"
#include "core/switches.h"
#include "core/takes.h"
#include "core/view.h"

#include <string>

namespace qx {

/// What TWRR gives.
enum TWRRSwitch : int {
    twrr_total = 0,      ///< time-weighted over the period
    twrr_capital = 1,    ///< the part of change in value
    twrr_income = 2,     ///< the part of income
    twrr_elemental = 10, ///< plus one of these: the last elemental return of the period
};
inline constexpr SwitchValue twrr_values[] = {
    {twrr_total, "Total return"},
    {twrr_capital, "Capital return"},
    {twrr_income, "Income return"},
    {twrr_elemental + twrr_total, "Elemental total return"},
    {twrr_elemental + twrr_capital, "Elemental capital return"},
    {twrr_elemental + twrr_income, "Elemental income return"},
};
inline constexpr int twrr_annualise = 1; ///< TWRROptions

/// What an investment is valued at, and what it brought and cost since the valuation before.
struct Performance {
    using takes = Takes<Range<date>, Range<double>, Range<double>, Range<double>, Range<double>>;
    View<date> Dates;
    View<double> CapVals, NetIncomes;
    View<double> CapExps; ///< positive
    View<double> CapRecs;
};

/// The returns of the periods from FromDate n to ToDate n, both counted; one date serves for all. Elemental returns are
/// of the value before plus the capital expenditure, and that of the first date is zero; series that are missing are
/// zeros. Throws errlibillegalswitch for another switch, inputrangelength2 for a series that is shorter than Dates.
WorkList<double> TWRR(View<date> FromDate_s, View<date> ToDate_s, const Performance& performance, int TWRRSwitch,
                      int TWRROptions);

/// What TotalReturn gives; for the first five there is the same of the index, with index_return added.
enum ReturnSwitch : int {
    annualised_return = 0,
    range_of_returns = 1,
    minimum_return = 2,
    maximum_return = 3,
    mean_return = 4,
    median_return = 5,
    deviation_of_returns = 6,
    variance_of_returns = 7,
    kurtosis_of_returns = 8,
    skewness_of_returns = 9,
    cumulative_return = 10,
    index_return = 20,
};
inline constexpr SwitchValue return_values[] = {
    {annualised_return, "Annualised return"},
    {range_of_returns, "Range of returns"},
    {minimum_return, "Minimum return"},
    {maximum_return, "Maximum return"},
    {mean_return, "Mean return"},
    {median_return, "Median return"},
    {deviation_of_returns, "Standard Deviation of returns"},
    {variance_of_returns, "Sample Variance of returns"},
    {kurtosis_of_returns, "Kurtosis in returns"},
    {skewness_of_returns, "Skewness in returns"},
    {cumulative_return, "Cumulative Return"},
    {index_return + annualised_return, "Annualised return of the Index"},
    {index_return + range_of_returns, "Range of returns of the Index"},
    {index_return + minimum_return, "Minimum return of the Index"},
    {index_return + maximum_return, "Maximum return of the Index"},
    {index_return + mean_return, "Mean return of the Index"},
};
/// A ReturnSwitch in words.
std::string DescribeReturn(int ReturnSwitch);

/// Amounts on dates; without dates there is one for each value.
struct DatedFlows {
    using takes = Takes<Range<date>, Range<double>>;
    View<date> dates;
    View<double> amounts;
};
/// The index that an investment is compared with.
struct IndexSeries {
    using takes = Takes<Range<double>, Range<date>, Range<double>>;
    View<double> IndexValues;
    View<date> IndexCashDates;
    View<double> IndexCashFlows;
};

/// A statistic of the returns from value to value in the HistoryPeriod months up to CalculationDate. A cash flow,
/// income received positive, counts at the end of the period into which it falls. Exchange rates convert values, and
/// the cash flows of the period up to each. Statistics are of samples; kurtosis is the excess over that of a normal
/// distribution.
///
/// Throws illegalvalue without a history period, for a first value that is not positive, and for index values or
/// exchange rates that are not as many as the values; errlibillegalswitch for a ReturnSwitch that is none;
/// errlibinsuffrange if there are too few returns for the statistic, errlibnovalidanswer for the kurtosis or skewness
/// of returns that are all alike; inputrangelength2 for lists of different lengths.
double TotalReturn(double HistoryPeriod, const date& CalculationDate, View<date> Dates, View<double> Values,
                   const DatedFlows& flows, int ReturnSwitch, const IndexSeries& index, View<double> ExchangeRates);
/// The same with one cash flow for each value and without an index. CashFlowTiming says when in its period a cash
/// flow is received: 0 at the end, 1 at the start, or a part of the period before its end between.
double TotalReturnQ(double HistoryPeriod, const date& CalculationDate, View<date> Dates, View<double> Values,
                    View<double> Cash_Flows, double CashFlowTiming, int ReturnSwitch);

/// The beta of returns against those of an index: their covariance over the variance of the index. Throws
/// inputrangelength2 for lists of different lengths, errlibinsuffrange for fewer than two returns, errlibnovalidanswer
/// if the returns of the index are all alike.
double BetaReturns(View<double> Returns, View<double> IndexReturns);
/// The same of two series of values. Throws illegalvalue for index values that are not as many as the values.
double BetaIndex(View<double> Values, View<double> IndexValues);

} // namespace qx
