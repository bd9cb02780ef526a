#include "banking/accounts.h"

#include "core/routine.h"
#include "rates/annuities.h"
#include "rates/compounding.h"

#include <algorithm>

namespace qx {

namespace {

/// What an account comes to in a period.
struct Figures {
    double principal, interest, average, closing;
};

double figure(const Routine& here, int AcctOutput, double BFBalance, const Figures& figures) {
    switch (AcctOutput) {
    case account_principal:
        return figures.principal;
    case account_interest:
        return figures.interest;
    case account_debt_service:
        return figures.principal + figures.interest;
    case account_opening:
        return BFBalance;
    case account_average:
        return figures.average;
    case account_closing:
        return figures.closing;
    default:
        here.fail<errlibillegalswitch>("AcctOutput", "Invalid AcctOutput");
    }
}

enum Side : int { debt, cash };

/// A balance or flow as the side sees it: positive if it is a balance of this side, or a flow that reduces it.
double as_seen(Side side, double amount) { return side == debt ? amount : -amount; }

double on_side(Side side, double balance) { return side == debt ? std::max(0.0, balance) : std::min(0.0, balance); }

/// A flow that is spread over a period, as the payments a year of an annuity.
struct Flow {
    double years;
    double AnnPmt;
    double PmtsPerYear;

    Flow(const timeperiod& Time, double CashFlow, double PmtsPerYear)
        : years(Time.lenyears()), AnnPmt(-safe_divide(CashFlow, years)), PmtsPerYear(PmtsPerYear) {}

    double end(double balance, double rate, double term) const {
        return -FVM(AnnPmt, balance, rate, term, PmtsPerYear);
    }
    double interest(double balance, double end, double term) const { return balance - end + AnnPmt * term; }
    /// The years until a balance is used up, or those of the whole period; `crosses` is set if it is.
    double years_until_zero(const Routine& here, Side side, double balance, double rate, bool& crosses) const {
        crosses = as_seen(side, end(balance, rate, years)) < 0.0;
        if (!crosses) return years;
        const double term = TermM(AnnPmt, balance, rate, PmtsPerYear, 0.0);
        here.info(side == debt ? "Overdraft moves from -ve to +ve after " : "Overdraft moves from +ve to -ve after ",
                  term, " years in this timeperiod");
        return term;
    }
};

/// True if the flow uses up the balance of a side.
bool reduces(Side side, double BFBalance, double CashFlow) {
    return as_seen(side, BFBalance) > 0.0 && as_seen(side, CashFlow) > 0.0;
}

Figures account_of_one_rate(const Routine& here, const Flow& flow, double BFBalance, double rate, double term) {
    const double end = flow.end(BFBalance, rate, term);
    const double interest = flow.interest(BFBalance, end, term);
    here.info("Before Adjustment: from FVM, End Balance=", end, " and Interest=", interest);
    return {end - BFBalance, interest, 0.0 - safe_divide(interest, rate), end};
}

/// Overdraft and CashAcct.
double account_of_one_side(const char* name, Side side, const timeperiod& Time, double BFBalance, double CashFlow,
                           double rate, double PmtsPerYear, int AcctOutput) {
    Routine here{name};
    here.inputs(Time, BFBalance, CashFlow, rate, PmtsPerYear, AcctOutput);
    check_rate(here, rate, side == debt ? "IntAERDebt" : "IntAERCash");
    check_frequency(here, PmtsPerYear);
    if (Time.to() <= Time.from()) return here.returning(0.0);
    const Flow flow(Time, CashFlow, PmtsPerYear);
    bool crosses = false;
    const double term =
        reduces(side, BFBalance, CashFlow) ? flow.years_until_zero(here, side, BFBalance, rate, crosses) : flow.years;
    Figures figures = account_of_one_rate(here, flow, BFBalance, rate, term);
    if (crosses) figures.closing = 0.0; // but for what the search for the term leaves
    figures.interest = 0.0 - on_side(side, -figures.interest);
    figures.closing = on_side(side, figures.closing);
    figures.principal = figures.closing - BFBalance;
    figures.average = 0.0 - safe_divide(figures.interest, rate);
    here.info("After Adjustment: End Balance=", figures.closing, " Interest=", figures.interest,
              " Principal=", figures.principal, " Average Balance=", figures.average);
    return here.returning(figure(here, AcctOutput, BFBalance, figures));
}

/// A current account's part on one side.
struct Part {
    double principal = 0.0, interest = 0.0;
};

Part part(const Flow& flow, Side side, double balance, double rate, double term) {
    const double end = on_side(side, flow.end(balance, rate, term));
    return {end - balance, flow.interest(balance, end, term)};
}

} // namespace

double Overdraft(const timeperiod& Time, double BFBalance, double CashFlow, double IntAERDebt, double PmtsPerYear,
                 int AcctOutput) {
    return account_of_one_side("Overdraft", debt, Time, BFBalance, CashFlow, IntAERDebt, PmtsPerYear, AcctOutput);
}

double CashAcct(const timeperiod& Time, double BFBalance, double CashFlow, double IntAERCash, double PmtsPerYear,
                int AcctOutput) {
    return account_of_one_side("CashAcct", cash, Time, BFBalance, CashFlow, IntAERCash, PmtsPerYear, AcctOutput);
}

double FlexAcct(const timeperiod& Time, double BFBalance, double CashFlow, double InterestAER, double PmtsPerYear,
                int AcctOutput) {
    Routine here{"FlexAcct"};
    here.inputs(Time, BFBalance, CashFlow, InterestAER, PmtsPerYear, AcctOutput);
    check_rate(here, InterestAER, "InterestAER");
    check_frequency(here, PmtsPerYear);
    if (Time.to() <= Time.from()) return here.returning(0.0);
    const Flow flow(Time, CashFlow, PmtsPerYear);
    const Figures figures = account_of_one_rate(here, flow, BFBalance, InterestAER, flow.years);
    return here.returning(figure(here, AcctOutput, BFBalance, figures));
}

double CurrentAcct(const timeperiod& Time, double BFBalance, double CashFlow, double IntAERDebt, double IntAERCash,
                   double PmtsPerYear, int AcctOutput) {
    Routine here{"CurrentAcct"};
    here.inputs(Time, BFBalance, CashFlow, IntAERDebt, IntAERCash, PmtsPerYear, AcctOutput);
    check_rate(here, IntAERDebt, "IntAERDebt");
    check_rate(here, IntAERCash, "IntAERCash");
    check_frequency(here, PmtsPerYear);
    if (Time.to() < Time.from()) return here.returning(0.0);
    const Flow flow(Time, CashFlow, PmtsPerYear);
    Part of_debt, of_cash;
    /// The balance shrinks on its own side; what is left of the flow once it is gone builds up on the other.
    const auto reduce = [&](Side side, Part& own, double own_rate, Part& other, double other_rate) {
        bool crosses = false;
        const double until_zero = flow.years_until_zero(here, side, BFBalance, own_rate, crosses);
        if (crosses) other = part(flow, side == debt ? cash : debt, 0.0, other_rate, flow.years - until_zero);
        own = crosses ? Part{-BFBalance, flow.interest(BFBalance, 0.0, until_zero)}
                      : part(flow, side, BFBalance, own_rate, until_zero);
    };
    if (reduces(debt, BFBalance, CashFlow)) {
        here.info("Situation: Reducing Overdraft");
        reduce(debt, of_debt, IntAERDebt, of_cash, IntAERCash);
    } else if (reduces(cash, BFBalance, CashFlow)) {
        here.info("Situation: Reducing Cash Acct");
        reduce(cash, of_cash, IntAERCash, of_debt, IntAERDebt);
    } else if (BFBalance >= 0.0 && CashFlow <= 0.0) {
        here.info("Situation: Increasing or Flat Overdraft");
        of_debt = part(flow, debt, BFBalance, IntAERDebt, flow.years);
    } else if (BFBalance <= 0.0 && CashFlow >= 0.0) {
        here.info("Situation: Increasing or Flat Cash Acct");
        of_cash = part(flow, cash, BFBalance, IntAERCash, flow.years);
    } else {
        here.fail<errlibunexpectedcase>(
            "CashFlow", "CurrentAcct is not equipped for this situation.  You've almost certainly uncovered a bug - "
                        "would you mind contacting us at the Quexel support.");
    }
    const double principal = of_debt.principal + of_cash.principal;
    const double average = 0.0 - safe_divide(of_debt.interest, IntAERDebt) - safe_divide(of_cash.interest, IntAERCash);
    return here.returning(figure(here, AcctOutput, BFBalance,
                                 {principal, of_debt.interest + of_cash.interest, average, BFBalance + principal}));
}

std::string DescribeLoanAcctOutput(int LAOutput) {
    Routine here{"DescribeLoanAcctOutput"};
    here.inputs(LAOutput);
    const char* const text = SwitchTable(account_output_values).words(LAOutput, nullptr);
    return here.returning(text != nullptr ? std::string(text) : text_of("Illegal switch(", LAOutput, ")"));
}

} // namespace qx
