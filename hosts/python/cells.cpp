#include "hosts/python/cells.h"

#include "hosts/sheet/calendar.h"
#include "hosts/sheet/text.h"

#include <algorithm>
#include <cmath>
#include <cstring>
#include <limits>
#include <string_view>

#include <pybind11/numpy.h>
#include <pybind11/pybind11.h>

#include <datetime.h>

namespace qx::python {

namespace py = pybind11;

namespace {

constexpr double first_serial = 3654.0;       ///< 1 January 1910, the library's first day
constexpr double first_decimal_year = 1910.0; ///< numbers from here to the first day are years
constexpr double unix_serial = 25569.0;       ///< 1 January 1970
constexpr double seconds_a_day = 86400.0;
constexpr std::size_t longest_side = 65535; ///< of an array of cells
constexpr std::size_t longest_text = 255;   ///< bytes of a cell's text

/// An attribute of a module of the package, looked up once.
struct Attribute {
    Attribute(const char* module, const char* name) : module(module), name(name) {}
    py::handle get() {
        if (!object) object = py::object(py::module_::import(module).attr(name)).release();
        return object;
    }
    const char* const module;
    const char* const name;
    py::handle object; ///< never given back: the module outlives every call
};

/// A value as one of the few types that cells are made of.
py::object plain(py::handle value) {
    static Attribute function("quexel.values", "plain");
    return function.get()(value);
}
/// A table as an array of float64 or of objects with two dimensions.
py::array table(py::handle values, bool keeps_text) {
    static Attribute function("quexel.values", "table");
    return function.get()(values, keeps_text);
}
py::handle cell_error() {
    static Attribute type("quexel.errors", "CellError");
    return type.get();
}

/// Python's dates. The header's macros may be used only after the first call.
const PyDateTime_CAPI& dates() {
    if (PyDateTimeAPI == nullptr) PyDateTime_IMPORT;
    if (PyDateTimeAPI == nullptr) throw py::error_already_set();
    return *PyDateTimeAPI;
}
bool is_exactly(PyObject* value, PyTypeObject* type) { return Py_TYPE(value) == type; }

/// Kinds that show a string as it is. Any other takes an ISO text as the date that it names.
bool keeps_text(Kind kind) {
    switch (kind) {
    case Kind::text:
    case Kind::short_text:
    case Kind::any:
    case Kind::cell:
    case Kind::reference:
    case Kind::sequence:
        return true;
    default:
        return false;
    }
}

/// Kinds that distinguish a truth value from a number.
bool keeps_truth(Kind kind) {
    return kind == Kind::boolean || kind == Kind::any || kind == Kind::cell || kind == Kind::reference;
}

/// A day as a number. One before the library's first day must not be read as a year: it is below all years then.
OPER day_cell(double serial, Kind kind) {
    if (!keeps_text(kind) && serial < first_serial) serial = std::min(serial, first_decimal_year - 1.0);
    return number_cell(serial);
}

/// Reads 2026-11-21, 2026-11-21T09:30:00 and the like; the time of day is dropped.
bool read_iso_date(std::string_view text, double& serial) {
    constexpr std::size_t length = 10;
    if (text.size() < length || text[4] != '-' || text[7] != '-') return false;
    if (text.size() > length && text[length] != 'T' && text[length] != ' ') return false;
    return sheet::parse_date(text.substr(0, length), serial);
}

OPER text_cell(std::string_view text, Kind kind, CellMemory& memory) {
    double serial = 0.0;
    if (!keeps_text(kind) && read_iso_date(text, serial)) return day_cell(serial, kind);
    if (text.size() > longest_text) throw py::value_error("a string of more than 255 bytes does not fit a cell");
    unsigned char* const room = memory.bytes(text.size() + 2);
    room[0] = static_cast<unsigned char>(text.size());
    std::memcpy(room + 1, text.data(), text.size());
    room[text.size() + 1] = '\0';
    return {{.str = room}, xltypeStr};
}

std::string_view utf8(PyObject* text) {
    Py_ssize_t size = 0;
    const char* const bytes = PyUnicode_AsUTF8AndSize(text, &size);
    if (bytes == nullptr) throw py::error_already_set();
    return {bytes, static_cast<std::size_t>(size)};
}

double serial_of_date(PyObject* day) {
    return sheet::serial_of(PyDateTime_GET_YEAR(day), PyDateTime_GET_MONTH(day), PyDateTime_GET_DAY(day));
}
double serial_of_datetime(PyObject* time) {
    const int seconds = PyDateTime_DATE_GET_HOUR(time) * 3600 + PyDateTime_DATE_GET_MINUTE(time) * 60 +
                        PyDateTime_DATE_GET_SECOND(time);
    return serial_of_date(time) + (seconds + PyDateTime_DATE_GET_MICROSECOND(time) * 1e-6) / seconds_a_day;
}

bool is_error(PyObject* text) { return !PyUnicode_CheckExact(text) && py::isinstance(text, cell_error()); }

/// A value of one of the types that need no help. False for any other.
bool simple_cell(PyObject* value, Kind kind, CellMemory& memory, OPER& cell) {
    if (value == Py_None) {
        cell = missing_cell();
    } else if (PyBool_Check(value)) {
        cell = keeps_truth(kind) ? bool_cell(value == Py_True) : number_cell(value == Py_True ? 1.0 : 0.0);
    } else if (PyFloat_Check(value)) {
        cell = cell_of(PyFloat_AS_DOUBLE(value));
    } else if (PyLong_Check(value)) {
        const double number = PyLong_AsDouble(value);
        if (number == -1.0 && PyErr_Occurred() != nullptr) throw py::error_already_set();
        cell = number_cell(number);
    } else if (PyUnicode_Check(value)) {
        std::uint16_t error = 0;
        if (is_error(value) && sheet::match_error(utf8(value), error) > 0)
            cell = error_cell(error);
        else
            cell = text_cell(utf8(value), kind, memory);
    } else if (is_exactly(value, dates().DateType)) {
        cell = day_cell(serial_of_date(value), kind);
    } else if (is_exactly(value, dates().DateTimeType)) {
        cell = day_cell(serial_of_datetime(value), kind);
    } else {
        return false;
    }
    return true;
}

/// The cell of any value, and the value of a simple type that it was made from. Throws if there is no such cell.
py::object simplified(PyObject* value, Kind kind, CellMemory& memory, OPER& cell) {
    if (simple_cell(value, kind, memory, cell)) return py::reinterpret_borrow<py::object>(value);
    py::object simple = plain(value);
    if (simple_cell(simple.ptr(), kind, memory, cell)) return simple;
    throw py::type_error("no cell holds a value of type " + std::string(Py_TYPE(value)->tp_name));
}

/// An item of a list: what is not there is a blank cell.
OPER item_cell(PyObject* value, Kind kind, CellMemory& memory) {
    return value == Py_None ? nil_cell() : cell_of(value, kind, memory);
}

bool is_sequence(PyObject* value) { return PyList_CheckExact(value) || PyTuple_CheckExact(value); }

OPER shaped(OPER* cells, std::size_t rows, std::size_t columns) {
    if (rows > longest_side || columns > longest_side)
        throw py::value_error("a list holds at most 65,535 items in one direction");
    return array_cell(cells, static_cast<int>(rows), static_cast<int>(columns));
}

std::size_t length_of(PyObject* sequence) { return static_cast<std::size_t>(PySequence_Fast_GET_SIZE(sequence)); }

/// An item of a list or a tuple. What reads one item may run code that changes the list.
py::object item_of(PyObject* sequence, std::size_t i) {
    if (i >= length_of(sequence)) throw py::value_error("a list has changed while it was read");
    return py::reinterpret_borrow<py::object>(PySequence_Fast_ITEMS(sequence)[i]);
}

/// A list or a tuple, or one of lists and tuples.
OPER sequence_cell(PyObject* list, Kind items, CellMemory& memory) {
    const std::size_t rows = length_of(list);
    const py::object first = rows > 0 ? item_of(list, 0) : py::none();
    const bool nested = is_sequence(first.ptr());
    const std::size_t columns = nested ? length_of(first.ptr()) : 1;
    OPER* const cells = memory.cells(rows * columns + 1);
    for (std::size_t i = 0; i < rows; ++i) {
        const py::object row = item_of(list, i);
        if (!nested) {
            cells[i] = item_cell(row.ptr(), items, memory);
            continue;
        }
        if (!is_sequence(row.ptr()) || length_of(row.ptr()) != columns)
            throw py::value_error("rows of different lengths");
        for (std::size_t j = 0; j < columns; ++j)
            cells[i * columns + j] = item_cell(item_of(row.ptr(), j).ptr(), items, memory);
    }
    return shaped(cells, rows, columns);
}

// --- Cells as objects ------------------------------------------------------------------------------------------------

PyObject* text_object(std::string_view text) {
    PyObject* const object = PyUnicode_DecodeUTF8(text.data(), static_cast<Py_ssize_t>(text.size()), "replace");
    if (object == nullptr) throw py::error_already_set();
    return object;
}

PyObject* error_object(std::uint16_t code) { return cell_error()(sheet::error_text(code)).release().ptr(); }

std::string_view text_in(const OPER& cell) {
    return {reinterpret_cast<const char*>(cell.val.str) + 1, cell.val.str[0]};
}

double number_in(const OPER& cell) { return cell.type() == xltypeInt ? cell.val.w : cell.val.num; }
bool is_number(const OPER& cell) { return cell.type() == xltypeNum || cell.type() == xltypeInt; }
bool is_blank(const OPER& cell) { return cell.type() == xltypeNil || cell.type() == xltypeMissing; }

PyObject* scalar_object(const OPER& cell, Kind kind) {
    switch (cell.type()) {
    case xltypeNum:
    case xltypeInt: {
        const double number = number_in(cell);
        if (kind == Kind::date) return date_of(number);
        return kind == Kind::integer || kind == Kind::wide_integer ? PyLong_FromDouble(number)
                                                                   : PyFloat_FromDouble(number);
    }
    case xltypeStr:
        return text_object(text_in(cell));
    case xltypeBool:
        return PyBool_FromLong(cell.val.xbool);
    case xltypeErr:
        return error_object(cell.val.err);
    default:
        Py_RETURN_NONE;
    }
}

py::array empty_array(const char* type, const std::vector<py::ssize_t>& shape) {
    return py::array(py::dtype(type), shape);
}

/// Cells as an array: dates or numbers if they are nothing else, objects otherwise.
py::array array_of(const OPER* cells, std::size_t rows, std::size_t columns, Kind items) {
    const std::size_t count = rows * columns;
    const auto side = [](std::size_t n) { return static_cast<py::ssize_t>(n); };
    const bool one_line = rows <= 1 || columns <= 1;
    const std::vector<py::ssize_t> shape = one_line ? std::vector{side(count)} : std::vector{side(rows), side(columns)};
    const auto all_are = [&](auto test) { return std::all_of(cells, cells + count, test); };
    const auto numeric = [](const OPER& cell) { return is_number(cell) || is_blank(cell); };
    if (items == Kind::date && all_are(numeric)) {
        py::array days = empty_array("M8[D]", shape);
        std::transform(cells, cells + count, static_cast<std::int64_t*>(days.mutable_data()), [](const OPER& cell) {
            if (is_blank(cell)) return std::numeric_limits<std::int64_t>::min(); // NaT
            const double serial = number_in(cell);
            return static_cast<std::int64_t>(std::floor(serial - unix_serial)) + (serial < 61.0); // 1900, no leap year
        });
        return days;
    }
    const bool text = items == Kind::text || items == Kind::short_text;
    if (!text && all_are(numeric)) {
        py::array numbers = empty_array("f8", shape);
        std::transform(cells, cells + count, static_cast<double*>(numbers.mutable_data()), [](const OPER& cell) {
            return is_blank(cell) ? std::numeric_limits<double>::quiet_NaN() : number_in(cell);
        });
        return numbers;
    }
    if (count > 0 && all_are([](const OPER& cell) { return cell.type() == xltypeBool; })) {
        py::array truths = empty_array("?", shape);
        std::transform(cells, cells + count, static_cast<bool*>(truths.mutable_data()),
                       [](const OPER& cell) { return cell.val.xbool != 0; });
        return truths;
    }
    py::array objects = empty_array("O", shape); // of None
    auto** const places = static_cast<PyObject**>(objects.mutable_data());
    for (std::size_t i = 0; i < count; ++i) Py_XSETREF(places[i], scalar_object(cells[i], items));
    return objects;
}

} // namespace

OPER* CellMemory::cells(std::size_t count) {
    return static_cast<OPER*>(resource_.allocate(count * sizeof(OPER), alignof(OPER)));
}
unsigned char* CellMemory::bytes(std::size_t count) {
    return static_cast<unsigned char*>(resource_.allocate(count, 1));
}

OPER cell_of(double number) {
    if (std::isfinite(number)) return number_cell(number);
    return error_cell(std::isnan(number) ? xlerrNA : xlerrNum);
}

OPER cell_of(PyObject* value, Kind kind, CellMemory& memory) {
    OPER cell = nil_cell();
    simplified(value, kind, memory, cell);
    return cell;
}

OPER table_of(PyObject* values, Kind items, CellMemory& memory) {
    if (is_sequence(values)) return sequence_cell(values, items, memory);
    const py::array array = table(values, keeps_text(items));
    const auto rows = static_cast<std::size_t>(array.shape(0)), columns = static_cast<std::size_t>(array.shape(1));
    const std::size_t count = rows * columns;
    OPER* const cells = memory.cells(count + 1);
    if (array.dtype().kind() == 'f') {
        const auto* const numbers = static_cast<const double*>(array.data());
        std::transform(numbers, numbers + count, cells, [](double number) { return cell_of(number); });
    } else {
        PyObject* const* const objects = static_cast<PyObject* const*>(array.data());
        for (std::size_t i = 0; i < count; ++i) cells[i] = item_cell(objects[i], items, memory);
    }
    return shaped(cells, rows, columns);
}

bool is_many(PyObject* value) {
    if (value == Py_None || PyFloat_Check(value) || PyLong_Check(value) || PyUnicode_Check(value)) return false;
    if (is_sequence(value)) return true;
    if (py::isinstance<py::array>(value)) return py::reinterpret_borrow<py::array>(value).ndim() > 0;
    return PyObject_HasAttrString(value, "__len__") == 1 && !PyBytes_Check(value);
}

bool takes_many(Kind kind) {
    return kind == Kind::list || kind == Kind::sequence || kind == Kind::cell || kind == Kind::reference;
}

PyObject* date_of(double serial) {
    const double day = std::floor(serial);
    if (!(day >= 1.0 && day <= sheet::last_serial)) Py_RETURN_NONE;
    const auto [year, month, day_of_month] = sheet::civil_of(static_cast<int>(day));
    const auto seconds = static_cast<int>(std::lround((serial - day) * seconds_a_day));
    if (seconds <= 0 || seconds >= static_cast<int>(seconds_a_day))
        return dates().Date_FromDate(year, month, day_of_month, dates().DateType);
    return dates().DateTime_FromDateAndTime(year, month, day_of_month, seconds / 3600, seconds / 60 % 60, seconds % 60,
                                            0, Py_None, dates().DateTimeType);
}

PyObject* object_of(const OPER& cell, const Calls& calls) {
    const bool list = calls.gives == Kind::list || calls.gives == Kind::sequence;
    const Kind items = list ? calls.gives_items : calls.gives_dates ? Kind::date : Kind::none;
    if (cell.type() == xltypeMulti)
        return array_of(cell.val.array.lparray, cell.val.array.rows, cell.val.array.columns, items).release().ptr();
    if (list) return array_of(&cell, is_blank(cell) ? 0 : 1, 1, items).release().ptr();
    return scalar_object(cell, calls.gives);
}

PyObject* object_of(const sheet::Value& value) {
    switch (value.type()) {
    case sheet::Type::number:
        return value.is_date() ? date_of(value.number()) : PyFloat_FromDouble(value.number());
    case sheet::Type::boolean:
        return PyBool_FromLong(value.boolean());
    case sheet::Type::text:
        return text_object(value.text());
    case sheet::Type::error:
        return error_object(value.error());
    case sheet::Type::uncalculated:
        return cell_error()("uncalculated").release().ptr();
    case sheet::Type::array: {
        py::array objects = empty_array("O", {value.rows(), value.columns()});
        auto** place = static_cast<PyObject**>(objects.mutable_data());
        for (std::uint32_t row = 0; row < value.rows(); ++row)
            for (std::uint32_t column = 0; column < value.columns(); ++column, ++place)
                Py_XSETREF(*place, object_of(value.cell(row, column)));
        return objects.release().ptr();
    }
    default:
        Py_RETURN_NONE;
    }
}

sheet::Value value_of(PyObject* object) {
    if (PyUnicode_Check(object) && !is_error(object)) return sheet::Value::text(utf8(object));
    CellMemory memory;
    OPER cell = nil_cell();
    const py::object simple = simplified(object, Kind::any, memory, cell);
    switch (cell.type()) {
    case xltypeNum:
        return PyObject_TypeCheck(simple.ptr(), dates().DateType) ? sheet::Value::date(cell.val.num)
                                                                  : sheet::Value::number(cell.val.num);
    case xltypeBool:
        return sheet::Value::boolean(cell.val.xbool != 0);
    case xltypeErr:
        return sheet::Value::error(cell.val.err);
    default:
        return {};
    }
}

} // namespace qx::python
