#include "player/write_file.h"

#include <QSaveFile>

bool write_file(const std::string& path, const std::string& bytes) {
  QSaveFile file(QString::fromStdString(path));
  if (!file.open(QIODevice::WriteOnly)) return false;
  file.write(bytes.data(), static_cast<qint64>(bytes.size()));
  return file.commit();
}
