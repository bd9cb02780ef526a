// Whole amounts on dates: which of them fall into a period, and what they are worth.
//
// A payment on a date belongs to the period that holds the date: on a period's start to this one, on its end to the
// next. There is no day count and no cash timing. Of two lists the shorter governs. A routine for one payment and for a
// list of them is a template of either.
#pragma once

#include "calendar/anyvalue.h"
#include "calendar/time_period.h"
#include "core/repeated.h"
#include "projections/terms.h"

namespace qx {

/// One payment.
struct Payment {
    using takes = Takes<date, double>;
    const date& PmtDate;
    double Pmt;

    static constexpr bool many = false;
    static constexpr int count() { return 1; }
    const date& when(int) const { return PmtDate; }
    double amount(int) const { return Pmt; }
};

/// A list of payments.
struct Payments {
    using takes = Takes<Range<date>, Range<double>>;
    View<date> PmtDates;
    View<double> Pmts;

    static constexpr bool many = true;
    int count() const { return std::min(PmtDates.size(), Pmts.size()); }
    const date& when(int i) const { return PmtDates(i); }
    double amount(int i) const { return Pmts(i); }
};

/// The name of a routine for one payment or for many.
template <class Pmts>
constexpr const char* one_or_many(const char* one, const char* many) {
    return Pmts::many ? many : one;
}

/// A payment as it counts in a period.
inline double payment_in(const timeperiod& Time, const date& PmtDate, double Pmt) {
    return Time.contains(PmtDate) ? Pmt : 0.0;
}

/// The sum of the payments in a period.
double MkPmts(const timeperiod& Time, const Payments& payments);
/// The payments on or after Start and before Finish.
template <class Pmts>
double MkPmtSF(const timeperiod& Time, const Life& life, const Pmts& payments);

/// Up to nine more amounts on the date of a payment.
double MkPmtX(const timeperiod& Time, const Payment& payment, const Repeated<double, 9>& more);
/// Up to nine more lists on the same dates.
struct ThreeLists {
    using takes = Takes<Range<double>, Range<double>, Range<double>>;
    View<double> a, b, c;
};
struct NineLists {
    using takes = Takes<ThreeLists, ThreeLists, ThreeLists>;
    ThreeLists first, second, third;

    template <class Visit>
    void each(Visit visit) const {
        for (const ThreeLists* lists : {&first, &second, &third}) visit(lists->a), visit(lists->b), visit(lists->c);
    }
};
double MkPmtsX(const timeperiod& Time, const Payments& payments, const NineLists& more);

// --- Later than their dates ------------------------------------------------------------------------------------------

/// The dates outside which a function pays nothing; a zero date sets no bound.
struct Bounds {
    using takes = Takes<date, date>;
    const date& AbStart;
    const date& AbFin;

    /// True if a period ends before AbStart or starts on or after AbFin.
    bool exclude(const timeperiod& Time) const {
        return (!AbStart.iszero() && Time.to() < AbStart) || (!AbFin.iszero() && Time.from() >= AbFin);
    }
};

/// Payments made so many months after their dates: lag n for payment n, the last one for all that follow, no lag
/// without any. A negative lag pays earlier. Throws errlibmin, errlibmax for a DayCount outside 0 to 999, as do all of
/// this group.
double MkPmtsLag(const timeperiod& Time, View<double> LagMonths, const Payments& payments, const Measure& measure,
                 const Bounds& bounds);
double MkPmtsLagX(const timeperiod& Time, View<double> LagMonths, const Payments& payments, const NineLists& more,
                  const Measure& measure, const Bounds& bounds);
/// Each payment spread over several lags in given proportions, which need not sum to 1.
double MkPmtsLagProf(const timeperiod& Time, View<double> MonthsLag, View<double> Proportions, const Payments& payments,
                     const Measure& measure, const Bounds& bounds);
/// Payments held, after their lag, until the next date of a sequence; one that is due on such a date is paid on it.
double MkPmtsGroup(const timeperiod& Time, View<double> LagMonths, const Payments& payments, const Measure& measure,
                   const AnnualSequence& PrdsGroup, const Bounds& bounds);

// --- Some of them ----------------------------------------------------------------------------------------------------

/// Payments in the order of the list until, in this period, one would carry the total of all before it past CumLimit:
/// it and those after it are not paid.
double MkPmtsLim(const timeperiod& Time, const Payments& payments, double CumLimit);

/// What of a set of categories is wanted: one of a list, or a number within limits. A set without either wants all.
struct CategoryChoice {
    View<anyvalue> categories, chosen;
    const Maybe<double>& least;
    const Maybe<double>& most;

    /// True if it asks for nothing.
    bool open() const { return chosen.empty() && least.is_missing() && most.is_missing(); }
};
/// Options of MkPmtsCats, a sum; a bit without a meaning is passed over.
enum CategoryOption : int {
    all_but_first = 1,   ///< what the first set wants is omitted, the rest is paid
    all_but_second = 2,  ///< the same for the second set
    either_category = 4, ///< one of the sets is enough; otherwise both must agree
};
/// The payments of chosen categories. Throws inputrangelength2 unless there is a category for each payment, and
/// errliboptreq for a choice in a second set that has no categories.
double MkPmtsCats(const timeperiod& Time, const Payments& payments, View<anyvalue> Categories,
                  View<anyvalue> ChosenCategories, View<anyvalue> Categories2, View<anyvalue> ChosenCategories2,
                  int Options, const Bounds& bounds, const Maybe<double>& CatMin, const Maybe<double>& CatMax,
                  const Maybe<double>& CatMin2, const Maybe<double>& CatMax2);

/// Payments from one date of a sequence up to another, both counted from TheDate: 0 is that date itself, 1 the next one
/// of the sequence after it, -1 the last one before it. Throws errliboveriterated at 99 dates.
double MkPmtsSeq(const date& TheDate, const Payments& payments, int SeqRelStart, int SeqRelFinish,
                 const AnnualSequence& AnnualDateSeq);
/// Payments on one day.
double MatchPmts(const date& TheDate, const Payments& payments);
/// All payments, and those on or after Start and before Finish.
double TotPmts(const Payments& payments);
double TotPmtsSF(const Life& life, const Payments& payments);
/// The payments between two dates, of which InclusiveOpt says what counts: their sum, or a RangeOperation. Throw
/// errlibmin, errlibmax for a switch that there is not.
double SumBetween(const date& FromDate, const date& ToDate, const Payments& payments, int InclusiveOpt);
double DoBetween(const date& FromDate, const date& ToDate, const Payments& payments, int InclusiveOpt,
                 int RangeOperation);

/// Payments moved to other dates: those on the new dates less those on the old ones.
double RePhasePmts(const timeperiod& Time, View<date> FromPmtDates, View<date> ToPmtDates, View<double> Pmts);

// --- Shared out, carried ---------------------------------------------------------------------------------------------

/// A total paid on given dates in proportion to weights, which need not sum to 1.
double MkPmtsWeighted(const timeperiod& Time, double Total, View<date> PmtDates, View<double> Weights);
/// Amounts of which the negative ones are not shown but set against what follows, and the reverse. What is left at the
/// end of the list is carried beyond it.
WorkList<double> CarryNeg(const Range<double>& Amounts);
WorkList<double> CarryPos(const Range<double>& Amounts);

// --- Under the names of older workbooks ------------------------------------------------------------------------------

/// The period is one of years from Time on. Throws illegalvalue for a negative length.
double MakePmts(double Time, const Payments& payments, double BaseYrs);
double MakePayment(double Time, const Payment& payment, double BaseYrs);
double MakePayments(double Time, const Payments& payments, double BaseYrs);

} // namespace qx
