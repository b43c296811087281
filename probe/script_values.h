// Takes the values of a script's line, which may hold one another.
#pragma once

#include "probe/cursor.h"
#include "probe/value.h"

namespace kestro_probe {

// Which values may be named: those that are read, those that are written, or both.
enum class side : uint8_t { input, output, both };

bool belongs(mark direction, side named);

// The word, where it stands next.
bool take_keyword(cursor &here, std::string_view keyword);

// A value that fits the place. Throws syntax_error.
value take_value(cursor &here, const shape &place);

} // namespace kestro_probe
