#pragma once

#include "platform/app/handler.h"

#include <string>

/** Turns the notices about watched files into messages of one code, posted to the looper that the handler is attached
    to; those about attributes are dropped. */
class TNodeMonitorHandler : public BHandler {
public:
  explicit TNodeMonitorHandler(uint32 code) : BHandler("language watch"), fCode(code) {}
  void MessageReceived(BMessage* message) override;

private:
  const uint32 fCode;
};

/** Watches the folder "Language" beside the plug-in, and the chosen language file; other watches of the handler end.
    A file that changed since it was loaded, before it was watched, is reported as a change. */
void set_node_monitor_language(const std::string& pluginPath, BHandler* handler);
