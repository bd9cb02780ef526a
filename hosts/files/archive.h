// The parts of a zip archive, read within limits and written again.
#pragma once

#include <cstdint>
#include <functional>
#include <map>
#include <optional>
#include <string>
#include <string_view>

struct zip;

namespace qx::files {

inline constexpr std::uint64_t most_unpacked = 1u << 30; ///< bytes of all parts together

class Archive {
  public:
    /// The bytes must outlive the archive. Throws FileError if they are no archive that can be read.
    explicit Archive(std::string_view bytes);
    ~Archive();
    Archive(const Archive&) = delete;
    Archive& operator=(const Archive&) = delete;

    bool has(const std::string& name) const;
    /// Calls take(bytes) for pieces of a part. Throws FileError for a broken part, or if all together is too much.
    void read(const std::string& name, const std::function<void(std::string_view)>& take);
    std::string read(const std::string& name);
    /// Calls visit(name) for each part.
    void each(const std::function<void(const std::string&)>& visit) const;

    /// What becomes of parts: other contents, or none for one that goes.
    using Parts = std::map<std::string, std::optional<std::string>>;
    /// The archive with some of its parts replaced.
    static std::string with_parts(std::string_view bytes, const Parts& parts);

  private:
    zip* zip_ = nullptr;
    std::uint64_t unpacked_ = 0;
};

} // namespace qx::files
