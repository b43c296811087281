// The software test of a power supply: an image is loaded, and the supply must have the same programs as before.
#pragma once

#include "selftest/power/power_unit.h"
#include "selftest/report.h"

// What is loaded: identity of the program (1 byte), a reserved byte, checksum (2 bytes), then the program.
constexpr const char *power_image_file = "/opt/hostx/home/power_app.bin";

// 0, also without an image, or -1, or the driver's code when the programs cannot be listed.
int power_software_test(const power_unit &unit, report_sink sink);
