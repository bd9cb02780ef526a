// The extension module quexel._core: the declared functions as callable objects, and the workbook. The modules of the
// package in Python make of it what a user sees.
#include <pybind11/numpy.h>
#include <pybind11/pybind11.h>
#include <pybind11/stl.h>

#include "hosts/python/calls.h"
#include "hosts/python/cells.h"
#include "hosts/python/workbook.h"

#include "addin/examples.h"
#include "addin/registration.h"
#include "commands/trace_html.h"
#include "hosts/sheet/text.h"

#include <array>
#include <limits>
#include <string>
#include <vector>

namespace qx::python {

namespace py = pybind11;

namespace {

using Cells = std::array<OPER, max_arguments>;
using Arguments = std::array<py::handle, max_arguments>; ///< null for one that is not given

/// The cells of a call and the pointers to them that the library takes.
struct CallCells {
    Cells cells;
    std::array<OPER*, max_arguments + 1> pointers{};

    CallCells() {
        for (int i = 0; i < max_arguments; ++i) pointers[i] = &cells[i];
    }
};

py::object python_function(const char* module, const char* name) { return py::module_::import(module).attr(name); }

py::object error_of(const char* function, const Failure& failure, const py::object& index) {
    return python_function("quexel.errors", "Error")(function, failure.code, failure.kind, failure.routine,
                                                     failure.variable, failure.message, index);
}
/// A new reference that Python has made, or the exception that it has set instead.
py::object made(PyObject* object) {
    if (object == nullptr) throw py::error_already_set();
    return py::reinterpret_steal<py::object>(object);
}
[[noreturn]] void raise(const py::object& error) {
    PyErr_SetObject(reinterpret_cast<PyObject*>(Py_TYPE(error.ptr())), error.ptr());
    throw py::error_already_set();
}

class LibraryFunction {
  public:
    explicit LibraryFunction(const Function& function) : function_(function) {
        for (int i = 0; i < function.arity(); ++i) names_[i] = py::str(parameter_name(function.args[i].name));
    }

    const Function& declaration() const { return function_; }
    const Calls& calls() const { return function_.calls; }
    py::str parameter(int i) const { return names_[i]; }

    /// The values of the arguments in their order. Throws TypeError as a function of Python would.
    Arguments bind(const py::tuple& positional, const py::dict& keywords) const {
        Arguments arguments;
        const std::size_t arity = static_cast<std::size_t>(function_.arity());
        if (positional.size() > arity)
            throw py::type_error(name() + " takes " + std::to_string(arity) + " arguments but " +
                                 std::to_string(positional.size()) + " were given");
        for (std::size_t i = 0; i < positional.size(); ++i)
            arguments[i] = PyTuple_GET_ITEM(positional.ptr(), static_cast<Py_ssize_t>(i));
        for (const auto& [keyword, value] : keywords) {
            const int i = find(keyword);
            if (i < 0) throw py::type_error(name() + " has no argument '" + py::cast<std::string>(keyword) + "'");
            if (arguments[i])
                throw py::type_error(name() + " got several values for '" + py::cast<std::string>(keyword) + "'");
            arguments[i] = value;
        }
        for (int i = 0; i < function_.arity(); ++i)
            if (!arguments[i] && !function_.args[i].is_optional() && function_.calls.kinds[i] != Kind::period_base)
                throw py::type_error(name() + " is missing the argument '" + py::cast<std::string>(names_[i]) + "'");
        return arguments;
    }

    /// True for an argument that makes one call of each of its items. A time base (times without a length) does not.
    bool spreads(const Arguments& arguments, int i) const {
        if (!arguments[i] || takes_many(calls().kinds[i]) || !is_many(arguments[i].ptr())) return false;
        return calls().kinds[i] != Kind::period_start || (arguments[i + 1] && !arguments[i + 1].is_none());
    }
    bool spreads(const Arguments& arguments) const {
        for (int i = 0; i < function_.arity(); ++i)
            if (spreads(arguments, i)) return true;
        return false;
    }

    OPER cell(int i, py::handle value, CellMemory& memory) const {
        if (!value) return missing_cell();
        const Kind kind = calls().kinds[i];
        if (!is_many(value.ptr())) return cell_of(value.ptr(), kind == Kind::list ? calls().items[i] : kind, memory);
        const Kind items = kind == Kind::list ? calls().items[i] : kind == Kind::period_start ? Kind::date : kind;
        return table_of(value.ptr(), items, memory);
    }

    py::object call_once(const Arguments& arguments) const {
        CellMemory memory;
        CallCells call_cells;
        fill(call_cells.cells, arguments, memory);
        py::object result, error;
        in_workbook([&] {
            const OPER* const cell = call(function_, call_cells.pointers.data());
            if (cell != nullptr)
                result = made(object_of(*cell, calls()));
            else
                error = error_of(function_.name, reason(function_, call_cells.pointers.data()), py::none());
        });
        if (error) raise(error);
        return result;
    }

    /// The trace of a call, its result or None, and its Error or None.
    py::tuple explain(const Arguments& arguments, const std::string& subject) const {
        CellMemory memory;
        CallCells call_cells;
        fill(call_cells.cells, arguments, memory);
        const auto tree = std::make_shared<TraceTree>();
        py::object result = py::none(), error = py::none();
        in_workbook([&] {
            Failure failure;
            const OPER* const cell = call_traced(function_, call_cells.pointers.data(), *tree, failure);
            if (cell != nullptr)
                result = made(object_of(*cell, calls()));
            else
                error = error_of(function_.name, failure, py::none());
        });
        return py::make_tuple(Trace{tree, subject}, result, error);
    }

    py::tuple call_many(const py::list& fixed, const py::list& columns, const py::tuple& shape,
                        const std::string& errors) const;

    std::string name() const { return std::string(function_.name) + "()"; }

    /// An argument's name as Python can write it.
    static std::string parameter_name(std::string_view name) {
        std::string text(name);
        for (char& letter : text)
            if (!std::isalnum(static_cast<unsigned char>(letter))) letter = '_';
        if (text.empty() || std::isdigit(static_cast<unsigned char>(text[0]))) text.insert(0, "_");
        static const py::handle is_keyword = python_function("keyword", "iskeyword").release();
        return py::cast<bool>(is_keyword(text)) ? text + "_" : text;
    }

  private:
    void fill(Cells& cells, const Arguments& arguments, CellMemory& memory) const {
        for (int i = 0; i < function_.arity(); ++i) cells[i] = cell(i, arguments[i], memory);
    }
    int find(py::handle keyword) const {
        for (int i = 0; i < function_.arity(); ++i)
            if (names_[i].is(keyword) || PyUnicode_Compare(names_[i].ptr(), keyword.ptr()) == 0) return i;
        return -1;
    }

    const Function& function_;
    std::array<py::str, max_arguments> names_;
};

/// An argument that changes from call to call: an array of float64 or of objects, stretched over the shape of all.
struct Column {
    int argument;
    const char* at;
    const py::ssize_t* strides;
    bool objects;
};

/// Calls the function once for each element of the shape, in the order of C. `fixed` holds a value or null for each
/// argument; `columns` holds pairs of an argument's number and an array of that shape. Returns the results (float64 if
/// the function returns numbers or dates, else objects) and the failures as pairs of an element's number and an Error;
/// they are collected, or only the first one that ends the calls, or none.
py::tuple LibraryFunction::call_many(const py::list& fixed, const py::list& columns, const py::tuple& shape,
                                     const std::string& errors) const {
    CellMemory memory, of_element;
    CallCells call_cells;
    std::vector<py::array> arrays;
    std::vector<Column> varying;
    bool time_base = false; // each call gives a list
    for (int i = 0; i < function_.arity(); ++i) {
        const py::handle value = fixed[static_cast<std::size_t>(i)];
        call_cells.cells[i] = value.is_none() ? missing_cell() : cell(i, value, memory);
        time_base = time_base || (calls().kinds[i] == Kind::period_start && is_many(value.ptr()));
    }
    for (const py::handle pair : columns) {
        const auto [argument, array] = py::cast<std::pair<int, py::array>>(pair);
        arrays.push_back(array);
        varying.push_back({argument, static_cast<const char*>(array.data()), nullptr, array.dtype().kind() == 'O'});
    }
    for (std::size_t i = 0; i < varying.size(); ++i) varying[i].strides = arrays[i].strides();

    const std::vector<py::ssize_t> sides = py::cast<std::vector<py::ssize_t>>(shape);
    py::ssize_t count = 1;
    for (const py::ssize_t side : sides) count *= side;
    std::vector<py::ssize_t> place(sides.size(), 0);

    const Kind gives = calls().gives;
    const bool numbers = !time_base && (gives == Kind::number || gives == Kind::integer ||
                                        gives == Kind::wide_integer || gives == Kind::date || gives == Kind::boolean);
    py::array results(py::dtype(numbers ? "f8" : "O"), sides);
    auto* const result_numbers = numbers ? static_cast<double*>(results.mutable_data()) : nullptr;
    auto** const result_objects = numbers ? nullptr : static_cast<PyObject**>(results.mutable_data());
    const py::object not_a_number = py::float_(std::numeric_limits<double>::quiet_NaN());
    py::list failures;

    const auto advance = [&] {
        for (std::size_t side = sides.size(); side-- > 0;) {
            for (Column& column : varying) column.at += column.strides[side];
            if (++place[side] < sides[side]) return;
            for (Column& column : varying) column.at -= column.strides[side] * sides[side];
            place[side] = 0;
        }
    };
    const auto store = [&](py::ssize_t i, const OPER* result) {
        if (numbers)
            result_numbers[i] = result == nullptr              ? std::numeric_limits<double>::quiet_NaN()
                                : result->type() == xltypeNum  ? result->val.num
                                : result->type() == xltypeBool ? static_cast<double>(result->val.xbool != 0)
                                                               : std::numeric_limits<double>::quiet_NaN();
        else
            result_objects[i] =
                (result == nullptr ? py::object(not_a_number) : made(object_of(*result, calls()))).release().ptr();
    };
    in_workbook([&] {
        constexpr py::ssize_t calls_between_signals = 4096;
        for (py::ssize_t i = 0; i < count; ++i, advance()) {
            if (i % calls_between_signals == 0 && PyErr_CheckSignals() != 0) throw py::error_already_set();
            for (const Column& column : varying) {
                OPER& cell = call_cells.cells[static_cast<std::size_t>(column.argument)];
                cell = column.objects
                           ? this->cell(column.argument, *reinterpret_cast<PyObject* const*>(column.at), of_element)
                           : cell_of(*reinterpret_cast<const double*>(column.at));
            }
            const OPER* const result = call(function_, call_cells.pointers.data());
            store(i, result);
            if (result == nullptr && errors != "nan") {
                const Failure failure = reason(function_, call_cells.pointers.data());
                failures.append(py::make_tuple(i, error_of(function_.name, failure, py::none())));
                if (errors == "raise") return;
            }
            of_element.clear();
        }
    });
    return py::make_tuple(results, failures);
}

// --- What Python's modules learn of a function
// ---------------------------------------------------------------------

const char* kind_name(Kind kind) {
    switch (kind) {
    case Kind::number:
    case Kind::number_or_blank:
        return "number";
    case Kind::integer:
    case Kind::wide_integer:
        return "integer";
    case Kind::boolean:
        return "boolean";
    case Kind::date:
        return "date";
    case Kind::text:
    case Kind::short_text:
        return "text";
    case Kind::date_or_number:
        return "date or number";
    case Kind::list:
        return "list";
    case Kind::sequence:
        return "sequence";
    case Kind::period_start:
        return "period start";
    case Kind::period_base:
        return "period length";
    default:
        return "any";
    }
}

py::object preset_value(const Preset& preset, Kind kind) {
    switch (preset.type) {
    case Preset::number:
    case Preset::sequence:
        if (kind == Kind::date) return preset.value == 0.0 ? py::none() : py::object(py::float_(preset.value));
        if (preset.value == static_cast<double>(static_cast<long long>(preset.value)))
            return py::int_(static_cast<long long>(preset.value));
        return py::float_(preset.value);
    case Preset::boolean:
        return py::bool_(preset.value != 0.0);
    case Preset::text:
        return py::str(preset.words == nullptr ? "" : preset.words);
    default:
        return py::none();
    }
}

py::dict description(const LibraryFunction& self) {
    using namespace py::literals;
    const Function& function = self.declaration();
    py::list arguments, examples, examples_as_typed;
    const auto limit = [](bool known, double value) { return known ? py::object(py::float_(value)) : py::none(); };
    for (int i = 0; i < function.arity(); ++i) {
        const Argument& argument = function.args[i];
        arguments.append(
            py::dict("name"_a = self.parameter(i), "help"_a = argument.help, "optional"_a = argument.is_optional(),
                     "default"_a = preset_value(argument.preset, function.calls.kinds[i]),
                     "default_meaning"_a = argument.preset.type == Preset::text ? nullptr : argument.preset.words,
                     "low"_a = limit(argument.limits.has_low(), argument.limits.low),
                     "high"_a = limit(argument.limits.has_high(), argument.limits.high),
                     "kind"_a = kind_name(function.calls.kinds[i]), "items"_a = kind_name(function.calls.items[i])));
    }
    for (const char* const example : function.examples)
        if (example != nullptr) {
            const Example read = read_example(example);
            examples.append(example);
            std::string typed = "=" + std::string(read.formula) + "  " + outcome(read);
            if (!read.cells.empty()) typed += "  (array formula in " + std::string(read.cells) + ")";
            examples_as_typed.append(std::move(typed));
        }
    return py::dict("name"_a = function.name, "category"_a = category_name(function.category), "help"_a = function.help,
                    "arguments"_a = arguments, "examples"_a = examples, "examples_as_typed"_a = examples_as_typed,
                    "see_also"_a = function.see_also, "gives"_a = kind_name(function.calls.gives),
                    "gives_items"_a = kind_name(function.calls.gives_items), "volatile"_a = function.is_volatile);
}

py::list lines(const Trace& trace) {
    const TraceTree& tree = *trace.tree;
    py::list list;
    for (std::size_t at = 0; at < tree.size(); ++at) {
        const TraceNode& node = tree.nodes[at];
        const TraceColumns columns = tree.columns(at);
        list.append(py::make_tuple(node.depth, sheet::valid_utf8(columns.name), sheet::valid_utf8(columns.value),
                                   sheet::valid_utf8(columns.description), static_cast<int>(node.kind)));
    }
    return list;
}

} // namespace

PYBIND11_MODULE(_core, module) {
    module.attr("version") = QX_VERSION;

    py::class_<LibraryFunction>(module, "Function", py::dynamic_attr())
        .def("__call__",
             [](const py::object& self, const py::args& positional, const py::kwargs& keywords) -> py::object {
                 const auto& function = py::cast<const LibraryFunction&>(self);
                 static const py::handle errors_word = py::str("errors").release();
                 py::object errors;
                 if (PyDict_GET_SIZE(keywords.ptr()) > 0 && keywords.contains(errors_word))
                     errors = keywords.attr("pop")(errors_word);
                 const Arguments arguments = function.bind(positional, keywords);
                 if (!errors && !function.spreads(arguments)) return function.call_once(arguments);
                 if (!errors) errors = py::str("raise");
                 py::list values, spread;
                 for (int i = 0; i < function.declaration().arity(); ++i) {
                     values.append(arguments[i] ? arguments[i] : py::handle(Py_None));
                     if (function.spreads(arguments, i)) spread.append(i);
                 }
                 return python_function("quexel.arrays", "spread")(self, values, spread, errors);
             })
        .def("_bind",
             [](const LibraryFunction& function, const py::args& positional, const py::kwargs& keywords) {
                 const Arguments arguments = function.bind(positional, keywords);
                 py::list values, spread;
                 for (int i = 0; i < function.declaration().arity(); ++i) {
                     values.append(arguments[i] ? arguments[i] : py::handle(Py_None));
                     if (function.spreads(arguments, i)) spread.append(i);
                 }
                 return py::make_tuple(values, spread);
             })
        .def("_call_many", &LibraryFunction::call_many)
        .def("_describe", &description)
        .def("_explain",
             [](const LibraryFunction& function, const std::string& subject, const py::args& positional,
                const py::kwargs& keywords) { return function.explain(function.bind(positional, keywords), subject); });

    py::class_<Trace>(module, "Trace")
        .def("lines", &lines)
        .def_readonly("subject", &Trace::subject)
        .def_property_readonly("summary", [](const Trace& trace) { return trace.tree->summary; })
        .def("html", [](const Trace& trace, const std::string& result) {
            return trace_html(folded(*trace.tree), {trace.subject, result});
        });

    module.def("functions", [] {
        py::list list;
        for (const Registered* node = all_functions(); node != nullptr; node = node->next)
            list.append(py::cast(LibraryFunction(node->function)));
        return list;
    });
    bind_workbook(module);
}

} // namespace qx::python
