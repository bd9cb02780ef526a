// Cases: what a function returns, one line each, calculated in a workbook.
//
//     MonthEnd(38000) = 38017                 the value, numbers within 1e-12 of it (relative above 1)
//     DayName(38000) = "Wednesday"            the expectation is a formula as well: TRUE, {1,2;3,4}, DATE(2004,1,31)
//     MonthEnd(0) = empty                     an empty cell; inside an array write "" for it
//     GetNum("x") = uncalculated              the function waits for a value
//     DYear(38000) ~ 2004.03495 1e-8          within the tolerance: |a - b| <= tolerance * max(1, |b|)
//     MonthEnd(-1) ! #NUM! errlibmindate      an error value, and the class of the error if it is given
//     [A1:A5] DateSeq(38000, 3) = {1;2;3}     as an array formula over cells; cells past the expectation are empty
//     @ B1:B3 = {1;2;3}                       puts values into cells; = twice puts a formula
//     @ name Rents = B1:B3                    gives a name
//     @ reset                                 empties the workbook
//     # remark                                at the start of a line, or after two blanks
#pragma once

#include "hosts/sheet/workbook.h"

#include <optional>
#include <string>
#include <string_view>

namespace qx::test {

class Cases {
  public:
    /// Runs a line, twice if it is a case: with the trace off and on. Gives what is wrong, if anything is.
    std::optional<std::string> run(std::string_view line);
    int count() const { return count_; } ///< cases run

  private:
    std::optional<std::string> set_up(std::string_view line);
    std::optional<std::string> check(std::string_view line);
    sheet::Value evaluate(std::string_view formula, const sheet::Area& caller);
    /// Evaluates once more with the trace on and compares.
    std::optional<std::string> retrace(const sheet::Formula& formula, const sheet::Area& caller,
                                       const sheet::Value& result);

    sheet::Workbook book_;
    int count_ = 0;
};

/// A value as written in a formula.
std::string shown(const sheet::Value& value);

} // namespace qx::test
