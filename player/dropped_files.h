#pragma once

#include <QDropEvent>

#include <string>
#include <vector>

/** Of what is dropped from elsewhere, the files and folders. */
std::vector<std::string> dropped_files(const QDropEvent& event);
