#pragma once

#include "companion/prefs/vesmo_d_pref_win.h"
#include "platform/app/looper.h"
#include "tests/scratch_folder.h"

#include <gmock/gmock.h>

#include <string>
#include <vector>

/** The preferences window, driven by hand, with a manager that takes the notices over as the companion's does. */
class PrefWindow : public testing::Test {
protected:
  PrefWindow();
  ~PrefWindow() override;

  void Open(TClickTrack::TOpen openOutput = {});
  void Settle();
  void Click(const char* view);
  void Press(const char* key);
  /** Into a field, instead of what stands there. */
  void Type(const char* field, const std::string& text);
  void SelectTab(int32 index);
  void Post(const BMessage& message);
  std::string Label(const char* view);
  /** The notices since, as "code: fields". */
  std::vector<std::string> Notices();
  /** What a program that starts now would read. */
  TPrefValues Stored();

  class Manager;
  ScratchFolder fFolder;
  Manager* fManager;
  TVesmoDPrefWin* fWindow = nullptr;
};
