#include "hosts/files/safe_file.h"

#include "hosts/files/model.h"

#include <cerrno>
#include <cstring>
#include <fcntl.h>
#include <filesystem>
#include <iostream>
#include <iterator>
#include <sys/stat.h>
#include <unistd.h>

namespace qx::files {

namespace {

[[noreturn]] void fail(const std::string& name, const char* what, int code) {
    throw FileError(name + ": " + what + ": " + std::strerror(code));
}

/// An open file that is closed in any case.
class Descriptor {
  public:
    explicit Descriptor(int number) : number_(number) {}
    ~Descriptor() {
        if (number_ >= 0) close(number_);
    }
    Descriptor(const Descriptor&) = delete;
    Descriptor& operator=(const Descriptor&) = delete;
    int number() const { return number_; }
    int shut() { return close(std::exchange(number_, -1)); }

  private:
    int number_;
};

void write_all(int to, std::string_view bytes, const std::string& name) {
    while (!bytes.empty()) {
        const ssize_t written = write(to, bytes.data(), bytes.size());
        if (written < 0 && errno == EINTR) continue;
        if (written < 0) fail(name, "cannot be written", errno);
        bytes.remove_prefix(static_cast<std::size_t>(written));
    }
}

} // namespace

std::string read_file(const std::string& name) {
    if (name == "-") return std::string(std::istreambuf_iterator<char>(std::cin), {});
    const Descriptor file(open(name.c_str(), O_RDONLY | O_CLOEXEC));
    struct stat about {};
    if (file.number() < 0 || fstat(file.number(), &about) != 0) fail(name, "cannot be read", errno);
    if (S_ISDIR(about.st_mode)) fail(name, "cannot be read", EISDIR);
    constexpr std::size_t most_bytes = 512u << 20;
    std::string bytes;
    char piece[65536];
    for (;;) {
        const ssize_t size = read(file.number(), piece, sizeof piece);
        if (size < 0 && errno == EINTR) continue;
        if (size < 0) fail(name, "cannot be read", errno);
        if (size == 0) return bytes;
        bytes.append(piece, static_cast<std::size_t>(size));
        if (bytes.size() > most_bytes) throw FileError(name + ": cannot be read: it has more than 512 MB");
    }
}

void write_file(const std::string& name, std::string_view bytes) {
    if (name == "-") {
        std::cout << bytes;
        return;
    }
    struct stat about {};
    const bool exists = stat(name.c_str(), &about) == 0;
    if (exists && !S_ISREG(about.st_mode)) {
        const Descriptor file(open(name.c_str(), O_WRONLY | O_CLOEXEC));
        if (file.number() < 0) fail(name, "cannot be written", errno);
        return write_all(file.number(), bytes, name);
    }
    if (exists && access(name.c_str(), W_OK) != 0) fail(name, "cannot be written", errno);
    std::error_code ignored;
    std::filesystem::path target = name;
    if (exists) target = std::filesystem::canonical(target, ignored); // a link stays a link to the new file
    if (ignored) target = name;
    std::string beside = (target.parent_path() / ("." + target.filename().string() + ".XXXXXX")).string();
    Descriptor file(mkostemp(beside.data(), O_CLOEXEC));
    if (file.number() < 0) fail(name, "cannot be written", errno);
    try {
        write_all(file.number(), bytes, name);
        const mode_t mask = umask(0);
        umask(mask);
        if (fchmod(file.number(), exists ? about.st_mode & 07777 : 0666 & ~mask) != 0 || fsync(file.number()) != 0 ||
            file.shut() != 0 || rename(beside.c_str(), target.c_str()) != 0)
            fail(name, "cannot be written", errno);
    } catch (...) {
        unlink(beside.c_str());
        throw;
    }
}

bool same_file(const std::string& a, const std::string& b) {
    struct stat of_a {
    }, of_b{};
    return a != "-" && b != "-" && stat(a.c_str(), &of_a) == 0 && stat(b.c_str(), &of_b) == 0 &&
           of_a.st_dev == of_b.st_dev && of_a.st_ino == of_b.st_ino;
}

} // namespace qx::files
