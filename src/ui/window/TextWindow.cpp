#include "ui/window/TextWindow.h"

#include <QDialog>
#include <QDialogButtonBox>
#include <QFontDatabase>
#include <QLabel>
#include <QPlainTextEdit>
#include <QVBoxLayout>

void OpenTextWindow(QWidget* over, const QString& name, const QString& title, const QString& heading,
                    const QString& text) {
    delete over->findChild<QDialog*>(name);
    auto* window = new QDialog(over);
    window->setObjectName(name);
    window->setWindowTitle(title);
    window->setAttribute(Qt::WA_DeleteOnClose);

    auto* label = new QLabel(heading);
    label->setWordWrap(true);
    auto* box = new QPlainTextEdit(text);
    box->setObjectName(name + QStringLiteral("Text"));
    box->setAccessibleName(title);
    box->setReadOnly(true);
    box->setLineWrapMode(QPlainTextEdit::WidgetWidth);
    box->setTextInteractionFlags(Qt::TextSelectableByMouse | Qt::TextSelectableByKeyboard);
    auto* buttons = new QDialogButtonBox(QDialogButtonBox::Close);
    QObject::connect(buttons, &QDialogButtonBox::rejected, window, &QDialog::close);

    auto* layout = new QVBoxLayout(window);
    layout->addWidget(label);
    layout->addWidget(box);
    layout->addWidget(buttons);
    constexpr int kWidth = 720;
    constexpr int kHeight = 360;
    window->resize(kWidth, kHeight);
    window->show();
}
