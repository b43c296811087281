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
    EXPECT_EQ(calls_print(master(), {call}), answer + "\n") << call;
}

const std::string self = " 0xffffffff ";
const std::string not_described = "0x81110105";
const std::string unknown_instance = "0x81110102";

} // namespace

TEST(XmlQuery, EntryNumCountsEntries) {
    expect_answer("entry_num" + self + "i2c i2c_dev", "0x0 4");
    expect_answer("entry_num" + self + "softreset_mng softreset_attr", "0x0 1");
    expect_answer("entry_num" + self + "i2c none", not_described);
    expect_answer("entry_num" + self + "none i2c_dev", not_described);
}

TEST(XmlQuery, NodeNumCountsNumberedNodes) {
    expect_answer("node_num" + self + "irq_combiner", "0x0 2");
    expect_answer("node_num" + self + "i2c", "0x0 0");
    expect_answer("node_num" + self + "none", not_described);
}

TEST(XmlQuery, SpecifiedNodeNumCountsNodesOfAName) {
    expect_answer("specified_node_num" + self + "board_mng dimm_info", "0x0 1");
    expect_answer("specified_node_num" + self + "irq_combiner irq_combiner", "0x0 2");
    expect_answer("specified_node_num" + self + "board_mng none", "0x0 0");
    expect_answer("specified_node_num" + self + "none dimm_info", not_described);
}

TEST(XmlQuery, ElementNumbers) {
    expect_answer("u32" + self + "i2c i2c_dev entry2 chip_id", "0x0 16");
    expect_answer("u64" + self + "i2c i2c_dev entry2 chip_id", "0x0 16");
    expect_answer("u32" + self + "irq_combiner irq_combiner@1 hwirq_cfg2 type", "0x0 34");
    expect_answer("u64" + self + "sim_identity mac 1 base", "0x0 2889439838240");
    expect_answer("u32" + self + "i2c i2c_dev entry4 chip_id", not_described);
    expect_answer("u32" + self + "i2c i2c_dev entry2 none", not_described);
    expect_answer("u64" + self + "i2c none entry2 chip_id", not_described);
}

TEST(XmlQuery, ElementsThatAreNoSuchNumber) {
    expect_answer("u32" + self + "sim_identity mac 1 base", "0x81110106");
    expect_answer("u32" + self + "sim_identity eeprom 0 layout", "0x81110106");
    expect_answer("u64" + self + "sim_identity eeprom 0 layout", "0x81110106");
}

TEST(XmlQuery, NegativeNumbers) {
    const test_board board = new_altered("lpu", {{"self/temp_mng/temp_attr/entry0/temperature_id", "-5"}});
    EXPECT_EQ(calls_print(board, {"u32" + self + "temp_mng temp_attr entry0 temperature_id",
                                  "u64" + self + "temp_mng temp_attr entry0 temperature_id"}),
              "0x0 4294967291\n0x0 18446744073709551611\n");
}

TEST(XmlQuery, ElementStrings) {
    expect_answer("string" + self + "sim_identity eeprom 0 layout 128", "0x0 \"next_generation\"");
    expect_answer("string" + self + "sim_identity eeprom 0 layout 16", "0x0 \"next_generation\"");
    expect_answer("string" + self + "sim_identity eeprom 0 layout 15", "0x81110108");
    expect_answer("string" + self + "sim_identity eeprom 0 layout 0", "0x81110108");
    expect_answer("string" + self + "i2c i2c_dev entry2 chip_id 128", "0x0 \"0x10\"");
    expect_answer("string" + self + "i2c i2c_dev entry2 none 128", not_described);
}

TEST(XmlQuery, Existence) {
    expect_answer("module_exist" + self + "i2c", "0x0 1");
    expect_answer("module_exist" + self + "i3c", "0x0 0");
    expect_answer("node_exist" + self + "i2c i2c_dev", "0x0 1");
    expect_answer("node_exist" + self + "i2c none", "0x0 0");
    expect_answer("node_exist" + self + "none i2c_dev", "0x0 0");
    expect_answer("entry_exist" + self + "i2c i2c_dev entry3", "0x0 1");
    expect_answer("entry_exist" + self + "i2c i2c_dev entry4", "0x0 0");
    expect_answer("element_exist" + self + "i2c i2c_dev entry3 chip_id", "0x0 1");
    expect_answer("element_exist" + self + "i2c i2c_dev entry3 none", "0x0 0");
}

TEST(XmlQuery, CardsHaveModulesOfTheirOwn) {
    expect_answer("entry_num 0xff000002 temp_mng temp_attr", "0x0 2");
    expect_answer("entry_num" + self + "temp_mng temp_attr", "0x0 5");
    expect_answer("module_exist 0xff000005 temp_mng", "0x0 0");
    expect_answer("entry_num 0xff000005 temp_mng temp_attr", not_described);
}

TEST(XmlQuery, InstancesThatAreNotThere) {
    // An empty slot, a slot behind the last, a place for a card that this board lacks, ids of no form.
    for (const std::string inst : {"0xff000006", "0xff000011", "0x0100ffff", "5", "0xff010005", "0x01010000"}) {
        expect_answer("module_exist " + inst + " i2c", unknown_instance);
        expect_answer("load " + inst, unknown_instance);
        expect_answer("unload " + inst, unknown_instance);
    }
}

TEST(XmlQuery, TheOwnSlotIsTheBoardItself) {
    expect_answer("entry_num 0xff000009 i2c i2c_dev", "0x0 4");
}

TEST(XmlQuery, LoadAndUnload) {
    EXPECT_EQ(calls_print(master(), {"load" + self, "module_exist" + self + "i2c", "unload" + self, "unload" + self,
                                     "module_exist" + self + "i2c", "load 0xff000005"}),
              "0x0\n0x0 1\n0x0\n0x0\n0x0 1\n0x0\n");
}

} // namespace kestro_tests
