#include "calendar/annual_sequence.h"

#include "calendar/holidays.h"
#include "core/routine.h"

#include <algorithm>
#include <cmath>
#include <cstring>

namespace qx {

namespace {

constexpr int longest_walk = 99;   ///< steps of a walk along a sequence
constexpr int rolling_rounds = 10; ///< dates looked at for one that does not roll past a date
constexpr int longest_preset = 12;

/// The entries of a preset (ended by 0) as positive figures.
struct PresetSequence {
    int number;
    double entries[longest_preset + 1];
};

constexpr PresetSequence presets[] = {
    {-13, {3.25, 6.24, 9.29, 12.25}},
    {-12, {1.01, 2.01, 3.01, 4.01, 5.01, 6.01, 7.01, 8.01, 9.01, 10.01, 11.01, 12.01}},
    {-4, {1.01, 4.01, 7.01, 10.01}},
    {-2, {1.01, 7.01}},
    {-1, {1.01}},
    {1, {1.01}},
    {2, {1.01, 7.01}},
    {4, {1.01, 4.01, 7.01, 10.01}},
    {12, {1.01, 2.01, 3.01, 4.01, 5.01, 6.01, 7.01, 8.01, 9.01, 10.01, 11.01, 12.01}},
    {13, {3.25, 6.24, 9.29, 12.25}},
    {15, {1.01, 4.01, 5.01, 6.01, 7.01, 8.01, 9.01, 10.01, 11.01, 12.01}},
};
constexpr double calendar_quarters[] = {1.01, 4.01, 7.01, 10.01};

const PresetSequence* find_preset(int number) {
    for (const PresetSequence& each : presets)
        if (each.number == number) return &each;
    return nullptr;
}

constexpr int longest_month(int month) { return date::days_in_month(month, true); }

double figure_of(int month, int day) { return (100 * month + day) / 100.0; }

} // namespace

template <class E, class... Pieces>
void AnnualSequence::fail(const Pieces&... pieces) const {
    FunctionContext context("", name());
    context.setclass("AnnualSequence");
    if (tracing) context.setmessage(text_of(pieces...));
    throw E(context);
}

void AnnualSequence::clear(const char* name, DefaultSequence default_sequence) {
    setname(name);
    default_ = default_sequence;
    dimension(0);
    preset_ = unset;
    presetset_ = arrears_ = missing_ = false;
    bus_day_switch_ = rolling_convention_ = 0;
}

void AnnualSequence::setpreset(int preset) {
    if (preset == own_list) {
        preset_ = own_list;
        presetset_ = true;
        return;
    }
    if (presetset_) {
        if (traced())
            trace().info(text_of("SetPreset: Warning, attempt to reset a preset Date Sequence Value to ", preset,
                                 " ignored (remains ", preset_, ")"));
        return;
    }
    if (preset == 0) {
        preset = 4;
        if (traced())
            trace().info("SetPreset: Zero value for preset date sequence found, assuming 'Quarterly in Advance'");
    } else if (traced()) {
        trace().info(text_of("SetPreset: Date sequence type set to ", preset));
    }
    preset_ = preset;
    presetset_ = true;
    expand();
}

void AnnualSequence::expand() {
    const PresetSequence* const known = find_preset(preset_);
    const double* entries = known != nullptr ? known->entries : nullptr;
    int n = 0;
    if (entries != nullptr) {
        while (n < longest_preset && entries[n] != 0.0) ++n;
        arrears_ = preset_ < 0;
    } else if (default_ == DefaultSequence::none || (default_ == DefaultSequence::none_if_omitted && missing_)) {
        if (traced()) trace().info(text_of(name(), " (an Annual Sequence) was missing and will be ignored."));
    } else {
        arrears_ = default_ == DefaultSequence::in_arrears;
        entries = calendar_quarters;
        n = 4;
        if (traced())
            trace().info(text_of(name(), arrears_ ? " (an Annual Sequence) set to the Loan/Time Value of Money default "
                                                    "of calendar quarters in arrear (1st Jan payment for Oct-Dec "
                                                    "accrual, etc)"
                                                  : " (an Annual Sequence) set to the general default of calendar "
                                                    "quarters (1 Jan,1 Apr,1 Jul,1 Oct)"));
    }
    dimension(n);
    for (int i = 1; i <= n; ++i) store(i, entries[i - 1]);
}

void AnnualSequence::store(int i, double figure) {
    item(i) = figure;
    month_days_[i] = month_day(figure);
}

void AnnualSequence::setdefault(int preset) {
    missing_ = true;
    setpreset(preset);
}

void AnnualSequence::set_figure(double figure, int preset) {
    const double size = std::fabs(figure);
    const bool iswhole = qx::iszero(fraction(figure));
    if (qx::iszero(figure)) {
        setdefault(preset);
        if (traced())
            trace().info(preset_ == 4 ? std::string("Date Sequence set to 'Quarterly in Advance'")
                                      : text_of("Date Sequence set to a preset value of ", preset_));
        return;
    }
    if (iswhole && size < 20.0) {
        const int number = whole(figure);
        const int n = std::abs(number);
        if (n == 1 || n == 2 || n == 4 || n == 12 || n == 13 || number > 12) {
            setpreset(number);
            if (traced()) {
                trace().info(text_of("Date Sequence set to a preset value of ", number));
                trace().info(text_of("Annual Sequence Preset set to a preset option of ", number, " (",
                                     preset_text(number), ")"));
            }
            return;
        }
    }
    if (!iswhole && size > 1.0 && size <= 12.31) {
        setentry(1, figure);
        if (traced()) trace().info(text_of("Annual Sequence set to a single specific date sequence of ", figure));
        return;
    }
    if (figure > 20.0 && figure <= 1000.0) {
        const RollingFloat rolling = RollingFloat::of(figure);
        setrolling(rolling.switch_number, rolling.convention);
        setpreset(preset);
        return;
    }
    fail<errlibannseq>("Illegal single figure for a Date Sequence ", figure, ".");
}

void AnnualSequence::start_list(int cells) {
    dimension(cells);
    dimension(0);
}

void AnnualSequence::append(double figure) {
    if (figure > highest_entry) fail<errlibmax>("Annual sequence entry ", figure);
    if (figure < lowest_entry) fail<errlibmin>("Annual sequence entry ", figure);
    setentry(size() + 1, figure);
}

void AnnualSequence::setentry(int i, double figure) {
    if (i > size()) dimension(i);
    if (figure >= 13.0 && figure <= 365.0) {
        figure = std::fmod(figure, 12.0);
        if (traced()) trace().warning(text_of("Warning: Annual Sequence entry rectified: ", figure));
    }
    if (i == 1) arrears_ = figure < 0.0;
    store(i, std::fabs(figure));
    preset_ = own_list;
    presetset_ = true;
}

AnnualSequence::MonthDay AnnualSequence::month_day(double figure) {
    return {whole(figure), whole(fraction(figure) * 100.0 + 0.5)};
}

void AnnualSequence::validate() {
    for (int i = 1; i <= size(); ++i) {
        if (i > 1 && !(item(i) > item(i - 1))) fail<errlibannseq>("Annual Sequence values must be ascending");
        const auto [month, day] = month_days_[i];
        if (month < 1 || month > 12) fail<errlibannseq>("Month is not in the range 1 to 12, ", month);
        const int longest = longest_month(month);
        if (longest == 31) {
            if (day > longest) fail<errlibannseq>("More than 31 days in a month");
            continue;
        }
        if (month == 2 && traced()) {
            if (day == 28)
                trace().info(text_of("AnnSeq Validate: 28th February Specified. In leap years this will NOT infer the "
                                     "last day in February.  To specify the last day in February, use a value of 29 "
                                     "instead of 28, ",
                                     item(i)));
            else if (day == 29)
                trace().info("AnnSeq Validate: 29th February Specified.  This means the last day in February");
        }
        if (day <= longest) continue;
        store(i, figure_of(month, longest));
        if (traced())
            trace().info(text_of(month == 2 ? "AnnSeq Validate: More than 29 days specified in February, sequence date "
                                              "changed to 29Feb, "
                                            : "AnnSeq Validate: More than 30 days specified in April, June, Sept or "
                                              "Nov, sequence date changed to 30th of month, ",
                                 item(i)));
    }
}

void AnnualSequence::generate(double first, int NumPmtsPerYr, bool EOMRule) {
    if (NumPmtsPerYr == 13) {
        setpreset(13);
        return;
    }
    if (NumPmtsPerYr < 1 || NumPmtsPerYr > 12 || 12 % NumPmtsPerYr != 0)
        fail<errlibillegalswitch>("NumPmtsPerYr is ", NumPmtsPerYr, ", not 1, 2, 3, 4, 6, 12 or 13");
    const double x = std::fmod(std::fabs(first) - 1.0, 12.0) + 1.0;
    int month = whole(x);
    const int day = whole((x - month + 0.005) * 100.0);
    const bool monthend = EOMRule && month >= 1 && day == longest_month(month);
    dimension(0);
    setentry(1, std::copysign(figure_of(month, day), first));
    for (int i = 2; i <= NumPmtsPerYr; ++i) {
        month = (month + 12 / NumPmtsPerYr - 1) % 12 + 1;
        setentry(i, figure_of(month, monthend ? longest_month(month) : std::min(day, longest_month(month))));
    }
    heapsort(true);
    for (int i = 1; i <= size(); ++i) store(i, item(i));
    validate();
}

// --- Finding dates --------------------------------------------------------------------------------------------

inline date AnnualSequence::on(const Place& place) const {
    const auto [month, day] = month_days_[place.index];
    return date::in_month(place.year, month, day);
}

AnnualSequence::Found AnnualSequence::rolled(const Place& place) const {
    return {nextbd(on(place), bus_day_switch_), place.index, number_of(place)};
}

AnnualSequence::Place AnnualSequence::place_before(const Place& place) const {
    return place.index > 1 ? Place{place.year, place.index - 1} : Place{place.year - 1, size()};
}

inline AnnualSequence::Place AnnualSequence::place_after(const Place& place) const {
    return place.index < size() ? Place{place.year, place.index + 1} : Place{place.year + 1, 1};
}

inline AnnualSequence::Place AnnualSequence::prevplace(const date& from, bool strict) const {
    if (size() == 0) fail<errlibannseq>("The annual sequence has no dates");
    int i = from.month() * size() / 12; // the last one of the month if they are spread evenly
    while (i < size() && month_days_[i + 1].month <= from.month()) ++i;
    for (; i >= 1; --i) {
        const auto [month, day] = month_days_[i];
        if (month > from.month()) continue;
        if (month < from.month()) return {from.year(), i};
        const int limited = std::min(day, from.daysinmonth());
        if (limited < from.day() || (limited == from.day() && !strict)) return {from.year(), i};
    }
    return {from.year() - 1, size()};
}

AnnualSequence::Found AnnualSequence::findprev(const date& from, bool strict) const {
    const Place place = prevplace(from, strict);
    if (bus_day_switch_ == 0) return {on(place), place.index, number_of(place)};
    return unrolled_past(rolled(place), place, from, strict);
}

AnnualSequence::Found AnnualSequence::unrolled_past(Found found, Place place, const date& from, bool strict) const {
    for (int round = 1; round < rolling_rounds && (strict ? found.when >= from : found.when > from); ++round) {
        place = place_before(place);
        found = rolled(place);
    }
    return found;
}

AnnualSequence::Found AnnualSequence::findnext(const date& from, bool inclusive) const {
    const Place place = place_after(prevplace(from, inclusive));
    if (bus_day_switch_ == 0) return {on(place), place.index, number_of(place)};
    Found earlier = rolled(place_before(place)); // rolling may have carried it past the given date
    if (inclusive ? earlier.when >= from : earlier.when > from) return earlier;
    return rolled(place);
}

date AnnualSequence::prevdate(const date& from, bool strict) const {
    return bus_day_switch_ == 0 ? on(prevplace(from, strict)) : findprev(from, strict).when;
}

date AnnualSequence::nextdate(const date& from, bool inclusive) const {
    return bus_day_switch_ == 0 ? on(place_after(prevplace(from, inclusive))) : findnext(from, inclusive).when;
}

date AnnualSequence::prevdateshift(const date& from, bool strict, bool shift) const {
    const date found = prevdate(from, strict);
    return shift && arrears_ ? found.plusdays(1) : found;
}

date AnnualSequence::nextdateshift(const date& from, bool inclusive, bool shift) const {
    const date found = nextdate(from, inclusive);
    return shift && arrears_ ? found.plusdays(1) : found;
}

const date* SequenceCursor::move(const date& from, bool strict) {
    const int day = from.dtn() - static_cast<int>(strict);
    if (last_.index > 0) {
        dates_[0] = dates_[1];
        dates_[1] = dates_[2];
        last_ = sequence_.place_after(last_);
        dates_[2] = sequence_.on(last_);
        if (dates_[1].dtn() <= day && day < dates_[2].dtn()) return dates_ + 1;
    }
    const auto place = sequence_.prevplace(from, strict);
    dates_[0] = dates_[1] = sequence_.on(place);
    last_ = sequence_.place_after(place);
    dates_[2] = sequence_.on(last_);
    return dates_ + 1;
}

// --- Periods --------------------------------------------------------------------------------------------------

AnnualSequence::Bracket AnnualSequence::bracket(const date& day) const {
    const Place before = prevplace(day, true), after = place_after(before);
    if (bus_day_switch_ != 0) {
        const Found last = rolled(before);
        const Found next = last.when >= day ? last : rolled(after); // rolling may have carried it past the date
        const Found previous = unrolled_past(last, before, day, true);
        return {previous.when, next.when, previous.number, next.number, false};
    }
    const auto [month, day_of_month] = month_days_[after.index];
    const bool exact =
        after.year == day.year() && month == day.month() && std::min(day_of_month, day.daysinmonth()) == day.day();
    if (exact) return {day, day, number_of(before), number_of(after), true};
    return {on(before), on(after), number_of(before), number_of(after), false};
}

double AnnualSequence::periodsbetween(const date& date1, const date& date2) const {
    if (date2 <= date1) return 0.0;
    const auto days = [](const date& from, const date& to) { return static_cast<double>(days_between(from, to)); };
    const Bracket first = bracket(date1);
    if (first.after >= date2) return safe_divide(days(date1, date2), days(first.before, first.after));
    const Bracket last = bracket(date2);
    if (traced() && (first.before > date1 || date2 > last.after))
        trace().warning("                    Warning: Inconsistent periods (Bug in date arithmetic, please notify "
                        "whoever supports this add-in)");
    const double start = first.exact ? 0.0 : safe_divide(days(date1, first.after), days(first.before, first.after));
    const double end = last.exact ? 1.0 : safe_divide(days(last.before, date2), days(last.before, last.after));
    return (last.before_number - first.after_number) + start + end;
}

double AnnualSequence::monthsbetween(const date& date1, const date& date2) const {
    return safe_divide(12.0 * periodsbetween(date1, date2), size());
}

double AnnualSequence::yearsbetween(const date& date1, const date& date2) const {
    return safe_divide(periodsbetween(date1, date2), size());
}

date AnnualSequence::dateplusperiods(const date& from, int n) const {
    date working = from;
    for (int step = 1; step <= std::abs(static_cast<long long>(n)); ++step) {
        if (step == longest_walk) fail<errliboveriterated>("More than ", longest_walk - 1, " periods");
        working = n > 0 ? nextdate(working, false) : prevdate(working, true);
    }
    return working;
}

bool AnnualSequence::same_as(const AnnualSequence& other) const {
    return size() == other.size() && arrears_ == other.arrears_ && bus_day_switch_ == other.bus_day_switch_ &&
           std::equal(begin(), end(), other.begin(), [](double a, double b) { return isequal(a, b); });
}

// --- In words -------------------------------------------------------------------------------------------------

std::string preset_text(int preset) {
    return SwitchTable(sequence_values).words(preset, "Don't recognise this type of annual sequence ");
}

namespace {

std::string in_words(const AnnualSequence& sequence, const char* opening) {
    std::string text;
    if (sequence.size() == 0) {
        text = " none";
    } else if (sequence.preset() == AnnualSequence::own_list) {
        text = text_of(sequence.size(), opening);
        for (int i = 1; i <= sequence.size(); ++i) {
            const auto [month, day] = AnnualSequence::month_day(sequence(i));
            text += text_of(i > 1 ? "," : "", day, month_name(month));
        }
    } else {
        text = opening + preset_text(sequence.preset());
    }
    if (sequence.BusDaySwitch() > 0) text += " " + business_days_name(sequence.BusDaySwitch());
    return text;
}

} // namespace

std::string describe_periods(const AnnualSequence& sequence) {
    return in_words(sequence, sequence.arrears() ? " periods up to and including " : " periods commencing ");
}

std::string describe(const AnnualSequence& sequence) {
    return in_words(sequence, sequence.arrears() ? " in arrear, " : " in advance, ");
}

} // namespace qx
