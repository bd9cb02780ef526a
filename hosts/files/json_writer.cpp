#include "hosts/files/document.h"

#include "hosts/files/json.h"
#include "hosts/sheet/calendar.h"
#include "hosts/sheet/text.h"

#include <nlohmann/json.hpp>

namespace qx::files {

using sheet::CellAddress;
using sheet::Type;
using sheet::Value;

std::string json_string(std::string_view text) {
    using nlohmann::json;
    return json(std::string(text)).dump(-1, ' ', false, json::error_handler_t::replace);
}

std::string json_text(const Value& value, bool dates) {
    switch (value.type()) {
    case Type::number:
        if (dates && value.is_date() && value.number() >= 1.0 && value.number() < sheet::last_serial + 1.0)
            return json_string(sheet::date_text(value.number()));
        return sheet::shortest_text(value.number());
    case Type::boolean:
        return value.boolean() ? "true" : "false";
    case Type::text:
        return json_string(value.text());
    case Type::error: {
        const std::string_view reason = value.reason();
        return std::string("{\"error\":\"") + sheet::error_text(value.error()) +
               "\",\"reason\":" + json_string(reason.empty() ? sheet::error_meaning(value.error()) : reason) + "}";
    }
    case Type::uncalculated:
        return "{\"uncalculated\":true}";
    case Type::array: {
        std::string text = "{\"rows\":" + std::to_string(value.rows()) +
                           ",\"columns\":" + std::to_string(value.columns()) + ",\"cells\":[";
        for (std::uint32_t row = 0; row < value.rows(); ++row)
            for (std::uint32_t column = 0; column < value.columns(); ++column) {
                if (text.back() != '[') text += ',';
                text += json_text(value.cell(row, column), dates);
            }
        return text + "]}";
    }
    default:
        return "{\"empty\":true}";
    }
}

std::string as_json(Document& document, bool dates) {
    std::string text = "{\"file\":" + json_string(document.name) + ",\n\"sheets\":[";
    sheet::Workbook& book = document.book;
    for (std::uint16_t number = 0; number < book.sheet_count(); ++number) {
        text += (number > 0 ? ",\n" : "\n") + std::string("{\"name\":") + json_string(book.sheet_name(number)) +
                ",\"cells\":{";
        bool first = true;
        if (const std::optional<sheet::Area> used = book.used_area(number))
            book.grid(number).visit(*used, [&](std::uint32_t row, std::uint32_t column, sheet::Cell&) {
                const CellAddress cell{row, static_cast<std::uint16_t>(column), number};
                const Value value = book.value(cell);
                if (value.is_blank()) return true;
                text += (first ? "\n\"" : ",\n\"") + sheet::address_text(cell) + "\":" + json_text(value, dates);
                first = false;
                return true;
            });
        text += "}}";
    }
    text += "],\n\"names\":{";
    const char* separator = "\n";
    for (const sheet::DefinedName& name : book.names()) {
        text += separator + json_string(name.name) + ":" + json_string(name.text);
        separator = ",\n";
    }
    text += "},\n\"errors\":[";
    separator = "\n";
    for (const sheet::CellError& error : book.errors()) {
        text += separator + std::string("{\"cell\":") + json_string(document.place(error.cell)) + ",\"error\":\"" +
                sheet::error_text(error.code) + "\",\"reason\":" + json_string(error.reason) +
                ",\"from\":" + json_string(document.place(error.origin)) + "}";
        separator = ",\n";
    }
    text += "],\n\"problems\":[";
    separator = "\n";
    for (const Note& note : document.notes) {
        text += separator + std::string("{\"where\":") + json_string(note.where) +
                ",\"message\":" + json_string(note.message) + "}";
        separator = ",\n";
    }
    return text + "]}\n";
}

} // namespace qx::files
