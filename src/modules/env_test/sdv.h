// The self-tests of the two stores of variables: the test variables, and what is said of them.
#pragma once

#include <cstdint>

namespace env_commands {

inline constexpr const char *sdv_text_name = "sdv_test";
inline constexpr const char *sdv_text = "kestro_ok";
inline constexpr const char *sdv_number_name = "sdv_test_num";
inline constexpr uint32_t sdv_number = 8899;
inline constexpr uint32_t sdv_base = 10;

// What a driver is told of the area for a value; the area has one byte more.
inline constexpr uint32_t sdv_value_size = 128;

// A value that is not the one that was set is told, and does not fail the test.
void compare_text(const char *value, const char *pass);
void compare_number(uint32_t value, const char *pass);

// The two copies of a store, told in the same way.
void report_copies(bool are_equal, const char *pass);

} // namespace env_commands
