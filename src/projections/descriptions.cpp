#include "projections/descriptions.h"

#include "core/routine.h"

#include <cmath>
#include <cstdlib>

namespace qx {

namespace {

// Where the words of a shape change.
constexpr int whole_skew = 100;
constexpr int concentrated_skew = 90;
constexpr int high_skew = 50;
constexpr int high_peak = 75;
constexpr int moderate_peak = 50;
constexpr int moderate_concentration = 25;

std::string skew_text(int skew) {
    const bool to_start = skew < 0;
    const int degree = std::abs(skew);
    if (degree == 0) return "Symmetric ";
    if (degree >= whole_skew) return to_start ? "All at start " : "All at completion ";
    if (degree >= concentrated_skew) return to_start ? "Concentrated near start " : "Concentrated near completion ";
    if (degree >= high_skew)
        return text_of("High Skew (degree ", degree, to_start ? ") towards start " : ") towards completion ");
    return text_of("Low Skew (degree ", degree, to_start ? ") towards start " : ") towards  date ");
}

std::string peak_text(int peak) {
    if (peak == 0) return {};
    const char* const words = peak >= high_peak                ? "High concentration ("
                              : peak >= moderate_peak          ? "Moderately peaked (degree "
                              : peak >= moderate_concentration ? "Moderate concentration ("
                                                               : "Low concentration (";
    return text_of(words, peak, ")");
}

} // namespace

const char* level_switch_text(int LevelSwitchOpt) {
    return SwitchTable(level_values).words(LevelSwitchOpt, "Don't recognise the level switch supplied.");
}

std::string DescribeLevelSwitch(int LevelSwitchOpt) {
    Routine here{"DescribeLevelSwitch"};
    here.inputs(LevelSwitchOpt);
    return here.returning(std::string(level_switch_text(LevelSwitchOpt)));
}

std::string DescribeShape(double Shape) {
    Routine here{"DescribeShape"};
    here.inputs(Shape);
    const double skew = std::trunc(Shape);
    here.limit(skew, -whole_skew, whole_skew, "Shape");
    const int peak = whole(std::round(std::fabs(fraction(Shape)) * 100.0));
    std::string text = skew_text(whole(skew));
    if (std::fabs(skew) < whole_skew) text += peak_text(peak);
    return here.returning(std::move(text));
}

} // namespace qx
