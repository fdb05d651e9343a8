#pragma once

#include "platform/app/messenger.h"

#include <string>
#include <vector>

struct TReadTags;

/** What the window's parts ask of the player; none waits. */
void ask(const BMessenger& player, uint32 request);
void ask(const BMessenger& player, uint32 request, const char* name, int32 value);
void ask_about_songs(const BMessenger& player, uint32 request, const std::vector<int64>& ids, int32 before = -1);
void ask_about_paths(const BMessenger& player, uint32 request, const std::vector<std::string>& paths,
                     int32 before = -1);
/** What the files of songs say of them. */
void tell_tags(const BMessenger& player, const std::vector<TReadTags>& found);
/** The file in which the song's cover can be seen. */
void tell_cover(const BMessenger& player, const std::string& song, const std::string& coverFile);
