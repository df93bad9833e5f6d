#pragma once

#include <QComboBox>

/// A drop-down list that nobody changes unawares: neither the mouse wheel nor a letter or digit typed at it chooses an
/// entry while it is closed. The arrow keys do. Opened, it shows its entries at full length, and finds what is typed.
class BitsList : public QComboBox {
    Q_OBJECT

public:
    explicit BitsList(QWidget* parent);
    void showPopup() override;

protected:
    void wheelEvent(QWheelEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;
};
