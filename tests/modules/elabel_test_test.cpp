// elabel_test: every sub-command on the real program, with the driver scripted and a label file of the test's own.
#include <filesystem>

#include <gtest/gtest.h>

#include "tests/support/command.h"

using namespace kestro_tests;

namespace {

const std::string too_few = "elabel test too few args!\n";

const std::string no_label_file =
    "open file[/opt/hostx/home/elabel.txt] fail\r\n"
    "there is no such file: /opt/hostx/home/elabel.txt. so load test info :elable test test test test ...\r\n";

const std::string label_file_read = "Now read elabel load info from file\xEF\xBC\x9A/opt/hostx/home/elabel.txt\r\n";

// The whole label area in the script's language: the text and zeros up to 1200 bytes.
std::string label_area(std::string text) {
    text.resize(1200, '\0');
    std::string area = "[";
    for (const char byte : text) {
        const char digits[] = "0123456789abcdef";
        const auto bits = static_cast<unsigned char>(byte);
        area += {digits[bits >> 4], digits[bits & 15], ' '};
    }
    area.back() = ']';
    return area;
}

std::string root_with_label(const std::string &label) {
    const std::string root = new_scratch_dir();
    std::filesystem::create_directories(root + "/opt/hostx/home");
    write_file(root + "/opt/hostx/home/elabel.txt", label);
    return root;
}

std::string root_without_label() {
    return new_scratch_dir();
}

// As expect_run, on a board whose files lie below root.
void expect_run_at(const std::string &root, const std::string &line, const std::string &script,
                   const std::string &output, int status) {
    SCOPED_TRACE("kestro_test " + line);
    const process_result result = run_sim({"--state", new_scratch_dir(), "--root", root, "--clock", "virtual",
                                           "--strict", "--script", scratch_file("script", script + "\n")},
                                          split_words(line));
    EXPECT_EQ(result.out, output);
    EXPECT_EQ(result.err, "");
    EXPECT_EQ(result.status, status);
    EXPECT_FALSE(result.timed_out);
}

} // namespace

TEST(ElabelTest, UsageListsTheSubCommandsInOrder) {
    expect_run("elabel_test", "",
               "kestro_test: too few args!\n\n\nUsage: kestro_test [OPTION]\t\n"
               "List the functionalities for kestro_test \n"
               " elabel_read                inst_id elabel_id\n"
               " elabel_write               inst_id elabel_id\n"
               " elabel_read_write_test     inst_id elabel_id\n"
               " elabel_init                inst_id\n"
               " elabel_deinit              inst_id\n",
               0);
}

TEST(ElabelTest, ReadShowsTheLabel) {
    expect_success("elabel_test elabel_read 0xff000005 2",
                   "drv_elabel_read(inst_id=0xff000005, elabel_id=2, len=1200) = 0 area=\"type=MPU\\r\\nNo=7\"",
                   "drv_elabel_read success, inst_id=0xff000005, elabel_id=0x2.\r\n"
                   "\r\ntype=MPU\r\nNo=7\r\n"
                   "para[0]=0x0 \r\n----kestro_test std result print end----\n");
}

TEST(ElabelTest, ReadShowsALabelThatFillsItsArea) {
    const std::string label(1200, 'L');
    expect_success("elabel_test elabel_read 1 0",
                   "drv_elabel_read(inst_id=1, elabel_id=0, len=1200) = 0 area=\"" + label + "\"",
                   "drv_elabel_read success, inst_id=0x1, elabel_id=0x0.\r\n"
                   "\r\n" +
                       label +
                       "\r\n"
                       "para[0]=0x0 \r\n----kestro_test std result print end----\n");
}

TEST(ElabelTest, ReadFailure) {
    expect_failure("elabel_test elabel_read 3 0x10",
                   "drv_elabel_read(inst_id=3, elabel_id=16, len=1200) = 0x811101a4 area=\"half\"",
                   "drv_elabel_read fail, inst_id=0x3, elabel_id=0x10, ret=0x811101a4.\r\n"
                   "para[0]=0x811101a4 \r\n----kestro_test std result print end----\n");
}

TEST(ElabelTest, ReadWithOtherWords) {
    expect_success("elabel_test elabel_read", "", too_few);
    expect_success("elabel_test elabel_read 1", "", too_few);
    const std::string body = "drv_elabel_read success, inst_id=0x0, elabel_id=0x4.\r\n"
                             "\r\nL4\r\n"
                             "para[0]=0x0 \r\n----kestro_test std result print end----\n";
    const std::string script = "drv_elabel_read(inst_id=0, elabel_id=4, len=1200) = 0 area=\"L4\"";
    expect_success("elabel_test elabel_read board 4", script, body);
    expect_success("elabel_test elabel_read 0 4 9 9", script, body);
}

TEST(ElabelTest, WriteTakesTheLabelFile) {
    const std::string body = label_file_read +
                             "drv_elabel_write success, inst_id=0xff000005, elabel_id = 0x2, len = 0xe.\r\n"
                             "write info :\r\nLABEL-7 rack 3\r\n\r\n"
                             "para[0]=0x0 \r\n----kestro_test std result print end----\n" +
                             timing_lines;
    const std::string script =
        "drv_elabel_write(inst_id=0xff000005, elabel_id=2, len=1200, area=" + label_area("LABEL-7 rack 3") + ") = 0";
    const std::string root = root_with_label("LABEL-7 rack 3");
    expect_run_at(root, "elabel_test elabel_write 0xff000005 2", script, body, 0);
    expect_run_at(root, "elabel_test elabel_write 0xff000005 2 9", script, body, 0);
}

TEST(ElabelTest, WriteWithoutALabelFileTakesTheBuiltInText) {
    expect_run_at(root_without_label(), "elabel_test elabel_write 1 0",
                  "drv_elabel_write(inst_id=1, elabel_id=0, len=1200, area=" +
                      label_area("elable test test test test ...") + ") = 0",
                  no_label_file +
                      "drv_elabel_write success, inst_id=0x1, elabel_id = 0x0, len = 0x1e.\r\n"
                      "write info :\r\nelable test test test test ...\r\n\r\n"
                      "para[0]=0x0 \r\n----kestro_test std result print end----\n" +
                      timing_lines,
                  0);
}

TEST(ElabelTest, WriteTakesALabelFileThatFillsTheArea) {
    const std::string label(1200, 'F');
    expect_run_at(root_with_label(label), "elabel_test elabel_write 1 0",
                  "drv_elabel_write(inst_id=1, elabel_id=0, len=1200, area=" + label_area(label) + ") = 0",
                  label_file_read + "drv_elabel_write success, inst_id=0x1, elabel_id = 0x0, len = 0x4b0.\r\n" +
                      "write info :\r\n" + label + "\r\n\r\n" +
                      "para[0]=0x0 \r\n----kestro_test std result print end----\n" + timing_lines,
                  0);
}

TEST(ElabelTest, WriteRefusesALabelFileThatIsLargerThanTheArea) {
    expect_run_at(root_with_label(std::string(1201, 'F')), "elabel_test elabel_write 1 0",
                  "drv_elabel_write(inst_id=1, elabel_id=0, len=1200, area=" +
                      label_area("elable test test test test ...") + ") = 0",
                  std::string("set elabel file length 1201 is too large. only 1200 is valid\r\n"
                              "there is no such file: /opt/hostx/home/elabel.txt. so load test info :"
                              "elable test test test test ...\r\n"
                              "drv_elabel_write success, inst_id=0x1, elabel_id = 0x0, len = 0x1e.\r\n"
                              "write info :\r\nelable test test test test ...\r\n\r\n"
                              "para[0]=0x0 \r\n----kestro_test std result print end----\n") +
                      timing_lines,
                  0);
}

TEST(ElabelTest, WriteTakesAnEmptyLabelFile) {
    expect_run_at(root_with_label(""), "elabel_test elabel_write 1 0",
                  "drv_elabel_write(inst_id=1, elabel_id=0, len=1200, area=" + label_area("") + ") = 0",
                  label_file_read +
                      "drv_elabel_write success, inst_id=0x1, elabel_id = 0x0, len = 0x0.\r\n"
                      "write info :\r\n\r\n\r\n"
                      "para[0]=0x0 \r\n----kestro_test std result print end----\n" +
                      timing_lines,
                  0);
}

TEST(ElabelTest, WriteFailureShowsTheTextAllTheSame) {
    expect_run_at(root_with_label("AB"), "elabel_test elabel_write x 0x21",
                  "drv_elabel_write(inst_id=0, elabel_id=33, len=1200, area=" + label_area("AB") + ") = 0xdead",
                  label_file_read +
                      "drv_elabel_write fail, ret = 0xdead, elabel_id = 0x21, len = 0x2.\r\n"
                      "write info :\r\nAB\r\n\r\n"
                      "para[0]=0xdead \r\n----kestro_test std result print end----\n" +
                      timing_lines +
                      "kestro_test operate elabel_write fail! \n"
                      "kestro_test operate elabel_test fail! \n",
                  255);
}

TEST(ElabelTest, WriteWithTooFewWords) {
    expect_success("elabel_test elabel_write", "", too_few);
    expect_success("elabel_test elabel_write 1", "", too_few);
}

// The area is the last thing that the program allocates here, so a run that a failing allocation does not change lies
// just behind it.
TEST(ElabelTest, WriteWithoutMemoryForTheAreaFailsWithoutAWord) {
    const std::string root = root_without_label();
    const std::string state = new_scratch_dir();
    const std::string trace = new_scratch_dir() + "/trace";
    const std::string script = scratch_file("no-memory-script", "drv_elabel_write = 0\n");
    const auto run_without = [&](int allocation) {
        return run_sim({"--state", state, "--root", root, "--clock", "virtual", "--script", script, "--trace", trace,
                        "--fail-alloc", std::to_string(allocation)},
                       {"elabel_test", "elabel_write", "1", "0"});
    };
    int unchanged = 4096;
    const std::string whole = run_without(unchanged).out;
    ASSERT_NE(whole.find("drv_elabel_write success"), std::string::npos) << whole;
    for (int changed = 0; unchanged - changed > 1;) {
        const int middle = (changed + unchanged) / 2;
        (run_without(middle).out == whole ? unchanged : changed) = middle;
    }
    const process_result result = run_without(unchanged - 1);
    EXPECT_EQ(result.out, std::string(timing_lines) + "kestro_test operate elabel_write fail! \n"
                                                      "kestro_test operate elabel_test fail! \n");
    EXPECT_EQ(result.err, "");
    EXPECT_EQ(result.status, 255);
    EXPECT_EQ(read_file(trace), "");
}

TEST(ElabelTest, ReadWriteTestRunsTheStorageCycle) {
    const std::string script = "drv_elabel_read(inst_id=0xff000005, elabel_id=2, len=1200) = 0 area=\"OLD\" x1\n"
                               "drv_elabel_write(inst_id=0xff000005, elabel_id=2, len=1200, area=" +
                               label_area("NEW label") +
                               ") = 0 x1\n"
                               "drv_elabel_read(inst_id=0xff000005, elabel_id=2, len=1200) = 0 area=\"NEW label\" x1\n"
                               "drv_elabel_write(inst_id=0xff000005, elabel_id=2, len=1200, area=" +
                               label_area("OLD") + ") = 0 x1";
    const std::string body =
        label_file_read + "Success: elabel read and write match test pass.\r\n" + std::string(timing_lines);
    const std::string root = root_with_label("NEW label");
    expect_run_at(root, "elabel_test elabel_read_write_test 0xff000005 2", script, body, 0);
    expect_run_at(root, "elabel_test elabel_read_write_test 0xff000005 2 3 4", script, body, 0);
}

TEST(ElabelTest, ReadWriteTestReportsAMismatchAndSucceeds) {
    expect_run_at(root_without_label(), "elabel_test elabel_read_write_test 1 0",
                  "drv_elabel_read(inst_id=1, elabel_id=0, len=1200) = 0 area=\"OLD\" x1\n"
                  "drv_elabel_write(inst_id=1, elabel_id=0, len=1200, area=" +
                      label_area("elable test test test test ...") +
                      ") = 0 x1\n"
                      "drv_elabel_read(inst_id=1, elabel_id=0, len=1200) = 0 area=\"OTHER\" x1\n"
                      "drv_elabel_write(inst_id=1, elabel_id=0, len=1200, area=" +
                      label_area("OLD") + ") = 0 x1",
                  no_label_file +
                      "Error: elabel read and write match test fail.\r\n"
                      "write info : \r\nelable test test test test ...\r\n"
                      "read info : \r\nOTHER\r\n"
                      "original info : \r\nOLD\r\n" +
                      timing_lines,
                  0);
}

TEST(ElabelTest, ReadWriteTestFailure) {
    expect_failure("elabel_test elabel_read_write_test one 0x21",
                   "drv_elabel_read(inst_id=0, elabel_id=33, len=1200) = 0x12",
                   "drv_elabel_read fail, inst_id=0x0, elabel_id=0x21, ret=0x12.\r\n");
}

TEST(ElabelTest, ReadWriteTestWithTooFewWords) {
    expect_success("elabel_test elabel_read_write_test", "", too_few);
    expect_success("elabel_test elabel_read_write_test 1", "", too_few);
}

TEST(ElabelTest, Init) {
    expect_success("elabel_test elabel_init 0xff000005", "drv_elabel_init(inst_id=0xff000005) = 0",
                   "elabel_init success, inst_id=0xff000005.\r\n"
                   "para[0]=0x0 \r\n----kestro_test std result print end----\n");
    expect_success("elabel_test elabel_init board 2", "drv_elabel_init(inst_id=0) = 0",
                   "elabel_init success, inst_id=0x0.\r\n"
                   "para[0]=0x0 \r\n----kestro_test std result print end----\n");
    expect_failure("elabel_test elabel_init 010", "drv_elabel_init(inst_id=8) = 0x12",
                   "elabel_init fail, inst_id=0x8, ret=0x12.\r\n"
                   "para[0]=0x12 \r\n----kestro_test std result print end----\n");
    expect_success("elabel_test elabel_init", "", too_few);
}

TEST(ElabelTest, Deinit) {
    expect_success("elabel_test elabel_deinit 0xffffffff", "drv_elabel_deinit(inst_id=0xffffffff) = 0",
                   "elabel_deinit success, inst_id=0xffffffff.\r\n"
                   "para[0]=0x0 \r\n----kestro_test std result print end----\n");
    expect_success("elabel_test elabel_deinit board 2", "drv_elabel_deinit(inst_id=0) = 0",
                   "elabel_deinit success, inst_id=0x0.\r\n"
                   "para[0]=0x0 \r\n----kestro_test std result print end----\n");
    expect_failure("elabel_test elabel_deinit 3", "drv_elabel_deinit(inst_id=3) = 0x811101a4",
                   "elabel_deinit fail, inst_id=0x3, ret=0x811101a4.\r\n"
                   "para[0]=0x811101a4 \r\n----kestro_test std result print end----\n");
    expect_success("elabel_test elabel_deinit", "", too_few);
}
