#pragma once

#include "platform/app/message.h"
#include "platform/app/messenger.h"

#include <string>
#include <vector>

/** Numbers of the notices that can be shown in one window at a time; further ones may use numbers from kOtherNotices.
 */
enum TNoticeId : int32 { kFileNotice, kRecentFilesNotice, kOtherNotices = 100 };

struct TNoticeButton {
  std::string label;
  BMessage message; // a copy is sent to the notice's target
};

/** Something that the user should know and may react to, but that must not interrupt the work. */
struct TNotice {
  int32 id = 0;
  std::string text; // one line
  /** From left to right; more than kMostNoticeButtons are not shown. */
  std::vector<TNoticeButton> buttons;
  BMessenger target;
  /** Sent to the target when the user closes the notice; a code of 0 is not sent. */
  BMessage whenClosed;
};

inline constexpr size_t kMostNoticeButtons = 4;

/** Where notices are shown, one at a time, in the order of their arrival. On the window's thread. */
class TNoticeBoard {
public:
  /** Replaces the notice of the same number in its place, else adds it at the end. */
  virtual void ShowNotice(const TNotice& notice) = 0;
  /** Removes it; the target is not notified. A button does not remove its notice: whoever handles the message does. */
  virtual void RemoveNotice(int32 id) = 0;
  [[nodiscard]] virtual bool HasNotice(int32 id) const = 0;

protected:
  ~TNoticeBoard() = default;
};
