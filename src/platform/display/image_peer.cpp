#include "platform/interface/image_peer.h"

#include "platform/display/image_icon.h"

#include <QPainter>
#include <QWidget>

namespace display {

namespace {

class ImageWidget : public QWidget {
public:
  explicit ImageWidget(std::shared_ptr<const std::string> image) {
    if (image) fIcon = image_icon(std::move(image));
  }

protected:
  void paintEvent(QPaintEvent*) override {
    QPainter painter(this);
    fIcon.paint(&painter, rect());
  }

private:
  QIcon fIcon;
};

} // namespace

std::shared_ptr<ViewPeer> make_image_peer(const BMessenger& view, std::shared_ptr<const std::string> image) {
  return std::make_shared<ViewPeer>(view, Keys::to_control,
                                    [image = std::move(image)]() -> QWidget* { return new ImageWidget(image); });
}

} // namespace display
