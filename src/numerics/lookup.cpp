#include "numerics/lookup.h"

#include "core/routine.h"

#include <cmath>

namespace qx {

namespace {

const char* mode_text(int mode) { return SwitchTable(lookup_mode_values).words(mode, ""); }

bool descends(int mode) {
    return mode == descend_less_or_equal || mode == descend_less || mode == descend_equal || mode == descend_unequal;
}
bool needs_order(int mode) { return mode <= ascend_greater; }

bool meets(int mode, double item, double input) {
    const bool equal = isequal(item, input);
    switch (mode) {
    case descend_less_or_equal:
        return equal || item < input;
    case descend_less:
        return !equal && item < input;
    case ascend_greater_or_equal:
        return equal || item > input;
    case ascend_greater:
        return !equal && item > input;
    case ascend_equal:
    case descend_equal:
        return equal;
    case ascend_unequal:
    case descend_unequal:
        return !equal;
    default: // the closest item: any will do until a closer one comes
        return true;
    }
}

double value_of(double item) { return item; }
double value_of(const date& day) { return day.dtn(); }

/// The position of the first item in the mode's direction that meets the comparison, or 0.
template <class T>
int walk(int mode, double input, View<T> list) {
    const int n = list.size();
    if (mode == closest) {
        int nearest = 1;
        for (int i = 2; i <= n; ++i)
            if (std::fabs(value_of(list.get(i)) - input) < std::fabs(value_of(list.get(nearest)) - input)) nearest = i;
        return nearest;
    }
    if (descends(mode)) {
        for (int i = n; i >= 1; --i)
            if (meets(mode, value_of(list.get(i)), input)) return i;
    } else {
        for (int i = 1; i <= n; ++i)
            if (meets(mode, value_of(list.get(i)), input)) return i;
    }
    return 0;
}

/// One lookup: where it looks, what for, and what becomes of a failure.
template <class T>
struct Lookup {
    const Routine& here;
    double input;
    View<T> list;
    int mode;
    double within; ///< the tolerance
    double OnErrorN;
    const char* input_name;
    const View<double>* output = nullptr; ///< must be flat where the list is

    /// The position found, or 0 for the fallback.
    int position() const {
        here.info(mode_text(mode));
        const Direction direction = list.thisdirection();
        if (direction == mixed && needs_order(mode))
            return failed<errlibbadlistprogression>("Cannot resolve whether your list is ascending or descending");
        int found = 0;
        if (direction == no_direction) {
            if (output != nullptr && output->thisdirection() != no_direction)
                return failed<errlibbadlistprogression>("Non-unique lookup in OutputRange");
            if (meets(mode, value_of(list.first()), input)) found = 1;
        } else {
            found = walk(mode, input, list);
        }
        if (found == 0) return failed<errliblookupfailed>("Lookup Failed");
        if (within > 0.0 && std::fabs(value_of(list.get(found)) - input) > within)
            return failed<errliblookupfailed>("The looked value of InputRange(", value_of(list.get(found)),
                                              ") exceeded the stated tolerance (", within, ")");
        here.info("Found item number ", found);
        return found;
    }

  private:
    template <class E, class... Pieces>
    int failed(const Pieces&... pieces) const {
        if (isequal(OnErrorN, no_fallback)) here.fail<E>(input_name, pieces...);
        here.info(pieces..., ", returning OnErrorN");
        return 0;
    }
};

void check_mode(Routine& here, int LookupSwitch, const char* name = "LookupSwitch") {
    here.limit(LookupSwitch, descend_less_or_equal, closest, name);
}

} // namespace

double LookupN(double InputVal, View<double> InputRange, View<double> OutputRange, int LookupSwitch, double LookupTol,
               double OnErrorN) {
    Routine here{"LookupN"};
    here.inputs(InputVal, InputRange, OutputRange, LookupSwitch, LookupTol, OnErrorN);
    check_mode(here, LookupSwitch);
    const Lookup<double> lookup{here,      InputVal, InputRange, LookupSwitch,
                                LookupTol, OnErrorN, "InputVal", &OutputRange};
    const int found = lookup.position();
    return here.returning(found == 0 ? OnErrorN : OutputRange.get(found));
}

double LookupNum(View<double> InputRange, View<double> OutputRange, double InputValue, int LookupSwitch,
                 double LookupTol, double OnErrorN) {
    Routine here{"LookupNum"};
    here.inputs(InputRange, OutputRange, InputValue, LookupSwitch, LookupTol, OnErrorN);
    return here.returning(LookupN(InputValue, InputRange, OutputRange, LookupSwitch, LookupTol, OnErrorN));
}

double LookUpB(View<double> InputRange, View<double> OutputRange, double InputValue, int Look_UpSwitch) {
    Routine here{"LookUpB"};
    here.inputs(InputRange, OutputRange, InputValue, Look_UpSwitch);
    check_mode(here, Look_UpSwitch, "Look_UpSwitch");
    return here.returning(
        LookupN(InputValue, InputRange, OutputRange, Look_UpSwitch, no_lookup_tolerance, no_fallback));
}

double LookupNIndex(double InputVal, View<double> InputRange, int LookupSwitch, double LookupTol, double OnErrorN) {
    Routine here{"LookupNIndex"};
    here.inputs(InputVal, InputRange, LookupSwitch, LookupTol, OnErrorN);
    check_mode(here, LookupSwitch);
    const int found =
        Lookup<double>{here, InputVal, InputRange, LookupSwitch, LookupTol, OnErrorN, "InputVal"}.position();
    return here.returning(found == 0 ? OnErrorN : static_cast<double>(found));
}

double LookupDIndex(const date& TheDate, View<date> InputDateRange, int LookupSwitch, double LookupTol,
                    double OnErrorN) {
    Routine here{"LookupDIndex"};
    here.arguments(QX_NAMED(TheDate, InputDateRange, LookupSwitch, LookupTol, OnErrorN));
    check_mode(here, LookupSwitch);
    const int found =
        Lookup<date>{here, value_of(TheDate), InputDateRange, LookupSwitch, LookupTol, OnErrorN, "TheDate"}.position();
    return here.returning(found == 0 ? OnErrorN : static_cast<double>(found));
}

double LookUpNum2D(View<double> OutputMatrix, View<double> AxisRangeX, View<double> AxisRangeY, double InputValueX,
                   double InputValueY, int LookupSwitch) {
    Routine here{"LookUpNum2D"};
    here.inputs(OutputMatrix, AxisRangeX, AxisRangeY, InputValueX, InputValueY, LookupSwitch);
    check_mode(here, LookupSwitch);
    constexpr double not_found = 0.0; // no position of a list
    const int x = whole(LookupNIndex(InputValueX, AxisRangeX, LookupSwitch, no_lookup_tolerance, not_found));
    if (x == 0)
        here.fail<errliblookupfailed>("InputValueX", "The input X value could not be looked up on the X Axis Range");
    const int y = whole(LookupNIndex(InputValueY, AxisRangeY, LookupSwitch, no_lookup_tolerance, not_found));
    if (y == 0)
        here.fail<errliblookupfailed>("InputValueY", "The input Y value could not be looked up on the Y Axis Range");
    const auto check = [&here](int position, int limit, const char* axis) {
        if (position > limit)
            here.fail<outofrange>("OutputMatrix", "The ", axis, " position resulting from a lookup on the ", axis,
                                  " Axis Range resulted in an illegal position within OutputMatrix - check the "
                                  "dimensions of each are consistent (",
                                  position, ")");
    };
    check(x, OutputMatrix.getcolumns(), "X");
    check(y, OutputMatrix.getrows(), "Y");
    return here.returning(OutputMatrix.getxy(x, y));
}

double SeekNum(View<double> InputRange, View<double> OutputRange, double InputValue) {
    Routine here{"SeekNum"};
    here.inputs(InputRange, OutputRange, InputValue);
    const int found = walk(ascend_equal, InputValue, InputRange);
    if (found == 0) here.fail<errliblookupfailed>("InputValue", "Lookup Failed");
    return here.returning(OutputRange.get(found));
}

std::string DescribeLookup(int LookupSwitch) {
    Routine here{"DescribeLookup"};
    here.inputs(LookupSwitch);
    check_mode(here, LookupSwitch);
    return here.returning(std::string(mode_text(LookupSwitch)));
}

} // namespace qx
