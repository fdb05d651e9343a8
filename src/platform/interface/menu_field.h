#pragma once

#include "platform/interface/control.h"

#include <string>
#include <vector>

/** A drop-down field; its value is the index of the choice, -1 for none. The label is the accessible name; a visible
    label is a view of its own. */
class BMenuField : public BControl {
public:
  BMenuField(BRect frame, const char* name, const char* label, BMessage* message,
             uint32 resizingMode = B_FOLLOW_LEFT_TOP);

  void SetLabel(const char* label) override;
  /** Resets the value to -1. */
  void SetChoices(std::vector<std::string> choices);
  const std::vector<std::string>& Choices() const { return fChoices; }
  void SetValue(int32 index) override;

protected:
  std::shared_ptr<display::ControlPeer> MakeControl() override;

private:
  std::vector<std::string> fChoices;
};
