// Time periods and annual sequences from cells, and the array twin.
#include "addin/declare.h"
#include "calendar/annual_sequence.h"
#include "calendar/time_period.h"
#include "stub_host.h"
#include "support/traced.h"

#include <gtest/gtest.h>

namespace qx::test {
namespace {

std::string period_text(const timeperiod& Time) { return describe(Time); }
double days(const timeperiod& Time, double Factor) {
    if (Factor < 0) throw errlibmin(FunctionContext());
    return Time.lendays() * Factor;
}
const AnnualSequence& echo_sequence(AnnualSequence& Periods) { return Periods; }

class Times : public ::testing::Test {
  protected:
    StubHost host;
    Cells cells;
    const Function period =
        test_function("Period", core<period_text>, {{"Time", "The start"}, {"Base", "The length or end"}});
    const Function twin_days = test_function(
        "Days", twin<days>, {{"Time", "The start"}, {"Base", "The length"}, optional("Factor", 1.0, "Times")});
    const Function required = test_function("Periods", core<echo_sequence>, {{"Periods", "Dates in the year"}});
    const Function optional_ = test_function("PeriodsOpt", core<echo_sequence>, {sequence("Periods", 12, "Dates")});

    std::string figures(const Function& function, const OPER& cell) { return shown(call(function, {cell})); }
};

TEST_F(Times, BaseIsMonthsOrAnEnd) {
    const auto text = [this](double time, double base) {
        return shown(call(period, {number_cell(time), number_cell(base)}));
    };
    EXPECT_EQ(text(38017, 12), "\"31Jan2004 to 31Jan2005\"");
    EXPECT_EQ(text(38017, 1), "\"31Jan2004 to 29Feb2004\"");
    EXPECT_EQ(text(2005, 2005.5), "\"1Jan2005 to 1Jul2005\"");
    EXPECT_EQ(text(2005, 38000), "\"1Jan2005 to 1Jan2005\"") << "an end before the start";
    EXPECT_EQ(text(2005, 0.5), "#NUM!");
    EXPECT_EQ(last_class(), "errlibbadbase");
    EXPECT_EQ(text(2005, -1), "#NUM!");
    EXPECT_EQ(text(2005, 1900), "#NUM!");
    EXPECT_EQ(shown(call(period, {number_cell(2005), error_cell(xlerrNA)})), "#N/A");
    EXPECT_EQ(shown(call(period, {missing_cell(), number_cell(1)})), "#NUM!");
}

TEST_F(Times, BaseInYearsForTheCompatibilityFunctions) {
    const auto text = [](double time, double base) {
        timeperiod period;
        period.settime_in_years(time, base);
        return describe(period);
    };
    EXPECT_EQ(text(2005, 15), "1Jan2005 to 1Jan2020") << "180 months";
    EXPECT_EQ(text(2000, 2005), "1Jan2000 to 1Jan2005");
    for (int months = 1; months <= 12; ++months)
        EXPECT_EQ(text(2005, months / 12.0), text(2005, 2005 + months / 12.0)) << months;
    EXPECT_EQ(text(2005, 0), "1Jan2005 to 1Jan2005");
    EXPECT_THROW(text(2005, -1), illegalvalue);
}

class TimesTraced : public Times {
  protected:
    TimesTraced() { trace().TraceStart(); }
    ~TimesTraced() override { trace().TraceShow(); }

    std::vector<std::string> variables() const {
        std::vector<std::string> names;
        for (int i = 1; i <= trace().count(); ++i)
            if (trace().kind(i) == TraceKind::variable) names.emplace_back(trace().text(i));
        return names;
    }
};

TEST_F(TimesTraced, TheCellsOfAPeriodAreToldApart) {
    host.caller = sref_cell({0, 0, 1, 1});
    call(period, {number_cell(38353), number_cell(3)});
    EXPECT_EQ(variables(), (std::vector<std::string>{"Time", "Time Start", "Time Base"}));
    call(period, {number_cell(38353), number_cell(0.5)});
    EXPECT_EQ(last_error_context().variable(), "Time");
    EXPECT_EQ(last_error_context().class_name(), "TimePeriod");
    trace().TraceStart();
    call(period, {number_cell(1909), number_cell(1)});
    EXPECT_EQ(last_error_context().variable(), "Time");
    EXPECT_EQ(last_error_context().message(), " (Value was 1909.000)");
    trace().TraceStart();
    call(period, {error_cell(xlerrNA), number_cell(1)});
    EXPECT_EQ(last_error_context().variable(), "Time Start");
    trace().TraceStart();
    call(twin_days, {cells.numbers(2, 1, 38353), number_cell(1), missing_cell()});
    EXPECT_EQ(variables(), (std::vector<std::string>{"Times", "Factor"}));
}

TEST_F(Times, OneFigureOfASequence) {
    host.caller = sref_cell({0, 0, 1, 1});
    EXPECT_EQ(figures(required, number_cell(4)), "{1.01,4.01,7.01,10.01}");
    EXPECT_EQ(figures(required, number_cell(-2)), "{-1.01,7.01}");
    EXPECT_EQ(figures(required, number_cell(3.25)), "3.25");
    EXPECT_EQ(figures(required, number_cell(-6.3)), "-6.3");
    EXPECT_EQ(figures(required, cells.text("Quarterly in advance")), "{1.01,4.01,7.01,10.01}");
    EXPECT_EQ(figures(required, cells.text("-1:Annually in arrear")), "-1.01");
    EXPECT_EQ(figures(required, missing_cell()), "#NUM!");
    EXPECT_EQ(figures(required, nil_cell()), "#NUM!");
    EXPECT_EQ(last_class(), "missingarg");
    for (const double bad : {20.0, 3.0, 12.5, 0.5, 1001.0, -20.0}) {
        EXPECT_EQ(figures(required, number_cell(bad)), "#NUM!") << bad;
        EXPECT_EQ(last_class(), "errlibannseq") << bad;
    }
    EXPECT_EQ(figures(required, bool_cell(true)), "#NUM!");
    EXPECT_EQ(last_class(), "illegalannualsequence");
    const std::string monthly = "{1.01,2.01,3.01,4.01,5.01,6.01,7.01,8.01,9.01,10.01,11.01,12.01}";
    for (const OPER& none : {missing_cell(), nil_cell(), number_cell(0)}) EXPECT_EQ(figures(optional_, none), monthly);
}

TEST_F(Times, ListsOfFigures) {
    host.caller = sref_cell({0, 0, 1, 1});
    const auto list = [this](std::initializer_list<OPER> items) {
        return figures(required, cells.array(static_cast<int>(items.size()), 1, items));
    };
    EXPECT_EQ(list({number_cell(3.25), number_cell(9.29)}), "{3.25,9.29}");
    EXPECT_EQ(list({number_cell(-3.25), number_cell(-9.29)}), "{-3.25,9.29}") << "arrears from the first alone";
    EXPECT_EQ(list({number_cell(3.25), nil_cell(), number_cell(9.29)}), "3.25") << "data stop at a blank";
    EXPECT_EQ(list({number_cell(3.25), cells.text("9.29")}), "{3.25,9.29}");
    EXPECT_EQ(list({number_cell(2.30)}), "2.29");
    EXPECT_EQ(list({number_cell(12.25), number_cell(3.25)}), "#NUM!") << "not ascending";
    EXPECT_EQ(list({number_cell(367)}), "#NUM!");
    EXPECT_EQ(last_class(), "errlibmax");
    EXPECT_EQ(list({number_cell(-12.32)}), "#NUM!");
    EXPECT_EQ(last_class(), "errlibmin");
    EXPECT_EQ(list({nil_cell(), number_cell(3.25)}), "#NUM!") << "a first blank is a zero, which is no date";
    EXPECT_EQ(list({number_cell(3.25), error_cell(xlerrRef)}), "#REF!");
    EXPECT_EQ(list({number_cell(3.25), bool_cell(true)}), "#NUM!");
    EXPECT_EQ(figures(required, cells.numbers(101, 1, 1.01)), "#NUM!");
}

TEST_F(Times, ATwinAnswersForEachDate) {
    const OPER dates = cells.array(3, 1, {number_cell(38353), number_cell(38384), number_cell(38412)});
    const auto call_with = [this](const OPER& time) {
        return shown(call(twin_days, {time, number_cell(1), missing_cell()}));
    };
    EXPECT_EQ(call_with(number_cell(38353)), "31") << "one date, one cell: the scalar";
    host.caller = sref_cell({0, 2, 1, 1});
    const std::string array = call_with(dates);
    EXPECT_EQ(array.substr(0, 7), "{31;28;");
    host.caller = sref_cell({3, 3, 1, 1});
    EXPECT_EQ(call_with(dates).substr(0, 7), "{31,28,") << "several dates in one cell are an array too";
    EXPECT_EQ(call_with(cells.array(1, 1, {number_cell(38353)})), "31");
    host.caller = sref_cell({0, 1, 1, 1});
    EXPECT_EQ(call_with(number_cell(38353)), "{365;empty}") << "one date in an array formula is a year's time base";
    host.caller = nil_cell();
    EXPECT_EQ(call_with(number_cell(38353)), "#NUM!") << "no caller";
    EXPECT_EQ(last_class(), "functionerror");
    host.caller = sref_cell({3, 3, 1, 1});
    EXPECT_EQ(call_with(error_cell(xlerrDiv0)), "#DIV/0!");
    EXPECT_EQ(call_with(bool_cell(true)), "#NUM!");
    EXPECT_EQ(shown(call(twin_days, {dates, number_cell(1), number_cell(-1)})), "#NUM!") << "one error fails all";
    EXPECT_EQ(last_class(), "errlibmin");
}

TEST_F(Times, ATwinEqualsItsScalar) {
    OPER times[40];
    int serial = 36526;
    for (OPER& time : times) time = number_cell(serial += 1 + serial % 97);
    host.caller = sref_cell({0, 39, 1, 1});
    const OPER base = array_cell(times, 40, 1);
    const OPER* const array = call(twin_days, {base, number_cell(1), number_cell(2)});
    ASSERT_EQ(array->type(), xltypeMulti);
    std::vector<double> answers;
    for (int i = 0; i < 40; ++i) answers.push_back(array->val.array.lparray[i].val.num);
    host.caller = sref_cell({0, 0, 1, 1});
    for (int i = 0; i + 1 < 40; ++i)
        EXPECT_EQ(call(twin_days, {times[i], times[i + 1], number_cell(2)})->val.num, answers[i]) << i;
}

} // namespace
} // namespace qx::test
