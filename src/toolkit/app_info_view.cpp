#include "toolkit/app_info_view.h"

#include "platform/interface/image_view.h"
#include "platform/interface/string_view.h"

#include <algorithm>

namespace {

constexpr float kMargin = 24;
constexpr float kGap = 10;
constexpr float kNamePoints = 20;
constexpr float kIconSize = 64;

BStringView* centred_line(const char* name, const std::string& text) {
  auto* const line = new BStringView({}, name, text.c_str());
  line->SetAlignment(B_ALIGN_CENTER);
  return line;
}

} // namespace

TAppInfoView::TAppInfoView(const BBitmap& icon, const std::string& name, const std::string& version)
    : TKRVView({}, "AppInfo"), fIconRoom(icon.Bytes() ? kIconSize + kGap : 0),
      fIcon(new BImageView({0, 0, kIconSize - 1, kIconSize - 1}, "AppIcon", icon)),
      fLines{centred_line("AppName", name), centred_line("AppVersion", version), centred_line("AppAuthor", "")} {
  BFont large(*be_bold_font);
  large.SetSize(kNamePoints);
  fLines[0]->SetFont(&large);
  AddChild(fIcon);
  for (BStringView* line : fLines) AddChild(line);
}

void TAppInfoView::SetAuthor(const std::string& author) {
  fLines[2]->SetText(author.c_str());
}

BPoint TAppInfoView::PreferredSize() {
  BPoint all{0, 2 * kMargin - kGap + fIconRoom - 1};
  for (BStringView* line : fLines) {
    const BPoint own = line->PreferredSize();
    all = {std::max(all.x, own.x + 2 * kMargin), all.y + own.y + 1 + kGap};
  }
  return all;
}

void TAppInfoView::LayOut() {
  float top = (Bounds().Height() - PreferredSize().y) / 2 + kMargin;
  fIcon->MoveTo((Bounds().Width() + 1 - kIconSize) / 2, top);
  top += fIconRoom;
  for (BStringView* line : fLines) {
    line->MoveTo(0, top);
    line->ResizeTo(Bounds().Width(), line->PreferredSize().y);
    top = line->Frame().bottom + 1 + kGap;
  }
}
