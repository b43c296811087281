// The module commands of the command line, in the order of the usage listing.
#pragma once

#include <span>

#include "shell/command_table.h"

std::span<const command_row> root_commands();
