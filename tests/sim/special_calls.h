// Driver calls whose arguments do not follow from their types: areas of text, repeated writes, callbacks, null
// pointers.
#pragma once

#include "tests/sim/call_arguments.h"

#include <map>
#include <string>

namespace kestro_tests {

void add_identity_areas(std::map<std::string, handler> &calls);
void add_listeners(std::map<std::string, handler> &calls);
void add_other_specials(std::map<std::string, handler> &calls);

} // namespace kestro_tests
