// The elabel section: label 0 of the board is saved, overwritten, read back and restored.
#include <gtest/gtest.h>

#include <filesystem>
#include <sys/stat.h>

#include "tests/selftest/board_run.h"
#include "tests/selftest/part.h"

using namespace kestro_tests;

namespace {

constexpr const char *built_in = "elable test test test test ...";
constexpr const char *label_path = "/opt/hostx/home/elabel.txt";

void expect_elabel(const std::string &script, const std::string &root, const std::string &lines, int result = 0) {
    expect_part_on(root, "elabel", script, lines, result);
}

std::string loaded_line() {
    return std::string("Now read elabel load info from file\xEF\xBC\x9A") + label_path + "\r\n";
}

std::string fallback_line() {
    return std::string("there is no such file: ") + label_path + ". so load test info :" + built_in + "\r\n";
}

std::string read_rule(const std::string &text) {
    return "drv_elabel_read(inst_id=0xffffffff, elabel_id=0, len=1200) = 0 area=\"" + text + "\" x1\n";
}

std::string write_rule(const std::string &text) {
    return "drv_elabel_write(inst_id=0xffffffff, elabel_id=0, area=\"" + text + "\", len=1200) = 0 x1\n";
}

} // namespace

TEST(ElabelSectionTest, WritesTheLabelFileAndRestoresTheLabel) {
    expect_elabel(
        read_rule("own label") + write_rule("from the file") + read_rule("from the file") + write_rule("own label"),
        root_with_label("from the file"), loaded_line() + "Success: elabel read and write match test pass.\r\n");
}

TEST(ElabelSectionTest, WithoutALabelFileTheBuiltInTextServes) {
    expect_elabel(read_rule("own") + write_rule(built_in) + read_rule(built_in) + write_rule("own"), new_scratch_dir(),
                  std::string("open file[") + label_path + "] fail\r\n" + fallback_line() +
                      "Success: elabel read and write match test pass.\r\n");
}

TEST(ElabelSectionTest, ALabelFileBeyondTheAreaIsRefused) {
    expect_elabel(read_rule("own") + write_rule(built_in) + read_rule(built_in) + write_rule("own"),
                  root_with_label(std::string(1201, 'x')),
                  "set elabel file length 1201 is too large. only 1200 is valid\r\n" + fallback_line() +
                      "Success: elabel read and write match test pass.\r\n");
}

TEST(ElabelSectionTest, ALabelFileMayFillTheArea) {
    const std::string full(1200, 'x');
    expect_elabel(read_rule("own") + write_rule(full) + read_rule(full) + write_rule("own"), root_with_label(full),
                  loaded_line() + "Success: elabel read and write match test pass.\r\n");
}

TEST(ElabelSectionTest, OnlyAFileIsALabel) {
    const std::string script = read_rule("own") + write_rule(built_in) + read_rule(built_in) + write_rule("own");
    const std::string lines = std::string("open file[") + label_path + "] fail\r\n" + fallback_line() +
                              "Success: elabel read and write match test pass.\r\n";
    const std::string root = root_with_label("");
    const std::string place = root + label_path;
    std::filesystem::remove(place);
    ASSERT_EQ(mkfifo(place.c_str(), 0644), 0);
    expect_elabel(script, root, lines);
    std::filesystem::remove(place);
    std::filesystem::create_directory(place);
    expect_elabel(script, root, lines);
    std::filesystem::remove(place);
    std::filesystem::create_symlink("nowhere.txt", place);
    expect_elabel(script, root, lines);
}

TEST(ElabelSectionTest, ALinkToAFileIsALabel) {
    const std::string root = root_with_label("linked");
    const std::string place = root + label_path;
    std::filesystem::rename(place, root + "/opt/hostx/home/elabel_board.txt");
    std::filesystem::create_symlink("elabel_board.txt", place);
    expect_elabel(read_rule("own") + write_rule("linked") + read_rule("linked") + write_rule("own"), root,
                  loaded_line() + "Success: elabel read and write match test pass.\r\n");
}

TEST(ElabelSectionTest, AnEmptyLabelFileIsAnEmptyLabel) {
    expect_elabel(read_rule("own") + write_rule("") + read_rule("") + write_rule("own"), root_with_label(""),
                  loaded_line() + "Success: elabel read and write match test pass.\r\n");
}

TEST(ElabelSectionTest, AMismatchShowsAllThreeTexts) {
    expect_elabel(read_rule("own") + write_rule("new") + read_rule("other") + write_rule("own"), root_with_label("new"),
                  loaded_line() + "Error: elabel read and write match test fail.\r\n"
                                  "write info : \r\nnew\r\n"
                                  "read info : \r\nother\r\n"
                                  "original info : \r\nown\r\n");
}

TEST(ElabelSectionTest, AFailedWriteEndsTheTest) {
    expect_elabel(read_rule("own") + "drv_elabel_write(inst_id=0xffffffff, elabel_id=0) = 0x41\n",
                  root_with_label("12345"),
                  loaded_line() + "drv_elabel_write fail, ret = 0x41, elabel_id = 0x0, len = 0x5.\r\n", -1);
}

TEST(ElabelSectionTest, AFailedReadBackLeavesTheTestLabel) {
    expect_elabel(read_rule("own") + write_rule("new") + "drv_elabel_read = 0x42\n", root_with_label("new"),
                  loaded_line() + "drv_elabel_read after write fail, inst_id=0xffffffff, elabel_id=0x0, ret=0x42.\r\n",
                  -1);
}

TEST(ElabelSectionTest, AFailedRestoreIsReported) {
    expect_elabel(
        read_rule("own") + write_rule("new") + read_rule("new") + "drv_elabel_write = 0x43\n", root_with_label("new"),
        loaded_line() + "drv_elabel_write after test fail, ret = 0x43, elabel_id = 0x0, len = 0x4b0.\r\n", -1);
}
