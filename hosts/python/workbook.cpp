#include <pybind11/pybind11.h>
#include <pybind11/stl.h>

#include "hosts/python/calls.h"
#include "hosts/python/cells.h"
#include "hosts/python/workbook.h"

#include "commands/goal_seek.h"
#include "hosts/files/document.h"
#include "hosts/files/model.h"
#include "hosts/sheet/csv.h"
#include "hosts/sheet/text.h"
#include "hosts/sheet/workbook.h"

#include <string>
#include <vector>

namespace qx::python {

namespace py = pybind11;
using sheet::Area;
using sheet::CellAddress;
using sheet::Value;

namespace {

py::object object(PyObject* made) {
    if (made == nullptr) throw py::error_already_set();
    return py::reinterpret_steal<py::object>(made);
}

class Book {
  public:
    Book() : Book("", "") {}
    Book(std::string name, std::string bytes) : document_(std::move(name), std::move(bytes)) {}

    py::list sheets() const {
        py::list names;
        for (std::uint16_t i = 0; i < book_.sheet_count(); ++i) names.append(book_.sheet_name(i));
        return names;
    }
    void add_sheet(const std::string& name) {
        book_.add_sheet(name);
        keeps_file_ = false;
    }

    py::bytes csv(int sheet, bool dates) { return sheet::save_csv(book_, index(sheet), dates); }
    /// An .xlsx file: the one that was read with its new values if that can be, else a new one. The second item is what
    /// a new one has not kept, as "charts".
    py::tuple xlsx() {
        std::string bytes, why;
        if (keeps_file_ && document_.type() == files::FileType::xlsx && as_same_xlsx(document_, bytes, why))
            return py::make_tuple(py::bytes(bytes), py::list());
        return py::make_tuple(py::bytes(as_xlsx(document_)), document_.not_kept());
    }

    /// The area that an address or a name stands for: sheet, first row and column, last row and column, from 0.
    py::tuple area(const std::string& address) {
        const sheet::Formula formula = book_.read(address);
        const Value value = book_.evaluate(formula, Area(CellAddress{}));
        if (!value.is(sheet::Type::area)) throw py::key_error("\"" + address + "\" is neither a cell nor a range");
        const Area& found = value.area();
        return py::make_tuple(found.sheet, found.first_row, found.first_column, found.last_row, found.last_column);
    }
    py::tuple used(int sheet) {
        sheet::Grid& grid = book_.grid(index(sheet));
        return py::make_tuple(grid.rows(), grid.columns());
    }

    py::object get(int sheet, std::uint32_t row, std::uint32_t column) {
        return object(object_of(book_.value(address(sheet, row, column))));
    }
    void set(int sheet, std::uint32_t row, std::uint32_t column, py::handle value) {
        const CellAddress cell = address(sheet, row, column);
        const Value content = value_of(value.ptr());
        if (content.is_number() && !content.is_date() && book_.formula(cell) == nullptr)
            document_.set_number(cell, content.number()); // a change that the file can take
        else {
            book_.set_value(cell, content);
            keeps_file_ = false;
        }
    }
    void set_formula(int sheet, std::uint32_t row, std::uint32_t column, const std::string& text) {
        book_.set_formula(address(sheet, row, column), text);
        keeps_file_ = false;
    }
    void define_name(const std::string& name, const std::string& text) {
        book_.define_name(name, text);
        keeps_file_ = false;
    }
    py::object formula(int sheet, std::uint32_t row, std::uint32_t column) {
        const sheet::Formula* const found = book_.formula(address(sheet, row, column));
        if (found == nullptr) return py::none();
        return py::str("=" + found->text);
    }
    py::object evaluate(const std::string& text) { return object(object_of(value_of_formula(text))); }
    void calculate(bool all) { all ? book_.recalculate_all() : book_.recalculate(); }
    /// Pairs of a place and a message: of the file as it was read, and of the formulas as they are.
    py::list problems() const {
        py::list list;
        for (const files::Note& note : document_.notes) list.append(py::make_tuple(note.where, note.message));
        for (const sheet::Problem& problem : book_.problems())
            list.append(py::make_tuple(document_.place(problem.cell), problem.message));
        return list;
    }
    /// The cells that show an error value: the cell, the value, its cause, and the cell in which it came up.
    py::list errors() {
        py::list list;
        for (const sheet::CellError& error : book_.errors())
            list.append(py::make_tuple(document_.place(error.cell), sheet::error_text(error.code), error.reason,
                                       document_.place(error.origin)));
        return list;
    }

    /// The value of a cell, and the trace of it.
    py::tuple explain(int sheet, std::uint32_t row, std::uint32_t column) {
        const CellAddress cell = address(sheet, row, column);
        const sheet::Formula* const found = book_.formula(cell);
        if (found == nullptr) throw py::key_error(sheet::address_text(cell) + " holds no formula");
        const std::string subject = sheet::address_text(cell) + " = " + found->text;
        auto tree = std::make_shared<TraceTree>(traced([&] {
            book_.mark_dirty(cell);
            book_.value(cell);
        }));
        return py::make_tuple(object(object_of(book_.value(cell))), Trace{std::move(tree), subject});
    }
    py::tuple explain_formula(const std::string& text) {
        Value value;
        auto tree = std::make_shared<TraceTree>(traced([&] { value = value_of_formula(text); }));
        return py::make_tuple(object(object_of(value)), Trace{std::move(tree), text});
    }

    /// Runs the goal seeks that the cells ask for. How many have failed, and the report.
    py::tuple seek() {
        book_.run(CPPQX_GoalSeekInit);
        book_.recalculate_all();
        book_.run(CPPQX_GoalSeek);
        book_.recalculate_all();
        return py::make_tuple(goal_seek_failures(), goal_seek_report());
    }

  private:
    std::uint16_t index(int sheet) const {
        if (sheet < 0 || sheet >= book_.sheet_count()) throw py::index_error("no such sheet");
        return static_cast<std::uint16_t>(sheet);
    }
    CellAddress address(int sheet, std::uint32_t row, std::uint32_t column) const {
        if (row >= sheet::max_rows || column >= sheet::max_columns) throw py::index_error("no such cell");
        return {row, static_cast<std::uint16_t>(column), index(sheet)};
    }
    Value value_of_formula(const std::string& text) {
        const sheet::Formula formula = book_.read(text);
        std::string unknown;
        for (const std::string& what : formula.unknown) unknown += (unknown.empty() ? "" : "; ") + what;
        for (const std::string& name : book_.undefined_names(formula))
            unknown += std::string(unknown.empty() ? "" : "; ") + "unknown name \"" + name + "\"";
        if (!unknown.empty()) throw py::value_error(unknown);
        return book_.look_up(book_.evaluate(formula, Area(CellAddress{})));
    }

    files::Document document_;
    sheet::Workbook& book_ = document_.book;
    bool keeps_file_ = true; ///< no change but of numbers, so that the file that was read can take the results
};

} // namespace

void bind_workbook(py::module_& module) {
    py::register_exception_translator([](std::exception_ptr thrown) {
        try {
            if (thrown) std::rethrow_exception(thrown);
        } catch (const sheet::FormulaError& error) {
            PyErr_SetString(PyExc_ValueError,
                            ("character " + std::to_string(error.column) + ": " + error.what()).c_str());
        } catch (const files::FileError& error) {
            PyErr_SetString(PyExc_ValueError, error.what());
        }
    });
    py::class_<Book>(module, "Book")
        .def(py::init<>())
        .def(py::init([](std::string name, const py::bytes& bytes) {
            return std::make_unique<Book>(std::move(name), std::string(bytes));
        }))
        .def("sheets", &Book::sheets)
        .def("add_sheet", &Book::add_sheet)
        .def("csv", &Book::csv)
        .def("xlsx", &Book::xlsx)
        .def("area", &Book::area)
        .def("used", &Book::used)
        .def("get", &Book::get)
        .def("set", &Book::set)
        .def("set_formula", &Book::set_formula)
        .def("define_name", &Book::define_name)
        .def("formula", &Book::formula)
        .def("evaluate", &Book::evaluate)
        .def("calculate", &Book::calculate)
        .def("problems", &Book::problems)
        .def("errors", &Book::errors)
        .def("explain", &Book::explain)
        .def("explain_formula", &Book::explain_formula)
        .def("seek", &Book::seek);
}

} // namespace qx::python
