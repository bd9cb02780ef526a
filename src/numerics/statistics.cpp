#include "numerics/statistics.h"
#include "core/routine.h"

#include <cmath>

namespace qx {

namespace {

// A sum that keeps what rounding takes from it (Neumaier, 1974).
class Sum {
  public:
    void add(double value) {
        const double sum = sum_ + value;
        lost_ += std::fabs(sum_) >= std::fabs(value) ? (sum_ - sum) + value : (value - sum) + sum_;
        sum_ = sum;
    }
    double value() const { return sum_ + lost_; }

  private:
    double sum_ = 0.0, lost_ = 0.0;
};

struct Sample {
    int count;
    double mean;
};

// Throws unless there are at least `least` values.
Sample sample(const Routine& here, View<floatblank> values, int least) {
    Sum sum;
    int count = 0;
    for (const floatblank& value : values) {
        if (value.isblank()) continue;
        sum.add(value.number());
        ++count;
    }
    if (count < least)
        here.fail<errlibinsuffrange>("Values", "There are ", count, " values, at least ", least, " are needed");
    here.info("Count: ", count);
    return {count, sum.value() / count};
}

double variance(const Routine& here, View<floatblank> values) {
    const auto [count, mean] = sample(here, values, 2);
    here.info("Mean: ", mean);
    Sum squares, rest;
    for (const floatblank& value : values) {
        if (value.isblank()) continue;
        const double deviation = value.number() - mean;
        squares.add(deviation * deviation);
        rest.add(deviation);
    }
    return (squares.value() - rest.value() * rest.value() / count) / (count - 1);
}

} // namespace

double MeanAvg(View<floatblank> Values) {
    Routine here{"MeanAvg"};
    here.inputs(Values);
    return here.returning(sample(here, Values, 1).mean);
}

double SampleVar(View<floatblank> Values) {
    Routine here{"SampleVar"};
    here.inputs(Values);
    return here.returning(variance(here, Values));
}

double SampleSD(View<floatblank> Values) {
    Routine here{"SampleSD"};
    here.inputs(Values);
    return here.returning(std::sqrt(variance(here, Values)));
}

int SignChanges(View<floatblank> Values) {
    Routine here{"SignChanges"};
    here.inputs(Values);
    int changes = 0;
    double before = 0.0;
    for (const floatblank& value : Values) {
        if (value.iszero()) continue;
        if (value.number() * before < 0.0) ++changes;
        before = std::copysign(1.0, value.number());
    }
    return here.returning(changes);
}

} // namespace qx
