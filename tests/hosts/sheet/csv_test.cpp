#include "hosts/sheet/csv.h"

#include "support/cases.h"

#include <gtest/gtest.h>

#include <random>

namespace qx::sheet {
namespace {

/// Fields as "a|b/c" and problems after " ! ".
std::string read(std::string_view text) {
    std::vector<Problem> problems;
    std::string shown;
    for (const auto& row : read_csv(text, problems)) {
        if (!shown.empty()) shown += "/";
        for (std::size_t i = 0; i < row.size(); ++i) shown += (i > 0 ? "|" : "") + row[i];
    }
    for (const Problem& problem : problems) shown += " ! " + address_text(problem.cell) + " " + problem.message;
    return shown;
}

TEST(Csv, FieldsAreThoseOfTheStandard) {
    EXPECT_EQ(read("a,b,c\r\nd,e,f\r\n"), "a|b|c/d|e|f");
    EXPECT_EQ(read("a,\"b,c\",\"d\"\"e\"\n"), "a|b,c|d\"e");
    EXPECT_EQ(read("\"two\nlines\",x"), "two\nlines|x");
    EXPECT_EQ(read("a\rb"), "a/b");
    EXPECT_EQ(read(",\n\n,,"), "|//||");
    EXPECT_EQ(read("\xEF\xBB\xBF\"a\",b"), "a|b");
    EXPECT_EQ(read(""), "");
    EXPECT_EQ(read("a \"quoted\" word"), "a \"quoted\" word");
}

TEST(Csv, FaultsAreToldWithTheirPlaceAndTheRestIsRead) {
    EXPECT_EQ(read("a,b\nc,\"d\ne,f"), "a|b/c|d/e|f ! B2 line 2, column 3: the quote is not closed");
    EXPECT_EQ(read("\"a\"b,c"), "ab|c ! A1 line 1, column 4: text after the closing quote");
    EXPECT_EQ(read("x\n\"é\n\"y\""), "x/é\ny\" ! A2 line 3, column 2: text after the closing quote");
    EXPECT_EQ(read("\xEF\xBB\xBF\"a"), "a ! A1 line 1, column 1: the quote is not closed");
    std::string line; // the columns of many faults in one line are counted once
    for (int i = 0; i < 300'000; ++i) line += "\"é\"x,";
    std::vector<Problem> problems;
    read_csv(line, problems);
    ASSERT_EQ(problems.size(), 300'001u); // and one for the columns that a sheet does not have
    EXPECT_EQ(problems.back().message, "line 1, column 1499999: text after the closing quote");
}

std::string shown_cells(Workbook& book) {
    std::string text;
    for (std::uint32_t row = 0; row < book.grid(0).rows(); ++row) {
        if (row > 0) text += "/";
        for (std::uint32_t column = 0; column < book.grid(0).columns(); ++column)
            text += (column > 0 ? "|" : "") + test::shown(book.value({row, static_cast<std::uint16_t>(column), 0}));
    }
    return text;
}

std::string load(std::string_view text) {
    Workbook book;
    std::vector<Problem> problems = load_csv(book, 0, text);
    book.recalculate();
    const std::vector<Problem> more = book.problems();
    problems.insert(problems.end(), more.begin(), more.end());
    std::string shown = shown_cells(book);
    for (const Problem& problem : problems) shown += "\n" + address_text(problem.cell) + ": " + problem.message;
    return shown;
}

TEST(Csv, CellsAreReadAsAUserWouldEnterThem) {
    EXPECT_EQ(load("1,-2.5, 3 ,1e3,12%,\"1,234.50\""), "1|-2.5|3|1000|0.12|1234.5");
    EXPECT_EQ(load("true,#N/A,x,\"\",007,1.2.3"), "TRUE|#N/A|\"x\"|empty|7|\"1.2.3\"");
    EXPECT_EQ(load("2026-11-21,21-Nov-2026,31/12/2026,2026-02-30"), "46347|46347|\"31/12/2026\"|\"2026-02-30\"");
    EXPECT_EQ(load("=A2*2,\"=SUM(A2,B2)\"\n4,5"), "8|9/4|5");
    EXPECT_EQ(load("price \xA3,\x80 and \x93q\x94,na\xC3\xAFve"), "\"price £\"|\"€ and “q”\"|\"naïve\"");
}

TEST(Csv, WhatIsWrongIsToldByCellAndTheRestCalculated) {
    EXPECT_EQ(load("=1+,=A3\n=nosuch(1),=C2\n5,=B3,=A3*2\n"),
              "#NAME?|5|empty/#NAME?|0|empty/5|#REF!|10\n"
              "A1: character 4 of =1+: the formula ends where a value is expected\n"
              "A2: unknown function \"nosuch\"\n"
              "B3: circular reference: B3 -> B3");
    EXPECT_EQ(load("=SUM(1,2)"), "#NAME?|\"2)\"\nA1: character 7 of =SUM(1: the bracket opened at character 5 is not "
                                 "closed (a formula with commas needs quotes)");
    std::string sum = "=1"; // a long formula is shown around the fault
    for (int i = 0; i < 1000; ++i) sum += "+é";
    const std::string told = load(sum + "+");
    EXPECT_NE(told.find("A1: character 2004 of ...+é"), std::string::npos) << told;
    EXPECT_LT(told.size(), 300u);
    EXPECT_EQ(load("a;b\n1;=A2"), "\"a;b\"/\"1;=A2\"\nA2: fields are separated by commas, not by semicolons");
    EXPECT_EQ(load("1;=A2,x"), "\"1;=A2\"|\"x\"") << "a text like any other";
    EXPECT_EQ(load("\xFF\xFE=\x01"), "\nA1: the file is UTF-16; save it as CSV in UTF-8");
}

TEST(Csv, ArrayFormulasCoverTheirRectangles) {
    EXPECT_EQ(load("\"{={1,2;3,4}}\",{}\n{},{}\n"), "1|2/3|4");
    EXPECT_EQ(load("{=C1:C2*2},x,1\n{=C1:C2*2},y,5\n"), "2|\"x\"|1/10|\"y\"|5");
    EXPECT_EQ(load("{=A2+1},{}\n5\n{}"), "6|6/5|empty\nA3: {} belongs to no array formula");
    EXPECT_EQ(load("{=1+}"), "#NAME?\nA1: character 5 of {=1+}: the formula ends where a value is expected");
}

TEST(Csv, ResultsReadBackEqual) {
    Workbook book, again;
    load_csv(book, 0, "=1/3,2026-11-21,\"a \"\"b\"\", c\",=TRUE\n,,\n=NA(),=B1+30,\" x\",=10^20,=2/3*1e-9");
    const std::string saved = save_csv(book, 0);
    EXPECT_NE(saved.find("2026-12-21"), std::string::npos) << saved; // a date and days make a date
    EXPECT_NE(save_csv(book, 0, false).find("46377"), std::string::npos);
    EXPECT_TRUE(load_csv(again, 0, saved).empty());
    EXPECT_EQ(shown_cells(again), shown_cells(book));
}

TEST(Csv, DaysFromADateEnteredAsANumberAreNoDate) {
    Workbook book;
    load_csv(book, 0, "38000,=MonthEnd(A1),=B1-A1,=B1-30000");
    EXPECT_EQ(save_csv(book, 0), "38000,2004-01-31,17,1921-12-12\r\n");
}

TEST(Csv, AnyBytesAreRead) {
    std::mt19937 random(4);
    const std::string_view bytes = "\"\",,\n\r=(A1{}+;\xEF\xBB\x80 x1#";
    for (int round = 0; round < 3000; ++round) {
        std::string text;
        for (int length = static_cast<int>(random() % 40); length > 0; --length)
            text += random() % 9 == 0 ? static_cast<char>(random()) : bytes[random() % bytes.size()];
        load(text);
    }
}

} // namespace
} // namespace qx::sheet
