// kestro_call: calls drivers by hand.
#include "probe/caller.h"
#include "probe/report.h"
#include "probe/trace.h"

#include <iostream>
#include <unistd.h>

using namespace kestro_probe;

namespace {

constexpr const char *help =
    R"(kestro_call [--wait SECONDS] [CALL...]
kestro_call --list [PART]

Calls drivers and prints each call with its result. Without words, the calls are read from standard input, one a line;
# starts a comment.

  kestro_call 'drv_mac_get_num(inst_id=0xffffffff, type_id=1)'

What is not named is 0 or null; inst_id is then the board itself, and a size fits its area. An output that is named
says what stands in its area before, or null for none. `callback` registers a function that prints a comment when it
is called. `wait 0.5` is a pause of half a second.

  --wait SECONDS  stay that long after the last call, to be called back
  --list [PART]   the operations with PART in their name, with inputs and outputs
  --help          this

The libraries are found in LD_LIBRARY_PATH; on a desk, kestro_sim --run kestro_call -- CALL... sets it.
Exit status: 0 every call returned 0, 1 one did not or a driver wrote beyond an area, 2 a line or a library is wrong.
)";

struct words {
    double wait = 0;
    std::vector<std::string> calls;
};

bool printed_all(std::ostream &out) {
    if (!out.flush()) {
        std::cerr << "kestro_call: standard output: cannot be written; it takes what --help and --list show\n";
        return false;
    }
    return true;
}

int list_operations(std::string_view part) {
    bool any = false;
    for (const operation &op : operations) {
        if (std::string_view(op.name).find(part) != std::string_view::npos) {
            std::cout << signature(op) << "\n";
            any = true;
        }
    }
    if (!any) {
        std::cerr << "kestro_call: no operation has '" << part << "' in its name; --list shows all\n";
    }
    return printed_all(std::cout) && any ? 0 : 2;
}

double take_seconds(const char *text) {
    return parse_request("--wait", std::string("wait ") + (text != nullptr ? text : "")).seconds;
}

words read_words(int count, char **arguments) {
    words read;
    for (int i = 1; i < count; ++i) {
        const std::string_view word = arguments[i];
        if (word == "--wait") {
            read.wait = take_seconds(arguments[++i]);
        } else if (word.starts_with("-") && read.calls.empty()) {
            throw call_error("there is no option '" + std::string(word) + "'; kestro_call --help lists them");
        } else {
            read.calls.emplace_back(word);
        }
    }
    return read;
}

// All are read before the first is made: a mistyped one leaves the board as it was.
bool call_words(const std::vector<std::string> &calls) {
    std::vector<request> asked;
    for (size_t i = 0; i < calls.size(); ++i) {
        if (!is_blank(calls[i])) {
            asked.push_back(parse_request("call " + std::to_string(i + 1), calls[i]));
        }
    }
    bool good = true;
    for (const request &one : asked) {
        good &= carry_out(one);
    }
    return good;
}

bool call_lines() {
    bool good = true;
    size_t number = 0;
    for (std::string line; std::getline(std::cin, line);) {
        ++number;
        good &= is_blank(line) || carry_out(parse_request("standard input:" + std::to_string(number), line));
    }
    return good;
}

bool run(const words &asked) {
    const bool good = asked.calls.empty() ? call_lines() : call_words(asked.calls);
    pause_for(asked.wait);
    return good;
}

} // namespace

int main(int count, char **arguments) {
    const std::string_view first = count > 1 ? arguments[1] : "";
    if (first == "--help" || first == "-h") {
        return printed_all(std::cout << help) ? 0 : 2;
    }
    if (first == "--list") {
        return list_operations(count > 2 ? arguments[2] : "");
    }
    start_trace(STDOUT_FILENO, "standard output");
    try {
        const bool good = run(read_words(count, arguments));
        return findings() > 0 ? 2 : good ? 0 : 1;
    } catch (const call_error &problem) {
        std::cerr << "kestro_call: " << problem.what() << "\n";
    }
    return 2;
}
