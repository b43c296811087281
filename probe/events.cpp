// How events are shown: as comments, so that the output of kestro_call is a script again.
#include "probe/events.h"

#include "probe/trace.h"

#include <cstdio>
#include <cstdlib>

namespace kestro_probe {

namespace {

std::string named(const char *name, scalar type, const value &content) {
    shape place;
    place.type = type;
    return std::string(name) + "=" + print_value(place, content);
}

} // namespace

void *find_event_handler(std::string_view owner, std::string_view name) {
    for (const event_handler &known : event_handlers) {
        if (known.owner != nullptr && owner == known.owner && name == known.name) {
            return known.function;
        }
    }
    return nullptr;
}

std::string shown_number(const char *name, scalar type, uint64_t number) {
    value content;
    content.what = value::kind::number;
    content.number = number;
    return named(name, type, content);
}

std::string shown(const char *name, float real) {
    value content;
    content.what = value::kind::real;
    content.real = real;
    return named(name, scalar::float32, content);
}

std::string shown(const char *name, const char *text) {
    return std::string(name) + "=" + (text != nullptr ? print_text(text) : "null");
}

std::string shown_format(const char *name, const char *format, va_list values) {
    char *text = nullptr;
    if (format == nullptr || vasprintf(&text, format, values) < 0) {
        text = nullptr;
    }
    std::string line = shown(name, text);
    free(text);
    return line;
}

void print_event(const char *type, const std::vector<std::string> &values) {
    std::string line = std::string("# event: ") + type + "(";
    for (const std::string &value : values) {
        line += (line.back() == '(' ? "" : ", ") + value;
    }
    write_line(line + ")");
}

} // namespace kestro_probe
