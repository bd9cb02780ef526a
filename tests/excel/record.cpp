// Runs all cases and examples in the headless workbook and writes a transcript of every worksheet call that they make.
//
//     record CASES_FOLDER > transcript
#include "excel/transcript.h"
#include "support/cases.h"

#include "addin/function.h"
#include "addin/host.h"
#include "addin/registration.h"
#include "core/context.h"
#include "numerics/random.h"

#include <algorithm>
#include <filesystem>
#include <fstream>
#include <iostream>

using namespace qx;

namespace {

/// Writes down what a call asks of its host and what it is answered.
class Recorder : public Host {
  public:
    Recorder() : inner_(set_host(this)) {}
    ~Recorder() override { set_host(inner_); }

    int call(int xlfn, OPER* result, int count, OPER* const* arguments) override {
        const int code = inner_->call(xlfn, result, count, arguments);
        if (xlfn == xlFree || xlfn == xlStack) return code;
        std::cout << "ask " << xlfn;
        for (int i = 0; i < count; ++i) std::cout << ' ' << test::written(*arguments[i]);
        std::cout << " -> " << code << ' ' << (code == xlretSuccess && result != nullptr ? test::written(*result) : "z")
                  << '\n';
        return code;
    }

  private:
    Host* inner_;
};

} // namespace

// The linker sends every call of perform() here (--wrap).
extern "C" OPER* __real__ZN2qx7performERKNS_8FunctionEPKPNS_4OPERE(const Function& function, OPER* const* cells);
extern "C" OPER* __wrap__ZN2qx7performERKNS_8FunctionEPKPNS_4OPERE(const Function& function, OPER* const* cells) {
    std::cout << (tracing ? "traced " : "call ") << function.name;
    for (int i = 0; i < function.arity(); ++i) std::cout << ' ' << test::written(*cells[i]);
    std::cout << '\n';
    const Recorder recorder;
    OPER* const result = __real__ZN2qx7performERKNS_8FunctionEPKPNS_4OPERE(function, cells);
    std::cout << "result " << (result == nullptr ? "uncalculated" : test::written(*result)) << '\n';
    return result;
}

int main(int argc, char** argv) {
    if (argc != 2) return 2;
    std::vector<std::filesystem::path> files;
    for (const auto& entry : std::filesystem::recursive_directory_iterator(argv[1]))
        if (entry.path().extension() == ".cases") files.push_back(entry.path());
    std::sort(files.begin(), files.end());
    seed_random(default_seed); // as the add-in does when it is opened
    for (const auto& name : files) {
        std::ifstream file(name);
        test::Cases cases;
        for (std::string line; std::getline(file, line);) cases.run(line);
    }
    for (const RegisterRow& row : the_register()) {
        if (row.function == nullptr) continue;
        for (const char* const example : row.function->function.examples)
            if (example != nullptr) test::Cases().run(example);
    }
    return std::cout.flush() ? 0 : 1;
}
