// Boards and driver calls: how they are made and run.
#include "tests/sim/support.h"

#include "sim/core/prepare.h"
#include "sim/core/store_error.h"
#include "tests/support/driver_calls.h"

#include <algorithm>
#include <filesystem>
#include <gtest/gtest.h>
#include <pugixml.hpp>
#include <sstream>
#include <stdexcept>

namespace kestro_tests {

namespace {

pugi::xml_node named(pugi::xml_node parent, const char *tag, const std::string &name) {
    const pugi::xml_node found = parent.find_child_by_attribute(tag, "name", name.c_str());
    if (found) {
        return found;
    }
    pugi::xml_node made = parent.append_child(tag);
    made.append_attribute("name") = name.c_str();
    return made;
}

// "slot7/card1/sim_board/unit/0/type" has the place in front, the four levels behind.
std::vector<std::string> split(const std::string &path) {
    std::vector<std::string> levels;
    std::istringstream stream(path);
    for (std::string level; std::getline(stream, level, '/');) {
        levels.push_back(level);
    }
    while (levels.size() > 5) {
        levels[0] += "/" + levels[1];
        levels.erase(levels.begin() + 1);
    }
    return levels;
}

void alter(pugi::xml_node board, const altered &change) {
    const std::vector<std::string> levels = split(change.path);
    const pugi::xml_node place = levels.at(0) == "self" ? board : named(board, "place", levels[0]);
    const pugi::xml_node node = named(named(place, "module", levels.at(1)), "node", levels.at(2));
    pugi::xml_node element = named(named(node, "entry", levels.at(3)), "element", levels.at(4));
    if (change.value.empty()) {
        element.append_attribute("remove") = "yes";
        return;
    }
    const bool is_number = change.value.find_first_not_of("0123456789abcdefx-") == std::string::npos;
    element.append_attribute(is_number ? "value" : "text") = change.value.c_str();
}

kestro_sim::board_choice choose(const std::string &word) {
    return kestro_sim::choose_board(word, build_dir() + "/sim/chassis");
}

pugi::xml_node slot_of_seat(const pugi::xml_document &chassis, const std::string &seat) {
    return chassis.child("chassis").find_child_by_attribute("slot", "seat", seat.c_str());
}

} // namespace

std::string changed_file;

std::string chassis_dir() {
    return build_dir() + "/sim/chassis";
}

test_board new_board(const std::string &word) {
    test_board board{word, new_scratch_dir() + "/state", {}, {}};
    try {
        const kestro_sim::board_choice choice = choose(word);
        board.description = kestro_sim::prepare_board(choice, board.state, false);
        board.seat = choice.seat;
    } catch (const std::exception &problem) {
        ADD_FAILURE() << problem.what();
    }
    return board;
}

test_board new_delivered(const std::string &seat) {
    return new_board(seat);
}

test_board board_to_make(const std::string &word, const std::string &state) {
    const kestro_sim::board_choice choice = choose(word);
    return {word, state, kestro_sim::merged_file(choice, state).string(), choice.seat};
}

test_board seen_from(const test_board &board, const std::string &seat) {
    test_board other = board;
    other.word = seat;
    other.seat = place_of_seat(seat);
    return other;
}

std::unique_ptr<kestro_sim::description> read_board(const std::string &word) {
    return kestro_sim::read_chassis(choose(word));
}

std::string place_of_seat(const std::string &seat) {
    return choose(seat).seat;
}

std::string changed_chassis(const std::string &seat, const std::string &part, const std::string &by) {
    const std::string dir = new_scratch_dir();
    std::filesystem::copy(chassis_dir(), dir, std::filesystem::copy_options::recursive);
    pugi::xml_document chassis;
    EXPECT_TRUE(chassis.load_file((dir + "/chassis.xml").c_str()));
    std::vector<std::string> files{dir + "/boards/" + slot_of_seat(chassis, seat).attribute("board").value() + ".xml"};
    for (const auto &entry : std::filesystem::directory_iterator(dir + "/parts")) {
        files.push_back(entry.path().string());
    }
    std::sort(files.begin() + 1, files.end());
    files.push_back(dir + "/chassis.xml");
    const std::string default_seat = "seat=\"mpu_master\">";
    write_file(files.back(), replaced(read_file(files.back()), default_seat, "seat=\"" + seat + "\">"));
    std::erase_if(files, [&](const std::string &file) {
        return std::filesystem::is_directory(file) || read_file(file).find(part) == std::string::npos;
    });
    changed_file = files.empty() ? "" : files.front();
    write_file(changed_file, replaced(read_file(files.at(0)), part, by));
    return dir + "/chassis.xml";
}

test_board new_changed(const std::string &seat, const std::string &part, const std::string &by) {
    return new_board(changed_chassis(seat, part, by));
}

test_board new_altered(const std::string &name, std::initializer_list<altered> alterations) {
    pugi::xml_document chassis;
    EXPECT_TRUE(chassis.load_file((chassis_dir() + "/chassis.xml").c_str()));
    const pugi::xml_node slot = slot_of_seat(chassis, name);
    pugi::xml_document own;
    pugi::xml_node board = own.append_child("board");
    board.append_attribute("name") = "altered";
    board.append_attribute("like") = slot.attribute("board").value();
    board.append_attribute("slot") = slot.attribute("number").value();
    for (const altered &change : alterations) {
        alter(board, change);
    }
    std::ostringstream content;
    own.save(content);
    return new_board(scratch_file("altered.xml", content.str()));
}

std::vector<std::string> environment_of(const test_board &board) {
    return {"KESTRO_SIM_BOARD=" + board.description, "KESTRO_SIM_STATE=" + board.state,
            "KESTRO_SIM_SEAT=" + board.seat};
}

process_result call_drivers(const std::vector<std::string> &lines, const std::vector<std::string> &environment) {
    std::vector<std::string> argv{build_dir() + "/kestro_call"};
    argv.insert(argv.end(), lines.begin(), lines.end());
    process_options options;
    options.environment = environment;
    options.environment.push_back("LD_LIBRARY_PATH=" + build_dir() + "/sim");
    process_result result = run_process(argv, options);
    result.out = without_calls(result.out);
    return result;
}

process_result call_drivers(const test_board &board, const std::vector<std::string> &lines) {
    return call_drivers(lines, environment_of(board));
}

std::string answers(const test_board &board, const std::vector<std::string> &lines) {
    const process_result result = call_drivers(board, lines);
    EXPECT_LE(result.status, 1);
    EXPECT_EQ(result.err, "");
    return result.out;
}

std::string launcher_prints(std::vector<std::string> options) {
    options.insert(options.begin(), launcher());
    const process_result result = run_process(options);
    EXPECT_EQ(result.err, "");
    EXPECT_EQ(result.status, 0);
    return result.out;
}

process_result odd_calls(const test_board &board, const std::vector<std::string> &words) {
    std::vector<std::string> argv{build_dir() + "/tests/odd_calls"};
    argv.insert(argv.end(), words.begin(), words.end());
    process_options options;
    options.environment = environment_of(board);
    return run_process(argv, options);
}

std::string bytes(const std::string &text, size_t length) {
    std::string shown = "[";
    for (size_t i = 0; i < std::max(text.size(), length); ++i) {
        char digits[4];
        const unsigned byte = i < text.size() ? static_cast<uint8_t>(text[i]) : 0;
        snprintf(digits, sizeof(digits), "%02x", byte);
        shown += (i > 0 ? " " : "") + std::string(digits);
    }
    return shown + "]";
}

std::string prepare_says(const std::string &word, const std::string &state, bool reset) {
    try {
        kestro_sim::prepare_board(choose(word), state, reset);
    } catch (const std::filesystem::filesystem_error &problem) {
        return kestro_sim::said_plainly(problem);
    } catch (const std::exception &problem) {
        return problem.what();
    }
    return "";
}

std::string replaced(std::string text, const std::string &part, const std::string &by) {
    const size_t at = text.find(part);
    if (at == std::string::npos) {
        throw std::runtime_error("nothing to replace: " + part);
    }
    return text.replace(at, part.size(), by);
}

} // namespace kestro_tests
