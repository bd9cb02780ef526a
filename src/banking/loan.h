// Loans: what a loan does in a period, in cash or as it accrues.
//
// A loan is a list of dated net advances (an advance positive, a repayment negative) with a date on which what is left
// is repaid. Principal, interest and balances are read off that list for one period at a time; nothing is simulated.
// The functions differ in how they come by the list: LoanX adds the interest that rolls up, LoanLin repays in a
// straight line, Mortgage by a debt service of interest and principal together.
//
// Flows are the borrower's: money received is positive, interest on a debt negative. Rates are simple annual rates as
// fractions, averaged over time where they change. A period that ends before it starts gives 0, as does one wholly
// before the first advance or after the repayment date. Results within 1e-7 of zero are exactly 0.
//
// All throw errlibmin and errlibmax for a DayCount outside 0 to 999, a LoanOutput (loan_terms.h) outside 0 to 100 or a
// ProjMode outside 0 to 7; errlibillegalswitch for a LoanOutput without a meaning; errlibnovalidanswer for an advance
// after the repayment date; outofrange for an advance date without an amount.
#pragma once

#include "banking/loan_terms.h"
#include "calendar/time_period.h"
#include "core/switches.h"

#include <string>

namespace qx {

/// A loan from its list of advances, with a margin on the rates and with amounts of interest that override the
/// calculated ones, under the options of FInterestM (InterestOption).
double LoanM(const timeperiod& Time, const SimpleRates& rates, const Payments& advances, const Payments& overrides,
             const date& RepaymentDate, double AddMargin, int Options, int LoanOutput, const Basis& basis);
/// The same without any of these.
double Loan(const timeperiod& Time, const SimpleRates& rates, const Payments& advances, const date& RepaymentDate,
            int LoanOutput, const Basis& basis);
/// Interest that falls due up to RollTo is advanced on the day and not paid. No RollTo is Loan.
double LoanX(const timeperiod& Time, const SimpleRates& rates, const Payments& advances, const date& RepaymentDate,
             const date& RollTo, int LoanOutput, const Basis& basis);
/// Repaid evenly from StartRepayments to RepaymentDate, on the dates of PrdsPrin; an advance after StartRepayments has
/// a straight line of its own.
double LoanLin(const timeperiod& Time, const SimpleRates& rates, const Payments& advances, const date& StartRepayments,
               const date& RepaymentDate, int LoanOutput, const Measure& interest, const Measure& principal,
               double ProjMode);
double LoanLinX(const timeperiod& Time, const SimpleRates& rates, const Payments& advances, const date& StartRepayments,
                const date& RepaymentDate, const date& RollTo, int LoanOutput, const Measure& interest,
                const Measure& principal, double ProjMode);
/// 0 whatever its arguments, which it checks: a name kept for workbooks that use it.
double LoanRep(const timeperiod& Time, const SimpleRates& rates, const Payments& advances, const date& StartRepayments,
               const date& RepaymentDate, int RepType, const date& RollTo, int LoanOutput, double DayCount,
               const AnnualSequence& PrdsRep, const AnnualSequence& PrdsInt, double ProjMode);

/// What the loan functions give: LoanOutput.
inline constexpr SwitchValue loan_output_values[] = {
    {0, "Principal"},
    {1, "Interest"},
    {2, "Principal+Interest"},
    {3, "Balance (start period)"},
    {4, "Balance (average in period)"},
    {5, "Balance (end period)"},
    {6, "Principal including advances to cover rolled up interest"},
    {7, "Interest including rolled-up interest"},
    {8, "Interest and Principal including advances to cover rolled up interest"},
    {9, "Balance of interest accrued but not either paid, re-advanced as capital or rolled up - as at the start of the "
        "time period"},
    {10, "Balance of interest accrued but not either paid, re-advanced as capital or rolled up - as at the end of the "
         "time period"},
    {12, "Final repayment(s)"},
    {13, "Advances"},
};
/// Options of LoanQ and LoanPool.
enum LoanOption : int {
    fixed_rate = 1, ///< the rate of the day of the advance holds throughout
};
/// A loan of one advance, with a margin.
double LoanQ(const timeperiod& Time, const SimpleRates& rates, const Payment& advance, const date& RepaymentDate,
             double AddMargin, int Options, int LoanOutput, const Basis& basis);

/// The terms of the loans of a pool: of loan i item i, or the last one of a shorter list; 0 without any.
struct PoolTerms {
    using takes = Takes<Range<double>, Range<double>, Range<double>, Range<double>>;
    View<double> Term_s;           ///< years
    View<double> PmtsPerYr_s;      ///< interest payments a year: 1, 2, 3, 4, 6, 12 or 13 (quarter days)
    View<double> StartingSeqNum_s; ///< a date of the payments as mm.dd; 0 for the day of the advance
    View<double> AddMargin_s;
};
/// Many loans of one advance each, in the order of their dates: the sum of LoanQ over them, interest in arrears. The
/// walk ends with the first advance after the period. Throws errlibillegalswitch for any other number of payments.
double LoanPool(const timeperiod& Time, const SimpleRates& rates, const Payments& advances, const PoolTerms& terms,
                int Options, int LoanOutput, double DayCount, double ProjMode);

/// Repaid by debt service at AnnDebtServiceRates a year from FromDates up to FinishRates: what the service of an
/// interest date is above the interest repays capital. The last repayment is cut to what is owed; what is owed at
/// LongStopRepDate (without one, 60 months after FinishRates) is repaid then. Throws errlibinsuffrange without
/// FromDates.
double Mortgage(const timeperiod& Time, const SimpleRates& rates, const FromSteps& service,
                View<double> AnnDebtServiceRates, const Payments& advances, const date& LongStopRepDate, int LoanOutput,
                double DayCount, double DayCountInt, const AnnualSequence& Periods, const AnnualSequence& PrdsInt,
                double ProjMode);
/// One advance repaid by level payments of interest and principal (PMTQX), or in full on EarlyRepDate. Throws errlibmin
/// for a rate at or below -0.999999.
double MortgageQ(const timeperiod& Time, double InterestSimple, const Payment& advance, const date& RepaymentDate,
                 const date& EarlyRepDate, int LoanOutput, const Basis& basis);

/// A LoanOutput in words.
std::string DescribeLoanOutput(int LoanOutput);

} // namespace qx
