#include "calendar/date.h"

#include "core/trace.h"

#include <algorithm>
#include <bit>
#include <cmath>
#include <cstdint>
#include <cstdlib>

namespace qx {

namespace {

constexpr const char* month_names[] = {"",    "Jan", "Feb", "Mar", "Apr", "May", "Jun",
                                       "Jul", "Aug", "Sep", "Oct", "Nov", "Dec"};
constexpr const char* day_names[] = {"", "Sunday", "Monday", "Tuesday", "Wednesday", "Thursday", "Friday", "Saturday"};

// Days before each year of a block of four, for a block without and with a leap year.
constexpr int days_before_year[2][5] = {{0, 365, 730, 1095, 1460}, {0, 366, 731, 1096, 1461}};
constexpr int days_before_century[] = {0, 36525, 73049, 109573, 146097};
constexpr std::uint32_t days_in_400_years = 146097;

/// The date number of the first day of a block of four years; block 0 begins in 1900.
constexpr std::int64_t block_start(std::int64_t block) {
    if (block == 0) return 1;
    const std::int64_t ordinary = (block - 26) / 25 - (block - 26) / 100; // blocks passed that have no leap year
    return (block - ordinary) * 1461 + ordinary * 1460 + 1;
}

constexpr std::int64_t largest_dtn = 2'000'000'000; // keeps all of the arithmetic in range

/// A CalendarDay in which parts may be 0: that of a year and that of a day in it together make a whole one.
constexpr std::uint64_t part_of_day(const CalendarDay& day) { return std::bit_cast<std::uint64_t>(day); }

/// The days of an ordinary year and of a leap year, each with the months of its year that have passed before it, and of
/// each month the days before it and its length.
struct YearDays {
    struct Day {
        double months;
        std::uint64_t calendar; ///< month and day
    };
    struct Month {
        std::int16_t before, length;
    };
    Day days[2][366];
    Month months[2][16];

    constexpr YearDays() : days{}, months{} {
        for (int leap = 0; leap <= 1; ++leap) {
            Day* next = days[leap];
            for (int month = 1; month <= 12; ++month) {
                const int length = date::days_in_month(month, leap == 1);
                for (int day = 1; day <= length; ++day)
                    *next++ = {(month - 1) + static_cast<double>(day - 1) / length,
                               part_of_day({0, static_cast<std::int8_t>(month), static_cast<std::int8_t>(day), 0, 0})};
                months[leap][month] = {static_cast<std::int16_t>(date::days_before_month(month, leap == 1)),
                                       static_cast<std::int16_t>(length)};
            }
        }
    }
};
constexpr YearDays year_days;

constexpr int first_calendar_year = 1908; ///< from which date numbers are those of the calendar

/// The years of the calendar by number, and the one that begins after the last day.
class CalendarYears {
  public:
    struct Year {
        int start = 0; ///< the date number of 1 January
        bool leap = false;
        std::uint64_t calendar = 0; ///< year and leap years
    };

    constexpr CalendarYears() {
        int start = 2923;
        for (int year = first_calendar_year; year <= date::maxyear + 1; ++year) {
            const int block = year / 4;
            const bool block_leap = block % 25 != 0 || block % 4 == 0, leap = year % 4 == 0 && block_leap;
            years_[year - first_calendar_year] = {start, leap, part_of_day({year, 0, 0, leap, block_leap})};
            start += leap ? 366 : 365;
        }
    }
    constexpr const Year& operator()(int year) const { return years_[year - first_calendar_year]; }
    /// The year of a date number from 1910 on: the days over the mean length of a year, shifted by just so much (1.17
    /// days) that the quotient is never ahead of the calendar. On the first day or two of many years it lags.
    constexpr int of(int dtn) const {
        constexpr std::int64_t years_per_day = (400LL << 32) / days_in_400_years, shift = years_per_day * 117 / 100;
        const int year =
            first_calendar_year + static_cast<int>((years_per_day * (dtn - years_[0].start) - shift) >> 32);
        if (dtn >= operator()(year + 1).start) [[unlikely]]
            return year + 1;
        return year;
    }

  private:
    Year years_[date::maxyear + 2 - first_calendar_year];
};
constinit const CalendarYears calendar_years;

/// True if the calendar has such a month; the day may pass its end.
bool in_calendar(int year, int month, int day) {
    const auto within = [](int number, int first, int last) {
        return static_cast<unsigned>(number) - static_cast<unsigned>(first) <= static_cast<unsigned>(last - first);
    };
    return within(year, first_calendar_year, date::maxyear) && within(month, 1, 12) && within(day, 1, 31);
}

/// True if the steps of set_irregular_dtn agree with the calendar: within the numbers that a user can name, but for the
/// last days of four centuries.
bool in_calendar(int dtn) {
    constexpr std::uint32_t first = 3654, last = 640637;
    const auto number = static_cast<std::uint32_t>(dtn);
    return number - first <= last - first && number % days_in_400_years != 36525;
}

/// The place of a day in the calendar: its year, none if there is no such day, and the days of that year before it.
struct PlaceInCalendar {
    const CalendarYears::Year* year = nullptr;
    int days = 0;

    PlaceInCalendar(int y, int month, int day) {
        if (!in_calendar(y, month, day)) return;
        const CalendarYears::Year& in = calendar_years(y);
        const auto [before, length] = year_days.months[in.leap][month];
        if (day > length) return;
        year = &in;
        days = before + day - 1;
    }
};

/// The date number of a day from 1908 on; one past its month's end runs into the next month.
int calendar_number(int year, int month, int day) {
    const CalendarYears::Year& in = calendar_years(year);
    return in.start + year_days.months[in.leap][month].before + day - 1;
}

} // namespace

template <class E, class... Pieces>
void date::fail(const Pieces&... pieces) const {
    FunctionContext context(context_);
    context.setclass("Date");
    if (sizeof...(pieces) > 0 && tracing) context.setmessage(text_of(pieces...));
    throw E(context);
}

void date::check_months() const {
    if (months_ < 0.0) fail<errlibdateoutofrange>("routine 'assert' reported a year of ", year());
}

date::date(int year, int month, int day, const FunctionContext& context) : context_(context) {
    try {
        set_ymd(year, month, day);
    } catch (const cls_exception& error) {
        throw errlibconstructorerror(error.context);
    }
}

date::date(double number, const FunctionContext& context) : context_(context) {
    try {
        set_number(number);
    } catch (const cls_exception& error) {
        throw errlibconstructorerror(error.context);
    }
}

date& date::operator=(double number) {
    set_number(number);
    return *this;
}

void date::set_number(double number) {
    if (isequal(number, dtn_)) return;
    if (number < 0.0) fail<errlibmindate>();
    if (!(number <= maxnumber)) fail<outofrange>();
    if (number >= maxyear + 1) {
        set_dtn(static_cast<int>(number));
    } else if (qx::iszero(number)) {
        *this = date(context_);
    } else if (number < 1910.0) {
        fail<errlibmindate>(" (Value was ", number, ")");
    } else {
        set_months(number * 12.0, rounding_seconds);
    }
}

date date::from_months(double months, int seconds) {
    date value;
    value.set_months(months, seconds);
    return value;
}

void date::set_calendar(int year, int month, int day) {
    if (month < 1 || month > 12 || day < 1 || day > 31) fail<errlibnonsensicaldate>("From the dateutils dtn routine");
    const int limited = std::min(year, maxyear);
    calendar_ = {limited, static_cast<std::int8_t>(month), static_cast<std::int8_t>(day), is_leap(limited),
                 is_block_leap(limited)};
}

void date::derive_dtn() {
    if (year() >= first_calendar_year) {
        dtn_ = calendar_number(year(), month(), day());
        return;
    }
    const int block = (year() - 1900) / 4;
    const int y = (year() - 1900) % 4;
    std::int64_t number = block_start(block) + daysbeforemonth() + day() - 1;
    if (!leap()) number += (y - 1) * 365 + (blockleap() ? 366 : 365);
    if (number < -largest_dtn || number > largest_dtn) fail<errlibdateoutofrange>();
    dtn_ = static_cast<int>(number);
}

template <class Year>
inline void date::set_day(int year, const Year& in, int days) {
    const YearDays::Day& day = year_days.days[in.leap][days];
    calendar_ = std::bit_cast<CalendarDay>(in.calendar | day.calendar);
    months_ = year * 12 + day.months;
    dtn_ = in.start + days;
}

inline void date::set_ymd(int year, int month, int day) {
    const int limited = std::min(year, maxyear);
    const PlaceInCalendar place(limited, month, day);
    if (place.year != nullptr)
        set_day(limited, *place.year, place.days);
    else
        set_irregular_ymd(year, month, day);
}

/// A day before the calendar's first, or past its month's end.
void date::set_irregular_ymd(int year, int month, int day) {
    set_calendar(year, month, day);
    derive_dtn();
    derive_months();
    check_months();
}

date date::from_ymd(int year, int month, int day) {
    const auto otherwise = [](int year, int month, int day) __attribute__((noinline)) {
        date value;
        value.set_ymd(year, month, day);
        return value;
    };
    const PlaceInCalendar place(year, month, day);
    if (place.year == nullptr) [[unlikely]]
        return otherwise(year, month, day);
    date value; // whose own first values are never written
    value.set_day(year, *place.year, place.days);
    return value;
}

date date::in_month(int year, int month, int day) {
    const auto otherwise = [](int year, int month, int day) __attribute__((noinline)) {
        const bool known = month >= 1 && month <= 12;
        return from_ymd(year, month, known ? std::min(day, days_in_month(month, is_leap(year))) : day);
    };
    if (!in_calendar(year, month, day)) [[unlikely]]
        return otherwise(year, month, day);
    const CalendarYears::Year& in = calendar_years(year);
    const auto [before, length] = year_days.months[in.leap][month];
    date value; // whose own first values are never written
    value.set_day(year, in, before + std::min<int>(day, length) - 1);
    return value;
}

inline void date::set_dtn(int dtn) {
    if (!in_calendar(dtn)) return set_irregular_dtn(dtn);
    const int year = calendar_years.of(dtn);
    const CalendarYears::Year& in = calendar_years(year);
    set_day(year, in, dtn - in.start);
}

date date::from_dtn(int dtn) {
    const auto otherwise = [](int dtn) __attribute__((noinline)) {
        date value;
        value.set_irregular_dtn(dtn);
        return value;
    };
    if (!in_calendar(dtn)) [[unlikely]]
        return otherwise(dtn);
    date value; // whose own first values are never written
    value.set_dtn(dtn);
    return value;
}

/// The date number's day by steps of four years, outside the calendar of set_dtn.
void date::set_irregular_dtn(int dtn) {
    int block, y;
    const int beyond1999 = dtn - 36525;
    if (beyond1999 <= 36525) {
        block = (dtn - 1) / 1461;
        y = ((dtn - block * 1461) * 4 - 4) / 1461;
    } else {
        const int quad = beyond1999 / days_before_century[4];
        const int r = beyond1999 - quad * days_before_century[4] - 1;
        const int century =
            (r >= days_before_century[1]) + (r >= days_before_century[2]) + (r >= days_before_century[3]);
        const int r2 = r - days_before_century[century];
        block = 25 + quad * 100 + century * 25;
        if (century == 0) {
            block += r2 / 1461;
            const int passed = block - quad * 100 - 25;
            y = (r - passed * 1461) * 4 / 1461;
        } else if (r2 >= 365) {
            if (r2 >= 1460) block += (r2 - 1460) / 1461 + 1;
            const int passed = block - quad * 100 - 25;
            y = (r + century - passed * 1461) * 4 / 1461;
        } else {
            y = 0;
        }
    }
    const int year = y + block * 4 + 1900;
    const bool blockleap = is_block_leap(year);
    const bool leap = year % 4 == 0 && blockleap;
    int dayofyear = -1;
    if (y >= 0 && y <= 4)
        dayofyear = dtn - static_cast<int>(block_start(block)) - days_before_year[blockleap ? 1 : 0][y];

    if (dayofyear < 0 || dayofyear >= 396)
        fail<errlibnonsensicaldate>("routine 'assert' reported a date of ", year, "/1/", dayofyear < 0 ? 0 : 32);
    int month = (dayofyear >> 5) + 1; // at most one too low
    if (month < 13 && dayofyear >= days_before_month(month + 1, leap)) ++month;
    const int day = dayofyear - days_before_month(month, leap) + 1;
    calendar_ = {std::min(year, maxyear), static_cast<std::int8_t>(month == 13 ? 1 : month),
                 static_cast<std::int8_t>(day), leap, blockleap};
    dtn_ = dtn;
    derive_months();
    check_months();
}

void date::set_months(double months, int seconds) {
    if (!(months >= 0.0)) {
        months_ = months;
        fail<errlibdateoutofrange>("The count of months is ", months);
    }
    months_ = months > DateCrit.months_ ? DateCrit.months_ : months;

    constexpr std::int64_t unit = 1'000'000'000'000; // one month
    int year = static_cast<int>((months_ * 1e12 + 190258.0) / 12e12);
    const bool leap = is_leap(year);
    const std::int64_t x = static_cast<std::int64_t>(months_ * 1e12) - year * 12 * unit + (leap ? 1317 : 1321);
    int month = static_cast<int>(x / unit) + 1;
    const int length = days_in_month(month, leap);
    const std::int64_t elapsed = (x - (month - 1) * unit) * 24 * 60 * 60 * length / unit;
    int day = static_cast<int>((elapsed + seconds) / 86400) + 1;
    if (day > length) {
        if (day > length + 1) fail<errlibnonsensicaldate>();
        day = 1;
        if (++month > 12) {
            month = 1;
            ++year;
        }
    }
    set_calendar(year, month, day);
    derive_dtn();
}

bool date::stays() {
    if (dtn_ > 1) return false;
    if (dtn_ < 1) *this = date(context_);
    return true;
}

date& date::adddays(int n) {
    if (stays()) return *this;
    const std::int64_t number = static_cast<std::int64_t>(dtn_) + n;
    if (number < -largest_dtn || number > largest_dtn) fail<errlibdateoutofrange>();
    set_dtn(static_cast<int>(number));
    return *this;
}

/// In another month, on the same day, its last one if the month is shorter.
void date::arrive(int year, int month, bool keepmonthend) {
    const int length = days_in_month(month, is_leap(std::min(year, maxyear)));
    const bool to_end = day() != 1 && ((keepmonthend && ismonthend()) || day() > length);
    set_ymd(year, month, to_end ? length : day());
}

date& date::addmonths(int n, bool keepmonthend) {
    if (stays()) return *this;
    std::int64_t month = static_cast<std::int64_t>(this->month()) + n;
    std::int64_t carry = 0;
    if (month >= 13)
        carry = (month - 1) / 12;
    else if (month < 1)
        carry = month / 12 - 1;
    arrive(static_cast<int>(year() + carry), static_cast<int>(month - 12 * carry), keepmonthend);
    return *this;
}

date& date::addmonths(double x) {
    if (stays()) return *this;
    const double part = fraction(x);
    if (qx::iszero(part)) return addmonths(whole(x), true);
    const bool round = isequal(part, 0.25) || isequal(part, 0.5) || isequal(part, 0.75);
    set_months(months_ + x, round ? rounding_seconds : 0);
    return *this;
}

date& date::addyears(double y, bool keepmonthend) {
    if (qx::iszero(y) || stays()) return *this;
    if (!qx::iszero(fraction(y))) return addmonths(y * 12.0);
    const double year = this->year() + std::trunc(y);
    if (year < 0.0) fail<errlibdateoutofrange>("Year ", year);
    arrive(year > maxyear ? maxyear : static_cast<int>(year), month(), keepmonthend);
    return *this;
}

date date::plusdays(int n) const {
    if (n == -1 && traced()) trace().info(text_of("deducting one day from ", *this));
    date moved(*this);
    moved.adddays(n);
    return moved;
}

date date::yearstart() const { return date(year(), 1, 1, context_); }
date date::monthstart() const { return date(year(), month(), 1, context_); }
date date::monthend() const { return date(year(), month(), daysinmonth(), context_); }

date date::with_day(int year, int month, int day) const {
    if (month < 1 || month > 12 || day < 1)
        fail<errlibnonsensicaldate>("There is no month ", month, " with a day ", day);
    const int length = days_in_month(month, is_leap(year));
    return date(year, month, day > length ? length : day, context_);
}

date date::prevanniversary(int month, int day, bool strict) const {
    const date thisyear = with_day(year(), month, day);
    const bool toolate = strict ? thisyear >= *this : thisyear > *this;
    return toolate ? with_day(year() - 1, month, day) : thisyear;
}

date date::nextanniversary(int month, int day, bool inclusive) const {
    const date thisyear = with_day(year(), month, day);
    const bool tooearly = inclusive ? thisyear < *this : thisyear <= *this;
    return tooearly ? with_day(year() + 1, month, day) : thisyear;
}

date date::nearestanniversary(int month, int day, int mode) const {
    if (mode == 1) return prevanniversary(month, day, false);
    if (mode == 2) return nextanniversary(month, day, false);
    if (mode != 0) fail<errlibbadnum>("The mode of the nearest anniversary is ", mode, ", not 0, 1 or 2");
    const date previous = prevanniversary(month, day, false);
    const date next = nextanniversary(month, day, false);
    return days_between(previous, *this) <= days_between(*this, next) ? previous : next;
}

date& date::movetoweekday(int weekday, int mode) {
    if (weekday < 1 || weekday > 7) return *this;
    const int forward = (weekday - dayofweek() + 7) % 7;
    if (forward == 0) return *this;
    switch (mode) {
    case 0:
        return adddays(forward <= 4 ? forward : forward - 7);
    case 1:
        return adddays(forward - 7);
    case 2:
        return adddays(forward);
    default:
        return *this;
    }
}

date& date::movetomonthday(int dayofmonth, int mode) {
    if (day() == dayofmonth || mode < 0 || mode > 2) return *this;
    const auto candidate = [&](int months) {
        const int in = month() + months;
        return in < 1    ? with_day(year() - 1, 12, dayofmonth)
               : in > 12 ? with_day(year() + 1, 1, dayofmonth)
                         : with_day(year(), in, dayofmonth);
    };
    const date candidates[] = {candidate(-1), candidate(0), candidate(1)};
    const date* chosen = nullptr;
    if (mode == 0) {
        for (const date& each : candidates)
            if (chosen == nullptr || std::abs(days_between(*this, each)) <= std::abs(days_between(*this, *chosen)))
                chosen = &each;
    } else if (mode == 1) {
        for (int i = 2; i >= 0 && chosen == nullptr; --i)
            if (candidates[i] <= *this) chosen = &candidates[i];
    } else {
        for (int i = 0; i <= 2 && chosen == nullptr; ++i)
            if (candidates[i] >= *this) chosen = &candidates[i];
    }
    if (chosen != nullptr) *this = *chosen;
    return *this;
}

const char* date::monthname() const { return month_name(month()); }
const char* date::dayname() const { return weekday_name(dayofweek()); }

const char* month_name(int month) { return month < 1 || month > 12 ? "" : month_names[month]; }
const char* weekday_name(int weekday) { return weekday < 1 || weekday > 7 ? "Unknown day" : day_names[weekday]; }

std::string describe(const date& value) {
    return std::to_string(value.day()) + value.monthname() + std::to_string(value.year());
}

std::string ordinal(int n) {
    const int last = std::abs(n % 10);
    return std::to_string(n) + (last == 1 ? "st" : last == 2 ? "nd" : last == 3 ? "rd" : "th");
}

} // namespace qx
