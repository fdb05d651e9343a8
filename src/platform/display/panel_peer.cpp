#include "platform/interface/panel_peer.h"

#include "platform/display/accelerators.h"
#include "platform/display/convert.h"
#include "platform/display/display_thread.h"
#include "platform/display/panel_dialog.h"

#include <QDir>
#include <QFileInfo>
#include <QUrl>

namespace display {

namespace {

PanelDialog& dialog(QWidget* widget) {
  return *static_cast<PanelDialog*>(widget);
}

} // namespace

PanelPeer::PanelPeer(const BMessenger& window, const WindowSetup& setup, file_panel_mode mode, bool allowMultiple)
    : WindowPeer(window, setup,
                 [window, mode, allowMultiple]() -> QWidget* { return new PanelDialog(window, mode, allowMultiple); }) {
}

void PanelPeer::SetDirectory(const std::string& path) {
  Change([path](QWidget* widget) {
    const QString folder = to_qstring(path);
    dialog(widget).setDirectory(QFileInfo(folder).isDir() ? folder : QDir::homePath());
  });
}

void PanelPeer::SetPlaces(const std::vector<std::string>& folders) {
  Change([folders](QWidget* widget) {
    QList<QUrl> places;
    for (const std::string& folder : folders) {
      const QUrl place = QUrl::fromLocalFile(to_qstring(folder));
      if (QFileInfo(place.toLocalFile()).isDir() && !places.contains(place)) places.append(place);
    }
    const QUrl home = QUrl::fromLocalFile(QDir::homePath());
    if (!places.contains(home)) places.append(home);
    dialog(widget).setSidebarUrls(places);
  });
}

std::string PanelPeer::Directory() const {
  return call([find = Finder()] {
    QWidget* widget = find();
    return widget ? dialog(widget).directory().absolutePath().toStdString() : std::string();
  });
}

void PanelPeer::SetSaveText(const std::string& name) {
  Change([name](QWidget* widget) { dialog(widget).SetSaveText(to_qstring(name)); });
}

void PanelPeer::SetButtonLabel(file_panel_button button, const std::string& label) {
  const auto which = button == B_CANCEL_BUTTON ? QFileDialog::Reject : QFileDialog::Accept;
  Change([which, label](QWidget* widget) { dialog(widget).setLabelText(which, plain_label(label)); });
}

void PanelPeer::Cancel() {
  Change([](QWidget* widget) {
    if (widget->isVisible()) dialog(widget).reject();
  });
}

} // namespace display
