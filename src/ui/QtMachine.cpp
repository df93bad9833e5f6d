#include "ui/QtMachine.h"

#include <QCoreApplication>
#include <QDesktopServices>
#include <QFileDialog>
#include <QInputDialog>
#include <QMessageBox>
#include <QUrl>

namespace {

QString Text(const std::string& text) {
    return QString::fromStdString(text);
}

/// "Caption|*.a;*.b|Caption|*" as the filters of a Qt dialog.
QStringList Filters(const std::string& filter) {
    const QStringList parts = Text(filter).split('|');
    QStringList filters;
    for (qsizetype i = 0; i + 1 < parts.size(); i += 2) {
        QString caption = parts[i];
        caption = caption.left(caption.lastIndexOf('(')).trimmed();
        // "*.*" means all files, also those without a point in their name.
        const QString patterns = parts[i + 1] == "*.*" ? QStringLiteral("*") : parts[i + 1];
        filters << QStringLiteral("%1 (%2)").arg(caption, QString(patterns).replace(';', ' '));
    }
    return filters;
}

}   // namespace

void QtDialogs::MessageBox(const std::string& text, const std::string& title, MessageIcon icon) {
    QMessageBox box(&window_);
    box.setWindowTitle(title.empty() ? window_.windowTitle() : Text(title));
    box.setTextFormat(Qt::PlainText);
    box.setText(Text(text));
    box.setIcon(icon == MessageIcon::Exclamation ? QMessageBox::Warning : QMessageBox::NoIcon);
    box.setStandardButtons(QMessageBox::Ok);
    box.exec();
}

std::optional<std::string> QtDialogs::InputBox(const std::string& prompt, const std::string& title,
                                               const std::string& defaultText) {
    QInputDialog box(&window_);
    box.setWindowTitle(Text(title));
    box.setLabelText(Text(prompt));
    box.setTextValue(Text(defaultText));
    if (box.exec() != QDialog::Accepted) {
        return std::nullopt;
    }
    return box.textValue().toStdString();
}

std::optional<std::string> QtDialogs::FileDialog(const FileRequest& request) {
    QFileDialog box(&window_, Text(request.title));
    box.setOption(QFileDialog::DontUseNativeDialog);
    box.setAcceptMode(request.save ? QFileDialog::AcceptSave : QFileDialog::AcceptOpen);
    box.setFileMode(request.save ? QFileDialog::AnyFile : QFileDialog::ExistingFile);
    if (request.save) {
        box.setDefaultSuffix(Text(request.ending));
    }
    const QStringList filters = Filters(request.filter);
    box.setNameFilters(filters);
    if (request.filterIndex >= 1 && request.filterIndex <= filters.size()) {
        box.selectNameFilter(filters[request.filterIndex - 1]);
    }
    if (box.exec() != QDialog::Accepted || box.selectedFiles().isEmpty()) {
        return std::nullopt;
    }
    return box.selectedFiles().constFirst().toStdString();
}

void QtDialogs::OpenWebPage(const std::string& address) {
    QDesktopServices::openUrl(QUrl(Text(address)));
}

void QtEventPump::DoEvents() {
    QCoreApplication::processEvents();
}

QtTimer::QtTimer(QObject& owner, const QString& name) : timer_(new QTimer(&owner)) {
    timer_->setObjectName(name);
}

void QtTimer::OnTick(std::function<void()> tick) {
    QObject::connect(timer_, &QTimer::timeout, timer_, [tick = std::move(tick)] { tick(); });
}

void QtTimer::Interval(int milliseconds) {
    timer_->setInterval(milliseconds);
}

int QtTimer::Interval() const {
    return timer_->interval();
}

void QtTimer::Enabled(bool on) {
    if (on) {
        timer_->start();
    } else {
        timer_->stop();
    }
}

bool QtTimer::Enabled() const {
    return timer_->isActive();
}
