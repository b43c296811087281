// USB ports: sticks that come, answer after a while and go; power switches, faults, and the log of the registered.
#include "tests/sim/support.h"
#include "tests/support/driver_calls.h"

#include <chrono>
#include <csignal>
#include <fcntl.h>
#include <gtest/gtest.h>
#include <sys/wait.h>
#include <thread>
#include <unistd.h>

namespace kestro_tests {

namespace {

const std::string not_ready = "0x8111010f\n";

std::string call(const std::string &name, unsigned id) {
    return "drv_usb_" + name + "(usb_id=" + std::to_string(id) + ")";
}

std::string devmap(unsigned id) {
    return "drv_usb_get_devmap(usb_id=" + std::to_string(id) + ", len=64)";
}

const std::string on_line = "0x0 online=1\n";
const std::string off_line = "0x0 online=0\n";

// On the virtual clock of a state of its own.
class UsbDriver : public testing::Test {
  protected:
    std::string answers(const std::vector<std::string> &lines, const std::vector<std::string> &by_hand = {}) const {
        std::vector<std::string> options{"--state", state_, "--clock", "virtual"};
        options.insert(options.end(), by_hand.begin(), by_hand.end());
        return answers_of(options, lines);
    }

  private:
    std::string state_ = new_scratch_dir() + "/state";
};

// Waits long, but only when it does not come.
void expect_in(const std::string &file, const std::string &text) {
    for (int i = 0; i < 600 && read_file(file) != text; ++i) {
        std::this_thread::sleep_for(std::chrono::milliseconds(50));
    }
    EXPECT_EQ(read_file(file), text);
}

// A process that makes these calls, which answer nothing, and stays.
class listening {
  public:
    listening(const std::string &state, const std::vector<std::string> &lines) {
        const std::string heard = scratch_file("heard", "");
        const int file = open(heard.c_str(), O_WRONLY | O_APPEND);
        std::vector<std::string> program{launcher(), "--state",     state, "--clock", "real",
                                         "--run",    "kestro_call", "--",  "--wait",  "300"};
        program.insert(program.end(), lines.begin(), lines.end());
        pid_ = spawn(program, merged_environment({}), "", {file, file});
        close(file);
        std::string answers;
        for (const std::string &line : lines) {
            answers += line + " = 0x0\n";
        }
        expect_in(heard, answers);
    }
    listening(const listening &) = delete;
    listening &operator=(const listening &) = delete;
    ~listening() {
        kill(pid_, SIGKILL);
        waitpid(pid_, nullptr, 0);
    }

  private:
    pid_t pid_;
};

class UsbHotplug : public testing::Test {
  protected:
    void by_hand(const std::string &setting) const {
        EXPECT_EQ(run_process({launcher(), "--state", state_, "--set", setting}).status, 0);
    }

    std::string state_ = new_scratch_dir() + "/state";
    std::string log_ = state_ + "/log/slot9/0.log";
};

} // namespace

TEST_F(UsbDriver, HealthyPorts) {
    EXPECT_EQ(
        answers({"drv_usb_init()", "drv_usb_get_num()", call("get_online_status", 0), devmap(0), devmap(1),
                 call("get_size", 0), call("get_partition_num", 0), call("get_hotplug_ability", 0),
                 call("get_hotplug_ability", 1), call("check_fault", 0), call("recover_fault", 0),
                 call("check_voltage_status", 0), call("get_irq_no", 0), call("get_irq_no", 1), "drv_usb_deinit()"}),
        ok + "0x0 num=2\n" + on_line +
            "0x0 devmap=\"/dev/sdc\"\n0x0 devmap=\"/dev/sdd\"\n0x0 size=30528\n0x0 num=2\n"
            "0x0 hotplug=1\n0x0 hotplug=0\n0x0 fault=0\n0x0 result=0\n0x0 status=0\n0x0 irq_no=72\n"
            "0x0 irq_no=73\n" +
            ok);
}

TEST_F(UsbDriver, APulledStickHasNothingToTell) {
    EXPECT_EQ(answers({"drv_usb_get_num()", call("get_online_status", 0), devmap(0), call("get_size", 0),
                       call("get_partition_num", 0), call("check_voltage_status", 0), call("get_size", 1)},
                      {"--set", "slot9/usb/port/0/present=0"}),
              "0x0 num=2\n" + off_line + not_ready + not_ready + not_ready + "0x0 status=0\n0x0 size=7632\n");
    EXPECT_EQ(answers({call("get_online_status", 0), call("get_size", 0)}, {"--set", "slot9/usb/port/0/present=1"}),
              on_line + "0x0 size=30528\n");
}

TEST_F(UsbDriver, AStickAnswersSomeTimeAfterItGotPower) {
    const std::string status = call("get_online_status", 0);
    EXPECT_EQ(answers({call("power_off", 0), status, devmap(0), call("check_voltage_status", 0), "wait 5",
                       call("power_on", 0), status, call("check_voltage_status", 0), "wait 0.499", status,
                       call("power_on", 0), "wait 0.001", status, call("get_online_status", 1)}),
              ok + off_line + not_ready + "0x0 status=1\n" + ok + off_line + "0x0 status=0\n" + off_line + ok +
                  on_line + on_line);
    EXPECT_EQ(answers({call("power_off", 0), call("power_on", 0)}), ok + ok);
    EXPECT_EQ(answers({status, "wait 0.5", status}), off_line + on_line);
}

TEST_F(UsbDriver, FaultsCutThePowerUntilThePortRecovers) {
    EXPECT_EQ(answers({call("check_fault", 0), call("get_online_status", 0), call("check_voltage_status", 0),
                       call("recover_fault", 0), call("check_fault", 0), call("get_online_status", 0), "wait 0.5",
                       call("get_online_status", 0), call("check_fault", 1)},
                      {"--set", "slot9/usb/port/0/fault=over_current"}),
              "0x0 fault=1\n" + off_line + "0x0 status=1\n0x0 result=0\n0x0 fault=0\n" + off_line + on_line +
                  "0x0 fault=0\n");
    EXPECT_EQ(answers({call("recover_fault", 0), call("check_fault", 0), call("get_online_status", 0)},
                      {"--set", "slot9/usb/port/0/fault=no_answer", "--set", "slot9/usb/port/0/fault_stays=1"}),
              "0x0 result=1\n0x0 fault=2\n" + off_line);
}

// A port without a fault is not switched off and on.
TEST_F(UsbDriver, NothingToRecoverLeavesTheStickAlone) {
    EXPECT_EQ(
        answers({call("recover_fault", 0), call("get_online_status", 0)}, {"--set", "slot9/usb/port/0/fault_stays=1"}),
        "0x0 result=0\n" + on_line);
}

TEST_F(UsbDriver, VoltageIsThatOfTheRail) {
    EXPECT_EQ(answers({call("check_voltage_status", 0), call("check_voltage_status", 1)},
                      {"--set", "slot9/voltage/rail/7/millivolts=4749"}),
              "0x0 status=1\n0x0 status=1\n");
    EXPECT_EQ(answers({call("check_voltage_status", 0)}, {"--set", "slot9/voltage/rail/7/millivolts=5251"}),
              "0x0 status=2\n");
    EXPECT_EQ(answers({call("check_voltage_status", 0)}, {"--set", "slot9/voltage/rail/7/millivolts=4750"}),
              "0x0 status=0\n");
}

TEST_F(UsbDriver, OnlyPortsWithHotplugTellOfIt) {
    EXPECT_EQ(answers({call("hotplug_regist_event", 0), call("hotplug_regist_event", 0),
                       call("hotplug_regist_event", 1), call("hotplug_regist_event", 2)}),
              ok + ok + not_supported + no_such_device);
}

// What registered processes write into the driver log while the technician works. On the real clock: each is a process
// of its own.
TEST_F(UsbHotplug, ComingAndGoingIsLogged) {
    const listening there(state_, {call("hotplug_regist_event", 0)});
    by_hand("slot9/usb/port/1/present=0");
    by_hand("slot9/usb/port/0/present=0");
    expect_in(log_, "2 usb 0: stick went\n");
    by_hand("slot9/usb/port/0/present=1");
    expect_in(log_, "2 usb 0: stick went\n2 usb 0: stick came\n");
}

TEST_F(UsbHotplug, IsOverWithTheFamily) {
    const listening over(state_, {call("hotplug_regist_event", 0), "drv_usb_deinit()"});
    const listening there(state_,
                          {call("hotplug_regist_event", 0), "drv_usb_deinit()", call("hotplug_regist_event", 0)});
    by_hand("slot9/usb/port/0/present=0");
    expect_in(log_, "2 usb 0: stick went\n");
    // As long as the one that is over would have taken to notice.
    std::this_thread::sleep_for(std::chrono::milliseconds(300));
    EXPECT_EQ(read_file(log_), "2 usb 0: stick went\n");
}

TEST(UsbCalls, UnknownPortsAndBoardsWithout) {
    const std::vector<std::string> lines{call("get_online_status", 2),
                                         devmap(2),
                                         call("get_size", 2),
                                         call("get_partition_num", 2),
                                         call("get_hotplug_ability", 2),
                                         call("hotplug_regist_event", 2),
                                         call("power_on", 2),
                                         call("power_off", 2),
                                         call("check_fault", 2),
                                         call("recover_fault", 2),
                                         call("check_voltage_status", 2),
                                         call("get_irq_no", 2)};
    std::string unknown;
    std::string unsupported;
    for (size_t i = 0; i < lines.size(); ++i) {
        unknown += no_such_device;
        unsupported += not_supported;
    }
    EXPECT_EQ(answers(new_delivered("mpu_master"), lines), unknown);
    const test_board lpu = new_delivered("lpu");
    EXPECT_EQ(answers(lpu, lines), unsupported);
    EXPECT_EQ(answers(lpu, {"drv_usb_init()", "drv_usb_deinit()", "drv_usb_get_num()"}),
              not_supported + not_supported + not_supported);
}

TEST(UsbCalls, MissingAndShortAreas) {
    const test_board board = new_delivered("mpu_master");
    EXPECT_EQ(
        answers(board,
                {"drv_usb_get_num(num=null)", "drv_usb_get_online_status(usb_id=0, online=null)",
                 "drv_usb_get_devmap(usb_id=0, len=64, devmap=null)", "drv_usb_get_size(usb_id=0, size=null)",
                 "drv_usb_get_partition_num(usb_id=0, num=null)", "drv_usb_get_hotplug_ability(usb_id=0, hotplug=null)",
                 "drv_usb_check_fault(usb_id=0, fault=null)", "drv_usb_recover_fault(usb_id=0, result=null)",
                 "drv_usb_check_voltage_status(usb_id=0, status=null)", "drv_usb_get_irq_no(usb_id=0, irq_no=null)"}),
        null_pointer + null_pointer + null_pointer + null_pointer + null_pointer + null_pointer + null_pointer +
            null_pointer + null_pointer + null_pointer);
    EXPECT_EQ(answers(board, {"drv_usb_get_devmap(usb_id=0, len=8)", "drv_usb_get_devmap(usb_id=0, len=9)"}),
              too_small + "0x0 devmap=\"/dev/sdc\"\n");
}

} // namespace kestro_tests
