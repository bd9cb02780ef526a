// Worksheet functions of the rent of a lease and of its relets.
#include "realestate/rents.h"
#include "addin/declare.h"
#include "addin/rent_arguments.h"

namespace qx::worksheet {

namespace {

constexpr Category category = Category::RealEstate;
constexpr Argument AbsStart() { return {"AbsStart", "Date before which no rent counts; zero for none"}; }
constexpr Argument AbsFinish() { return {"AbsFinish", "Date from which no rent counts; zero for none"}; }

} // namespace

// --- Reviews to the market -------------------------------------------------------------------------------------------

constexpr Function RentGrow{
    .name = "RentGrow",
    .category = category,
    .calls = twin<qx::RentGrow>,
    .help = "Rent in a period of a lease with regular reviews to a market rent that grows",
    .args = {time_period(), lease(), FirstRev(), MktRent(), InitRent(), growth(), reviewed_lease()},
    .examples = {"RentGrow(2010, 12, 2005, 2020, 2010, 1000, 900, 2005, 0.1, 60) ~ 1610.51 1e-9",
                 "RentGrow(2009, 12, 2005, 2020, 2010, 1000, 900, 2005, 0.1, 60) ~ 900 1e-9"},
    .see_also = "RentFcst,RentGrowR,TStepRentGrow,FStepRentGrow",
};
QX_EXPORT(RentGrow, 16);

constexpr Function RentFcst{
    .name = "RentFcst",
    .category = category,
    .calls = twin<qx::RentFcst>,
    .help = "Rent in a period of a lease with regular reviews to a forecast of the market rent",
    .args = {time_period(), lease(), FirstRev(), InitRent(), rent_forecast(), reviewed_lease()},
    .examples = {"RentFcst(2010, 12, 2005, 2020, 2010, 900, {1000;1200;1500}, 2005, 60, 60) ~ 1200 1e-9"},
    .see_also = "RentGrow,RentFcstR,TStepRentFcst,FStepRentFcst",
};
QX_EXPORT(RentFcst, 16);

// --- Lists of rents --------------------------------------------------------------------------------------------------

constexpr Function TStepRent{
    .name = "TStepRent",
    .category = category,
    .calls = twin<qx::TStepRent>,
    .help = "Rent in a period of a lease whose rents are given, each up to a date",
    .args = {time_period(), RentStart(), rents_to_dates(), basis()},
    .examples = {"TStepRent(2009, 24, 2005, {2010;2015}, {1000;1200}) ~ 2200 1e-9"},
    .see_also = "TStepRentGrow,FStepRent,TStep",
};
QX_EXPORT(TStepRent, 8);

constexpr Function FStepRent{
    .name = "FStepRent",
    .category = category,
    .calls = twin<qx::FStepRent>,
    .help = "Rent in a period of a lease whose rents are given, each from a date on",
    .args = {time_period(), BrksOrExp(), rents_from_dates(), basis(), Brk()},
    .examples = {"FStepRent(2009, 24, 2015, {2005;2010}, {1000;1200}) ~ 2200 1e-9"},
    .see_also = "FStepRentGrow,TStepRent,FStep",
};
QX_EXPORT(FStepRent, 9);

constexpr Function TStepRentGrow{
    .name = "TStepRentGrow",
    .category = category,
    .calls = twin<qx::TStepRentGrow>,
    .help = "Rent in a period of a lease with rents up to given dates, then regular reviews to a market rent that "
            "grows",
    .args = {time_period(), lease(), MktRent(), rents_to_dates(), growth(), reviewed_lease()},
    .examples = {"TStepRentGrow(2009, 24, 2005, 2020, 1000, 2010, 900, 2005, 0.1, 60) ~ 2510.51 1e-9"},
    .see_also = "TStepRentFcst,TStepRentGrowCollar,TStepRentGrowR,FStepRentGrow,RentGrow",
};
QX_EXPORT(TStepRentGrow, 16);

constexpr Function TStepRentFcst{
    .name = "TStepRentFcst",
    .category = category,
    .calls = twin<qx::TStepRentFcst>,
    .help = "Rent in a period of a lease with rents up to given dates, then regular reviews to a forecast of the "
            "market rent",
    .args = {time_period(), lease(), rents_to_dates(), rent_forecast(), reviewed_lease()},
    .examples = {"TStepRentFcst(2009, 24, 2005, 2020, 2010, 900, {1000;1200;1500}, 2005, 60, 60) ~ 2100 1e-9"},
    .see_also = "TStepRentGrow,TStepRentFcstCollar,TStepRentFcstR,FStepRentFcst,RentFcst",
};
QX_EXPORT(TStepRentFcst, 16);

constexpr Function TStepRentGrowCollar{
    .name = "TStepRentGrowCollar",
    .category = category,
    .calls = twin<qx::TStepRentGrowCollar>,
    .help = "TStepRentGrow with a cap and a floor for the rent at each review in the list",
    .args = {time_period(), lease(), MktRent(), rents_to_dates(), growth(), collars(), reviewed_lease()},
    .examples = {"TStepRentGrowCollar(2010, 12, 2005, 2020, 1000, {2010;2015}, {900;0}, 2005, 0.1, 1500, 0, 60) ~ 1500 "
                 "1e-9"},
    .see_also = "TStepRentGrow,TStepRentFcstCollar,Collar",
};
QX_EXPORT(TStepRentGrowCollar, 18);

constexpr Function TStepRentFcstCollar{
    .name = "TStepRentFcstCollar",
    .category = category,
    .calls = twin<qx::TStepRentFcstCollar>,
    .help = "TStepRentFcst with a cap and a floor for the rent at each review in the list",
    .args = {time_period(), lease(), rents_to_dates(), rent_forecast(), collars(), reviewed_lease()},
    .examples = {"TStepRentFcstCollar(2010, 12, 2005, 2020, {2010;2015}, {900;0}, {1000;1200;1500}, 2005, 60, 0, 1300, "
                 "60) ~ 1300 1e-9"},
    .see_also = "TStepRentFcst,TStepRentGrowCollar,FStepRentFcstCollar,Collar",
};
QX_EXPORT(TStepRentFcstCollar, 18);

constexpr Function FStepRentGrow{
    .name = "FStepRentGrow",
    .category = category,
    .calls = twin<qx::FStepRentGrow>,
    .help = "Rent in a period of a lease with rents from given dates on, then regular reviews to a market rent that "
            "grows",
    .args = {time_period(), BrksOrExp(), MktRent(), rents_from_dates(), growth(), RevToMkt(), reviewed_lease()},
    .examples = {"FStepRentGrow(2009, 24, 2020, 1000, 2005, 900, 2005, 0.1, 2010, 60) ~ 2510.51 1e-9",
                 "FStepRentGrow(2009, 24, 2020, 1000, 2005, 900, 2005, 0.1) ~ 1800 1e-9"},
    .see_also = "FStepRentFcst,FStepRentGrowR,TStepRentGrow,RentGrow",
};
QX_EXPORT(FStepRentGrow, 16);

constexpr Function FStepRentFcst{
    .name = "FStepRentFcst",
    .category = category,
    .calls = twin<qx::FStepRentFcst>,
    .help = "Rent in a period of a lease with rents from given dates on, then regular reviews to a forecast of the "
            "market rent",
    .args = {time_period(), BrksOrExp(), rents_from_dates(), rent_forecast(), RevToMkt(), reviewed_lease()},
    .examples = {"FStepRentFcst(2009, 24, 2020, 2005, 900, {1000;1200;1500}, 2005, 60, 2010, 60) ~ 2100 1e-9"},
    .see_also = "FStepRentGrow,FStepRentFcstCollar,FStepRentFcstR,TStepRentFcst,RentFcst",
};
QX_EXPORT(FStepRentFcst, 16);

constexpr Function FStepRentFcstCollar{
    .name = "FStepRentFcstCollar",
    .category = category,
    .calls = twin<qx::FStepRentFcstCollar>,
    .help = "FStepRentFcst with a cap and a floor for the rent at each review in the list",
    .args = {time_period(), BrksOrExp(), rents_from_dates(), rent_forecast(), collars(), RevToMkt(), reviewed_lease()},
    .examples = {"FStepRentFcstCollar(2010, 12, 2020, {2005;2010}, {900;0}, {1000;1200;1500}, 2005, 60, 0, 1300, 2015, "
                 "60) ~ 1300 1e-9"},
    .see_also = "FStepRentFcst,TStepRentFcstCollar,Collar",
};
QX_EXPORT(FStepRentFcstCollar, 18);

// --- Relets ----------------------------------------------------------------------------------------------------------

constexpr Function RentGrowR{
    .name = "RentGrowR",
    .category = category,
    .calls = twin<qx::RentGrowR>,
    .help = "Rent in a period of a lease with regular reviews to a market rent that grows, and of the relets after it",
    .args = {time_period(), lease(), FirstRev(), MktRent_s(), InitRent(), growth(), reviewed_chain(), chain_options()},
    .examples = {"RentGrowR(2010, 12, 2005, 2010, 0, {1000;2000}, 900, 2005, 0, 60, 0, 6, 3, 5) ~ 500 1e-9"},
    .see_also = "RentGrow,RentFcstR,TStepRentGrowR,FStepRentGrowR",
};
QX_EXPORT(RentGrowR, 21);

constexpr Function RentFcstR{
    .name = "RentFcstR",
    .category = category,
    .calls = twin<qx::RentFcstR>,
    .help =
        "Rent in a period of a lease with regular reviews to a forecast of the market rent, and of the relets after "
        "it",
    .args = {time_period(), lease(), FirstRev(), InitRent(), rent_forecast(), reviewed_chain(), chain_options()},
    .examples = {"RentFcstR(2010, 12, 2005, 2010, 0, 900, {1000;1200;1500}, 2005, 60, 60, 0, 6, 0, 5) ~ 600 1e-9"},
    .see_also = "RentFcst,RentGrowR,TStepRentFcstR,FStepRentFcstR",
};
QX_EXPORT(RentFcstR, 21);

constexpr Function TStepRentGrowR{
    .name = "TStepRentGrowR",
    .category = category,
    .calls = twin<qx::TStepRentGrowR>,
    .help = "TStepRentGrow, and the rent of the relets after it",
    .args = {time_period(), lease(), MktRent_s(), rents_to_dates(), growth(), reviewed_chain(), chain_options()},
    .examples = {"TStepRentGrowR(2009, 24, 2005, 2010, {1000;2000}, 2010, 900, 2005, 0, 60, 0, 6, 3, 5) ~ 1400 1e-9"},
    .see_also = "TStepRentGrow,TStepRentFcstR,TStepRentGrowSFR,FStepRentGrowR,RentGrowR",
};
QX_EXPORT(TStepRentGrowR, 21);

constexpr Function TStepRentFcstR{
    .name = "TStepRentFcstR",
    .category = category,
    .calls = twin<qx::TStepRentFcstR>,
    .help = "TStepRentFcst, and the rent of the relets after it",
    .args = {time_period(), lease(), rents_to_dates(), rent_forecast(), reviewed_chain(), chain_options()},
    .examples = {"TStepRentFcstR(2009, 24, 2005, 2010, 2010, 900, {1000;1200;1500}, 2005, 60, 60, 0, 6, 0, 5) ~ 1500 "
                 "1e-9"},
    .see_also = "TStepRentFcst,TStepRentGrowR,TStepRentFcstSFR,FStepRentFcstR,RentFcstR",
};
QX_EXPORT(TStepRentFcstR, 21);

constexpr Function FStepRentGrowR{
    .name = "FStepRentGrowR",
    .category = category,
    .calls = twin<qx::FStepRentGrowR>,
    .help = "FStepRentGrow, and the rent of the relets after it",
    .args = {time_period(), BrksOrExp(), MktRent_s(), rents_from_dates(), growth(), RevToMkt(), reviewed_chain(),
             chain_options()},
    .examples = {"FStepRentGrowR(2009, 24, 2010, {1000;2000}, 2005, 900, 2005, 0, 0, 60, 0, 6, 3, 5) ~ 1400 1e-9"},
    .see_also = "FStepRentGrow,FStepRentFcstR,FStepRentGrowSFR,TStepRentGrowR,RentGrowR",
};
QX_EXPORT(FStepRentGrowR, 21);

constexpr Function FStepRentFcstR{
    .name = "FStepRentFcstR",
    .category = category,
    .calls = twin<qx::FStepRentFcstR>,
    .help = "FStepRentFcst, and the rent of the relets after it",
    .args = {time_period(), BrksOrExp(), rents_from_dates(), rent_forecast(), RevToMkt(), reviewed_chain(),
             chain_options()},
    .examples =
        {"FStepRentFcstR(2009, 24, 2010, 2005, 900, {1000;1200;1500}, 2005, 60, 0, 60, 0, 6, 0, 5) ~ 1500 1e-9"},
    .see_also = "FStepRentFcst,FStepRentGrowR,FStepRentFcstSFR,TStepRentFcstR,RentFcstR",
};
QX_EXPORT(FStepRentFcstR, 21);

constexpr Function TStepRentGrowSFR{
    .name = "TStepRentGrowSFR",
    .category = category,
    .calls = twin<qx::TStepRentGrowSFR>,
    .help = "TStepRentGrowR as far as it lies between two absolute dates",
    .args = {time_period(), AbsStart(), RentStart(), AbsFinish(), BrksOrExp(), MktRent_s(), rents_to_dates(), growth(),
             reviewed_chain(), chain_options()},
    .examples =
        {"TStepRentGrowSFR(2009, 24, 2009.5, 2005, 2010.75, 2010, {1000;2000}, 2010, 900, 2005, 0, 60, 0, 6, 0, "
         "5) ~ 950 1e-9"},
    .see_also = "TStepRentGrowR,TStepRentFcstSFR,FStepRentGrowSFR",
};
QX_EXPORT(TStepRentGrowSFR, 23);

constexpr Function TStepRentFcstSFR{
    .name = "TStepRentFcstSFR",
    .category = category,
    .calls = twin<qx::TStepRentFcstSFR>,
    .help = "TStepRentFcstR as far as it lies between two absolute dates",
    .args = {time_period(), AbsStart(), RentStart(), AbsFinish(), BrksOrExp(), rents_to_dates(), rent_forecast(),
             reviewed_chain(), chain_options()},
    .examples =
        {"TStepRentFcstSFR(2009, 24, 2009.5, 2005, 2010.75, 2010, 2010, 900, {1000;1200;1500}, 2005, 60, 60, 0, "
         "6, 0, 5) ~ 750 1e-9"},
    .see_also = "TStepRentFcstR,TStepRentGrowSFR,FStepRentFcstSFR",
};
QX_EXPORT(TStepRentFcstSFR, 23);

constexpr Function FStepRentGrowSFR{
    .name = "FStepRentGrowSFR",
    .category = category,
    .calls = twin<qx::FStepRentGrowSFR>,
    .help = "FStepRentGrowR as far as it lies between two absolute dates",
    .args = {time_period(), AbsStart(), AbsFinish(), BrksOrExp(), MktRent_s(), rents_from_dates(), growth(), RevToMkt(),
             reviewed_chain(), chain_options()},
    .examples =
        {"FStepRentGrowSFR(2009, 24, 2009.5, 2010.75, 2010, {1000;2000}, 2005, 900, 2005, 0, 0, 60, 0, 6, 0, 5) "
         "~ 950 1e-9"},
    .see_also = "FStepRentGrowR,FStepRentFcstSFR,TStepRentGrowSFR",
};
QX_EXPORT(FStepRentGrowSFR, 23);

constexpr Function FStepRentFcstSFR{
    .name = "FStepRentFcstSFR",
    .category = category,
    .calls = twin<qx::FStepRentFcstSFR>,
    .help = "FStepRentFcstR as far as it lies between two absolute dates",
    .args = {time_period(), AbsStart(), AbsFinish(), BrksOrExp(), rents_from_dates(), rent_forecast(), RevToMkt(),
             reviewed_chain(), chain_options()},
    .examples =
        {"FStepRentFcstSFR(2009, 24, 2009.5, 2010.75, 2010, 2005, 900, {1000;1200;1500}, 2005, 60, 0, 60, 0, 6, "
         "0, 5) ~ 750 1e-9"},
    .see_also = "FStepRentFcstR,FStepRentGrowSFR,TStepRentFcstSFR",
};
QX_EXPORT(FStepRentFcstSFR, 23);

} // namespace qx::worksheet
