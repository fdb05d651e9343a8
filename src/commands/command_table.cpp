#include "commands/command_table.h"

#include "plugin/message_codes.h"

#include <array>

namespace {

using enum TCommandId;
using enum TCommandTarget;

constexpr bool kRepeats = true;

constexpr TCommandField flag(const char* name, bool value) {
  return {name, B_BOOL_TYPE, value ? 1 : 0};
}

constexpr TCommandField mode(int32 number) {
  return {"Mode", B_INT32_TYPE, number};
}

constexpr TEditorCommand tag_input(TCommandId id, const char* name, const char* textKey, const char* letter,
                                   const char* keys, bool repeats = false) {
  return {id, name, textKey, letter, keys, kTagInput, kMsgTagCommand, {"Command", B_INT32_TYPE, int32(id)}, repeats};
}

constexpr std::array<TEditorCommand, kCommands> kTable{{
    {kNew, "new", "MItem_New", "N", "Ctrl+N", kView, kMsgNew},
    {kOpenCurrent, "open-current", "MItem_Open_Cur", "L", "Ctrl+L", kView, kMsgOpenCurrent},
    {kOpen, "open", "Menu_Open", "O", "Ctrl+O", kWindow, kMsgOpenPanel},
    {kSave, "save", "MItem_Save", "S", "Ctrl+S", kView, kMsgSave},
    {kSaveAs, "save-as", "MItem_Save_As", "A", "Ctrl+2", kWindow, kMsgSaveAs},
    {kExport, "export", "MItem_Export", "E", "", kWindow, kMsgExport},
    {kCopyForPlayers, "copy-for-players", "MItem_Copy_For_Players", "P", "Ctrl+Shift+E", kView, kMsgCopyForPlayers},
    {kWriteIntoSong, "write-into-song", "MItem_Write_Song", "I", "", kView, kMsgWriteIntoSong},
    {kClose, "close", "MItem_Close", "W", "Ctrl+W", kWindow, B_QUIT_REQUESTED},
    {kUndo, "undo", "MItem_Undo", "U", "Ctrl+Z", kView, kMsgUndo},
    {kRedo, "redo", "MItem_Redo", "R", "Ctrl+Shift+Z", kView, kMsgRedo},
    tag_input(kCut, "cut", "MItem_Cut", "T", "Ctrl+X"),
    tag_input(kCopy, "copy", "MItem_Copy", "C", "Ctrl+C"),
    tag_input(kPaste, "paste", "MItem_Paste", "P", "Ctrl+V"),
    tag_input(kSelectAll, "select-all", "MItem_Select_All", "A", "Ctrl+A"),
    tag_input(kInsertLine, "insert-line", "MItem_Insert_Line", "I", "Ins", kRepeats),
    tag_input(kDeleteLines, "delete-lines", "MItem_Delete_Lines", "D", "Ctrl+Del", kRepeats),
    tag_input(kMoveLinesUp, "move-lines-up", "MItem_Move_Lines_Up", "U", "Alt+Up", kRepeats),
    tag_input(kMoveLinesDown, "move-lines-down", "MItem_Move_Lines_Down", "N", "Alt+Down", kRepeats),
    tag_input(kJoinLines, "join-lines", "MItem_Join_Lines", "J", "Ctrl+J", kRepeats),
    tag_input(kSplitLine, "split-line", "MItem_Split_Line", "S", "Ctrl+Shift+J"),
    {kFind, "find", "MItem_Find", "N", "Ctrl+F", kWindow, kMsgShowFind, flag("Replace", false)},
    {kReplace, "replace", "MItem_Replace", "W", "Ctrl+H", kWindow, kMsgShowFind, flag("Replace", true)},
    {kFindNext, "find-next", "MItem_Find_Next", "X", "F3", kWindow, kMsgFindNext, flag("Backward", false)},
    {kFindPrevious, "find-previous", "MItem_Find_Previous", "V", "Shift+F3", kWindow, kMsgFindNext,
     flag("Backward", true)},
    {kShiftAll, "shift-all", "MItem_Fine_Time_Tag", "F", "Ctrl+M", kManager, kMsgFineTimeTag},
    tag_input(kShiftFromHere, "shift-from-here", "MItem_Shift_From_Here", "H", "Ctrl+Shift+M"),
    tag_input(kShiftSelected, "shift-selected", "MItem_Shift_Selected", "I", ""),
    {kPropose, "propose", "MItem_Propose", "P", "Ctrl+Shift+P", kView, kMsgPropose},
    {kDeleteAllTags, "delete-all-tags", "MItem_Del_All_Time_Tag", "D", "", kView, kMsgDeleteTags},
    tag_input(kJoinWords, "join-words", "MItem_Join_Words", "J", "J"),
    tag_input(kSplitWord, "split-word", "MItem_Split_Word", "S", "K"),
    tag_input(kClearWords, "clear-words", "MItem_Clear_Words", "C", "X"),
    tag_input(kUnstampFromHere, "unstamp-from-here", "MItem_Unstamp_From_Here", "U", "Ctrl+Shift+Del"),
    tag_input(kCopyWordTimes, "copy-word-times", "MItem_Copy_Word_Times", "E", "Ctrl+Shift+R"),
    {kToExtended, "to-extended", "MItem_Cvt_Tag_Std_To_Ext", "E", "", kView, kMsgConvertTags, flag("CvtTagS2E", true)},
    {kToStandard, "to-standard", "MItem_Cvt_Tag_Ext_To_Std", "S", "", kView, kMsgConvertTags, flag("CvtTagS2E", false)},
    {kModeExtended, "mode-extended", "MItem_Tag_Input_Ext_Mode", "T", "Ctrl+T", kView, kMsgMode, mode(0)},
    {kModeStandard, "mode-standard", "MItem_Tag_Input_Std_Mode", "D", "Ctrl+D", kView, kMsgMode, mode(1)},
    {kModeFree, "mode-free", "MItem_Free_Edit_Mode", "E", "Ctrl+E", kView, kMsgMode, mode(2)},
    tag_input(kWordByWord, "word-by-word", "MItem_Word_By_Word", "W", "Ctrl+B"),
    tag_input(kFollow, "follow", "MItem_Follow", "F", "F"),
    {kShowClock, "show-clock", "MItem_Show_Clock", "C", "", kView, kMsgShowClock},
    {kShowLane, "show-lane", "MItem_Show_Lane", "L", "Ctrl+G", kView, kMsgShowLane},
    {kLaneWave, "lane-wave", "MItem_Lane_Wave", "W", "", kView, kMsgLaneLook},
    {kClicks, "clicks", "MItem_Clicks", "C", "Ctrl+K", kView, kMsgToggleClicks},
    {kCountIn, "count-in", "MItem_Count_In", "R", "", kView, kMsgToggleCountIn},
    tag_input(kGoToSung, "go-to-sung", "MItem_Go_To_Sung", "G", "G"),
    tag_input(kFromStart, "from-start", "MItem_From_Start", "S", "Ctrl+Home"),
    tag_input(kNextProblem, "next-problem", "MItem_Next_Problem", "N", "F8", kRepeats),
    tag_input(kPreviousProblem, "previous-problem", "MItem_Previous_Problem", "P", "Shift+F8", kRepeats),
    tag_input(kNextUntagged, "next-untagged", "MItem_Next_Untagged", "T", "F7", kRepeats),
    tag_input(kPreviousUntagged, "previous-untagged", "MItem_Previous_Untagged", "R", "Shift+F7", kRepeats),
    {kPreferences, "preferences", "MItem_Preferences", "P", "Ctrl+P", kManager, kMsgPreferences},
    {kCommonPreferences, "common-preferences", "MItem_KOREVA_Common_Preferences", "S", "", kManager, kMsgCommonPref},
    {kHelp, "help", "MItem_Help", "H", "", kManager, kMsgHelp},
    {kAbout, "about", "MItem_About", "A", "", kManager, B_ABOUT_REQUESTED},
    tag_input(kStamp, "stamp", "Command_Stamp", "", "Space"),
    tag_input(kRetake, "retake", "Command_Retake", "", "Backspace"),
    tag_input(kLater, "later", "Command_Later", "", "+", kRepeats),
    tag_input(kEarlier, "earlier", "Command_Earlier", "", "-", kRepeats),
    tag_input(kLater10, "later-10", "Command_Later_10", "", ".", kRepeats),
    tag_input(kEarlier10, "earlier-10", "Command_Earlier_10", "", ",", kRepeats),
    tag_input(kLater100, "later-100", "Command_Later_100", "", "Shift+.", kRepeats),
    tag_input(kEarlier100, "earlier-100", "Command_Earlier_100", "", "Shift+,", kRepeats),
    tag_input(kLater500, "later-500", "Command_Later_500", "", "Ctrl+.", kRepeats),
    tag_input(kEarlier500, "earlier-500", "Command_Earlier_500", "", "Ctrl+,", kRepeats),
    tag_input(kRemoveTag, "remove-tag", "Command_Remove_Tag", "", "Del", kRepeats),
    tag_input(kPlayFrom, "play-from", "Command_Play_From", "", "Return", kRepeats),
    tag_input(kPlayBefore, "play-before", "Command_Play_Before", "", "Shift+Return", kRepeats),
    tag_input(kHearBefore, "hear-before", "MItem_Hear_Before", "B", "1"),
    tag_input(kHearStart, "hear-start", "MItem_Hear_Start", "S", "2"),
    tag_input(kHearLine, "hear-line", "MItem_Hear_Line", "L", "3"),
    tag_input(kHearFrom, "hear-from", "MItem_Hear_From", "E", "4"),
    tag_input(kHearLoop, "hear-loop", "MItem_Hear_Loop", "O", "5"),
    tag_input(kPlayPause, "play-pause", "Command_Play_Pause", "", "Ctrl+Space"),
    tag_input(kBack, "back", "Command_Back", "", "Ctrl+Left", kRepeats),
    tag_input(kForward, "forward", "Command_Forward", "", "Ctrl+Right", kRepeats),
    tag_input(kFaster, "faster", "Command_Faster", "", "Ctrl+Up", kRepeats),
    tag_input(kSlower, "slower", "Command_Slower", "", "Ctrl+Down", kRepeats),
}};

constexpr bool is_in_order() {
  for (size_t i = 0; i < kTable.size(); ++i)
    if (kTable[i].id != static_cast<TCommandId>(i)) return false;
  return true;
}
static_assert(is_in_order(), "the table is indexed by TCommandId");

} // namespace

std::span<const TEditorCommand> all_commands() {
  return kTable;
}

const TEditorCommand& command(TCommandId id) {
  return kTable[static_cast<size_t>(id)];
}

std::optional<TCommandId> command_of(int32 number) {
  if (number < 0 || number >= static_cast<int32>(kCommands)) return {};
  return static_cast<TCommandId>(number);
}

BMessage message_of_command(TCommandId id) {
  const TEditorCommand& wanted = command(id);
  BMessage message(wanted.code);
  if (wanted.field.type == B_BOOL_TYPE) message.AddBool(wanted.field.name, wanted.field.value != 0);
  if (wanted.field.type == B_INT32_TYPE) message.AddInt32(wanted.field.name, wanted.field.value);
  return message;
}
