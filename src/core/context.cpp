#include "core/context.h"

namespace qx {

void FunctionContext::set(std::string Texts::*field, std::string_view text) {
    if (!tracing) return;
    if (!texts_) texts_ = std::make_unique<Texts>();
    (*texts_).*field = text;
}

void FunctionContext::copy(const FunctionContext& other) {
    if (this == &other) return;
    if (!tracing || !other.texts_) {
        texts_.reset();
        return;
    }
    texts_ = std::make_unique<Texts>(*other.texts_);
}

std::string FunctionContext::text() const {
    std::string text;
    if (!texts_) return text;
    if (!texts_->function.empty()) text += "\nFunction: " + texts_->function + ". ";
    if (!texts_->variable.empty()) text += "\nVariable: " + texts_->variable + ". ";
    if (!texts_->message.empty()) text += "\nMessage: " + texts_->message + ". ";
    if (!texts_->class_name.empty()) text += "\nClass '" + texts_->class_name + "'. ";
    return text;
}

} // namespace qx
