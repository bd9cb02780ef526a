#include "addin/routines/references.h"

#include "addin/cells.h"
#include "core/routine.h"

namespace qx {

namespace {

constexpr int most_rows = 65536;
constexpr int most_columns = 256;

/// A rectangle of a sheet: rows and columns from 1. Sheet 0 is the caller's.
struct Place {
    int first_row, first_column, last_row, last_column;
    std::uintptr_t sheet;

    Place(const XLREF& cells, std::uintptr_t sheet)
        : first_row(cells.rwFirst + 1), first_column(cells.colFirst + 1), last_row(cells.rwLast + 1),
          last_column(cells.colLast + 1), sheet(sheet) {}
    Place(int first_row, int first_column, int last_row, int last_column, std::uintptr_t sheet)
        : first_row(first_row), first_column(first_column), last_row(last_row), last_column(last_column), sheet(sheet) {
    }
};

/// The place of a reference. Throws notaref, or the class of an error cell.
Place place_of(const OPER& reference, const Routine& here) {
    switch (reference.type()) {
    case xltypeSRef:
        return {reference.val.sref.ref, 0};
    case xltypeRef: {
        const XLMREF* const rectangles = reference.val.mref.lpmref;
        if (rectangles == nullptr || rectangles->count != 1)
            here.fail<notaref>("TheRef", "A reference to one rectangle of cells is needed");
        return {rectangles->reftbl[0], reference.val.mref.idSheet};
    }
    case xltypeErr: {
        FunctionContext context = here.context("TheRef");
        throw_error_cell(reference, context);
        throw notaref(context);
    }
    default:
        here.fail<notaref>("TheRef");
    }
}

Place place_of(const Reference& TheRef, const Routine& here) {
    if (TheRef.oper->type() != xltypeMissing) return place_of(*TheRef.oper, here);
    HostCell caller;
    Excel(xlfCaller, caller.get(), 0); // a failure leaves an empty cell, which is no reference
    return place_of(*caller, here);
}

OPER reference_to(const Place& place, const Routine& here) {
    const XLREF cells{static_cast<std::uint16_t>(place.first_row - 1), static_cast<std::uint16_t>(place.last_row - 1),
                      static_cast<std::uint8_t>(place.first_column - 1),
                      static_cast<std::uint8_t>(place.last_column - 1)};
    here.info("Reference to ", cells);
    here.returning();
    if (place.sheet == 0) return sref_cell(cells);
    static XLMREF rectangles;
    rectangles = {1, {cells}};
    OPER reference{{.num = 0.0}, xltypeRef};
    reference.val.mref = {&rectangles, place.sheet};
    return reference;
}

} // namespace

WorkList<int> Coordinates(const Reference& TheRef) {
    Routine here{"Coordinates"};
    here.inputs(TheRef);
    const Place place = place_of(TheRef, here);
    WorkList<int> coordinates(4, 4);
    coordinates(1) = place.first_row;
    coordinates(2) = place.first_column;
    coordinates(3) = place.last_row;
    coordinates(4) = place.last_column;
    here.returning();
    return coordinates;
}

OPER GetRef(int FirstRow, int FirstColumn, int LastRow, int LastColumn, const std::string& SheetName) {
    Routine here{"GetRef"};
    here.inputs(FirstRow, FirstColumn, LastRow, LastColumn, SheetName);
    here.limit(FirstRow, 1, most_rows, "FirstRow");
    here.limit(FirstColumn, 1, most_columns, "FirstColumn");
    if (LastRow != 0) here.limit(LastRow, FirstRow, most_rows, "LastRow");
    if (LastColumn != 0) here.limit(LastColumn, FirstColumn, most_columns, "LastColumn");
    std::uintptr_t sheet = 0;
    if (!SheetName.empty()) {
        HostCell found;
        if (Excel(xlSheetId, found.get(), 1, TempStr(SheetName)) != xlretSuccess || found->type() != xltypeRef)
            here.fail<inputref>("SheetName", "There is no sheet ", SheetName);
        sheet = found->val.mref.idSheet;
    }
    return reference_to(
        {FirstRow, FirstColumn, LastRow == 0 ? FirstRow : LastRow, LastColumn == 0 ? FirstColumn : LastColumn, sheet},
        here);
}

OPER RefPlus(const Reference& TheRef, int Rows, int Columns, int Height, int Width) {
    Routine here{"RefPlus"};
    here.inputs(TheRef, Rows, Columns, Height, Width);
    const Place from = place_of(TheRef, here);
    here.at_least(Height, 0, "Height");
    here.at_least(Width, 0, "Width");
    const long long rows = Height == 0 ? from.last_row - from.first_row + 1 : Height;
    const long long columns = Width == 0 ? from.last_column - from.first_column + 1 : Width;
    const long long row = static_cast<long long>(from.first_row) + Rows;
    const long long column = static_cast<long long>(from.first_column) + Columns;
    if (row < 1 || row + rows - 1 > most_rows) here.fail<inputref>("Rows", "Row ", row, " leads off the sheet");
    if (column < 1 || column + columns - 1 > most_columns)
        here.fail<inputref>("Columns", "Column ", column, " leads off the sheet");
    return reference_to({static_cast<int>(row), static_cast<int>(column), static_cast<int>(row + rows - 1),
                         static_cast<int>(column + columns - 1), from.sheet},
                        here);
}

std::string WorkSheetName(const Reference& TheRef) {
    Routine here{"WorkSheetName"};
    here.inputs(TheRef);
    OPER on_sheet{{.num = 0.0}, xltypeRef};
    on_sheet.val.mref = {nullptr, place_of(TheRef, here).sheet};
    HostCell name;
    const int code = Excel(xlSheetNm, name.get(), 1, &on_sheet);
    if (code != xlretSuccess || name->type() != xltypeStr)
        here.fail<errlibcallback>("TheRef", "The host did not name the sheet: ", host_return_text(code));
    const std::string full = text_in(*name); // as [Book1]Sheet1
    return here.returning(full.substr(full.rfind(']') + 1));
}

} // namespace qx
