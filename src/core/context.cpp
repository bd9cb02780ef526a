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
    /// That of the texts of a context, one of which has changed.
    std::uint32_t number_of(const Texts& before, std::string Texts::*field, std::string_view changed) {
        constexpr std::string Texts::*fields[] = {&Texts::function, &Texts::variable, &Texts::class_name,
                                                  &Texts::message};
        key_.clear();
        for (const auto each : fields) {
            key_ += each == field ? changed : std::string_view(before.*each);
            key_ += '\0';
        }
        const auto [place, is_new] = numbers_.try_emplace(key_, first_ + texts_.size());
        if (is_new) texts_.emplace_back(before).*field = changed;
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
    std::string key_; ///< of the texts sought
};

FunctionContext::Store& FunctionContext::store() {
    static Store store;
    return store;
}

const FunctionContext::Texts& FunctionContext::texts() const { return store()[number_]; }

void FunctionContext::set(std::string Texts::*field, std::string_view text) {
    if (tracing) number_ = store().number_of(texts(), field, text);
}

void FunctionContext::setnames(std::string_view function, std::string_view variable) {
    setfunction(function);
    setvariable(variable);
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
