// Presence: which boards are there and fully inserted, and who wants to hear when one comes or goes.
#include "drv_basic/management/drv_board.h"

#include "sim/core/instance.h"
#include "sim/drv/drv_basic/management/board/unit.h"

#include <algorithm>

using namespace kestro_sim;

namespace {

constexpr device_kind presence{"sim_board", "presence"};
constexpr uint32_t present = 0;
constexpr uint32_t absent = 1;

struct registration {
    drv_board_in_out_handler handler;
    void *user_data;
    std::string name;
};

// Of this process alone, as callbacks are. Only touched within an operation, which holds the lock. Never freed:
// drivers are called from exit handlers too.
std::vector<registration> &registrations() {
    static auto *const known = new std::vector<registration>;
    return *known;
}

// A card on the board goes by its own number.
uint32_t number_of_place(const std::string &place) {
    const auto card = card_of_place(place);
    return card ? *card : slot_of_place(place).value_or(0);
}

uint32_t read_online_status(uint32_t inst_id, uint32_t *status) {
    return operate([&](board &b) {
        refuse_null(status);
        *status = online_status(b, b.place(inst_id));
    });
}

} // namespace

uint32_t drv_board_get_online_status(uint32_t inst_id, uint32_t *status) {
    return read_online_status(inst_id, status);
}

uint32_t drv_board_get_online_status_ex(uint32_t inst_id, uint32_t *status) {
    return read_online_status(inst_id, status);
}

// The handlers are called when the lock is free again: they may call drivers themselves.
uint32_t drv_board_set_online_status(uint32_t inst_id, uint32_t status) {
    std::vector<registration> to_call;
    uint32_t slot_id = 0;
    const uint32_t result = operate([&](board &b) {
        refuse_if(status != present && status != absent, error::bad_value);
        const std::string place = b.instance(inst_id);
        if (online_status(b, place) != status) {
            slot_id = number_of_place(place);
            to_call = registrations();
        }
        b.put({place, presence, 0}, "status", status);
    });
    for (const registration &listener : to_call) {
        if (result == 0 && listener.handler != nullptr) {
            listener.handler(slot_id, status == present ? 1 : 0, listener.user_data);
        }
    }
    return result;
}

uint32_t drv_board_get_self_online_status(uint32_t *status) {
    return read_online_status(DRV_INST_SELF, status);
}

uint32_t drv_board_get_peer_online_status(uint32_t *status) {
    return operate([&](board &b) {
        refuse_null(status);
        *status = online_status(b, place_of_slot(b, peer_slot(b, DRV_INST_SELF)));
    });
}

uint32_t drv_board_get_fullin_status(uint32_t inst_id, uint32_t *status) {
    return read_unit(inst_id, "fullin", status);
}

uint32_t drv_board_check_fullin_status(uint32_t inst_id, uint32_t *status, char *dfx, uint32_t size) {
    return operate([&](board &b) {
        finding found;
        if (b.get(unit(b, inst_id), "fullin") != 0) {
            add_fault(found, "the board is not fully inserted");
        }
        tell(found, status, dfx, size);
    });
}

// Callers that only want to know that there is such an operation register no handler.
uint32_t drv_board_in_out_reg(drv_board_in_out_handler handler, void *user_data, const char *name, uint32_t flag) {
    return operate([&](board &) {
        refuse_null(name);
        refuse_if(*name == '\0' || flag != 0, error::bad_value);
        std::vector<registration> &known = registrations();
        const bool is_taken =
            std::any_of(known.begin(), known.end(), [&](const registration &other) { return other.name == name; });
        refuse_if(is_taken, error::bad_value);
        known.push_back({handler, user_data, name});
    });
}

uint32_t drv_board_in_out_unreg(drv_board_in_out_handler handler) {
    return operate([&](board &) {
        const auto gone =
            std::erase_if(registrations(), [&](const registration &known) { return known.handler == handler; });
        refuse_if(gone == 0 && handler != nullptr, error::no_such_device);
    });
}
