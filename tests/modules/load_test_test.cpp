// load_test: every sub-command on the real program, with the driver scripted.
#include <gtest/gtest.h>

#include <filesystem>
#include <sys/socket.h>
#include <sys/stat.h>
#include <sys/un.h>
#include <unistd.h>

#include "tests/support/command.h"
#include "tests/support/failing_allocations.h"
#include "tests/support/test_lines.h"

using namespace kestro_tests;

namespace fs = std::filesystem;

namespace {

// A file of the board, five bytes long.
const std::string image_on_board = "/home/release/fan_pcb_version.txt";
const std::string image_bytes_shown = "buffer=[56 45 52 2e 43], length=5";

std::string usage_of(const std::string &name) {
    return "./kestro_test load_test " + name + " [inst_id] [file] [chip_id]\r\n";
}

// A file of that length that takes no room on the disk.
std::string sparse_file(uintmax_t length) {
    const std::string file = scratch_file("sparse", "");
    std::error_code problem;
    fs::resize_file(file, length, problem);
    EXPECT_FALSE(problem) << problem.message() << "; the folder for temporary files must take files of 4 GiB";
    return file;
}

} // namespace

TEST(LoadTest, UsageListsTheSubCommandsInOrder) {
    expect_run(
        "load_test", "",
        "kestro_test: too few args!\n\n\nUsage: kestro_test [OPTION]\t\n"
        "List the functionalities for kestro_test \n"
        " fpga_load_test\n cpld_load_test\n pic_load_test\n jtag_load_test\n clr_seu_err_test\n gpio_w\n gpio_r\n",
        0);
}

TEST(LoadTest, Fpga) {
    expect_success("load_test fpga_load_test " + image_on_board + " 1",
                   "drv_fpga_load(inst_id=0xffffffff, chip_id=1, " + image_bytes_shown + ") = 0", "");
    expect_success("load_test fpga_load_test 0xff000007 " + image_on_board + " 0x10",
                   "drv_fpga_load(inst_id=0xff000007, chip_id=16, " + image_bytes_shown + ") = 0", "");
    expect_success("load_test fpga_load_test board " + image_on_board + " 010 more words",
                   "drv_fpga_load(inst_id=0, chip_id=8, " + image_bytes_shown + ") = 0", "");
    expect_failure("load_test fpga_load_test " + image_on_board + " first",
                   "drv_fpga_load(inst_id=0xffffffff, chip_id=0, " + image_bytes_shown + ") = 0x81110109",
                   "drv_fpga_load failure\r\n");
}

// A failure is told in the words of the FPGA.
TEST(LoadTest, Cpld) {
    expect_success("load_test cpld_load_test " + image_on_board + " 0",
                   "drv_cpld_load(inst_id=0xffffffff, chip_id=0, " + image_bytes_shown + ") = 0", "");
    expect_success("load_test cpld_load_test 0xff000007 " + image_on_board + " 3",
                   "drv_cpld_load(inst_id=0xff000007, chip_id=3, " + image_bytes_shown + ") = 0", "");
    expect_failure("load_test cpld_load_test 1 " + image_on_board + " none",
                   "drv_cpld_load(inst_id=1, chip_id=0, " + image_bytes_shown + ") = 0x12",
                   "drv_fpga_load failure\r\n");
}

TEST(LoadTest, Pic) {
    expect_success("load_test pic_load_test " + image_on_board + " 5",
                   "drv_logic_pic_load(inst_id=0xffffffff, chip_id=5, " + image_bytes_shown + ") = 0", "");
    expect_success("load_test pic_load_test 0xff000005 " + image_on_board + " 0",
                   "drv_logic_pic_load(inst_id=0xff000005, chip_id=0, " + image_bytes_shown + ") = 0", "");
    expect_failure("load_test pic_load_test 2 " + image_on_board + " pic",
                   "drv_logic_pic_load(inst_id=2, chip_id=0, " + image_bytes_shown + ") = 0xffffffff",
                   "drv_logic_pic_load failure\r\n");
}

TEST(LoadTest, Jtag) {
    const std::string words = ", file:" + image_on_board + ", fileLen:0x5, system will reboot after cpld loaded!\r\n";
    const std::string done = ", fileName:" + image_on_board + ", fileLen:0x5.\r\n";
    expect_success("load_test jtag_load_test " + image_on_board + " 3",
                   "drv_jtag_load_cpld(inst_id=0xffffffff, chip_id=3, " + image_bytes_shown + ") = 0",
                   "Start jtag load cpld 3" + words + "Jtag load success, chip_id:3" + done);
    expect_success("load_test jtag_load_test 0xff000007 " + image_on_board + " 4294967295",
                   "drv_jtag_load_cpld(inst_id=0xff000007, chip_id=0xffffffff, " + image_bytes_shown + ") = 0",
                   "Start jtag load cpld 4294967295" + words + "Jtag load success, chip_id:4294967295" + done);
    expect_failure("load_test jtag_load_test 1 " + image_on_board + " cpld",
                   "drv_jtag_load_cpld(inst_id=1, chip_id=0, " + image_bytes_shown + ") = 0x811101a4",
                   "Start jtag load cpld 0" + words + "drv_jtag_load_cpld failure, Result:0x811101a4.\r\n");
}

TEST(LoadTest, TooFewWords) {
    for (const std::string name : {"fpga_load_test", "cpld_load_test", "pic_load_test", "jtag_load_test"}) {
        expect_failure("load_test " + name, "", usage_of(name));
        expect_failure("load_test " + name + " /opt/hostx/home/elabel.txt", "", usage_of(name));
    }
}

// An area of no bytes, but an area.
TEST(LoadTest, AnEmptyFile) {
    const std::string empty = scratch_file("empty", "");
    expect_success("load_test fpga_load_test " + empty + " 1",
                   "drv_fpga_load(inst_id=0xffffffff, chip_id=1, buffer=[], length=0) = 0", "");
    expect_success("load_test jtag_load_test " + empty + " 0",
                   "drv_jtag_load_cpld(inst_id=0xffffffff, chip_id=0, buffer=[], length=0) = 0",
                   "Start jtag load cpld 0, file:" + empty +
                       ", fileLen:0, system will reboot after cpld loaded!\r\n"
                       "Jtag load success, chip_id:0, fileName:" +
                       empty + ", fileLen:0.\r\n");
    expect_success("load_test cpld_load_test /dev/null 0",
                   "drv_cpld_load(inst_id=0xffffffff, chip_id=0, buffer=[], length=0) = 0", "");
}

TEST(LoadTest, BytesOfEveryKind) {
    expect_success("load_test fpga_load_test " + scratch_file("image", std::string("\x00\xff\r\n%s", 6)) + " 1",
                   "drv_fpga_load(inst_id=0xffffffff, chip_id=1, buffer=[00 ff 0d 0a 25 73], length=6) = 0", "");
}

// 300 KiB arrive to their last byte.
TEST(LoadTest, ALargeFile) {
    std::string content(300 * 1024, '\x5a');
    content.back() = '\x17';
    std::string shown = "[";
    for (size_t i = 1; i < content.size(); ++i) {
        shown += "5a ";
    }
    expect_success("load_test fpga_load_test " + scratch_file("large", content) + " 1",
                   "drv_fpga_load(inst_id=0xffffffff, chip_id=1, buffer=" + shown + "17], length=0x4b000) = 0", "");
}

TEST(LoadTest, FilesThatCannotBeOpened) {
    const std::string folder = new_scratch_dir();
    const std::string loop = folder + "/loop";
    if (!lists_lines()) {
        fs::create_symlink(loop, loop);
    }
    const std::string missing = folder + "/missing";
    for (const std::string name : {"fpga_load_test", "cpld_load_test", "pic_load_test", "jtag_load_test"}) {
        expect_failure("load_test " + name + " " + missing + " 1", "",
                       "open file[" + missing + "] failure:No such file or directory\r\n");
    }
    expect_failure("load_test fpga_load_test '' 1", "", "open file[] failure:No such file or directory\r\n");
    expect_failure("load_test fpga_load_test " + loop + " 1", "",
                   "open file[" + loop + "] failure:Too many levels of symbolic links\r\n");
    const std::string behind_file = scratch_file("file", "") + "/image";
    expect_failure("load_test fpga_load_test " + behind_file + " 1", "",
                   "open file[" + behind_file + "] failure:Not a directory\r\n");
    const std::string long_name = folder + "/" + std::string(256, 'x');
    expect_failure("load_test fpga_load_test " + long_name + " 1", "",
                   "open file[" + long_name + "] failure:File name too long\r\n");
}

// Percent signs, blanks, line ends and bytes that are no characters are shown as they are.
TEST(LoadTest, NamesWithOddCharacters) {
    const std::string folder = new_scratch_dir();
    for (const std::string name : {"100% %s%n", "\xff\xfe\x01", "-h", "tab\tend\r"}) {
        expect_failure("load_test fpga_load_test '" + folder + "/none " + name + "' 1", "",
                       "open file[" + folder + "/none " + name + "] failure:No such file or directory\r\n");
    }
    const std::string odd = scratch_file("50% %s \xe2\x82\xac", "A");
    expect_success("load_test jtag_load_test '" + odd + "' 0",
                   "drv_jtag_load_cpld(inst_id=0xffffffff, chip_id=0, buffer=[41], length=1) = 0",
                   "Start jtag load cpld 0, file:" + odd +
                       ", fileLen:0x1, system will reboot after cpld loaded!\r\n"
                       "Jtag load success, chip_id:0, fileName:" +
                       odd + ", fileLen:0x1.\r\n");
}

// Nobody writes into the pipe, and the run ends all the same.
TEST(LoadTest, WhatHasNoLength) {
    const std::string pipe = new_scratch_dir() + "/pipe";
    ASSERT_EQ(mkfifo(pipe.c_str(), 0600), 0);
    expect_failure("load_test fpga_load_test " + pipe + " 1", "", "malloc len:-1 failure:Illegal seek\r\n");
    const std::string directory = new_scratch_dir();
    expect_failure("load_test cpld_load_test " + directory + " 1", "", "malloc len:-1 failure:Is a directory\r\n");
}

// A socket lies in the file system and is no file.
TEST(LoadTest, ASocket) {
    const std::string path = new_scratch_dir() + "/socket";
    sockaddr_un address{};
    address.sun_family = AF_UNIX;
    ASSERT_LT(path.size(), sizeof address.sun_path);
    path.copy(address.sun_path, path.size());
    const int listening = socket(AF_UNIX, SOCK_STREAM, 0);
    ASSERT_EQ(bind(listening, reinterpret_cast<const sockaddr *>(&address), sizeof address), 0);
    expect_failure("load_test fpga_load_test " + path + " 1", "",
                   "open file[" + path + "] failure:No such device or address\r\n");
    close(listening);
}

// Nothing of these files is read. On either machine 1 GiB is the most, and a length beyond 31 bits is shown as the
// greatest of them.
TEST(LoadTest, FilesThatAreTooLarge) {
    expect_failure("load_test fpga_load_test " + sparse_file(0x40000001) + " 1", "",
                   "malloc len:1073741825 failure:Cannot allocate memory\r\n");
    expect_failure("load_test pic_load_test " + sparse_file(0x100000000) + " 1", "",
                   "malloc len:2147483647 failure:Cannot allocate memory\r\n");
    expect_failure("load_test jtag_load_test " + sparse_file(0x100000005) + " 1", "",
                   "malloc len:2147483647 failure:Cannot allocate memory\r\n");
}

TEST(LoadTest, WithoutMemoryTheDriverIsNotReached) {
    expect_without_text_area("load_test fpga_load_test " + image_on_board + " 1", "drv_fpga_load = 0",
                             "malloc len:5 failure:Cannot allocate memory\r\n" + std::string(timing_lines) +
                                 operate_fail("fpga_load_test") + operate_fail("load_test"),
                             255);
}

TEST(LoadTest, ClearSeuErrors) {
    expect_success("load_test clr_seu_err_test 0xffffffff 1", "drv_fpga_clr_seu_err(inst_id=0xffffffff, chip_id=1) = 0",
                   "fpga_clr_seu_err success: inst_id:0xffffffff chip_id:0x1\r\n");
    expect_success("load_test clr_seu_err_test board 16 7", "drv_fpga_clr_seu_err(inst_id=0, chip_id=16) = 0",
                   "fpga_clr_seu_err success: inst_id:0x0 chip_id:0x10\r\n");
    expect_failure("load_test clr_seu_err_test 0xff000007 0x2",
                   "drv_fpga_clr_seu_err(inst_id=0xff000007, chip_id=2) = 0x81110103",
                   "dfpga_clr_seu_err fail, inst_id:0xff000007 chip_id:0x2 ret:0x81110103\r\n");
    for (const std::string words : {"", " 1"}) {
        expect_failure("load_test clr_seu_err_test" + words, "",
                       "./kestro_test load_test clr_seu_err_test [inst_id] [chip_id]\r\n");
    }
}

TEST(LoadTest, GpioWrite) {
    expect_success("load_test gpio_w 17 1", "nb_gpio_write(pin=17, level=1) = 0", "nb_gpio_write pin:17, level:1.\r\n");
    expect_success("load_test gpio_w 0xffffffff 4294967295 2", "nb_gpio_write(pin=0xffffffff, level=0xffffffff) = 0",
                   "nb_gpio_write pin:4294967295, level:4294967295.\r\n");
    expect_failure("load_test gpio_w 0x10 high", "nb_gpio_write(pin=16, level=0) = 0x81110106",
                   "nb_gpio_write error, Pin:16, Lvl:0, Result:0x81110106.\r\n");
}

// A missing word is 0.
TEST(LoadTest, GpioWithoutWords) {
    expect_success("load_test gpio_w 5", "nb_gpio_write(pin=5, level=0) = 0", "nb_gpio_write pin:5, level:0.\r\n");
    expect_success("load_test gpio_w", "nb_gpio_write(pin=0, level=0) = 0", "nb_gpio_write pin:0, level:0.\r\n");
    expect_success("load_test gpio_r", "nb_gpio_read(pin=0) = 0 level=1", "nb_gpio_read pin:0, level:1.\r\n");
}

TEST(LoadTest, GpioRead) {
    expect_success("load_test gpio_r 40", "nb_gpio_read(pin=40) = 0 level=1", "nb_gpio_read pin:40, level:1.\r\n");
    expect_success("load_test gpio_r 0x28 1", "nb_gpio_read(pin=40) = 0", "nb_gpio_read pin:40, level:0.\r\n");
    expect_success("load_test gpio_r pin", "nb_gpio_read(pin=0) = 0 level=0xffffffff",
                   "nb_gpio_read pin:0, level:4294967295.\r\n");
    expect_failure("load_test gpio_r 99", "nb_gpio_read(pin=99) = 0x81110103 level=1",
                   "nb_gpio_read error, Pin:99, Result:0x81110103.\r\n");
}
