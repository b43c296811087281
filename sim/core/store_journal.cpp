// The journal: how a change gets into the state entirely or not at all.
#include "sim/core/store_contents.h"

#include "sim/core/state_files.h"

#include <algorithm>
#include <cerrno>
#include <sys/stat.h>

namespace kestro_sim {

using namespace store_layout;

namespace {

void write_pieces(store_targets &files, const std::vector<store_piece> &pieces) {
    for (const store_piece &piece : pieces) {
        if (!write_at(files.of(piece.target), piece.bytes.data(), piece.bytes.size(), piece.offset)) {
            fail_on(files.name_of(piece.target), "written", errno);
        }
    }
}

// What stands in the places of these pieces now.
std::vector<store_piece> present(store_targets &files, const std::vector<store_piece> &places) {
    std::vector<store_piece> found = places;
    for (store_piece &piece : found) {
        if (!read_at(files.of(piece.target), piece.bytes.data(), piece.bytes.size(), piece.offset)) {
            fail_on(files.name_of(piece.target), "read", errno);
        }
    }
    return found;
}

// Writes only what has changed: the place that could not be written cannot be written now either.
void take_back(store_targets &files, const std::vector<store_piece> &before) {
    const std::vector<store_piece> now = present(files, before);
    std::vector<store_piece> changed;
    for (size_t i = 0; i < before.size(); ++i) {
        if (now[i].bytes != before[i].bytes) {
            changed.push_back(before[i]);
        }
    }
    write_pieces(files, changed);
}

std::vector<uint8_t> journal_of(const std::vector<store_piece> &pieces) {
    std::vector<uint8_t> journal;
    for (const store_piece &piece : pieces) {
        const journal_item item{piece.target, static_cast<uint32_t>(piece.bytes.size()), piece.offset};
        const auto head = bytes_of(item);
        journal.insert(journal.end(), head.begin(), head.end());
        journal.insert(journal.end(), piece.bytes.begin(), piece.bytes.end());
    }
    return journal;
}

std::vector<store_piece> pieces_in(std::span<const uint8_t> journal) {
    std::vector<store_piece> pieces;
    while (journal.size() >= sizeof(journal_item)) {
        journal_item item{};
        std::memcpy(&item, journal.data(), sizeof(item));
        journal = journal.subspan(sizeof(item));
        const auto bytes = journal.first(std::min<size_t>(item.length, journal.size()));
        pieces.push_back({item.target, item.offset, {bytes.begin(), bytes.end()}});
        journal = journal.subspan(bytes.size());
    }
    return pieces;
}

// Writes the room of further registers, so that putting one later takes none.
void make_room(store_contents &known, uint32_t cells) {
    struct stat status {};
    if (fstat(known.file.get(), &status) != 0) {
        fail_on(known.store_file(), "read", errno);
    }
    const auto end = static_cast<uint64_t>(status.st_size);
    if (cell_at(known.head, cells) <= end) {
        return;
    }
    const uint32_t steps = (cells + cells_step - 1) / cells_step;
    const std::vector<uint8_t> room(static_cast<size_t>(cell_at(known.head, steps * cells_step) - end));
    if (!write_at(known.file, room.data(), room.size(), end)) {
        const int reason = errno;
        static_cast<void>(!ftruncate(known.file.get(), status.st_size));
        fail_on(known.store_file(), "written", reason);
    }
}

void set_mark(store_contents &known, const journal_head &mark) {
    known.write_store(&mark, sizeof(mark), journal_at);
}

} // namespace

void store::write_journal(const store_plan &made) {
    const std::vector<uint8_t> journal = journal_of(made.pieces);
    if (journal.size() > journal_room) {
        throw std::length_error("change does not fit the journal with its checksums");
    }
    known_->write_store(journal.data(), journal.size(), journal_bytes_at);
    set_mark(*known_, {1, static_cast<uint32_t>(journal.size()), checksum(journal), 0});
}

void store::apply_or_take_back(store_plan &made) {
    const std::vector<store_piece> before = present(made.files, made.pieces);
    write_journal(made);
    try {
        write_pieces(made.files, made.pieces);
    } catch (const store_error &) {
        try {
            take_back(made.files, before);
            set_mark(*known_, {});
        } catch (const store_error &) {
            // The mark stays: the next operation that can write brings the change about.
        }
        throw;
    }
    set_mark(*known_, {});
}

bool store::commit(const change &writes) {
    wake();
    known_->require_writable();
    auto made = plan_of(*known_, writes);
    if (!made) {
        return false;
    }
    make_room(*known_, made->head.cells_used);
    apply_or_take_back(*made);
    known_->head = made->head;
    for (const auto &[key, cell] : made->cells) {
        known_->cells.insert_or_assign(key, cell);
    }
    return true;
}

void store::record(const change &writes) {
    wake();
    if (const auto made = plan_of(*known_, writes)) {
        known_->require_writable();
        make_room(*known_, made->head.cells_used);
        write_journal(*made);
    }
}

void store::recover() {
    journal_head mark{};
    known_->read_store(&mark, sizeof(mark), journal_at);
    if (mark.committed == 0) {
        return;
    }
    std::vector<uint8_t> journal(std::min<size_t>(mark.length, journal_room));
    known_->read_store(journal.data(), journal.size(), journal_bytes_at);
    if (checksum(journal) != mark.checksum) {
        throw store_error(known_->store_file().string() + ": its journal is damaged; make the chassis new with --reset",
                          error::damaged);
    }
    known_->require_writable();
    store_targets files(*known_);
    write_pieces(files, pieces_in(journal));
    set_mark(*known_, {});
}

} // namespace kestro_sim
