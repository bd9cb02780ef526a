// XML read in pieces, without anything that a hostile file could make large: no document types, no entities but the
// five, no deep nesting; and text as XML and HTML hold it.
#pragma once

#include <cstddef>
#include <string>
#include <string_view>

namespace qx::files {

/// Adds a character of a string to XML or HTML: <, >, & and " as entities.
void append_escaped(std::string& markup, char c);

/// The attributes of an element, by the name without its prefix; names of the extensions of LibreOffice keep
/// "calcext:".
class Attributes {
  public:
    explicit Attributes(const char** list) : list_(list) {}
    /// The value, or null if there is none.
    const char* find(std::string_view name) const;
    std::string_view get(std::string_view name) const {
        const char* const value = find(name);
        return value == nullptr ? std::string_view() : std::string_view(value);
    }
    bool is_true(std::string_view name) const { return get(name) == "1" || get(name) == "true"; }
    const char** list() const { return list_; } ///< "namespace|name", value, ..., null

  private:
    const char** list_;
};

class XmlHandler {
  public:
    virtual ~XmlHandler() = default;
    virtual void open(std::string_view element, const Attributes& attributes) = 0;
    virtual void close(std::string_view element) = 0;
    virtual void text(std::string_view bytes) = 0;
};

/// Takes a document piece by piece. Throws FileError if it is not well-formed or has a document type.
class XmlParser {
  public:
    XmlParser(XmlHandler& handler, std::string_view part);
    ~XmlParser();
    XmlParser(const XmlParser&) = delete;
    XmlParser& operator=(const XmlParser&) = delete;
    void take(std::string_view bytes, bool last = false);
    /// Where in the document the present element begins.
    std::size_t position() const;
    /// How long the tag at the position is, 0 for the second event of an empty element.
    std::size_t length() const;

    struct State;

  private:
    State* state_;
};

} // namespace qx::files
