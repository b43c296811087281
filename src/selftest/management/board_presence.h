// Whether the board, its peer and its trusted platform module are there, and in which slot the board is.
#pragma once

#include <cstdint>

#include "selftest/report.h"

// The presence lines are those of the own board: the drivers take no board selector for them.
int check_self_online(uint32_t inst_id, report_sink sink);
int check_peer_online(uint32_t inst_id, report_sink sink);

// Whether the board is fully inserted.
int check_fullin(uint32_t inst_id, report_sink sink);

// Physical and logical slot of the board and its peer.
int check_slot_id(uint32_t inst_id, report_sink sink);

// Shows whether the module is there and active. Boards are delivered with and without: neither is a fault.
int check_tpm(uint32_t inst_id, report_sink sink);
