// Start-up software and the selection of the main processing unit.
#include "selftest/management/bios.h"

#include "drv_basic/management/drv_board.h"
#include "selftest/result_code.h"

namespace {

constexpr uint32_t failed = UINT32_MAX;

constexpr uint32_t first_area = 1;
constexpr uint32_t last_area = 3;

constexpr uint32_t version_size = 127;
constexpr uint32_t small_slot = 0;
constexpr uint32_t big_slot = 1;

void check_area(uint32_t area, uint32_t *result, report_sink sink) {
    const uint32_t ret = drv_board_check_bios(area, result);
    if (ret != 0 || *result != 0) {
        report_append(sink, "Error  : board bios area %u check fail. ret 0x%x sts 0x%x\r\n", area, ret, *result);
        *result = failed;
    } else {
        report_append(sink, "Success: board bios area %u check pass.\r\n", area);
    }
}

} // namespace

int check_bios(uint32_t inst_id, report_sink sink) {
    // The result so far is also where the driver writes the status of an area, and that is kept. A driver that answers
    // without writing one has not looked: after a failure its area does not pass. One that does write has the last
    // word, so an area that is good takes back the failure before it, whose line stands; a start needs one good area.
    uint32_t result = 0;
    uint32_t area = 0;
    uint32_t ret = drv_board_get_area(inst_id, &area);
    if (ret != 0) {
        report_append(sink, "Error  : board get area fail. ret 0x%x area 0x%x \r\n", ret, area);
        result = failed;
    }
    for (uint32_t each = first_area; each <= last_area; ++each) {
        check_area(each, &result, sink);
    }
    char version[version_size + 1] = {};
    ret = drv_board_get_bios_ver(inst_id, version, version_size);
    if (ret != 0 && !is_not_supported(ret)) {
        report_append(sink, "Error  : board bios get ver fail. ret 0x%x \r\n", ret);
        return -1;
    }
    report_append(sink, "Success: board area bios ver %s pass.\r\n", version);
    return static_cast<int>(result);
}

int check_mpu_status(uint32_t inst_id, report_sink sink) {
    // This getter alone takes one byte less than the checks do, and the check gets the whole area again.
    constexpr uint32_t get_size = 255;
    constexpr uint32_t check_size = 256;
    char message[get_size + 1] = {};
    int result = 0;
    uint32_t status = 0;
    uint32_t ret = drv_board_get_mpu_status(inst_id, &status, message, get_size);
    if (ret != 0 || (status != small_slot && status != big_slot)) {
        report_append(sink, "Error  : board get mpu status fail. ret 0x%x status 0x%x msg %s\r\n", ret, status,
                      message);
        result = -1;
    } else {
        report_append(sink, "Success: board get mpu status pass. sts %u (0: mpua small slot 1: mpub big slot)\r\n",
                      status);
    }
    // What the check found is shown and not judged: a board on a test bench has no slot that its status could fit.
    uint32_t found = 0;
    char findings[check_size + 1] = {};
    ret = drv_board_check_mpu_status(inst_id, &found, findings, check_size);
    if (ret != 0 || result != 0) {
        report_append(sink, "Error  : board mpu status check fail. ret 0x%x sts 0x%x \r\n", ret, found);
        return -1;
    }
    report_append(sink, "Success: board check mpu status pass. sts %u\r\n", found);
    return 0;
}
