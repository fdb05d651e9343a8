#pragma once

#include <sys/types.h>

#include <string>

/** A plug-in's file that may be loaded, and its identity. */
struct TPluginFile {
  std::string path;
  dev_t device = 0;
  ino_t node = 0;
  std::string buildId;

  /** The same file under another name, or a copy of it. Loaded twice, it would share or duplicate its state. */
  bool IsSameAs(const TPluginFile& other) const;
};

/** Validates a file before its code is loaded: it must be, after resolving links, a regular file that is complete by
    its headers, and only this user or root may write to it and its folder. Never blocks on a FIFO or a device. Returns
    why it is refused; empty, with `file` filled in, if it is accepted. */
std::string check_plugin_file(const std::string& path, TPluginFile* file);
