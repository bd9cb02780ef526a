// Worksheet functions of the present values of rents: of a lease, and of a lease and its relets.
#include "realestate/rent_values.h"
#include "addin/declare.h"
#include "addin/present_value_arguments.h"
#include "addin/rent_arguments.h"

namespace qx::worksheet {

namespace {

constexpr Category category = Category::RealEstate;

constexpr Argument Finish() {
    return optional("Finish", "Date of the last payments; AbFin if omitted, and without that the end of the chain of "
                              "relets, of which there are at most 100");
}

} // namespace

// --- One lease -------------------------------------------------------------------------------------------------------

constexpr Function PVRentGrow{
    .name = "PVRentGrow",
    .category = category,
    .calls = core<qx::PVRentGrow>,
    .help = "Present value of the rent of a lease with regular reviews to a market rent that grows, paid on the dates "
            "of CashBasis until the lease ends",
    .args = {discount(), RentStart(), BrksOrExp(), FirstRev(), MktRent(), InitRent(), growth(), reviews(), cash_terms(),
             UOTog(), Brk()},
    .examples = {"PVRentGrow(2005, 0.1, 2005, 2007, 2006, 1000, 900, 2005, 0.1, 12, 0, , 1) ~ 1900 1e-9"},
    .see_also = "RentGrow,IRRRentGrow,PVRentFcst,PVTStepRentGrow,PVConGrow",
};
QX_EXPORT(PVRentGrow, 19);

constexpr Function PVRentFcst{
    .name = "PVRentFcst",
    .category = category,
    .calls = core<qx::PVRentFcst>,
    .help = "Present value of the rent of a lease with regular reviews to a forecast of the market rent, paid on the "
            "dates of CashBasis until the lease ends",
    .args = {discount(), RentStart(), BrksOrExp(), FirstRev(), InitRent(), rent_forecast(), reviews(), cash_terms(),
             UOTog(), Brk()},
    .examples = {"PVRentFcst(2005, 0.1, 2005, 2007, 2006, 900, {1000;1100}, 2005, 12, 12, 0, , 1) ~ 1900 1e-9"},
    .see_also = "RentFcst,PVRentGrow,PVTStepRentFcst",
};
QX_EXPORT(PVRentFcst, 19);

constexpr Function IRRRentGrow{
    .name = "IRRRentGrow",
    .category = category,
    .calls = core<qx::IRRRentGrow>,
    .help = "Internal rate of return of an outlay for the rent of a lease with regular reviews to a market rent that "
            "grows: the DisAER at which PVRentGrow is the outlay",
    .args = {Argument{"NPVDate", "Date of the outlay"},
             {"Outlay", "What is paid for the rent, as a positive amount"},
             RentStart(),
             BrksOrExp(),
             FirstRev(),
             MktRent(),
             InitRent(),
             growth(),
             reviews(),
             cash_terms(),
             UOTog(),
             Brk()},
    .examples = {"IRRRentGrow(2005, 1900, 2005, 2007, 2006, 1000, 900, 2005, 0.1, 12, 0, , 1) ~ 0.1 1e-9"},
    .see_also = "PVRentGrow,RentGrow,IRRT",
};
QX_EXPORT(IRRRentGrow, 19);

constexpr Function PVTStepRent{
    .name = "PVTStepRent",
    .category = category,
    .calls = core<qx::PVTStepRent>,
    .help = "Present value of the rent of a lease whose rents are given, each up to a date, paid on the dates of "
            "CashBasis",
    .args = {discount(), RentStart(), ReviewDates(), AnnRents(), cash_terms()},
    .examples = {"PVTStepRent(2005, 0.1, 2005, {2006;2007}, {1000;1100}, , 1) ~ 2000 1e-9"},
    .see_also = "TStepRent,PVTStepRentGrow,PVTStep",
};
QX_EXPORT(PVTStepRent, 11);

constexpr Function PVTStepRentGrow{
    .name = "PVTStepRentGrow",
    .category = category,
    .calls = core<qx::PVTStepRentGrow>,
    .help = "Present value of the rent of a lease with rents up to given dates, then regular reviews to a market rent "
            "that grows, paid on the dates of CashBasis until the lease ends",
    .args = {discount(), RentStart(), BrksOrExp(), MktRent(), ReviewDates(), AnnRents(), growth(), reviews(),
             cash_terms(), UOTog(), Brk()},
    .examples = {"PVTStepRentGrow(2005, 0.1, 2005, 2007, 1000, 2006, 900, 2005, 0.1, 60, 0, , 1) ~ 1900 1e-9"},
    .see_also = "TStepRentGrow,PVTStepRentGrowIC,PVTStepRentGrowR,PVTStepRentFcst,PVRentGrow",
};
QX_EXPORT(PVTStepRentGrow, 19);

constexpr Function PVTStepRentFcst{
    .name = "PVTStepRentFcst",
    .category = category,
    .calls = core<qx::PVTStepRentFcst>,
    .help = "Present value of the rent of a lease with rents up to given dates, then regular reviews to a forecast of "
            "the market rent, paid on the dates of CashBasis until the lease ends",
    .args = {discount(), RentStart(), BrksOrExp(), ReviewDates(), AnnRents(), rent_forecast(), reviews(), cash_terms(),
             UOTog(), Brk()},
    .examples = {"PVTStepRentFcst(2005, 0.1, 2005, 2007, 2006, 900, {1000;1100}, 2005, 12, 60, 0, , 1) ~ 1900 1e-9"},
    .see_also = "TStepRentFcst,PVTStepRentFcstR,PVTStepRentGrow,PVRentFcst",
};
QX_EXPORT(PVTStepRentFcst, 19);

constexpr Function PVTStepRentGrowIC{
    .name = "PVTStepRentGrowIC",
    .category = category,
    .calls = core<qx::PVTStepRentGrowIC>,
    .help = "PVTStepRentGrow with a discount rate for each rent: term and reversion at yields of their own",
    .args = {discount_in_step("Discount rates, annual equivalent rates: one for each given rent, then one for the "
                              "reviews to the market that follow; the last one applies to the rest"),
             RentStart(), BrksOrExp(), MktRent(), ReviewDates(), AnnRents(), growth(), reviews(), cash_terms(), UOTog(),
             Brk()},
    .examples = {"PVTStepRentGrowIC(2005, {0.1;0.25}, 2005, 2007, 1000, 2006, 900, 2005, 0, 60, 0, , 1) ~ 1700 1e-9"},
    .see_also = "PVTStepRentGrow,PVTStepRentGrowRIC,PVTStepIC",
};
QX_EXPORT(PVTStepRentGrowIC, 19);

// --- A lease and its relets ------------------------------------------------------------------------------------------

constexpr Function PVTStepRentGrowR{
    .name = "PVTStepRentGrowR",
    .category = category,
    .calls = core<qx::PVTStepRentGrowR>,
    .help = "Present value of the rents of a lease and its relets: rents up to given dates, then regular reviews to a "
            "market rent that grows, paid on the dates of CashBasis",
    .args = {discount(), RentStart(), BrksOrExp(), MktRent_s(), ReviewDates(), AnnRents(), growth(), reviews(),
             relets(), cash_terms(), AbFin(), UOTog(), ROpts(), Brk(), Finish()},
    .examples = {"PVTStepRentGrowR(2005, 0.1, 2005, 2006, 1000, 2006, 900, 2005, 0.1, 60, 0, 0, 0, 5, , 1, , , , , "
                 "2007) ~ 1900 1e-9"},
    .see_also = "TStepRentGrowR,PVTStepRentGrow,PVTStepRentGrowRIC,PVTStepRentFcstR",
};
QX_EXPORT(PVTStepRentGrowR, 25);

constexpr Function PVTStepRentFcstR{
    .name = "PVTStepRentFcstR",
    .category = category,
    .calls = core<qx::PVTStepRentFcstR>,
    .help = "Present value of the rents of a lease and its relets: rents up to given dates, then regular reviews to a "
            "forecast of the market rent, paid on the dates of CashBasis",
    .args = {discount(), RentStart(), BrksOrExp(), ReviewDates(), AnnRents(), rent_forecast(), reviews(), relets(),
             cash_terms(), AbFin(), UOTog(), ROpts(), Brk(), Finish()},
    .examples = {"PVTStepRentFcstR(2005, 0.1, 2005, 2006, 2006, 900, {1000;1100}, 2005, 12, 60, 0, 0, 0, 5, , 1, , , , "
                 ", 2007) ~ 1900 1e-9"},
    .see_also = "TStepRentFcstR,PVTStepRentFcst,PVTStepRentGrowR",
};
QX_EXPORT(PVTStepRentFcstR, 25);

constexpr Function PVTStepRentGrowRIC{
    .name = "PVTStepRentGrowRIC",
    .category = category,
    .calls = core<qx::PVTStepRentGrowRIC>,
    .help = "PVTStepRentGrowR with a discount rate for each rent and each relet",
    .args = {discount_in_step(
                 "Discount rates, annual equivalent rates: one for each given rent, then one for the "
                 "reviews to the market that follow, then one for each relet; the last one applies to the rest"),
             RentStart(), BrksOrExp(), MktRent_s(), ReviewDates(), AnnRents(), growth(), reviews(), relets(),
             cash_terms(), AbFin(), UOTog(), ROpts(), Brk(), Finish()},
    .examples = {"PVTStepRentGrowRIC(2005, {0.1;0.1;0.25}, 2005, 2006, 1000, 2006, 900, 2005, 0, 60, 0, 0, 0, 5, , 1, "
                 ", , , , 2007) ~ 1700 1e-9"},
    .see_also = "PVTStepRentGrowR,PVTStepRentGrowIC",
};
QX_EXPORT(PVTStepRentGrowRIC, 25);

} // namespace qx::worksheet
