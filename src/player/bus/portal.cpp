#include "player/bus/portal.h"

#include "platform/kernel/unique_fd.h"

#include <QDBusPendingCallWatcher>
#include <QDBusUnixFileDescriptor>
#include <QTimer>

#include <fcntl.h>

#include <atomic>
#include <utility>

namespace {

const QString kRequests = QStringLiteral("/org/freedesktop/portal/desktop/request/");
const QString kRequest = QStringLiteral("org.freedesktop.portal.Request");
/** The bus may have to start the portal first. */
constexpr int kLongestAnswerMs = 10000;
/** The user may be asked by which program the folder is to be opened. */
constexpr int kLongestRequestMs = 300000;
/** Of the results of a request; 0 is success, 1 that the user has cancelled it. */
constexpr uint kEndedOtherwise = 2;

} // namespace

namespace portal {

QString request_in(const QDBusMessage& answer) {
  if (answer.type() != QDBusMessage::ReplyMessage) return {};
  const QString path = answer.arguments().value(0).value<QDBusObjectPath>().path();
  return path.startsWith(kRequests) ? path : QString();
}

QDBusMessage close_call(const QString& request) {
  return QDBusMessage::createMethodCall(kName, request, kRequest, "Close");
}

} // namespace portal

TPortalFolder::TPortalFolder(const QDBusConnection& bus, std::function<void()> failed, QObject* parent)
    : QObject(parent), fBus(bus), fFailed(std::move(failed)) {
  QTimer::singleShot(kLongestRequestMs, this, &QObject::deleteLater);
}

/** The portal wants a descriptor of the file. This one gives no access to what is in it. */
void TPortalFolder::Open(const std::string& file) {
  const UniqueFd descriptor(open(file.c_str(), O_PATH | O_CLOEXEC));
  if (descriptor.Get() < 0) return Fail();
  QDBusMessage call =
      QDBusMessage::createMethodCall(portal::kName, portal::kPath, "org.freedesktop.portal.OpenURI", "OpenDirectory");
  static std::atomic<int> requests{0};
  const QString token = QStringLiteral("sonivo_%1").arg(++requests);
  call << QString() << QVariant::fromValue(QDBusUnixFileDescriptor(descriptor.Get()))
       << QVariantMap{{"handle_token", token}};
  ListenTo(kRequests + fBus.baseService().mid(1).replace('.', '_') + '/' + token);
  auto* const watcher = new QDBusPendingCallWatcher(fBus.asyncCall(call, kLongestAnswerMs), this);
  connect(watcher, &QDBusPendingCallWatcher::finished, this, [this](QDBusPendingCallWatcher* finished) {
    const QString request = portal::request_in(finished->reply());
    if (request.isEmpty()) return Fail();
    ListenTo(request);
  });
}

/** The portal may respond before its answer to the call has been read: so first to the request that the documentation
    of portals promises, and then to the one that it names. */
void TPortalFolder::ListenTo(const QString& request) {
  if (request == fRequest) return;
  const auto slot = SLOT(Responded(uint, QVariantMap));
  if (!fRequest.isEmpty()) fBus.disconnect(portal::kName, fRequest, kRequest, "Response", this, slot);
  fBus.connect(portal::kName, request, kRequest, "Response", this, slot);
  fRequest = request;
}

void TPortalFolder::Responded(uint result, const QVariantMap& /*details*/) {
  if (result >= kEndedOtherwise) return Fail();
  deleteLater();
}

void TPortalFolder::Fail() {
  deleteLater();
  fFailed();
}
