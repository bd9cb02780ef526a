// The register: what a host is given of every worksheet function and command, as rows of 30 texts.
//
// The rows come from the declarations, in the order of register_order.h. What is named there but does not exist yet
// has no row.
#pragma once

#include "addin/api.h"
#include "addin/function.h"

#include <array>
#include <string>
#include <string_view>
#include <vector>

namespace qx {

/// A macro command that a menu or a button runs: made by QX_COMMAND.
struct Command {
    Command(const char* name, const char* help, int (*run)());

    const char* name; ///< the exported name
    const char* help;
    int (*run)(); ///< returns 0
    Command* next;
};

/// The commands that exist, as a linked list in no particular order.
Command* all_commands();

/// Exports and registers the command CPPQX_ + name. The command's body follows:
///
///     QX_COMMAND(CalcMonOff, "Stops the calculation monitor") {
///         CalcMonStop();
///         return 0;
///     }
#define QX_COMMAND(name_, help_)                                                                                       \
    extern "C" QX_API int CPPQX_##name_();                                                                             \
    static const ::qx::Command command_##name_("CPPQX_" #name_, help_, &CPPQX_##name_);                                \
    extern "C" QX_API int CPPQX_##name_()

/// Columns of a row, from 0.
enum RegisterColumn {
    column_procedure,
    column_type_text,
    column_function_text,
    column_argument_text,
    column_macro_type,
    column_category,
    column_shortcut,
    column_topic,
    column_help,
    column_argument_help, ///< the first of 21
};
inline constexpr int register_columns = 30;
/// Columns that a host takes. The 21st argument's help stays in the table.
inline constexpr int passed_columns = 29;

/// One row of the register: a function or a command.
struct RegisterRow {
    const Registered* function = nullptr;
    const Command* command = nullptr;
    int topic = 0;

    std::array<std::string, register_columns> columns() const;
    /// The function text: the worksheet name, or the command's.
    const char* name() const { return function != nullptr ? function->function.name : command->name; }
    const char* procedure() const { return function != nullptr ? function->symbol : command->name; }
};

/// All rows in order.
const std::vector<RegisterRow>& the_register();

/// The number of a function's help topic: the declared one, or that of its place in the order of the register.
int topic_of(const Function& function);

} // namespace qx
