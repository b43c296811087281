// The form of chassis and board files.
#include "sim/core/chassis_form.h"

#include "sim/core/description.h"

namespace kestro_sim {

std::string in_quotes(std::string_view text) {
    return "'" + std::string(text) + "'";
}

bool is_tag(pugi::xml_node item, std::string_view tag) {
    return tag == item.name();
}

uint64_t require_number(const source_set &sources, pugi::xml_node item, const char *attribute, uint64_t max) {
    const auto number = parse_number(item.attribute(attribute).value());
    if (!number || *number > max) {
        sources.fail(item, std::string("a ") + item.name() + " without a " + attribute,
                     std::string("give it ") + attribute + "=\"a number up to " + std::to_string(max) + "\"");
    }
    return *number;
}

void require_tag(const source_set &sources, pugi::xml_node item, std::string_view tag) {
    if (!is_tag(item, tag)) {
        sources.fail(item, std::string("<") + item.name() + "> stands here", "here <" + std::string(tag) + "> is due");
    }
}

void require_name(const source_set &sources, pugi::xml_node item) {
    const std::string_view name = item.attribute("name").value();
    if (name.empty()) {
        sources.fail(item, std::string("a ") + item.name() + " without a name", "give it name=\"...\"");
    }
    if (name.find_first_of("/ \t\r\n") != std::string_view::npos || name == "." || name == "..") {
        sources.fail(item, "name " + in_quotes(name) + " holds a blank or a slash", "use letters, digits, _, - and @");
    }
}

} // namespace kestro_sim
