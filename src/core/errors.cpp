#include "core/errors.h"

namespace qx {

std::string cls_exception::description() const {
    std::string text = errortext;
    if (const std::string variable = context.variable(); !variable.empty()) text += " Variable " + variable + " ";
    return text + context.text();
}

} // namespace qx
