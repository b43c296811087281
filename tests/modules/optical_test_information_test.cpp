// optical_test: what a module says of itself, and the driver's own state of it.
#include <gtest/gtest.h>

#include "tests/modules/optical_runs.h"
#include "tests/support/failing_allocations.h"

namespace kestro_tests::optical {

namespace {

const row common_info = {"get_optical_common_info", "",
                         "drv_opt_get_common_info(@, item=0x10002, size=24) = 0 text=\"LC\"\n"
                         "drv_opt_get_common_info(@, item=0x10001, size=44) = 0 text=\"100GBASE_LR4\"\n"
                         "drv_opt_get_common_info(@, item=0x10004, size=128) = 0 text=\"10000(9um)\"\n"
                         "drv_opt_get_common_info(@, item=0x10006, size=16) = 0 text=\"25.78G\"\n"
                         "drv_opt_get_common_info(@, item=0x10003, size=16) = 0 text=\"1310\"\n"
                         "drv_opt_get_common_info(@, item=0x10007, size=8) = 0 text=\"YES\"\n"
                         "drv_opt_get_common_info(@, item=0x10008, size=20) = 0 text=\"KESTRO OPTICS\"\n"
                         "drv_opt_get_common_info(@, item=0x10009, size=20) = 0 text=\"KQ-100-LR4\"\n"
                         "drv_opt_get_common_info(@, item=0x1000a, size=20) = 0 text=\"K2103A00017\"\n"
                         "drv_opt_get_common_info(@, item=0x1000b, size=16) = 0 text=\"2031-12-30\"\n"
                         "drv_opt_get_common_info(@, item=0x10005, size=16) = 0 text=\"64B/66B\"\n",
                         "Common information:\n"
                         "vendor name                     :KESTRO OPTICS\n"
                         "vendor PN                       :KQ-100-LR4\n"
                         "Connect Type                    :LC\n"
                         "Transceiver Type                :100GBASE_LR4\n"
                         "Transfer Distance(m)            :10000(9um)\n"
                         "Encoding_type                   :64B/66B\n"
                         "Nominal Bitrate                 :25.78G\n"
                         "Wavelength(nm)                  :1310\n"
                         "Digital Diagnostic Monitoring   :YES\n"
                         "Manu. Serial Number             :K2103A00017\n"
                         "Manufacturing Date              :2031-12-30\n"};

const std::string no_common_info = "Common information:\n"
                                   "vendor name                     :\n"
                                   "vendor PN                       :\n"
                                   "Connect Type                    :\n"
                                   "Transceiver Type                :\n"
                                   "Transfer Distance(m)            :\n"
                                   "Encoding_type                   :\n"
                                   "Nominal Bitrate                 :\n"
                                   "Wavelength(nm)                  :\n"
                                   "Digital Diagnostic Monitoring   :\n"
                                   "Manu. Serial Number             :\n"
                                   "Manufacturing Date              :\n";

// Flags that differ from their neighbours, so that a line with the wrong one shows.
const row support_flags = {"get_optical_diag_info_support_flag", "",
                           "drv_opt_get_diag_info_support_flag(@, item=0) = 0 flag=100\n"
                           "drv_opt_get_diag_info_support_flag(@, item=1) = 0 flag=101\n"
                           "drv_opt_get_diag_info_support_flag(@, item=2) = 0 flag=102\n"
                           "drv_opt_get_diag_info_support_flag(@, item=3) = 0 flag=103\n"
                           "drv_opt_get_diag_info_support_flag(@, item=4) = 0 flag=104\n"
                           "drv_opt_get_diag_info_support_flag(@, item=5) = 0 flag=105\n"
                           "drv_opt_get_diag_info_support_flag(@, item=6) = 0 flag=106\n"
                           "drv_opt_get_diag_info_support_flag(@, item=7) = 0 flag=107\n"
                           "drv_opt_get_diag_info_support_flag(@, item=8) = 0 flag=108\n"
                           "drv_opt_get_diag_info_support_flag(@, item=9) = 0 flag=109\n"
                           "drv_opt_get_diag_info_support_flag(@, item=10) = 0 flag=110\n"
                           "drv_opt_get_diag_info_support_flag(@, item=11) = 0 flag=111\n"
                           "drv_opt_get_diag_info_support_flag(@, item=12) = 0 flag=112\n"
                           "drv_opt_get_diag_info_support_flag(@, item=13) = 0 flag=113\n"
                           "drv_opt_get_diag_info_support_flag(@, item=14) = 0 flag=114\n",
                           "diag support status = 100 (1:support, 0:not support), ret = 0\n"
                           "diag_item             support_status\n"
                           "temp realtime         101\n"
                           "voltage realtime      102\n"
                           "bias realtime         103\n"
                           "rxpower realtime      104\n"
                           "txpower realtime      105\n"
                           "laser temp realtime   106\n"
                           "tecbias realtime      107\n"
                           "temp threshold        108\n"
                           "voltage threshold     102\n"
                           "bias threshold        110\n"
                           "rxpower threshold     111\n"
                           "txpower threshold     112\n"
                           "laser temp threshold  113\n"
                           "tecbias threshold     114\n"};

const row types = {"get_optical_type", "",
                   "drv_opt_get_type(@) = 0 num=2 types=[{attr=1 mode=2 speed=100 extend=0xabcd reserved=5}"
                   " {attr=0xffffffff mode=16}]\n",
                   "type_nums = 2, ret = 0\n"
                   "type[0]attr     :0x1\n"
                   "type[0]mode     :0x2\n"
                   "type[0]speed    :0x64\n"
                   "type[0]extend   :0xabcd\n"
                   "type[0]reserved :0x5\n"
                   "type[1]attr     :0xffffffff\n"
                   "type[1]mode     :0x10\n"
                   "type[1]speed    :0x0\n"
                   "type[1]extend   :0x0\n"
                   "type[1]reserved :0x0\n"};

row register_info(const std::string &answer, const std::string &line) {
    return {"get_optical_common_register_info", "", "drv_opt_get_common_register_info(@, size=4096) = " + answer + "\n",
            line};
}

row dfx_info(const std::string &answer, const std::string &lines) {
    return {"get_optical_dfx_info", "", "drv_opt_get_dfx_info(@, size=100000) = " + answer + "\n", lines};
}

// As many types as the area has room for, the N-th with attribute N in the driver's answer and in the lines.
std::string hundred_types() {
    std::string records;
    for (int i = 0; i < 100; ++i) {
        records += " {attr=" + std::to_string(i) + " mode=7}";
    }
    return "[" + records + "]";
}

std::string hundred_types_lines() {
    std::ostringstream lines;
    for (int i = 0; i < 100; ++i) {
        lines << "type[" << std::dec << i << "]attr     :0x" << std::hex << i << "\n"
              << "type[" << std::dec << i << "]mode     :0x7\n"
              << "type[" << i << "]speed    :0x0\n"
              << "type[" << i << "]extend   :0x0\n"
              << "type[" << i << "]reserved :0x0\n";
    }
    return lines.str();
}

} // namespace

TEST(OpticalInformationTest, CommonInformationIsListedInAnotherOrderThanItIsAsked) {
    expect_all_forms(common_info);
    expect_calls(common_info, {
                                  "drv_opt_get_common_info(@, item=0x10002, size=24)",
                                  "drv_opt_get_common_info(@, item=0x10001, size=44)",
                                  "drv_opt_get_common_info(@, item=0x10004, size=128)",
                                  "drv_opt_get_common_info(@, item=0x10006, size=16)",
                                  "drv_opt_get_common_info(@, item=0x10003, size=16)",
                                  "drv_opt_get_common_info(@, item=0x10007, size=8)",
                                  "drv_opt_get_common_info(@, item=0x10008, size=20)",
                                  "drv_opt_get_common_info(@, item=0x10009, size=20)",
                                  "drv_opt_get_common_info(@, item=0x1000a, size=20)",
                                  "drv_opt_get_common_info(@, item=0x1000b, size=16)",
                                  "drv_opt_get_common_info(@, item=0x10005, size=16)",
                              });
}

TEST(OpticalInformationTest, CommonInformationThatIsNotToldIsEmpty) {
    const std::string name = "get_optical_common_info";
    expect_row({name, "", "drv_opt_get_common_info(@) = 0\n", no_common_info});
    expect_failed_row({name, "", "drv_opt_get_common_info(@) = 0x811101a4\n", no_common_info});
}

TEST(OpticalInformationTest, OneFailedTextFailsTheCommonInformation) {
    std::string first_failed = common_info.calls;
    first_failed.replace(first_failed.find("= 0 text=\"LC\""), 13, "= 4 text=\"LC\"");
    expect_failed_row({common_info.name, "", first_failed, common_info.body});
    std::string last_failed = common_info.calls;
    last_failed.replace(last_failed.find("= 0 text=\"64B"), 13, "= 4 text=\"64B");
    expect_failed_row({common_info.name, "", last_failed, common_info.body});
}

TEST(OpticalInformationTest, TextsThatFillTheirAreasAreShownWhole) {
    const auto filled = [](const std::string &item, size_t size, char with) {
        return "drv_opt_get_common_info(@, item=" + item + ", size=" + std::to_string(size) + ") = 0 text=\"" +
               std::string(size, with) + "\"\n";
    };
    expect_row({"get_optical_common_info", "",
                filled("0x10002", 24, 'a') + filled("0x10001", 44, 'b') + filled("0x10004", 128, 'c') +
                    filled("0x10006", 16, 'd') + filled("0x10003", 16, 'e') + filled("0x10007", 8, 'f') +
                    filled("0x10008", 20, 'g') + filled("0x10009", 20, 'h') + filled("0x1000a", 20, 'i') +
                    filled("0x1000b", 16, 'j') + filled("0x10005", 16, 'k'),
                "Common information:\n"
                "vendor name                     :gggggggggggggggggggg\n"
                "vendor PN                       :hhhhhhhhhhhhhhhhhhhh\n"
                "Connect Type                    :aaaaaaaaaaaaaaaaaaaaaaaa\n"
                "Transceiver Type                :bbbbbbbbbbbbbbbbbbbbbbbbbbbbbbbbbbbbbbbbbbbb\n"
                "Transfer Distance(m)            :" +
                    std::string(128, 'c') +
                    "\n"
                    "Encoding_type                   :kkkkkkkkkkkkkkkk\n"
                    "Nominal Bitrate                 :dddddddddddddddd\n"
                    "Wavelength(nm)                  :eeeeeeeeeeeeeeee\n"
                    "Digital Diagnostic Monitoring   :ffffffff\n"
                    "Manu. Serial Number             :iiiiiiiiiiiiiiiiiiii\n"
                    "Manufacturing Date              :jjjjjjjjjjjjjjjj\n"});
}

TEST(OpticalInformationTest, TypesAreShownRecordByRecord) {
    expect_all_forms(types);
    expect_row({"get_optical_type", "", "drv_opt_get_type(@) = 0\n", "type_nums = 0, ret = 0\n"});
    expect_failed_row(
        {"get_optical_type", "", "drv_opt_get_type(@) = 0x811101a4\n", "type_nums = 0, ret = -2129591900\n"});
    expect_failed_row({"get_optical_type", "", "drv_opt_get_type(@) = 1 num=1 types=[{attr=3 reserved=4}]\n",
                       "type_nums = 1, ret = 1\n"
                       "type[0]attr     :0x3\n"
                       "type[0]mode     :0x0\n"
                       "type[0]speed    :0x0\n"
                       "type[0]extend   :0x0\n"
                       "type[0]reserved :0x4\n"});
}

TEST(OpticalInformationTest, NoMoreThanAHundredTypesAreShown) {
    for (const std::string num : {"100", "101", "1000000"}) {
        expect_row({"get_optical_type", "", "drv_opt_get_type(@) = 0 types=" + hundred_types() + " num=" + num + "\n",
                    "type_nums = " + num + ", ret = 0\n" + hundred_types_lines()});
    }
    expect_row({"get_optical_type", "", "drv_opt_get_type(@) = 0 types=" + hundred_types() + " num=0xffffffff\n",
                "type_nums = -1, ret = 0\n" + hundred_types_lines()});
}

TEST(OpticalInformationTest, VoltageThresholdShowsTheFlagOfTheMeasuredVoltage) {
    expect_all_forms(support_flags);
    std::vector<std::string> calls;
    for (const char *item : {"0", "1", "2", "3", "4", "5", "6", "7", "8", "9", "10", "11", "12", "13", "14"}) {
        calls.push_back("drv_opt_get_diag_info_support_flag(@, item=" + std::string(item) + ")");
    }
    expect_calls(support_flags, calls);
}

TEST(OpticalInformationTest, ResultsOfTheSupportFlagsAreCombined) {
    std::string calls = support_flags.calls;
    calls.replace(calls.find("item=0) = 0"), 11, "item=0) = 4");
    calls.replace(calls.find("item=9) = 0"), 11, "item=9) = 9");
    std::string body = support_flags.body;
    body.replace(body.find("ret = 0"), 7, "ret = 13");
    expect_failed_row({support_flags.name, "", calls, body});
}

TEST(OpticalInformationTest, SupportFlagsThatAreNotToldAreZero) {
    expect_failed_row({"get_optical_diag_info_support_flag", "", "drv_opt_get_diag_info_support_flag(@) = 0x811101a4\n",
                       "diag support status = 0 (1:support, 0:not support), ret = -2129591900\n"
                       "diag_item             support_status\n"
                       "temp realtime         0\n"
                       "voltage realtime      0\n"
                       "bias realtime         0\n"
                       "rxpower realtime      0\n"
                       "txpower realtime      0\n"
                       "laser temp realtime   0\n"
                       "tecbias realtime      0\n"
                       "temp threshold        0\n"
                       "voltage threshold     0\n"
                       "bias threshold        0\n"
                       "rxpower threshold     0\n"
                       "txpower threshold     0\n"
                       "laser temp threshold  0\n"
                       "tecbias threshold     0\n"});
}

TEST(OpticalInformationTest, CommonRegistersAreOneText) {
    expect_all_forms(register_info("0 text=\"00: 11 07\\n\"", "common register: 00: 11 07\n, ret = 0\n"));
    expect_row(register_info("0", "common register: , ret = 0\n"));
    expect_failed_row(register_info("0x811101a4", "common register: , ret = -2129591900\n"));
    expect_failed_row(register_info("1 text=\"00:\"", "common register: 00:, ret = 1\n"));
    expect_row(register_info("0 text=\"" + std::string(4096, 'r') + "\"",
                             "common register: " + std::string(4096, 'r') + ", ret = 0\n"));
}

TEST(OpticalInformationTest, StateOfTheDriverIsOneText) {
    expect_all_forms(dfx_info("0 text=\"state 3\\nlast 0x50\"", "dfx_buffer(ret = 0x0):\nstate 3\nlast 0x50\n"));
    expect_row(dfx_info("0", "dfx_buffer(ret = 0x0):\n\n"));
    expect_failed_row(dfx_info("0x811101a4", "dfx_buffer(ret = 0x811101a4):\n\n"));
    expect_failed_row(dfx_info("1 text=\"state\"", "dfx_buffer(ret = 0x1):\nstate\n"));
    expect_row(dfx_info("0 text=\"" + std::string(100000, 'd') + "\"",
                        "dfx_buffer(ret = 0x0):\n" + std::string(100000, 'd') + "\n"));
}

TEST(OpticalInformationTest, StateWithoutRoomForItFails) {
    const row one = dfx_info("0 text=\"state 3\"", "");
    expect_without_text_area(line_of(one, port_3), script_of(one, port_3),
                             begin_lines + port_3.line + timing_lines + operate_fail("get_optical_dfx_info") +
                                 operate_fail("optical_test"),
                             255);
}

} // namespace kestro_tests::optical
