// The sheet "Globals", by which a workbook takes the place of the companion workbook.
#include "addin/registration.h"
#include "hosts/sheet/workbook.h"
#include "numerics/random.h"

#include <gtest/gtest.h>

namespace qx::test {
namespace {

int run_set_semi_random(sheet::Workbook& book) {
    const Command* command = all_commands();
    while (std::string(command->name) != "CPPQX_SetSemiRandom") command = command->next;
    return book.run(command->run);
}

TEST(Companion, TheSeedIsInTheFourthCellOfTheSecondRowOfGlobals) {
    seed_random(4711);
    const double with = next_random();
    seed_random(42);
    const double without = next_random();

    sheet::Workbook book;
    EXPECT_EQ(run_set_semi_random(book), 0);
    EXPECT_EQ(next_random(), without) << "without such a sheet the seed stays";
    const std::uint16_t globals = book.add_sheet("Globals");
    book.set_value({1, 3, globals}, sheet::Value::number(4711));
    EXPECT_EQ(run_set_semi_random(book), 0);
    EXPECT_EQ(next_random(), with);
    book.set_formula({1, 3, globals}, "=4700+11"); // a formula too
    EXPECT_EQ(run_set_semi_random(book), 0);
    EXPECT_EQ(next_random(), with);
    seed_random(-1234567);
    const double with_long = next_random();
    book.set_value({1, 3, globals}, sheet::Value::number(1234567)); // the sign makes no sequence of its own
    EXPECT_EQ(run_set_semi_random(book), 0);
    EXPECT_EQ(next_random(), with_long);
    seed_random(default_seed);
}

} // namespace
} // namespace qx::test
