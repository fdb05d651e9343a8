// The least a Qt program with a window can be, and with a file named the least that shows its text: what the editor's
// start and memory are measured against.
#include <QApplication>
#include <QFile>
#include <QPlainTextEdit>

#include <memory>

namespace {

std::unique_ptr<QWidget> text_window(const QString& path) {
  QFile file(path);
  if (!file.open(QFile::ReadOnly)) qFatal("cannot read %s", qPrintable(path));
  return std::make_unique<QPlainTextEdit>(QString::fromUtf8(file.readAll()));
}

} // namespace

int main(int argCount, char** args) {
  QApplication application(argCount, args);
  const QStringList arguments = QApplication::arguments();
  const auto window = arguments.size() > 1 ? text_window(arguments[1]) : std::make_unique<QWidget>();
  window->setWindowTitle("An empty window");
  window->resize(400, 300);
  window->show();
  return QApplication::exec();
}
