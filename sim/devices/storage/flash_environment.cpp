// A save has a step for each erase block of a copy, and one before them that erases the copy's first block: a copy
// whose writing was cut short does not begin as one. The first block is programmed last.
#include "sim/devices/storage/flash_environment.h"

#include "sim/core/catalogue.h"
#include "sim/core/eeprom.h"
#include "sim/core/time.h"
#include "sim/devices/storage/flash.h"

#include <algorithm>

namespace kestro_sim {

namespace {

using store_of = device_of<flash_environment::family>;

constexpr uint8_t erased = 0xFF;
constexpr uint32_t snapshot_at = 0x10000;

// As long as an image's blocks are: one that was damaged by hand is mended by it.
constexpr std::array<uint8_t, 1024> no_copy{};

// Why a start was no soft one, as start-up software writes it.
constexpr const char *start_variable = "board_reset_mode";
constexpr const char *start_texts[]{"", "", "1", "4"};

enum class start_kind : uint32_t { none, soft, power, reset };

std::string memory_of(const std::string &place) {
    return image_name("environment", place);
}

// Where the copies lie in the image of the flash.
struct copies_in_flash {
    std::string image;
    uint32_t main;
    uint32_t size;
    uint32_t block;

    uint32_t blocks() const {
        return size / block;
    }
    uint32_t steps_of_copy() const {
        return blocks() + 1;
    }
    uint32_t steps() const {
        return 2 * steps_of_copy();
    }
};

copies_in_flash copies_of(board &b, const std::string &place) {
    const auto section = b.find_at<flash_section::family>(place, env_section);
    const uint32_t size = b.get(section, flash_section::size) / 2;
    const uint32_t block = b.get(b.find_at<flash_chip::family>(place), flash_chip::erase_size);
    refuse_if(size < env_copy_max || size % block != 0, error::not_supported);
    return {image_name("flash", place), b.get(section, flash_section::offset), size, block};
}

// The bytes of a copy, as far as it has any: no more is read than its head says.
std::vector<uint8_t> copy_at(board &b, const std::string &image, uint32_t offset) {
    const std::vector<uint8_t> head = b.read_image(image, offset, env_head_size);
    const auto size = env_copy_size(std::span(head).first<env_head_size>());
    return size ? b.read_image(image, offset, *size) : std::vector<uint8_t>();
}

// Without a whole copy there are no variables.
struct chosen_copy {
    env_copy content;
    bool is_main;
    bool are_alike; // both are whole and of one generation
};

chosen_copy copy_in_flash(board &b, const std::string &place) {
    const copies_in_flash copies = copies_of(b, place);
    const auto main = decode_env(copy_at(b, copies.image, copies.main));
    const auto backup = decode_env(copy_at(b, copies.image, copies.main + copies.size));
    if (!main) {
        return {backup.value_or(env_copy()), false, false};
    }
    if (!backup || main->generation >= backup->generation) {
        return {*main, true, backup && backup->generation == main->generation};
    }
    return {*backup, false, false};
}

store_of find_store(board &b, const std::string &place) {
    return b.find_at<flash_environment::family>(place);
}

bool has_store(board &b, const std::string &place) {
    return !b.all_at<flash_environment::family>(place).empty();
}

// Start-up software tells of the start in a variable that it finds.
void apply_start(env_variables &variables, start_kind start) {
    if (start == start_kind::none) {
        return;
    }
    for (env_variable &variable : variables) {
        if (variable.name == start_variable) {
            variable.value = start_texts[static_cast<size_t>(start)];
        }
    }
}

// The bytes of one erase block that a copy is to have.
std::vector<uint8_t> block_of(std::span<const uint8_t> copy, uint32_t number, uint32_t size) {
    std::vector<uint8_t> block(size, erased);
    const size_t begin = std::min<size_t>(size_t{number} * size, copy.size());
    const size_t length = std::min<size_t>(size, copy.size() - begin);
    std::copy_n(copy.begin() + static_cast<std::ptrdiff_t>(begin), length, block.begin());
    return block;
}

// Nothing where it was written over or damaged.
std::vector<uint8_t> snapshot_of(board &b, const std::string &place) {
    try {
        return copy_at(b, memory_of(place), snapshot_at);
    } catch (const store_error &) {
        return {};
    }
}

// A block that was damaged by hand holds nothing that could be kept: it is mended by being written.
bool holds(board &b, const std::string &image, uint32_t at, const std::vector<uint8_t> &block) {
    try {
        return b.read_image(image, at, block.size()) == block;
    } catch (const store_error &) {
        return false;
    }
}

void do_step(board &b, const store_of &store, const copies_in_flash &copies, std::span<const uint8_t> snapshot,
             uint32_t step) {
    const uint32_t of_copy = step % copies.steps_of_copy();
    const uint32_t number = of_copy % copies.blocks();
    const uint32_t first = b.get(store, flash_environment::backup_first);
    const uint32_t copy = (first + step / copies.steps_of_copy()) % 2;
    const uint32_t at = copies.main + copy * copies.size + number * copies.block;
    const std::vector<uint8_t> block =
        of_copy == 0 ? std::vector<uint8_t>(copies.block, erased) : block_of(snapshot, number, copies.block);
    const bool is_last = step + 1 == copies.steps();
    change writes;
    // What a block holds already is not erased and programmed again.
    if (!holds(b, copies.image, at, block)) {
        writes.write(copies.image, at, block);
    } else if (!is_last) {
        return;
    }
    b.put(writes, store, flash_environment::steps, step + 1);
    b.put(writes, store, flash_environment::saving, is_last ? 0 : 1);
    b.commit(writes);
}

uint32_t steps_due(board &b, const store_of &store, uint32_t steps) {
    const int64_t gone = b.now() - static_cast<int64_t>(b.get_wide(store, flash_environment::began));
    const int64_t whole = b.get(store, flash_environment::save_time) * nanoseconds_per_millisecond;
    return gone >= whole || whole == 0 ? steps : static_cast<uint32_t>(std::max<int64_t>(gone, 0) * steps / whole);
}

start_kind kind_of(restart_reason reason, bool is_soft) {
    if (is_soft) {
        return start_kind::soft;
    }
    return reason == restart_reason::power_on ? start_kind::power : start_kind::reset;
}

} // namespace

env_variables read_environment(board &b, const std::string &place) {
    const store_of store = find_store(b, place);
    if (const auto known = decode_env(copy_at(b, memory_of(place), 0))) {
        return known->variables;
    }
    go_on_saving(b, place);
    env_variables variables = copy_in_flash(b, place).content.variables;
    apply_start(variables, static_cast<start_kind>(b.get(store, flash_environment::start)));
    return variables;
}

void write_environment(board &b, const std::string &place, const env_variables &variables) {
    find_store(b, place);
    const std::vector<uint8_t> copy = encode_env({0, variables});
    refuse_if(copy.size() > env_copy_max, error::store_full);
    b.write_image(memory_of(place), 0, copy);
}

void begin_saving(board &b, const std::string &place) {
    const store_of store = find_store(b, place);
    refuse_if(is_saving(b, place), error::not_ready);
    const chosen_copy present = copy_in_flash(b, place);
    const env_copy snapshot{present.content.generation + 1, read_environment(b, place)};
    change writes;
    writes.write(memory_of(place), snapshot_at, encode_env(snapshot));
    b.put(writes, store, flash_environment::saving, 1);
    b.put(writes, store, flash_environment::began, static_cast<uint64_t>(b.now()));
    b.put(writes, store, flash_environment::steps, 0);
    b.put(writes, store, flash_environment::backup_first, present.is_main && !present.are_alike ? 1 : 0);
    b.commit(writes);
}

bool is_saving(board &b, const std::string &place) {
    go_on_saving(b, place);
    return b.get(find_store(b, place), flash_environment::saving) != 0;
}

void go_on_saving(board &b, const std::string &place) {
    if (!has_store(b, place) || b.get(find_store(b, place), flash_environment::saving) == 0) {
        return;
    }
    const store_of store = find_store(b, place);
    const copies_in_flash copies = copies_of(b, place);
    const std::vector<uint8_t> snapshot = snapshot_of(b, place);
    const uint32_t done = b.get(store, flash_environment::steps);
    // Somebody has written over it, or set it by hand: there is nothing left to save.
    if (snapshot.empty() || done >= copies.steps()) {
        b.put(store, flash_environment::saving, 0);
        return;
    }
    const uint32_t due = steps_due(b, store, copies.steps());
    for (uint32_t step = done; step < due; ++step) {
        do_step(b, store, copies, snapshot, step);
    }
}

void lose_memory(board &b, change &writes, const std::string &place) {
    if (has_store(b, place)) {
        go_on_saving(b, place);
        b.put(writes, find_store(b, place), flash_environment::saving, 0);
        writes.write(memory_of(place), 0, no_copy);
    }
}

void note_start_in_flash(board &b, change &writes, const std::string &place, restart_reason reason, bool is_soft) {
    if (has_store(b, place)) {
        lose_memory(b, writes, place);
        b.put(writes, find_store(b, place), flash_environment::start, static_cast<uint32_t>(kind_of(reason, is_soft)));
    }
}

device_list devices_of_flash_environment() {
    static constexpr const device_family *families[]{&flash_variable::family, &flash_environment::family};
    return {families, {}};
}

} // namespace kestro_sim
