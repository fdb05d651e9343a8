#pragma once

#include <QImage>

/** Sets the icon of all current and future windows, also for a program that is not installed. Asynchronous, since
    rendering takes a while. Any thread. */
void show_program_icon();

/** The icon rendered at that size in pixels. Any thread. */
QImage program_icon_image(int side);
