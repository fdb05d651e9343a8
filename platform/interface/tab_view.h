#pragma once

#include "platform/interface/view.h"

#include <string>
#include <vector>

/** Pages of which one is shown, each behind its tab. The pages are its children and fill it below the tabs. */
class BTabView : public BView {
public:
  BTabView(BRect frame, const char* name, uint32 resizingMode = B_FOLLOW_ALL_SIDES);

  /** Before the view is attached. */
  void AddTab(BView* page, const char* label);
  void SetTabLabel(int32 index, const char* label);
  void Select(int32 index);

  void AllAttached() override;

protected:
  std::shared_ptr<display::ViewPeer> MakePeer() override;

private:
  std::vector<std::string> fLabels;
};
