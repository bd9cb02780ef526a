#include "hosts/sheet/workbook.h"

#include "hosts/sheet/text.h"

#include <algorithm>
#include <set>
#include <stdexcept>

namespace qx::sheet {

namespace {

constexpr int deepest_names = 32; ///< names that stand for names

bool before(CellAddress a, CellAddress b) {
    return std::tuple(a.sheet, a.row, a.column) < std::tuple(b.sheet, b.row, b.column);
}

} // namespace

Workbook::Workbook() : calculator_(*this) { add_sheet("Sheet1"); }
Workbook::~Workbook() = default;

// --- Contents -------------------------------------------------------------------------------------------------------

std::uint16_t Workbook::add_sheet(std::string_view name) {
    if (sheets_.size() == 65535) throw std::length_error("too many sheets");
    sheets_.emplace_back().name = name;
    return static_cast<std::uint16_t>(sheets_.size() - 1);
}

int Workbook::sheet_number(std::string_view name) const {
    constexpr std::string_view own = book_name; // a sheet of another workbook is none
    if (equal_ignoring_case(name.substr(0, own.size()), own)) name.remove_prefix(own.size());
    for (std::size_t sheet = 0; sheet < sheets_.size(); ++sheet)
        if (equal_ignoring_case(sheets_[sheet].name, name)) return static_cast<int>(sheet);
    return -1;
}

std::uint32_t Workbook::name_number(std::string_view name, std::uint16_t sheet) {
    const std::string capitals = upper_case(name);
    if (const auto local = name_numbers_.find({sheet, capitals}); local != name_numbers_.end()) return local->second;
    return name_number(name, capitals, -1);
}

std::uint32_t Workbook::name_number(std::string_view name, const std::string& capitals, int sheet) {
    const auto [found, added] = name_numbers_.try_emplace({sheet, capitals}, static_cast<std::uint32_t>(names_.size()));
    if (added) names_.emplace_back(std::string(name), sheet);
    return found->second;
}

void Workbook::define_name(std::string_view name, std::string_view text, int sheet) {
    Formula formula = read(text, static_cast<std::uint16_t>(std::max(sheet, 0)));
    prepare_change();
    names_[name_number(name, upper_case(name), sheet)].formula = std::move(formula);
    for (Node* const node : formulas_) {
        if (!node->formula || node->formula.names.empty()) continue;
        if (linked_) link(*node);
        mark_dirty(*node);
    }
}

namespace {

/// The cells for which a formula stands that is nothing but a reference.
std::optional<Area> area_of(const Formula& formula) {
    if (formula.steps.size() != 1 || formula.steps[0].code != Code::reference) return {};
    return formula.areas[0];
}

} // namespace

std::vector<DefinedName> Workbook::names() const {
    std::vector<DefinedName> list;
    for (const Name& name : names_)
        if (name.formula) list.push_back({name.name, name.formula.text, name.sheet, area_of(name.formula)});
    return list;
}

bool Workbook::find_name(std::string_view name, std::uint16_t sheet, Area& area) const {
    const std::string capitals = upper_case(name);
    for (const int place : {int{sheet}, -1}) {
        const auto found = name_numbers_.find({place, capitals});
        if (found == name_numbers_.end() || !names_[found->second].formula) continue;
        const std::optional<Area> cells = area_of(names_[found->second].formula);
        if (cells) area = *cells;
        return cells.has_value();
    }
    return false;
}

std::optional<Area> Workbook::used_area(std::uint16_t sheet) {
    std::optional<Area> used;
    Grid& grid = sheets_[sheet].grid;
    if (grid.rows() == 0) return used;
    const Area all(sheet, 0, 0, grid.rows() - 1, static_cast<std::uint16_t>(grid.columns() - 1));
    grid.visit(all, [&](std::uint32_t row, std::uint32_t column, Cell& cell) {
        if (cell.value.is(Type::blank) && (cell.node == nullptr || !cell.node->formula)) return true;
        if (!used) used = Area({0, 0, sheet});
        used->last_row = std::max(used->last_row, row);
        used->last_column = std::max(used->last_column, static_cast<std::uint16_t>(column));
        return true;
    });
    return used;
}

void Workbook::set_format(CellAddress at, Format format) {
    sheets_[at.sheet].grid.set_format(at.row, at.column, format);
}

Format Workbook::format(CellAddress at) {
    const Format format = sheets_[at.sheet].grid.format(at.row, at.column);
    return format == Format::general && value(at).is_date() ? Format::date : format;
}

Node& Workbook::node_at(CellAddress at) {
    Cell& cell = sheets_[at.sheet].grid.make(at.row, at.column);
    if (cell.node == nullptr) cell.node = &nodes_.emplace_back(Area(at), &cell);
    return *cell.node;
}

/// Before a change of a calculated workbook the readers of its cells must be known.
void Workbook::prepare_change() {
    if (calculated_ && !linked_) link_all();
    for (Node* const node : blocked_) // the change may make room
        if (node->formula) mark_dirty(*node);
    blocked_.clear();
}

// --- Lookups --------------------------------------------------------------------------------------------------------

const LookupIndex* Workbook::index_of(const Area& list) {
    constexpr std::uint32_t least_cells = 32;
    constexpr std::size_t most_lists = 64;
    if ((list.rows() > 1 && list.columns() > 1) || list.rows() + list.columns() <= least_cells) return nullptr;
    Sheet& sheet = sheets_[list.sheet];
    std::vector<Lookup>& lookups = sheet.lookups;
    auto found =
        std::find_if(lookups.begin(), lookups.end(), [&](const Lookup& lookup) { return lookup.list == list; });
    if (found == lookups.end()) {
        if (lookups.size() == most_lists) lookups.erase(lookups.begin());
        sheet.looked_up.add(list);
        found = lookups.insert(lookups.end(), Lookup{list, 0, 2, nullptr});
    }
    if (found->index) return found->index.get();
    if (++found->uses < found->needed) return nullptr;
    // Cells that are not calculated stay so: perhaps nobody reads them.
    bool calculated = true;
    sheet.grid.visit(list, [&](std::uint32_t, std::uint32_t, Cell& cell) {
        return calculated = cell.node == nullptr || cell.node->state == Node::clean;
    });
    if (calculated)
        found->index = std::make_unique<LookupIndex>(*this, list);
    else
        found->uses = 0;
    return found->index.get();
}

const LookupIndex* Workbook::index_over(const Area& list) {
    if (list.columns() > 1) return index_of(list);
    bool grows = false;
    for (const Lookup& lookup : sheets_[list.sheet].lookups) {
        const Area& known = lookup.list;
        if (known.first_row != list.first_row || known.first_column != list.first_column || known.columns() > 1)
            continue;
        if (lookup.index && known.last_row >= list.last_row) return lookup.index.get();
        grows = grows || known.last_row < list.last_row;
    }
    Area longest = list;
    if (grows) longest.last_row = std::max(list.last_row, sheets_[list.sheet].grid.rows() - 1);
    return index_of(longest);
}

Value Workbook::sum_of_column(const Area& cells) {
    constexpr std::size_t most_sums = 64;
    constexpr std::uint32_t step = RunningSum::step;
    Sheet& sheet = sheets_[cells.sheet];
    const std::uint32_t end = std::min(cells.last_row + 1, sheet.grid.rows());
    const auto find = [&] {
        return std::find_if(sheet.running.begin(), sheet.running.end(), [&](const RunningSum& known) {
            return known.first_row == cells.first_row && known.column == cells.first_column;
        });
    };
    double sum = 0.0;
    Area rest = cells;
    std::size_t shared = 0;
    if (const auto known = find(); known != sheet.running.end() && end > cells.first_row) {
        shared = std::min<std::size_t>(known->sums.size(), (end - cells.first_row) / step);
        if (shared > 0) sum = known->sums[shared - 1];
        rest.first_row += static_cast<std::uint32_t>(shared) * step;
    }
    const std::uint32_t changes = sheet.changes;
    std::vector<double> more; // a cell that is read may be calculated first, and other sums with it
    std::uint32_t next = rest.first_row + step;
    Value error;
    sheet.grid.visit(rest, [&](std::uint32_t row, std::uint32_t, Cell& cell) {
        for (; next <= row; next += step) more.push_back(sum);
        const Value& value = read_cell(cell);
        if (value.is_number()) sum += value.number();
        if (value.is_error()) error = value;
        return !error.is_error();
    });
    if (!error.is_error())
        for (; next <= end; next += step) more.push_back(sum);
    if (!more.empty() && changes == sheet.changes) {
        auto known = find();
        if (known == sheet.running.end()) {
            if (sheet.running.size() == most_sums) sheet.running.erase(sheet.running.begin());
            sheet.summed.add(cells);
            known = sheet.running.insert(sheet.running.end(), RunningSum{cells.first_row, cells.first_column, {}});
        }
        if (known->sums.size() <= shared + more.size()) {
            known->sums.resize(shared);
            known->sums.insert(known->sums.end(), more.begin(), more.end());
        }
    }
    return error.is_error() ? error : number_or_error(sum);
}

/// Drops the indexes that hold a cell of an area, and the sums beyond it.
void Workbook::forget_known(const Area& changed) {
    // So many walks along a list take about as long as sorting it: the index of a list that changes again and again
    // costs at most as much again as the walks do.
    constexpr int walks_of_an_index = 16;
    Sheet& sheet = sheets_[changed.sheet];
    ++sheet.changes;
    if (sheet.summed.meet(changed))
        for (RunningSum& known : sheet.running) {
            if (changed.first_column > known.column || changed.last_column < known.column ||
                changed.last_row < known.first_row)
                continue;
            const std::size_t kept =
                changed.first_row <= known.first_row ? 0 : (changed.first_row - known.first_row) / RunningSum::step;
            if (kept < known.sums.size()) known.sums.resize(kept);
        }
    if (!sheet.looked_up.meet(changed)) return;
    for (Lookup& lookup : sheet.lookups) {
        const Area& list = lookup.list;
        if (!lookup.index || changed.first_column > list.last_column || changed.last_column < list.first_column ||
            changed.first_row > list.last_row || changed.last_row < list.first_row)
            continue;
        lookup.index.reset();
        lookup.uses = 0;
        lookup.needed = walks_of_an_index;
    }
}

// --- Changes --------------------------------------------------------------------------------------------------------

void Workbook::set_value(CellAddress at, Value value) {
    prepare_change();
    Cell& cell = sheets_[at.sheet].grid.make(at.row, at.column);
    remove_formula(cell);
    if (value.is_error()) value.set_origin(at);
    cell.value = std::move(value);
    forget_known(Area(at));
    touch(Area(at));
}

void Workbook::remove_formula(Cell& cell) {
    if (cell.node == nullptr || !cell.node->formula) return;
    Node& node = *cell.node;
    if (node.is_array) throw std::invalid_argument("a part of an array formula cannot be changed");
    if (node.spill) release_spill(node);
    if (node.cell != &cell) { // what another cell's formula showed here
        mark_dirty(node);
        return;
    }
    node.formula = Formula();
    node.state = Node::clean;
}

/// Empties the cells beside its own that a formula has filled.
void Workbook::release_spill(Node& node) {
    const Area area = *node.spill;
    node.spill.reset();
    Grid& grid = sheets_[area.sheet].grid;
    for (std::uint32_t row = area.first_row; row <= area.last_row; ++row)
        for (std::uint32_t column = area.first_column; column <= area.last_column; ++column) {
            Cell& cell = grid.make(row, column);
            if (&cell == node.cell || cell.node != &node) continue;
            cell.node = nullptr;
            cell.value = {};
        }
    forget_known(area);
    touch(area);
}

void Workbook::install(Node& node, Formula formula) {
    node.formula = std::move(formula);
    if (!node.listed_as_formula) formulas_.push_back(&node);
    node.listed_as_formula = true;
    if (node.formula.is_volatile && !node.listed_as_volatile) {
        volatile_.push_back(&node);
        node.listed_as_volatile = true;
    }
    node.state = Node::clean;
    node.order = ++calculations_;
    if (linked_) link(node);
    mark_dirty(node);
}

void Workbook::enlist(Node& node) {
    if (node.listed) return;
    node.listed = true;
    pending_.push_back({node.order, &node});
}

void Workbook::set_formula(CellAddress at, std::string_view text, Fill fill) {
    Formula formula = read_formula(text, *this, at.sheet, fill);
    prepare_change();
    Cell& cell = sheets_[at.sheet].grid.make(at.row, at.column);
    remove_formula(cell);
    install(node_at(at), std::move(formula));
}

void Workbook::set_array_formula(const Area& area, std::string_view text) {
    Formula formula = read(text, area.sheet);
    prepare_change();
    Grid& grid = sheets_[area.sheet].grid;
    if (Cell& first = grid.make(area.first_row, area.first_column);
        first.node != nullptr && first.node->is_array && first.node->target == area)
        return install(*first.node, std::move(formula)); // another formula for the same cells
    const auto each_cell = [&](auto visit) {
        for (std::uint32_t row = area.first_row; row <= area.last_row; ++row)
            for (std::uint32_t column = area.first_column; column <= area.last_column; ++column)
                visit(grid.make(row, column));
    };
    each_cell([&](Cell& cell) { remove_formula(cell); });
    Node& node = nodes_.emplace_back(area, &grid.make(area.first_row, area.first_column));
    each_cell([&](Cell& cell) { cell.node = &node; });
    node.is_array = true;
    install(node, std::move(formula));
}

void Workbook::clear() {
    for (Sheet& sheet : sheets_) {
        sheet.grid = Grid();
        sheet.forget();
        sheet.readers.clear();
    }
    nodes_.clear();
    names_.clear();
    name_numbers_.clear();
    formulas_.clear();
    volatile_.clear();
    pending_.clear();
    blocked_.clear();
    cycles_.clear();
    calculated_ = linked_ = false;
}

const Formula* Workbook::formula(CellAddress at) {
    const Cell* const cell = sheets_[at.sheet].grid.find(at.row, at.column);
    return cell == nullptr || cell->node == nullptr || !cell->node->formula ? nullptr : &cell->node->formula;
}

bool Workbook::is_array_formula(CellAddress at, Area& target) {
    const Cell* const cell = sheets_[at.sheet].grid.find(at.row, at.column);
    if (cell == nullptr || cell->node == nullptr || !cell->node->formula || !cell->node->is_array) return false;
    target = cell->node->target;
    return true;
}

Area Workbook::filled_by(CellAddress at) {
    const Cell* const cell = sheets_[at.sheet].grid.find(at.row, at.column);
    return cell == nullptr || cell->node == nullptr || !cell->node->formula ? Area(at) : cell->node->filled();
}

void Workbook::add_precedents(const Formula& formula, std::vector<Area>& areas, int depth) const {
    areas.insert(areas.end(), formula.areas.begin(), formula.areas.end());
    if (depth == deepest_names) return;
    for (const std::uint32_t name : formula.names)
        if (names_[name].formula) add_precedents(names_[name].formula, areas, depth + 1);
}

std::vector<Area> Workbook::precedents(CellAddress at) {
    std::vector<Area> areas;
    if (const Formula* const formula = this->formula(at)) add_precedents(*formula, areas, 0);
    return areas;
}

std::vector<CellAddress> Workbook::dependents(CellAddress at) {
    if (!linked_) link_all();
    std::vector<CellAddress> cells;
    marking_ = false;
    sheets_[at.sheet].readers.visit(Area(at), ++round_, [&](const Node* reader) {
        if (reader->formula) cells.push_back(reader->target.first());
    });
    std::sort(cells.begin(), cells.end(), before);
    cells.erase(std::unique(cells.begin(), cells.end()), cells.end());
    return cells;
}

std::size_t Workbook::formula_count() const {
    return static_cast<std::size_t>(std::count_if(formulas_.begin(), formulas_.end(),
                                                  [](const Node* node) { return static_cast<bool>(node->formula); }));
}

// --- Who reads what -------------------------------------------------------------------------------------------------

void Workbook::link_all() {
    for (Sheet& sheet : sheets_) sheet.readers.clear();
    linked_ = true;
    for (Node* const node : formulas_)
        if (node->formula)
            link(node->formula, 0, [&](const Area& area) { sheets_[area.sheet].readers.add_later(area, *node); });
    for (Sheet& sheet : sheets_) sheet.readers.settle();
}

void Workbook::link(Node& node) {
    link(node.formula, 0, [&](const Area& area) { sheets_[area.sheet].readers.add(area, node); });
}

/// Calls add(area) for what a formula refers to, also by names.
template <class Add>
void Workbook::link(const Formula& formula, int depth, Add add) {
    for (const Area& area : formula.areas) add(area);
    if (depth == deepest_names) return;
    for (const std::uint32_t name : formula.names)
        if (names_[name].formula) link(names_[name].formula, depth + 1, add);
}

namespace {

/// Areas still to be looked at, neighbours in a column as one.
class Frontier {
  public:
    void add(const Area& area) {
        constexpr std::size_t looked_at = 16;
        for (std::size_t i = areas_.size(); i > 0 && i + looked_at > areas_.size(); --i) {
            Area& known = areas_[i - 1];
            if (known.last_row + 1 != area.first_row || known.first_column != area.first_column ||
                known.last_column != area.last_column || known.sheet != area.sheet)
                continue;
            known.last_row = area.last_row;
            return;
        }
        areas_.push_back(area);
    }
    bool take(Area& area) {
        if (areas_.empty()) return false;
        area = areas_.back();
        areas_.pop_back();
        return true;
    }

  private:
    std::vector<Area> areas_;
};

} // namespace

/// Marks what depends on the cells of an area.
void Workbook::touch(const Area& changed) {
    if (!linked_) return;
    if (!marking_) ++round_;
    marking_ = true;
    Frontier frontier;
    Area area = changed;
    do
        sheets_[area.sheet].readers.visit(area, round_, [&](Node* reader) {
            if (reader->state == Node::computing) reader->again = true;
            if ((reader->state != Node::clean && reader->state != Node::deferred) || !reader->formula) return;
            reader->state = Node::dirty;
            enlist(*reader);
            forget_known(reader->filled());
            frontier.add(reader->filled());
        });
    while (frontier.take(area));
}

void Workbook::mark_dirty(CellAddress at) {
    prepare_change();
    Cell* const cell = sheets_[at.sheet].grid.find(at.row, at.column);
    if (cell != nullptr && cell->node != nullptr && cell->node->formula) mark_dirty(*cell->node);
}

void Workbook::mark_dirty(Node& node) {
    forget_known(node.filled());
    touch(node.filled());
    node.state = Node::dirty;
    enlist(node);
}

// --- Calculation ----------------------------------------------------------------------------------------------------

Value Workbook::value(CellAddress at) {
    Cell* const cell = sheets_[at.sheet].grid.find(at.row, at.column);
    if (cell == nullptr) return {};
    if (cell->node != nullptr && cell->node->state != Node::clean) {
        const Calculator::Entry entry(calculator_);
        settle(*cell->node);
    }
    return cell->value;
}

Value Workbook::evaluate(const Formula& formula, const Area& caller) {
    calculator_.forget_explanations();
    const Calculator::Entry entry(calculator_);
    for (;;) {
        try {
            return calculator_.run(formula, caller);
        } catch (const TooDeep& deep) {
            settle(*deep.node);
        } catch (const NotReady&) {
            return Value::uncalculated();
        }
    }
}

Value Workbook::look_up(const Value& value) {
    const Calculator::Entry entry(calculator_);
    for (;;) {
        try {
            return calculator_.looked_up(value);
        } catch (const TooDeep& deep) {
            settle(*deep.node);
        } catch (const NotReady&) {
            return Value::uncalculated();
        }
    }
}

std::vector<std::string> Workbook::undefined_names(const Formula& formula) const {
    std::vector<std::string> names;
    for (const std::uint32_t name : formula.names)
        if (!names_[name].formula) names.push_back(valid_utf8(names_[name].name));
    return names;
}

Value Workbook::read_name(std::uint32_t number) {
    Name& name = names_[number];
    if (!name.formula) return Value::error(xlerrName, "unknown name \"" + valid_utf8(name.name) + "\"");
    if (name.busy) return Value::error(xlerrName, "the name \"" + valid_utf8(name.name) + "\" stands for itself");
    struct Busy {
        bool& flag;
        explicit Busy(bool& flag) : flag(flag) { flag = true; }
        ~Busy() { flag = false; }
    } busy(name.busy);
    return calculator_.run(name.formula, calculator_.caller());
}

void Workbook::not_ready() {
    abandoned_as_ = Node::deferred;
    throw NotReady{};
}

/// The value of a cell that is not calculated yet, for the formula that reads it.
const Value& Workbook::settle_for_reader(Cell& cell) {
    Node& node = *cell.node;
    switch (node.state) {
    case Node::computing:
    case Node::waiting:
        report_cycle(node);
        return cycle_value_;
    case Node::deferred:
        not_ready();
    default:
        break;
    }
    abandoned_as_ = Node::dirty;
    if (calculator_.in_function()) throw Uncalculated{node.target};
    calculator_.check_stack(node);
    calculate(node);
    return cell.value;
}

void Workbook::calculate(Node& node) {
    // An exception leaves through many of these at once, so they hold no handler.
    class Attempt {
      public:
        Attempt(Workbook& book, Node& node) : book_(book), node_(node) {
            node_.state = Node::computing;
            node_.cyclic = false;
            book_.path_.push_back(&node_);
        }
        ~Attempt() {
            book_.path_.pop_back();
            if (node_.state != Node::computing) return;
            node_.state = book_.abandoned_as_;
            if (node_.state == Node::deferred) book_.store(node_, Value::uncalculated());
        }

      private:
        Workbook& book_;
        Node& node_;
    } attempt(*this, node);

    marking_ = false;
    Value result = calculator_.run(node.formula, node.target);
    if (node.cyclic) result = cycle_value_;
    if (!node.is_array) {
        if (node.formula.fill == Fill::intersect && result.is_many())
            result = calculator_.intersected(result, node.target.first(), true);
        if (result.is(Type::area)) result = calculator_.looked_up(result);
        // A formula that shows nothing but an empty cell shows zero.
        if (result.is_blank()) result = Value::number(0.0);
    } else if (result.is(Type::area)) {
        result = calculator_.looked_up(result);
    }
    store(node, std::move(result));
    node.state = Node::clean;
    node.order = ++calculations_;
    calculated_ = true;
    if (!node.again) return;
    node.again = false;
    mark_dirty(node);
}

void Workbook::store(Node& node, Value result) {
    const Area& target = node.target;
    const auto settled = [&](Value value) {
        if (value.is_error() && !value.has_origin()) value.set_origin(target.first());
        return value;
    };
    if (!node.is_array) {
        if (result.is(Type::array) || node.spill)
            spill(node, std::move(result));
        else
            node.cell->value = settled(std::move(result));
        return;
    }
    Grid& grid = sheets_[target.sheet].grid;
    for (std::uint32_t row = target.first_row; row <= target.last_row; ++row)
        for (std::uint32_t column = target.first_column; column <= target.last_column; ++column)
            grid.make(row, column).value =
                settled(calculator_.element(result, row - target.first_row, column - target.first_column));
}

/// The cell that keeps an array from an area, or null.
const Cell* Workbook::obstacle(const Node& node, const Area& area) {
    const Cell* found = nullptr;
    sheets_[area.sheet].grid.visit(area, [&](std::uint32_t, std::uint32_t, Cell& cell) {
        const bool own = &cell == node.cell || cell.node == &node;
        const bool filled = cell.node != nullptr && cell.node->formula;
        if (!own && (filled || !cell.value.is(Type::blank))) found = &cell;
        return found == nullptr;
    });
    return found;
}

/// Shows a result in the cell of a formula and an array in the cells below and beside it too.
void Workbook::spill(Node& node, Value result) {
    const CellAddress first = node.target.first();
    const std::uint32_t rows = result.is(Type::array) ? result.rows() : 1;
    const std::uint32_t columns = result.is(Type::array) ? result.columns() : 1;
    Area area = node.target;
    Value blocked;
    if (first.row + rows > max_rows || first.column + columns > max_columns) {
        blocked = Value::error(error_spill, "the array is larger than the sheet");
    } else {
        area.last_row = first.row + rows - 1;
        area.last_column = static_cast<std::uint16_t>(first.column + columns - 1);
        if (obstacle(node, area) != nullptr)
            blocked = Value::error(error_spill, "the cells of " + address_text(area) + " are not empty");
    }
    if (blocked.is_error()) {
        blocked_.push_back(&node);
        result = std::move(blocked);
        area = node.target;
    }
    const bool changes = !(area == node.filled());
    if (changes && node.spill) release_spill(node);
    Grid& grid = sheets_[area.sheet].grid;
    for (std::uint32_t row = area.first_row; row <= area.last_row; ++row)
        for (std::uint32_t column = area.first_column; column <= area.last_column; ++column) {
            Value value = calculator_.element(result, row - area.first_row, column - area.first_column);
            if (value.is_error() && !value.has_origin()) value.set_origin(first);
            if (value.is_blank()) value = Value::number(0.0);
            Cell& cell = grid.make(row, column);
            cell.node = &node;
            cell.value = std::move(value);
        }
    if (!changes) return;
    forget_known(area);
    if (!area.is_cell()) node.spill = std::make_unique<Area>(area);
    // Who read these cells while they were empty reads them again. Two arrays that push each other about end somewhere.
    constexpr std::uint8_t most_changes = 50;
    if (node.spill_changed != recalculations_) node.spill_changes = 0;
    node.spill_changed = recalculations_;
    if (node.spill_changes == most_changes) return;
    ++node.spill_changes;
    if (!linked_ && !area.is_cell()) link_all(); // also in the first calculation
    touch(area);
}

/// Calculates formulas in the order in which they come. Those that wait for something go to another list.
void Workbook::settle_all(const std::vector<Pending>& list, std::vector<Pending>& waiting, std::size_t& done) {
    constexpr std::size_t ahead = 4; // memory is asked for before its turn comes
    const std::size_t all = done + list.size();
    const auto take = [&](Node& node) {
        if (++done % 512 == 0 && progress) progress(done, all);
        node.listed = false;
        if (node.state == Node::deferred) node.state = Node::dirty;
        return node.state == Node::dirty;
    };
    const auto check = [&](Node& node) {
        if (node.state == Node::deferred) waiting.push_back({node.order, &node});
    };
    for (std::size_t i = 0; i < list.size(); ++i) {
        try { // once for many, since most need no help
            for (; i < list.size(); ++i) {
                if (i + 2 * ahead < list.size()) {
                    const char* const next = reinterpret_cast<const char*>(list[i + 2 * ahead].node);
                    for (std::size_t at = 0; at < sizeof(Node); at += 64) __builtin_prefetch(next + at);
                    list[i + ahead].node->formula.prefetch();
                    __builtin_prefetch(list[i + ahead].node->cell);
                }
                Node& node = *list[i].node;
                if (take(node)) calculate(node);
            }
        } catch (const TooDeep&) {
            settle(*list[i].node);
            check(*list[i].node);
        } catch (const NotReady&) {
            check(*list[i].node);
        }
    }
}

/// Calculates a cell and whatever it needs, however deep that is.
void Workbook::settle(Node& root) {
    std::vector<Node*> waiting{&root};
    while (!waiting.empty()) {
        Node& node = *waiting.back();
        if (node.state == Node::clean || node.state == Node::deferred) {
            waiting.pop_back();
            continue;
        }
        try {
            calculate(node);
        } catch (const TooDeep& deep) {
            node.state = Node::waiting;
            settle_from_below(*deep.node);
            waiting.push_back(deep.node);
        } catch (const NotReady&) {}
    }
}

/// Calculates what a formula refers to before the formula, so that no calculation has to go deep. What it cannot
/// calculate this way, as a circle, it leaves.
void Workbook::settle_from_below(Node& root) {
    std::vector<Node*> stack{&root};
    while (!stack.empty()) {
        Node& node = *stack.back();
        if (node.state == Node::dirty && !node.entered) {
            node.entered = true;
            push_dirty(node.formula, stack, 0);
            continue;
        }
        stack.pop_back();
        node.entered = false;
        if (node.state != Node::dirty) continue;
        try {
            calculate(node);
        } catch (const TooDeep&) {
        } catch (const NotReady&) {}
    }
}

/// Appends the formulas to be calculated to which a formula refers.
void Workbook::push_dirty(const Formula& formula, std::vector<Node*>& nodes, int depth) {
    for (const Area& area : formula.areas)
        sheets_[area.sheet].grid.visit(area, [&](std::uint32_t, std::uint32_t, Cell& cell) {
            if (cell.node != nullptr && cell.node->state == Node::dirty && !cell.node->entered)
                nodes.push_back(cell.node);
            return true;
        });
    if (depth == deepest_names) return;
    for (const std::uint32_t name : formula.names)
        if (names_[name].formula) push_dirty(names_[name].formula, nodes, depth + 1);
}

void Workbook::report_cycle(Node& node) {
    const bool reported = node.cyclic;
    node.cyclic = true;
    const auto start = std::find(path_.begin(), path_.end(), &node);
    const bool whole = start != path_.end(); // else the cells between are not on the path any more
    const auto first = whole ? start + 1 : path_.begin();
    for (auto member = first; member != path_.end(); ++member) (*member)->cyclic = true;
    if (reported) return;
    constexpr std::ptrdiff_t most_shown = 12;
    std::string text = "circular reference: " + address_text(node.target) + (whole ? "" : " -> ...");
    for (auto member = first; member != path_.end(); ++member) {
        if (member - first == most_shown && path_.end() - member > 2) {
            text += " -> ...";
            member = path_.end() - 2;
        }
        text += " -> " + address_text((*member)->target);
    }
    cycles_.push_back({node.target.first(), text + " -> " + address_text(node.target)});
}

void Workbook::recalculate() {
    ++recalculations_;
    calculator_.forget_explanations();
    for (Node* const node : volatile_)
        if (node->formula && node->formula.is_volatile && node->state == Node::clean) mark_dirty(node->target.first());
    const Calculator::Entry entry(calculator_);
    cycles_.erase(std::remove_if(cycles_.begin(), cycles_.end(),
                                 [&](const Problem& problem) {
                                     const Cell* const cell =
                                         sheets_[problem.cell.sheet].grid.find(problem.cell.row, problem.cell.column);
                                     return cell == nullptr || cell->node == nullptr ||
                                            cell->node->state != Node::clean;
                                 }),
                  cycles_.end());
    // Formulas that waited for something are tried again for as long as others got what they waited for. Arrays that
    // take up new cells send those who read these back into the list.
    std::vector<Pending> left, waiting;
    for (std::size_t done = 0; !left.empty() || !pending_.empty();) {
        left.insert(left.end(), pending_.begin(), pending_.end());
        pending_.clear();
        // In the order of the last time most find their precedents calculated.
        const auto earlier = [](const Pending& a, const Pending& b) { return a.order < b.order; };
        if (!std::is_sorted(left.begin(), left.end(), earlier)) std::sort(left.begin(), left.end(), earlier);
        const std::size_t tried = left.size();
        waiting.clear();
        settle_all(left, waiting, done);
        left.swap(waiting);
        if (pending_.empty() && left.size() == tried) break;
    }
    for (const Pending& pending : left) enlist(*pending.node);
}

void Workbook::recalculate_all() {
    for (Sheet& sheet : sheets_) sheet.forget();
    for (Node* const node : formulas_) {
        if (!node->formula) continue;
        node->state = Node::dirty;
        enlist(*node);
    }
    recalculate();
}

int Workbook::run(int (*command)()) {
    const Calculator::Entry entry(calculator_);
    return command();
}

std::vector<CellError> Workbook::errors() {
    std::vector<CellError> list;
    for (std::uint16_t sheet = 0; sheet < sheet_count(); ++sheet)
        if (const std::optional<Area> used = used_area(sheet))
            sheets_[sheet].grid.visit(*used, [&](std::uint32_t row, std::uint32_t column, Cell& cell) {
                if (!cell.value.is_error()) return true;
                const CellAddress at{row, static_cast<std::uint16_t>(column), sheet};
                const std::string_view reason = cell.value.reason();
                list.push_back({at, cell.value.error(),
                                reason.empty() ? error_meaning(cell.value.error()) : std::string(reason),
                                cell.value.has_origin() ? cell.value.origin() : at});
                return true;
            });
    return list;
}

std::vector<Problem> Workbook::problems() const {
    std::vector<Problem> problems = cycles_;
    for (const Node* const node : formulas_) {
        if (!node->formula) continue;
        const CellAddress cell = node->target.first();
        std::set<std::string> reported;
        for (const std::string& what : node->formula.unknown)
            if (reported.insert(what).second) problems.push_back({cell, what});
        for (const std::string& name : undefined_names(node->formula))
            problems.push_back({cell, "unknown name \"" + name + "\""});
        if (node->state == Node::deferred)
            problems.push_back({cell, "not calculated: it waits for a value that nothing sets"});
    }
    std::stable_sort(problems.begin(), problems.end(),
                     [](const Problem& a, const Problem& b) { return before(a.cell, b.cell); });
    return problems;
}

} // namespace qx::sheet
