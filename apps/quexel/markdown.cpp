#include "apps/quexel/markdown.h"

#include "hosts/files/json.h"
#include "hosts/files/xml.h"
#include "hosts/sheet/text.h"

#include <cctype>
#include <vector>

namespace qx::app {

std::string html_escaped(std::string_view text) {
    std::string result;
    for (const char c : sheet::valid_utf8(text)) files::append_escaped(result, c);
    return result;
}

std::string script_string(std::string_view text) {
    std::string json = files::json_string(text);
    for (std::size_t at = 0; (at = json.find('<', at)) != std::string::npos;) json.replace(at, 1, "\\u003c");
    return json;
}

namespace {

std::string anchor_of(std::string_view heading) {
    std::string anchor;
    for (const char c : heading)
        if (std::isalnum(static_cast<unsigned char>(c)))
            anchor += static_cast<char>(std::tolower(static_cast<unsigned char>(c)));
        else if (!anchor.empty() && anchor.back() != '-')
            anchor += '-';
    if (anchor.ends_with('-')) anchor.pop_back();
    return anchor;
}

class Converter {
  public:
    Converter(std::string_view markdown, const MarkdownLinks& links) : links_(links) {
        for (std::size_t at = 0; at < markdown.size();) {
            const std::size_t end = std::min(markdown.find('\n', at), markdown.size());
            lines_.push_back(markdown.substr(at, end - at));
            at = end + 1;
        }
    }

    std::string html() {
        while (at_ < lines_.size()) {
            const std::string_view line = lines_[at_];
            if (sheet::trimmed(line).empty())
                ++at_;
            else if (line.starts_with('#'))
                heading(line);
            else if (line.starts_with("```"))
                fenced();
            else if (line.starts_with("    "))
                indented();
            else if (line.starts_with('|'))
                table();
            else if (marker_of(line) > 0)
                list();
            else
                paragraph();
        }
        return html_;
    }

  private:
    void heading(std::string_view line) {
        const std::size_t level = line.find_first_not_of('#');
        const std::string_view text = sheet::trimmed(line.substr(level));
        anchor_ = anchor_of(text);
        const std::string tag = "h" + std::to_string(level);
        html_ += "<" + tag + " id=\"" + anchor_ + "\">" + inlined(text) + "</" + tag + ">\n";
        ++at_;
    }

    void fenced() {
        html_ += "<pre>";
        for (++at_; at_ < lines_.size() && !lines_[at_].starts_with("```"); ++at_)
            html_ += html_escaped(lines_[at_]) + "\n";
        ++at_;
        html_ += "</pre>\n";
    }

    void indented() {
        html_ += "<pre>";
        for (; at_ < lines_.size() && lines_[at_].starts_with("    "); ++at_)
            html_ += html_escaped(lines_[at_].substr(4)) + "\n";
        html_ += "</pre>\n";
    }

    void table() {
        html_ += "<div class=\"scroll\"><table>\n";
        for (bool head = true; at_ < lines_.size() && lines_[at_].starts_with('|'); ++at_) {
            std::string_view line = sheet::trimmed(lines_[at_]);
            if (line.find_first_not_of("|-: ") == std::string_view::npos && line.find('-') != std::string_view::npos) {
                head = false;
                continue;
            }
            html_ += "<tr>";
            line.remove_prefix(1);
            bool in_code = false;
            for (std::size_t start = 0, i = 0; i < line.size(); ++i) {
                if (line[i] == '`') in_code = !in_code;
                if (line[i] != '|' || in_code) continue;
                html_ += (head ? "<th>" : "<td>") + inlined(sheet::trimmed(line.substr(start, i - start))) +
                         (head ? "</th>" : "</td>");
                start = i + 1;
            }
            html_ += "</tr>\n";
        }
        html_ += "</table></div>\n";
    }

    /// The length of what begins an item of a list, "- " or "12. "; 0 if nothing does.
    static std::size_t marker_of(std::string_view line) {
        if (line.starts_with("- ")) return 2;
        const std::size_t digits = line.find_first_not_of("0123456789");
        return digits > 0 && digits < line.size() && line.substr(digits).starts_with(". ") ? digits + 2 : 0;
    }

    void list() {
        const std::string tag = lines_[at_][0] == '-' ? "ul" : "ol";
        html_ += "<" + tag + ">\n";
        for (std::size_t marker; at_ < lines_.size() && (marker = marker_of(lines_[at_])) > 0;) {
            std::string item(lines_[at_++].substr(marker));
            while (at_ < lines_.size() && lines_[at_].starts_with("  "))
                item += ' ' + std::string(sheet::trimmed(lines_[at_++]));
            html_ += "<li>" + inlined(item) + "</li>\n";
        }
        html_ += "</" + tag + ">\n";
    }

    void paragraph() {
        std::string text;
        for (; at_ < lines_.size() && !sheet::trimmed(lines_[at_]).empty() && !lines_[at_].starts_with('|') &&
               !lines_[at_].starts_with("- ") && !lines_[at_].starts_with('#'); // a number may begin a line of it
             ++at_)
            text += (text.empty() ? "" : " ") + std::string(sheet::trimmed(lines_[at_]));
        html_ += "<p>" + inlined(text) + "</p>\n";
    }

    /// Code, links and emphasis within a line.
    std::string inlined(std::string_view text) {
        std::string html;
        while (!text.empty()) {
            const std::size_t mark = std::min(text.find_first_of("`[*"), text.size());
            html += html_escaped(text.substr(0, mark));
            text.remove_prefix(mark);
            if (text.empty()) break;
            if (const std::size_t end = text.find('`', 1); text[0] == '`' && end != std::string_view::npos) {
                html += code(text.substr(1, end - 1));
                text.remove_prefix(end + 1);
            } else if (const std::size_t close = text.find("](");
                       text[0] == '[' && close != std::string_view::npos && close < text.find('[', 1)) {
                const std::size_t last = text.find(')', close);
                const std::string page = links_.of_target(text.substr(close + 2, last - close - 2));
                const std::string words = html_escaped(text.substr(1, close - 1));
                html += page.empty() ? words : "<a href=\"" + page + "\">" + words + "</a>";
                text.remove_prefix(last + 1);
            } else if (const std::size_t star = text.find('*', 1); text[0] == '*' && star != std::string_view::npos &&
                                                                   star > 1 && text[1] != ' ' &&
                                                                   text[star - 1] != ' ') {
                html += "<em>" + html_escaped(text.substr(1, star - 1)) + "</em>";
                text.remove_prefix(star + 1);
            } else {
                html += text[0];
                text.remove_prefix(1);
            }
        }
        return html;
    }

    std::string code(std::string_view text) {
        const std::string page = links_.of_code(text.substr(0, text.find('(')), anchor_);
        const std::string shown = "<code>" + html_escaped(text) + "</code>";
        return page.empty() ? shown : "<a href=\"" + page + "\">" + shown + "</a>";
    }

    std::vector<std::string_view> lines_;
    std::size_t at_ = 0;
    const MarkdownLinks& links_;
    std::string anchor_;
    std::string html_;
};

} // namespace

std::string html_of_markdown(std::string_view markdown, const MarkdownLinks& links) {
    return Converter(markdown, links).html();
}

std::string title_of_markdown(std::string_view markdown) {
    const std::size_t start = markdown.find("# ") + 2;
    return std::string(markdown.substr(start, markdown.find('\n', start) - start));
}

} // namespace qx::app
