// Writes the pages that trace_page_test.py opens: trace_pages FOLDER.
#include "commands/trace_html.h"

#include <filesystem>
#include <fstream>
#include <iostream>

namespace qx {
namespace {

void write(const std::filesystem::path& folder, const char* name, const char* formula, const char* result) {
    std::ofstream(folder / name, std::ios::binary) << trace_html(build_trace_tree(trace()), {formula, result});
}

/// Net present value at a rate, as a search tries it: the trials of a rate of return of -100 and 110.
void search(int trials) {
    trace().TraceStart();
    trace().external_call("IRRT");
    trace().inputs();
    for (const char* const list : {"Dates", "Cashflows"}) {
        trace().variable(list);
        for (int i = 2; i >= 1; --i)
            trace().argument(std::string(list) + "(" + std::to_string(i) + ")",
                             list[0] == 'D' ? 2004 + i : (i == 1 ? -100.0 : 110.0));
        trace().return_value(list, text_of(list, " had 2 elements"), "AssignRange", 2);
    }
    trace().variable("IRRAccOpt");
    trace().info(text_of("IRRAccOpt set to default value of ", 1e-10, " ()"));
    trace().return_value(1e-10, "AssignCellOpt", 2);
    trace().inputs_concluded("IRRT");
    trace().function_call("IRRT");
    for (int trial = 1; trial <= trials; ++trial) {
        const double rate = 0.1 - 0.05 / (trial * trial);
        trace().internal_call("pvt");
        trace().arguments();
        trace().argument("rate", rate);
        trace().changelevel(-1);
        trace().info(text_of("PV(", 110.0, ") at time ", 1.0, " years = ", 110.0 / (1.0 + rate)));
        trace().return_value(110.0 / (1.0 + rate) - 100.0, "pvt", 2);
    }
    trace().info(text_of("Solve Successful. Result = ", 0.1));
    trace().return_value(0.1, "IRRT", 1);
    trace().result(0.1);
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
    qx::write(folder, "failed.html", "DpD(38000, \"<i>\")", "#NUM!");
    qx::long_loop();
    qx::write(folder, "long.html", "IRR(A1:A60)", "");
    qx::trace().TraceStart();
    qx::write(folder, "empty.html", "", "");
    qx::search(40);
    qx::write(folder, "solved.html", "IRRT(A1:A2, B1:B2)", "0.1");
    const qx::TraceTree before = build_trace_tree(qx::trace());
    qx::search(39);
    std::ofstream(folder / "compared.html", std::ios::binary) << qx::trace_html(
        before, {"IRRT(A1:A2, B1:B2)", "0.1"}, build_trace_tree(qx::trace()), {"IRRT(A1:A2, C1:C2)", "0.1"});
}
