// The cells of one sheet: columns of blocks of rows, made where there is something.
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

/// How a number is shown.
enum class Format : std::uint8_t { general, date, percent };

class Grid {
  public:
    /// The cell, or null where nothing ever stood.
    Cell* find(std::uint32_t row, std::uint32_t column) const {
        Block* const block = find_block(row, column);
        return block == nullptr ? nullptr : &block->cells[row % block_rows];
    }
    Cell& make(std::uint32_t row, std::uint32_t column) {
        Cell& cell = make_block(row, column).cells[row % block_rows];
        rows_ = std::max(rows_, row + 1);
        width_ = std::max(width_, column + 1);
        return cell;
    }
    Format format(std::uint32_t row, std::uint32_t column) const {
        const Block* const block = find_block(row, column);
        return block == nullptr ? Format::general : block->formats[row % block_rows];
    }
    void set_format(std::uint32_t row, std::uint32_t column, Format format) {
        make_block(row, column).formats[row % block_rows] = format;
    }
    std::uint32_t rows() const { return rows_; }
    std::uint32_t columns() const { return width_; }

    /// Calls visit(row, column, cell) row by row for the cells of an area where there may be something. The callback
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
        Format formats[block_rows] = {};
    };

    Block& make_block(std::uint32_t row, std::uint32_t column) {
        if (column >= columns_.size()) columns_.resize(column + 1);
        auto& blocks = columns_[column];
        const std::uint32_t block = row / block_rows;
        if (block >= blocks.size()) blocks.resize(block + 1);
        if (!blocks[block]) blocks[block] = std::make_unique<Block>();
        return *blocks[block];
    }
    Block* find_block(std::uint32_t row, std::uint32_t column) const {
        if (column >= columns_.size()) return nullptr;
        const auto& blocks = columns_[column];
        const std::uint32_t block = row / block_rows;
        return block < blocks.size() ? blocks[block].get() : nullptr;
    }

    std::vector<std::vector<std::unique_ptr<Block>>> columns_;
    std::uint32_t rows_ = 0, width_ = 0;
};

} // namespace qx::sheet
