#include "hosts/sheet/sheet_host.h"

#include "hosts/sheet/calculator.h"
#include "hosts/sheet/goal_seek.h"
#include "hosts/sheet/text.h"
#include "hosts/sheet/workbook.h"

#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <filesystem>
#include <limits>
#include <stdexcept>

namespace qx::sheet {

namespace {

constexpr std::uint32_t reference_rows = 65536;
constexpr std::uint32_t reference_columns = 256;

std::string_view text_of_oper(const OPER& cell) {
    if (cell.type() != xltypeStr || cell.val.str == nullptr) return {};
    return {reinterpret_cast<const char*>(cell.val.str) + 1, cell.val.str[0]};
}

/// A scalar without memory of its own; a string points into the value.
OPER plain_oper(const Value& value) {
    switch (value.type()) {
    case Type::number:
        return number_cell(value.number());
    case Type::boolean:
        return bool_cell(value.boolean());
    case Type::error:
        return error_cell(value.error() <= xlerrNA ? value.error() : xlerrValue);
    case Type::text: {
        OPER cell = nil_cell();
        cell.val.str = value.counted_text();
        cell.xltype = xltypeStr;
        return cell;
    }
    default:
        return nil_cell();
    }
}

/// A reference that xlFree gives back.
bool reference_to_oper(OPER& cell, const Area& area) {
    XLREF rectangle;
    if (!to_rectangle(area, rectangle)) return false;
    auto* const list = static_cast<XLMREF*>(std::malloc(sizeof(XLMREF)));
    if (list == nullptr) return false;
    list->count = 1;
    list->reftbl[0] = rectangle;
    cell = nil_cell();
    cell.val.mref = {list, std::uintptr_t{area.sheet} + 1};
    cell.xltype = xltypeRef | xlbitXLFree;
    return true;
}

bool copy_array(OPER& cell, std::uint32_t rows, std::uint32_t columns, const auto& item) {
    const std::size_t count = std::size_t{rows} * columns;
    if (rows > 65535 || columns > 65535 || count > 16'000'000) return false;
    std::size_t text_bytes = 0;
    for (std::uint32_t row = 0; row < rows; ++row)
        for (std::uint32_t column = 0; column < columns; ++column)
            if (const Value& value = item(row, column); value.is_text()) text_bytes += 1u + *value.counted_text();
    auto* const cells = static_cast<OPER*>(std::malloc(count * sizeof(OPER) + text_bytes));
    if (cells == nullptr) return false;
    auto* text = reinterpret_cast<unsigned char*>(cells + count);
    for (std::uint32_t row = 0; row < rows; ++row)
        for (std::uint32_t column = 0; column < columns; ++column) {
            OPER& target = cells[std::size_t{row} * columns + column];
            target = plain_oper(item(row, column));
            if (target.xltype != xltypeStr) continue;
            std::memcpy(text, target.val.str, 1u + *target.val.str);
            target.val.str = text;
            text += 1u + *text;
        }
    cell = array_cell(cells, static_cast<int>(rows), static_cast<int>(columns));
    cell.xltype |= xlbitXLFree;
    return true;
}

} // namespace

bool to_rectangle(const Area& area, XLREF& rectangle) {
    if (area.last_row >= reference_rows || area.last_column >= reference_columns) return false;
    rectangle = {static_cast<std::uint16_t>(area.first_row), static_cast<std::uint16_t>(area.last_row),
                 static_cast<std::uint8_t>(area.first_column), static_cast<std::uint8_t>(area.last_column)};
    return true;
}

bool copy_to_oper(OPER& cell, const Value& value) {
    if (value.is(Type::array))
        return copy_array(
            cell, value.rows(), value.columns(),
            [&](std::uint32_t row, std::uint32_t column) -> const Value& { return value.cell(row, column); });
    if (value.is(Type::area)) return reference_to_oper(cell, value.area());
    cell = plain_oper(value);
    if (cell.xltype != xltypeStr) return true;
    auto* const text = static_cast<unsigned char*>(std::malloc(256));
    if (text == nullptr) return false;
    std::memcpy(text, cell.val.str, 1u + *cell.val.str);
    cell.val.str = text;
    cell.xltype |= xlbitXLFree;
    return true;
}

void free_oper(OPER& cell) {
    if (!(cell.xltype & xlbitXLFree)) return;
    switch (cell.type()) {
    case xltypeMulti:
        std::free(cell.val.array.lparray);
        break;
    case xltypeStr:
        std::free(cell.val.str);
        break;
    case xltypeRef:
        std::free(cell.val.mref.lpmref);
        break;
    default:
        break;
    }
    cell = nil_cell();
}

XLREF SheetHost::caller() const {
    Area area = calculator_.caller();
    const auto into = [](auto& first, auto& last, std::uint32_t end) {
        if (last < end) return;
        const std::uint32_t length = std::min<std::uint32_t>(last - first, end - 1);
        last = static_cast<std::remove_reference_t<decltype(last)>>(end - 1);
        first = static_cast<std::remove_reference_t<decltype(first)>>(last - length);
    };
    into(area.first_row, area.last_row, reference_rows);
    into(area.first_column, area.last_column, reference_columns);
    XLREF rectangle{};
    to_rectangle(area, rectangle);
    return rectangle;
}

bool SheetHost::area_of(const OPER& reference, Area& area) const {
    if (reference.type() != xltypeSRef && reference.type() != xltypeRef) return false;
    const Value value = from_oper(reference, book_);
    if (!value.is(Type::area)) return false;
    area = value.area();
    return true;
}

int SheetHost::call(int xlfn, OPER* result, int count, OPER* const* arguments) {
    OPER unused = nil_cell();
    OPER& answer = result != nullptr ? *result : unused;
    switch (xlfn) {
    case xlFree:
        for (int i = 0; i < count; ++i) free_oper(*arguments[i]);
        return xlretSuccess;
    case xlStack:
        answer = int_cell(calculator_.stack_left(std::numeric_limits<std::int16_t>::max()));
        return xlretSuccess;
    case xlfCaller:
        answer = sref_cell(caller());
        return xlretSuccess;
    case xlCoerce:
        return result == nullptr ? xlretInvXloper : coerce(result, count, arguments);
    case xlfEvaluate:
        if (count < 1) return xlretInvCount;
        return result == nullptr ? xlretInvXloper : evaluate(result, *arguments[0]);
    case xlfGetFormula:
        if (count < 1) return xlretInvCount;
        return result == nullptr ? xlretInvXloper : formula_text(result, *arguments[0]);
    case xlfGetWorkbook:
        return result == nullptr ? xlretInvXloper : workbook_info(result, count, arguments);
    case xlSheetId:
        return result == nullptr ? xlretInvXloper : sheet_id(result, count, arguments);
    case xlSheetNm:
        return result == nullptr ? xlretInvXloper : sheet_name(result, count, arguments);
    case xlGetName: {
        std::error_code unknown;
        const auto path = std::filesystem::read_symlink("/proc/self/exe", unknown);
        return result != nullptr && copy_to_oper(answer, Value::text(unknown ? "quexel" : path.string())) ? xlretSuccess
                                                                                                          : xlretFailed;
    }
    case xlcAlert:
        if (count < 1) return xlretInvCount;
        message_box("Quexel", text_of_oper(*arguments[0]));
        answer = bool_cell(true);
        return xlretSuccess;
    case xlAbort:
        answer = bool_cell(false);
        return xlretSuccess;
    case xlcGoalSeek:
        return seek(&answer, count, arguments);
    case xlfSelection: {
        answer = sref_cell(caller());
        return xlretSuccess;
    }
    default: // functions are known without being registered, and there is no window
        return xlretFailed;
    }
}

void SheetHost::message_box(std::string_view title, std::string_view text) {
    std::fprintf(stderr, "%s: %s\n", valid_utf8(title).c_str(), valid_utf8(text).c_str());
}

int SheetHost::coerce(OPER* result, int count, OPER* const* arguments) {
    if (count < 1) return xlretInvCount;
    const OPER& source = *arguments[0];
    const std::uint16_t scalars = xltypeNum | xltypeStr | xltypeBool | xltypeErr | xltypeNil | xltypeInt;
    std::uint16_t wanted = scalars | xltypeMulti;
    if (count >= 2) {
        if (arguments[1]->type() == xltypeInt)
            wanted = static_cast<std::uint16_t>(arguments[1]->val.w);
        else if (arguments[1]->type() == xltypeNum)
            wanted = static_cast<std::uint16_t>(static_cast<int>(arguments[1]->val.num));
    }
    Area area;
    const bool is_reference = area_of(source, area);
    if ((source.type() == xltypeSRef || source.type() == xltypeRef) && !is_reference) return xlretFailed;
    if (is_reference && (wanted & (xltypeRef | xltypeSRef))) {
        if (wanted & xltypeRef) return reference_to_oper(*result, area) ? xlretSuccess : xlretFailed;
        XLREF rectangle;
        if (area.sheet != calculator_.caller().sheet || !to_rectangle(area, rectangle)) return xlretFailed;
        *result = sref_cell(rectangle);
        return xlretSuccess;
    }
    Value value;
    if (is_reference) {
        bool calculated = true;
        Grid& grid = book_.grid(area.sheet);
        grid.visit(area,
                   [&](std::uint32_t, std::uint32_t, Cell& cell) { return calculated = book_.peek(cell) != nullptr; });
        if (!calculated) {
            calculator_.set_uncalculated(area);
            return xlretUncalced;
        }
        const auto item = [&](std::uint32_t row, std::uint32_t column) -> const Value& {
            static const Value blank;
            const Cell* const cell = grid.find(area.first_row + row, area.first_column + column);
            return cell == nullptr ? blank : *book_.peek(*cell);
        };
        if ((wanted & xltypeMulti) && (count >= 2 || !area.is_cell()))
            return copy_array(*result, area.rows(), area.columns(), item) ? xlretSuccess : xlretFailed;
        value = item(0, 0);
    } else {
        value = from_oper(source, book_);
        if (value.is(Type::array)) {
            if (wanted & xltypeMulti) return copy_to_oper(*result, value) ? xlretSuccess : xlretFailed;
            value = Value(value.cell(0, 0));
        } else if ((wanted & xltypeMulti) && !(wanted & scalars)) {
            return copy_array(*result, 1, 1, [&](std::uint32_t, std::uint32_t) -> const Value& { return value; })
                       ? xlretSuccess
                       : xlretFailed;
        }
    }
    // A single value of one of the types asked for.
    const std::uint16_t type = plain_oper(value).xltype;
    if (type & wanted) return copy_to_oper(*result, value) ? xlretSuccess : xlretFailed;
    Value error;
    double number = 0.0;
    bool truth = false;
    if ((wanted & xltypeNum) && to_number(value, number, error)) {
        *result = number_cell(number);
    } else if ((wanted & xltypeInt) && to_number(value, number, error) && number >= -32768.0 && number < 32768.0) {
        *result = int_cell(static_cast<int>(number));
    } else if ((wanted & xltypeStr) && !value.is_error()) {
        return copy_to_oper(*result, to_text(value)) ? xlretSuccess : xlretFailed;
    } else if ((wanted & xltypeBool) && to_truth(value, truth, error)) {
        *result = bool_cell(truth);
    } else {
        return xlretFailed;
    }
    return xlretSuccess;
}

int SheetHost::seek(OPER* result, int count, OPER* const* arguments) {
    if (count < 3) return xlretInvCount;
    Area target, changing;
    if (!area_of(*arguments[0], target) || !area_of(*arguments[2], changing) || arguments[1]->type() != xltypeNum ||
        calculator_.in_function())
        return xlretFailed;
    try {
        *result = bool_cell(goal_seek(book_, target.first(), arguments[1]->val.num, changing.first()));
        book_.recalculate();
        return xlretSuccess;
    } catch (const std::invalid_argument&) {
        return xlretFailed;
    }
}

int SheetHost::evaluate(OPER* result, const OPER& text) {
    if (text.type() != xltypeStr) return xlretInvXloper;
    try {
        const Formula formula = book_.read(text_of_oper(text), calculator_.caller().sheet);
        // The library runs one function at a time, so a string that calls another one cannot be evaluated.
        if (!formula.functions.empty()) return xlretFailed;
        const Area caller = calculator_.caller();
        Value value = calculator_.run(formula, caller);
        XLREF rectangle;
        if (value.is(Type::area) && !to_rectangle(value.area(), rectangle)) value = calculator_.looked_up(value);
        return copy_to_oper(*result, value) ? xlretSuccess : xlretFailed;
    } catch (const FormulaError&) {
        return xlretFailed;
    } catch (const Uncalculated& cells) {
        calculator_.set_uncalculated(cells.area);
        return xlretUncalced;
    } catch (const NotReady&) {
        return xlretUncalced;
    }
}

int SheetHost::formula_text(OPER* result, const OPER& reference) {
    Area area;
    if (!area_of(reference, area)) return xlretInvXloper;
    XLREF rectangle;
    if (area == Area(book_.caller_sheet(), caller().rwFirst, caller().colFirst, caller().rwLast, caller().colLast) &&
        !to_rectangle(calculator_.caller(), rectangle))
        return xlretFailed; // the caller is beyond what a reference can hold
    const Formula* const formula = book_.formula(area.first());
    if (formula != nullptr) return copy_to_oper(*result, Value::text("=" + formula->text)) ? xlretSuccess : xlretFailed;
    const Cell* const cell = book_.grid(area.sheet).find(area.first_row, area.first_column);
    return copy_to_oper(*result, Value::text(cell == nullptr ? "" : display_text(cell->value))) ? xlretSuccess
                                                                                                : xlretFailed;
}

int SheetHost::workbook_info(OPER* result, int count, OPER* const* arguments) {
    const double type = count >= 1 && arguments[0]->type() == xltypeNum   ? arguments[0]->val.num
                        : count >= 1 && arguments[0]->type() == xltypeInt ? arguments[0]->val.w
                                                                          : 0.0;
    if (type != 1.0) return xlretFailed; // only the names of the sheets
    Value names = Value::array(1, book_.sheet_count());
    for (std::uint16_t sheet = 0; sheet < book_.sheet_count(); ++sheet)
        names.cell(0, sheet) = Value::text(book_name + book_.sheet_name(sheet));
    return copy_to_oper(*result, names) ? xlretSuccess : xlretFailed;
}

int SheetHost::sheet_id(OPER* result, int count, OPER* const* arguments) {
    int sheet = book_.caller_sheet();
    if (count >= 1 && arguments[0]->type() == xltypeStr) {
        std::string name(text_of_oper(*arguments[0]));
        // A sheet of this workbook under its full name, or of the companion workbook, whose place it takes.
        for (const std::string_view book :
             {std::string_view(book_name), std::string_view("[Quexel.xla]"), std::string_view("[Quexel.xlam]")})
            if (name.starts_with(book)) {
                name.erase(0, book.size());
                break;
            }
        sheet = book_.sheet_number(name);
    }
    if (sheet < 0) return xlretFailed;
    *result = nil_cell();
    result->val.mref = {nullptr, static_cast<std::uintptr_t>(sheet) + 1};
    result->xltype = xltypeRef;
    return xlretSuccess;
}

int SheetHost::sheet_name(OPER* result, int count, OPER* const* arguments) {
    std::size_t sheet = book_.caller_sheet();
    if (count >= 1 && arguments[0]->type() == xltypeRef) {
        const std::uintptr_t id = arguments[0]->val.mref.idSheet;
        if (id > book_.sheet_count()) return xlretFailed;
        if (id > 0) sheet = id - 1;
    }
    const std::string name = book_name + book_.sheet_name(static_cast<std::uint16_t>(sheet));
    return copy_to_oper(*result, Value::text(name)) ? xlretSuccess : xlretFailed;
}

} // namespace qx::sheet
