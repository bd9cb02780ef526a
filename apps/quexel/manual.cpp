#include "apps/quexel/manual.h"

#include <CLI/CLI.hpp>

namespace qx::app {

namespace {

/// The commands that a user meets.
std::vector<const CLI::App*> commands_of(const CLI::App& program) {
    std::vector<const CLI::App*> commands = program.get_subcommands([](const CLI::App*) { return true; });
    std::erase_if(commands, [](const CLI::App* command) { return command->get_name().empty(); });
    return commands;
}

std::string roff(std::string_view text) {
    std::string result;
    for (const char c : text) {
        if (c == '\\')
            result += "\\\\";
        else if (c == '-')
            result += "\\-";
        else
            result += c;
    }
    if (result.starts_with('.') || result.starts_with('\'')) result.insert(0, "\\&");
    return result;
}

std::string words_of(const CLI::App& command) {
    std::string words;
    for (const CLI::Option* const option : command.get_options())
        for (const std::string& name : option->get_lnames()) words += (words.empty() ? "--" : " --") + name;
    return words;
}

std::string commands_as_words(const CLI::App& program) {
    std::string words;
    for (const CLI::App* const command : commands_of(program))
        words += (words.empty() ? "" : " ") + command->get_name();
    return words;
}

void print_bash(std::ostream& out, const CLI::App& program) {
    out << "# quexel completion bash > /etc/bash_completion.d/quexel\n"
           "_quexel() {\n"
           "    local word=${COMP_WORDS[COMP_CWORD]} before=${COMP_WORDS[COMP_CWORD-1]} command=${COMP_WORDS[1]} "
           "words=\n"
           "    COMPREPLY=()\n"
           "    if ((COMP_CWORD == 1)); then\n"
           "        COMPREPLY=($(compgen -W '"
        << commands_as_words(program)
        << " --help --version' -- \"$word\"))\n"
           "        return\n"
           "    fi\n"
           "    if [[ $word != -* ]]; then\n"
           "        case $before in\n"
           "        --output) COMPREPLY=($(compgen -W 'table csv markdown json' -- \"$word\")); return ;;\n"
           "        esac\n"
           "        case $command in\n"
           "        help) COMPREPLY=($(compgen -W \"$(quexel functions --names 2>/dev/null)\" -- \"$word\")) ;;\n"
           "        completion) COMPREPLY=($(compgen -W 'bash zsh fish' -- \"$word\")) ;;\n"
           "        *) COMPREPLY=($(compgen -f -- \"$word\")) ;;\n"
           "        esac\n"
           "        return\n"
           "    fi\n"
           "    case $command in\n";
    for (const CLI::App* const command : commands_of(program))
        out << "    " << command->get_name() << ") words='" << words_of(*command) << "' ;;\n";
    out << "    esac\n"
           "    COMPREPLY=($(compgen -W \"$words\" -- \"$word\"))\n"
           "}\n"
           "complete -o filenames -F _quexel quexel\n";
}

/// Text between single quotes, without what zsh's and fish's lists take for signs of their own.
std::string quoted(std::string text) {
    for (char& c : text)
        if (c == '\'' || c == '[' || c == ']' || c == ':') c = c == '\'' ? '`' : c == ':' ? ';' : ' ';
    return text;
}

void print_zsh(std::ostream& out, const CLI::App& program) {
    out << "#compdef quexel\n"
           "_quexel() {\n"
           "    local -a commands\n"
           "    commands=(\n";
    for (const CLI::App* const command : commands_of(program))
        out << "        '" << command->get_name() << ":" << quoted(command->get_description()) << "'\n";
    out << "    )\n"
           "    if ((CURRENT == 2)); then _describe command commands; return; fi\n"
           "    case $words[2] in\n";
    for (const CLI::App* const command : commands_of(program)) {
        out << "    " << command->get_name() << ") _arguments '*:file:_files'";
        for (const CLI::Option* const option : command->get_options())
            for (const std::string& name : option->get_lnames())
                out << " \\\n        '--" << name << "[" << quoted(option->get_description()) << "]"
                    << (option->get_items_expected_max() > 0 ? ":value:_files'" : "'");
        out << " ;;\n";
    }
    out << "    esac\n"
           "}\n"
           "_quexel \"$@\"\n";
}

void print_fish(std::ostream& out, const CLI::App& program) {
    for (const CLI::App* const command : commands_of(program)) {
        out << "complete -c quexel -n __fish_use_subcommand -f -a " << command->get_name() << " -d '"
            << quoted(command->get_description()) << "'\n";
        for (const CLI::Option* const option : command->get_options())
            for (const std::string& name : option->get_lnames())
                out << "complete -c quexel -n '__fish_seen_subcommand_from " << command->get_name() << "' -l " << name
                    << (option->get_items_expected_max() > 0 ? " -r" : "") << " -d '"
                    << quoted(option->get_description()) << "'\n";
    }
    out << "complete -c quexel -n '__fish_seen_subcommand_from help' -f -a '(quexel functions --names)'\n";
}

} // namespace

void print_manual(std::ostream& out, const CLI::App& program) {
    out << ".TH QUEXEL 1 \"\" \"quexel " QX_VERSION "\" \"User commands\"\n"
           ".SH NAME\nquexel \\- worksheet formulas and models for property, project finance and banking\n"
           ".SH SYNOPSIS\n";
    for (const CLI::App* const command : commands_of(program))
        out << ".B quexel " << command->get_name() << "\n[options] ...\n.br\n";
    out << ".SH DESCRIPTION\n" << roff(program.get_description()) << "\n";
    for (const CLI::App* const command : commands_of(program)) {
        out << ".SH quexel " << command->get_name() << "\n" << roff(command->get_description()) << "\n";
        for (const CLI::Option* const option : command->get_options()) {
            out << ".TP\n.B " << roff(option->get_name(option->get_positional(), true));
            if (option->get_items_expected_max() > 0 && !option->get_positional())
                out << " " << roff(option->get_type_name().empty() ? "VALUE" : option->get_type_name());
            out << "\n" << roff(option->get_description()) << "\n";
        }
    }
    out << ".SH EXIT STATUS\n"
           "0 if all went well, 1 if something is wrong with what was given, 2 if the command line is.\n"
           "An error value such as #NUM! is a result and changes no status.\n"
           ".SH EXAMPLES\n.nf\n";
    std::string footer = program.get_footer();
    out << roff(footer.substr(footer.find('\n') + 1)) << "\n.fi\n"
        << ".SH FILES\n"
           "qx_Trace.qxl and qx_CalcMon.qxl in the current folder hold the last trace and the times of calls.\n";
}

bool print_completion(std::ostream& out, const CLI::App& program, const std::string& shell) {
    if (shell == "bash")
        print_bash(out, program);
    else if (shell == "zsh")
        print_zsh(out, program);
    else if (shell == "fish")
        print_fish(out, program);
    else
        return false;
    return true;
}

} // namespace qx::app
