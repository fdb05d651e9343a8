#pragma once

/** Brings what waits for the user's answer before him, with the windows that asked. Display thread. */
void raise_open_questions();
