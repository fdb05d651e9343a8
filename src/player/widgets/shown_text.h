#pragma once

#include "player/texts/player_texts.h"

#include <QKeySequence>
#include <QString>

/** A text of the player in the user's language. */
inline QString shown_text(const char* key) {
  return QString::fromUtf8(player_text(key));
}

inline QString shown_key(const QKeySequence& key) {
  return key.toString(QKeySequence::NativeText);
}

/** For menus: the text, and the key that does the same. The key is only a label; a shortcut makes it work. */
inline QString menu_text(const char* name, const QKeySequence& key) {
  return shown_text(name) + '\t' + shown_key(key);
}

/** For tooltips. */
inline QString tip_text(const char* name, const QKeySequence& key) {
  return QStringLiteral("%1 (%2)").arg(shown_text(name).remove('&'), shown_key(key));
}
