// Areas are as long as the driver is told and not longer, with a guard behind that shows whether it kept to that.
#include "probe/areas.h"

#include "probe/events.h"

#include <algorithm>
#include <cstring>

namespace kestro_probe {

namespace {

constexpr uint64_t self_instance = 0xffffffff;
constexpr size_t bytes_by_default = 256;
constexpr size_t elements_by_default = 16;
constexpr size_t guard_size = 16;
constexpr char guard = '\x3c';
constexpr char untouched = '\x5a'; // what a driver did not write is recognised by it

value number_value(uint64_t number) {
    value made;
    made.what = value::kind::number;
    made.number = number;
    return made;
}

size_t length_of(const value *content, bool text) {
    if (content == nullptr) {
        return 0;
    }
    return content->what == value::kind::list ? content->items.size() : content->bytes.size() + (text ? 1 : 0);
}

// A driver may be told of any size; areas end here.
size_t bounded(uint64_t count) {
    return static_cast<size_t>(std::min<uint64_t>(count, longest_shown_area));
}

size_t default_length(mark direction) {
    return is_array(direction) ? elements_by_default : bytes_by_default;
}

bool is_null(const value *content) {
    return content != nullptr && content->what == value::kind::null;
}

const value *item_of(const value *content, size_t field_index) {
    for (size_t i = 0; content != nullptr && i < content->items.size(); ++i) {
        if (content->field_at[i] == field_index) {
            return &content->items[i];
        }
    }
    return nullptr;
}

} // namespace

call_areas::call_areas(const rule &asked)
    : op_(operations[asked.operation]), given_(op_.parameters.size()), slots_(op_.parameters.size()) {
    for (const named_value &input : asked.inputs) {
        given_[input.parameter] = input.content;
    }
    settle_sizes();
    for (size_t i = 0; i < op_.parameters.size(); ++i) {
        owner_ = op_.parameters[i].name;
        if (op_.parameters[i].direction == mark::value) {
            const bool instance = owner_ == "inst_id" && given(i) == nullptr;
            write_value(shape_of(op_.parameters[i]), instance ? number_value(self_instance) : *given_[i], &slots_[i],
                        0);
        } else {
            void *pointer = place(i);
            memcpy(&slots_[i], &pointer, sizeof(pointer));
        }
        arguments_.push_back(&slots_[i]);
    }
}

const value *call_areas::given(size_t parameter) const {
    return given_[parameter] ? &*given_[parameter] : nullptr;
}

// Afterwards every number that is passed by value is given, and every size.
void call_areas::settle_sizes() {
    const std::vector<std::optional<value>> named = given_;
    for (size_t i = 0; i < op_.parameters.size(); ++i) {
        const parameter &sized = op_.parameters[i];
        if (sized.size.size_at >= 0 && !named[static_cast<size_t>(sized.size.size_at)]) {
            settle_size(sized, named[i] ? &*named[i] : nullptr);
        }
    }
    for (size_t i = 0; i < op_.parameters.size(); ++i) {
        const parameter &plain = op_.parameters[i];
        const bool real = plain.type == scalar::float32 || plain.type == scalar::float64;
        if (plain.direction == mark::value && !given_[i] && strcmp(plain.name, "inst_id") != 0) {
            given_[i] = number_value(0);
            given_[i]->what = real ? value::kind::real : value::kind::number;
        }
    }
}

void call_areas::settle_size(const parameter &sized, const value *content) {
    std::optional<value> &size = given_[static_cast<size_t>(sized.size.size_at)];
    size_t wanted = length_of(content, sized.direction == mark::inout_text);
    if (is_output(sized.direction) && !is_null(content)) {
        wanted = std::max(wanted, default_length(sized.direction));
    }
    size = number_value(std::max<uint64_t>(wanted, size ? size->number : 0));
}

void *call_areas::allocate(const std::string &owner, size_t size, char fill) {
    area &made = areas_.emplace_back(area{owner, std::vector<char>(size + guard_size, fill)});
    std::fill(made.bytes.end() - guard_size, made.bytes.end(), guard);
    return made.bytes.data();
}

void *call_areas::handle(const char *owner, const char *name) {
    void *function = find_event_handler(owner, name);
    // An opaque value: it comes back to the event handler, which does not look at it.
    return function != nullptr ? function : this;
}

void *call_areas::place(size_t parameter) {
    const kestro_probe::parameter &described = op_.parameters[parameter];
    const value *content = given(parameter);
    const shape where = shape_of(described);
    if (is_null(content) || (content == nullptr && !is_output(described.direction))) {
        return nullptr;
    }
    if (where.what == shape::form::handle) {
        return handle(op_.name, described.name);
    }
    size_t count = 1;
    if (described.direction == mark::in_text || is_sized(described.direction)) {
        const int32_t at = described.size.size_at;
        const uint64_t told = at >= 0 ? given_[static_cast<size_t>(at)]->number : described.size.fixed_size;
        count =
            std::max(bounded(told), length_of(content, is_text(described.direction) && !is_sized(described.direction)));
    }
    const size_t size = count * stride_of(where.what == shape::form::array ? element_of(where) : where);
    const bool fresh = content == nullptr && !is_input(described.direction);
    char *memory = static_cast<char *>(allocate(owner_, size, fresh ? untouched : '\0'));
    if (where.layout != nullptr && !fresh) {
        prepare_records(where, content, memory);
    }
    if (content != nullptr) {
        write_value(where, *content, memory, count);
    }
    return memory;
}

void call_areas::prepare_records(const shape &place, const value *content, char *memory) {
    if (place.what == shape::form::record) {
        prepare_record(*place.layout, content, memory);
        return;
    }
    for (size_t i = 0; content != nullptr && i < content->items.size(); ++i) {
        prepare_record(*place.layout, &content->items[i], memory + i * place.layout->size);
    }
}

// Pointers are laid before the contents are written, which go through them.
void call_areas::prepare_record(const record &layout, const value *content, char *memory) {
    for (size_t i = 0; i < layout.fields.size(); ++i) {
        const field &member = layout.fields[i];
        const value *item = item_of(content, i);
        if (member.direction == mark::value && item != nullptr) {
            write_value(shape_of(member), *item, memory + member.offset, shape_of(member).count);
        }
        if (member.direction == mark::value && member.layout != nullptr && item != nullptr) {
            prepare_records(shape_of(member), item, memory + member.offset);
        }
    }
    for (size_t i = 0; i < layout.fields.size(); ++i) {
        const field &member = layout.fields[i];
        if (member.direction != mark::value) {
            void *pointer = prepare_member(layout, member, item_of(content, i), memory);
            memcpy(memory + member.offset, &pointer, sizeof(pointer));
        }
    }
}

void *call_areas::prepare_member(const record &layout, const field &member, const value *content, char *memory) {
    if (is_null(content) || (content == nullptr && !is_output(member.direction))) {
        return nullptr;
    }
    const shape where = shape_of(member);
    if (where.what == shape::form::handle) {
        return handle(layout.name, member.name);
    }
    if (member.direction == mark::in_text) {
        void *text = allocate(owner_, content->bytes.size() + 1, '\0');
        memcpy(text, content->bytes.data(), content->bytes.size());
        return text;
    }
    if (content != nullptr) {
        settle_member(layout, member, *content, memory);
    }
    const size_t count = std::max(extent_of(layout, member, memory), length_of(content, false));
    char *target = static_cast<char *>(
        allocate(owner_, count * stride_of(where.what == shape::form::array ? element_of(where) : where),
                 content == nullptr ? untouched : '\0'));
    if (where.layout != nullptr && content != nullptr) {
        prepare_records(where, content, target);
    }
    return target;
}

// A length that is not named, and so still 0, fits the contents.
void call_areas::settle_member(const record &layout, const field &member, const value &content, char *memory) {
    if (member.size.size_at < 0 || extent_of(layout, member, memory) != 0) {
        return;
    }
    const field &size = layout.fields[static_cast<size_t>(member.size.size_at)];
    write_value(shape_of(size), number_value(length_of(&content, is_text(member.direction))), memory + size.offset, 0);
}

std::vector<std::string> call_areas::overrun() const {
    std::vector<std::string> names;
    for (const area &checked : areas_) {
        const bool whole =
            std::all_of(checked.bytes.end() - guard_size, checked.bytes.end(), [](char byte) { return byte == guard; });
        if (!whole) {
            names.push_back(checked.owner);
        }
    }
    return names;
}

} // namespace kestro_probe
