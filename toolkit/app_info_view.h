#pragma once

#include "toolkit/krv_view.h"

#include <string>

class BStringView;

/** The page that says which program this is: name, version, author, one below the other. */
class TAppInfoView : public TKRVView {
public:
  TAppInfoView(const std::string& name, const std::string& version);

  void SetAuthor(const std::string& author);
  BPoint PreferredSize() override;
  void LayOut() override;

private:
  BStringView* fLines[3]; // children
};
