// Every operation that a header of a simulated family declares is exported by its library.
#include "tests/support/process.h"

#include <dlfcn.h>
#include <filesystem>
#include <gtest/gtest.h>
#include <regex>
#include <sstream>

namespace kestro_tests {

namespace {

std::vector<std::string> operations_of(const std::string &header) {
    static const std::regex start("^(?:u?int[0-9]+_t|void) (\\w+)\\(");
    std::istringstream lines(read_file(header));
    std::vector<std::string> names;
    std::smatch found;
    for (std::string line; std::getline(lines, line);) {
        if (std::regex_search(line, found, start)) {
            names.push_back(found[1]);
        }
    }
    return names;
}

// A library that boards may lack lies in a folder of its own.
std::string file_of(const std::string &library) {
    const std::string own_folder = build_dir() + "/sim/opened/" + library;
    const bool is_opened = std::filesystem::exists(own_folder);
    return (is_opened ? own_folder : build_dir() + "/sim") + "/lib" + library + ".so";
}

void expect_exported(const std::string &library, const std::string &header) {
    void *const opened = dlopen(file_of(library).c_str(), RTLD_NOW | RTLD_LOCAL);
    ASSERT_NE(opened, nullptr) << dlerror();
    const std::vector<std::string> names = operations_of(header);
    EXPECT_FALSE(names.empty()) << header;
    for (const std::string &name : names) {
        EXPECT_NE(dlsym(opened, name.c_str()), nullptr) << name;
    }
    dlclose(opened);
}

} // namespace

TEST(Exports, EveryOperationOfEveryHeader) {
    size_t headers = 0;
    std::istringstream libraries(DRIVER_LIBRARIES);
    for (std::string library; std::getline(libraries, library, ',');) {
        const std::string folder = source_dir() + "/include/" + library;
        for (const auto &entry : std::filesystem::recursive_directory_iterator(folder)) {
            if (entry.path().extension() == ".h") {
                expect_exported(library, entry.path().string());
                ++headers;
            }
        }
    }
    EXPECT_GE(headers, 17U);
}

} // namespace kestro_tests
