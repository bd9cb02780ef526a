// Tests that run with the trace on, and failures as text.
#pragma once

#include "core/errors.h"
#include "core/trace.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

namespace qx::test {

/// The trace is on from the start of the test to its end.
class Traced : public testing::Test {
  protected:
    Traced() { trace().TraceStart(); }
    ~Traced() override {
        TraceMuted = false;
        trace().TraceShow();
    }
};

/// The items since one, as "level text".
inline std::vector<std::string> trace_lines(int from = 1) {
    std::vector<std::string> lines;
    for (int i = from; i <= trace().count(); ++i)
        lines.push_back(std::to_string(trace().level(i)) + " " + std::string(trace().text(i)));
    return lines;
}

/// The description of the error of class E that a call throws, or "no error".
template <class E, class Call>
std::string failure(Call&& call) {
    try {
        call();
    } catch (const cls_exception& error) {
        EXPECT_EQ(&error.kind(), &E::error_class) << error.kind().name;
        return error.description();
    }
    return "no error";
}

} // namespace qx::test
