// update_test: every sub-command on the real program, with the driver scripted, and with the simulated driver.
#include <gtest/gtest.h>

#include "tests/support/command.h"

using namespace kestro_tests;

TEST(UpdateTest, UsageListsTheSubCommandsInOrder) {
    expect_run("update_test", "",
               "kestro_test: too few args!\n\n\nUsage: kestro_test [OPTION]\t\n"
               "List the functionalities for kestro_test \n"
               " update_startup_file\n clear_boot_lockword\n get_boot_lockword_status\n",
               0);
}

TEST(UpdateTest, StartUpFile) {
    expect_success("update_test update_startup_file 2 /opt/hostx/home/system.bin",
                   "drv_update_startup_file(file_type=2, file_name=\"/opt/hostx/home/system.bin\") = 0",
                   "file_type[2], file_name[/opt/hostx/home/system.bin]\r\n"
                   "file_type[2], file_name[/opt/hostx/home/system.bin],[ret]:0 success\r\n");
    expect_success("update_test update_startup_file 0x10 a 3 b",
                   "drv_update_startup_file(file_type=16, file_name=\"a\") = 0",
                   "file_type[16], file_name[a]\r\nfile_type[16], file_name[a],[ret]:0 success\r\n");
    expect_success("update_test update_startup_file type ''",
                   "drv_update_startup_file(file_type=0, file_name=\"\") = 0",
                   "file_type[0], file_name[]\r\nfile_type[0], file_name[],[ret]:0 success\r\n");
    expect_success("update_test update_startup_file 0xffffffff '%s %n'",
                   "drv_update_startup_file(file_type=0xffffffff, file_name=\"%s %n\") = 0",
                   "file_type[-1], file_name[%s %n]\r\nfile_type[-1], file_name[%s %n],[ret]:0 success\r\n");
}

TEST(UpdateTest, StartUpFileThatIsRefused) {
    expect_failure("update_test update_startup_file 1 boot.bin",
                   "drv_update_startup_file(file_type=1, file_name=\"boot.bin\") = 0x811101a4",
                   "file_type[1], file_name[boot.bin]\r\n"
                   "file_type[1], file_name[boot.bin],[ret]:-2129591900 fail\r\n");
}

TEST(UpdateTest, StartUpFileWithTooFewWords) {
    const std::string usage = "kestro_test update_test file_type file_name\n";
    expect_failure("update_test update_startup_file", "", usage);
    expect_failure("update_test update_startup_file 2", "", usage);
}

// A long name is shown whole, before the driver is asked and behind it.
TEST(UpdateTest, StartUpFileWithALongName) {
    const std::string name(5000, 'n');
    expect_failure("update_test update_startup_file 3 " + name,
                   "drv_update_startup_file(file_type=3, file_name=\"" + name + "\") = 7",
                   "file_type[3], file_name[" + name + "]\r\nfile_type[3], file_name[" + name + "],[ret]:7 fail\r\n");
}

TEST(UpdateTest, ClearLockWord) {
    expect_success("update_test clear_boot_lockword", "drv_clear_boot_lockword(lock_id=1) = 0",
                   "drv_clear_boot_lockword ret:0\r\n");
    expect_success("update_test clear_boot_lockword 2 3", "drv_clear_boot_lockword(lock_id=1) = 0",
                   "drv_clear_boot_lockword ret:0\r\n");
    expect_failure("update_test clear_boot_lockword", "drv_clear_boot_lockword(lock_id=1) = 0x811101a4",
                   "drv_clear_boot_lockword ret:2165375396\r\n");
}

TEST(UpdateTest, StatusOfTheLockWord) {
    const std::string ret = "drv_get_boot_lockword_status ret:0\r\n";
    const std::string asked = "drv_get_boot_lockword_status(lock_id=1) = 0 status=";
    expect_success("update_test get_boot_lockword_status", asked + "0", ret + "invalid status\r\n");
    expect_success("update_test get_boot_lockword_status", asked + "1", ret + "defualt lockword\r\n");
    expect_success("update_test get_boot_lockword_status 7", asked + "2", ret + "null lockword\r\n");
    expect_success("update_test get_boot_lockword_status", asked + "3", ret + "lockword set by user\r\n");
    expect_success("update_test get_boot_lockword_status", asked + "4", ret + "invalid status\r\n");
    expect_success("update_test get_boot_lockword_status", asked + "0xffffffff", ret + "invalid status\r\n");
}

// A driver that writes nothing leaves the status at 0; one that fails may have written it all the same.
TEST(UpdateTest, StatusOfTheLockWordThatIsNotTold) {
    expect_success("update_test get_boot_lockword_status", "drv_get_boot_lockword_status(lock_id=1) = 0",
                   "drv_get_boot_lockword_status ret:0\r\ninvalid status\r\n");
    expect_failure("update_test get_boot_lockword_status", "drv_get_boot_lockword_status(lock_id=1) = 0x811101a4",
                   "drv_get_boot_lockword_status ret:2165375396\r\ninvalid status\r\n");
    expect_failure("update_test get_boot_lockword_status", "drv_get_boot_lockword_status(lock_id=1) = 5 status=3",
                   "drv_get_boot_lockword_status ret:5\r\nlockword set by user\r\n");
}

// The simulated board has the files in the home directory of its software, and no other.
TEST(UpdateTest, StartUpFileOfASimulatedBoard) {
    const std::string script = "drv_update_startup_file = pass";
    expect_success("update_test update_startup_file 2 power_app.bin", script,
                   "file_type[2], file_name[power_app.bin]\r\n"
                   "file_type[2], file_name[power_app.bin],[ret]:0 success\r\n");
    expect_failure("update_test update_startup_file 2 none.bin", script,
                   "file_type[2], file_name[none.bin]\r\n"
                   "file_type[2], file_name[none.bin],[ret]:-2129592058 fail\r\n");
}

// The simulated board, as delivered, after a clearing, and with a word of the owner's in its flash.
TEST(UpdateTest, LockWordOfASimulatedBoard) {
    begin_new_board();
    const std::string ask = "drv_get_boot_lockword_status = pass";
    const std::string ret = "drv_get_boot_lockword_status ret:0\r\n";
    expect_success("update_test get_boot_lockword_status", ask, ret + "defualt lockword\r\n");
    expect_success("update_test clear_boot_lockword", "drv_clear_boot_lockword = pass",
                   "drv_clear_boot_lockword ret:0\r\n");
    expect_success("update_test get_boot_lockword_status", ask, ret + "null lockword\r\n");
    expect_success("flash_test flash_write 2 9 6b,65,79 3", "drv_flash_write = pass",
                   "\r\nbuff:6b,65,79\r\nbuff[0],value=[0x6b]\r\nbuff[1],value=[0x65]\r\nbuff[2],value=[0x79]\r\n");
    expect_success("update_test get_boot_lockword_status", ask, ret + "lockword set by user\r\n");
}
