// Lists on their way to the cells of an array formula: shape, filling, limits.
#include "addin/declare.h"
#include "core/logs.h"
#include "stub_host.h"

#include <gtest/gtest.h>

#include <fstream>

namespace qx::test {
namespace {

const Range<double>& count_to(int n) {
    static Range<double> list;
    list.dimension(n);
    for (int i = 1; i <= n; ++i) list(i) = i;
    return list;
}
const Range<double>& echo_list(Range<double>& list) { return list; }
std::string repeated(int n) { return std::string(static_cast<std::size_t>(n), 'y'); }
const Range<std::string>& many_texts(int n) {
    static Range<std::string> list;
    list.dimension(n);
    for (std::string& text : list) text.assign(300, 'z');
    return list;
}
double product(double a, double b) { return a * b; }

class Results : public ::testing::Test {
  protected:
    StubHost host;
    Cells cells;
    const Function list = test_function("CountTo", core<count_to>, {{"N", "How many"}});

    std::string count(int n, const OPER& caller) {
        host.caller = caller;
        return shown(call(list, {number_cell(n)}));
    }
};

TEST_F(Results, ShapeFollowsTheCaller) {
    EXPECT_EQ(count(3, sref_cell({4, 8, 2, 2})), "{1;2;3;empty;empty}") << "a column of five";
    EXPECT_EQ(count(3, sref_cell({4, 4, 2, 6})), "{1,2,3,empty,empty}") << "a row of five";
    EXPECT_EQ(count(4, sref_cell({4, 5, 2, 4})), "{1,2,3;4,empty,empty}") << "two rows of three";
    EXPECT_EQ(count(3, sref_cell({4, 4, 2, 2})), "{1,2,3}") << "one cell";
    EXPECT_EQ(count(3, sref_cell({0, 0, 0, 0})), "{1,2,3}") << "the sheet's first cell";
    EXPECT_EQ(count(1, sref_cell({4, 4, 2, 2})), "1");
    EXPECT_EQ(count(1, sref_cell({4, 5, 2, 2})), "{1;empty}");
    EXPECT_EQ(count(5, sref_cell({4, 5, 2, 2})), "{1;2}") << "a selection too small shows what fits";
    EXPECT_EQ(count(0, sref_cell({4, 5, 2, 2})), "empty");
    EXPECT_EQ(count(3, nil_cell()), "empty") << "no cell to fill";
    EXPECT_EQ(count(3, error_cell(xlerrNA)), "{1,2,3}") << "a caller of no known type";
}

TEST_F(Results, ReferencesFromMacros) {
    XLMREF rectangles{1, {{4, 6, 2, 2}}};
    OPER caller{{.num = 0}, xltypeRef};
    caller.val.mref = {&rectangles, 1};
    EXPECT_EQ(count(2, caller), "{1;2;empty}");
    EXPECT_EQ(host.freed, 1) << "the caller is given back";
}

TEST_F(Results, BrokenRectanglesOfLargerGrids) {
    EXPECT_EQ(count(3, sref_cell({4, 4, 5, 0})), "{1,2,3}") << "one row: as wide as the list";
    EXPECT_EQ(count(3, sref_cell({4, 6, 5, 0})), "{1;2;3}") << "several rows: one column";
    EXPECT_EQ(count(3, sref_cell({4, 0, 5, 5})), "{1;2;3}") << "one column: as high as the list";
    EXPECT_EQ(count(3, sref_cell({4, 0, 5, 7})), "{1,2,3}") << "several columns: one row";
}

TEST_F(Results, ARectangleKeepsItsShape) {
    const Function echo = test_function("Echo", core<echo_list>, {{"Values", "Some values"}});
    const OPER block = cells.array(
        2, 3, {number_cell(1), number_cell(2), number_cell(3), number_cell(4), number_cell(5), number_cell(6)});
    host.caller = sref_cell({0, 9, 3, 3});
    EXPECT_EQ(shown(call(echo, {block})), "{1,2,3;4,5,6}");
}

TEST_F(Results, Limits) {
    EXPECT_NE(count(10000, sref_cell({4, 4, 2, 2})), "#NUM!");
    EXPECT_EQ(count(10001, sref_cell({4, 4, 2, 2})), "#NUM!");
    EXPECT_EQ(count(3, sref_cell({0, 10000, 2, 2})), "#NUM!") << "10,001 cells, even for a list of 3";
    EXPECT_EQ(last_class(), "erroutrange");
    EXPECT_EQ(count(3, sref_cell({1, 10000, 2, 2})).substr(0, 8), "{1;2;3;e");
}

TEST_F(Results, TextsAreCutAt254Characters) {
    const Function text = test_function("Text", core<repeated>, {{"N", "How many"}});
    EXPECT_EQ(shown(call(text, {number_cell(254)})), '"' + std::string(254, 'y') + '"');
    EXPECT_EQ(shown(call(text, {number_cell(300)})), '"' + std::string(254, 'y') + '"');
    const Function texts = test_function("Texts", core<many_texts>, {{"N", "How many"}});
    const OPER* const result = call(texts, {number_cell(10000)});
    ASSERT_EQ(result->type(), xltypeMulti);
    EXPECT_EQ(shown(&result->val.array.lparray[9999]), '"' + std::string(254, 'z') + '"');
}

TEST_F(Results, WatchOfLargeNumbers) {
    const Function function = test_function("Product", core<product>, {{"A", "A factor"}, {"B", "A factor"}});
    large_number_watch().close();
    std::remove("qx_flout.txt");
    EXPECT_EQ(shown(call(function, {number_cell(1e5), number_cell(1e5)})), "10000000000");
    EXPECT_FALSE(std::ifstream("qx_flout.txt").good());
    EXPECT_EQ(shown(call(function, {number_cell(-1e6), number_cell(1e5)})), "-100000000000");
    std::string line;
    std::getline(std::ifstream("qx_flout.txt") >> std::ws, line);
    EXPECT_EQ(line, "Large Number Found: Product");
    std::remove("qx_flout.txt");
}

} // namespace
} // namespace qx::test
