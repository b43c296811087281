// What every element of a chassis or board file must have. Each check throws description_error that points at the
// element.
#pragma once

#include "sim/core/sources.h"

#include <cstdint>
#include <string>
#include <string_view>

namespace kestro_sim {

inline constexpr uint64_t slot_max = 0xFFFF;

std::string in_quotes(std::string_view text);

bool is_tag(pugi::xml_node item, std::string_view tag);
void require_tag(const source_set &sources, pugi::xml_node item, std::string_view tag);

// An attribute that is a number up to max.
uint64_t require_number(const source_set &sources, pugi::xml_node item, const char *attribute, uint64_t max);

// A name without blanks and slashes: it becomes part of a path.
void require_name(const source_set &sources, pugi::xml_node item);

} // namespace kestro_sim
