// The fan monitor: a thread that keeps all fans at half speed and warns on the console of those that stall or raise
// alarms. No sub-command starts it; it is for programs that stay.
#pragma once

// Starts it, once in the life of a process. 0, also where it has been started or there are no fan trays; -1 when there
// can be no thread. The trays are listed anew by each call.
int fan_monitor_start();

// Between these the monitor leaves all speeds alone: it ends when it comes to its next round, and does not come back. A
// test that is over by then, within half a minute, has not met it and leaves it running.
void begin_fan_speed_test();
void end_fan_speed_test();
