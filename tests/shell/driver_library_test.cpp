// Libraries that are opened by name: what is printed when they or their operations cannot be had, and what is closed
// then. Each test has a copy of a library without hardware for itself, so none finds what another has loaded.
#include <gtest/gtest.h>

#include <cerrno>
#include <cstdio>
#include <cstring>
#include <dlfcn.h>
#include <filesystem>
#include <string>

#include "drv_inner_eth/drv_ieth.h"
#include "shell/driver_library.h"
#include "tests/support/capture.h"
#include "tests/support/process.h"

using namespace kestro_tests;

namespace {

std::string library_of_its_own() {
    const std::string file = new_scratch_dir() + "/libports.so";
    std::filesystem::copy_file(build_dir() + "/noop/libdrv_inner_eth.so", file);
    return file;
}

bool is_loaded(const std::string &file) {
    void *library = dlopen(file.c_str(), RTLD_NOW | RTLD_NOLOAD);
    if (library != nullptr) {
        dlclose(library);
    }
    return library != nullptr;
}

const std::string no_such_file = "/nowhere/libports.so";

struct open_reasons {
    std::string of_the_system;
    std::string of_the_loader;
};

// Loaders differ in whether errno tells of a file that cannot be opened, or still of what came before.
open_reasons reasons_not_to_open() {
    errno = EBUSY;
    EXPECT_EQ(dlopen(no_such_file.c_str(), RTLD_NOW), nullptr);
    const std::string of_the_system = strerror(errno);
    return {of_the_system, dlerror()};
}

// The loader's text about an operation that a library lacks.
std::string reason_not_to_find(void *library, const char *name) {
    EXPECT_EQ(dlsym(library, name), nullptr);
    return dlerror();
}

std::string printed_without_library(failure_line line) {
    return printed_by([&] {
        errno = EBUSY;
        EXPECT_EQ(open_library(no_such_file.c_str(), line), nullptr);
    });
}

struct lookup {
    std::string printed;
    std::string reason;
    bool loaded_behind_it;
};

lookup look_up_in_vain(failure_line line) {
    const std::string file = library_of_its_own();
    void *library = open_library(file.c_str(), line);
    lookup result;
    result.reason = reason_not_to_find(library, "drv_absent");
    result.printed = printed_by([&] {
        errno = EBUSY;
        EXPECT_EQ(find_symbol(library, "drv_absent", line), nullptr);
    });
    result.loaded_behind_it = is_loaded(file);
    return result;
}

} // namespace

TEST(DriverLibraryTest, OpensFindsAndCloses) {
    const std::string file = library_of_its_own();
    EXPECT_FALSE(is_loaded(file));
    EXPECT_EQ(printed_by([&] {
                  void *library = open_library(file.c_str(), failure_line::with_reasons);
                  ASSERT_NE(library, nullptr);
                  const auto get_link_status = find_operation<decltype(drv_ieth_get_link_status)>(
                      library, "drv_ieth_get_link_status", failure_line::with_reasons);
                  EXPECT_EQ(reinterpret_cast<void *>(get_link_status), dlsym(library, "drv_ieth_get_link_status"));
                  EXPECT_TRUE(is_loaded(file));
                  close_library(library);
              }),
              "");
    EXPECT_FALSE(is_loaded(file));
}

TEST(DriverLibraryTest, ALibraryThatCannotBeOpened) {
    const open_reasons known = reasons_not_to_open();
    const std::string reasons = known.of_the_system + " " + known.of_the_loader + "\n";
    EXPECT_EQ(printed_without_library(failure_line::brief), "dlopen /nowhere/libports.so fail\n");
    EXPECT_EQ(printed_without_library(failure_line::with_reasons),
              "dlopen /nowhere/libports.so fail, error " + reasons);
    EXPECT_EQ(printed_without_library(failure_line::with_reasons_close),
              "dlopen /nowhere/libports.so fail,error " + reasons);
}

// A lookup has no reason of the system's: whatever errno says is shown.
TEST(DriverLibraryTest, AnOperationThatTheLibraryLacksClosesIt) {
    const std::string system_text = strerror(EBUSY);
    const lookup brief = look_up_in_vain(failure_line::brief);
    EXPECT_EQ(brief.printed, "dlsym drv_absent fail\n");
    EXPECT_FALSE(brief.loaded_behind_it);
    const lookup with_reasons = look_up_in_vain(failure_line::with_reasons);
    EXPECT_EQ(with_reasons.printed, "dlsym drv_absent fail, error " + system_text + " " + with_reasons.reason + "\n");
    EXPECT_FALSE(with_reasons.loaded_behind_it);
    const lookup close = look_up_in_vain(failure_line::with_reasons_close);
    EXPECT_EQ(close.printed, "dlsym drv_absent fail,error " + system_text + " " + close.reason + "\n");
    EXPECT_FALSE(close.loaded_behind_it);
}

TEST(DriverLibraryTest, AHeldLibraryStaysLoadedBehindItsClose) {
    const std::string file = library_of_its_own();
    held_library held = {file.c_str(), nullptr};
    EXPECT_EQ(printed_by([&] {
                  EXPECT_EQ(open_held_library(held), 0);
                  EXPECT_NE(find_operation<decltype(drv_ieth_get_link_status)>(held, "drv_ieth_get_link_status"),
                            nullptr);
                  EXPECT_NE(held.handle, nullptr);
                  close_held_library(held);
                  EXPECT_EQ(held.handle, nullptr);
                  close_held_library(held);
                  EXPECT_EQ(held.handle, nullptr);
              }),
              "");
    EXPECT_TRUE(is_loaded(file));
}

TEST(DriverLibraryTest, AHeldLibraryThatCannotBeOpened) {
    held_library held = {no_such_file.c_str(), nullptr};
    const std::string reason = reasons_not_to_open().of_the_loader;
    EXPECT_EQ(printed_by([&] { EXPECT_EQ(open_held_library(held), -1); }),
              "dlopen /nowhere/libports.so fail " + reason + " \r\n");
    EXPECT_EQ(held.handle, nullptr);
}

TEST(DriverLibraryTest, AnOperationThatAHeldLibraryLacksClosesIt) {
    const std::string file = library_of_its_own();
    held_library held = {file.c_str(), nullptr};
    ASSERT_EQ(open_held_library(held), 0);
    char handle[16];
    snprintf(handle, sizeof(handle), "%x", static_cast<unsigned>(reinterpret_cast<uintptr_t>(held.handle)));
    EXPECT_EQ(printed_by([&] { EXPECT_EQ(find_symbol(held, "drv_absent"), nullptr); }),
              std::string("dlsym drv_absent fail, fd 0x") + handle + "\r\n");
    EXPECT_EQ(held.handle, nullptr);
}

// To the loader an empty handle is the whole program, which has this one.
TEST(DriverLibraryTest, NothingIsFoundInAHeldLibraryThatIsClosed) {
    ASSERT_NE(dlsym(RTLD_DEFAULT, "strerror"), nullptr);
    held_library held = {no_such_file.c_str(), nullptr};
    EXPECT_EQ(printed_by([&] { EXPECT_EQ(find_symbol(held, "strerror"), nullptr); }),
              "dlsym strerror fail, fd 0x0\r\n");
    EXPECT_EQ(held.handle, nullptr);
}
