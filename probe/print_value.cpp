// How values are shown.
#include "probe/value.h"

#include <charconv>

namespace kestro_probe {

namespace {

// Up to here people count in decimal; above, driver numbers are addresses, masks and codes.
constexpr uint64_t decimal_limit = 0x10000;

std::string print_number(const shape &place, uint64_t number) {
    const auto negative = static_cast<int64_t>(number) < 0 && is_signed(place.type);
    if (negative) {
        return std::to_string(static_cast<int64_t>(number));
    }
    if (!place.hex && number < decimal_limit) {
        return std::to_string(number);
    }
    char digits[16];
    char *const end = std::to_chars(digits, digits + sizeof(digits), number, 16).ptr;
    return "0x" + std::string(digits, end);
}

// The shortest form that reads the same again.
std::string print_real(scalar type, double real) {
    char digits[64];
    char *const end = digits + sizeof(digits);
    return {digits, type == scalar::float32 ? std::to_chars(digits, end, static_cast<float>(real)).ptr
                                            : std::to_chars(digits, end, real).ptr};
}

std::string hex_byte(char byte) {
    constexpr char digits[] = "0123456789abcdef";
    const auto bits = static_cast<uint8_t>(byte);
    return {digits[bits >> 4], digits[bits & 15]};
}

std::string print_bytes(const std::string &bytes) {
    std::string text = "[";
    for (const char byte : bytes) {
        text += (text.size() > 1 ? " " : "") + hex_byte(byte);
    }
    return text + "]";
}

std::string print_list(const shape &place, const value &content) {
    const shape element = element_of(place);
    std::string text = "[";
    for (const value &item : content.items) {
        text += (text.size() > 1 ? " " : "") + print_value(element, item);
    }
    return text + "]";
}

std::string print_record(const record &layout, const value &content) {
    std::string text = "{";
    for (size_t i = 0; i < content.items.size(); ++i) {
        const field &member = layout.fields[content.field_at[i]];
        text += (text.size() > 1 ? " " : "") + std::string(member.name) + "=";
        text += print_value(shape_of(member), content.items[i]);
    }
    return text + "}";
}

} // namespace

std::string print_text(const std::string &text) {
    std::string shown = "\"";
    for (const char c : text) {
        switch (c) {
        case '\n':
            shown += "\\n";
            break;
        case '\r':
            shown += "\\r";
            break;
        case '\t':
            shown += "\\t";
            break;
        case '"':
        case '\\':
            shown += std::string("\\") + c;
            break;
        default:
            shown += c >= ' ' && c <= '~' ? std::string(1, c) : "\\x" + hex_byte(c);
        }
    }
    return shown + "\"";
}

std::string print_value(const shape &place, const value &content) {
    switch (content.what) {
    case value::kind::null:
        return "null";
    case value::kind::callback:
        return "callback";
    case value::kind::number:
        return print_number(place, content.number);
    case value::kind::real:
        return print_real(place.type, content.real);
    case value::kind::bytes:
        return print_bytes(content.bytes);
    case value::kind::text:
        return print_text(content.bytes);
    case value::kind::list:
        return print_list(place, content);
    case value::kind::record:
        break;
    }
    return print_record(*place.layout, content);
}

} // namespace kestro_probe
