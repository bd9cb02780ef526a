#include "banking/accounts_simulation.h"

#include "banking/accounts_ledgers.h"
#include "core/logs.h"
#include "core/routine.h"
#include "core/safe_arithmetic.h"

#include <algorithm>
#include <cmath>
#include <iterator>
#include <optional>

namespace qx {

namespace {

constexpr int most_events = 9999;
constexpr int months_before = 60;      ///< from an opening balance to the first event
constexpr double mere_rounding = 1e-9; ///< of the amounts at work: requires no loan
constexpr int kept_accounts = 4;

/// The part of LoanAcctEMH's terms that LoanAcctEM does not have.
struct FundTerms {
    const FundRates& rates;
    const FundBalances& exogenous;
    double opening;
    double DCInterest, DCFee;
    const AnnualSequence &PrdsSF, &PrdsSFInt, &PrdsSFFee, &PrdsFiscal;
};

/// All that an account's figures depend on, but for the output asked for.
struct AccountTerms {
    View<date> Timebase;
    const Borrowing& borrowing;
    const AccountRates& rates;
    const AccountFlows& flows;
    double LoanTerm; ///< years
    const ExternalMargin& margin;
    const OpeningBalances& opening;
    int Options;
    const AccountDayCounts& day_counts;
    double DCEM;
    const AccountPeriods& periods;
    const AnnualSequence& PrdsEM;
    double ProjMode;
    const FundTerms* fund; ///< null for none

    bool option(AccountOption which) const { return (Options & which) != 0; }
    bool has_margin() const { return !margin.IntEM.empty(); }
    timeperiod period(int i) const {
        timeperiod period;
        period.setfromtimebase_by_months(Timebase, i);
        return period;
    }
};

// --- What is written as an account is calculated
// ------------------------------------------------------------------------

/// The trace, and the log file if there is one.
class Journal {
  public:
    Journal(const Routine& here, bool to_file, const char* label) : here_(here) {
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

// --- The run --------------------------------------------------------------------------------------------------------

enum LedgerKind : int { of_cash, of_short_term, of_long_term, of_margin, of_fund, of_fee, ledger_kinds };

/// What an account comes to in each period.
struct Statement {
    int periods;
    LedgerFigures figures[ledger_kinds][range_capacity];
    double repaid[range_capacity], advanced[range_capacity]; ///< loans
    double from_elsewhere[range_capacity];                   ///< exogenous deposits into the fund
};

/// The ledgers at work, which are those of one run at a time.
struct Books {
    Ledger cash, short_term, margin, fund, fee, elsewhere;
    LoanBook loans;

    void clear() {
        for (Ledger* ledger : {&cash, &short_term, &margin, &fund, &fee, &elsewhere}) ledger->clear();
        loans.clear();
    }
};
Books books;

/// A charge and the rates of its spans.
struct Charging {
    Charge charge;
    Accrual accrual;

    explicit Charging(const Charge& terms)
        : charge(terms), accrual(terms.FromDates, terms.rates, terms.DayCount, terms.Periods) {}
    double on(const Ledger& ledger, const timeperiod& span, double ProjMode) const {
        return ledger.interest(span, charge, accrual, ProjMode);
    }
    LedgerFigures figures(const Ledger& ledger, const timeperiod& period, double ProjMode) const {
        return ledger.figures(period, charge, accrual, ProjMode);
    }
};

/// The next of dates that come round: asked for again only when it is past.
class Coming {
  public:
    explicit Coming(const AnnualSequence* dates) : dates_(dates) {}
    const date& after(const date& day) {
        if (dates_ == nullptr) return DateCrit;
        if (next_ <= day) next_ = dates_->nextdate(day, false);
        return next_;
    }

  private:
    const AnnualSequence* dates_; ///< null for none
    date next_;
};

class AccountRun {
  public:
    AccountRun(const AccountTerms& terms, Journal& journal)
        : t_(terms), journal_(journal),
          cash_({t_.rates.FromDatesInt, t_.rates.IntCash, t_.day_counts.DCCash, t_.periods.PrdsCash}),
          short_term_({t_.rates.FromDatesInt, t_.rates.IntSTD, t_.day_counts.DCSTD, t_.periods.PrdsSTD}),
          loans_({t_.rates.FromDatesInt, t_.rates.IntLoan, t_.day_counts.DCLoan, t_.periods.PrdsLoan, t_.Options}),
          margin_({t_.margin.FromDEM, t_.margin.IntEM, t_.DCEM, t_.PrdsEM, t_.Options}) {
        if (const FundTerms* f = t_.fund; f != nullptr) {
            fund_.emplace(Charge{t_.rates.FromDatesInt, f->rates.IntSF, f->DCInterest, f->PrdsSFInt, t_.Options,
                                 f->exogenous.SFIntOverRide.empty() ? View<date>{} : f->exogenous.SFExogDates,
                                 f->exogenous.SFIntOverRide});
            fee_.emplace(Charge{t_.rates.FromDatesInt, f->rates.SFRateFee, f->DCFee, f->PrdsSFFee});
        }
    }

    void run();
    void read(Statement& statement) const;

  private:
    /// What an event has come to so far. Interest, fees and deposits are of the sign of the account: paid negative.
    struct Event {
        date today, next;
        double flow = 0.0;
        double cash_interest = 0.0, short_term_interest = 0.0, long_term_interest = 0.0, margin_interest = 0.0;
        double fund_deposit = 0.0, fund_interest = 0.0, fund_fee = 0.0;
        double repaid = 0.0;
        double loan = 0.0, short_term = 0.0;
        double required = 0.0;

        timeperiod span() const { return {today, next}; }
        double paid_and_received() const {
            return cash_interest + short_term_interest + margin_interest + long_term_interest + fund_deposit +
                   fund_interest + fund_fee;
        }
    };

    date open();
    date look_ahead(const date& today);
    void take_flow(Event& event);
    void assess_margin(const Event& event);
    void assess_fee(Event& event);
    void take_deposit_from_elsewhere(const Event& event);
    void assess_deposit(Event& event);
    void charge_loans(Event& event);
    void draw_loan(Event& event);
    void move_short_term(Event& event);
    void move_cash(Event& event);
    bool full() const { return books.fund.full() || books.elsewhere.full() || books.fee.full() || books.loans.full(); }

    const AccountTerms& t_;
    Journal& journal_;
    Charging cash_, short_term_, loans_, margin_;
    std::optional<Charging> fund_, fee_;

    int next_flow_ = 1;      ///< of CFTimes
    int next_deposit_ = 1;   ///< of SFExogDates
    int first_alive_ = 1;    ///< the first loan that has not been repaid
    double long_term_ = 0.0; ///< loans outstanding
    Coming cash_dates_{&t_.periods.PrdsCash}, short_term_dates_{&t_.periods.PrdsSTD}, loan_dates_{&t_.periods.PrdsLoan},
        margin_dates_{t_.has_margin() ? &t_.PrdsEM : nullptr},
        deposit_dates_{t_.fund != nullptr ? &t_.fund->PrdsSF : nullptr},
        fund_interest_dates_{t_.fund != nullptr ? &t_.fund->PrdsSFInt : nullptr},
        fee_dates_{t_.fund != nullptr ? &t_.fund->PrdsSFFee : nullptr};
};

/// Enters the opening balances and gives the date of the first event.
date AccountRun::open() {
    const double fund_opening = t_.fund != nullptr ? t_.fund->opening : 0.0;
    const View<date>& flows = t_.flows.CFTimes;
    const bool opened = !iszero(t_.opening.OBSTD) || !iszero(t_.opening.OBCash) || !iszero(fund_opening);
    date first = flows.empty() ? t_.Timebase.first()
                 : opened      ? std::min(t_.Timebase.first(), flows.first())
                               : flows.first();
    if (t_.fund != nullptr)
        for (int i = 1; i <= t_.fund->exogenous.SFExogDepos.size(); ++i)
            if (!iszero(t_.fund->exogenous.SFExogDepos(i))) {
                first = std::min(first, t_.fund->exogenous.SFExogDates(i));
                break;
            }
    if (!opened) return first;
    const date before = first.plusmonths(-months_before, true);
    if (!iszero(t_.opening.OBSTD)) {
        books.short_term.move(before, t_.opening.OBSTD);
        if (t_.has_margin()) books.margin.move(before, t_.opening.OBSTD);
    }
    if (!iszero(t_.opening.OBCash)) books.cash.move(before, t_.opening.OBCash);
    if (!iszero(fund_opening)) books.fund.move(before, fund_opening);
    return first;
}

date AccountRun::look_ahead(const date& today) {
    const View<date>& flows = t_.flows.CFTimes;
    while (next_flow_ <= flows.size() && flows(next_flow_) < today) ++next_flow_;
    int after = next_flow_;
    while (after <= flows.size() && flows(after) == today) ++after;
    date next = after <= flows.size() ? flows(after) : DateCrit;
    for (Coming* coming : {&cash_dates_, &short_term_dates_, &loan_dates_, &margin_dates_, &deposit_dates_,
                           &fund_interest_dates_, &fee_dates_})
        next = std::min(next, coming->after(today));
    if (t_.fund != nullptr) {
        const View<date>& deposits = t_.fund->exogenous.SFExogDates;
        int i = next_deposit_;
        while (i <= deposits.size() && deposits(i) <= today) ++i;
        if (i <= deposits.size()) next = std::min(next, deposits(i));
    }
    journal_.line("Date LookAhead: ", next);
    return next;
}

void AccountRun::take_flow(Event& event) {
    const View<date>& flows = t_.flows.CFTimes;
    for (; next_flow_ <= flows.size() && flows(next_flow_) == event.today; ++next_flow_)
        event.flow += t_.flows.Cashflows.get(next_flow_);
    journal_.line("Cash flow=", event.flow);
}

void AccountRun::assess_margin(const Event& event) {
    if (!t_.has_margin() || (t_.option(margin_snapshot) && !t_.PrdsEM.isdate(event.today))) return;
    const double basis = t_.option(margin_on_short_term)  ? books.short_term.balance()
                         : t_.option(margin_on_long_term) ? long_term_
                                                          : books.short_term.balance() + long_term_;
    const double advance = basis - books.margin.balance();
    journal_.line("External Margin Calcs: Target=", basis, " Notional advance=", advance);
    if (!iszero(advance)) books.margin.move(event.today, advance);
}

void AccountRun::assess_fee(Event& event) {
    if (t_.fund->PrdsSFFee.isdate(event.today)) {
        const double assets = level_on(event.today, t_.fund->exogenous.SFExogDates, t_.fund->exogenous.SFExogAssBals);
        const double change = -books.fund.balance() - assets - books.fee.balance();
        journal_.line("SF Fee Assessment: Inputs: SF balance=", books.fund.balance(), " Exogenous assets=", assets,
                      " Fee basis brought forward=", books.fee.balance(), " Change=", change);
        if (!iszero(change)) books.fee.move(event.today, change);
    }
    event.fund_fee = without_dust(fee_->on(books.fee, event.span(), 1.0));
}

void AccountRun::take_deposit_from_elsewhere(const Event& event) {
    const FundBalances& exogenous = t_.fund->exogenous;
    const View<date>& dates = exogenous.SFExogDates;
    for (; next_deposit_ <= dates.size() && dates(next_deposit_) <= event.today; ++next_deposit_) {
        if (dates(next_deposit_) < event.today || next_deposit_ > exogenous.SFExogDepos.size()) continue;
        const double deposit = exogenous.SFExogDepos(next_deposit_);
        if (iszero(deposit)) continue;
        journal_.line("Exog Cash Deposit No ", next_deposit_, "=", deposit);
        books.fund.move(event.today, deposit);
        books.elsewhere.move(event.today, deposit);
    }
}

void AccountRun::assess_deposit(Event& event) {
    if (!t_.fund->PrdsSF.isdate(event.today)) return;
    const FundBalances& exogenous = t_.fund->exogenous;
    const date fiscal = t_.fund->PrdsFiscal.prevdate(event.today, false);
    const double debts = level_on(fiscal, exogenous.SFExogDates, exogenous.SFExogDebtBals);
    const double assets = level_on(fiscal, exogenous.SFExogDates, exogenous.SFExogAssBals);
    const double estimate = level_on(event.today, exogenous.SFExogDates, exogenous.SFDeposEst);
    const double of_debt = level_on(event.today, t_.rates.FromDatesInt, t_.fund->rates.SFDepoRateDebt);
    const double of_assets = level_on(event.today, t_.rates.FromDatesInt, t_.fund->rates.SFDepoRateAss);
    journal_.line("SF Assessment: Inputs: Fiscal date=", fiscal, " Exogenous debt=", debts,
                  " Exogenous assets=", assets, " STD=", books.short_term.balance(), " LTD=", long_term_,
                  " SF=", books.fund.balance(), " Estimate=", estimate);
    const double total_debt = 0.0 - of_debt * (debts + books.short_term.balance() + long_term_);
    const double total_assets = (books.fund.balance() + assets) * of_assets;
    const double total = total_debt + total_assets;
    journal_.line("SFDepo TotalDebt=", total_debt);
    journal_.line("SFDepo TotalAssets=", total_assets);
    journal_.line("SFDepo Total =", total);
    if (-estimate < -total)
        event.fund_deposit = total - estimate;
    else
        journal_.line("    No deposit is made because the calculated deposit is less than the estimated one");
    if (iszero(event.fund_deposit)) event.fund_deposit = 0.0;
    if (event.fund_deposit != 0.0) books.fund.move(event.today, event.fund_deposit);
}

/// Interest on the loans that run, newest first, and the repayment of those that end in the span.
void AccountRun::charge_loans(Event& event) {
    if (long_term_ <= tolerance) return;
    const timeperiod span = event.span();
    const LoanPeriod period(span, loans_.charge, loans_.accrual, 1.0);
    for (int i = books.loans.size(); i >= first_alive_; --i) {
        event.long_term_interest += books.loans.interest(i, period, loans_.charge, loans_.accrual);
        if (span.contains(books.loans.end(i))) event.repaid += books.loans.amount(i);
    }
    while (first_alive_ <= books.loans.size() && books.loans.end(first_alive_) < event.next) ++first_alive_;
    long_term_ -= event.repaid;
    if (first_alive_ > books.loans.size()) long_term_ = 0.0; // not what rounding leaves
    journal_.line("LTD Effects: Interest=", event.long_term_interest, " Repayments=", event.repaid,
                  " LTD balance=", long_term_);
}

void AccountRun::draw_loan(Event& event) {
    const double short_term = books.short_term.balance(), cash = books.cash.balance();
    const double required = std::max(0.0, event.required + short_term + cash + t_.borrowing.Threshold);
    journal_.line("LTD Requirement: LTD Req (max zero)=", required);
    const double at_work = std::max({std::fabs(event.required), short_term, std::fabs(cash), event.repaid,
                                     std::fabs(event.flow), std::fabs(t_.borrowing.Threshold)});
    if (required <= std::max(tolerance, mere_rounding * at_work)) return;
    if (t_.option(loans_on_their_dates) && !t_.periods.PrdsLoan.isdate(event.today)) {
        journal_.line("    req_lt carried over because it's not available on this date =", required);
        return;
    }
    const date end = event.today.plusyears(t_.LoanTerm, true);
    if (end <= event.today || books.loans.full()) return; // no term, no loan
    event.loan = SCeiling(required, t_.borrowing.Tranche, 0.0);
    const double rate = t_.option(fixed_rates) ? level_on(event.today, t_.rates.FromDatesInt, t_.rates.IntLoan) : 0.0;
    books.loans.lend(event.today, end, event.loan, rate);
    event.required -= event.loan;
    long_term_ += event.loan;
    if (end < event.next) event.next = end; // one that is over before anything else happens
    journal_.line("New loan no ", books.loans.size(), "=", event.loan, " until ", end);
}

void AccountRun::move_short_term(Event& event) {
    const double threshold = t_.borrowing.Threshold;
    const double owed = books.short_term.balance();
    const double required = event.required + books.cash.balance() + (threshold >= 0.0 ? threshold : 0.0);
    event.short_term = required >= 0.0 || -required <= owed ? required : -owed;
    if (iszero(event.short_term)) event.short_term = 0.0;
    journal_.line("STD Requirement: Req ST=", required, " Allocation=", event.short_term);
    if (event.short_term == 0.0) return;
    books.short_term.move(event.today, event.short_term);
    event.required -= event.short_term;
}

void AccountRun::move_cash(Event& event) {
    const double required = -(event.flow + event.loan + event.short_term + event.paid_and_received() - event.repaid);
    journal_.line("Cash Requirement: Cash Req=", required);
    if (!iszero(required)) books.cash.move(event.today, required);
}

void AccountRun::run() {
    books.clear();
    const date end = t_.period(t_.Timebase.size()).to();
    Event event;
    event.next = open();
    for (int n = 1; n <= most_events && event.next <= end && !full(); ++n) {
        event = Event{.today = event.next, .next = {}};
        const TraceBlock block = journal_.pass(n, "Time Period n=", n, ", ", event.today);
        event.next = look_ahead(event.today);
        take_flow(event);
        assess_margin(event);
        if (t_.fund != nullptr) {
            assess_fee(event);
            take_deposit_from_elsewhere(event);
            assess_deposit(event);
            event.fund_interest = without_dust(fund_->on(books.fund, event.span(), 1.0));
        }
        event.cash_interest = without_dust(cash_.on(books.cash, event.span(), 1.0));
        event.short_term_interest = without_dust(short_term_.on(books.short_term, event.span(), 1.0));
        charge_loans(event);
        if (t_.has_margin()) event.margin_interest = without_dust(margin_.on(books.margin, event.span(), 1.0));
        event.required = event.repaid - event.flow - event.paid_and_received();
        journal_.line("Net Requirement: -", event.flow, " - STD Interest ", event.short_term_interest, " - Margin ",
                      event.margin_interest, " - Cash Interest ", event.cash_interest, " + Repayments ", event.repaid,
                      " - LTD Interest ", event.long_term_interest);
        if (t_.fund != nullptr)
            journal_.line(" - Deposit to SF ", event.fund_deposit, " - Interest on SF ", event.fund_interest,
                          " - Fee on SF ", event.fund_fee);
        journal_.line("Net Requirement=", event.required);
        draw_loan(event);
        move_short_term(event);
        move_cash(event);
        journal_.line("Balances: Cash=", books.cash.balance(), " STD=", books.short_term.balance(),
                      " LTD=", long_term_);
    }
}

/// What each ledger comes to in each period.
void AccountRun::read(Statement& statement) const {
    statement.periods = t_.Timebase.size();
    int newest = 0, oldest = 1; // loans that have started by the period's end, and have not ended before it
    for (int p = 0; p < statement.periods; ++p) {
        const timeperiod period = t_.period(p + 1);
        const auto put = [&](LedgerKind kind, const Charging& charging, const Ledger& ledger) {
            statement.figures[kind][p] = charging.figures(ledger, period, t_.ProjMode);
        };
        put(of_cash, cash_, books.cash);
        put(of_short_term, short_term_, books.short_term);
        put(of_margin, margin_, books.margin);
        statement.from_elsewhere[p] = 0.0;
        if (t_.fund != nullptr) {
            put(of_fund, *fund_, books.fund);
            put(of_fee, *fee_, books.fee);
            statement.from_elsewhere[p] = books.elsewhere.moved(period);
        }
        LedgerFigures of_loans;
        double repaid = 0.0, advanced = 0.0;
        while (newest < books.loans.size() && books.loans.start(newest + 1) <= period.to()) ++newest;
        while (oldest <= newest && books.loans.end(oldest) < period.from()) ++oldest;
        if (oldest <= newest) {
            const LoanPeriod common(period, loans_.charge, loans_.accrual, t_.ProjMode);
            for (int i = newest; i >= oldest; --i) {
                of_loans += books.loans.figures(i, common, loans_.charge, loans_.accrual);
                if (period.contains(books.loans.end(i))) repaid += books.loans.amount(i);
                if (period.contains(books.loans.start(i))) advanced += books.loans.amount(i);
            }
        }
        statement.figures[of_long_term][p] = of_loans;
        statement.repaid[p] = repaid;
        statement.advanced[p] = advanced;
    }
}

// --- What is kept
// -------------------------------------------------------------------------------------------------------

template <class Visit>
void each_input(const AccountTerms& t, Visit& visit) {
    visit("Cashflows", t.flows.Cashflows);
    visit("IntLoan", t.rates.IntLoan);
    visit("IntSTD", t.rates.IntSTD);
    visit("IntCash", t.rates.IntCash);
    visit("CFTimes", t.flows.CFTimes);
    visit("FromDatesInt", t.rates.FromDatesInt);
    visit("FromDEM", t.margin.FromDEM);
    visit("IntEM", t.margin.IntEM);
    visit("PrdsSTD", t.periods.PrdsSTD);
    visit("PrdsEM", t.PrdsEM);
    visit("PrdsLoan", t.periods.PrdsLoan);
    visit("PrdsCash", t.periods.PrdsCash);
    visit("Timebase", t.Timebase);
    visit("Threshold", t.borrowing.Threshold);
    visit("Tranche", t.borrowing.Tranche);
    visit("LoanTerm", t.LoanTerm);
    visit("OBCash", t.opening.OBCash);
    visit("OBSTD", t.opening.OBSTD);
    visit("Options", static_cast<double>(t.Options));
    visit("DCLoan", t.day_counts.DCLoan);
    visit("DCCash", t.day_counts.DCCash);
    visit("DCSTD", t.day_counts.DCSTD);
    visit("DCEM", t.DCEM);
    visit("ProjMode", t.ProjMode);
    visit("Sinking fund", static_cast<double>(t.fund != nullptr));
    if (t.fund == nullptr) return;
    const FundTerms& f = *t.fund;
    visit("SFDepoRateDebt", f.rates.SFDepoRateDebt);
    visit("SFDepoRateAss", f.rates.SFDepoRateAss);
    visit("IntSF", f.rates.IntSF);
    visit("SFRateFee", f.rates.SFRateFee);
    visit("SFExogDates", f.exogenous.SFExogDates);
    visit("SFExogAssBals", f.exogenous.SFExogAssBals);
    visit("SFExogDebtBals", f.exogenous.SFExogDebtBals);
    visit("SFExogDepos", f.exogenous.SFExogDepos);
    visit("SFIntOverRide", f.exogenous.SFIntOverRide);
    visit("SFDeposEst", f.exogenous.SFDeposEst);
    visit("OBSF", f.opening);
    visit("DCSFInt", f.DCInterest);
    visit("DCSFFee", f.DCFee);
    visit("PrdsSF", f.PrdsSF);
    visit("PrdsSFInt", f.PrdsSFInt);
    visit("PrdsSFFee", f.PrdsSFFee);
    visit("PrdsFiscal", f.PrdsFiscal);
}

// An input as the numbers that make it what it is.
template <class Put>
void each_number(double value, Put put) {
    put(value);
}
template <class Put>
void each_number(View<double> values, Put put) {
    for (const double value : values) put(value);
}
template <class Put>
void each_number(View<date> days, Put put) {
    for (const date& day : days) put(day.dtn()), put(day.months());
}
template <class Put>
void each_number(const AnnualSequence& dates, Put put) {
    put(dates.arrears());
    put(dates.BusDaySwitch());
    put(dates.rolling_convention());
    for (const double entry : dates) put(entry);
}

/// The inputs of a run, one after the other: how many numbers each has, then the numbers.
class SavedInputs {
  public:
    void save(const AccountTerms& terms) {
        double* at = numbers_;
        const auto store = [&](const char*, const auto& input) {
            double& count = *at++;
            const double* const first = at;
            each_number(input, [&](double number) { *at++ = number; });
            count = static_cast<double>(at - first);
        };
        each_input(terms, store);
        used_ = at - numbers_;
    }
    bool same(const AccountTerms& terms) const {
        bool all = true;
        compare(terms, [&](const char*, bool alike) { return all &= alike; });
        return all;
    }
    std::string changed(const AccountTerms& terms) const {
        std::string names;
        compare(terms, [&](const char* name, bool alike) {
            if (!alike) names += std::string(names.empty() ? "" : ", ") + name;
            return true;
        });
        return names;
    }

  private:
    /// Asks `go_on` about each input and whether it is as it was, until it has enough.
    template <class GoOn>
    void compare(const AccountTerms& terms, GoOn go_on) const {
        const double* at = numbers_;
        bool enough = false;
        const auto check = [&](const char* name, const auto& input) {
            if (enough) return;
            bool alike = at < numbers_ + used_;
            std::ptrdiff_t n = 0;
            const std::ptrdiff_t count = alike ? static_cast<std::ptrdiff_t>(*at++) : 0;
            each_number(input, [&](double number) {
                alike = alike && n < count && at[n] == number;
                ++n;
            });
            at += count;
            enough = !go_on(name, alike && n == count);
        };
        each_input(terms, check);
    }

    static constexpr int lists = 14, date_lists = 5, sequences = 8, settings = 64;
    std::ptrdiff_t used_;
    double numbers_[(lists + 2 * date_lists) * range_capacity + sequences * (AnnualSequence::capacity + 4) + settings];
};

struct KeptAccount {
    bool valid;
    unsigned last_used;
    SavedInputs inputs;
    Statement statement;
};
KeptAccount kept[kept_accounts];
unsigned uses = 0;

KeptAccount& latest() {
    return *std::max_element(std::begin(kept), std::end(kept),
                             [](const KeptAccount& a, const KeptAccount& b) { return a.last_used < b.last_used; });
}
KeptAccount& oldest() {
    return *std::min_element(std::begin(kept), std::end(kept),
                             [](const KeptAccount& a, const KeptAccount& b) { return a.last_used < b.last_used; });
}

/// The statement of an account: one that is kept, or that of a run.
const Statement& statement_of(const Routine& here, const AccountTerms& terms, const char* label) {
    for (KeptAccount& account : kept)
        if (account.valid && account.inputs.same(terms)) {
            here.info("Data already calculated, skipping main calculation loop");
            account.last_used = ++uses;
            return account.statement;
        }
    Journal journal(here, terms.option(write_account_log), label);
    if (journal.on()) {
        if (terms.option(write_account_log)) journal.line(label, " log file opened");
        const KeptAccount& last = latest();
        journal.line("Recalculation due to changes in following variables: ",
                     last.valid ? last.inputs.changed(terms) : std::string("all"));
        if (terms.has_margin()) {
            journal.line(terms.option(margin_snapshot) ? "EM snapshot mode" : "EM average balance mode");
            journal.line("External margin on ", terms.option(margin_on_short_term)  ? "STD"
                                                : terms.option(margin_on_long_term) ? "LTD"
                                                                                    : "STD and LTD");
        }
        if (terms.fund != nullptr)
            journal.line(
                (terms.Options & zero_is_no_override) != 0 ? "SF Int OverRide set to IgnoreIfZero due to option 256"
                : (terms.Options & ignore_overrides) != 0  ? "SF Int OverRide set to IgnoreInAnyEvent due to option 512"
                                                           : "SF Int OverRide set to UseOverRideEvenIfZero");
    }
    KeptAccount& account = oldest();
    account.valid = false;
    account.last_used = 0;
    AccountRun run(terms, journal);
    run.run();
    run.read(account.statement);
    account.inputs.save(terms);
    account.valid = true;
    account.last_used = ++uses;
    if (terms.option(write_account_log)) journal.line("Log file closed");
    journal.close();
    return account.statement;
}

// --- What is read
// -------------------------------------------------------------------------------------------------------

enum AccountFigure : int {
    principal,
    interest,
    debt_service,
    opening,
    average,
    closing,
    figures,
    repayments = 6,
    advances = 7
};

double figure_of(const LedgerFigures& ledger, int figure) {
    switch (figure) {
    case principal:
        return ledger.principal;
    case interest:
        return ledger.interest;
    case debt_service:
        return ledger.principal + ledger.interest;
    case opening:
        return ledger.opening;
    case average:
        return ledger.average;
    default:
        return ledger.closing;
    }
}

/// What an output adds up: a figure, and the ledgers of which it is one.
struct Reading {
    int figure;
    bool of[ledger_kinds] = {};
    bool all = false; ///< of the account, where margin and fee count as what they cost

    Reading(const Routine& here, const char* name, int LAOutput, bool has_fund) : figure(LAOutput % 10) {
        const int tens = LAOutput / 10;
        const bool loans_moved = LAOutput == 16 || LAOutput == 17;
        const bool known = LAOutput >= 0 && (figure < figures || loans_moved) && (!has_fund || tens <= 8);
        if (!known)
            here.fail<errlibillegalswitch>(name, name, " ", LAOutput, " is invalid in the ", here.name(), " function");
        if (tens == 0) {
            all = true;
            for (bool& each : of) each = true;
        } else if (tens < 4) {
            static constexpr LedgerKind kinds[] = {of_long_term, of_short_term, of_cash};
            of[kinds[tens - 1]] = true;
        } else {
            of[has_fund && tens == 7 ? of_fund : has_fund && tens == 8 ? of_fee : of_margin] = true;
        }
    }
};

void read_period(Journal& journal, const Statement& statement, const Reading& reading, int p, double& sum) {
    static constexpr struct {
        LedgerKind kind;
        const char* name;
    } order[] = {{of_margin, "External margin "}, {of_cash, "Cash "},
                 {of_short_term, "ST debt "},     {of_fund, "Sinking fund "},
                 {of_fee, "Sinking fund fee "},   {of_long_term, "LT debt "}};
    sum = 0.0;
    if (reading.figure == repayments || reading.figure == advances) {
        sum = (reading.figure == repayments ? statement.repaid : statement.advanced)[p];
        return;
    }
    for (const auto& [kind, name] : order) {
        if (!reading.of[kind]) continue;
        int figure = reading.figure;
        if (reading.all && (kind == of_margin || kind == of_fee)) {
            if (figure != interest && figure != debt_service) continue;
            figure = interest;
        }
        const double amount = figure_of(statement.figures[kind][p], figure);
        if (journal.on()) journal.line(name, amount);
        sum += amount;
    }
    const double from_elsewhere = statement.from_elsewhere[p];
    if (reading.all && (reading.figure == principal || reading.figure == debt_service) && from_elsewhere != 0.0) {
        journal.line("LAO2a (Before Exog Cash reversal: x=", sum, ")");
        sum -= from_elsewhere;
        journal.line("LAO2a (After Exog Cash reversal of ", from_elsewhere, ": x=", sum, ")");
    }
}

WorkList<double> read_account(Routine& here, const AccountTerms& terms, const char* output_name, int LAOutput,
                              const char* label, const char* second_label) {
    const Reading reading(here, output_name, LAOutput, terms.fund != nullptr);
    const int n = terms.Timebase.size();
    if (n == 0) {
        here.warning("No timeperiods set for this array function");
        here.fail<inputerror>("Timebase");
    }
    const Statement& statement = statement_of(here, terms, label);
    Journal journal(here, terms.option(write_account_log), second_label);
    WorkList<double> column(n);
    const TraceBlock loop = here.loop("Timeperiod Loop", "Looping over each timeperiod in the array function");
    for (int i = 1; i <= n; ++i) {
        if (!journal.on()) {
            read_period(journal, statement, reading, i - 1, column(i));
            continue;
        }
        const TraceBlock pass = journal.pass(i, "TimePeriod ", terms.period(i));
        read_period(journal, statement, reading, i - 1, column(i));
    }
    journal.close();
    return column;
}

void check_opening(const Routine& here, double OBSTD, double OBCash) {
    if (!iszero(OBSTD) && OBSTD < 0.0)
        here.fail<errlibunexpectedcase>("OBSTD",
                                        "Opening Short Term debt balance must be a positive number (for indebtedness)");
    if (!iszero(OBCash) && OBCash > 0.0)
        here.fail<errlibunexpectedcase>("OBCash",
                                        "Opening Cash balance must be a negative number (for cash in the bank)");
}

void check_margin(const Routine& here, const AccountTerms& terms) {
    if (terms.has_margin() && !terms.option(margin_snapshot) && !terms.PrdsEM.arrears())
        here.fail<illegalvalue>("PrdsEM", "Cannot have EMPrds in advance if the fee basis is in Average Balance mode");
}

/// Throws errlibunexpectedcase unless the items of a list have the right sign.
void check_sign(const Routine& here, View<double> amounts, int sign, const char* variable, const char* text) {
    for (const double amount : amounts)
        if (!iszero(amount) && sign * amount < 0.0) here.fail<errlibunexpectedcase>(variable, text);
}

/// Entry i of a list of settings, or another value where the list is shorter.
double setting(View<double> list, int i, double otherwise) { return i <= list.size() ? list(i) : otherwise; }

} // namespace

WorkList<double> LoanAcctEM(View<date> Timebase, const Borrowing& borrowing, const AccountRates& rates,
                            const AccountFlows& flows, double LoanTerm, const ExternalMargin& margin,
                            const OpeningBalances& opening, int Options, int LAOutput,
                            const AccountDayCounts& day_counts, double DCEM, const AccountPeriods& periods,
                            const AnnualSequence& PrdsEM, double ProjMode) {
    Routine here{"LoanAcctEM"};
    here.inputs(Timebase, borrowing, rates, flows, LoanTerm, margin, opening, Options, LAOutput, day_counts, DCEM,
                periods, PrdsEM, ProjMode);
    here.limit(day_counts.DCLoan, daycount_limits, "DCLoan");
    here.limit(day_counts.DCCash, daycount_limits, "DCCash");
    here.limit(day_counts.DCSTD, daycount_limits, "DCSTD");
    here.limit(DCEM, daycount_limits, "DCEM");
    here.limit(ProjMode, projmode_limits, "ProjMode");
    const AccountTerms terms{Timebase, borrowing,  rates, flows,   LoanTerm, margin,   opening,
                             Options,  day_counts, DCEM,  periods, PrdsEM,   ProjMode, nullptr};
    check_margin(here, terms);
    check_opening(here, opening.OBSTD, opening.OBCash);
    return here.returning(read_account(here, terms, "LAOutput", LAOutput, "LoanAcctEM", "LoanAcctEM2"));
}

WorkList<double> LoanAcct(View<date> Timebase, const Borrowing& borrowing, const AccountRates& rates,
                          const AccountFlows& flows, double LoanTerm, const OpeningBalances& opening, int Options,
                          int LAOutput, const AccountDayCounts& day_counts, const AccountPeriods& periods,
                          double ProjMode) {
    static const AnnualSequence no_margin_dates(-4);
    Routine here{"LoanAcct"};
    here.inputs(Timebase, borrowing, rates, flows, LoanTerm, opening, Options, LAOutput, day_counts, periods, ProjMode);
    return here.returning(LoanAcctEM(Timebase, borrowing, rates, flows, LoanTerm, {}, opening, Options, LAOutput,
                                     day_counts, 5.0, periods, no_margin_dates, ProjMode));
}

WorkList<double> STDAcct(View<date> Timebase, View<date> FromDatesInt, View<double> IntCash, View<double> IntSTD,
                         const AccountFlows& flows, const OpeningBalances& opening, int Options, int LAOutput,
                         double DCCash, double DCSTD, const AnnualSequence& PrdsCash, const AnnualSequence& PrdsSTD,
                         double ProjMode) {
    constexpr double never = -1e12; ///< a threshold that no requirement passes
    Routine here{"STDAcct"};
    here.inputs(Timebase, FromDatesInt, IntCash, IntSTD, flows, opening, Options, LAOutput, DCCash, DCSTD, PrdsCash,
                PrdsSTD, ProjMode);
    return here.returning(LoanAcctEM(Timebase, {never, 0.0}, {FromDatesInt, IntCash, IntCash, IntSTD}, flows, 0.0, {},
                                     opening, Options, LAOutput, {DCCash, DCCash, DCSTD}, 5.0,
                                     {PrdsCash, PrdsCash, PrdsSTD}, PrdsCash, ProjMode));
}

WorkList<double> LoanAcctEMH(View<date> Timebase, const AccountRates& rates, const FundRates& fund_rates,
                             const AccountFlows& flows, View<double> ParamArray, const ExternalMargin& margin,
                             View<double> OBArray, const FundBalances& fund, int Options, int LAMHOutput,
                             View<double> DCArray, View<double> Prds) {
    Routine here{"LoanAcctEMH"};
    here.inputs(Timebase, rates, fund_rates, flows, ParamArray, margin, OBArray, fund, Options, LAMHOutput, DCArray,
                Prds);
    const Borrowing borrowing{ParamArray.get(1), ParamArray.get(2)};
    const double LoanTerm = ParamArray.get(3);
    here.info("ParamArray  1.Threshold=", borrowing.Threshold, "  2.Tranche=", borrowing.Tranche,
              "  3.LoanTerm=", LoanTerm, "  4.DebtDepoRate=", setting(ParamArray, 4, 0.0),
              "  5.AssetDepoRate=", setting(ParamArray, 5, 0.0));

    static constexpr const char* day_count_names[] = {"DCLoan", "DCCash", "DCSTD", "DCEM", "DCSFInt", "DCSFFee"};
    double codes[std::size(day_count_names)];
    for (std::size_t i = 0; i < std::size(codes); ++i) {
        codes[i] = setting(DCArray, static_cast<int>(i) + 1, default_daycount);
        here.limit(codes[i], daycount_limits, day_count_names[i]);
    }
    here.info("DayCount (DC)  1.Loan=", codes[0], "  2.Cash=", codes[1], "  3.STD=", codes[2], "  4.EM=", codes[3],
              "  5.SF Int=", codes[4], "  6.SF Fee=", codes[5]);

    static constexpr struct {
        const char* name;
        int preset;
    } calendars[] = {{"PrdsLoan", -4}, {"PrdsCash", -4},  {"PrdsSTD", -4},   {"PrdsEM", -4},
                     {"PrdsSF", -4},   {"PrdsSFInt", -4}, {"PrdsSFFee", -4}, {"PrdsFiscal", -1}};
    AnnualSequence sequences[std::size(calendars)];
    for (std::size_t i = 0; i < std::size(calendars); ++i) {
        const auto& [name, preset] = calendars[i];
        const double figure = setting(Prds, static_cast<int>(i) + 1, 0.0);
        sequences[i].clear(name, DefaultSequence::in_arrears);
        if (iszero(figure))
            sequences[i].setdefault(preset);
        else
            sequences[i].set_figure(figure, preset);
        sequences[i].validate();
        here.info(name, sequences[i]);
    }

    const OpeningBalances opening{setting(OBArray, 2, 0.0), setting(OBArray, 1, 0.0)};
    const double fund_opening = setting(OBArray, 3, 0.0);
    const FundTerms fund_terms{fund_rates,   fund,         fund_opening, codes[4],    codes[5],
                               sequences[4], sequences[5], sequences[6], sequences[7]};
    const AccountDayCounts day_counts{codes[0], codes[1], codes[2]};
    const AccountPeriods periods{sequences[0], sequences[1], sequences[2]};
    const AccountTerms terms{Timebase, borrowing,  rates,    flows,   LoanTerm,     margin, opening,
                             Options,  day_counts, codes[3], periods, sequences[3], 0.0,    &fund_terms};
    check_margin(here, terms);
    check_opening(here, opening.OBSTD, opening.OBCash);
    if (!iszero(fund_opening) && fund_opening > 0.0)
        here.fail<errlibunexpectedcase>(
            "OBArray", "Opening Sinking Fund balance must be a negative number (for cash in the bank)");
    check_sign(here, fund.SFDeposEst, -1, "SFDeposEst",
               "SFEstimates should be zero or negative because they are payments");
    check_sign(here, fund.SFExogDebtBals, 1, "SFExogDebtBals",
               "Exogenous Debt should be zero or positive because its a debt.");
    check_sign(here, fund.SFExogAssBals, -1, "SFExogAssBals",
               "Exogenous Assets should be negative or zero because they are assets, just like cash.");
    check_sign(here, fund.SFIntOverRide, 1, "SFIntOverRide", "SF Interest Override should be zero or positive.");
    return here.returning(read_account(here, terms, "LAMHOutput", LAMHOutput, "LoanAcctEMH", "LoanAcctEMH2"));
}

} // namespace qx
