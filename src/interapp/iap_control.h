#pragma once

#include <memory>
#include <string>
#include <vector>

class BControl;
class BMessage;
class BView;

/** The control of one preference in the common window, as it travels to the process that shows the window. A choice
    without a value of its own asks the user for one. */
struct TIAPControl {
  enum TKind { kCheckBox, kMenuField };
  struct TChoice {
    std::string shown;
    std::string value;
    bool asks = false;
  };

  TKind kind = kCheckBox;
  std::string item; // the preference's name
  std::string app;  // the signature of the application that wants to be told
  std::string label;
  std::vector<TChoice> choices; // of a menu field
  bool flag = false;            // the value of a check box, and the one it has without a file
  bool defaultFlag = false;
  std::string text; // the same of a menu field
  std::string defaultText;

  void Archive(BMessage* archive) const;
  /** False, and nothing changed, for what is no control's archive. */
  bool Unarchive(const BMessage& archive);
};
