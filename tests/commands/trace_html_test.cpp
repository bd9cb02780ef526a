// What the page holds, as text. How it works in a browser is tested in tests/browser.
#include "commands/trace_html.h"

#include <gtest/gtest.h>

namespace qx::test {
namespace {

TraceTree tree_of(const std::string& description) {
    TraceTree tree;
    tree.add("\t\t" + description, 0, TraceKind::info);
    tree.close();
    return tree;
}

/// The texts of the page's data.
std::string texts(const std::string& page) {
    const std::size_t start = page.find("\"texts\":[") + 9;
    return page.substr(start, page.find("],\n\"items\"", start) - start);
}

TEST(TraceHtml, NoTextEndsTheScriptOrTheTitle) {
    const std::string plain = trace_html(tree_of("x"), {"x", ""});
    const std::string hostile = trace_html(tree_of("</script><!-- \" \\ \n"), {"</title> & {{trace}}", ""});
    const auto count = [](std::string_view page, std::string_view what) {
        int found = 0;
        for (std::size_t at = page.find(what); at != page.npos; at = page.find(what, at + 1)) ++found;
        return found;
    };
    EXPECT_EQ(count(hostile, "</script"), count(plain, "</script"));
    EXPECT_EQ(count(hostile, "<!--"), 0);
    EXPECT_EQ(texts(hostile), "\"\",\n\"\\u003c/script>\\u003c!-- \\\" \\\\ \\u000a\"");
    EXPECT_NE(hostile.find("<title>Quexel Trace: &lt;/title> &amp; {{trace}}</title>"), std::string::npos);
}

TEST(TraceHtml, BytesThatAreNotUtf8BecomeTheCodePagesLetters) {
    const std::pair<const char*, const char*> cases[] = {
        {"caf\xE9", "caf\\u00e9"},
        {"\x80", "\\u20ac"},
        {"\xE2\x82\xAC", "\xE2\x82\xAC"},          // a whole sequence stays
        {"\xE2\x82", "\\u00e2\\u0082"},            // cut short
        {"\xC0\xAF", "\\u00c0\\u00af"},            // overlong
        {"\xED\xA0\x80", "\\u00ed\\u00a0\\u20ac"}, // half of a surrogate pair
        {"\xF0\x9F\x98\x80", "\xF0\x9F\x98\x80"},
        {"\xF4\x90\x80\x80", "\\u00f4\\u0090\\u20ac\\u20ac"}, // beyond the last character
    };
    for (const auto& [text, expected] : cases)
        EXPECT_EQ(texts(trace_html(tree_of(text), {})), "\"\",\n\"" + std::string(expected) + "\"");
}

TEST(TraceHtml, NodesComeInTheOrderOfTheTraceWithEachTextOnce) {
    TraceTree tree;
    for (const char* name : {"a", "b"}) {
        tree.add(name, 0, TraceKind::external_call, name[0] == 'b');
        tree.add("a", 1, TraceKind::info);
    }
    tree.close();
    const std::string page = trace_html(tree, {});
    EXPECT_EQ(texts(page), "\"a\",\n\"\",\n\"b\"");
    EXPECT_NE(page.find("\"items\":[0,10,0,1,1,1,2,0,1,1,0,110,2,1,1,1,2,0,1,1]"), std::string::npos);
}

TEST(TraceHtml, DepthIsNotBoundByTheStack) {
    TraceTree tree;
    for (int depth = 0; depth < 200'000; ++depth) tree.add("x", depth, TraceKind::info);
    tree.close();
    EXPECT_NE(trace_html(tree, {}).find("199999,2,"), std::string::npos);
}

} // namespace
} // namespace qx::test
