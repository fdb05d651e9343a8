#pragma once

#include "platform/support/types.h"

/** Every message code of the plug-ins and of the family's common preferences, with its fields. Codes of one image are
    unique. The player's own codes are in player/model, the platform's in platform/app/message.h. */
enum : uint32 {
  // From a front end to the player.
  /** No fields. Reply: messenger "Msgr", the private way to the player; from a player in another process, string
      "Signature", by which that looper is reached. */
  kMsgHostHandshake = 'SNVm',
  /** To either address, no fields. Reply: data "Info" of type 'CSTR', the information record of 124 bytes; Sonivo adds
      bool "Playing" and int32 "Speed" (percent), which other players omit. */
  kMsgHostInformation = 'SNVi',
  // Fire-and-forget commands; players that do not support them ignore them.
  kMsgHostSeek = 'SNsk',   // int32 "Time": ms, bounded to the song
  kMsgHostSeekBy = 'SNsr', // int32 "Time": ms, negative is back; bounded to the song
  /** int32 "FromMs", int32 "ToMs" (absent: the song plays on), bool "Loop" (absent: false): plays that part. Without
      fields: ends it. */
  kMsgHostPlayPart = 'SNpr',
  kMsgHostPlayPause = 'SNpp', // no fields; loads the song if none is loaded
  kMsgHostSpeedBy = 'SNsp',   // int32 "Percent": points, bounded to 25 to 200 percent
  kMsgHostOpen = 'plho',      // strings "path": songs to be added to the playlist, of which the first is played
  /** String "Title", as in the record; int32 "TimeMs", any number, ascending: the marks on the seek bar while that song
      plays, in place of earlier ones; bool "Clicks" (absent: false): they are also to be heard. */
  kMsgHostMarks = 'SNmk',
  kMsgHostCountIn = 'SNci',  // int32 "TimeMs", up to 8: further clicks, until the song is sought
  kMsgHostLanguage = 'SNlg', // string "path": the language file now used by the plug-ins; empty: built-in English

  // To either plug-in's manager, from the plug-in object, the menus or the other manager.
  kMsgOpenMain = 'Somr',
  kMsgReopenMain = 'Srom', // to the companion: its window was open at the last exit; does not take the focus
  kMsgCloseMain = 'Scmr',
  kMsgPrepareAbout = 'Spar',
  kMsgOpenAbout = 'Soar', // bool "BesideDlg"; with it, when true, rect "WinFrame"
  kMsgCloseAbout = 'Scar',
  kMsgPreparePref = 'Sppr',
  kMsgOpenPref = 'Sopr', // to the companion; fields as of kMsgOpenAbout
  kMsgCloseFineTag = 'Scfr',
  kMsgCloseCommonPref = 'Scsr',
  kMsgMainClosed = 'mwcl',   // messenger "window"; int32 "FilesTaken": how many requests to open a file it handled
  kMsgLanguageNode = '_nlc', // from the watch on the language files
  /** Between two managers of one process: pointer "CSCommMan", the sender; messenger "CSMessenger", its address. The
      sender's image may be unloaded before this is read: the pointer is compared and never followed. */
  kMsgPartnerConnects = 'Scmc',
  kMsgWait = 'wait', // not handled: its reply shows that all earlier messages have been
  // From the editor window's menus and tool bar, no fields.
  kMsgFineTimeTag = 'fttg', // opens the window that asks for the shift: of all lines, or with fields of kMsgShiftTags
  kMsgHelp = '_hlp',
  kMsgCommonPref = '_scp',
  kMsgPreferences = '_prf',

  // Notices of changed settings, from the preferences window through both managers to the windows. Each carries the
  // changed fields of its group.
  kMsgStayOnTop = 'Spsc',
  kMsgToolBar = 'Splc',
  kMsgPollInterval = 'Ssic',
  kMsgDefaultStatBar = 'Sedr', // the lyrics window's settings; the editor shows its default status text again
  kMsgAppearance = 'Spac',
  kMsgEncoding = 'Spec', // for writing
  kMsgReadEncoding = 'Sprc',
  kMsgLineEnds = 'Spcc',
  kMsgTimeOffset = 'Sptc',
  kMsgOptions = 'Sopc', // the options of TPref, which have a record of their own
  kMsgLanguageChanged = '_lgc',
  kMsgKeys = 'Skyc', // all changed keys of commands, as TKeyBindings stores them

  // To the editor view, from menus, panels and edit views; where noted, from it to the window.
  kMsgNew = '_new',
  kMsgOpenCurrent = 'opcl',
  kMsgWriteIntoSong = 'slwr',     // the lyrics, into the song that is playing, after a question
  kMsgSongLyricsRead = 'slrd',    // from the thread that reads lyrics inside a song
  kMsgSongLyricsWritten = 'slwn', // from the thread that writes them
  kMsgSongSound = 'slsd',         // from the thread that reads a song's sound: more of it is known
  kMsgSave = '_sav',              // may carry a waiting command
  kMsgSaveAs = '_sva',            // to the window; may carry a waiting command
  kMsgExportTo = '_ext',          // ref "directory", string "name", int32 "Format", int32 "Document" (its number)
  kMsgCopyForPlayers = '_cpp',    // saves a copy for other players
  kMsgRenewCopies = 'cprn',       // from the notice after a copy: it is renewed at every save from now on
  kMsgReopenAs = 'rpen',          // int32 "Encoding", a TEncoding: reads the file again
  kMsgUnifyTags = 'tgun',         // from the notice about mixed time tags: int32 "Dialect"
  kMsgMode = 'mode',              // int32 "Mode"
  kMsgModeChanged = 'umcr',       // to the window: int32 "Mode"
  kMsgRefreshInfo = 'rcir',
  kMsgConvertTags = 'cvtt', // bool "CvtTagS2E": to the extended form
  kMsgDeleteTags = 'datt',
  /** String "_SmplIptData": ms, decimal. Of some lines only: int32 "First", "Count" (INT32_MAX: to the end); int32
      "Document", its number. */
  kMsgShiftTags = 'fttr',
  kMsgReplayBeat = 'rpbt', // from the timer of a replay after a nudge to the tag input view
  kMsgTagCommand = 'tgcm', // int32 "Command": a TCommandId of the tag input view
  /** From the find bar to the editor view: strings "Text" and, to replace, "With"; bools "Case", "NoTags", "Backward";
      "All": replaces every match. */
  kMsgFind = 'fdtx',
  kMsgReplace = 'fdrp',
  kMsgUndo = '_udo',
  kMsgRedo = '_rdo',
  /** To the window, which marks them in its menu: bools "Follows", "Clock", "Words", "Lane", "Wave", "Clicks",
      "CountsIn". */
  kMsgViewChoices = 'flwc',
  kMsgShowClock = 'clok',     // shows or hides position and seek bar in the status bar
  kMsgShowLane = 'lnsh',      // shows or hides the lane
  kMsgLaneLook = 'lnlk',      // spectrogram or wave
  kMsgToggleClicks = 'clks',  // clicks at the tags
  kMsgToggleCountIn = 'cnin', // clicks before a retake
  // Proposals of better times for the tags.
  kMsgPropose = 'ppsr',
  /** From their window to the editor view: int32 "Document"; int32 "Row", "FromMs", "ToMs" (times in the song), any
      number. */
  kMsgAcceptProposals = 'ppac',
  kMsgHearProposal = 'pphr',   // to that window, and from it to the editor view with "Document", "Row" and "ToMs"
  kMsgAcceptSelected = 'ppsl', // from its buttons to it
  kMsgAcceptAll = 'ppal',
  kMsgSeekInSong = 'clsk', // from that seek bar
  // To the editor view: a line of the tag input view is to be split.
  kMsgSplitLine = 'lnsp',       // int32 "Row", string "Text" (without tags)
  kMsgSplitLineAt = 'lnsa',     // the dialog's answer: these and int32 "Document", strings "Before", "After"
  kMsgHistoryChanged = '_hch',  // to the window: bool "CanUndo", bool "CanRedo"
  kMsgModifiedChanged = 'mdch', // to the window: bool "Modified", the document has unsaved changes
  kMsgAddHistory = '_ahr',      // to the window: ref "refs"
  kMsgRemoveHistory = '_rhr',   // to the window: ref "refs"
  kMsgLookAtFile = 'flck',      // to itself, delayed: the file is compared with the document
  kMsgFileLooked = 'flkd',      // from the thread that reads the file
  kMsgFileLate = 'fllt',        // to itself, delayed: that thread may have got no answer
  // The answers to the notice that the file was changed.
  kMsgCompareFile = 'flcm',
  kMsgReloadFile = 'flrl',
  kMsgKeepMine = 'flkm',
  kMsgSendDocument = 'dtwh', // to itself, delayed: the whole document goes to the follower
  kMsgSendMarks = 'dtmk',    // to itself, delayed: the marks go to the player
  /** From the journal's writer to the editor view: int32 "Report", a TJournalReport. */
  kMsgJournalReport = 'jrep',
  kMsgJournalsFound = 'jfnd', // from the search for journals to the editor view
  // From the notice that unsaved changes were found, to the editor view: int32 "Offer", its number.
  kMsgViewChanges = 'rvvw',
  kMsgRecover = 'rvrc',
  kMsgDiscardChanges = 'rvds', // after a question
  kMsgRecoverLater = 'rvlt',   // the notice was closed

  // To the editor window.
  kMsgOpenPanel = '_opn',       // opens the panel for a file to open
  kMsgExport = '_exp',          // opens the export panel
  kMsgExportFormat = '_exf',    // from the export panel's menu
  kMsgShowFind = 'fdbr',        // bool "Replace": with the field for the replacement
  kMsgFindNext = 'fdnx',        // bool "Backward": the text of the find bar
  kMsgCloseFind = 'fdcl',       // from the find bar to itself
  kMsgClearHistory = '_dam',    // clears the recent files, after a question
  kMsgNoticeButton = 'ntbt',    // from the notice bar to itself: int32 "Notice", its number; int32 "Index", the button
  kMsgNoticeClose = 'ntcl',     // from the notice bar to itself: the user closes the notice
  kMsgStatBarStr = 'Sssr',      // string "StatBarStr"; string "Finding", if any, is shown after it
  kMsgHostWindowMoved = 'Scwm', // the player's window was moved or resized
  /** From the tag input view through window and managers to the companion's preferences: int32 "LateMs", how late the
      user's stamps seem to be; int32 "TmDf", the time offset they were made with. Rarely sent. */
  kMsgStampHint = 'Srth',
  /** From the editor's window to the companion's manager: options that the user has changed in the editor, which are
      applied and stored already; fields as kMsgOptions. */
  kMsgOptionsChosen = 'Sopw',

  // Following an open document. A follower subscribes once, and again after a gap in the numbers.
  /** To the document, through the managers: messenger "Follower"; without it the subscription ends. */
  kMsgFollowDocument = 'Sdfl',
  /** To the partner's manager: there is a document that can be followed. */
  kMsgDocumentOpened = 'Sdop',
  /** To the follower: strings "Line", string "Title" (of its song, as far as known), "Path" (empty when it was never
      saved), int32 "Number". */
  kMsgDocumentWhole = 'Sdwh',
  /** To the follower: strings "Line" replace int32 "Removed" lines from int32 "First" on; int32 "Number". */
  kMsgDocumentLines = 'Sdln',
  kMsgDocumentClosed = 'Sdcl',

  /** The lyrics of the playing song, which may open by themselves: ref "refs", int32 "Document". From the editor view
      through its window to the manager, */
  kMsgOfferSongLyrics = 'slof',
  kMsgOpenSongLyrics = 'slop', // and back

  // From the search for the current song to the window that started it.
  kMsgSongFound = 'csfd', // ref "refs", its lyrics file, which may not exist; string "song", its own path
  kMsgNoSong = 'csno',
  kMsgPlayerSilent = 'cssl', // no answer for two seconds; the search goes on

  // The companion's windows.
  kMsgLyricsPoll = 'dwpl',      // the lyrics window's timer
  kMsgLyricsAnimation = 'dvmv', // the animation timer of its view
  // From the lyrics window's input (platform/interface/viewer_input.h).
  kMsgLyricsFullScreen = 'dvfs', // rect "frame", to which the window returns; without it full screen has ended
  kMsgLyricsZoom = 'dvzm',       // int32 "By": steps of the text size; 0: normal size
  kMsgLyricsMenu = 'dvmn',       // its context menu is wanted
  kMsgSettingChanged = 'prch',   // from a control to the preferences window: pointer "source"
  kMsgUseOffset = 'prus',        // from the timing page to the window: int32 "TmDf", the accepted time offset
  // From the keys page's controls to the page.
  kMsgKeyPressed = 'prky',
  kMsgNoKey = 'prkn',
  kMsgDefaultKey = 'prkd',
  kMsgDefaultKeys = 'prka',
  kMsgPrefDefaults = 'prdf',
  kMsgPrefRevert = 'prrv',
  kMsgPrefStore = 'prst',
  kMsgPrefInvalid = 'pruf',   // the window's timer: an invalid text is reported
  kMsgPrefSendAgain = 'prsa', // the window's timer: notices that found a full queue are sent again
  kMsgStartTapTest = 'tpst',
  kMsgTapLightEnd = 'tple', // the tap pad's timer
  // From the click track, each with int32 "Test", its number.
  kMsgClick = 'tpck',      // int64 "WhenUs": a click is heard at that moment of the clock of key presses
  kMsgTrackEnded = 'tpen', // all clicks have been heard, some time ago
  kMsgNoSound = 'tpns',    // the remaining clicks can only be seen

  // The common preferences.
  /** To every application that has a control of the preference: strings "IAP:SrcApp", "IAP:SrcIAPItem"; "IAP:Value",
      string or bool. */
  kMsgIAPChanged = '_ipc',
  kMsgIAPUnsent = 'iapu',   // from TIAPFilter to its target: notices that found a full queue wait in TakeUnsent
  kMsgIAPControls = 'iacr', // through the port: archived controls, each under its preference's name
  kMsgIAPActivate = 'iawr', // through the port: to the front
  // The common window's own controls.
  kMsgIAPControlChanged = 'iach', // string "IAP:SrcIAPItem"
  kMsgIAPDefaults = 'iadf',
  kMsgIAPCancel = 'iacn',
  kMsgIAPTextTyped = 'iatx', // string "IAP:SrcIAPItem", string "_SmplIptData"

  kMsgInputGo = '_go_', // the Go button of TSimpleInputWin
};
