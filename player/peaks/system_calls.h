#pragma once

/** Whether the kernel can; says on standard error if not, and asks once in a process and its children. */
bool system_calls_can_be_filtered();

/** From now on this thread can compute, use its memory, and read and write what is open. What opens a file, connects,
   or starts a thread or a process fails with EACCES, since libraries try it and go on without; any other system call
   ends the process. False when that could not be set up. */
[[nodiscard]] bool filter_system_calls();
