// A soak: calls of every function with cells that like the edges, for a number of seconds.
//
//     qx_soak --seconds 60 --seed 7 [--only DpD] [--from 1234]
//
// A finding is a crash, a call that takes the processor longer than 50 ms (500 under the sanitizers), a result that
// is no cell, a leak (told by the sanitizers at the end), or a result with the trace on that differs from the one
// with it off. Each is told with the call as a formula and with the number of the call, from which --from repeats it.
// The exit status is 1 if there was any.
#include "addin/frame.h"
#include "addin/host.h"
#include "core/trace.h"
#include "numerics/random.h"

#include <CLI/CLI.hpp>

#include <algorithm>
#include <chrono>
#include <cmath>
#include <cstdio>
#include <cstring>
#include <ctime>
#include <deque>
#include <limits>
#include <random>
#include <string>
#include <vector>

#if defined(__SANITIZE_ADDRESS__)
#include <sanitizer/common_interface_defs.h>
#endif

namespace qx {
namespace {

using Clock = std::chrono::steady_clock;

/// Time that this program has had of the processor: what else the machine does is no finding.
std::chrono::duration<double> processor_time() {
    return std::chrono::duration<double>(static_cast<double>(std::clock()) / CLOCKS_PER_SEC);
}

#if defined(__SANITIZE_ADDRESS__)
constexpr std::chrono::milliseconds slow_call{500}; ///< the sanitizers take ten times as long
#else
constexpr std::chrono::milliseconds slow_call{50};
#endif
constexpr int traced_every = 16; ///< one call in so many, if it is quick, is repeated with the trace on
constexpr double nan = std::numeric_limits<double>::quiet_NaN();
constexpr double infinity = std::numeric_limits<double>::infinity();

std::string the_call = "before the first call";

/// A cell as it would stand in a formula.
std::string formula_text(const OPER& cell) {
    switch (cell.type()) {
    case xltypeNum: {
        char text[40];
        std::snprintf(text, sizeof text, "%.17g", cell.val.num);
        return text;
    }
    case xltypeStr: {
        std::string text = "\"";
        for (int i = 1; i <= cell.val.str[0]; ++i) {
            char byte[8];
            const unsigned char c = cell.val.str[i];
            std::snprintf(byte, sizeof byte, c < ' ' || c > '~' ? "\\x%02X" : "%c", c);
            text += byte;
        }
        return text + '"';
    }
    case xltypeBool:
        return cell.val.xbool ? "TRUE" : "FALSE";
    case xltypeErr:
        return "error " + std::to_string(cell.val.err);
    case xltypeMissing:
        return "";
    case xltypeNil:
        return "blank";
    case xltypeSRef:
        return "reference";
    case xltypeMulti: {
        const int rows = static_cast<std::int16_t>(cell.val.array.rows);
        const int columns = static_cast<std::int16_t>(cell.val.array.columns);
        std::string text = "{" + std::to_string(rows) + "x" + std::to_string(columns) + ":";
        for (int i = 0; cell.val.array.lparray != nullptr && i < std::min(rows * columns, 20); ++i)
            text += (i ? "," : " ") + formula_text(cell.val.array.lparray[i]);
        return text + "}";
    }
    default:
        return "type " + std::to_string(cell.xltype);
    }
}

/// Everything about one call comes from its number and the seed.
class Generator {
  public:
    Generator(std::uint64_t seed, std::uint64_t call) : random_(seed * 1000003 + call) {}

    int below(int n) { return static_cast<int>(random_() % static_cast<std::uint64_t>(n)); }
    bool chance(int percent) { return below(100) < percent; }
    double uniform(double low, double high) {
        return low + (high - low) * static_cast<double>(random_() >> 11) * 0x1.0p-53;
    }

    /// A cell that suits the argument, most of the time.
    OPER cell(Kind kind, bool optional) {
        if (optional && chance(45)) return missing_cell();
        if (chance(12)) return wild(true);
        switch (kind) {
        case Kind::boolean:
            return bool_cell(chance(50));
        case Kind::text:
        case Kind::short_text:
            return text();
        case Kind::date:
        case Kind::period_start:
            return number_cell(day());
        case Kind::period_base:
            return number_cell(chance(70) ? 1 + below(24) : day());
        case Kind::integer:
        case Kind::wide_integer:
            return number_cell(below(14) - 1);
        case Kind::sequence:
            return sequence();
        case Kind::list:
        case Kind::any:
            return list();
        case Kind::reference:
            return chance(70) ? sref_cell({0, static_cast<std::uint16_t>(below(4)), 0, 0}) : list();
        case Kind::cell:
            return chance(50) ? wild(true) : list();
        default:
            return number_cell(amount());
        }
    }

    OPER caller() {
        switch (below(8)) {
        case 0:
            return sref_cell({0, static_cast<std::uint16_t>(below(20)), 3, 3});
        case 1:
            return sref_cell({2, 2, 0, static_cast<std::uint8_t>(below(20))});
        case 2:
            return chance(90) ? sref_cell({0, 40, 0, 5}) : wild(false);
        default:
            return sref_cell({5, 5, 5, 5});
        }
    }

    OPER wild(bool arrays) {
        switch (below(arrays ? 9 : 7)) {
        case 0:
            return error_cell(static_cast<std::uint16_t>(std::array{0, 7, 15, 23, 29, 36, 42, 99}[below(8)]));
        case 1:
            return nil_cell();
        case 2:
            return bool_cell(chance(50));
        case 3:
            return text();
        case 4:
            return missing_cell();
        case 5:
            return sref_cell({1, 1, 1, 1});
        case 6:
            return number_cell(edge());
        case 7: {
            OPER broken = array_cell(nullptr, below(3) - 1, -below(3));
            return broken;
        }
        default:
            return list();
        }
    }

  private:
    double edge() {
        static constexpr double edges[] = {
            0,      -0.0,     1,         -1,      0.5,   1e-13,        -1e-12, 1e308,        -1e308,
            nan,    infinity, -infinity, 1909.99, 1910,  1e10,         3653.5, 3653.999,     3654,
            640637, 641003,   641004,    10000,   10001, 2147483647.0, 1e18,   4294967296.0, -2147483649.0,
            12.31,  -12.31,   13.5,      5.0305,  999,   1000,         0.1,    2.29,         -1.01,
            20,     20.01,    100.02,    1e-300};
        return edges[below(static_cast<int>(std::size(edges)))];
    }
    double day() {
        switch (below(10)) {
        case 0:
            return edge();
        case 1:
            return 1990 + below(60) + (chance(50) ? 0.25 * below(4) : 0.0);
        case 2:
            return 3654 + below(636000);
        default:
            return 36526 + below(14600);
        }
    }
    double amount() {
        switch (below(8)) {
        case 0:
            return edge();
        case 1:
            return below(14);
        case 2:
            return below(13) + 0.01 * below(13);
        case 3:
            return uniform(-1e6, 1e6);
        case 4:
            return day();
        case 5:
            return below(40) - 20;
        default:
            return uniform(0.0, 0.2);
        }
    }
    OPER text() {
        static const char* const words[] = {"",       "abc",         "$1,234.50", "(500)",    "-5", "[a-z]+",
                                            "(a+)+b", "12-Mar-2005", "A1:B2",     "?>5",      "4",  "x",
                                            "TRUE",   "=1",          "\"",        "quarterly"};
        std::string& kept = texts_.emplace_back(1, '\0');
        if (chance(80)) {
            kept += words[below(static_cast<int>(std::size(words)))];
        } else {
            const int length = chance(20) ? 255 : below(40);
            for (int i = 0; i < length; ++i) kept += static_cast<char>(below(256));
        }
        kept[0] = static_cast<char>(static_cast<unsigned char>(kept.size() - 1));
        return {{.str = reinterpret_cast<unsigned char*>(kept.data())}, xltypeStr};
    }
    OPER sequence() {
        static constexpr double figures[] = {1,   2,  4,  12, 13,   -1,    -2,  -4,     -12,
                                             -13, 14, 15, 0,  3.25, -6.30, 100, 200.01, 2.29};
        if (chance(80)) return number_cell(figures[below(static_cast<int>(std::size(figures)))]);
        std::vector<OPER>& cells = arrays_.emplace_back();
        const int n = 1 + below(chance(95) ? 6 : 101);
        for (int i = 0; i < n; ++i)
            cells.push_back(number_cell((chance(10) ? -1 : 1) * (1 + 12 * i / n + 0.01 * (1 + below(28)))));
        return array_cell(cells.data(), n, 1);
    }
    OPER list() {
        std::vector<OPER>& cells = arrays_.emplace_back();
        int rows = 1 + below(8);
        int columns = chance(80) ? 1 : 1 + below(4);
        if (chance(2)) rows = 10000, columns = 1;
        if (chance(1)) rows = 10001, columns = 1;
        const int flavour = below(6);
        double value = flavour < 3 ? 36526 + below(8000) : amount();
        for (int i = 0; i < rows * columns; ++i) {
            switch (flavour) {
            case 0:
            case 1:
            case 2:
                value += below(400);
                break;
            case 3:
                value = uniform(-1000.0, 1000.0);
                break;
            case 4:
                value = below(5);
                break;
            default:
                value = amount();
            }
            cells.push_back(chance(2) && rows < 100 ? wild(false) : number_cell(value));
        }
        return array_cell(cells.data(), rows, columns);
    }

    std::mt19937_64 random_;
    std::deque<std::string> texts_;
    std::deque<std::vector<OPER>> arrays_;
};

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

void find(const char* what, std::uint64_t call, const std::string& detail = {}) {
    ++findings;
    std::printf("FINDING %s at call %llu: %s %s\n", what, static_cast<unsigned long long>(call), the_call.c_str(),
                detail.c_str());
    std::fflush(stdout);
}

void one_call(const Function& function, std::uint64_t seed, std::uint64_t number, SoakHost& host) {
    Generator generator(seed, number);
    OPER cells[max_arguments];
    OPER* arguments[max_arguments + 1] = {};
    the_call = function.name;
    the_call += '(';
    for (int i = 0; i < function.arity(); ++i) {
        cells[i] = generator.cell(function.calls.kinds[i], function.args[i].is_optional());
        arguments[i] = &cells[i];
        the_call += (i ? "; " : "") + formula_text(cells[i]);
    }
    the_call += ')';
    const OPER caller = generator.caller();
    const bool unreliable = generator.chance(3);

    host.begin(caller, unreliable);
    const auto start = processor_time();
    const OPER* const result = perform(function, arguments);
    const auto elapsed = processor_time() - start;
    const std::string plain = bits(result);
    if (elapsed > slow_call)
        find("slow", number,
             std::to_string(std::chrono::duration_cast<std::chrono::milliseconds>(elapsed).count()) + " ms");
    if (plain.rfind("NOT A CELL", 0) == 0) find("broken result", number, plain);
    if (number % traced_every != 0 || elapsed > slow_call / 10 || function.is_volatile || unreliable) return;

    host.begin(caller, unreliable);
    trace().TraceStart();
    const std::string with_trace = bits(perform(function, arguments));
    trace().TraceShow();
    // The conversion of #NULL! leaves what the slot held: the first call has then changed the inputs of the second.
    if (with_trace != plain && the_call.find("error 0") == std::string::npos &&
        the_call.find("error 99") == std::string::npos)
        find("traced result differs", number, plain.substr(0, 80) + " <> " + with_trace.substr(0, 80));
}

void tell_call() { std::printf("\nCRASH in %s\n", the_call.c_str()); }

} // namespace
} // namespace qx

int main(int argc, char** argv) {
    using namespace qx;
    double seconds = 10;
    std::uint64_t seed = 1;
    std::uint64_t from = 0;
    std::string only;
    CLI::App app("Calls every function with cells that like the edges");
    app.add_option("--seconds", seconds, "How long to run");
    app.add_option("--seed", seed, "Seed of the generator");
    app.add_option("--from", from, "Number of the first call");
    app.add_option("--only", only, "One function's name");
    CLI11_PARSE(app, argc, argv);
#if defined(__SANITIZE_ADDRESS__)
    __sanitizer_set_death_callback(tell_call);
#else
    (void)tell_call;
#endif

    std::vector<const Function*> functions;
    for (const Registered* node = all_functions(); node != nullptr; node = node->next)
        if (only.empty() || only == node->function.name) functions.push_back(&node->function);
    std::sort(functions.begin(), functions.end(),
              [](const Function* a, const Function* b) { return std::strcmp(a->name, b->name) < 0; });
    if (functions.empty()) {
        std::fprintf(stderr, "There is no function %s.\n", only.c_str());
        return 2;
    }
    SoakHost host;
    set_host(&host);
    const auto end = Clock::now() + std::chrono::duration<double>(seconds);
    std::uint64_t number = from;
    for (; Clock::now() < end && findings < 20; ++number)
        one_call(*functions[number % functions.size()], seed, number, host);
    set_host(nullptr);
    std::printf("%llu calls of %zu functions, %d findings\n", static_cast<unsigned long long>(number - from),
                functions.size(), findings);
    return findings > 0 ? 1 : 0;
}
