// Two registers of each place: whether it is pulled out, and how often that has changed.
#include "sim/core/fitting.h"

#include "sim/devices/chassis/slots.h"
#include "sim/devices/management/mastership.h"
#include "sim/devices/management/restart.h"
#include "sim/devices/management/watchdog.h"
#include "sim/devices/storage/flash_environment.h"

namespace kestro_sim {

namespace {

device_of<fitting::family> fitting_of(const std::string &place) {
    return board::at<fitting::family>(place);
}

// The one way by which a place changes: who waits for boards to come and go hears of it here, and so does the peer of
// a main processing unit.
void set_pulled(board &b, change &writes, const std::string &place, bool pulled) {
    b.keep(writes, fitting_of(place), fitting::pulled, pulled ? 1 : 0);
    b.keep(writes, fitting_of(place), fitting::changes, presence_changes(b, place) + 1U);
    note_fitted(b, writes, place, !pulled);
}

void switch_on(board &b, change &writes, const std::string &place) {
    for (const pugi::xml_node other : b.described().chassis().children("place")) {
        const std::string name = other.attribute("name").value();
        const bool is_card_of_it = name.starts_with(place + "/");
        if (name == place || (is_card_of_it && !is_pulled(b, name))) {
            note_restart(b, writes, name, restart_reason::power_on, restart_kind::cold);
        }
    }
}

} // namespace

std::string pulled_key(const std::string &place) {
    return cell_key(fitting_of(place), "pulled");
}

bool is_pulled(board &b, const std::string &place) {
    return b.get(fitting_of(place), fitting::pulled) != 0;
}

uint32_t presence_changes(board &b, const std::string &place) {
    return b.get(fitting_of(place), fitting::changes);
}

void pull(board &b, const std::string &place) {
    if (!is_pulled(b, place)) {
        change writes;
        set_pulled(b, writes, place, true);
        lose_memory(b, writes, place);
        stop_watchdogs(b, writes, place);
        b.commit(writes);
    }
}

void plug(board &b, const std::string &place) {
    if (is_pulled(b, place)) {
        change writes;
        set_pulled(b, writes, place, false);
        switch_on(b, writes, place);
        b.commit(writes);
    }
}

} // namespace kestro_sim
