// Arguments that the loan functions share.
#pragma once

#include "addin/arguments.h"
#include "banking/loan.h"
#include "banking/loan_terms.h"

namespace qx {

/// SimpleRates.
constexpr ArgumentGroup simple_rates() { return {FromDatesInt(), IntSimple()}; }
/// Payments that are advances.
constexpr ArgumentGroup advances() {
    return {Argument{"AdvanceDates", "Dates of the advances, ascending"}.in_ascending_order(),
            {"NetAdvances", "Amount advanced on each date: money received positive, a repayment negative"}};
}
constexpr ArgumentGroup one_advance() {
    return {{"AdvanceDate", "Date on which the loan is advanced"},
            {"NetAdvance", "Amount advanced: money received positive"}};
}
constexpr Argument RepaymentDate() {
    return {"RepaymentDate", "Date on which what is still owed is repaid; no advance may be after it"};
}
constexpr Argument RollTo() {
    return optional("RollTo", "Date up to which interest that falls due is added to the loan instead of being paid; if "
                              "omitted all interest is paid");
}
constexpr Argument StartRepayments() {
    return {"StartRepayments", "Date from which the loan is repaid evenly; an advance after it is repaid from its own "
                               "date on"};
}
constexpr Argument LoanOutput() {
    return optional(
               "LoanOutput", 0,
               "0 principal, 1 interest, 2 both; balance: 3 at the start, 4 average, 5 at the end; 6, 7, 8 as 0, "
               "1, 2 with rolled-up interest; interest accrued and unpaid: 9 at the start, 10 at the end; 12 final "
               "repayment; 13 advances",
               "principal")
        .within(loan_output_limits)
        .of(loan_output_values);
}
/// The same of functions with RollTo.
constexpr Argument LoanOutputX() {
    return optional(
               "LoanOutput", 0,
               "0 principal, 1 interest, 2 both; balance: 3 at the start, 4 average, 5 at the end; 6, 7, 8 as 0, "
               "1, 2 with rolled-up interest; interest accrued and unpaid: 9 at the start, 10 at the end; 11 rolled "
               "up; 12 final repayment; 13 advances",
               "principal")
        .within(loan_output_limits)
        .of(loan_output_values);
}
constexpr Argument AddMargin() { return optional("AddMargin", 0.0, "Margin added to the interest rates: 0.02 is 2%"); }
constexpr Argument LoanOptions() {
    return optional("Options", 0, "0 the rates change on their dates, 1 the rate of the day of the advance is fixed");
}
constexpr Argument DayCountInt() { return DayCount().renamed("DayCountInt"); }
constexpr Argument DayCountPrin() { return DayCount().renamed("DayCountPrin"); }
constexpr Argument PrdsPrin() {
    return sequence("PrdsPrin", -4,
                    "Dates in the year on which capital is repaid: 1, 2, 4, 12 in advance, negative in arrears, or a "
                    "range of mm.dd figures; quarterly in arrears if omitted");
}
constexpr Argument PrdsRep() {
    return sequence("PrdsRep", -4,
                    "Dates in the year on which repayments are made: -1, -2, -4, -12 in arrears, or a range of mm.dd "
                    "figures; quarterly in arrears if omitted");
}
/// Basis of a loan.
constexpr ArgumentGroup loan_basis() { return {DayCount(), PrdsInt(), ProjMode()}; }

} // namespace qx
