#include "tests/support/board_copy.h"

#include <gtest/gtest.h>

#include <filesystem>

#include "tests/support/process.h"

namespace fs = std::filesystem;
using namespace kestro_tests;

TEST(BoardCopy, BringsBackWhatWasChangedRemovedOrAdded) {
    const std::string directory = new_scratch_dir();
    fs::create_directory(directory + "/images");
    for (const char *name : {"/store", "/images/changed", "/images/removed", "/images/longer"}) {
        write_file(directory + name, "as it was");
    }
    const board_copy board(directory);
    write_file(directory + "/images/changed", "as it is!");
    write_file(directory + "/images/longer", "as it was and more");
    write_file(directory + "/images/added", "");
    fs::remove(directory + "/images/removed");
    EXPECT_EQ(board.restored(), directory);
    for (const char *name : {"/store", "/images/changed", "/images/removed", "/images/longer"}) {
        EXPECT_EQ(read_file(directory + name), "as it was") << name;
    }
    EXPECT_FALSE(fs::exists(directory + "/images/added"));
}
