#pragma once

#include "platform/support/types.h"

/** Commands of the editor window's menus and tool bar to the communication manager. No fields. */
enum : uint32 {
  kMsgFineTimeTag = 'fttg', // opens the window that asks for the shift
  kMsgHelp = '_hlp',
  kMsgCommonPref = '_scp',  // the family's common preferences
  kMsgPreferences = '_prf', // the plug-ins' own
};
