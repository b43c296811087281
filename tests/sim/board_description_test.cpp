// The board families against the descriptions: every device that a delivered description names for the checks is there
// and well, and a misspelt register is named.
#include "tests/sim/support.h"

#include <gtest/gtest.h>
#include <pugixml.hpp>

namespace kestro_tests {

namespace {

// The entries of a node of the board, whatever its module.
std::vector<pugi::xml_node> entries_of(const kestro_sim::description &chassis, const std::string &seat,
                                       const std::string &node) {
    std::vector<pugi::xml_node> entries;
    for (const pugi::xml_node module : chassis.place(place_of_seat(seat)).children()) {
        for (const pugi::xml_node entry : kestro_sim::named_child(module, node).children("entry")) {
            entries.push_back(entry);
        }
    }
    return entries;
}

std::string value_of(pugi::xml_node entry, const std::string &element) {
    return kestro_sim::named_child(entry, element).attribute("value").value();
}

// The values of an element over all entries of a node, but 255, which says that there is none.
std::vector<std::string> described(const std::string &board, const std::string &node, const std::string &element) {
    const auto chassis = read_board(board);
    std::vector<std::string> values;
    for (const pugi::xml_node entry : entries_of(*chassis, board, node)) {
        const std::string value = value_of(entry, element);
        if (!value.empty() && value != "255") {
            values.push_back(value);
        }
    }
    return values;
}

// The same call for each device of a node, in one process.
void expect_all(const std::string &board, const std::string &node, const std::string &element, const std::string &call,
                const std::string &input, const std::string &answer) {
    std::vector<std::string> calls;
    std::string expected;
    for (const std::string &id : described(board, node, element)) {
        calls.push_back(call + "(" + input + "=" + id + ")");
        expected += answer;
    }
    EXPECT_FALSE(calls.empty()) << board << ' ' << node;
    EXPECT_EQ(answers(new_delivered(board), calls), expected) << board << ' ' << call;
}

void expect_said(const altered &change, const std::string &text) {
    const std::string word = changed_chassis("lpu", change.path, change.value);
    const std::string file = changed_file;
    const std::string said = prepare_says(word, new_scratch_dir() + "/state");
    const size_t text_at = said.find(text);
    ASSERT_NE(text_at, std::string::npos) << said;
    EXPECT_EQ(said.substr(0, file.size() + 1), file + ":");
    EXPECT_EQ(said.substr(text_at), text);
}

} // namespace

class DeliveredBoard : public testing::TestWithParam<const char *> {};

TEST_P(DeliveredBoard, HasTheDevicesItNames) {
    const std::string board = GetParam();
    expect_all(board, "weld_map", "chip_id", "drv_board_check_four_corner_status", "chip_id",
               "0x0 status=0 dfx=\"\"\n");
    expect_all(board, "board_epld_power", "power_type", "drv_board_get_power_status", "type", "0x0 status=1\n");
    expect_all(board, "dimm_info", "chip_id", "drv_board_check_dimm_bus_status", "dimm_no", "0x0 status=0 dfx=\"\"\n");
    expect_all(board, "board_epld", "smb_tx_err_id", "drv_smb_get_tx_err_count", "slot_id", "0x0 count=0\n");
    expect_all(board, "board_epld", "smb_rx_err_id", "drv_smb_get_rx_err_count", "slot_id", "0x0 count=0\n");
}

TEST_P(DeliveredBoard, CountsItsLogicChips) {
    const std::string board = GetParam();
    const size_t chips = described(board, "cpld_cfg", "chip_id").size();
    EXPECT_EQ(answers(new_delivered(board), {"drv_board_get_cpld_num()"}), "0x0 num=" + std::to_string(chips) + "\n");
}

TEST_P(DeliveredBoard, HasTheSubboardsItNames) {
    const std::string board = GetParam();
    const test_board desk = new_delivered(board);
    const auto chassis = read_board(board);
    const auto entries = entries_of(*chassis, board, "subboard_attr");
    EXPECT_FALSE(entries.empty());
    for (const pugi::xml_node entry : entries) {
        const auto value = [&](const char *name) { return value_of(entry, name); };
        for (const auto &[element, call] : {std::pair{"type_cfg", "drv_subboard_get_type"},
                                            {"pcb_cfg", "drv_subboard_get_pcb_ver"},
                                            {"bom_ver_cfg", "drv_subboard_get_bom_ver"},
                                            {"online_cfg", "drv_subboard_get_online_status"}}) {
            const std::string answer = answers(desk, {call + ("(subboard_id=" + value("subboard_id") + ")")});
            EXPECT_EQ(answer.substr(0, 4) == "0x0 ", value(element) != "255") << call << value("subboard_id");
        }
    }
}

TEST_P(DeliveredBoard, HasTheInterruptsItNames) {
    const std::string board = GetParam();
    const test_board desk = new_delivered(board);
    const auto chassis = read_board(board);
    std::vector<pugi::xml_node> lines = entries_of(*chassis, board, "irq_combiner@0");
    std::erase_if(lines, [](pugi::xml_node line) { return value_of(line, "index_id").empty(); });
    EXPECT_FALSE(lines.empty());
    for (const pugi::xml_node line : lines) {
        const auto value = [&](const char *name) { return value_of(line, name); };
        EXPECT_EQ(answers(desk, {"drv_board_check_int_status(index_id=" + value("index_id") +
                                 ", type=" + value("type") + ")"}),
                  "0x0 result=0 dfx=\"\"\n")
            << value("index_id");
    }
}

INSTANTIATE_TEST_SUITE_P(Boards, DeliveredBoard, testing::Values("mpu_master", "mpu_slave", "lpu"));

TEST(BoardDescription, RegistersAreKnownByName) {
    expect_said({"name=\"bus_fault\"", "name=\"bus_falt\""},
                "unknown element 'bus_falt' of a memory module; the nearest is 'bus_fault'");
    expect_said({"<node name=\"link\">", "<node name=\"links\">"},
                "unknown node 'links' of sim_smb; the nearest is 'link'");
}

TEST(BoardDescription, DevicesAreNamedByNumbers) {
    expect_said({"<node name=\"cpu\">\n      <entry name=\"0\">", "<node name=\"cpu\">\n      <entry name=\"first\">"},
                "entry 'first' is no number; entries of devices are named by their plain number");
    expect_said({"<node name=\"cpu\">\n      <entry name=\"0\">", "<node name=\"cpu\">\n      <entry name=\"00\">"},
                "entry '00' is no number; entries of devices are named by their plain number");
}

TEST(BoardDescription, TextsAndNumbersAreToldApart) {
    expect_said({"name=\"part_number\" text=\"DIMM-4G-DDR4-2400-72\"", "name=\"part_number\" value=\"5\""},
                "element 'part_number' is not a text of at most 20 bytes; it holds its part number");
    expect_said({"text=\"DIMM-4G-DDR4-2400-72\"", "text=\"DIMM-4G-DDR4-2400-72E\""},
                "element 'part_number' is not a text of at most 20 bytes; it holds its part number");
    expect_said({"name=\"power_watts\" value=\"240\"", "name=\"power_watts\" text=\"240\""},
                "element 'power_watts' is not a number from 0 to 10000 (W); it holds the power that it may draw");
}

TEST(BoardDescription, EveryFamilyKnowsItsNames) {
    expect_said({"name=\"millivolts\"", "name=\"milivolts\""},
                "unknown element 'milivolts' of a voltage rail; the nearest is 'millivolts'");
    expect_said({"name=\"color\"", "name=\"colour\""}, "unknown element 'colour' of a lamp; the nearest is 'color'");
    expect_said({"name=\"is_output\"", "name=\"direction\""},
                "unknown element 'direction' of a pin of the processor; there are level, is_output");
    expect_said({"module name=\"sim_led\"", "module name=\"sim_lde\""},
                "unknown module 'sim_lde'; the nearest is 'sim_led'");
}

TEST(BoardDescription, ValuesAreWithinTheirRanges) {
    expect_said({"name=\"color\" value=\"1\"", "name=\"color\" value=\"4\""},
                "element 'color' is not 0 off, 1 green, 2 red, 3 yellow; it holds what it shows");
    expect_said({"name=\"is_output\" value=\"0\"", "name=\"is_output\" value=\"2\""},
                "element 'is_output' is not 0 or 1; it holds whether the processor drives it");
    expect_said({"name=\"celsius\" value=\"38\"", "name=\"celsius\" value=\"-65\""},
                "element 'celsius' is not a number from -64 to 191 (degrees Celsius); it holds how hot it is");
}

TEST(BoardDescription, WhatADeviceCannotDoWithoutIsThere) {
    expect_said({"<element name=\"freq_max\" value=\"100\"/>", ""},
                "element 'freq_max' is missing here; it holds the fastest it blinks");
}

} // namespace kestro_tests
