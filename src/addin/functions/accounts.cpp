// Worksheet functions of bank accounts: over one period, and simulated over a time line.
#include "banking/accounts.h"
#include "addin/declare.h"
#include "banking/accounts_simulation.h"
#include "projections/interest.h"

namespace qx::worksheet {

namespace {

constexpr Category category = Category::Banking;

// --- Over one period -------------------------------------------------------------------------------------------------

constexpr Argument BFBalance() {
    return {"BFBalance", "Balance brought forward: owed positive, cash in the bank negative"};
}
constexpr Argument CashFlow() {
    return {"CashFlow", "Net cash flow of the period, spread evenly over it; positive reduces what is owed"};
}
constexpr Argument AcctOutput() {
    return optional("AcctOutput", account_principal,
                    "0 principal (end balance less BFBalance), 1 interest (paid negative), 2 both, 3 BFBalance, 4 "
                    "average balance, 5 end balance",
                    "principal")
        .of(account_figure_values);
}
constexpr Argument IntAERDebt() { return InterestAER("IntAERDebt"); }
constexpr Argument IntAERCash() { return InterestAER("IntAERCash"); }

// --- Simulated ------------------------------------------------------------------------------------------------------

constexpr Argument Timebase() {
    return Argument{"Timebase",
                    "Dates on which the periods start, ascending; the last period is as long as the one before it"}
        .in_ascending_order();
}
constexpr Argument rates_from() { return FromDatesInt(); }
constexpr Argument rate(const char* name, const char* help) { return {name, help}; }
constexpr Argument IntLoan() {
    return rate("IntLoan", "Simple annual interest rates of long-term loans as fractions, one for each of the dates or "
                           "one for all");
}
constexpr Argument IntCash() {
    return rate("IntCash", "Simple annual interest rates of cash as fractions, one for each of the dates or one for "
                           "all");
}
constexpr Argument IntSTD() {
    return rate("IntSTD", "Simple annual interest rates of short-term debt as fractions, one for each of the dates or "
                          "one for all");
}
constexpr ArgumentGroup account_flows() {
    return {Argument{"CFTimes", "Dates of the cash flows, ascending"}.in_ascending_order(),
            {"Cashflows", "Cash flows, one for each date: received positive, paid negative"}};
}
constexpr ArgumentGroup borrowing() {
    return {{"Threshold", "Liquidity (cash less short-term debt) that long-term loans maintain; negative lets "
                          "short-term debt rise to that amount first"},
            {"Tranche", "Amount of which each loan is a multiple; 0 for loans of what is required"}};
}
constexpr Argument LoanTerm() { return {"LoanTerm", "Term of each loan in years, repaid at its end; 0 for no loans"}; }
constexpr ArgumentGroup opening_balances() {
    return {optional("OBCash", 0.0, "Opening balance of cash: zero or negative (cash in the bank)"),
            optional("OBSTD", 0.0, "Opening balance of short-term debt: zero or positive")};
}
constexpr const char* margin_help =
    "Simple annual rates of an external margin on debt as fractions, one for each of FromDEM or one for all; no margin "
    "if omitted";
constexpr Argument FromDEM() {
    return optional("FromDEM", "Dates from which the rates of the external margin hold, ascending")
        .in_ascending_order();
}
constexpr Argument STDOptions() {
    return optional("Options", 0, "32 writes the calculation to the file qx_LoanAcctEM.qxl", "none");
}
constexpr Argument LoanOptions() {
    return optional("Options", 0,
                    "Sum of options: 1 a loan keeps the rate of its start, 2 loans on dates of PrdsLoan only, 32 "
                    "writes the calculation to the file qx_LoanAcctEM.qxl",
                    "none");
}
constexpr const char* margin_options =
    "Sum of options: 1 a loan keeps the rate of its start, 2 loans on dates of PrdsLoan only, 4 margin basis as on "
    "dates of PrdsEM (else average), 8 basis is short-term debt alone, 16 loans alone, 32 writes "
    "qx_LoanAcctEM.qxl";
constexpr const char* outputs =
    "0 principal, 1 interest, 2 both; 3 start, 4 average (since the first movement), 5 end balance of the whole "
    "account. 10 to 15 the same of loans, 20 to 25 short-term debt, 30 to 35 cash. 16 loan repayments, 17 advances";
constexpr const char* outputs_with_margin =
    "0 principal, 1 interest, 2 both; 3 start, 4 average (since the first movement), 5 end balance of the account. 10 "
    "to 15 the same of loans, 20 to 25 short-term debt, 30 to 35 cash, 40 to 45 external margin. 16 loan repayments, "
    "17 advances";
constexpr Argument LAOutput(const char* help) {
    return optional("LAOutput", 0, help, "principal of the whole account")
        .of(SwitchTable(account_output_values).first(outputs_without_fund));
}
constexpr Argument day_count(const char* name) { return DayCount().renamed(name); }
constexpr Argument paid_on(const char* name, const char* help) {
    return sequence(name, -4, help, DefaultSequence::in_arrears);
}
constexpr Argument PrdsLoan() {
    return paid_on("PrdsLoan", "Dates in the year on which interest on loans is paid: -1, -2, -4, -12 in arrears, or a "
                               "range of mm.dd figures; quarterly in arrears if omitted");
}
constexpr Argument PrdsCash() {
    return paid_on("PrdsCash",
                   "Dates in the year on which interest on cash is received: -1, -2, -4, -12 in arrears, or "
                   "a range of mm.dd figures; quarterly in arrears if omitted");
}
constexpr Argument PrdsSTD() {
    return paid_on("PrdsSTD", "Dates in the year on which interest on short-term debt is paid: -1, -2, -4, -12 in "
                              "arrears, or a range of mm.dd figures; quarterly in arrears if omitted");
}

} // namespace

constexpr Function CashAcct{
    .name = "CashAcct",
    .category = category,
    .calls = twin<qx::CashAcct>,
    .help = "A deposit account in a period, with an even net cash flow: interest on cash in the bank; once it is used "
            "up, the rest of the flow is lost",
    .args = {Time(), Base(), BFBalance(), CashFlow(), IntAERCash(), PmtsPerYear(), AcctOutput()},
    .examples = {"CashAcct(2005, 12, -1000, 0, 0.05, 4, 5) ~ -1050 1e-9",
                 "CashAcct(2005, 12, -1000, 0, 0.05, 4, 1) ~ 50 1e-9"},
    .see_also = "Overdraft,FlexAcct,CurrentAcct",
};
QX_EXPORT(CashAcct, 7);

constexpr Function CurrentAcct{
    .name = "CurrentAcct",
    .category = category,
    .calls = twin<qx::CurrentAcct>,
    .help = "A current account in a period, with an even net cash flow: one rate on debt and one on cash, each for the "
            "time that the balance is of its kind",
    .args = {Time(), Base(), BFBalance(), CashFlow(), IntAERDebt(), IntAERCash(), PmtsPerYear(), AcctOutput()},
    .examples = {"CurrentAcct(2005, 12, 1000, 0, 0.1, 0.05, 4, 5) ~ 1100 1e-9",
                 "CurrentAcct(2005, 12, 1000, 1200, 0, 0, 4, 5) ~ -200 1e-9"},
    .see_also = "Overdraft,CashAcct,FlexAcct,STDAcct",
};
QX_EXPORT(CurrentAcct, 8);

constexpr Function FlexAcct{
    .name = "FlexAcct",
    .category = category,
    .calls = twin<qx::FlexAcct>,
    .help = "An account in a period, with an even net cash flow and one interest rate for debt and cash",
    .args = {Time(), Base(), BFBalance(), CashFlow(), InterestAER(), PmtsPerYear(), AcctOutput()},
    .examples = {"FlexAcct(2005, 12, 1000, 500, 0.1, -1, 5) ~ 600 1e-9",
                 "FlexAcct(2005, 12, 1000, 500, 0.1, -1, 1) ~ -100 1e-9"},
    .see_also = "Overdraft,CashAcct,CurrentAcct",
};
QX_EXPORT(FlexAcct, 7);

constexpr Function Overdraft{
    .name = "Overdraft",
    .category = category,
    .calls = twin<qx::Overdraft>,
    .help = "An overdraft in a period, with an even net cash flow: interest on what is owed; once it is repaid, the "
            "rest of the flow is lost",
    .args = {Time(), Base(), BFBalance(), CashFlow(), IntAERDebt(), PmtsPerYear(), AcctOutput()},
    .examples = {"Overdraft(2005, 12, 1000, 500, 0.1, -1, 5) ~ 600 1e-9",
                 "Overdraft(2005, 12, 1000, 5000, 0.1, -1, 5) ~ 0 1e-9"},
    .see_also = "CashAcct,FlexAcct,CurrentAcct",
};
QX_EXPORT(Overdraft, 7);

constexpr Function LoanAcct{
    .name = "LoanAcct",
    .category = category,
    .calls = core<qx::LoanAcct>,
    .help = "Cash flows on dates financed by long-term loans, short-term debt and cash: an output of the account for "
            "each period",
    .args = {Timebase(), borrowing(), rates_from(), IntLoan(), IntCash(), IntSTD(), account_flows(), LoanTerm(),
             opening_balances(), LoanOptions(), LAOutput(outputs), day_count("DCLoan"), day_count("DCCash"),
             day_count("DCSTD"), PrdsLoan(), PrdsCash(), PrdsSTD(), ProjMode()},
    .examples = {"LoanAcct({2005;2006;2007}, 0, 500, 2005, 0.08, 0.03, 0.1, {2005;2006}, {-800;-100}, 5, , , , 15) = "
                 "{1000,1500,1500}"},
    .see_also = "LoanAcctEM,STDAcct,DescribeLoanAcctOutput,Loan",
};
QX_EXPORT(LoanAcct, 21);

constexpr Function LoanAcctEM{
    .name = "LoanAcctEM",
    .category = category,
    .calls = core<qx::LoanAcctEM>,
    .help = "LoanAcct with an external margin, an extra rate on debt: an output of the account for each period",
    .args = {Timebase(),
             borrowing(),
             rates_from(),
             IntLoan(),
             IntCash(),
             IntSTD(),
             account_flows(),
             LoanTerm(),
             FromDEM(),
             optional("IntEM", margin_help),
             opening_balances(),
             optional("Options", 0, margin_options, "none"),
             LAOutput(outputs_with_margin),
             day_count("DCLoan"),
             day_count("DCCash"),
             day_count("DCSTD"),
             day_count("DCEM"),
             PrdsLoan(),
             PrdsCash(),
             PrdsSTD(),
             paid_on("PrdsEM", "Dates in the year on which the margin is paid: -1, -2, -4, -12 in arrears (in advance "
                               "under option 4), or a range of mm.dd figures; quarterly in arrears if omitted"),
             ProjMode()},
    .examples = {"LoanAcctEM({2005;2006;2007}, 0, 500, 2005, 0.08, 0.03, 0.1, {2005;2006}, {-800;-100}, 5, 2005, 0.01, "
                 ", , , 45) = {1000,1500,1500}"},
    .see_also = "LoanAcct,STDAcct,LoanAcctEMH,DescribeLoanAcctOutput",
};
QX_EXPORT(LoanAcctEM, 25);

constexpr Function STDAcct{
    .name = "STDAcct",
    .category = category,
    .calls = core<qx::STDAcct>,
    .help = "Cash flows on dates financed by short-term debt and cash: an output of the account for each period",
    .args = {Timebase(), rates_from(), IntCash(), IntSTD(), account_flows(), opening_balances(), STDOptions(),
             LAOutput(outputs), day_count("DCCash"), day_count("DCSTD"), PrdsCash(), PrdsSTD(), ProjMode()},
    .examples = {"STDAcct({2005;2006;2007}, 2005, 0, 0, {2005;2006}, {-800;1000}, , , , 5) = {800,-200,-200}"},
    .see_also = "LoanAcct,LoanAcctEM,CurrentAcct,DescribeLoanAcctOutput",
};
QX_EXPORT(STDAcct, 15);

constexpr Function LoanAcctEMH{
    .name = "LoanAcctEMH",
    .category = Category::Miscellaneous,
    .calls = core<qx::LoanAcctEMH>,
    .help = "LoanAcctEM with a sinking fund for debt and assets, a fee on the fund and a fiscal year: an output of the "
            "account for each period, under accruals",
    .args = {Timebase(),
             rates_from(),
             IntLoan(),
             IntCash(),
             IntSTD(),
             {"SFDepoRateDebt", "Part of all debt that is to be deposited, as a fraction, from FromDatesInt on or one "
                                "for all"},
             {"SFDepoRateAss", "Part of the fund and the exogenous assets that is to be deposited, as a fraction, from "
                               "FromDatesInt on or one for all"},
             rate("IntSF", "Simple annual interest rates of the sinking fund as fractions, from FromDatesInt on or one "
                           "for all"),
             rate("SFRateFee", "Annual rates of the fee on the fund and the exogenous assets as fractions, from "
                               "FromDatesInt on or one for all"),
             account_flows(),
             {"ParamArray", "Threshold, Tranche, LoanTerm in years, as in LoanAcctEM; further items have no effect"},
             Argument{"FromDEM", "Dates from which the rates of the external margin hold, ascending; blank for none"}
                 .in_ascending_order(),
             {"IntEM", "Simple annual rates of an external margin on debt as fractions, one for each of FromDEM or one "
                       "for all; blank for no margin"},
             {"OBArray", "Opening balances: short-term debt (positive), cash (negative), sinking fund (negative)"},
             Argument{"SFExogDates", "Dates of the five lists that follow, ascending"}.in_ascending_order(),
             {"SFExogAssBals", "Exogenous assets from these dates on, zero or negative"},
             {"SFExogDebtBals", "Exogenous debt from these dates on, zero or positive"},
             {"SFExogDepos", "Deposits that others pay into the fund on these dates, negative"},
             {"SFIntOverRide", "Interest on the fund on these dates, zero or positive, in place of the calculated "
                               "interest in periods between the first and the last of them; blank for none"},
             {"SFDeposEst", "Deposits already included in the cash flows, from these dates on, zero or negative"},
             {"Options",
              "Sum of the options of LoanAcctEM (1 to 32) and 256 to ignore an override of zero, 512 to ignore all "
              "overrides of interest on the fund"},
             Argument{"LAMHOutput",
                      "As in LoanAcctEM (0 to 5 with the fund, 10 to 17 loans, 20 to 25 short-term debt, 30 to 35 "
                      "cash, 40 to 45 margin), 70 to 75 sinking fund, 80 to 85 basis of its fee and the fee"}
                 .of(account_output_values),
             {"DCArray",
              "Day count conventions of loans, cash, short-term debt, margin, interest on the fund, its fee; "
              "5 for each that is missing"},
             {"Prds", "Presets of the dates of loans, cash, short-term debt, margin, deposits into the fund, interest "
                      "on it, its fee, fiscal years: 1, 2, 4, 12, negative in arrears; 0 or none for -4, fiscal -1"}},
    .examples = {"LoanAcctEMH({2005;2006}, 2005, 0, 0, 0, 0.1, 0, 0, 0, 2005, -1000, {0;0;0}, 2005, 0, {0;0;0}, 2005, "
                 "0, 0, 0, 0, 0, 0, 75, 5, {-1;-1;-1;-1;-1;-1;-1}) = {0,-100}"},
    .see_also = "LoanAcctEM,LoanAcct,DescribeLoanAcctOutput",
};
QX_EXPORT(LoanAcctEMH, 25);

constexpr Function DescribeLoanAcctOutput{
    .name = "DescribeLoanAcctOutput",
    .category = Category::Miscellaneous,
    .calls = core<qx::DescribeLoanAcctOutput>,
    .help = "An output of the account simulators in words",
    .args = {Argument{"LAOutput",
                      "0 to 5 the whole account, 10 to 17 loans, 20 to 25 short-term debt, 30 to 35 cash, 70 to 75 "
                      "sinking fund, 80 to 85 its fee"}
                 .of(account_output_values)},
    .examples = {"DescribeLoanAcctOutput(21) = \"Interest  (ST Debt)\"",
                 "DescribeLoanAcctOutput(16) = \"Loan Repayment(s)\"",
                 "DescribeLoanAcctOutput(9) = \"Illegal switch(9)\""},
    .see_also = "LoanAcct,LoanAcctEM,STDAcct,LoanAcctEMH",
};
QX_EXPORT(DescribeLoanAcctOutput, 1);

} // namespace qx::worksheet
