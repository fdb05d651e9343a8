#include "player/peaks/read_tags.h"

#include "confined/confined_work.h"
#include "player/peaks/av_file.h"
#include "player/peaks/song_file.h"

#include <sys/stat.h>

#include <algorithm>
#include <cstdio>
#include <iostream>

namespace {

/** Per song; generous in real time, because of the lowest priority. */
constexpr TWorkLimits kLimits{.cpuSeconds = 60, .wallSeconds = 60, .resultBytes = 64 << 10};

std::string state_of(int fd) {
  struct stat file {};
  if (fd < 0 || fstat(fd, &file) != 0) return {};
  return std::to_string(file.st_size) + ' ' + std::to_string(file.st_mtim.tv_sec) + ' ' +
         std::to_string(file.st_mtim.tv_nsec);
}

/** Some formats store tags in the audio stream. */
std::string text_of(const AVFormatContext* input, const AVStream* sound, const char* key) {
  for (const AVDictionary* tags : {input->metadata, sound->metadata}) {
    if (const AVDictionaryEntry* const entry = av_dict_get(tags, key, nullptr, 0)) return entry->value;
  }
  return {};
}

TSongTags read_tags(int file, const std::string& name) {
  const TInput input = open_input(file, name);
  const int number = input ? av_find_best_stream(input.get(), AVMEDIA_TYPE_AUDIO, -1, -1, nullptr, 0) : -1;
  if (number < 0) return {};
  const AVStream* const sound = input->streams[number];
  const int64_t durationMs = std::clamp<int64_t>(input->duration / (AV_TIME_BASE / 1000), 0, INT32_MAX);
  return {text_of(input.get(), sound, "title"), text_of(input.get(), sound, "artist"), static_cast<int32>(durationMs),
          text_of(input.get(), sound, "album"), track_number(text_of(input.get(), sound, "track"))};
}

} // namespace

TTagAnswer answer_to(const TTagQuestion& question) {
  const UniqueFd file = open_regular_file(question.path);
  const std::string state = state_of(file.Get());
  if (state.empty() || state == question.knownState) return {state, {}};
  const std::string name = question.path.substr(question.path.rfind('/') + 1);
  const auto bytes = confined_work({file.Get()}, kLimits, [&] {
    return answer_bytes({{}, read_tags(file.Get(), name)});
  });
  TTagAnswer answer;
  if (!bytes || read_answer(*bytes, &answer) != TAnswerForm::kWhole) return {state, {}};
  return {state, answer.tags};
}

bool answer_questions() {
  TTagQuestion question;
  while (std::getline(std::cin, question.knownState, '\0') && std::getline(std::cin, question.path, '\0')) {
    const std::string bytes = answer_bytes(answer_to(question));
    if (std::fwrite(bytes.data(), 1, bytes.size(), stdout) != bytes.size() || std::fflush(stdout) != 0) return false;
  }
  return true;
}
