// Account simulators: a time line of cash flows, financed by long-term loans, short-term debt (STD) and cash.
//
// The account is run once over all its dates: those of the cash flows and those on which interest is paid. On each of
// them what the cash flow, interest and repayments require is met by a loan, as far as liquidity would fall below
// Threshold, in whole tranches; then by short-term debt, which a surplus repays; the rest moves the cash. The result
// for each period of the time base is then read off; the last period is as long as the one before it.
//
// Balances owed are positive, cash in the bank is negative; a positive cash flow reduces what is owed. Interest on debt
// is negative, on cash positive. Rates are simple annual rates from dates on (projections/interest.h).
//
// Principal and interest of a period under a cash ProjMode sum to the cash flow, with the other sign, if interest is
// paid in arrears and each period starts on one of the account's dates. A loan that ends between two dates is
// refinanced on the first of them, and shown until it ends; interest in advance is paid on the balance before the
// movements of its date, and shown on that after them.
//
// A run is kept until an input changes, so that further outputs cost a look at it; the runs of the last four accounts
// are. Throws errlibmin, errlibmax for a DayCount outside 0 to 999 or a ProjMode outside 0 to 7; errlibillegalswitch
// for an unknown output (DescribeLoanAcctOutput); errlibunexpectedcase for an opening balance of the wrong
// sign; illegalvalue for margins paid in advance on average balances; inputerror for a time base without dates.
#pragma once

#include "core/pools.h"
#include "projections/terms.h"

namespace qx {

/// Options of the simulators, a sum. InterestOption 256 and 512 go with them (LoanAcctEMH).
enum AccountOption : int {
    fixed_rates = 1,          ///< a loan bears the rate ruling on its start
    loans_on_their_dates = 2, ///< loans are drawn on dates of PrdsLoan only
    margin_snapshot = 4,      ///< the basis of the margin is taken on dates of PrdsEM only
    margin_on_short_term = 8, ///< ... and is short-term debt alone
    margin_on_long_term = 16, ///< ... or long-term debt alone
    write_account_log = 32,   ///< the calculation is written to qx_LoanAcctEM.qxl
};

// What travels together in the arguments.

/// When loans are drawn: the liquidity that they defend (owed positive, so -1000 lets debt rise to 1000 first), and
/// the amount of which each loan is a multiple.
struct Borrowing {
    using takes = Takes<double, double>;
    double Threshold, Tranche;
};
/// Simple annual rates from dates on; a list of one item holds for all dates.
struct AccountRates {
    using takes = Takes<Range<date>, Range<double>, Range<double>, Range<double>>;
    View<date> FromDatesInt;
    View<double> IntLoan, IntCash, IntSTD;
};
struct AccountFlows {
    using takes = Takes<Range<date>, Range<double>>;
    View<date> CFTimes;
    View<double> Cashflows;
};
/// The external margin: an extra rate on debt. None without rates.
struct ExternalMargin {
    using takes = Takes<Range<date>, Range<double>>;
    View<date> FromDEM;
    View<double> IntEM;
};
struct OpeningBalances {
    using takes = Takes<double, double>;
    double OBCash; ///< 0 or negative
    double OBSTD;  ///< 0 or positive
};
struct AccountDayCounts {
    using takes = Takes<double, double, double>;
    double DCLoan, DCCash, DCSTD;
};
struct AccountPeriods {
    using takes = Takes<AnnualSequence, AnnualSequence, AnnualSequence>;
    const AnnualSequence &PrdsLoan, &PrdsCash, &PrdsSTD;
};
/// Rates and balances of a sinking fund. The rates hold from FromDatesInt on, the balances from SFExogDates on.
struct FundRates {
    using takes = Takes<Range<double>, Range<double>, Range<double>, Range<double>>;
    View<double> SFDepoRateDebt; ///< of debt, that is deposited
    View<double> SFDepoRateAss;  ///< of assets
    View<double> IntSF;
    View<double> SFRateFee; ///< on assets
};
struct FundBalances {
    using takes = Takes<Range<date>, Range<double>, Range<double>, Range<double>, Range<double>, Range<double>>;
    View<date> SFExogDates;
    View<double> SFExogAssBals, SFExogDebtBals;
    View<double> SFExogDepos;   ///< deposits on these dates from elsewhere, negative
    View<double> SFIntOverRide; ///< interest in place of the calculated one
    View<double> SFDeposEst;    ///< deposits that the cash flows hold already, zero or negative
};

/// One value for each period of the time base.
WorkList<double> LoanAcctEM(View<date> Timebase, const Borrowing& borrowing, const AccountRates& rates,
                            const AccountFlows& flows, double LoanTerm, const ExternalMargin& margin,
                            const OpeningBalances& opening, int Options, int LAOutput,
                            const AccountDayCounts& day_counts, double DCEM, const AccountPeriods& periods,
                            const AnnualSequence& PrdsEM, double ProjMode);
/// The same without a margin.
WorkList<double> LoanAcct(View<date> Timebase, const Borrowing& borrowing, const AccountRates& rates,
                          const AccountFlows& flows, double LoanTerm, const OpeningBalances& opening, int Options,
                          int LAOutput, const AccountDayCounts& day_counts, const AccountPeriods& periods,
                          double ProjMode);
/// The same without loans.
WorkList<double> STDAcct(View<date> Timebase, View<date> FromDatesInt, View<double> IntCash, View<double> IntSTD,
                         const AccountFlows& flows, const OpeningBalances& opening, int Options, int LAOutput,
                         double DCCash, double DCSTD, const AnnualSequence& PrdsCash, const AnnualSequence& PrdsSTD,
                         double ProjMode);
/// LoanAcctEM with a sinking fund, into which a part of debt and assets is deposited, and a fee on its assets; what it
/// comes to is read off under accruals. ParamArray: Threshold, Tranche, LoanTerm. OBArray: STD, cash, sinking fund.
/// DCArray: day counts of loans, cash, STD, margin, interest on the fund, its fee. Prds: numbers of preset sequences of
/// loans, cash, STD, margin, deposits, interest on the fund, its fee, the fiscal year.
WorkList<double> LoanAcctEMH(View<date> Timebase, const AccountRates& rates, const FundRates& fund_rates,
                             const AccountFlows& flows, View<double> ParamArray, const ExternalMargin& margin,
                             View<double> OBArray, const FundBalances& fund, int Options, int LAMHOutput,
                             View<double> DCArray, View<double> Prds);

} // namespace qx
