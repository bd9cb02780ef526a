#include "hosts/sheet/builtin_tools.h"

#include <functional>
#include <numeric>
#include <unordered_map>

namespace qx::sheet::builtin {

namespace {

/// The number that is beyond all others; a date if that number is one.
Value extreme(const Arguments& a, bool (*beyond)(double, double)) {
    Value best = Value::number(0.0), error;
    bool any = false;
    for (int i = 0; i < a.count && !error.is_error(); ++i)
        each_value(a, i, [&](const Value& value, bool inside) {
            double x = 0.0;
            if (value.is_error()) error = value;
            const bool counts = value.is_number() || (!inside && to_number(value, x, error));
            if (!counts || error.is_error()) return !error.is_error();
            const Value number = value.is_number() ? value : Value::number(x);
            if (!any || beyond(number.number(), best.number())) best = number;
            any = true;
            return true;
        });
    return error.is_error() ? error : best;
}

struct Total {
    double sum = 0.0;
    std::uint64_t count = 0;
};

/// Calls add(x) for the numbers of `values` where the criteria from an argument on are met.
template <class Add>
Value where(A a, const Value& values, int from, Add add) {
    const Table table(a.calculator, values);
    Value error;
    const Value failure = each_match(a, from, [&](std::uint32_t row, std::uint32_t column) {
        const Value& value = table.beyond(row, column);
        if (value.is_error())
            error = value;
        else if (value.is_number())
            add(value.number());
        return !error.is_error();
    });
    return failure.is_error() ? failure : error;
}

Value sum_where(A a, const Value& values, int from) {
    double sum = 0.0;
    const Value error = where(a, values, from, [&](double x) { sum += x; });
    return error.is_error() ? error : number(sum);
}

Value average_where(A a, const Value& values, int from) {
    Total total;
    const Value error = where(a, values, from, [&](double x) { total = {total.sum + x, total.count + 1}; });
    if (error.is_error()) return error;
    return total.count == 0 ? Value::error(xlerrDiv0, "no number meets the criteria")
                            : number(total.sum / static_cast<double>(total.count));
}

/// The truth values of all arguments joined; texts and blanks inside ranges do not count.
Value joined(const Arguments& a, bool (*join)(bool, bool), bool start) {
    bool result = start, any = false;
    Value error;
    for (int i = 0; i < a.count && !error.is_error(); ++i)
        each_value(a, i, [&](const Value& value, bool inside) {
            if (value.is_error()) {
                error = value;
                return false;
            }
            if (inside && (value.is_text() || value.is_blank())) return true;
            bool one = false;
            if (!to_truth(value, one, error)) return false;
            result = join(result, one);
            any = true;
            return true;
        });
    if (error.is_error()) return error;
    return any ? truth(result) : bad_value();
}

Value sum_of_products(const Arguments& a) {
    std::vector<Table> tables;
    for (int i = 0; i < a.count; ++i) {
        tables.emplace_back(a.calculator, a[i]);
        if (tables[0].rows() != tables.back().rows() || tables[0].columns() != tables.back().columns())
            return bad_value();
    }
    std::uint32_t rows = 0;
    for (const Table& table : tables) rows = std::max(rows, table.used_rows());
    double sum = 0.0;
    for (std::uint32_t row = 0; row < rows; ++row)
        for (std::uint32_t column = 0; column < tables[0].columns(); ++column) {
            double product = 1.0;
            for (const Table& table : tables) {
                const Value& value = table.at(row, column);
                if (value.is_error()) return value;
                product *= value.is_number() ? value.number() : 0.0;
            }
            sum += product;
        }
    return number(sum);
}

/// The largest or smallest of the first argument's numbers where the criteria are met; 0 if there is none.
Value extreme_where(A a, bool (*beyond)(double, double)) {
    double best = 0.0;
    bool any = false;
    const Value error = where(a, a[0], 1, [&](double x) {
        if (!any || beyond(x, best)) best = x;
        any = true;
    });
    return error.is_error() ? error : number(best);
}

// --- Statistics -----------------------------------------------------------------------------------------------------

Value no_numbers() { return Value::error(xlerrNum, "there are no numbers"); }

/// The sum of the squares of the distances from the mean, by two passes, divided by one less than the count of a
/// sample or by that of a population.
Value variance(const std::vector<double>& numbers, bool sample) {
    const double count = static_cast<double>(numbers.size());
    if (count < (sample ? 2.0 : 1.0)) return Value::error(xlerrDiv0, "there are too few numbers");
    const double mean = std::accumulate(numbers.begin(), numbers.end(), 0.0) / count;
    double squares = 0.0, rest = 0.0; // what rounding takes from the mean
    for (const double x : numbers) {
        squares += (x - mean) * (x - mean);
        rest += x - mean;
    }
    return number((squares - rest * rest / count) / (sample ? count - 1.0 : count));
}

Value deviation(const std::vector<double>& numbers, bool sample) {
    const Value squares = variance(numbers, sample);
    return squares.is_error() ? squares : number(std::sqrt(std::max(0.0, squares.number())));
}

Value mean(const std::vector<double>& numbers) {
    if (numbers.empty()) return Value::error(xlerrDiv0, "there are no numbers");
    return number(std::accumulate(numbers.begin(), numbers.end(), 0.0) / static_cast<double>(numbers.size()));
}

/// The item of a rank, from 1, in ascending order; from the end if negative.
Value ranked(std::vector<double> numbers, double rank) {
    const double count = static_cast<double>(numbers.size());
    if (rank < 0.0) rank += count + 1.0;
    if (!(rank >= 1.0 && rank <= count)) return num();
    const auto place = numbers.begin() + static_cast<std::ptrdiff_t>(rank) - 1;
    std::nth_element(numbers.begin(), place, numbers.end());
    return number(*place);
}
Value largest(std::vector<double> numbers, double k) {
    return k < 1.0 ? num() : ranked(std::move(numbers), -std::ceil(k));
}
Value smallest(std::vector<double> numbers, double k) {
    return k < 1.0 ? num() : ranked(std::move(numbers), std::ceil(k));
}

/// The number below which a share of the others is, between neighbours in proportion. Inclusive: shares 0 and 1 are
/// the ends; else they are beyond.
Value percentile(std::vector<double> numbers, double share, bool inclusive) {
    if (numbers.empty()) return no_numbers();
    std::sort(numbers.begin(), numbers.end());
    const double count = static_cast<double>(numbers.size());
    const double place = inclusive ? share * (count - 1.0) : share * (count + 1.0) - 1.0;
    if (!(place >= 0.0 && place <= count - 1.0)) return num();
    const auto below = static_cast<std::size_t>(place);
    if (below + 1 >= numbers.size()) return number(numbers.back());
    return number(numbers[below] + (place - std::floor(place)) * (numbers[below + 1] - numbers[below]));
}
Value quartile(std::vector<double> numbers, double which, bool inclusive) {
    which = std::trunc(which);
    return which < 0.0 || which > 4.0 ? num() : percentile(std::move(numbers), which / 4.0, inclusive);
}

Value median(std::vector<double> numbers) { return percentile(std::move(numbers), 0.5, true); }

/// The number that occurs most often, of several the first.
Value mode(const std::vector<double>& numbers) {
    std::unordered_map<double, std::size_t> counts;
    std::size_t most = 1;
    for (const double x : numbers) most = std::max(most, ++counts[x]);
    if (most < 2) return Value::error(xlerrNA, "no number occurs twice");
    for (const double x : numbers)
        if (counts[x] == most) return number(x);
    return na();
}

/// Applies a statistic of a list to the numbers of all arguments.
template <class Statistic>
Value of_numbers(A a, Statistic statistic) {
    std::vector<double> numbers;
    Value error = all_numbers(a, numbers);
    return error.is_error() ? error : statistic(std::move(numbers));
}

/// The same for the numbers of the first argument, with the second.
template <Value (*statistic)(std::vector<double>, double, bool), bool inclusive>
Value of_first(A a) {
    std::vector<double> numbers;
    Value error = all_numbers({a.calculator, a.values, 1}, numbers);
    return error.is_error() ? error : statistic(std::move(numbers), a.number(1), inclusive);
}

/// LARGE and SMALL: the number of a rank, from 1, counted from the largest or the smallest.
Value of_rank(A a, bool from_largest) {
    const double k = a.number(1) < 1.0 ? 0.0 : std::ceil(a.number(1));
    if (const LookupIndex* const index = Table(a.calculator, a[0]).index(); index != nullptr && !index->has_errors()) {
        const double count = static_cast<double>(index->numbers());
        if (!(k >= 1.0 && k <= count)) return num();
        return number(index->number(static_cast<std::size_t>(from_largest ? count - k : k - 1.0)));
    }
    std::vector<double> numbers;
    Value error = all_numbers({a.calculator, a.values, 1}, numbers);
    if (error.is_error()) return error;
    return (from_largest ? largest : smallest)(std::move(numbers), k);
}

Value rank_of(A a) {
    const bool ascending = a.number(2, 0.0) != 0.0;
    if (const LookupIndex* const index = Table(a.calculator, a[1]).index(); index != nullptr && !index->has_errors()) {
        const auto [first, end] = index->ranks(a.number(0));
        if (first == end) return na();
        return number(1.0 + static_cast<double>(ascending ? first : index->numbers() - end));
    }
    std::vector<double> numbers;
    Value error = all_numbers({a.calculator, a.values + 1, 1}, numbers);
    if (error.is_error()) return error;
    const double x = a.number(0);
    if (std::find(numbers.begin(), numbers.end(), x) == numbers.end()) return na();
    return number(1.0 + static_cast<double>(std::count_if(numbers.begin(), numbers.end(), [&](double other) {
                      return ascending ? other < x : other > x;
                  })));
}

// --- Subtotals ------------------------------------------------------------------------------------------------------

/// True if a formula is itself a subtotal, which other subtotals pass over.
bool is_subtotal(const Cell& cell) {
    if (cell.node == nullptr || !cell.node->formula) return false;
    const auto& builtins = cell.node->formula.builtins;
    return std::any_of(builtins.begin(), builtins.end(), [](const Builtin* builtin) {
        const std::string_view name = builtin->name;
        return name == "SUBTOTAL" || name == "AGGREGATE";
    });
}

/// The values of some arguments from one on, without subtotals and, if so wanted, without errors.
struct Gathered {
    std::vector<double> numbers;
    std::uint64_t filled = 0; ///< values that are not blank
    Value error;

    Gathered(A a, int from, int end, bool skip_errors, bool skip_subtotals) {
        const auto take = [&](const Value& value) {
            if (value.is_blank()) return;
            if (value.is_error()) {
                if (!skip_errors && !error.is_error()) error = value;
                return;
            }
            ++filled;
            if (value.is_number()) numbers.push_back(value.number());
        };
        Workbook& book = a.calculator.book();
        for (int i = from; i < end; ++i) {
            if (a[i].is(Type::area))
                book.grid(a[i].area().sheet).visit(a[i].area(), [&](std::uint32_t, std::uint32_t, Cell& cell) {
                    if (!skip_subtotals || !is_subtotal(cell)) take(book.read_cell(cell));
                    return true;
                });
            else
                each_value(a, i, [&](const Value& value, bool) { return take(value), true; });
        }
    }

    /// The statistic of a number from 1 to 13 in the list of SUBTOTAL and AGGREGATE.
    Value statistic(int which) const {
        switch (which) {
        case 1:
            return mean(numbers);
        case 2:
            return number(static_cast<double>(numbers.size()));
        case 3:
            return number(static_cast<double>(filled));
        case 4:
            return number(numbers.empty() ? 0.0 : *std::max_element(numbers.begin(), numbers.end()));
        case 5:
            return number(numbers.empty() ? 0.0 : *std::min_element(numbers.begin(), numbers.end()));
        case 6:
            return number(numbers.empty() ? 0.0
                                          : std::accumulate(numbers.begin(), numbers.end(), 1.0, std::multiplies<>()));
        case 7:
            return deviation(numbers, true);
        case 8:
            return deviation(numbers, false);
        case 9:
            return number(std::accumulate(numbers.begin(), numbers.end(), 0.0));
        case 10:
            return variance(numbers, true);
        case 11:
            return variance(numbers, false);
        case 12:
            return numbers.empty() ? no_numbers() : median(numbers);
        default:
            return mode(numbers);
        }
    }
};

Value subtotal(A a) {
    double which = std::trunc(a.number(0));
    if (which > 100.0) which -= 100.0; // without hidden rows, of which there are none
    if (!(which >= 1.0 && which <= 11.0)) return bad_value();
    const Gathered values(a, 1, a.count, false, true);
    if (values.error.is_error() && which != 2.0 && which != 3.0) return values.error;
    return values.statistic(static_cast<int>(which));
}

Value aggregate(A a) {
    const double which = std::trunc(a.number(0)), option = std::trunc(a.number(1));
    if (!(which >= 1.0 && which <= 19.0 && option >= 0.0 && option <= 7.0)) return bad_value();
    const bool skip_errors = option == 2.0 || option == 3.0 || option >= 6.0;
    const Gathered values(a, 2, which >= 14.0 ? 3 : a.count, skip_errors, option <= 3.0);
    if (values.error.is_error() && which != 2.0 && which != 3.0) return values.error;
    if (which < 14.0) return values.statistic(static_cast<int>(which));
    double k = 0.0;
    Value error;
    if (a.count < 4) return bad_value();
    if (!to_number(a.calculator.single(a[3]), k, error)) return error;
    switch (static_cast<int>(which)) {
    case 14:
        return largest(values.numbers, k);
    case 15:
        return smallest(values.numbers, k);
    case 16:
    case 18:
        return percentile(values.numbers, k, which == 16.0);
    default:
        return quartile(values.numbers, k, which == 17.0);
    }
}

const Builtin logic[] = {
    // The formula language itself chooses and names; these are here for help.
    {"IF", "vr|r", "condition, then, [else]", "One of two values, by a condition", nullptr},
    {"IFS", "vr*", "condition, value, ...", "The value after the first condition that is TRUE", nullptr},
    {"SWITCH", "vvr*", "value, case, result, ..., [else]", "The result after the case that equals a value", nullptr},
    {"IFERROR", "er", "value, instead", "The value, or another one in place of an error", nullptr},
    {"IFNA", "er", "value, instead", "The value, or another one in place of #N/A", nullptr},
    {"LET", "rrr*", "name, value, ..., result", "A result with names for the values that it uses", nullptr},
    {"AND", "r*", "value, ...", "TRUE if all values are TRUE",
     [](A a) {
         return joined(
             a, [](bool x, bool y) { return x && y; }, true);
     }},
    {"OR", "r*", "value, ...", "TRUE if at least one value is TRUE",
     [](A a) {
         return joined(
             a, [](bool x, bool y) { return x || y; }, false);
     }},
    {"XOR", "r*", "value, ...", "TRUE if an odd number of values are TRUE",
     [](A a) {
         return joined(
             a, [](bool x, bool y) { return x != y; }, false);
     }},
    {"NOT", "b", "value", "The opposite of a truth value", [](A a) { return truth(!a.truth(0)); }},
    {"TRUE", "", "", "The truth value TRUE", [](A) { return truth(true); }},
    {"FALSE", "", "", "The truth value FALSE", [](A) { return truth(false); }},
    {"NA", "", "", "The error value #N/A: no value is available", [](A) { return na(); }},
    {"ISERROR", "e", "value", "TRUE for any error value", [](A a) { return truth(a[0].is_error()); }},
    {"ISERR", "e", "value", "TRUE for any error value but #N/A",
     [](A a) { return truth(a[0].is_error() && a[0].error() != xlerrNA); }},
    {"ISNA", "e", "value", "TRUE for #N/A", [](A a) { return truth(a[0].is_error() && a[0].error() == xlerrNA); }},
    {"ISNUMBER", "e", "value", "TRUE for a number", [](A a) { return truth(a[0].is_number()); }},
    {"ISTEXT", "e", "value", "TRUE for text", [](A a) { return truth(a[0].is_text()); }},
    {"ISNONTEXT", "e", "value", "TRUE for anything but text", [](A a) { return truth(!a[0].is_text()); }},
    {"ISLOGICAL", "e", "value", "TRUE for a truth value", [](A a) { return truth(a[0].is(Type::boolean)); }},
    {"ISBLANK", "e", "value", "TRUE for an empty cell", [](A a) { return truth(a[0].is_blank()); }},
    {"ISREF", "r", "value", "TRUE for a reference", [](A a) { return truth(a[0].is(Type::area)); }},
    {"ERROR.TYPE", "e", "value", "The number of an error value: 1 to 7 from #NULL! to #N/A, 9 #SPILL!, 14 #CALC!",
     [](A a) {
         if (!a[0].is_error()) return na();
         if (a[0].error() == error_spill) return number(9.0);
         if (a[0].error() == error_calc) return number(14.0);
         constexpr std::uint16_t order[] = {xlerrNull, xlerrDiv0, xlerrValue, xlerrRef, xlerrName, xlerrNum, xlerrNA};
         return number(static_cast<double>(std::find(std::begin(order), std::end(order), a[0].error()) - order) + 1.0);
     }},
    {"N", "e", "value", "The value as a number; 0 for text",
     [](A a) {
         double x = 0.0;
         Value error;
         if (a[0].is_text()) return number(0.0);
         return to_number(a[0], x, error) ? number(x) : error;
     }},
    {"T", "e", "value", "The value if it is text, else empty text",
     [](A a) { return a[0].is_text() || a[0].is_error() ? a[0] : Value::text(""); }},
};

const Builtin sums[] = {
    {"SUM", "r*", "number, ...", "The sum of the numbers",
     [](A a) {
         constexpr std::uint32_t long_column = 128;
         if (a.count == 1 && a[0].is(Type::area) && a[0].area().columns() == 1 && a[0].area().rows() >= long_column)
             return a.calculator.book().sum_of_column(a[0].area());
         return over_numbers(
             a, 0.0, [](double& sum, double x) { sum += x; }, number);
     }},
    {"SUMSQ", "r*", "number, ...", "The sum of the squares of the numbers",
     [](A a) {
         return over_numbers(
             a, 0.0, [](double& sum, double x) { sum += x * x; }, number);
     }},
    {"PRODUCT", "r*", "number, ...", "The product of the numbers",
     [](A a) {
         return over_numbers(
             a, std::pair{1.0, false},
             [](auto& total, double x) {
                 total = {total.first * x, true};
             },
             [](const auto& total) { return number(total.second ? total.first : 0.0); });
     }},
    {"MIN", "r*", "number, ...", "The smallest number",
     [](A a) { return extreme(a, [](double x, double least) { return x < least; }); }},
    {"MAX", "r*", "number, ...", "The largest number",
     [](A a) { return extreme(a, [](double x, double most) { return x > most; }); }},
    {"AVERAGE", "r*", "number, ...", "The arithmetic mean of the numbers",
     [](A a) {
         return over_numbers(
             a, Total{},
             [](Total& total, double x) {
                 total = {total.sum + x, total.count + 1};
             },
             [](const Total& total) {
                 return total.count == 0 ? Value::error(xlerrDiv0)
                                         : number(total.sum / static_cast<double>(total.count));
             });
     }},
    {"COUNT", "r*", "value, ...", "How many values are numbers",
     [](A a) {
         double count = 0.0, x = 0.0;
         Value error;
         for (int i = 0; i < a.count; ++i)
             each_value(a, i, [&](const Value& value, bool inside) {
                 if (value.is_number() || (!inside && to_number(value, x, error))) count += 1.0;
                 return true;
             });
         return number(count);
     }},
    {"COUNTA", "r*", "value, ...", "How many values are not empty",
     [](A a) {
         double count = 0.0;
         for (int i = 0; i < a.count; ++i)
             each_value(a, i, [&](const Value& value, bool inside) {
                 if (!inside || !value.is_blank()) count += 1.0;
                 return true;
             });
         return number(count);
     }},
    {"COUNTBLANK", "r", "range", "How many cells are empty or hold empty text",
     [](A a) {
         double filled = 0.0;
         each_value(a, 0, [&](const Value& value, bool) {
             if (!value.is_blank() && !(value.is_text() && value.text().empty())) filled += 1.0;
             return true;
         });
         return number(static_cast<double>(Table(a.calculator, a[0]).size()) - filled);
     }},
    {"COUNTIF", "rv", "range, criterion", "How many cells meet a criterion, such as \">100\" or \"Rent*\"",
     [](A a) {
         double count = 0.0;
         const Criterion criterion(a[1]);
         const Table cells(a.calculator, a[0]);
         if (const LookupIndex* const index = cells.index_over();
             index != nullptr && criterion.count(*index, cells, count))
             return number(count);
         for (std::uint64_t i = 0; i < cells.used(); ++i)
             if (criterion.meets(cells.at(i))) count += 1.0;
         if (criterion.meets(Value())) count += static_cast<double>(cells.size() - cells.used());
         return number(count);
     }},
    {"COUNTIFS", "/rv*", "range, criterion, ...", "How many places meet all criteria",
     [](A a) {
         double count = 0.0;
         const Value error = each_match(a, 0, [&](std::uint32_t, std::uint32_t) { return count += 1.0, true; });
         return error.is_error() ? error : number(count);
     }},
    {"SUMIF", "rv|r", "range, criterion, [sum_range]", "The sum of the cells that meet a criterion",
     [](A a) {
         return sum_where({a.calculator, a.values, 2}, a.has(2) ? a[2] : a[0], 0);
     }},
    {"SUMIFS", "r/rv*", "sum_range, range, criterion, ...", "The sum of the cells where all criteria are met",
     [](A a) { return sum_where(a, a[0], 1); }},
    {"AVERAGEIF", "rv|r", "range, criterion, [average_range]", "The mean of the cells that meet a criterion",
     [](A a) {
         return average_where({a.calculator, a.values, 2}, a.has(2) ? a[2] : a[0], 0);
     }},
    {"AVERAGEIFS", "r/rv*", "average_range, range, criterion, ...", "The mean of the cells where all criteria are met",
     [](A a) { return average_where(a, a[0], 1); }},
    {"SUMPRODUCT", "r*", "array, ...", "The sum of the products of corresponding items", sum_of_products},
    {"MEDIAN", "r*", "number, ...", "The middle number in order of size",
     [](A a) { return of_numbers(a, [](auto numbers) { return numbers.empty() ? no_numbers() : median(numbers); }); }},
    {"LARGE", "rn", "array, k", "The k-th largest number", [](A a) { return of_rank(a, true); }},
    {"SMALL", "rn", "array, k", "The k-th smallest number", [](A a) { return of_rank(a, false); }},
    {"PERCENTILE", "rn", "array, share", "The number below which a share, 0 to 1, of the others is",
     of_first<percentile, true>},
    {"PERCENTILE.INC", "rn", "array, share", "The same", of_first<percentile, true>},
    {"QUARTILE", "rn", "array, which", "The quartile 0 (least) to 4 (most)", of_first<quartile, true>},
    {"QUARTILE.INC", "rn", "array, which", "The same", of_first<quartile, true>},
    {"RANK", "nr|n", "number, list, [ascending]", "The rank of a number in a list", rank_of},
    {"VAR", "r*", "number, ...", "The variance of a sample",
     [](A a) { return of_numbers(a, [](const auto& numbers) { return variance(numbers, true); }); }},
    {"VAR.S", "r*", "number, ...", "The same",
     [](A a) { return of_numbers(a, [](const auto& numbers) { return variance(numbers, true); }); }},
    {"VAR.P", "r*", "number, ...", "The variance of a whole population",
     [](A a) { return of_numbers(a, [](const auto& numbers) { return variance(numbers, false); }); }},
    {"STDEV", "r*", "number, ...", "The standard deviation of a sample",
     [](A a) { return of_numbers(a, [](const auto& numbers) { return deviation(numbers, true); }); }},
    {"STDEV.S", "r*", "number, ...", "The same",
     [](A a) { return of_numbers(a, [](const auto& numbers) { return deviation(numbers, true); }); }},
    {"STDEV.P", "r*", "number, ...", "The standard deviation of a whole population",
     [](A a) { return of_numbers(a, [](const auto& numbers) { return deviation(numbers, false); }); }},
    {"MAXIFS", "r/rv*", "max_range, range, criterion, ...", "The largest number where all criteria are met",
     [](A a) { return extreme_where(a, [](double x, double most) { return x > most; }); }},
    {"MINIFS", "r/rv*", "min_range, range, criterion, ...", "The smallest number where all criteria are met",
     [](A a) { return extreme_where(a, [](double x, double least) { return x < least; }); }},
    {"SUBTOTAL", "nr*", "function, range, ...",
     "A statistic without other subtotals: 1 AVERAGE, 2 COUNT, 3 COUNTA, 4 MAX, 5 MIN, 6 PRODUCT, 7 STDEV, 8 STDEV.P, "
     "9 SUM, 10 VAR, 11 VAR.P",
     subtotal},
    {"AGGREGATE", "nnr*", "function, options, range, ...",
     "A statistic as SUBTOTAL has it, 12 MEDIAN, 13 MODE, 14 LARGE, 15 SMALL, 16 PERCENTILE, 17 QUARTILE; options 6 "
     "skips errors, 0 subtotals, 3 both",
     aggregate},
};

} // namespace

std::span<const Builtin> logic_functions() { return logic; }
std::span<const Builtin> sums_functions() { return sums; }

} // namespace qx::sheet::builtin
