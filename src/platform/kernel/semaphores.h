#pragma once

#include "platform/support/types.h"

/** Counting semaphores by id. A waiter is woken with B_BAD_SEM_ID when the semaphore is deleted. */
sem_id create_sem(int32 count, const char* name);
status_t delete_sem(sem_id sem);
status_t acquire_sem(sem_id sem);
status_t acquire_sem_etc(sem_id sem, bigtime_t timeout);
status_t release_sem(sem_id sem);
