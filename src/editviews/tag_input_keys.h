#pragma once

#include "commands/command_table.h"
#include "commands/key_bindings.h"
#include "platform/interface/list_peer.h"

#include <optional>
#include <vector>

/** The keys of the tag input view's commands. Pure: any thread. */

/** The command whose default key is typed as that byte, whichever keyboard layout types it. */
std::optional<TCommandId> command_of_byte(char byte, bool withCommandKey);
/** A command that works only word by word. */
bool is_for_words(TCommandId id);
/** The keys that do not come as one of the bytes above. */
std::vector<display::ListShortcut> tag_input_shortcuts(const TKeys& keys, bool timesWords);
