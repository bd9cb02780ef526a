// Arguments that many functions share: name, help and preset in one place.
#pragma once

#include "addin/function.h"

namespace qx {

constexpr Argument TheDate(const char* help = "The date, as a date, a date number or a (decimal) year") {
    return {"TheDate", help};
}
constexpr Argument Time() {
    return {"Time", "The time or date that signifies the start of a time period. Usually accompanied by Base, the "
                    "length (months) or end of the time period."};
}
constexpr Argument Base() {
    return {"Base", "Either the length of a Time Period, expressed in exact months, or as a date, in which "
                    "case it is the "
                    "date of the end of the time period."};
}
constexpr Argument DayCount(double preset = 5.0) {
    return optional("DayCount", preset,
                    "Day count convention: 0 30/360 PSA, 1 actual/actual, 2 actual/360, 3 actual/365, 4 30E/360, 5 "
                    "decimal year, 6 actual/actual in period; or a composite core.startend",
                    "Actual Days/Actual Days In Month ('Decimal Year')");
}
/// An optional annual sequence that takes a preset sequence when it is left out.
constexpr Argument sequence(const char* name, int preset, const char* help) {
    return {name, help, {Preset::sequence, static_cast<double>(preset), nullptr}};
}
constexpr Argument Periods(int preset = 4) {
    return sequence("Periods", preset,
                    "Dates in the year that bound the periods: 1, 2, 4, 12 (13 English quarter days), negative in "
                    "arrears, or a range of mm.dd figures");
}

} // namespace qx
