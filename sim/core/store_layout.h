// How the file STATE/store is laid out. Processes of the desk and of the board's 32-bit processor share it: widths are
// fixed, and every record lies within a page of the file, so that a write of one is seen whole or not at all, also when
// its writer is killed.
//
//   header | journal: head, bytes | images: name, size, place of their checksums | checksums | registers, in the order
//   in which they were first written
//
// The file grows by whole steps of registers, written before one of them is needed: room that a register has, it keeps.
#pragma once

#include "sim/core/checksum.h"
#include "sim/core/store.h"

#include <array>
#include <cstring>

namespace kestro_sim::store_layout {

inline constexpr std::array<char, 8> magic{'K', 'S', 'I', 'M', 'S', 'T', 'O', 'R'};
inline constexpr uint32_t version = 2;
inline constexpr uint32_t cells_max = 8192;
inline constexpr uint32_t cells_step = 512;
inline constexpr size_t board_name_max = 63;

// Images carry a checksum for each block of that size: what a write of a label has to be counted anew for.
inline constexpr size_t block_size = 1024;

// A change has more bytes in the journal than are counted for it: checksums and the header come along.
inline constexpr size_t journal_room = journal_capacity + size_t{16} * 1024;

struct header {
    std::array<char, 8> magic;
    uint32_t version;
    uint32_t checksum;   // of the header with 0 in this place
    uint64_t generation; // tells this store from the next one in its place
    uint64_t fingerprint;
    uint64_t stamp;
    uint64_t changes; // made so far: a process whose number it is knows all registers
    uint32_t cells_used;
    uint32_t images;
    uint32_t sums;
    uint32_t reserved;
    std::array<char, board_name_max + 1> board;
};

struct journal_head {
    uint32_t committed;
    uint32_t length;
    uint32_t checksum; // of the bytes
    uint32_t reserved;
};

// A write into the store (target 0) or into an image (its number and 1); its bytes follow.
struct journal_item {
    uint32_t target;
    uint32_t length;
    uint64_t offset;
};

struct image_entry {
    std::array<char, cell_key_max + 1> name;
    uint64_t size;
    uint32_t first_sum;
    uint32_t checksum; // of the entry with 0 in this place
};

struct cell {
    uint64_t value;
    uint32_t checksum;     // of value and key
    uint32_t key_checksum; // of the key alone: while it holds, it is known which register is damaged
    std::array<char, cell_key_max + 1> key;
};

static_assert(sizeof(header) == 128);
static_assert(sizeof(journal_head) == 16);
static_assert(sizeof(journal_item) == 16);
static_assert(sizeof(image_entry) == 128);
static_assert(sizeof(cell) == 128);

inline constexpr uint64_t journal_at = sizeof(header);
inline constexpr uint64_t journal_bytes_at = 256;
inline constexpr uint64_t images_at = journal_bytes_at + journal_room;
static_assert(images_at % sizeof(image_entry) == 0);

inline uint64_t sums_at(const header &head) {
    return images_at + uint64_t{head.images} * sizeof(image_entry);
}

inline uint64_t cells_at(const header &head) {
    const uint64_t end = sums_at(head) + uint64_t{head.sums} * sizeof(uint32_t);
    return (end + sizeof(cell) - 1) / sizeof(cell) * sizeof(cell);
}

inline uint64_t cell_at(const header &head, uint32_t index) {
    return cells_at(head) + uint64_t{index} * sizeof(cell);
}

inline uint32_t sums_of(uint64_t image_size) {
    return static_cast<uint32_t>((image_size + block_size - 1) / block_size);
}

template <typename Record> std::span<const uint8_t> bytes_of(const Record &record) {
    return {reinterpret_cast<const uint8_t *>(&record), sizeof(record)};
}

// Of a record that holds its own checksum.
template <typename Record> uint32_t checksum_of(Record record) {
    record.checksum = 0;
    return checksum(bytes_of(record));
}

inline uint32_t checksum_of(const cell &which) {
    return checksum(bytes_of(which.key), checksum(bytes_of(which.value)));
}

template <size_t size> std::string_view name_in(const std::array<char, size> &area) {
    return {area.data(), strnlen(area.data(), size - 1)};
}

} // namespace kestro_sim::store_layout
