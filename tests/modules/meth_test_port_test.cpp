// meth_test: the sub-commands about a port, on the real program, with the driver scripted.
#include <gtest/gtest.h>

#include "tests/support/command.h"

using namespace kestro_tests;

namespace {

// A query for one number: its output in the driver's words, its label, and what ends its two lines.
struct number_query {
    std::string name;
    std::string output;
    std::string label;
    std::string line_end;

    std::string echo(const std::string &port) const {
        return "port:" + port + line_end;
    }
    std::string shown(const std::string &number) const {
        return label + ":" + number + line_end;
    }
};

const std::vector<number_query> number_queries = {
    {"drv_meth_is_readable", "readable", "readable", "\n\n"},
    {"drv_meth_get_autonego", "enable", "enbale", "\n\n"},
    {"drv_meth_get_speed", "speed", "speed", "\n\n"},
    {"drv_meth_get_media_type", "media_type", "media_type", "\n\n"},
    {"drv_meth_get_link_status", "status", "link_status", " \n\n"},
};

// A setting of one number, which is named alike in the driver's words, the usage line and the echo.
struct number_setting {
    std::string name;
    std::string input;
};

const std::vector<number_setting> number_settings = {
    {"drv_meth_set_switch_flag", "flag"},
    {"drv_meth_set_active_ornot", "flag"},
    {"drv_meth_set_shutdown", "flag"},
    {"drv_meth_set_led", "oper_type"},
};

} // namespace

TEST(MethPortTest, UsageListsTheSubCommandsInOrder) {
    expect_run("meth_test", "",
               "kestro_test: too few args!\n\n\nUsage: kestro_test [OPTION]\t\n"
               "List the functionalities for kestro_test \n"
               " drv_meth_init port\n"
               " drv_meth_exit port\n"
               " drv_meth_get_port_num\n"
               " drv_meth_set_switch_flag port flag\n"
               " drv_meth_is_readable port\n"
               " drv_meth_get_rx_pkt port buf_len\n"
               " drv_meth_tx_pkt port tx_buf buf_len\n"
               " drv_meth_get_autonego port\n"
               " drv_meth_get_speed port\n"
               " drv_meth_get_media_type port\n"
               " drv_meth_get_link_status port\n"
               " drv_meth_get_mac port\n"
               " drv_meth_set_active_ornot port flag\n"
               " drv_meth_set_shutdown port flag\n"
               " drv_meth_get_phy_test port\n"
               " drv_meth_set_led port oper_type\n"
               " drv_meth_get_rx_packets port\n"
               " drv_meth_get_tx_packets port\n"
               " drv_meth_get_statistic port\n"
               " drv_meth_dump_info port mac_phy\n",
               0);
}

TEST(MethPortTest, RegistersAreInNoTable) {
    const std::string usage = "\nUsage: kestro_test [OPTION]\t\nList the functionalities for kestro_test \n"
                              " drv_meth_init port\n drv_meth_exit port\n drv_meth_get_port_num\n"
                              " drv_meth_set_switch_flag port flag\n drv_meth_is_readable port\n"
                              " drv_meth_get_rx_pkt port buf_len\n drv_meth_tx_pkt port tx_buf buf_len\n"
                              " drv_meth_get_autonego port\n drv_meth_get_speed port\n"
                              " drv_meth_get_media_type port\n drv_meth_get_link_status port\n"
                              " drv_meth_get_mac port\n drv_meth_set_active_ornot port flag\n"
                              " drv_meth_set_shutdown port flag\n drv_meth_get_phy_test port\n"
                              " drv_meth_set_led port oper_type\n drv_meth_get_rx_packets port\n"
                              " drv_meth_get_tx_packets port\n drv_meth_get_statistic port\n"
                              " drv_meth_dump_info port mac_phy\n";
    expect_run("meth_test drv_meth_read_reg 1 0 2", "",
               "kestro_test: option drv_meth_read_reg not recognised.\n\ndrv_meth_read_reg 1 0 2 " + usage, 0);
    expect_run("meth_test drv_meth_write_reg 1 0 2 3", "",
               "kestro_test: option drv_meth_write_reg not recognised.\n\ndrv_meth_write_reg 1 0 2 3 " + usage, 0);
}

TEST(MethPortTest, InitAndExit) {
    for (const std::string name : {"drv_meth_init", "drv_meth_exit"}) {
        const std::string line = "meth_test " + name;
        expect_success(line + " 3", name + "(port=3) = 0", "port:3 \n\n" + name + " ret:0\n\n");
        expect_success(line + " 0xffffffff", name + "(port=0xffffffff) = 0",
                       "port:4294967295 \n\n" + name + " ret:0\n\n");
        expect_success(line + " 010", name + "(port=8) = 0", "port:8 \n\n" + name + " ret:0\n\n");
        expect_success(line + " eth", name + "(port=0) = 0", "port:0 \n\n" + name + " ret:0\n\n");
        expect_failure(line + " 3", name + "(port=3) = 0x811101a4", "port:3 \n\n" + name + " ret:2165375396\n\n");
        expect_failure(line, "", "invalid arg num [port]\n");
        expect_failure(line + " 3 4", "", "invalid arg num [port]\n");
    }
}

TEST(MethPortTest, GetPortNum) {
    expect_success("meth_test drv_meth_get_port_num", "drv_meth_get_port_num() = 0 number=2",
                   "no arg \nport number:2\n\n");
    expect_success("meth_test drv_meth_get_port_num", "drv_meth_get_port_num() = 0 number=0xffffffff",
                   "no arg \nport number:4294967295\n\n");
    expect_success("meth_test drv_meth_get_port_num", "drv_meth_get_port_num() = 0", "no arg \nport number:0\n\n");
    expect_failure("meth_test drv_meth_get_port_num", "drv_meth_get_port_num() = 0x811101a4 number=2",
                   "no arg \ndrv_meth_get_port_num ret:2165375396\n\n");
    expect_failure("meth_test drv_meth_get_port_num 1", "", "invalid arg num\n");
    expect_failure("meth_test drv_meth_get_port_num eth", "", "invalid arg num\n");
}

TEST(MethPortTest, QueriesForANumber) {
    for (const number_query &query : number_queries) {
        const std::string line = "meth_test " + query.name;
        expect_success(line + " 3", query.name + "(port=3) = 0 " + query.output + "=1000",
                       query.echo("3") + query.shown("1000"));
        expect_success(line + " 0xffffffff", query.name + "(port=0xffffffff) = 0 " + query.output + "=0xffffffff",
                       query.echo("4294967295") + query.shown("4294967295"));
        expect_success(line + " eth", query.name + "(port=0) = 0 " + query.output + "=1",
                       query.echo("0") + query.shown("1"));
        expect_success(line + " 3", query.name + "(port=3) = 0", query.echo("3") + query.shown("0"));
        expect_failure(line + " 3", query.name + "(port=3) = 0x811101a4 " + query.output + "=1",
                       query.echo("3") + query.name + " ret:2165375396\n\n");
        expect_failure(line, "", "invalid arg num [port]\n");
        expect_failure(line + " 3 4", "", "invalid arg num [port]\n");
    }
}

TEST(MethPortTest, SettingsOfANumber) {
    for (const number_setting &setting : number_settings) {
        const std::string line = "meth_test " + setting.name;
        const std::string input = setting.input;
        const std::string usage = "invalid arg num [port] [" + input + "]\n";
        expect_success(line + " 3 2", setting.name + "(port=3, " + input + "=2) = 0",
                       "port:3  " + input + ":2\n\n" + setting.name + " ret:0\n\n");
        expect_success(line + " 0x10 0xffffffff", setting.name + "(port=16, " + input + "=0xffffffff) = 0",
                       "port:16  " + input + ":4294967295\n\n" + setting.name + " ret:0\n\n");
        expect_success(line + " eth on", setting.name + "(port=0, " + input + "=0) = 0",
                       "port:0  " + input + ":0\n\n" + setting.name + " ret:0\n\n");
        expect_failure(line + " 3 1", setting.name + "(port=3, " + input + "=1) = 0x811101a4",
                       "port:3  " + input + ":1\n\n" + setting.name + " ret:2165375396\n\n");
        expect_failure(line, "", usage);
        expect_failure(line + " 3", "", usage);
        expect_failure(line + " 3 1 1", "", usage);
    }
}

TEST(MethPortTest, GetMac) {
    expect_success("meth_test drv_meth_get_mac 3", "drv_meth_get_mac(port=3) = 0 mac=[00 1a 2b 3c 4d ff]",
                   "port:3 \r\nmac:001A-2B3C-4DFF.\n\n");
    expect_success("meth_test drv_meth_get_mac eth", "drv_meth_get_mac(port=0) = 0 mac=[40 80 00 00 00 09]",
                   "port:0 \r\nmac:4080-0000-0009.\n\n");
    expect_success("meth_test drv_meth_get_mac 4294967295", "drv_meth_get_mac(port=0xffffffff) = 0",
                   "port:4294967295 \r\nmac:0000-0000-0000.\n\n");
    expect_failure("meth_test drv_meth_get_mac 3", "drv_meth_get_mac(port=3) = 0x811101a4 mac=[00 1a 2b 3c 4d ff]",
                   "port:3 \r\ndrv_meth_get_mac ret:2165375396\n\n");
    expect_failure("meth_test drv_meth_get_mac", "", "invalid arg num [port]\n");
    expect_failure("meth_test drv_meth_get_mac 3 4", "", "invalid arg num [port]\n");
}
