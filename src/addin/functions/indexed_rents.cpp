// Worksheet functions of rents that follow an index.
#include "realestate/indexed_rents.h"
#include "addin/declare.h"
#include "addin/rent_arguments.h"

namespace qx::worksheet {

namespace {

constexpr Category category = Category::RealEstate;

constexpr Argument AnnRent() { return {"AnnRent", "Rent a year as at the base date of the index"}; }
constexpr Argument IdxReg_s() {
    return {"IdxReg_s",
            "Months between indexations, 0 to 1000, 0 for indexation at every moment: of the lease, then of "
            "each relet, of which the last one serves for the rest"};
}
constexpr Argument FirstIdxDate_s() {
    return optional("FirstIdxDate_s", "Dates of the first indexation, of the lease and of each relet; if omitted once "
                                      "both the rent and the index have started");
}
constexpr Argument IdxLag_s() {
    return optional("IdxLag_s", "Months by which the index is later than its dates say, for the lease and for each "
                                "relet");
}

} // namespace

constexpr Function IdxRentGrowR{
    .name = "IdxRentGrowR",
    .category = category,
    .calls = twin<qx::IdxRentGrowR>,
    .help = "Rent in a period of a lease whose rent follows a growing index, and of the relets after it",
    .args = {time_period(),
             RentStart(),
             BrksOrExp(),
             MktRent_s(),
             AnnRent(),
             growth(),
             growth("IdxGrowDates", "IdxGrowRates"),
             IdxReg_s(),
             {"IdxBaseDate_s", "Dates at which the rents hold, of the lease and of each relet; zero for the start of "
                               "the rent"},
             FirstIdxDate_s(),
             relets(),
             basis(),
             AbFin(),
             ROpts(),
             Brk(),
             IdxLag_s()},
    .examples = {"IdxRentGrowR(2007, 12, 2005, 2010, 1000, 900, 2005, 0, 2005, 0.1, 12, 2005, 2005) ~ 1089 1e-9"},
    .see_also = "IdxRentFcstR,RentGrowR,ConGrowMkt",
};
QX_EXPORT(IdxRentGrowR, 23);

constexpr Function IdxRentFcstR{
    .name = "IdxRentFcstR",
    .category = category,
    .calls = twin<qx::IdxRentFcstR>,
    .help = "Rent in a period of a lease whose rent follows the forecast of an index, and of the relets after it",
    .args = {time_period(),
             RentStart(),
             BrksOrExp(),
             AnnRent(),
             rent_forecast(),
             forecast("IdxFcstVals", "IdxStartFcst", "IdxFcstBase"),
             IdxReg_s(),
             {"BaseDateOrIdx_s", "Dates of the index at which the rents hold, or levels of it below 1910, of the lease "
                                 "and of each relet; zero for the start of the rent"},
             FirstIdxDate_s(),
             relets(),
             basis(),
             AbFin(),
             ROpts(),
             Brk(),
             IdxLag_s()},
    .examples = {"IdxRentFcstR(2007, 12, 2005, 2010, 900, 1000, 2005, 12, {100;110;121}, 2005, 12, 12, 2005, 2005) ~ "
                 "1089 1e-9"},
    .see_also = "IdxRentGrowR,RentFcstR,ConIdx",
};
QX_EXPORT(IdxRentFcstR, 24);

} // namespace qx::worksheet
