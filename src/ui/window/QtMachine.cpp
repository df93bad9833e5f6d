#include "ui/window/QtMachine.h"

#include <QCoreApplication>
#include <QDesktopServices>
#include <QFileDialog>
#include <QInputDialog>
#include <QMessageBox>
#include <QUrl>

#include "ui/controls/Texts.h"
#include "ui/window/PageHost.h"

namespace {

/// "Caption|*.a;*.b|Caption|*" as the filters of a Qt dialog.
QStringList Filters(const std::string& filter) {
    const QStringList parts = Qt8(filter).split('|');
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
    if (!Attended()) {
        host_.Note(Qt8(text));
        return;
    }
    auto* box = new QMessageBox(&window_);
    box->setAttribute(Qt::WA_DeleteOnClose);
    box->setWindowTitle(title.empty() ? window_.windowTitle() : Qt8(title));
    box->setTextFormat(Qt::PlainText);
    box->setText(Qt8(text));
    box->setIcon(icon == MessageIcon::Exclamation ? QMessageBox::Warning : QMessageBox::NoIcon);
    box->setStandardButtons(QMessageBox::Ok);
    QObject::connect(box, &QDialog::finished, &window_, [this] {
        messages_.pop_front();
        NextMessage();
    });
    messages_.push_back(box);
    if (messages_.size() == 1) {
        NextMessage();
    }
}

void QtDialogs::NextMessage() {
    if (!messages_.empty()) {
        messages_.front()->open();
    }
}

/// Opens a box and returns. The answer counts for the device that the user was asked about.
void QtDialogs::Ask(QDialog* box, int agreed, std::function<void()> answered) {
    QObject::connect(
        box, &QDialog::finished, &window_,
        [this, agreed, device = host_.Device().DeviceNumber(), answered = std::move(answered)](int result) {
            if (result != agreed) {
                return;
            }
            if (device == host_.Device().DeviceNumber()) {
                host_.Event(answered);
            } else {
                host_.Note(QObject::tr("Another device was selected meanwhile: nothing was done"));
            }
        },
        Qt::SingleShotConnection);
    box->open();
}

void QtDialogs::InputBox(const std::string& prompt, const std::string& title, const std::string& defaultText,
                         Answered entered) {
    if (!Attended()) {
        return;
    }
    auto* box = new QInputDialog(&window_);
    box->setAttribute(Qt::WA_DeleteOnClose);
    box->setWindowTitle(Qt8(title));
    box->setLabelText(Qt8(prompt));
    box->setTextValue(Qt8(defaultText));
    Ask(box, QDialog::Accepted, [box, entered = std::move(entered)] { entered(box->textValue().toStdString()); });
}

void QtDialogs::FileDialog(const FileRequest& request, Answered chosen) {
    if (!Attended() || (files_ != nullptr && files_->isVisible())) {
        return;
    }
    if (files_ == nullptr) {
        files_ = new QFileDialog(&window_);
        files_->setObjectName(QStringLiteral("objComDialog"));
        files_->setOption(QFileDialog::DontUseNativeDialog);
    }
    QFileDialog* box = files_;
    box->setWindowTitle(Qt8(request.title));
    box->setAcceptMode(request.save ? QFileDialog::AcceptSave : QFileDialog::AcceptOpen);
    box->setFileMode(request.save ? QFileDialog::AnyFile : QFileDialog::ExistingFile);
    box->setDefaultSuffix(request.save ? Qt8(request.ending) : QString());
    const QStringList filters = Filters(request.filter);
    box->setNameFilters(filters);
    if (request.filterIndex >= 1 && request.filterIndex <= filters.size()) {
        box->selectNameFilter(filters[request.filterIndex - 1]);
    }
    Ask(box, QDialog::Accepted, [box, chosen = std::move(chosen)] {
        if (const QStringList files = box->selectedFiles(); !files.isEmpty()) {
            chosen(files.constFirst().toStdString());
        }
    });
}

void QtDialogs::AskToClose(const std::string& error, std::function<void()> close) {
    auto* box = new QMessageBox(QMessageBox::Warning, window_.windowTitle(),
                                QObject::tr("%1\n\nClose all the same?").arg(Qt8(error)),
                                QMessageBox::Close | QMessageBox::Cancel, &window_);
    box->setAttribute(Qt::WA_DeleteOnClose);
    box->setDefaultButton(QMessageBox::Cancel);
    Ask(box, QMessageBox::Close, std::move(close));
}

void QtDialogs::CloseAll() {
    const auto open = window_.findChildren<QDialog*>();
    for (QDialog* dialog : open) {
        dialog->isModal() ? dialog->done(QDialog::Rejected) : dialog->hide();
    }
}

void QtDialogs::OpenWebPage(const std::string& address) {
    QDesktopServices::openUrl(QUrl(Qt8(address)));
}

void QtEventPump::DoEvents() {
    const int calls = dialogs_.Calls(0);
    QCoreApplication::processEvents();
    dialogs_.Calls(calls);
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
