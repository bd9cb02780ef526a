#include "lists/lists.h"

#include "core/combine.h"
#include "core/routine.h"
#include "core/safe_arithmetic.h"

#include <algorithm>
#include <boost/crc.hpp>
#include <cassert>
#include <cmath>
#include <cstdint>
#include <cstdlib>
#include <initializer_list>
#include <numeric>

namespace qx {

namespace {

void check_switch(Routine& here, int CombineSwitch) {
    here.limit(CombineSwitch, 0, last_combine_switch, "CombineSwitch");
}

/// Up to four lists side by side, of which one of a single value serves for all.
class Lists {
  public:
    explicit Lists(std::initializer_list<View<double>> lists) : lists_{*lists.begin()} {
        for (const View<double>& list : lists) {
            if (list.empty()) continue;
            lists_[count_++] = list;
            if (list.size() > longest().size()) longest_ = count_ - 1;
        }
        for (int k = 0; k < count_; ++k)
            if (lists_[k].size() != 1) longest().checksamesize(lists_[k]);
    }

    /// The list that gives the others their length and shape.
    const View<double>& longest() const { return lists_[longest_]; }
    double combined(int CombineSwitch, int i) const {
        double amounts[most];
        for (int k = 0; k < count_; ++k) amounts[k] = lists_[k].single_or(i);
        return qx::combined(amounts, count_, qx::CombineSwitch{CombineSwitch});
    }

  private:
    static constexpr int most = 4;
    View<double> lists_[most] = {};
    int count_ = 0;
    int longest_ = 0;
};

/// Below, at or above zero as a is before, like or after b in the alphabet.
int alphabetical(const std::string& a, const std::string& b) {
    const std::size_t shared = std::min(a.size(), b.size());
    for (std::size_t i = 0; i < shared; ++i) {
        const int difference =
            static_cast<unsigned char>(small_letter(a[i])) - static_cast<unsigned char>(small_letter(b[i]));
        if (difference != 0) return difference;
    }
    if (a.size() != b.size()) return a.size() < b.size() ? -1 : 1;
    return a.compare(b);
}

} // namespace

WorkList<double> ApplyToList(int CombineSwitch, View<double> Values, double Value) {
    Routine here{"ApplyToList"};
    here.inputs(CombineSwitch, Values, Value);
    check_switch(here, CombineSwitch);
    WorkList<double> results;
    results->dimension(Values.size(), Values.getcolumns());
    for (int i = 1; i <= Values.size(); ++i) {
        results(i) = combined(Values.get(i), Value, qx::CombineSwitch{CombineSwitch});
    }
    here.returning();
    return results;
}

WorkList<double> CombineLists(int CombineSwitch, View<double> Values, View<double> Values2, View<double> Values3,
                              View<double> Values4) {
    Routine here{"CombineLists"};
    here.inputs(CombineSwitch, Values, Values2, Values3, Values4);
    check_switch(here, CombineSwitch);
    const Lists lists({Values, Values2, Values3, Values4});
    WorkList<double> results;
    results->dimension(lists.longest().size(), lists.longest().getcolumns());
    for (int i = 1; i <= results.size(); ++i) results(i) = lists.combined(CombineSwitch, i);
    here.returning();
    return results;
}

double SumCombine(int CombineSwitch, View<double> Values, View<double> Values2, View<double> Values3,
                  View<double> Values4) {
    Routine here{"SumCombine"};
    here.inputs(CombineSwitch, Values, Values2, Values3, Values4);
    check_switch(here, CombineSwitch);
    const Lists lists({Values, Values2, Values3, Values4});
    double sum = 0.0;
    for (int i = 1; i <= lists.longest().size(); ++i) {
        const double amount = lists.combined(CombineSwitch, i);
        sum += amount;
        const auto pass = here.pass(i, amount, ", cumulative total now ", sum);
    }
    return here.returning(sum);
}

WorkList<std::string> SortText(View<std::string> Texts, int Direction) {
    Routine here{"SortText"};
    here.inputs(Texts, Direction);
    here.limit(Direction, ascending, descending, "Direction");
    WorkList<std::string> sorted;
    *sorted = Texts;
    std::sort(sorted->begin(), sorted->end(), [Direction](const std::string& a, const std::string& b) {
        if (a.empty() || b.empty()) return b.empty() && !a.empty();
        const int order = alphabetical(a, b);
        return Direction == ascending ? order < 0 : order > 0;
    });
    here.returning();
    return sorted;
}

WorkList<double> TransposeNum(View<double> Values) {
    Routine here{"TransposeNum"};
    here.inputs(Values);
    WorkList<double> turned;
    *turned = Values;
    turned->transpose();
    here.returning();
    return turned;
}

WorkList<double> AddGaps(double FirstValue, View<double> Gaps) {
    Routine here{"AddGaps"};
    here.inputs(FirstValue, Gaps);
    WorkList<double> values;
    values->dimension(Gaps.size() + 1);
    values(1) = FirstValue;
    for (int i = 1; i <= Gaps.size(); ++i) values(i + 1) = values(i) + Gaps.get(i);
    here.returning();
    return values;
}

WorkList<double> DiffGaps(View<double> Values) {
    Routine here{"DiffGaps"};
    here.inputs(Values);
    WorkList<double> gaps;
    gaps->dimension(std::max(Values.size() - 1, 0));
    for (int i = 1; i <= gaps.size(); ++i) gaps(i) = Values.get(i + 1) - Values.get(i);
    here.returning();
    return gaps;
}

WorkList<double> RoundList(View<double> Values, double Multiple, bool KeepTotal) {
    Routine here{"RoundList"};
    here.inputs(Values, Multiple, KeepTotal);
    WorkList<double> rounded;
    *rounded = Values;
    const int n = Values.size();
    const double step = std::fabs(Multiple);
    if (iszero(step)) {
        here.warning("The multiple is zero, returning the values as they are");
        here.returning();
        return rounded;
    }
    double total = 0.0, total_down = 0.0;
    for (int i = 1; i <= n; ++i) {
        total += Values.get(i);
        rounded(i) = KeepTotal ? SFloor(Values.get(i), step, 0.0) : SRound(Values.get(i), step, 0.0);
        total_down += rounded(i);
    }
    if (KeepTotal) {
        // What each lost in billionths of a step, so that a tie is a tie.
        static struct Loss {
            int position;
            long long amount;
        } losses[range_capacity];
        for (int i = 1; i <= n; ++i) losses[i - 1] = {i, std::llround((Values.get(i) - rounded(i)) / step * 1e9)};
        std::sort(losses, losses + n, [](const Loss& a, const Loss& b) {
            return a.amount != b.amount ? a.amount > b.amount : a.position < b.position;
        });
        const int missing = std::clamp(whole(std::round((SRound(total, step, 0.0) - total_down) / step)), 0, n);
        here.info("Rounded down to ", total_down, ", steps to add: ", missing);
        for (int k = 0; k < missing; ++k) rounded(losses[k].position) += step;
    }
    here.returning();
    return rounded;
}

WorkList<int> Disperse(int Tot, int iStart, int iFinish) {
    Routine here{"Disperse"};
    here.inputs(Tot, iStart, iFinish);
    here.at_least(iStart, 1, "iStart");
    here.limit(iFinish, iStart, range_capacity, "iFinish");
    const int n = iFinish - iStart + 1;
    const int each = Tot / n;
    const int extra = std::abs(Tot - n * each);
    here.info("Minimum Periodic Amount ", each);
    here.info("Rem ", Tot - n * each);
    WorkList<int> amounts;
    amounts->dimension(iFinish);
    for (int i = 1; i <= iFinish; ++i) amounts(i) = i < iStart ? 0 : each;
    if (extra > 0) here.info("Step between adjustments ", static_cast<double>(n) / extra);
    for (int k = 0; k < extra; ++k) {
        const int position = iStart + static_cast<int>((2LL * k + 1) * n / (2LL * extra)); // the middle of its step
        if (k == 0) here.info("Step starts at period ", position);
        here.info("Extra pmt at n=", position);
        amounts(position) += Tot > 0 ? 1 : -1;
    }
    here.returning();
    return amounts;
}

SubRange sub_range(int FirstOne, int LastOne, int length) {
    Routine here{"sub_range", Routine::internal};
    here.at_least(FirstOne, 1, "FirstOne");
    here.at_least(LastOne, 0, "LastOne");
    const auto check = [&here, length](int position, const char* variable) {
        if (position > length) here.fail<outofrange>(variable, "There is no item ", position, " in a list of ", length);
    };
    check(FirstOne, "FirstOne");
    check(LastOne, "LastOne");
    here.returning();
    return {FirstOne, LastOne == 0 ? length : LastOne};
}

int CRC_fl(View<double> InputRange) {
    Routine here{"CRC_fl"};
    here.inputs(InputRange);
    // The bytes of 2, 4, 31, 67, 98 and of the place of the sum itself, low byte first.
    constexpr unsigned char data[] = {2, 0, 4, 0, 31, 0, 67, 0, 98, 0, 0, 0};
    constexpr std::size_t sum_size = 2;
    constexpr std::uint16_t initial = 0x123;
    const std::uint16_t sum = boost::augmented_crc<16, 0x8005>(data, sizeof(data), initial);

    const std::uint16_t start = boost::augmented_crc<16, 0x8005>(data + sizeof(data) - sum_size, sum_size, initial);
    boost::crc_basic<16> plain(0x8005, start);
    plain.process_bytes(data, sizeof(data) - sum_size);
    assert(plain.checksum() == sum && "crc2.checksum() == crc1");
    here.info("All tests passed.");
    return here.returning(static_cast<int>(sum));
}

} // namespace qx
