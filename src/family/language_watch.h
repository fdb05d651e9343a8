#pragma once

#include "platform/app/handler.h"

#include <string>

/** Converts node monitor notices into messages with one code, posted to the handler's looper; drops attribute
    changes. */
class TNodeMonitorHandler : public BHandler {
public:
  explicit TNodeMonitorHandler(uint32 code) : BHandler("language watch"), fCode(code) {}
  void MessageReceived(BMessage* message) override;

private:
  const uint32 fCode;
};

/** Watches the folder "Language" next to the plug-in, and the chosen language file; replaces the handler's earlier
    watches. A change between the loading and the watch is reported as well. */
void set_node_monitor_language(const std::string& pluginPath, BHandler* handler);
