// Worksheet functions of years' purchase and of yields.
#include "realestate/years_purchase.h"
#include "addin/declare.h"
#include "addin/valuation_arguments.h"

namespace qx::worksheet {

namespace {

constexpr Category category = Category::RealEstate;

} // namespace

// --- Years' purchase -------------------------------------------------------------------------------------------------

constexpr Function YPP{
    .name = "YPP",
    .category = category,
    .calls = core<qx::YPP>,
    .help = "Years' purchase of a perpetuity: the value of a rent of 1 a year for ever",
    .args = {Yield(), yield_terms()},
    .examples = {"YPP(0.05) ~ 21 1e-12", "YPP(0.05, -1) ~ 20 1e-12", "YPP(0.08, 4) ~ 13.118988 1e-7"},
    .see_also = "YPPDef,YPA,CapValue",
};
QX_EXPORT(YPP, 3);

constexpr Function YPPDef{
    .name = "YPPDef",
    .category = category,
    .calls = core<qx::YPPDef>,
    .help = "Years' purchase of a perpetuity that is deferred by some months",
    .args = {Yield(), MonthsDeferred(), yield_terms()},
    .examples = {"YPPDef(0.07, 36, -1) ~ 11.6614 1e-5"},
    .see_also = "YPP,YPADef,YPPDefDCF",
};
QX_EXPORT(YPPDef, 4);

constexpr Function YPA{
    .name = "YPA",
    .category = category,
    .calls = core<qx::YPA>,
    .help = "Years' purchase of an annuity: the value of a rent of 1 a year for some months",
    .args = {Yield(), {"Months", "Months for which the rent is paid"}, yield_terms()},
    .examples = {"YPA(0.08, 120, -1) ~ 6.7101 1e-5"},
    .see_also = "YPADef,YPP",
};
QX_EXPORT(YPA, 4);

constexpr Function YPADef{
    .name = "YPADef",
    .category = category,
    .calls = core<qx::YPADef>,
    .help = "Years' purchase of an annuity that is deferred by some months",
    .args = {Yield(),
             {"Months", "Months for which the rent is paid, counted from its start"},
             MonthsDeferred(),
             yield_terms()},
    .examples = {"YPADef(0.08, 60, 60, -1) ~ 2.7174 1e-4"},
    .see_also = "YPA,YPPDef,YPADefDCF",
};
QX_EXPORT(YPADef, 5);

constexpr Function YPPDefDCF{
    .name = "YPPDefDCF",
    .category = category,
    .calls = core<qx::YPPDefDCF>,
    .help = "Years' purchase by discounted cash flow of a rent that is let in some months at the market rent of "
            "that time and reviewed regularly; its growth is what the yield implies",
    .args = {Yield(), positive_DisAER(), MonthsDeferred(), RevMonths(), yield_terms()},
    .examples = {"YPPDefDCF(0.05, 0.08, 12, 12, -1) ~ 19.0740740741 1e-9",
                 "YPPDefDCF(0.05, 0.08, 0, 60, -1) ~ 20 1e-9"},
    .see_also = "YPPDef,YPADefDCF,ImpGrowth,CapValueDCF",
};
QX_EXPORT(YPPDefDCF, 6);

constexpr Function YPADefDCF{
    .name = "YPADefDCF",
    .category = category,
    .calls = core<qx::YPADefDCF>,
    .help = "Years' purchase by discounted cash flow of a rent from one month to another",
    .args = {positive_DisAER(),
             MonthsDeferred(),
             {"AnnuityEndMonths", "Months until the rent ends, counted from now"},
             PmtsPerYearOpt()},
    .examples = {"YPADefDCF(0.08, 60, 120, -1) ~ 2.7174 1e-4"},
    .see_also = "YPADef,YPPDefDCF",
};
QX_EXPORT(YPADefDCF, 4);

// --- Yields ----------------------------------------------------------------------------------------------------------

constexpr Function TrueToNom{
    .name = "TrueToNom",
    .category = category,
    .calls = core<qx::TrueToNom>,
    .help = "The nominal yield of a true (annual equivalent) yield",
    .args = {{"TrueYield", "True yield as a fraction, above -1"}, payments_a_year()},
    .examples = {"TrueToNom(0.08, -4) ~ 0.0777061876 1e-9", "TrueToNom(0.05, 1) ~ 0.0476190476 1e-9"},
    .see_also = "NomToTrue,TrueToNomDCF",
};
QX_EXPORT(TrueToNom, 2);

constexpr Function NomToTrue{
    .name = "NomToTrue",
    .category = category,
    .calls = core<qx::NomToTrue>,
    .help = "The true (annual equivalent) yield of a nominal yield",
    .args = {{"NomYield", "Nominal yield as a fraction; in advance it is below the number of payments a year"},
             payments_a_year()},
    .examples = {"NomToTrue(0.08, -4) ~ 0.08243216 1e-12", "NomToTrue(0.05, 1) ~ 0.0526315789 1e-9"},
    .see_also = "TrueToNom,NomToTrueDCF",
};
QX_EXPORT(NomToTrue, 2);

constexpr Function TrueToNomDCF{
    .name = "TrueToNomDCF",
    .category = category,
    .calls = core<qx::TrueToNomDCF>,
    .help = "The nominal yield of a true yield, where both are yields of discounted cash flow",
    .args = {{"TrueYield", "True yield as a fraction"}, payments_a_year(), positive_DisAER()},
    .examples = {"TrueToNomDCF(0.08, -4, 0.08) ~ 0.0777061876 1e-9"},
    .see_also = "NomToTrueDCF,TrueToNom,TheorYield",
};
QX_EXPORT(TrueToNomDCF, 3);

constexpr Function NomToTrueDCF{
    .name = "NomToTrueDCF",
    .category = category,
    .calls = core<qx::NomToTrueDCF>,
    .help = "The true yield of a nominal yield, where both are yields of discounted cash flow",
    .args = {{"NomYield", "Nominal yield as a fraction"}, payments_a_year(), positive_DisAER()},
    .examples = {"NomToTrueDCF(TrueToNomDCF(0.05, 4, 0.09), 4, 0.09) ~ 0.05 1e-12",
                 "NomToTrueDCF(0.05, 1, 0.25) ~ 0.0625 1e-12"},
    .see_also = "TrueToNomDCF,NomToTrue,TheorYield",
};
QX_EXPORT(NomToTrueDCF, 3);

constexpr Function TheorYield{
    .name = "TheorYield",
    .category = category,
    .calls = core<qx::TheorYield>,
    .help = "The yield of a rent that grows between regular reviews, at a discount rate",
    .args = {positive_DisAER(), GrowthRatePA(), RevMonths(), yield_terms()},
    .examples = {"TheorYield(0.08, 0.03) ~ 0.05 1e-12", "TheorYield(0.12, 0.05672, 60) ~ 0.07 1e-5"},
    .see_also = "ImpGrowth,ImpDiscRate,PVRent",
};
QX_EXPORT(TheorYield, 5);

constexpr Function PVRent{
    .name = "PVRent",
    .category = category,
    .calls = core<qx::PVRent>,
    .help = "Present value of a rent of 1 a year for ever that grows between regular reviews",
    .args = {positive_DisAER(),
             GrowthRatePA(),
             {"RevMonths", "Months from one rent review to the next, above zero"},
             PmtsPerYearOpt()},
    .examples = {"PVRent(0.08, 0.03, 12, -1) ~ 20 1e-12", "PVRent(0.08, 0.03, 12) ~ 21.6 1e-12"},
    .see_also = "TheorYield,YPPDefDCF",
};
QX_EXPORT(PVRent, 4);

constexpr Function ImpGrowth{
    .name = "ImpGrowth",
    .category = category,
    .calls = core<qx::ImpGrowth>,
    .help = "The growth of rents a year that a yield implies at a discount rate",
    .args = {Yield(), positive_DisAER(), RevMonths(), yield_terms()},
    .examples = {"ImpGrowth(0.05, 0.08) ~ 0.03 1e-12", "ImpGrowth(0.07, 0.12, 60) ~ 0.05672 1e-5"},
    .see_also = "TheorYield,ImpDiscRate,YPPDefDCF",
};
QX_EXPORT(ImpGrowth, 5);

constexpr Function ImpDiscRate{
    .name = "ImpDiscRate",
    .category = category,
    .calls = core<qx::ImpDiscRate>,
    .help = "The discount rate that a yield and the growth of rents a year imply",
    .args = {Yield(), GrowthRatePA(), RevMonths(), yield_terms()},
    .examples = {"ImpDiscRate(0.05, 0.03) ~ 0.08 1e-12"},
    .see_also = "ImpGrowth,TheorYield",
};
QX_EXPORT(ImpDiscRate, 5);

} // namespace qx::worksheet
