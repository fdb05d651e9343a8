#include "platform/interface/display_language.h"

#include "platform/display/display_thread.h"

#include <gtest/gtest.h>

#include <QCoreApplication>

TEST(DisplayLanguage, TranslatesQtsOwnTexts) {
  const auto cancel = [] {
    return display::call([] { return QCoreApplication::translate("QPlatformTheme", "Cancel").toStdString(); });
  };
  set_display_language("ja");
  EXPECT_EQ(cancel(), "キャンセル");
  set_display_language("de");
  EXPECT_EQ(cancel(), "Abbrechen");
  set_display_language("! ERROR !");
  EXPECT_EQ(cancel(), "Cancel");
}
