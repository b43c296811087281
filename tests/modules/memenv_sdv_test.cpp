// memenv_sdv_test: the self-test of the store of variables in reserved memory, step by step. The halves of real memory
// are compared in env_simulated_test.cpp and, with guard pages, in memory_halves_test.cpp.
#include <gtest/gtest.h>

#include "tests/support/command.h"

using namespace kestro_tests;

namespace {

const std::string memenv_line = "env_test memenv_sdv_test";

// The steps, each as it goes well. Memory without a byte has equal halves.
const std::string memenv_set = "drv_memenv_set(name=\"sdv_test\", value=\"kestro_ok\") = 0\n";
const std::string memenv_get = "drv_memenv_get(name=\"sdv_test\", size=128) = 0 value=\"kestro_ok\" x1\n";
const std::string memenv_num_set = "drv_memenv_num_set(name=\"sdv_test_num\", value=8899, base=10) = 0\n";
const std::string memenv_num_get = "drv_memenv_num_get(name=\"sdv_test_num\", base=10) = 0 value=8899 x1\n";
const std::string memenv_save = "drv_memenv_save() = 0\n";
const std::string memenv_address = "drv_highmem_get_base_addr(type=16) = 0 base_addr=0x1000\n";
const std::string memenv_length = "drv_highmem_get_len(type=16) = 0 len=0\n";
const std::string memenv_clear = "drv_memenv_clr(name=\"sdv_test\") = 0\ndrv_memenv_clr(name=\"sdv_test_num\") = 0\n";
const std::string memenv_empty = "drv_memenv_get(name=\"sdv_test\", size=128) = 0 value=\"\"\n";
const std::string memenv_zero = "drv_memenv_num_get(name=\"sdv_test_num\", base=10) = 0 value=0\n";

const std::string memenv_text = memenv_set + memenv_get;
const std::string memenv_number = memenv_num_set + memenv_num_get;
const std::string memenv_halves = memenv_save + memenv_address + memenv_length;
const std::string memenv_to_the_clearing = memenv_text + memenv_number + memenv_halves;

const std::string memenv_text_pass = "Test memenv set-get..............PASS\n";
const std::string memenv_number_pass = "Test memenv_num set-get..............PASS\n";
const std::string memenv_save_pass = "Test memenv save..............PASS\n";
const std::string memenv_clear_pass = "Test memenv clr..............PASS\n";
const std::string memenv_before_the_save = memenv_text_pass + memenv_number_pass;
const std::string memenv_before_the_clearing = memenv_before_the_save + memenv_save_pass;

} // namespace

TEST(MemenvSdvTest, EveryStepPasses) {
    expect_success(memenv_line, memenv_to_the_clearing + memenv_clear + memenv_empty + memenv_zero,
                   memenv_before_the_clearing + memenv_clear_pass);
}

TEST(MemenvSdvTest, WordsBehindItAreIgnored) {
    expect_success(memenv_line + " 1 2", memenv_to_the_clearing + memenv_clear + memenv_empty + memenv_zero,
                   memenv_before_the_clearing + memenv_clear_pass);
}

// Unlike the store in flash, this one is expected to take a variable.
TEST(MemenvSdvTest, AVariableThatIsNotTakenFails) {
    expect_failure(memenv_line, "drv_memenv_set = 0x81110103", "drv env set fail, ret=0x81110103 \n");
}

TEST(MemenvSdvTest, AVariableThatCannotBeReadFails) {
    expect_failure(memenv_line, memenv_set + "drv_memenv_get = 0x81110103", "drv env get fail, ret=0x81110103 \n");
}

TEST(MemenvSdvTest, AnotherTextIsToldAndTheTestGoesOn) {
    expect_success(memenv_line,
                   memenv_set + "drv_memenv_get(name=\"sdv_test\", size=128) = 0 value=\"kestro_no\" x1\n" +
                       memenv_number + memenv_halves + memenv_clear + memenv_empty + memenv_zero,
                   "set value[kestro_ok] and get value[kestro_no], compare fail.\n" + memenv_number_pass +
                       memenv_save_pass + memenv_clear_pass);
}

TEST(MemenvSdvTest, ATextThatFillsItsAreaEndsWithIt) {
    const std::string full(128, 'v');
    std::string bytes;
    for (size_t i = 0; i < full.size(); ++i) {
        bytes += i == 0 ? "76" : " 76";
    }
    expect_failure(memenv_line,
                   memenv_set + "drv_memenv_get(name=\"sdv_test\", size=128) = 0 value=[" + bytes +
                       "]\ndrv_memenv_num_set = 1\n",
                   "set value[kestro_ok] and get value[" + full + "], compare fail.\ndrv env set fail, ret=0x1 \n");
}

TEST(MemenvSdvTest, ANumberThatIsNotTakenFails) {
    expect_failure(memenv_line, memenv_text + "drv_memenv_num_set = 0x2",
                   memenv_text_pass + "drv env set fail, ret=0x2 \n");
}

// In hexadecimal, where the store in flash shows it in decimal.
TEST(MemenvSdvTest, ANumberThatCannotBeReadFails) {
    expect_failure(memenv_line, memenv_text + memenv_num_set + "drv_memenv_num_get = 0x1f",
                   memenv_text_pass + "drv env get fail, ret=0x1f \n");
}

TEST(MemenvSdvTest, AnotherNumberIsToldAndTheTestGoesOn) {
    expect_success(
        memenv_line,
        memenv_text + memenv_num_set + "drv_memenv_num_get(name=\"sdv_test_num\", base=10) = 0 value=0xffffffff x1\n" +
            memenv_halves + memenv_clear + memenv_empty + memenv_zero,
        memenv_text_pass + "set value[8899] and get value[-1], compare fail.\n" + memenv_save_pass + memenv_clear_pass);
}

TEST(MemenvSdvTest, ASaveThatFails) {
    expect_failure(memenv_line, memenv_text + memenv_number + "drv_memenv_save = 0x3",
                   memenv_before_the_save + "drv env save fail, ret=0x3 \n");
}

TEST(MemenvSdvTest, MemoryThatCannotBeFound) {
    expect_failure(memenv_line, memenv_text + memenv_number + memenv_save + "drv_highmem_get_base_addr = 0x4",
                   memenv_before_the_save + "get memenv addr fail, ret=0x4 \n");
    expect_failure(memenv_line,
                   memenv_text + memenv_number + memenv_save + memenv_address + "drv_highmem_get_len = 0x5",
                   memenv_before_the_save + "get memenv size fail, ret=0x5 \n");
}

// Nothing is read there.
TEST(MemenvSdvTest, MemoryWithoutAnAddressIsDifferent) {
    expect_success(memenv_line,
                   memenv_text + memenv_number + memenv_save +
                       "drv_highmem_get_base_addr(type=16) = 0 base_addr=0\n"
                       "drv_highmem_get_len(type=16) = 0 len=4096\n" +
                       memenv_clear + memenv_empty + memenv_zero,
                   memenv_before_the_save + "main area data and backup area data, compare fail.\n" + memenv_clear_pass);
}

TEST(MemenvSdvTest, AVariableThatCannotBeCleared) {
    expect_failure(memenv_line, memenv_to_the_clearing + "drv_memenv_clr(name=\"sdv_test\") = 0x6",
                   memenv_before_the_clearing + "clr env fail, ret=0x6 \n");
    expect_failure(memenv_line,
                   memenv_to_the_clearing +
                       "drv_memenv_clr(name=\"sdv_test\") = 0\ndrv_memenv_clr(name=\"sdv_test_num\") = 0x7",
                   memenv_before_the_clearing + "clr env fail, ret=0x7 \n");
}

// A variable that was cleared is still there, and empty.
TEST(MemenvSdvTest, AClearedVariableThatIsGone) {
    expect_failure(memenv_line, memenv_to_the_clearing + memenv_clear + "drv_memenv_get = 0x81110103",
                   memenv_before_the_clearing + "clr env fail, get env is {} \n");
    expect_failure(memenv_line,
                   memenv_to_the_clearing + memenv_clear + memenv_empty + "drv_memenv_num_get = 0x81110103",
                   memenv_before_the_clearing + "clr env fail, get env num is {0} \n");
}

TEST(MemenvSdvTest, AClearedVariableThatStillHasItsValue) {
    expect_success(memenv_line,
                   memenv_to_the_clearing + memenv_clear +
                       "drv_memenv_get(name=\"sdv_test\", size=128) = 0 value=\"kestro_ok\"\n"
                       "drv_memenv_num_get(name=\"sdv_test_num\", base=10) = 0 value=8899\n",
                   memenv_before_the_clearing + "clr env fail.\nclr env num fail.\n" + memenv_clear_pass);
}
