// What the identity sections give back; their lines are tested in whole-board runs, which end with 0 whatever failed.
#include <gtest/gtest.h>

#include <cstring>
#include <string>
#include <vector>

#include "selftest/identity/barcode_storage.h"
#include "selftest/identity/elabel_storage.h"
#include "selftest/identity/mac_storage.h"
#include "tests/selftest/fake_drivers.h"
#include "tests/selftest/fake_storage.h"
#include "tests/support/capture.h"
#include "tests/support/process.h"

using namespace kestro_tests;

namespace {

class IdentityTest : public testing::Test {
  protected:
    void SetUp() override {
        drivers() = {};
        storage() = {};
    }
    void TearDown() override {
        SetUp();
    }
};

// Describes a node whose entries hold these numbers; what the walk asks for beyond them cannot be read.
void describe(const std::string &node, const std::string &element, const std::vector<uint32_t> &numbers) {
    drivers().entry_num = static_cast<uint32_t>(numbers.size());
    for (size_t i = 0; i < numbers.size(); ++i) {
        drivers().elements[node + "/entry" + std::to_string(i) + "/" + element] = numbers[i];
    }
}

void describe_barcodes(const std::vector<uint32_t> &ids) {
    describe("barcode/barcode_attr", "barcode_id", ids);
}

// Every type has its spare.
void describe_macs(const std::vector<uint32_t> &types) {
    describe("mac_mng/mac_storage_main", "id", types);
    describe("mac_mng/mac_storage_spare", "id", types);
}

template <typename function> int result_of(function section) {
    int result = 99;
    printed_by([&] { result = section(1, console_sink); });
    return result;
}

} // namespace

TEST_F(IdentityTest, BarCodesThatMatchPass) {
    describe_barcodes({0, 3});
    storage().barcodes = {{0, std::string(128, 'a')}, {3, std::string(128, 'b')}};
    EXPECT_EQ(result_of(barcode_section), 0);
    EXPECT_EQ(storage().barcodes[0], std::string(128, 'a'));
    EXPECT_EQ(storage().barcodes[3], std::string(128, 'b'));
}

TEST_F(IdentityTest, ABoardWithoutBarCodesFailsOneWithoutThatBarCodePasses) {
    EXPECT_EQ(result_of(barcode_section), -1);
    describe_barcodes({0, 3});
    EXPECT_EQ(result_of(barcode_section), 0) << "neither is supported";
}

TEST_F(IdentityTest, OneBarCodeThatFailsFailsTheSection) {
    describe_barcodes({0, 3});
    storage().barcodes = {{0, std::string(128, 'a')}};
    storage().forgets_writes = true;
    EXPECT_EQ(result_of(barcode_section), -1) << "the first does not match, the second is not supported";
    storage().barcodes = {{3, std::string(128, 'a')}};
    EXPECT_EQ(result_of(barcode_section), -1) << "the other way round";
    storage().refuses_writes = true;
    EXPECT_EQ(result_of(barcode_section), -1);
    storage().broken = true;
    EXPECT_EQ(result_of(barcode_section), -1);
}

TEST_F(IdentityTest, ABarCodeEntryThatCannotBeReadIsNoFailure) {
    describe_barcodes({0, 3});
    drivers().elements.clear();
    storage().broken = true;
    EXPECT_EQ(result_of(barcode_section), 0);
}

TEST_F(IdentityTest, MacTypesThatMatchPass) {
    describe_macs({0, 3});
    storage().macs = {{0, {2, "abcdef"}}, {3, {1, "ghijkl"}}};
    EXPECT_EQ(result_of(mac_section), 0);
    EXPECT_EQ(storage().macs[0].num, 2U);
    EXPECT_EQ(storage().macs[0].first, "abcdef");
    EXPECT_EQ(storage().macs[3].num, 1U);
    EXPECT_EQ(storage().macs[3].first, "ghijkl");
}

TEST_F(IdentityTest, ABoardWithoutMacTypesFails) {
    EXPECT_EQ(result_of(mac_section), -1);
}

TEST_F(IdentityTest, OneMacTypeThatFailsFailsTheSection) {
    describe_macs({0, 3});
    storage().macs = {{0, {1, "abcdef"}}};
    EXPECT_EQ(result_of(mac_section), -1) << "type 3 cannot be read";
    storage().macs = {{3, {1, "abcdef"}}};
    EXPECT_EQ(result_of(mac_section), -1) << "type 0 cannot be read";
    storage().macs = {{0, {1, "abcdef"}}, {3, {1, "abcdef"}}};
    storage().forgets_writes = true;
    EXPECT_EQ(result_of(mac_section), -1);
    storage().forgets_writes = false;
    storage().refuses_writes = true;
    EXPECT_EQ(result_of(mac_section), -1);
}

TEST_F(IdentityTest, AMissingSpareFailsTheSection) {
    describe_macs({0, 3});
    drivers().elements.erase("mac_mng/mac_storage_spare/entry0/id");
    storage().macs = {{0, {1, "abcdef"}}, {3, {1, "ghijkl"}}};
    EXPECT_EQ(result_of(mac_section), -1);
}

TEST_F(IdentityTest, MacTypesThatAreNotTestedHereAreNoFailure) {
    describe_macs({4, 72, 73, 1, 2, 64, 79});
    storage().msc_state = 1;
    EXPECT_EQ(result_of(mac_section), 0);
    storage().msc_state = 0;
    EXPECT_EQ(result_of(mac_section), -1) << "on a master the storage lacks these types";
}

TEST_F(IdentityTest, MacEntriesThatCannotBeReadAreNoFailure) {
    describe_macs({0, 3});
    drivers().elements.clear();
    EXPECT_EQ(result_of(mac_section), 0);
}

TEST_F(IdentityTest, ALabelThatCannotBeReadOrWrittenFailsOneThatDiffersPasses) {
    EXPECT_EQ(printed_by([] { EXPECT_EQ(elabel_write_test(1, 0, console_sink), 0); }).find("Error"), std::string::npos);
    storage().forgets_writes = true;
    EXPECT_NE(printed_by([] { EXPECT_EQ(elabel_write_test(1, 0, console_sink), 0); }).find("Error"), std::string::npos);
    storage().refuses_writes = true;
    printed_by([] { EXPECT_EQ(elabel_write_test(1, 0, console_sink), -1); });
    storage().broken = true;
    printed_by([] { EXPECT_EQ(elabel_write_test(1, 0, console_sink), -1); });
}

TEST_F(IdentityTest, LabelsThatFillTheirAreaAreShownToTheirEnd) {
    const std::string board(1200, 'B');
    const std::string file(1200, 'F');
    storage().label = board;
    storage().forgets_writes = true;
    drivers().files["/opt/hostx/home/elabel.txt"] = scratch_file("label", file);
    std::vector<char> report(report_capacity);
    uint32_t fill = 0;
    EXPECT_EQ(elabel_write_test(1, 0, {report.data(), &fill}), 0);
    const std::string expected = "Now read elabel load info from file\xEF\xBC\x9A/opt/hostx/home/elabel.txt\r\n"
                                 "Error: elabel read and write match test fail.\r\n"
                                 "write info : \r\n" +
                                 file + "\r\nread info : \r\n" + board + "\r\noriginal info : \r\n" + board + "\r\n";
    EXPECT_EQ(std::string(report.data()), expected);
    EXPECT_EQ(fill, expected.size());
}

TEST_F(IdentityTest, BarCodesThatFillTheirAreaAreShownToTheirEnd) {
    const std::string board(128, 'B');
    storage().barcodes = {{0, board}};
    storage().forgets_writes = true;
    EXPECT_EQ(printed_by([] { EXPECT_EQ(barcode_write_test(1, 0, console_sink), -1); }),
              "Error: barcode read and write match test fail.\r\n"
              "original info : \r\n" +
                  board + "\r\nwrite info : \r\nHello test now...\r\nread info : \r\n" + board + "\r\n");
}
