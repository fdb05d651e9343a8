#pragma once

#include <QColor>
#include <QIcon>
#include <QImage>

#include <memory>
#include <string>

namespace display {

/** Renders the image at that size in device pixels, drawings with that ink colour; null when it cannot be read. */
QImage render_image(const std::string& bytes, const QSize& size, const QColor& ink);

/** An icon that is rendered for each size, pixel density and palette. */
QIcon image_icon(std::shared_ptr<const std::string> bytes);

} // namespace display
