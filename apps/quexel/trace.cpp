#include "apps/quexel/commands.h"
#include "apps/quexel/output.h"
#include "apps/quexel/tracing.h"

#include "hosts/sheet/text.h"

#include <iostream>

namespace qx::app {

namespace {

struct Explained {
    TraceTree tree;
    TraceSubject subject;
    bool complete = true; ///< all functions are known
};

/// Throws FormulaError.
Explained explain(const std::string& text) {
    sheet::Workbook book;
    const sheet::Formula formula = book.read(text);
    sheet::Value value;
    Explained explained;
    explained.tree = traced([&] { value = evaluate(book, formula); });
    explained.subject = {text, plain_text(value, false, 15)};
    for (const std::string& what : formula.unknown) std::cerr << what << '\n';
    explained.complete = formula.unknown.empty();
    return explained;
}

} // namespace

int trace(const TraceOptions& options) {
    try {
        const Explained shown = explain(options.formula);
        if (options.against.empty()) {
            const int status = show(shown.tree, shown.subject, options.html, options.all);
            return shown.complete ? status : 1;
        }
        const Explained other = explain(options.against);
        const int status = show(shown.tree, shown.subject, other.tree, other.subject, options.html);
        return shown.complete && other.complete ? status : 1;
    } catch (const sheet::FormulaError& error) {
        std::cerr << "character " << error.column << ": " << error.what() << '\n';
        return 1;
    }
}

} // namespace qx::app
