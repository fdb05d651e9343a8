#include "player/bus/file_manager.h"

#include "player/bus/portal.h"

#include <QDBusMessage>
#include <QDBusPendingCallWatcher>
#include <QStringList>
#include <QUrl>

namespace {
/** The bus may have to start the file manager first. */
constexpr int kLongestAnswerMs = 10000;
} // namespace

void show_in_file_manager(const QDBusConnection& bus, const std::string& path, QObject* context,
                          const std::function<void()>& failed) {
  QDBusMessage call = QDBusMessage::createMethodCall("org.freedesktop.FileManager1", "/org/freedesktop/FileManager1",
                                                     "org.freedesktop.FileManager1", "ShowItems");
  const QUrl url = QUrl::fromLocalFile(QString::fromStdString(path));
  call.setArguments({QStringList{url.toString(QUrl::FullyEncoded)}, QString()});
  auto* const watcher = new QDBusPendingCallWatcher(bus.asyncCall(call, kLongestAnswerMs), context);
  QObject::connect(watcher, &QDBusPendingCallWatcher::finished, context, [=](QDBusPendingCallWatcher* finished) {
    finished->deleteLater();
    if (finished->isError()) (new TPortalFolder(bus, failed, context))->Open(path);
  });
}
