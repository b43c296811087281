// The interrupt section: each described line is registered, looked for in the kernel's table, and masked and unmasked.
#include <filesystem>
#include <fstream>
#include <gtest/gtest.h>

#include "tests/selftest/part.h"

using namespace kestro_tests;

namespace {

std::string combiners(int count) {
    return "xml_get_node_num(inst_id=0xffffffff, module=\"irq_combiner\") = 0 count=" + std::to_string(count) + "\n";
}

std::string line_element(int combiner, int entry, const std::string &name, const std::string &answer) {
    return "xml_get_element_value_u32(inst_id=0xffffffff, module=\"irq_combiner\", node=\"irq_combiner@" +
           std::to_string(combiner) + "\", entry=\"hwirq_cfg" + std::to_string(entry) + "\", element=\"" + name +
           "\") = " + answer + "\n";
}

std::string described_line(int combiner, int entry, const std::string &hwirq, const std::string &index,
                           const std::string &type) {
    return line_element(combiner, entry, "hwirq", "0 value=" + hwirq) +
           line_element(combiner, entry, "index_id", "0 value=" + index) +
           line_element(combiner, entry, "type", "0 value=" + type);
}

std::string no_line(int combiner, int entry) {
    return line_element(combiner, entry, "hwirq", "0x51");
}

std::string of_line(const std::string &index, const std::string &type) {
    return "(index=" + index + ", type=" + type;
}

std::string registers(const std::string &index, const std::string &type, const std::string &code = "0") {
    return "drv_intr_set_regist" + of_line(index, type) + ", handler=callback, user_data=null) = " + code + " x1\n";
}

std::string does(const std::string &operation, const std::string &index, const std::string &type,
                 const std::string &code = "0") {
    return "drv_intr_" + operation + of_line(index, type) + ") = " + code + " x1\n";
}

std::string good_line(const std::string &index, const std::string &type) {
    return registers(index, type) + does("set_unregist", index, type) + registers(index, type) +
           does("disable", index, type) + does("enable", index, type);
}

// A directory of board files with that table of interrupts.
std::string with_table(const std::string &table) {
    const std::string root = new_scratch_dir();
    std::filesystem::create_directories(root + "/proc");
    std::ofstream(root + "/proc/interrupts") << table;
    return root;
}

// One line at index 4 of type 7, whose hwirq the kernel knows.
void expect_step(const std::string &script, const std::string &lines, int result) {
    expect_part_on(with_table(" 40:  0  combiner  0 Edge  intr0 33\n"), "intr",
                   combiners(1) + described_line(0, 0, "33", "4", "7") + no_line(0, 1) + script, lines, result);
}

} // namespace

TEST(InterruptSectionTest, TheNodesCannotBeCounted) {
    expect_part("intr", "xml_get_node_num(inst_id=0xffffffff, module=\"irq_combiner\") = 0x8111a4\n",
                "Error  : intr get xml irq_combiner fail 0x8111a4\r\n", -1);
}

TEST(InterruptSectionTest, ABoardWithoutCombinersHasNoLines) {
    expect_part("intr", combiners(0), "", 0);
    expect_part("intr", "xml_get_node_num = 0\n", "", 0);
}

TEST(InterruptSectionTest, ACombinerWithoutLines) {
    expect_part("intr", combiners(2) + no_line(0, 0) + no_line(1, 0), "", 0);
}

TEST(InterruptSectionTest, LinesOfTwoCombinersPass) {
    expect_part_on(
        with_table("           CPU0\n 40:  0  combiner  0 Edge  intr0 33\n 41:  0  combiner  1 Edge  intr0 34\n"
                   " 42:  0  combiner  2 Edge  intr1 33\n"),
        "intr",
        combiners(2) + described_line(0, 0, "33", "4", "7") + described_line(0, 1, "34", "0xff", "12") + no_line(0, 2) +
            described_line(1, 0, "33", "5", "30") + no_line(1, 1) + good_line("4", "7") + good_line("0xff", "12") +
            good_line("5", "30"),
        "Success: irq_combiner@0 regist unregist enable disbale test pass index 0x4 type card-int 7\r\n"
        "Success: irq_combiner@0 regist unregist enable disbale test pass index 0xff type mac-int 12\r\n"
        "Success: irq_combiner@1 regist unregist enable disbale test pass index 0x5 type peer-wdg-rst-int 30\r\n",
        0);
}

TEST(InterruptSectionTest, AnAbsentIndexIsAllOnes) {
    expect_part_on(
        with_table("intr0 33\n"), "intr",
        combiners(1) + line_element(0, 0, "hwirq", "0 value=33") + line_element(0, 0, "index_id", "0x51 value=6") +
            line_element(0, 0, "type", "0 value=13") + no_line(0, 1) + good_line("0xffffffff", "13"),
        "Success: irq_combiner@0 regist unregist enable disbale test pass index 0xffffffff type woffline-int 13\r\n",
        0);
}

// A reader of the description that succeeds without a value: hwirq 0, no index, type 0.
TEST(InterruptSectionTest, PresetsOfElements) {
    expect_part_on(
        with_table("intr0 0\n"), "intr",
        combiners(1) + line_element(0, 0, "hwirq", "0") + line_element(0, 0, "index_id", "0") +
            line_element(0, 0, "type", "0") + no_line(0, 1) + good_line("0xffffffff", "0"),
        "Success: irq_combiner@0 regist unregist enable disbale test pass index 0xffffffff type other-int 0\r\n", 0);
}

// The walk goes on behind the entry, and the section has failed.
TEST(InterruptSectionTest, AnEntryWithoutTypeIsLeftBehind) {
    expect_part_on(with_table("intr0 34\n"), "intr",
                   combiners(1) + line_element(0, 0, "hwirq", "0 value=33") +
                       line_element(0, 0, "index_id", "0 value=4") + line_element(0, 0, "type", "0x8111b5") +
                       described_line(0, 1, "34", "5", "14") + no_line(0, 2) + good_line("5", "14"),
                   "Error  : intr get xml type fail 0x8111b5. entry_name hwirq_cfg0 \r\n"
                   "Success: irq_combiner@0 regist unregist enable disbale test pass index 0x5 type sfu-offline-int "
                   "14\r\n",
                   -1);
}

TEST(InterruptSectionTest, TheFirstLineFailsAndTheSecondIsGood) {
    expect_part_on(with_table("intr0 33\nintr0 34\n"), "intr",
                   combiners(1) + described_line(0, 0, "33", "4", "10") + described_line(0, 1, "34", "5", "11") +
                       no_line(0, 2) + registers("4", "10", "0x71") + good_line("5", "11"),
                   "Error  : irq_combiner@0 regist fail 0x71 index 0x4 type msc-xsc-int 10\r\n"
                   "Success: irq_combiner@0 regist unregist enable disbale test pass index 0x5 type np-int 11\r\n",
                   -1);
}

// A code for what a driver lacks fails a line as any other does: a described line is there.
TEST(InterruptSectionTest, EachStepThatFailsEndsTheLine) {
    expect_step(registers("4", "7", "0x811101a4"),
                "Error  : irq_combiner@0 regist fail 0x811101a4 index 0x4 type card-int 7\r\n", -1);
    expect_step(registers("4", "7") + does("set_unregist", "4", "7", "0x72"),
                "Error  : irq_combiner@0 unregist fail 0x72 index 0x4 type card-int 7\r\n", -1);
    expect_step(registers("4", "7") + does("set_unregist", "4", "7") + registers("4", "7", "0x73"),
                "Error  : irq_combiner@0 re regist fail 0x73 index 0x4 type card-int 7\r\n", -1);
    const std::string again = registers("4", "7") + does("set_unregist", "4", "7") + registers("4", "7");
    expect_step(again + does("disable", "4", "7", "0x74"),
                "Error  : irq_combiner@0 disable fail 0x74 index 0x4 type card-int 7\r\n", -1);
    expect_step(again + does("disable", "4", "7") + does("enable", "4", "7", "0x75"),
                "Error  : irq_combiner@0 enable fail 0x75 index 0x4 type card-int 7\r\n", -1);
}

TEST(InterruptSectionTest, ALineThatTheKernelDoesNotKnow) {
    const std::string script =
        combiners(2) + no_line(0, 0) + described_line(1, 0, "33", "4", "34") + no_line(1, 1) + registers("4", "34");
    const std::string lines = "Error  : irq_combiner@1 regist check /proc/interrupts fail index 0x4 type "
                              "reset-bitton-int 34\r\n";
    expect_part_on(with_table("intr0 33\nintr1 34\nintr2 33\n"), "intr", script, lines, -1);
    expect_part_on(with_table(""), "intr", script, lines, -1);
    expect_part("intr", script, lines, -1); // a board without the table
}

TEST(InterruptSectionTest, TypesAreNamed) {
    const std::pair<int, const char *> types[] = {
        {0, "other-int"},   {1, "card-offline-int"},    {2, "lpu-offline-int"},  {3, "other-int"},
        {4, "other-int"},   {5, "lpu-mode-butto-intn"}, {6, "other-int"},        {7, "card-int"},
        {8, "card-bp-int"}, {9, "msc-scc-int"},         {10, "msc-xsc-int"},     {11, "np-int"},
        {12, "mac-int"},    {13, "woffline-int"},       {14, "sfu-offline-int"}, {15, "other-int"},
        {29, "other-int"},  {30, "peer-wdg-rst-int"},   {31, "other-int"},       {32, "dyinggasp-int"},
        {33, "other-int"},  {34, "reset-bitton-int"},   {35, "other-int"},       {200, "other-int"},
    };
    std::string script = combiners(1);
    std::string lines;
    int entry = 0;
    for (const auto &[type, name] : types) {
        const std::string number = std::to_string(type);
        script += described_line(0, entry, "33", "4", number) + registers("4", number, "0x61");
        lines += "Error  : irq_combiner@0 regist fail 0x61 index 0x4 type " + std::string(name) + " " + number + "\r\n";
        ++entry;
    }
    expect_part("intr", script + no_line(0, entry), lines, -1);
}

TEST(InterruptSectionTest, TypesAreNumbersWithoutSign) {
    expect_part("intr",
                combiners(1) + described_line(0, 0, "33", "4", "0xffffffff") + no_line(0, 1) +
                    registers("4", "0xffffffff", "0x61"),
                "Error  : irq_combiner@0 regist fail 0x61 index 0x4 type other-int 4294967295\r\n", -1);
}

// A description that has an answer to every name is not walked for ever.
TEST(InterruptSectionTest, ACombinerHasNoMoreThan1024Lines) {
    const process_result run = run_part(
        {"--script", scratch_file("script", combiners(1) + "xml_get_element_value_u32(element=\"type\") = 0x51\n"
                                                           "xml_get_element_value_u32 = 0\n")},
        "intr");
    EXPECT_TRUE(run.out.ends_with("Error  : intr get xml type fail 0x51. entry_name hwirq_cfg1023 \r\nresult -1\n"));
}

TEST(InterruptSectionTest, TheDeliveredBoardsPass) {
    const process_result master = run_part({}, "intr");
    const std::string pass = " regist unregist enable disbale test pass index 0x";
    EXPECT_EQ(master.out, "Success: irq_combiner@0" + pass + "0 type card-offline-int 1\r\n" +
                              "Success: irq_combiner@0" + pass + "1 type card-int 7\r\n" + "Success: irq_combiner@0" +
                              pass + "2 type msc-scc-int 9\r\n" + "Success: irq_combiner@0" + pass +
                              "ffffffff type woffline-int 13\r\n" + "Success: irq_combiner@1" + pass +
                              "8 type peer-wdg-rst-int 30\r\n" + "Success: irq_combiner@1" + pass +
                              "9 type dyinggasp-int 32\r\n" + "Success: irq_combiner@1" + pass +
                              "a type reset-bitton-int 34\r\nresult 0\n");
    EXPECT_EQ(run_part({"--board", "mpu_slave"}, "intr").out, master.out);
    EXPECT_EQ(run_part({"--board", "lpu"}, "intr").out,
              "Success: irq_combiner@0" + pass + "0 type lpu-offline-int 2\r\n" + "Success: irq_combiner@0" + pass +
                  "1 type mac-int 12\r\n" + "Success: irq_combiner@0" + pass + "2 type np-int 11\r\nresult 0\n");
}
