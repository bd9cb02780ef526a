// The cells of one sheet: columns of blocks of rows, made where something stands.
#pragma once

#include "hosts/sheet/value.h"

#include <algorithm>
#include <memory>
#include <vector>

namespace qx::sheet {

struct Node;

struct Cell {
    Value value;
    Node* node = nullptr; ///< the formula that fills the cell, and who reads it
};

class Grid {
  public:
    /// The cell, or null where nothing ever stood.
    Cell* find(std::uint32_t row, std::uint32_t column) {
        if (column >= columns_.size()) return nullptr;
        const auto& blocks = columns_[column];
        const std::uint32_t block = row / block_rows;
        if (block >= blocks.size() || !blocks[block]) return nullptr;
        return &blocks[block]->cells[row % block_rows];
    }
    Cell& make(std::uint32_t row, std::uint32_t column) {
        if (column >= columns_.size()) columns_.resize(column + 1);
        auto& blocks = columns_[column];
        const std::uint32_t block = row / block_rows;
        if (block >= blocks.size()) blocks.resize(block + 1);
        if (!blocks[block]) blocks[block] = std::make_unique<Block>();
        rows_ = std::max(rows_, row + 1);
        return blocks[block]->cells[row % block_rows];
    }
    std::uint32_t rows() const { return rows_; }
    std::uint32_t columns() const { return static_cast<std::uint32_t>(columns_.size()); }

    /// Calls visit(row, column, cell) row by row for the cells of an area where something may stand. The callback
    /// returns false to stop.
    template <class Visit>
    void visit(const Area& area, Visit visit) {
        const std::uint32_t end_row = std::min(area.last_row + 1, rows_);
        const std::uint32_t end_column = std::min<std::uint32_t>(area.last_column + 1u, columns());
        for (std::uint32_t row = area.first_row; row < end_row;) {
            const std::uint32_t block = row / block_rows;
            const std::uint32_t block_end = std::min(end_row, (block + 1) * block_rows);
            bool used = false;
            for (std::uint32_t column = area.first_column; column < end_column && !used; ++column)
                used = block < columns_[column].size() && columns_[column][block];
            if (!used) {
                row = block_end;
                continue;
            }
            for (; row < block_end; ++row)
                for (std::uint32_t column = area.first_column; column < end_column; ++column)
                    if (Cell* const cell = find(row, column))
                        if (!visit(row, column, *cell)) return;
        }
    }

  private:
    static constexpr std::uint32_t block_rows = 64;
    struct Block {
        Cell cells[block_rows];
    };
    std::vector<std::vector<std::unique_ptr<Block>>> columns_;
    std::uint32_t rows_ = 0;
};

} // namespace qx::sheet
