// Arguments that the functions of leases and rents share.
#pragma once

#include "addin/arguments.h"

namespace qx {

constexpr Argument RentStart() { return {"RentStart", "Date on which the rent starts; the day itself counts"}; }
constexpr Argument BrksOrExp() {
    return {"BrksOrExp", "Date on which the lease expires, or dates of its breaks in order with the expiry last; the "
                         "day itself does not count"};
}
constexpr Argument Brk() {
    return optional("Brk", 1,
                    "Which break ends the lease: its number; 0 the last, which is the expiry; -1 none, the lease never "
                    "ends; -2 the first after today. If omitted, break on first break.",
                    "the first one");
}
constexpr Argument MktRent() {
    return {"MktRent", "Market rent a year, as at the first growth date, to which the rent is reviewed"};
}
constexpr Argument MktRent_s() {
    return {"MktRent_s", "Market rents a year, as at the first growth date: of the lease, then of each relet, of which "
                         "the last one applies to the rest"};
}
constexpr Argument InitRent() { return {"InitRent", "Rent a year until the first review"}; }
constexpr ArgumentGroup rent_forecast() { return forecast(); }
constexpr Argument ReviewDates() {
    return Argument{"ReviewDates",
                    "Dates up to which the rents apply, ascending; the last one is the first review to the market"}
        .in_ascending_order();
}
constexpr Argument AnnRents() {
    return {"AnnRents", "Rents a year, one for each of the dates or one for all; zero for the market rent"};
}
constexpr Argument UOTog() {
    return optional("UOTog",
                    "Dates at which upward-only reviews are switched on and off, starting from off; if omitted "
                    "the sign of RevDisc decides");
}
constexpr Argument AbFin() {
    return optional("AbFin", "Date on which the last lease or relet ends at the latest; never if omitted");
}
constexpr Argument ROpts() {
    return optional("ROpts", 0,
                    "Sum of options: 1 dates of relets are counted by DayCount and Periods, 2 dates are rounded to the "
                    "nearest of Periods, 4 market rents of relets are as at their start, 1024 given rents are indexed, "
                    "2048 AbStart counts in place of RentStart",
                    "none");
}

/// Reviews.
constexpr ArgumentGroup reviews() {
    return {optional("RevMos", 0, "Months between reviews, 0 to 1000; 0 for reviews that do not recur", "none")
                .within(review_months_limits),
            optional("RevDisc", 0.0,
                     "Discount to the market rent at reviews as a fraction, -1 to 1; a negative one makes reviews "
                     "upward-only, unless UOTog is given")
                .within({-1, 1})};
}
/// Relets.
constexpr ArgumentGroup relets() {
    return {optional("RelVoid_s", "Months of void before each relet; the last one applies to the rest"),
            optional("RelRF_s", "Months without rent at the start of each relet; the last one applies to the rest"),
            optional("RelTerm_s", "Term of each relet in years, the last one applying to the rest; 15 if omitted")};
}

/// Groups side by side as one.
constexpr ArgumentGroup joined(std::initializer_list<ArgumentGroup> groups) {
    ArgumentGroup all(std::initializer_list<Argument>{});
    for (const ArgumentGroup& group : groups)
        for (int i = 0; i < group.count; ++i) all.items[all.count++] = group.items[i];
    return all;
}

/// A lease: when its rent starts and when it ends.
constexpr ArgumentGroup lease() { return {RentStart(), BrksOrExp()}; }

/// Given rents, up to dates and from dates on.
constexpr ArgumentGroup rents_to_dates() { return {ReviewDates(), AnnRents()}; }
constexpr ArgumentGroup rents_from_dates() {
    return {Argument{"FromDates", "Dates from which the rents apply, ascending"}.in_ascending_order(), AnnRents()};
}
constexpr ArgumentGroup collars() {
    return {{"AnnRentCaps", "Rents a year that reviews do not exceed, one for each rent or one for all; zero for none"},
            {"AnnRentFloors", "Rents a year that reviews do not fall below, one for each rent or one for all; zero for "
                              "none"}};
}
constexpr Argument RevToMkt() {
    return optional("RevToMkt", "Date of the first review to the market; if omitted the lease does not review to the "
                                "market (its relets do)");
}

/// What ends the arguments of a single lease with reviews, and of one with relets.
constexpr ArgumentGroup reviewed_lease() { return joined({reviews(), basis(), UOTog(), Brk()}); }
constexpr ArgumentGroup reviewed_chain() { return joined({reviews(), relets(), basis()}); }
constexpr ArgumentGroup chain_options() { return {AbFin(), UOTog(), ROpts(), Brk()}; }

} // namespace qx
