// The memory-mapped store. All processes of a desk share it, 32-bit ones as well as 64-bit ones: fixed widths only.
#include "sim/core/store.h"

#include "sim/core/open_file.h"

#include <algorithm>
#include <array>
#include <atomic>
#include <cerrno>
#include <cstring>
#include <fcntl.h>
#include <sys/mman.h>
#include <sys/stat.h>
#include <unistd.h>

namespace kestro_sim {

namespace {

constexpr std::array<char, 8> store_magic{'K', 'S', 'I', 'M', 'S', 'T', 'O', 'R'};
constexpr uint32_t store_version = 1;
constexpr size_t cell_count = 8192;
// The table is searched by hashing with open addressing: it is never filled to the brim.
constexpr size_t cell_limit = cell_count - cell_count / 8;
constexpr size_t board_name_max = 63;

struct header {
    std::array<char, 8> magic;
    uint32_t version;
    uint32_t retired;
    uint64_t fingerprint;
    uint64_t stamp;
    uint32_t cells_used;
    uint32_t reserved;
    std::array<char, board_name_max + 1> board;
};

struct journal_area {
    uint32_t committed;
    uint32_t length;
    std::array<uint8_t, journal_capacity> bytes;
};

struct cell {
    uint64_t value;
    uint32_t used;
    uint32_t reserved;
    std::array<char, cell_key_max + 1> key;
};

static_assert(sizeof(header) == 104);
static_assert(sizeof(journal_area) == journal_capacity + 8);
static_assert(sizeof(cell) == 128);

enum journal_what : uint32_t { put_register = 1, write_bytes = 2 };

// Followed by length bytes, filled up to a multiple of eight.
struct journal_item {
    uint32_t what;
    uint32_t offset;
    uint32_t length;
    uint32_t name_length;
    std::array<char, cell_key_max + 1> name;
};
static_assert(sizeof(journal_item) == 128);

constexpr size_t round_up(size_t length) {
    return (length + 7) / 8 * 8;
}

// One store that is seen whole or not at all, and not before what was stored ahead of it.
template <typename Word> void publish(Word &place, Word value) {
    std::atomic_ref<Word>(place).store(value, std::memory_order_seq_cst);
}

template <typename Word> Word seen(const Word &place) {
    return std::atomic_ref<Word>(const_cast<Word &>(place)).load(std::memory_order_seq_cst);
}

static_assert(std::atomic_ref<uint64_t>::is_always_lock_free, "a register is one word to the processor");

uint64_t hash_of(std::string_view key) {
    uint64_t hash = 0xCBF29CE484222325U;
    for (const char c : key) {
        hash = (hash ^ static_cast<unsigned char>(c)) * 0x100000001B3U;
    }
    return hash ^ hash >> 29;
}

std::string reason() {
    return std::strerror(errno);
}

} // namespace

struct store::layout {
    header head;
    journal_area journal;
    std::array<cell, cell_count> cells;
};

void change::put(std::string_view key, uint64_t value) {
    std::array<uint8_t, sizeof(value)> bytes{};
    std::memcpy(bytes.data(), &value, sizeof(value));
    append(put_register, key, 0, bytes);
    ++cells_;
}

void change::write(std::string_view image, uint32_t offset, std::span<const uint8_t> bytes) {
    append(write_bytes, image, offset, bytes);
}

void change::append(uint32_t what, std::string_view name, uint32_t offset, std::span<const uint8_t> bytes) {
    journal_item item{what, offset, static_cast<uint32_t>(bytes.size()), static_cast<uint32_t>(name.size()), {}};
    const size_t begin = journal_.size();
    const size_t end = begin + sizeof(item) + round_up(bytes.size());
    if (name.size() > cell_key_max || end > journal_capacity) {
        throw std::length_error("change does not fit the journal: " + std::string(name));
    }
    std::copy(name.begin(), name.end(), item.name.begin());
    journal_.resize(end);
    std::memcpy(journal_.data() + begin, &item, sizeof(item));
    std::copy(bytes.begin(), bytes.end(), journal_.begin() + static_cast<ptrdiff_t>(begin + sizeof(item)));
}

size_t largest_write() {
    return journal_capacity - sizeof(journal_item);
}

void store::create(const std::filesystem::path &file, const store_identity &identity) {
    const open_file made(open(file.c_str(), O_RDWR | O_CREAT | O_TRUNC | O_CLOEXEC, 0644));
    header head{store_magic, store_version, 0, identity.fingerprint, identity.stamp, 0, 0, {}};
    std::copy_n(identity.board.begin(), std::min(identity.board.size(), board_name_max), head.board.begin());
    if (!made || ftruncate(made.get(), static_cast<off_t>(sizeof(layout))) != 0 ||
        pwrite(made.get(), &head, sizeof(head), 0) != static_cast<ssize_t>(sizeof(head))) {
        throw store_error(file.string() + ": cannot be written (" + reason() +
                          "); make room or choose another state directory");
    }
}

store::store(const std::filesystem::path &state_dir) : state_dir_(state_dir) {
    const std::filesystem::path file = state_dir / "store";
    const open_file opened(open(file.c_str(), O_RDWR | O_CLOEXEC));
    if (!opened) {
        throw store_error(file.string() + ": cannot be opened (" + reason() + "); kestro_sim makes it");
    }
    struct stat status {};
    header head{};
    if (fstat(opened.get(), &status) != 0 || status.st_size != static_cast<off_t>(sizeof(layout)) ||
        pread(opened.get(), &head, sizeof(head), 0) != static_cast<ssize_t>(sizeof(head)) ||
        head.magic != store_magic || head.version != store_version) {
        throw store_error(file.string() + ": is no store of this simulator; make the board new with --reset, or "
                                          "choose another directory with --state");
    }
    void *const map = mmap(nullptr, sizeof(layout), PROT_READ | PROT_WRITE, MAP_SHARED, opened.get(), 0);
    if (map == MAP_FAILED) {
        throw store_error(file.string() + ": cannot be mapped (" + reason() + "); choose another state directory");
    }
    map_ = static_cast<layout *>(map);
    recover();
}

store::~store() {
    munmap(map_, sizeof(layout));
}

store_identity store::identity() const {
    const header &head = map_->head;
    return {head.fingerprint, head.stamp, std::string(head.board.data(), strnlen(head.board.data(), board_name_max))};
}

void store::set_stamp(uint64_t stamp) {
    publish(map_->head.stamp, stamp);
}

bool store::is_retired() const {
    return seen(map_->head.retired) != 0;
}

void store::retire() {
    publish(map_->head.retired, uint32_t{1});
}

// The cell of that key, or the free one where it would be put.
size_t store::slot_of(std::string_view key) const {
    size_t slot = static_cast<size_t>(hash_of(key) % cell_count);
    for (size_t tries = 0; tries < cell_count; ++tries) {
        const cell &candidate = map_->cells[slot];
        if (seen(candidate.used) == 0 ||
            key == std::string_view(candidate.key.data(), strnlen(candidate.key.data(), cell_key_max))) {
            return slot;
        }
        slot = (slot + 1) % cell_count;
    }
    throw std::length_error("the table of registers is full");
}

std::optional<uint64_t> store::get(std::string_view key) const {
    const cell &found = map_->cells[slot_of(key)];
    return seen(found.used) != 0 ? std::optional<uint64_t>(seen(found.value)) : std::nullopt;
}

void store::put_cell(std::string_view key, uint64_t value) {
    cell &place = map_->cells[slot_of(key)];
    publish(place.value, value);
    if (seen(place.used) == 0) {
        place.key = {};
        std::copy(key.begin(), key.end(), place.key.begin());
        publish(place.used, uint32_t{1});
        publish(map_->head.cells_used, map_->head.cells_used + 1);
    }
}

size_t store::image_size(std::string_view image) const {
    const std::filesystem::path file = state_dir_ / "images" / image;
    std::error_code problem;
    const auto size = std::filesystem::file_size(file, problem);
    if (problem) {
        throw store_error(file.string() + ": cannot be read (" + problem.message() +
                          "); make the board new with --reset");
    }
    return static_cast<size_t>(size);
}

std::vector<uint8_t> store::read(std::string_view image, uint32_t offset, size_t length) const {
    const std::filesystem::path file = state_dir_ / "images" / image;
    const open_file opened(open(file.c_str(), O_RDONLY | O_CLOEXEC));
    std::vector<uint8_t> bytes(length);
    if (!opened || pread(opened.get(), bytes.data(), length, offset) != static_cast<ssize_t>(length)) {
        throw store_error(file.string() + ": ends early or cannot be read; make the board new with --reset");
    }
    return bytes;
}

void store::write_image(std::string_view image, uint32_t offset, std::span<const uint8_t> bytes) const {
    const std::filesystem::path file = state_dir_ / "images" / image;
    const open_file opened(open(file.c_str(), O_WRONLY | O_CLOEXEC));
    if (!opened || pwrite(opened.get(), bytes.data(), bytes.size(), offset) != static_cast<ssize_t>(bytes.size())) {
        throw store_error(file.string() + ": cannot be written (" + reason() + "); make room or use --reset");
    }
}

bool store::commit(const change &writes) {
    if (map_->head.cells_used + writes.cells() > cell_limit) {
        return false;
    }
    recover();
    record(writes);
    recover();
    return true;
}

void store::record(const change &writes) {
    journal_area &journal = map_->journal;
    std::copy(writes.journal().begin(), writes.journal().end(), journal.bytes.begin());
    publish(journal.length, static_cast<uint32_t>(writes.journal().size()));
    publish(journal.committed, uint32_t{1});
}

void store::recover() {
    journal_area &journal = map_->journal;
    if (seen(journal.committed) != 0) {
        apply(std::span<const uint8_t>(journal.bytes).first(std::min<size_t>(journal.length, journal_capacity)));
        publish(journal.committed, uint32_t{0});
    }
}

void store::apply(std::span<const uint8_t> journal) {
    while (journal.size() >= sizeof(journal_item)) {
        journal_item item{};
        std::memcpy(&item, journal.data(), sizeof(item));
        journal = journal.subspan(sizeof(item));
        const std::string_view name(item.name.data(), std::min<size_t>(item.name_length, cell_key_max));
        const std::span<const uint8_t> bytes = journal.first(std::min<size_t>(item.length, journal.size()));
        if (item.what == put_register && bytes.size() == sizeof(uint64_t)) {
            uint64_t value = 0;
            std::memcpy(&value, bytes.data(), sizeof(value));
            put_cell(name, value);
        } else if (item.what == write_bytes) {
            write_image(name, item.offset, bytes);
        }
        journal = journal.subspan(std::min(round_up(item.length), journal.size()));
    }
}

} // namespace kestro_sim
