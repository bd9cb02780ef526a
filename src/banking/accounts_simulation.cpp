#include "banking/accounts_simulation.h"

#include "banking/accounts_run.h"
#include "core/routine.h"

#include <algorithm>
#include <iterator>
#include <type_traits>

namespace qx {

namespace {

constexpr int kept_accounts = 4;

// --- What is kept --------------------

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
    bool traced; ///< the trace was on
    unsigned last_used;
    SavedInputs inputs;
    Statement statement;
};
static_assert(std::is_trivially_default_constructible_v<KeptAccount>, "not a byte of it is touched before its use");
KeptAccount kept[kept_accounts];
unsigned uses = 0;

KeptAccount& latest() { return *std::ranges::max_element(kept, {}, &KeptAccount::last_used); }
KeptAccount& oldest() { return *std::ranges::min_element(kept, {}, &KeptAccount::last_used); }

/// The statement of an account: one that is kept, or that of a run. While a trace runs, an account that was calculated
/// without it is calculated again, so that the trace shows how.
const Statement& statement_of(const Routine& here, const AccountTerms& terms) {
    KeptAccount* const known = std::find_if(std::begin(kept), std::end(kept), [&](const KeptAccount& account) {
        return account.valid && account.inputs.same(terms);
    });
    if (known != std::end(kept) && (known->traced || !here.traced())) {
        here.info("Data already calculated, skipping main calculation loop");
        known->last_used = ++uses;
        return known->statement;
    }
    Journal journal(here, terms.option(write_account_log), here.name());
    if (journal.on()) {
        if (terms.option(write_account_log)) journal.line(here.name(), " log file opened");
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
    KeptAccount& account = known != std::end(kept) ? *known : oldest();
    account.valid = false;
    account.last_used = 0;
    run_account(terms, journal, account.statement);
    account.inputs.save(terms);
    account.valid = true;
    account.traced = here.traced();
    account.last_used = ++uses;
    if (terms.option(write_account_log)) journal.line("Log file closed");
    journal.close();
    return account.statement;
}

// --- What is read --------------------

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

/// Throws errlibunexpectedcase unless the items of a list have the right sign.
void check_sign(const Routine& here, View<double> amounts, int sign, const char* variable, const char* text) {
    for (const double amount : amounts)
        if (!iszero(amount) && sign * amount < 0.0) here.fail<errlibunexpectedcase>(variable, text);
}

void check(const Routine& here, const AccountTerms& terms) {
    const auto opening = [&](double amount, int sign, const char* variable, const char* text) {
        check_sign(here, View<double>::of(amount), sign, variable, text);
    };
    if (terms.has_margin() && !terms.option(margin_snapshot) && !terms.PrdsEM.arrears())
        here.fail<illegalvalue>("PrdsEM", "Cannot have EMPrds in advance if the fee basis is in Average Balance mode");
    opening(terms.opening.OBSTD, 1, "OBSTD",
            "Opening Short Term debt balance must be a positive number (for indebtedness)");
    opening(terms.opening.OBCash, -1, "OBCash",
            "Opening Cash balance must be a negative number (for cash in the bank)");
    if (terms.fund == nullptr) return;
    const FundBalances& exogenous = terms.fund->exogenous;
    opening(terms.fund->opening, -1, "OBArray",
            "Opening Sinking Fund balance must be a negative number (for cash in the bank)");
    check_sign(here, exogenous.SFDeposEst, -1, "SFDeposEst",
               "SFEstimates should be zero or negative because they are payments");
    check_sign(here, exogenous.SFExogDebtBals, 1, "SFExogDebtBals",
               "Exogenous Debt should be zero or positive because its a debt.");
    check_sign(here, exogenous.SFExogAssBals, -1, "SFExogAssBals",
               "Exogenous Assets should be negative or zero because they are assets, just like cash.");
    check_sign(here, exogenous.SFIntOverRide, 1, "SFIntOverRide", "SF Interest Override should be zero or positive.");
}

/// An output of an account, for each period.
WorkList<double> read_account(Routine& here, AccountTerms terms, const char* output_name, int LAOutput) {
    terms.Timebase = dates_given(terms.Timebase);
    terms.flows.CFTimes = dates_given(terms.flows.CFTimes);
    check(here, terms);
    const Reading reading(here, output_name, LAOutput, terms.fund != nullptr);
    const int n = terms.Timebase.size();
    if (n == 0) {
        here.warning("No timeperiods set for this array function");
        here.fail<inputerror>("Timebase");
    }
    const Statement& statement = statement_of(here, terms);
    Journal journal(here, terms.option(write_account_log), std::string(here.name()) + "2");
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
    return here.returning(read_account(here,
                                       {Timebase, borrowing, rates, flows, LoanTerm, margin, opening, Options,
                                        day_counts, DCEM, periods, PrdsEM, ProjMode, nullptr},
                                       "LAOutput", LAOutput));
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

    FundTerms fund_terms{fund_rates,   fund,         setting(OBArray, 3, 0.0),
                         codes[4],     codes[5],     sequences[4],
                         sequences[5], sequences[6], sequences[7]};
    fund_terms.exogenous.SFExogDates = dates_given(fund.SFExogDates);
    const OpeningBalances opening{setting(OBArray, 2, 0.0), setting(OBArray, 1, 0.0)};
    const AccountDayCounts day_counts{codes[0], codes[1], codes[2]};
    const AccountPeriods periods{sequences[0], sequences[1], sequences[2]};
    return here.returning(read_account(here,
                                       {Timebase, borrowing, rates, flows, LoanTerm, margin, opening, Options,
                                        day_counts, codes[3], periods, sequences[3], 0.0, &fund_terms},
                                       "LAMHOutput", LAMHOutput));
}

} // namespace qx
