// The chassis as driver families see it from one seat: instances, described devices, and the state of these devices.
//
// Description and state are told apart like this: the description says which devices there are and what a new board
// is like; a register that a driver has written has a cell in the store and from then on answers with that. A cell is
// named as the element that describes its initial value, so the two cannot drift apart:
//
//   <module name="sim_voltage"> <node name="rail"> <entry name="3"> <element name="millivolts" value="3300"/>
//      family {"sim_voltage", "rail"}, id 3, register rail::millivolts
//
// Device code and drivers reach registers through the family that declares them (family.h):
//
//   const auto which = b.find<rail::family>(inst_id, voltage_id);
//   *value = b.get(which, rail::millivolts);
//
// One state serves the whole chassis: places are absolute, whatever the seat. A board is used within one driver
// operation (operation.h), which holds the lock of the state directory.
#pragma once

#include "sim/core/description.h"
#include "sim/core/errors.h"
#include "sim/core/family.h"
#include "sim/core/store.h"

#include <initializer_list>
#include <memory>
#include <optional>
#include <string>
#include <type_traits>
#include <utility>
#include <vector>

namespace kestro_sim {

// One device of one place ("slot9", "slot7/card1", "chassis").
struct device {
    std::string instance;
    const device_family *family;
    uint32_t id;
};

template <const device_family &Family> struct device_of : device {};

// One of the writes of put_all().
template <const device_family &Family> struct written {
    written_of<Family> which;
    uint64_t value;
};

// The name under which the store keeps a register.
std::string cell_key(const device &which, const char *name);

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
    // What follows is worked out as it was at that moment, until nothing is given.
    void look_back_to(std::optional<int64_t> moment);
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

    // not_supported when the instance has no device of the family at all, no_such_device when it has others.
    template <const device_family &Family> device_of<Family> find(uint32_t inst_id, uint32_t id = 0) {
        return {find(inst_id, Family, id)};
    }
    template <const device_family &Family> device_of<Family> find_at(const std::string &instance, uint32_t id = 0) {
        return {find_at(instance, Family, id)};
    }
    template <const device_family &Family> std::vector<device_of<Family>> all_at(const std::string &instance) {
        std::vector<device_of<Family>> devices;
        for (const uint32_t id : ids(instance, Family)) {
            devices.push_back({{instance, &Family, id}});
        }
        return devices;
    }
    // Described or not: for registers that are there with their reset value, and for what a place may lack.
    template <const device_family &Family> static device_of<Family> at(const std::string &place, uint32_t id = 0) {
        return {{place, &Family, id}};
    }

    // A register's present value: what was written last, else what the description says, else the family's reset
    // value. Without any of them it is refused as not_supported.
    template <const device_family &Family>
    uint32_t get(const device_of<Family> &which, std::type_identity_t<word_of<Family>> name) {
        return static_cast<uint32_t>(required_value(which, *name));
    }
    template <const device_family &Family>
    uint32_t get_or(const device_of<Family> &which, std::type_identity_t<word_of<Family>> name, uint32_t otherwise) {
        return static_cast<uint32_t>(value(which, *name).value_or(otherwise));
    }
    template <const device_family &Family>
    uint64_t get_wide(const device_of<Family> &which, std::type_identity_t<numeric_of<Family>> name) {
        return required_value(which, *name);
    }
    template <const device_family &Family>
    bool has(const device_of<Family> &which, std::type_identity_t<numeric_of<Family>> name) {
        return value(which, *name).has_value();
    }
    template <const device_family &Family>
    std::string text(const device_of<Family> &which, std::type_identity_t<text_of<Family>> name) {
        return required_text(which, *name);
    }

    // Refuses a value beyond the register's range (bad_value) and a register that the device lacks (not_supported).
    template <const device_family &Family>
    void put(const device_of<Family> &which, std::type_identity_t<written_of<Family>> name, uint64_t number) {
        change writes;
        add(writes, which, *name, number);
        commit(writes);
    }
    template <const device_family &Family>
    void put(change &writes, const device_of<Family> &which, std::type_identity_t<written_of<Family>> name,
             uint64_t number) {
        add(writes, which, *name, number);
    }
    // Also where the device has no such register yet: what it keeps of its own accord.
    template <const device_family &Family>
    void keep(change &writes, const device_of<Family> &which, std::type_identity_t<written_of<Family>> name,
              uint64_t number) {
        writes.put(cell_key(which, (*name).name), number);
    }
    // Registers that belong together change together.
    template <const device_family &Family>
    void put_all(const device_of<Family> &which, std::initializer_list<std::type_identity_t<written<Family>>> values) {
        change writes;
        for (const written<Family> &one : values) {
            add(writes, which, *one.which, one.value);
        }
        commit(writes);
    }

    // Below the families: for what goes over all of them, and for register spaces.
    std::optional<uint64_t> value(const device &which, const reg &name);
    std::optional<std::string> text_value(const device &which, const reg &name);
    bool is_described(const device &which);
    std::optional<uint64_t> described_value(const device &which, const reg &name);
    std::optional<uint64_t> cell(const std::string &key) const;
    void add(change &writes, const device &which, const reg &name, uint64_t number);
    static void add_text(change &writes, const device &which, const reg &name, const std::string &text);

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
    device find(uint32_t inst_id, const device_family &family, uint32_t id);
    device find_at(const std::string &instance, const device_family &family, uint32_t id);
    std::vector<uint32_t> ids(const std::string &instance, const device_family &family);
    pugi::xml_node entry_of(const device &which);
    bool has_register(const device &which, const reg &name);
    uint64_t required_value(const device &which, const reg &name);
    std::string required_text(const device &which, const reg &name);

    std::filesystem::path description_file_;
    std::filesystem::path state_dir_;
    std::string seat_;
    store store_;
    std::unique_ptr<description> description_;
    std::optional<int64_t> moment_;
};

} // namespace kestro_sim
