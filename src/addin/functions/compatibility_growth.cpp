// Worksheet functions of growth and seasons under the names of older workbooks.
#include "addin/declare.h"
#include "projections/growth.h"

namespace qx::worksheet {

namespace {

constexpr Category category = Category::Compatibility;

} // namespace

constexpr Function MarketG{
    .name = "MarketG",
    .category = category,
    .calls = twin<qx::MarketG>,
    .help = "Value at a date of an amount that grows continuously at dated annual rates. New workbooks use Grow, which "
            "has the dates before the rates",
    .args = {TheDate("Date at which the value is wanted"),
             {"Amt", "Value up to the first growth date"},
             GrowthRates(),
             GrowthDates()},
    .examples = {"MarketG(2007, 100, 0.1, 2005) ~ 121 1e-9"},
    .see_also = "Grow",
};
QX_EXPORT(MarketG, 4);

constexpr Function OneGrow{
    .name = "OneGrow",
    .category = category,
    .calls = twin<qx::OneGrow>,
    .help = "A single payment in the period that holds its date, grown at one annual rate up to it. New workbooks use "
            "MkPmtGrow",
    .args = {{"Time", "Date on which the period starts, as a date, a date number or a (decimal) year"},
             {"EventDate", "Date of the payment"},
             {"Amt", "Amount of the payment before growth"},
             {"GrowFrom", "Date from which it grows"},
             {"GrowthRatePA", "Annual equivalent growth rate as a fraction: 0.03 is 3% a year"},
             {"BaseYrs", "Length of the period in years (0.25 is a quarter), or from 1900 on the date of its end"}},
    .examples = {"OneGrow(2007, 2007.5, 100, 2005.5, 0.1, 1) ~ 121 1e-9",
                 "OneGrow(2008, 2007.5, 100, 2005, 0.1, 1) = 0"},
    .see_also = "MkPmtGrow,MkPmtGrowQ",
};
QX_EXPORT(OneGrow, 6);

constexpr Function SIndex{
    .name = "SIndex",
    .category = category,
    .calls = twin<qx::SIndex>,
    .help = "Seasonal index of a period: what a seasonal stream brings in it, as a ratio to an even stream of the same "
            "annual amount. 1 for whole years, above 1 in a heavy season",
    .args = {time_period(),
             {"SeasonFactors", "Weights of the seasons of a year, in any unit"},
             sequence_or_none(
                 "SeasonSeq",
                 "First days of the seasons as mm.dd figures, from 1.01 on; seasons of equal length if omitted"),
             measure()},
    .examples = {"SIndex(2005, 12, {1;2;3;2}) ~ 1 1e-9", "SIndex(2005.5, 3, {1;2;3;2}) ~ 1.5 1e-9",
                 "SIndex(2005.5, 6, {1;3}, {1.01;7.01}) ~ 1.5 1e-9"},
    .see_also = "ConS,FStepS",
};
QX_EXPORT(SIndex, 6);

} // namespace qx::worksheet
