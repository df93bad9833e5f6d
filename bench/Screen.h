#pragma once

#include <memory>

#include "Child.h"

struct xcb_connection_t;

/// A virtual screen, black where no window is, and a look at its middle.
class Screen {
public:
    /// std::runtime_error if there is no Xvfb.
    Screen();

    [[nodiscard]] const QString& Display() const noexcept { return display_; }

    /// Whether no window covers the middle, or none that has been painted.
    [[nodiscard]] bool IsBlack() const;

private:
    Child server_;
    QString display_;
    std::unique_ptr<xcb_connection_t, void (*)(xcb_connection_t*)> connection_;
    unsigned root_;
};
