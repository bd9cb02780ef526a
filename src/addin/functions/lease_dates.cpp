// Worksheet functions of a lease's dates.
#include "realestate/lease_dates.h"
#include "addin/declare.h"
#include "addin/rent_arguments.h"
#include "calendar/reviews.h"
#include "realestate/lease_events.h"

namespace qx::worksheet {

namespace {

constexpr Category category = Category::RealEstate;

constexpr Argument FirstRev() { return {"FirstRev", "Date of the first review"}; }
constexpr Argument RelVoid_s() {
    return optional("RelVoid_s", "Months of void before each relet; the last one applies to the rest");
}
constexpr Argument RelTerm_s() {
    return optional("RelTerm_s", "Term of each relet in years, the last one applying to the rest; 15 if omitted");
}
constexpr Argument RevMos() {
    return optional("RevMos", 0, "Months between reviews, 0 to 1000; 0 for reviews that do not recur");
}
constexpr Argument LeaseStartDate() {
    return {"LeaseStartDate", "Date on which the lease starts; the day itself counts"};
}
constexpr ArgumentGroup lease_terms() {
    return {LeaseStartDate(),
            RentStart(),
            BrksOrExp(),
            {"Reviews", "Date of the first review, or dates of reviews; from the last one on they recur every RevMos"},
            RevMos()};
}

} // namespace

constexpr Function LastReview{
    .name = "LastReview",
    .category = category,
    .calls = core<qx::LastReview>,
    .help = "The last review date on or before a date; empty before the first review",
    .args = {TheDate(), FirstRev(), RevMos(),
             optional("RoundDown", false, "True: on a review date, the review before it")},
    .examples = {"LastReview(DATE(2013,1,1), DATE(2005,6,24), 60) = DATE(2010,6,24)",
                 "LastReview(DATE(2010,6,24), DATE(2005,6,24), 60, TRUE) = DATE(2005,6,24)",
                 "LastReview(DATE(2005,1,1), DATE(2005,6,24), 60) = empty"},
    .see_also = "NextReview",
};
QX_EXPORT(LastReview, 4);

constexpr Function NextReview{
    .name = "NextReview",
    .category = category,
    .calls = core<qx::NextReview>,
    .help = "The next review date after a date",
    .args = {TheDate(), FirstRev(), RevMos(), optional("RoundDown", false, "True: on a review date, that date")},
    .examples = {"NextReview(DATE(2013,1,1), DATE(2005,6,24), 60) = DATE(2015,6,24)",
                 "NextReview(DATE(2010,6,24), DATE(2005,6,24), 60, TRUE) = DATE(2010,6,24)",
                 "NextReview(DATE(2013,1,1), DATE(2005,6,24)) = DATE(2013,1,1)"},
    .see_also = "LastReview",
};
QX_EXPORT(NextReview, 4);

constexpr Function NextReviewR{
    .name = "NextReviewR",
    .category = category,
    .calls = core<qx::NextReviewR>,
    .help = "The next review date after a date, of a lease or of the relets after it",
    .args = {TheDate(), BrksOrExp(), FirstRev(), RevMos(), RelVoid_s(), RelTerm_s(),
             optional("RoundDown", false, "True: on a review date, that date"), Brk()},
    .examples = {"NextReviewR(DATE(2009,1,1), DATE(2010,6,24), DATE(2005,6,24), 60, 6, 10) = DATE(2015,12,24)"},
    .see_also = "NextReview,LastReviewR",
};
QX_EXPORT(NextReviewR, 8);

constexpr Function LastReviewR{
    .name = "LastReviewR",
    .category = category,
    .calls = core<qx::LastReviewR>,
    .help = "The last review date on or before a date, of a lease or of the relets after it; empty before the first",
    .args = {TheDate(), BrksOrExp(), FirstRev(), RevMos(), RelVoid_s(), RelTerm_s(),
             optional("RoundDown", false, "True: on a review date, the review before it"), Brk()},
    .examples = {"LastReviewR(DATE(2018,1,1), DATE(2010,6,24), DATE(2005,6,24), 60, 6, 10) = DATE(2015,12,24)"},
    .see_also = "LastReview,NextReviewR",
};
QX_EXPORT(LastReviewR, 8);

constexpr Function LeaseEnd{
    .name = "LeaseEnd",
    .category = category,
    .calls = core<qx::LeaseEnd>,
    .help = "The date on which a break or the expiry ends a lease; 1 January 3000 for a lease without end",
    .args = {BrksOrExp(), Brk()},
    .examples = {"LeaseEnd({2010;2015}) = DATE(2010,1,1)", "LeaseEnd({2010;2015}, 0) = DATE(2015,1,1)",
                 "LeaseEnd({2010;2015}, -1) = DATE(3000,1,1)"},
    .see_also = "LeaseDates,LeaseInfo",
};
QX_EXPORT(LeaseEnd, 2);

constexpr Function ReletOccurs{
    .name = "ReletOccurs",
    .category = category,
    .calls = core<qx::ReletOccurs>,
    .help = "True if a relet starts in a period",
    .args = {time_period(), BrksOrExp(), relets(), Brk()},
    .examples = {"ReletOccurs(2010, 12, 2010, 6, 3, 5) = TRUE", "ReletOccurs(2011, 12, 2010, 6, 3, 5) = FALSE"},
    .see_also = "RentEvent",
};
QX_EXPORT(ReletOccurs, 7);

constexpr Function Occupancy{
    .name = "Occupancy",
    .category = category,
    .calls = twin<qx::Occupancy>,
    .help = "The fraction of a period in which a lease or one of the relets after it runs",
    .args = {time_period(), LeaseStartDate(), BrksOrExp(), RelVoid_s(), RelTerm_s(), measure(), AbFin(), Brk()},
    .examples = {"Occupancy(2010, 12, 2005, 2010.25, 6, 5) ~ 0.5 1e-9"},
    .see_also = "ReletOccurs,RentGrowR",
};
QX_EXPORT(Occupancy, 10);

// --- Events ----------------------------------------------------------------------------------------------------------

constexpr Function RentDateInfo{
    .name = "RentDateInfo",
    .category = category,
    .calls = core<qx::RentDateInfo>,
    .help = "The date of the next or last review, start, expiry or break of a lease or of the relets after it; empty "
            "if there is none",
    .args = {TheDate(), lease_terms(),
             Argument{"RentDateSwitch",
                      "0 next review, 1 last review, 2 and 3 lease start, 4 and 5 rent start, 6 and 7 expiry, "
                      "8 and 9 break; the first decimal digit is the number of further events to move along: 0.2 is "
                      "the third next review"}
                 .of(rent_date_values),
             relets(),
             optional("RoundDown", false,
                      "True: on the date of an event, the next one is that date and the last one "
                      "is the one before"),
             Brk()},
    .examples = {"RentDateInfo(2008, 2005, 2005.5, 2020, 2010, 60, 0) = DATE(2010,1,1)",
                 "RentDateInfo(2008, 2005, 2005.5, 2030, 2010, 60, 0.2) = DATE(2020,1,1)",
                 "RentDateInfo(2008, 2005, 2005.5, 2020, 2010, 60, 2, 6) = DATE(2020,7,1)"},
    .see_also = "RentEvent,RentEventOccurs,NextReviewR,LastReviewR,LeaseDates",
};
QX_EXPORT(RentDateInfo, 12);

constexpr Function RentEventOccurs{
    .name = "RentEventOccurs",
    .category = category,
    .calls = core<qx::RentEventOccurs>,
    .help = "True if a lease, or one of the relets after it, has an event of a type in a period",
    .args = {time_period(), lease_terms(),
             Argument{"RentEventType", "0 rent review, 1 lease start, 2 rent start, 3 expiry, 4 break"}.of(
                 lease_event_values),
             relets(), Brk()},
    .examples = {"RentEventOccurs(2010, 12, 2005, 2005.5, 2020, 2010, 60, 0) = TRUE",
                 "RentEventOccurs(2010, 12, 2005, 2005.5, 2020, 2010, 60, 3) = FALSE"},
    .see_also = "RentEvent,RentDateInfo,ReletOccurs",
};
QX_EXPORT(RentEventOccurs, 12);

constexpr Function RentEvent{
    .name = "RentEvent",
    .category = category,
    .calls = twin<qx::RentEvent>,
    .help = "The event in a period of a lease or of one of the relets after it, the first in this order: 1 review, 2 "
            "lease start, 3 rent start, 4 expiry, 5 break; 0 if there is none",
    .args = {time_period(), lease_terms(), relets(), Brk()},
    .examples = {"RentEvent(2010, 12, 2005, 2005.5, 2020, 2010, 60) = 1",
                 "RentEvent(2005, 12, 2005, 2005.5, 2020, 2010, 60) = 2",
                 "RentEvent(2019.5, 12, 2005, 2005.5, 2020, 2010, 60, 12) = 4"},
    .see_also = "RentEventOccurs,RentDateInfo,ConEvent",
};
QX_EXPORT(RentEvent, 11);

constexpr Function LeaseDates{
    .name = "LeaseDates",
    .category = category,
    .calls = core<qx::LeaseDates>,
    .help = "The dates of a lease and of the relets after it, in ascending order; a date of two kinds is "
            "listed twice",
    .args = {RentStart(), BrksOrExp(), RevMos(), relets(),
             optional("ReviewsOpt", "Dates of reviews of the lease; from the last one on they recur every RevMos"),
             optional("AbStart", "Date before which nothing is listed"),
             optional("AbFin", "Date after which nothing is listed, and on which the last lease ends; if omitted a "
                               "hundred relets are listed"),
             optional("LDateOptions", all_lease_dates,
                      "Sum of what to list: 1 rent start, 2 expiry, 4 given reviews, 8 breaks; of relets 16 lease "
                      "start, 32 rent start, 64 expiry; 128 reviews every RevMos",
                      "all")
                 .of(lease_date_values),
             Brk()},
    .examples = {"LeaseDates(2005, 2010, 60, 6, 3, 5, 0, 0, 2012) = {38353,40179,40360,40452,40909}",
                 "LeaseDates(2005, 2020, 60, 6, 3, 5, 2008, 0, 2020, 132) = {39448,41275,43101}"},
    .see_also = "LeaseInfo,LeaseEnd,RentDateInfo",
};
QX_EXPORT(LeaseDates, 11);

constexpr Function LeaseInfo{
    .name = "LeaseInfo",
    .category = category,
    .calls = core<qx::LeaseInfo>,
    .help = "A date, the rent-free months or the term of a lease, as given or else derived from the others; dates are "
            "returned as date numbers",
    .args = {optional("LeaseStartOpt", "Date on which the lease starts, if known"),
             optional("RentFreeMonths", 0.0, "Months without rent at the start of the lease, if known", "unknown"),
             optional("RentStartDate", "Date on which the rent starts, if known"),
             optional("ReviewsOpt", "Dates of reviews"), optional("BreaksOpt", "Dates of breaks"),
             optional("LeaseExpiryDate", "Date on which the lease expires, or the day before, if known"),
             optional("TermYrsOpt", 0.0, "Term of the lease in years, if known", "unknown"),
             optional(
                 "LeaseInfoSwitch", 0.0,
                 "0 expiry, 1 rent start, 2 lease start, 3 a break, 4 rent-free months, 5 term in years, 6 a "
                 "review; for breaks and reviews the first decimal digit is their number: 6.2 is the second review",
                 "expiry"),
             optional("LIOptions", 0, "1 for strict ambiguity testing: whatever is known must agree", "none"),
             measure()},
    .examples = {"LeaseInfo(2005, 6, , , , , 10) = DATE(2015,1,1)",
                 "LeaseInfo(2005, 6, , , , , 10, 1) = DATE(2005,7,1)",
                 "LeaseInfo(2005, 6, , , , DATE(2014,12,31), 10, 0, 1) = DATE(2015,1,1)"},
    .see_also = "LeaseDates,LeaseEnd,RentDateInfo",
};
QX_EXPORT(LeaseInfo, 11);

} // namespace qx::worksheet
