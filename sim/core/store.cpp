// The store: made, opened, read, checked. How it is written is in store_change.cpp and store_journal.cpp.
#include "sim/core/store.h"

#include "sim/core/state_files.h"
#include "sim/core/store_contents.h"

#include <algorithm>
#include <cerrno>
#include <sys/random.h>
#include <sys/stat.h>

namespace kestro_sim {

using namespace store_layout;

namespace fs = std::filesystem;

namespace {

std::vector<uint8_t> content_of(const fs::path &state_dir, const fs::path &name, uint64_t size) {
    std::vector<uint8_t> content(static_cast<size_t>(size));
    const open_file opened = open_of_state(state_dir, name, O_RDONLY);
    if (!opened || !read_at(opened, content.data(), content.size(), 0)) {
        fail_on(state_dir / name, "read", errno);
    }
    return content;
}

// Most blocks of a new flash chip are like the one before.
std::vector<uint32_t> sums_over(std::span<const uint8_t> content) {
    std::vector<uint32_t> sums;
    std::span<const uint8_t> before;
    for (; !content.empty(); content = content.subspan(before.size())) {
        const auto block = content.first(std::min(content.size(), block_size));
        const bool is_same = std::equal(block.begin(), block.end(), before.begin(), before.end());
        sums.push_back(is_same ? sums.back() : checksum(block));
        before = block;
    }
    return sums;
}

std::vector<std::string> names_in(const fs::path &directory) {
    std::vector<std::string> names;
    for (const fs::directory_entry &entry : fs::directory_iterator(directory)) {
        names.push_back(entry.path().filename().string());
    }
    std::sort(names.begin(), names.end());
    return names;
}

image_entry entry_of(const std::string &name, uint64_t size, size_t first_sum) {
    image_entry entry{{}, size, static_cast<uint32_t>(first_sum), 0};
    if (name.size() > cell_key_max) {
        throw store_error(name + ": is too long for the name of an image; right are up to " +
                          std::to_string(cell_key_max) + " characters");
    }
    std::copy(name.begin(), name.end(), entry.name.begin());
    entry.checksum = checksum_of(entry);
    return entry;
}

header new_header(const store_identity &identity, size_t images, size_t sums) {
    header head{};
    head.magic = magic;
    head.version = version;
    if (getrandom(&head.generation, sizeof(head.generation), 0) != sizeof(head.generation)) {
        throw store_error(std::string("random numbers: cannot be had (") + std::strerror(errno) + "); try again");
    }
    head.fingerprint = identity.fingerprint;
    head.stamp = identity.stamp;
    head.images = static_cast<uint32_t>(images);
    head.sums = static_cast<uint32_t>(sums);
    std::copy_n(identity.board.begin(), std::min(identity.board.size(), board_name_max), head.board.begin());
    head.checksum = checksum_of(head);
    return head;
}

} // namespace

void store::create(const fs::path &state_dir, const store_identity &identity) {
    std::vector<image_entry> images;
    std::vector<uint32_t> sums;
    for (const std::string &name : names_in(state_dir / "images")) {
        const fs::path image = fs::path("images") / name;
        const auto content = content_of(state_dir, image, fs::file_size(state_dir / image));
        images.push_back(entry_of(name, content.size(), sums.size()));
        const std::vector<uint32_t> added = sums_over(content);
        sums.insert(sums.end(), added.begin(), added.end());
    }
    const header head = new_header(identity, images.size(), sums.size());
    // All of it is written, not left to be allocated later: a full disk is noticed now.
    std::vector<uint8_t> content(static_cast<size_t>(cell_at(head, cells_step)));
    std::memcpy(content.data(), &head, sizeof(head));
    std::copy_n(reinterpret_cast<const uint8_t *>(images.data()), images.size() * sizeof(image_entry),
                content.begin() + static_cast<ptrdiff_t>(images_at));
    std::copy_n(reinterpret_cast<const uint8_t *>(sums.data()), sums.size() * sizeof(uint32_t),
                content.begin() + static_cast<ptrdiff_t>(sums_at(head)));
    write_new_file(state_dir / "store", content);
}

store::store(const fs::path &state_dir) : known_(std::make_unique<store_contents>()) {
    known_->state_dir = state_dir;
    known_->open_store();
    known_->head = known_->read_header();
    known_->read_images();
    known_->read_cells();
    wake();
}

store::~store() = default;

store_identity store::identity() const {
    const header &head = known_->head;
    return {head.fingerprint, head.stamp, std::string(name_in(head.board))};
}

void store::set_stamp(uint64_t stamp) {
    // A state that may only be read is checked anew each time.
    if (known_->write_problem == 0) {
        header head = known_->head;
        head.stamp = stamp;
        known_->write_header(head);
    }
}

bool store::refresh() {
    known_->open_store();
    return wake();
}

// The file as it is now: others may have written, or been killed, since it was last looked at.
bool store::wake() {
    if (!known_->file) {
        known_->open_store();
    }
    journal_head mark{};
    header now = known_->read_header(&mark);
    if (now.generation != known_->head.generation) {
        return false;
    }
    if (mark.committed != 0) {
        recover();
        now = known_->read_header();
    }
    const bool is_known = mark.committed == 0 && now.changes == known_->head.changes;
    known_->head = now;
    if (!is_known) {
        known_->read_cells();
    }
    return true;
}

void store::rest() {
    known_->file = open_file();
}

bool store::is_retired() const {
    store_contents now;
    now.state_dir = known_->state_dir;
    now.open_store();
    return now.read_header().generation != known_->head.generation;
}

std::optional<uint64_t> store::get(std::string_view key) const {
    const auto found = known_->cells.find(key);
    if (found == known_->cells.end()) {
        // It may be the very one.
        if (!known_->nameless.empty()) {
            known_->fail_on_nameless();
        }
        return std::nullopt;
    }
    if (found->second.is_damaged) {
        known_->fail_on_register(key);
    }
    return found->second.value;
}

void store::check_registers() const {
    for (const auto &[key, cell] : known_->cells) {
        if (cell.is_damaged) {
            known_->fail_on_register(key);
        }
    }
    if (!known_->nameless.empty()) {
        known_->fail_on_nameless();
    }
}

std::vector<uint8_t> store::read(std::string_view image, uint32_t offset, size_t length) const {
    const size_t number = known_->number_of(image);
    if (uint64_t{offset} + length > known_->images[number].size) {
        throw store_error(known_->image_file(number).string() + ": ends before what is to be read; read within it",
                          error::out_of_range);
    }
    if (length == 0) {
        return {};
    }
    const size_t first = offset / block_size;
    const auto last = static_cast<size_t>((uint64_t{offset} + length - 1) / block_size);
    const auto blocks = known_->read_blocks(number, known_->open_image(number, O_RDONLY), first, last - first + 1);
    const auto begin = blocks.begin() + static_cast<ptrdiff_t>(offset - first * block_size);
    return {begin, begin + static_cast<ptrdiff_t>(length)};
}

size_t store::image_size(std::string_view image) const {
    return static_cast<size_t>(known_->images[known_->number_of(image)].size);
}

void store::check_images() const {
    for (size_t number = 0; number < known_->images.size(); ++number) {
        const fs::path file = known_->image_file(number);
        struct stat status {};
        if (lstat(file.c_str(), &status) != 0) {
            known_->open_image(number, O_RDONLY);
        }
        if (S_ISLNK(status.st_mode)) {
            fail_on_link(file);
        }
        const auto size = static_cast<uint64_t>(status.st_size);
        if (!S_ISREG(status.st_mode) || size != known_->images[number].size) {
            throw store_error(file.string() + ": is no file of " + std::to_string(known_->images[number].size) +
                                  " bytes; put one of that size there, or make the chassis new with --reset",
                              error::damaged);
        }
    }
}

void store::accept_images() {
    check_images();
    std::vector<uint32_t> sums;
    for (const image_entry &entry : known_->images) {
        const auto content = content_of(known_->state_dir, fs::path("images") / name_in(entry.name), entry.size);
        const std::vector<uint32_t> added = sums_over(content);
        sums.insert(sums.end(), added.begin(), added.end());
    }
    known_->write_store(sums.data(), sums.size() * sizeof(uint32_t), sums_at(known_->head));
}

} // namespace kestro_sim
