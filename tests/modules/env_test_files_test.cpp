// env_test: bytes of files and partitions.
#include <gtest/gtest.h>

#include <filesystem>
#include <sys/stat.h>

#include "tests/support/command.h"
#include "tests/support/failing_allocations.h"
#include "tests/support/test_lines.h"

using namespace kestro_tests;

namespace fs = std::filesystem;

namespace {

// "0123...": what stands at an offset can be told from it.
std::string file_of_digits(size_t size) {
    std::string content;
    while (content.size() < size) {
        content += "0123456789";
    }
    content.resize(size);
    return scratch_file("digits", content);
}

std::string head(const std::string &file, const std::string &offset, const std::string &rest) {
    return "file_name=" + file + "\noffset=" + offset + "\n" + rest + "\n\n";
}

const std::string dashes = "-- -- -- -- -- -- -- -- -- -- -- -- -- -- -- -- ";

} // namespace

TEST(EnvFiles, ReadShowsBytesAtTheirOffset) {
    const std::string file = file_of_digits(100);
    expect_success("env_test read_file " + file + " 0x13 5", "",
                   head(file, "0x13", "len=5") +
                       "0x00000010~0000001f: -- -- -- 39 30 31 32 33 -- -- -- -- -- -- -- --   ---90123--------\n\n");
    expect_success("env_test read_file " + file + " 030 16", "",
                   head(file, "0x18", "len=16") +
                       "0x00000010~0000001f: -- -- -- -- -- -- -- -- 34 35 36 37 38 39 30 31   --------45678901\n"
                       "0x00000020~0000002f: 32 33 34 35 36 37 38 39 -- -- -- -- -- -- -- --   23456789--------\n\n");
    expect_success("env_test read_file " + file + " start 0x10", "",
                   head(file, "0x0", "len=16") +
                       "0x00000000~0000000f: 30 31 32 33 34 35 36 37 38 39 30 31 32 33 34 35   0123456789012345\n\n");
}

TEST(EnvFiles, ReadOfNothing) {
    const std::string file = file_of_digits(100);
    expect_success("env_test read_file " + file + " 16 none", "", head(file, "0x10", "len=0") + "\n");
    expect_success("env_test read_file " + file + " 17 0", "",
                   head(file, "0x11", "len=0") + "0x00000010~0000001f: " + dashes + "  ----------------\n\n");
}

TEST(EnvFiles, ReadOfAFileOfTheBoard) {
    expect_success("env_test read_file /opt/hostx/home/elabel.txt 0 7", "",
                   head("/opt/hostx/home/elabel.txt", "0x0", "len=7") +
                       "0x00000000~0000000f: 5b 62 6f 61 72 64 5d -- -- -- -- -- -- -- -- --   [board]---------\n\n");
}

// A file may end before what is asked for, be it that it is cut short meanwhile.
TEST(EnvFiles, BehindTheEndOfAFileAreZeros) {
    const std::string file = file_of_digits(3);
    expect_success("env_test read_file " + file + " 1 4", "",
                   head(file, "0x1", "len=4") +
                       "0x00000000~0000000f: -- 31 32 00 00 -- -- -- -- -- -- -- -- -- -- --   -12..-----------\n\n");
    expect_success("env_test read_file " + file + " 0x10000000f 1", "",
                   head(file, "0x10000000f", "len=1") +
                       "0x00000000~0000000f: -- -- -- -- -- -- -- -- -- -- -- -- -- -- -- 00   ---------------.\n\n");
}

// What a 32-bit file interface does not reach. The file has a hole, and takes no room.
TEST(EnvFiles, ReadAndWriteBeyond4GiB) {
    const std::string file = file_of_digits(5);
    std::error_code problem;
    fs::resize_file(file, 0x100000010, problem);
    ASSERT_FALSE(problem) << problem.message() << "; the folder for temporary files must take files beyond 4 GiB";
    expect_success("env_test write_file " + file + " 0x100000003 0x41", "",
                   head(file, "0x100000003", "data=0x41") + "success\n\n");
    expect_success("env_test read_file " + file + " 4294967298 3", "",
                   head(file, "0x100000002", "len=3") +
                       "0x00000000~0000000f: -- -- 00 41 00 -- -- -- -- -- -- -- -- -- -- --   --.A.-----------\n\n");
    expect_success("env_test read_file " + file + " 3 1", "",
                   head(file, "0x3", "len=1") +
                       "0x00000000~0000000f: -- -- -- 33 -- -- -- -- -- -- -- -- -- -- -- --   ---3------------\n\n");
}

TEST(EnvFiles, OffsetsThatNoFileHas) {
    const std::string file = file_of_digits(100);
    expect_failure("env_test read_file " + file + " 0x8000000000000000 1", "",
                   head(file, "0x8000000000000000", "len=1") +
                       "[env_file_read]read file fail, errno Invalid argument\n");
    expect_failure("env_test read_file " + file + " -1 1", "",
                   head(file, "0xffffffffffffffff", "len=1") +
                       "[env_file_read]read file fail, errno Invalid argument\n");
    expect_failure("env_test write_file " + file + " 99999999999999999999999 1", "",
                   head(file, "0xffffffffffffffff", "data=0x1") +
                       "[env_file_write]write file fail, errno=22(Invalid argument)\nfail, ret=0xffffffff\n\n");
}

TEST(EnvFiles, FilesThatCannotBeOpened) {
    const std::string missing = new_scratch_dir() + "/missing";
    expect_failure("env_test read_file " + missing + " 0 16", "",
                   head(missing, "0x0", "len=16") + "[env_file_read]open file fail, file-name:" + missing +
                       ", fd 0xffffffff, error No such file or directory.\n");
    expect_failure("env_test read_file '' 0 0", "",
                   head("", "0x0", "len=0") + "[env_file_read]open file fail, file-name:, fd 0xffffffff, error No such "
                                              "file or directory.\n");
    expect_failure("env_test write_file " + missing + " 0 1", "",
                   head(missing, "0x0", "data=0x1") + "[env_file_write]open file fail, file-name:" + missing +
                       ", fd 0xffffffff, error No such file or directory.\nfail, ret=0xffffffff\n\n");
    EXPECT_FALSE(fs::exists(missing));
}

// A directory opens for reading, and has no bytes.
TEST(EnvFiles, Directories) {
    const std::string directory = new_scratch_dir();
    for (const std::string length : {"0", "16"}) {
        expect_failure("env_test read_file " + directory + " 0 " + length, "",
                       head(directory, "0x0", "len=" + length) +
                           "[env_file_read]read file fail, errno Is a directory\n");
    }
    expect_failure("env_test write_file " + directory + " 0 1", "",
                   head(directory, "0x0", "data=0x1") + "[env_file_write]open file fail, file-name:" + directory +
                       ", fd 0xffffffff, error Is a directory.\nfail, ret=0xffffffff\n\n");
}

// Neither waits for the other end.
TEST(EnvFiles, Pipes) {
    const std::string pipe = new_scratch_dir() + "/pipe";
    ASSERT_EQ(mkfifo(pipe.c_str(), 0600), 0);
    expect_failure("env_test read_file " + pipe + " 0 16", "",
                   head(pipe, "0x0", "len=16") + "[env_file_read]read file fail, errno Illegal seek\n");
    expect_failure("env_test write_file " + pipe + " 0 1", "",
                   head(pipe, "0x0", "data=0x1") + "[env_file_write]open file fail, file-name:" + pipe +
                       ", fd 0xffffffff, error No such device or address.\nfail, ret=0xffffffff\n\n");
}

TEST(EnvFiles, WriteChangesOneByte) {
    const std::string file = file_of_digits(10);
    expect_success("env_test write_file " + file + " 3 0x78", "", head(file, "0x3", "data=0x78") + "success\n\n");
    expect_success("env_test write_file " + file + " 4 0xffffff79", "", head(file, "0x4", "data=0x79") + "success\n\n");
    expect_success("env_test write_file " + file + " 5 none", "", head(file, "0x5", "data=0x0") + "success\n\n");
    if (!lists_lines()) {
        EXPECT_EQ(read_file(file), std::string("012xy\0"
                                               "6789",
                                               10));
    }
    expect_success("env_test write_file " + file + " 12 255", "", head(file, "0xc", "data=0xff") + "success\n\n");
}

TEST(EnvFiles, WriteOnAFullDisk) {
    expect_failure("env_test write_file /dev/full 0 1", "",
                   head("/dev/full", "0x0", "data=0x1") +
                       "[env_file_write]write file fail, errno=28(No space left on device)\nfail, ret=0xffffffff\n\n");
}

TEST(EnvFiles, WriteMtd) {
    expect_success("env_test write_mtd env 0x10 0x1ab",
                   "drv_flash_mtd_write(mtd_name=\"env\", offset=16, buffer=[ab], len=1) = 0",
                   "mtd_name=env\noffset=0x10\ndata=0xab\n\nsuccess\n\n");
    expect_success("env_test write_mtd '' at value",
                   "drv_flash_mtd_write(mtd_name=\"\", offset=0, buffer=[00], len=1) = 0",
                   "mtd_name=\noffset=0x0\ndata=0x0\n\nsuccess\n\n");
    expect_success("env_test write_mtd env 4294967295 255",
                   "drv_flash_mtd_write(mtd_name=\"env\", offset=0xffffffff, buffer=[ff], len=1) = 0",
                   "mtd_name=env\noffset=0xffffffff\ndata=0xff\n\nsuccess\n\n");
    expect_failure("env_test write_mtd env 0 1",
                   "drv_flash_mtd_write(mtd_name=\"env\", offset=0, buffer=[01], len=1) = 0x81110107",
                   "mtd_name=env\noffset=0x0\ndata=0x1\n\nfail, ret=0x81110107\n\n");
}

// Cut to 32 bits it would be another offset.
TEST(EnvFiles, WriteMtdBeyondWhatDriversCount) {
    expect_failure("env_test write_mtd env 0x100000000 1", "",
                   "mtd_name=env\noffset=0x100000000\ndata=0x1\n\nfail, ret=0xffffffff\n\n");
}

TEST(EnvFiles, ExactlyThreeWords) {
    for (const std::string name : {"read_file", "write_file", "write_mtd"}) {
        for (const std::string words : {"", " a", " a 1", " a 1 2 3"}) {
            expect_failure("env_test " + name + words, "", "invalid para\n");
        }
    }
}

TEST(EnvFiles, ReadWithoutMemoryFailsBehindItsHead) {
    expect_without_text_area("env_test read_file /opt/hostx/home/elabel.txt 0 16", "",
                             head("/opt/hostx/home/elabel.txt", "0x0", "len=16") + timing_lines +
                                 operate_fail("read_file") + operate_fail("env_test"),
                             255);
}
