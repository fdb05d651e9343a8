#pragma once

#include "platform/app/message.h"

#include <vector>

struct TPrefValues;

/** Notices of changed settings, one per group, with those of its fields that have changed. Sent to the companion's
    manager, which forwards them to the editor's. */
enum : uint32 {
  kNoticeStayOnTop = 'Spsc',
  kNoticeToolBar = 'Splc',
  kNoticePollInterval = 'Ssic',
  kNoticeLyricsWindow = 'Sedr', // for the lyrics window only
  kNoticeAppearance = 'Spac',
  kNoticeEncoding = 'Spec', // for writing
  kNoticeReadEncoding = 'Sprc',
  kNoticeLineEnds = 'Spcc',
  kNoticeTimeOffset = 'Sptc',
  kNoticeLanguage = '_lgc',
};

std::vector<BMessage> notices_of_change(const TPrefValues& from, const TPrefValues& to);
