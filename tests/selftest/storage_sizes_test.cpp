// Sizes of the board's memories, and its memory modules, in the board self-test.
#include <gtest/gtest.h>

#include "tests/selftest/part.h"

using namespace kestro_tests;

namespace {

std::string size_rule(const std::string &memory, const std::string &answer) {
    return "drv_board_get_" + memory + "_size(inst_id=0xffffffff) = " + answer + "\n";
}

std::string good_sizes() {
    return size_rule("bootrom", "0 size=8") + size_rule("flash", "0 size=64") + size_rule("nandflash", "0 size=4096") +
           size_rule("nvram", "0 size=2") + size_rule("sdram", "0 size=8192");
}

const std::string sizes_line =
    "Success: bootrom_size 0x8 flash_size 0x40 nandflash_size 0x1000 nvram_size 0x2 sdram_size 0x2000\r\n";
const std::string no_dimms = "xml_get_entry_num(module=\"board_mng\", node=\"dimm_info\") = 0 count=0\n";
const std::string no_dimms_line = "Info   : not support dimm info.\r\n";

std::string modules(const std::vector<std::string> &answers) {
    std::string script = entry_count("board_mng", "dimm_info", static_cast<int>(answers.size()));
    for (size_t i = 0; i < answers.size(); ++i) {
        script += element("board_mng", "dimm_info", static_cast<int>(i), "chip_id", answers[i]);
    }
    return script;
}

std::string dimm(int chip, const std::string &answer) {
    return "drv_board_get_dimm_info(inst_id=0xffffffff, dimm_id=" + std::to_string(chip) + ", size=127) = " + answer +
           " x1\n";
}

void expect_sizes(const std::string &script, const std::string &lines, int result) {
    expect_part("storage_sizes", script, lines, result);
}

} // namespace

TEST(StorageSizesCheckTest, AllMemories) {
    expect_sizes(good_sizes() + no_dimms, sizes_line + no_dimms_line, 0);
}

TEST(StorageSizesCheckTest, DriversThatWriteNothing) {
    expect_sizes(size_rule("bootrom", "0") + size_rule("flash", "0") + size_rule("nandflash", "0") +
                     size_rule("nvram", "0") + size_rule("sdram", "0") + no_dimms,
                 "Success: bootrom_size 0x0 flash_size 0x0 nandflash_size 0x0 nvram_size 0x0 sdram_size 0x0\r\n" +
                     no_dimms_line,
                 0);
}

TEST(StorageSizesCheckTest, MemoriesThatTheBoardLacksPass) {
    expect_sizes(
        size_rule("bootrom", "0x811101a4") + size_rule("flash", "0x811101a4") + size_rule("nandflash", "0xa4") +
            size_rule("nvram", "0x811101a4") + size_rule("sdram", "0x811101a4") + no_dimms,
        "Success: bootrom_size 0x0 flash_size 0x0 nandflash_size 0x0 nvram_size 0x0 sdram_size 0x0\r\n" + no_dimms_line,
        0);
}

TEST(StorageSizesCheckTest, TheSummaryStandsBehindFailuresOfAll) {
    expect_sizes(size_rule("bootrom", "0x61") + size_rule("flash", "0x62 size=0x1f") + size_rule("nandflash", "0x63") +
                     size_rule("nvram", "0x64") + size_rule("sdram", "0x65") + no_dimms,
                 "Error  : get bootrom_size fail 0x61. bootrom_size 0x0\r\n"
                 "Error  : get flash_size fail 0x62. flash_size 0x1f\r\n"
                 "Error  : get nandflash_size fail 0x63. nandflash_size 0x0\r\n"
                 "Error  : get nvram_size fail 0x64. nvram_size 0x0\r\n"
                 "Error  : get sdram_size fail 0x65. sdram_size 0x0\r\n"
                 "Success: bootrom_size 0x0 flash_size 0x1f nandflash_size 0x0 nvram_size 0x0 sdram_size 0x0\r\n" +
                     no_dimms_line,
                 -1);
}

TEST(StorageSizesCheckTest, EachFailureFailsTheCheck) {
    const char *const memories[] = {"bootrom", "flash", "nandflash", "nvram", "sdram"};
    for (const std::string bad : memories) {
        std::string script;
        std::string summary = "Success:";
        for (const std::string memory : memories) {
            script += size_rule(memory, memory == bad ? "0x66" : "0 size=16");
            summary += " " + memory + "_size " + (memory == bad ? "0x0" : "0x10");
        }
        expect_sizes(
            script + no_dimms,
            "Error  : get " + bad + "_size fail 0x66. " + bad + "_size 0x0\r\n" + summary + "\r\n" + no_dimms_line, -1);
    }
}

TEST(DimmCheckTest, EveryDescribedModule) {
    expect_sizes(good_sizes() + modules({"0 value=0", "0 value=5"}) + dimm(0, "0 buffer=\"module A\"") +
                     dimm(5, "0 buffer=\"B\""),
                 sizes_line + "Success: get dimm info: module A\r\nSuccess: get dimm info: B\r\n", 0);
}

TEST(DimmCheckTest, ModulesThatCannotBeAskedFor) {
    expect_sizes(good_sizes() + no_entry_count("board_mng", "dimm_info", "0x51 count=2"), sizes_line + no_dimms_line,
                 0);
    expect_sizes(good_sizes() + modules({"0x51", "0 value=1"}) + dimm(1, "0 buffer=\"B\""),
                 sizes_line + "Success: get dimm info: B\r\n", 0);
    expect_sizes(good_sizes() + modules({"0x51"}), sizes_line, 0);
}

TEST(DimmCheckTest, AModuleThatDoesNotAnswer) {
    expect_sizes(good_sizes() + modules({"0 value=0", "0 value=1"}) + dimm(0, "0x67 buffer=\"half\"") +
                     dimm(1, "0 buffer=\"B\""),
                 sizes_line + "Error  : get dimm info fail 0x67. half\r\nSuccess: get dimm info: B\r\n", -1);
    expect_sizes(good_sizes() + modules({"0 value=0"}) + dimm(0, "0x811101a4"),
                 sizes_line + "Error  : get dimm info fail 0x811101a4. \r\n", -1);
}

TEST(DimmCheckTest, AModuleThatDoesNotAnswerShowsNothingOfTheOneBefore) {
    expect_sizes(good_sizes() + modules({"0 value=0", "0 value=1"}) + dimm(0, "0 buffer=\"module A\"") +
                     dimm(1, "0x68"),
                 sizes_line + "Success: get dimm info: module A\r\nError  : get dimm info fail 0x68. \r\n", -1);
}

TEST(DimmCheckTest, ATextThatFillsItsArea) {
    const std::string text(127, 'D');
    expect_sizes(good_sizes() + modules({"0 value=0", "0 value=1"}) + dimm(0, "0 buffer=\"" + text + "\"") +
                     dimm(1, "0"),
                 sizes_line + "Success: get dimm info: " + text + "\r\nSuccess: get dimm info: \r\n", 0);
}

TEST(DimmCheckTest, BadSizesAreNotMadeGoodByTheModules) {
    expect_sizes(size_rule("bootrom", "0x61") + size_rule("flash", "0 size=64") +
                     size_rule("nandflash", "0 size=4096") + size_rule("nvram", "0 size=2") +
                     size_rule("sdram", "0 size=8192") + modules({"0 value=0"}) + dimm(0, "0 buffer=\"A\""),
                 "Error  : get bootrom_size fail 0x61. bootrom_size 0x0\r\n"
                 "Success: bootrom_size 0x0 flash_size 0x40 nandflash_size 0x1000 nvram_size 0x2 sdram_size 0x2000\r\n"
                 "Success: get dimm info: A\r\n",
                 -1);
}
