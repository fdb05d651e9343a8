#pragma once

#include <QDropEvent>

#include <string>
#include <vector>

/** The dropped URLs, not validated yet (player/model/song_address.h). */
std::vector<std::string> dropped_files(const QDropEvent& event);
