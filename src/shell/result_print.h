// The standard result print: what a driver call returned, item by item, for people and scripts alike.
#pragma once

// Walks the format: each 'c', 'd', 'x' or 's' prints one value as "para[%d]=..."; every other byte is skipped. Ends
// with the result print's end line.
void print_result(const char *format, ...) __attribute__((format(printf, 1, 2)));
