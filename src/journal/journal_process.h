#pragma once

#include "journal/journal_format.h"

/** This process. Any thread. */
TJournalProcess this_process();
/** True on this machine, since it was started, and if the id has not been given to another process. */
bool is_running(const TJournalProcess& process);
