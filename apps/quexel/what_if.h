// Changes of a model for one run: inputs set on the command line, goal seeks, scenarios.
#pragma once

#include "apps/quexel/commands.h"
#include "hosts/files/document.h"

#include <ostream>
#include <string>
#include <vector>

namespace qx::app {

/// Sets an input: "B2=5e6", "Rent=5e6", "B2:B9=0" or, with the cells of a CSV file, "B2:C9=@rates.csv". Throws
/// FileError.
void set(files::Document& document, const std::string& setting);

/// What a goal seek found.
struct Found {
    sheet::CellAddress changing, target;
    double was = 0.0, value = 0.0;
    sheet::Value shows; ///< what the target shows now
    double wanted = 0.0;
};

/// Runs the goal seeks that the cells ask for.
std::vector<Found> seek_goals(files::Document& document);
bool goal_seek_failed();
/// Prints what was found and where it is, and the report of the goal seeks.
void print_found(std::ostream& out, files::Document& document, const std::vector<Found>& found, bool dates);

/// Runs the model once for each row of a CSV file and prints or writes the table of their results. The head of a column
/// is a cell or a name: an input if its cells are filled, an output if they are empty or if the cell holds a formula.
/// Other columns are labels. Returns the exit status.
int run_scenarios(files::Document& document, const CalcOptions& options);

} // namespace qx::app
