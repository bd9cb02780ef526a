// The largest loan that a stream of receipts can carry.
#pragma once

#include "calendar/date.h"
#include "core/view.h"

namespace qx {

/// The loan whose interest and part repayment (Amortisation, the fraction repaid over its term) take all receipts: of
/// AnnualRates a year from StartAnnDate up to the ToDates, none after Finish, received PmtsPerYearRec times a year
/// (negative in arrears). Interest is simple at each of PmtsPerYrInt payments a year. LoanFee is a fraction of the
/// loan.
///
///     (1 - LoanFee) NPV / (1 - (1 - Amortisation) / (1 + AER)^Years)
///
/// Throws errlibmin for a rate at or below -0.999999, errlibinsuffrange without a to-date, errlibinfiniteresult for a
/// loan of which neither interest nor capital is paid.
double MFLoan(const date& LoanStartDate, const date& StartAnnDate, const date& Finish, View<double> AnnualRates,
              View<date> ToDates, double InterestSimple, double Amortisation, double PmtsPerYrInt,
              double PmtsPerYearRec, double LoanFee);

} // namespace qx
