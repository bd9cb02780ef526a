#include "hosts/files/model.h"

#include "hosts/sheet/formula.h"
#include "hosts/sheet/text.h"

#include <algorithm>

namespace qx::files {

FormatKind kind_of_format(std::string_view code) {
    bool days = false, hours = false, minutes = false, percent = false, digits = false, text = false;
    if (code.empty() || sheet::equal_ignoring_case(code, "General")) return FormatKind::general;
    for (std::size_t i = 0; i < code.size(); ++i) {
        const char c = code[i] >= 'A' && code[i] <= 'Z' ? static_cast<char>(code[i] + 32) : code[i];
        if (c == ';') break; // the sections after the first are for other signs
        if (c == '"') {
            i = std::min(code.find('"', i + 1), code.size());
        } else if (c == '\\' || c == '_' || c == '*') {
            ++i;
        } else if (c == '[') {
            const std::size_t end = std::min(code.find(']', i), code.size());
            const std::string inside = sheet::lower_case(code.substr(i + 1, end - i - 1));
            if (!inside.empty() && inside.find_first_not_of(inside[0]) == std::string::npos &&
                std::string_view("hms").find(inside[0]) != std::string_view::npos)
                hours = true;
            i = end;
        } else if (c == 'd' || c == 'y') {
            days = true;
        } else if (c == 'h' || c == 's') {
            hours = true;
        } else if (c == 'm') {
            minutes = true; // or months
        } else if (c == 'g' && code.substr(i).starts_with("General")) {
            i += 6;
        } else {
            percent |= c == '%';
            digits |= c == '0' || c == '#' || c == '?';
            text |= c == '@';
        }
    }
    if (days || (minutes && !hours)) return FormatKind::date;
    if (hours) return FormatKind::time;
    if (percent) return FormatKind::percent;
    if (digits) return FormatKind::number;
    return text ? FormatKind::text : FormatKind::general;
}

std::string quoted_sheet(std::string_view name) {
    const auto plain = [](char c) {
        return (c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z') || (c >= '0' && c <= '9') || c == '_' ||
               (c & 0x80) != 0;
    };
    sheet::Area area;
    if (!name.empty() && std::all_of(name.begin(), name.end(), plain) && !(name[0] >= '0' && name[0] <= '9') &&
        !sheet::read_area(name, 0, area) && name.size() > 2)
        return std::string(name);
    std::string text = "'";
    for (const char c : name) text.append(c == '\'' ? 2 : 1, c);
    return text + "'";
}

std::string place(std::string_view sheet, sheet::CellAddress cell) {
    return quoted_sheet(sheet) + "!" + sheet::address_text(cell);
}

SheetModel& ModelBuilder::add_sheet(std::string_view name) {
    if (model.sheets.size() == most_sheets) throw FileError("the file has more than 1,024 sheets");
    model.sheets.emplace_back().name = sheet::valid_utf8(name.substr(0, 255));
    return model.sheets.back();
}

std::uint32_t ModelBuilder::keep(std::string text) {
    bytes_ += text.size();
    if (bytes_ > most_text) throw FileError("the text of the file needs more than 256 MB");
    model.texts.push_back(std::move(text));
    return static_cast<std::uint32_t>(model.texts.size() - 1);
}

std::uint32_t ModelBuilder::text(std::string_view bytes) {
    constexpr std::size_t worth_sharing = 64, most_shared = 100000;
    if (bytes.empty()) return 0;
    std::string valid = sheet::valid_utf8(bytes.substr(0, 4 * longest_text));
    if (valid.size() > worth_sharing) return keep(std::move(valid));
    if (const auto found = short_texts_.find(valid); found != short_texts_.end()) return found->second;
    if (short_texts_.size() == most_shared) return keep(std::move(valid));
    const std::uint32_t index = keep(valid);
    short_texts_.emplace(std::move(valid), index);
    return index;
}

std::uint32_t ModelBuilder::formula(std::string_view bytes) {
    return bytes.empty() ? 0 : keep(sheet::valid_utf8(bytes.substr(0, 4 * longest_text)));
}

std::uint16_t ModelBuilder::format(std::string_view code) {
    if (code.empty() || code.size() > 255 || code == "General") return 0;
    const auto [place, is_new] = formats_.try_emplace(sheet::valid_utf8(code), 0);
    if (!is_new || model.formats.size() == most_formats) return place->second;
    place->second = static_cast<std::uint16_t>(model.formats.size());
    model.formats.push_back(place->first);
    return place->second;
}

void ModelBuilder::add(const Cell& cell) {
    if (++cells_ > most_cells) throw FileError("the file has more than 16 million cells");
    sheet().cells.push_back(cell);
}

void ModelBuilder::note(sheet::CellAddress cell, std::string message) {
    if (model.notes.size() < most_notes) model.notes.push_back({place(sheet().name, cell), std::move(message)});
}

void ModelBuilder::note_sheet(std::string message) {
    if (model.notes.size() < most_notes) model.notes.push_back({quoted_sheet(sheet().name), std::move(message)});
}

void ModelBuilder::note(std::string message) {
    if (model.notes.size() < most_notes) model.notes.push_back({"", std::move(message)});
}

void ModelBuilder::not_kept(std::string_view what) {
    if (std::find(model.not_kept.begin(), model.not_kept.end(), what) == model.not_kept.end())
        model.not_kept.emplace_back(what);
}

} // namespace qx::files
