// Worksheet functions of a lease's dates.
#include "realestate/lease_dates.h"
#include "addin/declare.h"
#include "addin/rent_arguments.h"
#include "calendar/reviews.h"

namespace qx::worksheet {

namespace {

constexpr Category category = Category::RealEstate;

constexpr Argument FirstRev() { return {"FirstRev", "Date of the first review"}; }
constexpr Argument RelVoid_s() {
    return optional("RelVoid_s", "Months of void before each relet; the last one serves for the rest");
}
constexpr Argument RelTerm_s() {
    return optional("RelTerm_s", "Term of each relet in years, the last one serving for the rest; 15 if omitted");
}
constexpr Argument RevMos() { return optional("RevMos", 0, "Months from one review to the next, 0 to 1000; 0 none"); }

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
    .args = {time_period(),
             {"LeaseStartDate", "Date on which the lease starts; the day itself counts"},
             BrksOrExp(),
             RelVoid_s(),
             RelTerm_s(),
             measure(),
             AbFin(),
             Brk()},
    .examples = {"Occupancy(2010, 12, 2005, 2010.25, 6, 5) ~ 0.5 1e-9"},
    .see_also = "ReletOccurs,RentGrowR",
};
QX_EXPORT(Occupancy, 10);

} // namespace qx::worksheet
