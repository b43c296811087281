// The software test of a power supply: the image file in all its states, and what the supply says afterwards.
#include <filesystem>
#include <gtest/gtest.h>
#include <sys/stat.h>

#include "tests/selftest/part.h"
#include "tests/selftest/power_script.h"
#include "tests/support/simulator.h"

using namespace kestro_tests;
namespace fs = std::filesystem;

namespace {

const std::string begin = "Info   : slot 13 power 0 software test begin. \r\n";
const std::string change_mode = "Info   : chmod 755 /opt/hostx/home/power_app.bin.\r\n";
const std::string no_image = "Info   : slot 13 power 0 open file /opt/hostx/home/power_app.bin fail, cannot test. "
                             "please copy load file first.\r\n";

fs::path image_of(const std::string &root) {
    return root + "/opt/hostx/home/power_app.bin";
}

std::string new_root() {
    const std::string root = new_scratch_dir();
    fs::create_directories(image_of(root).parent_path());
    return root;
}

std::string root_with(const std::string &image) {
    const std::string root = new_root();
    write_file(image_of(root), image);
    return root;
}

const std::string image("\x01\xfe\xab\x00\x00\x00\x00\xcc\x11", 9);

std::string no_programs(int times) {
    return power_call("get_software_info", "0 x" + std::to_string(times));
}

const std::string no_programs_line = "Success: slot 13 power 0 get software info. soft_cnt 0 \r\n";

std::string load_rule(uint32_t len, const std::string &data, const std::string &answer) {
    return "drv_power_load_app(" + power_unit_words + ", reserved=0, len=" + std::to_string(len) + ", data=" + data +
           ") = " + answer + "\n";
}

const std::string image_head = "Info   : file head soft_id 0x1 rsv 0xfe crc[0] 0xab crc[1] 0x0\r\n";
const std::string loaded = "Success: slot 13 power 0 load file /opt/hostx/home/power_app.bin success. len 0x9\r\n";

std::string programs(const std::string &record) {
    return power_call("get_software_info", "0 info=" + record + " x1");
}

} // namespace

TEST(PowerSoftwareTest, TheWholeImageIsLoaded) {
    expect_part_on(root_with(image), "power_software",
                   no_programs(2) + load_rule(9, "[01 fe ab 00 00 00 00 cc 11]", "0 x1"),
                   begin + no_programs_line + change_mode + image_head + loaded + no_programs_line, 0);
}

// The right is given to the board's file, and to no file of the desk.
TEST(PowerSoftwareTest, TheShellMakesTheImageReadable) {
    const std::string root = root_with(image);
    ASSERT_EQ(chmod(image_of(root).c_str(), 0), 0);
    expect_part_on(root, "power_software", no_programs(2) + load_rule(9, "[01 fe ab 00 00 00 00 cc 11]", "0 x1"),
                   begin + no_programs_line + change_mode + image_head + loaded + no_programs_line, 0);
    struct stat status {};
    ASSERT_EQ(stat(image_of(root).c_str(), &status), 0);
    EXPECT_EQ(status.st_mode & 0777U, 0755U);
}

// An image of 300 KiB arrives to its last byte.
TEST(PowerSoftwareTest, ALargeImage) {
    std::string large(300 * 1024, '\x5a');
    large[0] = '\x02';
    large.back() = '\x17';
    std::string bytes = "[02";
    for (size_t i = 1; i + 1 < large.size(); ++i) {
        bytes += " 5a";
    }
    expect_part_on(root_with(large), "power_software", no_programs(2) + load_rule(0x4b000, bytes + " 17]", "0 x1"),
                   begin + no_programs_line + change_mode +
                       "Info   : file head soft_id 0x2 rsv 0x5a crc[0] 0x5a crc[1] 0x5a\r\n"
                       "Success: slot 13 power 0 load file /opt/hostx/home/power_app.bin success. len 0x4b000\r\n" +
                       no_programs_line,
                   0);
}

TEST(PowerSoftwareTest, AnImageShorterThanItsHead) {
    expect_part_on(root_with("\x03"), "power_software", no_programs(2) + load_rule(1, "[03]", "0 x1"),
                   begin + no_programs_line + change_mode +
                       "Info   : file head soft_id 0x3 rsv 0x0 crc[0] 0x0 crc[1] 0x0\r\n"
                       "Success: slot 13 power 0 load file /opt/hostx/home/power_app.bin success. len 0x1\r\n" +
                       no_programs_line,
                   0);
    expect_part_on(root_with(""), "power_software", no_programs(1) + "drv_power_load_app(len=0) = 0x7f x1\n",
                   begin + no_programs_line + change_mode +
                       "Info   : file head soft_id 0x0 rsv 0x0 crc[0] 0x0 crc[1] 0x0\r\n"
                       "Error  : slot 13 power 0 load file /opt/hostx/home/power_app.bin fail. ret=0x7f len 0x0\r\n",
                   -1);
}

TEST(PowerSoftwareTest, AnImageThatTheSupplyRefuses) {
    for (const char *code : {"0x80", "0x811101a4"}) {
        expect_part_on(root_with(image), "power_software", no_programs(1) + "drv_power_load_app = " + code + " x1\n",
                       begin + no_programs_line + change_mode + image_head +
                           "Error  : slot 13 power 0 load file /opt/hostx/home/power_app.bin fail. ret=" + code +
                           " len 0x9\r\n",
                       -1);
    }
}

// The shell says on standard error that there is no file; the test goes on to list the programs again.
TEST(PowerSoftwareTest, WithoutAnImage) {
    const std::string script = scratch_file("script", no_programs(2));
    const process_result run = run_part({"--root", new_root(), "--strict", "--script", script}, "power_software");
    EXPECT_EQ(run.out, begin + no_programs_line + change_mode + no_image + no_programs_line + "result 0\n");
    EXPECT_EQ(run.status, 0);
    EXPECT_NE(run.err.find("power_app.bin"), std::string::npos);
}

TEST(PowerSoftwareTest, WhatIsNoFileIsNoImage) {
    const std::string directory = new_root();
    fs::create_directory(image_of(directory));
    const std::string pipe = new_root();
    ASSERT_EQ(mkfifo(image_of(pipe).c_str(), 0600), 0);
    for (const std::string &root : {directory, pipe}) {
        expect_part_on(root, "power_software", no_programs(2),
                       begin + no_programs_line + change_mode + no_image + no_programs_line, 0);
    }
}

// Nothing is said of an image that no memory is given for.
TEST(PowerSoftwareTest, AnImageThatNoSupplyHasRoomFor) {
    constexpr uintmax_t largest = uintmax_t{16} * 1024 * 1024;
    const std::string root = root_with("");
    for (const uintmax_t size : {largest + 1, largest * 64}) {
        fs::resize_file(image_of(root), size);
        expect_part_on(root, "power_software", no_programs(1), begin + no_programs_line + change_mode, -1);
    }
    fs::resize_file(image_of(root), largest);
    expect_part_on(root, "power_software", no_programs(2) + "drv_power_load_app(len=0x1000000) = 0 x1\n",
                   begin + no_programs_line + change_mode +
                       "Info   : file head soft_id 0x0 rsv 0x0 crc[0] 0x0 crc[1] 0x0\r\n"
                       "Success: slot 13 power 0 load file /opt/hostx/home/power_app.bin success. len 0x1000000\r\n" +
                       no_programs_line,
                   0);
}

TEST(PowerSoftwareTest, ALinkToAnImageIsAnImage) {
    const std::string root = root_with("");
    fs::rename(image_of(root), root + "/opt/hostx/home/power_app_2.bin");
    write_file(root + "/opt/hostx/home/power_app_2.bin", image);
    fs::create_symlink("power_app_2.bin", image_of(root));
    expect_part_on(root, "power_software", no_programs(2) + load_rule(9, "[01 fe ab 00 00 00 00 cc 11]", "0 x1"),
                   begin + no_programs_line + change_mode + image_head + loaded + no_programs_line, 0);
}

TEST(PowerSoftwareTest, ProgramsThatCannotBeListedBefore) {
    expect_part("power_software", power_call("get_software_info", "0x81 x1"),
                begin + "Error  : slot 13 power 0 get software info fail. ret 0x81\r\n", 0x81);
}

TEST(PowerSoftwareTest, ProgramsThatCannotBeListedAfterwards) {
    expect_part_on(root_with(image), "power_software",
                   no_programs(1) + power_call("get_software_info", "0x82 x1") + "drv_power_load_app = 0 x1\n",
                   begin + no_programs_line + change_mode + image_head + loaded +
                       "Error  : slot 13 power 0 get software info fail. ret 0x82\r\n",
                   0x82);
}

// Not supported is no failure: twice it means no programs.
TEST(PowerSoftwareTest, ASupplyThatDoesNotListItsPrograms) {
    const std::string line = "Success: slot 13 power 0 not support get software info. ret 0x811101a4\r\n";
    expect_part_on(root_with(image), "power_software",
                   power_call("get_software_info", "0x811101a4 x2") + "drv_power_load_app = 0 x1\n",
                   begin + line + change_mode + image_head + loaded + line, 0);
    expect_part_on(root_with(image), "power_software",
                   power_call("get_software_info", "0x811101a4 x1") + programs("{soft_cnt=1}") +
                       "drv_power_load_app = 0 x1\n",
                   begin + line + change_mode + image_head + loaded +
                       "Success: slot 13 power 0 get software info. soft_cnt 1 \r\n"
                       "soft_id 0x0 module_num 0x0\r\n"
                       "Error  : slot 13 power 0 after load file /opt/hostx/home/power_app.bin soft_cnt change.\r\n",
                   -1);
}

TEST(PowerSoftwareTest, ACountThatChanges) {
    expect_part_on(root_with(image), "power_software",
                   programs("{soft_cnt=2 software=[{soft_id=1} {soft_id=2}]}") +
                       programs("{soft_cnt=1 software=[{soft_id=1}]}") + "drv_power_load_app = 0 x1\n",
                   begin +
                       "Success: slot 13 power 0 get software info. soft_cnt 2 \r\n"
                       "soft_id 0x1 module_num 0x0\r\n"
                       "soft_id 0x2 module_num 0x0\r\n" +
                       change_mode + image_head + loaded +
                       "Success: slot 13 power 0 get software info. soft_cnt 1 \r\n"
                       "soft_id 0x1 module_num 0x0\r\n"
                       "Error  : slot 13 power 0 after load file /opt/hostx/home/power_app.bin soft_cnt change.\r\n",
                   -1);
}

TEST(PowerSoftwareTest, AProgramThatChanges) {
    expect_part_on(root_with(image), "power_software",
                   programs("{soft_cnt=3 software=[{soft_id=1} {soft_id=2} {soft_id=3}]}") +
                       programs("{soft_cnt=3 software=[{soft_id=1} {soft_id=2} {soft_id=4}]}") +
                       "drv_power_load_app = 0 x1\n",
                   begin +
                       "Success: slot 13 power 0 get software info. soft_cnt 3 \r\n"
                       "soft_id 0x1 module_num 0x0\r\n"
                       "soft_id 0x2 module_num 0x0\r\n"
                       "soft_id 0x3 module_num 0x0\r\n" +
                       change_mode + image_head + loaded +
                       "Success: slot 13 power 0 get software info. soft_cnt 3 \r\n"
                       "soft_id 0x1 module_num 0x0\r\n"
                       "soft_id 0x2 module_num 0x0\r\n"
                       "soft_id 0x4 module_num 0x0\r\n"
                       "Error  : slot 13 power 0 after load file /opt/hostx/home/power_app.bin soft_id change.\r\n",
                   -1);
}

// Programs that the driver counts without having told them are not compared: the record of soft_id has room for three.
TEST(PowerSoftwareTest, ACountBeyondTheRecord) {
    const std::string listed = "Success: slot 13 power 0 get software info. soft_cnt 9 \r\n"
                               "soft_id 0x1 module_num 0x0\r\n"
                               "soft_id 0x0 module_num 0x0\r\n"
                               "soft_id 0x0 module_num 0x0\r\n";
    expect_part_on(root_with(image), "power_software",
                   programs("{soft_cnt=9 software=[{soft_id=1}]}") + programs("{soft_cnt=9 software=[{soft_id=1}]}") +
                       "drv_power_load_app = 0 x1\n",
                   begin + listed + change_mode + image_head + loaded + listed, 0);
}
