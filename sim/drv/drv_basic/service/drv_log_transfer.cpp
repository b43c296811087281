// The transfer of logs into a file: a log in each slice of time, on the thread that delivers events. It ends with the
// process that began it; a record lock tells other processes that this one lives.
#include "drv_basic/service/drv_log.h"

#include "sim/core/events.h"
#include "sim/core/state_files.h"
#include "sim/core/time.h"
#include "sim/devices/service/driver_log.h"
#include "sim/drv/driver.h"

#include <algorithm>
#include <cstdio>
#include <fcntl.h>
#include <optional>
#include <sys/stat.h>
#include <utility>

using namespace kestro_sim;

namespace {

constexpr const char *topic = "log transfer";
constexpr uint32_t longest_slice = 60 * 60 * 1000;
constexpr uint32_t core_max = 7;

enum transfer_mode : uint32_t { mode_running = 0, mode_progress = 1 };
enum transfer_progress : uint32_t { progress_none, progress_all, progress_waiting, progress_full, progress_failed };

struct log_transfer_work {
    uint32_t core;
    int64_t begin;
    int64_t slice;
    std::string path;
    uint64_t max_size;
    listener_id ears;
    open_file lock; // held as long as the process lives
    uint32_t next_log = 0;
};

// Only touched within operations, and never freed: drivers are called from exit handlers too.
std::optional<log_transfer_work> &transfer_of_process() {
    static auto *const own = new std::optional<log_transfer_work>;
    return *own;
}

device_of<log_transfer::family> latest_transfer(board &b) {
    return board::at<log_transfer::family>(b.self());
}

bool is_under_way(board &b) {
    return b.get(latest_transfer(b), log_transfer::outcome) == log_transfer::under_way;
}

std::vector<driver_log::one> logs_of_core(board &b, uint32_t core) {
    std::vector<driver_log::one> logs = driver_log::all(b);
    std::erase_if(logs, [&](const driver_log::one &log) { return b.get(log, driver_log::core) != core; });
    return logs;
}

bool has_lines(board &b, const driver_log::one &log) {
    return !lines_of_ring(b.state_dir(), driver_log::file(b, log)).empty();
}

// The logs take turns.
std::optional<driver_log::one> next_log_with_lines(board &b, uint32_t core, uint32_t from) {
    std::optional<driver_log::one> first;
    for (const driver_log::one &log : logs_of_core(b, core)) {
        if ((log.id < from && first) || !has_lines(b, log)) {
            continue;
        }
        if (log.id >= from) {
            return log;
        }
        first = log;
    }
    return first;
}

// While nothing waits nothing is due. Slices that went by meanwhile are not made up for.
std::optional<due_events> next_slice(board &b, int64_t after) {
    const auto &own = transfer_of_process();
    if (!own || !is_under_way(b) || !next_log_with_lines(b, own->core, own->next_log)) {
        return std::nullopt;
    }
    const int64_t latest = std::max(after + 1, b.now() - own->slice + 1);
    const int64_t slices = std::max<int64_t>(1, (latest - own->begin + own->slice - 1) / own->slice);
    return due_events{own->begin + slices * own->slice, {{topic, 0, 0, {}}}};
}

struct record_lock {
    static constexpr const char *file = "/transfer.lock";

    static open_file open_in(board &b, int flags) {
        return open_of_state(b.state_dir(), "log/" + b.self() + file, flags);
    }
    static struct flock whole(short type) {
        struct flock all {};
        all.l_type = type;
        all.l_whence = SEEK_SET;
        return all;
    }
    static bool take(const open_file &held) {
        struct flock all = whole(F_WRLCK);
        return fcntl(held.get(), F_SETLK, &all) == 0;
    }
    static bool is_held_by_another(const open_file &seen) {
        struct flock all = whole(F_WRLCK);
        return fcntl(seen.get(), F_GETLK, &all) == 0 && all.l_type != F_UNLCK;
    }
};

// A file of this process closed would let go of its lock, so it asks for none when it has one.
bool is_transfer_alive(board &b) {
    if (transfer_of_process()) {
        return true;
    }
    const open_file seen = record_lock::open_in(b, O_RDWR);
    return seen && record_lock::is_held_by_another(seen);
}

struct piece_of_log {
    uint32_t id = 0;
    std::string name;
    std::string lines;
    std::string path;
    uint64_t max_size = 0;
};

struct written_piece {
    size_t lines_taken = 0; // bytes of the log's lines
    uint32_t outcome = log_transfer::under_way;
};

std::optional<piece_of_log> next_piece() {
    std::optional<piece_of_log> piece;
    operate([&](board &b) {
        auto &own = transfer_of_process();
        if (!own || !is_under_way(b)) {
            return;
        }
        if (const auto log = next_log_with_lines(b, own->core, own->next_log)) {
            own->next_log = log->id + 1;
            piece = piece_of_log{log->id, b.text(*log, driver_log::name),
                                 lines_of_ring(b.state_dir(), driver_log::file(b, *log)), own->path, own->max_size};
        }
    });
    return piece;
}

open_file open_target(const std::string &path) {
    open_file target(open(path.c_str(), O_WRONLY | O_CREAT | O_NONBLOCK | O_NOCTTY | O_CLOEXEC, 0644));
    struct stat status {};
    if (target && (fstat(target.get(), &status) != 0 || !S_ISREG(status.st_mode))) {
        return {};
    }
    return target;
}

uint64_t size_of_target(const open_file &target) {
    struct stat status {};
    return fstat(target.get(), &status) == 0 ? static_cast<uint64_t>(status.st_size) : 0;
}

// Whole lines, each behind the name of its log. What could not be written is taken back.
written_piece write_piece(const piece_of_log &piece) {
    const open_file target = open_target(piece.path);
    if (!target) {
        return {0, log_transfer::failed};
    }
    const uint64_t size = size_of_target(target);
    const uint64_t room = piece.max_size - std::min(size, piece.max_size);
    written_piece done;
    std::string text;
    while (done.lines_taken < piece.lines.size()) {
        const size_t end = piece.lines.find('\n', done.lines_taken) + 1;
        const std::string line = piece.name + ": " + piece.lines.substr(done.lines_taken, end - done.lines_taken);
        if (text.size() + line.size() > room) {
            done.outcome = log_transfer::full;
            break;
        }
        text += line;
        done.lines_taken = end;
    }
    if (!write_at(target, text.data(), text.size(), size)) {
        static_cast<void>(!ftruncate(target.get(), static_cast<off_t>(size)));
        return {0, log_transfer::failed};
    }
    return done;
}

// Lines that came meanwhile stay, and so do those of a log that has turned over: they come twice rather than never.
void take_out(board &b, const piece_of_log &piece, size_t taken) {
    const auto log = driver_log::find(b, piece.id);
    const std::string now = lines_of_ring(b.state_dir(), driver_log::file(b, log));
    if (taken != 0 && now.starts_with(std::string_view(piece.lines).substr(0, taken))) {
        replace_ring(b.state_dir(), driver_log::file(b, log), std::string_view(now).substr(taken));
    }
}

// On the thread that delivers events. The file is written without the lock: it may be anywhere.
void move_one_log(const event & /*news*/) {
    const auto piece = next_piece();
    if (!piece) {
        return;
    }
    const written_piece done = write_piece(*piece);
    const uint32_t kept = operate([&](board &b) { take_out(b, *piece, done.lines_taken); });
    // Lines that cannot be taken out would be written again and again.
    const uint32_t outcome = kept == 0 ? done.outcome : log_transfer::failed;
    if (outcome != log_transfer::under_way) {
        operate([&](board &b) { b.put(latest_transfer(b), log_transfer::outcome, outcome); });
    }
}

uint32_t progress(board &b) {
    switch (b.get(latest_transfer(b), log_transfer::outcome)) {
    case log_transfer::under_way: {
        const uint32_t core = b.get(latest_transfer(b), log_transfer::core);
        return next_log_with_lines(b, core, 0) ? progress_waiting : progress_all;
    }
    case log_transfer::full:
        return progress_full;
    case log_transfer::failed:
        return progress_failed;
    default:
        return progress_none;
    }
}

void check_words(board &b, uint32_t core, uint32_t time_slice, const char *path, uint32_t max_size) {
    refuse_null(path);
    refuse_if(core > core_max || logs_of_core(b, core).empty(), error::no_such_device);
    refuse_if(time_slice == 0 || time_slice > longest_slice || max_size == 0, error::bad_value);
    refuse_if(path[0] != '/', error::bad_value);
    refuse_if(is_transfer_alive(b) && is_under_way(b), error::not_ready);
}

void begin_transfer(board &b, log_transfer_work work) {
    static bool is_source = false;
    if (!is_source) {
        add_event_source(topic, next_slice);
        is_source = true;
    }
    auto &own = transfer_of_process();
    if (own) {
        work.lock = std::move(own->lock);
    } else {
        work.lock = record_lock::open_in(b, O_RDWR | O_CREAT);
        refuse_if(!work.lock, error::read_only);
        refuse_if(!record_lock::take(work.lock), error::not_ready);
    }
    const uint32_t core = work.core;
    work.ears = own ? own->ears : listen(b, topic, move_one_log);
    own = std::move(work);
    b.put_all(latest_transfer(b), {{log_transfer::outcome, log_transfer::under_way}, {log_transfer::core, core}});
}

} // namespace

uint32_t drv_log_transfer(uint32_t core, uint32_t time_slice, const char *path, uint32_t max_size) {
    const uint32_t refused = operate([&](board &b) { check_words(b, core, time_slice, path, max_size); });
    if (refused != 0) {
        return refused;
    }
    const bool is_writable = static_cast<bool>(open_target(path));
    return operate([&](board &b) {
        refuse_if(!is_writable, error::bad_value);
        check_words(b, core, time_slice, path, max_size);
        begin_transfer(b, {core, b.now(), time_slice * nanoseconds_per_millisecond, path, max_size, 0, open_file(), 0});
    });
}

uint32_t drv_log_transfer_status(uint32_t mode, uint32_t *status) {
    return operate([&](board &b) {
        refuse_null(status);
        refuse_if(mode > mode_progress, error::bad_value);
        *status = mode == mode_running ? static_cast<uint32_t>(is_under_way(b) && is_transfer_alive(b)) : progress(b);
    });
}
