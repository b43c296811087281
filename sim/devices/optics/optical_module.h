// Transceivers: what the technician knows of a module, and how it stands at a moment. Its memory map, which is all that
// a driver sees of it, is made of that in module_memory.h.
#pragma once

#include "sim/devices/optics/cage.h"
#include "sim/devices/optics/optical_models.h"

#include <optional>
#include <vector>

namespace kestro_sim::optical_module {

inline constexpr reg model =
    reg::choice("model", optics::model_names, "which kind of transceiver it is").required().fixed();
inline constexpr reg vendor = reg::text("vendor", 16, "who made it").required();
inline constexpr reg oui = reg::bits("oui", 0xFFFFFF, "the maker's number").or_else(0x02A0C0);
inline constexpr reg part = reg::text("part", 16, "its part number").required();
inline constexpr reg revision = reg::text("revision", 2, "the revision of the part").required();
inline constexpr reg serial = reg::text("serial", 16, "its serial number").required();
inline constexpr reg date = reg::text("date", 8, "when it was made: year, month, day, lot").required();
inline constexpr reg heat =
    reg::number("heat", 0, 200000, "mK", "how far it is above the air when all fans turn fully").or_else(12000);
inline constexpr reg voltage = reg::number("voltage", 0, 0xFFFF, "0.1 mV", "its supply").or_else(33000);
inline constexpr reg power_offset =
    reg::number("power_offset", -4000, 1000, "0.01 dB", "how much more its lasers send than is usual").or_else(0);
inline constexpr reg wear =
    reg::number("wear", 0, 300, "%", "how much more current its lasers need than when they were new").or_else(0);
inline constexpr reg tx_fault = reg::bits("tx_fault", 0xFF, "bit N when the laser of lane N has failed").or_else(0);
inline constexpr reg start_up =
    reg::number("start_up", 0, 600000, "ms", "how long it takes to be ready once it is plugged in").or_else(2000);
inline constexpr reg bus_hung =
    reg::flag("bus_hung", "whether it holds its bus, until that is recovered").or_else(0).written();
inline constexpr reg bus_stays =
    reg::flag("bus_stays", "whether it holds its bus again as soon as that is recovered").or_else(0);
inline constexpr reg tx_disable =
    reg::bits("tx_disable", 0xFF, "bit N when the laser of lane N is switched off").or_else(0).written();
inline constexpr reg tx_rate = reg::bits("tx_rate", 0xFF, "the chosen rates of the transmitters").or_else(0).written();
inline constexpr reg rx_rate = reg::bits("rx_rate", 0xFF, "the chosen rates of the receivers").or_else(0).written();
inline constexpr reg page =
    reg::bits("page", 0xFF, "the page that the upper half of its memory shows").or_else(0).written();

inline constexpr device_family family{"sim_optics",
                                      "module",
                                      "a transceiver",
                                      {model, vendor, oui, part, revision, serial, date, heat, voltage, power_offset,
                                       wear, tx_fault, start_up, bus_hung, bus_stays, tx_disable, tx_rate, rx_rate,
                                       page}};

using one = device_of<family>;

// A module in its cage.
struct fitted {
    cage::one port;
    one module;
    const optics::model *kind;
};

// Nothing when the cage is empty.
std::optional<fitted> in(board &b, const cage::one &port);

// One that answers on its bus: refused as not_ready when there is none, when it has just been plugged in, when it holds
// the bus.
fitted answering(board &b, const cage::one &port);

// Its lasers and measurements are up.
bool is_ready(board &b, const fitted &which);

// Whether the bus to it is held; recovering does not help with each.
bool holds_bus(board &b, const fitted &which);
bool recover_bus(board &b, const fitted &which);

// What power does to the registers that do not outlast it.
void switch_on(board &b, change &writes, const one &which);

// What a lane sends, in dBm; nothing while its laser is off. On copper, 0 when it sends.
std::optional<double> sent(board &b, const fitted &which, uint32_t lane);

// The words that the module measures, as its memory has them: 1/256 degrees Celsius, 0.1 mV, 2 uA, 0.1 uW.
struct lane_words {
    uint32_t bias;
    uint32_t tx_power;
    uint32_t rx_power;
    bool is_dark; // no light is received
};

struct measurements {
    int32_t temperature;
    uint32_t voltage;
    int32_t laser_temperature; // of a cooled one
    int32_t tec_current;       // in 1/32767 of the most that the cooler can
    std::vector<lane_words> lanes;
};

measurements measure(board &b, const fitted &which);

} // namespace kestro_sim::optical_module
