// Fibres and cables between the front ports of the chassis, or from one of them to something outside. The technician
// patches and cuts them.
#pragma once

#include "sim/devices/optics/cage.h"
#include "sim/devices/optics/optical_models.h"

#include <optional>

namespace kestro_sim::fibre {

inline constexpr reg slot = reg::number("slot", 0, any_u32, "", "the slot of the board at its one end").required();
inline constexpr reg port = reg::number("port", 0, any_u32, "", "the port there").required();
inline constexpr reg far_slot =
    reg::number("far_slot", 0, any_u32, "", "the slot at its other end; 0 when that is outside").or_else(0);
inline constexpr reg far_port = reg::number("far_port", 0, any_u32, "", "the port at its other end").or_else(0);
inline constexpr reg far_power =
    reg::number("far_power", -4000, 1000, "0.01 dBm", "what each lane of a far end outside sends")
        .or_else(static_cast<uint64_t>(int64_t{-200}));
inline constexpr reg length = reg::number("length", 0, 200000, "m", "how long it is").or_else(10);
inline constexpr reg loss =
    reg::number("loss", 0, 4000, "0.01 dB", "what is lost in its connectors and splices").or_else(50);
inline constexpr reg cut = reg::flag("cut", "whether it is cut or pulled out").or_else(0);

inline constexpr device_family family{"sim_optics",
                                      "fibre",
                                      "a fibre or cable between ports",
                                      {slot, port, far_slot, far_port, far_power, length, loss, cut}};

// What arrives at a lane of a module of that kind, in dBm; nothing when it is dark.
std::optional<double> light_at(board &b, const cage::one &receiver, const optics::model &kind, uint32_t lane);

} // namespace kestro_sim::fibre
