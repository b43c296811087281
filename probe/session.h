// Decides how each driver call of a run is answered: by a script, by a recording, by a failure, or by the real driver.
#pragma once

#include "probe/call.h"
#include "probe/settings.h"

#include <map>
#include <mutex>
#include <vector>

namespace kestro_probe {

// How a call is answered. Without a rule, code is the answer and no output is written; real is the driver's own answer.
struct decision {
    bool real = false;
    uint64_t code = 0;
    const rule *by = nullptr;
    int signals = 0; // that the program gets first
};

class session {
  public:
    // rules: of the script, or the lines of the recording.
    session(settings asked, script rules);

    decision decide(const call &made);

    // Reports what the script or the recording expected and did not come.
    void report_left_over();

    // Whether the script or recording has anything to say about an operation.
    bool names(uint32_t operation) const;

    int signal_sent() const {
        return asked_.signals.number;
    }

    // "file:line" of a rule.
    std::string place_of(const rule &named) const;

    // Held while calls are matched; a fork waits for it, so that the child does not find it taken for ever.
    std::mutex &guard() {
        return guard_;
    }

  private:
    decision answer(const call &made, uint64_t number);
    bool fails(uint64_t number) const;
    decision failed(const call &made) const;
    void report_lines_left(uint32_t thread, const std::vector<uint32_t> &left) const;
    decision replayed(const call &made, uint64_t number);
    decision scripted(const call &made, uint64_t number);

    settings asked_;
    script script_;
    std::vector<std::vector<uint32_t>> rules_of_;   // per operation, in file order
    std::vector<uint64_t> used_;                    // per rule
    std::map<uint32_t, std::vector<uint32_t>> due_; // per thread, lines of the recording to come; the next is last
    uint64_t calls_ = 0;
    std::mutex guard_;
};

} // namespace kestro_probe
