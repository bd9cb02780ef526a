#include "apps/quexel/tracing.h"
#include "apps/quexel/output.h"

#include "commands/trace_html.h"

#include <fstream>
#include <iostream>

namespace qx::app {

void report_file(const clsTrace2& trace) {
    if (!trace.file_complete())
        std::cerr << trace.file_name()
                  << (trace.file_begun() ? ": not complete: the disk is full or failed\n" : ": cannot be written\n");
}

int show(const TraceTree& tree, const std::string& title, const std::string& html) {
    const int status = qx::trace().file_begun() && !tree.in_a_file ? 1 : 0; // a part of the trace passes for all of it
    if (html.empty()) {
        print_tree(std::cout, tree);
        return status;
    }
    std::ofstream file(html, std::ios::binary);
    file << trace_html(tree, title);
    file.close();
    if (!file) {
        std::cerr << "cannot write " << html << '\n';
        return 1;
    }
    return status;
}

} // namespace qx::app
