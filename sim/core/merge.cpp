// Laying over, substitution and lists.
#include "sim/core/merge.h"

#include "sim/core/description.h"

#include <algorithm>
#include <array>
#include <set>
#include <vector>

namespace kestro_sim {

namespace {

constexpr int reference_depth_max = 8;

std::string in_quotes(std::string_view text) {
    return "'" + std::string(text) + "'";
}

void take_attributes(pugi::xml_node target, pugi::xml_node source) {
    // A number in place of a text leaves no text behind.
    if (source.attribute("value") || source.attribute("text")) {
        target.remove_attribute("value");
        target.remove_attribute("text");
    }
    for (const pugi::xml_attribute given : source.attributes()) {
        target.remove_attribute(given.name());
        target.append_attribute(given.name()) = given.value();
    }
}

bool is_removal(const source_set &sources, pugi::xml_node item) {
    const pugi::xml_attribute remove = item.attribute("remove");
    if (remove && std::string_view(remove.value()) != "yes") {
        sources.fail(item, "remove=" + in_quotes(remove.value()) + " says nothing", "write remove=\"yes\"");
    }
    return !remove.empty();
}

void lay_one(source_set &sources, pugi::xml_node target, pugi::xml_node item) {
    const std::string_view name = item.attribute("name").value();
    const pugi::xml_node known = name.empty() ? pugi::xml_node() : named_child(target, name);
    if (is_removal(sources, item)) {
        if (!known) {
            sources.fail(item, "there is no " + std::string(item.name()) + " " + in_quotes(name) + " to remove",
                         "name one that would be there without it");
        }
        target.remove_child(known);
        return;
    }
    if (!known || std::string_view(known.name()) != item.name()) {
        copy_into(sources, target, item);
        return;
    }
    take_attributes(known, item);
    sources.note_origin(known, item);
    lay_over(sources, known, item);
}

// What ${name} stands for, or nothing.
class resolver {
  public:
    resolver(const source_set &sources, pugi::xml_node place, const variable_map &variables)
        : sources_(sources), place_(place), variables_(variables) {
    }

    std::string resolve(pugi::xml_node where, std::string text, int depth = 0) const {
        for (size_t at = text.find("${"); at != std::string::npos; at = text.find("${", at)) {
            const size_t end = text.find('}', at);
            if (end == std::string::npos || depth > reference_depth_max) {
                sources_.fail(where, "the ${ in " + in_quotes(text) + " leads nowhere", "write ${name}");
            }
            const std::string value = value_of(where, text.substr(at + 2, end - at - 2), depth);
            text.replace(at, end - at + 1, value);
            at += value.size();
        }
        return text;
    }

  private:
    std::string value_of(pugi::xml_node where, const std::string &name, int depth) const {
        if (const auto known = variables_.find(name); known != variables_.end()) {
            return known->second;
        }
        if (name.find('/') != std::string::npos) {
            return value_at(where, name, depth);
        }
        std::string all;
        for (const auto &[known, value] : variables_) {
            all += (all.empty() ? "" : ", ") + known;
        }
        sources_.fail(where, "nothing gives " + in_quotes(name), "given are: " + all);
    }

    std::string value_at(pugi::xml_node where, const std::string &path, int depth) const {
        pugi::xml_node at = place_;
        for (size_t begin = 0; begin <= path.size();) {
            const size_t end = std::min(path.find('/', begin), path.size());
            at = named_child(at, path.substr(begin, end - begin));
            begin = end + 1;
        }
        const pugi::xml_attribute value = at.attribute("value");
        if (!value && !at.attribute("text")) {
            sources_.fail(where, "there is no element " + in_quotes(path) + " on this board",
                          "write ${module/node/entry/element}");
        }
        return resolve(where, value ? value.value() : at.attribute("text").value(), depth + 1);
    }

    const source_set &sources_;
    pugi::xml_node place_;
    const variable_map &variables_;
};

// "1+2" with numbers of any base; anything else is left for the check of values to complain about.
std::string summed(const std::string &text) {
    const size_t plus = text.find('+');
    if (plus == std::string::npos) {
        return text;
    }
    const auto left = parse_number(std::string_view(text).substr(0, plus));
    const auto right = parse_number(std::string_view(text).substr(plus + 1));
    return left && right ? std::to_string(*left + *right) : text;
}

void resolve_attributes(const resolver &known, pugi::xml_node item) {
    for (pugi::xml_attribute attribute : item.attributes()) {
        const std::string text = attribute.value();
        const bool is_value = std::string_view(attribute.name()) == "value";
        if (text.find("${") != std::string::npos || is_value) {
            const std::string resolved = known.resolve(item, text);
            attribute = (is_value ? summed(resolved) : resolved).c_str();
        }
    }
    for (const pugi::xml_node child : item.children()) {
        resolve_attributes(known, child);
    }
}

void fill_list(source_set &sources, pugi::xml_node place, pugi::xml_node list) {
    const std::string devices = list.attribute("each").value();
    const std::string element = list.attribute("element").value();
    const size_t slash = devices.find('/');
    if (slash == std::string::npos || element.empty() || list.first_child()) {
        sources.fail(list, "a list without its parts",
                     "write each=\"module/node\" element=\"name\", and nothing between the tags");
    }
    std::vector<uint64_t> numbers;
    const pugi::xml_node module = named_child(place, devices.substr(0, slash));
    for (const pugi::xml_node entry : named_child(module, devices.substr(slash + 1)).children("entry")) {
        numbers.push_back(parse_number(entry.attribute("name").value()).value_or(0));
    }
    std::sort(numbers.begin(), numbers.end());
    list.remove_attribute("each");
    list.remove_attribute("element");
    for (size_t i = 0; i < numbers.size(); ++i) {
        pugi::xml_node entry = list.append_child("entry");
        entry.append_attribute("name") = ("entry" + std::to_string(i)).c_str();
        pugi::xml_node made = entry.append_child("element");
        made.append_attribute("name") = element.c_str();
        made.append_attribute("value") = std::to_string(numbers[i]).c_str();
        sources.note_origin(entry, list);
        sources.note_origin(made, list);
    }
}

} // namespace

void lay_over(source_set &sources, pugi::xml_node target, pugi::xml_node source,
              const std::function<bool(pugi::xml_node)> &take_apart) {
    std::set<std::string> seen;
    for (const pugi::xml_node item : source.children()) {
        if (take_apart && take_apart(item)) {
            continue;
        }
        const std::string name = item.attribute("name").value();
        if (!name.empty() && !seen.insert(item.name() + ("/" + name)).second) {
            sources.fail(item, in_quotes(name) + " is there twice", "names differ among siblings");
        }
        lay_one(sources, target, item);
    }
}

pugi::xml_node copy_into(source_set &sources, pugi::xml_node parent, pugi::xml_node original) {
    pugi::xml_node made = parent.append_child(original.type());
    made.set_name(original.name());
    made.set_value(original.value());
    for (const pugi::xml_attribute attribute : original.attributes()) {
        made.append_attribute(attribute.name()) = attribute.value();
    }
    sources.note_origin(made, original);
    lay_over(sources, made, original);
    return made;
}

void substitute(source_set &sources, pugi::xml_node place, const variable_map &variables) {
    const resolver known(sources, place, variables);
    for (const pugi::xml_node module : place.children()) {
        resolve_attributes(known, module);
    }
}

void fill_lists(source_set &sources, pugi::xml_node place) {
    for (const pugi::xml_node module : place.children("module")) {
        for (const pugi::xml_node node : module.children("node")) {
            if (node.attribute("each")) {
                fill_list(sources, place, node);
            }
        }
    }
}

std::string substituted(std::string text, const variable_map &variables) {
    for (const auto &[name, value] : variables) {
        const std::string mark = "${" + name + "}";
        for (size_t at = text.find(mark); at != std::string::npos; at = text.find(mark, at + value.size())) {
            text.replace(at, mark.size(), value);
        }
    }
    return text;
}

} // namespace kestro_sim
