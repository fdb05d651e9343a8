#pragma once

#include "platform/support/types.h"

enum : int32 { B_NORMAL_PRIORITY = 10, B_DISPLAY_PRIORITY = 15, B_REAL_TIME_DISPLAY_PRIORITY = 20 };

using thread_func = int32 (*)(void* argument);

/** Creates a thread that waits until `resume_thread`. The name need not be unique. Priorities are kept for
    `get_thread_priority`; they do not affect scheduling. */
[[nodiscard]] thread_id spawn_thread(thread_func entry, const char* name, int32 priority, void* argument);
[[nodiscard]] status_t resume_thread(thread_id thread);
/** Waits until the thread has ended. B_BAD_THREAD_ID when it has already. */
status_t wait_for_thread(thread_id thread, int32* result);
/** The first living thread of this process with that name, or the calling thread for a null name.
    B_NAME_NOT_FOUND when there is none. */
[[nodiscard]] thread_id find_thread(const char* name);
status_t rename_thread(thread_id thread, const char* name);
status_t set_thread_priority(thread_id thread, int32 priority);
/** The last priority set, or B_BAD_THREAD_ID. */
int32 get_thread_priority(thread_id thread);

status_t snooze(bigtime_t microseconds);
/** The monotonic clock. */
bigtime_t system_time();
