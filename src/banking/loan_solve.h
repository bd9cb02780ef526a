// The one input with which a loan ends exactly as asked: its residual, an advance, a rate of repayment, an interest
// rate or the date of repayment.
//
// The loan is that of Mortgage, with AnnRepRates as its debt service: run through it, the solved loan ends at the
// residual.
#pragma once

#include "banking/loan_terms.h"

namespace qx {

/// What LoanSolve looks for: the whole part of LoanSolveSwitch. Its two decimals are the number of the item.
enum LoanSolveKind : int {
    solve_residual = 0,
    solve_advance = 1,
    solve_repayment_rate = 2,
    solve_interest_rate = 3,
    solve_repayment_date =
        4, ///< the first day, from the last advance on, on which what is owed has come to the residual
};
/// Options of LoanSolve.
enum LoanSolveOption : int {
    without_interest = 1, ///< flows count as they are, wherever they lie
};

/// The value found. Repayments are in cash on the dates of PrdsRep, and what is owed on RepDate (FinishRates without
/// one) is the residual. Throws errlibmin and errlibmax for a DayCount outside 0 to 999; errlibillegalswitch for an
/// unknown kind; outofrange for an item past the end of the lists; inputerror for a RollTo after the first of
/// FromDates; unnacceptabledata for a PrdsInt in advance; errlibnotbracketed where no value gives the residual.
double LoanSolve(const SimpleRates& rates, const FromSteps& repayments, View<double> AnnRepRates,
                 const Payments& advances, const date& RepDate, const date& RollTo, double LoanResid,
                 double LoanSolveSwitch, int Options, double DayCount, const AnnualSequence& PrdsRep,
                 const AnnualSequence& PrdsInt);

} // namespace qx
