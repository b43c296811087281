// Boards and driver calls: how they are made and run.
#include "tests/sim/support.h"

#include "sim/core/prepare.h"
#include "tests/support/driver_calls.h"

#include <gtest/gtest.h>
#include <pugixml.hpp>
#include <sstream>
#include <stdexcept>

namespace kestro_tests {

namespace {

// Entries and elements that are altered may be new, modules and nodes stand there.
pugi::xml_node named(pugi::xml_node parent, const char *tag, const std::string &name) {
    const pugi::xml_node found = parent.find_child_by_attribute(tag, "name", name.c_str());
    if (found) {
        return found;
    }
    pugi::xml_node made = parent.append_child(tag);
    made.append_attribute("name") = name.c_str();
    return made;
}

pugi::xml_node module_of(pugi::xml_node board, const std::string &instance, const std::string &name) {
    for (const pugi::xml_node module : board.children("module")) {
        const std::string own = module.attribute("instance").as_string("self");
        if (own == instance && name == module.attribute("name").value()) {
            return module;
        }
    }
    throw std::runtime_error("no module " + instance + "/" + name);
}

void alter(pugi::xml_node board, const altered &change) {
    std::istringstream path(change.path);
    std::string levels[5];
    for (std::string &level : levels) {
        std::getline(path, level, '/');
    }
    const pugi::xml_node node = named(module_of(board, levels[0], levels[1]), "node", levels[2]);
    const pugi::xml_node entry = named(node, "entry", levels[3]);
    pugi::xml_node element = named(entry, "element", levels[4]);
    if (change.value.empty()) {
        pugi::xml_node(entry).remove_child(element);
        return;
    }
    const bool is_number = change.value.find_first_not_of("0123456789abcdefx-") == std::string::npos;
    element.remove_attribute("value");
    element.remove_attribute("text");
    element.append_attribute(is_number ? "value" : "text") = change.value.c_str();
}

} // namespace

std::string delivered_board(const std::string &name) {
    return build_dir() + "/sim/boards/" + name + ".xml";
}

test_board new_board(const std::string &description) {
    const test_board board{description, new_scratch_dir() + "/state"};
    EXPECT_EQ(prepare_says(board.description, board.state), "");
    return board;
}

test_board new_delivered(const std::string &name) {
    return new_board(delivered_board(name));
}

test_board new_changed(const std::string &name, const std::string &part, const std::string &by) {
    return new_board(scratch_file(name + ".xml", replaced(read_file(delivered_board(name)), part, by)));
}

test_board new_altered(const std::string &name, std::initializer_list<altered> alterations) {
    pugi::xml_document document;
    EXPECT_TRUE(document.load_file(delivered_board(name).c_str()));
    for (const altered &change : alterations) {
        alter(document.child("board"), change);
    }
    std::ostringstream content;
    document.save(content);
    return new_board(scratch_file(name + ".xml", content.str()));
}

process_result call_drivers(const test_board &board, const std::vector<std::string> &calls) {
    std::vector<std::string> argv{build_dir() + "/tests/sim_calls"};
    argv.insert(argv.end(), calls.begin(), calls.end());
    process_options options;
    options.environment = {"KESTRO_SIM_BOARD=" + board.description, "KESTRO_SIM_STATE=" + board.state};
    return run_process(argv, options);
}

std::string calls_print(const test_board &board, const std::vector<std::string> &calls) {
    const process_result result = call_drivers(board, calls);
    EXPECT_EQ(result.status, 0);
    EXPECT_EQ(result.err, "");
    return result.out;
}

std::string answers(const test_board &board, const std::vector<std::string> &lines) {
    return answers_of({"--board", board.description, "--state", board.state}, lines);
}

std::string prepare_says(const std::string &description, const std::string &state, bool reset) {
    return kestro_sim::prepare_board(description, state, reset).value_or("");
}

std::string replaced(std::string text, const std::string &part, const std::string &by) {
    const size_t at = text.find(part);
    if (at == std::string::npos) {
        throw std::runtime_error("nothing to replace: " + part);
    }
    return text.replace(at, part.size(), by);
}

} // namespace kestro_tests
