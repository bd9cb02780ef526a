#include "apps/quexel/tracing.h"
#include "apps/quexel/output.h"

#include "commands/trace_html.h"

#include <fstream>
#include <iostream>

namespace qx::app {

int show(const TraceTree& tree, const std::string& title, const std::string& html) {
    if (html.empty()) {
        print_tree(std::cout, tree);
        return 0;
    }
    std::ofstream file(html, std::ios::binary);
    file << trace_html(tree, title);
    file.close();
    if (!file) {
        std::cerr << "cannot write " << html << '\n';
        return 1;
    }
    return 0;
}

} // namespace qx::app
