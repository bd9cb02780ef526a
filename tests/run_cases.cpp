// Runs files of cases without the rest of the tests: run_cases tests/cases/time_value_of_money/*.cases
#include "support/cases.h"

#include <fstream>
#include <iostream>

int main(int count, char** names) {
    int cases_run = 0, faults = 0;
    for (int i = 1; i < count; ++i) {
        std::ifstream file(names[i]);
        if (!file) {
            std::cerr << names[i] << ": cannot be read\n";
            return 2;
        }
        qx::test::Cases cases;
        int number = 0;
        for (std::string line; std::getline(file, line);) {
            ++number;
            if (const auto fault = cases.run(line)) {
                std::cout << names[i] << ":" << number << ": " << line << "\n  " << *fault << "\n";
                ++faults;
            }
        }
        cases_run += cases.count();
    }
    std::cout << cases_run << " cases, " << faults << " faults\n";
    return faults == 0 ? 0 : 1;
}
