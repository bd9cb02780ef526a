#include "projections/payments.h"

#include "calendar/date_arithmetic.h"
#include "core/routine.h"
#include "numerics/range_operation.h"
#include "projections/constant_rate.h"

#include <algorithm>

namespace qx {

namespace {

double sum_in(const timeperiod& Time, View<date> dates, View<double> amounts) {
    const int from = Time.from().dtn(), to = Time.to().dtn();
    const int n = std::min(dates.size(), amounts.size());
    const date* when = dates.begin();
    const double* amount = amounts.begin();
    double sum = 0.0;
    for (int i = 0; i < n; ++i)
        if (const int day = when[i].dtn(); day >= from && day < to) sum += amount[i];
    return sum;
}

double sum(View<double> amounts) {
    double total = 0.0;
    for (const double amount : amounts) total += amount;
    return total;
}

} // namespace

double MkPmts(const timeperiod& Time, const Payments& payments) {
    Routine here{"MkPmts"};
    here.inputs(Time, payments);
    if (!runs_forward(here, Time)) return here.returning(0.0);
    return here.returning(sum_in(Time, payments.PmtDates, payments.Pmts));
}

template <class Pmts>
double MkPmtSF(const timeperiod& Time, const Life& life, const Pmts& payments) {
    Routine here{one_or_many<Pmts>("MkPmtSF", "MkPmtsSF")};
    here.inputs(Time, life, payments);
    const timeperiod wanted(life.Start, life.Finish);
    double total = 0.0;
    for (int n = 1; n <= payments.count(); ++n)
        if (wanted.contains(payments.when(n))) total += payment_in(Time, payments.when(n), payments.amount(n));
    return here.returning(total);
}
template double MkPmtSF(const timeperiod&, const Life&, const Payment&);
template double MkPmtSF(const timeperiod&, const Life&, const Payments&);

double MkPmtX(const timeperiod& Time, const Payment& payment, const Repeated<double, 9>& more) {
    Routine here{"MkPmtX"};
    here.inputs(Time, payment, more);
    double total = payment.Pmt;
    for (const double amount : more.items) total += amount;
    return here.returning(payment_in(Time, payment.PmtDate, total));
}

double MkPmtsX(const timeperiod& Time, const Payments& payments, const NineLists& more) {
    Routine here{"MkPmtsX"};
    here.inputs(Time, payments, more);
    double total = sum_in(Time, payments.PmtDates, payments.Pmts);
    more.each([&](View<double> amounts) { total += sum_in(Time, payments.PmtDates, amounts); });
    return here.returning(total);
}

// --- Later than their dates ------------------------------------------------------------------------------------------

namespace {

/// The period whose payments are due in a period, so many months later.
timeperiod lagged(const timeperiod& Time, double months, const Measure& measure) {
    return {plusmonths(Time.from(), -months, measure.DayCount, measure.Periods),
            plusmonths(Time.to(), -months, measure.DayCount, measure.Periods)};
}

bool pays(const Routine& here, const timeperiod& Time, const Bounds& bounds) {
    if (!runs_forward(here, Time)) return false;
    if (!bounds.exclude(Time)) return true;
    here.info("Timeperiod(", Time, ") falls outside AbStart(", bounds.AbStart, ") and AbFin(", bounds.AbFin,
              "), returning 0");
    return false;
}

/// The sum over several lists of amounts on the same dates, which `each_list` visits, with a lag for each payment.
template <class EachList>
double sum_lagged(const Routine& here, const timeperiod& Time, View<double> LagMonths, View<date> PmtDates,
                  const Measure& measure, EachList each_list) {
    double total = 0.0;
    if (LagMonths.size() <= 1) {
        const timeperiod due = LagMonths.empty() ? Time : lagged(Time, LagMonths.first(), measure);
        here.info("Payments dated in ", due, " are due in ", Time);
        each_list([&](View<double> amounts) { total += sum_in(due, PmtDates, amounts); });
        return total;
    }
    timeperiod due;
    for (int n = 1; n <= PmtDates.size(); ++n) {
        if (n <= LagMonths.size() && (n == 1 || LagMonths(n) != LagMonths(n - 1)))
            due = lagged(Time, LagMonths(n), measure);
        if (!due.contains(PmtDates(n))) continue;
        here.info("Payment ", n, " of ", PmtDates(n), " is due in ", Time);
        each_list([&](View<double> amounts) { total += n <= amounts.size() ? amounts(n) : 0.0; });
    }
    return total;
}

} // namespace

double MkPmtsLag(const timeperiod& Time, View<double> LagMonths, const Payments& payments, const Measure& measure,
                 const Bounds& bounds) {
    Routine here{"MkPmtsLag"};
    here.inputs(Time, LagMonths, payments, measure, bounds);
    measure.check(here);
    if (!pays(here, Time, bounds)) return here.returning(0.0);
    return here.returning(
        sum_lagged(here, Time, LagMonths, payments.PmtDates, measure, [&](auto visit) { visit(payments.Pmts); }));
}

double MkPmtsLagX(const timeperiod& Time, View<double> LagMonths, const Payments& payments, const NineLists& more,
                  const Measure& measure, const Bounds& bounds) {
    Routine here{"MkPmtsLagX"};
    here.inputs(Time, LagMonths, payments, more, measure, bounds);
    measure.check(here);
    if (!pays(here, Time, bounds)) return here.returning(0.0);
    return here.returning(sum_lagged(here, Time, LagMonths, payments.PmtDates, measure, [&](auto visit) {
        visit(payments.Pmts);
        more.each(visit);
    }));
}

double MkPmtsLagProf(const timeperiod& Time, View<double> MonthsLag, View<double> Proportions, const Payments& payments,
                     const Measure& measure, const Bounds& bounds) {
    Routine here{"MkPmtsLagProf"};
    here.inputs(Time, MonthsLag, Proportions, payments, measure, bounds);
    measure.check(here);
    if (!pays(here, Time, bounds)) return here.returning(0.0);
    const double whole_weight = sum(Proportions);
    double total = 0.0;
    for (int n = 1; n <= std::min(MonthsLag.size(), Proportions.size()); ++n) {
        const double paid = sum_in(lagged(Time, MonthsLag(n), measure), payments.PmtDates, payments.Pmts);
        here.info("Payments of ", paid, " are due with a lag of ", MonthsLag(n), " months");
        total += paid * safe_divide(Proportions(n), whole_weight);
    }
    return here.returning(total);
}

double MkPmtsGroup(const timeperiod& Time, View<double> LagMonths, const Payments& payments, const Measure& measure,
                   const AnnualSequence& PrdsGroup, const Bounds& bounds) {
    Routine here{"MkPmtsGroup"};
    here.inputs(Time, LagMonths, payments, measure, PrdsGroup, bounds);
    measure.check(here);
    if (!pays(here, Time, bounds)) return here.returning(0.0);
    double total = 0.0;
    for (int n = 1; n <= payments.count(); ++n) {
        if (payments.when(n).iszero()) continue;
        const double lag = LagMonths.empty() ? 0.0 : LagMonths.entry(n);
        const date due = plusmonths(payments.when(n), lag, measure.DayCount, measure.Periods);
        const date paid = PrdsGroup.nextdate(due, true);
        if (Time.contains(paid)) here.info("Payment ", n, " of ", payments.when(n), " is paid on ", paid);
        total += payment_in(Time, paid, payments.amount(n));
    }
    return here.returning(total);
}

// --- Some of them ----------------------------------------------------------------------------------------------------

double MkPmtsLim(const timeperiod& Time, const Payments& payments, double CumLimit) {
    Routine here{"MkPmtsLim"};
    here.inputs(Time, payments, CumLimit);
    if (!runs_forward(here, Time)) return here.returning(0.0);
    double running = 0.0, total = 0.0;
    for (int n = 1; n <= payments.count(); ++n) {
        const double amount = payments.amount(n);
        if (Time.contains(payments.when(n))) {
            if (running + amount > CumLimit && !isequal(running + amount, CumLimit)) {
                here.info("Payment ", n, " would carry the total of ", running, " past the limit");
                break;
            }
            total += amount;
        }
        running += amount;
    }
    return here.returning(total);
}

namespace {

/// How a payment's category meets a choice.
enum class Match { none, listed, within_limits, not_asked };

Match match(const CategoryChoice& choice, int i) {
    if (choice.open()) return Match::not_asked;
    const anyvalue& category = choice.categories(i);
    for (const anyvalue& wanted : choice.chosen)
        if (!wanted.isblank() && wanted == category) return Match::listed;
    const bool limited = !choice.least.is_missing() || !choice.most.is_missing();
    if (!limited || !category.isnumber()) return Match::none;
    const double number = category.number();
    if (!choice.least.is_missing() && number < choice.least.value && !isequal(number, choice.least.value))
        return Match::none;
    if (!choice.most.is_missing() && number > choice.most.value && !isequal(number, choice.most.value))
        return Match::none;
    return Match::within_limits;
}

void explain(const Routine& here, int n, const CategoryChoice& choice, Match found, bool second, double total) {
    if (found == Match::within_limits)
        here.info("Payment ", n,
                  " added because it meets category maximum and minimum criteria . Cumulative total (CalcdPmt) now ",
                  total);
    else if (!choice.open())
        here.info("Payment ", n, second ? " added because its 2nd category (" : " added because its category (",
                  choice.categories(n), found == Match::none ? ") is not excluded" : ") is chosen",
                  ". Cumulative total (CalcdPmt) now ", total);
}

} // namespace

double MkPmtsCats(const timeperiod& Time, const Payments& payments, View<anyvalue> Categories,
                  View<anyvalue> ChosenCategories, View<anyvalue> Categories2, View<anyvalue> ChosenCategories2,
                  int Options, const Bounds& bounds, const Maybe<double>& CatMin, const Maybe<double>& CatMax,
                  const Maybe<double>& CatMin2, const Maybe<double>& CatMax2) {
    Routine here{"MkPmtsCats"};
    here.inputs(Time, payments, Categories, ChosenCategories, Categories2, ChosenCategories2, Options, bounds, CatMin,
                CatMax, CatMin2, CatMax2);
    const CategoryChoice sets[] = {{Categories, ChosenCategories, CatMin, CatMax},
                                   {Categories2, ChosenCategories2, CatMin2, CatMax2}};
    const int maxn = payments.count();
    for (int i = 0; i < 2; ++i) {
        if (sets[i].open()) continue;
        if (i == 1 && Categories2.empty()) here.fail<errliboptreq>("Categories2");
        if (sets[i].categories.size() < maxn)
            here.fail<inputrangelength2>(i == 0 ? "Categories" : "Categories2", "There are ", maxn,
                                         " payments and only ", sets[i].categories.size(), " categories");
    }
    if (!pays(here, Time, bounds)) return here.returning(0.0);
    double total = 0.0;
    for (int n = 1; n <= maxn; ++n) {
        if (!Time.contains(payments.when(n))) continue;
        const Match found[] = {match(sets[0], n), match(sets[1], n)};
        const auto wanted = [&](int i) {
            if (found[i] == Match::not_asked) return true;
            return (found[i] != Match::none) != ((Options & (i == 0 ? all_but_first : all_but_second)) != 0);
        };
        const bool asks_both = !sets[0].open() && !sets[1].open();
        const bool paid =
            (Options & either_category) != 0 && asks_both ? wanted(0) || wanted(1) : wanted(0) && wanted(1);
        if (!paid) continue;
        total += payments.amount(n);
        for (int i = 0; i < 2 && here.traced(); ++i)
            if (wanted(i)) explain(here, n, sets[i], found[i], i == 1, total);
    }
    return here.returning(total);
}

double MkPmtsSeq(const date& TheDate, const Payments& payments, int SeqRelStart, int SeqRelFinish,
                 const AnnualSequence& AnnualDateSeq) {
    Routine here{"MkPmtsSeq"};
    here.inputs(TheDate, payments, SeqRelStart, SeqRelFinish, AnnualDateSeq);
    const timeperiod between(AnnualDateSeq.dateplusperiods(TheDate, SeqRelStart),
                             AnnualDateSeq.dateplusperiods(TheDate, SeqRelFinish));
    here.info("Payments in ", between);
    return here.returning(sum_in(between, payments.PmtDates, payments.Pmts));
}

double MatchPmts(const date& TheDate, const Payments& payments) {
    Routine here{"MatchPmts"};
    here.inputs(TheDate, payments);
    double total = 0.0;
    for (int n = 1; n <= payments.count(); ++n)
        if (payments.when(n) == TheDate) total += payments.amount(n);
    return here.returning(total);
}

double TotPmts(const Payments& payments) {
    Routine here{"TotPmts"};
    here.inputs(payments);
    return here.returning(sum(payments.Pmts.upto(payments.count())));
}

double TotPmtsSF(const Life& life, const Payments& payments) {
    Routine here{"TotPmtsSF"};
    here.inputs(life, payments);
    return here.returning(sum_in({life.Start, life.Finish}, payments.PmtDates, payments.Pmts));
}

namespace {

Tally tally_between(Routine& here, const date& FromDate, const date& ToDate, const Payments& payments,
                    int InclusiveOpt) {
    here.limit(InclusiveOpt, first_end_only, second_end_only, "InclusiveOpt");
    Tally tally;
    for (int n = 1; n <= payments.count(); ++n) {
        if (!lies_between(payments.when(n).dtn(), FromDate.dtn(), ToDate.dtn(), InclusiveOpt)) continue;
        here.info("Payment ", n, " of ", payments.when(n), " lies between: ", payments.amount(n));
        tally.add(payments.amount(n));
    }
    return tally;
}

} // namespace

double SumBetween(const date& FromDate, const date& ToDate, const Payments& payments, int InclusiveOpt) {
    Routine here{"SumBetween"};
    here.inputs(FromDate, ToDate, payments, InclusiveOpt);
    return here.returning(tally_between(here, FromDate, ToDate, payments, InclusiveOpt).result(operation_sum));
}

double DoBetween(const date& FromDate, const date& ToDate, const Payments& payments, int InclusiveOpt,
                 int RangeOperation) {
    Routine here{"DoBetween"};
    here.inputs(FromDate, ToDate, payments, InclusiveOpt, RangeOperation);
    here.limit(RangeOperation, operation_sum, operation_product, "RangeOperation");
    return here.returning(tally_between(here, FromDate, ToDate, payments, InclusiveOpt).result(RangeOperation));
}

double RePhasePmts(const timeperiod& Time, View<date> FromPmtDates, View<date> ToPmtDates, View<double> Pmts) {
    Routine here{"RePhasePmts"};
    here.inputs(Time, FromPmtDates, ToPmtDates, Pmts);
    return here.returning(sum_in(Time, ToPmtDates, Pmts) - sum_in(Time, FromPmtDates, Pmts));
}

// --- Shared out, carried ---------------------------------------------------------------------------------------------

double MkPmtsWeighted(const timeperiod& Time, double Total, View<date> PmtDates, View<double> Weights) {
    Routine here{"MkPmtsWeighted"};
    here.inputs(Time, Total, PmtDates, Weights);
    if (!runs_forward(here, Time)) return here.returning(0.0);
    const View<double> used = Weights.upto(PmtDates.size());
    return here.returning(Total * safe_divide(sum_in(Time, PmtDates, used), sum(used)));
}

namespace {

/// Amounts of which those that a test holds back are set against what follows.
template <class HeldBack>
WorkList<double> carry(const Range<double>& amounts, HeldBack held_back) {
    WorkList<double> shown(amounts.size(), amounts.getcolumns());
    double carried = 0.0;
    for (int i = 1; i <= amounts.size(); ++i) {
        const double balance = carried + amounts.get(i);
        carried = held_back(balance) ? balance : 0.0;
        shown(i) = balance - carried;
    }
    return shown;
}

} // namespace

WorkList<double> CarryNeg(const Range<double>& Amounts) {
    Routine here{"CarryNeg"};
    here.inputs(Amounts);
    WorkList<double> shown = carry(Amounts, [](double balance) { return balance < 0.0; });
    here.returning();
    return shown;
}

WorkList<double> CarryPos(const Range<double>& Amounts) {
    Routine here{"CarryPos"};
    here.inputs(Amounts);
    WorkList<double> shown = carry(Amounts, [](double balance) { return balance > 0.0; });
    here.returning();
    return shown;
}

// --- Under the names of older workbooks ------------------------------------------------------------------------------

double MakePmts(double Time, const Payments& payments, double BaseYrs) {
    Routine here{"MakePmts"};
    here.inputs(Time, payments, BaseYrs);
    return here.returning(MkPmts(period_in_years(Time, BaseYrs), payments));
}

double MakePayment(double Time, const Payment& payment, double BaseYrs) {
    Routine here{"MakePayment"};
    here.inputs(Time, payment, BaseYrs);
    return here.returning(payment_in(period_in_years(Time, BaseYrs), payment.PmtDate, payment.Pmt));
}

double MakePayments(double Time, const Payments& payments, double BaseYrs) {
    Routine here{"MakePayments"};
    here.inputs(Time, payments, BaseYrs);
    return here.returning(MkPmts(period_in_years(Time, BaseYrs), payments));
}

} // namespace qx
