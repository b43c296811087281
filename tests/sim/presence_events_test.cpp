// Who waits for boards to come and go hears of what this process does, another one, and the technician.
#include "tests/sim/support.h"
#include "tests/support/driver_calls.h"

#include <chrono>
#include <csignal>
#include <fcntl.h>
#include <gtest/gtest.h>
#include <sstream>
#include <sys/wait.h>
#include <thread>
#include <unistd.h>

namespace kestro_tests {

namespace {

std::string event(unsigned slot, unsigned in) {
    return "# event: drv_board_in_out_handler(slot_id=" + std::to_string(slot) + ", in=" + std::to_string(in) + ")\n";
}

// The events alone: they are printed while the call that brings them about is on its way back, or after it.
std::string events_in(const std::string &printed) {
    std::istringstream lines(printed);
    std::string events;
    for (std::string line; std::getline(lines, line);) {
        events += line.starts_with("# event") ? line + "\n" : "";
    }
    return events;
}

// A process on the real clock that listens until the test has heard enough.
class listening {
  public:
    explicit listening(const std::string &state) : file_(scratch_file("heard", "")) {
        const int file = open(file_.c_str(), O_WRONLY | O_APPEND);
        pid_ = spawn({launcher(), "--state", state, "--clock", "real", "--run", "kestro_call", "--", "--wait", "300",
                      "drv_board_in_out_reg(handler=callback, name=\"test\")"},
                     merged_environment({}), "", {file, file});
        close(file);
        expect("drv_board_in_out_reg(handler=callback, user_data=null, name=\"test\", flag=0) = 0x0\n");
    }
    listening(const listening &) = delete;
    listening &operator=(const listening &) = delete;
    ~listening() {
        kill(pid_, SIGKILL);
        waitpid(pid_, nullptr, 0);
    }

    // What is printed next. Waits long, but only when it does not come.
    void expect(const std::string &next) {
        expected_ += next;
        for (int i = 0; i < 600 && read_file(file_).size() < expected_.size(); ++i) {
            std::this_thread::sleep_for(std::chrono::milliseconds(50));
        }
        EXPECT_EQ(read_file(file_), expected_);
    }

  private:
    std::string file_;
    std::string expected_;
    pid_t pid_;
};

void by_hand(const std::string &state, const std::vector<std::string> &actions) {
    std::vector<std::string> line{launcher(), "--state", state};
    line.insert(line.end(), actions.begin(), actions.end());
    const process_result result = run_process(line);
    EXPECT_EQ(result.err, "");
    EXPECT_EQ(result.status, 0);
}

} // namespace

TEST(PresenceEvents, TellWhatThisProcessSets) {
    EXPECT_EQ(events_in(calls_of({"--state", new_scratch_dir() + "/state", "--clock", "virtual"},
                                 {"drv_board_in_out_reg(handler=callback, name=\"test\")",
                                  "drv_board_set_online_status(inst_id=0xff000005, status=1)", "wait 1",
                                  "drv_board_set_online_status(inst_id=0xff000005, status=1)", "wait 1",
                                  "drv_board_set_online_status(inst_id=0xff000005, status=0)", "wait 1",
                                  "drv_board_in_out_unreg(handler=callback)",
                                  "drv_board_set_online_status(inst_id=0xff000005, status=1)", "wait 1"})),
              event(5, 0) + event(5, 1));
}

// One that only wanted to know of the operation hears nothing, and goes without waiting for those who hear.
TEST(PresenceEvents, ANullHandlerComesAndGoesBesideAnother) {
    EXPECT_EQ(events_in(calls_of({"--state", new_scratch_dir() + "/state", "--clock", "virtual"},
                                 {"drv_board_in_out_reg(handler=callback, name=\"test\")",
                                  "drv_board_in_out_reg(handler=null, name=\"asker\")", "wait 1",
                                  "drv_board_in_out_unreg(handler=null)",
                                  "drv_board_set_online_status(inst_id=0xff000005, status=1)", "wait 1"})),
              event(5, 0));
}

TEST(PresenceEvents, TellWhatTheTechnicianDoes) {
    const std::string state = new_scratch_dir() + "/state";
    listening there(state);
    by_hand(state, {"--set", "slot5/board/presence/0/status=absent"});
    there.expect(event(5, 0));
    by_hand(state, {"--set", "slot5/board/presence/0/status=wired"});
    there.expect(event(5, 1));
    by_hand(state, {"--pull", "slot4"});
    there.expect(event(4, 0));
    by_hand(state, {"--plug", "slot4"});
    there.expect(event(4, 1));
}

// Too quick for the watcher to find the slot empty, and yet not the card that it was.
TEST(PresenceEvents, TellOfACardThatWasOutForAMoment) {
    const std::string state = new_scratch_dir() + "/state";
    listening there(state);
    by_hand(state, {"--pull", "slot5", "--plug", "slot5"});
    there.expect(event(5, 0) + event(5, 1));
}

TEST(PresenceEvents, TellWhatAnotherProcessSets) {
    const std::string state = new_scratch_dir() + "/state";
    listening there(state);
    EXPECT_EQ(answers_of({"--state", state}, {"drv_board_set_online_status(inst_id=0xff000002, status=1)"}), ok);
    there.expect(event(2, 0));
}

// From the slave's seat the slots of the cards read absent, whatever is in them, until software tells of one.
TEST(PresenceEvents, SoftwareTellsOfWhatIsWiredElsewhere) {
    const test_board board = new_delivered("mpu_slave");
    const std::string status = "drv_board_get_online_status(inst_id=0xff000005)";
    EXPECT_EQ(answers(board, {status, "drv_board_set_online_status(inst_id=0xff000005, status=0)", status,
                              "drv_board_set_online_status(inst_id=0xff000005, status=2)", status}),
              "0x0 status=1\n" + ok + "0x0 status=0\n" + bad_value + "0x0 status=0\n");
}

} // namespace kestro_tests
