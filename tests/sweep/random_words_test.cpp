// Command lines of every length with words of every kind: whatever is typed, the program ends by itself.
#include <gtest/gtest.h>

#include <iterator>
#include <random>

#include "tests/support/thoroughness.h"
#include "tests/sweep/sweep.h"

using namespace kestro_tests;

namespace {

constexpr int slices = 10;

class RandomWords : public testing::TestWithParam<int> {};

const std::vector<std::string> &word_pool() {
    static const std::vector<std::string> pool = {
        "0",
        "1",
        "2",
        "3",
        "5",
        "0x10",
        "010",
        "16",
        "255",
        "256",
        "257",
        "1023",
        "1024",
        "1025",
        "0xffffffff",
        "4294967296",
        "-1",
        "-5",
        "0x",
        "0xff000005",
        "board",
        "",
        " ",
        "%s%n%d%x",
        "-h",
        "--",
        "-?",
        "0x01ffff",
        "1.5",
        "\xff\xfe",
        "\r\n",
        std::string(300, 'w'),
        "0xff000000",
        "18446744073709551615",
        "99999999999999999999999",
    };
    return pool;
}

bool has_number_above(const std::vector<std::string> &line, size_t word, unsigned long limit) {
    return line.size() > word && std::strtoul(line[word].c_str(), nullptr, 0) > limit;
}

// The fill loop of barcode_write never ends for a length above 256; that has a test of its own. Tests in rounds make as
// many as the words say.
struct test_in_rounds {
    const char *sub_command;
    size_t rounds; // the word, counted from the module's
};

constexpr test_in_rounds tests_in_rounds[]{
    {"fan_speed_test", 3},       {"fan_multi_init_test", 3}, {"fan_multi_deinit_test", 3},
    {"fan_init_deinit_test", 3}, {"i2c_rw_test", 6}, // with a leading instance the next one
    {"i2c_rw_test", 7},          {"spi_qoram_read_test", 5}, {"spi_pic_cpld_test", 4},
};

bool never_ends(const std::vector<std::string> &line) {
    if (waits_for_operator(line[0], line[1])) {
        return true;
    }
    if (line[1] == "intr_test_register_unregister") {
        return line.size() == 4;
    }
    if (line[1] == "barcode_write") {
        return has_number_above(line, 4, 256);
    }
    return std::any_of(std::begin(tests_in_rounds), std::end(tests_in_rounds), [&](const test_in_rounds &test) {
        return line[1] == test.sub_command && has_number_above(line, test.rounds, 1000);
    });
}

std::vector<std::string> random_line(std::mt19937 &random, const std::vector<sub_command> &commands) {
    const auto below = [&](size_t limit) { return std::uniform_int_distribution<size_t>(0, limit - 1)(random); };
    const sub_command &command = commands[below(commands.size())];
    std::vector<std::string> line = {command.module, command.name};
    if (below(20) == 0) {
        line[below(2)] = word_pool()[below(word_pool().size())];
    }
    for (size_t words = below(12); words > 0; --words) {
        line.push_back(word_pool()[below(word_pool().size())]);
    }
    return line;
}

// They find faults of the program, which are the same in every build: only the desk's own is tried.
int random_lines() {
    if (getenv("KESTRO_BUILD_UNDER_TEST") != nullptr) {
        return 0;
    }
    return everything_is_tried() ? 10000 : 3000;
}

} // namespace

TEST_P(RandomWords, EndByThemselves) {
    const std::vector<sub_command> &commands = all_sub_commands();
    std::mt19937 random(static_cast<unsigned>(GetParam()));
    for (int i = 0; i < random_lines() / slices;) {
        const std::vector<std::string> line = random_line(random, commands);
        if (!never_ends(line)) {
            expect_clean_end(run_with({}, line), joined(line));
            ++i;
        }
    }
}

INSTANTIATE_TEST_SUITE_P(Slices, RandomWords, testing::Range(0, slices));
