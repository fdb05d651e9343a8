#pragma once

#include "platform/interface/view.h"

#include <string>
#include <vector>

/** A tab view; its pages are its children and fill the area below the tabs. */
class BTabView : public BView {
public:
  BTabView(BRect frame, const char* name, uint32 resizingMode = B_FOLLOW_ALL_SIDES);

  /** Before the view is attached. */
  void AddTab(BView* page, const char* label);
  /** Pages that do not fit are scrolled instead of made smaller. Before the view is attached. */
  void ScrollPages() { fScrollsPages = true; }
  void SetTabLabel(int32 index, const char* label);

  /** Fits the largest page and the tabs. */
  BPoint PreferredSize() override;
  void AllAttached() override;
  void FrameResized(float width, float height) override;

protected:
  std::shared_ptr<display::ViewPeer> MakePeer() override;

private:
  void PlacePages();
  BPoint SizeOfPage(BPoint needed, BPoint room) const;

  std::vector<std::string> fLabels;
  bool fScrollsPages = false;
  BPoint fAroundPages;       // width and height taken by tabs and borders
  float fScrollBarWidth = 0; // of pages that are scrolled
};
