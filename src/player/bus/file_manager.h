#pragma once

#include <QDBusConnection>

#include <functional>
#include <string>

/** Has the desktop's file manager open the file's folder and select the file (org.freedesktop.FileManager1), or the
    desktop's portal if there is none or it does not answer in time; `failed` is called if neither could. Both only
   while `context` lives. Does not block. */
void show_in_file_manager(const QDBusConnection& bus, const std::string& path, QObject* context,
                          const std::function<void()>& failed);
