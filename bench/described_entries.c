/* A board description with as many entries as BENCH_ENTRIES says, in front of the libraries that do nothing: what a
   walk of the self-test costs for each of them. */
#include <stdint.h>
#include <stdlib.h>
#include <string.h>

uint32_t xml_get_entry_num(uint32_t inst_id, const char *module, const char *node, uint32_t *count) {
    static const char *const walked[] = {"check_attr", "temp_attr", "barcode_attr", "i2c_dev", "lbc_dev"};
    const char *entries = getenv("BENCH_ENTRIES");
    (void)inst_id;
    (void)module;
    *count = 0;
    for (size_t i = 0; i < sizeof(walked) / sizeof(walked[0]); ++i) {
        if (strcmp(node, walked[i]) == 0) {
            *count = entries != NULL ? (uint32_t)strtoul(entries, NULL, 10) : 0;
        }
    }
    return 0;
}
