// PCI Express of the processor: the self-test section.
#pragma once

#include <cstdint>

#include "selftest/report.h"

// Tells the link of every core and asks each for its status. -1 when the record or a status cannot be had; 0 when the
// board describes no PCI.
int pci_section(uint32_t inst_id, report_sink sink);
