// Checksums of data: the known check values, and any length against the same sums worked out bit by bit.
#include "tests/sim/support.h"
#include "tests/support/logic_image.h"

#include <gtest/gtest.h>

namespace kestro_tests {

namespace {

uint32_t crc16_bit_by_bit(const std::string &data) {
    uint32_t crc = 0xFFFF;
    for (const char byte : data) {
        for (int bit = 7; bit >= 0; --bit) {
            const bool is_set = (static_cast<uint8_t>(byte) >> bit & 1U) != 0;
            const bool falls_out = (crc & 0x8000U) != 0;
            crc = (crc << 1U ^ (is_set != falls_out ? 0x1021U : 0U)) & 0xFFFFU;
        }
    }
    return crc;
}

std::string checksum_call(const std::string &width, const std::string &data) {
    return "drv_crc" + width + "_checksum(data=" + bytes(data) + ", len=" + std::to_string(data.size()) + ")";
}

} // namespace

TEST(ChecksumDriver, KnownCheckValues) {
    EXPECT_EQ(answers(new_delivered("mpu_master"),
                      {checksum_call("16", "123456789"), checksum_call("32", "123456789"), checksum_call("16", ""),
                       checksum_call("32", ""), checksum_call("16", "A"), checksum_call("32", "A")}),
              "0x0 crc16=10673\n0x0 crc32=0xcbf43926\n0x0 crc16=65535\n0x0 crc32=0\n0x0 crc16=47381\n"
              "0x0 crc32=0xd3d99e8b\n");
}

TEST(ChecksumDriver, DataOfAnyLength) {
    std::vector<std::string> calls;
    std::vector<uint32_t> sums;
    std::string data;
    for (int length = 0; length < 20; ++length) {
        calls.push_back(checksum_call("16", data));
        calls.push_back(checksum_call("32", data));
        sums.push_back(crc16_bit_by_bit(data));
        sums.push_back(crc32_bit_by_bit(data));
        data += static_cast<char>(length * 37 + 200);
    }
    const std::string said = answers(new_delivered("mpu_master"), calls);
    size_t at = 0;
    for (const uint32_t sum : sums) {
        at = said.find("=", at) + 1;
        EXPECT_EQ(std::stoul(said.substr(at), nullptr, 0), sum);
    }
}

TEST(ChecksumDriver, MissingAreas) {
    EXPECT_EQ(answers(new_delivered("lpu"),
                      {"drv_crc32_checksum(data=null, len=4)", "drv_crc32_checksum(data=[31], len=1, crc32=null)",
                       "drv_crc32_checksum(data=null, len=0)"}),
              null_pointer + null_pointer + null_pointer);
}

} // namespace kestro_tests
