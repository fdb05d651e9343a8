#pragma once

#include "platform/app/message.h"

#include <vector>

struct TPrefValues;

/** What tells both plug-ins of changed settings: one notice for each group that has changed, carrying those of its
    fields that have. To the companion's manager, which hands them to the editor's. */
enum : uint32 {
  kNoticeStayOnTop = 'Spsc',
  kNoticeToolBar = 'Splc',
  kNoticePollInterval = 'Ssic',
  kNoticeLyricsWindow = 'Sedr', // what only the display heeds
  kNoticeAppearance = 'Spac',
  kNoticeEncoding = 'Spec', // for writing
  kNoticeReadEncoding = 'Sprc',
  kNoticeLineEnds = 'Spcc',
  kNoticeTimeOffset = 'Sptc',
  kNoticeLanguage = '_lgc',
};

std::vector<BMessage> notices_of_change(const TPrefValues& from, const TPrefValues& to);
