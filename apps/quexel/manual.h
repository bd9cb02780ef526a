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

/// The page of a topic, as "files"; false if there is none of this name.
bool print_topic(std::ostream& out, const std::string& name);
void print_topics(std::ostream& out);

} // namespace qx::app
