// The time in which something that the board keeps, or must keep running, is replaced by a value of a test.
//
// An operator who presses Ctrl-C in the middle of a write test must not leave the test's identity on the board. Between
// begin_test_value and end_test_value the first SIGINT, SIGTERM or SIGHUP waits; the end lets it do what it would have
// done. The second one does so at once, so that a driver that hangs can be left. A signal that was ignored stays so.
//
// A test that waits meanwhile asks whether a signal does, ends its wait then and puts back what the board had.
//
// Begin before the test value is written, end when the saved one has been written back or is given up. The two are not
// nested.
#pragma once

void begin_test_value();
void end_test_value();

// Whether a signal has come since the begin.
bool is_end_asked_for();
