// How parts of a description come together: modules are laid over modules of the same name, level by level, and what a
// board gets from its place is put in for ${...}.
#pragma once

#include "sim/core/sources.h"

#include <functional>
#include <map>
#include <pugixml.hpp>
#include <string>

namespace kestro_sim {

using variable_map = std::map<std::string, std::string>;

// Lays the children of one parent over those of another. What both have keeps its place and takes the new values;
// remove="yes" takes a part away, which must be there. Children that take_apart takes are not laid.
void lay_over(source_set &sources, pugi::xml_node target, pugi::xml_node source,
              const std::function<bool(pugi::xml_node)> &take_apart = nullptr);

// A copy at the end of the parent.
pugi::xml_node copy_into(source_set &sources, pugi::xml_node parent, pugi::xml_node original);

// Puts the place's variables in for ${name}, and for ${module/node/entry/element} what that element of the place holds;
// works out sums ("${mac_base}+0x20") in values.
void substitute(source_set &sources, pugi::xml_node place, const variable_map &variables);

// Fills lists: <node name="check_attr" each="sim_voltage/rail" element="voltage_id"/> becomes an entry per rail, with
// its number in that element.
void fill_lists(source_set &sources, pugi::xml_node place);

// The same for a text that stands outside of the description. What is unknown is left as it is.
std::string substituted(std::string text, const variable_map &variables);

} // namespace kestro_sim
