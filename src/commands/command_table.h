#pragma once

#include "platform/app/message.h"
#include "platform/support/types.h"

#include <optional>
#include <span>
#include <string_view>

/** Every command of the editor, in the order in which the preferences list them. */
enum class TCommandId : int32 {
  kNew,
  kOpenCurrent,
  kOpen,
  kSave,
  kSaveAs,
  kExport,
  kCopyForPlayers,
  kWriteIntoSong,
  kClose,
  kUndo,
  kRedo,
  kCut,
  kCopy,
  kPaste,
  kSelectAll,
  kInsertLine,
  kDeleteLines,
  kMoveLinesUp,
  kMoveLinesDown,
  kJoinLines,
  kSplitLine,
  kFind,
  kReplace,
  kFindNext,
  kFindPrevious,
  kShiftAll,
  kShiftFromHere,
  kShiftSelected,
  kPropose,
  kDeleteAllTags,
  kJoinWords,
  kSplitWord,
  kClearWords,
  kUnstampFromHere,
  kCopyWordTimes,
  kToExtended,
  kToStandard,
  kModeExtended,
  kModeStandard,
  kModeFree,
  kWordByWord,
  kFollow,
  kShowClock,
  kShowLane,
  kLaneWave,
  kClicks,
  kCountIn,
  kGoToSung,
  kFromStart,
  kNextProblem,
  kPreviousProblem,
  kNextUntagged,
  kPreviousUntagged,
  kPreferences,
  kCommonPreferences,
  kHelp,
  kAbout,
  kStamp,
  kRetake,
  kLater,
  kEarlier,
  kLater10,
  kEarlier10,
  kLater100,
  kEarlier100,
  kLater500,
  kEarlier500,
  kRemoveTag,
  kPlayFrom,
  kPlayBefore,
  kHearBefore,
  kHearStart,
  kHearLine,
  kHearFrom,
  kHearLoop,
  kPlayPause,
  kBack,
  kForward,
  kFaster,
  kSlower,
  kCount // the number of commands
};
inline constexpr size_t kCommands = static_cast<size_t>(TCommandId::kCount);

/** Who handles the command's message. kTagInput: the tag input view, which has the key only while it has the focus;
    from a menu the command goes to the editor view, which passes it on. */
enum class TCommandTarget { kWindow, kView, kManager, kTagInput };

/** A field that tells commands with the same message apart. */
struct TCommandField {
  const char* name = nullptr;
  type_code type = 0; // B_BOOL_TYPE or B_INT32_TYPE
  int32 value = 0;
};

struct TEditorCommand {
  TCommandId id;
  const char* name;    // in the settings; never changes
  const char* textKey; // its label
  const char* letter;  // its accelerator in a menu
  const char* keys;    // by default, as in key_names.h; empty for none
  TCommandTarget target;
  uint32 code; // of its message
  TCommandField field = {};
  bool repeats = false; // while its key is held down
};

/** Indexed by TCommandId. Immutable: any thread. */
std::span<const TEditorCommand> all_commands();
const TEditorCommand& command(TCommandId id);
/** Nothing for a number of no command. */
std::optional<TCommandId> command_of(int32 number);
/** The message of a menu item or button. */
BMessage message_of_command(TCommandId id);
