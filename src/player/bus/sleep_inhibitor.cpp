#include "player/bus/sleep_inhibitor.h"

#include "player/bus/portal.h"
#include "player/texts/player_texts.h"

#include "platform/support/log.h"

#include <QDBusPendingCallWatcher>

#include <array>
#include <utility>

namespace {

const QString kApplication = QStringLiteral("Sonivo");
constexpr uint kSuspend = 4;
/** The bus may have to start the portal first. */
constexpr int kLongestAnswerMs = 10000;

struct TService {
  const char* name;
  const char* path;
  const char* interface;
  const char* release; // the method that takes the cookie; null for the portal, whose answer is a request to be closed
};

constexpr std::array kServices{
    TService{"org.freedesktop.PowerManagement", "/org/freedesktop/PowerManagement/Inhibit",
             "org.freedesktop.PowerManagement.Inhibit", "UnInhibit"},
    TService{"org.gnome.SessionManager", "/org/gnome/SessionManager", "org.gnome.SessionManager", "Uninhibit"},
    TService{portal::kName, portal::kPath, "org.freedesktop.portal.Inhibit", nullptr},
};

QVariantList arguments_for(size_t service) {
  const QString reason = QString::fromUtf8(player_text("Player_Awake_Reason"));
  if (service == 0) return {kApplication, reason};
  if (service == 1) return {kApplication, 0U, reason, kSuspend};
  return {QString(), kSuspend, QVariantMap{{"reason", reason}}};
}

QDBusMessage call_of(const TService& service, const char* method) {
  QDBusMessage call = QDBusMessage::createMethodCall(service.name, service.path, service.interface, method);
  // The other services run where they are used.
  call.setAutoStartService(service.release == nullptr);
  return call;
}

/** Nothing if the service has not granted it. */
std::optional<QDBusMessage> release_call(const TService& service, const QDBusMessage& answer) {
  if (service.release == nullptr) {
    const QString request = portal::request_in(answer);
    return request.isEmpty() ? std::nullopt : std::optional(portal::close_call(request));
  }
  const QVariant cookie = answer.arguments().value(0);
  if (answer.type() != QDBusMessage::ReplyMessage || cookie.typeId() != QMetaType::UInt) return std::nullopt;
  QDBusMessage call = call_of(service, service.release);
  call.setArguments({cookie});
  return call;
}

} // namespace

void TSleepInhibitor::Set(bool isOn) {
  if (std::exchange(fIsWanted, isOn) == isOn) return;
  if (!isOn && fRelease) fBus.send(*std::exchange(fRelease, std::nullopt));
  if (isOn && !fIsAsking) Ask(0);
}

void TSleepInhibitor::Ask(size_t service) {
  fIsAsking = service < kServices.size();
  if (!fIsAsking) return log_error("bus", "no service on the session bus keeps the computer awake");
  QDBusMessage call = call_of(kServices[service], "Inhibit");
  call.setArguments(arguments_for(service));
  auto* const watcher = new QDBusPendingCallWatcher(fBus.asyncCall(call, kLongestAnswerMs), this);
  connect(watcher, &QDBusPendingCallWatcher::finished, this, [this, service](QDBusPendingCallWatcher* finished) {
    finished->deleteLater();
    Granted(service, finished->reply());
  });
}

/** It may not be wanted any more, or again, by the time of the answer. */
void TSleepInhibitor::Granted(size_t service, const QDBusMessage& answer) {
  fRelease = release_call(kServices[service], answer);
  if (!fRelease && fIsWanted) return Ask(service + 1);
  fIsAsking = false;
  if (!fIsWanted && fRelease) fBus.send(*std::exchange(fRelease, std::nullopt));
}
