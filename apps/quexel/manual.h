// What the program knows about itself: its manual page, and what a shell completes.
#pragma once

#include <ostream>
#include <string>

namespace CLI {
class App;
}

namespace qx::app {

/// The manual page, for man(1).
void print_manual(std::ostream& out, const CLI::App& program);

/// The script with which a shell completes commands, options and names: bash, zsh or fish. False for any other.
bool print_completion(std::ostream& out, const CLI::App& program, const std::string& shell);

} // namespace qx::app
