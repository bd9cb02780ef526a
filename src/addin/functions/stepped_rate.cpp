// Worksheet functions of streams whose rate changes at given dates.
#include "projections/stepped_rate.h"
#include "addin/declare.h"

namespace qx::worksheet {

namespace {

constexpr Category category = Category::SteppedRate;

} // namespace

constexpr Function FStep{
    .name = "FStep",
    .category = category,
    .calls = twin<qx::Step<FromSteps>>,
    .help = "Amount in a period of a stream whose annual rate changes on from-dates",
    .args = {time_period(), from_steps(), AnnualRates(), basis()},
    .examples = {"FStep(2005, 12, 2010, {2004;2005.5}, {1000;1200}) ~ 1100 1e-9"},
    .see_also = "TStep,Con",
};
QX_EXPORT(FStep, 8);

constexpr Function TStep{
    .name = "TStep",
    .category = category,
    .calls = twin<qx::Step<ToSteps>>,
    .help = "Amount in a period of a stream whose annual rate changes on to-dates",
    .args = {time_period(), to_steps(), AnnualRates(), basis()},
    .examples = {"TStep(2005, 12, 2004, {2005.5;2010}, {1000;1200}) ~ 1100 1e-9"},
    .see_also = "FStep,Con",
};
QX_EXPORT(TStep, 8);

} // namespace qx::worksheet
