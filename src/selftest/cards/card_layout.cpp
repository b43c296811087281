// The layouts of card EEPROMs. They came one after the other, and no card says which one it has: it is told by where
// its sections lie.
#include "selftest/cards/card_layout.h"

#include "nb_bsp/nb_bsp.h"

namespace {

struct section_place {
    uint32_t section_id;
    uint32_t offset;
    uint32_t size;
};

constexpr section_place next_generation_sections[] = {
    {6, 0, 16},     {0, 16, 1200},  {1, 1216, 1200}, {7, 2416, 128},
    {8, 2544, 128}, {9, 2672, 128}, {10, 2800, 24},  {2, 3072, 5120},
};
constexpr section_place router_old_sections[] = {
    {0, 0, 1024}, {8, 2048, 4096}, {1, 6144, 1024}, {7, 7168, 64}, {12, 7232, 300}, {14, 7532, 600},
};
constexpr section_place qrm_old_sections[] = {
    {0, 0, 1024}, {7, 2048, 128}, {11, 2240, 1536}, {12, 3776, 300}, {13, 7296, 64}, {8, 8016, 176},
};
// The same places as in the next generation format, of which this one is a part: it comes last.
constexpr section_place kv_lpu_sections[] = {
    {8, 2544, 128},
    {9, 2672, 128},
};

// is_shown: whether the sections are listed for a card that has none of the layouts.
struct layout_row {
    card_layout layout;
    const char *name;
    const section_place *sections;
    uint32_t count;
    bool is_shown;
};

template <uint32_t count>
constexpr layout_row row(card_layout layout, const char *name, const section_place (&sections)[count], bool is_shown) {
    return {layout, name, sections, count, is_shown};
}

constexpr layout_row layouts[] = {
    row(next_generation_card, "next generation card format", next_generation_sections, true),
    row(router_old_card, "router old card format", router_old_sections, true),
    row(qrm_old_card, "qrm old card format", qrm_old_sections, true),
    row(kv_lpu_card, "kv lpu card format", kv_lpu_sections, false),
};

struct card_state {
    uint32_t value;
    uint32_t layout;
};

// Cards whose number the board support does not tell share the last record, so that they are tested by their layout
// as well.
card_state card_states[card_numbers + 1];

card_state &state_of(uint32_t card_number) {
    return card_states[card_number < card_numbers ? card_number : card_numbers];
}

bool lies_at(uint32_t inst_id, const section_place &place) {
    uint32_t device_id = 0; // on which of the card's buses the EEPROM is; the sections lie alike
    uint32_t offset = 0;
    uint32_t size = 0;
    return find_section_info_by_section(inst_id, place.section_id, &device_id, &offset, &size) == 0 &&
           offset == place.offset && size == place.size;
}

bool has_layout(uint32_t inst_id, const layout_row &layout) {
    for (uint32_t i = 0; i < layout.count; ++i) {
        if (!lies_at(inst_id, layout.sections[i])) {
            return false;
        }
    }
    return true;
}

void show_layout(const layout_row &layout, report_sink sink) {
    report_append(sink, "%s: \r\n", layout.name);
    for (uint32_t i = 0; i < layout.count; ++i) {
        const section_place &place = layout.sections[i];
        report_append(sink, "section id: %u offset %u size %u \r\n", place.section_id, place.offset, place.size);
    }
}

} // namespace

int recognise_card_layout(uint32_t inst_id, uint32_t card_number, report_sink sink) {
    for (const layout_row &layout : layouts) {
        if (has_layout(inst_id, layout)) {
            set_card_layout(card_number, layout.layout);
            report_append(sink, "Success: card eeprom divide is %s \r\n", layout.name);
            return 0;
        }
    }
    set_card_layout(card_number, unknown_card);
    report_append(sink, "Error: card eeprom divide is not match any format \r\n");
    for (const layout_row &layout : layouts) {
        if (layout.is_shown) {
            show_layout(layout, sink);
        }
    }
    return 0;
}

uint32_t card_layout_of(uint32_t card_number) {
    return state_of(card_number).layout;
}

void set_card_layout(uint32_t card_number, uint32_t layout) {
    state_of(card_number).layout = layout;
}

uint32_t card_value_of(uint32_t card_number) {
    return state_of(card_number).value;
}

void set_card_value(uint32_t card_number, uint32_t value) {
    state_of(card_number).value = value;
}
