// Worksheet functions of discounted cash flow.
#include "addin/declare.h"
#include "projections/simple_rates.h"
#include "rates/annual_cash_flow.h"
#include "rates/annuities.h"
#include "rates/cash_flow.h"

namespace qx::worksheet {

namespace {

constexpr Category category = Category::DiscountedCashFlow;

constexpr Argument annual_flows() {
    return {"AnnualCashFlows", "Cash flows a year apart: received positive, paid negative"};
}
constexpr Argument StartAnnDate() { return {"StartAnnDate", "Date of the first annual cash flow"}; }
constexpr Argument even_flows() {
    return {"EvenCashFlows", "Cash flows at even intervals: received positive, paid negative"};
}
constexpr Argument EvenTimeStart() { return {"EvenTimeStart", "Date of the first cash flow"}; }
constexpr Argument EvenTimeInterval() { return {"EvenTimeInterval", "Months from one cash flow to the next"}; }
constexpr Argument Start() { return {"Start", "Date from which times are measured"}; }
constexpr Argument growth_rate() { return {"GrowthRatePA", "Growth rate a year as a fraction"}; }
constexpr Argument rates_aer() {
    return {"DiscRatesAER", "Discount rates, annual equivalent, one for each date (or one for all)"};
}
constexpr Argument IRRMinOpt() {
    return optional("IRRMinOpt", irr_min, "Lower end of the search; another value than the default is tried first");
}
constexpr Argument IRRMaxOpt() {
    return optional("IRRMaxOpt", irr_max, "Upper end of the search; another value than the default is tried first");
}
constexpr Argument IRRAccOpt() { return optional("IRRAccOpt", irr_accuracy, "Tolerance of the rate"); }
constexpr Argument not_used(const char* name, double preset) {
    return optional(name, preset, "Not used: keeps the places of the arguments of IRRTCX");
}
constexpr Argument MinPayBack() {
    return optional("MinPayBack", 0.0, "Sum of the cash flows that counts as paid back");
}
constexpr Argument Interpolate() {
    return optional("Interpolate", false, "True for the date between two cash flows on which the sum would cross zero");
}
constexpr Argument PayBackOptions() {
    return optional("PayBackOptions", 0,
                    "Sum of options: 1 the sum restarts if the cash flow goes from positive to negative");
}
constexpr Argument day_count(const char* name) {
    Argument argument = DayCount();
    argument.name = name;
    return argument;
}
constexpr Argument PVTOptions() {
    return optional(
        "PVTOptions", 0,
        "A set of additive options governing how the DCF calculation is to be performed: 1 each cash flow is "
        "received evenly over the period to the next date");
}
constexpr Argument Dates2(const char* name) { return optional(name, "Dates of further cash flows"); }
constexpr Argument Flows2(const char* name) { return optional(name, "Further cash flows, one for each date"); }
constexpr Argument InvDate() {
    return optional("InvDate", "Date of the investment; if omitted, the date of the present value or the first date");
}
constexpr Argument InvAmt() { return optional("InvAmt", 0.0, "Amount invested, an outlay whatever its sign"); }
constexpr Argument CapRateAER() {
    return optional("CapRateAER", 0.0,
                    "Annual equivalent rate at which cash flows from FinishDCF on are valued at that date; "
                    "0 takes the rate of the rest",
                    "the discount rate, or the IRR");
}
constexpr Argument capital_date() {
    return optional("FinishDCF",
                    "Cash flows from this date on become a capital value on it; if omitted, there is none");
}
constexpr Argument CapOption() {
    return optional("CapOption", 0.0,
                    "Cap on the capital value, as a multiple of the cash flows of the twelve months before "
                    "FinishDCF; 0 for none");
}
constexpr Argument RealisationDate() {
    return {"RealisationDate", "Date on which the level then in force is received and the cash flows end"};
}
constexpr Argument RealisationLevels() {
    return optional("RealisationLevels", "What would be realised from each of the dates on, or one level for all");
}

} // namespace

// --- Annual cash flows -----------------------------------------------------------------------------------------------

constexpr Function AvLifeA{
    .name = "AvLifeA",
    .category = category,
    .calls = twin<qx::AvLifeA>,
    .help = "Average Life of annual cash flows: the average of the years from Start, weighted by the flows",
    .args = {Start(), annual_flows(), StartAnnDate(), DayCountDisc("DCountDisc")},
    .examples = {"AvLifeA(2005, {100;100}, 2006) ~ 1.5 1e-12"},
    .see_also = "AvLifeM,AvLifeE,AvLifeT,DurationA",
};
QX_EXPORT(AvLifeA, 4);

constexpr Function DurationA{
    .name = "DurationA",
    .category = category,
    .calls = twin<qx::DurationA>,
    .help = "Macaulay Duration of annual cash flows in years: the average of the times, weighted by present values",
    .args = {NPVDate(), DisAER(), annual_flows(), StartAnnDate(), DayCountDisc("DCountDisc")},
    .examples = {"DurationA(2005, 0.1, {110;121}, 2006) ~ 1.5 1e-12"},
    .see_also = "DurationM,DurationE,DurationT,AvLifeA",
};
QX_EXPORT(DurationA, 5);

constexpr Function IRRA{
    .name = "IRRA",
    .category = category,
    .calls = core<qx::IRRA>,
    .help = "Internal Rate of Return of an annual stream of cashflows",
    .args = {annual_flows(), IRRMinOpt(), IRRMaxOpt(), IRRAccOpt()},
    .examples = {"IRRA({-100;110}) ~ 0.1 1e-9", "IRRA({100;100}) ! #NUM! errlibnotbracketed"},
    .see_also = "IRRM,IRRE,IRRT,PVA",
};
QX_EXPORT(IRRA, 4);

constexpr Function IRRAX{
    .name = "IRRAX",
    .category = category,
    .calls = core<qx::IRRAX>,
    .help = "Internal Rate of Return of an annual stream of cashflows, extended version, with the same result as IRRA",
    .args = {annual_flows(), IRRMinOpt(), IRRMaxOpt(), IRRAccOpt()},
    .examples = {"IRRAX({-100;110}) ~ 0.1 1e-9"},
    .see_also = "IRRA",
};
QX_EXPORT(IRRAX, 4);

constexpr Function PayBackA{
    .name = "PayBackA",
    .category = category,
    .calls = core<qx::PayBackA>,
    .help = "Payback date for Annual cash flows",
    .args = {annual_flows(), StartAnnDate(), MinPayBack(), Interpolate(), day_count("DCount"), PayBackOptions()},
    .examples = {"PayBackA({-100;60;60}, 2005) = DATE(2007,1,1)"},
    .see_also = "PayBackDiscA,PaybackE,PayBackT",
};
QX_EXPORT(PayBackA, 6);

constexpr Function PayBackDiscA{
    .name = "PayBackDiscA",
    .category = category,
    .calls = core<qx::PayBackDiscA>,
    .help = "Discounted Payback Date for Annual DCF: of the flows discounted to the first date",
    .args = {DisAER(), annual_flows(), StartAnnDate(), MinPayBack(), Interpolate(), DayCountDisc("DCountDisc"),
             PayBackOptions()},
    .examples = {"PayBackDiscA(0.2, {-100;60;60;60}, 2005) = DATE(2008,1,1)"},
    .see_also = "PayBackA,PayBackDiscE,PayBackDiscT",
};
QX_EXPORT(PayBackDiscA, 7);

constexpr Function PVA{
    .name = "PVA",
    .category = category,
    .calls = twin<qx::PVA>,
    .help = "Present Value of an annual stream of cashflows",
    .args = {NPVDate(), DisAER(), annual_flows(), StartAnnDate(), DayCountDisc("DCountDisc"), StartDCF(), FinishDCF()},
    .examples = {"PVA(2005, 0.1, {110;121}, 2006) ~ 200 1e-10", "PVA(2005, 0.1, {110;121}, 2006,,, 2007) ~ 100 1e-10"},
    .see_also = "NPVM,PVE,PVT,IRRA",
};
QX_EXPORT(PVA, 7);

// --- Cash flows received in the course of the year -------------------------------------------------------------------

constexpr Function AvLifeM{
    .name = "AvLifeM",
    .category = category,
    .calls = twin<qx::AvLifeM>,
    .help = "Average Life of annual cash flows that are each received PmtsPerYear times in the year up to their date",
    .args = {Start(), annual_flows(), StartAnnDate(), PmtsPerYear()},
    .examples = {"AvLifeM(2005, {100;100}, 2006, -4) ~ 1.125 1e-12"},
    .see_also = "AvLifeA,EffTimeM",
};
QX_EXPORT(AvLifeM, 4);

constexpr Function CorrectionCont{
    .name = "CorrectionCont",
    .category = category,
    .calls = core<qx::CorrectionCont>,
    .help = "Correction Factor to multiply an NPV for annually spaced cashflows to convert to cashflows spaced "
            "continuously throughout the year",
    .args = {DisAER()},
    .examples = {"CorrectionCont(0.1) ~ 1.049205868725707 1e-12", "CorrectionCont(0) = 1"},
    .see_also = "CorrectionM,CorrectionDC",
};
QX_EXPORT(CorrectionCont, 1);

constexpr Function CorrectionDC{
    .name = "CorrectionDC",
    .category = category,
    .calls = core<qx::CorrectionDC>,
    .help = "NPV Correction Factor for DayCount: for cash flows received on the dates of CashBasis in the year from "
            "NPVDate",
    .args = {NPVDate(), DisAER(), DayCount(), CashBasis()},
    .examples = {"CorrectionDC(2005, 0.1, 5, -4) ~ 1.036755508974635 1e-12"},
    .see_also = "CorrectionM,CorrectionCont",
};
QX_EXPORT(CorrectionDC, 4);

constexpr Function CorrectionM{
    .name = "CorrectionM",
    .category = category,
    .calls = core<qx::CorrectionM>,
    .help = "Correction Factor to multiply an NPV for annually spaced cashflows to convert to cashflows spaced over "
            "the year",
    .args = {DisAER(), PmtsPerYear()},
    .examples = {"CorrectionM(0.1, -4) ~ 1.036755508974635 1e-12", "CorrectionM(0, 4) = 1"},
    .see_also = "CorrectionCont,CorrectionDC,LCorrectionM,NPVM",
};
QX_EXPORT(CorrectionM, 2);

constexpr Function DurationM{
    .name = "DurationM",
    .category = category,
    .calls = twin<qx::DurationM>,
    .help =
        "Macaulay Duration of annual cash flows that are each received PmtsPerYear times in the year up to their date",
    .args = {NPVDate(), DisAER(), annual_flows(), StartAnnDate(), PmtsPerYear()},
    .examples = {"DurationM(2005, 0, {110;121}, 2006, -1) ~ 1.5238095238095237 1e-12"},
    .see_also = "DurationA,EffTimeM",
};
QX_EXPORT(DurationM, 5);

constexpr Function EffTimeM{
    .name = "EffTimeM",
    .category = category,
    .calls = core<qx::EffTimeM>,
    .help = "Effective Time when cashflow is dispersed over the year: years from its start at which it could be "
            "received at once",
    .args = {DisAER(), PmtsPerYear()},
    .examples = {"EffTimeM(0.1, -1) ~ 1 1e-12", "EffTimeM(0, -4) ~ 0.625 1e-12"},
    .see_also = "CorrectionM,DurationM",
};
QX_EXPORT(EffTimeM, 2);

constexpr Function IRRM{
    .name = "IRRM",
    .category = category,
    .calls = core<qx::IRRM>,
    .help = "IRR for cash flows that are annually specified that are assumed to take place at intervals over the year",
    .args = {annual_flows(), PmtsPerYear(), IRRMinOpt(), IRRMaxOpt(), IRRAccOpt()},
    .examples = {"IRRM({-100;110}, -4) ~ 0.1 1e-9"},
    .see_also = "IRRA,NPVM",
};
QX_EXPORT(IRRM, 5);

constexpr Function IRRMX{
    .name = "IRRMX",
    .category = category,
    .calls = core<qx::IRRMX>,
    .help = "IRR for cash flows that are annually specified that are assumed to take place at intervals over the year, "
            "extended version, with the same result as IRRM",
    .args = {annual_flows(), PmtsPerYear(), IRRMinOpt(), IRRMaxOpt(), IRRAccOpt()},
    .examples = {"IRRMX({-100;110}, -4) ~ 0.1 1e-9"},
    .see_also = "IRRM",
};
QX_EXPORT(IRRMX, 5);

constexpr Function LCorrectionM{
    .name = "LCorrectionM",
    .category = category,
    .calls = core<qx::LCorrectionM>,
    .help =
        "Average over a year of income that grows linearly in steps, over that of income that grows at the year's end",
    .args = {growth_rate(), GrowRevsPerYrOpt()},
    .examples = {"LCorrectionM(0.1, 4) ~ 1.0375 1e-12", "LCorrectionM(0.1, 0) ~ 1.05 1e-12"},
    .see_also = "CorrectionM,SumLGAnnM",
};
QX_EXPORT(LCorrectionM, 2);

constexpr Function NPVM{
    .name = "NPVM",
    .category = category,
    .calls = twin<qx::NPVM>,
    .help = "Present Value of annual cash flows that are annually specified that are assumed to take place at "
            "intervals over the year",
    .args = {NPVDate(), DisAER(), annual_flows(), StartAnnDate(), PmtsPerYear()},
    .examples = {"NPVM(2005, 0.1, {110;121}, 2006, -1) ~ 200 1e-10",
                 "NPVM(2005, 0.1, {110;121}, 2006, -4) ~ 207.3511017949270 1e-10"},
    .see_also = "PVA,IRRM,CorrectionM",
};
QX_EXPORT(NPVM, 5);

// --- A single payment ------------------------------------------------------------------------------------------------

constexpr Function FPVOne{
    .name = "FPVOne",
    .category = category,
    .calls = twin<qx::FPVOne>,
    .help = "PV of a single payment using a discount rate that changes over time according to FromDates",
    .args = {TheDate("Date of the payment"),
             NPVDate(),
             rates_aer(),
             {"FromDates", "Dates from which the rates hold, ascending"},
             DayCountDisc(),
             PrdsDisc()},
    .examples = {"FPVOne(2007, 2005, {0.1;0.25}, {2005;2006}) ~ 0.7272727272727273 1e-12"},
    .see_also = "TPVOne,PVOne",
};
QX_EXPORT(FPVOne, 6);

constexpr Function PVOne{
    .name = "PVOne",
    .category = category,
    .calls = twin<qx::PVOne>,
    .help = "Determine the NPV of a future single payment of 1 dollar (ie a factor)",
    .args = {TheDate("Date of the payment"), NPVDate(), DisAER(), DayCountDisc(), PrdsDisc()},
    .examples = {"PVOne(2007, 2005, 0.25) ~ 0.64 1e-12"},
    .see_also = "PVOneQ,FPVOne,TPVOne,AERToDF",
};
QX_EXPORT(PVOne, 5);

constexpr Function PVOneQ{
    .name = "PVOneQ",
    .category = category,
    .calls = twin<qx::PVOneQ>,
    .help = "Determine the NPV of a future single payment of 1 dollar (Quick Version)",
    .args = {TheDate("Date of the payment"), NPVDate(), DisAER()},
    .examples = {"PVOneQ(2007, 2005, 0.25) ~ 0.64 1e-12"},
    .see_also = "PVOne",
};
QX_EXPORT(PVOneQ, 3);

constexpr Function TPVOne{
    .name = "TPVOne",
    .category = category,
    .calls = twin<qx::TPVOne>,
    .help = "PV of a single payment using a discount rate that changes over time according to ToDates",
    .args = {TheDate("Date of the payment"),
             NPVDate(),
             rates_aer(),
             {"ToDates", "Dates up to which the rates hold, ascending"},
             DayCountDisc(),
             PrdsDisc()},
    .examples = {"TPVOne(2007, 2005, {0.1;0.25}, {2006;2007}) ~ 0.7272727272727273 1e-12"},
    .see_also = "FPVOne,PVOne",
};
QX_EXPORT(TPVOne, 6);

// --- Cash flows at even intervals ------------------------------------------------------------------------------------

constexpr Function AvLifeE{
    .name = "AvLifeE",
    .category = category,
    .calls = twin<qx::AvLifeE>,
    .help = "Average Life of evenly spaced cash flows: the average of the years from Start, weighted by the flows",
    .args = {Start(), even_flows(), EvenTimeStart(), EvenTimeInterval()},
    .examples = {"AvLifeE(2005, {100;100}, 2005, 6) ~ 0.25 1e-12"},
    .see_also = "AvLifeA,AvLifeT,DurationE",
};
QX_EXPORT(AvLifeE, 4);

constexpr Function DurationE{
    .name = "DurationE",
    .category = category,
    .calls = twin<qx::DurationE>,
    .help = "Macaulay Duration of evenly spaced cash flows in years",
    .args = {NPVDate(), DisAER(), even_flows(), EvenTimeStart(), EvenTimeInterval()},
    .examples = {"DurationE(2005, 0.21, {110;121}, 2005.5, 6) ~ 0.75 1e-12"},
    .see_also = "DurationA,DurationT,AvLifeE",
};
QX_EXPORT(DurationE, 5);

constexpr Function IRRE{
    .name = "IRRE",
    .category = category,
    .calls = core<qx::IRRE>,
    .help = "IRR for an evenly spaced (not necessarily annual) series of cashflows",
    .args = {even_flows(), EvenTimeInterval(), IRRMinOpt(), IRRMaxOpt(), IRRAccOpt()},
    .examples = {"IRRE({-100;110}, 6) ~ 0.21 1e-9"},
    .see_also = "IRRA,IRRT,PVE",
};
QX_EXPORT(IRRE, 5);

constexpr Function IRREX{
    .name = "IRREX",
    .category = category,
    .calls = core<qx::IRREX>,
    .help = "IRR for an evenly spaced (not necessarily annual) series of cashflows, extended version, with the same "
            "result as IRRE",
    .args = {even_flows(), EvenTimeInterval(), IRRMinOpt(), IRRMaxOpt(), IRRAccOpt()},
    .examples = {"IRREX({-100;110}, 6) ~ 0.21 1e-9"},
    .see_also = "IRRE",
};
QX_EXPORT(IRREX, 5);

constexpr Function PayBackDiscE{
    .name = "PayBackDiscE",
    .category = category,
    .calls = core<qx::PayBackDiscE>,
    .help = "Discounted Payback Date of evenly spaced cash flows, discounted to the first date",
    .args = {DisAER(), even_flows(), EvenTimeStart(), EvenTimeInterval(), MinPayBack(), Interpolate(),
             PayBackOptions()},
    .examples = {"PayBackDiscE(0.2, {-100;60;60}, 2005, 6) = DATE(2006,1,1)"},
    .see_also = "PaybackE,PayBackDiscT",
};
QX_EXPORT(PayBackDiscE, 7);

constexpr Function PaybackE{
    .name = "PaybackE",
    .category = category,
    .calls = core<qx::PaybackE>,
    .help = "Payback Date of evenly spaced cash flows",
    .args = {even_flows(), EvenTimeStart(), EvenTimeInterval(), MinPayBack(), Interpolate(), PayBackOptions()},
    .examples = {"PaybackE({-100;60;60}, 2005, 6) = DATE(2006,1,1)"},
    .see_also = "PayBackDiscE,PayBackT",
};
QX_EXPORT(PaybackE, 6);

constexpr Function PVE{
    .name = "PVE",
    .category = category,
    .calls = twin<qx::PVE>,
    .help = "NPV for an evenly spaced (not necessarily annual) series of cashflows",
    .args = {NPVDate(), DisAER(), even_flows(), EvenTimeStart(), EvenTimeInterval(), StartDCF(), FinishDCF()},
    .examples = {"PVE(2005, 0.21, {110;121}, 2005.5, 6) ~ 200 1e-10"},
    .see_also = "PVA,PVT,IRRE",
};
QX_EXPORT(PVE, 7);

// --- Cash flows on dates ---------------------------------------------------------------------------------------------

constexpr Function AvLifeT{
    .name = "AvLifeT",
    .category = category,
    .calls = twin<qx::AvLifeT>,
    .help = "Average Life of dated cash flows: the average of the years from Start, weighted by the flows",
    .args = {Start(), Dates(), Cashflows(), DayCountDisc(), PrdsDisc()},
    .examples = {"AvLifeT(2005, {2006;2008}, {100;300}) ~ 2.5 1e-12"},
    .see_also = "AvLifeA,DurationT",
};
QX_EXPORT(AvLifeT, 5);

constexpr Function DurationT{
    .name = "DurationT",
    .category = category,
    .calls = twin<qx::DurationT>,
    .help = "Macaulay Duration of dated cash flows in years: the average of the times, weighted by present values",
    .args = {NPVDate(), DisAER(), Dates(), Cashflows(), DayCountDisc(), PrdsDisc()},
    .examples = {"DurationT(2005, 0.1, {2006;2007}, {110;121}) ~ 1.5 1e-12"},
    .see_also = "DurationA,AvLifeT,PVT",
};
QX_EXPORT(DurationT, 6);

constexpr Function IRRT{
    .name = "IRRT",
    .category = category,
    .calls = core<qx::IRRT>,
    .help = "Internal Rate of Return of cashflows at specific times",
    .args = {Dates(), Cashflows(), IRRMinOpt(), IRRMaxOpt(), IRRAccOpt(), DayCountDisc(), PrdsDisc(), PVTOptions()},
    .examples = {"IRRT({2005;2006}, {-100;110}) ~ 0.1 1e-9", "IRRT({2005;2006}, {100;110}) ! #NUM! errlibnotbracketed"},
    .see_also = "IRRTX,IRRTIC,IRRTR,PVT,IRRA",
};
QX_EXPORT(IRRT, 8);

constexpr Function IRRTCX{
    .name = "IRRTCX",
    .category = category,
    .calls = core<qx::IRRTCX>,
    .help = "Internal Rate of Return of up to four lists of dated cash flows, those from FinishDCF on taken as a "
            "capital value then",
    .args = {Dates(), Cashflows(), IRRMinOpt(), IRRMaxOpt(), IRRAccOpt(), DayCountDisc(), PrdsDisc(), CapRateAER(),
             StartDCF(), capital_date(), CapOption(), PVTOptions(), Dates2("Dates2"), Flows2("Cashflows2"),
             Dates2("Dates3"), Flows2("Cashflows3"), Dates2("Dates4"), Flows2("Cashflows4")},
    .examples = {"IRRTCX({2005;2006;2007}, {-100;0;121},,,,,, 0.1,, 2006) ~ 0.1 1e-9"},
    .see_also = "IRRTX,IRRTIC,PVTCX",
};
QX_EXPORT(IRRTCX, 18);

constexpr Function IRRTIC{
    .name = "IRRTIC",
    .category = category,
    .calls = core<qx::IRRTIC>,
    .help = "Internal Rate of Return of dated cash flows after an investment, those from FinishDCF on taken as a "
            "capital value then",
    .args = {Dates(), Cashflows(), IRRMinOpt(), IRRMaxOpt(), IRRAccOpt(), DayCountDisc(), PrdsDisc(), InvDate(),
             InvAmt(), CapRateAER(), StartDCF(), capital_date(), CapOption(), PVTOptions()},
    .examples = {"IRRTIC(2006, 110,,,,,, 2005, 100) ~ 0.1 1e-9"},
    .see_also = "IRRT,IRRTCX,PVTIC",
};
QX_EXPORT(IRRTIC, 14);

constexpr Function IRRTR{
    .name = "IRRTR",
    .category = category,
    .calls = core<qx::IRRTR>,
    .help = "IRR between a FromDate and a ToDate with time-dependent Realisation: dated cash flows before a date on "
            "which a level is realised",
    .args = {RealisationDate(), Dates(), Cashflows(), RealisationLevels(), IRRMinOpt(), IRRMaxOpt(), IRRAccOpt(),
             DayCountDisc(), PrdsDisc(), StartDCF(), FinishDCF(), PVTOptions()},
    .examples = {"IRRTR(2006, {2005;2007}, {-100;50}, {0;110}) ! #NUM! errlibnotbracketed",
                 "IRRTR(2006, {2005;2006}, {-100;50}, {0;110}) ~ 0.1 1e-9"},
    .see_also = "IRRT,PVTR",
};
QX_EXPORT(IRRTR, 12);

constexpr Function IRRTX{
    .name = "IRRTX",
    .category = category,
    .calls = core<qx::IRRTX>,
    .help = "Internal Rate of Return of up to four lists of dated cash flows",
    .args = {Dates(), Cashflows(), IRRMinOpt(), IRRMaxOpt(), IRRAccOpt(), DayCountDisc(), PrdsDisc(), StartDCF(),
             FinishDCF(), PVTOptions(), Dates2("Dates2"), Flows2("Cashflows2"), Dates2("Dates3"), Flows2("Cashflows3"),
             Dates2("Dates4"), Flows2("Cashflows4")},
    .examples = {"IRRTX(2005, -100,,,,,,,,, 2006, 110) ~ 0.1 1e-9"},
    .see_also = "IRRT,PVTX",
};
QX_EXPORT(IRRTX, 16);

constexpr Function PayBackDiscT{
    .name = "PayBackDiscT",
    .category = category,
    .calls = core<qx::PayBackDiscT>,
    .help = "Discounted Payback Date of dated cash flows, discounted to the first date",
    .args = {DisAER(), Dates(), Cashflows(), MinPayBack(), Interpolate(), DayCountDisc(), PrdsDisc(), PayBackOptions()},
    .examples = {"PayBackDiscT(0.2, {2005;2006;2007;2008}, {-100;60;60;60}) = DATE(2008,1,1)"},
    .see_also = "PayBackT,PayBackDiscA",
};
QX_EXPORT(PayBackDiscT, 8);

constexpr Function PayBackT{
    .name = "PayBackT",
    .category = category,
    .calls = core<qx::PayBackT>,
    .help = "Payback Date of dated cash flows",
    .args = {Dates(), Cashflows(), MinPayBack(), Interpolate(), DayCount(), Periods(), PayBackOptions()},
    .examples = {"PayBackT({2005;2006;2007}, {-100;60;60}) = DATE(2007,1,1)",
                 "PayBackT({2005;2006;2007}, {-100;50;100},, TRUE) = DATE(2006,7,1)",
                 "PayBackT({2005;2006}, {-100;50}) ! #NUM! errlibnopayback"},
    .see_also = "PayBackDiscT,PayBackA",
};
QX_EXPORT(PayBackT, 7);

constexpr Function PVT{
    .name = "PVT",
    .category = category,
    .calls = twin<qx::PVT>,
    .help = "Present Value of cashflows at specific Dates",
    .args = {NPVDate(), DisAER(), Dates(), Cashflows(), DayCountDisc(), PrdsDisc(), StartDCF(), FinishDCF(),
             PVTOptions()},
    .examples = {"PVT(2005, 0.1, {2006;2007}, {110;121}) ~ 200 1e-10",
                 "PVT(2007, 0.1, {2006;2007}, {110;121}) ~ 242 1e-10"},
    .see_also = "PVTX,PVTIC,PVTR,PVTSFX,IRRT",
};
QX_EXPORT(PVT, 9);

constexpr Function PVTCX{
    .name = "PVTCX",
    .category = category,
    .calls = twin<qx::PVTCX>,
    .help =
        "Present value of up to four lists of dated cash flows, those from FinishDCF on taken as a capital value then",
    .args = {NPVDate(),
             DisAER(),
             Dates(),
             Cashflows(),
             not_used("IRRMinOpt", -0.99999),
             not_used("IRRMaxOpt", 10000.0),
             not_used("IRRAccOpt", 1e-10),
             DayCountDisc(),
             PrdsDisc(),
             CapRateAER(),
             StartDCF(),
             capital_date(),
             CapOption(),
             PVTOptions(),
             Dates2("Dates2"),
             Flows2("Cashflows2"),
             Dates2("Dates3"),
             Flows2("Cashflows3"),
             Dates2("Dates4"),
             Flows2("Cashflows4")},
    .examples = {"PVTCX(2005, 0.1, {2005.5;2007}, {0;125},,,,,, 0.25,, 2006) ~ 90.9090909090909 1e-10"},
    .see_also = "PVTX,PVTIC,IRRTCX",
};
QX_EXPORT(PVTCX, 20);

constexpr Function PVTIC{
    .name = "PVTIC",
    .category = category,
    .calls = twin<qx::PVTIC>,
    .help = "PVT with Investment and Capitalisation",
    .args = {NPVDate(), DisAER(), Dates(), Cashflows(), DayCountDisc(), PrdsDisc(), InvDate(), InvAmt(), CapRateAER(),
             StartDCF(), capital_date(), CapOption(), PVTOptions()},
    .examples = {"PVTIC(2005, 0.1, 2006, 110,,, 2005, 60) ~ 40 1e-10"},
    .see_also = "PVT,PVTCX,IRRTIC",
};
QX_EXPORT(PVTIC, 13);

constexpr Function PVTR{
    .name = "PVTR",
    .category = category,
    .calls = twin<qx::PVTR>,
    .help = "PV of cashflows between a FromDate and a ToDate with time-dependent Realisation balances",
    .args = {NPVDate(), DisAER(), RealisationDate(), Dates(), Cashflows(), RealisationLevels(), DayCountDisc(),
             PrdsDisc(), StartDCF(), FinishDCF(), PVTOptions()},
    .examples = {"PVTR(2005, 0.1, 2006.5, {2006;2007}, {110;121}, {0;0}) ~ 100 1e-10"},
    .see_also = "PVT,IRRTR",
};
QX_EXPORT(PVTR, 11);

constexpr Function PVTSFX{
    .name = "PVTSFX",
    .category = category,
    .calls = twin<qx::PVTSFX>,
    .help = "PV specific times, Simple Interest, with Start and Finish Dates",
    .args = {NPVDate(), FromDatesInt(), IntSimple(), Dates(), Cashflows(), DayCountDisc(), PrdsDisc(), StartDCF(),
             FinishDCF()},
    .examples = {"PVTSFX(2005, 2005, 0.08, {2005.25;2006}, {102;108.243216}) ~ 200 1e-9"},
    .see_also = "PVT,SimpleToDFX,PVFInterest",
};
QX_EXPORT(PVTSFX, 9);

constexpr Function PVTX{
    .name = "PVTX",
    .category = category,
    .calls = twin<qx::PVTX>,
    .help = "PVT Extended: the present value of up to four lists of dated cash flows",
    .args = {NPVDate(), DisAER(), Dates(), Cashflows(), DayCountDisc(), PrdsDisc(), StartDCF(), FinishDCF(),
             PVTOptions(), Dates2("Dates2"), Flows2("Cashflows2"), Dates2("Dates3"), Flows2("Cashflows3"),
             Dates2("Dates4"), Flows2("Cashflows4")},
    .examples = {"PVTX(2005, 0.1, 2006, 110,,,,,, 2007, 121) ~ 200 1e-10"},
    .see_also = "PVT,IRRTX",
};
QX_EXPORT(PVTX, 15);

} // namespace qx::worksheet
