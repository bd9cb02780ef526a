// Worksheet functions that size a loan.
#include "addin/declare.h"
#include "addin/loan_arguments.h"
#include "banking/debt_capacity.h"
#include "banking/loan_solve.h"

namespace qx::worksheet {

constexpr Function LoanSolve{
    .name = "LoanSolve",
    .category = Category::Banking,
    .calls = core<qx::LoanSolve>,
    .help = "The residual, advance, repayment rate, interest rate or repayment date with which a loan ends as asked. "
            "The result ends at the residual in Mortgage with the repayments as debt service",
    .args = {simple_rates(), Argument{"FinishRates", "Date on which the repayments end; the day itself does not count"},
             Argument{"FromDates", "Dates from which the rates of repayment apply, ascending"}.in_ascending_order(),
             Argument{"AnnRepRates", "Repayments a year, interest and capital together: positive"}, advances(),
             optional("RepDate", "Date on which the loan ends with the residual; FinishRates if omitted"),
             optional("RollTo", "A date no later than the first of FromDates; only checked"),
             optional("LoanResid", 0.0, "Amount still owed at the end of the loan"),
             optional(
                 "LoanSolveSwitch", 0.0,
                 "What to solve for: 0 residual, 1 advance, 2 annual repayment rate, 3 interest rate, with the item "
                 "number as two decimals (1.03 is the third advance), 4 repayment date",
                 "the residual"),
             optional("Options", 0, "0 with interest, 1 without: flows count as they are"), DayCount(), PrdsRep(),
             PrdsInt()},
    .examples = {"LoanSolve(2025, 0.1, 2027, 2025, 100, 2025, 1000, 2027, , , 0, , , -1, -1) ~ 1000 1e-6",
                 "LoanSolve(2025, 0.1, 2030, 2025, 0, 2025, 1000, 2030, , 0, 2.01, , , -1, -1) ~ 263.79748 1e-5",
                 "LoanSolve(2025, 0.1, 2030, 2025, 263.79748, 2025, 1000, 2030, , 0, 3.01, , , -1, -1) ~ 0.1 1e-7"},
    .see_also = "Mortgage,PMTQX,RateQX,MFLoan",
};
QX_EXPORT(LoanSolve, 15);

constexpr Function MFLoan{
    .name = "MFLoan",
    .category = Category::Compatibility,
    .calls = core<qx::MFLoan>,
    .help = "The largest loan that a stream of receipts can carry: its interest and part repayment take all of them",
    .args = {{"LoanStartDate", "Date on which the loan is advanced"},
             {"StartAnnDate", "Date from which the receipts run"},
             {"Finish", "Date after which no receipts count"},
             {"AnnualRates", "Receipts a year, one for each of the to-dates"},
             Argument{"ToDates", "Dates up to which the receipts run, ascending"}.in_ascending_order(),
             InterestSimple(),
             {"Amortisation", "Part of the loan that is repaid over its term: 0 none, 1 all of it"},
             optional("PmtsPerYrInt", -4.0, "Interest payments a year: -4 is quarterly in arrears",
                      "quarterly in arrears"),
             optional("PmtsPerYearRec", 4.0, "Receipts a year: 4 is quarterly in advance, -4 in arrears",
                      "quarterly in advance"),
             optional("LoanFee", 0.0, "Fee as a fraction of the loan: 0.01 is 1%")},
    .examples = {"MFLoan(2025, 2025, 2030, 100, 2030, 0.1, 1, -1, -1) ~ 379.0786769408448 1e-9",
                 "MFLoan(2025, 2025, 2030, 100, 2030, 0.1, 0, -1, -1) ~ 1000 1e-9"},
    .see_also = "LoanSolve,PVM",
};
QX_EXPORT(MFLoan, 10);

} // namespace qx::worksheet
