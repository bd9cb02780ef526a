#include "hosts/sheet/builtins.h"
#include "hosts/sheet/workbook.h"

#include <gtest/gtest.h>

#include <random>

namespace qx::sheet {
namespace {

TEST(FormulaSyntax, FaultsAreToldWithTheirPlace) {
    const struct {
        std::string formula;
        std::size_t column;
        std::string message;
    } faults[] = {
        {"", 1, "the formula is empty"},
        {"=", 2, "the formula is empty"},
        {"1+", 3, "the formula ends where a value is expected"},
        {"=1+", 4, "the formula ends where a value is expected"},
        {"(1+2", 5, "the bracket opened at character 1 is not closed"},
        {"1)", 2, "unexpected \")\", expected an operator or the end"},
        {"1 2", 3, "unexpected \"2\", expected an operator or the end"},
        {"SUM(1;2)", 6, "unexpected \";\", expected an operator or a closing bracket"},
        {"\"abc", 1, "the text is not closed by a quote"},
        {"\"é\"+\"b", 5, "the text is not closed by a quote"},
        {"{1,2;3}", 7, "the rows of the array differ in length"},
        {"{1,,2}", 4, "unexpected \",\", expected a number, text, TRUE, FALSE or an error value in the array"},
        {"{1,2", 5, "the array opened at character 1 is not closed"},
        {"#WHAT!", 1, "unknown error value"},
        {"1e999", 1, "the number is too large"},
        {"12abc", 3, "unexpected \"a\" in a number"},
        {"*2", 1, "unexpected \"*\", expected a value"},
        {"ROUND(1)", 1, "ROUND needs 2 arguments"},
        {"ROUND(1,2,3)", 1, "ROUND takes at most 2 arguments"},
        {"1+PI(1)", 3, "PI takes no arguments"},
        {"IF(TRUE)", 1, "IF needs 2 arguments"},
        {"MonthEnd(1,2)", 1, "MonthEnd takes at most 1 argument"},
        {"'My Sheet'A1", 11, "expected \"!\" after the name of a sheet"},
        {"$", 1, "unexpected \"$\", expected a reference"},
        {"A1:B2,C3", 6, "unexpected \",\", expected an operator or the end"},
        {std::string(300, '(') + "1", 257, "nested too deeply (more than 256 levels)"},
    };
    Workbook book;
    for (const auto& fault : faults) {
        try {
            book.read(fault.formula);
            ADD_FAILURE() << fault.formula << " was read";
        } catch (const FormulaError& error) {
            EXPECT_EQ(error.what(), fault.message) << fault.formula;
            EXPECT_EQ(error.column, fault.column) << fault.formula;
        }
    }
}

TEST(FormulaSyntax, LengthIsNoDepth) {
    Workbook book;
    std::string sum = "1", signs(200000, '-'), powers = "1";
    for (int i = 1; i < 200000; ++i) sum += "+1", powers += "^1";
    const auto number = [&](const std::string& text) {
        return book.evaluate(book.read(text), Area(CellAddress{})).number();
    };
    EXPECT_EQ(number(sum), 200000.0);
    EXPECT_EQ(number(powers), 1.0);
    EXPECT_EQ(number(signs + "1"), 1.0);
    EXPECT_EQ(number(std::string(255, '(') + "7" + std::string(255, ')')), 7.0);
}

TEST(FormulaSyntax, NamesAndReferencesAreToldApart) {
    Area area;
    EXPECT_TRUE(read_area("XFD1048576", 0, area));
    EXPECT_EQ(area.last_column, 16383);
    for (const char* const text : {"XFE1", "A1048577", "A0", "AAAA1", "A1B", "", "A1:", "A:1", "A1:B2x", "$"})
        EXPECT_FALSE(read_area(text, 0, area)) << text;
    for (const char* const text : {"Rent", "_x", "Rent.2", "A0", "ABCD1", "été"}) EXPECT_TRUE(is_name(text)) << text;
    for (const char* const text : {"A1", "1x", "", "a b", "TRUE", "Rent!"}) EXPECT_FALSE(is_name(text)) << text;
}

// One name means one function, but for two that are the library's unless a file prefixes them.
TEST(Builtins, BearNoNameOfTheLibrary) {
    for (const BuiltinGroup& group : builtin_groups())
        for (const Builtin& builtin : group.functions) {
            const std::string_view name = builtin.name;
            EXPECT_EQ(find_function(name) != nullptr, name == "UNIQUE" || name == "SWITCH") << name;
            EXPECT_EQ(find_builtin(builtin.name), &builtin) << "named twice";
        }
}

// Any bytes: a value or a fault with its place, never a crash. Pieces of real formulas make deep ones likely.
TEST(FormulaSyntax, AnyTextIsReadOrRefused) {
    const std::string_view pieces[] = {"(",
                                       ")",
                                       "{",
                                       "}",
                                       ",",
                                       ";",
                                       "\"",
                                       "'",
                                       "!",
                                       "$",
                                       "A1",
                                       "A1:C3",
                                       "B:B",
                                       "1:2",
                                       "Sheet1!",
                                       "SUM(",
                                       "IF(",
                                       "IFERROR(",
                                       "INDEX(",
                                       "TEXT(",
                                       "MonthEnd(",
                                       "DateYMD(",
                                       "VLOOKUP(",
                                       "OFFSET(",
                                       "REPT(",
                                       "MID(",
                                       "SUBSTITUTE(",
                                       "DATE(",
                                       "EDATE(",
                                       "CHOOSE(",
                                       "TRANSPOSE(",
                                       "MATCH(",
                                       "SUMIFS(",
                                       "+",
                                       "-",
                                       "*",
                                       "/",
                                       "^",
                                       "&",
                                       "=",
                                       "<>",
                                       "<",
                                       ">=",
                                       "%",
                                       ":",
                                       " ",
                                       "1",
                                       "0",
                                       "-1",
                                       "1E308",
                                       "1e-320",
                                       "2958466",
                                       ".5",
                                       "TRUE",
                                       "#N/A",
                                       "\"abc\"",
                                       "\"*?~\"",
                                       "\"#,##0.00;[Red](0.0%)\"",
                                       "\"dd-mmm-yyyy hh:mm\"",
                                       "{1,2;3,4}",
                                       "{\"a\",TRUE}",
                                       "x",
                                       "\xff",
                                       "\xc3",
                                       "€",
                                       "\n"};
    std::mt19937 random(20261121);
    const auto pick = [&](std::size_t count) {
        return std::uniform_int_distribution<std::size_t>(0, count - 1)(random);
    };
    Workbook book;
    book.set_value({0, 0, 0}, Value::number(38000));
    book.set_value({1, 1, 0}, Value::text("x"));
    book.set_formula({2, 2, 0}, "A1+1");
    int values = 0;
    for (int round = 0; round < 8000; ++round) {
        std::string text;
        for (std::size_t length = 1 + pick(14); length > 0; --length)
            text += pick(40) == 0 ? std::string(1, static_cast<char>(pick(256)))
                                  : std::string(pieces[pick(std::size(pieces))]);
        int open = 0;
        for (const char c : text) open += c == '(' ? 1 : c == ')' ? -1 : 0;
        if (open > 0) text.append(static_cast<std::size_t>(open), ')');
        try {
            book.look_up(book.evaluate(book.read(text), Area(CellAddress{4, 4, 0})));
            ++values;
        } catch (const FormulaError& error) {
            EXPECT_GE(error.column, 1u) << text;
            EXPECT_LE(error.column, text.size() + 1) << text;
        }
    }
    EXPECT_GT(values, 300);
}

TEST(MovedFormula, ShiftsRelativeReferencesOnly) {
    EXPECT_EQ(moved_formula("A1+$B$1*C$2&\"A1\"", 1, 1), "B2+$B$1*D$2&\"A1\"");
    EXPECT_EQ(moved_formula("SUM(A1:B2,'A1 sheet'!A1,LOG10(A1),Rate1x,2:3,C:D)", 2, 1),
              "SUM(B3:C4,'A1 sheet'!B3,LOG10(B3),Rate1x,4:5,D:E)");
    EXPECT_EQ(moved_formula("A1+B2", -1, 0), "#REF!+B1");
    EXPECT_EQ(moved_formula("1E5+A1E", 1, 1), "1E5+A1E");
}

TEST(R1C1, ReadsAbsoluteAndRelativeParts) {
    const CellAddress cell{4, 2, 0};
    const auto read = [&](std::string_view text) {
        Area area;
        return read_r1c1_area(text, cell, 0, area) ? address_text(area) : std::string("none");
    };
    EXPECT_EQ(read("R7C2") + " " + read("R[-1]C[1]") + " " + read("rc") + " " + read("R1C1:R[2]C"), "B7 D4 C5 A1:C7");
    EXPECT_EQ(read("R[-9]C1") + " " + read("R0C1") + " " + read("R1C1x") + " " + read("Rate"), "none none none none");
}

} // namespace
} // namespace qx::sheet
