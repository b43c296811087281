// Start-up software and programmable logic.
#pragma once

#include "sim/core/board.h"

namespace kestro_sim {

namespace bios {
inline constexpr reg version = reg::text("version", 126, "what the start-up software calls itself").required();
inline constexpr reg area = reg::number("area", 0, any_u32, "", "the area that it was started from").required();
inline constexpr device_family family =
    device_family{"sim_board", "bios", "the start-up software", {version, area}}.up_to(0);
} // namespace bios

namespace bios_area {
inline constexpr reg fault = reg::number("fault", 0, any_u32, "", "other than 0 when the copy is damaged").required();
inline constexpr device_family family{"sim_board", "bios_area", "an area for start-up software", {fault}};
} // namespace bios_area

namespace logic_chip {
inline constexpr const char *load_names[]{"none", "begun", "waiting", "running"};
inline constexpr uint32_t load_none = 0;
inline constexpr uint32_t load_begun = 1;   // not finished: an FPGA has no logic
inline constexpr uint32_t load_waiting = 2; // of a CPLD: for the next cold start
inline constexpr uint32_t load_running = 3; // of an FPGA

inline constexpr reg version =
    reg::bits("version", 0xFFFF, "the version of its logic; of an FPGA, that in its flash").required().written();
inline constexpr reg is_fpga = reg::flag("is_fpga", "whether it is a control FPGA and no CPLD").required().fixed();
inline constexpr reg build_year =
    reg::number("build_year", 2000, 2099, "", "the year that logic was made in").written();
inline constexpr reg build_month = reg::number("build_month", 1, 12, "", "the month").written();
inline constexpr reg build_day = reg::number("build_day", 1, 31, "", "the day").written();
inline constexpr reg part = reg::bits("part", any_u32, "which part it is: what its images are for").fixed();
inline constexpr reg load_time = reg::number("load_time", 0, 600000, "ms", "how long loading it takes").or_else(2000);
inline constexpr reg load =
    reg::choice("load", load_names, "what became of the image that was loaded last").or_else(load_none).written();
inline constexpr reg loads = reg::number("loads", 0, any_u32, "", "how many loads were begun").or_else(0).written();
inline constexpr reg loaded_version =
    reg::bits("loaded_version", 0xFFFF, "the version of the image that was loaded last").or_else(0).written();
inline constexpr reg loaded_year =
    reg::number("loaded_year", 2000, 2099, "", "the year that image was made in").or_else(2000).written();
inline constexpr reg loaded_month = reg::number("loaded_month", 1, 12, "", "the month").or_else(1).written();
inline constexpr reg loaded_day = reg::number("loaded_day", 1, 31, "", "the day").or_else(1).written();
inline constexpr reg scratch = reg::bits("scratch", 0xFFFF, "for trying the bus").written().or_else(0x5A);
inline constexpr reg scratch_stuck =
    reg::bits("scratch_stuck", 0xFFFF, "bits of the scratch register that read 0 whatever is written").or_else(0);
inline constexpr reg spi_agents = reg::number("spi_agents", 1, 8, "", "how many agents it reaches by SPI");
inline constexpr reg spi_fault = reg::bits("spi_fault", 0xFF, "bit N when agent N does not answer").or_else(0);
inline constexpr reg pcie_ports = reg::number("pcie_ports", 1, 8, "", "how many PCIe ports it has");
inline constexpr reg pcie_down = reg::bits("pcie_down", 0xFF, "bit N when the link of port N is down").or_else(0);
inline constexpr reg chip_links = reg::number("chip_links", 1, 8, "", "how many logic chips it has a link to");
inline constexpr reg link_down = reg::bits("link_down", 0xFF, "bit N when the link to chip N is down").or_else(0);
inline constexpr reg uarts = reg::number("uarts", 1, 8, "", "how many serial receivers it has");
inline constexpr reg uart_alarm = reg::bits("uart_alarm", 0xFF, "bit N when receiver N lost characters").or_else(0);
inline constexpr reg repeated_loads =
    reg::number("repeated_loads", 0, 255, "", "how often an FPGA loaded its logic again since it has power").or_else(0);
inline constexpr reg upsets =
    reg::number("upsets", 0, 255, "", "how many bits of an FPGA's configuration turned").or_else(0).written();
inline constexpr reg np_slave =
    reg::bits("np_slave", 0x7F, "the network processor's address on the control bus").written();
inline constexpr reg np_low =
    reg::bits("np_low", any_u32, "where the network processor's memory is: the lower 32 bits").written();
inline constexpr reg np_high = reg::bits("np_high", any_u32, "the upper 32 bits").written();
inline constexpr device_family family{
    "sim_board",
    "logic",
    "a programmable logic chip",
    {version,       is_fpga,    build_year,     build_month, build_day,    part,       load_time,
     load,          loads,      loaded_version, loaded_year, loaded_month, loaded_day, scratch,
     scratch_stuck, spi_agents, spi_fault,      pcie_ports,  pcie_down,    chip_links, link_down,
     uarts,         uart_alarm, repeated_loads, upsets,      np_slave,     np_low,     np_high}};

// What runs: an FPGA that was loaded has other logic than its flash. Without logic they answer like one with it.
uint32_t read_version(board &b, const device &chip);
uint32_t read_build_year(board &b, const device &chip);
uint32_t read_build_month(board &b, const device &chip);
uint32_t read_build_day(board &b, const device &chip);

// An FPGA whose load was begun and not finished answers nothing: not_ready.
void need_logic(board &b, const device &chip);

// What the bus reads of the scratch register: in both layouts it stands at this address.
inline constexpr uint32_t scratch_address = 0x0F;
uint32_t read_scratch(board &b, const device &chip);
} // namespace logic_chip

} // namespace kestro_sim
