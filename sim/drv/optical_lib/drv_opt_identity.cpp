// What a module is, by its own account.
#include "sim/drv/optical_lib/optical_port.h"
#include "sim/drv/optical_lib/optical_texts.h"

using namespace kestro_sim;

namespace {

struct common_item {
    uint32_t item;
    std::string (*text)(const optics::memory &);
};

constexpr common_item common_items[]{
    {0x10001, optical_texts::transceiver},   {0x10002, optical_texts::connector}, {0x10003, optical_texts::wavelength},
    {0x10004, optical_texts::distance},      {0x10005, optical_texts::encoding},  {0x10006, optical_texts::bit_rate},
    {0x10007, optical_texts::diagnostics},   {0x10008, optical_texts::vendor},    {0x10009, optical_texts::part_number},
    {0x1000A, optical_texts::serial_number}, {0x1000B, optical_texts::date},
};

constexpr uint32_t pam4 = 0x08;

} // namespace

uint32_t drv_opt_get_common_info(uint32_t inst_id, const struct drv_opt_port_para *port_para, uint32_t item, char *text,
                                 uint32_t size) {
    return operate([&](board &b) {
        refuse_null(text);
        const auto module = optical_port::read(b, inst_id, port_para);
        for (const common_item &each : common_items) {
            if (each.item == item) {
                write_text(text, size, each.text(module.map));
                return;
            }
        }
        refuse(error::bad_value);
    });
}

// Four levels need error correction, two do not.
uint32_t drv_opt_get_trans_distance(uint32_t inst_id, const struct drv_opt_port_para *port_para,
                                    struct drv_opt_distance *distance) {
    return operate([&](board &b) {
        refuse_null(distance);
        const auto module = optical_port::read(b, inst_id, port_para);
        const auto metres = optical_readings::distances(module.map);
        const auto over = [](uint32_t whole) { return static_cast<float>(whole); };
        const bool is_corrected = optical_readings::encoding(module.map) == pam4;
        *distance = {over(metres.om1),
                     over(metres.om2),
                     over(metres.om3),
                     over(metres.om4),
                     over(metres.sm),
                     is_corrected ? over(metres.sm) : 0,
                     is_corrected ? 0 : over(metres.sm),
                     over(metres.copper)};
    });
}

uint32_t drv_opt_get_encode_type(uint32_t inst_id, const struct drv_opt_port_para *port_para, uint32_t *value) {
    return operate([&](board &b) {
        refuse_null(value);
        *value = optical_readings::encoding(optical_port::read(b, inst_id, port_para).map);
    });
}

uint32_t drv_opt_get_type(uint32_t inst_id, const struct drv_opt_port_para *port_para, struct drv_opt_type *types,
                          uint32_t *num) {
    return operate([&](board &b) {
        refuse_null(types, num);
        const auto module = optical_port::read(b, inst_id, port_para);
        const auto standards = optical_texts::standards(module.map);
        for (size_t i = 0; i < standards.size(); ++i) {
            const bool is_optical = standards[i].mode != 0;
            types[i] = {is_optical ? 1U : 0U, standards[i].mode, standards[i].mbit_per_s,
                        optical_readings::byte_at(module.map, optics::first_device, 0, 0), 0};
        }
        *num = static_cast<uint32_t>(standards.size());
    });
}

uint32_t drv_opt_get_linear_attr(uint32_t inst_id, const struct drv_opt_port_para *port_para, uint32_t *value) {
    return operate([&](board &b) {
        refuse_null(value);
        *value = optical_readings::is_linear(optical_port::read(b, inst_id, port_para).map) ? 1 : 0;
    });
}

uint32_t drv_opt_get_lane_num(uint32_t inst_id, const struct drv_opt_port_para *port_para, uint32_t *lane_num) {
    return operate([&](board &b) {
        refuse_null(lane_num);
        *lane_num = optical_readings::lanes(optical_port::read(b, inst_id, port_para).map);
    });
}

uint32_t drv_opt_get_common_register_info(uint32_t inst_id, const struct drv_opt_port_para *port_para, char *text,
                                          uint32_t size) {
    return operate([&](board &b) {
        refuse_null(text);
        write_text(text, size, optical_texts::common_registers(optical_port::read(b, inst_id, port_para).map));
    });
}

uint32_t drv_opt_get_dfx_info(uint32_t inst_id, const struct drv_opt_port_para *port_para, char *text, uint32_t size) {
    return operate([&](board &b) {
        refuse_null(text);
        const auto module = optical_port::read(b, inst_id, port_para);
        std::string told = "port " + std::to_string(port_para->port) + ": " + optical_texts::transceiver(module.map) +
                           ", " + optical_texts::vendor(module.map) + " " + optical_texts::part_number(module.map) +
                           ", serial number " + optical_texts::serial_number(module.map) + "\n";
        told += optical_texts::dump(module.map);
        write_text(text, size, told);
    });
}
