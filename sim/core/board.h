// The chassis as driver families see it from one seat: instances, described devices, and the state of these devices.
//
// Description and state are told apart like this: the description says which devices there are and what a new board
// is like; a register that a driver has written has a cell in the store and from then on answers with that. A cell is
// named as the element that describes its initial value, so the two cannot drift apart:
//
//   <module name="sim_voltage"> <node name="rail"> <entry name="3"> <element name="millivolts" value="3300"/>
//      kind {"sim_voltage", "rail"}, id 3, register "millivolts"
//
// One state serves the whole chassis: places are absolute, whatever the seat. A board is used within one driver
// operation (operation.h), which holds the lock of the state directory.
#pragma once

#include "sim/core/description.h"
#include "sim/core/errors.h"
#include "sim/core/store.h"

#include <initializer_list>
#include <memory>
#include <string>
#include <utility>
#include <vector>

namespace kestro_sim {

// Devices of one kind are the entries of one node of one module, named by their plain numbers.
struct device_kind {
    const char *module;
    const char *node;
};

// One device of one place ("slot9", "slot7/card1", "chassis"); it is described.
struct device {
    std::string instance;
    device_kind kind;
    uint32_t id;
};

class board {
  public:
    // The merged chassis, the state, and the place whose board this process runs on.
    board(std::filesystem::path description_file, std::filesystem::path state_dir, std::string seat);

    // What an operation starts with: finishes the change of a process that was killed. False when the state directory
    // was reset under the running program.
    bool begin_operation();
    void end_operation();

    // Nanoseconds since the board was made new (time.h).
    int64_t now();
    void note_time();
    void note_time_now_and_then();

    const description &described();
    void forget_description();

    // The own place, and the place of what belongs to no board.
    const std::string &self() const {
        return seat_;
    }
    static std::string chassis() {
        return std::string(chassis_place);
    }

    // The place of an instance. instance() refuses an empty place and one beyond this board's reach (no_such_instance),
    // place() does not. Both refuse an id of no known form, a slot beyond the chassis, a card that the board has no
    // place for.
    std::string instance(uint32_t inst_id);
    std::string place(uint32_t inst_id);

    // Something is fitted there and has not been pulled out.
    bool is_present(const std::string &place);

    // What of that this board notices: presence lines and identity buses of the cards in slots end at the master.
    bool is_seen(const std::string &place);
    bool is_within_reach(const std::string &place);

    // The slot of the main processing unit that is the master.
    uint32_t master_slot();

    // not_supported when the instance has no device of that kind at all, no_such_device when it has others.
    device find(uint32_t inst_id, const device_kind &kind, uint32_t id);
    device find_at(const std::string &instance, const device_kind &kind, uint32_t id);
    std::vector<uint32_t> ids(const std::string &instance, const device_kind &kind);

    // A register's present value: what was written last, else what the description says. Without a reset value, an
    // undescribed register is refused as not_supported.
    uint32_t get(const device &which, const char *name);
    uint32_t get(const device &which, const char *name, uint32_t reset_value);
    uint64_t get_wide(const device &which, const char *name);
    void put(const device &which, const char *name, uint64_t value);

    // Registers that belong together change together.
    void put_all(const device &which, std::initializer_list<std::pair<const char *, uint64_t>> values);

    // What the description alone says.
    bool has(const device &which, const char *name);
    std::string text(const device &which, const char *name);

    // Storage images. Up to largest_write() bytes are written entirely or not at all, more in pieces of that size.
    size_t image_size(const std::string &image) const;
    std::vector<uint8_t> read_image(const std::string &image, uint32_t offset, size_t length) const;
    void write_image(const std::string &image, uint32_t offset, std::span<const uint8_t> bytes);

    // Any set of register and image writes, together.
    void commit(const change &writes);

    const std::filesystem::path &state_dir() const {
        return state_dir_;
    }

  private:
    pugi::xml_node entry_of(const device &which);

    std::filesystem::path description_file_;
    std::filesystem::path state_dir_;
    std::string seat_;
    store store_;
    std::unique_ptr<description> description_;
};

// The name under which the store keeps a register.
std::string cell_key(const device &which, const char *name);

} // namespace kestro_sim
