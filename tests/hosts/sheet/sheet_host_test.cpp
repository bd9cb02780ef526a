// What the workbook answers to the library, asked from inside worksheet functions made for these tests.
#include "addin/declare.h"
#include "addin/host.h"
#include "hosts/sheet/workbook.h"

#include "support/allocations.h"
#include "support/cases.h"

#include <gtest/gtest.h>

namespace qx::sheet {
namespace {

std::string text_of(const OPER& cell) {
    return cell.type() == xltypeStr ? std::string(reinterpret_cast<char*>(cell.val.str) + 1, cell.val.str[0])
                                    : "no text";
}

std::string rectangle(const XLREF& r) {
    return "R" + std::to_string(r.rwFirst) + "-" + std::to_string(r.rwLast) + "C" + std::to_string(r.colFirst) + "-" +
           std::to_string(r.colLast);
}

/// What kind of cell an argument is, in words.
std::string kind_of_cell(const OPER& cell) {
    switch (cell.type()) {
    case xltypeNum:
        return "num " + std::to_string(static_cast<int>(cell.val.num));
    case xltypeStr:
        return "str " + std::to_string(cell.val.str[0]);
    case xltypeBool:
        return cell.val.xbool ? "true" : "false";
    case xltypeErr:
        return "err " + std::to_string(cell.val.err);
    case xltypeMissing:
        return "missing";
    case xltypeNil:
        return "nil";
    case xltypeSRef:
        return "sref " + rectangle(cell.val.sref.ref);
    case xltypeRef:
        return "ref " + std::to_string(cell.val.mref.idSheet) + " " + rectangle(cell.val.mref.lpmref->reftbl[0]);
    case xltypeMulti: {
        std::string text =
            "multi " + std::to_string(cell.val.array.rows) + "x" + std::to_string(cell.val.array.columns) + ":";
        for (int i = 0; i < std::min(4, cell.val.array.rows * cell.val.array.columns); ++i)
            text += " " + kind_of_cell(cell.val.array.lparray[i]);
        return text;
    }
    default:
        return "type " + std::to_string(cell.type());
    }
}

int calls = 0; ///< of the routines below

std::string KindOf(const qx::Cell& cell) { return kind_of_cell(*cell.oper); }
std::string KindOfReference(const qx::Reference& cell) { return kind_of_cell(*cell.oper); }

/// Coerces a reference to the types of a word and gives the answer.
std::string Coerced(const qx::Reference& cell, int types) {
    ++calls;
    HostCell answer;
    const int code = Excel(xlCoerce, answer.get(), 2, const_cast<OPER*>(cell.oper), TempInt(types));
    if (code == xlretUncalced) throw uncalc(FunctionContext{});
    return code == xlretSuccess ? kind_of_cell(*answer) : host_return_text(code);
}

std::string Evaluated(const std::string& formula) {
    HostCell answer;
    const int code = Excel(xlfEvaluate, answer.get(), 1, TempStr(formula));
    if (code == xlretUncalced) throw uncalc(FunctionContext{});
    return code == xlretSuccess ? kind_of_cell(*answer) : host_return_text(code);
}

std::string Caller() {
    HostCell answer;
    return Excel(xlfCaller, answer.get(), 0) == xlretSuccess ? kind_of_cell(*answer) : "none";
}

/// Answers of the host that are texts: the sheet of a reference, its formula, all sheets.
std::string Texts(const qx::Reference& cell) {
    HostCell name, formula, sheets, id, none, registered;
    OPER* const reference = const_cast<OPER*>(cell.oper);
    EXPECT_EQ(Excel(xlSheetNm, name.get(), 1, reference), xlretSuccess);
    EXPECT_EQ(Excel(xlfGetFormula, formula.get(), 1, reference), xlretSuccess);
    EXPECT_EQ(Excel(xlfGetWorkbook, sheets.get(), 1, TempInt(1)), xlretSuccess);
    EXPECT_EQ(Excel(xlSheetId, id.get(), 1, TempStr("[Book1]Costs")), xlretSuccess);
    EXPECT_EQ(id->val.mref.idSheet, 2u);
    EXPECT_EQ(Excel(xlSheetId, none.get(), 1, TempStr("[Quexel.xla]Globals")), xlretFailed);
    EXPECT_EQ(Excel(xlfRegister, registered.get(), 1, TempStr("x")), xlretFailed);
    EXPECT_EQ(sheets->val.array.columns, 2);
    return text_of(*name) + " " + text_of(*formula);
}

double Waits() { throw uncalc(FunctionContext{}); }

template <auto routine>
constexpr Function declared(const char* name) {
    return {.name = name,
            .category = Category::Miscellaneous,
            .calls = core<routine>,
            .help = "",
            .args = {{"A", ""}, {"B", ""}}};
}
constexpr Function kind_function = declared<KindOf>("KindOf");
constexpr Function reference_function = declared<KindOfReference>("KindOfReference");
constexpr Function coerce_function = declared<Coerced>("Coerced");
constexpr Function evaluate_function = declared<Evaluated>("Evaluated");
constexpr Function caller_function = declared<Caller>("Caller");
constexpr Function texts_function = declared<Texts>("Texts");
constexpr Function waiting_function = declared<Waits>("Waits");

class SheetHostTest : public testing::Test {
  protected:
    SheetHostTest() {
        costs = book.add_sheet("Costs");
        book.set_value({0, 0, 0}, Value::number(1));
        book.set_value({1, 0, 0}, Value::text("two"));
        book.set_formula({3, 0, 0}, "A1+3");  // A4
        book.set_formula({4, 0, 0}, "A4*A6"); // A5
        book.set_formula({5, 0, 0}, "A4+1");  // A6
    }

    /// Calls a test function where a formula calls one of the library's.
    Value value(const Function& function, const std::string& arguments, const Area& caller) {
        Formula formula = book.read("DateYMD(" + arguments + ")");
        formula.functions[0] = &function;
        return book.evaluate(formula, caller);
    }
    std::string call(const Function& function, const std::string& arguments, Area caller = Area(CellAddress{})) {
        return test::shown(value(function, arguments, caller));
    }

    Workbook book;
    std::uint16_t costs;
};

TEST_F(SheetHostTest, ArgumentsArriveAsTheirTypes) {
    const struct {
        const char* argument;
        const char* kind;
    } expected[] = {
        {"7", "num 7"},
        {"\"abc\"", "str 3"},
        {"\"\"", "str 0"},
        {"REPT(\"x\",300)", "str 255"},
        {"REPT(\"€\",100)", "str 255"},       // 85 characters of three bytes
        {"\"x\"&REPT(\"€\",100)", "str 253"}, // and never a part of one
        {"TRUE", "true"},
        {"#N/A", "err 42"},
        {"", "missing"},
        {"A1", "num 1"},
        {"ZZ99", "nil"},
        {"A1:A4", "multi 4x1: num 1 str 3 nil num 4"},
        {"{1,\"a\";TRUE,#NUM!}", "multi 2x2: num 1 str 1 true err 36"},
        {"Costs!B2", "nil"},
        {"A1:A70000", "err 36"},                     // more rows than a cell can hold
        {"A:A", "multi 6x1: num 1 str 3 nil num 4"}, // as far as the sheet is used
        {"XFD1048576", "nil"},
    };
    for (const auto& [argument, kind] : expected)
        EXPECT_EQ(call(kind_function, argument), "\"" + std::string(kind) + "\"") << argument;
    EXPECT_EQ(call(reference_function, "B2:C7"), "\"sref R1-6C1-2\"");
    EXPECT_EQ(call(reference_function, "Costs!B2"), "\"ref 2 R1-1C1-1\"");
    EXPECT_EQ(call(reference_function, "IV65536"), "\"sref R65535-65535C255-255\"");
    EXPECT_EQ(call(reference_function, "IW1"), "\"err 23\"");
    EXPECT_EQ(call(reference_function, "A65537"), "\"err 23\"");
    EXPECT_EQ(call(reference_function, "A1+1"), "\"num 2\"");
}

TEST_F(SheetHostTest, CoercionCalculatesWhatItNeeds) {
    calls = 0;
    // A1:A6 holds three formulas, one of which needs another further down.
    EXPECT_EQ(call(coerce_function, "A1:A6," + std::to_string(xltypeMulti)), "\"multi 6x1: num 1 str 3 nil num 4\"");
    EXPECT_EQ(calls, 2);
    EXPECT_EQ(test::shown(book.value({4, 0, 0})), "20");
    const auto coerced = [&](const char* cell, int types) {
        return call(coerce_function, cell + ("," + std::to_string(types)));
    };
    EXPECT_EQ(coerced("A4", xltypeNum), "\"num 4\"");
    EXPECT_EQ(coerced("A1", xltypeStr), "\"str 1\"");
    EXPECT_EQ(coerced("A2", xltypeNum), "\"command failed\"");
    EXPECT_EQ(coerced("A2", xltypeNum | xltypeStr), "\"str 3\"");
    EXPECT_EQ(coerced("A1", xltypeBool), "\"true\"");
    EXPECT_EQ(coerced("A1", xltypeMulti), "\"multi 1x1: num 1\"");
    EXPECT_EQ(coerced("A1:A2", xltypeRef), "\"ref 1 R0-1C0-0\"");
    EXPECT_EQ(coerced("Z9:Z10", xltypeMulti), "\"multi 2x1: nil nil\"");
}

TEST_F(SheetHostTest, ACircleThroughACoercionEnds) {
    book.set_formula({9, 0, 0}, "DateYMD(A10:A11,64)"); // A10 coerces itself
    const_cast<Formula*>(book.formula({9, 0, 0}))->functions[0] = &coerce_function;
    book.recalculate();
    EXPECT_EQ(test::shown(book.value({9, 0, 0})), "#REF!");
    ASSERT_EQ(book.problems().size(), 1u);
    EXPECT_EQ(book.problems()[0].message, "circular reference: A10 -> A10");
}

TEST_F(SheetHostTest, WaitingCellsAreTriedAgainAfterTheOthers) {
    book.set_formula({9, 0, 0}, "DateYMD()"); // A10 waits for ever
    const_cast<Formula*>(book.formula({9, 0, 0}))->functions[0] = &waiting_function;
    book.set_formula({8, 0, 0}, "A10+1"); // A9 waits for it
    book.set_formula({10, 0, 0}, "A1+1");
    book.recalculate();
    EXPECT_EQ(test::shown(book.value({8, 0, 0})), "uncalculated");
    EXPECT_EQ(test::shown(book.value({10, 0, 0})), "2");
    EXPECT_EQ(book.problems().size(), 2u);
    EXPECT_EQ(call(waiting_function, ""), "uncalculated");
    book.set_value({9, 0, 0}, Value::number(5));
    EXPECT_EQ(test::shown(book.value({8, 0, 0})), "6");
}

TEST_F(SheetHostTest, TextsAreEvaluatedAsFormulas) {
    book.define_name("Rent", "A4");
    EXPECT_EQ(call(evaluate_function, "\"5>3\""), "\"true\"");
    EXPECT_EQ(call(evaluate_function, "\"\"\"abc\"\">5\""), "\"true\"");
    EXPECT_EQ(call(evaluate_function, "\"A6*2\""), "\"num 10\""); // not calculated when it is asked for
    EXPECT_EQ(call(evaluate_function, "\"Rent+1\""), "\"num 5\"");
    EXPECT_EQ(call(evaluate_function, "\"Costs!A1:B2\""), "\"ref 2 R0-1C0-1\"");
    EXPECT_EQ(call(evaluate_function, "\"ZZ1:ZZ2\""),
              "\"multi 2x1: nil nil\""); // further right than a reference can hold
    EXPECT_EQ(call(evaluate_function, "\"\"\"x\"\"+1\""), "\"err 15\"");
    EXPECT_EQ(call(evaluate_function, "\"1+\""), "\"command failed\"");
    EXPECT_EQ(call(evaluate_function, "\"MonthEnd(38000)>1\""), "\"command failed\""); // one function at a time
}

TEST_F(SheetHostTest, TheCallerKeepsItsShapeBeyondWhatAReferenceHolds) {
    EXPECT_EQ(call(caller_function, "", Area(0, 4, 2, 6, 2)), "\"sref R4-6C2-2\"");
    EXPECT_EQ(call(caller_function, "", Area(0, 99999, 300, 100001, 301)), "\"sref R65533-65535C254-255\"");
}

TEST_F(SheetHostTest, SheetsAndFormulasHaveTexts) {
    EXPECT_EQ(call(texts_function, "A5"), "\"[Book1]Sheet1 =A4*A6\"");
    EXPECT_EQ(call(texts_function, "Costs!C3"), "\"[Book1]Costs \"");
    EXPECT_EQ(call(texts_function, "A2"), "\"[Book1]Sheet1 two\"");
}

TEST_F(SheetHostTest, CallsTakeNothingFromTheHeap) {
    const Formula formula = book.read("MonthEnd(A1+38000)+DYear(38000)+IF(A4>1,DaysInMonth(A6*8000),0)");
    const Area caller{CellAddress{}};
    const Value before = book.evaluate(formula, caller);
    const std::size_t allocated = test::allocations();
    const Value after = book.evaluate(formula, caller);
    EXPECT_EQ(test::allocations(), allocated);
    EXPECT_TRUE(after.identical(before));
}

} // namespace
} // namespace qx::sheet
