// Lists, reads and sets registers by their paths.
#include "sim/core/hand.h"

#include "sim/core/catalogue.h"
#include "sim/core/inventory.h"
#include "sim/core/registers.h"
#include "sim/core/state_dir.h"
#include "sim/devices/management/watchdog.h"

#include <algorithm>
#include <stdexcept>

namespace kestro_sim {

namespace {

struct hand_error : std::runtime_error {
    using std::runtime_error::runtime_error;
};

std::string in_quotes(std::string_view text) {
    return "'" + std::string(text) + "'";
}

// A path without a slash at its end; an address as it is listed, however it was written.
std::string usual_form(std::string path) {
    while (path.ends_with('/')) {
        path.pop_back();
    }
    const size_t last = path.rfind('/') + 1;
    const auto number = path.compare(last, 2, "0x") == 0 ? parse_number(path.substr(last)) : std::nullopt;
    if (number && *number <= UINT32_MAX) {
        char address[16];
        snprintf(address, sizeof address, "0x%02x", static_cast<unsigned>(*number));
        path.erase(last);
        path += address;
    }
    return path;
}

const inventory_item &item_at(const std::vector<inventory_item> &items, const std::string &given, const char *option) {
    const std::string path = usual_form(given);
    bool is_above = false;
    for (const inventory_item &item : items) {
        if (item.path == path) {
            return item;
        }
        is_above = is_above || is_at_or_below(item.path, path);
    }
    const std::string said = std::string(option) + ": ";
    if (is_above) {
        throw hand_error(said + in_quotes(given) + " names more than one register; kestro_sim --list " + path +
                         " shows them");
    }
    throw hand_error(said + "there is no " + in_quotes(given) + "; " + nearest_path(items, path));
}

std::string list(board &b, const std::vector<inventory_item> &items, const std::string &given) {
    const std::string path = usual_form(given);
    std::string lines;
    for (const inventory_item &item : items) {
        if (is_at_or_below(item.path, path)) {
            lines += item.path + " = " + shown_value(b, item) + "\n";
        }
    }
    if (lines.empty()) {
        throw hand_error("--list: there is no " + in_quotes(given) + "; " + nearest_path(items, path));
    }
    return lines;
}

struct setting {
    const inventory_item &item;
    std::string text;
};

setting read_setting(const std::vector<inventory_item> &items, const std::string &argument) {
    const size_t equals = argument.find('=');
    if (equals == std::string::npos) {
        throw hand_error("--set: " + in_quotes(argument) + " has no value; right is --set PATH=VALUE");
    }
    return {item_at(items, argument.substr(0, equals), "--set"), argument.substr(equals + 1)};
}

[[noreturn]] void refuse_setting(const setting &wanted, const std::string &right) {
    throw hand_error("--set: " + in_quotes(wanted.text) + " is no value of " + wanted.item.path + "; right is " +
                     right);
}

uint32_t space_value(const setting &wanted) {
    const inventory_item &item = wanted.item;
    const space_register *which = find_register(*item.space, item.address);
    if (which->read != nullptr && which->write == nullptr) {
        throw hand_error("--set: " + item.path + " is worked out by the device; set the registers it is made of");
    }
    const auto value = parse_number(wanted.text);
    if (!value || *value >> item.space->width != 0) {
        refuse_setting(wanted, "a number of " + std::to_string(item.space->width) + " bits");
    }
    return static_cast<uint32_t>(*value);
}

uint64_t register_value(const setting &wanted) {
    const reg &name = *wanted.item.name;
    const auto value = name.is_text() ? std::nullopt : read_value(name, wanted.text);
    if (!value) {
        refuse_setting(wanted, values_of(name));
    }
    return *value;
}

void check_setting(const setting &wanted) {
    const reg *name = wanted.item.name;
    if (name == nullptr) {
        space_value(wanted);
        return;
    }
    if (name->changed_by == writer::nobody) {
        throw hand_error("--set: " + wanted.item.path + " is how the device is built; change it in the description");
    }
    if (name->is_text() && wanted.text.size() > name->text_max) {
        refuse_setting(wanted, values_of(*name));
    }
    if (!name->is_text()) {
        register_value(wanted);
    }
}

void set(board &b, const setting &wanted) {
    const inventory_item &item = wanted.item;
    if (item.space != nullptr) {
        force_space(b, *item.space, item.which, item.address, space_value(wanted));
        return;
    }
    change writes;
    if (item.name->is_text()) {
        board::add_text(writes, item.which, *item.name, wanted.text);
    } else {
        b.add(writes, item.which, *item.name, register_value(wanted));
    }
    b.commit(writes);
}

bool changes_something(const hand_action &action) {
    return action.what == hand_action::kind::set;
}

void check(board &b, const std::vector<inventory_item> &items, const hand_action &action) {
    switch (action.what) {
    case hand_action::kind::list:
        list(b, items, action.argument);
        break;
    case hand_action::kind::get:
        item_at(items, action.argument, "--get");
        break;
    case hand_action::kind::set:
        check_setting(read_setting(items, action.argument));
        break;
    }
}

void act(board &b, const std::vector<inventory_item> &items, const hand_action &action, std::string &printed) {
    switch (action.what) {
    case hand_action::kind::list:
        printed += list(b, items, action.argument);
        break;
    case hand_action::kind::get:
        printed += plain_value(b, item_at(items, action.argument, "--get")) + "\n";
        break;
    case hand_action::kind::set:
        set(b, read_setting(items, action.argument));
        break;
    }
}

} // namespace

std::optional<std::string> lay_hand_on(const std::filesystem::path &merged, const std::filesystem::path &state_dir,
                                       std::span<const hand_action> actions, std::string &printed) {
    try {
        const state_lock lock(state_dir);
        board b(merged, state_dir, board::chassis());
        b.begin_operation();
        settle_bites(b);
        const std::vector<inventory_item> items = take_inventory(b);
        for (const hand_action &action : actions) {
            check(b, items, action);
        }
        if (std::any_of(actions.begin(), actions.end(), changes_something)) {
            write_down_everything(b);
        }
        hand_on_watchdogs hand(b);
        for (const hand_action &action : actions) {
            act(b, items, action, printed);
            if (changes_something(action)) {
                write_down_everything(b);
            }
        }
        hand.take_off();
    } catch (const refusal &refused) {
        return refused.code == error::store_full
                   ? (state_dir / "store").string() + ": has no room for another register; --reset makes it new"
                   : "the device refused with code " + std::to_string(static_cast<uint32_t>(refused.code)) +
                         "; kestro_sim --list shows what it holds";
    } catch (const std::exception &problem) {
        return problem.what();
    }
    return std::nullopt;
}

} // namespace kestro_sim
