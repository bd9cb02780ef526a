#include "hosts/sheet/value.h"

#include "addin/cells.h"

#include <bit>
#include <cstdlib>
#include <cstring>
#include <memory>
#include <new>

namespace qx::sheet {

std::string address_text(CellAddress cell) { return column_text(cell.column) + std::to_string(cell.row + 1); }

std::string address_text(const Area& area) {
    const std::string first = address_text(area.first());
    return area.is_cell() ? first : first + ":" + address_text({area.last_row, area.last_column, area.sheet});
}

namespace {

/// How many bytes of a string fit a counted string without cutting a character.
std::size_t counted_length(std::string_view bytes) {
    if (bytes.size() <= 255) return bytes.size();
    std::size_t length = 255;
    while (length > 251 && (static_cast<unsigned char>(bytes[length]) & 0xC0) == 0x80) --length;
    return (static_cast<unsigned char>(bytes[length]) & 0xC0) == 0x80 ? 255 : length;
}

} // namespace

Value::Text* Value::make_text(std::string_view bytes) {
    Text* const text = static_cast<Text*>(std::malloc(sizeof(Text) + bytes.size()));
    if (text == nullptr) throw std::bad_alloc();
    text->references = 1;
    text->size = static_cast<std::uint32_t>(bytes.size());
    text->count = static_cast<unsigned char>(counted_length(bytes));
    if (!bytes.empty()) std::memcpy(text->bytes(), bytes.data(), bytes.size());
    return text;
}

Value Value::text(std::string_view bytes) {
    Value value;
    value.payload_.text = make_text(bytes);
    value.type_ = Type::text;
    return value;
}

Value Value::error(std::uint16_t code, std::string_view reason) {
    Value value = error(code);
    value.payload_.error.reason = make_text(reason);
    return value;
}

Value Value::array(std::uint32_t rows, std::uint32_t columns) {
    static_assert(sizeof(Array) % alignof(Value) == 0);
    const std::size_t count = std::size_t{rows} * columns;
    Array* const array = static_cast<Array*>(std::malloc(sizeof(Array) + count * sizeof(Value)));
    if (array == nullptr) throw std::bad_alloc();
    array->references = 1;
    array->rows = rows;
    array->columns = columns;
    std::uninitialized_default_construct_n(array->cells(), count);
    Value value(Type::array);
    value.payload_.array = array;
    return value;
}

void Value::drop() {
    if (type_ != Type::array) {
        Text* const text = type_ == Type::text ? payload_.text : payload_.error.reason;
        if (text != nullptr && --text->references == 0) std::free(text);
    } else if (--payload_.array->references == 0) {
        std::destroy_n(payload_.array->cells(), std::size_t{rows()} * columns());
        std::free(payload_.array);
    }
}

bool Value::identical(const Value& other) const {
    if (type_ != other.type_) return false;
    switch (type_) {
    case Type::number:
        return std::bit_cast<std::uint64_t>(number()) == std::bit_cast<std::uint64_t>(other.number());
    case Type::boolean:
        return boolean() == other.boolean();
    case Type::error:
        return error() == other.error();
    case Type::text:
        return text() == other.text();
    case Type::area:
        return area() == other.area();
    case Type::array: {
        if (rows() != other.rows() || columns() != other.columns()) return false;
        const std::size_t count = std::size_t{rows()} * columns();
        for (std::size_t i = 0; i < count; ++i)
            if (!payload_.array->cells()[i].identical(other.payload_.array->cells()[i])) return false;
        return true;
    }
    default:
        return true;
    }
}

namespace {

constexpr struct {
    std::uint16_t code;
    const char *text, *meaning;
} errors[] = {{xlerrNull, "#NULL!", "the ranges have no cell in common"},
              {xlerrDiv0, "#DIV/0!", "division by zero"},
              {xlerrValue, "#VALUE!", "a value of the wrong kind"},
              {xlerrRef, "#REF!", "a reference to a cell that does not exist"},
              {xlerrName, "#NAME?", "an unknown name"},
              {xlerrNum, "#NUM!", "no number can be worked out"},
              {xlerrNA, "#N/A", "no value is available"},
              {error_spill, "#SPILL!", "something is in the way of the array"},
              {error_calc, "#CALC!", "the array has no cells"}};

} // namespace

const char* error_text(std::uint16_t code) {
    for (const auto& error : errors)
        if (error.code == code) return error.text;
    return "#VALUE!";
}

const char* error_meaning(std::uint16_t code) {
    for (const auto& error : errors)
        if (error.code == code) return error.meaning;
    return error_meaning(xlerrValue);
}

std::size_t match_error(std::string_view text, std::uint16_t& code) {
    for (const auto& error : errors) {
        const std::string_view name = error.text;
        if (text.size() < name.size()) continue;
        bool same = true;
        for (std::size_t i = 0; i < name.size() && same; ++i)
            same = name[i] == (text[i] >= 'a' && text[i] <= 'z' ? text[i] - 'a' + 'A' : text[i]);
        if (!same) continue;
        code = error.code;
        return name.size();
    }
    return 0;
}

} // namespace qx::sheet
