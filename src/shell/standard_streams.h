// The program's standard streams: places that stay its own, and output that is known to have arrived.
#pragma once

// Ends the output of a run. Where standard output could not take all of it, says so on standard error and gives 1,
// whatever the run's own result was: output that nobody could read is neither a pass nor a failure with its lines.
int end_output(int result);

// For what a thread of a driver prints as a block that no other line may come into: holds standard output until it is
// released. False once the run's output has ended; then nothing is held, and the stream must be left alone.
bool hold_output();
void release_output();
