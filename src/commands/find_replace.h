// Find and replace by a regular expression in the contents of cells, formulas and constants alike.
#pragma once

#include "addin/oper.h"

#include <functional>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

namespace qx {

/// A regular expression in Perl syntax with what takes the place of its matches, in Perl's notation: $1 is the first
/// group. Throws std::runtime_error if the expression is broken.
class Replacer {
  public:
    Replacer(const std::string& expression, std::string replacement);
    ~Replacer();
    /// The text with every match replaced. Throws std::runtime_error if the expression takes too long on it.
    std::string operator()(const std::string& text) const;

  private:
    struct Compiled;
    std::unique_ptr<Compiled> compiled_;
    std::string replacement_;
};

/// A cell whose contents the replacement changes.
struct CellChange {
    XLREF cell;
    std::string before, after;
    std::string problem; ///< why it cannot be written; empty if it can
};

/// The dialog's state and what its buttons do, on the selection of the host. Find shows what would change; Replace
/// writes it once it has been shown; Undo writes the former contents of the last Replace back. What goes wrong is shown
/// in the status.
class clsfindreplace {
  public:
    static constexpr int most_areas = 50;

    std::string status;
    std::string findtext;
    std::string replacetext;
    std::string where = "WorkSheet"; ///< the selected cells, or those of them within an area such as A1:D50

    void open();
    void find();
    void replace();
    void undo();

    const std::vector<CellChange>& changes() const { return changes_; } ///< what Replace would write
    bool can_replace() const { return !changes_.empty(); }
    bool can_undo() const { return !written_.empty(); }

  private:
    struct Selection {
        std::uintptr_t sheet = 0;
        std::vector<XLREF> areas;
    };

    bool read_selection(Selection& selection);
    bool confine(Selection& selection);
    void look(const Selection& selection);
    /// Writes a string to each cell; returns how many could be written and notes the problems.
    int write(std::vector<CellChange>& changes, std::string CellChange::*text);
    bool is_shown() const;

    std::uintptr_t sheet_ = 0;
    std::vector<CellChange> changes_, written_;
    std::string shown_; ///< the fields for which the changes have been found
};

/// The platform's dialog: shows the object modally and calls its buttons. Null where there is none.
inline void (*find_replace_dialog)(clsfindreplace&) = nullptr;

/// Reads a reference such as "B7" or "$A$1:C3" within 65536 rows and 256 columns. False if the text is something else.
bool read_rectangle(std::string_view text, XLREF& rectangle);

} // namespace qx
