// Reads STATE/store and the images beside it, and names what is wrong with them.
#include "sim/core/store_contents.h"

#include "sim/core/state_files.h"

#include <algorithm>
#include <cerrno>
#include <sys/stat.h>

namespace kestro_sim {

using namespace store_layout;

namespace {

constexpr const char *make_new = "make the chassis new with --reset";

// A state may lie where it can only be read: what does not write works there all the same.
bool forbids_writing(int reason) {
    return reason == EROFS || reason == EACCES || reason == EPERM;
}

void refuse_version(const std::filesystem::path &file, uint32_t found) {
    const char *age = found < version ? "an older" : "a newer";
    throw store_error(file.string() + ": was made by " + age + " kestro_sim (layout " + std::to_string(found) +
                      ", this one has " + std::to_string(version) + "); " + make_new +
                      ", or choose another directory with --state");
}

// The register of a cell that is damaged is named only when its name is not.
std::optional<std::string> key_of(const cell &read) {
    if (checksum(bytes_of(read.key)) != read.key_checksum) {
        return std::nullopt;
    }
    return std::string(name_in(read.key));
}

} // namespace

std::filesystem::path store_contents::image_file(size_t number) const {
    return state_dir / "images" / name_in(images[number].name);
}

void store_contents::open_store() {
    write_problem = 0;
    file = open_of_state(state_dir, "store", O_RDWR);
    if (!file && forbids_writing(errno)) {
        write_problem = errno;
        file = open_of_state(state_dir, "store", O_RDONLY);
    }
    if (!file && errno == ENOENT) {
        throw store_error(store_file().string() + ": is missing; " + make_new);
    }
    if (!file) {
        fail_on(store_file(), "read", errno);
    }
}

header store_contents::read_header(journal_head *mark) const {
    const std::string none =
        ": is no store of this simulator; " + std::string(make_new) + ", or choose another directory with --state";
    struct {
        header head;
        journal_head mark;
    } both{};
    static_assert(sizeof(both) == journal_at + sizeof(journal_head));
    const header &read = both.head;
    if (!read_at(file, &both, sizeof(both), 0) || read.magic != magic) {
        throw store_error(store_file().string() + none);
    }
    if (read.version != version) {
        refuse_version(store_file(), read.version);
    }
    if (checksum_of(read) != read.checksum) {
        throw store_error(store_file().string() + ": its first " + std::to_string(sizeof(read)) +
                              " bytes are damaged; " + make_new,
                          error::damaged);
    }
    if (mark != nullptr) {
        *mark = both.mark;
    }
    return read;
}

void store_contents::read_store(void *bytes, size_t size, uint64_t offset) const {
    if (!read_at(file, bytes, size, offset)) {
        if (errno == ENODATA) {
            throw store_error(store_file().string() + ": ends early; " + make_new, error::damaged);
        }
        fail_on(store_file(), "read", errno);
    }
}

void store_contents::require_writable() const {
    if (write_problem != 0) {
        fail_on(store_file(), "written", write_problem);
    }
}

void store_contents::write_store(const void *bytes, size_t size, uint64_t offset) const {
    require_writable();
    if (!write_at(file, bytes, size, offset)) {
        fail_on(store_file(), "written", errno);
    }
}

void store_contents::write_header(header changed) {
    changed.checksum = checksum_of(changed);
    write_store(&changed, sizeof(changed), 0);
    head = changed;
}

void store_contents::read_images() {
    images.resize(head.images);
    read_store(images.data(), images.size() * sizeof(image_entry), images_at);
    for (const image_entry &entry : images) {
        if (checksum_of(entry) != entry.checksum) {
            throw store_error(store_file().string() + ": its list of images is damaged; " + make_new, error::damaged);
        }
    }
}

void store_contents::read_cells() {
    std::vector<cell> read(head.cells_used);
    read_store(read.data(), read.size() * sizeof(cell), cells_at(head));
    cells.clear();
    nameless.clear();
    for (uint32_t index = 0; index < read.size(); ++index) {
        const bool is_damaged = checksum_of(read[index]) != read[index].checksum;
        if (auto key = key_of(read[index])) {
            cells.insert_or_assign(std::move(*key), known_cell{index, read[index].value, is_damaged});
        } else {
            nameless.push_back(index);
        }
    }
}

void store_contents::fail_on_register(std::string_view key) const {
    throw store_error(store_file().string() + ": register " + std::string(key) + " is damaged; " + make_new,
                      error::damaged);
}

void store_contents::fail_on_nameless() const {
    throw store_error(store_file().string() + ": the register at byte " +
                          std::to_string(cell_at(head, nameless.front())) + " is damaged, its name too; " + make_new,
                      error::damaged);
}

size_t store_contents::number_of(std::string_view image) const {
    const auto found = std::find_if(images.begin(), images.end(),
                                    [&](const image_entry &entry) { return name_in(entry.name) == image; });
    if (found == images.end()) {
        throw store_error((state_dir / "images" / image).string() + ": is no image of this state; " + make_new);
    }
    return static_cast<size_t>(found - images.begin());
}

open_file store_contents::open_image(size_t number, int flags) const {
    open_file opened = open_of_state(state_dir, std::filesystem::path("images") / name_in(images[number].name), flags);
    if (!opened && errno == ENOENT) {
        throw store_error(image_file(number).string() + ": is missing; " + make_new, error::damaged);
    }
    if (!opened) {
        fail_on(image_file(number), flags == O_RDONLY ? "read" : "written", errno);
    }
    return opened;
}

std::vector<uint32_t> store_contents::read_sums(size_t number, size_t first, size_t count) const {
    std::vector<uint32_t> sums(count);
    read_store(sums.data(), count * sizeof(uint32_t),
               sums_at(head) + (uint64_t{images[number].first_sum} + first) * sizeof(uint32_t));
    return sums;
}

size_t store_contents::block_length(size_t number, size_t block) const {
    return static_cast<size_t>(std::min<uint64_t>(block_size, images[number].size - uint64_t{block} * block_size));
}

std::vector<uint8_t> store_contents::read_blocks(size_t number, const open_file &image, size_t first,
                                                 size_t count) const {
    const std::vector<uint32_t> sums = read_sums(number, first, count);
    std::vector<uint8_t> bytes((count - 1) * block_size + block_length(number, first + count - 1));
    if (!read_at(image, bytes.data(), bytes.size(), uint64_t{first} * block_size)) {
        throw store_error(image_file(number).string() + ": ends early or cannot be read; " + make_new, error::damaged);
    }
    for (size_t i = 0; i < count; ++i) {
        const size_t length = block_length(number, first + i);
        if (checksum(std::span<const uint8_t>(bytes).subspan(i * block_size, length)) != sums[i]) {
            const size_t begin = (first + i) * block_size;
            throw store_error(image_file(number).string() + ": is damaged in bytes " + std::to_string(begin) + " to " +
                                  std::to_string(begin + length - 1) +
                                  "; --accept-images takes the images as they now are, --reset makes the chassis new",
                              error::damaged);
        }
    }
    return bytes;
}

const open_file &store_targets::of(uint32_t target) {
    if (target == 0) {
        return known_.file;
    }
    auto [place, is_new] = images_.try_emplace(target);
    if (is_new) {
        place->second = known_.open_image(target - 1, O_RDWR);
    }
    return place->second;
}

std::filesystem::path store_targets::name_of(uint32_t target) const {
    return target == 0 ? known_.store_file() : known_.image_file(target - 1);
}

} // namespace kestro_sim
