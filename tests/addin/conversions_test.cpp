// What each cell type means for each type of input, through whole worksheet calls.
#include "addin/declare.h"
#include "stub_host.h"

#include <gtest/gtest.h>

#include <cmath>
#include <limits>

namespace qx::test {
namespace {

template <class T>
T echo(const T& value) {
    return value;
}
template <class T>
const Range<T>& echo_list(Range<T>& list) {
    return list;
}
template <class T>
int last_nonblank(Range<T>& list) {
    return list.lastnonblank();
}
template <class T>
std::string presence(const Maybe<T>& value) {
    return describe(value);
}

constexpr double nan = std::numeric_limits<double>::quiet_NaN();
constexpr double infinity = std::numeric_limits<double>::infinity();

/// One row of the tables: a cell and what a function that hands its input on answers.
struct Row {
    OPER cell;
    std::string shown;
    std::string error_class = "";
};

void expect_rows(const Function& function, std::initializer_list<Row> rows) {
    int i = 0;
    for (const Row& row : rows) {
        SCOPED_TRACE(std::string(function.name) + " row " + std::to_string(++i));
        EXPECT_EQ(shown(call(function, {row.cell})), row.shown);
        if (!row.error_class.empty()) {
            EXPECT_EQ(last_class(), row.error_class);
        }
    }
}

class Conversions : public ::testing::Test {
  protected:
    StubHost host;
    Cells cells;
};

TEST_F(Conversions, OneNumber) {
    const Function required = test_function("Number", core<echo<double>>, {{"Value", "A value"}});
    const Function optional_ = test_function("NumberOpt", core<echo<double>>, {optional("Value", 7.0, "A value")});
    const OPER one_of_two = cells.array(2, 1, {number_cell(4), nil_cell()});
    const OPER two = cells.array(2, 1, {number_cell(4), number_cell(5)});
    for (const Function* function : {&required, &optional_}) {
        expect_rows(*function, {
                                   {number_cell(2.5), "2.5"},
                                   {cells.text("$1,234.50"), "1234.5"},
                                   {cells.text("(500)"), "500"},
                                   {cells.text("-5"), "-5"},
                                   {cells.text("n/a"), "0"},
                                   {cells.text("abc"), "0"},
                                   {cells.text("\xC2\xA3"
                                               "12"),
                                    "12"},
                                   {cells.text("-\x80"
                                               "3.25"),
                                    "-3.25"},
                                   {nil_cell(), "0"},
                                   {bool_cell(true), "#NUM!", "inputerror"},
                                   {error_cell(xlerrNA), "#N/A", "inputna"},
                                   {error_cell(xlerrDiv0), "#DIV/0!", "inputdiv"},
                                   {error_cell(xlerrValue), "#VALUE!", "inputvalue"},
                                   {error_cell(xlerrRef), "#REF!", "inputref"},
                                   {error_cell(xlerrName), "#NAME?", "inputname"},
                                   {error_cell(xlerrNum), "#NUM!", "inputnum"},
                                   {one_of_two, "4"},
                                   {two, "#NUM!", "gotarange"},
                                   {number_cell(1e-13), "0"},
                                   {int_cell(3), "#NUM!", "inputerror"},
                                   {array_cell(nullptr, -3, 2), "#NUM!", "inputerror"},
                               });
    }
    expect_rows(required, {{missing_cell(), "#NUM!", "missingarg"}});
    expect_rows(optional_, {{missing_cell(), "7"}, {sref_cell({0, 0, 0, 0}), "#NUM!", "inputerror"}});
    EXPECT_TRUE(std::isnan(call(required, {number_cell(nan)})->val.num));
    EXPECT_EQ(call(required, {number_cell(2e-12)})->val.num, 2e-12);
    EXPECT_EQ(call(required, {number_cell(1e-12)})->val.num, 1e-12);
}

TEST_F(Conversions, NullErrorKeepsWhatTheSlotHeld) {
    const Function required = test_function("Number", core<echo<double>>, {{"Value", "A value"}});
    call(required, {number_cell(42)});
    EXPECT_EQ(shown(call(required, {error_cell(xlerrNull)})), "42");
}

TEST_F(Conversions, OneWholeNumber) {
    const Function required = test_function("Whole", core<echo<int>>, {{"Value", "A value"}});
    expect_rows(required, {
                              {number_cell(3.0000000000001), "3"},
                              {number_cell(3.1), "#NUM!", "errinpint"},
                              {number_cell(-4), "-4"},
                              {number_cell(nan), "#NUM!", "errinpint"},
                              {number_cell(infinity), "#NUM!", "errinpint"},
                              {cells.text("12.7"), "12"},
                              {cells.text("x"), "0"},
                              {cells.text("99999999999"), "2147483647"},
                              {cells.text("--99999999999"), "2147483647"}, // one sign is taken off, one is read
                              {nil_cell(), "0"},
                              {bool_cell(true), "#NUM!", "inputerror"},
                          });
    const Function wide = test_function("Wide", core<echo<long long>>, {{"Value", "A value"}});
    expect_rows(wide, {{number_cell(5e12), "5000000000000"}, {number_cell(0.5), "#NUM!", "errinpint"}});
}

TEST_F(Conversions, OneCondition) {
    const Function required = test_function("Bool", core<echo<bool>>, {{"Value", "A value"}});
    expect_rows(required, {
                              {bool_cell(true), "TRUE"},
                              {bool_cell(false), "FALSE"},
                              {number_cell(1), "#NUM!", "notbool"},
                              {cells.text("TRUE"), "#NUM!", "notbool"},
                              {nil_cell(), "#NUM!", "notbool"},
                          });
    const Function optional_ = test_function("BoolOpt", core<echo<bool>>, {optional("Value", true, "A value")});
    expect_rows(optional_, {
                               {missing_cell(), "TRUE"},
                               {number_cell(0), "FALSE"},
                               {number_cell(1), "TRUE"},
                               {cells.text("yes"), "FALSE"},
                               {number_cell(5), "TRUE"}, // not understood: the default, whatever came before
                               {bool_cell(true), "TRUE"},
                               {nil_cell(), "FALSE"},
                           });
}

TEST_F(Conversions, OneDate) {
    const Function required = test_function("Date", core<echo<date>>, {{"Value", "A value"}});
    expect_rows(required, {
                              {number_cell(38000.75), "38000"},
                              {number_cell(2005.5), "38534"},
                              {number_cell(0), "empty"},
                              {number_cell(1909.99), "#NUM!", "errlibmindate"},
                              {number_cell(641004), "#NUM!", "outofrange"},
                              {number_cell(-1), "#NUM!", "errlibmindate"},
                              {cells.text("38,000"), "38000"},
                              {nil_cell(), "empty"},
                              {bool_cell(true), "#NUM!", "inputerror"},
                          });
    const Function optional_ = test_function("DateOpt", core<echo<date>>, {optional("Value", "A value")});
    expect_rows(optional_, {{missing_cell(), "empty"}, {cells.text("38000"), "empty"}, {number_cell(38000), "38000"}});
    const Function preset = test_function("DatePreset", core<echo<date>>, {optional("Value", 2005.0, "A value")});
    expect_rows(preset, {{missing_cell(), "38353"}});
}

TEST_F(Conversions, OneText) {
    const Function required = test_function("Text", core<echo<std::string>>, {{"Value", "A value"}});
    OPER broken = nil_cell();
    broken.xltype = xlbitXLFree;
    expect_rows(required, {
                              {cells.text("abc"), "\"abc\""},
                              {number_cell(5), "\"\""},
                              {nil_cell(), "\"\""},
                              {bool_cell(true), "#NUM!", "inputerror"},
                              {broken, "#NUM!", "inputstringerror"},
                              {cells.text(std::string(255, 'x')), '"' + std::string(254, 'x') + '"'},
                          });
    const Function optional_ =
        test_function("TextOpt", core<echo<std::string>>, {optional("Value", "dflt", "A value")});
    expect_rows(optional_, {{missing_cell(), "\"dflt\""}, {cells.text("a"), "\"a\""}});
    const Function any = test_function("Any", core<echo<anyvalue>>, {{"Value", "A value"}});
    expect_rows(any, {
                         {cells.text("abc"), "\"abc\""},
                         {number_cell(5), "5"},
                         {nil_cell(), "empty"},
                         {bool_cell(true), "#NUM!", "inputerror"},
                     });
}

TEST_F(Conversions, MissingBlankAndGivenApart) {
    const Function function = test_function("Maybe", core<presence<double>>, {optional("Value", 3.0, "A value")});
    expect_rows(function, {
                              {missing_cell(), "\"missing\""},
                              {nil_cell(), "\"blank\""},
                              {number_cell(0), "\"0.000\""},
                          });
}

TEST_F(Conversions, References) {
    const Function required = test_function("Number", core<echo<double>>, {{"Value", "A value"}});
    const OPER reference = sref_cell({1, 1, 1, 1});
    host.coerced = cells.array(1, 1, {number_cell(9)});
    EXPECT_EQ(shown(call(required, {reference})), "9");
    EXPECT_EQ(host.freed, 1);
    host.coerced = cells.array(1, 2, {number_cell(9), number_cell(8)});
    EXPECT_EQ(shown(call(required, {reference})), "#NUM!");
    EXPECT_EQ(last_class(), "gotarange");
    EXPECT_EQ(host.freed, 2) << "freed before the throw too";
    host.coerce_code = xlretUncalced;
    EXPECT_EQ(call(required, {reference}), nullptr);
    host.coerce_code = xlretFailed;
    EXPECT_EQ(shown(call(required, {reference})), "#NUM!");
    EXPECT_EQ(last_class(), "inputerror");
    const Function list = test_function("List", core<echo_list<double>>, {{"Values", "Some values"}});
    expect_rows(list, {{reference, "#NUM!", "inputerror"}});
}

TEST_F(Conversions, ListsOfNumbers) {
    const Function list = test_function("List", core<echo_list<double>>, {{"Values", "Some values"}});
    const OPER mixed = cells.array(4, 1, {number_cell(1), nil_cell(), number_cell(3), nil_cell()});
    expect_rows(
        list,
        {
            {mixed, "{1,0,3,0}"},
            {cells.array(2, 3,
                         {number_cell(1), number_cell(2), number_cell(3), number_cell(4), cells.text("5"), nil_cell()}),
             "{1,2,3;4,5,0}"},
            {number_cell(4), "4"},
            {cells.text("1,5"), "15"},
            {nil_cell(), "0"},
            {bool_cell(true), "#NUM!", "inputerror"},
            {missing_cell(), "#NUM!", "missingarg"},
            {error_cell(xlerrNA), "#N/A"},
            {cells.array(2, 1, {number_cell(1), error_cell(xlerrDiv0)}), "#DIV/0!"},
            {cells.array(2, 1, {number_cell(1), bool_cell(true)}), "#NUM!", "inputerrorrange"},
            {cells.array(2, 1, {number_cell(1), missing_cell()}), "#NUM!", "missingarg"},
            {cells.numbers(10001, 1, 1), "#NUM!", "outofrange"},
            {array_cell(nullptr, -1, 5), "#NUM!", "inputerror"},
            {array_cell(nullptr, 30000, 30000), "#NUM!"},
        });
    const Function length = test_function("LastNonBlank", core<last_nonblank<double>>, {{"Values", "Some values"}});
    expect_rows(length, {{mixed, "3"}, {nil_cell(), "0"}, {number_cell(0), "1"}, {cells.text(""), "1"}});
    const Function optional_ = test_function("ListOpt", core<echo_list<double>>, {optional("Values", "Some values")});
    expect_rows(optional_, {{missing_cell(), "empty"}, {number_cell(1), "1"}});
}

TEST_F(Conversions, ListsOfOtherTypes) {
    const Function whole = test_function("Ints", core<echo_list<int>>, {{"Values", "Some values"}});
    expect_rows(whole, {
                           {cells.array(1, 3, {number_cell(1), nil_cell(), cells.text("7.9")}), "{1,0,7}"},
                           {number_cell(1.5), "#NUM!", "errinpint"},
                       });
    const Function bools = test_function("Bools", core<echo_list<bool>>, {{"Values", "Some values"}});
    expect_rows(bools, {
                           {cells.array(1, 2, {bool_cell(true), nil_cell()}), "{TRUE,FALSE}"},
                           {cells.array(1, 2, {bool_cell(true), number_cell(1)}), "#NUM!", "inputerrorrange"},
                           {bool_cell(true), "TRUE"},
                       });
    const Function dates = test_function("Dates", core<echo_list<date>>, {{"Values", "Some values"}});
    expect_rows(dates,
                {
                    {cells.array(1, 3, {number_cell(38000), nil_cell(), number_cell(2005)}), "{38000,empty,38353}"},
                    {cells.array(1, 2, {number_cell(38000), cells.text("38000")}), "#NUM!", "inputerrorrange"},
                    {number_cell(5), "#NUM!", "errlibmindate"},
                });
    const Function texts = test_function("Texts", core<echo_list<std::string>>, {{"Values", "Some values"}});
    expect_rows(texts, {
                           {cells.array(1, 2, {cells.text("a"), nil_cell()}), "{\"a\",\"\"}"},
                           {cells.array(1, 2, {cells.text("a"), number_cell(1)}), "#NUM!", "inputerrorrange"},
                       });
    const Function labels = test_function("Labels", core<echo_list<ministring>>, {{"Values", "Some values"}});
    expect_rows(labels, {{cells.array(1, 2, {cells.text(std::string(40, 'q')), nil_cell()}),
                          "{\"" + std::string(34, 'q') + "\",\"\"}"}});
    const Function any = test_function("Anys", core<echo_list<anyvalue>>, {{"Values", "Some values"}});
    expect_rows(any, {{cells.array(1, 3, {cells.text("a"), number_cell(2), nil_cell()}), "{\"a\",2,empty}"}});
    const Function indices = test_function("DatesOrNumbers", core<echo_list<dateorfloat>>, {{"Values", "Some values"}});
    expect_rows(indices, {{cells.array(1, 3, {cells.text("3"), number_cell(2), nil_cell()}), "{3,2,empty}"}});
    const Function blanks = test_function("NumbersOrBlanks", core<echo_list<floatblank>>, {{"Values", "Some values"}});
    expect_rows(blanks, {{cells.array(1, 3, {cells.text("3"), number_cell(2), nil_cell()}), "{3,2,empty}"}});
}

} // namespace
} // namespace qx::test
