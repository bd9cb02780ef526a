// Arguments that are switches: their values in words. One table of a switch is what users choose from, what help shows,
// what a string is read by, and what the functions that describe a value answer.
#pragma once

namespace qx {

/// One value of a switch.
struct SwitchValue {
    int code;
    const char* name;            ///< as lists of choices show it after the code; null for a value that they omit
    const char* words = nullptr; ///< as descriptions have it, where they say more than the name
};

/// All values of a switch, in the order in which they are shown.
struct SwitchTable {
    const SwitchValue* values = nullptr;
    int count = 0;

    constexpr SwitchTable() = default;
    template <int size>
    constexpr SwitchTable(const SwitchValue (&rows)[size]) : values(rows), count(size) {}

    /// The first rows.
    constexpr SwitchTable first(int rows) const {
        SwitchTable table = *this;
        table.count = rows;
        return table;
    }

    constexpr const SwitchValue* begin() const { return values; }
    constexpr const SwitchValue* end() const { return values + count; }
    /// The row of a code, or null.
    constexpr const SwitchValue* find(int code) const {
        for (const SwitchValue& row : *this)
            if (row.code == code) return &row;
        return nullptr;
    }
    /// A code in words, or the text for one that there is not.
    constexpr const char* words(int code, const char* unknown) const {
        const SwitchValue* const row = find(code);
        return row == nullptr ? unknown : row->words != nullptr ? row->words : row->name;
    }
};

} // namespace qx
