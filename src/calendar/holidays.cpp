#include "calendar/holidays.h"

#include "core/routine.h"

#include <algorithm>
#include <bit>
#include <cstdint>
#include <iterator>

namespace qx {

namespace {

/// A holiday as it recurs: a day of a month, or an occurrence of a weekday or a number of days relative to a base.
struct Holiday {
    const char* name = "";
    int day = 0;
    int month = 0;
    int occurrence = 0;
    int weekday = 0; ///< 1 Sunday to 7 Saturday; 0 any
    int relativity = 0;
    int family = 0; ///< the business days that the row was written for
    int kind = 0;   ///< like holidays of the countries: 1 Christmas, 11 New Year, 15 Boxing Day, 32 Good Friday
    int days_relative = 0;
    int move_weekends = 0;
};

constexpr int recurring_years = 1;
constexpr int first_year = 0;
constexpr int longest_slip = 30; ///< days tested for a business day
constexpr int chained_kind = 2;  ///< follows the New Year's Day of the United Kingdom

constexpr Holiday holidays[] = {
    {},                                                                             // 0
    {"New Years Day (UK National)", 1, 1, 0, 0, 0, 100, 11, 0, 1},                  // 1
    {"May Day (UK National)", 0, 5, 1, 2, 1, 100, 6, 0, 1},                         // 2
    {"Spring Bank Holiday (UK National)", 0, 5, 1, 2, 2, 100, 7, 0, 1},             // 3
    {"August Bank Holiday (UK (England+Wales))", 0, 8, 1, 2, 2, 101, 8, 0, 1},      // 4
    {"Christmas Day (UK National)", 25, 12, 0, 0, 0, 100, 1, 0, 1},                 // 5
    {"Boxing Day (UK National)", 26, 12, 0, 0, 0, 100, 15, 0, 1},                   // 6
    {"Easter Monday (UK National)", 0, 0, 1, 2, 3, 100, 33, 0, 1},                  // 7
    {"Good Friday (UK National)", 0, 0, 1, 6, 4, 100, 32, 0, 1},                    // 8
    {"New Years Day (Australia National)", 1, 1, 0, 0, 0, 400, 11, 0, 1},           // 9
    {"Australia Day (Australia National)", 26, 1, 0, 0, 0, 400, 12, 0, 1},          // 10
    {"Anzac Day (Australia National)", 25, 4, 0, 0, 0, 400, 13, 0, 1},              // 11
    {"Queens Birthday (Australia National)", 0, 6, 2, 2, 1, 400, 14, 0, 1},         // 12
    {"Christmas Day (Australia National)", 25, 12, 0, 0, 0, 400, 1, 0, 1},          // 13
    {"Boxing Day (Australia National)", 26, 12, 0, 0, 0, 400, 15, 0, 1},            // 14
    {"Good Friday (Australia National)", 0, 0, 1, 6, 4, 400, 32, 0, 1},             // 15
    {"Easter Monday (Australia National)", 0, 0, 1, 2, 3, 400, 33, 0, 1},           // 16
    {"New Years Day (USA (National/NYSE))", 1, 1, 0, 0, 0, 200, 11, 0, 2},          // 17
    {"Luther King Day (USA (National/NYSE))", 0, 1, 3, 2, 1, 200, 16, 0, 2},        // 18
    {"Memorial Day (USA (National/NYSE))", 0, 5, 1, 2, 2, 200, 17, 0, 2},           // 19
    {},                                                                             // 20
    {"Independence Day (USA (National/NYSE))", 4, 7, 0, 0, 0, 200, 19, 0, 2},       // 21
    {"Labour Day (US/Can) (USA (National/NYSE))", 0, 9, 1, 2, 1, 200, 27, 0, 2},    // 22
    {"Veterans Day (USA (Federal Gov))", 11, 11, 0, 0, 0, 201, 21, 0, 1},           // 23
    {"Thanksgiving (USA (National/NYSE))", 0, 11, 4, 5, 1, 200, 22, 0, 2},          // 24
    {"Christmas Day (USA (National/NYSE))", 25, 12, 0, 0, 0, 200, 1, 0, 2},         // 25
    {"Good Friday (USA (National/NYSE))", 0, 0, 1, 6, 4, 200, 32, 0, 2},            // 26
    {"New Years Day (Canada national)", 1, 1, 0, 0, 0, 300, 11, 0, 1},              // 27
    {"Victoria Day (Canada national)", 24, 5, 1, 2, 6, 300, 24, 0, 1},              // 28
    {"Canada Day (Canada national)", 1, 7, 0, 0, 0, 300, 25, 0, 1},                 // 29
    {},                                                                             // 30
    {"Labour Day (US/Can) (Canada national)", 0, 9, 1, 2, 1, 300, 27, 0, 1},        // 31
    {"Thanksgiving Day (Canada national)", 0, 10, 2, 2, 1, 300, 28, 0, 1},          // 32
    {"Remembrance day (Canada national)", 11, 11, 0, 0, 0, 300, 29, 0, 1},          // 33
    {"Christmas Day (Canada national)", 25, 12, 0, 0, 0, 300, 1, 0, 1},             // 34
    {"Boxing Day (Canada national)", 26, 12, 0, 0, 0, 300, 15, 0, 1},               // 35
    {"Good Friday (Canada national)", 0, 0, 1, 6, 4, 300, 32, 0, 1},                // 36
    {"Easter Monday (Canada national)", 0, 0, 1, 2, 3, 300, 33, 0, 1},              // 37
    {"Washingtons Birthday (USA (National/NYSE))", 0, 2, 3, 2, 1, 200, 37, 0, 2},   // 38
    {"Scottish 2nd January (UK (Scotland))", 2, 1, 0, 0, 0, 102, 41, 0, 1},         // 39
    {"Scottish Summer Bank Holiday (UK (Scotland))", 0, 8, 1, 2, 1, 102, 40, 0, 1}, // 40
    {"August Bank Holiday (UK (Northern Ireland))", 0, 8, 1, 2, 2, 103, 8, 0, 1},   // 41
    {"Battle Of The Boyne (UK (Northern Ireland))", 12, 7, 0, 0, 0, 103, 39, 0, 1}, // 42
    {"St Patricks Day (UK (Northern Ireland))", 17, 3, 0, 0, 0, 103, 38, 0, 1},     // 43
    {"Columbus Day (USA (Federal Gov))", 0, 10, 2, 2, 1, 201, 42, 0, 1},            // 44
    {"New Years Day (Brazil)", 1, 1, 0, 0, 0, 500, 11, 0, 0},                       // 45
    {"Good Friday (Brazil)", 0, 0, 1, 6, 4, 500, 32, 0, 0},                         // 46
    {"Christmas Day (Brazil)", 25, 12, 0, 0, 0, 500, 1, 0, 0},                      // 47
    {},                                                                             // 48
    {"Labor Day (Brazil)", 1, 5, 0, 0, 0, 500, 51, 0, 0},                           // 49
    {"Carnaval Day 1 (Brazil)", 0, 0, 0, 0, 4, 500, 43, 48, 0},                     // 50
    {"Carnaval Day 2 (Brazil)", 0, 0, 0, 0, 4, 500, 44, 47, 0},                     // 51
    {"Brazilian Independence Day (Brazil)", 7, 9, 0, 0, 0, 500, 45, 0, 0},          // 52
    {"Our Lady Of Aperecida (Brazil)", 12, 10, 0, 0, 0, 500, 46, 0, 0},             // 53
    {"All Souls Day (Brazil)", 2, 11, 0, 0, 0, 500, 48, 0, 0},                      // 54
    {"Proclamation Of The Republic Day (Brazil)", 15, 11, 0, 0, 0, 500, 49, 0, 0},  // 55
    {"Corpus Christi (Brazil)", 0, 0, 0, 0, 3, 500, 47, 60, 0},                     // 56
    {"Tiradentes (Brazil)", 21, 4, 0, 0, 0, 500, 50, 0, 0},                         // 57
};
static_assert(std::size(holidays) == 58);
constexpr Holiday no_holiday{};

const Holiday& row(int HolNum) {
    return HolNum >= 0 && HolNum < static_cast<int>(std::size(holidays)) ? holidays[HolNum] : no_holiday;
}

/// A family of business days: its holidays in the order in which a date is tested against them, ended by 0.
struct Family {
    int number;
    int holidays[13];
};

constexpr Family families[] = {
    {0, {}},
    {20, {}},
    {21, {}},
    {22, {}},
    {100, {1, 8, 7, 2, 3, 5, 6}},
    {101, {1, 8, 7, 2, 3, 5, 6, 4}},
    {102, {1, 8, 7, 2, 3, 5, 6, 39, 40}},
    {103, {1, 8, 7, 2, 3, 5, 6, 43, 42, 41}},
    {200, {17, 18, 38, 26, 19, 21, 22, 24, 25}},
    {201, {17, 18, 38, 26, 19, 21, 22, 24, 25, 44, 23}},
    {300, {27, 36, 37, 28, 29, 31, 32, 33, 34, 35}},
    {400, {9, 10, 15, 16, 11, 12, 13, 14}},
    {500, {45, 46, 49, 47, 50, 51, 52, 53, 56, 54, 55, 57}},
};
constexpr int family_count = static_cast<int>(std::size(families));
static_assert(std::equal(std::begin(families), std::end(families), std::begin(business_day_values),
                         std::end(business_day_values),
                         [](const Family& family, const SwitchValue& value) { return family.number == value.code; }));

/// The place of a switch in the table; -1 for a switch under which every day is a business day.
constexpr int family_of(int BusDaySwitch) {
    switch (BusDaySwitch) {
    case 20:
        return 1;
    case 21:
        return 2;
    case 22:
        return 3;
    case 100:
        return 4;
    case 101:
        return 5;
    case 102:
        return 6;
    case 103:
        return 7;
    case 200:
        return 8;
    case 201:
        return 9;
    case 300:
        return 10;
    case 400:
        return 11;
    case 500:
        return 12;
    default:
        return -1;
    }
}

bool isweekend(const date& day) {
    const int weekday = day.dayofweek();
    return weekday == 1 || weekday == 7;
}

/// The test as the table states it: weekends first, then holiday by holiday.
bool test(const date& day, const Family& family) {
    if (isweekend(day)) return false;
    for (const int number : family.holidays) {
        if (number == 0) break;
        if (holiday(day, number) == day) return false;
    }
    return true;
}

// --- What is known of a year: one bit per day of the year, set for a business day -----------------------------

constexpr int first_known_year = 1910;
constexpr int known_years = date::maxyear - first_known_year + 1;

struct Year {
    enum State : std::uint8_t { unknown, known, irregular };
    static constexpr int words = 6;
    std::uint64_t days[words];
    std::uint16_t before[words]; ///< business days before those of each word
    std::uint16_t business_days;
    State state;
    std::int32_t first;      ///< date number of 1 January
    std::int32_t since_1910; ///< business days from 1910 to 1 January, once they are counted

    bool isbd(const date& day) const {
        const int i = day.dtn() - first;
        return (days[i >> 6] >> (i & 63) & 1) != 0;
    }
    int business_days_from_1910(const date& day) const {
        const int i = day.dtn() - first;
        return since_1910 + before[i >> 6] + std::popcount(days[i >> 6] & ((std::uint64_t{1} << (i & 63)) - 1));
    }
    /// Days from one to the first business day on or after it; more than a year has if there is none in the year.
    int days_to_business_day(const date& day) const {
        const int i = day.dtn() - first;
        const std::uint64_t rest = days[i >> 6] >> (i & 63);
        if (rest != 0) return std::countr_zero(rest);
        for (int word = (i >> 6) + 1; word < words; ++word)
            if (days[word] != 0) return word * 64 + std::countr_zero(days[word]) - i;
        return words * 64;
    }
};

/// Suppresses trace items while it lives.
class MutedTrace {
  public:
    MutedTrace() { TraceMuted = true; }
    MutedTrace(const MutedTrace&) = delete;
    MutedTrace& operator=(const MutedTrace&) = delete;
    ~MutedTrace() { TraceMuted = before_; }

  private:
    bool before_ = TraceMuted;
};

/// Works out the year that starts on a date. A year in which a holiday has no date stays irregular: its days are tested
/// one by one.
void learn(Year& year, const date& start, const Family& family) {
    const MutedTrace muted;
    std::uint64_t days[Year::words] = {};
    try {
        const int length = start.daysinyear();
        for (int i = 0, weekday = start.dayofweek(); i < length; ++i, weekday = weekday % 7 + 1)
            if (weekday != 1 && weekday != 7) days[i >> 6] |= std::uint64_t{1} << (i & 63);
        for (const int number : family.holidays) {
            if (number == 0) break;
            const int i = days_between(start, holiday(start, number));
            if (i >= 0 && i < length) days[i >> 6] &= ~(std::uint64_t{1} << (i & 63));
        }
        int count = 0;
        for (int word = 0; word < Year::words; ++word) {
            year.days[word] = days[word];
            year.before[word] = static_cast<std::uint16_t>(count);
            count += std::popcount(days[word]);
        }
        year.business_days = static_cast<std::uint16_t>(count);
        year.first = start.dtn();
        year.state = Year::known;
    } catch (const cls_exception&) {
        year.state = Year::irregular;
    }
}

Year years[family_count][known_years];

/// What is known of a year from 1910 to 3653; null where the days must be tested one by one.
const Year* known_year(int number, int family) {
    Year& year = years[family][number - first_known_year];
    if (year.state == Year::unknown) learn(year, date::from_ymd(number, 1, 1), families[family]);
    return year.state == Year::known ? &year : nullptr;
}

/// The same with the business days before it counted, which is done as far as it is asked for. An irregular year counts
/// none: it follows a day that has no date, which no walk passes.
const Year* counted_year(int number, int family) {
    static int counted[family_count]; // years after the first
    const int wanted = number - first_known_year;
    for (int& i = counted[family]; i < wanted; ++i) {
        const Year* const year = known_year(first_known_year + i, family);
        years[family][i + 1].since_1910 = years[family][i].since_1910 + (year == nullptr ? 0 : year->business_days);
    }
    return known_year(number, family);
}

/// Fails as a walk from day to day does that meets one of the four days that have no date.
void check_walk(const date& from, const date& to) {
    if (to.year() < 2400) return; // before the first of them has passed
    for (const int missing : {182622, 328719, 474816, 620913})
        if (from.dtn() < missing && missing < to.dtn()) date::from_dtn(missing);
}

/// Business days of a family from one date up to another, tested one by one.
int walk(const date& from, const date& to, const Family& family) {
    if (from.iszero()) return test(from, family) ? days_between(from, to) : 0; // the zero date does not move
    int count = 0;
    for (date day = from; day < to; day.adddays(1)) count += test(day, family) ? 1 : 0;
    return count;
}

} // namespace

RollingFloat RollingFloat::of(double figure) {
    return {whole(figure + 0.00001), whole(100.0 * fraction(figure) + 0.001)};
}

bool isbd(const date& day, int BusDaySwitch) {
    const int family = family_of(BusDaySwitch);
    if (family < 0) return true;
    if (!traced() && day.isregular())
        if (const Year* const year = known_year(day.year(), family); year != nullptr) return year->isbd(day);
    return test(day, families[family]);
}

date nextbd(const date& day, int BusDaySwitch) {
    if (!traced() && day.isregular()) {
        const int family = family_of(BusDaySwitch);
        const Year* const year = family < 0 ? nullptr : known_year(day.year(), family);
        const int days = family < 0 ? 0 : year == nullptr ? longest_slip : year->days_to_business_day(day);
        if (days == 0) return day;
        if (days < longest_slip) return day.plusdays(days);
    }
    date slipped = day;
    for (int tests = 1; tests <= longest_slip && !isbd(slipped, BusDaySwitch); ++tests) slipped.adddays(1);
    if (traced() && slipped != day) trace().info(text_of(day, " slipped to next Business Day ", slipped));
    return slipped;
}

date prevbd(const date& day, int BusDaySwitch) {
    date slipped = day;
    for (int tests = 1; tests <= longest_slip && !isbd(slipped, BusDaySwitch); ++tests) slipped.adddays(-1);
    if (traced() && slipped != day) trace().info(text_of(day, " slipped to previous Business Day ", slipped));
    return slipped;
}

int diffbusdays(const date& date1, const date& date2, int BusDaySwitch) {
    const int n = days_between(date1, date2);
    if (BusDaySwitch == 0) {
        const int weeks = n / 7;
        const int rest = n - 7 * weeks;
        int result = n - 2 * weeks;
        for (int i = 1; i <= rest; ++i) {
            const int weekday = (date2.dayofweek() - (i - 1) + 6) % 7 + 1;
            if (weekday == 1) result -= 2;
            if (weekday == 7) result -= 1;
        }
        return result;
    }
    if (n <= 0) return 0;
    check_walk(date1, date2);
    const int family = family_of(BusDaySwitch);
    if (family < 0) return n;
    if (!date1.isregular() || !date2.isregular()) return walk(date1, date2, families[family]);
    const Year* const last = counted_year(date2.year(), family);
    const Year* const first = known_year(date1.year(), family);
    if (first == nullptr || last == nullptr) return walk(date1, date2, families[family]);
    return last->business_days_from_1910(date2) - first->business_days_from_1910(date1);
}

date easter_sunday(int year) {
    const int a = year % 19, b = year / 100, c = year % 100;
    const int d = b / 4, e = b % 4;
    const int f = (b + 8) / 25;
    const int g = (b - f + 1) / 3;
    const int h = (19 * a + b - d - g + 15) % 30;
    const int i = c / 4, k = c % 4;
    const int l = (32 + 2 * e + 2 * i - h - k) % 7;
    const int m = (a + 11 * h + 22 * l) / 451;
    const int n = h + l - 7 * m + 114;
    return date::from_ymd(year, n / 31, n % 31 + 1);
}

date calcdate(const date& day, int MonthInYear, int DayInMonth, int FirstYear, int RecurringYears, int MoveWeekendsOpt,
              const date& AfterDate) {
    if (RecurringYears != 0 && RecurringYears != 1 && FirstYear != 0 &&
        (static_cast<long long>(day.year()) - FirstYear) % RecurringYears != 0)
        return date();
    date result = date::from_ymd(day.year(), MonthInYear, DayInMonth);
    const int weekday = result.dayofweek();
    if (MoveWeekendsOpt == 1 || MoveWeekendsOpt == 2) {
        if (weekday == 1) result.adddays(1);
        if (weekday == 7) result.adddays(MoveWeekendsOpt == 1 ? 2 : -1);
    }
    return AfterDate >= result ? AfterDate.plusdays(1) : result;
}

date calcdatex(const date& day, int MonthInYear, int DayInMonth, int OccurrenceNo, int DayinWeekOpt, int Relativity,
               int FirstYear, int RecurringYears, int MoveWeekendsOpt, const date& AfterDate, int DaysRelative) {
    Routine here{"calcdatex", Routine::internal};
    const bool relative = Relativity != 0, occurrence = OccurrenceNo != 0, weekday = DayinWeekOpt != 0;
    if (relative && !(occurrence && weekday) && DaysRelative == 0)
        here.fail<errliboptreq>("Relativity", "If you set a Relativity you must set an OccurrenceNo AND a "
                                              "DayInWeekOpt, or else at least set a DaysRelative");
    if (occurrence && !(relative && weekday))
        here.fail<errliboptreq>("OccurrenceNo",
                                "If you set an OccurrenceNo you must set a Relativity AND a DayInWeekOpt. ");
    if (weekday && !(occurrence && relative))
        here.fail<errliboptreq>("DayinWeekOpt",
                                "If you set a DayInWeekOpt you must set a Relativity AND an OccurrenceNo");
    if (MonthInYear < 1 && OccurrenceNo >= 1 && (Relativity == 1 || Relativity == 2))
        here.fail<errliboptreq>("MonthInYear", "If you set an OccurrenceNo and Relativity is relative to MonthStart "
                                               "you must set a MonthInYear of greater than zero.");
    if (Relativity < 1 || Relativity > 6)
        return here.returning(
            calcdate(day, MonthInYear, DayInMonth, FirstYear, RecurringYears, MoveWeekendsOpt, AfterDate));

    static constexpr const char* labels[] = {"",
                                             "Relativity: After Month Start",
                                             "Relativity: Before Month End",
                                             "Relativity: After Easter",
                                             "Relativity: Before Easter",
                                             "Relativity: After a specific date",
                                             "Relativity: Before a specific date"};
    here.info(labels[Relativity]);
    date base;
    if (Relativity == 1)
        base = date::from_ymd(day.year(), MonthInYear, 1);
    else if (Relativity == 2) // day 31 of any month: it runs into the next month where there is none
        base = date::from_ymd(day.year(), MonthInYear, 31);
    else if (Relativity <= 4)
        base = easter_sunday(day.year());
    else
        base = date::from_ymd(day.year(), MonthInYear, DayInMonth);

    const bool forward = Relativity % 2 == 1;
    const long long step = forward ? (OccurrenceNo - 1LL) * 7 : OccurrenceNo * 7LL - 1;
    const long long move = std::max(step, 0LL) + DaysRelative;
    if (move != 0) base.adddays(whole(static_cast<double>(forward ? move : -move)));
    if (DayinWeekOpt >= 1 && DayinWeekOpt != base.dayofweek())
        base.adddays((DayinWeekOpt % 7 + 7 - base.dayofweek()) % 7);
    return here.returning(AfterDate >= base ? AfterDate.plusdays(1) : base);
}

date holiday(const date& day, int HolNum) {
    Routine here{"holiday", Routine::internal};
    if (HolNum < 0 || HolNum > last_holiday)
        here.fail<errlibbadnum>("HolNum", "Holiday number out of range (", HolNum, ")");
    const Holiday& found = row(HolNum);
    here.info("Holiday being calculated is ", found.name);
    const date after = found.kind == chained_kind ? holiday(day, 1) : date();
    return here.returning(calcdatex(day, found.month, found.day, found.occurrence, found.weekday, found.relativity,
                                    first_year, recurring_years, found.move_weekends, after, found.days_relative));
}

const char* holiday_name(int HolNum) {
    if (HolNum < 0 || HolNum > last_holiday) {
        FunctionContext context("holiday", "HolNum");
        if (tracing) context.setmessage(text_of("Holiday number out of range (", HolNum, ")"));
        throw errlibbadnum(context);
    }
    return row(HolNum).name;
}

std::string business_days_name(int BusDaySwitch) {
    return SwitchTable(business_day_values)
        .words(BusDaySwitch, "Unknown Business Day Convention: every day is a business day");
}

std::string holidays_on(const date& day, int BusDaySwitch) {
    std::string names;
    if (isbd(day, BusDaySwitch)) return names;
    for (const int number : families[family_of(BusDaySwitch)].holidays) {
        if (number == 0) break;
        if (holiday(day, number) == day) names.append(holiday_name(number)).append(", ");
    }
    if (isweekend(day)) names += "Weekend ";
    return names;
}

} // namespace qx
