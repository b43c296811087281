#include "tests/selftest/faults.h"

#include <cerrno>
#include <cstddef>
#include <dirent.h>
#include <dlfcn.h>
#include <gtest/gtest.h>
#include <link.h>
#include <set>
#include <string>
#include <sys/types.h>
#include <unistd.h>

namespace kestro_tests {

system_faults &faults() {
    static system_faults set;
    return set;
}

namespace {

// Blocks from calloc that have not been freed.
std::set<void *> &live_blocks() {
    static std::set<void *> blocks;
    return blocks;
}

std::set<std::string> open_descriptors() {
    std::set<std::string> numbers;
    DIR *directory = opendir("/proc/self/fd");
    while (const dirent *entry = readdir(directory)) {
        numbers.insert(entry->d_name);
    }
    numbers.erase(std::to_string(dirfd(directory)));
    closedir(directory);
    return numbers;
}

int insert_name(dl_phdr_info *info, size_t, void *names) {
    static_cast<std::set<std::string> *>(names)->insert(info->dlpi_name);
    return 0;
}

std::set<std::string> loaded_objects() {
    std::set<std::string> names;
    dl_iterate_phdr(insert_name, &names);
    return names;
}

class leftovers : public testing::EmptyTestEventListener {
    void OnTestStart(const testing::TestInfo &) override {
        faults() = {};
        live_blocks().clear();
        descriptors_ = open_descriptors();
        objects_ = loaded_objects();
    }
    void OnTestEnd(const testing::TestInfo &) override {
        EXPECT_EQ(open_descriptors(), descriptors_) << "descriptors are left open";
        EXPECT_EQ(loaded_objects(), objects_) << "objects are left loaded";
        EXPECT_TRUE(live_blocks().empty()) << live_blocks().size() << " blocks are left allocated";
    }
    std::set<std::string> descriptors_;
    std::set<std::string> objects_;
};

[[maybe_unused]] const bool listening = [] {
    testing::UnitTest::GetInstance()->listeners().Append(new leftovers);
    return true;
}();

template <typename function> function next_of(const char *name) {
    return reinterpret_cast<function>(dlsym(RTLD_NEXT, name));
}

} // namespace

} // namespace kestro_tests

using kestro_tests::faults;
using kestro_tests::next_of;

// The linker hands the product's calls of calloc and free to these two; a sanitizer's own stay what they are.
extern "C" void *__real_calloc(size_t count, size_t size);
extern "C" void __real_free(void *block);

extern "C" void *__wrap_calloc(size_t count, size_t size) {
    if (faults().no_memory) {
        faults().no_memory = false;
        errno = ENOMEM;
        return nullptr;
    }
    void *block = __real_calloc(count, size);
    if (block != nullptr) {
        kestro_tests::live_blocks().insert(block);
    }
    return block;
}

extern "C" void __wrap_free(void *block) {
    kestro_tests::live_blocks().erase(block);
    __real_free(block);
}

extern "C" pid_t fork() noexcept {
    static const auto real = next_of<pid_t (*)()>("fork");
    if (faults().no_child) {
        errno = EAGAIN;
        return -1;
    }
    return real();
}

extern "C" pid_t waitpid(pid_t child, int *status, int options) {
    static const auto real = next_of<pid_t (*)(pid_t, int *, int)>("waitpid");
    if (faults().interrupted_waits > 0) {
        --faults().interrupted_waits;
        errno = EINTR;
        return -1;
    }
    return real(child, status, options);
}

extern "C" int timerfd_create(int clock, int flags) noexcept {
    static const auto real = next_of<int (*)(int, int)>("timerfd_create");
    if (faults().no_timer) {
        errno = EMFILE;
        return -1;
    }
    return real(clock, flags);
}

extern "C" off64_t lseek64(int descriptor, off64_t offset, int from) noexcept {
    static const auto real = next_of<off64_t (*)(int, off64_t, int)>("lseek64");
    const off64_t place = real(descriptor, offset, from);
    if (faults().file_shrinks && from == SEEK_END) {
        faults().file_shrinks = false;
        EXPECT_EQ(truncate(("/proc/self/fd/" + std::to_string(descriptor)).c_str(), static_cast<off_t>(place - 1)), 0);
    }
    return place;
}
