// From a change, in registers and images, to the bytes that it writes: those of the cells and images themselves, the
// checksums of the blocks that it touches, and the header.
#include "sim/core/store_contents.h"

#include <algorithm>
#include <stdexcept>
#include <utility>

namespace kestro_sim {

using namespace store_layout;

namespace {

// What each write is counted with beside its bytes.
constexpr size_t item_size = 128;

constexpr size_t round_up(size_t length) {
    return (length + 7) / 8 * 8;
}

template <typename Record> store_piece piece_of_store(uint64_t offset, const Record &record) {
    const auto bytes = bytes_of(record);
    return {0, offset, {bytes.begin(), bytes.end()}};
}

cell cell_of(std::string_view key, uint64_t value) {
    cell made{value, 0, 0, {}};
    std::copy(key.begin(), key.end(), made.key.begin());
    made.key_checksum = checksum(bytes_of(made.key));
    made.checksum = checksum_of(made);
    return made;
}

// Blocks as they will be, by image and number.
using future_blocks = std::map<std::pair<size_t, size_t>, std::vector<uint8_t>>;

class planner {
  public:
    explicit planner(const store_contents &known) : known_(known), plan_{known.head, {}, {}, store_targets(known)} {
    }

    bool put(const change::item &wanted) {
        const auto index = place_of(wanted.name);
        if (index >= cells_max) {
            return false;
        }
        plan_.cells.insert_or_assign(wanted.name, known_cell{index, wanted.value, false});
        plan_.pieces.push_back(piece_of_store(cell_at(known_.head, index), cell_of(wanted.name, wanted.value)));
        return true;
    }

    void write(const change::item &wanted) {
        const size_t number = known_.number_of(wanted.name);
        if (uint64_t{wanted.offset} + wanted.bytes.size() > known_.images[number].size) {
            throw store_error(known_.image_file(number).string() + ": ends before the write; write within the image",
                              error::out_of_range);
        }
        const auto target = static_cast<uint32_t>(number + 1);
        plan_.pieces.push_back({target, wanted.offset, wanted.bytes});
        const open_file &image = plan_.files.of(target);
        for (size_t done = 0; done < wanted.bytes.size();) {
            done += patch(number, image, wanted.offset + done, std::span(wanted.bytes).subspan(done));
        }
    }

    store_plan finish() {
        for (const auto &[place, bytes] : blocks_) {
            const uint64_t sum = uint64_t{known_.images[place.first].first_sum} + place.second;
            plan_.pieces.push_back(piece_of_store(sums_at(known_.head) + sum * sizeof(uint32_t), checksum(bytes)));
        }
        ++plan_.head.changes;
        plan_.head.checksum = checksum_of(plan_.head);
        plan_.pieces.push_back(piece_of_store(0, plan_.head));
        return std::move(plan_);
    }

  private:
    // A new register gets the next cell.
    uint32_t place_of(const std::string &key) {
        for (const auto *cells : {&std::as_const(plan_.cells), &known_.cells}) {
            if (const auto found = cells->find(key); found != cells->end()) {
                return found->second.index;
            }
        }
        return plan_.head.cells_used < cells_max ? plan_.head.cells_used++ : cells_max;
    }

    // The part of a write that falls into its first block; gives that part's length. What else the block holds must be
    // sound, or the new checksum would declare it so.
    size_t patch(size_t number, const open_file &image, uint64_t offset, std::span<const uint8_t> bytes) {
        const auto block = static_cast<size_t>(offset / block_size);
        const auto begin = static_cast<size_t>(offset % block_size);
        const size_t length = std::min(bytes.size(), known_.block_length(number, block) - begin);
        const bool is_whole = length == known_.block_length(number, block);
        auto [place, is_new] = blocks_.try_emplace({number, block});
        if (is_new) {
            place->second = is_whole ? std::vector<uint8_t>(length) : known_.read_blocks(number, image, block, 1);
        }
        std::copy_n(bytes.begin(), length, place->second.begin() + static_cast<ptrdiff_t>(begin));
        return length;
    }

    const store_contents &known_;
    store_plan plan_;
    future_blocks blocks_;
};

} // namespace

void change::put(std::string_view key, uint64_t value) {
    append({false, std::string(key), value, 0, {}}, sizeof(value));
}

void change::write(std::string_view image, uint32_t offset, std::span<const uint8_t> bytes) {
    append({true, std::string(image), 0, offset, {bytes.begin(), bytes.end()}}, bytes.size());
}

void change::append(item added, size_t size) {
    const size_t end = size_ + item_size + round_up(size);
    if (added.name.size() > cell_key_max || end > journal_capacity) {
        throw std::length_error("change does not fit the journal: " + added.name);
    }
    items_.push_back(std::move(added));
    size_ = end;
}

size_t largest_write() {
    return journal_capacity - item_size;
}

std::optional<store_plan> plan_of(const store_contents &known, const change &writes) {
    planner made(known);
    for (const change::item &wanted : writes.items()) {
        if (wanted.is_image) {
            made.write(wanted);
        } else if (!made.put(wanted)) {
            return std::nullopt;
        }
    }
    return made.finish();
}

} // namespace kestro_sim
