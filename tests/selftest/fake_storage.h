// The identity storage of a board for unit tests of the self-test: labels, bar codes and MAC addresses in memory.
#pragma once

#include <cstdint>
#include <map>
#include <string>

namespace kestro_tests {

struct fake_macs {
    uint32_t num = 0;
    std::string first = std::string(6, '\0'); // the addresses that follow are not kept
};

struct fake_storage {
    std::string label = std::string(1200, '\0');
    std::map<uint32_t, std::string> barcodes; // 128 bytes each; an id that is not here answers 0x811101a4
    std::map<uint32_t, fake_macs> macs;       // by type; another one answers 0x21
    bool forgets_writes = false;              // every write answers 0 and stores nothing
    bool refuses_writes = false;              // writes of labels, bar codes and addresses fail with 0x22
    bool broken = false;                      // every operation fails with 0x22
    uint32_t msc_state = 0;
};

// The one storage; every test starts from a fresh one.
fake_storage &storage();

} // namespace kestro_tests
