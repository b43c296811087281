// Reads the launcher's options up to the first word, which begins what is kestro_test's own.
#include "sim/launcher/options.h"

#include "sim/core/opened_libraries.h"

#include <CLI/CLI.hpp>

#include <algorithm>
#include <charconv>
#include <iostream>
#include <tuple>

namespace kestro_sim {

namespace {

void describe_options(CLI::App &app, launch_options &options) {
    app.option_defaults()->multi_option_policy(CLI::MultiOptionPolicy::TakeLast);
    app.add_option("--board", options.board, "the board to sit at: a name, or the file of a board or chassis")
        ->type_name("NAME|FILE");
    app.add_option("--state", options.state, "where the board keeps what is written to it")->type_name("DIR");
    app.add_option("--root", options.root, "the board's files, laid out like its root directory")->type_name("DIR");
    app.add_option("--clock", options.clock, "virtual: a wait takes no time, and moves the clock on")
        ->type_name("real|virtual");
    app.add_option("--script", options.script, "results of driver calls")->type_name("FILE");
    app.add_flag("--strict", options.strict, "a call without a rule, or a rule left over, is exit status 99");
    app.add_option("--trace", options.trace, "where each driver call is written")->type_name("FILE");
    app.add_flag("--trace-output", options.trace_output, "show in the trace what is printed, too");
    app.add_option("--replay", options.replay, "a trace whose calls are answered again")->type_name("FILE");
    app.add_option("--fail-call", options.fail_call, "the N-th driver call fails; N+: and all after it")
        ->type_name("N[+][=CODE]");
    app.add_option("--signal-call", options.signal_call, "a signal comes at the N-th driver call; INT without another")
        ->type_name("N[,N][=NAME]");
    app.add_option("--fail-alloc", options.fail_alloc, "the N-th allocation of kestro_test fails")->type_name("N");
    app.add_flag("--reset", options.reset, "make the chassis new first");
    app.add_flag("--accept-images", options.accept_images, "take images that were changed by hand as they now are");
    app.add_option("--without", options.without, "the board has no such driver library; may be repeated")
        ->type_name("LIBRARY")
        ->expected(1)
        ->multi_option_policy(CLI::MultiOptionPolicy::TakeAll);
    for (const auto &[name, places, what] : {std::tuple{"--pull", &options.pull, "take what is at the place out"},
                                             {"--plug", &options.plug, "plug it in again"}}) {
        app.add_option(name, *places, what)
            ->type_name("PLACE")
            ->expected(1)
            ->multi_option_policy(CLI::MultiOptionPolicy::TakeAll);
    }
    // These three are taken out of the line beforehand: their order counts.
    app.add_option("--list", "show registers: all, or those at and below a path")->type_name("PATH")->expected(0, 1);
    app.add_option("--get", "print the value of a register")->type_name("PATH");
    app.add_option("--set", "set a register; may be repeated")->type_name("PATH=VALUE");
    app.add_option("--run", options.run, "another program than kestro_test, such as kestro_call")->type_name("PROGRAM");
    app.add_flag("--discard", options.discard, "run on a copy of the state, which is thrown away afterwards");
}

struct split_line {
    std::vector<std::string> options;
    std::vector<hand_action> by_hand;
    std::vector<std::string> words;
};

std::optional<hand_action::kind> kind_of_hand(std::string_view name) {
    if (name == "--list") {
        return hand_action::kind::list;
    }
    if (name == "--get") {
        return hand_action::kind::get;
    }
    if (name == "--set") {
        return hand_action::kind::set;
    }
    return std::nullopt;
}

// The path of --list may be left out; a word behind it is taken for one.
bool is_bare_list(hand_action::kind kind, const std::vector<std::string> &line, size_t at) {
    return kind == hand_action::kind::list && (at + 1 == line.size() || line[at + 1].starts_with('-'));
}

// Takes one option, and its value where it stands apart; gives the arguments used.
size_t take_option(const CLI::App &app, const std::vector<std::string> &line, size_t at, split_line &split) {
    const std::string &argument = line[at];
    const std::string name = argument.substr(0, argument.find('='));
    const CLI::Option *option = app.get_option_no_throw(name);
    if (option == nullptr) {
        throw launch_error(name, "there is no such option",
                           "kestro_sim --help lists them, and words for kestro_test that begin with - follow --");
    }
    const auto by_hand = kind_of_hand(name);
    if (by_hand && name == argument && is_bare_list(*by_hand, line, at)) {
        split.by_hand.push_back({*by_hand, ""});
        return 1;
    }
    if (option->get_items_expected_max() == 0) {
        split.options.push_back(argument);
        return 1;
    }
    const bool joined = name != argument;
    if (!joined && at + 1 == line.size()) {
        throw launch_error(name, "its value is missing", "right is " + name + " " + option->get_type_name());
    }
    const std::string value = joined ? argument.substr(name.size() + 1) : line[at + 1];
    if (value.empty()) {
        throw launch_error(name, "its value is empty", "right is " + name + " " + option->get_type_name());
    }
    if (by_hand) {
        split.by_hand.push_back({*by_hand, value});
        return joined ? 1 : 2;
    }
    // Joined, a value that looks like an option is still this option's value.
    split.options.push_back(name + "=" + value);
    return joined ? 1 : 2;
}

split_line split_at_first_word(const CLI::App &app, const std::vector<std::string> &line) {
    split_line split;
    size_t at = 0;
    while (at < line.size() && line[at].size() > 1 && line[at][0] == '-' && line[at] != "--") {
        at += take_option(app, line, at, split);
    }
    if (at < line.size() && line[at] == "--") {
        ++at;
    }
    split.words.assign(line.begin() + static_cast<std::ptrdiff_t>(at), line.end());
    return split;
}

// A whole text that is a number from `least` to 0xffffffff.
bool is_number(std::string_view text, unsigned least, bool hexadecimal_too) {
    int base = 10;
    if (hexadecimal_too && (text.starts_with("0x") || text.starts_with("0X"))) {
        text.remove_prefix(2);
        base = 16;
    }
    uint32_t value = 0;
    const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), value, base);
    return error == std::errc() && end == text.data() + text.size() && value >= least;
}

bool is_failing_call(std::string_view text) {
    const size_t equals = text.find('=');
    if (equals != std::string_view::npos && !is_number(text.substr(equals + 1), 0, true)) {
        return false;
    }
    std::string_view number = text.substr(0, equals);
    if (number.ends_with('+')) {
        number.remove_suffix(1);
    }
    return is_number(number, 1, false);
}

// Numbers from 1 on with commas between them, and maybe the name of a signal.
bool names_signalled_calls(std::string_view text) {
    const size_t equals = text.find('=');
    if (equals != std::string_view::npos) {
        const std::string_view name = text.substr(equals + 1);
        if (name != "INT" && name != "TERM" && name != "HUP") {
            return false;
        }
        text = text.substr(0, equals);
    }
    for (size_t comma = text.find(','); comma != std::string_view::npos; comma = text.find(',')) {
        if (!is_number(text.substr(0, comma), 1, false)) {
            return false;
        }
        text.remove_prefix(comma + 1);
    }
    return is_number(text, 1, false);
}

// Written as the library, or as its file: drv_mng_eth, libdrv_mng_eth.so.
std::string library_named(std::string_view word) {
    std::string name(word);
    if (name.starts_with("lib") && name.ends_with(".so")) {
        name = name.substr(3, name.size() - 6);
    }
    std::string known;
    for (const char *library : opened_libraries) {
        if (name == library) {
            return name;
        }
        known += (known.empty() ? "" : ", ") + std::string(library);
    }
    throw launch_error("--without", "'" + std::string(word) + "' is no library that a board may lack",
                       "right are " + known);
}

void check_values(const launch_options &options) {
    if (options.clock != "real" && options.clock != "virtual") {
        throw launch_error("--clock", "'" + options.clock + "' is no clock", "right are real and virtual");
    }
    if (options.trace_output && options.trace.empty()) {
        throw launch_error("--trace-output", "there is no trace to show the output in", "add --trace FILE");
    }
    if (!options.replay.empty() && (!options.script.empty() || options.strict)) {
        throw launch_error("--replay", "a recording answers every call by itself", "leave out --script and --strict");
    }
    if (!options.fail_call.empty() && !is_failing_call(options.fail_call)) {
        throw launch_error("--fail-call", "'" + options.fail_call + "' names no call",
                           "right are N, N+, N=CODE and N+=CODE, N from 1 on, CODE decimal or 0x-hexadecimal");
    }
    if (!options.signal_call.empty() && !names_signalled_calls(options.signal_call)) {
        throw launch_error("--signal-call", "'" + options.signal_call + "' names no call",
                           "right are N, N,N and N=TERM, N from 1 on, the signal INT, TERM or HUP");
    }
    if (!options.fail_alloc.empty() && !is_number(options.fail_alloc, 1, false)) {
        throw launch_error("--fail-alloc", "'" + options.fail_alloc + "' names no allocation",
                           "right is a number from 1 on");
    }
}

} // namespace

std::optional<launch_options> read_options(int count, char **arguments) {
    launch_options options;
    CLI::App app("Runs kestro_test on a simulated board.", "kestro_sim");
    app.set_help_flag("--help", "print this help and end");
    app.footer("What follows the first word, or --, is handed to kestro_test as it is.");
    describe_options(app, options);
    split_line split = split_at_first_word(app, {arguments + 1, arguments + count});
    std::reverse(split.options.begin(), split.options.end());
    try {
        app.parse(split.options);
    } catch (const CLI::CallForHelp &) {
        if (!(std::cout << app.help() << std::flush)) {
            throw launch_error("standard output", "cannot be written", "it takes what --help shows");
        }
        return std::nullopt;
    } catch (const CLI::ParseError &problem) {
        throw launch_error("command line", problem.what(), "kestro_sim --help shows how it is written");
    }
    check_values(options);
    for (std::string &library : options.without) {
        library = library_named(library);
    }
    options.by_hand = std::move(split.by_hand);
    options.words = std::move(split.words);
    return options;
}

} // namespace kestro_sim
