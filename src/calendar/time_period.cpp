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

bool timeperiod::overlaps(const date& Start, const date& Finish) const {
    if (Start >= Finish) {
        if (traced())
            trace().info(
                text_of("The Start Date (", Start, ") is less than the Finish Date (", Finish, ", returning zero."));
        return false;
    }
    if (Finish <= from_) {
        if (traced())
            trace().info(text_of("The Finish Date (", Finish, ") is less than the start of the timeperiod (", from_,
                                 ", returning zero."));
        return false;
    }
    if (Start >= to_) {
        if (traced())
            trace().info(text_of("The Start Date (", Start, ") is greater than the end of the timeperiod (", to_,
                                 ", returning zero."));
        return false;
    }
    return true;
}

double timeperiod::lenmonthsbasic(const date& Start, const date& Finish, int code, bool AllowNeg) const {
    if (!overlaps(Start, Finish)) return 0.0;
    const bool backward = from_ > to_;
    if (backward && !AllowNeg) return 0.0;
    const date& from = std::max(Start, backward ? to_ : from_);
    const date& to = std::min(Finish, backward ? from_ : to_);
    if (from >= to) return 0.0;
    const double months = daycountmonths(from, to, code);
    return backward ? -months : months;
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

double timeperiod::lenmonths(const date& Start, const date& Finish, double DayCount, const AnnualSequence& Periods,
                             bool AllowNeg, bool ComponentPart) const {
    if (Start >= Finish) return 0.0;
    if (from_ > to_) {
        if (!AllowNeg) return 0.0;
        return -timeperiod(to_, from_).lenmonths(Start, Finish, DayCount, Periods, false, ComponentPart);
    }
    const DayCountCodes codes = DayCountCodes::of(DayCount);
    const double months = !DayCountCodes::single(DayCount) && codes.composite(DayCount)
                              ? lenmonthssequence(Start, Finish, codes, Periods, ComponentPart)
                              : lenmonthsbasic(Start, Finish, codes.core, AllowNeg);
    if (months > suspicious_months && traced())
        trace().warning(text_of("Warning: suspiciously large LengthMonths=", months, " start=", Start,
                                " finish=", Finish, " fromdate=", from_, " todate=", to_));
    return months;
}

double timeperiod::lenyrs(const date& Start, const date& Finish, double DayCount, const AnnualSequence& Periods,
                          bool AllowNeg, bool ComponentPart) const {
    return lenmonths(Start, Finish, DayCount, Periods, AllowNeg, ComponentPart) / 12.0;
}

// --- Cash -----------------------------------------------------------------------------------------------------

std::string projmode_text(double ProjMode) {
    return SwitchTable(projection_mode_values).words(whole(ProjMode), "Warning: Unknown ProjMode, type ");
}

timeperiod CashTime(const timeperiod& ThisTimePeriod, const AnnualSequence& AnnSeq, const date& Start,
                    const date& Finish, bool checklast, double ProjMode) {
    Routine here{"CashTime", Routine::internal};
    here.arguments(QX_NAMED(ThisTimePeriod, AnnSeq, Start, Finish, checklast, ProjMode));
    const int delay = payment_delay(ProjMode);
    const auto moved = [](const date& day, int days) { return days == 0 ? day : day.plusdays(days); };
    const auto prev = [&](const date& day) { return AnnSeq.prevdate(day, true); };
    const auto prevon = [&](const date& day) { return AnnSeq.prevdate(day, false); };
    const auto next = [&](const date& day) { return AnnSeq.nextdate(day, true); };
    const date tpfrom = moved(ThisTimePeriod.from(), -delay);
    const date tpto = moved(ThisTimePeriod.to(), -delay);

    timeperiod span;
    if (AnnSeq.arrears()) {
        const date myfinish = moved(Finish, delay);
        if (checklast && ThisTimePeriod.from() > myfinish) {
            here.info("CashTime: Timeperiod beyond Finish date");
        } else if (checklast && ThisTimePeriod.contains(myfinish)) {
            here.info("CashTime (last period): Input TimePeriod=", ThisTimePeriod);
            span.setends(prev(tpfrom), next(myfinish));
        } else {
            here.info("CashTime (normal period): Input TimePeriod=", ThisTimePeriod);
            span.setends(prev(tpfrom), prev(tpto));
        }
    } else {
        const date mystart = moved(Start, delay);
        if (ThisTimePeriod.to() <= mystart) {
            here.info("CashTime: Timeperiod before Start date");
        } else if (ThisTimePeriod.contains(mystart)) {
            here.info("CashTime (first period): Input TimePeriod=", ThisTimePeriod);
            span.setends(prevon(mystart), next(tpto));
        } else {
            here.info("CashTime (normal period): Input TimePeriod=", ThisTimePeriod);
            span.setends(next(tpfrom), next(tpto));
        }
    }
    return here.returning(span);
}

std::string describe(const timeperiod& period) { return text_of(period.from(), " to ", period.to()); }

} // namespace qx
