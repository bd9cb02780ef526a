// A workbook without a window: sheets of cells, names, and their recalculation.
//
//     Workbook book;
//     book.set_value(cell, Value::number(38000));
//     book.set_formula(next_cell, "=MonthEnd(A1)");
//     book.recalculate();
//
// A cell is calculated when it is read, and what it reads before it. A change marks whatever depends on it. A formula
// that depends on itself shows #REF! and is listed in problems().
#pragma once

#include "hosts/sheet/calculator.h"
#include "hosts/sheet/formula.h"
#include "hosts/sheet/grid.h"
#include "hosts/sheet/lookup_index.h"
#include "hosts/sheet/readers.h"

#include <algorithm>
#include <deque>
#include <functional>
#include <map>
#include <memory>
#include <optional>
#include <string>
#include <tuple>
#include <vector>

namespace qx::sheet {

/// A formula with the cells that it fills.
struct Node {
    enum State : std::uint8_t {
        clean,
        dirty,
        computing, ///< on the stack of cells being calculated
        waiting,   ///< for a precedent too deep below it to be reached in one go
        deferred,  ///< for a value that no cell gives, as a variable not yet set
    };

    Node(Area target, Cell* cell) : target(target), cell(cell) {}

    /// All cells that show the result.
    const Area& filled() const { return spill ? *spill : target; }

    Area target; ///< one cell, or the rectangle of an array formula
    Cell* cell;  ///< the first of them
    State state = clean;
    bool is_array = false;
    bool cyclic = false; ///< found to depend on itself
    bool listed = false; ///< in the list of those to calculate
    bool listed_as_formula = false, listed_as_volatile = false;
    bool entered = false;            ///< what it refers to is being calculated
    bool again = false;              ///< what it reads has changed while it was calculated
    std::uint8_t spill_changes = 0;  ///< in one recalculation
    std::uint32_t spill_changed = 0; ///< the recalculation of the last of them
    std::uint64_t order = 0;         ///< when it was calculated last: what it reads came before
    Formula formula;
    std::unique_ptr<Area> spill; ///< the cells that an array takes up, if there are several
};

/// Something wrong with a cell.
struct Problem {
    CellAddress cell;
    std::string message;
};

/// An error value that a cell shows.
struct CellError {
    CellAddress cell;
    std::uint16_t code; ///< error_text(code) is "#NUM!"
    std::string reason; ///< "Date less than minimum allowed value (NPVDate)"; never empty
    CellAddress origin; ///< the cell in which the error came up first; the cell itself if it came up there
};

/// A name that stands for a formula, most often a reference.
struct DefinedName {
    std::string name;
    std::string text;         ///< the formula, without the equals sign
    int sheet = -1;           ///< the sheet on which alone it is known; -1 for the whole workbook
    std::optional<Area> area; ///< the cells, if it stands for these
};

class Workbook final : public Names {
  public:
    Workbook(); ///< with the one sheet "Sheet1"
    ~Workbook() override;
    Workbook(const Workbook&) = delete;
    Workbook& operator=(const Workbook&) = delete;

    // --- Contents -----------------------------------------------------------------------------------------------

    std::uint16_t add_sheet(std::string_view name);
    std::uint16_t sheet_count() const { return static_cast<std::uint16_t>(sheets_.size()); }
    const std::string& sheet_name(std::uint16_t sheet) const { return sheets_[sheet].name; }
    void rename_sheet(std::uint16_t sheet, std::string_view name) { sheets_[sheet].name = name; }
    Grid& grid(std::uint16_t sheet) { return sheets_[sheet].grid; }

    /// The rows and columns of a sheet that hold something, from A1 on; nothing for an empty sheet.
    std::optional<Area> used_area(std::uint16_t sheet);

    void set_value(CellAddress cell, Value value);
    /// Throws FormulaError.
    void set_formula(CellAddress cell, std::string_view text, Fill fill = Fill::spill);
    /// One formula for all cells of an area, each showing its part of the result. Throws FormulaError.
    void set_array_formula(const Area& area, std::string_view text);
    /// Gives a formula a name, as "B2:B9" or "0.05"; on one sheet only if that is given. References without a sheet
    /// are to that sheet, else to the first. Throws FormulaError.
    void define_name(std::string_view name, std::string_view text, int sheet = -1);
    std::vector<DefinedName> names() const;
    /// The cells for which a name stands, as seen from a sheet; false for any other name.
    bool find_name(std::string_view name, std::uint16_t sheet, Area& area) const;

    /// How the numbers of a cell are to be shown: as set, else as dates where they come as dates.
    void set_format(CellAddress cell, Format format);
    Format format(CellAddress cell);
    /// Empties all cells and forgets the names.
    void clear();

    /// The formula of a cell without the equals sign, or null.
    const Formula* formula(CellAddress cell);
    bool is_array_formula(CellAddress cell, Area& target);
    /// The cells that the formula of a cell fills at present: more than one for an array formula and for one that
    /// spills. For a cell that another one's formula fills, the cells of that.
    Area filled_by(CellAddress cell);
    /// The ranges to which the formula of a cell refers, also by names.
    std::vector<Area> precedents(CellAddress cell);
    /// The cells whose formulas refer to a cell.
    std::vector<CellAddress> dependents(CellAddress cell);

    // --- Calculation --------------------------------------------------------------------------------------------

    /// The value of a cell, calculated if it has to be.
    Value value(CellAddress cell);
    /// The value of a formula that is in no cell. References to one cell and several come as such.
    Value evaluate(const Formula& formula, const Area& caller);
    Formula read(std::string_view text, std::uint16_t sheet = 0) { return read_formula(text, *this, sheet); }
    /// A reference as the values that it refers to; any other value as it is.
    Value look_up(const Value& value);
    /// Names in a formula that stand for nothing.
    std::vector<std::string> undefined_names(const Formula& formula) const;
    /// Calculates what has changed, and the volatile functions.
    void recalculate();
    void recalculate_all();
    /// Runs a command of the library with this workbook as its host.
    int run(int (*command)());
    /// Has a cell calculated anew at the next recalculation, and what depends on it.
    void mark_dirty(CellAddress cell);

    /// What is wrong with the formulas after a recalculation, in the order of the cells.
    std::vector<Problem> problems() const;
    /// The cells that show an error value, in the same order, with the cause and the cell in which it came up.
    std::vector<CellError> errors();
    std::size_t formula_count() const;

    /// Called now and then with the formulas calculated and to calculate.
    std::function<void(std::size_t done, std::size_t all)> progress;

    // --- For the calculator ---------------------------------------------------------------------------------------

    /// The value of a cell for a formula that reads it.
    const Value& read_cell(CellAddress cell) {
        Cell* const found = sheets_[cell.sheet].grid.find(cell.row, cell.column);
        if (found == nullptr) return blank_;
        return found->node == nullptr || found->node->state == Node::clean ? found->value : settle_for_reader(*found);
    }
    const Value& read_cell(Cell& cell) {
        return cell.node == nullptr || cell.node->state == Node::clean ? cell.value : settle_for_reader(cell);
    }
    /// The value of a cell if it needs no calculation, else null. A cell found to depend on itself has one.
    const Value* peek(const Cell& cell) const {
        if (cell.node == nullptr || cell.node->state == Node::clean) return &cell.value;
        return cell.node->cyclic ? &cycle_value_ : nullptr;
    }
    /// The sum of the numbers in a part of a column, from the top, or the first error in it. Sums that begin in one
    /// cell, such as running totals, share what they have in common.
    Value sum_of_column(const Area& cells);
    /// An index of a row or a column of calculated cells in which values are looked up again and again, else null.
    const LookupIndex* index_of(const Area& list);
    /// The same for a list that may grow from formula to formula, such as A$1:A1 and on: the index may be of a longer
    /// list that begins in the same cell, and then gives places beyond the list too.
    const LookupIndex* index_over(const Area& list);
    Value read_name(std::uint32_t number);
    /// Leaves the formulas being calculated for later, since one of them waits for something that no cell gives.
    [[noreturn]] void not_ready();
    std::uint16_t caller_sheet() const { return calculator_.caller().sheet; }

    int sheet_number(std::string_view name) const override;
    std::uint32_t name_number(std::string_view name, std::uint16_t sheet) override;

  private:
    /// A list in which values were looked up, with its index once that pays.
    struct Lookup {
        Area list;
        int uses = 0;   ///< since it last changed
        int needed = 2; ///< for an index; more once it has changed
        std::unique_ptr<LookupIndex> index;
    };
    /// The sums from one cell down to every `step` rows further.
    struct RunningSum {
        static constexpr std::uint32_t step = 64;
        std::uint32_t first_row = 0;
        std::uint16_t column = 0;
        std::vector<double> sums;
    };
    /// The columns between which lists are: most changes are elsewhere.
    class Columns {
      public:
        void add(const Area& list) {
            first_ = std::min(first_, list.first_column);
            last_ = std::max(last_, list.last_column);
        }
        bool meet(const Area& area) const { return area.first_column <= last_ && area.last_column >= first_; }

      private:
        std::uint16_t first_ = max_columns, last_ = 0; // none
    };
    struct Sheet {
        std::string name;
        Grid grid;
        Readers readers;
        std::vector<Lookup> lookups;
        Columns looked_up;
        std::vector<RunningSum> running;
        Columns summed;
        std::uint32_t changes = 0; ///< of cells

        /// Drops what is known of the cells.
        void forget() {
            lookups.clear();
            looked_up = {};
            running.clear();
            summed = {};
            ++changes;
        }
    };
    /// A formula in the list of those to calculate, with its place in the order of the last time.
    struct Pending {
        std::uint64_t order;
        Node* node;
    };
    struct Name {
        std::string name;
        int sheet = -1;
        Formula formula = {};
        bool busy = false;
    };

    std::uint32_t name_number(std::string_view name, const std::string& capitals, int sheet);
    Node& node_at(CellAddress cell);
    void install(Node& node, Formula formula);
    void remove_formula(Cell& cell);
    void forget_known(const Area& changed);
    void release_spill(Node& node);
    void enlist(Node& node);
    void prepare_change();

    void link_all();
    template <class Add>
    void link(const Formula& formula, int depth, Add add);
    void link(Node& node);
    void touch(const Area& changed);
    void mark_dirty(Node& node);
    void add_precedents(const Formula& formula, std::vector<Area>& areas, int depth) const;

    const Value& settle_for_reader(Cell& cell);
    void calculate(Node& node);
    void settle_all(const std::vector<Pending>& list, std::vector<Pending>& waiting, std::size_t& done);
    void settle(Node& root);
    void settle_from_below(Node& root);
    void push_dirty(const Formula& formula, std::vector<Node*>& nodes, int depth);
    void store(Node& node, Value result);
    void spill(Node& node, Value result);
    const Cell* obstacle(const Node& node, const Area& area);
    void report_cycle(Node& node);

    std::deque<Sheet> sheets_;
    std::deque<Node> nodes_;
    std::deque<Name> names_;
    std::map<std::pair<int, std::string>, std::uint32_t> name_numbers_; ///< by sheet and name in capitals
    std::vector<Node*> formulas_;                                       ///< every node that has, or had, a formula
    std::vector<Node*> volatile_;                                       ///< those that have, or had, a volatile one
    std::vector<Pending> pending_;                                      ///< to be calculated
    std::vector<Node*> blocked_;                                        ///< those with no room to spill
    std::vector<Node*> path_; ///< being calculated, each read by the one before
    std::vector<Problem> cycles_;
    Node::State abandoned_as_ = Node::dirty; ///< what becomes of cells whose calculation an exception ends
    std::uint64_t calculations_ = 0;
    std::uint32_t recalculations_ = 0;
    std::uint32_t round_ = 0; ///< of marking: what was marked in it is marked still
    bool marking_ = false;    ///< nothing was calculated since this round began
    bool calculated_ = false; ///< some cell was calculated since the last clear
    bool linked_ = false;     ///< the readers of all cells are known
    const Value blank_;
    const Value cycle_value_ = Value::error(xlerrRef, "circular reference");
    Calculator calculator_;
};

} // namespace qx::sheet
