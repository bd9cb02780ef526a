// Calls of worksheet functions for the soak: cells that like the edges, calls near the examples of a declaration, and
// the worst lists that a workbook can hold.
#pragma once

#include "addin/function.h"

#include <cstdint>
#include <deque>
#include <random>
#include <string>
#include <vector>

namespace qx::fuzz {

/// A cell as it would be written in a formula; of an array the first cells.
std::string formula_text(const OPER& cell);

/// The cells of an example of a function, as many as it has arguments.
using Example = std::vector<OPER>;
/// The calls that the examples of a declaration show, whose cells are freed with free_oper.
std::vector<Example> examples_of(const Function& function);

enum class Manner {
    any,     ///< any cells that suit the arguments, most of the time
    near,    ///< as an example, but for a few arguments
    longest, ///< as an example, with lists as long as they may be, of the worst kinds
};

/// Everything about one call comes from its number and the seed.
class Generator {
  public:
    Generator(std::uint64_t seed, std::uint64_t call) : random_(seed * 1000003 + call) {}

    int below(int n) { return static_cast<int>(random_() % static_cast<std::uint64_t>(n)); }
    bool chance(int percent) { return below(100) < percent; }

    /// The cells of a call, which live as long as the generator.
    std::vector<OPER> arguments(const Function& function, const std::vector<Example>& examples, Manner manner);
    OPER caller();

  private:
    double uniform(double low, double high) {
        return low + (high - low) * static_cast<double>(random_() >> 11) * 0x1.0p-53;
    }
    OPER cell(Kind kind, bool optional);
    OPER wild(bool arrays);
    double edge();
    double day();
    double amount();
    OPER text();
    OPER sequence();
    OPER list();
    /// A column of dates, or of values like those of an example.
    OPER long_dates(int length, double first, bool well_formed);
    OPER long_values(int length, const OPER& like, bool well_formed);

    std::mt19937_64 random_;
    std::deque<std::string> texts_;
    std::deque<std::vector<OPER>> arrays_;
};

} // namespace qx::fuzz
