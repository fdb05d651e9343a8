#pragma once

#include "platform/support/types.h"

/** Counting semaphores by id; unknown ids give B_BAD_SEM_ID. Thread-safe. The name is not used. */
[[nodiscard]] sem_id create_sem(int32 count, const char* name);
/** Wakes every waiter with B_BAD_SEM_ID. */
status_t delete_sem(sem_id sem);
status_t acquire_sem(sem_id sem);
/** B_WOULD_BLOCK for a timeout of 0, else B_TIMED_OUT; used as a sleep that can be ended, the status may be ignored. */
status_t acquire_sem_etc(sem_id sem, bigtime_t timeout);
status_t release_sem(sem_id sem);
