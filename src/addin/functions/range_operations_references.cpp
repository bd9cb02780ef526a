// References: where they point, and how to make them.
#include "addin/declare.h"
#include "addin/routines/references.h"

namespace qx::worksheet {

namespace {

constexpr Category category = Category::RangeOperations;

} // namespace

constexpr Function Coordinates{
    .name = "Coordinates",
    .category = category,
    .calls = core<qx::Coordinates>,
    .help = "First row, first column, last row and last column of a reference, counted from 1",
    .args = {optional("TheRef", "A reference to one rectangle of cells; the cells of this formula if omitted")},
    .examples = {"Coordinates(B3:D9) = {3,2,9,4}", "Coordinates(5) ! #NUM!"},
    .see_also = "GetRef,RefPlus,WorkSheetName",
};
QX_EXPORT(Coordinates, 1);

constexpr Function GetRef{
    .name = "GetRef",
    .category = category,
    .calls = core<qx::GetRef>,
    .help = "The reference to cells given by the numbers of their rows and columns, as Coordinates returns them",
    .args = {{"FirstRow", "The first row, counting from 1"},
             {"FirstColumn", "The first column, counting from 1"},
             optional("LastRow", 0, "The last row; 0 for a single row"),
             optional("LastColumn", 0, "The last column; 0 for a single column"),
             optional("SheetName", "", "The name of the sheet; the sheet of this formula if omitted")},
    .examples = {"ROWS(GetRef(3,2,9,4)) = 7", "Coordinates(GetRef(3,2)) = {3,2,3,2}"},
    .see_also = "Coordinates,RefPlus",
    .is_volatile = true,
};
QX_EXPORT(GetRef, 5);

constexpr Function RefPlus{
    .name = "RefPlus",
    .category = category,
    .calls = core<qx::RefPlus>,
    .help = "A reference moved down and to the right, and given another height or width if wanted",
    .args = {{"TheRef", "A reference to one rectangle of cells"},
             {"Rows", "By how many rows to move it down; negative moves it up"},
             optional("Columns", 0, "By how many columns to move it to the right; negative moves it to the left"),
             optional("Height", 0, "The number of its rows; 0 keeps them"),
             optional("Width", 0, "The number of its columns; 0 keeps them")},
    .examples = {"Coordinates(RefPlus(B3:D9,1,-1)) = {4,1,10,3}", "RefPlus(A1,-1) ! #REF!"},
    .see_also = "Coordinates,GetRef",
    .is_volatile = true,
};
QX_EXPORT(RefPlus, 5);

constexpr Function WorkSheetName{
    .name = "WorkSheetName",
    .category = category,
    .calls = core<qx::WorkSheetName>,
    .help = "The name of the sheet of a reference",
    .args = {optional("TheRef", "A reference; the cells of this formula if omitted")},
    .examples = {"WorkSheetName() = \"Sheet1\""},
    .see_also = "Coordinates",
    .is_volatile = true,
};
QX_EXPORT(WorkSheetName, 1);

} // namespace qx::worksheet
