// What transceivers say of themselves: bytes of their memory maps where the published interfaces have them, the sums
// over them, and the queries that are made of them.
#include "tests/sim/optical.h"

namespace kestro_tests {

namespace {

using OpticalIdentity = OpticalDriver;

std::string common(const optical_port &at, const std::string &item, int size = 128) {
    return optical_call("get_common_info", at, "item=" + item + ", size=" + std::to_string(size));
}

// Transceiver, connector, wavelength, distance, encoding, bit rate, diagnostics, vendor, part, serial number, date.
std::vector<std::string> all_common(const optical_port &at) {
    return {common(at, "0x10001"), common(at, "0x10002"), common(at, "0x10003"), common(at, "0x10004"),
            common(at, "0x10005"), common(at, "0x10006"), common(at, "0x10007"), common(at, "0x10008"),
            common(at, "0x10009"), common(at, "0x1000a"), common(at, "0x1000b")};
}

std::string texts(const std::vector<std::string> &each) {
    std::string all;
    for (const std::string &text : each) {
        all += "0x0 text=\"" + text + "\"\n";
    }
    return all;
}

} // namespace

TEST_F(OpticalIdentity, CommonInformationOfEachKind) {
    EXPECT_EQ(answers(all_common(copper_port)),
              texts({"1000BASE-T", "RJ45", "-", "100(copper)", "8B/10B", "1300Mbps", "NO", "KESTRO OPTICS",
                     "KO-SFP-1GT", "KO2511040080A", "2024-03-11"}));
    EXPECT_EQ(answers(all_common(lr_port)),
              texts({"10GBASE-LR", "LC", "1310", "10000(SM)", "64B/66B", "10300Mbps", "YES", "KESTRO OPTICS",
                     "KO-SFP-10LR", "KO2511040080B", "2024-05-22"}));
    EXPECT_EQ(answers(all_common(failed_port)),
              texts({"10GBASE-SR", "LC", "850", "30(OM1),80(OM2),300(OM3),400(OM4)", "64B/66B", "10300Mbps", "YES",
                     "KESTRO OPTICS", "KO-SFP-10SR", "KO2511040080D", "2023-09-05"}));
    EXPECT_EQ(answers(all_common(sr4_port)),
              texts({"100GBASE-SR4", "MPO 1x12", "850", "70(OM3),100(OM4)", "64B/66B", "103000Mbps", "YES",
                     "KESTRO OPTICS", "KO-Q28-100SR4", "KO2511040080F", "2024-10-17"}));
    EXPECT_EQ(answers(all_common(cut_port)),
              texts({"40GBASE-SR4", "MPO 1x12", "850", "100(OM3),150(OM4)", "64B/66B", "41200Mbps", "YES",
                     "KESTRO OPTICS", "KO-QP-40SR4", "KO2511040080G", "2022-06-14"}));
    EXPECT_EQ(answers(all_common(wide_port)),
              texts({"400GBASE-LR8", "LC", "1310", "10000(SM)", "PAM4", "400000Mbps", "YES", "KESTRO OPTICS",
                     "KO-QDD-400LR8", "KO2511040080H", "2025-02-03"}));
}

TEST_F(OpticalIdentity, OtherBoardsHaveModulesOfTheirOwn) {
    seat_ = "mpu_slave";
    EXPECT_EQ(answers({common(sr4_port, "0x1000a")}), texts({"KO2511040081F"}));
    seat_ = "lpu";
    EXPECT_EQ(answers({common(wide_port_of_lpu, "0x1000a"), common(dark_port_of_lpu, "0x1000a")}),
              texts({"KO2511040107A", "KO2511040107B"}));
}

TEST_F(OpticalIdentity, WhatTheTechnicianWritesOnIt) {
    EXPECT_EQ(answers({common(sr4_port, "0x10008"), common(sr4_port, "0x1000a"), common(sr4_port, "0x1000b"),
                       optical_read(sr4_port, "0xa0", 0, 148, 6)},
                      {"slot9/optics/module/6/vendor=SIXTEEN LETTERS!", "slot9/optics/module/6/serial=7",
                       "slot9/optics/module/6/date=2"}),
              texts({"SIXTEEN LETTERS!", "7", "2"}) + "0x0 data=[83 73 88 84 69 69]\n");
}

TEST_F(OpticalIdentity, CommonInformationRefuses) {
    EXPECT_EQ(answers({common(lr_port, "0x10000"), common(lr_port, "0x1000c"), common(lr_port, "0"),
                       common(lr_port, "0x10001", 10), common(lr_port, "0x10001", 11), common(lr_port, "0x10001", 0)}),
              bad_value + bad_value + bad_value + too_small + texts({"10GBASE-LR"}) + too_small);
}

TEST_F(OpticalIdentity, BytesOfASmallModule) {
    // Identifier, extension, connector, 10GBASE-LR.
    EXPECT_EQ(answers({optical_read(lr_port, "0xa0", 0, 0, 12)}), "0x0 data=[3 4 7 32 0 0 0 0 0 0 0 6]\n");
    // 10.3 Gbit/s, no rate identifier, 10 km, 100 times 100 m, no multi-mode.
    EXPECT_EQ(answers({optical_read(lr_port, "0xa0", 0, 12, 8)}), "0x0 data=[103 0 10 100 0 0 0 0]\n");
    // Vendor, filled up with blanks, and 1310 nm.
    EXPECT_EQ(answers({optical_read(lr_port, "0xa0", 0, 20, 16), optical_read(lr_port, "0xa0", 0, 60, 2)}),
              "0x0 data=[75 69 83 84 82 79 32 79 80 84 73 67 83 32 32 32]\n0x0 data=[5 30]\n");
    // Rates, disable, fault and LOS; measures inside; all flags and pins.
    EXPECT_EQ(answers({optical_read(lr_port, "0", 0, 64, 2), optical_read(lr_port, "0", 0, 92, 3)}),
              "0x0 data=[0 58]\n0x0 data=[104 248 8]\n");
    // Calibrated inside: what arrives counts once (1.0), and so does each of the others.
    EXPECT_EQ(answers({optical_read(lr_port, "0xa2", 0, 56, 36)}),
              "0x0 data=[0 0 0 0 0 0 0 0 0 0 0 0 63 128 0 0 0 0 0 0 1 0 0 0 1 0 0 0 1 0 0 0 1 0 0 0]\n");
    // Multi-mode in tens of metres: OM2, OM1, OM4, OM3.
    EXPECT_EQ(answers({optical_read(failed_port, "0xa0", 0, 14, 6)}), "0x0 data=[0 0 8 3 40 30]\n");
    // Copper: 100 m, no wavelength, no diagnostics.
    EXPECT_EQ(answers({optical_read(copper_port, "0xa0", 0, 14, 6), optical_read(copper_port, "0xa0", 0, 60, 2),
                       optical_read(copper_port, "0xa0", 0, 92, 3)}),
              "0x0 data=[0 0 0 0 100 0]\n0x0 data=[0 0]\n0x0 data=[0 0 0]\n");
}

TEST_F(OpticalIdentity, BytesOfAMiddleModule) {
    EXPECT_EQ(answers({optical_read(sr4_port, "0xa0", 0, 0, 3), optical_read(sr4_port, "0xa0", 0, 128, 4),
                       optical_read(sr4_port, "0xa0", 0, 139, 8), optical_read(sr4_port, "0xa0", 0, 186, 2),
                       optical_read(sr4_port, "0xa0", 0, 192, 4), optical_read(sr4_port, "0xa0", 0, 220, 3)}),
              "0x0 data=[17 8 0]\n0x0 data=[17 12 12 128]\n0x0 data=[5 255 0 0 35 0 0 50]\n0x0 data=[66 104]\n"
              "0x0 data=[2 0 0 186]\n0x0 data=[60 0 103]\n");
    EXPECT_EQ(answers({optical_read(cut_port, "0xa0", 0, 128, 4), optical_read(cut_port, "0xa0", 0, 139, 2),
                       optical_read(cut_port, "0xa0", 0, 192, 4)}),
              "0x0 data=[13 0 12 4]\n0x0 data=[5 103]\n0x0 data=[0 0 0 154]\n");
}

TEST_F(OpticalIdentity, BytesOfAWideModule) {
    // Ready; single-mode; 400GAUI-8 on 400GBASE-LR8, eight lanes each, and no other application; class 5, 40 times
    // 0.25 W; a laser with a grating for 1310 nm.
    EXPECT_EQ(answers({optical_read(wide_port, "0xa0", 0, 0, 4), optical_read(wide_port, "0xa0", 0, 85, 6),
                       optical_read(wide_port, "0xa0", 0, 128, 3), optical_read(wide_port, "0xa0", 0, 200, 4),
                       optical_read(wide_port, "0xa0", 0, 212, 1)}),
              "0x0 data=[24 64 0 6]\n0x0 data=[2 17 27 136 1 255]\n0x0 data=[24 75 69]\n0x0 data=[128 40 0 7]\n"
              "0x0 data=[4]\n");
    // 10 km in kilometres, 1310 nm in twentieths, a cooler and its current, what it measures, the first lane.
    EXPECT_EQ(answers({optical_read(wide_port, "0xa0", 1, 132, 5), optical_read(wide_port, "0xa0", 1, 138, 2),
                       optical_read(wide_port, "0xa0", 1, 145, 1), optical_read(wide_port, "0xa0", 1, 159, 4),
                       optical_read(wide_port, "0xa0", 1, 176, 2)}),
              "0x0 data=[74 0 0 0 0]\n0x0 data=[102 88]\n0x0 data=[129]\n0x0 data=[15 7 1 1]\n0x0 data=[1 0]\n");
}

TEST_F(OpticalIdentity, SumsAreRight) {
    struct summed {
        optical_port at;
        std::string device;
        int page;
        int first;
        int last;
    };
    const optical_port sr4 = sr4_port;
    const std::vector<summed> all{
        {copper_port, "0xa0", 0, 0, 62},  {copper_port, "0xa0", 0, 64, 94}, {lr_port, "0xa0", 0, 0, 62},
        {lr_port, "0xa0", 0, 64, 94},     {lr_port, "0xa2", 0, 0, 94},      {failed_port, "0xa0", 0, 0, 62},
        {failed_port, "0xa0", 0, 64, 94}, {failed_port, "0xa2", 0, 0, 94},  {sr4, "0xa0", 0, 128, 190},
        {sr4, "0xa0", 0, 192, 222},       {cut_port, "0xa0", 0, 128, 190},  {cut_port, "0xa0", 0, 192, 222},
        {wide_port, "0xa0", 0, 128, 221}, {wide_port, "0xa0", 1, 130, 254}, {wide_port, "0xa0", 2, 128, 254}};
    std::vector<std::string> calls;
    for (const summed &each : all) {
        calls.push_back(optical_read(each.at, each.device, each.page, each.first, each.last - each.first + 2));
    }
    const auto lines = lines_of(answers(calls));
    ASSERT_EQ(lines.size(), all.size());
    for (size_t i = 0; i < all.size(); ++i) {
        const auto bytes = numbers_in(lines[i], "data");
        ASSERT_EQ(bytes.size(), static_cast<size_t>(all[i].last - all[i].first + 2)) << calls[i];
        uint32_t sum = 0;
        for (size_t at = 0; at + 1 < bytes.size(); ++at) {
            sum += static_cast<uint32_t>(bytes[at]);
        }
        EXPECT_NE(sum, 0U) << calls[i];
        EXPECT_EQ(static_cast<uint32_t>(bytes.back()), sum & 0xFFU) << calls[i];
    }
}

TEST_F(OpticalIdentity, Distances) {
    EXPECT_EQ(answers({optical_call("get_trans_distance", copper_port), optical_call("get_trans_distance", lr_port),
                       optical_call("get_trans_distance", failed_port), optical_call("get_trans_distance", sr4_port),
                       optical_call("get_trans_distance", wide_port)}),
              "0x0 distance={om1=0 om2=0 om3=0 om4=0 sm=0 sm_fec=0 sm_no_fec=0 copper=100}\n"
              "0x0 distance={om1=0 om2=0 om3=0 om4=0 sm=10000 sm_fec=0 sm_no_fec=10000 copper=0}\n"
              "0x0 distance={om1=30 om2=80 om3=300 om4=400 sm=0 sm_fec=0 sm_no_fec=0 copper=0}\n"
              "0x0 distance={om1=0 om2=0 om3=70 om4=100 sm=0 sm_fec=0 sm_no_fec=0 copper=0}\n"
              "0x0 distance={om1=0 om2=0 om3=0 om4=0 sm=10000 sm_fec=10000 sm_no_fec=0 copper=0}\n");
}

TEST_F(OpticalIdentity, TypesEncodingsLanesAndReceivers) {
    EXPECT_EQ(answers({optical_call("get_type", copper_port), optical_call("get_type", lr_port),
                       optical_call("get_type", failed_port), optical_call("get_type", sr4_port),
                       optical_call("get_type", cut_port), optical_call("get_type", wide_port)}),
              "0x0 types=[{attr=0 mode=0 speed=1000 extend=3 reserved=0}] num=1\n"
              "0x0 types=[{attr=1 mode=1 speed=10000 extend=3 reserved=0}] num=1\n"
              "0x0 types=[{attr=1 mode=2 speed=10000 extend=3 reserved=0}] num=1\n"
              "0x0 types=[{attr=1 mode=2 speed=0x186a0 extend=17 reserved=0}] num=1\n"
              "0x0 types=[{attr=1 mode=2 speed=40000 extend=13 reserved=0}] num=1\n"
              "0x0 types=[{attr=1 mode=1 speed=0x61a80 extend=24 reserved=0}] num=1\n");
    const std::vector<optical_port> ports{copper_port, lr_port, failed_port, sr4_port, wide_port};
    const std::vector<int> encodings{1, 6, 6, 5, 8};
    const std::vector<int> lanes{1, 1, 1, 4, 8};
    const std::vector<int> linear{0, 0, 0, 0, 0};
    std::vector<std::string> calls;
    std::string expected;
    for (size_t i = 0; i < ports.size(); ++i) {
        calls.push_back(optical_call("get_encode_type", ports[i]));
        calls.push_back(optical_call("get_lane_num", ports[i]));
        calls.push_back(optical_call("get_linear_attr", ports[i]));
        expected += "0x0 value=" + std::to_string(encodings[i]) + "\n0x0 lane_num=" + std::to_string(lanes[i]) +
                    "\n0x0 value=" + std::to_string(linear[i]) + "\n";
    }
    EXPECT_EQ(answers(calls), expected);
}

// Over old fibres pulses run into each other: what is behind the module has to tell them apart.
TEST_F(OpticalIdentity, ALinearReceiverFromTheDrawer) {
    EXPECT_EQ(answers({"drv_opt_init()"}, {"slot9/optics/cage/11/plugged=9"}), ok);
    std::vector<std::string> calls{"wait 2", optical_call("get_linear_attr", lr_port),
                                   optical_read(lr_port, "0", 0, 3, 1), optical_read(lr_port, "0", 0, 64, 1),
                                   optical_call("get_type", lr_port)};
    const auto texts_of_it = all_common(lr_port);
    calls.insert(calls.end(), texts_of_it.begin(), texts_of_it.end());
    EXPECT_EQ(answers(calls),
              "0x0 value=1\n0x0 data=[64]\n0x0 data=[1]\n"
              "0x0 types=[{attr=1 mode=2 speed=10000 extend=3 reserved=0}] num=1\n" +
                  texts({"10GBASE-LRM", "LC", "1310", "220(OM1),220(OM2),220(OM3)", "64B/66B", "10300Mbps", "YES",
                         "KESTRO OPTICS", "KO-SFP-10LRM", "KO2511040080J", "2023-01-18"}));
}

// Which lanes are meant is not known before their number.
TEST_F(OpticalIdentity, NumberOfLanesNeedsNoLanes) {
    EXPECT_EQ(answers({optical_call("get_lane_num", {5, 21, "0"})}), "0x0 lane_num=4\n");
}

TEST_F(OpticalIdentity, CommonRegisters) {
    const std::string info = "get_common_register_info";
    EXPECT_EQ(answers({optical_call(info, copper_port, "size=4096")}),
              texts({"\\nidentifier: 03\\nconnector: 22\\ncompliance: 00 00 00 08 00 00 00 00\\noptions: 00 1a"
                     "\\ndiagnostics: 00 00 00"}));
    const std::string middle = answers({optical_call(info, cut_port, "size=4096")});
    EXPECT_NE(middle.find("\\nidentifier: 0d\\nstatus: 00\\nlos: 0f\\nfault: 00\\nflags: "), std::string::npos)
        << middle;
    const std::string wide = answers({optical_call(info, wide_port, "size=4096")});
    EXPECT_NE(wide.find("\\nidentifier: 18\\nstate: 06\\nflags: 00 00 00\\n"), std::string::npos) << wide;
    EXPECT_NE(wide.find("\\napplication: 11 1b 88 01\\ndisable: 00\\nfault: 00\\nlos: 00\\n"), std::string::npos)
        << wide;
    EXPECT_EQ(answers({optical_call(info, wide_port, "size=64")}), too_small);
}

// The whole map, and in front of it what it is about.
TEST_F(OpticalIdentity, DumpHasAllPages) {
    const std::string dump = answers({optical_call("get_dfx_info", wide_port, "size=100000")});
    EXPECT_TRUE(dump.starts_with("0x0 text=\"port 31: 400GBASE-LR8, KESTRO OPTICS KO-QDD-400LR8, serial number "
                                 "KO2511040080H\\ndevice 0xa0, lower half:\\n  18 40 00 06 "))
        << dump;
    for (const char *page : {"0x00", "0x01", "0x02", "0x03", "0x10", "0x11"}) {
        EXPECT_NE(dump.find(std::string("\\ndevice 0xa0, page ") + page + ":\\n  "), std::string::npos) << page;
    }
    const std::string small = answers({optical_call("get_dfx_info", lr_port, "size=100000")});
    EXPECT_NE(small.find("\\ndevice 0xa2, lower half:\\n  4b 00 fb 00 46 00 00 00 "), std::string::npos) << small;
    EXPECT_EQ(answers({optical_call("get_dfx_info", wide_port, "size=200")}), too_small);
}

} // namespace kestro_tests
