#pragma once

#include <QApplication>
#include <memory>

#include "LargeDevice.h"
#include "core/cPart.h"
#include "ports/SimulatedPort.h"
#include "support/TempFolder.h"
#include "ui/window/frmPart.h"

/// The real window with an invented device.
struct LargeWindow {
    TempFolder folder;
    SimulatedPort port;
    cPart part;
    std::unique_ptr<frmPart> window;

    LargeWindow(int registers, int fields, int shown, int plls) {
        folder.File("LARGE.ini", LargeDevice(registers, fields, shown, plls));
        window = std::make_unique<frmPart>(part, port, folder.Path(""));
        window->Form_Load();
        window->SaveSettings(false);
        window->show();
        Select();
        QApplication::processEvents();
    }

    void Select() {
        std::string name = "LARGE";
        window->SetupPartForm(name, "Fractional");
    }

    /// Turns every bit of every register, so that every text on the screen changes.
    void TurnBits(bool on) {
        for (cRegister& each : part.Registers()) {
            each.Value(on ? 0x5A5A5A5A : 0x25A5A5A5);
        }
    }

    void Refresh(bool on) {
        TurnBits(on);
        part.UpdateDisplays();
    }
};
