// Files read as a whole: their areas, and files that change or have no memory while they are read. Descriptors and
// areas that would be left behind are counted after each test.
#include <gtest/gtest.h>

#include <cerrno>
#include <cstdlib>
#include <filesystem>
#include <string>
#include <sys/stat.h>
#include <unistd.h>

#include "shell/whole_file.h"
#include "tests/selftest/faults.h"
#include "tests/support/capture.h"
#include "tests/support/process.h"

using namespace kestro_tests;

namespace {

// What is printed while it is read; the content is left in `content`, "no area" when there is none.
std::string read_whole(const std::string &path, int result, std::string &content) {
    whole_file file{};
    const std::string said = printed_by([&] {
        errno = EBADF; // an earlier call's, which no line is about
        EXPECT_EQ(read_whole_file(path.c_str(), &file), result);
    });
    content = file.bytes == nullptr ? "no area" : std::string(reinterpret_cast<char *>(file.bytes), file.length);
    free(file.bytes);
    return said;
}

} // namespace

TEST(WholeFile, IsReadToItsLastByte) {
    std::string content;
    const std::string written("\0first\nlast\xff\0", 13);
    EXPECT_EQ(read_whole(scratch_file("file", written), 0, content), "");
    EXPECT_EQ(content, written);
}

TEST(WholeFile, AnEmptyOneHasAnAreaAllTheSame) {
    std::string content;
    EXPECT_EQ(read_whole(scratch_file("empty", ""), 0, content), "");
    EXPECT_EQ(content, "");
}

// One read, and no second look at what is left of the file: no call has failed.
TEST(WholeFile, OneThatBecomesShorterMeanwhile) {
    const std::string path = scratch_file("shrinking", "12345");
    std::string content;
    faults().file_shrinks = true;
    EXPECT_EQ(read_whole(path, -1, content), "read file[" + path + "] file_len:5 read_len:4 failure:Success\r\n");
    EXPECT_EQ(content, "no area");
}

TEST(WholeFile, WithoutMemory) {
    std::string content;
    faults().no_memory = true;
    EXPECT_EQ(read_whole(scratch_file("file", "12345"), -1, content),
              "malloc len:5 failure:Cannot allocate memory\r\n");
    EXPECT_EQ(content, "no area");
}

TEST(WholeFile, TheLargestAndOneByteMore) {
    const std::string path = scratch_file("sparse", "");
    std::error_code problem;
    std::filesystem::resize_file(path, 0x40000001, problem);
    ASSERT_FALSE(problem) << problem.message();
    std::string content;
    EXPECT_EQ(read_whole(path, -1, content), "malloc len:1073741825 failure:Cannot allocate memory\r\n");
    // Its area is asked for, which is all that is to be seen here.
    std::filesystem::resize_file(path, 0x40000000, problem);
    faults().no_memory = true;
    EXPECT_EQ(read_whole(path, -1, content), "malloc len:1073741824 failure:Cannot allocate memory\r\n");
    EXPECT_FALSE(faults().no_memory);
}

// Root reads everything, and is somebody else for this one.
TEST(WholeFile, WithoutTheRightToReadIt) {
    const std::string path = scratch_file("secret", "12345");
    ASSERT_EQ(chmod(path.c_str(), 0), 0);
    constexpr uid_t nobody = 65534;
    const uid_t user = geteuid();
    whole_file file{};
    const std::string said = printed_by([&] {
        EXPECT_TRUE(user != 0 || seteuid(nobody) == 0);
        EXPECT_EQ(read_whole_file(path.c_str(), &file), -1);
        EXPECT_EQ(seteuid(user), 0);
    });
    EXPECT_EQ(said, "open file[" + path + "] failure:Permission denied\r\n");
    EXPECT_EQ(file.bytes, nullptr);
}

TEST(WholeFile, WhatCannotBeOpenedOrHasNoLength) {
    const std::string folder = new_scratch_dir();
    std::string content;
    EXPECT_EQ(read_whole(folder + "/none", -1, content),
              "open file[" + folder + "/none] failure:No such file or directory\r\n");
    EXPECT_EQ(read_whole(folder, -1, content), "malloc len:-1 failure:Is a directory\r\n");
    EXPECT_EQ(content, "no area");
}
