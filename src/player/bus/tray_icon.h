#pragma once

#include <QVariant>

/** The icon for trays that do not find it by its name, as that of a program that is not installed: a(iiay), the width,
    height and pixels (ARGB32 in network byte order) of a few sizes. Rendered at the first call. Any thread. */
const QVariant& tray_icon();
