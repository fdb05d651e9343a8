#pragma once

#include <sys/types.h>

#include <string>

/** A plug-in's file that may be loaded, and what tells it from other plug-ins. */
struct TPluginFile {
  std::string path;
  dev_t device = 0;
  ino_t node = 0;
  std::string buildId;

  /** The same file under another name, or a copy of it: loaded twice, it would share or double its state. */
  bool IsSameAs(const TPluginFile& other) const;
};

/** Checks a file before it becomes code of this process: a regular file, by way of links or not, that only this user
    or root can write, it and its folder, and that is whole by its headers. Never blocks on a FIFO or a device.
    Returns why it is refused; empty, with `file` filled in, when it is good. */
std::string check_plugin_file(const std::string& path, TPluginFile* file);
