#include "hosts/files/child.h"

#include "hosts/files/readers.h"

#include <cerrno>
#include <chrono>
#include <csignal>
#include <cstring>
#include <new>
#include <poll.h>
#include <sys/resource.h>
#include <sys/wait.h>
#include <type_traits>
#include <unistd.h>

namespace qx::files {

namespace {

class Packer {
  public:
    std::string bytes;

    template <class T>
    requires std::is_arithmetic_v<T>
    void put(T value) { bytes.append(reinterpret_cast<const char*>(&value), sizeof value); }
    void put(std::string_view text) {
        put(static_cast<std::uint32_t>(text.size()));
        bytes += text;
    }
    template <class List, class Put>
    void list(const List& items, Put put_item) {
        put(static_cast<std::uint32_t>(items.size()));
        for (const auto& item : items) put_item(item);
    }
};

class Unpacker {
  public:
    explicit Unpacker(std::string_view bytes) : rest_(bytes) {}

    template <class T>
    T get() {
        static_assert(std::is_arithmetic_v<T>);
        T value;
        std::memcpy(&value, take(sizeof value).data(), sizeof value);
        return value;
    }
    bool flag() { return get<std::uint8_t>() != 0; }
    std::string text() { return std::string(take(get<std::uint32_t>())); }
    template <class Get>
    void list(Get get_item) {
        for (std::uint32_t left = get<std::uint32_t>(); left > 0; --left) get_item();
    }
    bool at_end() const { return rest_.empty(); }
    [[noreturn]] static void fail() { throw FileError("the file cannot be read: its reader gave no model"); }

  private:
    std::string_view take(std::size_t size) {
        if (size > rest_.size()) fail();
        const std::string_view taken = rest_.substr(0, size);
        rest_.remove_prefix(size);
        return taken;
    }
    std::string_view rest_;
};

void pack(Packer& packer, const SheetModel& sheet) {
    packer.put(sheet.name);
    packer.put(static_cast<std::uint8_t>(sheet.hidden));
    packer.list(sheet.cells, [&](const Cell& cell) {
        packer.put(cell.row);
        packer.put(cell.column);
        packer.put(cell.format);
        packer.put(cell.formula);
        packer.put(cell.text);
        packer.put(cell.number);
        packer.put(static_cast<std::uint8_t>(cell.kind));
        packer.put(static_cast<std::uint8_t>(cell.spills + 2 * cell.covered));
    });
    packer.list(sheet.arrays, [&](const ArrayFormula& array) {
        packer.put(array.area.first_row);
        packer.put(array.area.first_column);
        packer.put(array.area.last_row);
        packer.put(array.area.last_column);
        packer.put(array.formula);
    });
    packer.list(sheet.widths, [&](const ColumnWidth& width) {
        packer.put(width.first);
        packer.put(width.last);
        packer.put(width.characters);
    });
}

SheetModel unpack_sheet(Unpacker& unpacker, const Model& model, std::uint16_t number) {
    SheetModel sheet;
    sheet.name = unpacker.text();
    sheet.hidden = unpacker.flag();
    unpacker.list([&] {
        Cell cell;
        cell.row = unpacker.get<std::uint32_t>();
        cell.column = unpacker.get<std::uint16_t>();
        cell.format = unpacker.get<std::uint16_t>();
        cell.formula = unpacker.get<std::uint32_t>();
        cell.text = unpacker.get<std::uint32_t>();
        cell.number = unpacker.get<double>();
        const auto kind = unpacker.get<std::uint8_t>(), flags = unpacker.get<std::uint8_t>();
        if (cell.row >= sheet::max_rows || cell.column >= sheet::max_columns || cell.format >= model.formats.size() ||
            cell.formula >= model.texts.size() || cell.text >= model.texts.size() ||
            kind > static_cast<std::uint8_t>(Kind::text) || cell.number - cell.number != 0.0)
            Unpacker::fail();
        cell.kind = static_cast<Kind>(kind);
        if (cell.kind == Kind::error && !(cell.number >= 0.0 && cell.number < 256.0)) Unpacker::fail();
        cell.spills = (flags & 1) != 0;
        cell.covered = (flags & 2) != 0;
        sheet.cells.push_back(cell);
    });
    unpacker.list([&] {
        const auto first_row = unpacker.get<std::uint32_t>();
        const auto first_column = unpacker.get<std::uint16_t>();
        const auto last_row = unpacker.get<std::uint32_t>();
        const auto last_column = unpacker.get<std::uint16_t>();
        const auto formula = unpacker.get<std::uint32_t>();
        if (first_row > last_row || last_row >= sheet::max_rows || first_column > last_column ||
            last_column >= sheet::max_columns || formula >= model.texts.size())
            Unpacker::fail();
        sheet.arrays.push_back({{number, first_row, first_column, last_row, last_column}, formula});
    });
    unpacker.list([&] {
        ColumnWidth width;
        width.first = unpacker.get<std::uint16_t>();
        width.last = unpacker.get<std::uint16_t>();
        width.characters = unpacker.get<double>();
        if (width.first > width.last || width.last >= sheet::max_columns || !(width.characters >= 0.0) ||
            width.characters > 255.0)
            Unpacker::fail();
        sheet.widths.push_back(width);
    });
    return sheet;
}

// --- The processes
// ----------------------------------------------------------------------------------------------------

// The sanitizers reserve far more addresses than they use.
#if defined(__SANITIZE_ADDRESS__)
constexpr bool limits_memory = false;
#elif defined(__has_feature)
constexpr bool limits_memory = !__has_feature(address_sanitizer);
#else
constexpr bool limits_memory = true;
#endif

void limit(int what, std::size_t most) {
    const rlimit both{most, most};
    setrlimit(static_cast<__rlimit_resource_t>(what), &both);
}

bool write_all(int to, std::string_view bytes) {
    while (!bytes.empty()) {
        const ssize_t written = write(to, bytes.data(), bytes.size());
        if (written < 0 && errno == EINTR) continue;
        if (written <= 0) return false;
        bytes.remove_prefix(static_cast<std::size_t>(written));
    }
    return true;
}

constexpr char good = 'm', bad = 'e'; // the first byte of an answer: a model, or a message

/// The work of the child: the answer goes into the pipe.
[[noreturn]] void read_in_child(std::string_view bytes, const Limits& limits, int answer) {
    if (limits_memory) limit(RLIMIT_AS, limits.memory);
    limit(RLIMIT_CPU, static_cast<std::size_t>(limits.seconds));
    limit(RLIMIT_FSIZE, 0); // it writes no file
    limit(RLIMIT_CORE, 0);
    std::string reply(1, good);
    try {
        const std::string model = packed(read_model(bytes));
        if (write_all(answer, reply) && write_all(answer, model)) _exit(0);
        _exit(1);
    } catch (const FileError& error) {
        reply = bad + std::string(error.what());
    } catch (const std::bad_alloc&) {
        reply = bad + std::string("the file needs more memory than a workbook may take");
    } catch (const std::exception& error) {
        reply = bad + std::string("the file cannot be read: ") + error.what();
    }
    write_all(answer, reply);
    _exit(0);
}

/// What a child writes until it ends. False if it takes too long or says too much.
bool collect(int from, const Limits& limits, std::string& reply) {
    using clock = std::chrono::steady_clock;
    const auto end = clock::now() + std::chrono::seconds(4 * limits.seconds);
    char piece[65536];
    for (;;) {
        const auto left = std::chrono::duration_cast<std::chrono::milliseconds>(end - clock::now()).count();
        pollfd waiting{from, POLLIN, 0};
        const int ready = left <= 0 ? 0 : poll(&waiting, 1, static_cast<int>(left));
        if (ready < 0 && errno == EINTR) continue;
        if (ready <= 0) return false;
        const ssize_t size = read(from, piece, sizeof piece);
        if (size < 0 && errno == EINTR) continue;
        if (size <= 0) return size == 0;
        reply.append(piece, static_cast<std::size_t>(size));
        if (reply.size() > limits.memory) return false;
    }
}

} // namespace

std::string packed(const Model& model) {
    Packer packer;
    packer.list(model.texts, [&](const std::string& text) { packer.put(text); });
    packer.list(model.formats, [&](const std::string& format) { packer.put(format); });
    packer.put(static_cast<std::uint32_t>(model.sheets.size()));
    for (const SheetModel& sheet : model.sheets) pack(packer, sheet);
    packer.list(model.names, [&](const NameModel& name) {
        packer.put(name.name);
        packer.put(name.formula);
        packer.put(name.sheet);
    });
    packer.list(model.notes, [&](const Note& note) {
        packer.put(note.where);
        packer.put(note.message);
    });
    packer.list(model.not_kept, [&](const std::string& what) { packer.put(what); });
    return std::move(packer.bytes);
}

Model unpacked(std::string_view bytes) {
    Unpacker unpacker(bytes);
    Model model;
    model.texts.clear();
    model.formats.clear();
    unpacker.list([&] { model.texts.push_back(unpacker.text()); });
    unpacker.list([&] { model.formats.push_back(unpacker.text()); });
    if (model.texts.empty() || !model.texts[0].empty() || model.formats.empty()) Unpacker::fail();
    const auto sheets = unpacker.get<std::uint32_t>();
    if (sheets == 0 || sheets > most_sheets) Unpacker::fail();
    for (std::uint32_t i = 0; i < sheets; ++i)
        model.sheets.push_back(unpack_sheet(unpacker, model, static_cast<std::uint16_t>(i)));
    unpacker.list([&] {
        NameModel name;
        name.name = unpacker.text();
        name.formula = unpacker.text();
        name.sheet = unpacker.get<int>();
        if (name.sheet < -1 || name.sheet >= static_cast<int>(sheets)) Unpacker::fail();
        model.names.push_back(std::move(name));
    });
    unpacker.list([&] {
        std::string where = unpacker.text();
        model.notes.push_back({std::move(where), unpacker.text()});
    });
    unpacker.list([&] { model.not_kept.push_back(unpacker.text()); });
    if (!unpacker.at_end()) Unpacker::fail();
    return model;
}

Model read_workbook(std::string_view bytes, const Limits& limits) {
    int ends[2];
    if (pipe(ends) != 0) throw FileError(std::string("no process can be started: ") + std::strerror(errno));
    const pid_t child = fork();
    if (child < 0) {
        close(ends[0]);
        close(ends[1]);
        throw FileError(std::string("no process can be started: ") + std::strerror(errno));
    }
    if (child == 0) {
        close(ends[0]);
        read_in_child(bytes, limits, ends[1]);
    }
    close(ends[1]);
    std::string reply;
    const bool whole = collect(ends[0], limits, reply);
    close(ends[0]);
    if (!whole) kill(child, SIGKILL);
    int status = 0;
    while (waitpid(child, &status, 0) < 0 && errno == EINTR) {}
    if (!whole) throw FileError("the file takes too long to read, or too much memory");
    if (WIFSIGNALED(status))
        throw FileError(WTERMSIG(status) == SIGXCPU || WTERMSIG(status) == SIGKILL
                            ? "the file takes too long to read"
                            : std::string("the file cannot be read: its reader stopped (") +
                                  strsignal(WTERMSIG(status)) + ")");
    if (reply.empty() || (reply[0] != good && reply[0] != bad)) Unpacker::fail();
    const std::string_view content = std::string_view(reply).substr(1);
    if (reply[0] == bad) throw FileError(std::string(content));
    return unpacked(content);
}

} // namespace qx::files
