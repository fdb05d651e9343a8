#pragma once

#include "lane/lane_edit.h"
#include "lane/lane_markers.h"
#include "songsound/song_sound.h"

#include <memory>
#include <optional>
#include <vector>

/** How a marker is dragged. */
struct TLaneDragging {
  bool movesLater = false;
  int32 reachMs = 0; // it snaps to what is so near; 0: to nothing
};

/** What the lane shows, and what the user does to it: the range, the markers and which of them is chosen or dragged.
    No window and no clock; one thread at a time. */
class TLaneModel {
public:
  /** Keeps the zoom; the range becomes that of the line when another line is selected. Ends a drag of another line. */
  void SetLyrics(const TLaneLyrics& lyrics);
  void SetSound(std::shared_ptr<const TSongSound> sound) { fSound = std::move(sound); }
  const TSongSound* Sound() const { return fSound.get(); }

  const TLaneRange& Range() const { return fRange; }
  const std::vector<TLaneMarker>& Markers() const { return fMarkers; }
  /** Of the lyrics: what a tag says more than the time in the song. */
  long OffsetMs() const { return fOffsetMs; }
  /** Where it is shown: with the drag that is going on. */
  int32 ShownTime(const TLaneMarker& marker) const;

  /** Turns the page when the head of play runs out of the range. Returns true if it has. */
  bool Follow(std::optional<int32> headMs);
  void Zoom(double factor, int32 aboutMs);
  /** Back to the range of the line. */
  void ResetZoom();
  void Pan(int32 stepMs);

  /** The marker that keys work on; null without any. */
  const TLaneMarker* Chosen() const;
  /** The next or previous one that can be moved; brings it into sight. Returns false at the end. */
  bool ChooseNext(bool isLater);
  /** One that can be moved within that distance, else another one; null without any. */
  const TLaneMarker* MarkerNear(int32 timeMs, int32 reachMs) const;

  /** Chooses it and begins a drag. */
  void Grab(const TLaneMarker& marker);
  void DragTo(int32 timeMs, const TLaneDragging& how);
  bool IsDragging() const { return fDrag.has_value(); }
  /** Ends the drag; nothing if it has not moved the marker. */
  std::optional<TLaneMove> Drop();
  void CancelDrag() { fDrag.reset(); }

  /** The chosen marker moved by one step of that size, or of its form. Nothing at its neighbour. */
  std::optional<TLaneMove> Nudged(int32 stepMs, bool movesLater) const;
  /** The chosen marker moved to the nearest onset within 500 ms, or to the strongest one within 150 ms if that is at
     least twice as strong. Nothing if it is there already or none is near. */
  std::optional<TLaneMove> Snapped() const;
  /** Where the selected line gets its first tag by a click there: as a drag, it snaps to an onset within reach and does
      not pass the neighbours. Nothing if it has a tag, or no line is selected. */
  std::optional<int32> NewTagTime(int32 timeMs, int32 reachMs) const;

private:
  struct TBounds {
    int32 earliestMs;
    int32 latestMs;
  };
  struct TDrag {
    TLaneMarker marker;
    int32 timeMs;
    bool movesLater;
  };
  TLaneRange LineRange() const;
  TBounds BoundsOf(const TLaneMarker& marker, bool movesLater) const;
  /** The nearest time that its form can show within the bounds; its own time if there is none. */
  int32 Allowed(const TLaneMarker& marker, int32 timeMs, bool movesLater) const;
  const TOnset* OnsetNear(int32 timeMs, int32 reachMs) const;
  const TOnset* OnsetToSnapTo(int32 timeMs) const;
  int32 SnappedTime(const TLaneMarker& marker, int32 timeMs, int32 reachMs) const;
  static std::optional<TLaneMove> MoveOf(const TLaneMarker& marker, int32 toMs, bool movesLater);

  std::shared_ptr<const TSongSound> fSound;
  std::vector<TLaneMarker> fMarkers; // by time
  int32 fRow = -1;
  long fOffsetMs = 0;
  TLaneRange fOfLine = range_of_line({});
  double fZoom = 1;
  TLaneRange fRange = fOfLine;
  size_t fChosenTag = 0; // of fRow
  std::optional<TDrag> fDrag;
  std::optional<int32> fHeadMs;
};
