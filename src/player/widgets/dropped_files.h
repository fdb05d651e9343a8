#pragma once

#include <QDropEvent>

#include <string>
#include <vector>

/** The addresses of what is dropped from elsewhere, unchecked (player/song_address.h). */
std::vector<std::string> dropped_files(const QDropEvent& event);
