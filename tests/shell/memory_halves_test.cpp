// memenv_sdv_test reads exactly the two halves of the memory: what lies in front of it and behind it is not there.
#include <gtest/gtest.h>

#include <cstring>
#include <string>
#include <sys/mman.h>
#include <unistd.h>

#include "drv_basic/storage/drv_highmem.h"
#include "modules/env_test/handlers.h"
#include "tests/support/capture.h"

using namespace kestro_tests;

namespace {

struct told_memory {
    uint64_t address;
    uint32_t length;
};

told_memory told;

const std::string equal = "Test memenv save..............PASS\n";
const std::string different = "main area data and backup area data, compare fail.\n";

// The line about the halves. The other drivers answer 0 and write nothing.
std::string said_of(uint64_t address, uint32_t length) {
    told = {address, length};
    const std::string all = printed_by([] { env_commands::memenv_sdv_test(0, nullptr); });
    const std::string before = "set value[kestro_ok] and get value[], compare fail.\n"
                               "set value[8899] and get value[0], compare fail.\n";
    const std::string behind = "Test memenv clr..............PASS\n";
    EXPECT_EQ(all.substr(0, before.size()), before);
    EXPECT_EQ(all.substr(all.size() - behind.size()), behind);
    return all.substr(before.size(), all.size() - before.size() - behind.size());
}

// A page of memory between two that nobody may touch.
class MemoryHalves : public testing::Test {
  protected:
    void SetUp() override {
        whole_ = mmap(nullptr, 3 * page_, PROT_NONE, MAP_PRIVATE | MAP_ANONYMOUS, -1, 0);
        ASSERT_NE(whole_, MAP_FAILED);
        ASSERT_EQ(mprotect(first(), page_, PROT_READ | PROT_WRITE), 0);
    }
    void TearDown() override {
        munmap(whole_, 3 * page_);
    }

    char *first() const {
        return static_cast<char *>(whole_) + page_;
    }

    // The text as the memory, at the end of the page.
    std::string said_of_text(const std::string &text) const {
        char *const begin = first() + page_ - text.size();
        memcpy(begin, text.data(), text.size());
        return said_of(reinterpret_cast<uintptr_t>(begin), static_cast<uint32_t>(text.size()));
    }

    const size_t page_ = static_cast<size_t>(sysconf(_SC_PAGESIZE));
    void *whole_ = nullptr;
};

} // namespace

uint32_t drv_highmem_get_base_addr(uint32_t type, uint64_t *base_addr) {
    EXPECT_EQ(type, 16U);
    *base_addr = told.address;
    return 0;
}

uint32_t drv_highmem_get_len(uint32_t type, uint32_t *len) {
    EXPECT_EQ(type, 16U);
    *len = told.length;
    return 0;
}

TEST_F(MemoryHalves, EqualOnesToTheirLastByte) {
    EXPECT_EQ(said_of_text("abcabc"), equal);
    EXPECT_EQ(said_of_text("abcabd"), different);
    EXPECT_EQ(said_of_text("abcxbc"), different);
    EXPECT_EQ(said_of(reinterpret_cast<uintptr_t>(first()), static_cast<uint32_t>(page_)), different);
    memset(first(), 'a', page_);
    EXPECT_EQ(said_of(reinterpret_cast<uintptr_t>(first()), static_cast<uint32_t>(page_)), equal);
}

TEST_F(MemoryHalves, TheOddByteBelongsToNone) {
    EXPECT_EQ(said_of_text("abcabcx"), equal);
    EXPECT_EQ(said_of_text("abcabdx"), different);
    EXPECT_EQ(said_of_text("x"), equal);
}

TEST_F(MemoryHalves, NoneAtAll) {
    EXPECT_EQ(said_of(reinterpret_cast<uintptr_t>(first() + page_), 0), equal);
    EXPECT_EQ(said_of(reinterpret_cast<uintptr_t>(first() + page_), 1), equal);
}

TEST_F(MemoryHalves, MemoryWithoutAnAddressIsNotRead) {
    EXPECT_EQ(said_of(0, 0x4000), different);
    EXPECT_EQ(said_of(0, 0), different);
}

TEST_F(MemoryHalves, AnAddressThatNoPointerHoldsIsNotRead) {
    if (sizeof(void *) > 4) {
        GTEST_SKIP() << "pointers hold every address here";
    }
    EXPECT_EQ(said_of(0x100000000U + reinterpret_cast<uintptr_t>(first()), 16), different);
}
