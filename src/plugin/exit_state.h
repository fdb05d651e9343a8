#pragma once

#include "common/archivable.h"

/** What the editor itself remembers between runs. Written by the window as it closes and by the manager; read on the
    manager's thread. The names in quotes are the fields on disk. */
class TExitState : public koreva::TArchivable {
public:
  bool Archive(BMessage* archive) override;
  bool Unarchive(const BMessage& archive) override;

  int32 fMode = 0;                         // "Mode": 0 tag input with hundredths, 1 without, 2 free edit
  std::string fVersion;                    // "_Ver", read and never written
  std::string fPanelFolder = "/boot/home"; // "_FPF"; a folder that is not there means the home folder
  BRect fWindowFrame{5, 24, 400, 200};     // "_WFr"
};

/** Null before start. */
extern TExitState* gExitState;

/** Load the exit states from that file of the settings folder, then the shared settings; both are always tried, and
    true means that both were read. While Shift, Command, Control and Option are all down, nothing is done: false. */
bool load_global(const char* folder, const char* name);
bool save_exit_state(const char* folder, const char* name);
