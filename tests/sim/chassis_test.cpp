// One chassis: each fact of it stands once, each seat has its view of it, and boards of one's own take its places.
#include "sim/devices/management/board_unit.h"
#include "tests/sim/support.h"

#include "sim/core/fitting.h"
#include "sim/core/prepare.h"
#include "sim/core/state_dir.h"

#include <filesystem>
#include <gtest/gtest.h>
#include <map>
#include <sstream>

namespace kestro_tests {

namespace fs = std::filesystem;

namespace {

// Modules and nodes of more than this many lines are worth a part of their own.
constexpr long lines_that_may_repeat = 6;

std::string text_of(pugi::xml_node item) {
    std::ostringstream text;
    item.print(text, " ");
    return text.str();
}

// Where each longer module and node stands, by what it says.
std::map<std::string, std::vector<std::string>> blocks_of_all_files() {
    std::map<std::string, std::vector<std::string>> blocks;
    for (const auto &entry : fs::recursive_directory_iterator(source_dir() + "/sim/chassis")) {
        if (entry.path().extension() != ".xml") {
            continue;
        }
        pugi::xml_document document;
        EXPECT_TRUE(document.load_file(entry.path().c_str()));
        for (const pugi::xpath_node &found : document.select_nodes("//module | //module/node")) {
            const std::string text = text_of(found.node());
            if (std::count(text.begin(), text.end(), '\n') > lines_that_may_repeat) {
                blocks[text].push_back(entry.path().filename().string());
            }
        }
    }
    return blocks;
}

test_board own_board(const std::string &content) {
    return new_board(scratch_file("own.xml", content));
}

void expect_said(const std::string &content, const std::string &said) {
    const std::string file = scratch_file("own.xml", content);
    EXPECT_EQ(prepare_says(file, new_scratch_dir() + "/state"), file + ":" + said);
}

void refit(const test_board &board, const kestro_sim::refitting &wanted) {
    kestro_sim::refit(board.description, board.state, wanted);
}

void hand_over_to(const test_board &board, uint32_t slot) {
    const kestro_sim::state_lock lock(board.state);
    kestro_sim::board b(board.description, board.state, board.seat);
    b.put(b.find_at<kestro_sim::mastership::family>(kestro_sim::board::chassis()), kestro_sim::mastership::slot, slot);
}

} // namespace

TEST(Chassis, NoBlockStandsTwice) {
    const auto blocks = blocks_of_all_files();
    EXPECT_GT(blocks.size(), 20U);
    for (const auto &[text, files] : blocks) {
        EXPECT_EQ(files.size(), 1U) << files.front() << " and " << files.back() << " both say\n" << text;
    }
}

TEST(Chassis, ProductionDataStandsInTheChassisAlone) {
    const std::string chassis = read_file(source_dir() + "/sim/chassis/chassis.xml");
    for (const std::string number : {"2511040080", "2511040081", "2511040107", "2411040505", "0x02A0C0090000"}) {
        EXPECT_NE(chassis.find(number), std::string::npos) << number;
        EXPECT_EQ(chassis.find(number), chassis.rfind(number)) << number;
        for (const char *folder : {"/sim/chassis/boards", "/sim/chassis/parts"}) {
            for (const auto &entry : fs::recursive_directory_iterator(source_dir() + folder)) {
                if (entry.is_regular_file()) {
                    EXPECT_EQ(read_file(entry.path().string()).find(number), std::string::npos) << entry.path();
                }
            }
        }
    }
}

TEST(Chassis, BoardsOfAKindDifferByTheirSlots) {
    const test_board master = new_delivered("mpu_master");
    const test_board slave = seen_from(master, "mpu_slave");
    EXPECT_EQ(answers(master, {"drv_barcode_read(barcode_id=1, len=128)", "drv_mac_get_addr(type_id=1)",
                               "xml_get_element_string(module=\"sim_board\", node=\"unit\", entry=\"0\", "
                               "element=\"peer_slot\", size=8)"}),
              "0x0 area=" + bytes("KT-MPU-1251104008001", 128) + "\n0x0 addr=[02 a0 c0 09 00 20]\n0x0 text=\"10\"\n");
    EXPECT_EQ(answers(slave, {"drv_barcode_read(barcode_id=1, len=128)", "drv_mac_get_addr(type_id=1)",
                              "xml_get_element_string(module=\"sim_board\", node=\"unit\", entry=\"0\", "
                              "element=\"peer_slot\", size=8)"}),
              "0x0 area=" + bytes("KT-MPU-1251104008101", 128) + "\n0x0 addr=[02 a0 c0 0a 00 20]\n0x0 text=\"9\"\n");
}

TEST(Chassis, ListsNameTheDevicesThereAre) {
    const test_board board = new_delivered("lpu");
    EXPECT_EQ(answers(board, {"xml_get_entry_num(module=\"mac_mng\", node=\"mac_storage_main\")",
                              "xml_get_element_value_u32(module=\"mac_mng\", node=\"mac_storage_spare\", "
                              "entry=\"entry1\", element=\"id\")",
                              "xml_get_element_value_u32(module=\"irq_combiner\", node=\"irq_combiner@0\", "
                              "entry=\"hwirq_cfg1\", element=\"type\")"}),
              "0x0 count=3\n0x0 value=3\n0x0 value=12\n");
}

TEST(Seat, APeerSeesWhatTheOtherDid) {
    const test_board master = new_delivered("mpu_master");
    const test_board slave = seen_from(master, "mpu_slave");
    EXPECT_EQ(answers(master, {"drv_board_set_self_bootstep(step=3)",
                               "drv_elabel_write(inst_id=0xff00000a, elabel_id=0, area=\"ABCD\", len=4)"}),
              ok + ok);
    EXPECT_EQ(answers(slave, {"drv_board_get_peer_bootstep()", "drv_elabel_read(elabel_id=0, len=4)",
                              "drv_elabel_read(inst_id=0xff00000a, elabel_id=0, len=4)",
                              "drv_elabel_read(inst_id=0xff000009, elabel_id=0, len=4)"}),
              "0x0 step=3\n0x0 area=" + bytes("ABCD") + "\n0x0 area=" + bytes("ABCD") + "\n0x0 area=" + bytes("[boa") +
                  "\n");
}

TEST(Seat, APeerResetShowsAtThePeer) {
    const test_board master = new_delivered("mpu_master");
    const test_board slave = seen_from(master, "mpu_slave");
    EXPECT_EQ(answers(slave, {"drv_reset_get_reason(index=0)"}), "0x0 reason=1\n");
    EXPECT_EQ(answers(master, {"drv_reset_peer_board()"}), ok);
    EXPECT_EQ(answers(slave, {"drv_reset_get_reason(index=0)", "drv_reset_get_reason(inst_id=0xff000009, index=0)"}),
              "0x0 reason=4\n0x0 reason=1\n");
}

TEST(Seat, CardsAreSeenByTheMaster) {
    const test_board master = new_delivered("mpu_master");
    const test_board slave = seen_from(master, "mpu_slave");
    const std::vector<std::string> calls{"drv_msc_get_state(sw_mode=0)",
                                         "drv_board_get_online_status(inst_id=0xff000005)",
                                         "drv_elabel_read(inst_id=0xff000005, elabel_id=0, len=4)",
                                         "find_section_info_by_section(inst_id=0xff000005, section_id=6)"};
    const std::string sees =
        "0x0 state=0\n0x0 status=0\n0x0 area=" + bytes("[boa") + "\n0x0 device_id=2 offset=0 size=16\n";
    const std::string does_not = "0x0 state=1\n0x0 status=1\n" + no_such_instance + no_such_instance;
    EXPECT_EQ(answers(master, calls), sees);
    EXPECT_EQ(answers(slave, calls), does_not);
    hand_over_to(master, 10);
    EXPECT_EQ(answers(master, calls), does_not);
    EXPECT_EQ(answers(slave, calls), sees);
    EXPECT_EQ(answers(slave, {"drv_msc_get_state(sw_mode=1)", "drv_msc_get_state(sw_mode=2)"}),
              "0x0 state=0\n0x0 state=0\n");
}

TEST(Seat, ALineCardReachesItselfAndItsCards) {
    const test_board lpu = new_delivered("lpu");
    EXPECT_EQ(answers(lpu, {"drv_board_get_type(inst_id=0xff000007)", "drv_board_get_type(inst_id=0x0100ffff)",
                            "drv_board_get_type(inst_id=0xff000009)", "drv_board_get_type(inst_id=0xff000005)",
                            "drv_board_get_online_status(inst_id=0xff000009)"}),
              "0x0 type=0x2302321\n0x0 type=0x2302201\n" + no_such_instance + no_such_instance + "0x0 status=1\n");
}

TEST(OwnBoard, IsTheHealthyOneWithOneFault) {
    const test_board board = own_board("<board name=\"sick\" like=\"mpu\" slot=\"9\">\n"
                                       "  <module name=\"sim_board\"><node name=\"corner\"><entry name=\"1\">\n"
                                       "    <element name=\"status\" value=\"4\"/>\n"
                                       "  </entry></node></module>\n"
                                       "  <module name=\"pci\" remove=\"yes\"/>\n"
                                       "  <place name=\"slot5\"><module name=\"sim_board\"><node name=\"unit\">\n"
                                       "    <entry name=\"0\"><element name=\"bom_id\" value=\"${slot}+70\"/></entry>\n"
                                       "  </node></module></place>\n"
                                       "</board>\n");
    EXPECT_EQ(board.seat, "slot9");
    EXPECT_EQ(
        answers(board, {"drv_board_get_four_corner_status(chip_id=0)", "drv_board_get_four_corner_status(chip_id=1)",
                        "xml_is_module_exist(module=\"pci\")", "xml_is_module_exist(module=\"smi\")",
                        "drv_board_get_bom_id(inst_id=0xff000005)", "drv_barcode_read(barcode_id=0, len=128)"}),
        "0x0 status=0\n0x0 status=4\n0x0 flag=0\n0x0 flag=1\n0x0 bom_id=75\n0x0 area=" +
            bytes("KT-MPU-1251104008000", 128) + "\n");
}

TEST(OwnBoard, TakesAnEmptySlot) {
    const test_board board = own_board("<board name=\"second\" like=\"lpu\" slot=\"8\" serial=\"77\" mac_base=\"8\" "
                                       "dimm_serial=\"1\"/>");
    EXPECT_EQ(board.seat, "slot8");
    EXPECT_EQ(answers(board, {"drv_board_get_self_slotid()", "drv_barcode_read(barcode_id=0, len=128)"}),
              "0x0 slot_id=8\n0x0 area=" + bytes("KT-LPU-17700", 128) + "\n");
    EXPECT_EQ(answers(seen_from(board, "mpu_master"), {"drv_board_get_power(inst_id=0xff000008)"}), "0x0 power=240\n");
}

TEST(OwnBoard, MistakesAreNamedWhereTheyStand) {
    const std::string begin = "<board name=\"x\" like=\"mpu\" slot=\"9\">\n";
    expect_said("<board name=\"x\" like=\"mpo\" slot=\"9\"/>",
                "1: there is no board 'mpo'; right is one of: card, card_kv, card_old_qrm, card_old_router, lpu, mpu");
    expect_said("<board name=\"x\" like=\"mpu\" slot=\"99\"/>",
                "1: the chassis has no slot 99; use one of " + chassis_dir() + "/chassis.xml");
    expect_said(begin + "<module name=\"i2d\" remove=\"yes\"/></board>",
                "2: there is no module 'i2d' to remove; name one that would be there without it");
    expect_said(begin + "<module name=\"i2c\" remove=\"no\"/></board>",
                "2: remove='no' says nothing; write remove=\"yes\"");
    expect_said(begin + "\n<place name=\"slot6\"/></board>",
                "3: nothing is at place 'slot6'; right is one of: chassis, slot2, slot3, slot4, slot5, slot7, "
                "slot7/card1, slot7/card2, slot9, slot10");
    expect_said(begin + "<module name=\"a\"><node name=\"b\">\n<entry name=\"entry0\">\n"
                        "<element name=\"c\" value=\"${colour}\"/></entry></node></module></board>",
                "4: nothing gives 'colour'; given are: bootstep, dimm_serial, eeprom_device, index, item, mac_base, "
                "peer_slot, serial, slot, title");
    expect_said(begin + "<include part=\"none\"/></board>", "2: there is no part 'none'; right is one of: board, card, "
                                                            "console, eeprom_layouts, identity, label, lpu_chips, "
                                                            "mpu_chips, old_card");
    expect_said("<board name=\"x\">\n</board>", "1: a board without a slot; give it slot=\"a number up to 65535\"");
}

TEST(OwnBoard, MistakesOfItsKindAreNamedInTheKindsFile) {
    const std::string word = changed_chassis("mpu_master", "<element name=\"freq_max\" value=\"100\"/>",
                                             "<element name=\"freq_max\" value=\"often\"/>");
    const std::string content = read_file(changed_file);
    const auto lines =
        std::count(content.begin(), content.begin() + static_cast<std::ptrdiff_t>(content.find("often")), '\n');
    EXPECT_EQ(prepare_says(word, new_scratch_dir() + "/state"),
              changed_file + ":" + std::to_string(lines + 1) +
                  ": value 'often' of element 'freq_max' is no number; write a decimal or 0x number of at most 64 "
                  "bits, or use text=\"...\"");
}

TEST(OwnChassis, IsSeenFromItsOwnSeat) {
    const test_board board =
        new_board(scratch_file("small.xml", "<chassis name=\"small\">\n<include part=\"eeprom_layouts\"/>\n"
                                            "<slot number=\"3\" type=\"2\" board=\"lpu\" seat=\"only\" serial=\"1\" "
                                            "mac_base=\"2\" dimm_serial=\"3\"/>\n</chassis>\n"));
    EXPECT_EQ(board.seat, "slot3");
    EXPECT_EQ(answers(board, {"drv_slot_get_range()", "drv_slot_get_list(type=2)", "drv_board_get_self_slotid()",
                              "get_card_id(inst_id=0x0200ffff)", "drv_board_get_online_status(inst_id=0x0200ffff)"}),
              "0x0 slot_min=3 slot_max=3\n0x0 list={num=1 slot_id=" + bytes({3}, 128) + "}" +
                  "\n0x0 slot_id=3\n0x0 card_id=2\n0x0 status=1\n");
}

TEST(OwnChassis, MistakesAreNamed) {
    expect_said("<chassis name=\"x\">\n<slot number=\"1\" seat=\"s\"/></chassis>",
                "2: a slot without a type; give it type=\"a number up to 255\"");
    expect_said("<chassis name=\"x\">\n<slot number=\"1\" type=\"2\" seat=\"s\"/>\n<slot number=\"1\" type=\"2\"/>"
                "</chassis>",
                "3: slot 1 is there twice; slots differ by number");
    expect_said("<chassis name=\"x\">\n<slot number=\"1\" type=\"2\" seat=\"s\"><card place=\"1\" board=\"card\"/>"
                "</slot></chassis>",
                "2: a card on no board; the slot names its board with board=\"...\"");
    expect_said("<chassis name=\"x\">\n</chassis>",
                "1: the chassis has no such seat; a slot has seat=\"name\", and the chassis names one of: ");
}

TEST(Fitting, APulledCardIsGoneForEverybody) {
    const test_board master = new_delivered("mpu_master");
    const test_board lpu = seen_from(master, "lpu");
    answers(master, {"drv_elabel_write(inst_id=0xff000005, elabel_id=0, area=\"KEEP\", len=4)",
                     "drv_reset_board(inst_id=0xff000005)"});
    refit(master, {{"slot5", "slot7/card1"}, {}});
    EXPECT_EQ(answers(master,
                      {"drv_board_get_online_status(inst_id=0xff000005)",
                       "drv_elabel_read(inst_id=0xff000005, elabel_id=0, len=4)", "drv_board_get_card_ok(slot_id=5)"}),
              "0x0 status=1\n" + no_such_instance + "0x0 ok=1\n");
    EXPECT_EQ(answers(lpu, {"drv_board_get_online_status(inst_id=0x0100ffff)",
                            "drv_board_get_online_status(inst_id=0x0200ffff)"}),
              "0x0 status=1\n0x0 status=0\n");
    refit(master, {{}, {"slot5"}});
    EXPECT_EQ(answers(master, {"drv_board_get_online_status(inst_id=0xff000005)",
                               "drv_elabel_read(inst_id=0xff000005, elabel_id=0, len=4)",
                               "drv_reset_get_reason(inst_id=0xff000005, index=0)",
                               "drv_reset_get_reason(inst_id=0xff000005, index=1)"}),
              "0x0 status=0\n0x0 area=" + bytes("KEEP") + "\n0x0 reason=1\n0x0 reason=4\n");
}

TEST(Fitting, APulledBoardTakesItsCardsAlong) {
    const test_board master = new_delivered("mpu_master");
    refit(master, {{"slot7", "slot10"}, {}});
    EXPECT_EQ(answers(master, {"drv_board_get_online_status(inst_id=0xff000007)", "drv_board_get_peer_online_status()",
                               "drv_reset_peer_board()", "drv_board_get_peer_slotid()"}),
              "0x0 status=1\n0x0 status=1\n" + no_such_instance + "0x0 slot_id=10\n");
    EXPECT_THROW(kestro_sim::require_fitted(master.state, "slot7"), std::runtime_error);
    refit(master, {{}, {"slot7", "slot10"}});
    EXPECT_NO_THROW(kestro_sim::require_fitted(master.state, "slot7"));
    EXPECT_EQ(answers(seen_from(master, "lpu"),
                      {"drv_board_get_online_status(inst_id=0x0100ffff)", "drv_reset_get_reason(index=0)"}),
              "0x0 status=0\n0x0 reason=1\n");
}

TEST(Fitting, ChangesAreCountedAndRepetitionsAreNot) {
    const test_board master = new_delivered("mpu_master");
    refit(master, {{"slot5", "slot5"}, {"slot2"}});
    refit(master, {{}, {"slot5"}});
    const kestro_sim::state_lock lock(master.state);
    kestro_sim::board b(master.description, master.state, master.seat);
    EXPECT_EQ(kestro_sim::presence_changes(b, "slot5"), 2U);
    EXPECT_EQ(kestro_sim::presence_changes(b, "slot2"), 0U);
}

TEST(Fitting, AnUnknownPlaceHasANearestOne) {
    const test_board master = new_delivered("mpu_master");
    try {
        refit(master, {{"slot2", "slt7/card2"}, {}});
        FAIL() << "nothing was said";
    } catch (const std::exception &problem) {
        EXPECT_STREQ(problem.what(), "--pull: nothing belongs to place 'slt7/card2'; nearest: 'slot7/card2'");
    }
    EXPECT_EQ(answers(master, {"drv_board_get_online_status(inst_id=0xff000002)"}), "0x0 status=0\n");
}

} // namespace kestro_tests
