// The bench technician's hand: all registers of the chassis by their paths, apart from what drivers may do.
//
//   slot9/voltage/rail/2/millivolts   place, module without sim_, node, entry, register
//   slot9/cpld/0/0x20                 place, register space, chip, address
//
// A shorter path is all that is below it. The technician sets what drivers only read, and no listener is asked whether
// a lamp has that colour; but a register takes no value beyond its range.
#pragma once

#include <filesystem>
#include <optional>
#include <span>
#include <string>

namespace kestro_sim {

struct hand_action {
    enum class kind { list, get, set } what;
    std::string argument; // a path; for set PATH=VALUE; empty lists everything
};

// Acts one after the other, or not at all when one of them is wrong. Gives what is wrong, and adds what was asked for
// to the printed text.
std::optional<std::string> lay_hand_on(const std::filesystem::path &merged, const std::filesystem::path &state_dir,
                                       std::span<const hand_action> actions, std::string &printed);

} // namespace kestro_sim
