#include "player/peaks/read_tags.h"

#include "player/peaks/av_file.h"

#include <sys/stat.h>
#include <unistd.h>

#include <algorithm>
#include <cstdio>
#include <iostream>

namespace {

/** For a song on which the library never comes to an end, when the player that would have noticed is gone too. */
constexpr unsigned kLongestSeconds = 60;

std::string state_of(const std::string& path) {
  struct stat file {};
  if (stat(path.c_str(), &file) != 0 || !S_ISREG(file.st_mode)) return {};
  return std::to_string(file.st_size) + ' ' + std::to_string(file.st_mtim.tv_sec) + ' ' +
         std::to_string(file.st_mtim.tv_nsec);
}

/** Some kinds of file keep their tags with the sound. */
std::string text_of(const AVFormatContext* input, const AVStream* sound, const char* key) {
  for (const AVDictionary* tags : {input->metadata, sound->metadata}) {
    if (const AVDictionaryEntry* const entry = av_dict_get(tags, key, nullptr, 0)) return entry->value;
  }
  return {};
}

TSongTags read_tags(const std::string& path) {
  const TInput input = open_input(path);
  const int number = input ? av_find_best_stream(input.get(), AVMEDIA_TYPE_AUDIO, -1, -1, nullptr, 0) : -1;
  if (number < 0) return {};
  const AVStream* const sound = input->streams[number];
  const int64_t durationMs = std::clamp<int64_t>(input->duration / (AV_TIME_BASE / 1000), 0, INT32_MAX);
  return {text_of(input.get(), sound, "title"), text_of(input.get(), sound, "artist"), static_cast<int32>(durationMs)};
}

} // namespace

TTagAnswer answer_to(const TTagQuestion& question) {
  const std::string state = state_of(question.path);
  if (state.empty() || state == question.knownState) return {state, {}};
  return {state, read_tags(question.path)};
}

bool answer_questions() {
  TTagQuestion question;
  while (std::getline(std::cin, question.knownState, '\0') && std::getline(std::cin, question.path, '\0')) {
    alarm(kLongestSeconds);
    const std::string bytes = answer_bytes(answer_to(question));
    alarm(0);
    if (std::fwrite(bytes.data(), 1, bytes.size(), stdout) != bytes.size() || std::fflush(stdout) != 0) return false;
  }
  return true;
}
