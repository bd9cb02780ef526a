// Laws of the account simulators under random waterfalls, and their figures against the routines of single balances,
// which walk each list from its start and know of no short cut.
#include "banking/accounts_simulation.h"

#include "calendar/date_arithmetic.h"
#include "calendar/day_count.h"
#include "projections/interest.h"
#include "projections/levels.h"
#include "projections/payments.h"

#include <gtest/gtest.h>

#include <array>
#include <cmath>
#include <fstream>
#include <iterator>
#include <random>
#include <string>
#include <vector>

namespace qx::test {
namespace {

using Column = std::vector<double>;

constexpr int all = 0, loans = 10, short_term = 20, cash = 30, margin = 40;

/// An account with terms drawn at random.
struct Account {
    Range<date> timebase, rate_dates, flow_dates, margin_dates;
    Range<double> loan_rates, cash_rates, short_term_rates, flows, margin_rates;
    Borrowing borrowing{};
    double term = 0.0;
    OpeningBalances opening{};
    int options = 0;
    AccountDayCounts day_counts{5.0, 5.0, 5.0};
    double margin_day_count = 5.0, mode = 1.0;
    AnnualSequence dates, margin_paid;

    void draw(std::mt19937& random, int months, bool on_quarter_days) {
        const auto whole_between = [&](int low, int high) {
            return low + static_cast<int>(random() % static_cast<unsigned>(high - low + 1));
        };
        const auto one_of = [&](const auto& choices) { return choices[random() % std::size(choices)]; };
        timebase.dimension(months / 3);
        for (int i = 1; i <= timebase.size(); ++i) timebase(i) = date(2005.0).plusmonths(3 * (i - 1), true);
        set(rate_dates, {2000, 2006, 2008});
        set(loan_rates, {0.07, 0.08, 0.06});
        set(cash_rates, {0.02, 0.03, 0.01});
        set(short_term_rates, {0.1, 0.11, 0.09});
        set(margin_dates, {2005, 2007});
        const bool has_margin = random() % 2 == 0;
        set(margin_rates, {0.01, 0.02});
        if (!has_margin) margin_rates.dimension(0), margin_dates.dimension(0);
        flow_dates.dimension(0);
        flows.dimension(0);
        date day(2005.0);
        for (int i = whole_between(1, 30); i > 0; --i) {
            day.adddays(whole_between(0, 60));
            flow_dates.append(day);
            flows.append(whole_between(-100000, 100000) / 100.0);
        }
        borrowing = {one_of(std::array{0.0, 0.0, 100.0, -300.0, 500.0}), one_of(std::array{0.0, 50.0, 250.0, 1000.0})};
        term = one_of(std::array{0.1, 0.5, 1.0, 1.37, 2.0, 5.0});
        opening = {random() % 2 == 0 ? 0.0 : -500.0, random() % 2 == 0 ? 0.0 : 300.0};
        options = static_cast<int>(random() % 32);
        dates.clear();
        if (on_quarter_days) {
            dates.start_list(4);
            for (const double figure : {-1.01, 4.01, 7.01, 10.01}) dates.append(figure);
            dates.validate();
        } else {
            dates.setpreset(one_of(std::array{-4, -1, -12, -13, 4, 12}));
        }
        margin_paid = AnnualSequence(-4);
        if (on_quarter_days) margin_paid = dates;
    }

    Column column(int output) { return column(output, timebase); }
    Column column(int output, View<date> times) {
        const WorkList<double> list =
            LoanAcctEM(times, borrowing, {rate_dates, loan_rates, cash_rates, short_term_rates}, {flow_dates, flows},
                       term, {margin_dates, margin_rates}, opening, options, output, day_counts, margin_day_count,
                       {dates, dates, dates}, margin_paid, mode);
        return {list.begin(), list.end()};
    }
    timeperiod period(int i) const { return timebase_period(timebase, i); }

  private:
    template <class T>
    static void set(Range<T>& list, std::initializer_list<double> values) {
        list.dimension(0);
        for (const double value : values) list.append(T(value));
    }
};
Account account;

TEST(AccountLaws, MoneyIsConservedUnderRandomWaterfalls) {
    std::mt19937 random(1);
    for (int trial = 0; trial < 150; ++trial) {
        SCOPED_TRACE(trial);
        account.draw(random, 3 * (4 + static_cast<int>(random() % 36)), true);
        std::array<Column, 46> of;
        for (const int ledger : {all, loans, short_term, cash, margin})
            for (int figure = 0; figure <= 5; ++figure) of[ledger + figure] = account.column(ledger + figure);
        of[16] = account.column(16);
        of[17] = account.column(17);
        const int n = account.timebase.size();
        for (int p = 0; p < n; ++p) {
            SCOPED_TRACE(p);
            for (const int ledger : {all, loans, short_term, cash, margin}) {
                EXPECT_NEAR(of[ledger + 5][p], of[ledger + 3][p] + of[ledger][p], 1e-6) << "ledger " << ledger;
                EXPECT_NEAR(of[ledger + 2][p], of[ledger][p] + of[ledger + 1][p], 1e-6) << "ledger " << ledger;
                EXPECT_EQ(of[ledger + 3][p], p > 0 ? of[ledger + 5][p - 1] : of[ledger + 3][p]) << "ledger " << ledger;
            }
            EXPECT_NEAR(of[all][p], of[loans][p] + of[short_term][p] + of[cash][p], 1e-6);
            EXPECT_NEAR(of[1][p], of[11][p] + of[21][p] + of[31][p] + of[41][p], 1e-6);
            EXPECT_NEAR(of[10][p], of[17][p] - of[16][p], 1e-6);
            EXPECT_GE(of[25][p], 0.0);
            EXPECT_LE(of[35][p], 1e-6);
            if (account.borrowing.Tranche > 0.0) {
                const double tranches = of[17][p] / account.borrowing.Tranche;
                EXPECT_NEAR(tranches, std::round(tranches), 1e-9);
            }
            // What is paid and received is the cash flow. The last period's end may be beyond the last event.
            if (p + 1 < n) {
                const double flow = MkPmts(account.period(p + 1), {account.flow_dates, account.flows});
                EXPECT_NEAR(of[2][p] + flow, 0.0, 1e-5) << "options " << account.options << " term " << account.term;
            }
        }
    }
}

TEST(AccountLaws, FiguresAreThoseOfTheBalancesByThemselves) {
    static Range<date> days, from[3], one_start;
    static Range<double> balances[3];
    std::mt19937 random(2);
    for (int trial = 0; trial < 24; ++trial) {
        SCOPED_TRACE(trial);
        account.draw(random, 24, false);
        account.term = std::max(account.term, 0.5);
        account.mode = std::array{0.0, 1.0, 1.05}[random() % 3];
        const double codes[] = {5.0, 3.0, 0.0, 2.03};
        account.day_counts = {codes[random() % 4], codes[random() % 4], codes[random() % 4]};
        // A time base of days shows each movement.
        const int n = account.timebase.size();
        const date end = account.period(n).to();
        days.dimension(0);
        for (date day = account.timebase.first(); day < end; day.adddays(1)) days.append(day);
        const int ledgers[] = {loans, short_term, cash};
        for (int k = 0; k < 3; ++k) {
            from[k].dimension(0);
            balances[k].dimension(0);
            const double opened = ledgers[k] == cash         ? account.opening.OBCash
                                  : ledgers[k] == short_term ? account.opening.OBSTD
                                                             : 0.0;
            if (opened != 0.0) {
                from[k].append(std::min(account.timebase.first(), account.flow_dates.first()).plusmonths(-60, true));
                balances[k].append(opened);
            }
            const Column moves = account.column(ledgers[k] == loans ? 17 : ledgers[k], days);
            for (int i = 1; i <= days.size(); ++i) {
                if (moves[i - 1] == 0.0) continue;
                from[k].append(days(i));
                const bool summed = ledgers[k] != loans && balances[k].size() > 0;
                balances[k].append(moves[i - 1] + (summed ? balances[k].last() : 0.0));
            }
        }
        const Column loan_interest = account.column(11), loan_average = account.column(14);
        for (int p = 1; p <= n; ++p) {
            SCOPED_TRACE(p);
            const timeperiod period = account.period(p);
            double interest = 0.0, average = 0.0;
            for (int i = 1; i <= from[0].size(); ++i) {
                const date& start = from[0].get(i);
                const date finish = start.plusyears(account.term, true);
                const double amount = balances[0].get(i), code = account.day_counts.DCLoan;
                if (period.to() < start || period.from() > finish) continue;
                static Range<double> fixed;
                fixed.dimension(1);
                fixed(1) = Levels(start, FromSteps{DateCrit, account.rate_dates}, account.loan_rates);
                interest += (account.options & fixed_rates) != 0
                                ? Interest(period, fixed(1), start, finish, amount, code, account.dates, account.mode)
                                : InterestX(period, account.rate_dates, account.loan_rates, start, finish, amount, code,
                                            account.dates, account.mode);
                average += ALevel(period, {start, finish}, amount, level_average, {code, account.dates});
            }
            EXPECT_NEAR(loan_interest[p - 1], interest, 1e-6);
            EXPECT_NEAR(loan_average[p - 1], average, 1e-6);
        }
        for (const int k : {1, 2}) {
            const double code = k == 1 ? account.day_counts.DCSTD : account.day_counts.DCCash;
            const View<double> rates = k == 1 ? account.short_term_rates : account.cash_rates;
            const Column interest = account.column(ledgers[k] + 1), average = account.column(ledgers[k] + 4);
            for (int p = 1; p <= n && from[k].size() > 0; ++p) {
                SCOPED_TRACE(p);
                const timeperiod period = account.period(p);
                if (period.to() < from[k].first()) continue;
                EXPECT_NEAR(interest[p - 1],
                            FInterest(period, account.rate_dates, rates, DateCrit, from[k], balances[k], code,
                                      account.dates, account.mode),
                            1e-6);
                EXPECT_NEAR(
                    average[p - 1],
                    ALevels<FromSteps>(period, {DateCrit, from[k]}, balances[k], level_average, {code, account.dates}),
                    1e-6);
            }
        }
    }
}

TEST(AccountCache, HoldsSeveralAccountsAndForgetsFailedOnes) {
    std::mt19937 random(3);
    account.draw(random, 60, true);
    account.opening = {0.0, 0.0};
    account.margin_rates.dimension(0);
    std::array<Column, 7> first;
    for (int i = 0; i < 7; ++i) { // more accounts than are kept
        account.borrowing.Threshold = 100.0 * i;
        first[i] = account.column(5);
    }
    const double flow = account.flows(1);
    for (int i = 6; i >= 0; --i) {
        account.borrowing.Threshold = 100.0 * i;
        account.flows(1) = flow + 1.0;
        const int n = account.flows.size();
        account.flows.dimension(n - 1); // one too few
        EXPECT_THROW(account.column(5), outofrange);
        EXPECT_THROW(account.column(5), outofrange) << "again, though nothing has changed";
        account.flows.dimension(n);
        account.flows(1) = flow;
        EXPECT_EQ(account.column(5), first[i]);
    }
    // Whatever changes is seen: a direction, the time base, a rate by less than the tolerance of numbers.
    AnnualSequence arrears;
    arrears = account.dates;
    account.dates = AnnualSequence(4);
    const Column in_advance = account.column(31);
    account.dates = AnnualSequence(-4);
    EXPECT_NE(account.column(31), in_advance);
    account.dates = arrears;
    const Column before = account.column(1);
    account.cash_rates(1) += 1e-13;
    account.cash_rates(2) += 1e-13;
    EXPECT_NE(account.column(1), before);
}

TEST(AccountLog, ReportsTheRunOnceAndEachReading) {
    const auto text_of_file = [](const char* name) {
        std::ifstream file(name);
        return std::string(std::istreambuf_iterator<char>(file), {});
    };
    std::mt19937 random(4);
    account.draw(random, 24, true);
    const Column silent = account.column(2);
    account.options |= write_account_log;
    EXPECT_EQ(account.column(2), silent);
    const std::string run = text_of_file("qx_LoanAcctEM.qxl");
    for (const char* label :
         {"LoanAcctEM log file opened", "Recalculation due to changes in following variables:", "Time Period n=1,",
          "Date LookAhead", "Net Requirement", "LTD Req (max zero)", "Req ST", "Cash Req", "Log file closed"})
        EXPECT_NE(run.find(label), std::string::npos) << label;
    EXPECT_NE(run.find("variables: Options\n"), std::string::npos) << "and nothing else has changed";
    EXPECT_NE(text_of_file("qx_LoanAcctEM2.qxl").find("Cash "), std::string::npos);
    account.column(3);
    EXPECT_EQ(text_of_file("qx_LoanAcctEM.qxl"), run) << "it was not run again";
}

} // namespace
} // namespace qx::test
