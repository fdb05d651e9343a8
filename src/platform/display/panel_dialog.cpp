#include "platform/display/panel_dialog.h"

#include "platform/app/message.h"
#include "platform/interface/view_peer.h"

#include <QAbstractItemView>
#include <QCompleter>
#include <QFileInfo>
#include <QHeaderView>
#include <QLineEdit>
#include <QMessageBox>
#include <QPushButton>
#include <QTreeView>

namespace display {

namespace {

constexpr QSize kFirstSize{800, 480};

/** Sizes and dates fit; names get the rest of the width. */
void share_width(QHeaderView* columns) {
  columns->setSectionResizeMode(QHeaderView::ResizeToContents);
  columns->setSectionResizeMode(0, QHeaderView::Stretch);
}

} // namespace

PanelDialog::PanelDialog(const BMessenger& window, file_panel_mode mode, bool allowMultiple) : fWindow(window) {
  setOption(DontUseNativeDialog);
  setOption(DontConfirmOverwrite);
  setAcceptMode(mode == B_SAVE_PANEL ? AcceptSave : AcceptOpen);
  resize(kFirstSize);
  setFileMode(mode == B_SAVE_PANEL ? AnyFile : allowMultiple ? ExistingFiles : ExistingFile);
  if (auto* details = findChild<QTreeView*>(QStringLiteral("treeView"))) share_width(details->header());
  // Its entries (delete, rename) would ask in nested event loops.
  for (auto* files : findChildren<QAbstractItemView*>()) files->setContextMenuPolicy(Qt::NoContextMenu);
}

void PanelDialog::SetSaveText(const QString& name) {
  selectFile(name);
  if (auto* field = findChild<QLineEdit*>(QStringLiteral("fileNameEdit"))) {
    field->setText(name);
    field->selectAll();
    field->setFocus();
  }
}

void PanelDialog::accept() {
  const QStringList chosen = selectedFiles();
  if (chosen.isEmpty()) return;
  const QFileInfo first(chosen.constFirst());
  if (acceptMode() == AcceptSave && first.exists() && !first.isDir() && !fMayReplace)
    return AskToReplace(chosen.constFirst());
  if (acceptMode() == AcceptOpen && !first.exists()) return Say(tr("%1\nFile not found.").arg(chosen.constFirst()));
  if (acceptMode() == AcceptSave && !first.exists() && !first.dir().exists())
    return Say(tr("%1\nDirectory not found.").arg(first.path()));
  QFileDialog::accept();
}

void PanelDialog::done(int result) {
  const QStringList chosen = selectedFiles();
  fMayReplace = false;
  QFileDialog::done(result);
  HideSuggestions();
  if (result == Accepted) {
    BMessage files(DISPLAY_FILES_CHOSEN);
    for (const QString& path : chosen) files.AddString("path", path.toStdString());
    fWindow.SendMessage(&files, BMessenger(), 0);
  }
  fWindow.SendMessage(DISPLAY_PANEL_CLOSED);
}

/** The completion popup would outlive the dialog and swallow the next keys typed anywhere. */
void PanelDialog::HideSuggestions() {
  const auto* field = findChild<QLineEdit*>(QStringLiteral("fileNameEdit"));
  if (field && field->completer()) field->completer()->popup()->hide();
}

void PanelDialog::AskToReplace(const QString& path) {
  auto* question = new QMessageBox(QMessageBox::Warning, windowTitle(),
                                   tr("%1 already exists.\nDo you want to replace it?").arg(QFileInfo(path).fileName()),
                                   QMessageBox::Yes | QMessageBox::No, this);
  question->setDefaultButton(QMessageBox::No);
  question->setAttribute(Qt::WA_DeleteOnClose);
  connect(question, &QMessageBox::finished, this, [this](int answer) {
    if (answer != QMessageBox::Yes) return;
    fMayReplace = true;
    accept();
  });
  question->open();
}

void PanelDialog::Say(const QString& text) {
  auto* notice = new QMessageBox(QMessageBox::Warning, windowTitle(), text, QMessageBox::Ok, this);
  notice->setAttribute(Qt::WA_DeleteOnClose);
  notice->open();
}

} // namespace display
