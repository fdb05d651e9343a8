#pragma once

#include <QCoreApplication>
#include <QThread>

/** Asserts in debug builds that the caller runs on the display thread. */
inline void check_display_thread() {
  Q_ASSERT(!QCoreApplication::instance() || QThread::currentThread() == QCoreApplication::instance()->thread());
}
