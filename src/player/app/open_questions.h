#pragma once

/** Raises the dialogs that wait for an answer, and the windows they belong to. Display thread. */
void raise_open_questions();
