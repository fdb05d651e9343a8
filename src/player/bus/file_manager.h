#pragma once

#include <QDBusConnection>

#include <functional>
#include <string>

/** Has the desktop's file manager open the file's folder and select the file (org.freedesktop.FileManager1); `failed`
    is called if there is none, or if it does not answer in time. Both only while `context` lives. Does not block. */
void show_in_file_manager(const QDBusConnection& bus, const std::string& path, QObject* context,
                          const std::function<void()>& failed);
