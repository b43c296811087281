// Registration, lookup, usage and dispatch.
#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "shell/command_table.h"
#include "shell/dispatch.h"
#include "tests/support/capture.h"

using namespace kestro_tests;

namespace {

int last_count = -1;
std::vector<std::string> last_words;

int note_words(int count, char **args) {
    last_count = count;
    last_words.assign(args, args + count);
    return 0;
}

int fail_with_three(int, char **) {
    return 3;
}

int print_second(int, char **) {
    puts("second");
    return 0;
}

// Words that a handler may write to, as main's are.
struct words {
    explicit words(std::vector<std::string> texts) : storage(std::move(texts)) {
        for (std::string &text : storage) {
            pointers.push_back(text.data());
        }
        pointers.push_back(nullptr);
    }
    int count() const {
        return static_cast<int>(storage.size());
    }
    std::vector<std::string> storage;
    std::vector<char *> pointers;
};

class TableTest : public testing::Test {
  protected:
    void TearDown() override {
        free_command_table(table);
    }
    command_table table = new_command_table();
};

constexpr const char *usage_head = "\nUsage: kestro_test [OPTION]\t\nList the functionalities for kestro_test \n";

} // namespace

TEST_F(TableTest, HoldsHundredAndTwentyEightCommands) {
    for (int i = 0; i < 128; ++i) {
        ASSERT_EQ(register_command(("c" + std::to_string(i)).c_str(), note_words, "help", table), 0);
    }
    std::string printed = printed_by([&] { EXPECT_EQ(register_command("c128", note_words, "help", table), -1); });
    EXPECT_EQ(printed, "kestro_test: cmd full\n");
    EXPECT_EQ(find_command("c128", table), nullptr);
    ASSERT_NE(find_command("c127", table), nullptr);
    EXPECT_EQ(find_command("c0", table)->handler, note_words);
}

TEST_F(TableTest, RefusesMissingParameters) {
    const std::string refused = "kestro_test: illegal param\n";
    EXPECT_EQ(printed_by([&] { EXPECT_EQ(register_command(nullptr, note_words, "h", table), -1); }), refused);
    EXPECT_EQ(printed_by([&] { EXPECT_EQ(register_command("a", nullptr, "h", table), -1); }), refused);
    EXPECT_EQ(printed_by([&] { EXPECT_EQ(register_command("a", note_words, nullptr, table), -1); }), refused);
    EXPECT_EQ(table[0].handler, nullptr);
}

TEST_F(TableTest, EarlierRegistrationShadowsTheLater) {
    EXPECT_EQ(register_command("twice", note_words, "first", table), 0);
    EXPECT_EQ(register_command("twice", print_second, "second", table), 0);
    EXPECT_EQ(find_command("twice", table)->handler, note_words);
    EXPECT_STREQ(find_command("twice", table)->help, "first");
}

TEST_F(TableTest, LookupComparesEveryByte) {
    register_command("mac_test", note_words, "h", table);
    EXPECT_EQ(find_command("Mac_test", table), nullptr);
    EXPECT_EQ(find_command("mac_tes", table), nullptr);
    EXPECT_EQ(find_command("mac_test ", table), nullptr);
    EXPECT_EQ(find_command("", table), nullptr);
}

TEST_F(TableTest, KeepsCopiesOfNameAndHelp) {
    char name[] = "name";
    char help[] = "help";
    register_command(name, note_words, help, table);
    name[0] = help[0] = 'X';
    ASSERT_NE(find_command("name", table), nullptr);
    EXPECT_STREQ(find_command("name", table)->help, "help");
}

TEST_F(TableTest, LookupStopsAtTheTablesOwnCapacity) {
    const command_table small = new_command_table(16);
    EXPECT_EQ(find_command("x", small), nullptr);
    for (int i = 0; i < 16; ++i) {
        register_command("x", note_words, "h", small);
    }
    EXPECT_EQ(printed_by([&] { EXPECT_EQ(register_command("y", note_words, "h", small), -1); }),
              "kestro_test: cmd full\n");
    EXPECT_EQ(find_command("y", small), nullptr);
    free_command_table(small);
}

TEST_F(TableTest, UsageEchoesTheWordsAndListsTheHelpTexts) {
    register_command("one", note_words, "one  inst_id", table);
    register_command("two", note_words, "two", table);
    words given({"-h", "more"});
    EXPECT_EQ(printed_by([&] { print_usage(given.count(), given.pointers.data(), table); }),
              std::string("\n-h more ") + usage_head + " one  inst_id\n two\n");
}

TEST_F(TableTest, UsageGoesByTheHelpTextNotByTheHandler) {
    register_command("one", note_words, "one help", table);
    table[0].handler = nullptr;
    EXPECT_EQ(printed_by([&] { print_usage(0, nullptr, table); }), std::string("\n") + usage_head + " one help\n");
}

TEST_F(TableTest, DispatchWithoutWordsPrintsUsageAndSucceeds) {
    for (const int count : {0, -1}) {
        EXPECT_EQ(printed_by([&] { EXPECT_EQ(dispatch(count, nullptr, table, timing_on), 0); }),
                  std::string("kestro_test: too few args!\n\n") + usage_head);
    }
}

TEST_F(TableTest, DispatchOfAnUnknownWordPrintsUsageAndSucceeds) {
    words given({"what", "ever"});
    EXPECT_EQ(printed_by([&] { EXPECT_EQ(dispatch(given.count(), given.pointers.data(), table, timing_on), 0); }),
              std::string("kestro_test: option what not recognised.\n\nwhat ever ") + usage_head);
}

TEST_F(TableTest, HelpWordsPrintUsageOnly) {
    for (const char *help : {"-?", "-h", "-help", "--help"}) {
        words given({help});
        EXPECT_EQ(printed_by([&] { EXPECT_EQ(dispatch(1, given.pointers.data(), table, timing_on), 0); }),
                  std::string("\n") + help + " " + usage_head);
    }
}

TEST_F(TableTest, ARegisteredHelpWordRuns) {
    register_command("-h", print_second, "h", table);
    words given({"-h"});
    EXPECT_EQ(printed_by([&] { EXPECT_EQ(dispatch(1, given.pointers.data(), table, timing_off), 0); }), "second\n");
}

TEST_F(TableTest, DispatchPassesTheWordsBehindTheName) {
    register_command("cmd", note_words, "h", table);
    words given({"cmd", "1", "two"});
    EXPECT_EQ(printed_by([&] { EXPECT_EQ(dispatch(3, given.pointers.data(), table, timing_off), 0); }), "");
    EXPECT_EQ(last_count, 2);
    EXPECT_EQ(last_words, (std::vector<std::string>{"1", "two"}));
}

TEST_F(TableTest, FailureIsReportedBehindTheTimingLines) {
    register_command("cmd", fail_with_three, "h", table);
    words given({"cmd"});
    EXPECT_EQ(printed_by([&] { EXPECT_EQ(dispatch(1, given.pointers.data(), table, timing_off), -1); }),
              "kestro_test operate cmd fail! \n");
    const std::string timed = printed_by([&] { EXPECT_EQ(dispatch(1, given.pointers.data(), table, timing_on), -1); });
    EXPECT_EQ(timed.substr(0, 22), "cmd_exec used second:0");
    EXPECT_EQ(timed.substr(timed.size() - 31), "kestro_test operate cmd fail! \n");
    EXPECT_NE(timed.find("\r\ncmd_exec used millisecond:"), std::string::npos);
}

TEST_F(TableTest, OnlyTimingFlagOneTimes) {
    register_command("cmd", note_words, "h", table);
    words given({"cmd"});
    EXPECT_EQ(printed_by([&] { dispatch(1, given.pointers.data(), table, 2); }), "");
}

TEST(RunModuleTest, DispatchesItsRows) {
    constexpr std::array rows = {command_row{"second", print_second, "help of second"}};
    words given({"second"});
    const std::string printed = printed_by([&] { EXPECT_EQ(run_module(rows, 1, given.pointers.data()), 0); });
    EXPECT_EQ(printed.substr(0, 7), "second\n");
    EXPECT_EQ(printed_by([&] { EXPECT_EQ(run_module(rows, 0, given.pointers.data(), timing_off), 0); }),
              std::string("kestro_test: too few args!\n\n") + usage_head + " help of second\n");
}

TEST(RowsTest, AreCheckedAtCompileTime) {
    static_assert(rows_are_sound(std::array{command_row{"a", note_words, "a"}, command_row{"b", note_words, "b"}}));
    static_assert(!rows_are_sound(std::array{command_row{"a", note_words, "a"}, command_row{"a", note_words, "b"}}));
    static_assert(!rows_are_sound(std::array{command_row{"a", nullptr, "a"}}));
    static_assert(!rows_are_sound(std::array{command_row{"a", note_words, nullptr}}));
}
