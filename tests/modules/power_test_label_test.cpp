// power_test: board properties, and the file that one is taken from.
#include <gtest/gtest.h>

#include <filesystem>
#include <sys/stat.h>

#include "tests/modules/power_rows.h"
#include "tests/support/command.h"

using namespace kestro_tests;
namespace fs = std::filesystem;

namespace {

// The bytes of an area of 1024 in the script's language, with zeros behind the text.
std::string area_of(std::string text) {
    text.resize(1024, '\0');
    std::string area = "[";
    for (const char byte : text) {
        const char digits[] = "0123456789abcdef";
        const auto bits = static_cast<unsigned char>(byte);
        area += {digits[bits >> 4], digits[bits & 15], ' '};
    }
    area.back() = ']';
    return area;
}

fs::path property_file_of(const std::string &root) {
    return root + "/home/1";
}

std::string root_without_property() {
    const std::string root = new_scratch_dir();
    fs::create_directories(property_file_of(root).parent_path());
    return root;
}

std::string root_with_property(const std::string &content) {
    const std::string root = root_without_property();
    write_file(property_file_of(root), content);
    return root;
}

// power_set_board_property 13 1 0 on a board whose files lie below root.
void expect_set_on(const std::string &root, const std::string &script, const std::string &output, int status) {
    const process_result result = run_sim({"--state", new_scratch_dir(), "--root", root, "--clock", "virtual",
                                           "--strict", "--script", scratch_file("script", script + "\n")},
                                          {"power_test", "power_set_board_property", "13", "1", "0"});
    EXPECT_EQ(result.out, output);
    EXPECT_EQ(result.err, "");
    EXPECT_EQ(result.status, status);
    EXPECT_FALSE(result.timed_out);
}

std::string set_rule(const std::string &content) {
    return "drv_power_set_board_property(slot_id=13, power_id=1, type=0, len=1024, buffer=" + area_of(content) + ")";
}

std::string set_failed(const std::string &lines) {
    return lines + timing_lines + operate_fail("power_set_board_property") + operate_fail("power_test");
}

} // namespace

TEST(PowerTestLabel, GetBoardProperty) {
    expect_success("power_test power_get_board_property 13 1 0",
                   "drv_power_get_board_property(slot_id=13, power_id=1, type=0, len=1024) = 0 "
                   "buffer=\"[board]\\r\\nitem=7\" len=15",
                   printed("Success: slot 13 power 1 get 0x0 value: [board]\r\nitem=7.\r\n",
                           "para[0]=0x0 para[1]=[board]\r\nitem=7 para[2]=0xf "));
    expect_success("power_test power_get_board_property 13 1 0x1f 2 3",
                   "drv_power_get_board_property(slot_id=13, power_id=1, type=31, len=1024) = 0",
                   printed("Success: slot 13 power 1 get 0x1f value: .\r\n", "para[0]=0x0 para[1]= para[2]=0x400 "));
    expect_success("power_test power_get_board_property a b c",
                   "drv_power_get_board_property(slot_id=0, power_id=0, type=0, len=1024) = 0 buffer=\"L\"",
                   printed("Success: slot 0 power 0 get 0x0 value: L.\r\n", "para[0]=0x0 para[1]=L para[2]=0x400 "));
}

TEST(PowerTestLabel, GetBoardPropertyShowsAnAreaThatIsFilledToItsEnd) {
    const std::string full(1024, 'L');
    expect_success("power_test power_get_board_property 13 1 4",
                   "drv_power_get_board_property(slot_id=13, power_id=1, type=4, len=1024) = 0 buffer=\"" + full +
                       "\" len=0xffffffff",
                   printed("Success: slot 13 power 1 get 0x4 value: " + full + ".\r\n",
                           "para[0]=0x0 para[1]=" + full + " para[2]=0xffffffff "));
}

TEST(PowerTestLabel, GetBoardPropertyFailure) {
    expect_failure("power_test power_get_board_property 13 1 3",
                   "drv_power_get_board_property(slot_id=13, power_id=1, type=3, len=1024) = 0x811101a4 "
                   "buffer=\"half\" len=2",
                   printed("Error  : slot 13 power 1 get 0x3 fail. ret 0x811101a4\r\n",
                           "para[0]=0x811101a4 para[1]=half para[2]=0x2 "));
    expect_silent_refusal("power_get_board_property", {"13", "1"});
}

// The delivered board has a file: checksum 0x0dd3, then the label.
TEST(PowerTestLabel, SetBoardPropertyTakesTheFileOfTheBoard) {
    const std::string label = "[board]\nitem=KT-PWR-AC-2200\nserial=2511040310\nmade=2025-10-21";
    const std::string rule =
        "drv_power_set_board_property(slot_id=13, power_id=0, type=0, len=1024, buffer=" + area_of("\x0d\xd3" + label) +
        ")";
    const std::string items = "para[1]=\x0d\xd3" + label + " para[2]=0x400 ";
    for (const char *more : {"", " 7 8"}) {
        expect_success(std::string("power_test power_set_board_property 13 0 0") + more, rule + " = 0",
                       printed("Success: slot 13 power 0 set 0x0 value: " + label + ".\r\n", "para[0]=0x0 " + items));
    }
    expect_failure("power_test power_set_board_property 13 0 0", rule + " = 0x811101a4",
                   printed("Error  : slot 13 power 0 set 0x0 fail. ret 0x811101a4\r\n", "para[0]=0x811101a4 " + items));
}

TEST(PowerTestLabel, SetBoardPropertyWithOtherWords) {
    expect_failure("power_test power_set_board_property 0x10 two 3",
                   "drv_power_set_board_property(slot_id=16, power_id=0, type=3, len=1024) = 0x12",
                   printed("Error  : slot 16 power 0 set 0x3 fail. ret 0x12\r\n",
                           "para[0]=0x12 para[1]=\x0d\xd3[board]\nitem=KT-PWR-AC-2200\nserial=2511040310\n"
                           "made=2025-10-21 para[2]=0x400 "));
    expect_silent_refusal("power_set_board_property", {"13", "1"});
}

// The driver is told of 1024 bytes whatever the file has.
TEST(PowerTestLabel, SetBoardPropertyOfFilesOfEverySize) {
    expect_set_on(
        root_with_property("12label"), set_rule("12label") + " = 0",
        printed("Success: slot 13 power 1 set 0x0 value: label.\r\n", "para[0]=0x0 para[1]=12label para[2]=0x400 ") +
            timing_lines,
        0);
    for (const std::string short_file : {"", "1", "12"}) {
        expect_set_on(root_with_property(short_file), set_rule(short_file) + " = 0",
                      printed("Success: slot 13 power 1 set 0x0 value: .\r\n",
                              "para[0]=0x0 para[1]=" + short_file + " para[2]=0x400 ") +
                          timing_lines,
                      0);
    }
    const std::string full = std::string(1023, 'F') + "E";
    for (const std::string &file : {full, full + "more than there is room for"}) {
        expect_set_on(root_with_property(file), set_rule(full) + " = 0",
                      printed("Success: slot 13 power 1 set 0x0 value: " + full.substr(2) + ".\r\n",
                              "para[0]=0x0 para[1]=" + full + " para[2]=0x400 ") +
                          timing_lines,
                      0);
    }
}

// A checksum may begin with a zero: then the result print has no text, and the line has that behind the checksum.
TEST(PowerTestLabel, SetBoardPropertyShowsTheTextBehindTheChecksum) {
    const std::string file("\0\xd3label", 7);
    expect_set_on(root_with_property(file), set_rule(file) + " = 0",
                  printed("Success: slot 13 power 1 set 0x0 value: label.\r\n", "para[0]=0x0 para[1]= para[2]=0x400 ") +
                      timing_lines,
                  0);
}

TEST(PowerTestLabel, SetBoardPropertyWithoutAFileIsRefused) {
    expect_set_on(root_without_property(), "", set_failed("can't open /home/1\n"), 255);
    expect_set_on(new_scratch_dir(), "", set_failed("can't open /home/1\n"), 255);
    const std::string nowhere = root_without_property();
    fs::create_symlink("/home/2", property_file_of(nowhere));
    expect_set_on(nowhere, "", set_failed("can't open /home/1\n"), 255);
    const std::string loop = root_without_property();
    fs::create_symlink("1", property_file_of(loop));
    expect_set_on(loop, "", set_failed("can't open /home/1\n"), 255);
}

// A pipe without a writer would keep a reader waiting.
TEST(PowerTestLabel, SetBoardPropertyOfWhatIsNoFileIsRefused) {
    const std::string directory = root_without_property();
    fs::create_directory(property_file_of(directory));
    const std::string pipe = root_without_property();
    ASSERT_EQ(mkfifo(property_file_of(pipe).c_str(), 0600), 0);
    for (const std::string &root : {directory, pipe}) {
        expect_set_on(root, "", set_failed("can't open /home/1\n"), 255);
    }
}
