// load_test on the simulated chassis: images that users make, what other modules see of the new logic, and loads that
// are refused or broken off.
#include <gtest/gtest.h>

#include "tests/support/command.h"
#include "tests/support/logic_image.h"
#include "tests/support/test_lines.h"

using namespace kestro_tests;

namespace {

const image_parts first_fpga{.part = 0x00F90001, .version = 0x0205};
const image_parts board_cpld{.part = 0x00C50001, .version = 0x0108};
const image_parts cpld_of_card{.part = 0x00C50101, .version = 0x0105};

std::string image_at(const image_parts &image) {
    return scratch_file("logic.img", image_bytes(image));
}

std::string seconds_taken(int seconds) {
    return "cmd_exec used second:" + std::to_string(seconds) +
           "\r\ncmd_exec used millisecond:" + std::to_string(1000 * seconds) + "\r\n";
}

constexpr int loading = 2; // seconds

// A chassis of its own, on which lines are run one after the other.
class board_to_load {
  public:
    process_result run(const std::string &line, std::vector<std::string> options = {}) const {
        options.insert(options.end(), {"--state", state_, "--clock", "virtual"});
        return run_sim(options, split_words(line));
    }

    void expect(const std::string &line, const std::string &output, int seconds = 0) const {
        SCOPED_TRACE(line);
        const process_result result = run(line);
        EXPECT_EQ(result.out, output + seconds_taken(seconds));
        EXPECT_EQ(result.err, "");
        EXPECT_EQ(result.status, 0);
    }

    void expect_failed(const std::string &line, const std::string &output) const {
        SCOPED_TRACE(line);
        const process_result result = run(line);
        const std::vector<std::string> words = split_words(line);
        EXPECT_EQ(result.out, output + timing_lines + operate_fail(words.at(1)) + operate_fail(words.at(0)));
        EXPECT_EQ(result.err, "");
        EXPECT_EQ(result.status, 255);
    }

    void expect_version(int chip, const std::string &hexadecimal, const std::string &decimal) const {
        expect("board_test board_get_cpld_ver " + std::to_string(chip),
               "ver hex:0x0000" + hexadecimal + " dec:00000" + decimal + "\r\npara[0]=0x0 para[1]=0x" +
                   hexadecimal.substr(1) + " \r\n----kestro_test std result print end----\n");
    }

    std::string value(const std::string &path) const {
        return run_launcher({"--state", state_, "--get", path}, {}).out;
    }

    // On the real clock, by a chip that takes its time, and killed as soon as the load was begun.
    void kill_while_loading(const std::string &line, const std::string &chip) const {
        process_options options;
        options.kill_when = [&] { return value(chip + "/load") == "1\n"; };
        const std::vector<std::string> slow{"--state", state_, "--set", chip + "/load_time=60000"};
        EXPECT_EQ(run_launcher(slow, split_words(line), options).status, 128 + 9);
        EXPECT_EQ(run_launcher({"--state", state_, "--set", chip + "/load_time=2000"}, {}).status, 0);
    }

  private:
    const std::string state_ = new_scratch_dir();
};

} // namespace

TEST(LoadOnABoard, OtherModulesSeeTheNewLogicOfAnFpga) {
    if (lists_lines()) {
        return;
    }
    const board_to_load board;
    board.expect_version(1, "0203", "515");
    board.expect("load_test fpga_load_test " + image_at(first_fpga) + " 1", "", loading);
    board.expect_version(1, "0205", "517");
    board.expect("cpld_test build_time 1 2000 1 1",
                 framed(banners::bare, "test_cpld_get_build_time",
                        "cpld build time:inst_id:ffffffff chip_id:1 year:7ea  date:1 time:a ret:0\n"));
    board.expect("cpld_test cpld_read 1 1", framed(banners::bare, "test_cpld_reg_read",
                                                   "cpld_read:inst_id:ffffffff chip_id:1 offset:1  data:205 ret:0\n"));
    // A board that was loaded is as healthy as before.
    const std::string selftest = board.run("board_test board_onekey_test").out;
    EXPECT_EQ(selftest.find("Error"), std::string::npos);
    EXPECT_NE(selftest.find("f9a1 0205 07ea 010a"), std::string::npos);
    EXPECT_EQ(board.run("reset_test drv_reset_board 0xffffffff").status, 0);
    board.expect_version(1, "0203", "515");
}

TEST(LoadOnABoard, ACpldStartsWithItsNewLogic) {
    if (lists_lines()) {
        return;
    }
    const board_to_load board;
    board.expect("load_test cpld_load_test " + image_at(board_cpld) + " 0", "", loading);
    board.expect_version(0, "0107", "263");
    EXPECT_EQ(board.run("reset_test drv_reset_board 0xffffffff").status, 0);
    board.expect_version(0, "0108", "264");
}

TEST(LoadOnABoard, TheTestPortStartsItAtOnce) {
    if (lists_lines()) {
        return;
    }
    const board_to_load board;
    const std::string image = image_at(board_cpld);
    board.expect("load_test jtag_load_test " + image + " 0",
                 "Start jtag load cpld 0, file:" + image +
                     ", fileLen:0x1d, system will reboot after cpld loaded!\r\n"
                     "Jtag load success, chip_id:0, fileName:" +
                     image + ", fileLen:0x1d.\r\n",
                 loading);
    board.expect_version(0, "0108", "264");
    EXPECT_EQ(board.value("slot9/reset/reason/0/reason"), "4\n");
}

TEST(LoadOnABoard, TheLogicOfACard) {
    if (lists_lines()) {
        return;
    }
    const board_to_load board;
    board.expect("load_test pic_load_test " + image_at(cpld_of_card) + " 5", "", loading);
    EXPECT_EQ(board.value("slot5/pic/cpld/0/version"), "0x0105\n");
    EXPECT_EQ(board.value("slot4/pic/cpld/0/version"), "0x0104\n");
    board.expect("load_test pic_load_test 0xff000004 " + image_at(cpld_of_card) + " 0", "", loading);
    EXPECT_EQ(board.value("slot4/pic/cpld/0/version"), "0x0105\n");
}

TEST(LoadOnABoard, ImagesThatAreRefused) {
    if (lists_lines()) {
        return;
    }
    const board_to_load board;
    const std::string good = image_bytes(first_fpga);
    std::string broken = good;
    broken.back() = '?';
    const std::string load = "load_test fpga_load_test ";
    const std::string failure = "drv_fpga_load failure\r\n";
    board.expect_failed(load + image_at(first_fpga) + " 2", failure);
    board.expect_failed(load + scratch_file("broken", broken) + " 1", failure);
    board.expect_failed(load + scratch_file("short", good.substr(0, 20)) + " 1", failure);
    board.expect_failed(load + scratch_file("empty", "") + " 1", failure);
    board.expect_failed("load_test cpld_load_test " + image_at(cpld_of_card) + " 0", failure);
    board.expect_failed("load_test pic_load_test " + image_at(board_cpld) + " 5", "drv_logic_pic_load failure\r\n");
    const std::string cut = scratch_file("cut", good.substr(0, 28));
    board.expect_failed("load_test jtag_load_test " + cut + " 0",
                        "Start jtag load cpld 0, file:" + cut +
                            ", fileLen:0x1c, system will reboot after cpld loaded!\r\n"
                            "drv_jtag_load_cpld failure, Result:0x81110109.\r\n");
    board.expect_version(1, "0203", "515");
}

TEST(LoadOnABoard, ALoadThatIsKilled) {
    if (lists_lines()) {
        return;
    }
    const board_to_load board;
    const std::string line = "load_test fpga_load_test " + image_at(first_fpga) + " 1";
    board.kill_while_loading(line, "slot9/board/logic/1");
    board.expect_failed("cpld_test cpld_read 1 1",
                        framed(banners::bare, "test_cpld_reg_read",
                               "cpld_read:inst_id:ffffffff chip_id:1 offset:1  data:0 ret:8111010f\n"));
    board.expect(line, "", loading);
    board.expect_version(1, "0205", "517");
}

TEST(LoadOnABoard, UpsetsAndPins) {
    if (lists_lines()) {
        return;
    }
    const board_to_load board;
    EXPECT_EQ(board.run("load_test gpio_r 40", {"--set", "slot9/board/logic/1/upsets=3"}).out,
              "nb_gpio_read pin:40, level:0.\r\n" + std::string(timing_lines));
    board.expect("load_test clr_seu_err_test 0xffffffff 1",
                 "fpga_clr_seu_err success: inst_id:0xffffffff chip_id:0x1\r\n");
    EXPECT_EQ(board.value("slot9/board/logic/1/upsets"), "0\n");
    board.expect_failed("load_test clr_seu_err_test 0xffffffff 0",
                        "dfpga_clr_seu_err fail, inst_id:0xffffffff chip_id:0x0 ret:0x811101a4\r\n");
    board.expect("load_test gpio_w 5 1", "nb_gpio_write pin:5, level:1.\r\n");
    board.expect("load_test gpio_r 5", "nb_gpio_read pin:5, level:1.\r\n");
    board.expect_failed("load_test gpio_w 40 1", "nb_gpio_write error, Pin:40, Lvl:1, Result:0x81110106.\r\n");
    board.expect_failed("load_test gpio_w 5 2", "nb_gpio_write error, Pin:5, Lvl:2, Result:0x81110106.\r\n");
    board.expect_failed("load_test gpio_r 99", "nb_gpio_read error, Pin:99, Result:0x81110103.\r\n");
    board.expect("load_test gpio_r", "nb_gpio_read pin:0, level:1.\r\n");
}
