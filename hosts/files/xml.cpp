#include "hosts/files/xml.h"

#include "hosts/files/model.h"

#include <exception>
#include <expat.h>
#include <string>

namespace qx::files {

namespace {

constexpr int deepest = 256;
constexpr std::string_view libreoffice = "urn:org:documentfoundation:names:experimental:";

/// The name behind its namespace.
std::string_view local_name(std::string_view name) {
    const std::size_t bar = name.rfind('|');
    return bar == std::string_view::npos ? name : name.substr(bar + 1);
}

} // namespace

void append_escaped(std::string& markup, char c) {
    switch (c) {
    case '<':
        markup += "&lt;";
        break;
    case '>':
        markup += "&gt;";
        break;
    case '&':
        markup += "&amp;";
        break;
    case '"':
        markup += "&quot;";
        break;
    default:
        markup += c;
    }
}

const char* Attributes::find(std::string_view name) const {
    const bool extension = name.starts_with("calcext:");
    if (extension) name.remove_prefix(8);
    for (const char** at = list_; *at != nullptr; at += 2) {
        const std::string_view full = *at;
        if (full.starts_with(libreoffice) == extension && local_name(full) == name) return at[1];
    }
    return nullptr;
}

struct XmlParser::State {
    XML_Parser parser;
    XmlHandler& handler;
    std::string part;
    int depth = 0;
    std::exception_ptr failure;

    /// An exception may not pass through the parser: it is kept, and thrown when the parser has stopped.
    template <class Work>
    void guarded(Work work) {
        if (failure) return;
        try {
            work();
        } catch (...) {
            failure = std::current_exception();
            XML_StopParser(parser, XML_FALSE);
        }
    }
};

XmlParser::XmlParser(XmlHandler& handler, std::string_view part)
    : state_(new State{XML_ParserCreateNS(nullptr, '|'), handler, std::string(part), 0, nullptr}) {
    XML_SetUserData(state_->parser, state_);
    XML_SetElementHandler(
        state_->parser,
        [](void* data, const XML_Char* name, const XML_Char** attributes) {
            State& state = *static_cast<State*>(data);
            state.guarded([&] {
                if (++state.depth > deepest) throw FileError("the file is refused: its elements are nested too deeply");
                state.handler.open(local_name(name), Attributes(attributes));
            });
        },
        [](void* data, const XML_Char* name) {
            State& state = *static_cast<State*>(data);
            --state.depth;
            state.guarded([&] { state.handler.close(local_name(name)); });
        });
    XML_SetCharacterDataHandler(state_->parser, [](void* data, const XML_Char* bytes, int size) {
        State& state = *static_cast<State*>(data);
        state.guarded([&] { state.handler.text({bytes, static_cast<std::size_t>(size)}); });
    });
    // A document type could define entities that grow without end, or that name other files.
    XML_SetStartDoctypeDeclHandler(
        state_->parser, [](void* data, const XML_Char*, const XML_Char*, const XML_Char*, int) {
            State& state = *static_cast<State*>(data);
            state.guarded([&] {
                throw FileError("the file is refused: \"" + state.part + "\" declares a document type or entities");
            });
        });
}

XmlParser::~XmlParser() {
    XML_ParserFree(state_->parser);
    delete state_;
}

void XmlParser::take(std::string_view bytes, bool last) {
    const XML_Status status = XML_Parse(state_->parser, bytes.data(), static_cast<int>(bytes.size()), last);
    if (state_->failure) std::rethrow_exception(state_->failure);
    if (status == XML_STATUS_ERROR)
        throw FileError("the file is damaged: \"" + state_->part + "\", line " +
                        std::to_string(XML_GetCurrentLineNumber(state_->parser)) + ": " +
                        XML_ErrorString(XML_GetErrorCode(state_->parser)));
}

std::size_t XmlParser::position() const { return static_cast<std::size_t>(XML_GetCurrentByteIndex(state_->parser)); }
std::size_t XmlParser::length() const { return static_cast<std::size_t>(XML_GetCurrentByteCount(state_->parser)); }

} // namespace qx::files
