// Runs the cases: all files of tests/cases, and the examples of every declared function.
#include "support/cases.h"

#include "addin/function.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <filesystem>
#include <fstream>

namespace qx::test {
namespace {

std::vector<std::string> case_files() {
    const std::filesystem::path folder = std::filesystem::path(QX_SOURCE_DIR) / "tests" / "cases";
    std::vector<std::string> files;
    for (const auto& entry : std::filesystem::recursive_directory_iterator(folder))
        if (entry.path().extension() == ".cases") files.push_back(entry.path().lexically_relative(folder).string());
    std::sort(files.begin(), files.end());
    return files;
}

class CaseFile : public testing::TestWithParam<std::string> {};

TEST_P(CaseFile, Holds) {
    std::ifstream file(std::filesystem::path(QX_SOURCE_DIR) / "tests" / "cases" / GetParam());
    ASSERT_TRUE(file) << GetParam();
    Cases cases;
    int number = 0;
    for (std::string line; std::getline(file, line);) {
        ++number;
        if (const auto fault = cases.run(line))
            ADD_FAILURE() << "tests/cases/" << GetParam() << ":" << number << ": " << line << "\n  " << *fault;
    }
    EXPECT_GT(cases.count(), 0) << "a file without a case";
}

INSTANTIATE_TEST_SUITE_P(Cases, CaseFile, testing::ValuesIn(case_files()), [](const auto& info) {
    std::string name = info.param.substr(0, info.param.rfind('.'));
    std::replace_if(
        name.begin(), name.end(), [](unsigned char c) { return !std::isalnum(c); }, '_');
    return name;
});

TEST(Examples, OfAllFunctionsHold) {
    for (const Registered* node = all_functions(); node != nullptr; node = node->next)
        for (const char* const example : node->function.examples) {
            if (example == nullptr) continue;
            Cases cases;
            if (const auto fault = cases.run(example))
                ADD_FAILURE() << node->function.name << ": " << example << "\n  " << *fault;
            EXPECT_EQ(cases.count(), 1) << node->function.name << ": " << example;
        }
}

// The runner itself: what it must keep apart.
TEST(Cases, AFalsePromiseIsAFault) {
    Cases cases;
    for (const char* const good :
         {"1+1 = 2", "1/3 ~ 0.3333 1e-3", "\"a = b\" = \"a = b\"", "1=2 = FALSE", "1/0 ! #DIV/0!", "ZZ99 = empty",
          "{1,2;3,4}*2 = {2,4;6,8}", "@ A1:A3 = {1;2;3}", "@ B1 = =SUM(A1:A3)", "B1 = 6  # after a change of A",
          "@ A2 = 10", "B1 = 14", "[C1:C4] TRANSPOSE({1,2}) = {1;2;#N/A;#N/A}", "@ name Rents = A1:A3",
          "SUM(Rents) = 14", "@ reset", "A1 = empty", "MonthEnd(-1) ! #NUM! errlibmindate"})
        EXPECT_FALSE(cases.run(good)) << good << ": " << cases.run(good).value_or("");
    for (const char* const bad :
         {"1+1 = 3", "1+1 = \"2\"", "1/3 ~ 0.3333 1e-6", "1/0 ! #NUM!", "1+1 ! #NUM!", "1+1 = empty", "{1,2} = {1;2}",
          "{1,2} = 1", "MonthEnd(-1) ! #NUM! errlibmax", "MonthEnd(38000)", "1+ = 2", "nosuch(1) = 1", "@ A1",
          "DayName(38000) = \"wednesday\""})
        EXPECT_TRUE(cases.run(bad)) << bad;
}

} // namespace
} // namespace qx::test
