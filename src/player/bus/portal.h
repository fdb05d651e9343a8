#pragma once

#include <QDBusConnection>
#include <QDBusMessage>
#include <QDBusObjectPath>
#include <QObject>
#include <QVariantMap>

#include <functional>
#include <string>

/** The desktop's portal, which offers services also to programs that are confined, and where a desktop has none of
    the older interfaces. */
namespace portal {

inline constexpr const char* kName = "org.freedesktop.portal.Desktop";
inline constexpr const char* kPath = "/org/freedesktop/portal/desktop";

/** The object of a request that the portal has answered with, or an empty path if it has not. */
QString request_in(const QDBusMessage& answer);

/** Ends a request: what it asked for is released. */
QDBusMessage close_call(const QString& request);

} // namespace portal

/** Has the portal open the folder of a file (org.freedesktop.portal.OpenURI). Deletes itself when the portal is done,
   or does not say so in time. Lives on the bus's thread. */
class TPortalFolder : public QObject {
  Q_OBJECT
public:
  /** `failed` is called if the portal could not open it; not after `parent` is gone. */
  TPortalFolder(const QDBusConnection& bus, std::function<void()> failed, QObject* parent);
  /** Once. */
  void Open(const std::string& file);

private slots:
  void Responded(uint result, const QVariantMap& details);

private:
  void ListenTo(const QString& request);
  void Fail();

  QDBusConnection fBus;
  const std::function<void()> fFailed;
  QString fRequest; // whose response is awaited
};
