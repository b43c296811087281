// env_test: the sub-commands of both stores of variables on the real program, with the driver scripted.
#include <gtest/gtest.h>

#include "tests/support/command.h"
#include "tests/support/failing_allocations.h"

using namespace kestro_tests;

TEST(EnvTest, UsageListsTheSubCommandsInOrder) {
    expect_run("env_test", "",
               "kestro_test: too few args!\n\n\nUsage: kestro_test [OPTION]\t\n"
               "List the functionalities for kestro_test \n"
               " env_get\n"
               " env_set\n"
               " env_save\n"
               " env_save_ok\n"
               " env_clr\n"
               " env_clr_all\n"
               " env_print\n"
               " env_num_get\n"
               " env_num_set\n"
               " memenv_get\n"
               " memenv_set\n"
               " memenv_num_get\n"
               " memenv_num_set\n"
               " memenv_save\n"
               " memenv_print\n"
               " memenv_clr\n"
               " memenv_clr_all\n"
               " read_file file_name offset length\n"
               " write_file file_name offset value\n"
               " write_mtd mtd_name offset value\n"
               " env_sdv_test\n"
               " memenv_sdv_test\n",
               0);
}

TEST(EnvTest, GetShowsNameAndValue) {
    for (const std::string store : {"env", "memenv"}) {
        expect_success("env_test " + store + "_get board_reset_mode",
                       "drv_" + store + "_get(name=\"board_reset_mode\", size=127) = 0 value=\"soft 100%d\"",
                       "[name]:board_reset_mode [value]:soft 100%d\n");
        expect_success("env_test " + store + "_get a b c", "drv_" + store + "_get(name=\"a\", size=127) = 0 value=\"\"",
                       "[name]:a [value]:\n");
        expect_success("env_test " + store + "_get ''", "drv_" + store + "_get(name=\"\", size=127) = 0",
                       "[name]: [value]:\n");
    }
}

// The code is not handed on either: what the shell sees is the same for every failure.
TEST(EnvTest, GetOfAMissingVariableSaysNothing) {
    expect_failure("env_test env_get nothing", "drv_env_get(name=\"nothing\", size=127) = 0x81110103 value=\"x\"", "");
    expect_failure("env_test memenv_get nothing", "drv_memenv_get(name=\"nothing\", size=127) = 0x811101a4 value=\"x\"",
                   "");
}

TEST(EnvTest, GetShowsAValueToTheLastByteOfItsArea) {
    const std::string value(127, 'V');
    for (const std::string store : {"env", "memenv"}) {
        expect_success("env_test " + store + "_get long",
                       "drv_" + store + "_get(name=\"long\", size=127) = 0 value=\"" + value + "\"",
                       "[name]:long [value]:" + value + "\n");
    }
}

TEST(EnvTest, SetTakesAValueOfOneWordOnly) {
    for (const std::string store : {"env", "memenv"}) {
        const std::string line = "env_test " + store + "_set ";
        const std::string call = "drv_" + store + "_set";
        expect_success(line + "mode soft", call + "(name=\"mode\", value=\"soft\") = 0", "");
        expect_success(line + "mode 'two words'", call + "(name=\"mode\", value=\"two words\") = 0", "");
        expect_success(line + "mode", call + "(name=\"mode\", value=\"\") = 0", "");
        expect_success(line + "mode two words", call + "(name=\"mode\", value=\"\") = 0", "");
        expect_success(line + "a b c d", call + "(name=\"a\", value=\"\") = 0", "");
        expect_failure(line + "mode soft", call + "(name=\"mode\", value=\"soft\") = 0x8111010b", "");
    }
}

TEST(EnvTest, SaveOfFlashSaysNothing) {
    expect_success("env_test env_save", "drv_env_save() = 0", "");
    expect_success("env_test env_save 1 2", "drv_env_save() = 0", "");
    expect_failure("env_test env_save", "drv_env_save() = 0x8111010d", "");
}

TEST(EnvTest, SaveOk) {
    expect_success("env_test env_save_ok", "drv_env_save_ok() = 0 status=0", "success:0\r\n");
    expect_success("env_test env_save_ok 1", "drv_env_save_ok() = 0 status=255", "success:255\r\n");
    expect_success("env_test env_save_ok", "drv_env_save_ok() = 0", "success:0\r\n");
    expect_failure("env_test env_save_ok", "drv_env_save_ok() = 0x811101a4 status=1",
                   "drv_env_save_ok ret:2165375396\r\n");
}

TEST(EnvTest, ClrOfFlashSaysNothing) {
    expect_success("env_test env_clr mode", "drv_env_clr(name=\"mode\") = 0", "");
    expect_success("env_test env_clr mode x", "drv_env_clr(name=\"mode\") = 0", "");
    expect_failure("env_test env_clr mode", "drv_env_clr(name=\"mode\") = 0x81110103", "");
}

TEST(EnvTest, ClrAll) {
    for (const std::string store : {"env", "memenv"}) {
        const std::string call = "drv_" + store + "_clr_all";
        expect_success("env_test " + store + "_clr_all", call + "() = 0", call + " ret:0\r\n");
        expect_success("env_test " + store + "_clr_all x y", call + "() = 0", call + " ret:0\r\n");
        expect_failure("env_test " + store + "_clr_all", call + "() = 0xffffffff", call + " ret:4294967295\r\n");
    }
}

// Both stores have one label.
TEST(EnvTest, PrintShowsTheWholeStore) {
    for (const std::string store : {"env", "memenv"}) {
        const std::string line = "env_test " + store + "_print";
        const std::string call = "drv_" + store + "_print()";
        expect_success(line, call + " = 0 text=\"a=1\\nb=%s\\n\"", "env_print_test:[ret]:0\r\na=1\nb=%s\n\r\n");
        expect_success(line + " 1 2", call + " = 0", "env_print_test:[ret]:0\r\n\r\n");
        expect_failure(line, call + " = 17 text=\"half\"", "env_print_test:[ret]:17\r\nhalf\r\n");
        expect_failure(line, call + " = -2", "env_print_test:[ret]:-2\r\n\r\n");
    }
}

TEST(EnvTest, PrintShowsAListingToTheLastByteOfItsArea) {
    const std::string listing(512U * 1024U, 'L');
    for (const std::string store : {"env", "memenv"}) {
        expect_success("env_test " + store + "_print", "drv_" + store + "_print() = 0 text=\"" + listing + "\"",
                       "env_print_test:[ret]:0\r\n" + listing + "\r\n");
    }
}

TEST(EnvTest, PrintWithoutMemoryFailsWithoutALine) {
    for (const std::string store : {"env", "memenv"}) {
        expect_without_text_area("env_test " + store + "_print", "drv_" + store + "_print() = 0 text=\"a=1\"",
                                 timing_lines + operate_fail(store + "_print") + operate_fail("env_test"), 255);
    }
}

TEST(EnvTest, NumGet) {
    for (const std::string store : {"env", "memenv"}) {
        const std::string line = "env_test " + store + "_num_get ";
        const std::string call = "drv_" + store + "_num_get";
        expect_success(line + "count 10", call + "(name=\"count\", base=10) = 0 value=8899",
                       "[name]:count [value]:8899\n");
        expect_success(line + "count 0x10 7", call + "(name=\"count\", base=16) = 0 value=0xffffffff",
                       "[name]:count [value]:4294967295\n");
        expect_success(line + "count ten", call + "(name=\"count\", base=0) = 0", "[name]:count [value]:0\n");
        expect_success(line + "count 4294967295", call + "(name=\"count\", base=0xffffffff) = 0 value=1",
                       "[name]:count [value]:1\n");
        expect_failure(line + "count 010", call + "(name=\"count\", base=8) = 0x81110103 value=5",
                       call + " ret:2165375235\r\n");
    }
}

TEST(EnvTest, NumSet) {
    for (const std::string store : {"env", "memenv"}) {
        const std::string line = "env_test " + store + "_num_set ";
        const std::string call = "drv_" + store + "_num_set";
        expect_success(line + "count 8899 10", call + "(name=\"count\", value=8899, base=10) = 0", call + " ret:0\r\n");
        expect_success(line + "count 0xffffffff 16 7", call + "(name=\"count\", value=0xffffffff, base=16) = 0",
                       call + " ret:0\r\n");
        expect_success(line + "count many ten", call + "(name=\"count\", value=0, base=0) = 0", call + " ret:0\r\n");
        expect_failure(line + "count 1 37", call + "(name=\"count\", value=1, base=37) = 0x81110106",
                       call + " ret:2165375238\r\n");
    }
}

TEST(EnvTest, SaveOfMemory) {
    expect_success("env_test memenv_save", "drv_memenv_save() = 0", "drv_memenv_save ret:0\r\n");
    expect_success("env_test memenv_save x", "drv_memenv_save() = 0", "drv_memenv_save ret:0\r\n");
    expect_failure("env_test memenv_save", "drv_memenv_save() = 0x811101a4", "drv_memenv_save ret:2165375396\r\n");
}

TEST(EnvTest, ClrOfMemory) {
    expect_success("env_test memenv_clr mode", "drv_memenv_clr(name=\"mode\") = 0", "drv_memenv_clr ret:0\r\n");
    expect_success("env_test memenv_clr mode x", "drv_memenv_clr(name=\"mode\") = 0", "drv_memenv_clr ret:0\r\n");
    expect_failure("env_test memenv_clr mode", "drv_memenv_clr(name=\"mode\") = 3", "drv_memenv_clr ret:3\r\n");
}

TEST(EnvTest, MissingWordsAreAnsweredWithTheForm) {
    const auto expect_form = [](const std::string &words, const std::string &form) {
        expect_failure("env_test " + words, "", "./kestro_test env_test " + form + "\r\n");
    };
    expect_form("env_get", "env_get [env_name]");
    expect_form("env_clr", "env_clr [env_name]");
    expect_form("memenv_get", "memenv_get [env_name]");
    expect_form("memenv_clr", "memenv_clr [memenv_name]");
    expect_form("env_set", "env_set [env_name] [env_value]");
    expect_form("memenv_set", "memenv_set [env_name] [env_value]");
    expect_form("env_num_get", "env_num_get [env_name] [base]");
    expect_form("env_num_get count", "env_num_get [env_name] [base]");
    expect_form("memenv_num_get", "memenv_num_get [memenv_name] [base]");
    expect_form("memenv_num_get count", "memenv_num_get [memenv_name] [base]");
    expect_form("env_num_set", "env_num_set [env_name] [value] [base]");
    expect_form("env_num_set count 1", "env_num_set [env_name] [value] [base]");
    expect_form("memenv_num_set", "memenv_num_set [memenv_name] [value] [base]");
    expect_form("memenv_num_set count 1", "memenv_num_set [memenv_name] [value] [base]");
}
