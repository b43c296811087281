#include "tests/support/cached.h"

#include <fcntl.h>
#include <filesystem>
#include <stdexcept>
#include <sys/file.h>
#include <unistd.h>

#include "tests/support/process.h"

namespace kestro_tests {

namespace {

namespace fs = std::filesystem;

// Given back when the descriptor is closed, and by a program that dies.
class file_lock {
  public:
    explicit file_lock(const std::string &path) : file_(open(path.c_str(), O_RDWR | O_CREAT | O_CLOEXEC, 0666)) {
        if (file_ < 0 || flock(file_, LOCK_EX) != 0) {
            throw std::runtime_error(path + ": cannot be locked");
        }
    }
    file_lock(const file_lock &) = delete;
    file_lock &operator=(const file_lock &) = delete;
    ~file_lock() {
        close(file_);
    }

  private:
    int file_;
};

bool is_newer(const std::string &list, const std::string &program) {
    std::error_code none;
    const auto made = fs::last_write_time(list, none);
    return !none && made > fs::last_write_time(program);
}

} // namespace

std::string cached(const std::string &name, const std::string &program, const std::function<std::string()> &make) {
    const std::string list = build_dir() + "/tests/" + name;
    const file_lock lock(list + ".lock");
    if (is_newer(list, program)) {
        return read_file(list);
    }
    const std::string content = make();
    write_file(list + ".new", content);
    fs::rename(list + ".new", list);
    return content;
}

} // namespace kestro_tests
