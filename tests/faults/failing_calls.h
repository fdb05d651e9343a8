#pragma once

#include <string>

/** Makes system calls fail, for tests: the program that links this intercepts the calls that write files. Only those of
    the arming thread count, and only on files below the armed folders. */
namespace failing_calls {

enum class Fate { kFails, kKills };

/** The `number`th call (from 1) fails with `error`, or ends the process before it is made; 0: none does. With
    `areAll` every later call fails, too, as on a full disk, where files can still be removed. */
void arm(const std::string& folder, int number, int error, Fate fate = Fate::kFails, bool areAll = false);
void disarm();
/** The name of the call that failed while armed last; empty when there were fewer calls. */
std::string failed_call();

} // namespace failing_calls
