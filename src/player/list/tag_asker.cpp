#include "player/list/tag_asker.h"

#include "player/model/song_address.h"

#include <algorithm>
#include <utility>

void TTagAsker::Show(std::shared_ptr<const TSongs> songs) {
  if (songs == fSongs) return;
  fSongs = std::move(songs);
  fPassed = 0;
}

/** Tags from the sound or from a playlist make reading the file unnecessary. */
bool TTagAsker::IsWanted(const TSong& song) const {
  return song.durationMs <= 0 && !song.played && song.error.empty() && is_file_path(song.path) &&
         !fDone.contains(song.id);
}

std::string TTagAsker::Ask(int32 firstRow) {
  const auto count = static_cast<int32>(fSongs->size());
  if (std::exchange(fFirstRow, firstRow) != firstRow) fPassed = 0;
  for (; fPassed < count; ++fPassed) {
    const TSong& song = (*fSongs)[static_cast<size_t>((std::max(firstRow, int32{0}) + fPassed) % count)];
    if (!IsWanted(song)) continue;
    fAsked = song;
    fBytes.clear();
    fDone.insert(song.id);
    const auto known = fKnown.find(song.path);
    return question_bytes({known == fKnown.end() ? std::string() : known->second.state, song.path});
  }
  return {};
}

bool TTagAsker::Take(std::string_view bytes) {
  if (!IsWaiting()) return false;
  fBytes += bytes;
  TTagAnswer answer;
  const TAnswerForm form = read_answer(fBytes, &answer);
  if (form == TAnswerForm::kWhole) Learn(answer);
  return form != TAnswerForm::kBroken;
}

void TTagAsker::Learn(const TTagAnswer& answer) {
  TTagAnswer& known = fKnown[fAsked.path];
  if (known.state != answer.state) known = answer;
  if (known.tags != TSongTags()) fFound.push_back({fAsked.id, known.tags});
  fAsked = {};
}

void TTagAsker::GiveUp() {
  fAsked = {};
}

std::vector<TReadTags> TTagAsker::TakeFound() {
  return std::exchange(fFound, {});
}
