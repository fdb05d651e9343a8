#include "player/widgets/dropped_files.h"

#include <QMimeData>
#include <QUrl>

std::vector<std::string> dropped_files(const QDropEvent& event) {
  std::vector<std::string> paths;
  for (const QUrl& url : event.mimeData()->urls()) paths.push_back(url.toEncoded().toStdString());
  return paths;
}
