// The run of a simulated account: its terms, the walk over its dates, and what it comes to in each period.
#pragma once

#include "banking/accounts_ledgers.h"
#include "banking/accounts_simulation.h"
#include "calendar/date_arithmetic.h"
#include "calendar/time_period.h"
#include "core/logs.h"
#include "core/routine.h"

#include <string_view>

namespace qx {

/// False for a list that is omitted or blank cells.
inline bool given(View<double> list) { return list.lastnonblank() > 0; }

/// The part of LoanAcctEMH's terms that LoanAcctEM does not have.
struct FundTerms {
    const FundRates& rates;
    FundBalances exogenous;
    double opening;
    double DCInterest, DCFee;
    const AnnualSequence &PrdsSF, &PrdsSFInt, &PrdsSFFee, &PrdsFiscal;
};

/// All that an account's figures depend on, but for the output requested.
struct AccountTerms {
    View<date> Timebase;
    Borrowing borrowing;
    AccountRates rates;
    AccountFlows flows;
    double LoanTerm; ///< years
    ExternalMargin margin;
    OpeningBalances opening;
    int Options;
    AccountDayCounts day_counts;
    double DCEM;
    AccountPeriods periods;
    const AnnualSequence& PrdsEM;
    double ProjMode;
    const FundTerms* fund; ///< null for none

    bool option(AccountOption which) const { return (Options & which) != 0; }
    bool has_margin() const { return given(margin.IntEM); }
    timeperiod period(int i) const { return timebase_period(Timebase, i); }
};

/// The trace, and the log file if there is one.
class Journal {
  public:
    Journal(const Routine& here, bool to_file, std::string_view label) : here_(here) {
        if (to_file) file_.open(label);
    }
    bool on() const { return here_.traced() || file_.isopen(); }
    template <class... Pieces>
    void line(const Pieces&... pieces) {
        if (!on()) return;
        here_.info(pieces...);
        if (file_.isopen()) file_.writeline(text_of(pieces...));
    }
    /// A heading; what follows is in its block.
    template <class... Pieces>
    [[nodiscard]] TraceBlock pass(int index, const Pieces&... pieces) {
        if (file_.isopen()) file_.writeline(text_of(pieces...));
        return here_.pass(index, pieces...);
    }
    void close() { file_.close(); }

  private:
    const Routine& here_;
    LogFile file_;
};

enum LedgerKind : int { of_cash, of_short_term, of_long_term, of_margin, of_fund, of_fee, ledger_kinds };

/// What an account comes to in each period.
struct Statement {
    int periods;
    LedgerFigures figures[ledger_kinds][range_capacity];
    double repaid[range_capacity], advanced[range_capacity]; ///< loans
    double from_elsewhere[range_capacity];                   ///< exogenous deposits into the fund
};

/// Calculates an account and fills in its statement. The lists of dates ascend, and there is a period. Throws
/// outofrange for a list that is too short.
void run_account(const AccountTerms& terms, Journal& journal, Statement& statement);

} // namespace qx
