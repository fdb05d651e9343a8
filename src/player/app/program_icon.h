#pragma once

/** Gives all windows, those to come as well, the program's icon: title bars and task bars show it, also where nothing
    is installed. Drawing it takes a while; the first windows need not wait for it. Any thread. */
void show_program_icon();
