// xml_test: every sub-command on the real program, with the driver scripted, and what the description of the delivered
// chassis answers.
#include <gtest/gtest.h>

#include "tests/support/command.h"

using namespace kestro_tests;

namespace {

// A query about an element, as a driver call with its answer behind the closing bracket.
std::string asked(const std::string &operation, const std::string &inst_id, const std::string &answer) {
    return operation + "(inst_id=" + inst_id +
           ", module=\"board_mng\", node=\"dimm_info\", entry=\"entry0\", element=\"chip_id\"" + answer;
}

struct usage {
    const char *line;
    const char *printed;
};

void expect_usage(const usage &one) {
    expect_failure(std::string("xml_test ") + one.line, "", std::string("./kestro_test xml_test ") + one.printed);
}

} // namespace

TEST(XmlTest, UsageListsTheSubCommandsInOrder) {
    expect_run("xml_test", "",
               "kestro_test: too few args!\n\n\nUsage: kestro_test [OPTION]\t\n"
               "List the functionalities for kestro_test \n"
               " xml_get_string\n xml_get_value_u32\n xml_get_value_u64\n xml_get_entry_number\n xml_get_node_number\n"
               " xml_guest_element_exist\n xml_guest_entry_exist\n xml_guest_node_exist\n xml_guest_module_exist\n"
               " xml_file_load\n xml_file_unload\n",
               0);
}

TEST(XmlTest, TooFewWords) {
    for (const usage &one : {
             usage{"xml_get_string", "xml_get_string [inst_id] [module] [node] [entry] [attr]\r\n"},
             {"xml_get_string a b c", "xml_get_string [inst_id] [module] [node] [entry] [attr]\r\n"},
             {"xml_get_value_u32 a b c", "xml_get_value_u32 [inst_id] [module] [node] [entry] [attr]\r\n"},
             {"xml_get_value_u64 a b c", "xml_get_value_u64 [inst_id] [module] [node] [entry] [attr]\r\n"},
             {"xml_get_entry_number a", "xml_get_entry_number [inst_id] [module] [node]\r\n"},
             {"xml_get_node_number", "xml_get_node_number [inst_id] [module] [str]\r\n"},
             {"xml_guest_element_exist a b c", "xml_guest_element_exist [inst_id] [module] [node] [entry] [attr]\r\n"},
             {"xml_guest_entry_exist a b", "xml_guest_entry_exist [inst_id] [module] [node] [entry]\r\n"},
             {"xml_guest_node_exist a", "xml_guest_node_exist [inst_id] [module] [node]\r\n"},
             {"xml_guest_module_exist", "xml_guest_module_exist [inst_id] [module]\r\n"},
             {"xml_file_load", "xml_file_load [inst_id]\r\n"},
             {"xml_file_unload", "xml_file_unload [inst_id]\r\n"},
         }) {
        expect_usage(one);
    }
}

TEST(XmlTest, String) {
    expect_success("xml_test xml_get_string board_mng dimm_info entry0 chip_id",
                   asked("xml_get_element_string", "0xffffffff", ", size=128) = 0 text=\"DIMM 1 %d\""),
                   "string:DIMM 1 %d\r\n");
    expect_success("xml_test xml_get_string 0xff000007 board_mng dimm_info entry0 chip_id",
                   asked("xml_get_element_string", "0xff000007", ", size=128) = 0 text=\"\""), "string:\r\n");
    expect_success("xml_test xml_get_string board board_mng dimm_info entry0 chip_id more words",
                   asked("xml_get_element_string", "0", ", size=128) = 0 text=\"x\""), "string:x\r\n");
}

TEST(XmlTest, StringThatFillsItsArea) {
    const std::string filling(128, 'F');
    expect_success("xml_test xml_get_string board_mng dimm_info entry0 chip_id",
                   asked("xml_get_element_string", "0xffffffff", ", size=128) = 0 text=\"" + filling + "\""),
                   "string:" + filling + "\r\n");
}

TEST(XmlTest, StringThatNobodyWroteIsEmpty) {
    expect_success("xml_test xml_get_string board_mng dimm_info entry0 chip_id",
                   asked("xml_get_element_string", "0xffffffff", ", size=128) = 0"), "string:\r\n");
}

TEST(XmlTest, ValueOf32Bits) {
    const std::string line = "xml_test xml_get_value_u32 board_mng dimm_info entry0 chip_id";
    expect_success(line, asked("xml_get_element_value_u32", "0xffffffff", ") = 0 value=16"), "hex:0x0010 dec:0016\r\n");
    expect_success(line, asked("xml_get_element_value_u32", "0xffffffff", ") = 0 value=0xffffffff"),
                   "hex:0xffffffff dec:-001\r\n");
    expect_success(line, asked("xml_get_element_value_u32", "0xffffffff", ") = 0 value=0x80000000"),
                   "hex:0x80000000 dec:-2147483648\r\n");
    expect_success("xml_test xml_get_value_u32 0xff000007 board_mng dimm_info entry0 chip_id",
                   asked("xml_get_element_value_u32", "0xff000007", ") = 0"), "hex:0x0000 dec:0000\r\n");
}

TEST(XmlTest, ValueOf64Bits) {
    const std::string line = "xml_test xml_get_value_u64 board_mng dimm_info entry0 chip_id";
    expect_success(line, asked("xml_get_element_value_u64", "0xffffffff", ") = 0 value=0x2a0c0090020"),
                   "hex:0x2a0c0090020 dec:2889439838240\r\n");
    expect_success(line, asked("xml_get_element_value_u64", "0xffffffff", ") = 0 value=16"),
                   "hex:0x00000010 dec:00000016\r\n");
    expect_success(line, asked("xml_get_element_value_u64", "0xffffffff", ") = 0 value=0xfffffffffffffffb"),
                   "hex:0xfffffffffffffffb dec:-0000005\r\n");
    expect_success("xml_test xml_get_value_u64 7 board_mng dimm_info entry0 chip_id",
                   asked("xml_get_element_value_u64", "7", ") = 0"), "hex:0x00000000 dec:00000000\r\n");
}

TEST(XmlTest, NumberOfEntries) {
    expect_success("xml_test xml_get_entry_number i2c i2c_dev",
                   "xml_get_entry_num(inst_id=0xffffffff, module=\"i2c\", node=\"i2c_dev\") = 0 count=5",
                   "hex:0x0005 dec:0005\r\n");
    expect_success("xml_test xml_get_entry_number 0xff000007 i2c i2c_dev more",
                   "xml_get_entry_num(inst_id=0xff000007, module=\"i2c\", node=\"i2c_dev\") = 0 count=0xffffffff",
                   "hex:0xffffffff dec:-001\r\n");
}

// One word is the module, two are instance and module; the instance cannot be left out in front of a node.
TEST(XmlTest, NumberOfNodes) {
    expect_success("xml_test xml_get_node_number board_mng",
                   "xml_get_node_num(inst_id=0xffffffff, module=\"board_mng\") = 0 count=2", "hex:0x0002 dec:0002\r\n");
    expect_success("xml_test xml_get_node_number 0 board_mng",
                   "xml_get_node_num(inst_id=0, module=\"board_mng\") = 0 count=10000", "hex:0x2710 dec:10000\r\n");
    expect_success("xml_test xml_get_node_number 0 board_mng card",
                   "xml_get_specified_node_num(inst_id=0, module=\"board_mng\", node=\"card\") = 0 count=3",
                   "hex:0x0003 dec:0003\r\n");
    expect_success("xml_test xml_get_node_number 0xff000007 board_mng card more",
                   "xml_get_specified_node_num(inst_id=0xff000007, module=\"board_mng\", node=\"card\") = 0",
                   "hex:0x0000 dec:0000\r\n");
}

TEST(XmlTest, ElementExists) {
    expect_success("xml_test xml_guest_element_exist board_mng dimm_info entry0 chip_id",
                   asked("xml_is_element_exist", "0xffffffff", ") = 0 flag=1"), "hex:0x0001 dec:0001 str:exist\r\n");
    expect_success("xml_test xml_guest_element_exist 0xff000007 board_mng dimm_info entry0 chip_id",
                   asked("xml_is_element_exist", "0xff000007", ") = 0 flag=0"),
                   "hex:0x0000 dec:0000 str:not exist\r\n");
}

TEST(XmlTest, EntryExists) {
    expect_success(
        "xml_test xml_guest_entry_exist board_mng dimm_info entry0",
        "xml_is_entry_exist(inst_id=0xffffffff, module=\"board_mng\", node=\"dimm_info\", entry=\"entry0\") = 0 flag=1",
        "hex:0x0001 dec:0001 str:exist\r\n");
    expect_success(
        "xml_test xml_guest_entry_exist 0xff000007 board_mng dimm_info entry9",
        "xml_is_entry_exist(inst_id=0xff000007, module=\"board_mng\", node=\"dimm_info\", entry=\"entry9\") = 0",
        "hex:0x0000 dec:0000 str:not exist\r\n");
}

TEST(XmlTest, NodeExists) {
    expect_success(
        "xml_test xml_guest_node_exist board_mng dimm_info",
        "xml_is_node_exist(inst_id=0xffffffff, module=\"board_mng\", node=\"dimm_info\") = 0 flag=0x80000000",
        "hex:0x80000000 dec:-2147483648 str:exist\r\n");
    expect_success("xml_test xml_guest_node_exist 7 board_mng none",
                   "xml_is_node_exist(inst_id=7, module=\"board_mng\", node=\"none\") = 0 flag=0",
                   "hex:0x0000 dec:0000 str:not exist\r\n");
}

TEST(XmlTest, ModuleExists) {
    expect_success("xml_test xml_guest_module_exist board_mng",
                   "xml_is_module_exist(inst_id=0xffffffff, module=\"board_mng\") = 0 flag=2",
                   "hex:0x0002 dec:0002 str:exist\r\n");
    expect_success("xml_test xml_guest_module_exist 0x01ffff ''",
                   "xml_is_module_exist(inst_id=0x1ffff, module=\"\") = 0 flag=0",
                   "hex:0x0000 dec:0000 str:not exist\r\n");
}

// The word is the instance, and has no default.
TEST(XmlTest, LoadAndUnload) {
    expect_success("xml_test xml_file_load 0xff000007", "xml_load(inst_id=0xff000007) = 0", "xml_load ret:0\r\n");
    expect_success("xml_test xml_file_load board more", "xml_load(inst_id=0) = 0", "xml_load ret:0\r\n");
    expect_success("xml_test xml_file_unload -1", "xml_unload(inst_id=0xffffffff) = 0", "xml_unload ret:0\r\n");
    expect_failure("xml_test xml_file_load 7", "xml_load(inst_id=7) = 0x811101a4", "xml_load ret:2165375396\r\n");
    expect_failure("xml_test xml_file_unload 7", "xml_unload(inst_id=7) = 1", "xml_unload ret:1\r\n");
}

// Not even what the driver wrote before it failed.
TEST(XmlTest, QueriesThatFailPrintNothing) {
    const std::string element = " board_mng dimm_info entry0 chip_id";
    const std::string at = "(inst_id=0xffffffff, module=\"board_mng\"";
    expect_failure("xml_test xml_get_string" + element,
                   asked("xml_get_element_string", "0xffffffff", ", size=128) = 0x81110105 text=\"x\""), "");
    expect_failure("xml_test xml_get_value_u32" + element,
                   asked("xml_get_element_value_u32", "0xffffffff", ") = 0x81110105 value=1"), "");
    expect_failure("xml_test xml_get_value_u64" + element,
                   asked("xml_get_element_value_u64", "0xffffffff", ") = 0x81110106 value=1"), "");
    expect_failure("xml_test xml_get_entry_number board_mng none",
                   "xml_get_entry_num" + at + ", node=\"none\") = 0x81110105 count=1", "");
    expect_failure("xml_test xml_get_node_number board_mng", "xml_get_node_num" + at + ") = 0x81110105 count=1", "");
    expect_failure("xml_test xml_get_node_number -1 board_mng none",
                   "xml_get_specified_node_num" + at + ", node=\"none\") = 0x81110105 count=1", "");
    expect_failure("xml_test xml_guest_element_exist" + element,
                   asked("xml_is_element_exist", "0xffffffff", ") = 0x81110102 flag=1"), "");
    expect_failure("xml_test xml_guest_entry_exist board_mng none entry0",
                   "xml_is_entry_exist" + at + ", node=\"none\", entry=\"entry0\") = 7 flag=1", "");
    expect_failure("xml_test xml_guest_node_exist board_mng none",
                   "xml_is_node_exist" + at + ", node=\"none\") = 7 flag=1", "");
    expect_failure("xml_test xml_guest_module_exist board_mng", "xml_is_module_exist" + at + ") = 7 flag=1", "");
}

// The delivered chassis, from the master's seat: itself, the line card, a card, and an empty slot.
TEST(XmlTest, BoardsOfTheChassisAnswerFromTheirDescriptions) {
    struct question {
        const char *line;
        const char *script;
        const char *body; // null: refused
    };
    for (const question &one : {
             question{"xml_get_value_u32 i2c i2c_dev entry2 chip_id", "xml_get_element_value_u32 = pass",
                      "hex:0x0010 dec:0016\r\n"},
             {"xml_get_value_u32 0xff000009 i2c i2c_dev entry2 chip_id", "xml_get_element_value_u32 = pass",
              "hex:0x0010 dec:0016\r\n"},
             {"xml_get_value_u32 0xff000007 board_mng board_type entry0 card_on_slot_board",
              "xml_get_element_value_u32 = pass", "hex:0x0001 dec:0001\r\n"},
             {"xml_get_value_u64 sim_identity mac 1 base", "xml_get_element_value_u64 = pass",
              "hex:0x2a0c0090020 dec:2889439838240\r\n"},
             {"xml_get_string 0xff000007 sim_subboard board 0 type", "xml_get_element_string = pass", nullptr},
             {"xml_get_entry_number 0xff000007 board_mng subboard_attr", "xml_get_entry_num = pass",
              "hex:0x0002 dec:0002\r\n"},
             {"xml_get_node_number irq_combiner", "xml_get_node_num = pass", "hex:0x0002 dec:0002\r\n"},
             {"xml_get_node_number 0xff000007 irq_combiner irq_combiner", "xml_get_specified_node_num = pass",
              "hex:0x0001 dec:0001\r\n"},
             {"xml_guest_module_exist softreset_mng", "xml_is_module_exist = pass",
              "hex:0x0001 dec:0001 str:exist\r\n"},
             {"xml_guest_module_exist 0xff000007 softreset_mng", "xml_is_module_exist = pass",
              "hex:0x0000 dec:0000 str:not exist\r\n"},
             {"xml_guest_node_exist 0xff000005 board_mng dimm_info", "xml_is_node_exist = pass",
              "hex:0x0000 dec:0000 str:not exist\r\n"},
             {"xml_guest_module_exist 0xff000006 board_mng", "xml_is_module_exist = pass", nullptr},
             {"xml_file_load 0xff000007", "xml_load = pass", "xml_load ret:0\r\n"},
             {"xml_file_unload 0xffffffff", "xml_unload = pass", "xml_unload ret:0\r\n"},
         }) {
        const std::string line = std::string("xml_test ") + one.line;
        one.body != nullptr ? expect_success(line, one.script, one.body) : expect_failure(line, one.script, "");
    }
    expect_failure("xml_test xml_file_load 0xff000006", "xml_load = pass", "xml_load ret:2165375234\r\n");
}
