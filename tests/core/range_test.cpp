// Ranges and pools: shape, access, order, shortening by content, and every message of a failure.
#include "calendar/date.h"
#include "core/pools.h"
#include "support/allocations.h"
#include "support/traced.h"

#include <numeric>
#include <random>

namespace qx::test {
namespace {

using RangeTest = Traced;
using Numbers = Range<double>;
using Dates = Range<date>;

/// A range of static life with these items: each use of a template argument is a range of its own.
template <int Number, class T = double>
Range<T>& list(std::initializer_list<std::type_identity_t<T>> items, int columns = 1, const char* name = nullptr) {
    static Range<T> range;
    range.dimension(static_cast<int>(items.size()), columns);
    int i = 0;
    for (const T& item : items) range.set(++i, item);
    range.setname(name);
    return range;
}

template <class T>
std::vector<T> items(const Range<T>& range) {
    return {range.begin(), range.end()};
}

using Doubles = std::vector<double>;

/// What an error of a range says, without what every such error has.
template <class Call>
std::string refused(Call&& call) {
    std::string text = failure<outofrange>(std::forward<Call>(call));
    const std::string head = "Error INP02: Out Of Range  Variable Rents \nVariable: Rents. \nMessage: ";
    const std::string tail = ". \nClass 'Range'. ";
    if (!text.starts_with(head) || !text.ends_with(tail)) return text;
    return text.substr(head.size(), text.size() - head.size() - tail.size());
}

TEST_F(RangeTest, DimensionsUpToItsCapacity) {
    static Numbers range;
    EXPECT_EQ(range.size(), 0);
    range.dimension(0);
    EXPECT_TRUE(range.blank());
    range.dimension(10000);
    EXPECT_EQ(range.size(), 10000);
    EXPECT_FALSE(range.blank());
    range.setname("Rents");
    EXPECT_EQ(refused([] { range.dimension(10001); }),
              "Range length beyond limits in routine 'dimension' (10000,10001).");
    EXPECT_EQ(refused([] { range.dimension(-1); }), "Range length negative in routine 'dimension' (-1<0).");
    EXPECT_EQ(range.size(), 10000) << "a refused length changes nothing";
    range(3) = 7.0;
    range.dimension(0);
    EXPECT_FALSE(range.blank()) << "once used, never blank again";
    range.dimension(4, 2);
    EXPECT_EQ(range(3), 7.0) << "a range that grows shows what it held";
    EXPECT_EQ(range.getcolumns(), 2);
    EXPECT_EQ(range.lastnonblank(), 4);
    static Range<double, 100> years;
    EXPECT_THROW(years.dimension(101), outofrange);
}

TEST_F(RangeTest, AccessPastTheLengthIsRefusedInEveryForm) {
    Numbers& range = list<1>({10, 20, 30}, 1, "Rents");
    const Numbers& constant = range;
    EXPECT_EQ(refused([&] { range.get(4); }), "Tried to access variable outside limits in routine 'get' (3,4).");
    EXPECT_EQ(refused([&] { constant(4); }), "Tried to access a item using () outside the list. (3,4).");
    EXPECT_EQ(refused([&] { range(4) = 1; }), "Tried to access an item using () outside the list (3,4).");
    EXPECT_EQ(refused([&] { range.set(4, 1); }), "Tries to set an item outside the list. (3,4).");
    EXPECT_NO_THROW(range.get(0));
    EXPECT_NO_THROW(range.set(-1, 5));
    EXPECT_EQ(range.first(), 10);
    EXPECT_EQ(range.last(), 30);
    range.setname(nullptr);
    EXPECT_EQ(failure<outofrange>([&] { range.get(9); }),
              "Error INP02: Out Of Range  Variable Unspecified \nVariable: Unspecified. \nMessage: Tried to access "
              "variable outside limits in routine 'get' (3,9).. \nClass 'Range'. ");
}

TEST_F(RangeTest, ItemZeroOfANewRangeOfTextsIsSafe) {
    static Range<std::string> texts;
    EXPECT_EQ(texts.get(0), "");
    texts.set(0, std::string(100, 'x'));
    EXPECT_EQ(texts.size(), 0);
    texts.dimension(2);
    EXPECT_EQ(texts(1), "");
}

TEST_F(RangeTest, RectanglesAreReadByColumnAndRow) {
    Numbers& range = list<1>({1, 2, 3, 4, 5, 6}, 3, "Rents");
    const Numbers& constant = range;
    EXPECT_EQ(range(3, 1), 3);
    EXPECT_EQ(range(1, 2), 4);
    EXPECT_EQ(constant.getxy(2, 2), 5);
    range.setxy(2, 2, 50);
    EXPECT_EQ(range(5), 50);
    const std::string outside = "Tried to set a range variable outside the dimensions with operator() (1, 4).";
    EXPECT_EQ(refused([&] { range(4, 1) = 0; }), outside);
    EXPECT_EQ(refused([&] { constant(4, 1); }), outside);
    EXPECT_EQ(refused([&] { range.getxy(3, 3); }),
              "Tried to get a range variable outside the dimensions in routine 'getxy' (3, 3).");
    EXPECT_EQ(refused([&] { range.setxy(3, 3, 1); }),
              "Tried to set a range variable outside the dimensions in routine 'setxy' (3, 3).");
    // Column 1 of row 3 keeps x times y within six items, but lies past them.
    EXPECT_EQ(refused([&] { range(1, 3) = 0; }), "Tried to set an item outside the (2D) list.  (6,7).");
    EXPECT_EQ(refused([&] { constant(1, 3); }), "Tried to access an item outside the (2D) list. (6,7).");
    EXPECT_EQ(refused([&] { range.setxy(1, 3, 1); }), "Tried to set an item outside the (2D) list.  (6,7).");
    EXPECT_EQ(refused([&] { range.getxy(1, 3); }), "Tried to access an item outside the (2D) list. (6,7).");
}

TEST_F(RangeTest, Direction) {
    EXPECT_EQ(list<1>({1, 2, 2, 3}).thisdirection(), 0);
    EXPECT_EQ(list<1>({3, 2, 2, 1}).thisdirection(), 1);
    EXPECT_EQ(list<1>({1, 2, 1}).thisdirection(), 4);
    EXPECT_EQ(list<1>({2, 2, 2}).thisdirection(), 3);
    EXPECT_EQ(list<1>({2, 2, 3}).thisdirection(), 0);
    EXPECT_EQ(list<1>({7}).thisdirection(), 3);
    EXPECT_EQ(list<1>({2, 1, std::nan("")}).thisdirection(), 1) << "what cannot be compared keeps the direction";
}

TEST_F(RangeTest, OrderIsChecked) {
    EXPECT_NO_THROW(list<1>({1, 1, 2}).checkascending());
    EXPECT_NO_THROW(list<1>({2, 1, 1}).checkdescending());
    EXPECT_EQ(
        failure<notascending>([] {
            list<1>({1, 3, 2}, 1, "Rents").checkascending();
        }),
        "Error INP28: Range not in ascending order when it should be  Variable Rents \nVariable: Rents. \nMessage: "
        "Problem with item number 2 in a range Rents in routine checkascending. It wasn't.. \nClass 'Range'. ");
    EXPECT_EQ(
        failure<notdescending>([] {
            list<1>({1, 3}, 1, "Rents").checkdescending();
        }),
        "Error INP29: Range not in descending order when it should be  Variable Rents \nVariable: Rents. \nMessage: "
        "Problem with item number 1 in a range Rents in routine checkdescending. It wasn't.. \nClass 'Range'. ");
    EXPECT_TRUE(list<1>({2, 2 + 1e-13, 2}).allequal());
    EXPECT_FALSE(list<1>({2, 2, 2.1}).allequal());
    EXPECT_TRUE((list<1, std::string>({"a"}).allequal()));
}

TEST_F(RangeTest, SortsAnyOrderBothWays) {
    static Numbers range;
    std::mt19937 random(1);
    for (const int n : {0, 1, 2, 3, 10, 1000}) {
        Doubles expected(static_cast<std::size_t>(n));
        std::iota(expected.begin(), expected.end(), 1.0);
        for (double& value : expected) value = std::floor(value / 3); // with equal items
        Doubles shuffled = expected;
        std::shuffle(shuffled.begin(), shuffled.end(), random);
        for (const bool ascending_order : {true, false}) {
            range.dimension(n);
            std::copy(shuffled.begin(), shuffled.end(), range.begin());
            range.heapsort(ascending_order);
            EXPECT_EQ(items(range), expected);
            std::reverse(expected.begin(), expected.end());
        }
    }
    Numbers& named = list<1>({2, 1}, 1, "Rents");
    const int before = trace().count();
    named.heapsort(true);
    EXPECT_EQ(trace().text(before + 1), "heapsort\t\tRents (2): 2.000, 1.000");
}

TEST_F(RangeTest, ShortensByTrailingAndLeadingZeros) {
    Numbers& range = list<1>({0, 5, 0, 1e-13});
    range.trailingzerosize();
    EXPECT_EQ(items(range), (Doubles{0, 5}));
    EXPECT_EQ(trace_lines(), (std::vector<std::string>{"0 Info\t\tTrailingZeroSize: Array length reduced by 1 to 3",
                                                       "0 Info\t\tTrailingZeroSize: Array length reduced by 1 to 2"}));
    Numbers& zeros = list<2>({0, 0});
    zeros.trailingzerosize();
    EXPECT_EQ(zeros.size(), 0);
    const int before = trace().count();
    Numbers& kept = list<3>({0, 0});
    kept.trailingzerosizenz();
    EXPECT_EQ(kept.size(), 1);
    EXPECT_EQ(trace().count(), before);
    Numbers& first = list<4>({1, 0, 0, 0, 9});
    first.trailingzerosize(list<5>({1, 2, 0, 0}));
    EXPECT_EQ(items(first), (Doubles{1, 0}));
    Numbers& leading = list<6>({0, 0, 3, 0, 4});
    leading.precedingzerosize();
    EXPECT_EQ(items(leading), (Doubles{3, 0, 4}));
    zeros = list<7>({0, 0, 0});
    zeros.precedingzerosize();
    EXPECT_EQ(zeros.size(), 0);
}

TEST_F(RangeTest, ShortensByTheBlanksOfTheSheet) {
    Numbers& range = list<1>({1, 2, 3, 4, 5});
    range.trailingblanksize();
    EXPECT_EQ(trace().count(), 0);
    range.setlastnonblank(3);
    range.trailingblanksize();
    EXPECT_EQ(range.size(), 3);
    EXPECT_EQ(trace().text(1),
              "If Clause\t\tLast non blank position 3 is less than the array length (5), reducing length "
              "accordingly");

    Numbers& first = list<2>({1, 2, 3, 4, 5});
    Numbers& second = list<3>({1, 2, 3, 4});
    second.setlastnonblank(2);
    int before = trace().count();
    first.trailingblanksize1(second);
    EXPECT_EQ(first.size(), 2);
    EXPECT_EQ(second.size(), 2);
    EXPECT_EQ(trace_lines(before + 1),
              (std::vector<std::string>{
                  "0 If Clause\t\tRange size set initially to 5, conducting further tests",
                  "0 If Clause\t\tArray 2: Last item  position of array 2 (4) is less than the array 1 length (5), "
                  "reducing length accordingly",
                  "0 If Clause\t\tArray 2: Last non blank position of array 2 2 is less than the array length (4), "
                  "reducing length accordingly"}));
    Numbers& third = list<2>({1, 2, 3});
    third.setlastnonblank(1);
    before = trace().count();
    third.trailingblanksize1(list<3>({1, 2, 3}));
    EXPECT_EQ(third.size(), 1);
    EXPECT_EQ(trace_lines(before + 1).size(), 1u);
}

TEST_F(RangeTest, GivesRangesTheShortestOfTheirLengths) {
    Numbers& one = list<1>({1, 2, 3, 4});
    Numbers& two = list<2>({1, 2, 3});
    Range<int>& whole_numbers = list<3, int>({1, 2});
    EXPECT_EQ(one.makesamesizegeneric(two), 3);
    EXPECT_EQ(one.size(), 3);
    EXPECT_EQ(trace().text(trace().count()), "Return Value\t3\tReturning from makesamesize");
    EXPECT_EQ(trace().currentlevel(), 0);
    EXPECT_EQ(one.makesamesizespecific(whole_numbers), 2);
    EXPECT_EQ(one.size(), 2);
    EXPECT_EQ(list<1>({1, 2, 3}).makesamesize(list<2>({1, 2, 3, 4}), whole_numbers), 2);

    // One value may stand for a whole list, but only where both others are lists.
    EXPECT_EQ(list<1>({1, 2, 3}).makesamesize(list<2>({1, 2}), list<4>({9}), true), 3);
    EXPECT_EQ(list<2>({1, 2}).size(), 2);
    EXPECT_EQ(trace().text(trace().count()), "Return Value\t3\tReturning from makesamesize");
    EXPECT_EQ(list<1>({1, 2, 3}).makesamesize(list<2>({1}), list<4>({9}), true), 1);
    EXPECT_EQ(list<1>({1, 2, 3}).makesamesize(list<2>({1, 2}), list<4>({9}), false), 1);

    list<1>({1, 2}, 1, "Rents").checksamesize(list<2>({3, 4}));
    EXPECT_EQ(failure<inputrangelength2>([] {
                  list<1>({1, 2}, 1, "Rents").checksamesize(list<2>({1}, 1, "Dates"));
              }),
              "Error INP27: Two ranges that are supposed to be the same length were not  Variable Rents \nVariable: "
              "Rents. \nMessage: Length of Rents = 2 Length of Dates= 1. \nClass 'Range'. ");
}

TEST_F(RangeTest, DatesTieAmountsToThem) {
    const date none, first(2004, 1, 14), last(2005, 1, 14);
    Dates& dates = list<1, date>({first, none, last}, 1, "Dates");
    Numbers& amounts = list<1>({10, 0, 30}, 1, "Amounts");
    EXPECT_EQ(dates.datesize(amounts), 2);
    EXPECT_EQ(items(dates), (std::vector<date>{first, last}));
    EXPECT_EQ(items(amounts), (Doubles{10, 30}));
    EXPECT_EQ(trace_lines(),
              (std::vector<std::string>{"1 DateSize (2 ranges)\t\tDates,Amounts",
                                        "0 Info\t\tNote - a range that had blanks has been compacted from 3 to 2"}));

    // A row with an amount but no date stays, unless it is at the end.
    Numbers& undated = list<1>({10, 5, 30, 40});
    EXPECT_EQ((list<1, date>({first, none, last, none}).datesize(undated)), 3);
    EXPECT_EQ(items(undated), (Doubles{10, 5, 30}));
    EXPECT_EQ(trace().text(trace().count()),
              "Info\t\tWarning - one or more range elements were ignored because there was "
              "no corresponding date (range size=3)");

    // With more lists a row goes only if all its amounts are zero.
    Numbers& rates = list<2>({1, 0, 0, 4, 5});
    Numbers& costs = list<3>({1, 0, 3, 4, 0});
    Dates& five = list<1, date>({first, none, none, last, none});
    EXPECT_EQ(five.datesize(rates, costs), 3);
    EXPECT_EQ(items(costs), (Doubles{1, 3, 4}));
    EXPECT_EQ(items(five), (std::vector<date>{first, none, last}));
    EXPECT_EQ(trace().text(trace().count() - 1), "Info\t\tWarning - a range element was ignored because there was no "
                                                 "corresponding date (range size=4)");
}

TEST_F(RangeTest, TransposesThereAndBack) {
    Numbers& range = list<1>({1, 2, 3, 4, 5, 6}, 3);
    range.transpose();
    EXPECT_EQ(items(range), (Doubles{1, 4, 2, 5, 3, 6}));
    EXPECT_EQ(range.getcolumns(), 2);
    EXPECT_EQ(trace().count(), 6);
    EXPECT_EQ(trace().text(2), "Info\t\tTranslating (2,1) -> (1,2)");
    range.transpose();
    EXPECT_EQ(items(range), (Doubles{1, 2, 3, 4, 5, 6}));
}

TEST_F(RangeTest, AssignmentCopiesItemsAndShape) {
    static Range<std::string> from, to;
    from.dimension(2, 2);
    from(1) = "a";
    from(2) = std::string(100, 'b');
    to.dimension(3);
    to = from;
    EXPECT_EQ(items(to), items(from));
    EXPECT_EQ(to.getcolumns(), 2);
    EXPECT_EQ(describe(to), "Unspecified (2): a, " + std::string(100, 'b'));
}

TEST(RangeUntraced, WorkTakesNothingFromTheHeap) {
    Numbers& range = list<1>({3, 1, 2, 0});
    list<2>({1, 2});
    (void)list<1, date>({date(2004, 1, 14), date(2005, 1, 14)});
    const std::size_t before = allocations();
    range.dimension(5000);
    range.heapsort(true);
    range.trailingzerosize();
    range.transpose();
    range.makesamesize(list<2>({1, 2}));
    list<1, date>({date(2004, 1, 14), date(2005, 1, 14)}).datesize(range);
    EXPECT_EQ(allocations(), before);
}

TEST_F(RangeTest, PoolsGiveTheSameObjectForANumberUpToTheirLast) {
    EXPECT_EQ(&RangePool<double>::get(25), &RangePool<double>::get(25));
    EXPECT_NE(&RangePool<double>::get(1), &RangePool<double>::get(2));
    EXPECT_EQ(failure<outofrange>([] { RangePool<double>::get(26); }),
              "Error INP02: Out Of Range \nMessage: The range number required (26) exceeds the dimensions of the this "
              "particular RangePool class (24). \nClass 'RangePool'. ");
    EXPECT_NO_THROW(RangePool<date>::get(15));
    EXPECT_THROW(RangePool<date>::get(16), outofrange);
    VarPool<double>::get(19) = 1.5;
    EXPECT_EQ(VarPool<double>::get(19), 1.5);
    EXPECT_EQ(failure<outofrange>([] { VarPool<double>::get(20); }), "Error INP02: Out Of Range \nClass 'VarPool'. ");
}

} // namespace
} // namespace qx::test
