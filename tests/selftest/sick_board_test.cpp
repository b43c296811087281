// The sick boards of the delivered chassis: each is the healthy board with one fault, and exactly the lines that its
// file of lines names differ from the healthy board's self-test.
#include <gtest/gtest.h>

#include <filesystem>
#include <map>
#include <pugixml.hpp>
#include <sstream>

#include "tests/selftest/board_run.h"
#include "tests/support/command.h"
#include "tests/support/thoroughness.h"

using namespace kestro_tests;

namespace {

using texts = std::vector<std::string>;

const std::string folder = source_dir() + "/sim/chassis/sick/";

texts sick_boards() {
    texts names;
    for (const auto &entry : std::filesystem::directory_iterator(folder)) {
        if (entry.path().extension() == ".xml") {
            names.push_back(entry.path().stem());
        }
    }
    std::sort(names.begin(), names.end());
    return names;
}

texts boards_tried_here() {
    texts names = sick_boards();
    std::erase_if(names, [](const std::string &name) { return !is_tried_here(name); });
    return names;
}

// The seat of the slot that a sick board sits in.
std::string seat_of(const std::string &name) {
    pugi::xml_document board;
    board.load_file((folder + name + ".xml").c_str());
    const std::string slot = board.document_element().attribute("slot").value();
    return slot == "9" ? "mpu_master" : slot == "10" ? "mpu_slave" : "lpu";
}

texts lines_of(const std::string &output) {
    texts lines;
    std::istringstream all(output);
    for (std::string line; std::getline(all, line);) {
        line.erase(std::remove(line.begin(), line.end(), '\r'), line.end());
        lines.push_back(line);
    }
    return lines;
}

const texts &healthy_lines(const std::string &seat) {
    static std::map<std::string, texts> known;
    texts &lines = known[seat];
    if (lines.empty()) {
        lines = lines_of(run_board({"--board", seat, "--state", new_scratch_dir()}).out);
    }
    return lines;
}

// How many lines the two have in common from each pair of places on.
std::vector<std::vector<size_t>> common_lines(const texts &left, const texts &right) {
    std::vector<std::vector<size_t>> common(left.size() + 1, std::vector<size_t>(right.size() + 1, 0));
    for (size_t i = left.size(); i-- > 0;) {
        for (size_t j = right.size(); j-- > 0;) {
            common[i][j] =
                left[i] == right[j] ? common[i + 1][j + 1] + 1 : std::max(common[i + 1][j], common[i][j + 1]);
        }
    }
    return common;
}

std::string difference(const texts &left, const texts &right) {
    const auto common = common_lines(left, right);
    std::string told;
    size_t i = 0;
    size_t j = 0;
    while (i < left.size() || j < right.size()) {
        if (i < left.size() && j < right.size() && left[i] == right[j]) {
            ++i;
            ++j;
        } else if (i < left.size() && (j == right.size() || common[i + 1][j] >= common[i][j + 1])) {
            told += "-" + left[i++] + "\n";
        } else {
            told += "+" + right[j++] + "\n";
        }
    }
    return told;
}

class SickBoard : public testing::TestWithParam<std::string> {};

} // namespace

TEST_P(SickBoard, ShowsItsFaultAndNothingElse) {
    const process_result run = run_board({"--board", folder + GetParam() + ".xml", "--state", new_scratch_dir()});
    EXPECT_EQ(difference(healthy_lines(seat_of(GetParam())), lines_of(run.out)),
              read_file(folder + GetParam() + ".lines"));
    EXPECT_EQ(run.err, "");
    EXPECT_EQ(run.status, 0);
}

INSTANTIATE_TEST_SUITE_P(Delivered, SickBoard, testing::ValuesIn(boards_tried_here()),
                         [](const auto &named) { return named.param; });

TEST(SickBoards, AreTwentyFiveAtLeastAndNoneIsWithoutLines) {
    EXPECT_GE(sick_boards().size(), 25U);
    for (const std::string &name : sick_boards()) {
        EXPECT_NE(read_file(folder + name + ".lines"), "") << name;
    }
}

TEST(SickBoards, ADifferenceIsTold) {
    EXPECT_EQ(difference({"a", "b", "c", "d"}, {"a", "x", "c", "d", "e"}), "-b\n+x\n+e\n");
    EXPECT_EQ(difference({"a", "b"}, {"a", "b"}), "");
}
