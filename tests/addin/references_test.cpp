// References to other sheets and from other hosts than the workbook of the cases.
#include "addin/cells.h"
#include "addin/declare.h"
#include "addin/routines/references.h"
#include "hosts/sheet/workbook.h"
#include "stub_host.h"

#include <gtest/gtest.h>

namespace qx::test {
namespace {

TEST(References, OnOtherSheets) {
    sheet::Workbook book;
    const std::uint16_t costs = book.add_sheet("Costs");
    book.set_value({1, 1, costs}, sheet::Value::number(7));
    book.set_value({1, 1, 0}, sheet::Value::number(-1));
    const auto value = [&book](const char* formula) {
        return book.evaluate(book.read(formula), sheet::Area(sheet::CellAddress{9, 9, 0}));
    };
    const auto sum = [&](const char* reference) {
        return value(("SUM(" + std::string(reference) + ")").c_str()).number();
    };
    EXPECT_EQ(sum("GetRef(2,2,0,0,\"Costs\")"), 7);
    EXPECT_EQ(sum("RefPlus(Costs!A1,1,1)"), 7) << "a moved reference stays on its sheet";
    EXPECT_EQ(sum("RefPlus(A1,1,1)"), -1);
    EXPECT_EQ(value("WorkSheetName(Costs!A1)").text(), "Costs");
    EXPECT_EQ(value("WorkSheetName(A1)").text(), "Sheet1");
    book.rename_sheet(costs, "Fees");
    EXPECT_EQ(value("WorkSheetName(Costs!A1)").is_error(), true);
    EXPECT_EQ(value("WorkSheetName(Fees!A1)").text(), "Fees");
}

TEST(References, FollowWhatTheyPointTo) {
    sheet::Workbook book;
    const sheet::CellAddress sum{0, 0, 0};
    book.set_formula(sum, "=SUM(RefPlus(B1,1,0,2))");
    book.recalculate();
    EXPECT_EQ(book.value(sum).number(), 0);
    book.set_value({2, 1, 0}, sheet::Value::number(5));
    book.recalculate();
    EXPECT_EQ(book.value(sum).number(), 5) << "calculated anew though it names B1 only";
}

TEST(References, AreTracedAsTheSheetWritesThem) {
    const std::pair<XLREF, const char*> rows[] = {
        {{0, 0, 0, 0}, "A1"}, {{1, 8, 1, 2}, "B2:C9"}, {{0, 65535, 25, 26}, "Z1:AA65536"}, {{6, 6, 255, 255}, "IV7"}};
    for (const auto& [cells, words] : rows) EXPECT_EQ(describe(sref_cell(cells)), words);
}

TEST(References, WithoutAFormulaToStandIn) {
    StubHost host;
    host.fail_all = true;
    static const Function where = test_function("Coordinates", core<Coordinates>, {optional("TheRef", "A reference")});
    EXPECT_EQ(shown(call(where, {missing_cell()})), "#NUM!");
    EXPECT_EQ(last_class(), "notaref");
    host.fail_all = false;
    XLMREF several{2, {{0, 1, 0, 1}}};
    OPER reference{{.num = 0}, xltypeRef};
    reference.val.mref = {&several, 1};
    EXPECT_EQ(shown(call(where, {reference})), "#NUM!") << "a reference to several rectangles";
    EXPECT_EQ(last_class(), "notaref");
}

} // namespace
} // namespace qx::test
