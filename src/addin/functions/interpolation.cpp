// Worksheet functions of curves: through tables of points, and of levels and rates over time.
#include "numerics/interpolation.h"
#include "addin/declare.h"
#include "numerics/lookup.h"
#include "projections/curve_projections.h"

namespace qx::worksheet {

namespace {

constexpr Category tables = Category::RangeOperations;
constexpr Category projections = Category::InterpolatedAndCurveFitted;

constexpr Argument InputRange{"InputRange", "The places of the points, in rising or falling order"};
constexpr Argument InputDateRange{"InputDateRange", "The dates of the points, in rising or falling order"};
constexpr Argument OutputRange{"OutputRange", "The value at each point"};
constexpr Argument InputValue{"InputValue", "The point at which to read the value"};
constexpr Argument OnErrorN = optional("OnErrorN", no_fallback, "Result outside the table; an error if omitted");
constexpr Argument InterpType =
    optional("InterpType", by_line, "0 step, 1 straight line, 2 cosine, 3 cubic, 4 exponential")
        .of(interpolation_values);
constexpr Argument Tension =
    optional("Tension", 0.0, "For the cubic: above 0 draws the curve tighter, up to 1; below 0 looser, down to -1");
constexpr Argument Bias =
    optional("Bias", 0.0,
             "For the cubic: above 0 leans on the slope before a point, up to 1; below 0 on the one after, down to -1");

constexpr Argument Start{"Start", "The date on which it starts"};
constexpr Argument Finish{"Finish", "The date on which it has finished"};
constexpr Argument Degree = optional("Degree", 1, "Degree of the polynomial, 0 to 10: 1 a straight trend, 2 one bend");

} // namespace

constexpr Function Interp{
    .name = "Interp",
    .category = tables,
    .calls = core<qx::Interp>,
    .help = "The value on the straight line between two neighbouring points of a table",
    .args = {InputRange, OutputRange, InputValue, OnErrorN},
    .examples = {"Interp({1;2;5}, {10;20;50}, 4) = 40", "Interp({1;2;5}, {10;20;50}, 6) ! #NUM! errliblookupfailed",
                 "Interp({1;2;5}, {10;20;50}, 6, 0) = 0"},
    .see_also = "InterpCollar,InterpExtrap,Interpolate,LookupNum",
};
QX_EXPORT(Interp, 4);

constexpr Function InterpCollar{
    .name = "InterpCollar",
    .category = tables,
    .calls = core<qx::InterpCollar>,
    .help =
        "The value on the straight line between two neighbouring points of a table; outside it that of the nearer end",
    .args = {InputRange, OutputRange, InputValue},
    .examples = {"InterpCollar({1;2;5}, {10;20;50}, 6) = 50"},
    .see_also = "Interp,InterpExtrap,Interpolate",
};
QX_EXPORT(InterpCollar, 3);

constexpr Function InterpDate{
    .name = "InterpDate",
    .category = tables,
    .calls = core<qx::InterpDate>,
    .help = "The value at a date on the straight line, by days, between two neighbouring points of a table",
    .args = {InputDateRange, OutputRange, TheDate(), OnErrorN},
    .examples = {"InterpDate({38000;38010}, {10;20}, 38004) = 14"},
    .see_also = "InterpDateCollar,InterpDateExtrap,InterpolateDate,Interp",
};
QX_EXPORT(InterpDate, 4);

constexpr Function InterpDateCollar{
    .name = "InterpDateCollar",
    .category = tables,
    .calls = core<qx::InterpDateCollar>,
    .help = "The value at a date on the straight line, by days, between two neighbouring points of a table; outside it "
            "that of the nearer end",
    .args = {InputDateRange, OutputRange, TheDate()},
    .examples = {"InterpDateCollar({38000;38010}, {10;20}, 38020) = 20"},
    .see_also = "InterpDate,InterpDateExtrap,InterpolateDate",
};
QX_EXPORT(InterpDateCollar, 3);

constexpr Function InterpDateExtrap{
    .name = "InterpDateExtrap",
    .category = tables,
    .calls = core<qx::InterpDateExtrap>,
    .help = "The value at a date on the straight line, by days, between two neighbouring points of a table; outside it "
            "the nearest line is extended",
    .args = {InputDateRange, OutputRange, TheDate()},
    .examples = {"InterpDateExtrap({38000;38010}, {10;20}, 38020) = 30"},
    .see_also = "InterpDate,InterpDateCollar,InterpolateDate",
};
QX_EXPORT(InterpDateExtrap, 3);

constexpr Function InterpExtrap{
    .name = "InterpExtrap",
    .category = tables,
    .calls = core<qx::InterpExtrap>,
    .help = "The value on the straight line between two neighbouring points of a table; outside it the nearest "
            "line is extended",
    .args = {InputRange, OutputRange, InputValue},
    .examples = {"InterpExtrap({1;2;5}, {10;20;50}, 6) = 60"},
    .see_also = "Interp,InterpCollar,Interpolate",
};
QX_EXPORT(InterpExtrap, 3);

constexpr Function Interpolate{
    .name = "Interpolate",
    .category = tables,
    .calls = core<qx::Interpolate>,
    .help = "The value on a curve through the points of a table: step, straight line, cosine, cubic or exponential",
    .args = {InputRange, OutputRange, InputValue, InterpType,
             optional("XMin", no_XMin, "A lower InputValue is read as this"),
             optional("XMax", no_XMax, "A higher InputValue is read as this"), Tension, Bias},
    .examples = {"Interpolate({0;10}, {100;200}, 2.5, 2) ~ 114.6446609 1e-8",
                 "Interpolate({0;1;2;3}, {0;1;8;27}, 1.5, 3) = 3.375",
                 "Interpolate({0;10}, {100;200}, 5, 4) ~ 141.4213562 1e-7"},
    .see_also = "Interp,InterpolateDate,LookupNum",
};
QX_EXPORT(Interpolate, 8);

constexpr Function InterpolateDate{
    .name = "InterpolateDate",
    .category = tables,
    .calls = core<qx::InterpolateDate>,
    .help = "The value at a date on a curve through the points of a table: step, straight line, cosine, cubic or "
            "exponential, by days",
    .args = {InputDateRange, OutputRange, TheDate(), InterpType,
             optional("DateMin", "An earlier date is read as this; no limit if omitted"),
             optional("DateMax", "A later date is read as this; no limit if omitted"), Tension, Bias},
    .examples = {"InterpolateDate({38000;38010}, {100;200}, 38005, 4) ~ 141.4213562 1e-7"},
    .see_also = "Interpolate,InterpDate,InterpedLevel",
};
QX_EXPORT(InterpolateDate, 8);

constexpr Function FittedLevel{
    .name = "FittedLevel",
    .category = projections,
    .calls = twin<qx::FittedLevel>,
    .help = "The level at a date on the polynomial that fits dated levels best; zero outside Start and Finish",
    .args = {TheDate(),
             Start,
             Finish,
             {"LevelDates", "Dates of the levels known"},
             {"Levels", "The level at each date"},
             Degree},
    .examples = {"FittedLevel(2006, 2000, 2010, {2001;2002;2003}, {10;20;30}) ~ 60 1e-9"},
    .see_also = "InterpedLevel,FittedRate,PolyReg",
};
QX_EXPORT(FittedLevel, 6);

constexpr Function FittedRate{
    .name = "FittedRate",
    .category = projections,
    .calls = twin<qx::FittedRate>,
    .help =
        "The amount in a time period of an annual rate that follows the polynomial that fits dated annual rates best",
    .args = {Time(),
             Base(),
             Start,
             Finish,
             {"RateDates", "Dates of the annual rates known"},
             {"AnnualRates", "The annual rate at each date"},
             Degree,
             DayCount(0.0),
             Periods(),
             ProjMode()},
    .examples = {"FittedRate(2005, 12, 2000, 2010, {2001;2002;2003}, {10;20;30}) ~ 55 1e-9"},
    .see_also = "FittedLevel,Ramp,PolyReg",
};
QX_EXPORT(FittedRate, 10);

constexpr Function InterpedLevel{
    .name = "InterpedLevel",
    .category = projections,
    .calls = twin<qx::InterpedLevel>,
    .help =
        "The level at a date on a curve through dated levels: zero before the first date and from Finish on, the last "
        "level from the last date",
    .args = {TheDate(),
             Finish,
             {"FromDates", "Dates of the levels, ascending"},
             {"Levels", "The level at each date"},
             InterpType,
             Tension,
             Bias},
    .examples = {"InterpedLevel(38004, 2010, {38000;38010}, {10;20}) = 14",
                 "InterpedLevel({37999;38004;38020;40179}, 2010, {38000;38010}, {10;20}) = {0,14,20,0}"},
    .see_also = "FLevels,FittedLevel,InterpolateDate",
};
QX_EXPORT(InterpedLevel, 7);

constexpr Function Ramp{
    .name = "Ramp",
    .category = projections,
    .calls = twin<qx::Ramp>,
    .help = "The amount in a time period of an annual rate that runs in a straight line from StartRate at Start to "
            "FinishRate at Finish",
    .args = {Time(),
             Base(),
             Start,
             Finish,
             {"StartRate", "Annual rate at Start"},
             {"FinishRate", "Annual rate at Finish"},
             DayCount(0.0),
             Periods(),
             ProjMode()},
    .examples = {"Ramp(2000, 12, 2000, 2004, 0, 100) ~ 12.5 1e-9",
                 "Ramp({2000;2001;2002;2003}, , 2000, 2004, 0, 100) ~ {12.5,37.5,62.5,87.5} 1e-9"},
    .see_also = "Con,FittedRate",
};
QX_EXPORT(Ramp, 9);

} // namespace qx::worksheet
