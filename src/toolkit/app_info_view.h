#pragma once

#include "toolkit/krv_view.h"

#include <string>

class BBitmap;
class BImageView;
class BStringView;

/** The About page of the program: icon (optional), name, version and author. */
class TAppInfoView : public TKRVView {
public:
  TAppInfoView(const BBitmap& icon, const std::string& name, const std::string& version);

  void SetAuthor(const std::string& author);
  BPoint PreferredSize() override;
  void LayOut() override;

private:
  const float fIconRoom;
  BImageView* fIcon; // children
  BStringView* fLines[3];
};
