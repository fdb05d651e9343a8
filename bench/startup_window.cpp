// The least a Qt program with a window can be: what the editor's start is measured against.
#include <QApplication>
#include <QWidget>

int main(int argCount, char** args) {
  QApplication application(argCount, args);
  QWidget window;
  window.setWindowTitle("An empty window");
  window.resize(400, 300);
  window.show();
  return QApplication::exec();
}
