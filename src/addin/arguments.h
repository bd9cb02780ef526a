// Arguments that many functions share: name, help and preset in one place.
#pragma once

#include "addin/function.h"
#include "calendar/annual_sequence.h"
#include "calendar/date_functions.h"
#include "calendar/day_count.h"
#include "calendar/holidays.h"
#include "calendar/time_period.h"
#include "core/combine.h"
#include "numerics/range_operation.h"

namespace qx {

constexpr Argument TheDate(const char* help = "The date, as a date, a date number or a (decimal) year") {
    return {"TheDate", help};
}
constexpr Argument Time() {
    return {"Time", "The Time or Date that signifies the start of a time period. Usually accompanied by Base, the "
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
                    "decimal year, 6 actual/actual in period; or a composite code such as 2.03",
                    preset == 5.0 ? "Actual Days/Actual Days In Month ('Decimal Year')" : nullptr)
        .of(day_count_values)
        .within(daycount_limits);
}
/// An optional annual sequence that takes a preset sequence when it is omitted.
constexpr Argument sequence(const char* name, int preset, const char* help,
                            DefaultSequence default_sequence = DefaultSequence::in_advance) {
    return {name, help, {Preset::sequence, static_cast<double>(preset), nullptr}, {}, Order::any, default_sequence};
}
/// An annual sequence that may be missing.
constexpr Argument sequence_or_none(const char* name, const char* help,
                                    DefaultSequence default_sequence = DefaultSequence::none) {
    return sequence(name, 999, help, default_sequence);
}
constexpr Argument Periods(int preset = 4) {
    return sequence("Periods", preset,
                    "Either an option number, or a range of floats, describing the accruals periods or the timing of "
                    "cash payments, in the format mm.dd for payments in advance or -mm.dd for payments in arrears. "
                    "Options: 1, 2, 4, 12 a year; 13 English quarter days")
        .of(sequence_values);
}

/// The basis of a projection, and the delay of its payments.
constexpr Argument ProjMode(double preset = 0.0) {
    return optional("ProjMode", preset,
                    "Accruals=0, Cash=1.  Has other settings. The first two decimals are a delay of payments in days: "
                    "1.05 is "
                    "cash, received 5 days late")
        .of(projection_mode_values)
        .within(projmode_limits);
}
/// When cash is paid, in functions that name it so.
constexpr Argument CashBasis(int preset = 4) {
    return sequence("CashBasis", preset,
                    "Either an option number, or a range of floats, describing the accruals periods or the timing of "
                    "cash payments, in the format mm.dd for payments in advance or -mm.dd for payments in arrears.")
        .of(sequence_values);
}

// Dates, lists of dates and business days.

constexpr Argument Date1() { return {"Date1", "Date to measure from"}; }
constexpr Argument Date2() { return {"Date2", "Date to measure to"}; }
constexpr Argument FromDate() { return {"FromDate", "Date to start from"}; }
constexpr Argument ToDate() { return {"ToDate", "Date to go up to"}; }
/// A mandatory sequence of dates in the year.
constexpr Argument AnnDateSeq(const char* name = "AnnDateSeq") {
    return {name, "Dates that recur every year: 1, 2, 4, 12 (13 English quarter days), negative in arrears, one mm.dd "
                  "figure, or a range of them, as 3.25 for 25 March"};
}
constexpr Argument SpecificDates(const char* name = "SpecificDates") {
    return optional(name, "List of dates that do not recur, in any order");
}
/// One of several sequences that may be omitted.
constexpr Argument AnnDateSeqOpt(const char* name, DefaultSequence default_sequence = DefaultSequence::none) {
    return sequence_or_none(name,
                            "Dates that recur every year, as a preset number or a range of mm.dd figures; none if "
                            "omitted",
                            default_sequence);
}
constexpr Argument BusDaySwitch(int preset = 20) {
    return optional("BusDaySwitch", preset,
                    "Business days: 0 every day, 20 to 22 weekends only excluded, 100 UK, 101 England and Wales, 102 "
                    "Scotland, 103 Northern Ireland, 200 USA (NYSE), 201 USA (federal), 300 Canada, 400 Australia, 500 "
                    "Brazil",
                    preset == 20 ? "weekends only excluded" : nullptr)
        .of(business_day_values);
}
/// The switch of older forms, whose whole part counts.
constexpr Argument BusDaySwitchX() {
    return optional("BusDaySwitch", 20.0,
                    "Business days, as in the function that took this one's place: the whole part is the switch, two "
                    "decimals may hold a rolling convention")
        .of(business_day_values);
}
constexpr Argument AnnHols() {
    return sequence_or_none("AnnHols", "Holidays that recur every year, as mm.dd figures: 12.25 for 25 December");
}
constexpr Argument HolDates() { return optional("HolDates", "List of one-off holidays"); }
constexpr Argument RoundMethod() {
    return optional("RoundMethod", 0, "0 to the nearest, 1 back, 2 forward").of(round_method_values);
}

// Lists.

constexpr Argument CombineBy() {
    return Argument{"CombineSwitch",
                    "0 multiply, 1 divide, 2 add, 3 subtract, 4 greatest, 5 smallest, 6 greatest but non-zero, 7 "
                    "smallest but non-zero"}
        .of(combine_switch_values);
}
constexpr Argument InclusiveOpt() {
    return optional("InclusiveOpt", 0, "What counts of the two ends: 0 the first, 1 both, 2 neither, 3 the second",
                    "the first end only")
        .of(inclusive_values);
}
constexpr Argument RangeOperation() {
    return optional("RangeOperation", 0, "0 sum, 1 average, 2 count, 3 greatest, 4 smallest, 5 product", "sum")
        .of(range_operation_values);
}

// Rates, annuities and cash flows.

constexpr Argument InterestAER(const char* name = "InterestAER") {
    return {name, "Annual equivalent interest rate as a fraction: 0.08 is growth of 8% over one year"};
}
constexpr Argument InterestCont() { return {"InterestCont", "Continuously compounded annual interest rate"}; }
constexpr Argument InterestSimple() {
    return {"InterestSimple",
            "Simple annual interest rate as a fraction: interest paid is the part of the year times it"};
}
constexpr Argument DisAER() { return {"DisAER", "Discount rate, an annual equivalent rate above -1 (-100%)"}; }
constexpr Argument PmtsPerYear(const char* name = "PmtsPerYear") {
    return {name, "Number of payments Per Year (eg +4 = qtrly in advance, -4 = qtrly in arrear); 0 is read as -1"};
}
constexpr Argument TermYrs() { return {"TermYrs", "Term in years, whole or decimal"}; }
constexpr Argument AnnGrowthRate() { return {"AnnGrowthRate", "Growth rate a year as a fraction"}; }
constexpr Argument GrowRevsPerYrOpt() {
    return optional("GrowRevsPerYrOpt", 1.0, "Steps of growth a year; 0 for continuous growth", "once a year");
}
constexpr Argument FVOpt() { return optional("FVOpt", 0.0, "Future value: a single amount at the end of the term"); }
/// The day count and the sequence of lengths of time in discounting.
constexpr Argument DayCountDisc(const char* name = "DayCountDisc") {
    return optional(name, 5.0,
                    "Day count convention of the times to discount over, 0 to 999: 0 30/360 PSA, 1 actual/actual, 2 "
                    "actual/360, 3 actual/365, 4 30E/360, 5 decimal year, 6 actual/actual in period",
                    "Actual Days/Actual Days In Month ('Decimal Year')")
        .of(day_count_values);
}
constexpr Argument PrdsDisc(const char* name = "PrdsDisc") {
    return sequence(name, -4,
                    "Dates in the year that bound the periods of the day count: 1, 2, 4, 12, negative in arrears, or a "
                    "range of mm.dd figures; quarterly in arrears if omitted")
        .of(sequence_values);
}
constexpr Argument PrdsInt() {
    return sequence("PrdsInt", -4,
                    "Dates in the year on which interest is paid: -1, -2, -4, -12 in arrears, or a range of mm.dd "
                    "figures; quarterly in arrears if omitted")
        .of(sequence_values);
}
constexpr Argument FromDatesInt() {
    return Argument{"FromDatesInt", "Dates from which the interest rates hold, ascending"}.in_ascending_order();
}
constexpr Argument IntSimple() {
    return {"IntSimple", "Simple annual interest rates, one for each of the dates (or one for all)"};
}
constexpr Argument NPVDate() { return {"NPVDate", "Date to which values are discounted"}; }
constexpr Argument Dates(const char* name = "Dates") { return {name, "Dates of the cash flows"}; }
constexpr Argument Cashflows(const char* name = "Cashflows") {
    return {name, "Cash flows, one for each date: received positive, paid negative"};
}
constexpr Argument StartDCF() {
    return optional("StartDCF", "If omitted, all cashflows are included.  Over-rides other Start  dates in the "
                                "function. Cash flows on or before it are excluded");
}
constexpr Argument FinishDCF() {
    return optional("FinishDCF", "If omitted, all cashflows are included. Cash flows from this date on are excluded");
}

// --- Groups: the arguments of a composite parameter (projections/terms.h, projections/steps.h) -----------------------

/// timeperiod: Time and Base.
constexpr ArgumentGroup time_period() { return {Time(), Base()}; }
/// Measure and Basis.
constexpr ArgumentGroup measure(double day_count = 0.0) { return {DayCount(day_count), Periods()}; }
constexpr ArgumentGroup basis() { return {DayCount(0.0), Periods(), ProjMode()}; }

/// Life.
constexpr Argument Start(const char* help = "Date on which it starts; the day itself counts") {
    return {"Start", help};
}
constexpr Argument Finish(const char* help = "Date on which it finishes; the day itself does not count") {
    return {"Finish", help};
}
constexpr ArgumentGroup life() { return {Start(), Finish()}; }

/// Growth.
constexpr Argument GrowthDates(const char* name = "GrowthDates") {
    return Argument{
        name, "Dates from which the growth rates apply, ascending; the last one applies for ever", {Preset::empty}}
        .in_ascending_order();
}
constexpr Argument GrowthRates(const char* name = "GrowthRates") {
    return {name,
            "Annual equivalent growth rates as fractions, one for each growth date: 0.03 is 3% a year",
            {Preset::empty}};
}
constexpr ArgumentGroup growth(const char* dates = "GrowthDates", const char* rates = "GrowthRates") {
    return {GrowthDates(dates), GrowthRates(rates)};
}
constexpr Argument RevMonthsOpt(const char* name = "RevMonthsOpt") {
    return optional(name, 0, "Months between reviews, 0 to 1000; 0 for continuous growth", "continuous")
        .within(review_months_limits);
}

/// Forecast.
constexpr ArgumentGroup forecast(const char* values = "FcstVals", const char* start = "StartFcst",
                                 const char* base = "FcstBase") {
    return {{values, "Values of the forecast, one for each of its periods; the last one applies from then on"},
            {start, "Date from which the first value of the forecast holds"},
            Argument{base, "Months that each value of the forecast holds, 1 to 1000"}.within(forecast_base_limits)};
}

/// FromSteps and ToSteps.
constexpr Argument FromDates(const char* help = "Dates from which the rates apply, ascending") {
    return Argument{"FromDates", help}.in_ascending_order();
}
constexpr Argument ToDates(const char* help = "Dates up to which the rates apply, ascending") {
    return Argument{"ToDates", help}.in_ascending_order();
}
constexpr ArgumentGroup from_steps() { return {Finish(), FromDates()}; }
constexpr ArgumentGroup to_steps() { return {Start(), ToDates()}; }
constexpr Argument AnnualRates() {
    return {"AnnualRates", "Amounts a year, one for each of the dates, or a single one for all"};
}

/// Seasons.
constexpr ArgumentGroup seasons() {
    return {optional("SeasonFactors", "Weights of the seasons, one for each; no seasons if omitted"),
            sequence_or_none(
                "SeasonSeq",
                "Dates on which the seasons start, as mm.dd figures from 1.01 on; seasons of even length if omitted")};
}

/// The first review.
constexpr Argument FirstRev(const char* help = "Date of the first review; 0 for none at all") {
    return {"FirstRev", help};
}

/// Streams.
constexpr ArgumentGroup streams(const char* rate = "AnnualRate") {
    return {
        {"Start", "Date on which the stream starts (the day itself counts), or a list of dates for several streams"},
        {"Finish", "Date on which the stream finishes (the day itself does not count), or a list of dates"},
        {rate, "Amount a year, or a list of amounts"}};
}
/// The same of functions that were for several from the first.
constexpr ArgumentGroup several_streams() {
    return {{"Starts", "Dates on which the streams start, or one for all"},
            {"Finishes", "Dates on which the streams finish, or one for all"},
            {"AnnualRates", "Amounts a year, or one for all"}};
}

} // namespace qx
