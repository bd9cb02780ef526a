// The cell model: Excel's XLOPER as Excel publishes it, and the numbers of the host's operations.
#pragma once

#include <cstdint>

namespace qx {

inline constexpr std::uint16_t xltypeNum = 0x0001;
inline constexpr std::uint16_t xltypeStr = 0x0002;
inline constexpr std::uint16_t xltypeBool = 0x0004;
inline constexpr std::uint16_t xltypeRef = 0x0008;
inline constexpr std::uint16_t xltypeErr = 0x0010;
inline constexpr std::uint16_t xltypeMulti = 0x0040;
inline constexpr std::uint16_t xltypeMissing = 0x0080;
inline constexpr std::uint16_t xltypeNil = 0x0100;
inline constexpr std::uint16_t xltypeSRef = 0x0400;
inline constexpr std::uint16_t xltypeInt = 0x0800;
inline constexpr std::uint16_t xlbitXLFree = 0x1000; ///< the host owns the payload
inline constexpr std::uint16_t xlbitDLLFree = 0x4000;

inline constexpr std::uint16_t xlerrNull = 0;
inline constexpr std::uint16_t xlerrDiv0 = 7;
inline constexpr std::uint16_t xlerrValue = 15;
inline constexpr std::uint16_t xlerrRef = 23;
inline constexpr std::uint16_t xlerrName = 29;
inline constexpr std::uint16_t xlerrNum = 36;
inline constexpr std::uint16_t xlerrNA = 42;

/// A rectangle of cells: rows and columns from 0, the ends included.
struct XLREF {
    std::uint16_t rwFirst, rwLast;
    std::uint8_t colFirst, colLast;
};

struct XLMREF {
    std::uint16_t count;
    XLREF reftbl[1];
};

/// A cell value: a payload and the word that holds its type.
struct OPER {
    union Value {
        double num;
        unsigned char* str;  ///< the first byte is the length
        std::uint16_t xbool; ///< non-zero is true
        std::uint16_t err;
        std::int16_t w;
        struct {
            std::uint16_t count;
            XLREF ref;
        } sref;
        struct {
            XLMREF* lpmref;
            std::uintptr_t idSheet;
        } mref;
        struct {
            OPER* lparray; ///< row by row
            std::uint16_t rows, columns;
        } array;
    } val;
    std::uint16_t xltype;

    /// The type word without the ownership bits.
    std::uint16_t type() const { return xltype & static_cast<std::uint16_t>(~(xlbitXLFree | xlbitDLLFree)); }
};
static_assert(sizeof(void*) != 8 || sizeof(OPER) == 24, "the layout of Excel's XLOPER");

// Makers of simple cells.
inline OPER number_cell(double value) { return {{.num = value}, xltypeNum}; }
inline OPER bool_cell(bool value) { return {{.xbool = static_cast<std::uint16_t>(value)}, xltypeBool}; }
inline OPER error_cell(std::uint16_t code) { return {{.err = code}, xltypeErr}; }
inline OPER int_cell(int value) { return {{.w = static_cast<std::int16_t>(value)}, xltypeInt}; }
constexpr OPER missing_cell() { return {{.num = 0.0}, xltypeMissing}; }
constexpr OPER nil_cell() { return {{.num = 0.0}, xltypeNil}; }
inline OPER array_cell(OPER* cells, int rows, int columns) {
    OPER cell{{.num = 0.0}, xltypeMulti};
    cell.val.array = {cells, static_cast<std::uint16_t>(rows), static_cast<std::uint16_t>(columns)};
    return cell;
}
inline OPER sref_cell(const XLREF& rectangle) {
    OPER cell{{.num = 0.0}, xltypeSRef};
    cell.val.sref = {1, rectangle};
    return cell;
}

// Operations that a host serves.
inline constexpr int xlCommandBit = 0x8000;
inline constexpr int xlSpecialBit = 0x4000;
inline constexpr int xlIntlBit = 0x2000;
inline constexpr int xlPromptBit = 0x1000;

inline constexpr int xlFree = 16384;
inline constexpr int xlStack = 16385;
inline constexpr int xlCoerce = 16386;
inline constexpr int xlSheetId = 16388;
inline constexpr int xlSheetNm = 16389;
inline constexpr int xlAbort = 16390;
inline constexpr int xlGetName = 16393;
inline constexpr int xlfSetName = 88;
inline constexpr int xlfCaller = 89;
inline constexpr int xlfSelection = 95;
inline constexpr int xlfGetFormula = 106;
inline constexpr int xlfRegister = 149;
inline constexpr int xlfUnregister = 201;
inline constexpr int xlfEvaluate = 257;
inline constexpr int xlfRegisterId = 267;
inline constexpr int xlfGetWorkbook = 268;
inline constexpr int xlcAlert = 32886;
inline constexpr int xlcGoalSeek = 32966;

// What a host operation answers: bits.
inline constexpr int xlretSuccess = 0;
inline constexpr int xlretAbort = 1;
inline constexpr int xlretInvXlfn = 2;
inline constexpr int xlretInvCount = 4;
inline constexpr int xlretInvXloper = 8;
inline constexpr int xlretStackOvfl = 16;
inline constexpr int xlretFailed = 32;
inline constexpr int xlretUncalced = 64;

} // namespace qx
