// What a loan with fees costs. The quoted rate and the annual percentage rate are both simple annual rates, compounded
// with each of PmtsPerYear level payments in arrears (negative, or 0 for one a year; errlibnonsenseinputs otherwise).
// The payments repay LoanAmount at the quoted rate; the annual percentage rate (as American lenders state it) is the
// rate at which they repay LoanAmount less Fees.
#pragma once

namespace qx {

double QuotedToAPR(double LoanAmount, double Fees, double TermYrs, double QuotedRate, double PmtsPerYear);
double APRToQuoted(double LoanAmount, double Fees, double USAPR, double TermYrs, double PmtsPerYear);

} // namespace qx
