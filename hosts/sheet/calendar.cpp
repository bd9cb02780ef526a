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

bool is_letter(char c) { return static_cast<char>(c | 0x20) >= 'a' && static_cast<char>(c | 0x20) <= 'z'; }

/// The month of a name or of its first three letters; 0 for none.
int month_of(std::string_view name) {
    for (int month = 1; month <= 12; ++month) {
        const std::string_view whole = months[month - 1];
        bool same = name.size() == 3 || name.size() == whole.size();
        for (std::size_t i = 0; same && i < name.size(); ++i) same = (name[i] | 0x20) == (whole[i] | 0x20);
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
    // Three parts, of digits or letters, between blanks, hyphens, slashes, points or commas.
    std::string_view parts[3];
    char between = '\0'; // the first separator
    std::size_t count = 0, at = 0;
    while (at < text.size()) {
        const std::size_t start = at;
        const bool letters = is_letter(text[at]);
        while (at < text.size() && (letters ? is_letter(text[at]) : text[at] >= '0' && text[at] <= '9')) ++at;
        if (at == start || count == 3) return false;
        parts[count++] = text.substr(start, at - start);
        if (at == text.size()) break;
        const std::size_t gap = at;
        while (at < text.size() && std::string_view(" -/.,").find(text[at]) != std::string_view::npos) ++at;
        const std::string_view separator = text.substr(gap, at - gap);
        if (at == text.size() || separator.empty() || (separator.size() > 1 && separator.find(' ') == separator.npos))
            return false;
        if (count == 1) between = separator[0];
    }
    if (count != 3) return false;
    int year = 0, month = 0, day = 0;
    const auto number = [](std::string_view part, std::size_t least, std::size_t most, int& value) {
        return part.size() >= least && part.size() <= most && digits(part, 0, part.size(), value);
    };
    if (parts[0].size() == 4 && (between == '-' || between == '/')) { // the year first
        if (!number(parts[0], 4, 4, year) || !number(parts[1], 1, 2, month) || !number(parts[2], 1, 2, day))
            return false;
    } else { // the month in words
        const bool month_first = is_letter(parts[0][0]);
        month = month_of(parts[month_first ? 0 : 1]);
        if (month == 0 || !number(parts[month_first ? 1 : 0], 1, 2, day)) return false;
        if (number(parts[2], 2, 2, year))
            year += year < 30 ? 2000 : 1900;
        else if (!number(parts[2], 4, 4, year))
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
