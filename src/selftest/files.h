// File utilities of the self-test.
#pragma once

#include <cstdint>

#include "selftest/report.h"

// Opens for reading what is a file, and gives its descriptor, or -1. Opening a device may set it off, and a pipe has
// nothing until somebody writes to it; the open does not wait either, should a pipe take the file's place in between.
int open_regular_file(const char *path);

// Reports every line of the file that contains the needle, read in pieces of at most 255 characters, and tells whether
// there was one. -1, with the flag left alone, when the file cannot be resolved and opened.
int grep_file(const char *path, const char *needle, uint32_t *found, report_sink sink);

// Appends the text and "\r\n". -1 when the file cannot be opened.
int append_line_to_file(const char *path, const char *text);

// Whether /proc/interrupts ties the combiner "intr<index>" to that interrupt number. -1 when it cannot be read.
int irq_in_proc_interrupts(uint32_t index, uint32_t expected, uint32_t *found);
