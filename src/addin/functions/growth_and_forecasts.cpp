// Worksheet functions of values at a date under growth and by forecasts.
#include "addin/declare.h"
#include "projections/forecast.h"
#include "projections/growth.h"

namespace qx::worksheet {

namespace {

constexpr Category category = Category::InstantaneousLevel;

constexpr Argument value_date() { return TheDate("Date at which the value is wanted"); }
constexpr Argument StartingValue() { return {"StartingValue", "Value up to the first growth date"}; }
constexpr Argument UOTog() {
    return optional("UOTog",
                    "Dates that turn upward-only reviews on and off, from off: with one date they are upward-only "
                    "from it on, with two between them; none if omitted");
}
constexpr Argument FcstSwitchOpt() {
    return optional("FcstSwitchOpt", 0, "How the forecast is read between its dates: 0 in steps, 1 on straight lines",
                    "in steps");
}

} // namespace

constexpr Function Grow{
    .name = "Grow",
    .category = category,
    .calls = twin<qx::Grow>,
    .help = "Value at a date of an amount that grows at dated annual rates, continuously or at reviews every so many "
            "months from the first growth date on",
    .args = {value_date(), StartingValue(), growth(), RevMonthsOpt()},
    .examples = {"Grow(2007, 100, 2005, 0.1) ~ 121 1e-9", "Grow(2007.5, 100, 2005, 0.1, 12) ~ 121 1e-9",
                 "Grow(2007, 100, {2005;2006}, {0.1;0.5}) ~ 165 1e-9"},
    .see_also = "GrowFromTo,GrowLin,GrowMkt,AGrow,ConGrow",
};
QX_EXPORT(Grow, 5);

constexpr Function GrowFromTo{
    .name = "GrowFromTo",
    .category = category,
    .calls = twin<qx::GrowFromTo>,
    .help = "Value of an amount grown at dated annual rates from one date to another. Growth counts decimal months, "
            "whatever the day count",
    .args = {{"Date1", "Date from which the amount grows"},
             {"Date2", "Date up to which it grows"},
             {"StartingValue", "Value on Date1"},
             growth(),
             optional("GrowthType", 0, "0 exponential: (1 + rate) ^ years; 1 linear: 1 + rate x years", "exponential"),
             RevMonthsOpt(),
             measure()},
    .examples = {"GrowFromTo(2006, 2008, 100, 2005, 0.1) ~ 121 1e-9",
                 "GrowFromTo(2006, 2008, 100, 2005, 0.1, 1) ~ 120 1e-9"},
    .see_also = "Grow,GrowLin",
};
QX_EXPORT(GrowFromTo, 9);

constexpr Function GrowLin{
    .name = "GrowLin",
    .category = category,
    .calls = twin<qx::GrowLin>,
    .help =
        "Value at a date of an amount that grows linearly at dated annual rates: by the same sum each year of a rate",
    .args = {value_date(), StartingValue(), growth(), RevMonthsOpt()},
    .examples = {"GrowLin(2007, 100, 2005, 0.1) ~ 120 1e-9"},
    .see_also = "Grow,GrowFromTo",
};
QX_EXPORT(GrowLin, 5);

constexpr Function GrowMkt{
    .name = "GrowMkt",
    .category = category,
    .calls = twin<qx::GrowMkt>,
    .help = "Value at a date of an amount that is reviewed to a growing market every so many months, less a discount, "
            "and upward-only if asked for. At most 200 reviews are made",
    .args = {value_date(), StartingValue(), growth(),
             optional("RevMos", 0, "Months between reviews, 0 to 1000; with a discount or toggles 0 is read as 1",
                      "continuous")
                 .within(review_months_limits),
             optional("RevDisc", 0.0, "Discount to the market at each review as a fraction, 0 to 1", "none")
                 .within(review_discount_limits),
             UOTog()},
    .examples = {"GrowMkt(2007, 100, 2005, 0.1, 12, 0.1) ~ 108.9 1e-9",
                 "GrowMkt(2007, 100, {2005;2006}, {0.1;-0.1}, 12, 0, 2005) ~ 110 1e-9"},
    .see_also = "Grow,RentGrow",
};
QX_EXPORT(GrowMkt, 7);

constexpr Function GrowQ{
    .name = "GrowQ",
    .category = category,
    .calls = twin<qx::GrowQ>,
    .help = "Value at a date of an amount that grows continuously at dated annual rates. New workbooks use Grow",
    .args = {value_date(), StartingValue(), growth()},
    .examples = {"GrowQ(2007, 100, 2005, 0.1) ~ 121 1e-9"},
    .see_also = "Grow",
};
QX_EXPORT(GrowQ, 4);

constexpr Function Fcst{
    .name = "Fcst",
    .category = category,
    .calls = twin<qx::Fcst>,
    .help = "Value that an even forecast gives for a date: 0 before its start, its last value beyond its end",
    .args = {value_date(), forecast(), FcstSwitchOpt(),
             optional("FcstDef_Pre", 0.0, "Value for dates before the forecast starts", "0"),
             optional("FcstDef_Post", 0.0, "Value for dates beyond the end of the forecast", "its last value")},
    .examples = {"Fcst(2006.5, {10;20;30}, 2005, 12) = 20", "Fcst(2006.5, {10;20;30}, 2005, 12, 1) ~ 25 1e-9",
                 "Fcst(2004, {10;20;30}, 2005, 12, 0, 5) = 5"},
    .see_also = "FcstT,FcstCollar,FcstGrow,SumFcst",
};
QX_EXPORT(Fcst, 7);

constexpr Function FcstCollar{
    .name = "FcstCollar",
    .category = category,
    .calls = twin<qx::FcstCollar>,
    .help = "Value that an even forecast gives for a date, held between a minimum and a maximum",
    .args = {value_date(),
             {"Minimum", "Least value"},
             {"Maximum", "Greatest value; tested before the minimum"},
             forecast(),
             FcstSwitchOpt()},
    .examples = {"FcstCollar(2005, 12, 25, {10;20;30}, 2005, 12) = 12",
                 "FcstCollar(2007, 12, 25, {10;20;30}, 2005, 12) = 25"},
    .see_also = "Fcst,Collar",
};
QX_EXPORT(FcstCollar, 7);

constexpr Function FcstGrow{
    .name = "FcstGrow",
    .category = category,
    .calls = twin<qx::FcstGrow>,
    .help = "Value that an even forecast gives for a date, times the growth up to that date",
    .args = {value_date(), forecast(), growth(), RevMonthsOpt(), FcstSwitchOpt()},
    .examples = {"FcstGrow(2007, {10;20;30}, 2005, 12, 2005, 0.1) ~ 36.3 1e-9"},
    .see_also = "Fcst,Grow",
};
QX_EXPORT(FcstGrow, 8);

constexpr Function SumFcst{
    .name = "SumFcst",
    .category = category,
    .calls = twin<qx::SumFcst>,
    .help = "Amount between two dates of a stream whose annual rates are an even forecast; the last rate continues "
            "beyond its end",
    .args = {{"Date1", "Date from which the stream is summed; the day itself counts"},
             {"Date2", "Date up to which it is summed; the day itself does not count"},
             forecast(),
             measure()},
    .examples = {"SumFcst(2005.5, 2007, {100;200}, 2005, 12) ~ 250 1e-9"},
    .see_also = "Fcst,ConFcstMkt",
};
QX_EXPORT(SumFcst, 7);

constexpr Function FcstT{
    .name = "FcstT",
    .category = category,
    .calls = twin<qx::FcstT>,
    .help =
        "Value that a forecast of dated values gives for a date: that of the last from-date on or before it, 0 before "
        "the first one",
    .args = {value_date(),
             Argument{"FcstFromDates", "Dates from which the values hold, ascending"}.in_ascending_order(),
             {"FcstValues", "Values of the forecast, one for each date"},
             FcstSwitchOpt()},
    .examples = {"FcstT(2006, {2005;2007}, {10;20}) = 10", "FcstT(2006, {2005;2007}, {10;20}, 1) ~ 15 1e-9"},
    .see_also = "TFcstT,Fcst,FLevels",
};
QX_EXPORT(FcstT, 4);

constexpr Function TFcstT{
    .name = "TFcstT",
    .category = category,
    .calls = twin<qx::TFcstT>,
    .help =
        "Value that a forecast of dated values gives for a date: that of the first to-date after it, 0 from the last "
        "one on",
    .args = {value_date(),
             Argument{"FcstToDates", "Dates up to which the values hold, ascending"}.in_ascending_order(),
             {"FcstValues", "Values of the forecast, one for each date"},
             FcstSwitchOpt()},
    .examples = {"TFcstT(2006, {2005;2007}, {10;20}) = 20"},
    .see_also = "FcstT,TLevels",
};
QX_EXPORT(TFcstT, 4);

constexpr Function IdxFromTo{
    .name = "IdxFromTo",
    .category = category,
    .calls = twin<qx::IdxFromTo, 1>,
    .help = "Growth of an index from a base to a date, as a ratio: 1.1 is 10% more. The index is an even forecast",
    .args = {{"BaseDateOrIdx", "Date from which the index counts (a number from 1910 on), or its value at the base"},
             {"TheDate", "Date up to which it counts"},
             forecast("IdxFcstVals", "IdxStartFcst", "IdxFcstBase")},
    .examples = {"IdxFromTo(2005, 2007, {100;105;110}, 2005, 12) ~ 1.1 1e-9",
                 "IdxFromTo(88, 2007, {100;105;110}, 2005, 12) ~ 1.25 1e-9"},
    .see_also = "Fcst,ConIdx,MkPmtsIdx",
};
QX_EXPORT(IdxFromTo, 5);

} // namespace qx::worksheet
