#include "calendar/time_period.h"

#include "core/routine.h"

#include <algorithm>
#include <utility>

namespace qx {

namespace {

constexpr double suspicious_months = 120000.0;

} // namespace

// --- Setting --------------------------------------------------------------------------------------------------

void timeperiod::settime(double Time, double Base) {
    from_ = date(context_);
    from_ = Time;
    setbase(Base);
}

void timeperiod::settime_in_years(double Time, double BaseYrs) {
    constexpr double years_below = 1900.0;
    constexpr double likely_months = 24.0;
    if (traced()) {
        if (BaseYrs > 1.0 && BaseYrs <= likely_months)
            trace().warning(text_of("You have specified a Base (", BaseYrs,
                                    ") of more than 1 year and you may have meant to specify months.  Are you sure "
                                    "you meant years?"));
        else if (BaseYrs > likely_months)
            trace().warning(text_of("Your Base (", BaseYrs,
                                    "), which should be in years, a decimal year or a date number, looks very large.  "
                                    "Are you sure you intended a timeperiod this long?"));
        if (qx::iszero(BaseYrs)) trace().warning("Base of zero will imply zero timeperiod");
    }
    if (BaseYrs < 0.0) {
        context_.setmessage("Error: Base of less than zero");
        throw illegalvalue(context_);
    }
    if (BaseYrs >= years_below) return settime(Time, BaseYrs);
    const double months = BaseYrs * 12.0;
    const double nearest = std::round(months); // twelfths of a year are whole months but for their last bits
    settime(Time, isequal(months, nearest) ? nearest : months);
}

void timeperiod::settime(const date& Time, int months) {
    from_ = Time;
    to_ = from_.plusmonths(months, true);
}

void timeperiod::setbase(double Base) {
    const bool by_length = Base < 1900.0;
    if (!(Base >= 0.0) || (Base > 0.0 && Base < 1.0) || (by_length && !qx::iszero(fraction(Base)))) {
        FunctionContext context(context_);
        context.setclass("TimePeriod");
        if (tracing) context.setmessage(text_of("The base is ", Base));
        throw errlibbadbase(context);
    }
    if (by_length) {
        const int months = whole(Base);
        const bool unusual = months == 2 || months == 4 || months == 7 || months == 10 || months == 11 || months > 12;
        if (unusual && traced())
            trace().warning(
                text_of("Warning: Your base of ", months, " is a little unusual - are you sure this is what you want"));
        to_ = from_.plusmonths(months, true);
    } else {
        to_ = date(context_);
        to_ = Base;
        if (to_ < from_) to_ = from_;
    }
}

void timeperiod::setfromtimebase(View<date> timebase, int i) {
    const int n = timebase.size();
    if (i > n) {
        FunctionContext context(context_);
        context.setclass("TimePeriod");
        if (tracing)
            context.setmessage(
                text_of("tried to access a time period outside of the timebase in routine 'setfromtimebase' (", i, ", ",
                        n, ")"));
        throw outofrange(context);
    }
    from_ = timebase.get(i);
    if (i < n)
        to_ = timebase.get(i + 1);
    else
        to_ = from_.plusyears(n > 1 ? from_.year() - timebase.get(n - 1).decimal_year() : 1.0, false);
}

void timeperiod::intersect(const date& a, const date& b) {
    if (from_ < a) from_ = a;
    if (to_ > b) to_ = b;
    if (to_ < from_) to_ = from_;
}

// --- Lengths --------------------------------------------------------------------------------------------------

void timeperiod::note_no_overlap(const date& Start, const date& Finish) const {
    if (Start >= Finish)
        trace().info(
            text_of("The Start Date (", Start, ") is less than the Finish Date (", Finish, ", returning zero."));
    else if (Finish <= from_)
        trace().info(text_of("The Finish Date (", Finish, ") is less than the start of the timeperiod (", from_,
                             ", returning zero."));
    else
        trace().info(text_of("The Start Date (", Start, ") is greater than the end of the timeperiod (", to_,
                             ", returning zero."));
}

bool timeperiod::overlaps(const date& Start, const date& Finish) const {
    if (Start < Finish && Finish > from_ && Start < to_) return true;
    if (traced()) note_no_overlap(Start, Finish);
    return false;
}

double timeperiod::lenmonthsbasic(const date& Start, const date& Finish, int code) const {
    if (!overlaps(Start, Finish)) return 0.0;
    const date &from = std::max(Start, from_), &to = std::min(Finish, to_);
    return from < to ? daycountmonths(from, to, code) : 0.0;
}

double timeperiod::lenmonthsap(const date& Start, const date& Finish, const AnnualSequence& Periods) const {
    if (Start >= Finish) return 0.0;
    return Periods.monthsbetween(std::max(Start, from_), std::min(Finish, to_));
}

double timeperiod::lenmonthssequence(const date& Start, const date& Finish, const DayCountCodes& codes,
                                     const AnnualSequence& Periods, bool ComponentPart) const {
    Routine here{"lenmonthssequence", Routine::internal};
    if (!overlaps(Start, Finish)) return here.returning(0.0);
    const auto length = [&](const date& from, const date& to, int code) {
        return code == 6 ? lenmonthsap(from, to, Periods) : lenmonthsbasic(from, to, code);
    };
    const date startcore = std::min(Periods.nextdate(Start, true), Finish);
    const date endcore = std::max(Periods.prevdate(Finish, false), startcore);
    const double start_stub = length(Start, startcore, codes.start_stub);
    double end_stub = 0.0;
    if (codes.end_stub == 6 || !ComponentPart) {
        end_stub = length(endcore, Finish, codes.end_stub);
    } else {
        const date postcore = std::max(Periods.nextdate(Finish, false), startcore);
        end_stub = length(endcore, postcore, codes.core) - length(Finish, postcore, codes.start_stub);
        if (end_stub < 0.0) {
            here.info("Negative timeperiod length, setting to zero");
            end_stub = 0.0;
        }
    }
    const double core = length(startcore, endcore, codes.core);
    here.info(start_stub, "+", core, "+", end_stub, " (stub-core-stub)");
    return here.returning(start_stub + core + end_stub);
}

double timeperiod::lenmonthsbycodes(const date& Start, const date& Finish, double DayCount,
                                    const AnnualSequence& Periods, bool ComponentPart) const {
    const DayCountCodes codes = DayCountCodes::of(DayCount);
    const double months = codes.composite(DayCount) ? lenmonthssequence(Start, Finish, codes, Periods, ComponentPart)
                                                    : lenmonthsbasic(Start, Finish, codes.core);
    if (months > suspicious_months && traced())
        trace().warning(text_of("Warning: suspiciously large LengthMonths=", months, " start=", Start,
                                " finish=", Finish, " fromdate=", from_, " todate=", to_));
    return months;
}

double timeperiod::lenmonths(const date& from, const date& to, const date& Start, const date& Finish, double DayCount,
                             const AnnualSequence& Periods, bool ComponentPart) {
    if (Start >= Finish || from > to) return 0.0;
    if (DayCountCodes::single(DayCount) && !traced()) {
        const date &first = std::max(Start, from), &last = std::min(Finish, to);
        return first < last ? daycountmonths(first, last, whole(DayCount)) : 0.0;
    }
    return timeperiod(from, to).lenmonthsbycodes(Start, Finish, DayCount, Periods, ComponentPart);
}

double timeperiod::lenmonths(const date& Start, const date& Finish, double DayCount, const AnnualSequence& Periods,
                             bool AllowNeg, bool ComponentPart) const {
    if (from_ <= to_) return lenmonths(from_, to_, Start, Finish, DayCount, Periods, ComponentPart);
    return AllowNeg ? -lenmonths(to_, from_, Start, Finish, DayCount, Periods, ComponentPart) : 0.0;
}

double timeperiod::lenyrs(const date& Start, const date& Finish, double DayCount, const AnnualSequence& Periods,
                          bool AllowNeg, bool ComponentPart) const {
    return lenmonths(Start, Finish, DayCount, Periods, AllowNeg, ComponentPart) / 12.0;
}

// --- Cash -----------------------------------------------------------------------------------------------------

std::string projmode_text(double ProjMode) {
    return SwitchTable(projection_mode_values).words(whole(ProjMode), "Warning: Unknown ProjMode, type ");
}

namespace {

/// The span of accrual that is paid for in a period. `from` and `to` are the period's own dates, less the delay of
/// payments. `end` is the finish of the stream in arrears and its start in advance, plus the delay: the span of the
/// period in which it lies is stretched to take in the whole stream there.
template <class Sequence>
timeperiod paid_span(const Routine& here, const timeperiod& period, const date& from, const date& to, const date& end,
                     Sequence& sequence, bool checklast) {
    const bool stretched = period.contains(end);
    if (sequence.arrears()) {
        if (checklast && period.from() > end) {
            here.info("CashTime: Timeperiod beyond Finish date");
            return {};
        }
        if (checklast && stretched) {
            here.info("CashTime (last period): Input TimePeriod=", period);
            return timeperiod(sequence.prevdate(from, true), sequence.nextdate(end, true));
        }
        here.info("CashTime (normal period): Input TimePeriod=", period);
        return timeperiod(sequence.prevdate(from, true), sequence.prevdate(to, true));
    }
    if (period.to() <= end) {
        here.info("CashTime: Timeperiod before Start date");
        return {};
    }
    if (stretched) {
        here.info("CashTime (first period): Input TimePeriod=", period);
        return timeperiod(sequence.prevdate(end, false), sequence.nextdate(to, true));
    }
    here.info("CashTime (normal period): Input TimePeriod=", period);
    return timeperiod(sequence.nextdate(from, true), sequence.nextdate(to, true));
}

template <class Sequence>
timeperiod cash_time(const timeperiod& ThisTimePeriod, const AnnualSequence& AnnSeq, Sequence& sequence,
                     const date& Start, const date& Finish, bool checklast, double ProjMode) {
    Routine here{"CashTime", Routine::internal};
    here.arguments(QX_NAMED(ThisTimePeriod, AnnSeq, Start, Finish, checklast, ProjMode));
    const int delay = payment_delay(ProjMode);
    const date &from = ThisTimePeriod.from(), &to = ThisTimePeriod.to(), &end = AnnSeq.arrears() ? Finish : Start;
    timeperiod span = delay == 0 ? paid_span(here, ThisTimePeriod, from, to, end, sequence, checklast)
                                 : paid_span(here, ThisTimePeriod, from.plusdays(-delay), to.plusdays(-delay),
                                             end.plusdays(delay), sequence, checklast);
    here.returning(span);
    return span;
}

} // namespace

timeperiod CashTime(const timeperiod& ThisTimePeriod, const AnnualSequence& AnnSeq, const date& Start,
                    const date& Finish, bool checklast, double ProjMode) {
    return cash_time(ThisTimePeriod, AnnSeq, AnnSeq, Start, Finish, checklast, ProjMode);
}
timeperiod CashTime(const timeperiod& ThisTimePeriod, SequenceCursor& AnnSeq, const date& Start, const date& Finish,
                    bool checklast, double ProjMode) {
    return cash_time(ThisTimePeriod, AnnSeq.sequence(), AnnSeq, Start, Finish, checklast, ProjMode);
}

std::string describe(const timeperiod& period) { return text_of(period.from(), " to ", period.to()); }

} // namespace qx
