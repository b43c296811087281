// The test label: from the board's label file, or the built-in text.
#include <gtest/gtest.h>

#include <cerrno>
#include <string>

#include "selftest/identity/elabel_storage.h"
#include "tests/selftest/fake_drivers.h"
#include "tests/support/capture.h"
#include "tests/support/process.h"

using namespace kestro_tests;

namespace {

constexpr const char *label_path = "/opt/hostx/home/elabel.txt";
constexpr const char *fallback = "there is no such file: /opt/hostx/home/elabel.txt. so load test info :elable test "
                                 "test test test ...\r\n";

class LabelTest : public testing::Test {
  protected:
    void SetUp() override {
        drivers() = {};
    }
    void TearDown() override {
        drivers() = {};
    }
};

} // namespace

TEST_F(LabelTest, AMissingTargetIsTheOnlyFailure) {
    uint32_t length = 0;
    EXPECT_EQ(printed_by([&] { EXPECT_EQ(get_test_label(nullptr, &length, console_sink), -1); }),
              std::string("image_buffer is NULL\r\n") + fallback);
}

TEST_F(LabelTest, TheFilesTextAndLengthAreTaken) {
    drivers().files[label_path] = scratch_file("label", "LABEL-1");
    elabel_area area = {};
    uint32_t length = 0;
    EXPECT_EQ(printed_by([&] { EXPECT_EQ(get_test_label(area, &length, console_sink), 0); }),
              "Now read elabel load info from file\xEF\xBC\x9A/opt/hostx/home/elabel.txt\r\n");
    EXPECT_STREQ(area, "LABEL-1");
    EXPECT_EQ(length, 7U);
}

TEST_F(LabelTest, AShortReadFallsBack) {
    drivers().files[label_path] = scratch_file("label", "LABEL-000012");
    elabel_area area = {};
    uint32_t length = 0;
    std::string printed = printed_by([&] {
        errno = 0;
        drivers().short_reads = true;
        EXPECT_EQ(get_test_label(area, &length, console_sink), 0);
        drivers().short_reads = false;
    });
    EXPECT_EQ(printed, std::string("read file[/opt/hostx/home/elabel.txt]file_len:12 read_len:11 failure:Success\r\n") +
                           fallback);
    EXPECT_STREQ(area, "elable test test test test ...");
    EXPECT_EQ(length, 30U);
}
