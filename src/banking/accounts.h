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

/// A LAOutput of the account simulators in words, or "Illegal switch(LAOutput)".
std::string DescribeLoanAcctOutput(int LAOutput);

} // namespace qx
