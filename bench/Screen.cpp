#include "Screen.h"

#include <xcb/xcb.h>

#include <cstdlib>
#include <stdexcept>

namespace {

constexpr int kWidth = 1280;
constexpr int kHeight = 800;

}   // namespace

Screen::Screen()
    : server_(QStringLiteral("Xvfb"),
              {QStringLiteral("-displayfd"), QStringLiteral("1"), QStringLiteral("-screen"), QStringLiteral("0"),
               QStringLiteral("%1x%2x24").arg(kWidth).arg(kHeight), QStringLiteral("-nolisten"), QStringLiteral("tcp")},
              QProcessEnvironment::systemEnvironment()),
      display_(QLatin1Char(':') + server_.FirstLine()),
      connection_(xcb_connect(display_.toLatin1().constData(), nullptr), xcb_disconnect) {
    if (xcb_connection_has_error(connection_.get()) != 0) {
        throw std::runtime_error("no way to the virtual screen");
    }
    root_ = xcb_setup_roots_iterator(xcb_get_setup(connection_.get())).data->root;
}

bool Screen::IsBlack() const {
    constexpr std::uint32_t kAllPlanes = 0xFFFFFF;
    const auto asked =
        xcb_get_image(connection_.get(), XCB_IMAGE_FORMAT_Z_PIXMAP, root_, kWidth / 2, kHeight / 2, 1, 1, kAllPlanes);
    const std::unique_ptr<xcb_get_image_reply_t, void (*)(void*)> image(
        xcb_get_image_reply(connection_.get(), asked, nullptr), std::free);
    if (image == nullptr) {
        throw std::runtime_error("the virtual screen has gone");
    }
    const std::uint8_t* pixel = xcb_get_image_data(image.get());
    return (pixel[0] | pixel[1] | pixel[2]) == 0;
}
