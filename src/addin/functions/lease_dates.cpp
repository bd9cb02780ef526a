// Worksheet functions of a lease's dates.
#include "addin/declare.h"
#include "calendar/reviews.h"

namespace qx::worksheet {

namespace {

constexpr Category category = Category::RealEstate;

constexpr Argument FirstRev() { return {"FirstRev", "Date of the first review"}; }
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

} // namespace qx::worksheet
