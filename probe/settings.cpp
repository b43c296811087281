// Reads the KESTRO_PROBE_ variables and takes them out of the environment.
#include "probe/settings.h"

#include "probe/cursor.h"

#include <charconv>
#include <cstdlib>

namespace kestro_probe {

namespace {

std::string variable(const char *name) {
    const char *content = getenv(name);
    return content != nullptr ? content : "";
}

} // namespace

bool parse_fail_call(const std::string &text, fail_call &failing) {
    const char *const end = text.data() + text.size();
    auto [rest, fault] = std::from_chars(text.data(), end, failing.first);
    if (fault != std::errc() || failing.first == 0) {
        return false;
    }
    failing.all_after = rest != end && *rest == '+';
    rest += failing.all_after ? 1 : 0;
    if (rest == end) {
        return true;
    }
    if (*rest != '=') {
        return false;
    }
    try {
        cursor code{std::string_view(rest + 1, static_cast<size_t>(end - rest - 1))};
        failing.code = static_cast<uint32_t>(take_number(code, scalar::uint32));
        return code.at == code.line.size();
    } catch (const syntax_error &) {
        return false;
    }
}

settings read_settings() {
    settings asked;
    asked.script = variable("KESTRO_PROBE_SCRIPT");
    asked.trace = variable("KESTRO_PROBE_TRACE");
    asked.replay = variable("KESTRO_PROBE_REPLAY");
    const std::string strict = variable("KESTRO_PROBE_STRICT");
    const std::string failing = variable("KESTRO_PROBE_FAIL_CALL");
    asked.strict = strict == "1";
    if (!strict.empty() && strict != "0" && strict != "1") {
        asked.fault = "KESTRO_PROBE_STRICT is '" + strict + "'; set it to 1 or leave it out";
    }
    if (!failing.empty() && !parse_fail_call(failing, asked.failing)) {
        asked.fault = "KESTRO_PROBE_FAIL_CALL is '" + failing +
                      "'; set it to the number of a call, as in 3, 3=0x811101a4, or 3+ for that and all after it";
    }
    if (!asked.replay.empty() && (!asked.script.empty() || asked.strict)) {
        asked.fault = "KESTRO_PROBE_REPLAY answers every call by itself; set it without KESTRO_PROBE_SCRIPT and "
                      "KESTRO_PROBE_STRICT";
    }
    return asked;
}

void clean_environment() {
    for (const char *name : {"LD_PRELOAD", "KESTRO_PROBE_SCRIPT", "KESTRO_PROBE_STRICT", "KESTRO_PROBE_TRACE",
                             "KESTRO_PROBE_REPLAY", "KESTRO_PROBE_FAIL_CALL"}) {
        unsetenv(name);
    }
}

bool asks_for_anything(const settings &asked) {
    return asked.strict || asked.failing.first != 0 || !asked.script.empty() || !asked.trace.empty() ||
           !asked.replay.empty();
}

} // namespace kestro_probe
