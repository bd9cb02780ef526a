// Date numbers as spreadsheets count them: 1 is 1 January 1900, and 29 February 1900 exists as number 60.
#pragma once

#include <string>
#include <string_view>

namespace qx::sheet {

inline constexpr int last_serial = 2958465; ///< 31 December 9999

struct CivilDate {
    int year, month, day;
};

/// The date number of a date; a month or a day past its end runs on. Negative before 1900.
double serial_of(long long year, long long month, long long day);
/// The date of a number from 0 (0 January 1900) to last_serial.
CivilDate civil_of(int serial);
int days_in_month(int year, int month);

/// A date that reads the same everywhere, with its number: the year first, as 2026-11-21 or 2026/11/21, or the month in
/// words, as 21-Nov-2026, 21 November 26 or November 21, 2026. False for any other text and for days that do not exist.
bool parse_date(std::string_view text, double& serial);
/// "2026-11-21", with " 13:45:00" if the number has a time of day.
std::string date_text(double serial);

const char* month_name(int month);     ///< "January" for 1
const char* weekday_name(int weekday); ///< "Sunday" for 1
int weekday_of(int serial);            ///< 1 for Sunday to 7

} // namespace qx::sheet
