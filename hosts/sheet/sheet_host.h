// What the library asks of its host, served by a workbook.
#pragma once

#include "addin/host.h"
#include "hosts/sheet/value.h"

namespace qx::sheet {

class Workbook;
class Calculator;

class SheetHost final : public Host {
  public:
    SheetHost(Workbook& book, Calculator& calculator) : book_(book), calculator_(calculator) {}

    int call(int xlfn, OPER* result, int count, OPER* const* arguments) override;
    void message_box(std::string_view title, std::string_view text) override; ///< to standard error

  private:
    int coerce(OPER* result, int count, OPER* const* arguments);
    int evaluate(OPER* result, const OPER& text);
    int formula_text(OPER* result, const OPER& reference);
    int workbook_info(OPER* result, int count, OPER* const* arguments);
    int sheet_id(OPER* result, int count, OPER* const* arguments);
    int sheet_name(OPER* result, int count, OPER* const* arguments);
    int seek(OPER* result, int count, OPER* const* arguments);
    /// The caller as a rectangle that a reference can hold. One beyond the 256th column or the 65536th row keeps its
    /// shape and is at the end of these.
    XLREF caller() const;
    /// The area of a reference; false for anything else.
    bool area_of(const OPER& reference, Area& area) const;

    Workbook& book_;
    Calculator& calculator_;
};

/// Copies a value into a cell that xlFree gives back. False if there is no memory or the value does not fit a cell.
bool copy_to_oper(OPER& cell, const Value& value);
void free_oper(OPER& cell);

/// The rectangle of an area as a reference holds it; false beyond 65536 rows or 256 columns.
bool to_rectangle(const Area& area, XLREF& rectangle);

/// The name by which texts of the library know the workbook, as in "[Book1]Sheet1".
inline constexpr const char* book_name = "[Book1]";

} // namespace qx::sheet
