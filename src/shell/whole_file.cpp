#include "shell/whole_file.h"

#include <algorithm>
#include <cerrno>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

namespace {

// Far more than any logic chip takes, and less than the kernel gives in one read. A file with a hole may be of any
// length; it would fill the memory with zeros only to be refused.
constexpr off64_t length_max = off64_t{1} << 30U;

// As wide as the line about it shows; what is longer shows as the greatest.
int shown(off64_t length) {
    return static_cast<int>(std::min<off64_t>(length, INT32_MAX));
}

// -1 for what has no length. Each file system makes one of its own up for a directory.
off64_t length_of(int descriptor) {
    struct stat64 status {};
    if (fstat64(descriptor, &status) == 0 && S_ISDIR(status.st_mode)) {
        errno = EISDIR;
        return -1;
    }
    return lseek64(descriptor, 0, SEEK_END);
}

uint8_t *new_area(off64_t length) {
    if (length < 0) {
        return nullptr;
    }
    if (length > length_max) {
        errno = ENOMEM;
        return nullptr;
    }
    // An area of no bytes might be null, and a driver takes null for none.
    return static_cast<uint8_t *>(calloc(static_cast<size_t>(std::max<off64_t>(length, 1)), 1));
}

int read_open_file(const char *path, int descriptor, whole_file *file) {
    const off64_t length = length_of(descriptor);
    uint8_t *bytes = new_area(length);
    if (bytes == nullptr) {
        printf("malloc len:%d failure:%s\r\n", shown(length), strerror(errno));
        return -1;
    }
    lseek64(descriptor, 0, SEEK_SET);
    // A file that became shorter meanwhile fails without a reason of the system's.
    errno = 0;
    const ssize_t got = read(descriptor, bytes, static_cast<size_t>(length));
    if (got != static_cast<ssize_t>(length)) {
        printf("read file[%s] file_len:%d read_len:%ld failure:%s\r\n", path, shown(length), static_cast<long>(got),
               strerror(errno));
        free(bytes);
        return -1;
    }
    *file = {bytes, static_cast<uint32_t>(length)};
    return 0;
}

} // namespace

int read_whole_file(const char *path, whole_file *file) {
    const int descriptor = open64(path, O_RDONLY | O_CLOEXEC | O_NONBLOCK);
    if (descriptor < 0) {
        printf("open file[%s] failure:%s\r\n", path, strerror(errno));
        return -1;
    }
    const int result = read_open_file(path, descriptor, file);
    close(descriptor);
    return result;
}
