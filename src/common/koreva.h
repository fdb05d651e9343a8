#pragma once

/** Helpers shared by the family's applications. They show nothing to the user, do not throw, and report errors by their
    result. */

#include "common/archivable.h"
#include "common/text_detection.h"

#include <string>
#include <string_view>

class BEntry;
class BHandler;
class BMessage;
struct entry_ref;

namespace koreva {

/** The base folder of `get_entry`. */
enum TBaseDir {
  kGivenDir = 0,    // none: the sub-folder is a full path
  kAppDir = 1,      // the folder of the program file, plus the sub-folder
  kSettingsDir = 2, // "KOREVA" in the user's settings folder, plus the sub-folder
};

/** Points `entry` at a settings or data file. A name that begins with '/' is used as it is, and the base ignored.
    Missing folders are created for kAppDir and kSettingsDir. False if the folder cannot be found or created. */
bool get_entry(const char* name, BEntry* entry, TBaseDir base, const char* sub);

/** Attaches a follow-up message, which is sent when the work of the first is done: message "NextMsg"; pointer
    "NextMsgTgt", its handler; messenger "NextMsgTgtMsgr", which keeps a deleted handler from being dereferenced. */
bool add_next_msg(BMessage* message, const BMessage& next, const BHandler* target);
/** False, and nothing copied, without the message or the pointer. */
bool copy_next_msg(BMessage* destination, const BMessage& source);
/** Posts the follow-up to its target; false if there is none, the target is gone, or the pointer came alone from
    another process. */
bool invoke_next_msg(const BMessage* message);

/** The file chosen in a save panel, from its ref "directory" and string "name". Always true. */
bool get_save_ref(const BMessage* message, entry_ref* ref);

/** The format with its first "a" replaced by the key, followed by the label; only the label if there is no "a". */
std::string merge_accelerator_key(std::string_view format, std::string_view key, std::string_view label);

/** The path with its extension replaced. The extension is what follows the last period of the last component, unless
    that period is the component's first character; without one, a period and `extension` are appended. */
std::string reext(std::string_view path, std::string_view extension);

} // namespace koreva
