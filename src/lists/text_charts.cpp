#include "lists/text_charts.h"

#include "core/routine.h"

#include <algorithm>
#include <cmath>

namespace qx {

namespace {

constexpr int longest_line = 254; // what a cell takes

/// A line of blanks that stands for the stretch from one number to another.
class Line {
  public:
    Line(double from, double to, int length) : from_(from), to_(to), letters_(static_cast<std::size_t>(length), ' ') {}

    /// Draws the stretch from a to b, rounded to whole letters, but at least one if it touches the line.
    void draw(double a, double b, char letter) {
        if (!(a < b) || b <= from_ || a >= to_) return;
        const int length = static_cast<int>(letters_.size());
        int first = static_cast<int>(std::lround(place(a)));
        int last = static_cast<int>(std::lround(place(b)));
        if (first == last) {
            first = std::min(static_cast<int>(place(a) + 1e-9), length - 1);
            last = first + 1;
        }
        std::fill(letters_.begin() + first, letters_.begin() + last, letter);
    }

    /// The line without the blanks at its end.
    std::string text() const { return letters_.substr(0, letters_.find_last_not_of(' ') + 1); }

  private:
    double place(double x) const {
        return std::clamp((x - from_) / (to_ - from_), 0.0, 1.0) * static_cast<double>(letters_.size());
    }

    double from_, to_;
    std::string letters_;
};

/// Letter i, from 1, of a series of letters.
char letter_of(const std::string& letters, int i) {
    return letters.empty() ? '|' : letters[std::min(static_cast<std::size_t>(i), letters.size()) - 1];
}

} // namespace

std::string Bar(double Amount, double MaxAmount, double MinAmount, int LineLength, const std::string& Letters) {
    Routine here{"Bar"};
    here.inputs(Amount, MaxAmount, MinAmount, LineLength, Letters);
    here.limit(LineLength, 1, longest_line, "LineLength");
    if (!(MaxAmount > MinAmount) || std::isinf(MaxAmount - MinAmount))
        here.fail<errlibnonsenseinputs>("MaxAmount", "The maximum ", MaxAmount, " is not above the minimum ",
                                        MinAmount);
    if (Amount > MaxAmount || Amount < MinAmount) here.warning("The amount lies beyond the line");
    const double base = std::clamp(0.0, MinAmount, MaxAmount);
    Line line(MinAmount, MaxAmount, LineLength);
    if (Amount > base)
        line.draw(base, Amount, letter_of(Letters, 1));
    else
        line.draw(Amount, base, letter_of(Letters, 2));
    return here.returning(line.text());
}

std::string Gantt(const timeperiod& Time, View<date> Starts, View<date> Finishes, int LineLength,
                  const std::string& Letters) {
    Routine here{"Gantt"};
    here.inputs(Time, Starts, Finishes, LineLength, Letters);
    here.limit(LineLength, 0, longest_line, "LineLength");
    Starts.checksamesize(Finishes);
    const double months = Time.lenmonthsdecimal();
    const int length = LineLength > 0 ? LineLength : std::clamp(static_cast<int>(std::lround(months)), 1, longest_line);
    if (!(months > 0.0)) {
        here.warning("The time period is empty");
        return here.returning(std::string{});
    }
    Line line(Time.from().months(), Time.to().months(), length); // every month as long as the others
    for (int i = 1; i <= Starts.size(); ++i) {
        const date& start = Starts.get(i);
        const date& finish = Finishes.get(i);
        const TraceBlock pass = here.pass(i, "Activity from ", start, " to ", finish);
        if (start.iszero() || finish.iszero()) {
            here.info("Without a start or a finish, not drawn");
            continue;
        }
        if (finish < start) here.fail<invaliddateorder>("Finishes", finish, " is before ", start);
        line.draw(start.months(), finish.months(), letter_of(Letters, i));
    }
    return here.returning(line.text());
}

} // namespace qx
