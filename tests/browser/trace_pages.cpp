// Writes the pages that trace_page_test.py opens: trace_pages FOLDER.
#include "commands/trace_html.h"

#include <filesystem>
#include <fstream>
#include <iostream>

namespace qx {
namespace {

void write(const std::filesystem::path& folder, const char* name, const char* subject) {
    std::ofstream(folder / name, std::ios::binary) << trace_html(build_trace_tree(trace()), subject);
}

/// Two calls, the second of which fails three levels down. The texts try to break out of the page.
void failed_call() {
    trace().TraceStart();
    trace().external_call("DYear");
    trace().inputs();
    trace().variable("TheDate");
    trace().return_value(std::string("14Jan2004"), "AssignCell");
    trace().inputs_concluded("DYear");
    trace().function_call("DYear");
    trace().arguments();
    trace().argument("TheDate", std::string("14Jan2004"), "Date to take the year of");
    trace().changelevel(-1);
    trace().return_value(2004.036, "DYear", 1);
    trace().setlevel(0);
    trace().external_call("DpD");
    trace().function_call("DpD");
    trace().warning("</script><script>document.title = 'broken out'</script>");
    trace().info("<b>bold</b> &amp; \"quoted\" \\ back\x80 caf\xE9 \xE2\x82\xAC ok\x01");
    trace().loop_pass(1, "looking for the year");
    trace().error("", "Error LIB17: Value less than minimum allowed value  Variable Days \nFunction: DpD. ");
}

/// 150,000 items: 300 passes of 500 lines.
void long_loop() {
    trace().TraceStart();
    trace().external_call("IRR");
    for (int pass = 1; pass <= 300; ++pass) {
        trace().loop_pass(pass, "a trial rate");
        for (int line = 1; line < 500; ++line) trace().argument("x" + std::to_string(line), pass * 1000 + line);
        trace().setlevel(1);
    }
    trace().info("the last line");
}

} // namespace
} // namespace qx

int main(int argc, char** argv) {
    if (argc != 2) {
        std::cerr << "trace_pages FOLDER\n";
        return 2;
    }
    const std::filesystem::path folder = argv[1];
    std::filesystem::current_path(folder);
    qx::failed_call();
    qx::write(folder, "failed.html", "DpD(38000, \"<i>\")");
    qx::long_loop();
    qx::write(folder, "long.html", "IRR(A1:A60)");
    qx::trace().TraceStart();
    qx::write(folder, "empty.html", "");
}
