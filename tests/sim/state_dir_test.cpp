// State directories: making, keeping, refusing and resetting them, and drivers without one.
#include "tests/sim/support.h"

#include <filesystem>
#include <gtest/gtest.h>
#include <sys/stat.h>

namespace kestro_tests {

namespace fs = std::filesystem;

namespace {

const std::string self = " 0xffffffff ";
const std::string write_label = "elabel_write" + self + "0 1200 kept";
const std::string read_label = "elabel_read" + self + "0 4";

std::string master() {
    return delivered_board("mpu_master");
}

std::vector<std::string> names_in(const std::string &directory) {
    std::vector<std::string> names;
    for (const fs::directory_entry &entry : fs::directory_iterator(directory)) {
        names.push_back(entry.path().filename().string());
    }
    std::sort(names.begin(), names.end());
    return names;
}

} // namespace

TEST(StateDir, IsMadeOnceAndKept) {
    const test_board board = new_board(master());
    calls_print(board, {write_label});
    EXPECT_EQ(prepare_says(board.description, board.state), "");
    EXPECT_EQ(calls_print(board, {read_label}), "0x0 \"kept\"\n");
}

TEST(StateDir, ResetMakesTheBoardNew) {
    const test_board board = new_board(master());
    calls_print(board, {write_label, "gpio_write 5 1", "log 1 1 x"});
    write_file(board.state + "/root/proc/interrupts", "changed");
    EXPECT_EQ(prepare_says(board.description, board.state, true), "");
    EXPECT_EQ(calls_print(board, {read_label, "gpio_read 5"}), "0x0 \"[boa\"\n0x0 0\n");
    EXPECT_FALSE(fs::exists(board.state + "/log/1.log"));
    EXPECT_NE(read_file(board.state + "/root/proc/interrupts"), "changed");
}

TEST(StateDir, HoldsTheBoardsFiles) {
    const test_board board = new_board(master());
    EXPECT_EQ(names_in(board.state), (std::vector<std::string>{"images", "kestro_sim.lock", "log", "root", "store"}));
    EXPECT_EQ(read_file(board.state + "/root/opt/hostx/home/elabel.txt"),
              read_file(source_dir() + "/sim/boards/mpu_master.root/opt/hostx/home/elabel.txt"));
    struct stat script {};
    ASSERT_EQ(stat((board.state + "/root/etc/install_itp.sh").c_str(), &script), 0);
    EXPECT_NE(script.st_mode & S_IXUSR, 0U);
}

TEST(StateDir, ImagesOfAllInstancesAndStorage) {
    const std::string storage = "<module name=\"sim_storage\"><node name=\"image\"><entry name=\"nvram0\"><element "
                                "name=\"size\" value=\"512\"/><element name=\"fill\" value=\"0x5A\"/></entry></node>"
                                "</module></board>";
    const test_board board =
        new_board(scratch_file("board.xml", replaced(read_file(delivered_board("lpu")), "</board>", storage)));
    EXPECT_EQ(names_in(board.state + "/images"),
              (std::vector<std::string>{"eeprom-card1.bin", "eeprom-card2.bin", "eeprom-self.bin", "nvram0.bin"}));
    EXPECT_EQ(read_file(board.state + "/images/nvram0.bin"), std::string(512, 'Z'));
}

TEST(StateDir, AnotherBoardIsRefused) {
    const test_board board = new_board(master());
    EXPECT_EQ(prepare_says(delivered_board("lpu"), board.state),
              board.state +
                  "/store: holds board 'mpu_master', not 'lpu'; choose another directory with --state, or make "
                  "the board new with --reset");
    EXPECT_EQ(prepare_says(delivered_board("lpu"), board.state, true), "");
    EXPECT_EQ(prepare_says(delivered_board("lpu"), board.state), "");
}

TEST(StateDir, AnotherLayoutIsRefused) {
    const test_board board = new_board(scratch_file("board.xml", read_file(master())));
    write_file(board.description, replaced(read_file(board.description), "<element name=\"size\" value=\"5120\"/>",
                                           "<element name=\"size\" value=\"4096\"/>"));
    EXPECT_EQ(prepare_says(board.description, board.state),
              board.state + "/store: was made for other cards or another EEPROM layout of board 'mpu_master'; choose "
                            "another directory with --state, or make the board new with --reset");
}

TEST(StateDir, OtherNumbersOfDevicesKeepTheState) {
    const test_board board = new_board(scratch_file("board.xml", read_file(master())));
    EXPECT_EQ(calls_print(board, {write_label, "gpio_write 5 1"}), "0x0\n0x0\n");
    const std::string pin16 = "<entry name=\"16\"><element name=\"level\" value=\"0\"/>";
    write_file(board.description, replaced(read_file(board.description), pin16, replaced(pin16, "\"0\"", "\"1\"")));
    EXPECT_EQ(prepare_says(board.description, board.state), "");
    EXPECT_EQ(calls_print(board, {read_label, "gpio_read 5", "gpio_read 16"}), "0x0 \"kept\"\n0x0 1\n0x0 1\n");
}

TEST(StateDir, ChangedDescriptionIsCheckedAgain) {
    const test_board board = new_board(scratch_file("board.xml", read_file(master())));
    write_file(board.description, "<board name=\"mpu_master\">\n<modul/></board>");
    EXPECT_EQ(prepare_says(board.description, board.state),
              board.description + ":2: <modul> stands here; here <module> is due");
}

TEST(StateDir, ForeignDirectoryIsRefused) {
    const std::string state = new_scratch_dir();
    write_file(state + "/letter.txt", "dear");
    const std::string refused =
        state + "/letter.txt: was not made by the simulator; choose an empty or a new directory with --state";
    EXPECT_EQ(prepare_says(master(), state), refused);
    EXPECT_EQ(prepare_says(master(), state, true), refused);
    EXPECT_EQ(names_in(state), std::vector<std::string>{"letter.txt"});
}

TEST(StateDir, ForeignStoreIsRefused) {
    for (const std::string &content : {std::string("text"), std::string(4 << 20, '\0')}) {
        const test_board board = new_board(master());
        write_file(board.state + "/store", content);
        EXPECT_EQ(prepare_says(board.description, board.state),
                  board.state + "/store: is no store of this simulator; make the chassis new with --reset, or choose "
                                "another directory with --state");
        EXPECT_EQ(prepare_says(board.description, board.state, true), "");
        EXPECT_EQ(calls_print(board, {read_label}), "0x0 \"[boa\"\n");
    }
}

TEST(StateDir, StoreOfAnotherLayoutIsNamed) {
    for (const auto &[version, age] : {std::pair<char, std::string>{'\x01', "an older"}, {'\x07', "a newer"}}) {
        const test_board board = new_board(master());
        std::string content = read_file(board.state + "/store");
        content[8] = version;
        write_file(board.state + "/store", content);
        // The older layout had nothing in its lock file.
        write_file(board.state + "/kestro_sim.lock", "");
        EXPECT_EQ(prepare_says(board.description, board.state),
                  board.state + "/store: was made by " + age + " kestro_sim (layout " + std::to_string(version) +
                      ", this one has 2); make the chassis new with --reset, or choose another directory with --state");
        EXPECT_EQ(prepare_says(board.description, board.state, true), "");
        EXPECT_EQ(calls_print(board, {read_label}), "0x0 \"[boa\"\n");
    }
}

TEST(StateDir, NoDirectory) {
    const std::string file = scratch_file("file", "x");
    EXPECT_EQ(prepare_says(master(), file),
              file + ": cannot be made (Not a directory); choose another directory with --state");
    EXPECT_EQ(prepare_says(master(), file + "/state"),
              file + "/state: cannot be made (Not a directory); choose another directory with --state");
}

TEST(StateDir, ClaimedDirectoryIsMade) {
    for (const std::string mark : {"", "claimed\n"}) {
        const test_board board{master(), new_scratch_dir()};
        write_file(board.state + "/kestro_sim.lock", mark);
        fs::create_directories(board.state + "/new/images");
        write_file(board.state + "/new/images/eeprom-self.bin", "half");
        EXPECT_EQ(prepare_says(board.description, board.state), "");
        EXPECT_EQ(calls_print(board, {read_label}), "0x0 \"[boa\"\n");
        EXPECT_TRUE(fs::exists(board.state + "/root/proc/interrupts"));
        EXPECT_FALSE(fs::exists(board.state + "/new"));
    }
}

TEST(StateDir, MissingPartsAreNamedAndNotMadeAnew) {
    for (const std::string part : {"store", "images", "images/eeprom-slot5.bin", "root", "log"}) {
        const test_board board = new_board(master());
        calls_print(board, {write_label});
        fs::remove_all(board.state + "/" + part);
        const std::string file = board.state + "/" + part;
        EXPECT_EQ(prepare_says(board.description, board.state),
                  file + ": is missing; make the chassis new with --reset");
        EXPECT_FALSE(fs::exists(file));
        EXPECT_EQ(prepare_says(board.description, board.state, true), "");
        EXPECT_EQ(calls_print(board, {read_label}), "0x0 \"[boa\"\n");
    }
}

TEST(StateDir, NothingButTheLockOfAWholeStateIsNotMadeAnew) {
    const test_board board = new_board(master());
    for (const std::string part : {"store", "images", "root", "log"}) {
        fs::remove_all(board.state + "/" + part);
    }
    EXPECT_EQ(prepare_says(board.description, board.state),
              board.state + "/store: is missing; make the chassis new with --reset");
    EXPECT_EQ(names_in(board.state), std::vector<std::string>{"kestro_sim.lock"});
}

TEST(StateDir, LinksAreNotFollowed) {
    for (const std::string part : {"kestro_sim.lock", "store", "images", "images/eeprom-self.bin", "root", "log"}) {
        SCOPED_TRACE(part);
        const test_board board = new_board(master());
        const std::string file = board.state + "/" + part;
        const std::string elsewhere = new_scratch_dir() + "/elsewhere";
        fs::rename(file, elsewhere);
        fs::create_symlink(elsewhere, file);
        EXPECT_EQ(prepare_says(board.description, board.state),
                  file + ": is a symbolic link, which would lead out of the state; put there what it leads to, or make "
                         "the chassis new with --reset");
    }
}

TEST(StateDir, DriversDoNotFollowLinksEither) {
    for (const std::string part : {"images", "images/eeprom-self.bin", "log", "log/1.log"}) {
        SCOPED_TRACE(part);
        const test_board board = new_board(master());
        calls_print(board, {"log 1 1 first"});
        const std::string file = board.state + "/" + part;
        const std::string elsewhere = new_scratch_dir() + "/elsewhere";
        fs::rename(file, elsewhere);
        fs::create_symlink(elsewhere, file);
        const bool is_image = part.starts_with("images");
        const process_result result = call_drivers(board, {is_image ? write_label : "log 1 1 x"});
        EXPECT_EQ(result.out, "0x8111010a\n");
        EXPECT_EQ(result.err, "kestro_sim: " + file +
                                  ": is a symbolic link, which would lead out of the state; put there what it leads "
                                  "to, or make the chassis new with --reset\n");
        if (part == "log/1.log") {
            EXPECT_EQ(read_file(elsewhere), "1 first\n");
        }
    }
}

TEST(StateDir, ResetTakesLinksAwayAndNotWhatTheyLeadTo) {
    const test_board board = new_board(master());
    const std::string elsewhere = new_scratch_dir() + "/elsewhere";
    fs::rename(board.state + "/images", elsewhere);
    fs::create_symlink(elsewhere, board.state + "/images");
    EXPECT_EQ(prepare_says(board.description, board.state, true), "");
    EXPECT_FALSE(fs::is_symlink(board.state + "/images"));
    EXPECT_TRUE(fs::exists(elsewhere + "/eeprom-self.bin"));
}

TEST(StateDir, HalfALineOfTheLogIsTakenBack) {
    const test_board board = new_board(master());
    write_file(board.state + "/log/1.log", "1 first\n1 seco");
    calls_print(board, {"log 1 2 third"});
    EXPECT_EQ(read_file(board.state + "/log/1.log"), "1 first\n2 third\n");
}

TEST(Environment, DriversWithoutBoardSayWhyOnce) {
    const test_board board = new_board(master());
    const std::vector<std::string> argv{build_dir() + "/tests/sim_calls", "mac_get_num" + self + "1 0", "gpio_read 5"};
    process_options options;
    options.environment = {"KESTRO_SIM_BOARD", "KESTRO_SIM_STATE=" + board.state};
    process_result result = run_process(argv, options);
    EXPECT_EQ(result.out, "0x8111010a\n0x8111010a\n");
    EXPECT_EQ(result.err, "kestro_sim: KESTRO_SIM_BOARD: is not set; start the program through kestro_sim\n");
    options.environment = {"KESTRO_SIM_BOARD=" + board.description, "KESTRO_SIM_STATE"};
    result = run_process(argv, options);
    EXPECT_EQ(result.out, "0x8111010a\n0x8111010a\n");
    EXPECT_EQ(result.err, "kestro_sim: KESTRO_SIM_STATE: is not set; start the program through kestro_sim\n");
}

TEST(Environment, StateThatIsNotMade) {
    const test_board board{master(), new_scratch_dir()};
    const process_result result = call_drivers(board, {"gpio_read 5"});
    EXPECT_EQ(result.out, "0x8111010a\n");
    EXPECT_EQ(result.err, "kestro_sim: " + board.state +
                              "/kestro_sim.lock: cannot be opened (No such file or directory); kestro_sim makes the "
                              "state directory\n");
}

TEST(Environment, StateOfAnotherBoard) {
    const test_board board{delivered_board("lpu"), new_board(master()).state};
    const process_result result = call_drivers(board, {"gpio_read 5"});
    EXPECT_EQ(result.out, "0x8111010a\n");
    EXPECT_EQ(result.err, "kestro_sim: " + board.state + "/store: was made for another board than " +
                              board.description + "; start through kestro_sim\n");
}

} // namespace kestro_tests
