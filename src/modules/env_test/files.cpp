// read_file, write_file, write_mtd: bytes of files and partitions by offset, as the stores keep them.
//
// A file is opened without waiting: of a pipe that nobody writes to nothing is read, it has no offsets anyhow. Offsets
// have 64 bits on the 32-bit board too.
#include <algorithm>
#include <cerrno>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <fcntl.h>
#include <unistd.h>

#include "drv_basic/storage/drv_flash.h"
#include "modules/env_test/handlers.h"
#include "modules/env_test/hex_dump.h"
#include "shell/console.h"
#include "shell/words.h"

namespace {

constexpr int words_needed = 3;
constexpr int flags_always = O_NONBLOCK | O_CLOEXEC;

int report_invalid_words() {
    printf("invalid para\n");
    return -1;
}

int report_unopened(const char *where, const char *path, int file) {
    printf("[%s]open file fail, file-name:%s, fd 0x%08x, error %s.\n", where, path, static_cast<unsigned>(file),
           strerror(errno));
    return -1;
}

// Behind the end of the file the area stays as it is, also where the file becomes shorter meanwhile. The kernel takes
// no more than half of the address space at once.
bool read_at(int file, uint64_t offset, uint8_t *data, uint32_t length) {
    constexpr uint32_t piece_max = 1U << 30U;
    uint32_t done = 0;
    do {
        const uint32_t piece = std::min(length - done, piece_max);
        const ssize_t got = pread64(file, data + done, piece, static_cast<off64_t>(offset + done));
        if (got < 0) {
            return false;
        }
        if (got == 0) {
            break;
        }
        done += static_cast<uint32_t>(got);
    } while (done < length);
    return true;
}

int env_file_read(const char *path, uint64_t offset, uint8_t *data, uint32_t length) {
    const int file = open64(path, O_RDONLY | flags_always);
    if (file < 0) {
        return report_unopened("env_file_read", path, file);
    }
    int ret = 0;
    if (!read_at(file, offset, data, length)) {
        printf("[%s]read file fail, errno %s\n", "env_file_read", strerror(errno));
        ret = -1;
    }
    close(file);
    return ret;
}

int env_file_write(const char *path, uint64_t offset, uint8_t byte) {
    const int file = open64(path, O_WRONLY | flags_always);
    if (file < 0) {
        return report_unopened("env_file_write", path, file);
    }
    int ret = 0;
    if (pwrite64(file, &byte, sizeof(byte), static_cast<off64_t>(offset)) != sizeof(byte)) {
        printf("[%s]write file fail, errno=%d(%s)\n", "env_file_write", errno, strerror(errno));
        ret = -1;
    }
    close(file);
    return ret;
}

void report_target(const char *kind, const char *name, uint64_t offset) {
    printf("%s_name=%s\n", kind, name);
    printf("offset=0x%llx\n", static_cast<unsigned long long>(offset));
}

int report_written(uint32_t ret) {
    if (ret != 0) {
        printf("fail, ret=0x%x\n\n", ret);
        return -1;
    }
    printf("success\n\n");
    return 0;
}

// The drivers of flash count in 32 bits: an offset beyond them would be cut to another one.
uint32_t write_mtd_byte(const char *name, uint64_t offset, uint8_t byte) {
    if (offset > UINT32_MAX) {
        return UINT32_MAX;
    }
    return drv_flash_mtd_write(name, static_cast<uint32_t>(offset), &byte, sizeof(byte));
}

} // namespace

namespace env_commands {

int read_file(int count, char **args) {
    if (count != words_needed) {
        return report_invalid_words();
    }
    const uint64_t offset = word_to_u64(args[1]);
    const uint32_t length = word_to_u32(args[2]);
    report_target("file", args[0], offset);
    printf("len=%u\n\n", length);
    char *data = new_text_area(length);
    if (data == nullptr) {
        return -1;
    }
    const int ret = env_file_read(args[0], offset, reinterpret_cast<uint8_t *>(data), length);
    if (ret == 0) {
        print_hex_dump(offset, reinterpret_cast<const uint8_t *>(data), length);
        printf("\n");
    }
    free(data);
    return ret;
}

int write_file(int count, char **args) {
    if (count != words_needed) {
        return report_invalid_words();
    }
    const uint64_t offset = word_to_u64(args[1]);
    const auto byte = static_cast<uint8_t>(word_to_u32(args[2]));
    report_target("file", args[0], offset);
    printf("data=0x%x\n\n", byte);
    return report_written(static_cast<uint32_t>(env_file_write(args[0], offset, byte)));
}

int write_mtd(int count, char **args) {
    if (count != words_needed) {
        return report_invalid_words();
    }
    const uint64_t offset = word_to_u64(args[1]);
    const auto byte = static_cast<uint8_t>(word_to_u32(args[2]));
    report_target("mtd", args[0], offset);
    printf("data=0x%x\n\n", byte);
    return report_written(write_mtd_byte(args[0], offset, byte));
}

} // namespace env_commands
