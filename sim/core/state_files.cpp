// Files of a state directory: opened without following links, read and written whole.
#include "sim/core/state_files.h"

#include <cerrno>
#include <sys/stat.h>
#include <vector>

namespace kestro_sim {

namespace fs = std::filesystem;

namespace {

constexpr uint64_t line_end_search = 4096;

// Where the last whole line ends.
uint64_t end_of_lines(const open_file &file, uint64_t size) {
    std::vector<char> tail(static_cast<size_t>(std::min(size, line_end_search)));
    const uint64_t begin = size - tail.size();
    if (!read_at(file, tail.data(), tail.size(), begin)) {
        return size;
    }
    while (!tail.empty() && tail.back() != '\n') {
        tail.pop_back();
    }
    return tail.empty() && begin != 0 ? size : begin + tail.size();
}

open_file open_log(const fs::path &state_dir, const fs::path &name) {
    open_file file = open_of_state(state_dir, name, O_RDWR | O_CREAT);
    if (!file) {
        fail_on(state_dir / name, "written", errno);
    }
    return file;
}

// A line beyond any room loses its end.
std::string cut_to(std::string_view line, uint64_t size) {
    std::string cut(line.substr(0, static_cast<size_t>(std::min<uint64_t>(line.size(), size))));
    if (!cut.empty()) {
        cut.back() = '\n';
    }
    return cut;
}

// As many of the whole lines before `end` as there is room for.
std::string newest_lines(const open_file &file, uint64_t end, uint64_t room) {
    std::string lines(static_cast<size_t>(std::min(end, room)), '\0');
    if (!read_at(file, lines.data(), lines.size(), end - lines.size())) {
        return "";
    }
    char before = '\n';
    if (lines.size() < end && read_at(file, &before, 1, end - lines.size() - 1) && before != '\n') {
        const size_t line_end = lines.find('\n');
        lines.erase(0, line_end == std::string::npos ? line_end : line_end + 1);
    }
    return lines;
}

uint64_t size_of(const open_file &file, const fs::path &path) {
    struct stat status {};
    if (fstat(file.get(), &status) != 0 || !S_ISREG(status.st_mode)) {
        throw store_error(path.string() + ": is no file; take it away");
    }
    return static_cast<uint64_t>(status.st_size);
}

} // namespace

open_file open_of_state(const fs::path &state_dir, const fs::path &name, int flags, mode_t mode) {
    // Nobody waits for the other end of a pipe that lies there.
    flags |= O_NOFOLLOW | O_NONBLOCK | O_CLOEXEC;
    if (!name.has_parent_path()) {
        return open_file(open((state_dir / name).c_str(), flags, mode));
    }
    open_file folder;
    for (const fs::path &step : name.parent_path()) {
        // The way to the state itself is its user's own.
        const fs::path where = folder ? step : state_dir / step;
        folder = open_file(
            openat(folder ? folder.get() : AT_FDCWD, where.c_str(), O_PATH | O_DIRECTORY | O_NOFOLLOW | O_CLOEXEC));
        if (!folder) {
            return folder;
        }
    }
    return open_file(openat(folder.get(), name.filename().c_str(), flags, mode));
}

bool read_at(const open_file &file, void *bytes, size_t size, uint64_t offset) {
    size_t done = 0;
    while (done < size) {
        const ssize_t got =
            pread(file.get(), static_cast<char *>(bytes) + done, size - done, static_cast<off_t>(offset + done));
        if (got == 0) {
            errno = ENODATA;
            return false;
        }
        if (got < 0 && errno != EINTR) {
            return false;
        }
        done += got > 0 ? static_cast<size_t>(got) : 0;
    }
    return true;
}

bool write_at(const open_file &file, const void *bytes, size_t size, uint64_t offset) {
    size_t done = 0;
    while (done < size) {
        const ssize_t put =
            pwrite(file.get(), static_cast<const char *>(bytes) + done, size - done, static_cast<off_t>(offset + done));
        if (put < 0 && errno != EINTR) {
            return false;
        }
        done += put > 0 ? static_cast<size_t>(put) : 0;
    }
    return true;
}

void write_new_file(const fs::path &file, std::span<const uint8_t> content) {
    const open_file made(open(file.c_str(), O_WRONLY | O_CREAT | O_EXCL | O_NOFOLLOW | O_CLOEXEC, 0644));
    if (!made || !write_at(made, content.data(), content.size(), 0)) {
        fail_on(file, "written", errno);
    }
}

void replace_ring(const fs::path &state_dir, const fs::path &name, std::string_view lines) {
    fs::path made = name;
    made += ".new";
    {
        const open_file file = open_of_state(state_dir, made, O_WRONLY | O_CREAT | O_TRUNC);
        if (!file || !write_at(file, lines.data(), lines.size(), 0)) {
            const int reason = errno;
            std::error_code ignored;
            fs::remove(state_dir / made, ignored);
            fail_on(state_dir / name, "written", reason);
        }
    }
    fs::rename(state_dir / made, state_dir / name);
}

void append_to_ring(const fs::path &state_dir, const fs::path &name, std::string_view line, uint64_t size_max) {
    const fs::path path = state_dir / name;
    const open_file file = open_log(state_dir, name);
    const uint64_t size = size_of(file, path);
    const uint64_t end = end_of_lines(file, size);
    if (end + line.size() > size_max) {
        const std::string cut = cut_to(line, size_max);
        const uint64_t room = size_max - cut.size();
        replace_ring(state_dir, name, newest_lines(file, end, std::min(room, size_max / 2)) + cut);
        return;
    }
    if (end != size && ftruncate(file.get(), static_cast<off_t>(end)) != 0) {
        fail_on(path, "written", errno);
    }
    if (!write_at(file, line.data(), line.size(), end)) {
        const int reason = errno;
        // When even this fails, the next line takes the half one back.
        static_cast<void>(!ftruncate(file.get(), static_cast<off_t>(end)));
        fail_on(path, "written", reason);
    }
}

std::string lines_of_ring(const fs::path &state_dir, const fs::path &name) {
    const open_file file = open_of_state(state_dir, name, O_RDONLY);
    if (!file) {
        if (errno == ENOENT) {
            return "";
        }
        fail_on(state_dir / name, "read", errno);
    }
    const uint64_t end = end_of_lines(file, size_of(file, state_dir / name));
    return newest_lines(file, end, end);
}

} // namespace kestro_sim
