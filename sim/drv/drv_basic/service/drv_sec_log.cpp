// The security log: a ring of lines beside the driver logs, and hooks by log id that hear what this process records.
#include "drv_basic/service/drv_log.h"

#include "sim/core/events.h"
#include "sim/core/state_files.h"
#include "sim/devices/service/driver_log.h"
#include "sim/drv/driver.h"

#include <algorithm>
#include <array>
#include <cstdarg>
#include <cstdio>
#include <map>
#include <utility>

using namespace kestro_sim;

namespace {

constexpr const char *topic = "security log";
constexpr uint64_t ring_size = 8192;
constexpr size_t line_max = 1024;
constexpr size_t hooks_max = 8;
constexpr uint32_t base_log = 0;

struct registered_hook {
    std::string name;
    listener_id ears;
};

// By log id. Only touched within operations, and never freed: drivers are called from exit handlers too.
std::map<uint32_t, registered_hook> &security_hooks() {
    static auto *const all = new std::map<uint32_t, registered_hook>;
    return *all;
}

// What a hook itself records is not told, or it would never end.
thread_local bool is_within_security_hook = false;

std::string security_file(board &b) {
    return "log/" + b.self() + "/security.log";
}

std::string security_line(std::string text) {
    while (!text.empty() && (text.back() == '\n' || text.back() == '\r')) {
        text.pop_back();
    }
    std::replace_if(
        text.begin(), text.end(), [](char c) { return c == '\n' || c == '\r'; }, ' ');
    return text + "\n";
}

listener_id hear_security_log(board &b, uint32_t log_id, drv_sec_log_hook hook) {
    return listen(b, topic, [log_id, hook](const event &news) {
        const std::string text(news.bytes.begin(), news.bytes.end());
        is_within_security_hook = true;
        hook(log_id, "%s", text.c_str());
        is_within_security_hook = false;
    });
}

// In the base log a line is of level 2, as all information is.
std::string shown_security_log(const std::string &lines) {
    std::string shown = "2 security log: " + std::to_string(std::count(lines.begin(), lines.end(), '\n')) + " lines, " +
                        std::to_string(security_hooks().size()) + " hooks\n";
    for (const auto &[log_id, hook] : security_hooks()) {
        std::array<char, 16> number{};
        snprintf(number.data(), number.size(), "0x%x", log_id);
        shown += "2 security hook " + std::string(number.data()) + " " + hook.name + "\n";
    }
    for (size_t at = 0; at < lines.size();) {
        const size_t end = lines.find('\n', at) + 1;
        shown += "2 security: " + lines.substr(at, end - at);
        at = end;
    }
    return shown;
}

} // namespace

uint32_t drv_sec_log_hook_register(uint32_t log_id, const char *name, drv_sec_log_hook hook) {
    listener_id gone = 0;
    const uint32_t result = operate([&](board &b) {
        refuse_null(name);
        refuse_if(!driver_log::is_name(name), error::bad_value);
        auto &hooks = security_hooks();
        const auto known = hooks.find(log_id);
        refuse_if(known == hooks.end() && hook != nullptr && hooks.size() == hooks_max, error::store_full);
        refuse_if(known == hooks.end() && hook == nullptr, error::no_such_device);
        const registered_hook made{name, hook == nullptr ? 0 : hear_security_log(b, log_id, hook)};
        if (known != hooks.end()) {
            gone = known->second.ears;
            hooks.erase(known);
        }
        if (hook != nullptr) {
            hooks.emplace(log_id, made);
        }
    });
    stop_listening(gone);
    return result;
}

uint32_t drv_sec_log_record(const char *format, ...) {
    std::array<char, line_max> text{};
    if (format != nullptr) {
        va_list values;
        va_start(values, format);
        vsnprintf(text.data(), text.size(), format, values);
        va_end(values);
    }
    return operate([&](board &b) {
        refuse_null(format);
        append_to_ring(b.state_dir(), security_file(b), security_line(text.data()), ring_size);
        if (!security_hooks().empty() && !is_within_security_hook) {
            const std::string_view told(text.data());
            post(b, {topic, 0, 0, {told.begin(), told.end()}});
        }
    });
}

uint32_t drv_sec_log_show() {
    return operate([&](board &b) {
        const std::string shown = shown_security_log(lines_of_ring(b.state_dir(), security_file(b)));
        driver_log::append(b, driver_log::find(b, base_log), shown);
        look_at_sources_again();
    });
}
