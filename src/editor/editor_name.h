#pragma once

#include "platform/app/handler.h"
#include "platform/app/messenger.h"

/** The editor's signature as one more name of its process. Messages to it reach the application first, where the
   message filters see them: TIAPFilter hands '_ipc' to every manager of the process. Requests are forwarded to the
   editor's manager. What is sent to the application itself, under its own signature, never comes here. */
class TEditorName : public BHandler {
public:
  explicit TEditorName(const BMessenger& manager);
  /** Both lock the application. */
  void Register();
  void Unregister();
  void MessageReceived(BMessage* message) override;

private:
  const BMessenger fManager;
};
