#pragma once

/** Sets the icon of all current and future windows, also for a program that is not installed. Asynchronous, since
    rendering takes a while. Any thread. */
void show_program_icon();
