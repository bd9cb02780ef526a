#include "core/context.h"

#include <deque>
#include <unordered_map>

namespace qx {

/// The texts of all contexts of a trace. Their numbers go on from trace to trace, so that an old one finds nothing.
class FunctionContext::Store {
  public:
    const Texts& operator[](std::uint32_t number) const {
        static const Texts none;
        return number < first_ || number - first_ >= texts_.size() ? none : texts_[number - first_];
    }
    std::uint32_t number_of(const Texts& texts) {
        std::string key;
        for (const std::string* text : {&texts.function, &texts.variable, &texts.class_name, &texts.message})
            key.append(*text).push_back('\0');
        const auto [place, is_new] = numbers_.try_emplace(std::move(key), first_ + texts_.size());
        if (is_new) texts_.push_back(texts);
        return place->second;
    }
    void clear() {
        first_ += texts_.size();
        texts_.clear();
        numbers_.clear();
    }

  private:
    std::uint32_t first_ = 1;
    std::deque<Texts> texts_; // they stay where they are
    std::unordered_map<std::string, std::uint32_t> numbers_;
};

FunctionContext::Store& FunctionContext::store() {
    static Store store;
    return store;
}

const FunctionContext::Texts& FunctionContext::texts() const { return store()[number_]; }

void FunctionContext::set(std::string Texts::*field, std::string_view text) {
    if (!tracing) return;
    Texts changed = texts();
    changed.*field = text;
    number_ = store().number_of(changed);
}

void FunctionContext::setnames(std::string_view function, std::string_view variable) {
    if (!tracing) return;
    Texts changed = texts();
    changed.function = function;
    changed.variable = variable;
    number_ = store().number_of(changed);
}

void FunctionContext::forget_texts() { store().clear(); }

std::string FunctionContext::text() const {
    const auto& [function, variable, class_name, message] = texts();
    std::string text;
    if (!function.empty()) text += "\nFunction: " + function + ". ";
    if (!variable.empty()) text += "\nVariable: " + variable + ". ";
    if (!message.empty()) text += "\nMessage: " + message + ". ";
    if (!class_name.empty()) text += "\nClass '" + class_name + "'. ";
    return text;
}

} // namespace qx
