#include "ui/window/frmPart.h"

#include <QAbstractEventDispatcher>
#include <QApplication>
#include <QCloseEvent>
#include <QKeyEvent>
#include <QScopedValueRollback>
#include <QScreen>
#include <QTabBar>
#include <QTimer>
#include <QVBoxLayout>

#include "pll/DeviceState.h"
#include "settings/DeviceSetup.h"
#include "ui/bits/BitsPage.h"
#include "ui/burst/BurstPage.h"
#include "ui/pll/PLLPage.h"
#include "ui/port/PortPage.h"
#include "ui/registers/RegistersPage.h"

// The window's skeleton and its life. What it shows for the device is in frmPartDisplay.cpp, what its menu items do
// in frmPartMenu.cpp.

namespace {

constexpr QSize kSmallest(641, 427);
constexpr QSize kFirstSize(1224, 740);   // Every page of most devices fits without scrolling.
constexpr QSize kFrame(16, 48);          // What a desktop puts round the window.

}   // namespace

frmPart::frmPart(cPart& part, Port& port, const std::string& appPath)
    : part_(part),
      port_(port),
      appPath_(appPath),
      settings_(appPath),
      dialogs_(*this, *this),
      tmrAutoReload_(*this, QStringLiteral("tmrAutoReload")),
      menu_(*menuBar()),
      status_(new StatusStrip(this)),
      tabPart_(new QTabWidget(this)) {
    setObjectName(QStringLiteral("frmPart"));
    setWindowTitle(QStringLiteral("QRV"));
    setStatusBar(status_);
    setMinimumSize(kSmallest);
    resize(kFirstSize.boundedTo(screen()->availableSize() - kFrame));
    BuildPages();
    WireMenu();
    constexpr int kReloadPeriod = 10000;
    tmrAutoReload_.Interval(kReloadPeriod);
    tmrAutoReload_.OnTick([this] { tmrAutoReload_Timer(); });
    part_.UseDisplay(*this);
    part_.UseEventPump(pump_);
    part_.UsePort(port_);
    qApp->installEventFilter(this);
    connect(QAbstractEventDispatcher::instance(), &QAbstractEventDispatcher::aboutToBlock, this, &frmPart::WhenIdle);
    // A port can go and come while nobody touches the program.
    constexpr int kPulse = 1000;
    auto* pulse = new QTimer(this);
    pulse->setObjectName(QStringLiteral("tmrPortPulse"));
    connect(pulse, &QTimer::timeout, this, &frmPart::WhenIdle);
    pulse->start(kPulse);
}

frmPart::~frmPart() {
    static DeviceDisplay noDisplay;
    part_.UseDisplay(noDisplay);
}

void frmPart::BuildPages() {
    tabPart_->setObjectName(QStringLiteral("tabPart"));
    tabPart_->setAccessibleName(tr("Pages"));
    // A click on a page's tab is a move of the user's own: a box that was being edited is left by it.
    tabPart_->tabBar()->setFocusPolicy(Qt::StrongFocus);
    setCentralWidget(tabPart_);
    portPage_ = new PortPage(*this, tmrAutoReload_);
    tabPart_->addTab(portPage_, QStringLiteral("Port Setup"));
    shownPage_ = portPage_;
    for (const char* caption : {"Registers", " Bits/Pins", "BurstMode", "RF PLL"}) {
        auto* place = new QWidget;
        (new QVBoxLayout(place))->setContentsMargins({});
        tabPart_->addTab(place, QString::fromLatin1(caption));
    }
    connect(tabPart_, &QTabWidget::currentChanged, this, [this](int page) {
        constexpr int kRegistersPage = 1;
        if (page >= kRegistersPage) {
            ForDevice();
        }
        if (page == kRegistersPage) {
            devicePages_->registers->Entered();
        }
        EnterPage(*tabPart_->widget(page));
        if (!turning_) {
            Freshen();
        }
    });
}

/// Not every answer to the user, and few calls of other programs, refresh all pages: what one of them left as it was is
/// made good when the user comes to see it.
void frmPart::Freshen() {
    Event([this] {
        const int page = tabPart_->currentIndex();
        if (page == 0) {
            portPage_->Freshen();
        } else if (page == 1) {
            part_.UpdateRegisterDisplay();
        } else if (page == 2) {
            devicePages_->bits->Freshen();
        } else if (page == 3) {
            devicePages_->burst->Freshen();
        } else if (PLLPage* shown = CurrentPLLPage()) {
            shown->Freshen();
        }
    });
}

/// A page that takes over the focus gives it back to the control that had it there. One where none had it begins with
/// its first: QTabWidget takes the next that was made after the control on the page before.
void frmPart::EnterPage(QWidget& page) {
    if (shownPage_ != nullptr && shownPage_->focusWidget() != nullptr) {
        workedPages_.insert(shownPage_);
    }
    shownPage_ = &page;
    const QWidget* focused = QApplication::focusWidget();
    if (focused == nullptr || !page.isAncestorOf(focused) || workedPages_.contains(&page)) {
        return;
    }
    for (QWidget* next = tabPart_->tabBar()->nextInFocusChain(); next != focused; next = next->nextInFocusChain()) {
        if (page.isAncestorOf(next) && next->isVisible() && next->isEnabled() && next->focusProxy() == nullptr &&
            (next->focusPolicy() & Qt::TabFocus) != 0) {
            next->setFocus(Qt::OtherFocusReason);
            return;
        }
    }
}

/// Before the first device nobody looks at its pages, so they are built then, or when one of them is chosen. The window
/// opens the sooner.
frmPart::DevicePages& frmPart::ForDevice() {
    if (!devicePages_) {
        devicePages_ = {new RegistersPage(*this), new BitsPage(*this), new BurstPage(*this, SelectedBurstLine)};
        pllPages_.push_back(new PLLPage(*this, 0));
        int place = 0;
        for (QWidget* page : std::initializer_list<QWidget*>{devicePages_->registers, devicePages_->bits,
                                                             devicePages_->burst, pllPages_.front()}) {
            QLayout* layout = tabPart_->widget(++place)->layout();
            layout->addWidget(page);
            page->show();
            layout->activate();
        }
    }
    return *devicePages_;
}

void frmPart::Form_Load() {
    constexpr int kFirstRegisterLength = 20;
    constexpr int kFirstControlLength = 2;
    part_.RegisterLength(kFirstRegisterLength);
    part_.ControlLength(kFirstControlLength);
    BuildDeviceMenus();
    const std::string error = settings_.ReadError();
    Note(error.empty() ? tr("Choose a device in the menu Select Device") : Qt8(error));
    status_->ShowPort(port_.Status());
}

void frmPart::SetupPartForm(std::string& partName, const std::optional<std::string>& partType) {
    Note({});
    ::SetupPartForm(part_, appPath_, partName, partType.has_value());
    ShowProblems();
}

std::string frmPart::GetPartType(const std::string& partName) const {
    return settings_.GetPartType(partName);
}

void frmPart::ShowProblems() {
    status_->ShowProblems(part_.FileProblems(), Qt8(part_.ID()));
}

/// Nothing is left to do: what the port held back goes out, and its state is looked at.
void frmPart::WhenIdle() {
    port_.Idle();
    status_->ShowPort(port_.Status());
    if (stateNote_ && !StateIsNoted()) {
        Note({});
    }
}

void frmPart::Note(const QString& text) {
    stateNote_.reset();
    status_->Note(text);
}

void frmPart::NoteState(const QString& text, bool untilLoad) {
    Note(text);
    stateNote_ = {NotedState(untilLoad), untilLoad};
}

bool frmPart::StateIsNoted() {
    return stateNote_ && stateNote_->state == NotedState(stateNote_->untilLoad);
}

std::vector<double> frmPart::NotedState(bool untilLoad) {
    std::vector<double> state = DeviceState(part_);
    state.push_back(untilLoad ? static_cast<double>(part_.ShiftCount()) : 0);
    return state;
}

void frmPart::SelectPage(int index) {
    Turn(index);
    Freshen();
}

/// While a device comes or goes there is nothing to refresh: the pages are on the way.
void frmPart::Turn(int index) {
    const QScopedValueRollback<bool> turning(turning_, true);
    // A box on the page that goes is not left by the user: the focus goes first, without a reason of his.
    if (index != tabPart_->currentIndex()) {
        if (QWidget* focused = QApplication::focusWidget(); focused != nullptr && isAncestorOf(focused)) {
            tabPart_->setFocus(Qt::OtherFocusReason);
        }
    }
    tabPart_->setCurrentIndex(index);
}

void frmPart::closeEvent(QCloseEvent* event) {
    event->ignore();
    if (bOLEServer) {
        return;
    }
    if (part_.BurstRunning()) {
        part_.StopBurstCommands();
        return;
    }
    if (AsksBeforeClosing()) {
        return;
    }
    dialogs_.CloseAll();
    part_.ClearPLL();
    event->accept();
}

/// What couldn't be saved is gone with the window, so the user is asked. A client that has ended can't be.
bool frmPart::AsksBeforeClosing() {
    const std::string error = unloading_ || part_.ID().empty() ? std::string() : SaveDevice();
    if (!error.empty()) {
        dialogs_.AskToClose(error, [this] { UnloadWindow(); });
    }
    return !error.empty();
}

void frmPart::UnloadWindow() {
    unloading_ = true;
    close();
    unloading_ = false;
}

/// The menu's short-cuts work wherever the focus is: a text box that would take Ctrl+C for itself isn't asked.
bool frmPart::eventFilter(QObject* watched, QEvent* event) {
    if (event->type() == QEvent::ShortcutOverride && watched->isWidgetType() &&
        static_cast<QWidget*>(watched)->window() == this) {
        const QKeySequence keys(static_cast<QKeyEvent*>(event)->keyCombination());
        const auto actions = menuBar()->findChildren<QAction*>();
        for (const QAction* action : actions) {
            if (!action->shortcut().isEmpty() && action->shortcut() == keys) {
                event->ignore();
                return true;
            }
        }
    }
    return QMainWindow::eventFilter(watched, event);
}
