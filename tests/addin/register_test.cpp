// The register: every row against a golden file, its order and categories, and a lint of all help.
#include "addin/register_order.h"
#include "addin/registration.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cctype>
#include <cstdlib>
#include <fstream>
#include <map>
#include <set>
#include <sstream>

namespace qx::test {
namespace {

/// Rows of the whole register by category, in the register's order.
constexpr struct {
    const char* category;
    int rows;
} rows_of_categories[] = {
    {"QX: Accounting And Tax", 15},
    {"QX: Time Value Of Money Analysis", 57},
    {"QX: Levels Over Time Projections", 15},
    {"QX: Discounted Cash Flow", 43},
    {"QX: Text", 15},
    {"QX: Compatibility", 26},
    {"QX: Special Dates", 29},
    {"QX: Miscellaneous", 60},
    {"QX: Constant Rate Projections", 26},
    {"QX: Projections NPV", 24},
    {"QX: Date and Time Calculations", 54},
    {"QX: Petroleum Economics", 7},
    {"QX: Banking", 38},
    {"QX: Instantaneous Level Projections", 33},
    {"QX: Real Estate", 103},
    {"QX: Range Operations", 53},
    {"QX: Interpolated and Curve-Fitted Projections", 4},
    {"QX: Simulation Modelling", 14},
    {"QX: Discrete Amount Projections", 40},
    {"QX: Mathematical Calculations", 11},
    {"QX: Stepped Rate Projections", 32},
    {"QX: Distributed Amount Projections", 35},
};

std::map<std::string_view, const char*> categories_in_order() {
    std::map<std::string_view, const char*> categories;
    std::size_t place = 0;
    for (const auto& [category, rows] : rows_of_categories)
        for (int i = 0; i < rows && place < std::size(register_order); ++i)
            categories[register_order[place++]] = category;
    return categories;
}

TEST(Register, OrderHoldsEveryDeclaredFunctionUnderItsCategory) {
    const auto categories = categories_in_order();
    EXPECT_EQ(categories.size(), 734u) << "a name twice";
    EXPECT_EQ(std::size(register_order) + std::size(command_order), 745u);
    for (const Registered* node = all_functions(); node != nullptr; node = node->next) {
        const auto found = categories.find(node->function.name);
        ASSERT_NE(found, categories.end()) << node->function.name << " has no place in register_order.h";
        EXPECT_STREQ(category_name(node->function.category), found->second) << node->function.name;
    }
    const std::set<std::string_view> commands(std::begin(command_order), std::end(command_order));
    for (const Command* node = all_commands(); node != nullptr; node = node->next)
        EXPECT_TRUE(commands.contains(node->name)) << node->name;
}

std::string line_of(const RegisterRow& row) {
    std::string line;
    for (const std::string& text : row.columns()) line += (line.empty() ? "" : "\t") + text;
    return line;
}

TEST(Register, RowsAreThoseOfTheGoldenFile) {
    const std::string path = QX_SOURCE_DIR "/tests/golden/registration.tsv";
    if (std::getenv("QX_WRITE_GOLDEN") != nullptr) {
        std::ofstream file(path);
        for (const RegisterRow& row : the_register()) file << line_of(row) << '\n';
    }
    std::map<std::string, std::string> golden;
    std::ifstream file(path);
    ASSERT_TRUE(file) << path;
    std::vector<std::string> order;
    for (std::string line; std::getline(file, line);) {
        order.push_back(line.substr(0, line.find('\t')));
        golden[order.back()] = line;
    }
    std::vector<std::string> registered;
    for (const RegisterRow& row : the_register()) {
        registered.emplace_back(row.procedure());
        EXPECT_EQ(line_of(row), golden[registered.back()]) << "if this is meant: scripts/golden";
    }
    EXPECT_EQ(registered, order) << "if this is meant: scripts/golden";
}

TEST(Register, ARowHasItsColumnsAndTopic) {
    const auto row = std::find_if(the_register().begin(), the_register().end(),
                                  [](const RegisterRow& row) { return std::string_view(row.name()) == "GoalSeek"; });
    ASSERT_NE(row, the_register().end());
    const auto columns = row->columns();
    EXPECT_EQ(columns[0], "XLGoalSeek");
    EXPECT_EQ(columns[1], "RRPRP");
    EXPECT_EQ(columns[2], "GoalSeek");
    EXPECT_EQ(columns[3], "TargetCell,TargetValue,ChangingCell,[Order]");
    EXPECT_EQ(columns[4], "1");
    EXPECT_EQ(columns[5], "QX: Miscellaneous");
    EXPECT_EQ(columns[6], "");
    EXPECT_NE(columns[12], "");
    EXPECT_EQ(columns[13], "");

    constexpr Function dpd{.name = "DpD", .category = Category::DateAndTime, .calls = {}, .help = ""};
    EXPECT_EQ(topic_of(dpd), 933);
    std::set<int> topics;
    for (const RegisterRow& row : the_register())
        EXPECT_TRUE(row.function == nullptr || topics.insert(row.topic).second) << row.name() << " shares a topic";
}

// --- The words -------------------------------------------------------------------------------------------------------

/// Letters and digits in lower case: what is left when two texts say the same.
std::string plain(std::string_view text) {
    std::string plain;
    for (const char c : text)
        if (std::isalnum(static_cast<unsigned char>(c))) plain += static_cast<char>(std::tolower(c));
    return plain;
}

/// What is wrong with a help text, or "".
std::string fault_of(const std::string& help, std::string_view name) {
    if (help.empty()) return "is empty";
    if (help.size() > 255) return "is longer than 255 characters";
    for (const char c : help)
        if (c < ' ' || c > '~') return "has a character that not every host shows";
    if (help.front() == ' ' || help.back() == ' ') return "has a space at an end";
    for (std::size_t at = 0; (at = help.find("  ", at)) != std::string::npos; ++at)
        if (help[at - 1] != '.' && help.compare(at, 8, "  dates ") != 0 && help.compare(at, 8, "  range ") != 0 &&
            help.compare(at, 11, "  Historic ") != 0)
            return "has two spaces in a row within a sentence";
    if (std::islower(static_cast<unsigned char>(help.front()))) return "does not begin with a capital";
    for (std::size_t at = 0; (at = help.find(". ", at)) != std::string::npos; ++at) {
        const bool abbreviation = at >= 2 && help[at - 2] == '.'; // e.g.
        if (!abbreviation && std::islower(static_cast<unsigned char>(help[at + 2])))
            return "has a sentence that does not begin with a capital";
    }
    if (plain(help) == plain(name)) return "repeats the name";
    return "";
}

TEST(Register, HelpIsWrittenForAReader) {
    const std::set<std::string_view> known(std::begin(register_order), std::end(register_order));
    for (const RegisterRow& row : the_register()) {
        const std::string name = row.name();
        const auto columns = row.columns();
        EXPECT_EQ(fault_of(columns[column_help], name), "") << name << ": " << columns[column_help];
        if (row.function == nullptr) continue;
        const Function& function = row.function->function;
        EXPECT_LE(columns[column_argument_text].size(), 255u) << name;
        std::set<std::string> names;
        for (int i = 0; i < function.arity(); ++i) {
            const Argument& argument = function.args[i];
            EXPECT_EQ(fault_of(argument.help, argument.name), "")
                << name << ", " << argument.name << ": " << argument.help;
            EXPECT_TRUE(names.insert(plain(argument.name)).second) << name << " has " << argument.name << " twice";
        }
        std::stringstream see_also(function.see_also);
        for (std::string other; std::getline(see_also, other, ',');) {
            EXPECT_TRUE(known.contains(other)) << name << " points to " << other;
            EXPECT_NE(other, name) << "points to itself";
        }
        for (const char* const example : function.examples)
            EXPECT_TRUE(example == nullptr || std::string(example).find(name + "(") != std::string::npos)
                << name << " has an example of another function: " << example;
    }
}

} // namespace
} // namespace qx::test
