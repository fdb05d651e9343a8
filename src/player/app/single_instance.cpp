#include "player/app/single_instance.h"

#include "platform/app/message.h"
#include "platform/app/messenger.h"
#include "player/app/sonivo_app.h"
#include "player/model/player_messages.h"
#include "player/model/song_address.h"

#include <filesystem>

namespace {

constexpr bigtime_t kLongestDeliveryUs = 1000000;
constexpr bigtime_t kLongestAnswerUs = 2000000;

/** The other process has its own working directory. */
std::string whole_path(const std::string& path) {
  std::error_code error;
  return std::filesystem::absolute(path, error).lexically_normal().string();
}

} // namespace

bool hand_over(const TCommandLine& line) {
  const BMessenger player(TSonivoApp::kSignature);
  if (!player.IsValid()) return false;
  BMessage message(kMsgHandedOver);
  std::error_code error;
  const std::string folder = std::filesystem::current_path(error).string();
  for (const std::string& song : line.songs) message.AddString("path", song_address(song, folder).text);
  if (!line.lyrics.empty()) message.AddString("lyrics", whole_path(line.lyrics));
  message.AddBool("paused", line.startsPaused);
  BMessage answer;
  return player.SendMessage(&message, &answer, kLongestDeliveryUs, kLongestAnswerUs) == B_OK && answer.what == B_REPLY;
}
