// Switches in words.
#include "projections/descriptions.h"
#include "addin/argument_values.h"
#include "addin/declare.h"
#include "calendar/date_functions.h"

namespace qx::worksheet {

namespace {

constexpr Category category = Category::Miscellaneous;

} // namespace

constexpr Function ArgValues{
    .name = "ArgValues",
    .category = category,
    .calls = core<qx::ArgValues>,
    .help = "The values that a switch argument can take, as a list to choose from",
    .args = {{"ArgName", "The name of the argument, such as DayCount, Periods, ProjMode or LookupSwitch"}},
    .examples = {"ArgValues(\"ProjMode\") = {\"0:Accruals\",\"1:Cash\",\"2:Accruals(inc last day)\",\"3:Cash(inc last "
                 "day)\"}"},
    .see_also = "DescribeDayCount,DescribePeriods,DescribeLookup",
};
QX_EXPORT(ArgValues, 1);

constexpr Function DescribeLevelSwitch{
    .name = "DescribeLevelSwitch",
    .category = category,
    .calls = core<qx::DescribeLevelSwitch>,
    .help = "The LevelSwitchOpt of the level projections in words",
    .args = {Argument{"LevelSwitchOpt", "0 to 5"}.of(level_values)},
    .examples = {"DescribeLevelSwitch(2) = \"Level as at start of time period\""},
    .see_also = "ALevel,FALevels,TALevels",
};
QX_EXPORT(DescribeLevelSwitch, 1);

constexpr Function DescribeRounding{
    .name = "DescribeRounding",
    .category = category,
    .calls = core<qx::DescribeRounding>,
    .help = "The rounding of a date to a payment or accrual date in words",
    .args = {Argument{"Round", "0 to the nearest, 1 down, 2 up, 3 or more not at all"}.of(date_rounding_values)},
    .examples = {"DescribeRounding(2) = \"Rounded UP to the NEXT payment/accrual date\""},
    .see_also = "DateRound",
};
QX_EXPORT(DescribeRounding, 1);

constexpr Function DescribeShape{
    .name = "DescribeShape",
    .category = category,
    .calls = core<qx::DescribeShape>,
    .help = "The shape of a general spread in words",
    .args = {{"Shape", "The whole part is the skew from -100 to 100, two decimals are the peakedness, as in GSpread"}},
    .examples = {"DescribeShape(0.5) = \"Symmetric Moderately peaked (degree 50)\"",
                 "DescribeShape(-100) = \"All at start \""},
    .see_also = "GSpread",
};
QX_EXPORT(DescribeShape, 1);

} // namespace qx::worksheet
