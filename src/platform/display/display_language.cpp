#include "platform/interface/display_language.h"

#include "platform/display/display_thread.h"

#include <QCoreApplication>
#include <QLibraryInfo>
#include <QTranslator>

namespace {
constexpr QLatin1String kName("display language");
} // namespace

void set_display_language(const char* code) {
  display::post([language = QString::fromUtf8(code)] {
    QCoreApplication* program = QCoreApplication::instance();
    delete program->findChild<QTranslator*>(kName); // also uninstalls it
    auto* texts = new QTranslator(program);
    texts->setObjectName(kName);
    if (texts->load(QStringLiteral("qtbase_") + language, QLibraryInfo::path(QLibraryInfo::TranslationsPath)))
      QCoreApplication::installTranslator(texts);
  });
}
