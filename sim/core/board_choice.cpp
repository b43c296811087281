// Which chassis, which board in it and which seat the word behind --board means.
#include "sim/core/chassis.h"
#include "sim/core/chassis_form.h"

#include <optional>

namespace kestro_sim {

namespace {

namespace fs = std::filesystem;

std::string seats_of(pugi::xml_node chassis) {
    std::string all;
    for (const pugi::xml_node slot : chassis.children("slot")) {
        if (const pugi::xml_attribute seat = slot.attribute("seat")) {
            all += (all.empty() ? "" : ", ") + std::string(seat.value());
        }
    }
    return all;
}

// The place of a seat by name, or of the first when none is asked for.
std::optional<std::string> place_of_seat(pugi::xml_node chassis, std::string_view name) {
    for (const pugi::xml_node slot : chassis.children("slot")) {
        const pugi::xml_attribute seat = slot.attribute("seat");
        if (seat && (name.empty() || name == seat.value())) {
            return slot_place(static_cast<uint32_t>(parse_number(slot.attribute("number").value()).value_or(0)));
        }
    }
    return std::nullopt;
}

board_choice choose_chassis(board_choice choice, const source_set &sources, pugi::xml_node root) {
    const auto seat = place_of_seat(root, root.attribute("seat").value());
    if (!seat) {
        sources.fail(root, "the chassis has no such seat",
                     "a slot has seat=\"name\", and the chassis names one of: " + seats_of(root));
    }
    choice.seat = *seat;
    return choice;
}

board_choice choose_file(board_choice choice, const fs::path &file) {
    source_set sources;
    const pugi::xml_node root = sources.read(file);
    if (is_tag(root, "chassis")) {
        choice.chassis_file = file;
        choice.chassis = root.attribute("name").value();
        return choose_chassis(std::move(choice), sources, root);
    }
    if (!is_tag(root, "board")) {
        sources.fail(root, std::string("<") + root.name() + "> stands here", "here <board> or <chassis> is due");
    }
    choice.board_file = file;
    choice.seat = slot_place(static_cast<uint32_t>(require_number(sources, root, "slot", slot_max)));
    return choice;
}

} // namespace

board_choice choose_board(const std::string &word, const fs::path &delivered) {
    source_set sources;
    board_choice choice{delivered, delivered / "chassis.xml", {}, {}, {}};
    const pugi::xml_node root = sources.read(choice.chassis_file);
    choice.chassis = root.attribute("name").value();
    const bool is_path = word.find('/') != std::string::npos;
    if (const auto seat = is_path ? std::nullopt : place_of_seat(root, word)) {
        choice.seat = *seat;
        return choice;
    }
    const fs::path file = fs::absolute(word).lexically_normal();
    std::error_code none;
    if (fs::exists(file, none) && !fs::is_directory(file, none)) {
        return choose_file(std::move(choice), file);
    }
    if (is_path) {
        throw description_error(file.string() + ": there is no such file; --board takes the file of a board or " +
                                "chassis, or a name: " + seats_of(root));
    }
    throw description_error("--board: there is no board '" + word +
                            "'; right are the file of a board or chassis and the names " + seats_of(root));
}

} // namespace kestro_sim
