#include "hosts/files/readers.h"

namespace qx::files {

namespace {

bool is_archive(std::string_view bytes) { return bytes.starts_with("PK\x03\x04") || bytes.starts_with("PK\x05\x06"); }

/// A name as the directory of a compound file holds it, in UTF-16.
std::string wide(std::string_view name) {
    std::string bytes;
    for (const char c : name) bytes.append({c, '\0'});
    return bytes;
}

} // namespace

FileType type_of(std::string_view bytes) {
    if (bytes.starts_with("\xD0\xCF\x11\xE0\xA1\xB1\x1A\xE1")) {
        if (bytes.find(wide("EncryptedPackage")) != std::string_view::npos)
            throw FileError("the file is protected by a password; save it without one");
        throw FileError("the file is in the format of Excel 97 to 2003 (.xls); save it as .xlsx");
    }
    if (bytes.starts_with("%PDF")) throw FileError("the file is a PDF document and no workbook");
    if (!is_archive(bytes)) return FileType::csv;
    Archive archive(bytes);
    if (archive.has("xl/workbook.bin")) throw FileError("the file is a binary workbook (.xlsb); save it as .xlsx");
    if (archive.has("[Content_Types].xml")) return FileType::xlsx;
    if (archive.has("content.xml")) return FileType::ods;
    throw FileError("the file is an archive but no workbook; .xlsx, .ods and .csv files are read");
}

Model read_model(std::string_view bytes) {
    Archive archive(bytes);
    return type_of(bytes) == FileType::xlsx ? read_xlsx(archive) : read_ods(archive);
}

} // namespace qx::files
