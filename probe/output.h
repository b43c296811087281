// Shows in the trace what the program prints, so that a reader sees the calls that stand between two lines.
#pragma once

namespace kestro_probe {

// From here on standard output goes through the probe. False: it stays as it was, and errno tells why.
bool start_showing_output();

} // namespace kestro_probe
