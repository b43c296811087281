// Commands are compared word by word, so blanks between words do not matter.
#include "sim/drv/drv_basic/service/diag_registry.h"

#include "sim/core/catalogue.h"
#include "sim/drv/driver.h"

#include <algorithm>
#include <optional>

namespace kestro_sim {

namespace {

using diag_words = std::vector<std::string>;

constexpr const char *help_word = "help";

// Of the device that answers, or of the program that registered the handler.
struct known_command {
    diag_words words;
    size_t parameters = 0;
    std::string help;
    drv_diag_handler handler = nullptr;
    std::string (*answer)(board &) = nullptr;
};

using known_commands = std::vector<known_command>;

// Only touched within operations. Kept to the end of the process: drivers are called from exit handlers too.
known_commands &commands_of_program() {
    static auto *const registered = new known_commands;
    return *registered;
}

diag_words words_of(std::string_view line) {
    constexpr std::string_view blanks = " \t\r\n";
    diag_words words;
    for (size_t at = line.find_first_not_of(blanks); at != std::string_view::npos;
         at = line.find_first_not_of(blanks, at)) {
        const size_t end = std::min(line.find_first_of(blanks, at), line.size());
        words.emplace_back(line.substr(at, end - at));
        at = end;
    }
    return words;
}

bool begins_with(const diag_words &words, std::span<const std::string> first) {
    return first.size() <= words.size() && std::equal(first.begin(), first.end(), words.begin());
}

known_commands commands_of_devices() {
    known_commands commands;
    for (const diag_command &each : all_diag_commands()) {
        commands.push_back({words_of(each.words), 0, std::string("[argcnt=0] ") + each.words, nullptr, each.answer});
    }
    return commands;
}

known_commands all_commands() {
    known_commands all = commands_of_devices();
    all.insert(all.end(), commands_of_program().begin(), commands_of_program().end());
    return all;
}

const known_command *find_words(const known_commands &commands, const diag_words &words) {
    const auto found = std::find_if(commands.begin(), commands.end(),
                                    [&](const known_command &known) { return known.words == words; });
    return found == commands.end() ? nullptr : &*found;
}

// How many parameters a help text says that there are: "[argcnt=2] ...".
std::optional<size_t> parameters_in(std::string_view help) {
    constexpr std::string_view head = "[argcnt=";
    if (!help.starts_with(head) || help.size() < head.size() + 2 || help[head.size() + 1] != ']') {
        return std::nullopt;
    }
    const char digit = help[head.size()];
    const bool is_count = digit >= '0' && digit <= '0' + DRV_DIAG_PARAMETERS;
    return is_count ? std::optional(static_cast<size_t>(digit - '0')) : std::nullopt;
}

known_command read_record(const drv_diag_record &record) {
    refuse_null(record.command, record.key, record.help);
    refuse_if(record.handler == nullptr, error::null_pointer);
    const std::string_view command = record.command;
    const std::string_view help = record.help;
    const diag_words words = words_of(command);
    const std::optional<size_t> parameters = parameters_in(help);
    refuse_if(words.empty() || words.back() == help_word || !parameters, error::bad_value);
    refuse_if(command.size() > diag_command_max || help.size() > diag_help_max, error::bad_value);
    return {words, *parameters, std::string(help), record.handler, nullptr};
}

// A number of 32 bits, or below 0 as the program's "%d" shows one.
uint32_t parameter_of(const std::string &word) {
    const auto number = parse_number(word);
    refuse_if(!number, error::bad_value);
    const bool is_negative = word.starts_with('-');
    const auto wide = static_cast<int64_t>(*number);
    refuse_if(is_negative ? wide < INT32_MIN || wide > 0 : *number > UINT32_MAX, error::bad_value);
    return static_cast<uint32_t>(*number);
}

// Of commands that the line begins with, the longest.
const known_command *find_command_of(const known_commands &commands, const diag_words &line) {
    const known_command *longest = nullptr;
    for (const known_command &known : commands) {
        const bool is_longer = longest == nullptr || known.words.size() > longest->words.size();
        if (is_longer && begins_with(line, known.words)) {
            longest = &known;
        }
    }
    return longest;
}

// Whole lines, as many as fit; "..." stands for what is left out.
std::string cut_listing(const diag_words &lines, size_t size) {
    constexpr std::string_view rest = "...\r\n";
    std::string text;
    for (size_t i = 0; i < lines.size(); ++i) {
        const bool is_last = i + 1 == lines.size();
        if (text.size() + lines[i].size() + (is_last ? 0 : rest.size()) >= size) {
            return text + std::string(rest);
        }
        text += lines[i];
    }
    return text;
}

// The help texts of all commands that begin with these words.
std::string listing(const known_commands &commands, std::span<const std::string> first, size_t size) {
    diag_words lines;
    for (const known_command &known : commands) {
        if (begins_with(known.words, first)) {
            lines.push_back(known.help + "\r\n");
        }
    }
    refuse_if(lines.empty(), error::no_such_device);
    return cut_listing(lines, size);
}

} // namespace

void register_diag_commands(std::span<const drv_diag_record> records) {
    refuse_if(records.empty(), error::bad_value);
    refuse_if(records.size() > diag_commands_max, error::store_full);
    const known_commands of_devices = commands_of_devices();
    known_commands added;
    for (const drv_diag_record &record : records) {
        known_command known = read_record(record);
        const bool is_taken =
            find_words(of_devices, known.words) != nullptr || find_words(added, known.words) != nullptr;
        refuse_if(is_taken, error::bad_value);
        added.push_back(std::move(known));
    }
    known_commands registered = commands_of_program();
    std::erase_if(registered, [&](const known_command &old) { return find_words(added, old.words) != nullptr; });
    refuse_if(registered.size() + added.size() > diag_commands_max, error::store_full);
    registered.insert(registered.end(), added.begin(), added.end());
    commands_of_program() = std::move(registered);
}

diag_answer answer_to(board &b, std::string_view line, size_t size) {
    const known_commands commands = all_commands();
    const diag_words words = words_of(line);
    if (!words.empty() && words.back() == help_word) {
        return {listing(commands, std::span(words).first(words.size() - 1), size)};
    }
    const known_command *known = find_command_of(commands, words);
    refuse_if(known == nullptr, error::no_such_device);
    const auto parameters = std::span(words).subspan(known->words.size());
    refuse_if(parameters.size() != known->parameters, error::bad_value);
    diag_answer answer;
    answer.handler = known->handler;
    std::transform(parameters.begin(), parameters.end(), answer.parameters.begin(), parameter_of);
    if (known->answer != nullptr) {
        answer.text = known->answer(b);
    }
    return answer;
}

} // namespace kestro_sim
