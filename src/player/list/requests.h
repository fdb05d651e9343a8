#pragma once

#include "platform/app/messenger.h"

#include <string>
#include <vector>

struct TReadTags;

/** Requests of the window's parts to the player: fire-and-forget, never block. */
void ask(const BMessenger& player, uint32 request);
void ask(const BMessenger& player, uint32 request, const char* name, int32 value);
void ask_about_songs(const BMessenger& player, uint32 request, const std::vector<int64>& ids, int32 before = -1);
void ask_about_paths(const BMessenger& player, uint32 request, const std::vector<std::string>& paths,
                     int32 before = -1);
/** Tags that were read from files. */
void send_tags(const BMessenger& player, const std::vector<TReadTags>& found);
/** The image file with the song's cover. */
void send_cover(const BMessenger& player, const std::string& song, const std::string& coverFile);
