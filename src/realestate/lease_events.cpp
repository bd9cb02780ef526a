#include "realestate/lease_events.h"

#include "calendar/date_arithmetic.h"
#include "calendar/recurrence.h"
#include "core/routine.h"
#include "projections/constant_rate.h"
#include "realestate/lease_dates.h"
#include "realestate/relet_terms.h"

#include <cmath>
#include <iterator>
#include <optional>

namespace qx {

namespace {

/// The events of a lease and its relets.
class LeaseEvents {
  public:
    LeaseEvents(const Routine& here, const LeaseTerms& terms, const Relets& relets, int Brk)
        : here_(here), terms_(terms), relets_(relets), main_{{0, terms.LeaseStartDate, lease_end(terms.BrksOrExp, Brk)},
                                                             terms.RentStart,
                                                             last_of(terms.Reviews)} {}

    /// Goes to the lease in which a day lies, or in whose void before it. Throws errinpmin and faultycalcs.
    void locate(const date& day) const {
        Lease lease = main_;
        while (day > lease.span.expiry) {
            if (lease.span.number == Relets::most)
                here_.fail<faultycalcs>("TheDate", "Date ", day, " Current Relet Number=", lease.span.number,
                                        " Current Commencement=", lease.span.start,
                                        " Last Expiry =", lease.span.expiry);
            lease = after(lease);
            if (iszero(relets_.term_months(lease.span.number))) here_.fail<errinpmin>("RelTerm_s", no_relet_term);
        }
        here_.info("Relet number ", lease.span.number, " from ", lease.span.start, " to ", lease.span.expiry);
    }

    /// The first event of a kind on or after a day; the zero date if there is none.
    date next(LeaseEvent event, const date& day) const {
        Lease lease = main_;
        while (true) {
            if (const date found = next_in(lease, event, day); !found.iszero()) return found;
            if (!goes_on(lease, event)) return {};
            lease = after(lease);
        }
    }
    /// The last one on or before a day; the zero date if there is none.
    date last(LeaseEvent event, const date& day) const {
        date found;
        Lease lease = main_;
        while (lease.span.start <= day) {
            if (const date in_lease = last_in(lease, event, day); !in_lease.iszero()) found = in_lease;
            if (!goes_on(lease, event)) break;
            lease = after(lease);
        }
        return found;
    }
    bool occurs(LeaseEvent event, const timeperiod& period) const {
        const date day = next(event, period.from());
        return !day.iszero() && day < period.to();
    }

  private:
    struct Lease {
        ChainLease span;
        date rent_start;
        date reviewed_from; ///< the date from which reviews recur; zero for none
        bool original() const { return span.number == 0; }
    };

    static date last_of(View<date> list) {
        date last;
        for (const date& day : list) last = std::max(last, day);
        return last;
    }
    Lease after(const Lease& lease) const {
        const int n = lease.span.number + 1;
        const double void_months = relets_.void_months(n);
        const ChainLease span = lease.span.next(void_months, relets_.term_months(n));
        return {span, span.start.plusmonths(relets_.rent_free_months(n)),
                terms_.RevMos == 0 ? date() : lease.span.expiry.plusmonths(terms_.RevMos + void_months)};
    }
    bool goes_on(const Lease& lease, LeaseEvent event) const {
        if (lease.span.number == Relets::most || lease.span.expiry >= DateCrit) return false;
        if (event == LeaseEvent::lease_break) return false;
        if (event == LeaseEvent::review && terms_.RevMos == 0) return false;
        if (!lease.original() && lease.span.expiry <= lease.span.start) return false;
        return true;
    }
    date only_date(const Lease& lease, LeaseEvent event) const {
        switch (event) {
        case LeaseEvent::lease_start:
            return lease.span.start;
        case LeaseEvent::rent_start:
            return lease.rent_start;
        default:
            return lease.span.expiry < DateCrit ? lease.span.expiry : date();
        }
    }
    bool is_break(int i, const Lease& lease) const {
        const date& day = terms_.BrksOrExp(i);
        return !day.iszero() && day <= lease.span.expiry && day < last_of(terms_.BrksOrExp);
    }
    date next_in(const Lease& lease, LeaseEvent event, const date& day) const {
        date found;
        const auto consider = [&](const date& at) {
            if (!at.iszero() && at >= day && (found.iszero() || at < found)) found = at;
        };
        if (event == LeaseEvent::review) {
            if (lease.original())
                for (const date& review : terms_.Reviews) consider(review);
            if (found.iszero() && terms_.RevMos > 0 && !lease.reviewed_from.iszero())
                consider(Recurrence(lease.reviewed_from, terms_.RevMos).on_or_after(day));
            return found < lease.span.expiry ? found : date();
        }
        if (event == LeaseEvent::lease_break) {
            for (int i = 1; i <= terms_.BrksOrExp.size(); ++i)
                if (is_break(i, lease)) consider(terms_.BrksOrExp(i));
            return found;
        }
        consider(only_date(lease, event));
        return found;
    }
    date last_in(const Lease& lease, LeaseEvent event, const date& day) const {
        date found;
        const auto consider = [&](const date& at) {
            if (!at.iszero() && at <= day && at > found) found = at;
        };
        if (event == LeaseEvent::review) {
            const date until = std::min(day, lease.span.expiry.plusdays(-1));
            if (lease.original())
                for (const date& review : terms_.Reviews)
                    if (review <= until) consider(review);
            if (terms_.RevMos > 0 && !lease.reviewed_from.iszero())
                consider(Recurrence(lease.reviewed_from, terms_.RevMos).on_or_before(until));
        } else if (event == LeaseEvent::lease_break) {
            for (int i = 1; i <= terms_.BrksOrExp.size(); ++i)
                if (is_break(i, lease)) consider(terms_.BrksOrExp(i));
        } else {
            consider(only_date(lease, event));
        }
        return found;
    }

    const Routine& here_;
    const LeaseTerms& terms_;
    const Relets& relets_;
    Lease main_;
};

/// A switch of a whole part and a decimal digit.
struct DecimalSwitch {
    int whole, digit;
    explicit DecimalSwitch(double value)
        : whole(qx::whole(value)), digit(static_cast<int>((value - qx::whole(value)) * 10.0 + 0.5)) {}
};

} // namespace

date RentDateInfo(const date& TheDate, const LeaseTerms& lease, double RentDateSwitch, const Relets& relets,
                  bool RoundDown, int Brk) {
    Routine here{"RentDateInfo"};
    here.inputs(TheDate, lease, RentDateSwitch, relets, RoundDown, Brk);
    here.limit(lease.RevMos, review_months_limits, "RevMos");
    const DecimalSwitch chosen{RentDateSwitch};
    const SwitchValue* const asked = SwitchTable(rent_date_values).find(chosen.whole);
    if (!(RentDateSwitch >= 0.0) || asked == nullptr)
        here.fail<illegalvalue>("RentDateSwitch", "There is no RentDateSwitch of ", RentDateSwitch);
    const LeaseEvents events{here, lease, relets, Brk};
    events.locate(TheDate);
    here.info(asked->words);
    const LeaseEvent event{chosen.whole / 2};
    date found;
    if (chosen.whole % 2 == 0) {
        found = events.next(event, RoundDown ? TheDate : TheDate.plusdays(1));
        for (int i = 1; i <= chosen.digit && !found.iszero(); ++i) found = events.next(event, found.plusdays(1));
    } else {
        found = events.last(event, RoundDown ? TheDate.plusdays(-1) : TheDate);
        for (int i = 1; i <= chosen.digit && !found.iszero() && found > lease.LeaseStartDate; ++i)
            found = events.last(event, found.plusdays(-1));
    }
    return here.returning("DateResult", found);
}

bool RentEventOccurs(const timeperiod& Time, const LeaseTerms& lease, int RentEventType, const Relets& relets,
                     int Brk) {
    Routine here{"RentEventOccurs"};
    here.inputs(Time, lease, RentEventType, relets, Brk);
    here.limit(lease.RevMos, review_months_limits, "RevMos");
    if (SwitchTable(lease_event_values).find(RentEventType) == nullptr)
        here.fail<illegalvalue>("RentEventType", "There is no RentEventType of ", RentEventType);
    if (!runs_forward(here, Time)) return here.returning(false);
    return here.returning(LeaseEvents{here, lease, relets, Brk}.occurs(LeaseEvent{RentEventType}, Time));
}

double RentEvent(const timeperiod& Time, const LeaseTerms& lease, const Relets& relets, int Brk) {
    Routine here{"RentEvent"};
    here.inputs(Time, lease, relets, Brk);
    here.limit(lease.RevMos, review_months_limits, "RevMos");
    if (!runs_forward(here, Time)) return here.returning(0.0);
    const LeaseEvents events{here, lease, relets, Brk};
    /// The first event of a kind on or after a day. It is also the first from any later day up to its own.
    struct NextEvent {
        date from, day;
        bool holds_from(const date& later) const { return from <= later && (day.iszero() || later <= day); }
    };
    Kept<NextEvent> known{here, static_cast<int>(std::size(lease_event_values))};
    return here.returning(over(here, Time, [&](const timeperiod& period) {
        if (!runs_forward(here, period)) return 0.0;
        int n = 0;
        for (const SwitchValue& event : lease_event_values) {
            const auto find = [&] {
                return NextEvent{period.from(), events.next(LeaseEvent{event.code}, period.from())};
            };
            NextEvent& next = known(++n, find);
            if (!next.holds_from(period.from())) next = find();
            if (!next.day.iszero() && next.day < period.to()) return event.code + 1.0;
        }
        return 0.0;
    }));
}

// --- What follows from what ------------------------------------------------------------------------------------------

namespace {

enum LeaseFact : int {
    fact_expiry = 0,
    fact_rent_start = 1,
    fact_lease_start = 2,
    fact_break = 3,
    fact_rent_free = 4,
    fact_term = 5,
    fact_review = 6,
};
constexpr int all_sources_agree = 1;

bool alike(const date& a, const date& b) { return a == b; }
bool alike(double a, double b) { return isequal(a, b); }

/// A fact of several sources.
template <class T>
class Answer {
  public:
    Answer(const Routine& here, bool strict) : here_(here), strict_(strict) {}
    /// Takes what a source gives, if anything.
    Answer& offer(const char* source, const std::optional<T>& value) {
        if (!value || (found_ && !strict_)) return *this;
        here_.info(source, " ", *value);
        agreed_ = agreed_ && (!found_ || alike(*found_, *value));
        if (!found_) found_ = value;
        return *this;
    }
    bool none() const { return !found_; }
    bool inconsistent() const { return !agreed_; }
    const T& value() const { return *found_; }

  private:
    const Routine& here_;
    bool strict_;
    bool agreed_ = true;
    std::optional<T> found_;
};

/// The known facts of a lease, and what follows from two or three of them.
class Facts {
  public:
    Facts(const Routine& here, const LeaseFacts& facts, const Maybe<double>& TermYrsOpt, const date& expiry,
          bool strict, const Measure& measure)
        : here_(here), strict_(strict), measure_(measure), lease_start_(given(facts.LeaseStartOpt)),
          rent_start_(given(facts.RentStartDate)), expiry_(given(expiry)) {
        if (facts.RentFreeMonths.is_given()) rent_free_ = facts.RentFreeMonths.value;
        if (TermYrsOpt.is_given() && !iszero(TermYrsOpt.value)) term_ = TermYrsOpt.value;
        if (!rent_free_ && !rent_start_ && !strict) {
            here.info("There is insufficient information to determine the rentfree, but strict ambiguity testing is "
                      "turned off, so zero months is assumed");
            rent_free_assumed_ = true;
        }
    }

    Answer<date> expiry() const {
        return Answer<date>(here_, strict_)
            .offer("Lease Expiry as input:", expiry_)
            .offer("Lease Expiry from Lease Start and Term:", moved(lease_start_, months_of_term()))
            .offer("Lease Expiry from Rent Start, Rent Free and Term:", moved(start_by_rent(), months_of_term()));
    }
    Answer<date> rent_start() const {
        return Answer<date>(here_, strict_)
            .offer("Rent Start as input :", rent_start_)
            .offer("Rent Start determined from Lease Start and Rent Free:", moved(lease_start_, rent_free()))
            .offer("Rent Start determined from Lease Expiry, Rent Free and Term:",
                   moved(start_by_expiry(), rent_free()));
    }
    Answer<date> lease_start() const {
        return Answer<date>(here_, strict_)
            .offer("Lease Start as input :", lease_start_)
            .offer("Lease Start determined from Lease Expiry and Term:", start_by_expiry())
            .offer("Lease Start determined from Rent Start and Rent Free:", start_by_rent());
    }
    Answer<double> months_free() const {
        Answer<double> answer(here_, strict_);
        answer.offer("Rent Free as input :", rent_free_)
            .offer("Rent Free determined from Lease Start Date and Rent Start Date:",
                   months_between(lease_start_, rent_start_))
            .offer("Rent Free determined from Lease Expiry Date, Term and Rent Start :",
                   months_between(start_by_expiry(), rent_start_));
        if (answer.none() && rent_free_assumed_) answer.offer("Rent Free assumed :", 0.0);
        return answer;
    }
    Answer<double> term() const {
        return Answer<double>(here_, strict_)
            .offer("Term as input :", term_)
            .offer("Term determined from Lease Start and Expiry :", years(months_between(lease_start_, expiry_)))
            .offer("Term determined from Rent Start and Expiry :", years(months_between(start_by_rent(), expiry_)));
    }

  private:
    using Day = std::optional<date>;
    using Number = std::optional<double>;

    static Day given(const date& day) { return day.iszero() ? Day() : Day(day); }
    static Number years(const Number& months) { return months ? Number(*months / 12.0) : Number(); }
    static Number minus(const Number& months) { return months ? Number(-*months) : Number(); }
    Number rent_free() const { return rent_free_assumed_ ? Number(0.0) : rent_free_; }
    Number months_of_term() const { return term_ ? Number(*term_ * 12.0) : Number(); }
    Day start_by_rent() const { return moved(rent_start_, minus(rent_free())); }
    Day start_by_expiry() const { return moved(expiry_, minus(months_of_term())); }
    Day moved(const Day& day, const Number& months) const {
        return day && months ? Day(plusmonths(*day, *months, measure_.DayCount, measure_.Periods)) : Day();
    }
    Number months_between(const Day& from, const Day& to) const {
        return from && to ? Number(diffmonths(*from, *to, measure_.DayCount, measure_.Periods)) : Number();
    }

    const Routine& here_;
    bool strict_;
    const Measure& measure_;
    Day lease_start_, rent_start_, expiry_;
    Number rent_free_, term_;
    bool rent_free_assumed_ = false;
};

/// The number that a fact is in a cell.
double in_cell(const Routine& here, const date& day) { return here.returning("DateResult", day).dtn(); }
double in_cell(const Routine& here, double number) { return here.returning(number); }

} // namespace

double LeaseInfo(const LeaseFacts& facts, const Maybe<double>& TermYrsOpt, double LeaseInfoSwitch, int LIOptions,
                 const Measure& measure) {
    Routine here{"LeaseInfo"};
    here.inputs(facts, TermYrsOpt, LeaseInfoSwitch, LIOptions, measure);
    here.change_note(178, "See Change in Behaviour 178, Nov-05 :LIOptions inserted before Periods and DayCount");
    measure.check(here);
    const DecimalSwitch chosen{LeaseInfoSwitch};
    if (!(LeaseInfoSwitch >= 0.0) || chosen.whole > fact_review)
        here.fail<illegalvalue>("LeaseInfoSwitch", "There is no LeaseInfoSwitch of ", LeaseInfoSwitch);
    const auto insufficient = [&] {
        here.fail<insufficientinputs>("", "Error INP32: Insufficient inputs to come to answer ");
    };
    if (chosen.whole == fact_break || chosen.whole == fact_review) {
        const View<date> list = chosen.whole == fact_break ? facts.BreaksOpt : facts.ReviewsOpt;
        if (list.empty()) insufficient();
        return in_cell(here, list(std::max(chosen.digit, 1)));
    }
    const bool strict = option_present(all_sources_agree, LIOptions);
    if (strict) here.info("Strict ambiguity testing");
    const date& given = facts.LeaseExpiryDate;
    const auto answer = [&](auto fact) {
        const auto derived = [&](const date& expiry) {
            return (Facts{here, facts, TermYrsOpt, expiry, strict, measure}.*fact)();
        };
        const auto first = derived(given);
        const bool again = first.inconsistent() && !given.iszero();
        if (again)
            here.info("On first pass there was an inconsistent result.  However, just in case your Expiry Date is one "
                      "day earlier than QX would like, I have incremented the Expiry Date and am recalculating.");
        const auto found = again ? derived(given.plusdays(1)) : first;
        if (found.inconsistent())
            here.fail<errinconsistent>("", "Error LIB67: Inconsistent. More than one non-identical answers were "
                                           "possible from the the inputs you specified ");
        if (found.none()) insufficient();
        return in_cell(here, found.value());
    };
    switch (chosen.whole) {
    case fact_expiry:
        return answer(&Facts::expiry);
    case fact_rent_start:
        return answer(&Facts::rent_start);
    case fact_lease_start:
        return answer(&Facts::lease_start);
    case fact_rent_free:
        return answer(&Facts::months_free);
    default:
        return answer(&Facts::term);
    }
}

// --- A list of dates -------------------------------------------------------------------------------------------------

namespace {

/// The dates of a lease that are asked for, in order, each with what it is.
class ListOfDates {
  public:
    ListOfDates(int options, const date& from, const date& to) : options_(options), from_(from), to_(to) {}

    /// Adds a date of a kind, of a relet (0 for the lease) and, if it is a recurring review, with its number.
    void add(LeaseDateOption kind, const date& day, int relet = 0, int review = 0) {
        if (!option_present(kind, options_) || day.iszero() || day >= DateCrit) return;
        if (day < from_ || (!to_.iszero() && day > to_)) return;
        dates_->append(day);
        kinds_->append(kind);
        places_->append(relet * 1000 + review);
        for (int i = dates_.size(); i > 1 && dates_(i) < dates_(i - 1); --i) {
            std::swap(dates_(i), dates_(i - 1));
            std::swap(kinds_(i), kinds_(i - 1));
            std::swap(places_(i), places_(i - 1));
        }
    }
    /// The reviews that recur from a date on, up to the end of a lease. Number `first` is the first one.
    void add_market_reviews(const date& start, int RevMos, const date& expiry, int relet) {
        for (int n = 1; RevMos > 0 && n < most_reviews; ++n) {
            const date day = start.plusmonths(n * RevMos, true);
            if (day >= expiry) return;
            add(market_review, day, relet, n);
        }
    }
    WorkList<date> labelled(const Routine& here) {
        if (here.traced())
            for (int i = 1; i <= dates_.size(); ++i) here.info(label(i), " ", dates_(i));
        return std::move(dates_);
    }

  private:
    static constexpr int most_reviews = 100;

    std::string label(int i) const {
        const std::string words = SwitchTable(lease_date_values).words(kinds_(i), "");
        const int relet = places_(i) / 1000;
        const std::string of_relet = text_of("Relet ", relet);
        if (kinds_(i) == market_review)
            return (relet == 0 ? "Main Lease" : of_relet) + words + std::to_string(places_(i) % 1000);
        return relet == 0 ? words : of_relet + words;
    }

    int options_;
    date from_, to_;
    WorkList<date> dates_;
    WorkList<int> kinds_, places_;
};

} // namespace

WorkList<date> LeaseDates(const date& RentStart, View<date> BrksOrExp, int RevMos, const Relets& relets,
                          View<date> ReviewsOpt, const date& AbStart, const date& AbFin, int LDateOptions, int Brk) {
    Routine here{"LeaseDates"};
    here.inputs(RentStart, BrksOrExp, RevMos, relets, ReviewsOpt, AbStart, AbFin, LDateOptions, Brk);
    here.limit(RevMos, review_months_limits, "RevMos");
    ListOfDates list{LDateOptions, AbStart, AbFin};
    const date& limit = AbFin.iszero() ? DateCrit : AbFin;
    const date expiry = lease_end(here, BrksOrExp, Brk, AbFin);
    date last_listed, last_break;
    list.add(main_rent_start, RentStart);
    for (const date& review : ReviewsOpt) {
        if (review < expiry) list.add(fixed_review, review);
        last_listed = std::max(last_listed, review);
    }
    if (!last_listed.iszero()) list.add_market_reviews(last_listed, RevMos, expiry, 0);
    for (const date& day : BrksOrExp) last_break = std::max(last_break, day);
    for (const date& day : BrksOrExp)
        if (day <= expiry && day < last_break) list.add(break_date, day);
    list.add(main_expiry, expiry);
    const LeaseCalendar calendar = plain_calendar();
    ReletWalk walk = relet_walk(here, relets, calendar, limit);
    walk(expiry, RentStart, limit, [&](const Relet& relet, const date&) {
        if (relet.lease_start >= limit) return false;
        if (relet.expiry <= relet.lease_start) here.fail<errinpmin>("RelTerm_s", no_relet_term);
        list.add(relet_lease_start, relet.lease_start, relet.number);
        list.add(relet_rent_start, relet.rent_start, relet.number);
        list.add_market_reviews(relet.lease_start, RevMos, relet.expiry, relet.number);
        list.add(relet_expiry, relet.expiry, relet.number);
        return true;
    });
    WorkList<date> dates = list.labelled(here);
    return here.returning("DateResult", std::move(dates));
}

} // namespace qx
