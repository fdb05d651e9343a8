#pragma once

#include <QColor>
#include <QIcon>
#include <QImage>

#include <memory>
#include <string>

namespace display {

/** The image drawn at that size in device pixels, a drawing's ink being `ink`; null when it cannot be read. */
QImage render_image(const std::string& bytes, const QSize& size, const QColor& ink);

/** An icon that is drawn anew for each size, screen density and palette. */
QIcon image_icon(std::shared_ptr<const std::string> bytes);

} // namespace display
