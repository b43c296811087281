// Tables in the form of the documentation, in the order of module and node.
#include "sim/core/register_table.h"

#include "sim/core/catalogue.h"
#include "sim/core/registers.h"

#include <algorithm>
#include <cstdio>
#include <string_view>

namespace kestro_sim {

namespace {

std::string full_name(const device_family &family) {
    return std::string(family.module) + " / " + family.node;
}

std::string changed_by(const reg &which) {
    switch (which.changed_by) {
    case writer::driver:
        return "drivers";
    case writer::technician:
        return "technician";
    case writer::nobody:
        return "as built";
    case writer::production:
        break;
    }
    return "production";
}

std::string wanted(const reg &which) {
    if (which.needed == need::reset) {
        return "else " + number_text(which, which.reset_value);
    }
    return which.needed == need::required ? "required" : "optional";
}

// The device stands in the first of its rows.
std::string rows_of(const device_family &family) {
    std::string device = "`" + full_name(family) + "`: " + family.what;
    if (family.count == 0) {
        return "| " + device + " | | | | | |\n";
    }
    std::string rows;
    for (size_t i = 0; i < family.count; ++i) {
        const reg &which = *family.list[i];
        rows += "| " + device + " | `" + which.name + "` | " + values_of(which) + " | " + wanted(which) + " | " +
                changed_by(which) + " | " + which.meaning + " |\n";
        device.clear();
    }
    return rows;
}

std::string hexadecimal(uint32_t value, uint32_t width) {
    char text[16];
    snprintf(text, sizeof text, "0x%0*x", static_cast<int>(width / 4), value);
    return text;
}

std::string bound_to(const space_register &which) {
    std::string all;
    for (const space_field &field : which.fields) {
        const std::string id = field.id == own_id ? "" : std::to_string(field.id) + "/";
        all += (all.empty() ? "" : ", ") + std::string("`") + field.family->node + "/" + id + field.bound->name + "`";
    }
    return which.read != nullptr ? "worked out by the device" : all;
}

std::string space_table(const register_space &space) {
    std::string text = "\nSpace `" + std::string(space.name) + "` of `" + full_name(*space.family) + "`" +
                       (space.only_id ? " " + std::to_string(*space.only_id) : "") + ", registers of " +
                       std::to_string(space.width) + " bits\n\n| Address | Register | After a reset | Same as | " +
                       "Meaning |\n| --- | --- | --- | --- | --- |\n";
    for (const space_register &which : space.registers) {
        const std::string last =
            which.count == 1 ? "" : " to " + hexadecimal(which.address + which.count - 1, space.width);
        text += "| " + hexadecimal(which.address, space.width) + last + " | `" + which.name + "` | " +
                hexadecimal(which.reset_value, space.width) + " | " + bound_to(which) + " | " + which.meaning + " |\n";
    }
    return text;
}

} // namespace

std::string register_tables() {
    std::vector<const device_family *> families(all_families().begin(), all_families().end());
    std::stable_sort(families.begin(), families.end(),
                     [](const auto *one, const auto *other) { return full_name(*one) < full_name(*other); });
    std::string text = "\n| Device | Element | Values | In a description | Changed by | Meaning |\n"
                       "| --- | --- | --- | --- | --- | --- |\n";
    for (const device_family *family : families) {
        text += rows_of(*family);
    }
    for (const register_space *space : all_spaces()) {
        text += space_table(*space);
    }
    return text + "\n";
}

} // namespace kestro_sim
