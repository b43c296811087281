// Every operation that a header of a simulated family declares is exported by its library.
#include "tests/support/process.h"

#include <dlfcn.h>
#include <filesystem>
#include <gtest/gtest.h>
#include <sstream>

namespace kestro_tests {

namespace {

std::vector<std::string> operations_of(const std::string &header) {
    constexpr std::string_view start = "uint32_t ";
    std::istringstream lines(read_file(header));
    std::vector<std::string> names;
    for (std::string line; std::getline(lines, line);) {
        if (line.starts_with(start)) {
            names.push_back(line.substr(start.size(), line.find('(') - start.size()));
        }
    }
    return names;
}

void expect_exported(const std::string &library, const std::string &header) {
    void *const opened = dlopen((build_dir() + "/sim/" + library).c_str(), RTLD_NOW | RTLD_LOCAL);
    ASSERT_NE(opened, nullptr) << dlerror();
    const std::vector<std::string> names = operations_of(source_dir() + "/include/" + header);
    EXPECT_FALSE(names.empty()) << header;
    for (const std::string &name : names) {
        EXPECT_NE(dlsym(opened, name.c_str()), nullptr) << name;
    }
    dlclose(opened);
}

} // namespace

TEST(Exports, EveryOperationOfASimulatedFamily) {
    expect_exported("libnb_bsp.so", "nb_bsp.h");
    expect_exported("libnb_ctl.so", "board_xml.h");
    size_t families = 0;
    for (const auto &entry : std::filesystem::directory_iterator(source_dir() + "/sim/drv")) {
        const std::string name = entry.path().filename().string();
        if (name.starts_with("drv_") && name.ends_with(".cpp")) {
            expect_exported("libdrv_basic.so", entry.path().stem().string() + ".h");
            ++families;
        }
    }
    EXPECT_GE(families, 6U);
}

} // namespace kestro_tests
