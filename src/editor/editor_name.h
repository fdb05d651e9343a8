#pragma once

#include "platform/app/handler.h"
#include "platform/app/messenger.h"

/** Registers the editor's signature as an additional name of the process. Messages to it reach the application, whose
    filters run first: TIAPFilter forwards kMsgIAPChanged to every manager of the process. Requests are forwarded to the
    editor's manager. Messages to the player's own signature do not arrive here. */
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
