// Any bytes as a workbook file: the readers give a model or refuse it, and the model survives its way between the
// processes. The parts of an archive are too well packed to be reached by chance, so that the bytes are also taken for
// a sheet, for the styles, for the texts and for the content of an .ods file.
#include "hosts/files/child.h"
#include "hosts/files/formula_text.h"
#include "hosts/files/readers.h"
#include "hosts/files/xlsx_copy.h"

#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <map>
#include <memory>
#include <string_view>
#include <zip.h>

namespace {

using namespace qx::files;

std::string archive_of(const std::map<std::string, std::string>& parts) {
    zip_error_t error;
    zip_source_t* const source = zip_source_buffer_create(nullptr, 0, 0, &error);
    zip_source_keep(source);
    zip_t* const archive = zip_open_from_source(source, ZIP_TRUNCATE, &error);
    for (const auto& [name, content] : parts) {
        const zip_int64_t index = zip_file_add(
            archive, name.c_str(), zip_source_buffer(archive, content.data(), content.size(), 0), ZIP_FL_OVERWRITE);
        zip_set_file_compression(archive, static_cast<zip_uint64_t>(index), ZIP_CM_STORE, 0);
    }
    if (zip_close(archive) != 0) std::abort();
    zip_stat_t stat;
    zip_source_stat(source, &stat);
    std::string bytes(stat.size, '\0');
    zip_source_open(source);
    zip_source_read(source, bytes.data(), bytes.size());
    zip_source_close(source);
    zip_source_free(source);
    return bytes;
}

const std::map<std::string, std::string> book = {
    {"[Content_Types].xml", "<Types/>"},
    {"_rels/.rels", "<Relationships><Relationship Id='a' Type='x/officeDocument' Target='xl/workbook.xml'/>"
                    "</Relationships>"},
    {"xl/workbook.xml", "<workbook><sheets><sheet name='S' id='a'/></sheets></workbook>"},
    {"xl/_rels/workbook.xml.rels", "<Relationships><Relationship Id='a' Type='x/worksheet' Target='s.xml'/>"
                                   "<Relationship Id='b' Type='x/styles' Target='y.xml'/>"
                                   "<Relationship Id='c' Type='x/sharedStrings' Target='t.xml'/></Relationships>"},
    {"xl/s.xml", "<worksheet><sheetData/></worksheet>"},
    {"xl/y.xml", "<styleSheet/>"},
    {"xl/t.xml", "<sst/>"},
};

void read(std::string_view bytes) {
    try {
        if (type_of(bytes) == FileType::csv) return;
        const std::string sent = packed(read_model(bytes));
        if (packed(unpacked(sent)) != sent) std::abort();
        if (type_of(bytes) != FileType::xlsx) return;
        Changes changes;
        changes.wanted = {{0, 0, 0}, {0, 3, 0}, {4, 1, 0}, {70, 2, 0}};
        changes.content = [](qx::sheet::CellAddress cell, CellContent& content) {
            content.value.kind = Kind::number;
            content.value.number = cell.row;
            content.entered = cell.column % 3 == 0;
            content.filled = qx::sheet::Area(cell);
            return cell.column % 2 == 0;
        };
        std::string why;
        const std::string copy = with_changes(bytes, changes, why);
        if (copy.empty() == why.empty()) std::abort();
        if (!copy.empty()) read_model(copy);
    } catch (const FileError&) {}
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    if (size == 0) return 0;
    const std::string rest(reinterpret_cast<const char*>(data) + 1, size - 1);
    static constexpr const char* parts[] = {"xl/s.xml", "xl/y.xml", "xl/t.xml", "xl/workbook.xml"};
    const unsigned kind = data[0] % 8;
    if (kind < 4) {
        auto changed = book;
        changed[parts[kind]] = rest;
        read(archive_of(changed));
    } else if (kind == 4) {
        read(archive_of({{"content.xml", rest}}));
    } else if (kind == 5) {
        read(rest);
    } else if (kind == 6) {
        try {
            if (packed(unpacked(rest)) != rest) unpacked(packed(unpacked(rest)));
        } catch (const FileError&) {}
    } else {
        from_xlsx(rest);
        from_xlsx(to_xlsx(rest));
        from_openformula(rest);
    }
    return 0;
}
