#include "addin/argument_values.h"

#include "banking/accounts.h"
#include "calendar/date_functions.h"
#include "calendar/holidays.h"
#include "core/combine.h"
#include "core/routine.h"
#include "numerics/distributions.h"
#include "numerics/lookup.h"
#include "projections/descriptions.h"

#include <algorithm>
#include <iterator>
#include <string_view>

namespace qx {

namespace {

constexpr const char* day_counts[] = {
    "0:30/360 PSA",
    "1:ACT/ACT",
    "2:ACT/360",
    "3:ACT/365",
    "4:30E/360",
    "5:Decimal Year (ACTM/12)",
    "6:ACT/ACT in period",
    "7:30/360 PSA",
    "8:ACT NonLeap/365",
    "9:30/365",
    "10:30/360 ISDA",
    "11:30/360 ISDA+FebAdj",
    "12:30/360 ISDA+FebAdj+EOMAdj\t",
};
constexpr const char* projection_modes[] = {"0:Accruals", "1:Cash", "2:Accruals(inc last day)", "3:Cash(inc last day)"};
constexpr const char* account_figures[] = {"0:Principal",
                                           "1:Interest",
                                           "2:Principal+Interest",
                                           "3:Balance brought forward",
                                           "4:Balance (average in period)",
                                           "5:Balance (end period)"};
/// The outputs of the account simulators that have words, with those of a sinking fund at the end.
constexpr int account_outputs[] = {0,  1,  2,  3,  4,  5,  10, 11, 12, 13, 14, 15, 16, 17, 20, 21, 22, 23, 24,
                                   25, 30, 31, 32, 33, 34, 35, 70, 71, 72, 73, 74, 75, 80, 81, 82, 83, 84, 85};
constexpr int outputs_of_a_fund = 12;
constexpr const char* sequences[] = {
    "-1:Annually in arrear",
    "-2:BiAnnually in arrear",
    "-4:Quarterly in arrear",
    "-12:Monthly in arrear",
    "-13:Real Estate English Quarter Days in arrear",
    "1:Annually in advance",
    "2:BiAnnually in advance",
    "4:Quarterly in advance",
    "12:Monthly in advance",
    "13:Real Estate English Quarter Days in advance",
    "14:Continuous",
};
constexpr const char* directions[] = {"0:Ascending", "1:Descending"};
constexpr const char* ends[] = {"0:First end only", "1:Both ends", "2:Neither end", "3:Second end only"};
constexpr const char* operations[] = {"0:Sum", "1:Average", "2:Count", "3:Greatest", "4:Smallest", "5:Product"};
constexpr const char* find_switches[] = {"0:Values", "1:Positions", "2:All values", "3:All positions"};
constexpr const char* criteria_options[] = {"0:Condition is OR", "1:Condition is AND"};
constexpr const char* trim_options[] = {"0:At the end", "1:At the start too", "2:In the middle too", "4:Zeros too"};
constexpr const char* cumulative_switches[] = {"0:On the line between two points", "1:Point below", "2:Point above"};
constexpr const char* curves[] = {"0:Step", "1:Straight line", "2:Cosine", "3:Cubic", "4:Exponential"};
constexpr const char* split_modes[] = {"0:Pieces between the matches", "1:Matches"};
constexpr const char* currencies[] = {"0:Dollar", "1:Euro", "2:Pound", "3:Peso"};
constexpr const char* languages[] = {"0:English", "1:Spanish", "2:French"};
constexpr const char* date_roundings[] = {"0:Nearest", "1:Back", "2:Forward"};
constexpr const char* weekend_moves[] = {"0:Not moved", "1:Forward to Monday", "2:Saturday back, Sunday forward"};

/// The values of one argument: a list of texts, or the words that a function has for some numbers, listed or in a row.
struct Values {
    const char* argument;
    const char* const* texts;
    int count;
    std::string (*describe)(int) = nullptr;
    int first = 0;
    const int* numbers = nullptr;
};

template <std::size_t n>
constexpr Values listed(const char* argument, const char* const (&texts)[n]) {
    return {argument, texts, static_cast<int>(n)};
}
constexpr Values described(const char* argument, std::string (*describe)(int), int last, int first = 0) {
    return {argument, nullptr, last - first + 1, describe, first};
}
template <std::size_t n>
constexpr Values described(const char* argument, std::string (*describe)(int), const int (&numbers)[n]) {
    return {argument, nullptr, static_cast<int>(n), describe, 0, numbers};
}

constexpr Values known[] = {
    listed("DayCount", day_counts),
    listed("DCount", day_counts),
    listed("DCountDisc", day_counts),
    listed("DayCountDisc", day_counts),
    listed("DayCountSource", day_counts),
    listed("DayCountTarget", day_counts),
    listed("ProjMode", projection_modes),
    listed("AcctOutput", account_figures),
    {"LAOutput", nullptr, static_cast<int>(std::size(account_outputs)) - outputs_of_a_fund, DescribeLoanAcctOutput, 0,
     account_outputs},
    described("LAMHOutput", DescribeLoanAcctOutput, account_outputs),
    listed("Periods", sequences),
    listed("CashBasis", sequences),
    listed("PrdsDisc", sequences),
    listed("PrdsInt", sequences),
    listed("PrdsSource", sequences),
    listed("PrdsTarget", sequences),
    listed("Direction", directions),
    listed("InclusiveOpt", ends),
    listed("RangeOperation", operations),
    listed("FindSwitch", find_switches),
    listed("CritOpts", criteria_options),
    listed("TrimOpts", trim_options),
    listed("CumSwitch", cumulative_switches),
    listed("InterpType", curves),
    listed("SplitMode", split_modes),
    listed("Currency", currencies),
    listed("Language", languages),
    described("LookupSwitch", DescribeLookup, closest),
    described("Look_UpSwitch", DescribeLookup, closest),
    described("DistType", DescribeDistType, lognormal_distribution, uniform_distribution),
    described("CombineSwitch", DescribeCombineSwitch, last_combine_switch),
    described("LevelSwitchOpt", DescribeLevelSwitch, 5),
    described("Round", DescribeRounding, 3),
    listed("RoundMethod", date_roundings),
    listed("MoveWeekend", weekend_moves),
    described("BusDaySwitch", business_days_name, business_day_switches),
};

bool same_name(std::string_view a, std::string_view b) {
    return std::equal(a.begin(), a.end(), b.begin(), b.end(),
                      [](char x, char y) { return small_letter(x) == small_letter(y); });
}

} // namespace

const Range<std::string>& ArgValues(const std::string& ArgName) {
    Routine here{"ArgValues"};
    here.inputs(ArgName);
    const auto values = std::find_if(std::begin(known), std::end(known),
                                     [&ArgName](const Values& entry) { return same_name(entry.argument, ArgName); });
    if (values == std::end(known))
        here.fail<errliblookupfailed>("ArgName", "There is no argument with set values of the name ", ArgName);
    static Range<std::string> texts;
    texts.dimension(values->count);
    for (int i = 0; i < values->count; ++i) {
        const int value = values->numbers != nullptr ? values->numbers[i] : values->first + i;
        texts(i + 1) =
            values->texts != nullptr ? values->texts[i] : std::to_string(value) + ":" + values->describe(value);
    }
    here.returning();
    return texts;
}

} // namespace qx
