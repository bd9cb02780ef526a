// Worksheet functions of capital values and equivalent yields.
#include "realestate/valuation.h"
#include "addin/declare.h"
#include "addin/rent_arguments.h"
#include "addin/valuation_arguments.h"
#include "realestate/rent_valuation.h"

namespace qx::worksheet {

namespace {

constexpr Category category = Category::RealEstate;

constexpr ArgumentGroup optional_growth() { return growth("GrowthDatesOpt", "GrowthRatesOpt"); }
constexpr Argument market_today() {
    return {"MktRent", "Market rent a year, as at the first growth date (today, where no growth is given)"};
}
constexpr Argument RevToMkt() {
    return optional("RevToMkt", "Date of the review to the market; if omitted the last rent is capitalised as it is");
}

} // namespace

// --- By layers -------------------------------------------------------------------------------------------------------

constexpr Function CapValue{
    .name = "CapValue",
    .category = category,
    .calls = core<qx::CapValue>,
    .help = "Capital value by term and reversion: the rent passing until the next review and the market rent from then "
            "on, at an equivalent yield",
    .args = {Yield(), two_rents(), CostsPerc(), yield_terms()},
    .examples = {"CapValue(0.07, 120000, 100000, 36, 0, 0, -1) ~ 1661799.4 1e-6",
                 "CapValue(0.05, 1000, 1000, 24) ~ 21000 1e-12"},
    .see_also = "EqYield,CapValueG,CapValueDCF,YPP",
};
QX_EXPORT(CapValue, 8);

constexpr Function EqYield{
    .name = "EqYield",
    .category = category,
    .calls = core<qx::EqYield>,
    .help = "The equivalent yield of a price by term and reversion: the yield at which CapValue is that price",
    .args = {Valuation(), two_rents(), CostsPerc(), yield_terms()},
    .examples = {"EqYield(21000, 1000, 1000, 24) ~ 0.05 1e-12",
                 "EqYield(CapValue(0.07, 120000, 100000, 36), 120000, 100000, 36) ~ 0.07 1e-12"},
    .see_also = "CapValue,EqYieldG,EqYieldDCF",
};
QX_EXPORT(EqYield, 8);

constexpr Function CapValueG{
    .name = "CapValueG",
    .category = category,
    .calls = core<qx::CapValueG>,
    .help = "Capital value of a list of rents, each from some months on and the last one for ever, at an equivalent "
            "yield",
    .args = {Yield(), rent_list(), CostsPerc(), yield_terms()},
    .examples = {"CapValueG(0.05, {1000;2000}, {0;12}) ~ 41000 1e-12"},
    .see_also = "EqYieldG,CapValue,CapValueGD,CapValueDCFG",
};
QX_EXPORT(CapValueG, 6);

constexpr Function EqYieldG{
    .name = "EqYieldG",
    .category = category,
    .calls = core<qx::EqYieldG>,
    .help = "The equivalent yield of a list of rents: the yield at which CapValueG is the price",
    .args = {Valuation(), rent_list(), CostsPerc(), yield_terms()},
    .examples = {"EqYieldG(41000, {1000;2000}, {0;12}) ~ 0.05 1e-12"},
    .see_also = "CapValueG,EqYield,EqYieldGD",
};
QX_EXPORT(EqYieldG, 6);

constexpr Function CapValueGD{
    .name = "CapValueGD",
    .category = category,
    .calls = core<qx::CapValueGD>,
    .help = "Capital value of a list of rents, each from a date on and the last one for ever, at an equivalent yield",
    .args = {ValuationDate(), CapYield(), dated_rents(), CostsPerc(), cap_terms()},
    .examples = {"CapValueGD(2010, 0.05, {2005;2011}, {1000;2000}) ~ 41000 1e-12"},
    .see_also = "EqYieldGD,CapValueGrowGD,CapValueFcstGD,CapValueDCFGD,CapValueG",
};
QX_EXPORT(CapValueGD, 7);

constexpr Function EqYieldGD{
    .name = "EqYieldGD",
    .category = category,
    .calls = core<qx::EqYieldGD>,
    .help = "The equivalent yield of a list of dated rents: the yield at which CapValueGD is the price",
    .args = {ValuationDate(), Valuation(), dated_rents(), CostsPerc(), cap_terms()},
    .examples = {"EqYieldGD(2010, 41000, {2005;2011}, {1000;2000}) ~ 0.05 1e-12"},
    .see_also = "CapValueGD,EqYieldGrowGD,EqYieldFcstGD,EqYieldDCFGD,EqYieldG",
};
QX_EXPORT(EqYieldGD, 7);

constexpr Function CapValueGrowGD{
    .name = "CapValueGrowGD",
    .category = category,
    .calls = core<qx::CapValueGrowGD>,
    .help = "Capital value of a list of dated rents that ends in a review to a market rent that grows, at an "
            "equivalent yield",
    .args = {ValuationDate(), CapYield(), market_today(), dated_rents(market_rents), optional_growth(), RevToMkt(),
             CostsPerc(), cap_terms()},
    .examples = {"CapValueGrowGD(2010, 0.05, 2000, 2005, 1000, 2010, 0.1, 2011) ~ 45000 1e-12"},
    .see_also = "EqYieldGrowGD,CapValueFcstGD,CapValueGD,CapValueTStepRentGrowR",
};
QX_EXPORT(CapValueGrowGD, 11);

constexpr Function EqYieldGrowGD{
    .name = "EqYieldGrowGD",
    .category = category,
    .calls = core<qx::EqYieldGrowGD>,
    .help = "The equivalent yield of a list of dated rents and a review to a market rent that grows: the yield at "
            "which CapValueGrowGD is the price",
    .args = {ValuationDate(), Valuation(), market_today(), dated_rents(market_rents), optional_growth(), RevToMkt(),
             CostsPerc(), cap_terms()},
    .examples = {"EqYieldGrowGD(2010, 45000, 2000, 2005, 1000, 2010, 0.1, 2011) ~ 0.05 1e-12"},
    .see_also = "CapValueGrowGD,EqYieldFcstGD,EqYieldGD",
};
QX_EXPORT(EqYieldGrowGD, 11);

constexpr Function CapValueFcstGD{
    .name = "CapValueFcstGD",
    .category = category,
    .calls = core<qx::CapValueFcstGD>,
    .help = "Capital value of a list of dated rents that ends in a review to a forecast of the market rent, at an "
            "equivalent yield",
    .args = {ValuationDate(), CapYield(), dated_rents(market_rents), forecast(), RevToMkt(), CostsPerc(), cap_terms()},
    .examples = {"CapValueFcstGD(2010, 0.05, 2005, 1000, {1500;2000}, 2010, 12, 2011) ~ 41000 1e-12"},
    .see_also = "EqYieldFcstGD,CapValueGrowGD,CapValueGD",
};
QX_EXPORT(CapValueFcstGD, 11);

constexpr Function EqYieldFcstGD{
    .name = "EqYieldFcstGD",
    .category = category,
    .calls = core<qx::EqYieldFcstGD>,
    .help = "The equivalent yield of a list of dated rents and a review to a forecast of the market rent: the yield at "
            "which CapValueFcstGD is the price",
    .args = {ValuationDate(), Valuation(), dated_rents(market_rents), forecast(), RevToMkt(), CostsPerc(), cap_terms()},
    .examples = {"EqYieldFcstGD(2010, 41000, 2005, 1000, {1500;2000}, 2010, 12, 2011) ~ 0.05 1e-12"},
    .see_also = "CapValueFcstGD,EqYieldGrowGD,EqYieldGD",
};
QX_EXPORT(EqYieldFcstGD, 11);

// --- By discounted cash flow -----------------------------------------------------------------------------------------

constexpr Function CapValueDCF{
    .name = "CapValueDCF",
    .category = category,
    .calls = core<qx::CapValueDCF>,
    .help = "Capital value by discounted cash flow: the rent passing until the next review, and the market rent from "
            "then on, which grows as the yield implies",
    .args = {Yield(), positive_DisAER(), two_rents(), CostsPerc(), RevMonths("RevMos"), yield_terms()},
    .examples = {"CapValueDCF(0.05, 0.08, 1000, 900, 12, 0, 0, 12, -1) ~ 19907.4074074 1e-9"},
    .see_also = "EqYieldDCF,CapValueDCFG,CapValue,ImpGrowth",
};
QX_EXPORT(CapValueDCF, 10);

constexpr Function EqYieldDCF{
    .name = "EqYieldDCF",
    .category = category,
    .calls = core<qx::EqYieldDCF>,
    .help = "The yield of a price by discounted cash flow: the yield at which CapValueDCF is that price",
    .args = {Valuation(), positive_DisAER(), two_rents(), CostsPerc(), RevMonths("RevMos"), yield_terms()},
    .examples = {"EqYieldDCF(CapValueDCF(0.05, 0.08, 1000, 900, 12), 0.08, 1000, 900, 12) ~ 0.05 1e-12"},
    .see_also = "CapValueDCF,EqYieldDCFG,EqYield",
};
QX_EXPORT(EqYieldDCF, 10);

constexpr Function CapValueDCFG{
    .name = "CapValueDCFG",
    .category = category,
    .calls = core<qx::CapValueDCFG>,
    .help = "Capital value by discounted cash flow of a list of rents, each from some months on; the last one is the "
            "market rent of today, let at the market of its start",
    .args = {Yield(), positive_DisAER(), rent_list(deferred_market_rent_last), CostsPerc(), RevMonths("RevMos"),
             yield_terms()},
    .examples = {"CapValueDCFG(0.05, 0.08, {900;1000}, {0;12}, 0, 12, -1) ~ 19907.4074074 1e-9"},
    .see_also = "EqYieldDCFG,CapValueDCF,CapValueDCFGD,CapValueG",
};
QX_EXPORT(CapValueDCFG, 8);

constexpr Function EqYieldDCFG{
    .name = "EqYieldDCFG",
    .category = category,
    .calls = core<qx::EqYieldDCFG>,
    .help = "The yield of a list of rents by discounted cash flow: the yield at which CapValueDCFG is the price",
    .args = {Valuation(), positive_DisAER(), rent_list(deferred_market_rent_last), CostsPerc(), RevMonths("RevMos"),
             yield_terms()},
    .examples = {"EqYieldDCFG(CapValueDCFG(0.05, 0.08, {900;1000}, {0;12}), 0.08, {900;1000}, {0;12}) ~ 0.05 1e-12"},
    .see_also = "CapValueDCFG,EqYieldDCF,EqYieldDCFGD",
};
QX_EXPORT(EqYieldDCFG, 8);

constexpr Function CapValueDCFGD{
    .name = "CapValueDCFGD",
    .category = category,
    .calls = core<qx::CapValueDCFGD>,
    .help = "Capital value by discounted cash flow of a list of rents, each from a date on; the last one is the market "
            "rent of today, let at the market of its date",
    .args = {ValuationDate(), CapYield(), positive_DisAER(), dated_rents(market_rent_last), CostsPerc(),
             RevMonths("RevMos"), cap_terms()},
    .examples = {"CapValueDCFGD(2010, 0.05, 0.08, {2005;2011}, {900;1000}, 0, 12, -1) ~ 19907.4074074 1e-9"},
    .see_also = "EqYieldDCFGD,CapValueDCFG,CapValueGD,CapValueTStepRentGrowR",
};
QX_EXPORT(CapValueDCFGD, 9);

constexpr Function EqYieldDCFGD{
    .name = "EqYieldDCFGD",
    .category = category,
    .calls = core<qx::EqYieldDCFGD>,
    .help = "The yield of a list of dated rents by discounted cash flow: the yield at which CapValueDCFGD is the price",
    .args = {ValuationDate(), Valuation(), positive_DisAER(), dated_rents(market_rent_last), CostsPerc(),
             RevMonths("RevMos"), cap_terms()},
    .examples = {"EqYieldDCFGD(2010, 19907.4074074074, 0.08, {2005;2011}, {900;1000}, 0, 12, -1) ~ 0.05 1e-9"},
    .see_also = "CapValueDCFGD,EqYieldDCFG,EqYieldGD",
};
QX_EXPORT(EqYieldDCFGD, 9);

constexpr Function CapValueTStepRentGrowR{
    .name = "CapValueTStepRentGrowR",
    .category = category,
    .calls = core<qx::CapValueTStepRentGrowR>,
    .help = "Capital value of a lease with rents up to given dates, then reviews to a market rent that grows, and of "
            "its relets: rents discounted as they fall due, the rent of the last relet capitalised for ever",
    .args = {ValuationDate(),
             Yield("Yield at which the last relet's rent is capitalised, as a fraction: true (annual equivalent), or "
                   "nominal under CapOptions 1"),
             positive_DisAER(), RentStart(), BrksOrExp(), MktRent_s(), ReviewDates(), AnnRents(), growth(), reviews(),
             relets(), measure(), AbFin(), UOTog(), ROpts(), Brk(), CostsPerc(), cap_terms()},
    .examples = {"CapValueTStepRentGrowR(2010, 0.05, 0.25, 2005, 2011, 1000, 2011, 900, , , 0, 0, 12, 0, 5, , , , , , "
                 ", , -1) ~ 13520 1e-9"},
    .see_also = "TStepRentGrowR,CapValueGrowGD,CapValueDCFGD",
};
QX_EXPORT(CapValueTStepRentGrowR, 24);

} // namespace qx::worksheet
