// The image is mapped whole, once in a process. It was written whole when the state was made, and its length is looked
// at before it is mapped: no read of it can end in a signal.
#include "sim/devices/storage/high_memory.h"

#include "sim/core/catalogue.h"
#include "sim/core/eeprom.h"
#include "sim/core/state_files.h"
#include "sim/devices/bsp/processor_pins.h"

#include <bit>
#include <cerrno>
#include <sys/mman.h>
#include <sys/stat.h>

namespace kestro_sim {

namespace {

// Operations hold the lock of the state, so one thread at a time gets here.
struct mapped_image {
    void *bytes = nullptr;
    size_t size = 0;
    dev_t disk = 0;
    ino_t file = 0;
};

mapped_image mapped;

std::string memory_image(const std::string &place) {
    return image_name("himem", place);
}

// Where the kernel of the board shows it to every process, so that one trace is like another. Another place serves
// where this one is taken.
void *usual_place() {
    return std::bit_cast<void *>(static_cast<uintptr_t>(sizeof(void *) == 8 ? 0x200000000000 : 0x50000000));
}

void map_file(const open_file &file, const struct stat &status) {
    const auto size = static_cast<size_t>(status.st_size);
    void *const bytes = mmap(usual_place(), size, PROT_READ, MAP_SHARED, file.get(), 0);
    refuse_if(bytes == MAP_FAILED, error::out_of_memory);
    mapped = {bytes, size, status.st_dev, status.st_ino};
}

} // namespace

part_bytes bytes_of_part(board &b, const std::string &place, uint32_t type) {
    const auto part = b.find_at<memory_part::family>(place, type);
    const auto memory = b.find_at<reserved_memory::family>(place);
    const uint64_t start = b.get_wide(memory, reserved_memory::start);
    const uint64_t size = b.image_size(memory_image(place));
    const uint64_t begin = b.get_wide(part, memory_part::start);
    const uint32_t length = b.get(part, memory_part::length);
    refuse_if(begin < start || begin - start > size || length > size - (begin - start), error::out_of_range);
    return {memory_image(place), static_cast<uint32_t>(begin - start), length};
}

const uint8_t *map_reserved_memory(board &b, const std::string &place) {
    refuse_if(b.all_at<reserved_memory::family>(place).empty(), error::not_supported);
    const std::string image = memory_image(place);
    const std::filesystem::path name = std::filesystem::path("images") / image;
    const open_file file = open_of_state(b.state_dir(), name, O_RDONLY);
    struct stat status {};
    if (!file || fstat(file.get(), &status) != 0) {
        fail_on(b.state_dir() / name, "mapped", errno);
    }
    if (!S_ISREG(status.st_mode) || static_cast<uint64_t>(status.st_size) != b.image_size(image)) {
        throw store_error((b.state_dir() / name).string() + ": has another length than when it was made; make a new "
                                                            "state with --reset",
                          error::damaged);
    }
    // A forked child may run on another state than its parent.
    if (mapped.bytes == nullptr || mapped.disk != status.st_dev || mapped.file != status.st_ino) {
        unmap_reserved_memory();
        map_file(file, status);
    }
    return static_cast<const uint8_t *>(mapped.bytes);
}

void unmap_reserved_memory() {
    if (mapped.bytes != nullptr) {
        munmap(mapped.bytes, mapped.size);
        mapped = {};
    }
}

device_list devices_of_high_memory() {
    static constexpr const device_family *families[]{&memory_part::family};
    return {families, {}};
}

} // namespace kestro_sim
