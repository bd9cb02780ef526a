// Worksheet functions of rents that follow an index.
#include "realestate/indexed_rents.h"
#include "addin/declare.h"
#include "addin/present_value_arguments.h"
#include "addin/rent_arguments.h"
#include "realestate/indexed_rent_values.h"

namespace qx::worksheet {

namespace {

constexpr Category category = Category::RealEstate;

constexpr Argument AnnRent() { return {"AnnRent", "Rent a year as at the base date of the index"}; }
constexpr Argument IdxReg_s() {
    return {"IdxReg_s", "Months between indexations, 0 to 1000, 0 for continuous indexation: of the lease, then of "
                        "each relet, of which the last one applies to the rest"};
}
constexpr Argument FirstIdxDate_s() {
    return optional("FirstIdxDate_s", "Dates of the first indexation, of the lease and of each relet; if omitted once "
                                      "both the rent and the index have started");
}
constexpr ArgumentGroup growth_indexation() {
    return {IdxReg_s(),
            {"IdxBaseDate_s", "Dates at which the rents hold, of the lease and of each relet; zero for the start of "
                              "the rent"},
            FirstIdxDate_s()};
}
constexpr ArgumentGroup forecast_indexation() {
    return {IdxReg_s(),
            {"BaseDateOrIdx_s", "Dates of the index at which the rents hold, or levels of it below 1910, of the lease "
                                "and of each relet; zero for the start of the rent"},
            FirstIdxDate_s()};
}
constexpr ArgumentGroup index_growth() { return growth("IdxGrowDates", "IdxGrowRates"); }
constexpr ArgumentGroup index_forecast() { return forecast("IdxFcstVals", "IdxStartFcst", "IdxFcstBase"); }
constexpr ArgumentGroup reviews_of_indexed() {
    return {optional("RevDis", 0.0,
                     "Discount to the market rent at reviews as a fraction, -1 to 1; a negative one makes reviews "
                     "upward-only, unless UOTog is given")
                .within({-1, 1}),
            optional("RevMonths", 0, "Months between reviews to the market, 0 to 1000; 0 for reviews that do not recur",
                     "none")
                .within(review_months_limits)};
}
constexpr ArgumentGroup rent_steps() {
    return {Argument{"ReviewDates", "Dates up to which the rents apply, ascending; after the last one the last rent "
                                    "continues and follows the index"}
                .in_ascending_order(),
            AnnRents()};
}
constexpr ArgumentGroup absolute() {
    return {optional("AbStart", "Date before which no rent counts; with 2048 in ROpts the date on which the rent "
                                "starts; none if omitted"),
            AbFin()};
}
constexpr ArgumentGroup indexed_options() {
    return {ROpts(), Brk(),
            optional("IdxLag_s", "Months by which the index is later than its dates say, for the lease and for each "
                                 "relet")};
}

} // namespace

constexpr Function IdxRentGrowR{
    .name = "IdxRentGrowR",
    .category = category,
    .calls = twin<qx::IdxRentGrowR>,
    .help = "Rent in a period of a lease whose rent follows a growing index, and of the relets after it",
    .args = {time_period(), lease(), MktRent_s(), AnnRent(), growth(), index_growth(), growth_indexation(), relets(),
             basis(), AbFin(), indexed_options()},
    .examples = {"IdxRentGrowR(2007, 12, 2005, 2010, 1000, 900, 2005, 0, 2005, 0.1, 12, 2005, 2005) ~ 1089 1e-9"},
    .see_also = "IdxRentFcstR,IdxRentGrowMktR,TStepIdxRentGrowR,RentGrowR",
};
QX_EXPORT(IdxRentGrowR, 23);

constexpr Function IdxRentFcstR{
    .name = "IdxRentFcstR",
    .category = category,
    .calls = twin<qx::IdxRentFcstR>,
    .help = "Rent in a period of a lease whose rent follows the forecast of an index, and of the relets after it",
    .args = {time_period(), lease(), AnnRent(), rent_forecast(), index_forecast(), forecast_indexation(), relets(),
             basis(), AbFin(), indexed_options()},
    .examples = {"IdxRentFcstR(2007, 12, 2005, 2010, 900, 1000, 2005, 12, {100;110;121}, 2005, 12, 12, 2005, 2005) ~ "
                 "1089 1e-9"},
    .see_also = "IdxRentGrowR,IdxRentFcstMktR,TStepIdxRentFcstR,RentFcstR,ConIdx",
};
QX_EXPORT(IdxRentFcstR, 24);

constexpr Function IdxRentGrowMktR{
    .name = "IdxRentGrowMktR",
    .category = category,
    .calls = twin<qx::IdxRentGrowMktR>,
    .help = "Rent in a period of a lease that is reviewed to a market rent that grows and follows a growing index "
            "between reviews, and of the relets after it",
    .args = {time_period(), lease(), FirstRev(), MktRent_s(), AnnRent(), growth(), index_growth(), growth_indexation(),
             reviews_of_indexed(), relets(), basis(), AbFin(), UOTog(), indexed_options()},
    .examples = {"IdxRentGrowMktR(2011, 12, 2005, 2020, 2010, 2000, 900, 2005, 0, 2005, 0.1, 12, 2005, 2005, 0, 60) ~ "
                 "2200 1e-9",
                 "IdxRentGrowMktR(2007, 12, 2005, 2020, 2010, 2000, 900, 2005, 0, 2005, 0.1, 12, 2005, 2005, 0, 60) ~ "
                 "1089 1e-9"},
    .see_also = "IdxRentFcstMktR,IdxRentGrowR,TStepIdxRentGrowR,RentGrowR",
};
QX_EXPORT(IdxRentGrowMktR, 27);

constexpr Function IdxRentFcstMktR{
    .name = "IdxRentFcstMktR",
    .category = category,
    .calls = twin<qx::IdxRentFcstMktR>,
    .help = "Rent in a period of a lease that is reviewed to a forecast of the market rent and follows the forecast of "
            "an index between reviews, and of the relets after it",
    .args = {time_period(), lease(), FirstRev(), AnnRent(), rent_forecast(), index_forecast(), forecast_indexation(),
             reviews_of_indexed(), relets(), basis(), AbFin(), UOTog(), indexed_options()},
    .examples = {"IdxRentFcstMktR(2008, 12, 2005, 2020, 2007, 900, 2000, 2005, 12, {100;110;120;150}, 2005, 12, 12, "
                 "2005, 2005, 0, 60) ~ 2500 1e-9"},
    .see_also = "IdxRentGrowMktR,IdxRentFcstR,TStepIdxRentFcstR,RentFcstR",
};
QX_EXPORT(IdxRentFcstMktR, 28);

constexpr Function TStepIdxRentGrowR{
    .name = "TStepIdxRentGrowR",
    .category = category,
    .calls = twin<qx::TStepIdxRentGrowR>,
    .help = "Rent in a period of a lease with rents up to given dates, of which the last one then follows a growing "
            "index, and of the relets after it",
    .args = {time_period(), lease(), MktRent_s(), rent_steps(), growth(), index_growth(), growth_indexation(), relets(),
             basis(), absolute(), indexed_options()},
    .examples = {"TStepIdxRentGrowR(2009, 36, 2005, 2020, 0, 2010, 900, 2005, 0, 2005, 0.1, 12, 0) ~ 2790 1e-9",
                 "TStepIdxRentGrowR(2009, 12, 2005, 2020, 0, {2006;2010}, {800;900}, 2005, 0, 2005, 0.1, 12, 0, 0, 0, "
                 "0, 0, , , , , , 1024) ~ 990 1e-9"},
    .see_also = "TStepIdxRentFcstR,IdxRentGrowR,IdxRentGrowMktR,TStepRentGrowR",
};
QX_EXPORT(TStepIdxRentGrowR, 25);

constexpr Function TStepIdxRentFcstR{
    .name = "TStepIdxRentFcstR",
    .category = category,
    .calls = twin<qx::TStepIdxRentFcstR>,
    .help = "Rent in a period of a lease with rents up to given dates, of which the last one then follows the forecast "
            "of an index, and of the relets after it",
    .args = {time_period(), lease(), rent_steps(), rent_forecast(), index_forecast(), forecast_indexation(), relets(),
             basis(), absolute(), indexed_options()},
    .examples =
        {"TStepIdxRentFcstR(2006, 24, 2005, 2020, 2007, 900, 0, 2005, 12, {100;110;120;150}, 2005, 12, 12, 0) ~ "
         "1800 1e-9"},
    .see_also = "TStepIdxRentGrowR,IdxRentFcstR,IdxRentFcstMktR,TStepRentFcstR",
};
QX_EXPORT(TStepIdxRentFcstR, 26);

// --- Present values --------------------------------------------------------------------------------------------------

constexpr Function PVTStepIdxRentGrowR{
    .name = "PVTStepIdxRentGrowR",
    .category = category,
    .calls = core<qx::PVTStepIdxRentGrowR>,
    .help = "Present value of TStepIdxRentGrowR, as paid on the dates of CashBasis up to Finish",
    .args = {discount(), lease(), MktRent_s(), rent_steps(), growth(), index_growth(), growth_indexation(), relets(),
             cash_terms(), absolute(), indexed_options(),
             optional("Finish", "Date up to which payments are valued; AbFin if omitted, and without it the end of a "
                                "hundred relets")},
    .examples = {"PVTStepIdxRentGrowR(2005, 0.1, 2005, 2008, 0, 2006, 900, 2005, 0, 2005, 0.1, 12, 2005, 0, 0, 0, 0, , "
                 "1, , , , , , 2008) ~ 2700 1e-9"},
    .see_also = "TStepIdxRentGrowR,PVTStepIdxRentFcstR",
};
QX_EXPORT(PVTStepIdxRentGrowR, 29);

constexpr Function PVTStepIdxRentFcstR{
    .name = "PVTStepIdxRentFcstR",
    .category = category,
    .calls = core<qx::PVTStepIdxRentFcstR>,
    .help = "Present value of TStepIdxRentFcstR, as paid on the dates of CashBasis up to AbFin, or without it to the "
            "end of a hundred relets",
    .args = {discount(), lease(), rent_steps(), rent_forecast(), index_forecast(), forecast_indexation(), relets(),
             cash_terms(), absolute(), indexed_options()},
    .examples = {"PVTStepIdxRentFcstR(2005, 0, 2005, 2008, 2006, 900, 0, 2005, 12, {100;110;121}, 2005, 12, 12, 2005, "
                 "0, 0, 0, 0, , 1, , , , , , 2008) ~ 2979 1e-9"},
    .see_also = "TStepIdxRentFcstR,PVTStepIdxRentGrowR",
};
QX_EXPORT(PVTStepIdxRentFcstR, 29);

} // namespace qx::worksheet
