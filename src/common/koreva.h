#pragma once

/** The library that the family's applications share. None of these shows anything to the user or throws; each reports
    by its result. */

#include "common/archivable.h"
#include "common/text_detection.h"

#include <string>
#include <string_view>

class BEntry;
class BHandler;
class BMessage;
struct entry_ref;

namespace koreva {

/** Where `get_entry` begins. */
enum TBaseDir {
  kGivenDir = 0,    // the sub-folder itself
  kAppDir = 1,      // the folder of the running program's file, then the sub-folder
  kSettingsDir = 2, // the user's settings folder, then "KOREVA", then the sub-folder
};

/** Points `entry` at a settings or data file. A name that begins with '/' is taken as it stands and the base is
   ignored; for the two real bases missing folders are made. False when the folder cannot be found or made. */
bool get_entry(const char* name, BEntry* entry, TBaseDir base, const char* sub);

/** A command that waits inside a message for the message's work to be done: message "NextMsg", and its target handler
    in pointer "NextMsgTgt", with messenger "NextMsgTgtMsgr" beside it so that a handler that is gone is never followed.
 */
bool add_next_msg(BMessage* message, const BMessage& next, const BHandler* target);
/** False, and nothing copied, unless `source` holds both fields. */
bool copy_next_msg(BMessage* destination, const BMessage& source);
/** Posts the waiting command to its target; false when there is none or the target is gone. */
bool invoke_next_msg(const BMessage* message);

/** The file that a save panel's answer names: ref "directory" and string "name". Always true. */
bool get_save_ref(const BMessage* message, entry_ref* ref);

/** The format with its first "a" replaced by the key, then the label; the label alone where there is no "a". */
std::string merge_accelerator_key(std::string_view format, std::string_view key, std::string_view label);

/** The path with its extension replaced. The extension is what follows the last period of the last component, unless
    that period is the component's first character; without one, a period and `extension` are appended. */
std::string reext(std::string_view path, std::string_view extension);

} // namespace koreva
