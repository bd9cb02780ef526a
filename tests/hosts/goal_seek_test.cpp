// Goal seeks in the headless workbook, one by one and as a model declares them.
#include "commands/goal_seek.h"
#include "hosts/sheet/csv.h"
#include "hosts/sheet/goal_seek.h"
#include "hosts/sheet/workbook.h"

#include <gtest/gtest.h>

#include <cmath>
#include <fstream>
#include <ostream>
#include <sstream>
#include <stdexcept>

namespace qx::test {
namespace {

using sheet::CellAddress;
using sheet::Value;
using sheet::Workbook;

constexpr CellAddress a1{0, 0, 0}, b1{0, 1, 0};

struct Problem {
    const char* formula;
    double start, target, answer;
};

void PrintTo(const Problem& problem, std::ostream* out) { *out << problem.formula; }

class GoalSeekOf : public testing::TestWithParam<Problem> {};

TEST_P(GoalSeekOf, FindsTheValue) {
    const auto& [formula, start, target, answer] = GetParam();
    Workbook book;
    book.set_value(a1, Value::number(start));
    book.set_formula(b1, formula);
    EXPECT_TRUE(sheet::goal_seek(book, b1, target, a1));
    EXPECT_NEAR(book.value(a1).number(), answer, 1e-6 * std::max(1.0, std::fabs(answer)));
}

INSTANTIATE_TEST_SUITE_P(Formulas, GoalSeekOf,
                         testing::Values(Problem{"=3*A1-7", 0, 5, 4}, Problem{"=A1^2", 1, 2, std::sqrt(2.0)},
                                         Problem{"=-A1", 1e6, 2.5e8, -2.5e8}, Problem{"=SQRT(A1)", 1, 30, 900},
                                         Problem{"=1/A1", 5, 0.001, 1000}, Problem{"=(1+A1)^10", 0.1, 2, 0.0717734625},
                                         Problem{"=IF(A1<100,0,A1-100)", 0, 25, 125}, Problem{"=A1", 7, 7, 7}));

TEST(GoalSeek, WithoutAnAnswerLeavesTheCell) {
    Workbook book;
    book.set_value(a1, Value::number(3));
    book.set_formula(b1, "=A1^2+1");
    EXPECT_FALSE(sheet::goal_seek(book, b1, 0, a1));
    EXPECT_EQ(book.value(a1).number(), 3);
    EXPECT_EQ(book.value(b1).number(), 10);
    EXPECT_THROW(sheet::goal_seek(book, a1, 0, b1), std::invalid_argument);
}

TEST(GoalSeek, OfTheExampleRunInTheirOrder) {
    std::ifstream file(QX_SOURCE_DIR "/examples/land_price.csv");
    ASSERT_TRUE(file);
    std::stringstream text;
    text << file.rdbuf();
    Workbook book;
    ASSERT_TRUE(load_csv(book, 0, text.str()).empty());
    book.run(CPPQX_GoalSeekInit);
    book.recalculate_all();
    constexpr CellAddress declared{18, 2, 0}, land{10, 1, 0}, profit{18, 1, 0}, cost{16, 1, 0}, loan{20, 1, 0};
    EXPECT_EQ(book.value(declared).text(), "GoalSeeking [1.000] = ...");
    book.run(CPPQX_GoalSeek);
    EXPECT_EQ(goal_seek_report(), "\r\nGS Order:1.000 - GoalSeek Completed, value = 0.200"
                                  "\r\nGS Order:2.000 - GoalSeek Completed, value = 0.600"
                                  "\r\nGoal Seek concluded in 0 seconds.");
    EXPECT_EQ(goal_seek_failures(), 0);
    EXPECT_NEAR(book.value(profit).number(), 0.2, 1e-9);
    EXPECT_NEAR(book.value(loan).number(), 0.6 * book.value(cost).number(), 1e-3) << "of the cost that the first found";
    // By hand: cost is value / 1.2, of which the land bears interest.
    const double years = book.value({8, 1, 0}).number(), interest = std::pow(1.0675, years);
    const double building = 11.2e6 * 1.125 * std::pow(1.0675, years / 2);
    EXPECT_NEAR(book.value(land).number(), (22727e3 / 1.2 - building) / interest, 1e-2);
    book.recalculate_all();
    EXPECT_NEAR(book.value(declared).number(), 0.2, 1e-9) << "once run, the cell shows its target";
}

} // namespace
} // namespace qx::test
