// The terms of a loan: what travels together in the arguments of the banking functions.
#pragma once

#include "projections/payments.h"
#include "projections/steps.h"
#include "projections/terms.h"

#include <cmath>

namespace qx {

/// The dates of a list: none if it is a blank cell, which reads as one zero date.
inline View<date> dates_given(View<date> dates) {
    return dates.size() == 1 && dates.first().iszero() ? View<date>{} : dates;
}
/// A figure within 1e-7 of zero is zero.
inline double without_dust(double figure) {
    constexpr double dust = 1e-7;
    return std::fabs(figure) <= dust ? 0.0 : figure;
}

/// Simple annual rates, each from its date on, or one for all dates.
struct SimpleRates {
    using takes = Takes<Range<date>, Range<double>>;
    View<date> FromDatesInt;
    View<double> IntSimple;
};

/// What a loan function reports: LoanOutput. Balances are positive when money is owed, flows as the borrower sees them.
enum LoanOutputs : int {
    loan_principal = 0, ///< advances less repayments, without advances that cover rolled-up interest
    loan_interest = 1,  ///< interest, less what was rolled up
    loan_principal_and_interest = 2,
    loan_opening_balance = 3, ///< on the day before the period's start
    loan_average_balance = 4, ///< over the time since the first advance
    loan_closing_balance = 5, ///< on the day before the period's end
    loan_all_principal = 6,   ///< with advances that cover rolled-up interest
    loan_all_interest = 7,    ///< with rolled-up interest
    loan_all_flows = 8,
    loan_accrued_at_start = 9, ///< interest since the last payment date
    loan_accrued_at_end = 10,
    loan_rolled_up_interest = 11, ///< of functions with RollTo
    loan_final_repayment = 12,
    loan_advances = 13,
};
inline constexpr Limits loan_output_limits{0, 100};

} // namespace qx
