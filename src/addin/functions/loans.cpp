// Worksheet functions of loans.
#include "addin/declare.h"
#include "addin/loan_arguments.h"
#include "banking/loan.h"

namespace qx::worksheet {

namespace {

constexpr Category category = Category::Banking;

} // namespace

constexpr Function Loan{
    .name = "Loan",
    .category = category,
    .calls = twin<qx::Loan>,
    .help = "Principal, interest or balance of a loan in a period, from its list of dated advances and repayments",
    .args = {time_period(), simple_rates(), advances(), RepaymentDate(), LoanOutput(), loan_basis()},
    .examples = {"Loan(2025, 12, 2025, 0.06, 2025, 1000, 2035) = 1000",
                 "Loan(2025, 12, 2025, 0.06, 2025, 1000, 2030, 1) ~ -60 1e-9",
                 "Loan(2026, 12, 2025, 0.06, {2025;2026}, {1000;-400}, 2030, 5) = 600",
                 "Loan(2025, 12, 2025, 0.06, 2025, 1000, 2030, 11) ! #NUM!"},
    .see_also = "LoanX,LoanLin,LoanQ,Mortgage,LoanSolve,DescribeLoanOutput",
};
QX_EXPORT(Loan, 11);

constexpr Function LoanX{
    .name = "LoanX",
    .category = category,
    .calls = twin<qx::LoanX>,
    .help = "Principal, interest or balance of a loan in a period, with interest that rolls up to a date",
    .args = {time_period(), simple_rates(), advances(), RepaymentDate(), RollTo(), LoanOutputX(), loan_basis()},
    .examples = {"LoanX(2027, 12, 2025, 0.1, 2025, 1000, 2027, 2027, 12, , -1) ~ 1210 1e-9",
                 "LoanX(2026, 12, 2025, 0.1, 2025, 1000, 2027, 2027, 11, , -1) ~ 100 1e-9"},
    .see_also = "Loan,LoanLinX,DescribeLoanOutput",
};
QX_EXPORT(LoanX, 12);

constexpr Function LoanLin{
    .name = "LoanLin",
    .category = category,
    .calls = twin<qx::LoanLin>,
    .help = "Principal, interest or balance in a period of a loan that is repaid in a straight line",
    .args = {time_period(), simple_rates(), advances(), StartRepayments(), RepaymentDate(), LoanOutput(), DayCountInt(),
             PrdsInt(), DayCountPrin(), PrdsPrin(), ProjMode()},
    .examples = {"LoanLin(2025, 12, 2025, 0.06, 2025, 1000, 2025, 2035, 0, , , , 1) ~ 1000 1e-9",
                 "LoanLin(2026, 12, 2025, 0.06, 2025, 1000, 2025, 2030, 0, , , , 1) ~ -200 1e-9"},
    .see_also = "LoanLinX,Loan,Mortgage,UniSpread",
};
QX_EXPORT(LoanLin, 14);

constexpr Function LoanLinX{
    .name = "LoanLinX",
    .category = category,
    .calls = twin<qx::LoanLinX>,
    .help =
        "Principal, interest or balance in a period of a loan that is repaid in a straight line, with interest that "
        "rolls up to a date",
    .args = {time_period(), simple_rates(), advances(), StartRepayments(), RepaymentDate(), RollTo(), LoanOutputX(),
             DayCountInt(), PrdsInt(), DayCountPrin(), PrdsPrin(), ProjMode()},
    .examples = {"LoanLinX(2026, 12, 2025, 0.1, 2025, 1000, 2027, 2029, 2026, 11, , -1, , 1) ~ 100 1e-9"},
    .see_also = "LoanLin,LoanX",
};
QX_EXPORT(LoanLinX, 15);

constexpr Function LoanRep{
    .name = "LoanRep",
    .category = category,
    .calls = core<qx::LoanRep>,
    .help = "Always 0: checks its arguments and is kept for workbooks that use it. For loans with repayments see "
            "LoanLin and Mortgage",
    .args = {time_period(), simple_rates(), advances(), StartRepayments(), RepaymentDate(),
             optional("RepType", 0, "Kind of repayment; without effect"), RollTo(), LoanOutput(), DayCount(), PrdsRep(),
             PrdsInt(), ProjMode()},
    .examples = {"LoanRep(2025, 12, 2025, 0.06, 2025, 1000, 2026, 2030) = 0"},
    .see_also = "LoanLin,Mortgage",
};
QX_EXPORT(LoanRep, 15);

constexpr Function LoanQ{
    .name = "LoanQ",
    .category = category,
    .calls = core<qx::LoanQ>,
    .help = "Principal, interest or balance in a period of a loan of one advance",
    .args = {time_period(), simple_rates(), one_advance(), RepaymentDate(), AddMargin(), LoanOptions(), LoanOutput(),
             loan_basis()},
    .examples = {"LoanQ(2025, 12, 2025, 0.06, 2025, 1000, 2030, 0.01, 0, 1) ~ -70 1e-9",
                 "LoanQ(2026, 12, {2025;2026}, {0.06;0.08}, 2025, 1000, 2030, 0, 1, 1) ~ -60 1e-9"},
    .see_also = "Loan,LoanPool",
};
QX_EXPORT(LoanQ, 13);

constexpr Function LoanPool{
    .name = "LoanPool",
    .category = category,
    .calls = twin<qx::LoanPool>,
    .help = "Principal, interest or balance in a period of many loans of one advance each, in the order of their dates",
    .args = {time_period(), simple_rates(), advances(),
             Argument{"Term_s", "Years from each advance to its repayment; the last one applies to the loans that "
                                "follow"},
             Argument{"PmtsPerYr_s", "Interest payments a year of each loan: 1, 2, 3, 4, 6, 12 or 13 (English quarter "
                                     "days)"},
             optional("StartingSeqNum_s", "A date of the interest payments of each loan as mm.dd, always in arrears; 0 "
                                          "or omitted for the day of its advance"),
             optional("AddMargin_s", "Margin of each loan, added to the interest rates: 0.02 is 2%; none if omitted"),
             LoanOptions(), LoanOutput(), DayCount(), ProjMode()},
    .examples = {"LoanPool(2026, 12, 2025, 0.06, {2025;2026}, {1000;500}, {1;2}, 4, , , , 5) = 500",
                 "LoanPool(2026, 12, 2025, 0.06, {2025;2026}, {1000;500}, 5, 4, , , , 1) ~ -90 1e-9"},
    .see_also = "LoanQ,Loan,AnnSeq",
};
QX_EXPORT(LoanPool, 14);

constexpr Function Mortgage{
    .name = "Mortgage",
    .category = category,
    .calls = twin<qx::Mortgage>,
    .help = "Principal, interest or balance in a period of a loan that is repaid by debt service: interest and "
            "principal together",
    .args = {time_period(), simple_rates(),
             Argument{"FinishRates", "Date on which the debt service ends; the day itself does not count"},
             Argument{"FromDates", "Dates from which the rates of debt service apply, ascending"}.in_ascending_order(),
             Argument{"AnnDebtServiceRates", "Debt service a year, positive: one for each date, or one for all"},
             advances(),
             optional("LongStopRepDate", "Date on which what is still owed is repaid; 60 months after FinishRates if "
                                         "omitted"),
             LoanOutput(), DayCount(), DayCountInt(), Periods(4), PrdsInt(), ProjMode()},
    .examples = {"Mortgage(2026, 12, 2025, 0.1, 2030, 2025, 300, 2025, 1000, 2030, 5, , , -1, -1) ~ 800 1e-9",
                 "Mortgage(2025, 12, 2025, 0.1, 2030, 2025, 300, 2025, 1000, 2030, 1, , , -1, -1) ~ -100 1e-9"},
    .see_also = "MortgageQ,LoanSolve,Loan,FStep",
};
QX_EXPORT(Mortgage, 16);

constexpr Function MortgageQ{
    .name = "MortgageQ",
    .category = category,
    .calls = twin<qx::MortgageQ>,
    .help = "Principal, interest or balance in a period of a loan of one advance that is repaid by level payments",
    .args = {time_period(), InterestSimple(), one_advance(), RepaymentDate(),
             optional("EarlyRepDate", "Date on which the loan is repaid before it has run its term; not if omitted"),
             LoanOutput(), loan_basis()},
    .examples = {"MortgageQ(DATE(2025,2,1), 12, 0.06, 2025, 100000, 2050, , 1, , -12, 1) ~ -5951.58 1e-5",
                 "MortgageQ(2030, 12, 0.06, 2025, 100000, 2030, , 5) = 0"},
    .see_also = "Mortgage,PMTQX",
};
QX_EXPORT(MortgageQ, 11);

constexpr Function DescribeLoanOutput{
    .name = "DescribeLoanOutput",
    .category = Category::Miscellaneous,
    .calls = core<qx::DescribeLoanOutput>,
    .help = "The LoanOutput of the loan functions in words",
    .args = {LoanOutput()},
    .examples = {"DescribeLoanOutput(5) = \"Balance (end period)\"", "DescribeLoanOutput(11) = \"Illegal switch(11)\""},
    .see_also = "Loan,LoanX",
};
QX_EXPORT(DescribeLoanOutput, 1);

} // namespace qx::worksheet
