#include "player/window/file_choosers.h"

#include "player/list/requests.h"
#include "player/model/player_messages.h"
#include "player/widgets/shown_text.h"
#include "player/window/choose.h"

#include <QDir>
#include <QFileDialog>

namespace {

QFileDialog* new_dialog(QWidget* parent, const QString& title) {
  auto* const dialog = new QFileDialog(parent, title, QDir::homePath());
  dialog->setAttribute(Qt::WA_DeleteOnClose);
  return dialog;
}

QFileDialog* new_dialog(QWidget* parent, const BMessenger& player, const QString& title, uint32 request) {
  QFileDialog* const dialog = new_dialog(parent, title);
  QObject::connect(dialog, &QFileDialog::filesSelected, dialog, [player, request](const QStringList& files) {
    std::vector<std::string> paths;
    for (const QString& file : files) paths.push_back(file.toStdString());
    ask_about_paths(player, request, paths);
  });
  return dialog;
}

} // namespace

void choose_songs(QWidget* parent, const BMessenger& player) {
  QFileDialog* const dialog = new_dialog(parent, player, shown_text("Player_Open_Title"), kMsgAddSongs);
  dialog->setFileMode(QFileDialog::ExistingFiles);
  dialog->open();
}

void choose_folder(QWidget* parent, const BMessenger& player) {
  QFileDialog* const dialog = new_dialog(parent, player, shown_text("Player_Open_Folder_Title"), kMsgAddSongs);
  dialog->setFileMode(QFileDialog::Directory);
  dialog->open();
}

void choose_watched_folder(QWidget* parent, const BMessenger& player, const TWatchedFolders& folders) {
  QFileDialog* const dialog = new_dialog(parent, shown_text("Player_Watch_Title"));
  dialog->setFileMode(QFileDialog::Directory);
  QObject::connect(dialog, &QFileDialog::fileSelected, dialog, [player, folders](const QString& folder) {
    choose_folders(player, with_folder(folders, folder.toStdString()));
  });
  dialog->open();
}

void choose_list_file(QWidget* parent, const BMessenger& player) {
  QFileDialog* const dialog = new_dialog(parent, player, shown_text("Player_Save_List_Title"), kMsgSaveList);
  dialog->setAcceptMode(QFileDialog::AcceptSave);
  dialog->setNameFilter(shown_text("Player_List_Files"));
  dialog->setDefaultSuffix(QStringLiteral("m3u8"));
  dialog->open();
}
