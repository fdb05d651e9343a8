#pragma once

#include "lane/lane_view.h"

#include <memory>
#include <optional>
#include <vector>

class BMessage;
class BView;
class Sonivo_FrontEnd;
class TDocument;
class TEditSession;
class TSongSoundSource;

/** Shows the lane below the lyrics, while the user wants it: fetches lines, sound and play position at every poll, and
    makes what the user does in it steps of the document. Owned by the document's view, on its window's thread; the lane
    itself is a child of the document's view, made when it is first shown. */
class TLaneWiring : private TLaneListener {
public:
  struct TParts {
    Sonivo_FrontEnd* frontEnd;
    const TDocument* document;
    TEditSession* session;
    TSongSoundSource* sound;
  };
  /** `owner` is attached, and passes its messages on. Nothing is owned. */
  TLaneWiring(BView* owner, const TParts& parts) : fOwner(owner), fParts(parts) {}

  /** False for a message that is not about the lane. */
  bool Handle(const BMessage& message);
  /** `sungMs`: where the song plays; nothing while it does not. */
  void Poll(std::optional<int32> sungMs);
  bool IsShown() const { return fHeight > 0; }
  const TLaneView* View() const { return fView; }
  void LanguageChanged();
  void AppearanceChanged();

private:
  void TagMoved(const TLaneMove& move) override;
  void TagPlaced(int32 timeMs) override;
  void PlayFrom(int32 timeMs) override;
  void RowChosen(int32 row) override;
  void LookToggled() override;
  void LaneLeft() override;
  void Describe(const std::string& text) override;

  void Toggle();
  void Show();
  void Hide();
  /** Gives the lane its part of the room, and the lyrics the rest. */
  void Place();
  TLaneLyrics Lyrics() const;
  void ShowLyrics();
  void ShowSound();
  void ShowHead(std::optional<int32> sungMs);

  BView* const fOwner;
  const TParts fParts;
  TLaneView* fView = nullptr; // a child of fOwner
  float fHeight = 0;          // 0: hidden
  size_t fLyricsShown = 0;    // a hash of what the lane was last given
  std::shared_ptr<const TSongSound> fSoundShown;
  int64 fHeadShownUs = 0;
};
