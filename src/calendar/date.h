// date: one calendar day, held as year, month and day, as a date number and as a decimal count of months.
//
// Date numbers are those of Excel's 1900 system: 1 January 1910 is 3654, 1 March 2100 is 73110, the last day
// is 31 December 3653 (640637). A number from 1910 to 3653 read as a date is a year, perhaps decimal: 2005.5
// is 1 July 2005. The zero date (1 January 1900) stands for no date at all.
//
//     date Start;            // the zero date
//     Start = 38000.0;       // 14 January 2004
//     Start.addmonths(1, true);
//
// 1900 counts as a leap year, as it does in the spreadsheets whose numbers these are.
#pragma once

#include "core/errors.h"
#include "core/pools.h"
#include "core/utilities.h"

#include <compare>
#include <cstdint>
#include <string>

namespace qx {

/// A day of the calendar, in a word that is written and copied at once.
struct alignas(8) CalendarDay {
    std::int32_t year;
    std::int8_t month, day;
    bool leap, blockleap;
};

class date {
  public:
    static constexpr int maxyear = 3653;
    static constexpr double maxnumber = 641003.0;  ///< highest number read as a date
    static constexpr int rounding_seconds = 43199; ///< half a day: a decimal count of months to its nearest day

    struct open_end {};

    /// The zero date.
    constexpr date() noexcept = default;
    /// 1 January 3653; see DateCrit.
    explicit constexpr date(open_end) noexcept
        : calendar_{maxyear, 1, 1, false, true}, months_(43836.0), dtn_(640273) {}
    /// The zero date in the name of a routine's variable.
    explicit date(const FunctionContext& context) : context_(context) {}
    /// A day of the calendar. The day may pass its month's end (the date number then runs into the next
    /// month). Throws errlibconstructorerror unless the month is 1 to 12 and the day 1 to 31.
    date(int year, int month, int day, const FunctionContext& context = {});
    /// A number read as a date, as by assignment. Throws errlibconstructorerror where assignment throws its
    /// own.
    explicit date(double number, const FunctionContext& context = {});

    // Member by member: a copy of all in wider pieces would wait for a date that has just been made.
    constexpr date(const date& source) noexcept
        : calendar_(source.calendar_), months_(source.months_), dtn_(source.dtn_), context_(source.context_) {}
    date(const date& source, const FunctionContext& context) : date(source) { context_ = context; }
    ~date() = default;

    date& operator=(const date& source) noexcept {
        calendar_ = source.calendar_;
        months_ = source.months_;
        dtn_ = source.dtn_;
        context_ = source.context_;
        return *this;
    }
    /// Reads a number as a date: 0 is the zero date, 1910 up to 3654 a decimal year, above that a date number
    /// whose fraction (the time of day) is dropped. Throws errlibmindate below 1910, outofrange above 641003
    /// and for NaN.
    date& operator=(double number);

    /// A day of the calendar, as the constructor, but throwing errlibnonsensicaldate itself.
    static date from_ymd(int year, int month, int day);
    /// A day of a month, or the month's last one if the month is shorter; throws as from_ymd.
    static date in_month(int year, int month, int day);
    /// The date of a date number, without the reading of a number as a year.
    static date from_dtn(int dtn);
    /// The date of a decimal count of months, with a rounding of 0 or 43199 seconds.
    static date from_months(double months, int seconds);

    int year() const { return calendar_.year; }
    int month() const { return calendar_.month; }
    int day() const { return calendar_.day; }
    int dtn() const { return dtn_; }
    bool leap() const { return calendar_.leap; } ///< the year has a 29 February
    /// The four years that hold this one begin with a leap year.
    bool blockleap() const { return calendar_.blockleap; }
    /// year * 12 + month - 1 + (day - 1) / days in the month: 22800.0 for 1 January 1900. A date read from a
    /// decimal year or moved by decimal months keeps the count that it was made from.
    double months() const { return months_; }
    double decimal_year() const { return months_ / 12.0; }
    int daysinmonth() const { return days_in_month(month(), leap()); }
    int daysinyear() const { return leap() ? 366 : 365; }
    /// A day from 1910 to the end of 3653: the days that numbers can name.
    bool isregular() const { return dtn_ >= 3654 && dtn_ <= 640637; }
    /// Days since the year's 1 January.
    int dayofyear() const { return isregular() ? daysbeforemonth() + day() - 1 : dtn_ - yearstart().dtn_; }
    int daysbeforemonth() const { return days_before_month(month(), leap()); }
    /// 1 for Sunday to 7 for Saturday.
    int dayofweek() const {
        const int weekday = dtn_ % 7;
        return weekday == 0 ? 7 : weekday;
    }
    const char* monthname() const; ///< "Jan" to "Dec"
    const char* dayname() const;   ///< "Sunday" to "Saturday"
    bool ismonthend() const { return day() >= daysinmonth(); }

    bool iszero() const { return dtn_ < 2; }
    FunctionContext& context() { return context_; }
    const FunctionContext& context() const { return context_; }

    // Moves of this date. The zero date stays. Each throws errlibnonsensicaldate or errlibdateoutofrange if
    // there is no such date; a date past 3653 stays in that year.

    date& adddays(int n);
    /// Whole months. The 1st stays the 1st; a month's end goes to the month's end if keepmonthend, and any
    /// other day falls back only as far as the month arrived at is short.
    date& addmonths(int n, bool keepmonthend);
    /// Decimal months: whole ones keep the month's end, quarters and halves round to the nearest day.
    date& addmonths(double x);
    /// Whole years as addmonths with the day, decimal years as decimal months.
    date& addyears(double y, bool keepmonthend);

    // Copies, moved.
    date plusdays(int n) const;
    date plusmonths(int n, bool keepmonthend) const { return date(*this).addmonths(n, keepmonthend); }
    date plusmonths(double x) const { return date(*this).addmonths(x); }
    date plusyears(double y, bool keepmonthend) const { return date(*this).addyears(y, keepmonthend); }

    date yearstart() const;
    date monthstart() const;
    date monthend() const;

    /// The last time that a month and day came round: up to this date, or strictly before it.
    date prevanniversary(int month, int day, bool strict) const;
    /// The next time: after this date, or from this date on if inclusive.
    date nextanniversary(int month, int day, bool inclusive) const;
    /// Mode 0 the nearer, the previous at a tie; 1 the previous; 2 the next. Throws errlibbadnum for other
    /// modes.
    date nearestanniversary(int month, int day, int mode) const;

    /// To a day of the week (1 Sunday to 7 Saturday): mode 0 up to 4 days forward, otherwise back; 1 back;
    /// 2 forward. Other modes leave the date.
    date& movetoweekday(int weekday, int mode);
    /// To a day of a month, limited to the month's length: mode 0 the nearest, the later at a tie; 1 back;
    /// 2 forward. Other modes leave the date.
    date& movetomonthday(int dayofmonth, int mode);

    friend bool operator==(const date& a, const date& b) { return a.dtn_ == b.dtn_; }
    friend std::strong_ordering operator<=>(const date& a, const date& b) { return a.dtn_ <=> b.dtn_; }

    static constexpr int days_in_month(int month, bool leap) {
        return month == 2 ? 28 + static_cast<int>(leap) : 30 + ((month + (month >> 3)) & 1);
    }
    static constexpr int days_before_month(int month, bool leap) {
        return days_before[month] + static_cast<int>(leap & (month > 2));
    }
    static constexpr bool is_block_leap(int year) { return is_leap_block(year / 4) || year == 1900; }
    static constexpr bool is_leap(int year) { return year % 4 == 0 && is_block_leap(year); }

  private:
    /// Four years, counted from year 0, of which the first is a leap year by the calendar.
    static constexpr bool is_leap_block(auto block) { return block % 25 != 0 || block % 4 == 0; }
    static constexpr short days_before[] = {0, 0, 31, 59, 90, 120, 151, 181, 212, 243, 273, 304, 334, 365};

    void set_number(double number);
    void set_dtn(int dtn); ///< all from the date number
    void set_irregular_dtn(int dtn);
    void set_months(double months, int seconds); ///< all from the count of months
    void set_ymd(int year, int month, int day);  ///< all from year, month and day
    void set_irregular_ymd(int year, int month, int day);
    template <class Year>
    void set_day(int year, const Year& in, int days); ///< all from the year and its days before this one
    void set_calendar(int year, int month, int day);
    void derive_dtn();
    void derive_months() { months_ = year() * 12 + (month() - 1) + static_cast<double>(day() - 1) / daysinmonth(); }
    void check_months() const;
    template <class E, class... Pieces>
    [[noreturn]] void fail(const Pieces&... pieces) const;
    bool stays(); ///< the zero date; a date number below it becomes it
    void arrive(int year, int month, bool keepmonthend);
    date with_day(int year, int month, int day) const;

    CalendarDay calendar_{1900, 1, 1, true, true};
    double months_ = 22800.0;
    int dtn_ = 1;
    FunctionContext context_;
};

/// 1 January 3653: stands for infinity wherever an open end is needed.
inline constinit const date DateCrit{date::open_end{}};

/// A date as text: day, month and year in a row, as 14Jan2004.
std::string describe(const date& value);
/// A number with its ordinal ending by the last digit alone: 1st, 2nd, 11st.
std::string ordinal(int n);
/// The name of a day of the week, or "Unknown day".
const char* weekday_name(int weekday);
/// The short name of a month 1 to 12.
const char* month_name(int month);

/// Days from one date to another.
inline int days_between(const date& from, const date& to) { return to.dtn() - from.dtn(); }
/// Whole months from one date to another by year and month alone.
inline int months_between(const date& from, const date& to) {
    return 12 * (to.year() - from.year()) + (to.month() - from.month());
}

QX_RANGE_POOL(date, 15);
QX_WORK_LISTS(date, 24);

} // namespace qx
