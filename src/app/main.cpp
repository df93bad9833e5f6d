#include <QApplication>
#include <QStandardPaths>
#include <QTimer>
#include <filesystem>

#include "automation/Automation.h"
#include "core/Part.h"
#include "core/cPart.h"
#include "ports/PortDrivers.h"
#include "settings/ProgramFolder.h"
#include "settings/SettingsFile.h"
#include "ui/window/ProgramIcon.h"
#include "ui/window/WindowPlace.h"
#include "ui/window/frmPart.h"

cPart& Part() {
    static cPart part;
    return part;
}

int main(int argc, char* argv[]) {
    QApplication app(argc, argv);
    QApplication::setApplicationName(QStringLiteral("tarnwick"));
    QApplication::setApplicationDisplayName(QString());
    QApplication::setApplicationVersion(QStringLiteral(TARNWICK_VERSION));
    QApplication::setDesktopFileName(QStringLiteral("com.ostrel.Tarnwick2x"));
    // Drawing the icon in all its sizes takes a while; the window is seen first.
    constexpr int kIconDelay = 100;
    QTimer::singleShot(kIconDelay, [] { QApplication::setWindowIcon(ProgramIcon()); });

    const ProgramFolder folder = OpenProgramFolder(
        {QApplication::applicationDirPath().toStdString(),
         QStandardPaths::writableLocation(QStandardPaths::GenericDataLocation).toStdString(), TARNWICK_PARTS_DIR});
    const MadePort made = MakePort(SettingsFile(folder.appPath).ReadPort(), folder.appPath);
    made.port->OpenTVicPort();

    int result = 0;
    {
        frmPart window(Part(), *made.port, folder.appPath);
        window.Form_Load();
        // One note: the next would hide the one before.
        const std::string both = folder.message.empty() || made.message.empty() ? "" : "; ";
        if (const std::string message = folder.message + both + made.message; !message.empty()) {
            window.Note(QString::fromStdString(message));
        }
        const WindowPlace place(window, QStandardPaths::writableLocation(QStandardPaths::GenericConfigLocation) +
                                            QStringLiteral("/tarnwick/window.ini"));
        window.show();
        Automation automation(Part(), window);
        QObject::connect(&app, &QApplication::lastWindowClosed, &automation, &Automation::Stop);
        automation.Start();
        result = QApplication::exec();
    }
    made.port->CloseTVicPort();
    return result;
}
