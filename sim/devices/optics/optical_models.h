// Kinds of transceivers: what of a module follows from its kind alone. The codes are those of the published
// management interfaces (identifiers, connectors, encodings, compliance).
#pragma once

#include <array>
#include <cstdint>

namespace kestro_sim::optics {

// How a module is managed: SFF-8472, SFF-8636, CMIS.
enum class management : uint8_t { sfp, qsfp, cmis };

struct limits {
    double high_alarm;
    double low_alarm;
    double high_warning;
    double low_warning;
};

// In metres, over each kind of cable; 0 where it has no use for it.
struct reach {
    uint32_t sm = 0;
    uint32_t om1 = 0;
    uint32_t om2 = 0;
    uint32_t om3 = 0;
    uint32_t om4 = 0;
    uint32_t copper = 0;
};

struct model {
    management managed_by;
    uint8_t identifier;
    uint8_t connector;
    uint8_t encoding;
    uint32_t lanes;
    uint32_t mbit_per_s; // of one lane
    double nanometres;   // 0 on copper
    reach reaches;
    std::array<uint8_t, 8> compliance;
    uint8_t extended_compliance; // in CMIS: the media interface
    bool measures;               // diagnostics and thresholds
    bool is_cooled;              // the lasers stand on a cooler that holds their temperature
    bool is_linear;              // the receiver hands on what it gets, without deciding about bits
    bool has_cdr;
    bool has_rates; // the receiver's and transmitter's rates can be chosen
    double laser_dbm;
    double laser_milliamperes;
    double los_dbm;     // less than this is no light
    limits temperature; // degrees Celsius
    limits volts;
    limits milliamperes;
    limits tx_dbm;
    limits rx_dbm;
};

// The names of the kinds, and the kinds in the same order.
inline constexpr const char *model_names[]{"1000BASE-T",   "10GBASE-SR",   "10GBASE-LR", "40GBASE-SR4",
                                           "100GBASE-SR4", "400GBASE-LR8", "10GBASE-LRM"};

const model &model_number(uint32_t number);

// Where a cooler holds the lasers, and what its current (in percent of the most it can) must keep within.
inline constexpr double cooled_celsius = 45;
inline constexpr limits laser_celsius{55, 35, 52, 38};
inline constexpr limits tec_percent{90, -90, 80, -80};

} // namespace kestro_sim::optics
