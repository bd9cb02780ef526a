// AnnualSequence: dates that recur every year, as payment dates, period boundaries, annual holidays or seasons.
//
// An entry is a figure mm.dd: 3.25 is 25 March and 2.29 the last day of February. A negative first entry makes the
// whole sequence one of payments in arrears; entries are held as positive figures. Where a BusDaySwitch is set,
// every date of the sequence is rolled forward to the next business day.
//
// A worksheet argument becomes a sequence in one of these ways:
//
//     sequence.clear(name, default_sequence);         // first, always
//     sequence.setdefault(preset);                    // omitted or blank
//     sequence.set_figure(figure, preset);            // one number: a preset, one mm.dd date, or a rolling float
//     sequence.start_list(cells);                     // several cells: their number, then
//     sequence.append(figure);  ...                   //   each figure until the first blank after the first cell
//     sequence.validate();                            // last, always: the check of the whole
//
// The entries of a preset are there at once; nothing is expanded later.
#pragma once

#include "calendar/date.h"
#include "calendar/default_sequence.h"
#include "core/range.h"
#include "core/switches.h"

#include <string>

namespace qx {

class AnnualSequence : public Range<double, 100> {
  public:
    static constexpr int unset = 999;
    static constexpr int own_list = 1000;
    static constexpr double highest_entry = 366.0;
    static constexpr double lowest_entry = -12.31;

    AnnualSequence() { clear(); }
    /// A preset sequence, under the name of a variable.
    explicit AnnualSequence(int preset, const char* name = "AnnSeq") {
        clear(name);
        setpreset(preset);
    }
    AnnualSequence& operator=(const AnnualSequence&) = default;

    /// No entries, no preset, no rolling. The name is that of the argument; it must outlive the sequence.
    void clear(const char* name = "AnnSeq", DefaultSequence default_sequence = DefaultSequence::in_advance);
    /// Takes a preset, unless one is fixed already: 0 is 4, "Quarterly in Advance". A preset without entries of its
    /// own (14, 999, any without a case) takes the default sequence.
    void setpreset(int preset);
    /// The argument was omitted: the preset of the function, and missing() is true.
    void setdefault(int preset);
    /// One number, the whole argument: zero the default; a whole -13, -12, -4, -2, -1, 1, 2, 4, 12 or 13 to 19 a
    /// preset; a decimal figure from 1 to 12.31 (or negative) a single date; above 20 up to 1000 a rolling float
    /// with the dates of the default. Throws errlibannseq for any other. `preset` is the function's default (0 where
    /// the argument is mandatory).
    void set_figure(double figure, int preset);
    /// Room for a list of figures. Throws outofrange above 100.
    void start_list(int cells);
    /// One more figure of a list. Throws errlibmax above 366 and errlibmin below -12.31; reduces a figure from 13 to
    /// 365 by whole twelves.
    void append(double figure);
    /// Stores a figure at a place from 1; the first decides on arrears.
    void setentry(int i, double figure);
    /// Checks the entries: ascending, months 1 to 12, days that there are. Days past the end of a short month go
    /// back to it. Throws errlibannseq.
    void validate();
    /// The sequence of 1, 2, 3, 4, 6 or 12 payments a year from a first figure on (13: English quarter days),
    /// ascending. Month ends stay month ends under EOMRule. Throws errlibillegalswitch and errlibannseq.
    void generate(double first, int NumPmtsPerYr, bool EOMRule);

    // Entries are written by the operations above only.
    double operator()(int i) const { return get(i); }
    /// The figure of an entry as a user writes it: the first is negative in arrears.
    double figure(int i) const { return i == 1 && arrears_ ? -get(i) : get(i); }

    int preset() const { return preset_; }
    bool arrears() const { return arrears_; }
    bool missing() const { return missing_; }
    int BusDaySwitch() const { return bus_day_switch_; }
    int rolling_convention() const { return rolling_convention_; }
    void setrolling(int BusDaySwitch, int convention) {
        bus_day_switch_ = BusDaySwitch;
        rolling_convention_ = convention;
    }

    struct MonthDay {
        int month, day;
    };
    /// What a positive figure mm.dd says.
    static MonthDay month_day(double figure);

    /// A date of the sequence with its place in it. The number counts the dates of all years: year * size + index.
    struct Found {
        date when;
        int index;
        int number;
    };
    /// The last date on or before a date, or strictly before it.
    Found findprev(const date& from, bool strict) const;
    /// The first date after a date, or on it if inclusive.
    Found findnext(const date& from, bool inclusive) const;
    date prevdate(const date& from, bool strict) const;
    date nextdate(const date& from, bool inclusive) const;
    /// The same, a day later where the sequence is in arrears and the shift is asked for.
    date prevdateshift(const date& from, bool strict, bool shift) const;
    date nextdateshift(const date& from, bool inclusive, bool shift) const;
    /// The number of the last date on or before a date, or strictly before it.
    int seqnumber(const date& from, bool strict) const { return findprev(from, strict).number; }
    /// True if the date is one of the sequence.
    bool isdate(const date& day) const { return nextdate(day, true) == day; }

    /// Periods from one date to another, each period counting 1 and a part of one by its share of the days. 0 unless
    /// date1 is before date2.
    double periodsbetween(const date& date1, const date& date2) const;
    double monthsbetween(const date& date1, const date& date2) const;
    double yearsbetween(const date& date1, const date& date2) const;
    /// The date |n| dates of the sequence on, or back. Throws errliboveriterated at 99.
    date dateplusperiods(const date& from, int n) const;

    /// True if both hold the same dates, the same arrears and the same rolling.
    bool same_as(const AnnualSequence& other) const;

  private:
    friend class SequenceCursor;
    struct Place {
        int year, index;
    };
    /// The dates of the sequence before a date and on or after it.
    struct Bracket {
        date before, after;
        int before_number, after_number;
        bool exact; ///< the date is one of the sequence; the dates are not worked out
    };

    date on(const Place& place) const;
    int number_of(const Place& place) const { return place.year * size() + place.index; }
    Found rolled(const Place& place) const;
    /// The dates before one that rolling has carried past a date, back to the first that it has not.
    Found unrolled_past(Found found, Place place, const date& from, bool strict) const;
    Bracket bracket(const date& day) const;
    Place place_before(const Place& place) const;
    Place place_after(const Place& place) const;
    /// That of the last date on or before a date, or strictly before it.
    Place prevplace(const date& from, bool strict) const;
    void store(int i, double figure);
    void expand();
    template <class E, class... Pieces>
    [[noreturn]] void fail(const Pieces&... pieces) const;

    // Not for a sequence.
    using Range::set;
    using Range::setxy;

    MonthDay month_days_[capacity + 1]; ///< the entries as months and days
    int preset_ = unset;
    bool presetset_ = false;
    DefaultSequence default_ = DefaultSequence::in_advance;
    bool arrears_ = false;
    bool missing_ = false;
    int bus_day_switch_ = 0;
    int rolling_convention_ = 0;
};

/// Finds dates of a sequence near those that it has found last, as a walk from period to period asks for them: it works
/// out each date once. The answers are those of the sequence, which must outlive it.
class SequenceCursor {
  public:
    explicit SequenceCursor(const AnnualSequence& sequence) : sequence_(sequence) {}

    bool arrears() const { return sequence_.arrears(); }
    const AnnualSequence& sequence() const { return sequence_; }
    date prevdate(const date& from, bool strict) {
        return plain(from) ? around(from, strict)[0] : sequence_.prevdate(from, strict);
    }
    date nextdate(const date& from, bool inclusive) {
        return plain(from) ? around(from, inclusive)[1] : sequence_.nextdate(from, inclusive);
    }
    bool isdate(const date& day) { return nextdate(day, true) == day; }

  private:
    /// True if nothing rolls, and date numbers are in the order of the calendar.
    bool plain(const date& from) const { return sequence_.BusDaySwitch() == 0 && from.isregular(); }
    /// The last date of the sequence on or before a date, or strictly before it, and the one that follows.
    const date* around(const date& from, bool strict) {
        const int day = from.dtn() - static_cast<int>(strict);
        const date* const period = day < dates_[1].dtn() ? dates_ : dates_ + 1;
        return period[0].dtn() <= day && day < period[1].dtn() ? period : move(from, strict);
    }
    const date* move(const date& from, bool strict);

    const AnnualSequence& sequence_;
    date dates_[3]; ///< dates of the sequence, one after the other
    AnnualSequence::Place last_{0, 0};
};

/// The preset sequences.
inline constexpr SwitchValue sequence_values[] = {
    {-1, "Annually in arrear", "annually (1 Jan payment of Jul-Dec accrual) "},
    {-2, "BiAnnually in arrear", "biannually (1 Jul payment of Jan-Jun accrual etc) "},
    {-4, "Quarterly in arrear", "quarterly (1 April payment of Jan-Mar accrual) "},
    {-12, "Monthly in arrear", "monthly (1 Jan payment of Dec accrual, etc) "},
    {-13, "Real Estate English Quarter Days in arrear", "English Quarter Days (25Mar,24Jun,29Sep,25Dec) in arrear"},
    {1, "Annually in advance", "annually (1Jan) "},
    {2, "BiAnnually in advance", "biannually (1Jan,1Jul) "},
    {4, "Quarterly in advance", "quarterly (1Jan,1Apr,1Jul,1Oct) "},
    {12, "Monthly in advance", "monthly (first day of month) "},
    {13, "Real Estate English Quarter Days in advance", "English Quarter Days (25Mar,24Jun,29Sep,25Dec) "},
    {14, "Continuous", "Continuous "},
    {15, nullptr, "10 monthly periods from April 1st "},
    {AnnualSequence::unset, nullptr, "Default: quarterly (1Jan,1Apr,1Jul,1Oct) "},
};

/// The words of a preset: "quarterly (1Jan,1Apr,1Jul,1Oct) ".
std::string preset_text(int preset);
/// A sequence in words: its preset or its dates, whether in arrears or in advance, and how its dates roll. The opening
/// for a list of periods is " periods commencing " or " periods up to and including ".
std::string describe_periods(const AnnualSequence& sequence);
/// The same, opening with " in advance, " or " in arrear, ".
std::string describe(const AnnualSequence& sequence);

} // namespace qx
