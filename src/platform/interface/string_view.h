#pragma once

#include "platform/interface/view.h"

enum alignment { B_ALIGN_LEFT, B_ALIGN_CENTER, B_ALIGN_RIGHT };

/** One line of read-only text, elided where it does not fit. */
class BStringView : public BView {
public:
  BStringView(BRect frame, const char* name, const char* text, uint32 resizingMode = B_FOLLOW_LEFT_TOP,
              uint32 flags = B_WILL_DRAW);

  void SetText(const char* text);
  const char* Text() const { return fText.c_str(); }
  void SetAlignment(alignment align);
  /** Sets the accessible label of the sibling view with that name. Once both are attached. */
  void SetBuddy(const char* view);

protected:
  std::shared_ptr<display::ViewPeer> MakePeer() override;

private:
  std::string fText;
  alignment fAlignment = B_ALIGN_LEFT;
};
