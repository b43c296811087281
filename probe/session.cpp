// Matches driver calls against a script or a recording, and keeps count.
#include "probe/session.h"

#include "probe/report.h"

#include <algorithm>

namespace kestro_probe {

namespace {

// A recording whose calls went another way differs in every line that follows; the first ones tell the story.
constexpr size_t most_deviations = 20;

std::string shown(const call &made) {
    return print_thread(made.thread) + print_call(made.operation, shown_inputs(made));
}

void report_deviation(const std::string &text) {
    if (findings() < most_deviations) {
        report_finding(text);
    } else if (findings() == most_deviations) {
        report_finding("kestro_probe: further calls differ as well; they are not shown");
    }
}

} // namespace

session::session(settings asked, script rules)
    : asked_(std::move(asked)), script_(std::move(rules)), rules_of_(operations.size()), used_(script_.rules.size()) {
    for (uint32_t i = 0; i < script_.rules.size(); ++i) {
        rules_of_[script_.rules[i].operation].push_back(i);
    }
    // Each thread of a run follows its own lines; how they stand among those of others is chance.
    for (uint32_t i = static_cast<uint32_t>(script_.rules.size()); !asked_.replay.empty() && i-- > 0;) {
        due_[std::max(script_.rules[i].thread, 1U)].push_back(i);
    }
}

decision session::decide(const call &made) {
    const std::lock_guard lock(guard_);
    const uint64_t number = ++calls_;
    decision decided = answer(made, number);
    decided.signals = static_cast<int>(std::count(asked_.signals.calls.begin(), asked_.signals.calls.end(), number));
    return decided;
}

decision session::answer(const call &made, uint64_t number) {
    // A recording moves on at a call that fails on purpose, for the call was made; a rule of a script is not used up.
    if (!asked_.replay.empty()) {
        const decision answer = replayed(made, number);
        return fails(number) ? failed(made) : answer;
    }
    return fails(number) ? failed(made) : scripted(made, number);
}

decision session::failed(const call &made) const {
    const scalar result = operations[made.operation].result;
    return {false, result == scalar::none ? 0 : normalised(result, asked_.failing.code), nullptr};
}

bool session::fails(uint64_t number) const {
    const uint64_t first = asked_.failing.first;
    return first != 0 && (number == first || (asked_.failing.all_after && number > first));
}

decision session::replayed(const call &made, uint64_t number) {
    std::vector<uint32_t> &to_come = due_[made.thread];
    if (to_come.empty()) {
        report_deviation(script_.file + ": call " + std::to_string(number) +
                         " is beyond the end of the recording: " + shown(made));
        return {false, failure_code, nullptr};
    }
    const uint32_t next = to_come.back();
    const rule &due = script_.rules[next];
    ++used_[next];
    if (used_[next] >= std::max<uint64_t>(due.times, 1)) {
        to_come.pop_back();
    }
    if (!matches(due, made)) {
        report_deviation(place_of(due) + ": call " + std::to_string(number) +
                         " differs from the recording\n  expected " + due.source + "\n  got      " + shown(made));
        return {false, failure_code, nullptr};
    }
    return {due.what == outcome::pass, due.code, &due};
}

decision session::scripted(const call &made, uint64_t number) {
    for (const uint32_t i : rules_of_[made.operation]) {
        const rule &candidate = script_.rules[i];
        const bool left = candidate.times == 0 || used_[i] < candidate.times;
        const bool of_thread = candidate.thread == 0 || candidate.thread == made.thread;
        if (left && of_thread && matches(candidate, made)) {
            ++used_[i];
            return {candidate.what == outcome::pass, candidate.code, &candidate};
        }
    }
    if (!asked_.strict) {
        return {true, 0, nullptr};
    }
    const std::string file = script_.file.empty() ? "kestro_probe" : script_.file;
    report_finding(file + ": no rule answers call " + std::to_string(number) + ": " + shown(made));
    return {false, failure_code, nullptr};
}

void session::report_lines_left(uint32_t thread, const std::vector<uint32_t> &left) const {
    if (left.empty()) {
        return;
    }
    const rule &due = script_.rules[left.back()];
    const std::string of_thread = thread > 1 ? " of thread " + std::to_string(thread) : "";
    report_finding(place_of(due) + ": the run ended with " + std::to_string(left.size()) +
                   (left.size() == 1 ? " line" : " lines") + of_thread + " of the recording left over\n  expected " +
                   due.source);
}

void session::report_left_over() {
    const std::lock_guard lock(guard_);
    for (const auto &[thread, left] : due_) {
        report_lines_left(thread, left);
    }
    for (size_t i = 0; asked_.strict && i < script_.rules.size(); ++i) {
        const rule &unused = script_.rules[i];
        if (used_[i] >= std::max<uint64_t>(unused.times, 1)) {
            continue;
        }
        const std::string often =
            used_[i] == 0 ? "was never used"
                          : "was used " + std::to_string(used_[i]) + " of " + std::to_string(unused.times) + " times";
        report_finding(place_of(unused) + ": this rule " + often + ": " + unused.source);
    }
}

bool session::names(uint32_t operation) const {
    return !rules_of_[operation].empty();
}

std::string session::place_of(const rule &named) const {
    return script_.file + ":" + std::to_string(named.line);
}

} // namespace kestro_probe
