// Text utilities of the self-test.
#pragma once

#include <cstddef>
#include <cstdint>

// Cuts trailing blanks in place and gives a pointer past the leading ones; only 0x20 is a blank. Null for null and for
// the pointer value with which debug builds fill uninitialised memory.
char *str_trim(char *text);

// The first place in the haystack that equals the needle but for case; null when there is none or the needle is empty.
const char *str_case_find(const char *haystack, const char *needle);

// A queried value for people: "Unknown" when the query failed, "abnormal" or "normal" for a status, else hexadecimal.
// The text stands in the out buffer or is a constant.
const char *status_to_text(uint32_t query_result, uint32_t value, char *out, size_t out_size, bool as_status);

// The first run of decimal digits as a number, -1 when the text has no digit.
void parse_first_number(const char *text, int32_t *number);
