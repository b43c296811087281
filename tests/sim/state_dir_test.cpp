// State directories: making, keeping, refusing and resetting them, and drivers without one.
#include "tests/sim/support.h"

#include <filesystem>
#include <gtest/gtest.h>
#include <sys/stat.h>

namespace kestro_tests {

namespace fs = std::filesystem;

namespace {

const std::string write_label = "drv_elabel_write(len=1200, area=\"kept\")";
const std::string read_label = "drv_elabel_read(len=4)";
const std::string kept = "0x0 area=" + bytes("kept") + "\n";
const std::string as_delivered = "0x0 area=" + bytes("[boa") + "\n";

std::string master() {
    return "mpu_master";
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
    answers(board, {write_label});
    EXPECT_EQ(prepare_says(board.word, board.state), "");
    EXPECT_EQ(answers(board, {read_label}), kept);
}

TEST(StateDir, ResetMakesTheBoardNew) {
    const test_board board = new_board(master());
    answers(board,
            {write_label, "nb_gpio_write(pin=5, level=1)", "drv_log_record(log_id=1, level=1, text=\"x\\r\\n\")"});
    write_file(board.state + "/root/slot9/proc/interrupts", "changed");
    EXPECT_EQ(prepare_says(board.word, board.state, true), "");
    EXPECT_EQ(answers(board, {read_label, "nb_gpio_read(pin=5)"}), as_delivered + "0x0 level=0\n");
    EXPECT_FALSE(fs::exists(board.state + "/log/slot9/1.log"));
    EXPECT_NE(read_file(board.state + "/root/slot9/proc/interrupts"), "changed");
}

TEST(StateDir, HoldsTheBoardsFiles) {
    const test_board board = new_board(master());
    EXPECT_EQ(names_in(board.state),
              (std::vector<std::string>{"chassis", "images", "kestro_sim.lock", "log", "root", "store"}));
    EXPECT_EQ(names_in(board.state + "/root"), (std::vector<std::string>{"slot10", "slot7", "slot9"}));
    EXPECT_EQ(names_in(board.state + "/log"), (std::vector<std::string>{"slot10", "slot7", "slot9"}));
    EXPECT_EQ(read_file(board.state + "/root/slot9/proc/interrupts"),
              read_file(source_dir() + "/sim/chassis/boards/mpu.root/proc/interrupts"));
    // What differs from board to board is put in.
    const std::string label = read_file(board.state + "/root/slot10/opt/hostx/home/elabel.txt");
    EXPECT_TRUE(label.starts_with("[board]\nkind=main processing unit\nitem=KT-MPU-1\nserial=2511040081\n")) << label;
    struct stat script {};
    ASSERT_EQ(stat((board.state + "/root/slot9/etc/install_itp.sh").c_str(), &script), 0);
    EXPECT_NE(script.st_mode & S_IXUSR, 0U);
}

TEST(StateDir, ImagesOfAllInstancesAndStorage) {
    const std::string storage = "<module name=\"sim_storage\"><node name=\"image\"><entry name=\"nvram0\"><element "
                                "name=\"size\" value=\"512\"/><element name=\"fill\" value=\"0x5A\"/></entry></node>"
                                "</module></board>";
    const test_board board = new_changed("lpu", "</board>", storage);
    EXPECT_EQ(names_in(board.state + "/images"), (std::vector<std::string>{"eeprom-slot10.bin",
                                                                           "eeprom-slot2.bin",
                                                                           "eeprom-slot3.bin",
                                                                           "eeprom-slot4.bin",
                                                                           "eeprom-slot5.bin",
                                                                           "eeprom-slot7-card1.bin",
                                                                           "eeprom-slot7-card2.bin",
                                                                           "eeprom-slot7.bin",
                                                                           "eeprom-slot9.bin",
                                                                           "environment-slot10.bin",
                                                                           "environment-slot9.bin",
                                                                           "fan_ability_15-chassis.bin",
                                                                           "fan_ability_16-chassis.bin",
                                                                           "fan_expanded_label_15-chassis.bin",
                                                                           "fan_label_15-chassis.bin",
                                                                           "fan_label_16-chassis.bin",
                                                                           "flash-slot10.bin",
                                                                           "flash-slot7.bin",
                                                                           "flash-slot9.bin",
                                                                           "himem-slot10.bin",
                                                                           "himem-slot7.bin",
                                                                           "himem-slot9.bin",
                                                                           "nand-slot10.bin",
                                                                           "nand-slot9.bin",
                                                                           "nvram0-slot7.bin",
                                                                           "nvram_0-slot10.bin",
                                                                           "nvram_0-slot9.bin",
                                                                           "nvram_1-slot10.bin",
                                                                           "nvram_1-slot9.bin"}));
    EXPECT_EQ(read_file(board.state + "/images/nvram0-slot7.bin"), std::string(512, 'Z'));
}

TEST(StateDir, AnotherChassisIsRefused) {
    const test_board board = new_board(master());
    const std::string other = changed_chassis("mpu_master", "<chassis name=\"kestro\"", "<chassis name=\"other\"");
    EXPECT_EQ(prepare_says(other, board.state),
              board.state + "/store: holds chassis 'kestro', not 'other'; choose another directory with --state, or "
                            "make the chassis new with --reset");
    EXPECT_EQ(prepare_says(other, board.state, true), "");
    EXPECT_EQ(prepare_says(other, board.state), "");
}

TEST(StateDir, AnotherLayoutIsRefused) {
    const test_board board = new_board(master());
    const std::string refused = board.state +
                                "/store: was made for other boards or cards or another EEPROM layout of chassis "
                                "'kestro'; choose another directory with --state, or make the chassis new with --reset";
    EXPECT_EQ(prepare_says(changed_chassis("mpu_master", "<element name=\"size\" value=\"5120\"/>",
                                           "<element name=\"size\" value=\"4096\"/>"),
                           board.state),
              refused);
    EXPECT_EQ(prepare_says(changed_chassis("mpu_master", "<slot number=\"6\" type=\"7\"/>",
                                           "<slot number=\"6\" type=\"7\" board=\"card_kv\" mac_base=\"1\"/>"),
                           board.state),
              refused);
}

TEST(StateDir, OtherNumbersOfDevicesKeepTheState) {
    test_board board = new_board(master());
    EXPECT_EQ(answers(board, {write_label, "nb_gpio_write(pin=5, level=1)"}), "0x0\n0x0\n");
    const test_board sick = new_altered("mpu_master", {{"slot9/sim_gpio/pin/16/level", "1"}});
    EXPECT_EQ(prepare_says(sick.word, board.state), "");
    board.description = board.state + "/chassis/" + fs::path(sick.description).filename().string();
    EXPECT_EQ(answers(board, {read_label, "nb_gpio_read(pin=5)", "nb_gpio_read(pin=16)"}),
              kept + "0x0 level=1\n0x0 level=1\n");
}

TEST(StateDir, ChangedDescriptionIsCheckedAgain) {
    const test_board board = new_changed("mpu_master", "name=\"smi_dev\"", "name=\"smi_dev\"");
    write_file(changed_file, "<board name=\"mpu\">\n<modul/></board>");
    EXPECT_EQ(prepare_says(board.word, board.state), changed_file + ":2: <modul> stands here; here <module> is due");
}

TEST(StateDir, SeatsShareOneState) {
    const test_board board = new_board(master());
    EXPECT_EQ(prepare_says("mpu_slave", board.state), "");
    EXPECT_EQ(prepare_says("lpu", board.state), "");
    // The merged chassis, what it was made of, and which libraries its boards lack.
    EXPECT_EQ(names_in(board.state + "/chassis").size(), 3U);
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
        EXPECT_EQ(prepare_says(board.word, board.state),
                  board.state + "/store: is no store of this simulator; make the chassis new with --reset, or choose "
                                "another directory with --state");
        EXPECT_EQ(prepare_says(board.word, board.state, true), "");
        EXPECT_EQ(answers(board, {read_label}), as_delivered);
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
        EXPECT_EQ(prepare_says(board.word, board.state),
                  board.state + "/store: was made by " + age + " kestro_sim (layout " + std::to_string(version) +
                      ", this one has 2); make the chassis new with --reset, or choose another directory with --state");
        EXPECT_EQ(prepare_says(board.word, board.state, true), "");
        EXPECT_EQ(answers(board, {read_label}), as_delivered);
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
        const test_board board = board_to_make(master(), new_scratch_dir());
        write_file(board.state + "/kestro_sim.lock", mark);
        fs::create_directories(board.state + "/new/images");
        write_file(board.state + "/new/images/eeprom-slot9.bin", "half");
        EXPECT_EQ(prepare_says(board.word, board.state), "");
        EXPECT_EQ(answers(board, {read_label}), as_delivered);
        EXPECT_TRUE(fs::exists(board.state + "/root/slot9/proc/interrupts"));
        EXPECT_FALSE(fs::exists(board.state + "/new"));
    }
}

TEST(StateDir, MissingPartsAreNamedAndNotMadeAnew) {
    for (const std::string part : {"store", "images", "images/eeprom-slot5.bin", "root", "log"}) {
        const test_board board = new_board(master());
        answers(board, {write_label});
        fs::remove_all(board.state + "/" + part);
        const std::string file = board.state + "/" + part;
        EXPECT_EQ(prepare_says(board.word, board.state), file + ": is missing; make the chassis new with --reset");
        EXPECT_FALSE(fs::exists(file));
        EXPECT_EQ(prepare_says(board.word, board.state, true), "");
        EXPECT_EQ(answers(board, {read_label}), as_delivered);
    }
}

TEST(StateDir, NothingButTheLockOfAWholeStateIsNotMadeAnew) {
    const test_board board = new_board(master());
    for (const std::string part : {"store", "images", "root", "log"}) {
        fs::remove_all(board.state + "/" + part);
    }
    EXPECT_EQ(prepare_says(board.word, board.state),
              board.state + "/store: is missing; make the chassis new with --reset");
    EXPECT_EQ(names_in(board.state), (std::vector<std::string>{"chassis", "kestro_sim.lock"}));
}

TEST(StateDir, LinksAreNotFollowed) {
    for (const std::string part : {"kestro_sim.lock", "store", "images", "images/eeprom-slot9.bin", "root", "log"}) {
        SCOPED_TRACE(part);
        const test_board board = new_board(master());
        const std::string file = board.state + "/" + part;
        const std::string elsewhere = new_scratch_dir() + "/elsewhere";
        fs::rename(file, elsewhere);
        fs::create_symlink(elsewhere, file);
        EXPECT_EQ(prepare_says(board.word, board.state),
                  file + ": is a symbolic link, which would lead out of the state; put there what it leads to, or make "
                         "the chassis new with --reset");
    }
}

TEST(StateDir, DriversDoNotFollowLinksEither) {
    for (const std::string part : {"images", "images/eeprom-slot9.bin", "log", "log/slot9/1.log"}) {
        SCOPED_TRACE(part);
        const test_board board = new_board(master());
        answers(board, {"drv_log_record(log_id=1, level=1, text=\"first\\r\\n\")"});
        const std::string file = board.state + "/" + part;
        const std::string elsewhere = new_scratch_dir() + "/elsewhere";
        fs::rename(file, elsewhere);
        fs::create_symlink(elsewhere, file);
        const bool is_image = part.starts_with("images");
        const process_result result =
            call_drivers(board, {is_image ? write_label : "drv_log_record(log_id=1, level=1, text=\"x\\r\\n\")"});
        EXPECT_EQ(result.out, "0x8111010a\n");
        EXPECT_EQ(result.err, "kestro_sim: " + file +
                                  ": is a symbolic link, which would lead out of the state; put there what it leads "
                                  "to, or make the chassis new with --reset\n");
        if (part == "log/slot9/1.log") {
            EXPECT_EQ(read_file(elsewhere), "1 first\n");
        }
    }
}

TEST(StateDir, ResetTakesLinksAwayAndNotWhatTheyLeadTo) {
    const test_board board = new_board(master());
    const std::string elsewhere = new_scratch_dir() + "/elsewhere";
    fs::rename(board.state + "/images", elsewhere);
    fs::create_symlink(elsewhere, board.state + "/images");
    EXPECT_EQ(prepare_says(board.word, board.state, true), "");
    EXPECT_FALSE(fs::is_symlink(board.state + "/images"));
    EXPECT_TRUE(fs::exists(elsewhere + "/eeprom-slot9.bin"));
}

TEST(StateDir, HalfALineOfTheLogIsTakenBack) {
    const test_board board = new_board(master());
    write_file(board.state + "/log/slot9/1.log", "1 first\n1 seco");
    answers(board, {"drv_log_record(log_id=1, level=2, text=\"third\\r\\n\")"});
    EXPECT_EQ(read_file(board.state + "/log/slot9/1.log"), "1 first\n2 third\n");
}

TEST(Environment, DriversWithoutBoardSayWhyOnce) {
    const test_board board = new_board(master());
    const std::vector<std::string> lines{"drv_mac_get_num(type_id=1)", "nb_gpio_read(pin=5)"};
    process_result result =
        call_drivers(lines, {"KESTRO_SIM_BOARD", "KESTRO_SIM_SEAT=slot9", "KESTRO_SIM_STATE=" + board.state});
    EXPECT_EQ(result.out, "0x8111010a\n0x8111010a\n");
    EXPECT_EQ(result.err, "kestro_sim: KESTRO_SIM_BOARD: is not set; start the program through kestro_sim\n");
    result = call_drivers(lines, {"KESTRO_SIM_BOARD=" + board.description, "KESTRO_SIM_STATE"});
    EXPECT_EQ(result.out, "0x8111010a\n0x8111010a\n");
    EXPECT_EQ(result.err, "kestro_sim: KESTRO_SIM_STATE: is not set; start the program through kestro_sim\n");
}

TEST(Environment, StateThatIsNotMade) {
    const test_board board{master(), new_scratch_dir(), "none", "slot9"};
    const process_result result = call_drivers(board, {"nb_gpio_read(pin=5)"});
    EXPECT_EQ(result.out, "0x8111010a\n");
    EXPECT_EQ(result.err, "kestro_sim: " + board.state +
                              "/kestro_sim.lock: cannot be opened (No such file or directory); kestro_sim makes the "
                              "state directory\n");
}

TEST(Environment, StateOfAnotherChassis) {
    const std::string other = changed_chassis("mpu_master", "<chassis name=\"kestro\"", "<chassis name=\"other\"");
    const test_board board{other, new_board(master()).state, new_board(other).description, "slot9"};
    const process_result result = call_drivers(board, {"nb_gpio_read(pin=5)"});
    EXPECT_EQ(result.out, "0x8111010a\n");
    EXPECT_EQ(result.err, "kestro_sim: " + board.state + "/store: was made for another chassis than " +
                              board.description + "; start through kestro_sim\n");
}

} // namespace kestro_tests
