// The calendar of a lease and of the relets after it (realestate/lease.h): when things happen, what happens in a
// period, and which dates of a lease follow from others.
//
// A list of reviews goes on every RevMos months after its last date, up to the end of the lease; with RevMos of 0 it
// does not. Relets are reviewed every RevMos months after their start. What would be a review on or after the end of
// its lease is none. All entries of BrksOrExp but the last are breaks, as far as the lease reaches; relets have none.
#pragma once

#include "calendar/time_period.h"
#include "core/maybe.h"
#include "core/switches.h"
#include "realestate/lease.h"

namespace qx {

/// The dates of a lease.
struct LeaseTerms {
    using takes = Takes<date, date, Range<date>, Range<date>, int>;
    const date& LeaseStartDate;
    const date& RentStart;
    View<date> BrksOrExp, Reviews;
    int RevMos; ///< 0 to 1000 months
};

/// What happens in the course of leases.
enum class LeaseEvent { review, lease_start, rent_start, expiry, lease_break };
inline constexpr SwitchValue lease_event_values[] = {
    {static_cast<int>(LeaseEvent::review), "Rent review"},
    {static_cast<int>(LeaseEvent::lease_start), "Lease start"},
    {static_cast<int>(LeaseEvent::rent_start), "Rent start"},
    {static_cast<int>(LeaseEvent::expiry), "Expiry"},
    {static_cast<int>(LeaseEvent::lease_break), "Break"},
};

/// The whole part of RentDateSwitch.
inline constexpr SwitchValue rent_date_values[] = {
    {0, "Next review", "Determining Next Review ..."},
    {1, "Last review", "Determining Last Review ..."},
    {2, "Next lease start", "Determining Next Lease Start Date..."},
    {3, "Last lease start", "Determining Last Lease Start Date..."},
    {4, "Next rent start", "Determining Next Rent Start Date..."},
    {5, "Last rent start", "Determining Last Rent Start Date..."},
    {6, "Next expiry", "Determining Next Expiry ..."},
    {7, "Last expiry", "Determining Last Expiry ..."},
    {8, "Next break", "Determining Next Break ..."},
    {9, "Last break", "Determining Last Break ..."},
};

/// The date of an event. The whole part of RentDateSwitch is twice the place of the event in LeaseEvent for the next
/// one after TheDate, and one more for the last one up to it; its first decimal digit is how many more events to go on.
/// On the date of an event RoundDown takes the next one as that date, and the last one as the one before. The zero date
/// if there is none. Throws illegalvalue for another switch, errlibmin and errlibmax for RevMos outside its limits,
/// errinpmin for a relet without a term before the date, faultycalcs for a date beyond the hundredth relet.
date RentDateInfo(const date& TheDate, const LeaseTerms& lease, double RentDateSwitch, const Relets& relets,
                  bool RoundDown, int Brk);

/// True if an event, by its place in LeaseEvent, happens in a period. Throws illegalvalue for another RentEventType.
bool RentEventOccurs(const timeperiod& Time, const LeaseTerms& lease, int RentEventType, const Relets& relets, int Brk);

/// The first of the events in the order of LeaseEvent that happens in a period, from 1; 0 if none does.
double RentEvent(const timeperiod& Time, const LeaseTerms& lease, const Relets& relets, int Brk);

/// The dates of a lease, as far as they are known.
struct LeaseFacts {
    using takes = Takes<date, Maybe<double>, date, Range<date>, Range<date>, date>;
    const date& LeaseStartOpt;
    const Maybe<double>& RentFreeMonths;
    const date& RentStartDate;
    View<date> ReviewsOpt, BreaksOpt;
    const date& LeaseExpiryDate;
};

/// One fact of a lease, as given or else from the others. The whole part of LeaseInfoSwitch says which: 0 the expiry,
/// 1 the start of the rent, 2 the start of the lease, 3 a break, 4 the months without rent, 5 the term in years, 6 a
/// review; for breaks and reviews its first decimal digit is their number. A date comes back as its number.
/// Without LIOptions the first source that gives the fact counts; with 1 all sources must agree, if need be with an
/// expiry that is a day later. Throws illegalvalue for another switch, insufficientinputs, errinconsistent, and
/// errlibmin and errlibmax for a DayCount outside 0 to 999.
double LeaseInfo(const LeaseFacts& facts, const Maybe<double>& TermYrsOpt, double LeaseInfoSwitch, int LIOptions,
                 const Measure& measure);

/// Which dates LeaseDates lists, as bits of a sum.
enum LeaseDateOption : int {
    main_rent_start = 1,
    main_expiry = 2,
    fixed_review = 4,
    break_date = 8,
    relet_lease_start = 16,
    relet_rent_start = 32,
    relet_expiry = 64,
    market_review = 128, ///< reviews that recur every RevMos, of the lease and of its relets
    all_lease_dates = 255,
};
/// With the words of their labels, which for dates of relets follow the number of the relet.
inline constexpr SwitchValue lease_date_values[] = {
    {main_rent_start, "Main Lease Rent Start"},
    {main_expiry, "Main Lease Expiry"},
    {fixed_review, "Fixed Review"},
    {break_date, "Break"},
    {relet_lease_start, "Relet Lease Start", " Lease Start"},
    {relet_rent_start, "Relet Rent Start", " Rent Start"},
    {relet_expiry, "Relet Expiry", " Expiry"},
    {market_review, "Market Review", " Mkt Rev "},
};

/// The dates of a lease and its relets from AbStart to AbFin in ascending order; zero dates bound nothing. AbFin ends
/// the lease or relet that it falls into. Throws errlibmin and errlibmax for RevMos outside 0 to 1000 months, errinpmin
/// for a relet without a term.
WorkList<date> LeaseDates(const date& RentStart, View<date> BrksOrExp, int RevMos, const Relets& relets,
                          View<date> ReviewsOpt, const date& AbStart, const date& AbFin, int LDateOptions, int Brk);

} // namespace qx
