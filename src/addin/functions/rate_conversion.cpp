// Worksheet functions that convert interest rates from one form to another.
#include "rates/rate_conversion.h"
#include "addin/declare.h"
#include "projections/simple_rates.h"
#include "rates/quoted_rates.h"

namespace qx::worksheet {

namespace {

constexpr Category category = Category::TimeValueOfMoney;

constexpr Argument DiscountFactor() {
    return {"DiscountFactor", "Value at the first date of 1 at the second; below 1 for a positive rate"};
}
constexpr Argument accrual_day_count(const char* name = "DayCountDisc") {
    return optional(name, 5.0,
                    "Day count convention by which the interest accrues, 0 to 999: 0 30/360 PSA, 2 actual/360, 3 "
                    "actual/365, 4 30E/360, 5 decimal year, 6 actual/actual in period",
                    "Actual Days/Actual Days In Month ('Decimal Year')")
        .of(day_count_values);
}
constexpr Argument accrual_periods() {
    return sequence("PrdsDisc", -4,
                    "Dates in the year on which interest is capitalised, in arrears: -1, -2, -4, -12 or a range of "
                    "figures that begins with -mm.dd; quarterly in arrears if omitted")
        .of(sequence_values);
}
constexpr Argument accrual_periods(const char* name) {
    return Argument{name, "Dates in the year on which interest is capitalised, in arrears: -1, -2, -4, -12 or a "
                          "range of figures that begins with -mm.dd"}
        .of(sequence_values);
}
constexpr Argument MarginOpt() {
    return optional("MarginOpt", 0.0,
                    "Margin on the rate. If it is not zero, then Total interest rate = Interest Rate + Margin");
}
constexpr Argument LoanAmount() { return {"LoanAmount", "Amount lent, before fees"}; }
constexpr Argument Fees() { return {"Fees", "Fees that the borrower pays when the loan is drawn"}; }
constexpr Argument payments_in_arrears() {
    return {"PmtsPerYear", "Number of level payments per year, negative: in arrears (-12 is monthly)"};
}

} // namespace

// --- Closed forms -----------------------------------------------------------------------------------------------

constexpr Function AERToCont{
    .name = "AERToCont",
    .category = category,
    .calls = core<qx::AERToCont>,
    .help = "Converts an annual equivalent rate to a continuously compounded rate",
    .args = {InterestAER()},
    .examples = {"AERToCont(0.1) ~ 0.0953101798043249 1e-14"},
    .see_also = "ContToAER,AERToSimple,AERToDF",
};
QX_EXPORT(AERToCont, 1);

constexpr Function AERToDF{
    .name = "AERToDF",
    .category = category,
    .calls = core<qx::AERToDF>,
    .help = "Converts an annual equivalent rate to the discount factor from one date to another",
    .args = {InterestAER(), FromDate(), ToDate(), DayCount(), Periods()},
    .examples = {"AERToDF(0.1, 2005, 2007) ~ 0.8264462809917356 1e-14", "AERToDF(0.1, 2007, 2005) ~ 1.21 1e-14"},
    .see_also = "DFToAER,ContToDF,SimpleToDF,PVOne",
};
QX_EXPORT(AERToDF, 5);

constexpr Function AERToSimple{
    .name = "AERToSimple",
    .category = category,
    .calls = core<qx::AERToSimple>,
    .help = "Converts an annual equivalent rate to a simple rate quoted with a payment frequency",
    .args = {InterestAER(), PmtsPerYear()},
    .examples = {"AERToSimple(0.1, -4) ~ 0.0964547563377805 1e-14", "AERToSimple(0.1, 0) ~ 0.1 1e-14"},
    .see_also = "SimpleToAER,SimpleToSimple,AERToSimpleX",
};
QX_EXPORT(AERToSimple, 2);

constexpr Function APRToCont{
    .name = "APRToCont",
    .category = category,
    .calls = core<qx::APRToCont>,
    .help = "Superceded by AER (annual equivalent rate) equivalent, no change in math: AERToCont",
    .args = {InterestAER("InterestAPR")},
    .examples = {"APRToCont(0.1) ~ 0.0953101798043249 1e-14"},
    .see_also = "AERToCont",
};
QX_EXPORT(APRToCont, 1);

constexpr Function APRToDF{
    .name = "APRToDF",
    .category = category,
    .calls = core<qx::APRToDF>,
    .help = "Superceded by AER (annual equivalent rate) equivalent, no change in math: AERToDF",
    .args = {InterestAER("InterestAPR"), FromDate(), ToDate(), DayCount(), Periods()},
    .examples = {"APRToDF(0.1, 2005, 2007) ~ 0.8264462809917356 1e-14"},
    .see_also = "AERToDF",
};
QX_EXPORT(APRToDF, 5);

constexpr Function APRToSimple{
    .name = "APRToSimple",
    .category = category,
    .calls = core<qx::APRToSimple>,
    .help = "Superceded by AER (annual equivalent rate) equivalent, no change in math: AERToSimple",
    .args = {InterestAER("InterestAPR"), PmtsPerYear()},
    .examples = {"APRToSimple(0.1, -4) ~ 0.0964547563377805 1e-14"},
    .see_also = "AERToSimple",
};
QX_EXPORT(APRToSimple, 2);

constexpr Function ContToAER{
    .name = "ContToAER",
    .category = category,
    .calls = core<qx::ContToAER>,
    .help = "Converts a continuously compounded rate to an annual equivalent rate",
    .args = {InterestCont()},
    .examples = {"ContToAER(0.1) ~ 0.1051709180756476 1e-14"},
    .see_also = "AERToCont,ContToSimple,ContToDF",
};
QX_EXPORT(ContToAER, 1);

constexpr Function ContToAPR{
    .name = "ContToAPR",
    .category = category,
    .calls = core<qx::ContToAPR>,
    .help = "Superceded by AER (annual equivalent rate) equivalent, no change in math: ContToAER",
    .args = {InterestCont()},
    .examples = {"ContToAPR(0.1) ~ 0.1051709180756476 1e-14"},
    .see_also = "ContToAER",
};
QX_EXPORT(ContToAPR, 1);

constexpr Function ContToDF{
    .name = "ContToDF",
    .category = category,
    .calls = core<qx::ContToDF>,
    .help = "Converts a continuously compounded rate to the discount factor from one date to another",
    .args = {InterestCont(), FromDate(), ToDate(), DayCount(), Periods()},
    .examples = {"ContToDF(0.1, 2005, 2007) ~ 0.8187307530779818 1e-14"},
    .see_also = "DFToCont,AERToDF",
};
QX_EXPORT(ContToDF, 5);

constexpr Function ContToSimple{
    .name = "ContToSimple",
    .category = category,
    .calls = core<qx::ContToSimple>,
    .help = "Converts a continuously compounded rate to a simple rate quoted with a payment frequency",
    .args = {InterestCont(), PmtsPerYear()},
    .examples = {"ContToSimple(0.1, -4) ~ 0.1012604820977154 1e-14"},
    .see_also = "SimpleToCont,ContToSimpleX",
};
QX_EXPORT(ContToSimple, 2);

constexpr Function DFToAER{
    .name = "DFToAER",
    .category = category,
    .calls = core<qx::DFToAER>,
    .help = "Converts the discount factor from one date to another to an annual equivalent rate",
    .args = {DiscountFactor(), FromDate(), ToDate(), DayCount(), Periods()},
    .examples = {"DFToAER(0.8, 2005, 2007) ~ 0.1180339887498948 1e-14", "DFToAER(0.8, 2005, 2005) = 0"},
    .see_also = "AERToDF,DFToCont,DFToSimple",
};
QX_EXPORT(DFToAER, 5);

constexpr Function DFToAPR{
    .name = "DFToAPR",
    .category = category,
    .calls = core<qx::DFToAPR>,
    .help = "Superceded by AER (annual equivalent rate) equivalent, no change in math: DFToAER",
    .args = {DiscountFactor(), FromDate(), ToDate(), DayCount(), Periods()},
    .examples = {"DFToAPR(0.8, 2005, 2007) ~ 0.1180339887498948 1e-14"},
    .see_also = "DFToAER",
};
QX_EXPORT(DFToAPR, 5);

constexpr Function DFToCont{
    .name = "DFToCont",
    .category = category,
    .calls = core<qx::DFToCont>,
    .help = "Converts the discount factor from one date to another to a continuously compounded rate",
    .args = {DiscountFactor(), FromDate(), ToDate(), DayCount(), Periods()},
    .examples = {"DFToCont(0.8, 2005, 2007) ~ 0.1115717756571049 1e-14"},
    .see_also = "ContToDF,DFToAER",
};
QX_EXPORT(DFToCont, 5);

constexpr Function DFToSimple{
    .name = "DFToSimple",
    .category = category,
    .calls = core<qx::DFToSimple>,
    .help = "Converts the discount factor from one date to another to a simple rate quoted with a payment frequency",
    .args = {DiscountFactor(), PmtsPerYear(), FromDate(), ToDate(), DayCount(), Periods()},
    .examples = {"DFToSimple(0.8, -1, 2005, 2007) ~ 0.1180339887498948 1e-14"},
    .see_also = "SimpleToDF,DFToSimpleX",
};
QX_EXPORT(DFToSimple, 6);

constexpr Function SimpleToAER{
    .name = "SimpleToAER",
    .category = category,
    .calls = core<qx::SimpleToAER>,
    .help = "Converts a simple rate quoted with a payment frequency to an annual equivalent rate",
    .args = {InterestSimple(), PmtsPerYear()},
    .examples = {"SimpleToAER(0.1, -4) ~ 0.103812890625 1e-14", "SimpleToAER(0.1, 4) ~ 0.1065767400162788 1e-14"},
    .see_also = "AERToSimple,SimpleToSimple,SimpleToAERX",
};
QX_EXPORT(SimpleToAER, 2);

constexpr Function SimpleToAPR{
    .name = "SimpleToAPR",
    .category = category,
    .calls = core<qx::SimpleToAPR>,
    .help = "Superceded by AER (annual equivalent rate) equivalent, no change in math: SimpleToAER",
    .args = {InterestSimple(), PmtsPerYear()},
    .examples = {"SimpleToAPR(0.1, -4) ~ 0.103812890625 1e-14"},
    .see_also = "SimpleToAER",
};
QX_EXPORT(SimpleToAPR, 2);

constexpr Function SimpleToCont{
    .name = "SimpleToCont",
    .category = category,
    .calls = core<qx::SimpleToCont>,
    .help = "Converts a simple rate quoted with a payment frequency to a continuously compounded rate",
    .args = {InterestSimple(), PmtsPerYear()},
    .examples = {"SimpleToCont(0.1, -4) ~ 0.098770450361486 1e-14"},
    .see_also = "ContToSimple,SimpleToContX",
};
QX_EXPORT(SimpleToCont, 2);

constexpr Function SimpleToDF{
    .name = "SimpleToDF",
    .category = category,
    .calls = core<qx::SimpleToDF>,
    .help = "Converts a simple rate quoted with a payment frequency to the discount factor from one date to another",
    .args = {InterestSimple(), PmtsPerYear(), FromDate(), ToDate(), DayCount(), Periods()},
    .examples = {"SimpleToDF(0.1, -4, 2005, 2006) ~ 0.9059506447997548 1e-14"},
    .see_also = "DFToSimple,SimpleToDFX",
};
QX_EXPORT(SimpleToDF, 6);

constexpr Function SimpleToSimple{
    .name = "SimpleToSimple",
    .category = category,
    .calls = core<qx::SimpleToSimple>,
    .help = "Converts a simple rate quoted with one payment frequency to one quoted with another",
    .args = {InterestSimple(), PmtsPerYear("PmtsPerYrSrce"), PmtsPerYear("PmtsPerYrTarg")},
    .examples = {"SimpleToSimple(0.1, -4, -12) ~ 0.0991780513086264 1e-14"},
    .see_also = "SimpleToAER,SimpleToSimpleX,RateConvert",
};
QX_EXPORT(SimpleToSimple, 3);

constexpr Function TermRate{
    .name = "TermRate",
    .category = category,
    .calls = core<qx::TermRate>,
    .help = "The interest of a whole term: the growth over it at an annual equivalent rate, less 1",
    .args = {InterestAER(), TermYrs()},
    .examples = {"TermRate(0.1, 2) ~ 0.21 1e-14"},
    .see_also = "AERToDF",
};
QX_EXPORT(TermRate, 2);

// --- Simple rates on dates --------------------------------------------------------------------------------------

constexpr Function AERToSimpleX{
    .name = "AERToSimpleX",
    .category = category,
    .calls = core<qx::AERToSimpleX>,
    .help = "Converts an annual equivalent rate to the simple rate that accrues to the same between two dates",
    .args = {InterestAER(), FromDate(), ToDate(), accrual_day_count(), accrual_periods()},
    .examples = {"AERToSimpleX(0.1, 2005, 2006) ~ 0.0964547563377805 1e-10"},
    .see_also = "SimpleToAERX,AERToSimple,RateConvert",
};
QX_EXPORT(AERToSimpleX, 5);

constexpr Function APRToSimpleX{
    .name = "APRToSimpleX",
    .category = category,
    .calls = core<qx::APRToSimpleX>,
    .help = "Superceded by AER (annual equivalent rate) equivalent, no change in math: AERToSimpleX",
    .args = {InterestAER("InterestAPR"), FromDate(), ToDate(), accrual_day_count(), accrual_periods()},
    .examples = {"APRToSimpleX(0.1, 2005, 2006) ~ 0.0964547563377805 1e-10"},
    .see_also = "AERToSimpleX",
};
QX_EXPORT(APRToSimpleX, 5);

constexpr Function ContToSimpleX{
    .name = "ContToSimpleX",
    .category = category,
    .calls = core<qx::ContToSimpleX>,
    .help = "Converts a continuously compounded rate to the simple rate that accrues to the same between two dates",
    .args = {InterestCont(), FromDate(), ToDate(), accrual_day_count(), accrual_periods()},
    .examples = {"ContToSimpleX(0.1, 2005, 2006) ~ 0.1012604820977154 1e-10"},
    .see_also = "SimpleToContX,ContToSimple",
};
QX_EXPORT(ContToSimpleX, 5);

constexpr Function DFToSimpleX{
    .name = "DFToSimpleX",
    .category = category,
    .calls = core<qx::DFToSimpleX>,
    .help = "The simple rate that gives a discount factor between two dates, by accrual under a day count",
    .args = {DiscountFactor(), FromDate(), ToDate(), accrual_day_count(), accrual_periods()},
    .examples = {"DFToSimpleX(0.9, 2005, 2006) ~ 0.1067603843213639 1e-10"},
    .see_also = "SimpleToDFX,DFToSimple",
};
QX_EXPORT(DFToSimpleX, 5);

constexpr Function RateConvert{
    .name = "RateConvert",
    .category = category,
    .calls = core<qx::RateConvert>,
    .help =
        "Converts simple rates that change on dates, with a margin, from one rule of accrual to the one simple rate "
        "under another",
    .args = {FromDatesInt(), IntSimple(), FromDate(), ToDate(), accrual_day_count("DayCountSource"),
             accrual_day_count("DayCountTarget"), accrual_periods("PrdsSource"), accrual_periods("PrdsTarget"),
             MarginOpt()},
    .examples = {"RateConvert(2005, 0.1, 2005, 2006, 5, 5, -4, -12) ~ 0.0991780513086264 1e-10"},
    .see_also = "SimpleToSimpleX,SimpleToSimple",
};
QX_EXPORT(RateConvert, 9);

constexpr Function SimpleToAERX{
    .name = "SimpleToAERX",
    .category = category,
    .calls = core<qx::SimpleToAERX>,
    .help = "Converts simple rates that change on dates to the annual equivalent rate between two dates, by accrual "
            "under a day count",
    .args = {FromDatesInt(), IntSimple(), FromDate(), ToDate(), accrual_day_count(), accrual_periods()},
    .examples = {"SimpleToAERX(2005, 0.1, 2005, 2007) ~ 0.103812890625 1e-12"},
    .see_also = "AERToSimpleX,SimpleToAER",
};
QX_EXPORT(SimpleToAERX, 6);

constexpr Function SimpleToAPRX{
    .name = "SimpleToAPRX",
    .category = category,
    .calls = core<qx::SimpleToAPRX>,
    .help = "Superceded by AER (annual equivalent rate) equivalent, no change in math: SimpleToAERX",
    .args = {FromDatesInt(), IntSimple(), FromDate(), ToDate(), accrual_day_count(), accrual_periods()},
    .examples = {"SimpleToAPRX(2005, 0.1, 2005, 2007) ~ 0.103812890625 1e-12"},
    .see_also = "SimpleToAERX",
};
QX_EXPORT(SimpleToAPRX, 6);

constexpr Function SimpleToContX{
    .name = "SimpleToContX",
    .category = category,
    .calls = core<qx::SimpleToContX>,
    .help = "Converts simple rates that change on dates to the continuously compounded rate between two dates, by "
            "accrual under a day count",
    .args = {FromDatesInt(), IntSimple(), FromDate(), ToDate(), accrual_day_count(), accrual_periods()},
    .examples = {"SimpleToContX(2005, 0.1, 2005, 2007) ~ 0.098770450361486 1e-12"},
    .see_also = "ContToSimpleX,SimpleToCont",
};
QX_EXPORT(SimpleToContX, 6);

constexpr Function SimpleToDFX{
    .name = "SimpleToDFX",
    .category = category,
    .calls = core<qx::SimpleToDFX>,
    .help = "The discount factor between two dates of simple rates that change on dates: interest accrues under a day "
            "count and is compounded on the dates of a sequence",
    .args = {FromDatesInt(), IntSimple(), FromDate(), ToDate(), accrual_day_count(), accrual_periods()},
    .examples = {"SimpleToDFX({2005;2006}, {0.08;0.1}, 2005, 2007, 5, -1) ~ 0.8417508417508418 1e-12"},
    .see_also = "DFToSimpleX,SimpleToDF,PVTSFX",
};
QX_EXPORT(SimpleToDFX, 6);

constexpr Function SimpleToSimpleX{
    .name = "SimpleToSimpleX",
    .category = category,
    .calls = core<qx::SimpleToSimpleX>,
    .help = "Converts simple rates that change on dates from one rule of accrual to the one simple rate under another",
    .args = {FromDatesInt(), IntSimple(), FromDate(), ToDate(), accrual_day_count("DayCountSource"),
             accrual_day_count("DayCountTarget"), accrual_periods("PrdsSource"), accrual_periods("PrdsTarget")},
    .examples = {"SimpleToSimpleX(2005, 0.1, 2005, 2006, 5, 5, -4, -12) ~ 0.0991780513086264 1e-10"},
    .see_also = "RateConvert,SimpleToSimple",
};
QX_EXPORT(SimpleToSimpleX, 8);

// --- Quoted rates -----------------------------------------------------------------------------------------------

constexpr Function APRToQuoted{
    .name = "APRToQuoted",
    .category = category,
    .calls = core<qx::APRToQuoted>,
    .help =
        "The quoted rate of a loan with fees that comes to a given annual percentage rate (US style: a simple rate)",
    .args = {LoanAmount(),
             Fees(),
             {"USAPR", "Annual percentage rate, US style: a simple annual rate"},
             TermYrs(),
             payments_in_arrears()},
    .examples = {"APRToQuoted(100000, 0, 0.07, 30, -12) ~ 0.07 1e-9"},
    .see_also = "QuotedToAPR",
};
QX_EXPORT(APRToQuoted, 5);

constexpr Function QuotedToAPR{
    .name = "QuotedToAPR",
    .category = category,
    .calls = core<qx::QuotedToAPR>,
    .help = "The annual percentage rate (US style: a simple rate) of a loan with fees that is quoted at a rate",
    .args = {LoanAmount(),
             Fees(),
             TermYrs(),
             {"QuotedRate", "Simple annual rate by which the payments are set"},
             payments_in_arrears()},
    .examples = {"QuotedToAPR(100000, 0, 30, 0.07, -12) ~ 0.07 1e-9"},
    .see_also = "APRToQuoted,IntRateM",
};
QX_EXPORT(QuotedToAPR, 5);

} // namespace qx::worksheet
