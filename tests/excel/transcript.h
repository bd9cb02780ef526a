// A transcript of worksheet calls, by which two builds of the library are compared: each call with its cells, what it
// asked of the host and what the host answered, and its result. Text, one line each:
//
//     call DpD n40e28e0000000000 n403e000000000000 m m
//     ask 16386 q0:0:0:0 i64 -> 0 a1x1[n4000000000000000]
//     result n40e290c000000000
//
// A call with the trace on begins with "traced". A cell is a letter and its payload; numbers are the 16 digits of their
// bits, texts the digits of their bytes.
#pragma once

#include "addin/oper.h"

#include <bit>
#include <charconv>
#include <cstdio>
#include <memory>
#include <stdexcept>
#include <string>
#include <string_view>
#include <vector>

namespace qx::test {

/// In place of the areas of a reference that names only a sheet.
inline constexpr std::string_view no_areas = "none";

inline std::string written(double value) {
    char digits[17];
    std::snprintf(digits, sizeof digits, "%016llx",
                  static_cast<unsigned long long>(std::bit_cast<std::uint64_t>(value)));
    return digits;
}

inline std::string written(const XLREF& r) {
    return std::to_string(r.rwFirst) + ":" + std::to_string(r.rwLast) + ":" + std::to_string(r.colFirst) + ":" +
           std::to_string(r.colLast);
}

inline std::string written(const OPER& cell) {
    switch (cell.type()) {
    case xltypeNum:
        return "n" + written(cell.val.num);
    case xltypeStr: {
        std::string text = "s";
        for (int i = 1; cell.val.str != nullptr && i <= cell.val.str[0]; ++i) {
            constexpr char digits[] = "0123456789abcdef";
            text += {digits[cell.val.str[i] >> 4], digits[cell.val.str[i] & 15]};
        }
        return text;
    }
    case xltypeBool:
        return "b" + std::to_string(cell.val.xbool);
    case xltypeErr:
        return "e" + std::to_string(cell.val.err);
    case xltypeInt:
        return "i" + std::to_string(cell.val.w);
    case xltypeMissing:
        return "m";
    case xltypeSRef:
        return "q" + written(cell.val.sref.ref);
    case xltypeRef: {
        const XLMREF* const areas = cell.val.mref.lpmref;
        return "r" + std::to_string(cell.val.mref.idSheet) + ":" +
               (areas == nullptr || areas->count == 0 ? std::string(no_areas) : written(areas->reftbl[0]));
    }
    case xltypeMulti: {
        const auto& array = cell.val.array;
        std::string text = "a" + std::to_string(array.rows) + "x" + std::to_string(array.columns) + "[";
        for (int i = 0; i < array.rows * array.columns; ++i) text += (i > 0 ? "," : "") + written(array.lparray[i]);
        return text + "]";
    }
    default:
        return "z";
    }
}

/// Reads cells; what they point to lives as long as the reader.
class CellReader {
  public:
    /// Takes one cell off the text. Throws std::runtime_error.
    OPER read(std::string_view& text) {
        if (text.empty()) throw std::runtime_error("a cell is missing");
        const char kind = text.front();
        text.remove_prefix(1);
        switch (kind) {
        case 'n':
            return number_cell(std::bit_cast<double>(integer<std::uint64_t>(text, 16, 16)));
        case 's': {
            std::vector<unsigned char> bytes(1);
            while (!text.empty() && std::string_view("0123456789abcdef").find(text.front()) != std::string_view::npos)
                bytes.push_back(integer<unsigned char>(text, 16, 2));
            bytes[0] = static_cast<unsigned char>(bytes.size() - 1);
            return {{.str = keep(std::move(bytes))}, xltypeStr};
        }
        case 'b':
            return bool_cell(integer<int>(text) != 0);
        case 'e':
            return error_cell(integer<std::uint16_t>(text));
        case 'i':
            return int_cell(integer<int>(text));
        case 'm':
            return missing_cell();
        case 'z':
            return nil_cell();
        case 'q':
            return sref_cell(rectangle(text));
        case 'r': {
            OPER cell{{.num = 0.0}, xltypeRef};
            cell.val.mref.idSheet = integer<std::uintptr_t>(text);
            text.remove_prefix(1);
            cell.val.mref.lpmref = nullptr;
            if (text.starts_with(no_areas)) {
                text.remove_prefix(no_areas.size());
            } else {
                areas_.push_back(std::make_unique<XLMREF>(XLMREF{1, {rectangle(text)}}));
                cell.val.mref.lpmref = areas_.back().get();
            }
            return cell;
        }
        case 'a': {
            const int rows = integer<int>(text);
            text.remove_prefix(1);
            const int columns = integer<int>(text);
            std::vector<OPER> cells;
            while (text.front() != ']') {
                text.remove_prefix(1);
                if (text.front() != ']') cells.push_back(read(text));
            }
            text.remove_prefix(1);
            if (cells.size() != static_cast<std::size_t>(rows) * columns) throw std::runtime_error("a broken array");
            arrays_.push_back(std::move(cells));
            return array_cell(arrays_.back().data(), rows, columns);
        }
        default:
            throw std::runtime_error("no kind of cell: " + std::string(1, kind));
        }
    }

  private:
    template <class Integer>
    static Integer integer(std::string_view& text, int base = 10, std::size_t digits = 20) {
        Integer value{};
        const auto [end, error] =
            std::from_chars(text.data(), text.data() + std::min(digits, text.size()), value, base);
        if (error != std::errc()) throw std::runtime_error("no number: " + std::string(text.substr(0, 20)));
        text.remove_prefix(static_cast<std::size_t>(end - text.data()));
        return value;
    }
    static XLREF rectangle(std::string_view& text) {
        XLREF r{};
        r.rwFirst = integer<std::uint16_t>(text);
        text.remove_prefix(1);
        r.rwLast = integer<std::uint16_t>(text);
        text.remove_prefix(1);
        r.colFirst = integer<std::uint8_t>(text);
        text.remove_prefix(1);
        r.colLast = integer<std::uint8_t>(text);
        return r;
    }
    unsigned char* keep(std::vector<unsigned char> bytes) {
        texts_.push_back(std::move(bytes));
        return texts_.back().data();
    }

    std::vector<std::vector<unsigned char>> texts_;
    std::vector<std::vector<OPER>> arrays_;
    std::vector<std::unique_ptr<XLMREF>> areas_;
};

} // namespace qx::test
