// The images of fan trays: shown, and the label written over itself.
#include <gtest/gtest.h>

#include "tests/selftest/fan_script.h"
#include "tests/selftest/part.h"
#include "tests/support/simulator.h"

using namespace kestro_tests;

namespace {

const std::string one_tray = fan_slots(1, "0b");
const std::string no_time = "-------------------Total test time: 0s 0000ms-------------------\r\n";

std::string image(int type, const std::string &answer) {
    return "drv_fan_get_board_property(slot_id=11, type=" + std::to_string(type) + ", len=1026) = " + answer + "\n";
}

void expect_images(const std::string &script, const std::string &lines) {
    expect_part("fan_labels", one_tray + script, fan_rule_line + "[FAN11]\r\n" + lines + no_time, 0);
}

const std::string no_image = "0x811101a4";

// The part in which the allocation of that number fails.
void expect_starved(const std::string &allocation, const std::string &name, const std::string &script,
                    const std::string &lines, const std::string &result) {
    const process_result run =
        run_part({"--fail-alloc", allocation, "--strict", "--script", scratch_file("script", script)}, name);
    EXPECT_EQ(run.out, lines + "result " + result + "\n");
    EXPECT_EQ(run.err, "");
}

} // namespace

TEST(FanLabelsTest, TwoTrays) {
    expect_part("fan_labels",
                fan_slots(2, "0b 02") + image(2, "0 buffer=\"\\x12\\x3fBoardType=FAN-A\" len=1026") +
                    image(3, "0 buffer=[a0 0b 01 02 0f] len=5") +
                    image(6, "0 buffer=\"\\xc0\\x01more of it\" len=1026") +
                    "drv_fan_get_board_property(slot_id=2, type=2, len=1026) = 0x811101a4\n"
                    "drv_fan_get_board_property(slot_id=2, type=3, len=1026) = 0x811101a4\n"
                    "drv_fan_get_board_property(slot_id=2, type=6, len=1026) = 0x811101a4\n",
                fan_rule_line +
                    "[FAN11]\r\n"
                    "Elabel:  length: 1026, CRC: 12 3f\r\n"
                    "BoardType=FAN-A\r\n"
                    "AbilityFile: length: 5, CRC: a0 b\r\n"
                    "01 02 0f \r\n"
                    "Expand Elabel:  length: 1026, CRC: c0 1\r\n"
                    "more of it\r\n"
                    "[FAN2]\r\n"
                    "Elabel: N/A\r\n"
                    "AbilityFile: N/A\r\n"
                    "Expand Elabel: N/A\r\n" +
                    no_time,
                0);
}

TEST(FanLabelsTest, ImagesThatCannotBeRead) {
    expect_images(image(2, "0x71") + image(3, "0x72") + image(6, "0x811201a4"),
                  "Elabel: --\r\n"
                  "Error: get fan11 elabel fail\r\n"
                  "AbilityFile: --\r\n"
                  "Error: get fan11 ability fail\r\n"
                  "Expand Elabel: --\r\n"
                  "Error: get fan11 expand elabel fail\r\n");
}

// Lines end behind the bytes at 16, 32 and so on, counted with the CRC.
TEST(FanLabelsTest, TheLinesOfAnAbilityFile) {
    const std::string first = "0 buffer=[ff fe 02 03 04 05 06 07 08 09 0a 0b 0c 0d 0e 0f 10";
    const std::string second = " 11 12 13 14 15 16 17 18 19 1a 1b 1c 1d 1e 1f 20";
    const std::string first_line = "02 03 04 05 06 07 08 09 0a 0b 0c 0d 0e 0f 10\r\n";
    const std::string second_line = "11 12 13 14 15 16 17 18 19 1a 1b 1c 1d 1e 1f 20\r\n";
    const struct {
        std::string answer;
        std::string lines;
    } cases[] = {
        {"0 len=0", "AbilityFile: length: 0, CRC: 0 0\r\n\r\n"},
        {"0 buffer=[07 09] len=2", "AbilityFile: length: 2, CRC: 7 9\r\n\r\n"},
        {"0 buffer=[07 09 ff] len=3", "AbilityFile: length: 3, CRC: 7 9\r\nff \r\n"},
        {first + "] len=16", "AbilityFile: length: 16, CRC: ff fe\r\n02 03 04 05 06 07 08 09 0a 0b 0c 0d 0e 0f \r\n"},
        {first + "] len=17", "AbilityFile: length: 17, CRC: ff fe\r\n" + first_line + "\r\n"},
        {first + second + " 21] len=34",
         "AbilityFile: length: 34, CRC: ff fe\r\n" + first_line + second_line + "21 \r\n"},
    };
    for (const auto &each : cases) {
        expect_images(image(2, no_image) + image(3, each.answer) + image(6, no_image),
                      "Elabel: N/A\r\n" + each.lines + "Expand Elabel: N/A\r\n");
    }
}

// A length beyond the image is told; what is shown is the image.
TEST(FanLabelsTest, AnAbilityFileThatSaysItIsLonger) {
    std::string lines;
    for (int i = 2; i < 1026; ++i) {
        lines += i % 16 == 0 ? "00\r\n" : "00 ";
    }
    expect_images(image(2, no_image) + image(3, "0 len=1027") + image(6, no_image),
                  "Elabel: N/A\r\n"
                  "AbilityFile: length: 1027, CRC: 0 0\r\n" +
                      lines + "\r\n" + "Expand Elabel: N/A\r\n");
}

// What an image leaves out is not that of the one before.
TEST(FanLabelsTest, EachImageHasACleanArea) {
    expect_images(image(2, "0 buffer=\"\\x01\\x02label text\" len=12") + image(3, "0") + image(6, "0"), [] {
        std::string lines = "Elabel:  length: 12, CRC: 1 2\r\nlabel text\r\n"
                            "AbilityFile: length: 1026, CRC: 0 0\r\n";
        for (int i = 2; i < 1026; ++i) {
            lines += i % 16 == 0 ? "00\r\n" : "00 ";
        }
        return lines + "\r\nExpand Elabel:  length: 1026, CRC: 0 0\r\n\r\n";
    }());
}

// A text that fills its image to the last byte: 1024 characters, of which a line of the console holds 1023.
TEST(FanLabelsTest, ALabelThatFillsItsImage) {
    const std::string text(1024, 'L');
    const std::string script = scratch_file("script", one_tray + image(2, "0 buffer=\"AB" + text + "\" len=1026") +
                                                          image(3, no_image) + image(6, no_image));
    const std::string head = fan_rule_line + "[FAN11]\r\nElabel:  length: 1026, CRC: 41 42\r\n";
    const std::string rest = "AbilityFile: N/A\r\nExpand Elabel: N/A\r\n" + no_time + "result 0\n";
    const std::vector<std::string> options = {
        "--clock", "virtual",        "--strict", "--script", script, "--run", build_dir() + "/tests/selftest_part",
        "--state", new_scratch_dir()};
    EXPECT_EQ(run_sim(options, {"fan_labels", "report"}).out, head + text + "\r\n" + rest);
    EXPECT_EQ(run_sim(options, {"fan_labels"}).out, head + std::string(1023, 'L') + rest);
}

TEST(FanLabelsTest, WithoutASlotList) {
    expect_part("fan_labels", "drv_slot_get_list(type=5) = 0x63\n", "Error: get fan slot list fail\r\n", 0x63);
}

TEST(FanLabelsTest, AnEmptySlotList) {
    expect_part("fan_labels", "drv_slot_get_list(type=5) = 0\n", fan_rule_line + no_time, 0);
}

TEST(FanLabelsTest, WithoutMemory) {
    expect_starved("1", "fan_labels", one_tray, "Error: malloc buffer fail\r\n", "-2129591126");
}

namespace {

const std::string label_bytes = "0 buffer=\"\\x51\\x52label\" len=7";
const std::string head = fan_rule_line + "[FAN11] Elabel Test Result: \r\n";

std::string get_label(const std::string &answer) {
    return image(2, answer);
}

// The whole image goes to the driver: the label and zeros.
std::string set_label(const std::string &answer) {
    std::string bytes = "51 52 6c 61 62 65 6c";
    for (int i = 7; i < 1026; ++i) {
        bytes += " 00";
    }
    return "drv_fan_set_board_property(slot_id=11, type=2, buffer=[" + bytes + "], len=1026) = " + answer + "\n";
}

std::string times(int good, int bad) {
    return "Info: Success times: " + std::to_string(good) + ", Fail times: " + std::to_string(bad) +
           ", total times: 2\r\n";
}

} // namespace

TEST(FanElabelTest, TheLabelIsWrittenOverItself) {
    expect_part("fan_elabel", get_label(label_bytes + " x3") + set_label("0 x3"), head + times(2, 0) + no_time, 0);
}

TEST(FanElabelTest, WithoutRoundsItIsWrittenOnce) {
    expect_part("fan_elabel_no_rounds", get_label(label_bytes + " x1") + set_label("0 x1"),
                head + "Info: Success times: 0, Fail times: 0, total times: 0\r\n" + no_time, 0);
}

TEST(FanElabelTest, ATrayWithoutALabel) {
    expect_part("fan_elabel", get_label("0x811101a4"), fan_rule_line + "[FAN11] Elabel Test: N/A\r\n", 0);
}

TEST(FanElabelTest, ALabelThatCannotBeRead) {
    expect_part("fan_elabel", get_label("0x71"),
                fan_rule_line + "Error: get fan11 elabel fail\r\n"
                                "[FAN11] Elabel Test: --\r\n",
                0x71);
}

TEST(FanElabelTest, EachStepFailsOnce) {
    expect_part("fan_elabel", get_label(label_bytes) + set_label("0x100 x1") + set_label("0"),
                head + "Error: [1 times]set elabel fail in first step\r\n" + times(1, 1) + no_time, 0x100);
    expect_part("fan_elabel", get_label(label_bytes + " x2") + get_label("0x200 x1") + set_label("0"),
                head + "Error: [2 times]get elabel fail in second step\r\n" + times(1, 1) + no_time, 0x200);
    expect_part("fan_elabel",
                get_label(label_bytes + " x1") + get_label("0 buffer=\"\\x51\\x52labe1\" x1") + get_label(label_bytes) +
                    set_label("0"),
                head + "Error: [1 times]elabel comparison fail in third step\r\n" + times(1, 1) + no_time,
                static_cast<int>(0x811101b1));
}

// "Not supported" is a failure once the test runs; nothing keeps the label from being written back.
TEST(FanElabelTest, EveryStepFails) {
    expect_part("fan_elabel", get_label(label_bytes) + set_label("0x811101a4 x2") + set_label("0x3"),
                head +
                    "Error: [1 times]set elabel fail in first step\r\n"
                    "Error: [2 times]set elabel fail in first step\r\n" +
                    times(0, 2) + no_time + "Error: set fan11 elabel back to original fail.[ret:0x3]\r\n",
                static_cast<int>(0x0222034b));
}

// The last byte counts, and one that the driver leaves alone is zero.
TEST(FanElabelTest, AllBytesAreCompared) {
    std::string last_byte = "0 buffer=[51 52 6c 61 62 65 6c";
    for (int i = 7; i < 1025; ++i) {
        last_byte += " 00";
    }
    expect_part("fan_elabel",
                get_label(label_bytes + " x1") + get_label(last_byte + " 01] x1") + get_label("0 x1") + set_label("0"),
                head +
                    "Error: [1 times]elabel comparison fail in third step\r\n"
                    "Error: [2 times]elabel comparison fail in third step\r\n" +
                    times(0, 2) + no_time,
                static_cast<int>(0x02220362));
}

TEST(FanElabelTest, WithoutMemory) {
    const std::string no_memory = "-2129591126";
    expect_starved("1", "fan_elabel", "", "Error: malloc buffer fail\r\n", no_memory);
    expect_starved("2", "fan_elabel", get_label(label_bytes), fan_rule_line + "Error: malloc write buffer fail\r\n",
                   no_memory);
    expect_starved("3", "fan_elabel", get_label(label_bytes), head + "Error: malloc read buffer fail\r\n", no_memory);
}
