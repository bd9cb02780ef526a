// Dates that recur every so many months from a first one on; a first one at the end of a month recurs at month ends.
//
// Reviews (calendar/reviews.h) are counted by 30/360 months, which can take a day at the end of a month to the review
// next to it. Here the dates themselves decide.
#pragma once

#include "calendar/reviews.h"

#include <algorithm>
#include <cstdint>
#include <limits>

namespace qx {

/// The date n times some months on, at a month's end if the first one is; past the calendar, its end.
inline date repeated(const date& first, int n, int months) {
    constexpr std::int64_t most = std::numeric_limits<int>::max();
    return first.plusmonths(static_cast<int>(std::clamp(std::int64_t{n} * months, -most, most)), true);
}

class Recurrence {
  public:
    /// Months must be above 0.
    Recurrence(const date& first, int months) : first_(first), months_(months) {}

    /// Date number n, from 0.
    date at(int n) const { return repeated(first_, n, months_); }
    /// The number of the last one on or before a day that is not before the first one.
    int number(const date& day) const {
        int n = std::max(last_review(day, first_, months_, false).intervals, 0);
        while (n > 0 && at(n) > day) --n;
        while (at(n) < DateCrit && at(n + 1) <= day) ++n;
        return n;
    }
    date on_or_after(const date& day) const {
        if (day <= first_) return first_;
        const int n = number(day);
        return at(n) == day ? day : at(n + 1);
    }
    /// The zero date before the first one.
    date on_or_before(const date& day) const { return day < first_ ? date() : at(number(day)); }

  private:
    date first_;
    int months_;
};

} // namespace qx
