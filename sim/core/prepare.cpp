// Checks the description and makes the store. What was merged and found good is kept in the state directory and used
// again while none of its files has changed: the launcher starts thousands of times a day.
#include "sim/core/prepare.h"

#include "sim/core/catalogue.h"
#include "sim/core/fitting.h"
#include "sim/core/nearest.h"
#include "sim/core/state_check.h"
#include "sim/core/state_dir.h"
#include "sim/core/store.h"
#include "sim/devices/management/watchdog.h"

#include <algorithm>
#include <fstream>
#include <sstream>

namespace kestro_sim {

namespace {

namespace fs = std::filesystem;

// In front of the list of files: another form of merged files is not used again.
constexpr const char *merged_form = "merged chassis 2";

void check_chassis_of_store(const store &opened, const fs::path &state_dir, const description &chassis) {
    const store_identity kept = opened.identity();
    if (kept.board != chassis.name()) {
        throw store_error((state_dir / "store").string() + ": holds chassis '" + kept.board + "', not '" +
                          chassis.name() +
                          "'; choose another directory with --state, or make the chassis new with --reset");
    }
    if (kept.fingerprint != fingerprint(chassis)) {
        throw store_error((state_dir / "store").string() +
                          ": was made for other boards or cards or another EEPROM layout of chassis '" + kept.board +
                          "'; choose another directory with --state, or make the chassis new with --reset");
    }
}

// The libraries are known before a run, and without the description, whose reading takes its time.
fs::path list_of_lacking(const fs::path &merged) {
    return fs::path(merged).replace_extension(".lacking");
}

// A line for each: place and library.
std::string lacking_lines(const description &chassis) {
    std::string lines;
    for (const pugi::xml_node place : chassis.chassis().children("place")) {
        const pugi::xml_node module = place.find_child_by_attribute("module", "name", "sim_library");
        const pugi::xml_node node = module.find_child_by_attribute("node", "name", "lacking");
        for (const pugi::xml_node entry : node.children("entry")) {
            const pugi::xml_node name = entry.find_child_by_attribute("element", "name", "name");
            lines += std::string(place.attribute("name").value()) + " " + element_text(name).value_or("") + "\n";
        }
    }
    return lines;
}

fs::path list_of_sources(const fs::path &merged) {
    return fs::path(merged).replace_extension(".sources");
}

// The list holds a line for each file that was read: its stamp and its path.
bool is_up_to_date(const fs::path &merged) {
    std::ifstream list(list_of_sources(merged));
    std::string line;
    if (!std::getline(list, line) || line != merged_form) {
        return false;
    }
    uint64_t stamp = 0;
    size_t files = 0;
    while (list >> stamp && list.get() == ' ' && std::getline(list, line)) {
        if (stamp == 0 || stamp != file_stamp(line)) {
            return false;
        }
        ++files;
    }
    return files > 0 && fs::exists(merged);
}

void write_whole(const fs::path &file, const std::string &content) {
    fs::path draft = file;
    draft += ".new";
    std::ofstream stream(draft, std::ios::binary | std::ios::trunc);
    stream << content;
    stream.close();
    if (!stream) {
        fail_on(draft, "written", errno);
    }
    fs::rename(draft, file);
}

// The stamps were taken before the files were read: a change in between makes the list out of date.
void keep_merged(description &chassis, const fs::path &merged, const std::string &sources) {
    chassis.chassis().append_attribute("fingerprint") = std::to_string(fingerprint(chassis)).c_str();
    std::ostringstream content;
    chassis.document().save(content, "", pugi::format_raw | pugi::format_no_declaration);
    fs::create_directory(merged.parent_path());
    fs::remove(list_of_sources(merged));
    write_whole(merged, content.str());
    write_whole(list_of_lacking(merged), lacking_lines(chassis));
    write_whole(list_of_sources(merged), sources);
}

std::string stamps_of(const std::vector<fs::path> &files) {
    std::string lines = std::string(merged_form) + "\n";
    for (const fs::path &file : files) {
        lines += std::to_string(file_stamp(file)) + " " + file.string() + "\n";
    }
    return lines;
}

} // namespace

// One merged file for each choice of files, so that a sick board and the healthy one take turns on one state.
fs::path merged_file(const board_choice &choice, const fs::path &state_dir) {
    uint64_t mixed = 0xCBF29CE484222325U;
    for (const char c : choice.chassis_file.string() + "\n" + choice.board_file.string()) {
        mixed = (mixed ^ static_cast<unsigned char>(c)) * 0x100000001B3U;
    }
    std::ostringstream name;
    name << std::hex << mixed << ".xml";
    return state_dir / "chassis" / name.str();
}

fs::path prepare_board(const board_choice &choice, const fs::path &state_dir, bool reset) {
    claim_state_dir(state_dir);
    state_lock lock(state_dir);
    fs::path merged = merged_file(choice, state_dir);
    const bool is_kept = finish_making(lock, state_dir) && !reset;
    if (is_kept) {
        const store opened(state_dir);
        check_state(opened, state_dir);
        if (is_up_to_date(merged)) {
            return merged;
        }
    }
    const std::unique_ptr<description> chassis = read_chassis(choice);
    const std::string sources = stamps_of(chassis->sources().files());
    if (is_kept) {
        check_chassis_of_store(store(state_dir), state_dir, *chassis);
    } else {
        make_state(lock, state_dir, *chassis);
    }
    keep_merged(*chassis, merged, sources);
    return merged;
}

std::vector<std::string> lacking_libraries(const fs::path &merged, const std::string &seat) {
    std::vector<std::string> libraries;
    std::ifstream list(list_of_lacking(merged));
    std::string place;
    std::string library;
    while (list >> place >> library) {
        if (place == seat) {
            libraries.push_back(library);
        }
    }
    return libraries;
}

void refit(const fs::path &merged, const fs::path &state_dir, const refitting &wanted) {
    const state_lock lock(state_dir);
    board b(merged, state_dir, std::string(chassis_place));
    b.begin_operation();
    settle_bites(b);
    std::vector<std::string> places;
    for (const pugi::xml_node place : b.described().chassis().children("place")) {
        if (place.attribute("name").value() != chassis_place) {
            places.emplace_back(place.attribute("name").value());
        }
    }
    for (const auto *list : {&wanted.pull, &wanted.plug}) {
        for (const std::string &place : *list) {
            if (std::find(places.begin(), places.end(), place) == places.end()) {
                throw description_error(std::string(list == &wanted.pull ? "--pull" : "--plug") +
                                        ": nothing belongs to place '" + place + "'; nearest: '" +
                                        nearest(place, places) + "'");
            }
        }
    }
    write_down_everything(b);
    for (const std::string &place : wanted.pull) {
        pull(b, place);
    }
    for (const std::string &place : wanted.plug) {
        plug(b, place);
    }
}

// Without the description: this is done at every start.
bool require_fitted(const fs::path &state_dir, const std::string &seat) {
    check_folders_of(seat, state_dir);
    const state_lock lock(state_dir);
    store opened(state_dir);
    opened.recover();
    if (opened.get(pulled_key(seat)).value_or(0) != 0) {
        throw description_error("--board: the board at " + seat + " is pulled out; right is --plug " + seat);
    }
    return are_watchdogs_on(opened);
}

bool settle_before_run(const fs::path &merged, const fs::path &state_dir, const std::string &seat) {
    const state_lock lock(state_dir);
    board b(merged, state_dir, seat);
    b.begin_operation();
    settle_bites(b);
    return next_bite(b, seat).has_value();
}

} // namespace kestro_sim
