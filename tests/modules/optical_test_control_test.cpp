// optical_test: what is set in a module: transmitters, rate, registers, and the bus that leads to it.
#include <gtest/gtest.h>

#include "tests/modules/optical_runs.h"
#include "tests/support/failing_allocations.h"

namespace kestro_tests::optical {

namespace {

// The transmitter test: the state found, what is set, the state that came of it, and the powers of both directions.
row transmitters(const std::string &word, const std::vector<std::string> &answers, const std::string &set,
                 const std::string &body) {
    return {"test_optical_disable_status", word,
            "drv_opt_get_disable_status(@) = " + answers.at(0) + " x1\n" + "drv_opt_set_disable_status(@, value=" +
                set + ") = " + answers.at(1) + "\n" + "drv_cbb_optical_delay_nointerupt(count=1000000) = 0\n" +
                "drv_opt_get_disable_status(@) = " + answers.at(2) + "\n" + "drv_opt_get_ddm_info(@, item=0x30003) = " +
                answers.at(3) + "\n" + "drv_opt_get_ddm_info(@, item=0x30004) = " + answers.at(4) + "\n",
            body};
}

const std::vector<std::string> switched_off = {"0 value=0", "0", "0 value=1", "0 value={value=[-40 -30.5] count=2}",
                                               "0 value={value=[-2 -1.25] count=2}"};

const std::string switched_off_lines = "tx diable statue: no disable\n"
                                       "set tx disable\n"
                                       "tx diable statue: disable\n"
                                       "realtime Lane[0] txpower        :-40.00\n"
                                       "realtime Lane[0] rxpower        :-2.00\n"
                                       "realtime Lane[1] txpower        :-30.50\n"
                                       "realtime Lane[1] rxpower        :-1.25\n";

const std::vector<std::string> switched_on = {"0 value=1", "0", "0 value=0", "0 value={value=[1] count=1}",
                                              "0 value={value=[2 3] count=2}"};

const std::string switched_on_lines = "tx diable statue: disable\n"
                                      "set tx enable\n"
                                      "tx diable statue: enable\n"
                                      "realtime Lane[0] txpower        :1.00\n"
                                      "realtime Lane[0] rxpower        :2.00\n";

row rate(const std::string &words, const std::string &inputs, const std::string &ret, const std::string &line) {
    return {"set_optical_rate", words, "drv_opt_set_rate(@, " + inputs + ") = " + ret + "\n", line};
}

row registers_read(const std::string &words, const std::string &inputs, const std::string &answer,
                   const std::string &lines) {
    return {"read_optical_register", words, "drv_opt_register_read(@, " + inputs + ") = " + answer + "\n", lines};
}

row register_written(const std::string &words, const std::string &inputs, const std::string &value,
                     const std::string &written, const std::string &read, const std::string &line) {
    return {"write_optical_register", words,
            "drv_opt_register_write(@, " + inputs + ", length=1, data=[" + value + "]) = " + written +
                "\n"
                "drv_cbb_optical_delay_nointerupt(count=40000) = 0\n"
                "drv_opt_register_read(@, " +
                inputs + ", length=1) = " + read + "\n",
            line};
}

std::string numbers(int count) {
    std::string list;
    for (int i = 0; i < count; ++i) {
        list += " " + std::to_string(i);
    }
    return "[" + list + "]";
}

const std::string shown_64 = " 0x0  0x1  0x2  0x3  0x4  0x5  0x6  0x7  0x8  0x9  0xa  0xb  0xc  0xd  0xe  0xf "
                             " 0x10  0x11  0x12  0x13  0x14  0x15  0x16  0x17  0x18  0x19  0x1a  0x1b  0x1c  0x1d "
                             " 0x1e  0x1f  0x20  0x21  0x22  0x23  0x24  0x25  0x26  0x27  0x28  0x29  0x2a  0x2b "
                             " 0x2c  0x2d  0x2e  0x2f  0x30  0x31  0x32  0x33  0x34  0x35  0x36  0x37  0x38  0x39 "
                             " 0x3a  0x3b  0x3c  0x3d  0x3e  0x3f ";

} // namespace

TEST(OpticalTransmitterTest, TransmittersAreSwitchedAsTheFifthWordSays) {
    expect_row(transmitters("1", switched_off, "1", switched_off_lines));
    expect_row(transmitters("255", switched_off, "1", switched_off_lines));
    expect_row(transmitters("0", switched_on, "0", switched_on_lines));
}

TEST(OpticalTransmitterTest, TheFlagIsAByte) {
    expect_row(transmitters("0x100", switched_on, "0", switched_on_lines));
    expect_row(transmitters("0x1ff", switched_off, "1", switched_off_lines));
}

TEST(OpticalTransmitterTest, WordsMayBeTooManyTooFewOrNoNumbers) {
    expect_row(transmitters("1 2 3 4 5", switched_off, "1", switched_off_lines));
    expect_row(transmitters("", switched_on, "0", switched_on_lines));
    expect_row(transmitters("disable", switched_on, "0", switched_on_lines));
    expect_row(transmitters("", switched_on, "0", switched_on_lines), no_port);
    expect_row(transmitters("disable", switched_on, "0", switched_on_lines),
               with_words(no_port, "board port package lanes"));
}

TEST(OpticalTransmitterTest, StateIsReadAgainASecondAfterItWasSet) {
    expect_calls(transmitters("1", switched_off, "1", ""), {
                                                               "drv_opt_get_disable_status(@)",
                                                               "drv_opt_set_disable_status(@, value=1)",
                                                               "drv_cbb_optical_delay_nointerupt(count=0xf4240)",
                                                               "drv_opt_get_disable_status(@)",
                                                               "drv_opt_get_ddm_info(@, item=0x30003)",
                                                               "drv_opt_get_ddm_info(@, item=0x30004)",
                                                           });
}

TEST(OpticalTransmitterTest, AnyStateButZeroIsDisabled) {
    expect_row(transmitters("1", {"0 value=2", "0", "0 value=0xffffffff", "0", "0"}, "1",
                            "tx diable statue: disable\n"
                            "set tx disable\n"
                            "tx diable statue: disable\n"));
    // A state that is not told is "not disabled", whatever it was before.
    expect_row(transmitters("1", {"0 value=1", "0", "0", "0", "0"}, "1",
                            "tx diable statue: disable\n"
                            "set tx disable\n"
                            "tx diable statue: enable\n"));
}

TEST(OpticalTransmitterTest, EachFailedStepFailsTheTest) {
    const std::string nothing_told = "tx diable statue: no disable\n"
                                     "set tx disable\n"
                                     "tx diable statue: enable\n";
    for (size_t step = 0; step < 5; ++step) {
        std::vector<std::string> answers(5, "0");
        answers.at(step) = "0x811101a4";
        expect_failed_row(transmitters("1", answers, "1", nothing_told));
    }
    expect_failed_row(transmitters("1", std::vector<std::string>(5, "0x811101a4"), "1", nothing_told));
}

TEST(OpticalTransmitterTest, DelayThatFailsChangesNothing) {
    row one = transmitters("1", switched_off, "1", switched_off_lines);
    one.calls.replace(one.calls.find("count=1000000) = 0"), 18, "count=1000000) = 5");
    expect_row(one);
}

TEST(OpticalTransmitterTest, NoMoreThanSixteenLanesAreShown) {
    std::string lines = "tx diable statue: no disable\n"
                        "set tx enable\n"
                        "tx diable statue: enable\n";
    for (int i = 0; i < 16; ++i) {
        const std::string lane = "realtime Lane[" + std::to_string(i) + "] ";
        lines += lane + "txpower        :" + std::to_string(i) + ".00\n" + lane + "rxpower        :0.00\n";
    }
    for (const std::string count : {"16", "17", "0xffffffff"}) {
        expect_row(transmitters("0", {"0", "0", "0", "0 value={value=" + numbers(16) + " count=" + count + "}", "0"},
                                "0", lines));
    }
}

TEST(OpticalRateTest, DirectionAndRateAreBytes) {
    expect_row(rate("1 3", "direction=1, rate=3", "0", "direction = 1 (0:TX, 1:RX), set_rate_value = 3, ret = 0\n"));
    expect_row(rate("0x101 0xfff", "direction=1, rate=255", "0",
                    "direction = 1 (0:TX, 1:RX), set_rate_value = 255, ret = 0\n"));
}

TEST(OpticalRateTest, WordsMayBeTooManyTooFewOrNoNumbers) {
    expect_row(
        rate("1 3 5 7 9", "direction=1, rate=3", "0", "direction = 1 (0:TX, 1:RX), set_rate_value = 3, ret = 0\n"));
    expect_row(rate("1", "direction=1, rate=0", "0", "direction = 1 (0:TX, 1:RX), set_rate_value = 0, ret = 0\n"));
    expect_row(rate("", "direction=0, rate=0", "0", "direction = 0 (0:TX, 1:RX), set_rate_value = 0, ret = 0\n"));
    expect_row(
        rate("RX fast", "direction=0, rate=0", "0", "direction = 0 (0:TX, 1:RX), set_rate_value = 0, ret = 0\n"));
    expect_row(rate("", "direction=0, rate=0", "0", "direction = 0 (0:TX, 1:RX), set_rate_value = 0, ret = 0\n"),
               no_port);
}

TEST(OpticalRateTest, FailureIsShown) {
    expect_failed_row(rate("0 2", "direction=0, rate=2", "0x811101a4",
                           "direction = 0 (0:TX, 1:RX), set_rate_value = 2, ret = -2129591900\n"));
}

TEST(OpticalBusRecoveryTest, LineSaysOkWhateverTheResult) {
    const std::string name = "set_optical_bus_status_recovery";
    expect_all_forms(
        {name, "", "drv_opt_bus_status_recovery(@) = 0\n", "drv_optical_bus_status_recovery ok, ret = 0\n"});
    expect_failed_row({name, "", "drv_opt_bus_status_recovery(@) = 0x811101a4\n",
                       "drv_optical_bus_status_recovery ok, ret = -2129591900\n"});
}

TEST(OpticalRegisterTest, RegistersAreReadAsTheWordsSay) {
    expect_row(registers_read("0xa0 2 128 3", "device=0xa0, page=2, address=128, length=3",
                              "0 data=[0x11 0 0xffffffff]",
                              "len = 3, ret = 0\n"
                              "data:\n"
                              " 0x11  0x0  0xffffffff \n"));
    // Selectors are bytes; an address is not.
    expect_row(registers_read("0x1a2 0x103 0xffffffff 1", "device=0xa2, page=3, address=0xffffffff, length=1",
                              "0 data=[7]",
                              "len = 1, ret = 0\n"
                              "data:\n"
                              " 0x7 \n"));
}

TEST(OpticalRegisterTest, NoMoreThanSixtyFourRegistersAreRead) {
    expect_row(registers_read("0 0 0 64", "device=0, page=0, address=0, length=64", "0 data=" + numbers(64),
                              "len = 64, ret = 0\ndata:\n" + shown_64 + "\n"));
    for (const char *length : {"65", "100", "0xffffffff", "0x40000001"}) {
        expect_row(registers_read("0 0 0 " + std::string(length), "device=0, page=0, address=0, length=64",
                                  "0 data=" + numbers(64), "len = 64, ret = 0\ndata:\n" + shown_64 + "\n"));
    }
}

TEST(OpticalRegisterTest, RegistersThatAreNotToldAreZero) {
    expect_failed_row(registers_read("0 0 5 2", "device=0, page=0, address=5, length=2", "0x811101a4",
                                     "len = 2, ret = -2129591900\n"
                                     "data:\n"
                                     " 0x0  0x0 \n"));
    expect_failed_row(registers_read("0 0 5 5", "device=0, page=0, address=5, length=5", "1 data=[1 2]",
                                     "len = 5, ret = 1\n"
                                     "data:\n"
                                     " 0x1  0x2  0x0  0x0  0x0 \n"));
}

TEST(OpticalRegisterTest, WordsOfAReadMayBeTooManyTooFewOrNoNumbers) {
    expect_row(registers_read("1 2 3 1 5 6", "device=1, page=2, address=3, length=1", "0 data=[4]",
                              "len = 1, ret = 0\n"
                              "data:\n"
                              " 0x4 \n"));
    expect_row(registers_read("1 2 3", "device=1, page=2, address=3, length=0", "0", "len = 0, ret = 0\ndata:\n\n"));
    expect_row(registers_read("1 2", "device=1, page=2, address=0, length=0", "0", "len = 0, ret = 0\ndata:\n\n"));
    expect_row(registers_read("", "device=0, page=0, address=0, length=0", "0", "len = 0, ret = 0\ndata:\n\n"),
               no_port);
    expect_row(registers_read("a b c d", "device=0, page=0, address=0, length=0", "0", "len = 0, ret = 0\ndata:\n\n"));
}

TEST(OpticalRegisterTest, RegistersWithoutRoomForThemFail) {
    const row one = registers_read("0 0 5 2", "device=0, page=0, address=5, length=2", "0", "");
    expect_without_text_area(line_of(one, port_3), script_of(one, port_3),
                             begin_lines + port_3.line + timing_lines + operate_fail("read_optical_register") +
                                 operate_fail("optical_test"),
                             255);
}

TEST(OpticalRegisterTest, RegisterIsReadBackAfterItWasWritten) {
    const row one = register_written("0xa2 3 129 0x5a", "device=0xa2, page=3, address=129", "0x5a", "0",
                                     "0 data=[0x5b]", "wirte data = 0x5a read data = 0x5b, ret =0\n");
    expect_row(one);
    expect_calls(one, {
                          "drv_opt_register_write(@, device=162, page=3, address=129, data=[90], length=1)",
                          "drv_cbb_optical_delay_nointerupt(count=40000)",
                          "drv_opt_register_read(@, device=162, page=3, address=129, length=1)",
                      });
    // A value is a whole word, and the selectors are bytes.
    expect_row(register_written("0x1a2 0x103 0 0xffffffff", "device=0xa2, page=3, address=0", "0xffffffff", "0",
                                "0 data=[0x12345678]", "wirte data = 0xffffffff read data = 0x12345678, ret =0\n"));
}

TEST(OpticalRegisterTest, ResultsOfWritingAndReadingBackAreCombined) {
    const std::string inputs = "device=1, page=2, address=3";
    expect_failed_row(register_written("1 2 3 4", inputs, "4", "0x811101a4", "0 data=[4]",
                                       "wirte data = 0x4 read data = 0x4, ret =-2129591900\n"));
    expect_failed_row(register_written("1 2 3 4", inputs, "4", "0", "8", "wirte data = 0x4 read data = 0x0, ret =8\n"));
    expect_failed_row(
        register_written("1 2 3 4", inputs, "4", "1", "6 data=[9]", "wirte data = 0x4 read data = 0x9, ret =7\n"));
}

TEST(OpticalRegisterTest, DelayThatFailsChangesNothing) {
    row one = register_written("1 2 3 4", "device=1, page=2, address=3", "4", "0", "0 data=[4]",
                               "wirte data = 0x4 read data = 0x4, ret =0\n");
    one.calls.replace(one.calls.find("count=40000) = 0"), 16, "count=40000) = 5");
    expect_row(one);
}

TEST(OpticalRegisterTest, WordsOfAWriteMayBeTooManyTooFewOrNoNumbers) {
    expect_row(register_written("1 2 3 4 5 6", "device=1, page=2, address=3", "4", "0", "0 data=[4]",
                                "wirte data = 0x4 read data = 0x4, ret =0\n"));
    const std::string zero_line = "wirte data = 0x0 read data = 0x4, ret =0\n";
    expect_row(register_written("1 2 3", "device=1, page=2, address=3", "0", "0", "0 data=[4]", zero_line));
    expect_row(register_written("", "device=0, page=0, address=0", "0", "0", "0 data=[4]", zero_line), no_port);
    expect_row(register_written("a b c d", "device=0, page=0, address=0", "0", "0", "0 data=[4]", zero_line));
}

} // namespace kestro_tests::optical
