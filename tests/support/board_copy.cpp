#include "tests/support/board_copy.h"

#include <cstring>
#include <fcntl.h>
#include <filesystem>
#include <sys/mman.h>
#include <sys/stat.h>
#include <unistd.h>
#include <vector>

#include "tests/support/process.h"

namespace kestro_tests {

namespace {

namespace fs = std::filesystem;

std::vector<std::string> files_below(const std::string &directory) {
    std::vector<std::string> files;
    for (const fs::directory_entry &entry : fs::recursive_directory_iterator(directory)) {
        if (!entry.is_directory()) {
            files.push_back(entry.path().string());
        }
    }
    return files;
}

bool holds(const std::string &path, const std::string &content) {
    const int file = open(path.c_str(), O_RDONLY | O_CLOEXEC);
    struct stat status {};
    bool same = file >= 0 && fstat(file, &status) == 0 && static_cast<size_t>(status.st_size) == content.size();
    if (same && !content.empty()) {
        void *bytes = mmap(nullptr, content.size(), PROT_READ, MAP_SHARED, file, 0);
        same = bytes != MAP_FAILED && memcmp(bytes, content.data(), content.size()) == 0;
        munmap(bytes, content.size());
    }
    close(file);
    return same;
}

} // namespace

board_copy::board_copy(std::string directory) : directory_(std::move(directory)) {
    for (const std::string &path : files_below(directory_)) {
        files_[path] = read_file(path);
    }
}

const std::string &board_copy::restored() const {
    for (const std::string &path : files_below(directory_)) {
        if (!files_.contains(path)) {
            fs::remove(path);
        }
    }
    for (const auto &[path, content] : files_) {
        if (!holds(path, content)) {
            write_file(path, content);
        }
    }
    return directory_;
}

} // namespace kestro_tests
