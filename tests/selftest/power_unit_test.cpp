// Power supplies when the system fails the test, or an operator breaks it off.
#include <gtest/gtest.h>

#include <csignal>
#include <cstdlib>
#include <string>
#include <vector>

#include "drv_basic/power/drv_power.h"
#include "modules/modules.h"
#include "selftest/power/power_init.h"
#include "selftest/power/power_reports.h"
#include "selftest/power/power_set_and_get.h"
#include "selftest/power/power_software.h"
#include "tests/selftest/fake_drivers.h"
#include "tests/selftest/faults.h"
#include "tests/support/capture.h"
#include "tests/support/process.h"

using namespace kestro_tests;

namespace {

// One supply, the shell, and what an operator does meanwhile.
struct fake_supply {
    uint32_t temp_limit = 70;
    uint32_t startup_delay = 1;
    bool is_up = true;
    int loads = 0;
    int labels = 0;
    std::vector<std::string> commands;
    int shell_result = 0;
    void (*at_write)() = nullptr;
};

fake_supply supply;
constexpr power_unit unit = {13, 0};

void meanwhile() {
    if (supply.at_write != nullptr) {
        supply.at_write();
    }
}

} // namespace

// No command of a test reaches the desk's shell.
int system(const char *command) {
    supply.commands.emplace_back(command);
    return supply.shell_result;
}

uint32_t drv_power_get_property(uint32_t, uint32_t, uint32_t type, uint32_t *value) {
    if (type == 0) {
        *value = 0;
        return 0;
    }
    if (type != 5) {
        return DRV_NOT_SUPPORTED;
    }
    *value = supply.temp_limit;
    return 0;
}

uint32_t drv_power_set_property(uint32_t, uint32_t, uint32_t type, uint32_t value) {
    if (type == 5) {
        supply.temp_limit = value;
    } else if (type == 27) {
        supply.startup_delay = value;
    }
    meanwhile();
    return 0;
}

uint32_t drv_power_init(uint32_t, uint32_t) {
    supply.is_up = true;
    return 0;
}

uint32_t drv_power_deinit(uint32_t, uint32_t) {
    supply.is_up = false;
    meanwhile();
    return 0;
}

uint32_t drv_power_load_app(uint32_t, uint32_t, uint32_t, const uint8_t *, uint32_t) {
    ++supply.loads;
    return 0;
}

uint32_t drv_power_set_board_property(uint32_t, uint32_t, uint32_t, const uint8_t *, uint32_t) {
    ++supply.labels;
    return 0;
}

namespace {

constexpr const char *image_path = "/opt/hostx/home/power_app.bin";
const std::string begin = "Info   : slot 13 power 0 software test begin. \r\n"
                          "Success: slot 13 power 0 get software info. soft_cnt 0 \r\n"
                          "Info   : chmod 755 /opt/hostx/home/power_app.bin.\r\n";

class PowerUnitTest : public testing::Test {
  protected:
    void SetUp() override {
        drivers() = {};
        supply = {};
    }
    void TearDown() override {
        drivers() = {};
        supply = {};
    }
};

// What the supply was like when the signal was let through.
fake_supply seen;
int signals = 0;

void look(int) {
    seen = supply;
    ++signals;
}

void interrupt_once() {
    supply.at_write = nullptr;
    raise(SIGTERM);
}

class Interrupted : public PowerUnitTest {
  protected:
    void SetUp() override {
        PowerUnitTest::SetUp();
        signals = 0;
        supply.at_write = interrupt_once;
        struct sigaction action {};
        action.sa_handler = look;
        sigaction(SIGTERM, &action, &before_);
    }
    void TearDown() override {
        sigaction(SIGTERM, &before_, nullptr);
        PowerUnitTest::TearDown();
    }

  private:
    struct sigaction before_ {};
};

} // namespace

TEST_F(PowerUnitTest, WithoutAShellNothingIsLoaded) {
    drivers().files[image_path] = scratch_file("image", "12345678");
    supply.shell_result = -1;
    EXPECT_EQ(printed_by([] { EXPECT_EQ(power_software_test(unit, console_sink), -1); }), begin);
    EXPECT_EQ(supply.loads, 0);
}

TEST_F(PowerUnitTest, ACommandThatFailsKeepsNothingFromBeingLoaded) {
    drivers().files[image_path] = scratch_file("image", "12345678");
    supply.shell_result = 256;
    printed_by([] { EXPECT_EQ(power_software_test(unit, console_sink), 0); });
    EXPECT_EQ(supply.commands, std::vector<std::string>{"chmod 755 /opt/hostx/home/power_app.bin"});
    EXPECT_EQ(supply.loads, 1);
}

TEST_F(PowerUnitTest, AShortRead) {
    drivers().files[image_path] = scratch_file("image", std::string(300, '1'));
    std::string printed = printed_by([] {
        drivers().short_reads = true;
        EXPECT_EQ(power_software_test(unit, console_sink), -1);
        drivers().short_reads = false;
    });
    EXPECT_EQ(printed, begin + "Error  : slot 13 power 0 read file /opt/hostx/home/power_app.bin len fail. len 0x12c "
                               "readlen 0x12b\r\n");
    EXPECT_EQ(supply.loads, 0);
}

TEST_F(PowerUnitTest, AnImageThatCannotBeReadAtAll) {
    drivers().files[image_path] = scratch_file("image", std::string(300, '1'));
    const std::string printed = printed_by([] {
        drivers().bad_disk = true;
        EXPECT_EQ(power_software_test(unit, console_sink), -1);
        drivers().bad_disk = false;
    });
    EXPECT_EQ(printed, begin + "Error  : slot 13 power 0 read file /opt/hostx/home/power_app.bin len fail. len 0x12c "
                               "readlen 0x0\r\n");
    EXPECT_EQ(supply.loads, 0);
}

TEST_F(PowerUnitTest, AnImageThatIsGoneWhenItIsOpened) {
    drivers().files[image_path] = scratch_file("image", "12345678");
    drivers().files_vanish = true;
    EXPECT_EQ(printed_by([] { EXPECT_EQ(power_software_test(unit, console_sink), 0); }),
              begin + "Info   : slot 13 power 0 open file /opt/hostx/home/power_app.bin fail, cannot test. please copy "
                      "load file first.\r\n"
                      "Success: slot 13 power 0 get software info. soft_cnt 0 \r\n");
    EXPECT_EQ(supply.loads, 0);
}

namespace {

// What comes before the dispatcher's lines.
std::string set_board_property(bool bad_disk, int expected) {
    std::vector<std::string> words = {"power_set_board_property", "13", "0", "0"};
    std::vector<char *> args;
    for (std::string &word : words) {
        args.push_back(word.data());
    }
    const std::string printed = printed_by([&] {
        drivers().bad_disk = bad_disk;
        EXPECT_EQ(power_test(static_cast<int>(args.size()), args.data()), expected);
        drivers().bad_disk = false;
    });
    return printed.substr(0, printed.find("cmd_exec"));
}

} // namespace

// An unreadable file must not blank the label of the supply.
TEST_F(PowerUnitTest, APropertyFileThatCannotBeRead) {
    drivers().files["/home/1"] = scratch_file("property", "12label");
    EXPECT_EQ(set_board_property(false, 0).substr(0, 45), "Success: slot 13 power 0 set 0x0 value: label");
    EXPECT_EQ(supply.labels, 1);
    EXPECT_EQ(set_board_property(true, -1), "can't read /home/1\n");
    EXPECT_EQ(supply.labels, 1);
}

TEST_F(PowerUnitTest, APropertyFileThatIsGoneWhenItIsOpened) {
    drivers().files["/home/1"] = scratch_file("property", "12label");
    drivers().files_vanish = true;
    EXPECT_EQ(set_board_property(false, -1), "can't open /home/1\n");
    EXPECT_EQ(supply.labels, 0);
}

TEST_F(PowerUnitTest, WithoutMemoryForTheImage) {
    drivers().files[image_path] = scratch_file("image", "12345678");
    EXPECT_EQ(printed_by([] {
                  faults().no_memory = true;
                  EXPECT_EQ(power_software_test(unit, console_sink), -1);
              }),
              begin);
    EXPECT_EQ(supply.loads, 0);
}

TEST_F(PowerUnitTest, WithoutMemoryForTheBlackBox) {
    EXPECT_EQ(printed_by([] {
                  faults().no_memory = true;
                  EXPECT_EQ(power_bbox_report(unit, 4096, console_sink), -1);
              }),
              "malloc fail.\r\n");
}

TEST_F(Interrupted, WhileALimitIsSet) {
    printed_by([] { power_set_and_get_test(unit, console_sink); });
    EXPECT_EQ(signals, 1);
    EXPECT_EQ(seen.temp_limit, 70U);
}

namespace {

void interrupt_at_long_delay() {
    if (supply.startup_delay == 10) {
        interrupt_once();
    }
}

} // namespace

TEST_F(Interrupted, WhileTheDelayIsLong) {
    supply.at_write = interrupt_at_long_delay;
    printed_by([] { power_set_and_get_test(unit, console_sink); });
    EXPECT_EQ(signals, 1);
    EXPECT_EQ(seen.startup_delay, 1U);
}

TEST_F(Interrupted, WhileTheDriverIsDown) {
    printed_by([] { power_init_test(unit, 3, console_sink); });
    EXPECT_EQ(signals, 1);
    EXPECT_TRUE(seen.is_up);
}
