// Devices: their description, their cells and their images.
#include "sim/core/board.h"

#include "sim/core/events.h"
#include "sim/core/fitting.h"
#include "sim/core/instance.h"
#include "sim/core/registers.h"
#include "sim/core/state_dir.h"
#include "sim/core/time.h"
#include "sim/devices/management/card_bus.h"
#include "sim/devices/management/mastership.h"

#include <algorithm>

namespace kestro_sim {

board::board(std::filesystem::path description_file, std::filesystem::path state_dir, std::string seat)
    : description_file_(std::move(description_file)), state_dir_(std::move(state_dir)), seat_(std::move(seat)),
      store_(state_dir_) {
}

bool board::begin_operation() {
    return store_.refresh();
}

void board::end_operation() {
    store_.rest();
}

int64_t board::now() {
    return moment_ ? *moment_ : board_time(store_);
}

void board::look_back_to(std::optional<int64_t> moment) {
    moment_ = moment;
}

void board::note_time() {
    note_board_time(store_);
}

void board::note_time_now_and_then() {
    note_board_time_now_and_then(store_);
}

const description &board::described() {
    if (!description_) {
        auto read = std::make_unique<description>(description_file_);
        const auto made_for = parse_number(read->chassis().attribute("fingerprint").value());
        if (made_for != store_.identity().fingerprint) {
            throw store_error((state_dir_ / "store").string() + ": was made for another chassis than " +
                              description_file_.string() + "; start through kestro_sim");
        }
        description_ = std::move(read);
    }
    return *description_;
}

void board::forget_description() {
    description_.reset();
}

std::string board::place(uint32_t inst_id) {
    const auto decoded = decode_instance(inst_id);
    refuse_if(!decoded, error::no_such_instance);
    const auto name = place_name(described(), seat_, *decoded);
    refuse_if(!name, error::no_such_instance);
    return *name;
}

std::string board::instance(uint32_t inst_id) {
    std::string name = place(inst_id);
    refuse_if(!is_present(name) || !is_within_reach(name), error::no_such_instance);
    return name;
}

// What is pulled out takes its cards along.
bool board::is_present(const std::string &place) {
    return described().place(place) && !is_pulled(*this, place) && !is_pulled(*this, place.substr(0, place.find('/')));
}

bool board::is_within_reach(const std::string &place) {
    return kestro_sim::is_within_reach(described(), seat_, place);
}

bool board::is_seen(const std::string &place) {
    if (!is_present(place) || !is_within_reach(place)) {
        return false;
    }
    const auto slot = slot_of_place(place);
    const bool is_in_card_slot = slot && type_of_slot(described(), *slot) == card_slot;
    return !is_in_card_slot || card_bus::is_open(*this, slot_of_place(seat_).value_or(0), *slot);
}

// A chassis that does not say has no two to choose from.
uint32_t board::master_slot() {
    return get_or(at<mastership::family>(chassis()), mastership::slot, slot_of_place(seat_).value_or(0));
}

device board::find(uint32_t inst_id, const device_family &family, uint32_t id) {
    return find_at(instance(inst_id), family, id);
}

device board::find_at(const std::string &instance, const device_family &family, uint32_t id) {
    const pugi::xml_node node = described().node(instance, family.module, family.node);
    refuse_if(!node.child("entry"), error::not_supported);
    refuse_if(!named_child(node, std::to_string(id)), error::no_such_device);
    return {instance, &family, id};
}

std::vector<uint32_t> board::ids(const std::string &instance, const device_family &family) {
    std::vector<uint32_t> numbers;
    for (const pugi::xml_node entry : described().node(instance, family.module, family.node).children("entry")) {
        numbers.push_back(static_cast<uint32_t>(parse_number(entry.attribute("name").value()).value_or(0)));
    }
    std::sort(numbers.begin(), numbers.end());
    return numbers;
}

pugi::xml_node board::entry_of(const device &which) {
    return described().entry(which.instance, which.family->module, which.family->node, std::to_string(which.id));
}

bool board::is_described(const device &which) {
    return !entry_of(which).empty();
}

std::optional<uint64_t> board::described_value(const device &which, const reg &name) {
    return element_number(named_child(entry_of(which), name.name));
}

std::optional<uint64_t> board::cell(const std::string &key) const {
    return store_.get(key);
}

std::optional<uint64_t> board::value(const device &which, const reg &name) {
    if (const auto written = store_.get(cell_key(which, name.name))) {
        return written;
    }
    if (const auto initial = described_value(which, name)) {
        return initial;
    }
    return name.needed == need::reset ? std::optional(name.reset_value) : std::nullopt;
}

// A text that was written is kept as cells of eight bytes behind one with its length.
std::optional<std::string> board::text_value(const device &which, const reg &name) {
    const std::string key = cell_key(which, name.name);
    const auto length = store_.get(key);
    if (!length) {
        return element_text(named_child(entry_of(which), name.name));
    }
    std::string text;
    for (size_t piece = 0; text.size() < *length; ++piece) {
        const uint64_t bytes = store_.get(key + "/" + std::to_string(piece)).value_or(0);
        for (size_t i = 0; i < sizeof bytes && text.size() < *length; ++i) {
            text += static_cast<char>(bytes >> (8 * i) & 0xFFU);
        }
    }
    return text;
}

// Whatever its cell holds: a damaged one is mended by writing it anew.
bool board::has_register(const device &which, const reg &name) {
    return name.needed == need::reset || named_child(entry_of(which), name.name) ||
           store_.get(cell_key(which, name.name));
}

uint64_t board::required_value(const device &which, const reg &name) {
    const auto present = value(which, name);
    refuse_if(!present, error::not_supported);
    return *present;
}

std::string board::required_text(const device &which, const reg &name) {
    const auto present = text_value(which, name);
    refuse_if(!present, error::not_supported);
    return *present;
}

void board::add(change &writes, const device &which, const reg &name, uint64_t number) {
    refuse_if(!has_register(which, name), error::not_supported);
    refuse_if(!is_in_range(name, number), error::bad_value);
    writes.put(cell_key(which, name.name), number);
}

void board::add_text(change &writes, const device &which, const reg &name, const std::string &text) {
    refuse_if(text.size() > name.text_max, error::bad_value);
    const std::string key = cell_key(which, name.name);
    writes.put(key, text.size());
    for (size_t at = 0; at < text.size(); at += sizeof(uint64_t)) {
        uint64_t bytes = 0;
        for (size_t i = 0; i < sizeof bytes && at + i < text.size(); ++i) {
            bytes |= uint64_t{static_cast<unsigned char>(text[at + i])} << (8 * i);
        }
        writes.put(key + "/" + std::to_string(at / sizeof bytes), bytes);
    }
}

size_t board::image_size(const std::string &image) const {
    return store_.image_size(image);
}

std::vector<uint8_t> board::read_image(const std::string &image, uint32_t offset, size_t length) const {
    return store_.read(image, offset, length);
}

void board::write_image(const std::string &image, uint32_t offset, std::span<const uint8_t> bytes) {
    while (!bytes.empty()) {
        const std::span<const uint8_t> piece = bytes.first(std::min(bytes.size(), largest_write()));
        change writes;
        writes.write(image, offset, piece);
        commit(writes);
        offset += static_cast<uint32_t>(piece.size());
        bytes = bytes.subspan(piece.size());
    }
}

void board::commit(const change &writes) {
    refuse_if(!store_.commit(writes), error::store_full);
    look_at_sources_again();
}

std::string cell_key(const device &which, const char *name) {
    return which.instance + "/" + which.family->module + "/" + which.family->node + "/" + std::to_string(which.id) +
           "/" + name;
}

} // namespace kestro_sim
