// The command that starts the random numbers anew from a seed that the user keeps in the companion workbook.
#include "addin/host.h"
#include "addin/registration.h"
#include "core/logs.h"
#include "core/utilities.h"
#include "numerics/random.h"

namespace qx {

namespace {

/// The seed on the sheet "Globals" of the companion workbook, in either of its forms; 0 without one.
int seed_of_companion() {
    HostCell sheet;
    for (const char* const name : {"[Quexel.xla]Globals", "[Quexel.xlam]Globals"}) {
        sheet.free();
        if (Excel(xlSheetId, sheet.get(), 1, TempStr(name)) == xlretSuccess && sheet->type() == xltypeRef) break;
    }
    if (sheet->type() != xltypeRef) return 0;
    XLMREF fourth_of_second_row{1, {{1, 1, 3, 3}}};
    OPER cell{{.num = 0.0}, xltypeRef};
    cell.val.mref = {&fourth_of_second_row, sheet->val.mref.idSheet};
    OPER seed = nil_cell();
    // As a number, because an integer of a cell has 16 bits and a seed 32.
    const bool answered = Excel(xlCoerce, &seed, 2, &cell, TempInt(xltypeNum)) == xlretSuccess;
    return answered && seed.type() == xltypeNum ? whole(seed.val.num) : 0;
}

} // namespace

} // namespace qx

using namespace qx;

QX_COMMAND(SetSemiRandom,
           "Starts the random numbers anew from the seed on the sheet Globals of the companion workbook") {
    LogFile log;
    log.open("SetSemiRandom");
    log.writeline("1. Entered Semi-Random");
    const int seed = seed_of_companion();
    log.writeline("2. Seed obtained=" + std::to_string(seed));
    seed_random(seed);
    log.writeline("3. Generator Initialised");
    log.close();
    return 0;
}
