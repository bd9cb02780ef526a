// Worksheet functions of streams that run at so much a year.
#include "projections/constant_rate.h"
#include "addin/declare.h"

namespace qx::worksheet {

namespace {

constexpr Category category = Category::ConstantRate;

} // namespace

constexpr Function Con{
    .name = "Con",
    .category = category,
    .calls = twin<qx::Con>,
    .help = "Amount in a period of a stream that runs at a constant rate a year between two dates, or the sum of "
            "several streams",
    .args = {time_period(), streams(), basis()},
    .examples = {"Con(2005, 12, 2005, 2010, 1200) ~ 1200 1e-9", "Con(2005.5, 3, 2005, 2010, 1200) ~ 300 1e-9",
                 "Con(2005, 12, {2005;2005.5}, 2010, {1200;600}) ~ 1500 1e-9"},
    .see_also = "ConGrow,FStep,TStep",
};
QX_EXPORT(Con, 8);

} // namespace qx::worksheet
