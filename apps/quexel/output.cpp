#include "apps/quexel/output.h"

#include "hosts/sheet/calendar.h"
#include "hosts/sheet/text.h"

#include <algorithm>
#include <nlohmann/json.hpp>

namespace qx::app {

using sheet::Area;
using sheet::Type;
using sheet::Value;

Value evaluate(sheet::Workbook& book, const sheet::Formula& formula) {
    const Area caller(sheet::CellAddress{});
    return book.look_up(book.evaluate(formula, caller));
}

std::string json_string(std::string_view text) {
    using nlohmann::json;
    return json(std::string(text)).dump(-1, ' ', false, json::error_handler_t::replace);
}

std::string json_text(const Value& value) {
    switch (value.type()) {
    case Type::number:
        return sheet::shortest_text(value.number());
    case Type::boolean:
        return value.boolean() ? "true" : "false";
    case Type::text:
        return json_string(value.text());
    case Type::error:
        return std::string("{\"error\":\"") + sheet::error_text(value.error()) + "\"}";
    case Type::uncalculated:
        return "{\"uncalculated\":true}";
    case Type::array: {
        std::string text = "{\"rows\":" + std::to_string(value.rows()) +
                           ",\"columns\":" + std::to_string(value.columns()) + ",\"cells\":[";
        for (std::uint32_t row = 0; row < value.rows(); ++row)
            for (std::uint32_t column = 0; column < value.columns(); ++column) {
                if (text.back() != '[') text += ',';
                text += json_text(value.cell(row, column));
            }
        return text + "]}";
    }
    default:
        return "{\"empty\":true}";
    }
}

std::string plain_text(const Value& value, bool dates, int digits) {
    if (dates && value.is_date() && value.number() >= 1.0 && value.number() < sheet::last_serial + 1.0)
        return sheet::date_text(value.number());
    return sheet::valid_utf8(sheet::display_text(value, digits));
}

Field field_of(const Value& value, bool dates, int digits) {
    return {plain_text(value, dates, digits), value.is_number()};
}

void print_table(std::ostream& out, const std::vector<std::vector<Field>>& rows) {
    std::vector<std::size_t> widths;
    for (const auto& row : rows) {
        widths.resize(std::max(widths.size(), row.size()));
        for (std::size_t i = 0; i < row.size(); ++i)
            widths[i] = std::max(widths[i], sheet::character_count(row[i].text));
    }
    std::string line;
    for (const auto& row : rows) {
        line.clear();
        for (std::size_t i = 0; i < row.size(); ++i) {
            const std::string padding(widths[i] - sheet::character_count(row[i].text), ' ');
            if (i > 0) line += "  ";
            line += row[i].to_the_right ? padding + row[i].text : row[i].text + padding;
        }
        line.erase(line.find_last_not_of(' ') + 1);
        out << line << '\n';
    }
}

namespace {

/// Calls visit(node, depth) in the order in which the lines stand.
template <class Visit>
void each_node(const TraceTree& tree, Visit visit) {
    struct Place {
        const std::vector<TraceNode>* nodes;
        std::size_t next;
    };
    std::vector<Place> path{{&tree.roots, 0}};
    while (!path.empty()) {
        Place& place = path.back();
        if (place.next == place.nodes->size()) {
            path.pop_back();
            continue;
        }
        const TraceNode& node = (*place.nodes)[place.next++];
        visit(node, path.size() - 1);
        path.push_back({&node.children, 0});
    }
}

} // namespace

void print_tree(std::ostream& out, const TraceTree& tree) {
    constexpr std::size_t widest_name = 56, widest_value = 24;
    std::size_t name_width = 0, value_width = 0;
    each_node(tree, [&](const TraceNode& node, std::size_t depth) {
        name_width = std::max(name_width, std::min(widest_name, 2 * depth + sheet::character_count(node.name)));
        value_width = std::max(value_width, std::min(widest_value, sheet::character_count(node.value)));
    });
    const auto padded = [](std::string text, std::size_t width) {
        const std::size_t length = sheet::character_count(text);
        return text.append(length < width ? width - length : 0, ' ');
    };
    each_node(tree, [&](const TraceNode& node, std::size_t depth) {
        std::string line = padded(std::string(2 * depth, ' ') + sheet::valid_utf8(node.name), name_width) + "  " +
                           padded(sheet::valid_utf8(node.value), value_width) + "  " +
                           sheet::valid_utf8(node.description);
        line.erase(line.find_last_not_of(' ') + 1);
        std::replace(line.begin(), line.end(), '\n', ' ');
        std::replace(line.begin(), line.end(), '\r', ' ');
        out << line << '\n';
    });
    out << tree.summary << '\n';
}

} // namespace qx::app
