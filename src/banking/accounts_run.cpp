#include "banking/accounts_run.h"

#include "core/safe_arithmetic.h"

#include <algorithm>
#include <cmath>
#include <optional>

namespace qx {

namespace {

constexpr int most_events = 9999;
constexpr int months_before = 60;      ///< from an opening balance to the first event
constexpr double mere_rounding = 1e-9; ///< of the amounts at work: requires no loan

/// The ledgers at work, which are those of one run at a time.
struct Books {
    Ledger cash, short_term, margin, fund, fee, elsewhere;
    LoanBook loans;

    void clear() {
        for (Ledger* ledger : {&cash, &short_term, &margin, &fund, &fee, &elsewhere}) ledger->clear();
        loans.clear();
    }
};
constinit Books books;

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

/// The next of dates that come round: looked up again only when it is past.
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
                                 given(f->exogenous.SFIntOverRide) ? f->exogenous.SFExogDates : View<date>{},
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
        margin_dates_{&t_.PrdsEM}, deposit_dates_{t_.fund != nullptr ? &t_.fund->PrdsSF : nullptr},
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
        statement.figures[of_fund][p] = statement.figures[of_fee][p] = {};
        if (t_.fund != nullptr) {
            put(of_fund, *fund_, books.fund);
            put(of_fee, *fee_, books.fee);
            statement.from_elsewhere[p] = books.elsewhere.moved(period);
        }
        LedgerFigures of_loans{};
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

} // namespace

void run_account(const AccountTerms& terms, Journal& journal, Statement& statement) {
    AccountRun run(terms, journal);
    run.run();
    run.read(statement);
}

} // namespace qx
