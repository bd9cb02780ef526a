#include "hosts/sheet/calendar.h"

#include <chrono>
#include <cmath>
#include <cstdio>

namespace qx::sheet {

namespace {

using std::chrono::sys_days;

constexpr sys_days day_zero{std::chrono::year{1899} / 12 / 30};
constexpr const char* months[] = {"January", "February", "March",     "April",   "May",      "June",
                                  "July",    "August",   "September", "October", "November", "December"};
constexpr const char* weekdays[] = {"Sunday", "Monday", "Tuesday", "Wednesday", "Thursday", "Friday", "Saturday"};

bool digits(std::string_view text, std::size_t from, std::size_t count, int& value) {
    value = 0;
    if (from + count > text.size()) return false;
    for (const char c : text.substr(from, count)) {
        if (c < '0' || c > '9') return false;
        value = 10 * value + (c - '0');
    }
    return true;
}

int month_of(std::string_view name) {
    for (int month = 1; month <= 12; ++month) {
        bool same = name.size() == 3;
        for (std::size_t i = 0; same && i < 3; ++i) same = (name[i] | 0x20) == (months[month - 1][i] | 0x20);
        if (same) return month;
    }
    return 0;
}

} // namespace

const char* month_name(int month) { return months[month - 1]; }
const char* weekday_name(int weekday) { return weekdays[weekday - 1]; }

int weekday_of(int serial) { return serial % 7 == 0 ? 7 : serial % 7; }

double serial_of(long long year, long long month, long long day) {
    if (year > 20000 || year < -20000 || month > 200000 || month < -200000 || day > 10000000 || day < -10000000)
        return -1.0;
    const long long months = year * 12 + month - 1;
    const long long true_year = months >= 0 ? months / 12 : (months - 11) / 12;
    const sys_days first{std::chrono::year{static_cast<int>(true_year)} /
                         static_cast<int>(months - true_year * 12 + 1) / 1};
    const long long serial = (first - day_zero).count();
    // Before the leap day that 1900 did not have, numbers are one less.
    return static_cast<double>((serial < 61 ? serial - 1 : serial) + day - 1);
}

CivilDate civil_of(int serial) {
    if (serial == 0) return {1900, 1, 0};
    if (serial == 60) return {1900, 2, 29};
    const std::chrono::year_month_day date{day_zero + std::chrono::days{serial < 60 ? serial + 1 : serial}};
    return {static_cast<int>(date.year()), static_cast<int>(static_cast<unsigned>(date.month())),
            static_cast<int>(static_cast<unsigned>(date.day()))};
}

int days_in_month(int year, int month) {
    if (year == 1900 && month == 2) return 29;
    const std::chrono::year_month_day_last last{std::chrono::year{year} /
                                                std::chrono::month{static_cast<unsigned>(month)} / std::chrono::last};
    return static_cast<int>(static_cast<unsigned>(last.day()));
}

bool parse_date(std::string_view text, double& serial) {
    int year = 0, month = 0, day = 0;
    if (text.size() == 10 && text[4] == '-' && text[7] == '-') {
        if (!digits(text, 0, 4, year) || !digits(text, 5, 2, month) || !digits(text, 8, 2, day)) return false;
    } else if ((text.size() == 11 || text.size() == 10) && text[text.size() - 5] == '-' &&
               text[text.size() - 9] == '-') {
        if (!digits(text, 0, text.size() - 9, day) || !digits(text, text.size() - 4, 4, year)) return false;
        month = month_of(text.substr(text.size() - 8, 3));
    } else {
        return false;
    }
    if (year < 1900 || month < 1 || month > 12 || day < 1 || day > days_in_month(year, month)) return false;
    serial = serial_of(year, month, day);
    return true;
}

std::string date_text(double serial) {
    const double days = std::floor(serial);
    const CivilDate date = civil_of(static_cast<int>(days));
    char text[48];
    int length = std::snprintf(text, sizeof text, "%04d-%02d-%02d", date.year, date.month, date.day);
    const int seconds = static_cast<int>(std::floor((serial - days) * 86400.0 + 0.5));
    if (seconds > 0 && seconds < 86400)
        length += std::snprintf(text + length, sizeof text - static_cast<std::size_t>(length), " %02d:%02d:%02d",
                                seconds / 3600, seconds / 60 % 60, seconds % 60);
    return std::string(text, static_cast<std::size_t>(length));
}

} // namespace qx::sheet
