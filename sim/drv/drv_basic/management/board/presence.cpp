// Presence: which boards are there and fully inserted, and who wants to hear when one comes or goes.
#include "drv_basic/management/drv_board.h"

#include "sim/devices/chassis/slots.h"
#include "sim/drv/drv_basic/management/board/presence_events.h"
#include "sim/drv/drv_basic/management/board/unit.h"

#include <algorithm>

using namespace kestro_sim;

namespace {

struct registration {
    drv_board_in_out_handler handler;
    void *user_data;
    std::string name;
    listener_id ears; // 0 without a handler
};

// Of this process alone, as callbacks are. Only touched within an operation, which holds the lock. Never freed:
// drivers are called from exit handlers too.
std::vector<registration> &registrations() {
    static auto *const known = new std::vector<registration>;
    return *known;
}

// A callback speaks of what comes and goes, on the thread that delivers events.
void call(const registration &who, const event &news) {
    who.handler(news.source, static_cast<uint32_t>(news.value), who.user_data);
}

void begin_to_listen(board &b, registration &who) {
    if (std::none_of(registrations().begin(), registrations().end(),
                     [](const registration &other) { return other.handler != nullptr; })) {
        begin_to_watch_presence(b);
    }
    who.ears = listen(b, presence_topic, [who](const event &news) { call(who, news); });
}

uint32_t read_online_status(uint32_t inst_id, uint32_t *status) {
    return operate([&](board &b) {
        refuse_null(status);
        *status = presence::online_status(b, b.place(inst_id));
    });
}

} // namespace

uint32_t drv_board_get_online_status(uint32_t inst_id, uint32_t *status) {
    return read_online_status(inst_id, status);
}

uint32_t drv_board_get_online_status_ex(uint32_t inst_id, uint32_t *status) {
    return read_online_status(inst_id, status);
}

uint32_t drv_board_set_online_status(uint32_t inst_id, uint32_t status) {
    return operate([&](board &b) {
        const std::string place = b.instance(inst_id);
        presence::set_online_status(b, place, status);
        announce_presence(b, place);
    });
}

uint32_t drv_board_get_self_online_status(uint32_t *status) {
    return read_online_status(DRV_INST_SELF, status);
}

uint32_t drv_board_get_peer_online_status(uint32_t *status) {
    return operate([&](board &b) {
        refuse_null(status);
        *status = presence::online_status(b, place_of_slot(b, peer_slot(b, DRV_INST_SELF)));
    });
}

uint32_t drv_board_get_fullin_status(uint32_t inst_id, uint32_t *status) {
    return read_unit(inst_id, board_unit::fullin, status);
}

uint32_t drv_board_check_fullin_status(uint32_t inst_id, uint32_t *status, char *dfx, uint32_t size) {
    return operate([&](board &b) {
        finding found;
        if (b.get(unit(b, inst_id), board_unit::fullin) != 0) {
            add_fault(found, "the board is not fully inserted");
        }
        tell(found, status, dfx, size);
    });
}

// Callers that only want to know that there is such an operation register no handler.
uint32_t drv_board_in_out_reg(drv_board_in_out_handler handler, void *user_data, const char *name, uint32_t flag) {
    return operate([&](board &b) {
        refuse_null(name);
        refuse_if(*name == '\0' || flag != 0, error::bad_value);
        std::vector<registration> &known = registrations();
        const bool is_taken =
            std::any_of(known.begin(), known.end(), [&](const registration &other) { return other.name == name; });
        refuse_if(is_taken, error::bad_value);
        registration made{handler, user_data, name, 0};
        if (handler != nullptr) {
            begin_to_listen(b, made);
        }
        known.push_back(made);
    });
}

// No handler is called any more when this returns. A running one may be waiting for the lock, so it is waited for
// without.
uint32_t drv_board_in_out_unreg(drv_board_in_out_handler handler) {
    std::vector<listener_id> gone;
    const uint32_t result = operate([&](board &) {
        std::erase_if(registrations(), [&](const registration &known) {
            if (known.handler == handler) {
                gone.push_back(known.ears);
            }
            return known.handler == handler;
        });
        refuse_if(gone.empty() && handler != nullptr, error::no_such_device);
    });
    for (const listener_id ears : gone) {
        stop_listening(ears);
    }
    return result;
}
