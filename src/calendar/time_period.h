// timeperiod: a stretch of time from one date (counted) to another (not counted).
//
// Nearly every worksheet function asks how much of a stream falls into such a period. Its two arguments are Time, a
// date, and Base, a length or an end date. Lengths between two other dates are measured where they overlap the
// period; under a cash basis CashTime first replaces the period by the span that is paid for in it.
//
//     timeperiod year;
//     year.settime(2005.0, 12.0);                              // 1 January 2005, 12 months
//     year.lenmonths(Start, Finish, DayCount, Periods);        // months of Start to Finish in 2005
#pragma once

#include "calendar/annual_sequence.h"
#include "calendar/date.h"
#include "calendar/day_count.h"
#include "core/routine.h"
#include "core/switches.h"

#include <cmath>
#include <string>

namespace qx {

class timeperiod {
  public:
    /// An empty period: two zero dates.
    timeperiod() = default;
    explicit timeperiod(const FunctionContext& context) : context_(context) {}
    timeperiod(const date& from, const date& to) : from_(from), to_(to) {}

    /// The start by the rule of date's assignment, then the base. Throws as setbase and as that do.
    void settime(double Time, double Base);
    /// The same with a base in years below 1900, as the compatibility functions take it. Throws illegalvalue for a
    /// negative base.
    void settime_in_years(double Time, double BaseYrs);
    /// A start and a number of months, with which month ends stay month ends.
    void settime(const date& Time, int months);
    /// Below 1900 a whole number of months from the start; otherwise the end, as a year or date number. An end before
    /// the start gives an empty period. Throws errlibbadbase for a negative base and for parts of a month.
    void setbase(double Base);
    void setends(const date& from, const date& to) {
        from_ = from;
        to_ = to;
    }
    void setfrom(const date& from) { from_ = from; }
    void setto(const date& to) { to_ = to; }
    void clear() { setends(date(), date()); }
    /// Period i (from 1) of dates that lie end to end. The last one is as many years long as the year of its start is
    /// after the decimal year of the date before; a single one is a year long. Throws outofrange past the end.
    void setfromtimebase(View<date> timebase, int i);

    const date& from() const { return from_; }
    const date& to() const { return to_; }
    FunctionContext& context() { return context_; }
    bool contains(const date& day) const { return from_ <= day && to_ > day; }
    bool iszero() const { return from_.iszero() && to_.iszero(); }

    /// Cuts the period to the stretch from a to b; nothing is left if they do not overlap.
    void intersect(const date& a, const date& b);
    void intersect(const timeperiod& other) { intersect(other.from_, other.to_); }

    // Plain lengths of the whole period.
    double lenyears() const { return lenmonthsdecimal() / 12.0; }
    int lendays() const { return days_between(from_, to_); }
    double lenmonthsdecimal() const { return to_.months() - from_.months(); }

    /// Months of Start to Finish in this period, under any DayCount; 0 if there are none. A period that runs backward
    /// counts negative if AllowNeg, otherwise 0. With ComponentPart an end stub is measured from the next date of the
    /// sequence back, so that a stretch cut into parts sums to the whole.
    double lenmonths(const date& Start, const date& Finish, double DayCount, const AnnualSequence& Periods,
                     bool AllowNeg = false, bool ComponentPart = false) const;
    /// The same of the period from one date to another; 0 if that runs backward.
    static double lenmonths(const date& from, const date& to, const date& Start, const date& Finish, double DayCount,
                            const AnnualSequence& Periods, bool ComponentPart);
    /// The same in years.
    double lenyrs(const date& Start, const date& Finish, double DayCount, const AnnualSequence& Periods,
                  bool AllowNeg = false, bool ComponentPart = false) const;
    /// By a single code, for a period that does not run backward.
    double lenmonthsbasic(const date& Start, const date& Finish, int code) const;
    /// By the periods of a sequence, each of which has equal weight (code 6).
    double lenmonthsap(const date& Start, const date& Finish, const AnnualSequence& Periods) const;
    /// By the codes of a composite, with the dates of the sequence between core and stubs.
    double lenmonthssequence(const date& Start, const date& Finish, const DayCountCodes& codes,
                             const AnnualSequence& Periods, bool ComponentPart) const;

    // A period compares with another if both its ends do.
    friend bool operator==(const timeperiod& a, const timeperiod& b) { return a.from_ == b.from_ && a.to_ == b.to_; }
    friend bool operator<(const timeperiod& a, const timeperiod& b) { return a.from_ < b.from_ && a.to_ < b.to_; }
    friend bool operator<=(const timeperiod& a, const timeperiod& b) { return a.from_ <= b.from_ && a.to_ <= b.to_; }
    friend bool operator>(const timeperiod& a, const timeperiod& b) { return b < a; }
    friend bool operator>=(const timeperiod& a, const timeperiod& b) { return b <= a; }

  private:
    /// lenmonths by any DayCount, with its notes in the trace; for a period that does not run backward.
    double lenmonthsbycodes(const date& Start, const date& Finish, double DayCount, const AnnualSequence& Periods,
                            bool ComponentPart) const;
    bool overlaps(const date& Start, const date& Finish) const;
    void note_no_overlap(const date& Start, const date& Finish) const;

    date from_;
    date to_;
    FunctionContext context_;
};

/// The whole parts of a ProjMode.
inline constexpr SwitchValue projection_mode_values[] = {
    {0, "Accruals", "Accruals basis (ProjMode type "},
    {1, "Cash", "Cash basis (ProjMode type "},
    {2, "Accruals(inc last day)", "Accruals basis (including last day) (ProjMode type "},
    {3, "Cash(inc last day)", "Cash basis (including last day) (ProjMode type "},
};

/// True if a ProjMode is one of cash: its whole part is 1 or 3, with either sign.
inline bool iscash(double ProjMode) {
    const double mode = std::fabs(std::trunc(ProjMode));
    return mode == 1.0 || mode == 3.0;
}
/// The delay of payments in days: the first two decimals of a ProjMode, as its bits give them.
inline int payment_delay(double ProjMode) { return whole(ProjMode * 100.0) % 100; }
/// A ProjMode in words, with the opening "Cash basis (ProjMode type " and the like.
std::string projmode_text(double ProjMode);

/// The span of accrual that is paid for in a period, for a stream from Start to Finish paid on the dates of a
/// sequence: the last period (in arrears) or the first (in advance) stretches, so that the whole stream is paid for
/// once. Empty after the stream's end, or before its start.
timeperiod CashTime(const timeperiod& ThisTimePeriod, const AnnualSequence& AnnSeq, const date& Start,
                    const date& Finish, bool checklast, double ProjMode);
/// The same for one of several periods near each other.
timeperiod CashTime(const timeperiod& ThisTimePeriod, SequenceCursor& AnnSeq, const date& Start, const date& Finish,
                    bool checklast, double ProjMode);

/// A period as text: "1Jan2005 to 1Apr2005".
std::string describe(const timeperiod& period);
/// Time and Base.
template <>
inline constexpr int cells_shown_as_one<timeperiod> = 2;

} // namespace qx
