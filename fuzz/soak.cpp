// A soak: calls of every function with cells that like the edges, calls near its examples, and its examples with lists
// as long as a list may be, for a number of seconds.
//
//     qx_soak --seconds 60 --seed 7 [--only DpD] [--from 1234] [--longest 100] [--bounds docs/performance.md]
//
// A finding is a crash, a result that is no cell, a leak (reported by the sanitizers at the end), or a result with the
// trace on that differs from the one with it off; with --bounds also a call that takes the processor longer than 50 ms
// or than the table in that document says (ten times that under the sanitizers). Each is reported with the call as a
// formula and with the number of the call, from which --from repeats it. The exit status is 1 if there was any.
#include "calls.h"

#include "addin/frame.h"
#include "addin/host.h"
#include "core/trace.h"
#include "hosts/sheet/sheet_host.h"
#include "numerics/random.h"

#include <CLI/CLI.hpp>

#include <algorithm>
#include <chrono>
#include <cmath>
#include <cstdio>
#include <cstring>
#include <ctime>
#include <fstream>
#include <map>
#include <string>
#include <vector>

#if defined(__SANITIZE_ADDRESS__)
#include <sanitizer/common_interface_defs.h>
#endif

namespace qx::fuzz {
namespace {

/// Time that this program has had of the processor, in milliseconds: what else the machine does is no finding.
double processor_time() { return 1e3 * static_cast<double>(std::clock()) / CLOCKS_PER_SEC; }

#if defined(__SANITIZE_ADDRESS__)
constexpr double slower = 10.0; ///< the sanitizers take ten times as long
#else
constexpr double slower = 1.0;
#endif
constexpr double slow_call = 50.0 * slower; ///< in milliseconds
constexpr double slow_trace = 5000.0 * slower;
constexpr int traced_every = 16; ///< one call in so many, if it is quick, is repeated with the trace on

std::string the_call = "before the first call";

/// A function under test.
struct Subject {
    const Function* function;
    std::vector<Example> examples;
    double bound = slow_call; ///< in milliseconds
    double slowest = 0.0;
};

/// The calls that may take longer: rows "| `Name`, `Name` | 300 ms | ..." of a document.
std::map<std::string, double> documented_bounds(const std::string& file) {
    std::map<std::string, double> bounds;
    std::ifstream document(file);
    for (std::string line; std::getline(document, line);) {
        const std::size_t end_of_names = line.find(" |", 1);
        if (!line.starts_with("| `") || end_of_names == std::string::npos) continue;
        char* rest = nullptr;
        const double bound = std::strtod(line.c_str() + end_of_names + 2, &rest);
        if (!std::string_view(rest).starts_with(" ms")) continue;
        for (std::size_t at = 2; at < end_of_names;) {
            const std::size_t close = line.find('`', at + 1);
            bounds[line.substr(at + 1, close - at - 1)] = bound;
            at = line.find('`', close + 1);
        }
    }
    return bounds;
}

/// A host that answers by the generator of the call at hand, and fails at times.
class SoakHost : public Host {
  public:
    void begin(const OPER& caller, bool unreliable) {
        seed_random(default_seed); // a draw is the same with and without the trace
        caller_ = caller;
        unreliable_ = unreliable;
        asked_ = 0;
    }
    int call(int xlfn, OPER* result, int, OPER* const* arguments) override {
        static OPER cells[] = {number_cell(38000), number_cell(12), nil_cell(), number_cell(0.05)};
        ++asked_;
        if (unreliable_ && xlfn != xlFree && asked_ % 3 == 0) return asked_ % 2 ? xlretFailed : xlretUncalced;
        switch (xlfn) {
        case xlfCaller:
            *result = caller_;
            return xlretSuccess;
        case xlCoerce:
            *result = array_cell(cells, 1 + arguments[0]->val.sref.ref.rwLast % 4, 1); // the trace asks more often
            return xlretSuccess;
        case xlfEvaluate:
            *result = evaluated(formula_text(*arguments[0]));
            return xlretSuccess;
        case xlFree:
            return xlretSuccess;
        case xlStack:
            *result = int_cell(30000);
            return xlretSuccess;
        default:
            return xlretInvXlfn;
        }
    }

  private:
    /// The same answer to the same formula, however often something else was asked.
    static OPER evaluated(const std::string& formula) {
        const std::size_t hash = std::hash<std::string>{}(formula);
        if (hash % 16 == 0) return error_cell(static_cast<std::uint16_t>(hash / 16 % 50));
        return hash % 16 == 1 ? number_cell(12) : bool_cell(hash % 2 == 0);
    }

    OPER caller_ = nil_cell();
    bool unreliable_ = false;
    int asked_ = 0;
};

bool is_cell(const OPER& cell) {
    switch (cell.type()) {
    case xltypeNum:
    case xltypeStr:
    case xltypeBool:
    case xltypeErr:
    case xltypeNil:
    case xltypeSRef: // of a function that makes references
    case xltypeRef:
        return true;
    default:
        return false;
    }
}

/// A result to the bit, or what is wrong with it.
std::string bits(const OPER* cell) {
    if (cell == nullptr) return "uncalculated";
    switch (cell->type()) {
    case xltypeNum: {
        char text[40];
        std::snprintf(text, sizeof text, std::isnan(cell->val.num) ? "nan" : "%a", cell->val.num);
        return text;
    }
    case xltypeMulti: {
        std::string text = std::to_string(cell->val.array.rows) + "x" + std::to_string(cell->val.array.columns);
        const int n = cell->val.array.rows * cell->val.array.columns;
        for (int i = 0; i < n; ++i) {
            if (!is_cell(cell->val.array.lparray[i])) return "NOT A CELL in an array";
            text += "," + bits(&cell->val.array.lparray[i]);
        }
        return text;
    }
    default:
        return is_cell(*cell) ? formula_text(*cell) : "NOT A CELL";
    }
}

int findings = 0;
bool timed = false; ///< what takes long is a finding

void find(const char* what, std::uint64_t call, const std::string& detail = {}) {
    ++findings;
    std::printf("FINDING %s at call %llu: %s %s\n", what, static_cast<unsigned long long>(call), the_call.c_str(),
                detail.c_str());
    std::fflush(stdout);
}

Manner manner_of(Generator& generator, int longest) {
    if (generator.chance(longest)) return Manner::longest;
    return generator.chance(50) ? Manner::near : Manner::any;
}

void one_call(Subject& subject, std::uint64_t seed, std::uint64_t number, int longest, SoakHost& host) {
    const Function& function = *subject.function;
    Generator generator(seed, number);
    std::vector<OPER> cells = generator.arguments(function, subject.examples, manner_of(generator, longest));
    OPER* arguments[max_arguments + 1] = {};
    the_call = function.name;
    the_call += '(';
    for (int i = 0; i < function.arity(); ++i) {
        arguments[i] = &cells[static_cast<std::size_t>(i)];
        the_call += (i ? "; " : "") + formula_text(*arguments[i]);
    }
    the_call += ')';
    const OPER caller = generator.caller();
    const bool unreliable = generator.chance(3);
    const auto milliseconds = [&](const OPER*& result) {
        host.begin(caller, unreliable);
        const double start = processor_time();
        result = perform(function, arguments);
        return processor_time() - start;
    };

    const OPER* result = nullptr;
    double taken = milliseconds(result);
    const std::string plain = bits(result);
    for (int again = 0; timed && again < 2 && taken > subject.bound && taken < 4.0 * subject.bound; ++again)
        taken = std::min(taken, milliseconds(result));
    if (timed && taken > subject.bound && taken > 1.5 * subject.slowest)
        find("slow", number, std::to_string(static_cast<int>(taken)) + " ms");
    subject.slowest = std::max(subject.slowest, taken);
    if (plain.rfind("NOT A CELL", 0) == 0) find("broken result", number, plain);
    if (number % traced_every != 0 || taken > slow_call / 10 || function.is_volatile || unreliable) return;

    host.begin(caller, unreliable);
    const double start = processor_time();
    trace().TraceStart();
    const std::string with_trace = bits(perform(function, arguments));
    trace().TraceShow();
    if (const double traced = processor_time() - start; timed && traced > slow_trace)
        find("slow trace", number, std::to_string(static_cast<int>(traced)) + " ms for " + std::to_string(taken));
    // The conversion of #NULL! leaves what the slot held: the first call has then changed the inputs of the second.
    if (with_trace != plain && the_call.find("error 0") == std::string::npos &&
        the_call.find("error 99") == std::string::npos)
        find("traced result differs", number, plain.substr(0, 80) + " <> " + with_trace.substr(0, 80));
}

void show_call() { std::printf("\nCRASH in %s\n", the_call.c_str()); }

} // namespace
} // namespace qx::fuzz

int main(int argc, char** argv) {
    using namespace qx;
    using namespace qx::fuzz;
    using Clock = std::chrono::steady_clock;
    double seconds = 10;
    std::uint64_t seed = 1, from = 0;
    int longest = 3, most_findings = 20;
    bool slowest = false;
    std::string only, bounds_file;
    CLI::App app("Calls every function with cells that like the edges");
    app.add_option("--seconds", seconds, "How long to run");
    app.add_option("--seed", seed, "Seed of the generator");
    app.add_option("--from", from, "Number of the first call");
    app.add_option("--only", only, "One function's name");
    app.add_option("--longest", longest, "How many calls in a hundred have the longest lists");
    app.add_option("--findings", most_findings, "How many findings end the run");
    app.add_option("--bounds", bounds_file, "Slow calls are findings, but for those in this document's table")
        ->check(CLI::ExistingFile);
    app.add_flag("--slowest", slowest, "Lists the slowest call of each function that took over 5 ms");
    CLI11_PARSE(app, argc, argv);
#if defined(__SANITIZE_ADDRESS__)
    __sanitizer_set_death_callback(show_call);
#else
    (void)show_call;
#endif

    static std::vector<Subject> subjects; // the examples last as long as the program
    timed = !bounds_file.empty();
    const auto bounds = documented_bounds(bounds_file);
    for (const Registered* node = all_functions(); node != nullptr; node = node->next) {
        const Function& function = node->function;
        if (!only.empty() && only != function.name) continue;
        const auto bound = bounds.find(function.name);
        subjects.push_back({&function, examples_of(function),
                            bound == bounds.end() ? slow_call : std::max(slow_call, slower * bound->second)});
    }
    std::sort(subjects.begin(), subjects.end(),
              [](const Subject& a, const Subject& b) { return std::strcmp(a.function->name, b.function->name) < 0; });
    if (subjects.empty()) {
        std::fprintf(stderr, "There is no function %s.\n", only.c_str());
        return 2;
    }
    SoakHost host;
    set_host(&host);
    const auto end = Clock::now() + std::chrono::duration<double>(seconds);
    std::uint64_t number = from;
    for (; Clock::now() < end && findings < most_findings; ++number)
        one_call(subjects[number % subjects.size()], seed, number, longest, host);
    set_host(nullptr);
    for (Subject& subject : subjects)
        for (auto& example : subject.examples)
            for (OPER& cell : example) sheet::free_oper(cell);
    if (slowest)
        for (const Subject& subject : subjects)
            if (subject.slowest > 5.0 * slower) std::printf("%9.1f ms  %s\n", subject.slowest, subject.function->name);
    std::printf("%llu calls of %zu functions, %d findings\n", static_cast<unsigned long long>(number - from),
                subjects.size(), findings);
    return findings > 0 ? 1 : 0;
}
