// The standard result print and its four item printers.
#include "shell/result_print.h"

#include <cstdarg>
#include <cstdint>
#include <cstdio>

namespace {

void print_char_item(int item, int value) {
    printf("para[%d]=%c ", item, value);
}

void print_decimal_item(int item, int value) {
    printf("para[%d]=%d ", item, value);
}

void print_hex_item(int item, uint32_t value) {
    printf("para[%d]=0x%x ", item, value);
}

void print_text_item(int item, const char *value) {
    printf("para[%d]=%s ", item, value);
}

} // namespace

void print_result(const char *format, ...) {
    va_list values;
    va_start(values, format);
    int item = 0;
    for (const char *byte = format; *byte != '\0'; ++byte) {
        switch (*byte) {
        case 'c':
            print_char_item(item++, va_arg(values, int));
            break;
        case 'd':
            print_decimal_item(item++, va_arg(values, int));
            break;
        case 'x':
            print_hex_item(item++, va_arg(values, uint32_t));
            break;
        case 's':
            print_text_item(item++, va_arg(values, const char *));
            break;
        default:
            break;
        }
    }
    va_end(values);
    puts("\r\n----kestro_test std result print end----");
}
