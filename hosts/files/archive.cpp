#include "hosts/files/archive.h"

#include "hosts/files/model.h"

#include <memory>
#include <zip.h>

namespace qx::files {

namespace {

[[noreturn]] void fail(zip_error_t& error) {
    const std::string message = zip_error_strerror(&error);
    zip_error_fini(&error);
    throw FileError("the file is damaged or cut short: " + message);
}

zip_source_t* source_of(std::string_view bytes) {
    zip_error_t error;
    zip_error_init(&error);
    zip_source_t* const source = zip_source_buffer_create(bytes.data(), bytes.size(), 0, &error);
    if (source == nullptr) fail(error);
    return source;
}

zip_t* open(zip_source_t* source, int flags) {
    zip_error_t error;
    zip_error_init(&error);
    zip_t* const archive = zip_open_from_source(source, flags, &error);
    if (archive == nullptr) {
        zip_source_free(source);
        fail(error);
    }
    return archive;
}

} // namespace

Archive::Archive(std::string_view bytes) : zip_(open(source_of(bytes), ZIP_RDONLY)) {}

Archive::~Archive() { zip_discard(zip_); }

bool Archive::has(const std::string& name) const { return zip_name_locate(zip_, name.c_str(), 0) >= 0; }

void Archive::read(const std::string& name, const std::function<void(std::string_view)>& take) {
    zip_file_t* const opened = zip_fopen(zip_, name.c_str(), 0);
    if (opened == nullptr) {
        if (const int code = zip_error_code_zip(zip_get_error(zip_));
            code == ZIP_ER_NOPASSWD || code == ZIP_ER_WRONGPASSWD)
            throw FileError("the file is protected by a password; save it without one");
        throw FileError("the file is damaged: \"" + name + "\" is missing in it or cannot be read");
    }
    const std::unique_ptr<zip_file_t, int (*)(zip_file_t*)> part(opened, zip_fclose);
    char piece[65536];
    for (;;) {
        const zip_int64_t size = zip_fread(part.get(), piece, sizeof piece);
        if (size < 0) throw FileError("the file is damaged: \"" + name + "\" cannot be unpacked");
        if (size == 0) return;
        unpacked_ += static_cast<std::uint64_t>(size);
        if (unpacked_ > most_unpacked) throw FileError("the file unpacks to more than 1 GB, which no model needs");
        take({piece, static_cast<std::size_t>(size)});
    }
}

std::string Archive::read(const std::string& name) {
    std::string all;
    read(name, [&](std::string_view piece) { all += piece; });
    return all;
}

void Archive::each(const std::function<void(const std::string&)>& visit) const {
    const zip_int64_t count = zip_get_num_entries(zip_, 0);
    for (zip_int64_t i = 0; i < count; ++i)
        if (const char* const name = zip_get_name(zip_, static_cast<zip_uint64_t>(i), 0)) visit(name);
}

std::string Archive::with_parts(std::string_view bytes, const Parts& parts) {
    // The source is written in place: libzip keeps a buffer of its own for what it writes.
    zip_source_t* const source = source_of(bytes);
    zip_t* const archive = open(source, 0);
    zip_source_keep(source);
    const std::unique_ptr<zip_source_t, void (*)(zip_source_t*)> kept(source, zip_source_free);
    for (const auto& [name, content] : parts) {
        const zip_int64_t index = zip_name_locate(archive, name.c_str(), 0);
        const auto place = static_cast<zip_uint64_t>(index);
        zip_source_t* const part = content ? zip_source_buffer(archive, content->data(), content->size(), 0) : nullptr;
        const bool done = index >= 0 && (content ? part != nullptr && zip_file_replace(archive, place, part, 0) == 0
                                                 : zip_delete(archive, place) == 0);
        if (!done) {
            zip_source_free(part);
            zip_discard(archive);
            throw FileError("\"" + name + "\" cannot be written into the archive");
        }
    }
    if (zip_close(archive) != 0) {
        const std::string message = zip_strerror(archive);
        zip_discard(archive);
        throw FileError("the archive cannot be written: " + message);
    }
    std::string result;
    zip_stat_t stat;
    if (zip_source_stat(source, &stat) != 0 || zip_source_open(source) != 0)
        throw FileError("the archive cannot be written");
    result.resize(stat.size);
    const zip_int64_t size = zip_source_read(source, result.data(), result.size());
    zip_source_close(source);
    if (size != static_cast<zip_int64_t>(result.size())) throw FileError("the archive cannot be written");
    return result;
}

} // namespace qx::files
