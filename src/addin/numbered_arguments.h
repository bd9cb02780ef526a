// Arguments of one kind that a function takes several times: Item1, Item2, Item3 ...
#pragma once

#include "addin/function.h"

#include <string_view>

namespace qx::worksheet {

/// An argument that occurs once for each number up to `most`: its name and help with a '#' in the number's place.
template <int most>
class Numbered {
  public:
    constexpr Numbered(std::string_view name, std::string_view help, const Preset& preset = {Preset::empty})
        : preset_(preset) {
        for (int n = 1; n <= most; ++n) {
            fill(names_[n], name, n);
            fill(help_[n], help, n);
        }
    }
    constexpr Argument number(int n) const { return {names_[n], help_[n], preset_}; }
    /// The one that must be given.
    constexpr Argument required(int n) const { return {names_[n], help_[n]}; }
    /// Those from one number to another, at most eight.
    constexpr ArgumentGroup numbers(int from, int to) const {
        ArgumentGroup group{};
        for (int n = from; n <= to; ++n) group.items[group.count++] = number(n);
        return group;
    }

  private:
    static constexpr int longest = 80;
    static constexpr void fill(char* text, std::string_view pattern, int n) {
        for (const char c : pattern) {
            if (c == '#' && n >= 10) *text++ = static_cast<char>('0' + n / 10);
            *text++ = static_cast<char>(c == '#' ? '0' + n % 10 : c);
        }
    }

    char names_[most + 1][longest] = {};
    char help_[most + 1][longest] = {};
    Preset preset_;
};

} // namespace qx::worksheet
