// Driver operations for unit tests of the self-test: they note what they are told and answer what the test sets.
#pragma once

#include <cstdint>
#include <map>
#include <string>
#include <vector>

namespace kestro_tests {

struct fake_drivers {
    std::vector<std::string> log_lines; // "<id>/<level>/<flag>: <text>"
    std::map<uint32_t, std::string> eeprom_sections;
    std::map<uint32_t, uint32_t> eeprom_errors; // by section
    uint32_t entry_num_result = 0;
    uint32_t entry_num = 0;
    std::map<std::string, uint32_t> elements; // "module/node/entry/element"
    std::string proc_interrupts;              // path of the file that stands for /proc/interrupts
    std::map<std::string, std::string> files; // paths of the board, and where the test keeps the files
    bool short_reads = false;                 // every read gives one byte less than it could
    bool bad_disk = false;                    // every read fails with EIO
    bool files_vanish = false;                // files of the board are gone when they are opened
};

// The one set of answers; every test starts from a fresh one.
fake_drivers &drivers();

} // namespace kestro_tests
