#include "banking/accounts_ledgers.h"

#include "core/routine.h"
#include "projections/constant_rate.h"
#include "projections/levels.h"

#include <algorithm>

namespace qx {

namespace {

/// How many of ascending dates lie before a day, or on it too.
int count_before(View<date> dates, const date& day) {
    return static_cast<int>(std::lower_bound(dates.begin(), dates.end(), day) - dates.begin());
}
int count_up_to(View<date> dates, const date& day) {
    return static_cast<int>(std::upper_bound(dates.begin(), dates.end(), day) - dates.begin());
}

} // namespace

LedgerFigures& LedgerFigures::operator+=(const LedgerFigures& other) {
    principal += other.principal;
    interest += other.interest;
    opening += other.opening;
    average += other.average;
    closing += other.closing;
    return *this;
}

double level_on(const date& day, View<date> dates, View<double> levels) {
    const int n = count_up_to(dates, day);
    return n == 0 ? 0.0 : levels.single_or(n);
}

double sum_in(const timeperiod& Time, View<date> dates, View<double> amounts) {
    double sum = 0.0;
    const int last = std::min(count_before(dates, Time.to()), amounts.size());
    for (int i = count_before(dates, Time.from()) + 1; i <= last; ++i) sum += amounts(i);
    return sum;
}

// --- A ledger of movements -------------------------------------------------------------------------------------------

void Ledger::clear() {
    dates_.dimension(0);
    amounts_.dimension(0);
    balances_.dimension(0);
}

void Ledger::move(const date& day, double amount) {
    const double before = balance();
    dates_.append(day);
    amounts_.append(amount);
    balances_.append(before + amount);
}

double Ledger::interest(const timeperiod& Time, const Charge& charge, const Accrual& accrual, double ProjMode) const {
    Routine here{"InterestOnLedger", Routine::internal};
    if (empty() || charge.rates.empty() || Time.to() < dates_.first()) return here.returning(0.0);
    const View<date>& given = charge.OverRideDates;
    if ((charge.Options & ignore_overrides) == 0 && !given.empty() && Time.from() >= given.first() &&
        Time.to() <= given.last()) {
        const double amount = sum_in(Time, given, charge.OverRides);
        if ((charge.Options & zero_is_no_override) == 0 || !iszero(amount)) {
            here.info("Applying Interest OverRide of ", amount, " at timeperiod ", Time);
            return here.returning(amount);
        }
    }
    timeperiod span = Time;
    if (!find_interest_span(here, span, {dates_.first(), DateCrit}, charge.Periods, ProjMode,
                            (charge.Options & unlimited_cash) != 0))
        return here.returning(0.0);
    return here.returning(SteppedBalances::ascending(DateCrit, dates_, balances_).interest(span, accrual, 0.0));
}

double Ledger::average(const timeperiod& Time, const Charge& charge) const {
    // The steps before the period measure nothing, but a composite day count looks at where the first one begins.
    const bool whole_ledger = DayCountCodes::of(charge.DayCount).composite(charge.DayCount);
    const int first = whole_ledger ? 1 : std::max(1, count_up_to(dates_, Time.from()));
    const View<date> dates = dates_;
    const View<double> balances = balances_;
    return ALevels<FromSteps>(Time, {DateCrit, dates.from(first)}, balances.from(first), level_average,
                              {charge.DayCount, charge.Periods});
}

LedgerFigures Ledger::figures(const timeperiod& Time, const Charge& charge, const Accrual& accrual,
                              double ProjMode) const {
    if (empty() || Time.to() < dates_.first()) return {};
    return {
        .principal = without_dust(moved(Time)),
        .interest = without_dust(interest(Time, charge, accrual, ProjMode)),
        .opening = without_dust(level_on(Time.from().plusdays(-1), dates_, balances_)),
        .average = without_dust(average(Time, charge)),
        .closing = without_dust(level_on(Time.to().plusdays(-1), dates_, balances_)),
    };
}

// --- Loans -----------------------------------------------------------------------------------------------------------

LoanPeriod::LoanPeriod(const timeperiod& Time, const Charge& charge, const Accrual& accrual, double ProjMode)
    : Time(Time), ProjMode(ProjMode), span(Time), earliest(Time.from()), latest(Time.to()) {
    shared = !DayCountCodes::of(charge.DayCount).composite(charge.DayCount);
    if (!shared) return;
    if (iscash(ProjMode)) {
        // As for a loan that has started before the period and ends after it.
        static const date no_start;
        const int delay = payment_delay(ProjMode);
        span = CashTime(Time, charge.Periods, no_start, DateCrit, true, ProjMode);
        earliest = Time.from().plusdays(-delay);
        latest = Time.to().plusdays(-delay);
    }
    period_months = Time.lenmonths(Time.from(), Time.to(), charge.DayCount, charge.Periods);
    years = Time.lenyrs(Time.from(), Time.to(), charge.DayCount, charge.Periods);
    if (span.to() <= span.from()) return;
    months = span.lenmonths(span.from(), span.to(), charge.DayCount, charge.Periods);
    const Life all{span.from(), span.to()};
    if ((charge.Options & fixed_rate_loans) == 0 && !charge.rates.empty()) rate = accrual.rate(all, all, false);
}

bool LoanPeriod::holds(const date& start, const date& end) const {
    if (!shared || start >= earliest || end < latest) return false;
    return span.to() <= span.from() || (start <= span.from() && end >= span.to());
}

void LoanBook::clear() {
    starts_.dimension(0);
    ends_.dimension(0);
    amounts_.dimension(0);
    fixed_rates_.dimension(0);
}

void LoanBook::lend(const date& start, const date& end, double amount, double fixed_rate) {
    starts_.append(start);
    ends_.append(end);
    amounts_.append(amount);
    fixed_rates_.append(fixed_rate);
}

double LoanBook::interest(int i, const LoanPeriod& period, const Charge& charge, const Accrual& accrual) const {
    const Life life{starts_(i), ends_(i)};
    const bool fixed = (charge.Options & fixed_rate_loans) != 0;
    if (period.holds(life.Start, life.Finish)) {
        const double annual = -amounts_(i) * (fixed ? fixed_rates_(i) : period.rate);
        return annual * period.months / 12.0;
    }
    if (fixed)
        return ConX(period.Time, life, -amounts_(i) * fixed_rates_(i),
                    {charge.DayCount, charge.Periods, period.ProjMode}, false);
    const Routine here{"InterestOnLoan", Routine::internal};
    timeperiod span = period.Time;
    if (charge.rates.empty() || !find_interest_span(here, span, life, charge.Periods, period.ProjMode, false))
        return here.returning(0.0);
    const double amount = amounts_(i);
    return here.returning(SteppedBalances::ascending(life.Finish, View<date>::of(life.Start), View<double>::of(amount))
                              .interest(span, accrual, 0.0));
}

double LoanBook::average(int i, const LoanPeriod& period, const Charge& charge) const {
    const Life life{starts_(i), ends_(i)};
    if (period.shared && life.Start <= period.Time.from() && life.Finish >= period.Time.to())
        return safe_divide(amounts_(i) * period.period_months / 12.0, period.years);
    return ALevel(period.Time, life, amounts_(i), level_average, {charge.DayCount, charge.Periods});
}

LedgerFigures LoanBook::figures(int i, const LoanPeriod& period, const Charge& charge, const Accrual& accrual) const {
    const timeperiod& Time = period.Time;
    const Life life{starts_(i), ends_(i)};
    const double amount = amounts_(i);
    if (Time.from() > life.Finish || Time.to() < life.Start) return {};
    const auto before = [&](const date& day) { return life.Start < day && day <= life.Finish ? amount : 0.0; };
    return {
        .principal = (Time.contains(life.Start) ? amount : 0.0) - (Time.contains(life.Finish) ? amount : 0.0),
        .interest = without_dust(interest(i, period, charge, accrual)),
        .opening = before(Time.from()),
        .average = without_dust(average(i, period, charge)),
        .closing = before(Time.to()),
    };
}

} // namespace qx
