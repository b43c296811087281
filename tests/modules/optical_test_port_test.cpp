// optical_test: which port, package and lanes the common words select.
#include <gtest/gtest.h>

#include "tests/modules/optical_runs.h"

namespace kestro_tests::optical {

namespace {

const row encode_type = {"get_optical_encode_type", "", "drv_opt_get_encode_type(@) = 0 value=3\n",
                         "encode_type = 3\n"};

// Ports 1 to 4 of type 1 and 5 and 6 of type 2; behind the end marker ports 100 to 107 of type 3, and ports up to the
// last number and beyond of type 4.
const std::string long_map = "[{package_type=1 number=4 start_id=1} {package_type=2 number=2 start_id=5}"
                             " {package_type=15 number=2 start_id=20} {package_type=3 number=8 start_id=100}"
                             " {package_type=4 number=16 start_id=0xfffffff8}]";

const std::string long_map_lines = "package_type:SFP       , package_type_value:1, number:  4, start_id:  1\n"
                                   "package_type:SFP       , package_type_value:2, number:  2, start_id:  5\n" +
                                   up_line;

struct mapped_port {
    std::string port;
    std::string shown;
    std::string type;
};

void expect_type(const mapped_port &one) {
    expect_success("optical_test get_optical_encode_type 9 " + one.port + " 0 2",
                   "drv_opt_init(inst_id=9) = 0\n"
                   "drv_opt_get_card_port_map(slot=9, frame=0, size=192) = 0 map=" +
                       long_map +
                       "\n"
                       "drv_cbb_optical_get_port_type_str_from_value(size=16) = 0 text=\"SFP\"\n"
                       "drv_cbb_optical_delay_nointerupt(count=5000000) = 0\n"
                       "drv_opt_get_encode_type(inst_id=9, port_para={package_type=" +
                       one.type + " port=" + one.port +
                       " lanebitmap=2}) = 0 value=3\n"
                       "drv_opt_exit(inst_id=9) = 0\n",
                   long_map_lines + "inst_id = 0x9, port_para: package_type = " + one.type +
                       ", package 0, port = " + one.shown + ", lanebitmap = 0x2\nencode_type = 3\n");
}

} // namespace

TEST(OpticalPortTest, MapTellsThePackageType) {
    for (const mapped_port &one : std::vector<mapped_port>{
             {"1", "1", "1"}, {"4", "4", "1"}, {"6", "6", "2"}, {"100", "100", "3"}, {"107", "107", "3"}}) {
        expect_type(one);
    }
}

TEST(OpticalPortTest, ARowCoversOnePortMoreThanItHas) {
    for (const mapped_port &one : std::vector<mapped_port>{{"5", "5", "1"}, {"7", "7", "2"}, {"108", "108", "3"}}) {
        expect_type(one);
    }
}

TEST(OpticalPortTest, APortInNoRowIsOfTypeZero) {
    // The rows that the driver left are of type 0, too, and have port 0.
    for (const mapped_port &one :
         std::vector<mapped_port>{{"0", "0", "0"}, {"8", "8", "0"}, {"99", "99", "0"}, {"109", "109", "0"}}) {
        expect_type(one);
    }
}

TEST(OpticalPortTest, TheEndMarkersOwnRowIsSearched) {
    expect_type({"20", "20", "15"});
    expect_type({"22", "22", "15"});
}

TEST(OpticalPortTest, ARowAtTheTopEndsThere) {
    expect_type({"0xfffffff8", "-8", "4"});
    expect_type({"0xffffffff", "-1", "4"});
}

TEST(OpticalPortTest, WithoutLanesAllLanesOfThePortAreMeant) {
    struct lanes {
        std::string answer;
        std::string bitmap;
    };
    for (const lanes &one : std::vector<lanes>{{"0 lane_num=0", "0xffffffff"},
                                               {"0 lane_num=1", "0x1"},
                                               {"0 lane_num=4", "0xf"},
                                               {"0 lane_num=16", "0xffff"},
                                               {"0 lane_num=31", "0x7fffffff"},
                                               {"0 lane_num=32", "0xffffffff"},
                                               {"0 lane_num=33", "0xffffffff"},
                                               {"0 lane_num=0xffffffff", "0xffffffff"},
                                               {"0", "0xffffffff"},
                                               {"0x811101a4", "0xffffffff"},
                                               {"0x811101a4 lane_num=2", "0x3"}}) {
        expect_row(
            encode_type,
            {"9 3 0 0", "9",
             "drv_opt_get_lane_num(inst_id=9, port_para={package_type=1 port=3 lanebitmap=0}) = " + one.answer + "\n",
             "inst_id=9, port_para={package_type=1 port=3 lanebitmap=" + one.bitmap + "}",
             "inst_id = 0x9, port_para: package_type = 1, package 0, port = 3, lanebitmap = " + one.bitmap + "\n"});
    }
}

TEST(OpticalPortTest, APackageOfTheCommandLineReplacesThatOfTheMap) {
    expect_row(encode_type, {"9 3 7 1", "9", "", "inst_id=9, port_para={package_type=7 port=3 lanebitmap=1}",
                             "inst_id = 0x9, port_para: package_type = 7, package 7, port = 3, lanebitmap = 0x1\n"});
    expect_row(encode_type,
               {"9 3 0xffffffff 1", "9", "", "inst_id=9, port_para={package_type=0xffffffff port=3 lanebitmap=1}",
                "inst_id = 0x9, port_para: package_type = -1, package -1, port = 3, lanebitmap = 0x1\n"});
}

TEST(OpticalPortTest, LanesAreAskedOfThePackageInTheMap) {
    expect_row(encode_type,
               {"9 3 7 0", "9",
                "drv_opt_get_lane_num(inst_id=9, port_para={package_type=1 port=3 lanebitmap=0}) = 0 lane_num=8\n",
                "inst_id=9, port_para={package_type=7 port=3 lanebitmap=0xff}",
                "inst_id = 0x9, port_para: package_type = 7, package 7, port = 3, lanebitmap = 0xff\n"});
}

TEST(OpticalPortTest, WordsThatAreMissingAreZero) {
    expect_row(encode_type, no_port);
    expect_row(encode_type,
               {"9", "9",
                "drv_opt_get_lane_num(inst_id=9, port_para={package_type=15 port=0 lanebitmap=0}) = 0 lane_num=4\n",
                "inst_id=9, port_para={package_type=15 port=0 lanebitmap=0xf}",
                "inst_id = 0x9, port_para: package_type = 15, package 0, port = 0, lanebitmap = 0xf\n"});
    expect_row(encode_type,
               {"9 3", "9",
                "drv_opt_get_lane_num(inst_id=9, port_para={package_type=1 port=3 lanebitmap=0}) = 0 lane_num=4\n",
                "inst_id=9, port_para={package_type=1 port=3 lanebitmap=0xf}",
                "inst_id = 0x9, port_para: package_type = 1, package 0, port = 3, lanebitmap = 0xf\n"});
    expect_row(encode_type,
               {"9 3 7", "9",
                "drv_opt_get_lane_num(inst_id=9, port_para={package_type=1 port=3 lanebitmap=0}) = 0 lane_num=4\n",
                "inst_id=9, port_para={package_type=7 port=3 lanebitmap=0xf}",
                "inst_id = 0x9, port_para: package_type = 7, package 7, port = 3, lanebitmap = 0xf\n"});
}

TEST(OpticalPortTest, BaseOfTheWordsIsAutomatic) {
    expect_row(encode_type, {"0x9 03 0x10 020", "9", "", "inst_id=9, port_para={package_type=16 port=3 lanebitmap=16}",
                             "inst_id = 0x9, port_para: package_type = 16, package 16, port = 3, lanebitmap = 0x10\n"});
}

} // namespace kestro_tests::optical
