// The driver logs of a board: which there are, and their lines. The board's files /dev/kestro_log/<name> are these.
#pragma once

#include "sim/core/board.h"

#include <optional>
#include <string_view>
#include <vector>

namespace kestro_sim::driver_log {

inline constexpr uint32_t id_max = 255;
inline constexpr uint64_t usual_size = uint64_t{128} * 1024;

inline constexpr reg name = reg::text("name", 31, "what it is called; without a name there is no such log").written();
inline constexpr reg size =
    reg::number("size", 256, 1048576, "bytes", "what its lines may take").or_else(usual_size).written();
inline constexpr reg core =
    reg::number("core", 0, 7, "", "the core of the processor whose software writes it").or_else(0).fixed();

inline constexpr device_family family =
    device_family{"sim_log", "log", "a driver log", {name, size, core}}.up_to(id_max);

using one = device_of<family>;

// Refuses an id beyond the last (bad_value) and one that nobody has registered (no_such_device).
one find(board &b, uint32_t id);

// Of the own board, by their ids.
std::vector<one> all(board &b);
std::optional<one> named(board &b, std::string_view wanted);

// Refuses a name that is none or another log's, an id with another name, a size that no log has (bad_value).
void enroll(board &b, uint32_t id, std::string_view wanted, uint32_t bytes);

// Its lines go with it. Refuses the drivers' own (bad_value).
void strike_off(board &b, uint32_t id);

// Letters, digits, '_', '-' and '.', and not dots alone.
bool is_name(std::string_view wanted);

// The file of its lines in the state, as append_to_ring and the others take it.
std::string file(board &b, const one &log);

void append(board &b, const one &log, std::string_view lines);

// What a driver writes down of its own accord, as information; a board without that log does without.
void note(board &b, std::string_view log_name, const std::string &text);

} // namespace kestro_sim::driver_log

// What has become of the latest transfer of logs into a file. It is the work of the process that began it.
namespace kestro_sim::log_transfer {

inline constexpr const char *outcomes[]{"none", "under_way", "full", "failed"};
inline constexpr uint32_t under_way = 1;
inline constexpr uint32_t full = 2;
inline constexpr uint32_t failed = 3;

inline constexpr reg outcome =
    reg::choice("outcome", outcomes, "what has become of the latest transfer").or_else(0).written();
inline constexpr reg core = reg::number("core", 0, 7, "", "the core whose logs it moves").or_else(0).written();

inline constexpr device_family family =
    device_family{"sim_log", "transfer", "the transfer of driver logs into a file", {outcome, core}}.up_to(0);

} // namespace kestro_sim::log_transfer
