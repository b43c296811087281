// A run within the fork server itself, after which everything is as it was before.
//
// An emulator translates code when it is first executed, which takes it far longer than executing it, and a child
// inherits what has been translated: three quarters of a short run's time go into translating what each run before it
// has executed as well. So the server goes through a run of its own first, and is then put back: its memory from a
// copy, its descriptors and signal handlers one by one. A rehearsed run starts no threads and opens nothing that would
// outlast it.
#pragma once

namespace kestro_tests {

// Comes back twice, as fork does: with true for the rehearsal, and when that has come to its end, with false in the
// server as it was. With false at once when there is no memory for it.
bool begin_rehearsal();

bool is_rehearsing();

// Where the run would end.
[[noreturn]] void end_rehearsal();

} // namespace kestro_tests
