// The families and register spaces as tables of docs/registers.md.
#pragma once

#include <string>

namespace kestro_sim {

inline constexpr const char *table_begin = "<!-- registers: written by scripts/document -->\n";
inline constexpr const char *table_end = "<!-- registers end -->\n";

std::string register_tables();

} // namespace kestro_sim
