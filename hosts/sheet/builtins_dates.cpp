#include "hosts/sheet/builtin_tools.h"
#include "hosts/sheet/calendar.h"

#include <ctime>

namespace qx::sheet::builtin {

namespace {

Value serial_value(double serial) { return serial >= 0.0 && serial <= last_serial ? Value::date(serial) : num(); }

bool civil(double serial, CivilDate& date) {
    if (!(serial >= 0.0 && serial < last_serial + 1.0)) return false;
    date = civil_of(static_cast<int>(serial));
    return true;
}

Value date_part(const Arguments& a, int CivilDate::*part) {
    CivilDate date{};
    return civil(a.number(0), date) ? number(date.*part) : num();
}

Value date_of(const Arguments& a) {
    const double year = std::trunc(a.number(0)), month = std::trunc(a.number(1)), day = std::trunc(a.number(2));
    if (!(std::fabs(year) < 1e6 && std::fabs(month) < 1e6 && std::fabs(day) < 1e8)) return num();
    const auto full_year = static_cast<long long>(year) + (year >= 0.0 && year < 1900.0 ? 1900 : 0);
    return serial_value(serial_of(full_year, static_cast<long long>(month), static_cast<long long>(day)));
}

/// The date so many months later, on the same day or on the last of that month.
Value months_later(const Arguments& a, bool to_end) {
    CivilDate date{};
    const double months = std::trunc(a.number(1));
    if (!civil(a.number(0), date) || !(std::fabs(months) < 1e5)) return num();
    const int total = date.year * 12 + date.month - 1 + static_cast<int>(months);
    if (total < 1900 * 12 || total >= 10000 * 12) return num();
    const int last = days_in_month(total / 12, total % 12 + 1);
    return serial_value(serial_of(total / 12, total % 12 + 1, to_end ? last : std::min(date.day, last)));
}

Value weekday(const Arguments& a) {
    if (!(a.number(0) >= 0.0 && a.number(0) < last_serial + 1.0)) return num();
    const int from_sunday = weekday_of(static_cast<int>(a.number(0))); // 1 for Sunday
    const int from_monday = (from_sunday + 5) % 7;                     // 0 for Monday
    const double type = std::trunc(a.number(1, 1.0));
    if (type == 1.0) return number(from_sunday);
    if (type == 2.0) return number(from_monday + 1);
    if (type == 3.0) return number(from_monday);
    if (type >= 11.0 && type <= 17.0) return number((from_monday - static_cast<int>(type - 11.0) + 7) % 7 + 1);
    return num();
}

double now() {
    const std::time_t clock = std::time(nullptr);
    std::tm local{};
#if defined(_WIN32)
    localtime_s(&local, &clock);
#else
    localtime_r(&clock, &local);
#endif
    return serial_of(local.tm_year + 1900, local.tm_mon + 1, local.tm_mday) +
           (local.tm_hour * 3600 + local.tm_min * 60 + local.tm_sec) / 86400.0;
}

int seconds_of(double serial) {
    return static_cast<int>(std::floor((serial - std::floor(serial)) * 86400.0 + 0.5)) % 86400;
}
/// A part of the time of day: seconds divided by `unit`, in a cycle of so many; an error before the first day.
Value part_of_day(double serial, int unit, int cycle) {
    if (serial < 0.0) return num();
    const int part = seconds_of(serial) / unit % cycle;
    return number(part);
}

// --- Differences ----------------------------------------------------------------------------------------------------

bool is_leap(int year) { return days_in_month(year, 2) == 29; }
bool ends_february(const CivilDate& date) { return date.month == 2 && date.day == days_in_month(date.year, 2); }

/// Both dates of a pair of arguments, floored.
bool civil_pair(A a, CivilDate& start, CivilDate& end) {
    return civil(std::floor(a.number(0)), start) && civil(std::floor(a.number(1)), end);
}

/// Whole years, months or days between two dates: DATEDIF.
Value difference(A a) {
    CivilDate start{}, end{};
    if (!civil_pair(a, start, end) || a.number(1) < a.number(0)) return num();
    const std::string unit = upper_case(a.text(2));
    const int months = (end.year - start.year) * 12 + end.month - start.month - (end.day < start.day);
    if (unit == "D") return number(std::floor(a.number(1)) - std::floor(a.number(0)));
    if (unit == "M") return number(months);
    if (unit == "Y") return number(months / 12);
    if (unit == "YM") return number(months % 12);
    const double last = serial_of(end.year, end.month, end.day);
    if (unit == "MD") { // from the same day of this month or of the month before
        const int back = end.day < start.day;
        return number(last - serial_of(end.year, end.month - back, start.day));
    }
    if (unit == "YD") { // from the same day of the year, this one or the one before
        const bool back = end.month < start.month || (end.month == start.month && end.day < start.day);
        return number(last - serial_of(end.year - back, start.month, start.day));
    }
    return Value::error(xlerrNum, "the unit is Y, M, D, MD, YM or YD");
}

/// Days between two dates in a year of twelve months of 30 days, European or American.
double days_360(CivilDate start, CivilDate end, bool european, bool february) {
    if (european) {
        start.day = std::min(start.day, 30);
        end.day = std::min(end.day, 30);
    } else {
        if (ends_february(start)) {
            if (february && ends_february(end)) end.day = 30;
            start.day = 30;
        }
        start.day = std::min(start.day, 30);
        if (end.day == 31 && start.day == 30) end.day = 30;
    }
    return 360.0 * (end.year - start.year) + 30.0 * (end.month - start.month) + end.day - start.day;
}

Value days_of_360(A a) {
    CivilDate start{}, end{};
    return civil_pair(a, start, end) ? number(days_360(start, end, a.has(2) && a.truth(2), false)) : num();
}

/// The length of a year for the actual/actual fraction between two dates in order.
double average_year(const CivilDate& start, const CivilDate& end) {
    const bool within_year =
        start.year == end.year ||
        (start.year + 1 == end.year && (start.month > end.month || (start.month == end.month && start.day >= end.day)));
    if (within_year) {
        const bool leap_day =
            (is_leap(start.year) && (start.year == end.year || start.month <= 2)) ||
            (start.year != end.year && is_leap(end.year) && (end.month > 2 || (end.month == 2 && end.day == 29)));
        return leap_day ? 366.0 : 365.0;
    }
    const double years = end.year - start.year + 1.0;
    return (serial_of(end.year + 1, 1, 1) - serial_of(start.year, 1, 1)) / years;
}

Value year_fraction(A a) {
    CivilDate start{}, end{};
    if (!civil_pair(a, start, end)) return num();
    const double days = std::fabs(std::floor(a.number(1)) - std::floor(a.number(0)));
    if (a.number(1) < a.number(0)) std::swap(start, end);
    const double basis = std::trunc(a.number(2, 0.0));
    if (basis == 0.0) return number(days_360(start, end, false, true) / 360.0);
    if (basis == 1.0) return number(days / average_year(start, end));
    if (basis == 2.0) return number(days / 360.0);
    if (basis == 3.0) return number(days / 365.0);
    if (basis == 4.0) return number(days_360(start, end, true, true) / 360.0);
    return Value::error(xlerrNum, "the basis is 0 to 4");
}

int weekday_from_monday(double serial) { return (weekday_of(static_cast<int>(serial)) + 5) % 7; }

/// The week of a year in which Monday starts the week and the first one has four days.
double iso_week(double serial) {
    const double thursday = serial - weekday_from_monday(serial) + 3.0;
    CivilDate date{};
    civil(thursday, date);
    return std::floor((thursday - serial_of(date.year, 1, 1)) / 7.0) + 1.0;
}

Value week_number(A a) {
    CivilDate date{};
    const double serial = std::floor(a.number(0)), type = std::trunc(a.number(1, 1.0));
    if (!civil(serial, date)) return num();
    if (type == 21.0) return number(iso_week(serial));
    int first_day = 0; // of a week, from Monday
    if (type == 1.0 || type == 17.0)
        first_day = 6;
    else if (type >= 11.0 && type <= 16.0)
        first_day = static_cast<int>(type) - 11;
    else if (type != 2.0)
        return num();
    const double new_year = serial_of(date.year, 1, 1);
    const int days_before = (weekday_from_monday(new_year) - first_day + 7) % 7;
    return number(std::floor((serial - new_year + days_before) / 7.0) + 1.0);
}

// --- Working days ---------------------------------------------------------------------------------------------------

/// Counts working days from the beginning of the dates on.
class WorkingDays {
  public:
    /// Reads the days off, 1 for Saturday and Sunday, 11 for Sunday, "0000011" from Monday on, and the holidays.
    Value read(A a, int weekend, int holidays) {
        off_[5] = off_[6] = true;
        if (weekend >= 0 && a.has(weekend)) {
            const Value value = a.calculator.single(a[weekend]);
            if (value.is_error()) return value;
            if (!(value.is_text() ? read_days(value.text()) : read_code(value)))
                return value.is_text() ? bad_value() : num();
        }
        if (a.count > holidays) {
            Value error = all_numbers({a.calculator, a.values + holidays, 1}, holidays_);
            if (error.is_error()) return error;
            for (double& day : holidays_) day = std::floor(day);
            std::erase_if(holidays_, [&](double day) { return !(day >= 0.0 && day <= last_serial) || is_off(day); });
            std::sort(holidays_.begin(), holidays_.end());
            holidays_.erase(std::unique(holidays_.begin(), holidays_.end()), holidays_.end());
        }
        return {};
    }
    /// Working days up to a day, that one included.
    double up_to(double day) const {
        const double weeks = std::floor((day + 1.0) / 7.0);
        double count = weeks * working_per_week();
        for (double rest = weeks * 7.0; rest <= day; rest += 1.0) count += !is_off(rest);
        return count -
               static_cast<double>(std::upper_bound(holidays_.begin(), holidays_.end(), day) - holidays_.begin());
    }
    bool any() const { return working_per_week() > 0.0; }

  private:
    double working_per_week() const { return static_cast<double>(std::count(off_, off_ + 7, false)); }
    bool is_off(double day) const { return off_[weekday_from_monday(day)]; }
    bool read_days(std::string_view days) {
        if (days.size() != 7 || days.find_first_not_of("01") != std::string_view::npos) return false;
        for (std::size_t day = 0; day < 7; ++day) off_[day] = days[day] == '1';
        return true;
    }
    bool read_code(const Value& value) {
        double code = 0.0;
        Value error;
        if (!to_number(value, code, error)) return false;
        code = std::trunc(code);
        std::fill_n(off_, 7, false);
        if (code >= 1.0 && code <= 7.0) {
            const int first = (static_cast<int>(code) + 4) % 7;
            off_[first] = off_[(first + 1) % 7] = true;
            return true;
        }
        if (code < 11.0 || code > 17.0) return false;
        off_[(static_cast<int>(code) - 11 + 6) % 7] = true;
        return true;
    }

    bool off_[7] = {}; ///< from Monday
    std::vector<double> holidays_;
};

Value working_days_between(A a, int weekend, int holidays) {
    CivilDate start{}, end{};
    if (!civil_pair(a, start, end)) return num();
    WorkingDays days;
    if (Value error = days.read(a, weekend, holidays); error.is_error()) return error;
    const double first = std::floor(a.number(0)), last = std::floor(a.number(1));
    return number(first <= last ? days.up_to(last) - days.up_to(first - 1.0)
                                : days.up_to(last - 1.0) - days.up_to(first));
}

Value working_day_later(A a, int weekend, int holidays) {
    CivilDate start{};
    const double first = std::floor(a.number(0)), count = std::trunc(a.number(1));
    if (!civil(first, start)) return num();
    WorkingDays days;
    if (Value error = days.read(a, weekend, holidays); error.is_error()) return error;
    if (!days.any()) return bad_value();
    if (count == 0.0) return serial_value(first);
    // The first day up to which there are as many working days as wanted; backwards, those before the start count.
    const double wanted = (count > 0.0 ? days.up_to(first) : days.up_to(first - 1.0) + 1.0) + count;
    double low = 0.0, high = last_serial;
    if (wanted < 1.0 || days.up_to(high) < wanted) return num();
    while (low < high) {
        const double middle = std::floor((low + high) / 2.0);
        if (days.up_to(middle) >= wanted)
            high = middle;
        else
            low = middle + 1.0;
    }
    return serial_value(low);
}

const Builtin dates[] = {
    {"DATE", "nnn", "year, month, day", "The date number of a day", date_of},
    {"YEAR", "n", "date", "The year of a date", [](A a) { return date_part(a, &CivilDate::year); }},
    {"MONTH", "n", "date", "The month of a date, 1 to 12", [](A a) { return date_part(a, &CivilDate::month); }},
    {"DAY", "n", "date", "The day of the month of a date", [](A a) { return date_part(a, &CivilDate::day); }},
    {"WEEKDAY", "n|n", "date, [type]", "The day of the week; type 1 counts from Sunday, 2 from Monday", weekday},
    {"EDATE", "nn", "date, months", "The same day some months later", [](A a) { return months_later(a, false); }},
    {"EOMONTH", "nn", "date, months", "The end of the month some months later",
     [](A a) { return months_later(a, true); }},
    {"DAYS", "nn", "end, start", "The days between two dates",
     [](A a) { return number(std::floor(a.number(0)) - std::floor(a.number(1))); }},
    {"DATEDIF", "nnt", "start, end, unit",
     "The difference between two dates in a unit: \"Y\", \"M\", \"D\", \"MD\", \"YM\" or \"YD\"", difference},
    {"DAYS360", "nn|b", "start, end, [european]", "The days between two dates in a year of 360 days", days_of_360},
    {"YEARFRAC", "nn|n", "start, end, [basis]",
     "The years between two dates: basis 0 30/360, 1 actual/actual, 2 actual/360, 3 actual/365, 4 European 30/360",
     year_fraction},
    {"WEEKNUM", "n|n", "date, [type]",
     "The week of the year; type 1 starts weeks on Sunday, 2 on Monday, 21 is ISO 8601", week_number},
    {"ISOWEEKNUM", "n", "date", "The week of the year by ISO 8601",
     [](A a) {
         CivilDate date{};
         return civil(std::floor(a.number(0)), date) ? number(iso_week(std::floor(a.number(0)))) : num();
     }},
    {"NETWORKDAYS", "nn|r", "start, end, [holidays]", "The working days from one date to another, both included",
     [](A a) { return working_days_between(a, -1, 2); }},
    {"NETWORKDAYS.INTL", "nn|rr", "start, end, [weekend], [holidays]",
     "The same with other days off: 1 Saturday and Sunday to 7, 11 Sunday to 17, or \"0000011\" from Monday on",
     [](A a) { return working_days_between(a, 2, 3); }},
    {"WORKDAY", "nn|r", "start, days, [holidays]", "The date so many working days later",
     [](A a) { return working_day_later(a, -1, 2); }},
    {"WORKDAY.INTL", "nn|rr", "start, days, [weekend], [holidays]", "The same with other days off",
     [](A a) { return working_day_later(a, 2, 3); }},
    {"DATEVALUE", "t", "text", "The date that text spells",
     [](A a) {
         const auto read = read_number(a.text(0));
         return read && read->is_date ? Value::date(std::floor(read->value)) : bad_value();
     }},
    {"TIME", "nnn", "hour, minute, second", "A time of day as a fraction of a day",
     [](A a) {
         const double seconds =
             std::trunc(a.number(0)) * 3600.0 + std::trunc(a.number(1)) * 60.0 + std::trunc(a.number(2));
         return seconds < 0.0 ? num() : number(std::fmod(seconds, 86400.0) / 86400.0);
     }},
    {"HOUR", "n", "time", "The hour of a time, 0 to 23", [](A a) { return part_of_day(a.number(0), 3600, 24); }},
    {"MINUTE", "n", "time", "The minute of a time", [](A a) { return part_of_day(a.number(0), 60, 60); }},
    {"SECOND", "n", "time", "The second of a time", [](A a) { return part_of_day(a.number(0), 1, 60); }},
    {"TODAY", "", "", "Today's date", [](A) { return Value::date(std::floor(now())); }, true},
    {"NOW", "", "", "The date and time of now", [](A) { return Value::date(now()); }, true},
};

} // namespace

std::span<const Builtin> dates_functions() { return dates; }

} // namespace qx::sheet::builtin
