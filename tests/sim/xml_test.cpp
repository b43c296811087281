// The description queries, each against the delivered boards or a description of the test's own.
#include "tests/sim/support.h"

#include <gtest/gtest.h>

namespace kestro_tests {

namespace {

const test_board &master() {
    static const test_board board = new_delivered("mpu_master");
    return board;
}

void expect_answer(const std::string &call, const std::string &answer) {
    EXPECT_EQ(answers(master(), {call}), answer + "\n") << call;
}

const std::string not_described = "0x81110105";

} // namespace

TEST(XmlQuery, EntryNumCountsEntries) {
    expect_answer("xml_get_entry_num(module=\"i2c\", node=\"i2c_dev\")", "0x0 count=5");
    expect_answer("xml_get_entry_num(module=\"softreset_mng\", node=\"softreset_attr\")", "0x0 count=1");
    expect_answer("xml_get_entry_num(module=\"i2c\", node=\"none\")", not_described);
    expect_answer("xml_get_entry_num(module=\"none\", node=\"i2c_dev\")", not_described);
}

TEST(XmlQuery, NodeNumCountsNumberedNodes) {
    expect_answer("xml_get_node_num(module=\"irq_combiner\")", "0x0 count=2");
    expect_answer("xml_get_node_num(module=\"i2c\")", "0x0 count=0");
    expect_answer("xml_get_node_num(module=\"none\")", not_described);
}

TEST(XmlQuery, SpecifiedNodeNumCountsNodesOfAName) {
    expect_answer("xml_get_specified_node_num(module=\"board_mng\", node=\"dimm_info\")", "0x0 count=1");
    expect_answer("xml_get_specified_node_num(module=\"irq_combiner\", node=\"irq_combiner\")", "0x0 count=2");
    expect_answer("xml_get_specified_node_num(module=\"board_mng\", node=\"none\")", "0x0 count=0");
    expect_answer("xml_get_specified_node_num(module=\"none\", node=\"dimm_info\")", not_described);
}

TEST(XmlQuery, ElementNumbers) {
    expect_answer("xml_get_element_value_u32(module=\"i2c\", node=\"i2c_dev\", entry=\"entry2\", element=\"chip_id\")",
                  "0x0 value=16");
    expect_answer("xml_get_element_value_u64(module=\"i2c\", node=\"i2c_dev\", entry=\"entry2\", element=\"chip_id\")",
                  "0x0 value=16");
    expect_answer("xml_get_element_value_u32(module=\"irq_combiner\", node=\"irq_combiner@1\", entry=\"hwirq_cfg2\", "
                  "element=\"type\")",
                  "0x0 value=34");
    expect_answer("xml_get_element_value_u64(module=\"sim_identity\", node=\"mac\", entry=\"1\", element=\"base\")",
                  "0x0 value=0x2a0c0090020");
    expect_answer("xml_get_element_value_u32(module=\"i2c\", node=\"i2c_dev\", entry=\"entry5\", element=\"chip_id\")",
                  not_described);
    expect_answer("xml_get_element_value_u32(module=\"i2c\", node=\"i2c_dev\", entry=\"entry2\", element=\"none\")",
                  not_described);
    expect_answer("xml_get_element_value_u64(module=\"i2c\", node=\"none\", entry=\"entry2\", element=\"chip_id\")",
                  not_described);
}

TEST(XmlQuery, ElementsThatAreNoSuchNumber) {
    expect_answer("xml_get_element_value_u32(module=\"sim_identity\", node=\"mac\", entry=\"1\", element=\"base\")",
                  "0x81110106");
    expect_answer(
        "xml_get_element_value_u32(module=\"sim_identity\", node=\"eeprom\", entry=\"0\", element=\"layout\")",
        "0x81110106");
    expect_answer(
        "xml_get_element_value_u64(module=\"sim_identity\", node=\"eeprom\", entry=\"0\", element=\"layout\")",
        "0x81110106");
}

TEST(XmlQuery, NegativeNumbers) {
    const test_board board = new_altered("lpu", {{"self/temp_mng/temp_attr/entry0/temperature_id", "-5"}});
    EXPECT_EQ(answers(board, {"xml_get_element_value_u32(module=\"temp_mng\", node=\"temp_attr\", entry=\"entry0\", "
                              "element=\"temperature_id\")",
                              "xml_get_element_value_u64(module=\"temp_mng\", node=\"temp_attr\", entry=\"entry0\", "
                              "element=\"temperature_id\")"}),
              "0x0 value=0xfffffffb\n0x0 value=0xfffffffffffffffb\n");
}

TEST(XmlQuery, ElementStrings) {
    expect_answer(
        "xml_get_element_string(module=\"sim_identity\", node=\"eeprom\", entry=\"0\", element=\"layout\", size=128)",
        "0x0 text=\"next_generation\"");
    expect_answer(
        "xml_get_element_string(module=\"sim_identity\", node=\"eeprom\", entry=\"0\", element=\"layout\", size=16)",
        "0x0 text=\"next_generation\"");
    expect_answer(
        "xml_get_element_string(module=\"sim_identity\", node=\"eeprom\", entry=\"0\", element=\"layout\", size=15)",
        "0x81110108");
    expect_answer(
        "xml_get_element_string(module=\"sim_identity\", node=\"eeprom\", entry=\"0\", element=\"layout\", size=0)",
        "0x81110108");
    expect_answer(
        "xml_get_element_string(module=\"i2c\", node=\"i2c_dev\", entry=\"entry2\", element=\"chip_id\", size=128)",
        "0x0 text=\"0x10\"");
    expect_answer(
        "xml_get_element_string(module=\"i2c\", node=\"i2c_dev\", entry=\"entry2\", element=\"none\", size=128)",
        not_described);
}

TEST(XmlQuery, Existence) {
    expect_answer("xml_is_module_exist(module=\"i2c\")", "0x0 flag=1");
    expect_answer("xml_is_module_exist(module=\"i3c\")", "0x0 flag=0");
    expect_answer("xml_is_node_exist(module=\"i2c\", node=\"i2c_dev\")", "0x0 flag=1");
    expect_answer("xml_is_node_exist(module=\"i2c\", node=\"none\")", "0x0 flag=0");
    expect_answer("xml_is_node_exist(module=\"none\", node=\"i2c_dev\")", "0x0 flag=0");
    expect_answer("xml_is_entry_exist(module=\"i2c\", node=\"i2c_dev\", entry=\"entry4\")", "0x0 flag=1");
    expect_answer("xml_is_entry_exist(module=\"i2c\", node=\"i2c_dev\", entry=\"entry5\")", "0x0 flag=0");
    expect_answer("xml_is_element_exist(module=\"i2c\", node=\"i2c_dev\", entry=\"entry4\", element=\"chip_id\")",
                  "0x0 flag=1");
    expect_answer("xml_is_element_exist(module=\"i2c\", node=\"i2c_dev\", entry=\"entry4\", element=\"none\")",
                  "0x0 flag=0");
}

TEST(XmlQuery, CardsHaveModulesOfTheirOwn) {
    expect_answer("xml_get_entry_num(inst_id=0xff000002, module=\"temp_mng\", node=\"temp_attr\")", "0x0 count=2");
    expect_answer("xml_get_entry_num(module=\"temp_mng\", node=\"temp_attr\")", "0x0 count=5");
    expect_answer("xml_is_module_exist(inst_id=0xff000005, module=\"temp_mng\")", "0x0 flag=0");
    expect_answer("xml_get_entry_num(inst_id=0xff000005, module=\"temp_mng\", node=\"temp_attr\")", not_described);
}

TEST(XmlQuery, InstancesThatAreNotThere) {
    // An empty slot, a slot behind the last, a place for a card that this board lacks, ids of no form.
    for (const std::string inst : {"0xff000006", "0xff000011", "0x0100ffff", "5", "0xff010005", "0x01010000"}) {
        EXPECT_EQ(answers(master(), {"xml_is_module_exist(module=\"i2c\", inst_id=" + inst + ")",
                                     "xml_load(inst_id=" + inst + ")", "xml_unload(inst_id=" + inst + ")"}),
                  no_such_instance + no_such_instance + no_such_instance)
            << inst;
    }
}

TEST(XmlQuery, TheOwnSlotIsTheBoardItself) {
    expect_answer("xml_get_entry_num(inst_id=0xff000009, module=\"i2c\", node=\"i2c_dev\")", "0x0 count=5");
}

TEST(XmlQuery, LoadAndUnload) {
    EXPECT_EQ(answers(master(), {"xml_load()", "xml_is_module_exist(module=\"i2c\")", "xml_unload()", "xml_unload()",
                                 "xml_is_module_exist(module=\"i2c\")", "xml_load(inst_id=0xff000005)"}),
              "0x0\n0x0 flag=1\n0x0\n0x0\n0x0 flag=1\n0x0\n");
}

} // namespace kestro_tests
