// The parts of an .xlsx file that lead to its sheets.
#pragma once

#include "hosts/files/archive.h"
#include "hosts/files/model.h"
#include "hosts/files/xml.h"

#include <charconv>
#include <functional>
#include <map>
#include <string>
#include <string_view>
#include <vector>

namespace qx::files {

inline long integer_in(std::string_view text, long otherwise = -1) {
    long x = otherwise;
    std::from_chars(text.data(), text.data() + text.size(), x);
    return x;
}

/// Runs a handler over a part.
void parse(Archive& archive, const std::string& part, XmlHandler& handler);

class OpenHandler : public XmlHandler {
  public:
    explicit OpenHandler(std::function<void(std::string_view, const Attributes&)> open) : open_(std::move(open)) {}
    void open(std::string_view element, const Attributes& attributes) override { open_(element, attributes); }
    void close(std::string_view) override {}
    void text(std::string_view) override {}

  private:
    std::function<void(std::string_view, const Attributes&)> open_;
};

struct Relation {
    std::string type; ///< the last word of its address: "worksheet", "styles"
    std::string target;
};

/// The part that holds the relations of another.
std::string relations_part(const std::string& part);
/// The relations of a part by their names; none if it has none.
std::map<std::string, Relation> relations_of(Archive& archive, const std::string& part);
/// Throws FileError if the archive is not a workbook.
std::string workbook_part(Archive& archive);

struct SheetEntry {
    std::string name, part;
    bool hidden = false;
};

/// The workbook's own part: its sheets, its names and how it counts days.
class WorkbookPart : public XmlHandler {
  public:
    explicit WorkbookPart(std::map<std::string, Relation> relations) : relations_(std::move(relations)) {}

    std::vector<SheetEntry> sheets; ///< one without a part is no worksheet
    std::vector<NameModel> names;
    bool from_1904 = false, print_settings = false;

    void open(std::string_view element, const Attributes& attributes) override {
        if (element == "workbookPr") {
            from_1904 = attributes.is_true("date1904");
        } else if (element == "sheet") {
            const auto relation = relations_.find(std::string(attributes.get("id")));
            const bool is_sheet = relation != relations_.end() && relation->second.type == "worksheet";
            sheets.push_back({std::string(attributes.get("name")), is_sheet ? relation->second.target : "",
                              attributes.find("state") != nullptr && attributes.get("state") != "visible"});
        } else if (element == "definedName") {
            name_ = {std::string(attributes.get("name")), "",
                     static_cast<int>(integer_in(attributes.get("localSheetId")))};
            in_name_ = true;
            const bool own = name_.name.starts_with("_xl");
            print_settings |= own;
            skipped_ = own || attributes.is_true("function") || attributes.is_true("vbProcedure");
        }
    }
    void close(std::string_view element) override {
        if (element != "definedName") return;
        in_name_ = false;
        if (!skipped_) names.push_back(name_);
    }
    void text(std::string_view bytes) override {
        if (in_name_ && name_.formula.size() < longest_text) name_.formula += bytes;
    }

  private:
    std::map<std::string, Relation> relations_;
    NameModel name_;
    bool in_name_ = false, skipped_ = false;
};

} // namespace qx::files
