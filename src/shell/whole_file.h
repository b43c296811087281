// A file that is taken as a whole: an image for a driver, or what a checksum is worked out of.
#pragma once

#include <cstdint>

struct whole_file {
    uint8_t *bytes; // never null, also for an empty file; the caller frees it
    uint32_t length;
};

// Reads all of it into an area of its own, zeroed and exactly as long, by one read from its start; it is closed again
// then. Nothing waits for the other end of a pipe. When that did not work, the line about it is printed, there is no
// area, and the result is -1.
int read_whole_file(const char *path, whole_file *file);
