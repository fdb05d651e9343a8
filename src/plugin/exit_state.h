#pragma once

#include "common/archivable.h"

/** The editor's own state, saved between runs. Written by the closing window and by the manager; read on the manager's
    thread. Names in quotes are the fields on disk. */
class TExitState : public koreva::TArchivable {
public:
  bool Archive(BMessage* archive) override;
  bool Unarchive(const BMessage& archive) override;

  int32 fMode = 0;                         // "Mode": 0 tag input with hundredths, 1 without, 2 free edit
  std::string fVersion;                    // "_Ver", read but never written
  std::string fPanelFolder = "/boot/home"; // "_FPF"; if the folder does not exist, the home folder
  BRect fWindowFrame{5, 24, 400, 200};     // "_WFr"
};

/** Null until the plug-in is constructed. */
extern TExitState* gExitState;

/** Load the exit state from that file in the settings folder, then the shared settings. Both are always tried; true if
    both were read. With Shift, Command, Control and Option held down nothing is done: false. */
bool load_global(const char* folder, const char* name);
bool save_exit_state(const char* folder, const char* name);
