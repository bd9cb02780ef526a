// A short text kept inline: a cell type for labels, without heap use.
#pragma once

#include <cassert>
#include <string>

namespace qx {

class ministring {
  public:
    static constexpr int capacity = 34; ///< bytes kept; a longer text is cut

    constexpr ministring() = default;
    explicit constexpr ministring(const char* text) {
        for (int i = 0; i < capacity && text[i] != '\0'; ++i) data_[i] = text[i];
    }
    explicit ministring(const std::string& text) : ministring(text.c_str()) {}

    /// The byte at an index from 0; 0 outside the text's bytes.
    constexpr char operator[](int index) const { return index < 0 || index >= capacity ? '\0' : data_[index]; }
    constexpr char first() const { return data_[0]; }
    const char* c_str() const { return data_; }
    std::string str() const { return data_; }

    // Short texts have no order: sorting or comparing them is a programmer's error.
    friend bool operator<(const ministring&, const ministring&) { return refuse(); }
    friend bool operator>(const ministring&, const ministring&) { return refuse(); }
    friend bool operator<=(const ministring&, const ministring&) { return refuse(); }
    friend bool operator>=(const ministring&, const ministring&) { return refuse(); }
    friend bool operator==(const ministring&, const ministring&) { return refuse(); }
    friend bool operator!=(const ministring&, const ministring&) { return refuse(); }

  private:
    static bool refuse() {
        assert(!"comparison of a ministring");
        return false;
    }

    char data_[capacity + 1] = {};
};

} // namespace qx
