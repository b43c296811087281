#include "tests/support/command_list.h"

#include <algorithm>
#include <sstream>
#include <stdexcept>

#include "tests/support/cached.h"
#include "tests/support/command.h"

namespace kestro_tests {

namespace {

const std::string &listing_state() {
    static const std::string state = new_scratch_dir();
    return state;
}

process_result run_plain(const std::vector<std::string> &words, const std::string &script) {
    static const std::string script_file = new_scratch_dir() + "/script";
    write_file(script_file, script);
    // Some sub-commands wait for an operator, with words or without.
    process_options process;
    process.interrupt_at = {"wait for ctrl+c\n"};
    return run_sim({"--state", listing_state(), "--clock", "virtual", "--script", script_file}, words, process);
}

// The help texts of a usage listing, which may stand between the lines of a run around it.
std::vector<std::string> help_texts(const std::vector<std::string> &words) {
    const process_result result = run_plain(words, "");
    const std::string head = "List the functionalities for kestro_test \n";
    const size_t start = result.out.find(head);
    if (start == std::string::npos || result.status != 0) {
        throw std::runtime_error("no usage listing: " + result.out + result.err);
    }
    std::istringstream listing(result.out.substr(start + head.size()));
    std::vector<std::string> texts;
    for (std::string line; std::getline(listing, line) && line.rfind(' ', 0) == 0;) {
        texts.push_back(line.substr(1));
    }
    return texts;
}

std::vector<std::string> words_of(const std::string &text) {
    std::istringstream stream(text);
    std::vector<std::string> words;
    for (std::string word; stream >> word;) {
        words.push_back(word);
    }
    return words;
}

bool is_known(const std::string &module, const std::string &name) {
    const process_result result = run_plain({module, name}, "");
    return result.out.find("option " + name + " not recognised.") == std::string::npos;
}

// As a rule the help text begins with the sub-command's name. Some texts carry the operation's name, and some repeat
// the whole command line.
std::string name_in_help(const std::string &module, const std::string &help) {
    const std::vector<std::string> words = words_of(help);
    std::vector<std::string> candidates = {words.at(0)};
    if (words[0].rfind("drv_", 0) == 0) {
        candidates.push_back(words[0].substr(4));
    }
    if (words[0] == "kestro_test" && words.size() > 2) {
        candidates.push_back(words[2]);
    }
    for (const std::string &candidate : candidates) {
        if (is_known(module, candidate)) {
            return candidate;
        }
    }
    throw std::runtime_error("the help text '" + help + "' of " + module + " leads to no sub-command");
}

std::vector<std::string> find_modules() {
    std::vector<std::string> modules;
    for (const std::string &help : help_texts({})) {
        const std::string module = words_of(help).at(1);
        if (std::find(modules.begin(), modules.end(), module) == modules.end()) {
            modules.push_back(module);
        }
    }
    // Its help text is that of digital_test, so the listing does not name it.
    if (run_plain({"usb_test"}, "").out.find("option usb_test not recognised.") == std::string::npos) {
        modules.emplace_back("usb_test");
    }
    return modules;
}

// A line for each sub-command: the module and the name.
std::string find_sub_commands() {
    std::string list;
    for (const std::string &module : find_modules()) {
        for (const std::string &help : help_texts(words_that_list(module))) {
            list += module + " " + name_in_help(module, help) + "\n";
        }
    }
    return list;
}

} // namespace

std::vector<std::string> words_that_list(const std::string &module) {
    if (module == "cdr_test") {
        return {module, "-h", "0xffffffff", "0"};
    }
    if (module == "optical_test") {
        return {module, "-h", "0xffffffff"};
    }
    return {module};
}

void PrintTo(const sub_command &command, std::ostream *out) {
    *out << command.module << " " << command.name;
}

const std::vector<sub_command> &all_sub_commands() {
    static const std::vector<sub_command> commands = [] {
        std::istringstream list(cached("commands", build_dir() + "/kestro_test", find_sub_commands));
        std::vector<sub_command> read;
        for (sub_command command; list >> command.module >> command.name;) {
            read.push_back(command);
        }
        return read;
    }();
    return commands;
}

std::vector<std::string> all_modules() {
    std::vector<std::string> modules;
    for (const sub_command &command : all_sub_commands()) {
        if (modules.empty() || modules.back() != command.module) {
            modules.push_back(command.module);
        }
    }
    return modules;
}

size_t rows_of(const std::string &module) {
    const std::vector<sub_command> &all = all_sub_commands();
    return static_cast<size_t>(
        std::count_if(all.begin(), all.end(), [&](const sub_command &command) { return command.module == module; }));
}

} // namespace kestro_tests
