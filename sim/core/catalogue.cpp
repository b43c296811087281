// The families of all device files, gathered once.
#include "sim/core/catalogue.h"

#include "device_files.h"

namespace kestro_sim {

namespace {

struct gathered {
    std::vector<const device_family *> families;
    std::vector<const register_space *> spaces;
    std::vector<diag_command> commands;
    std::vector<void (*)(board &)> write_down;
};

// Kept to the end of the process: drivers are called from exit handlers too.
const gathered &all() {
    static const gathered *const everything = [] {
        auto *made = new gathered;
        for (const auto &devices_of_file : device_files) {
            const device_list devices = devices_of_file();
            made->families.insert(made->families.end(), devices.families.begin(), devices.families.end());
            made->spaces.insert(made->spaces.end(), devices.spaces.begin(), devices.spaces.end());
            made->commands.insert(made->commands.end(), devices.commands.begin(), devices.commands.end());
            if (devices.write_down != nullptr) {
                made->write_down.push_back(devices.write_down);
            }
        }
        return made;
    }();
    return *everything;
}

} // namespace

std::span<const device_family *const> all_families() {
    return all().families;
}

std::span<const register_space *const> all_spaces() {
    return all().spaces;
}

std::span<const diag_command> all_diag_commands() {
    return all().commands;
}

void write_down_everything(board &b) {
    for (const auto &write_down : all().write_down) {
        write_down(b);
    }
}

const device_family *find_family(std::string_view module, std::string_view node) {
    for (const device_family *family : all_families()) {
        if (module == family->module && (node == family->node || family->entries == naming::nodes_by_name)) {
            return family;
        }
    }
    return nullptr;
}

} // namespace kestro_sim
