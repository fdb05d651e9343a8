#pragma once

#include "common/archivable.h"

#include <memory>
#include <mutex>

/** The settings that the editor shares with the companion display; the names in quotes are their fields on disk. */
struct TPrefValues {
  bool stayOnTop = false;                   // "SoTp"
  int32 fontLevel = 0;                      // "FntL", kept for the display
  int32 readEncoding = 4;                   // "REnc": 0 UTF-8, 1 Shift-JIS, 2 JIS, 4 detect
  int64 pollIntervalUs = 25000;             // "MTmI"
  std::string languageFile = "English.llt"; // "LLTF"; empty: the built-in English
  bool doubleBuffer = true;                 // "DbBf", kept for the display
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
};

/** The plug-in's settings. Read from "VesmoShared_Prefs.arc" at start, updated by messages of the companion, never
    written by the editor. Any thread may take a snapshot while another updates. */
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
  /** Takes the appearance fields that the message carries. */
  bool UnarchiveAppearance(const BMessage& archive);

private:
  mutable std::mutex fMutex; // guards the pointer
  std::shared_ptr<const TPrefValues> fValues;
};

/** Null before start. */
extern TPref* gPref;
