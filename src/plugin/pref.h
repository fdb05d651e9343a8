#pragma once

#include "common/archivable.h"

#include <memory>
#include <mutex>

inline constexpr int32 kLongestLeadInMs = 10000;

/** When the lyrics of the playing song open by themselves. The numbers are stored. */
enum : int32 {
  kNeverOpen = 0,
  kOpenInNewDocument = 1, // while the document is new and untouched
  kOpenWithEverySong = 2  // while nothing is unsaved
};

/** The settings shared by the editor and the lyrics display. Names in quotes are the fields on disk, in
    "VesmoShared_Prefs.arc" and, for the last group, in "Vesmo_Options.arc". */
struct TPrefValues {
  bool stayOnTop = false;                   // "SoTp"
  int32 fontLevel = 0;                      // "FntL", used by the display only
  int32 readEncoding = 4;                   // "REnc": 0 UTF-8, 1 Shift-JIS, 2 JIS, 4 detect
  int64 pollIntervalUs = 25000;             // "MTmI"
  std::string languageFile = "English.llt"; // "LLTF"; empty: the built-in English
  bool doubleBuffer = true;                 // "DbBf", used by the display only
  bool showToolBar = true;                  // "STlB"
  int32 writeCRType = 0;                    // "WCRT": 0 LF, 1 CR LF, 2 CR
  int32 writeEncoding = 0;                  // "WEnc": 0 UTF-8, 1 Shift-JIS, 2 JIS
  int32 timeOffsetMs = 0;                   // "TmDf", added to every stamped position

  bool antiAlias = true;                      // "AAli"
  bool useActiveFrame = true;                 // "UAFr"
  bool useBackgroundImage = false;            // "UBGI"
  std::string fontFamily = "Haru";            // "FntF", at most 64 bytes
  int32 imageAlignment = 0;                   // "ImgA"
  float fontSize = 12.0F;                     // "FntS", points
  rgb_color activeBackground{51, 51, 0, 255}; // "ABCl"
  rgb_color activeFrame{255, 255, 153, 255};  // "AFCl"
  rgb_color activeLyrics{255, 255, 204, 255}; // "ALCl"
  rgb_color background{0, 0, 0, 255};         // "BGCl"
  rgb_color lyrics{255, 255, 255, 255};       // "LyCl"
  std::string backgroundImage;                // "BGIF"

  int32 leadInMs = 0;                     // "LdIn": playing from a line begins that much before its tag
  bool replaysNudges = false;             // "RpNd": a nudged line is played for half a second
  int32 songOpening = kOpenInNewDocument; // "OpSg": when the playing song's lyrics open by themselves
  int32 newDialect = 0;                   // "NDlc": of new documents, a TDialect
  bool recognisesCommon = true;           // "RCmn": files with [mm:ss.cc] are opened in their own dialect
  bool savesForeignAsUtf8 = false;        // "FUt8": files in a foreign encoding (lyrics/foreign_encoding.h)
  bool renewsCopies = false;              // "RnwC": a copy for other players is renewed at every save
};

/** The plug-in's settings, read from the two files on start and updated by messages of the companion, which stores them
    (plugin/shared_prefs.h). Thread-safe: `Values` returns an immutable snapshot, and each of the other calls is atomic.
 */
class TPref : public koreva::TArchivable {
public:
  TPref();
  TPref(const TPref&) = delete;
  TPref& operator=(const TPref&) = delete;

  std::shared_ptr<const TPrefValues> Values() const;
  void SetValues(const TPrefValues& values);

  bool Archive(BMessage* archive) override;
  bool Unarchive(const BMessage& archive) override;
  bool ArchiveAppearance(BMessage* archive) const;
  /** Applies the appearance fields in the message. */
  bool UnarchiveAppearance(const BMessage& archive);
  /** The last group, which the two above leave alone. */
  bool ArchiveOptions(BMessage* archive) const;
  bool UnarchiveOptions(const BMessage& archive);

private:
  template <typename Change>
  bool Update(Change change);
  void Replace(const TPrefValues& values);

  mutable std::mutex fMutex; // guards fValues
  std::shared_ptr<const TPrefValues> fValues;
};

/** Null until the plug-in is constructed. */
extern TPref* gPref;
