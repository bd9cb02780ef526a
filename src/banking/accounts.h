// Accounts over one period: a balance brought forward, a net cash flow that arrives evenly in the course of the period,
// and interest at annual equivalent rates. A model chains periods from cell to cell.
//
// A balance owed is positive and cash in the bank negative; a positive CashFlow reduces what is owed. Interest on debt
// is negative (paid), on cash positive (received). Flows and interest fall PmtsPerYear times a year: positive in
// advance, negative in arrears, at most 1e6 either way (errlibmin, errlibmax). Rates are above -0.999999 (errlibmin).
// Interest is capitalised, so that the end balance less BFBalance, plus interest, is -CashFlow.
//
// The closed forms are those of level annuities (rates/annuities.h). Any AcctOutput but those below throws
// errlibillegalswitch.
#pragma once

#include "calendar/time_period.h"
#include "core/switches.h"

#include <string>

namespace qx {

/// The figure of an account that is wanted. Average balances are interest over the rate, 0 at a rate of zero.
enum AcctOutput : int {
    account_principal = 0, ///< end balance less BFBalance
    account_interest = 1,
    account_debt_service = 2, ///< principal plus interest
    account_opening = 3,      ///< BFBalance
    account_average = 4,
    account_closing = 5,
};

inline constexpr SwitchValue account_figure_values[] = {
    {account_principal, "Principal"},
    {account_interest, "Interest"},
    {account_debt_service, "Principal+Interest"},
    {account_opening, "Balance brought forward"},
    {account_average, "Balance (average in period)"},
    {account_closing, "Balance (end period)"},
};

/// Debt alone: once it is repaid within the period, interest stops and the rest of the flow is lost. 0 for a period
/// that does not end after its start.
double Overdraft(const timeperiod& Time, double BFBalance, double CashFlow, double IntAERDebt, double PmtsPerYear,
                 int AcctOutput);
/// Cash alone: the mirror of Overdraft.
double CashAcct(const timeperiod& Time, double BFBalance, double CashFlow, double IntAERCash, double PmtsPerYear,
                int AcctOutput);
/// Debt or cash at one rate.
double FlexAcct(const timeperiod& Time, double BFBalance, double CashFlow, double InterestAER, double PmtsPerYear,
                int AcctOutput);
/// Debt and cash at two rates: what passes zero within the period goes on at the other rate.
double CurrentAcct(const timeperiod& Time, double BFBalance, double CashFlow, double IntAERDebt, double IntAERCash,
                   double PmtsPerYear, int AcctOutput);

/// What the account simulators give: of the whole, of each ledger, and at the end of a sinking fund and its fee.
inline constexpr SwitchValue account_output_values[] = {
    {0, "Principal  (All Cash, LT and ST Debt)"},
    {1, "Interest   (All Cash, LT and ST Debt)"},
    {2, "Principal + Interest    (All Cash, LT and ST Debt)"},
    {3, "Balance - Start Period  (All Cash, LT and ST Debt)"},
    {4, "Balance - Average in Period  (All Cash, LT and ST Debt)"},
    {5, "Balance - End Period   (All Cash, LT and ST Debt)"},
    {10, "Principal  (LT Debt)"},
    {11, "Interest  (LT Debt)"},
    {12, "Principal + Interest  (LT Debt)"},
    {13, "Balance - Start Period  (LT Debt)"},
    {14, "Balance - Average in Period  (LT Debt)"},
    {15, "Balance - End Period  (LT Debt)"},
    {16, "Loan Repayment(s)"},
    {17, "Loan Advance(s)"},
    {20, "Principal  (ST Debt)"},
    {21, "Interest  (ST Debt)"},
    {22, "Principal + Interest  (ST Debt)"},
    {23, "Balance - Start Period  (ST Debt)"},
    {24, "Balance - Average in Period  (ST Debt)"},
    {25, "Balance - End Period  (ST Debt)"},
    {30, "Principal  (Cash)"},
    {31, "Interest  (Cash)"},
    {32, "Principal + Interest  (Cash)"},
    {33, "Balance - Start Period  (Cash)"},
    {34, "Balance - Average in Period  (Cash)"},
    {35, "Balance - End Period  (Cash)"},
    {70, "Principal  (Sinking Fund)"},
    {71, "Interest  (Sinking Fund)"},
    {72, "Principal + Interest  (Sinking Fund)"},
    {73, "Balance - Start Period  (Sinking Fund)"},
    {74, "Balance - Average in Period  (Sinking Fund)"},
    {75, "Balance - End Period  (Sinking Fund)"},
    {80, "Principal  (Sinking Fund Fee)"},
    {81, "Interest  (Sinking Fund Fee)"},
    {82, "Principal + Interest  (Sinking Fund Fee)"},
    {83, "Balance - Start Period  (Sinking Fund Fee)"},
    {84, "Balance - Average in Period  (Sinking Fund Fee)"},
    {85, "Balance - End Period  (Sinking Fund Fee)"},
};
inline constexpr int outputs_without_fund = 26;

/// A LAOutput of the account simulators in words, or "Illegal switch(LAOutput)".
std::string DescribeLoanAcctOutput(int LAOutput);

} // namespace qx
