// Functions of kestro_call that drivers may call back: each says that it was called, and with what. They are generated,
// one per callback type of the headers.
#pragma once

#include "probe/value.h"

#include <cstdarg>
#include <span>
#include <type_traits>

namespace kestro_probe {

// Where a driver is given such a function: a parameter of an operation, or a member of a record.
struct event_handler {
    const char *owner;
    const char *name;
    void *function;
};

extern const std::span<const event_handler> event_handlers;

void *find_event_handler(std::string_view owner, std::string_view name);

// "name=value", as a trace shows it.
std::string shown_number(const char *name, scalar type, uint64_t number);
std::string shown(const char *name, float real);
std::string shown(const char *name, const char *text);
__attribute__((format(printf, 2, 0))) std::string shown_format(const char *name, const char *format, va_list values);

template <typename Number>
requires std::is_integral_v<Number> std::string shown(const char *name, Number number) {
    return shown_number(name, std::is_signed_v<Number> ? scalar::int64 : scalar::uint64, static_cast<uint64_t>(number));
}

// An empty text, as far as there is room for one.
template <typename Size> void answer_nothing(char *area, Size size) {
    if (area != nullptr && size > 0) {
        *area = '\0';
    }
}

// One comment line: what was called, with what.
void print_event(const char *type, const std::vector<std::string> &values);

} // namespace kestro_probe
