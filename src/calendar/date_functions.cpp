#include "calendar/date_functions.h"

#include "calendar/date_arithmetic.h"
#include "calendar/holidays.h"
#include "core/routine.h"

#include <algorithm>
#include <cmath>
#include <utility>

namespace qx {

namespace {

constexpr int longest_list = 999;      ///< dates that DateSeq looks for
constexpr int longest_timebase = 9999; ///< dates of a time base

void limit_daycount(Routine& here, double DayCount) { here.limit(DayCount, 0, 999, "DayCount"); }
void limit_rounding(Routine& here, int RoundMethod) { here.limit(RoundMethod, 0, 2, "RoundMethod"); }

/// The whole part of a number of months, where what is whole but for its last bits is that number.
int whole_months(double months) {
    const double nearest = std::round(months);
    return whole(isequal(months, nearest) ? nearest : months);
}

void append(Range<date>& list, const date& day) {
    list.dimension(list.size() + 1);
    list(list.size()) = day;
}

} // namespace

// --- Differences ----------------------------------------------------------------------------------------------

double DiffD(const date& Date1, const date& Date2, double DayCount, const AnnualSequence& Periods) {
    Routine here{"DiffD"};
    here.inputs(Date1, Date2, DayCount, Periods);
    limit_daycount(here, DayCount);
    return here.returning(static_cast<double>(daycountdays(Date1, Date2, DayCount)));
}

double DiffM(const date& Date1, const date& Date2, double DayCount, const AnnualSequence& Periods) {
    Routine here{"DiffM"};
    here.inputs(Date1, Date2, DayCount, Periods);
    limit_daycount(here, DayCount);
    return here.returning(diffmonths(Date1, Date2, DayCount, Periods));
}

double DiffY(const date& Date1, const date& Date2, double DayCount, const AnnualSequence& Periods) {
    Routine here{"DiffY"};
    here.inputs(Date1, Date2, DayCount, Periods);
    limit_daycount(here, DayCount);
    return here.returning(diffmonths(Date1, Date2, DayCount, Periods) / 12.0);
}

double DiffP(const date& FromDate, const date& ToDate, const AnnualSequence& AnnDateSeq) {
    Routine here{"DiffP"};
    here.inputs(FromDate, ToDate, AnnDateSeq);
    return here.returning(AnnDateSeq.periodsbetween(FromDate, ToDate));
}

double DiffPSeq(const date& FromDate, const date& ToDate, const AnnualSequence& AnnDateSeq) {
    Routine here{"DiffPSeq"};
    here.inputs(FromDate, ToDate, AnnDateSeq);
    return here.returning(AnnDateSeq.periodsbetween(FromDate, ToDate));
}

double DiffMSeq(const date& FromDate, const date& ToDate, const AnnualSequence& AnnDateSeq) {
    Routine here{"DiffMSeq"};
    here.inputs(FromDate, ToDate, AnnDateSeq);
    return here.returning(AnnDateSeq.monthsbetween(FromDate, ToDate));
}

// --- Date plus ------------------------------------------------------------------------------------------------

date DpD(const date& TheDate, double Days, double DayCount, const AnnualSequence& Periods) {
    Routine here{"DpD"};
    here.inputs(TheDate, Days, DayCount, Periods);
    limit_daycount(here, DayCount);
    return here.returning("DateResult", nextbd(plusdays(TheDate, Days, DayCount), Periods.BusDaySwitch()));
}

date DpM(const date& TheDate, double Months, double DayCount, const AnnualSequence& Periods) {
    Routine here{"DpM"};
    here.inputs(TheDate, Months, DayCount, Periods);
    limit_daycount(here, DayCount);
    return here.returning("DateResult", nextbd(plusmonths(TheDate, Months, DayCount, Periods), Periods.BusDaySwitch()));
}

date DpY(const date& TheDate, double Yrs, double DayCount, const AnnualSequence& Periods) {
    Routine here{"DpY"};
    here.inputs(TheDate, Yrs, DayCount, Periods);
    limit_daycount(here, DayCount);
    return here.returning("DateResult",
                          nextbd(plusmonths(TheDate, Yrs * 12.0, DayCount, Periods), Periods.BusDaySwitch()));
}

date EDateQX(const date& TheDate, double Months) {
    Routine here{"EDateQX"};
    here.inputs(TheDate, Months);
    return here.returning("DateResult", TheDate.plusmonths(whole_months(Months), false));
}

date DatePer(double WhichOne, const date& FirstPmtDate, double Periodicity) {
    Routine here{"DatePer"};
    here.inputs(WhichOne, FirstPmtDate, Periodicity);
    here.at_least(Periodicity, 0, "Periodicity");
    return here.returning("DateResult", FirstPmtDate.plusmonths(whole_months(WhichOne * Periodicity), false));
}

// --- Time periods ---------------------------------------------------------------------------------------------

double TpD(const timeperiod& Time, double DayCount, const AnnualSequence& Periods) {
    Routine here{"TpD"};
    here.inputs(Time, DayCount, Periods);
    limit_daycount(here, DayCount);
    return here.returning(static_cast<double>(daycountdays(Time.from(), Time.to(), DayCount)));
}

double TpM(const timeperiod& Time, double DayCount, const AnnualSequence& Periods) {
    Routine here{"TpM"};
    here.inputs(Time, DayCount, Periods);
    limit_daycount(here, DayCount);
    return here.returning(Time.lenmonths(Time.from(), Time.to(), DayCount, Periods));
}

double TpY(const timeperiod& Time, double DayCount, const AnnualSequence& Periods) {
    Routine here{"TpY"};
    here.inputs(Time, DayCount, Periods);
    limit_daycount(here, DayCount);
    return here.returning(Time.lenyrs(Time.from(), Time.to(), DayCount, Periods));
}

bool Occurs(const timeperiod& Time, View<date> EventDates) {
    Routine here{"Occurs"};
    here.inputs(Time, EventDates);
    return here.returning(std::any_of(EventDates.begin(), EventDates.end(),
                                      [&Time](const date& day) { return !day.iszero() && Time.contains(day); }));
}

namespace {

timeperiod cash_span(Routine& here, const timeperiod& Time, double DayCount, const AnnualSequence& CashBasis,
                     double ProjMode) {
    here.inputs(Time, DayCount, CashBasis, ProjMode);
    limit_daycount(here, DayCount);
    here.limit(ProjMode, 0, 7, "ProjMode");
    return CashTime(Time, CashBasis, Time.from(), Time.to(), true, ProjMode);
}

} // namespace

date CashStart(const timeperiod& Time, double DayCount, const AnnualSequence& CashBasis, double ProjMode) {
    Routine here{"CashStart"};
    return here.returning("DateResult", date(cash_span(here, Time, DayCount, CashBasis, ProjMode).from()));
}

date CashFinish(const timeperiod& Time, double DayCount, const AnnualSequence& CashBasis, double ProjMode) {
    Routine here{"CashFinish"};
    return here.returning("DateResult", date(cash_span(here, Time, DayCount, CashBasis, ProjMode).to()));
}

double CashLenYrs(const timeperiod& Time, double DayCount, const AnnualSequence& CashBasis, double ProjMode) {
    Routine here{"CashLenYrs"};
    const timeperiod span = cash_span(here, Time, DayCount, CashBasis, ProjMode);
    return here.returning(span.lenyrs(span.from(), span.to(), DayCount, CashBasis));
}

WorkList<date> CreateTimeBase(const date& Start, const AnnualSequence& Periods, const date& AbFin, int NumOfPrds) {
    Routine here{"CreateTimeBase"};
    here.inputs(Start, Periods, AbFin, NumOfPrds);
    here.at_least(NumOfPrds, 0, "NumOfPrds");
    if (NumOfPrds == 0 && AbFin.iszero())
        here.fail<errinput>("NumOfPrds", "You MUST specify either NumOfPrds or AbFin");
    WorkList<date> timebase;
    const int most = NumOfPrds > 0 ? std::min(NumOfPrds, longest_timebase) : longest_timebase;
    append(timebase, Start);
    while (timebase.size() < most && (NumOfPrds > 0 || timebase->last() < AbFin)) {
        const date next = Periods.nextdate(timebase->last(), false);
        if (next <= timebase->last()) break; // the end of the calendar
        append(timebase, next);
    }
    here.returning();
    return timebase;
}

WorkList<double> TimeBaseLengths(View<date> Timebase, double DayCount, const AnnualSequence& Periods) {
    Routine here{"TimeBaseLengths"};
    here.inputs(Timebase, DayCount, Periods);
    limit_daycount(here, DayCount);
    WorkList<double> lengths;
    lengths->dimension(Timebase.size());
    for (int i = 1; i <= Timebase.size(); ++i) {
        const timeperiod period = timebase_period(Timebase, i);
        lengths(i) = period.lenmonths(period.from(), period.to(), DayCount, Periods);
    }
    here.returning();
    return lengths;
}

// --- Next and previous ----------------------------------------------------------------------------------------

namespace {

/// The first date of an ascending list after a date, or the zero date.
date next_in(View<date> ascending, const date& day) {
    const date* const found = std::upper_bound(ascending.begin(), ascending.end(), day);
    return found == ascending.end() ? date() : *found;
}

/// The last date of an ascending list before a date, or the zero date.
date prev_in(View<date> ascending, const date& day) {
    const date* const found = std::lower_bound(ascending.begin(), ascending.end(), day);
    return found == ascending.begin() ? date() : *(found - 1);
}

/// The earlier of two dates, of which either may be none.
const date& earlier(const date& a, const date& b) { return b.iszero() || (!a.iszero() && a < b) ? a : b; }

/// A sequence with a list: where dates are looked for. A sequence may be omitted.
struct Source {
    const AnnualSequence& sequence;
    View<date> list;
    bool even_default = false; ///< an omitted sequence takes a default
    WorkList<date> in_order{};

    void sort() { list = in_order = sorted(list); }
    bool given() const { return has_sequence() || list.size() > 0; }
    bool has_sequence() const { return sequence.size() > 0 && (even_default || !sequence.missing()); }
    date next(const date& day) const {
        const date from_list = next_in(list, day);
        return has_sequence() ? earlier(from_list, sequence.nextdate(day, false)) : from_list;
    }
};

template <int N>
date next_of(const Source (&sources)[N], const date& day) {
    date found;
    for (const Source& source : sources) found = earlier(found, source.next(day));
    return found;
}

/// Shows in the trace which sequence was omitted and has no part, though its inputs show a default.
template <int N>
void show_omitted(Routine& here, const Source (&sources)[N]) {
    for (const Source& source : sources)
        if (source.sequence.size() > 0 && !source.has_sequence())
            here.info(source.sequence.name(), " (an Annual Sequence) was missing and will be ignored.");
}

/// The dates of some sources strictly between two dates.
template <int N>
WorkList<date> dates_between(Source (&sources)[N], const date& FromDate, const date& ToDate) {
    WorkList<date> found;
    for (Source& source : sources) source.sort();
    date working = FromDate;
    for (int round = 1; round <= longest_list; ++round) {
        const date next = next_of(sources, working);
        if (next <= working || next >= ToDate) break; // none left, or the end of the calendar
        append(found, next);
        working = next;
    }
    return found;
}

} // namespace

date NextDateList(const date& TheDate, View<date> SpecificDates) {
    Routine here{"NextDateList"};
    here.inputs(TheDate, SpecificDates);
    return here.returning("DateResult", next_in(sorted(SpecificDates), TheDate));
}

date PrevDateList(const date& TheDate, View<date> SpecificDates) {
    Routine here{"PrevDateList"};
    here.inputs(TheDate, SpecificDates);
    return here.returning("DateResult", prev_in(sorted(SpecificDates), TheDate));
}

date NextDateSeq(const date& TheDate, const AnnualSequence& AnnDateSeq, View<date> SpecificDates) {
    Routine here{"NextDateSeq"};
    here.inputs(TheDate, AnnDateSeq, SpecificDates);
    const date from_list = NextDateList(TheDate, SpecificDates);
    const date from_sequence = AnnDateSeq.nextdate(TheDate, false);
    return here.returning("DateResult",
                          date(!from_list.iszero() && from_list < from_sequence ? from_list : from_sequence));
}

date PrevDateSeq(const date& TheDate, const AnnualSequence& AnnDateSeq, View<date> SpecificDates) {
    Routine here{"PrevDateSeq"};
    here.inputs(TheDate, AnnDateSeq, SpecificDates);
    here.change_note(1, "See Change in Behaviour 1, Jul-02 :RoundDown changed to true from false (if TheDate equal to "
                        "sequence date it returns the previous date, not TheDate)");
    const date from_list = PrevDateList(TheDate, SpecificDates);
    return here.returning("DateResult", std::max(from_list, AnnDateSeq.prevdate(TheDate, true)));
}

date NextDateCombine(const date& TheDate, const AnnualSequence& AnnDateSeq1, View<date> SpecificDates1,
                     const AnnualSequence& AnnDateSeq2, View<date> SpecificDates2, const AnnualSequence& AnnDateSeq3,
                     View<date> SpecificDates3, const AnnualSequence& AnnDateSeq4, View<date> SpecificDates4) {
    Routine here{"NextDateCombine"};
    here.inputs(TheDate, AnnDateSeq1, SpecificDates1, AnnDateSeq2, SpecificDates2, AnnDateSeq3, SpecificDates3,
                AnnDateSeq4, SpecificDates4);
    Source sources[] = {{AnnDateSeq1, SpecificDates1},
                        {AnnDateSeq2, SpecificDates2},
                        {AnnDateSeq3, SpecificDates3},
                        {AnnDateSeq4, SpecificDates4}};
    show_omitted(here, sources);
    for (Source& source : sources) source.sort();
    return here.returning("DateResult", next_of(sources, TheDate));
}

date MostRecent(const date& TheDate, View<date> Dates, View<date> Dates2, View<date> Dates3, View<date> Dates4,
                bool RoundDown, const date& DefaultDate) {
    Routine here{"MostRecent"};
    here.inputs(TheDate, Dates, Dates2, Dates3, Dates4, RoundDown, DefaultDate);
    date found;
    for (const View<date>* list : {&Dates, &Dates2, &Dates3, &Dates4})
        for (const date& day : *list)
            if ((RoundDown ? day < TheDate : day <= TheDate) && day > found) found = day;
    return here.returning("DateResult", date(found.iszero() ? DefaultDate : found));
}

date MostImminent(const date& TheDate, View<date> Dates, View<date> Dates2, View<date> Dates3, View<date> Dates4,
                  bool RoundDown, const date& DefaultDate) {
    Routine here{"MostImminent"};
    here.inputs(TheDate, Dates, Dates2, Dates3, Dates4, RoundDown, DefaultDate);
    date found;
    for (const View<date>* list : {&Dates, &Dates2, &Dates3, &Dates4})
        for (const date& day : *list)
            if (RoundDown ? day >= TheDate : day > TheDate) found = earlier(found, day);
    return here.returning("DateResult", date(found.iszero() ? DefaultDate : found));
}

// --- Sequences as lists ---------------------------------------------------------------------------------------

WorkList<date> DateSeq(const date& FromDate, const date& ToDate, const AnnualSequence& AnnDateSeq,
                       View<date> SpecificDates) {
    Routine here{"DateSeq"};
    here.inputs(FromDate, ToDate, AnnDateSeq, SpecificDates);
    Source sources[] = {{AnnDateSeq, SpecificDates, true}};
    WorkList<date> found = dates_between(sources, FromDate, ToDate);
    here.returning();
    return found;
}

WorkList<date> DateSeqCombine(const date& FromDate, const date& ToDate, const AnnualSequence& AnnDateSeq1,
                              View<date> SpecificDates1, const AnnualSequence& AnnDateSeq2, View<date> SpecificDates2,
                              const AnnualSequence& AnnDateSeq3, View<date> SpecificDates3,
                              const AnnualSequence& AnnDateSeq4, View<date> SpecificDates4) {
    Routine here{"DateSeqCombine"};
    here.inputs(FromDate, ToDate, AnnDateSeq1, SpecificDates1, AnnDateSeq2, SpecificDates2, AnnDateSeq3, SpecificDates3,
                AnnDateSeq4, SpecificDates4);
    Source sources[] = {{AnnDateSeq1, SpecificDates1},
                        {AnnDateSeq2, SpecificDates2},
                        {AnnDateSeq3, SpecificDates3},
                        {AnnDateSeq4, SpecificDates4}};
    if (std::none_of(std::begin(sources), std::end(sources), [](const Source& each) { return each.given(); }))
        here.fail<errinput>("AnnDateSeq1", "At least one AnndateSeq or SpecificDates must be set");
    show_omitted(here, sources);
    WorkList<date> found = dates_between(sources, FromDate, ToDate);
    here.returning();
    return found;
}

WorkList<double> AnnSeq(double AnnSeqNum, int NumPmtsPerYr, bool EOMRule) {
    Routine here{"AnnSeq"};
    here.inputs(AnnSeqNum, NumPmtsPerYr, EOMRule);
    here.limit(NumPmtsPerYr, 1, 13, "NumPmtsPerYr");
    AnnualSequence sequence;
    sequence.generate(AnnSeqNum, NumPmtsPerYr, EOMRule);
    WorkList<double> figures;
    figures->dimension(sequence.size());
    for (int i = 1; i <= sequence.size(); ++i) figures(i) = sequence.figure(i);
    here.returning();
    return figures;
}

int NumPers(const AnnualSequence& Periods) {
    Routine here{"NumPers"};
    here.inputs(Periods);
    return here.returning(Periods.size());
}

bool IsSeqDate(const date& TheDate, const AnnualSequence& AnnualDateSeq) {
    Routine here{"IsSeqDate"};
    here.inputs(TheDate, AnnualDateSeq);
    return here.returning(AnnualDateSeq.isdate(TheDate));
}

bool IsAnniversary(const date& Date1, const date& Date2) {
    Routine here{"IsAnniversary"};
    here.inputs(Date1, Date2);
    return here.returning(Date1.plusyears(Date2.year() - Date1.year(), false) == Date2);
}

// --- Weeks ----------------------------------------------------------------------------------------------------

namespace {

/// The first day of a year that falls on a weekday.
date first_weekday(const char* method, int year, int weekday) {
    date first = date::from_ymd(year, 1, 1).movetoweekday(weekday, 2);
    if (traced()) trace().info(text_of(method, " method: First ", weekday_name(weekday), " in the year = ", first));
    return first;
}

/// The first day of the week that holds the year's first StartOfWeek1.
date week_one(int year, int StartOfWeek, int StartOfWeek1) {
    return first_weekday("ISO", year, StartOfWeek1).movetoweekday(StartOfWeek, 1);
}

void limit_weekdays(Routine& here, int StartOfWeek, int StartOfWeek1) {
    here.limit(StartOfWeek, 1, 7, "StartOfWeek");
    here.limit(StartOfWeek1, 0, 7, "StartOfWeek1");
}

} // namespace

int WeekNumber(const date& TheDate, int StartOfWeek, int StartOfWeek1) {
    Routine here{"WeekNumber"};
    here.inputs(TheDate, StartOfWeek, StartOfWeek1);
    limit_weekdays(here, StartOfWeek, StartOfWeek1);
    const int year = TheDate.year();
    if (StartOfWeek1 < 1) {
        const date first = first_weekday("Excel", year, StartOfWeek);
        if (TheDate < first) return here.returning(1);
        return here.returning(days_between(first, TheDate) / 7 + (first == TheDate.yearstart() ? 1 : 2));
    }
    date start = week_one(year, StartOfWeek, StartOfWeek1);
    if (TheDate.month() == 12) {
        const date next = week_one(year + 1, StartOfWeek, StartOfWeek1);
        if (next <= TheDate && next > start) start = next;
    } else if (TheDate.month() == 1 && start > TheDate) {
        start = week_one(year - 1, StartOfWeek, StartOfWeek1);
    }
    return here.returning(days_between(start, TheDate) / 7 + 1);
}

date WeekNumberToDate(int WeekNum, int StartOfWeek, int StartOfWeek1, const date& Yr) {
    Routine here{"WeekNumberToDate"};
    here.inputs(WeekNum, StartOfWeek, StartOfWeek1, Yr);
    limit_weekdays(here, StartOfWeek, StartOfWeek1);
    date start = StartOfWeek1 < 1 ? Yr.yearstart().movetoweekday(StartOfWeek, 1)
                                  : week_one(Yr.year(), StartOfWeek, StartOfWeek1);
    return here.returning("DateResult", start.adddays(whole(7.0 * (WeekNum - 1.0))));
}

// --- Rounding -------------------------------------------------------------------------------------------------

namespace {

date round_to(const date& day, const AnnualSequence& sequence, int Round) {
    if (day.iszero() || Round >= 3) return day;
    const date previous = sequence.prevdate(day, false);
    const date next = sequence.nextdate(day, true);
    const auto rounded = [&](const date& to, const char* how) {
        if (traced()) trace().info(text_of(day, how, sequence));
        return to;
    };
    if (Round == 1) return rounded(previous, " was rounded DOWN to the LAST payment/accrual date based on ");
    if (Round == 2) return rounded(next, " was rounded UP to the NEXT payment/accrual date based on ");
    return days_between(previous, day) <= days_between(day, next)
               ? rounded(previous, " was rounded DOWN to the NEAREST payment/accrual date based on ")
               : rounded(next, " was rounded UP to the NEAREST payment/accrual date based on ");
}

} // namespace

date DateRound(const date& TheDate, const AnnualSequence& Periods, int Round) {
    Routine here{"DateRound"};
    here.inputs(TheDate, Periods, Round);
    here.at_least(Round, 0, "Round");
    return here.returning("DateResult", round_to(TheDate, Periods, Round));
}

date DateCeiling(const date& TheDate, const AnnualSequence& Periods) {
    Routine here{"DateCeiling"};
    here.inputs(TheDate, Periods);
    return here.returning("DateResult", round_to(TheDate, Periods, 2));
}

date DateFloor(const date& TheDate, const AnnualSequence& Periods) {
    Routine here{"DateFloor"};
    here.inputs(TheDate, Periods);
    return here.returning("DateResult", round_to(TheDate, Periods, 1));
}

std::string DescribeRounding(int Round) {
    Routine here{"DescribeRounding"};
    here.inputs(Round);
    here.at_least(Round, 0, "Round");
    return here.returning(std::string(SwitchTable(date_rounding_values).words(std::min(Round, 3), "")));
}

date RoundDateSeq(const date& TheDate, const AnnualSequence& AnnDateSeq, int RoundMethod) {
    Routine here{"RoundDateSeq"};
    here.inputs(TheDate, AnnDateSeq, RoundMethod);
    limit_rounding(here, RoundMethod);
    return here.returning("DateResult", round_to(TheDate, AnnDateSeq, RoundMethod));
}

date RoundMD(const date& TheDate, int Mnth, int Day, int RoundMethod) {
    Routine here{"RoundMD"};
    here.inputs(TheDate, Mnth, Day, RoundMethod);
    here.limit(Mnth, 1, 12, "Mnth");
    here.limit(Day, 1, 31, "Day");
    limit_rounding(here, RoundMethod);
    if (TheDate.iszero()) return here.returning("DateResult", date());
    const date previous = TheDate.prevanniversary(Mnth, Day, false);
    const bool there = previous == TheDate; // a date that is there already stays
    return here.returning("DateResult", there ? previous : TheDate.nearestanniversary(Mnth, Day, RoundMethod));
}

date RoundMonthDay(const date& TheDate, int DayInMonth, int RoundMethod) {
    Routine here{"RoundMonthDay"};
    here.inputs(TheDate, DayInMonth, RoundMethod);
    here.limit(DayInMonth, 1, 31, "DayInMonth");
    limit_rounding(here, RoundMethod);
    date rounded = TheDate;
    if (!rounded.iszero()) rounded.movetomonthday(DayInMonth, RoundMethod);
    return here.returning("DateResult", std::move(rounded));
}

date RoundWeekDay(const date& TheDate, int DayInWeek, int RoundMethod) {
    Routine here{"RoundWeekDay"};
    here.inputs(TheDate, DayInWeek, RoundMethod);
    here.limit(DayInWeek, 1, 7, "DayInWeek");
    limit_rounding(here, RoundMethod);
    date rounded = TheDate;
    return here.returning("DateResult", date(rounded.movetoweekday(DayInWeek, RoundMethod)));
}

// --- Limits ---------------------------------------------------------------------------------------------------

date CollarDate(const date& TheDate, const date& MinDate, const date& MaxDate) {
    Routine here{"CollarDate"};
    here.inputs(TheDate, MinDate, MaxDate);
    const bool below = !MinDate.iszero() && MinDate > TheDate;
    const bool above = !MaxDate.iszero() && MaxDate < TheDate;
    return here.returning("DateResult", date(below ? MinDate : above ? MaxDate : TheDate));
}

double Collar(double Amt, double Minimum, double Maximum) {
    Routine here{"Collar"};
    here.inputs(Amt, Minimum, Maximum);
    const bool below = !iszero(Minimum) && Minimum > Amt;
    const bool above = !iszero(Maximum) && Maximum < Amt;
    return here.returning(below ? Minimum : above ? Maximum : Amt);
}

bool InBetween(const date& TheDate, const date& StartDate, const date& FinishDate) {
    Routine here{"InBetween"};
    here.inputs(TheDate, StartDate, FinishDate);
    return here.returning(StartDate <= TheDate && TheDate < FinishDate);
}

// --- In words -------------------------------------------------------------------------------------------------

std::string DescribeDayCount(double DayCount) {
    Routine here{"DescribeDayCount"};
    here.inputs(DayCount);
    limit_daycount(here, DayCount);
    return here.returning(daycount_text(DayCount));
}

std::string DescribePeriods(const AnnualSequence& Periods) {
    Routine here{"DescribePeriods"};
    here.inputs(Periods);
    return here.returning(describe_periods(Periods));
}

std::string DescribeCashBasis(double ProjMode) {
    Routine here{"DescribeCashBasis"};
    here.inputs(ProjMode);
    here.limit(ProjMode, 0, 7, "ProjMode");
    here.info("Moved to hidden (still works but not in help file) because CashBasis has been superceded by Periods");
    const int mode = whole(ProjMode);
    return here.returning(projmode_text(ProjMode) + describe(mode) + (mode <= 3 ? ")" : ""));
}

std::string DescribePmtsPerYear(double PmtsPerYear) {
    Routine here{"DescribePmtsPerYear"};
    here.inputs(PmtsPerYear);
    here.limit(PmtsPerYear, -1e6, 1e6, "PmtsPerYear");
    const double payments = iszero(PmtsPerYear) ? 1.0 : std::fabs(PmtsPerYear);
    std::string text;
    if (isequal(payments, 1.0))
        text = "annually";
    else if (isequal(payments, 2.0))
        text = "biannually";
    else if (isequal(payments, 4.0))
        text = "quarterly";
    else if (isequal(payments, 12.0))
        text = "monthly";
    else
        text = (iszero(fraction(payments)) ? describe(whole(payments)) : describe(payments)) + " payments a year";
    return here.returning(text + (PmtsPerYear > 0.0 && !iszero(PmtsPerYear) ? " in advance" : " in arrear"));
}

// --- Names of older workbooks ---------------------------------------------------------------------------------

date DatePlusYears(const date& TheDate, double Yrs) {
    Routine here{"DatePlusYears"};
    here.inputs(TheDate, Yrs);
    return here.returning("DateResult", TheDate.plusyears(Yrs, true));
}

double DecYear(const date& TheDate) {
    Routine here{"DecYear"};
    here.inputs(TheDate);
    return here.returning(TheDate.decimal_year());
}

double DiffYears(const date& Date1, const date& Date2) {
    Routine here{"DiffYears"};
    here.inputs(Date1, Date2);
    return here.returning((Date2.months() - Date1.months()) / 12.0);
}

bool Happens(const timeperiod& Time, const date& EventDate) {
    Routine here{"Happens"};
    here.inputs(Time, EventDate);
    return here.returning(Time.contains(EventDate));
}

date IncDate(const date& TheDate, int Months) {
    Routine here{"IncDate"};
    here.inputs(TheDate, Months);
    return here.returning("DateResult", TheDate.plusmonths(Months, true));
}

date LotusDate(int Yr, int Mnth, int Day) {
    Routine here{"LotusDate"};
    here.inputs(Yr, Mnth, Day);
    here.limit(Yr, 0, date::maxyear, "Yr");
    here.limit(Mnth, 1, 12, "Mnth");
    const int year = Yr < 200 ? Yr + 1900 : Yr;
    here.limit(year, 1900, date::maxyear, "Yr");
    here.limit(Day, 1, date::days_in_month(Mnth, date::is_leap(year)), "Day");
    return here.returning("DateResult", date::from_ymd(year, Mnth, Day));
}

} // namespace qx
