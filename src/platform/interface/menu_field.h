#pragma once

#include "platform/interface/control.h"

#include <string>
#include <vector>

/** A field that unfolds into choices, one of them chosen or none (-1): its value is their index. Its label is what it
   is called by those who listen to the screen; on the screen it stands beside the field in a view of its own. */
class BMenuField : public BControl {
public:
  BMenuField(BRect frame, const char* name, const char* label, BMessage* message,
             uint32 resizingMode = B_FOLLOW_LEFT_TOP);

  void SetLabel(const char* label) override;
  /** None is chosen then. */
  void SetChoices(std::vector<std::string> choices);
  const std::vector<std::string>& Choices() const { return fChoices; }
  void SetValue(int32 index) override;

protected:
  std::shared_ptr<display::ControlPeer> MakeControl() override;

private:
  std::vector<std::string> fChoices;
};
