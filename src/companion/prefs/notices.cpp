#include "companion/prefs/notices.h"

#include "plugin/message_codes.h"
#include "plugin/pref.h"

#include <map>
#include <string>

namespace {

BMessage options_of(const TPrefValues& values) {
  TPref record;
  record.SetValues(values);
  BMessage options;
  record.ArchiveOptions(&options);
  return options;
}

uint32 notice_of(const std::string& field) {
  static const BMessage kOptions = options_of({});
  static const std::map<std::string, uint32> kNoticeOf = {
      {"SoTp", kMsgStayOnTop},       {"STlB", kMsgToolBar},        {"MTmI", kMsgPollInterval},
      {"FntL", kMsgDefaultStatBar},  {"DbBf", kMsgDefaultStatBar}, {"WEnc", kMsgEncoding},
      {"REnc", kMsgReadEncoding},    {"WCRT", kMsgLineEnds},       {"TmDf", kMsgTimeOffset},
      {"LLTF", kMsgLanguageChanged},
  };
  const auto found = kNoticeOf.find(field);
  if (found != kNoticeOf.end()) return found->second;
  return kOptions.HasField(field.c_str()) ? kMsgOptions : kMsgAppearance;
}

BMessage fields_of(const TPrefValues& values) {
  TPref record;
  record.SetValues(values);
  BMessage fields;
  record.Archive(&fields);
  record.ArchiveOptions(&fields);
  return fields;
}

/** The fields for which the predicate is true. */
template <typename Wanted>
BMessage only(const BMessage& fields, const Wanted& isWanted) {
  BMessage some(fields);
  for (const std::string& field : fields.FieldNames())
    if (!isWanted(field)) some.RemoveName(field.c_str());
  return some;
}

bool is_same(const BMessage& a, const BMessage& b, const std::string& field) {
  const auto is_it = [&field](const std::string& other) { return other == field; };
  return only(a, is_it).Flatten() == only(b, is_it).Flatten();
}

} // namespace

std::vector<BMessage> notices_of_change(const TPrefValues& from, const TPrefValues& to) {
  const BMessage before = fields_of(from);
  const BMessage after = fields_of(to);
  const BMessage changed = only(after, [&](const std::string& field) { return !is_same(before, after, field); });
  std::map<uint32, BMessage> notices;
  for (const std::string& field : changed.FieldNames()) {
    const uint32 code = notice_of(field);
    notices[code] = only(changed, [code](const std::string& other) { return notice_of(other) == code; });
    notices[code].what = code;
  }
  std::vector<BMessage> inOrder;
  inOrder.reserve(notices.size());
  for (const auto& [code, notice] : notices) inOrder.push_back(notice);
  return inOrder;
}
