#pragma once

#include "toolkit/krv_view.h"

#include <string>

class BBitmap;
class BImageView;
class BStringView;

/** The page that says which program this is: its icon, where there is one, name, version and author, one below the
 * other. */
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
