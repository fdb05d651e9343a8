#pragma once

#include <memory>
#include <string>
#include <vector>

class BControl;
class BMessage;
class BView;

/** The control of one preference in the common window, in a form that can be sent to the process of that window. A
    choice with `asks` asks the user for the value. */
struct TIAPControl {
  enum TKind { kCheckBox, kMenuField };
  struct TChoice {
    std::string shown;
    std::string value;
    bool asks = false;
  };

  TKind kind = kCheckBox;
  std::string item; // the preference's name
  std::string app;  // signature of the application that is notified
  std::string label;
  std::vector<TChoice> choices; // of a menu field
  bool flag = false;            // the value of a check box
  bool defaultFlag = false;
  std::string text; // the value of a menu field
  std::string defaultText;

  void Archive(BMessage* archive) const;
  /** False, with nothing changed, if the archive is invalid. */
  bool Unarchive(const BMessage& archive);
};
