#pragma once

#include <QComboBox>

/// A drop-down list that the mouse wheel leaves alone: whoever scrolls past it must not switch the device by that.
/// Opened, it shows its entries at full length.
class BitsList : public QComboBox {
    Q_OBJECT

public:
    explicit BitsList(QWidget* parent);
    void showPopup() override;

protected:
    void wheelEvent(QWheelEvent* event) override;
};
