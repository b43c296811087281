// Reads the KESTRO_PROBE_ variables and takes them out of the environment.
#include "probe/settings.h"

#include "probe/cursor.h"

#include <algorithm>
#include <charconv>
#include <csignal>
#include <cstdlib>

namespace kestro_probe {

namespace {

std::string variable(const char *name) {
    const char *content = getenv(name);
    return content != nullptr ? content : "";
}

bool is_switched_on(const std::string &name, const std::string &content, std::string &fault) {
    if (!content.empty() && content != "0" && content != "1") {
        fault = name + " is '" + content + "'; set it to 1 or leave it out";
    }
    return content == "1";
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

bool parse_signal_calls(const std::string &text, signal_calls &signals) {
    const size_t equals = std::min(text.find('='), text.size());
    const std::string name = equals < text.size() ? text.substr(equals + 1) : "INT";
    signals.number = name == "INT" ? SIGINT : name == "TERM" ? SIGTERM : name == "HUP" ? SIGHUP : 0;
    const char *rest = text.data();
    const char *const end = text.data() + equals;
    for (;;) {
        uint64_t call = 0;
        const auto [behind, fault] = std::from_chars(rest, end, call);
        if (fault != std::errc() || call == 0) {
            return false;
        }
        signals.calls.push_back(call);
        if (behind == end) {
            return signals.number != 0;
        }
        if (*behind != ',') {
            return false;
        }
        rest = behind + 1;
    }
}

settings read_settings() {
    settings asked;
    asked.script = variable("KESTRO_PROBE_SCRIPT");
    asked.trace = variable("KESTRO_PROBE_TRACE");
    asked.replay = variable("KESTRO_PROBE_REPLAY");
    asked.strict = is_switched_on("KESTRO_PROBE_STRICT", variable("KESTRO_PROBE_STRICT"), asked.fault);
    asked.trace_output =
        is_switched_on("KESTRO_PROBE_TRACE_OUTPUT", variable("KESTRO_PROBE_TRACE_OUTPUT"), asked.fault);
    const std::string failing = variable("KESTRO_PROBE_FAIL_CALL");
    if (!failing.empty() && !parse_fail_call(failing, asked.failing)) {
        asked.fault = "KESTRO_PROBE_FAIL_CALL is '" + failing +
                      "'; set it to the number of a call, as in 3, 3=0x811101a4, or 3+ for that and all after it";
    }
    const std::string signals = variable("KESTRO_PROBE_SIGNAL_CALL");
    if (!signals.empty() && !parse_signal_calls(signals, asked.signals)) {
        asked.fault = "KESTRO_PROBE_SIGNAL_CALL is '" + signals +
                      "'; set it to numbers of calls, as in 3 or 3,3, and =TERM or =HUP behind them for another signal "
                      "than INT";
    }
    if (asked.trace_output && asked.trace.empty()) {
        asked.fault = "KESTRO_PROBE_TRACE_OUTPUT needs a trace; set KESTRO_PROBE_TRACE as well";
    }
    if (!asked.replay.empty() && (!asked.script.empty() || asked.strict)) {
        asked.fault = "KESTRO_PROBE_REPLAY answers every call by itself; set it without KESTRO_PROBE_SCRIPT and "
                      "KESTRO_PROBE_STRICT";
    }
    return asked;
}

void clean_environment() {
    for (const char *name :
         {"LD_PRELOAD", "KESTRO_PROBE_SCRIPT", "KESTRO_PROBE_STRICT", "KESTRO_PROBE_TRACE", "KESTRO_PROBE_TRACE_OUTPUT",
          "KESTRO_PROBE_REPLAY", "KESTRO_PROBE_FAIL_CALL", "KESTRO_PROBE_SIGNAL_CALL"}) {
        unsetenv(name);
    }
}

bool asks_for_anything(const settings &asked) {
    return asked.strict || asked.failing.first != 0 || !asked.signals.calls.empty() || !asked.script.empty() ||
           !asked.trace.empty() || !asked.replay.empty();
}

} // namespace kestro_probe
