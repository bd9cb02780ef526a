#include "realestate/lease.h"

#include "calendar/date_arithmetic.h"
#include "calendar/date_functions.h"
#include "core/routine.h"

#include <algorithm>
#include <ctime>

namespace qx {

namespace {

date today() {
    const std::time_t now = std::time(nullptr);
    const std::tm* const local = std::localtime(&now);
    return date(local->tm_year + 1900, local->tm_mon + 1, local->tm_mday);
}

} // namespace

date lease_end(View<date> BrksOrExp, int Brk) {
    Routine here{"exporbrk", Routine::internal};
    here.arguments(QX_NAMED(BrksOrExp, Brk));
    if (Brk == no_break) return here.returning(date(DateCrit));
    int last = BrksOrExp.size();
    while (last > 0 && BrksOrExp(last).iszero()) --last;
    if (last == 0) return here.returning(date());
    if (Brk == first_break_from_today) {
        const date now = today();
        if (BrksOrExp(last) <= now) {
            here.info("No break found, returning most recent break");
            return here.returning(date(BrksOrExp(last)));
        }
        int n = last;
        while (n > 1 && BrksOrExp(n - 1) > now) --n;
        return here.returning(date(BrksOrExp(n)));
    }
    const int n = Brk == last_break ? last : std::clamp(Brk, 1, last);
    return here.returning(date(BrksOrExp(n)));
}

date lease_end(const Routine& here, View<date> BrksOrExp, int Brk, const date& AbFin) {
    const date end = lease_end(BrksOrExp, Brk);
    if (AbFin.iszero()) return end;
    if (BrksOrExp.size() > 1) here.info("Breaks array getting reduced in size to just 1 entry");
    return std::min(end, AbFin);
}

date LeaseCalendar::after(const date& day, double months) const {
    if (option_present(move_by_day_count, ROpts)) return plusmonths(day, months, measure.DayCount, measure.Periods);
    return day.plusmonths(months);
}

date LeaseCalendar::rounded(const date& day) const {
    constexpr int nearest = 0;
    if (!rounds() || day.iszero() || day >= DateCrit) return day;
    return DateRound(day, measure.Periods, nearest);
}

Relet next_relet(int number, const date& expiry, const Relets& relets, int RevMos, const LeaseCalendar& calendar,
                 const date& limit) {
    const double void_months = relets.void_months(number);
    const date start = calendar.after(expiry, void_months);
    const date rent_start = calendar.after(start, relets.rent_free_months(number));
    const date first_review = RevMos == 0 ? date() : calendar.after(start, RevMos);
    const date end = calendar.after(expiry, relets.term_months(number) + void_months);
    return {number, calendar.rounded(start), calendar.rounded(rent_start), calendar.rounded(first_review),
            std::min(calendar.rounded(end), limit)};
}

date end_of_chain(const date& first_expiry, const Relets& relets, const LeaseCalendar& calendar) {
    constexpr int no_reviews = 0;
    date expiry = first_expiry;
    for (int i = 1; i <= Relets::most && expiry < DateCrit; ++i) {
        const double years = (relets.term_months(i) + relets.void_months(i)) / 12.0;
        if (expiry.decimal_year() + years >= DateCrit.decimal_year()) return DateCrit;
        expiry = next_relet(i, expiry, relets, no_reviews, calendar, DateCrit).expiry;
    }
    return expiry;
}

} // namespace qx
