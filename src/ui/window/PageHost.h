#pragma once

#include <exception>

#include "core/cPart.h"
#include "machine/Dialogs.h"
#include "pll/PrescalerCheck.h"
#include "ui/controls/Texts.h"

/// What a page may ask of the window in which it stands.
class PageHost {
public:
    PageHost() = default;
    PageHost(const PageHost&) = delete;
    PageHost& operator=(const PageHost&) = delete;
    virtual ~PageHost() = default;

    [[nodiscard]] virtual cPart& Device() = 0;
    [[nodiscard]] virtual Dialogs& Asking() = 0;
    /// Whether changes go to the device by themselves (the check mark of mnuAutoReloadChange).
    [[nodiscard]] virtual bool AutoReloadChange() const = 0;
    [[nodiscard]] virtual PrescalerMode PrescalerCheck() const = 0;

    /// A line in the status bar; it stays until the next one. Empty clears it.
    virtual void Note(const QString& text) = 0;
    /// A line that is true of the device as it stands: it goes when the device changes, and where `untilLoad` says so,
    /// when anything is sent.
    virtual void NoteState(const QString& text, bool untilLoad) = 0;
    /// Whether such a line stands.
    [[nodiscard]] virtual bool StateIsNoted() = 0;
    /// Makes a page current. A box that the user is in is not thereby left by the user.
    virtual void SelectPage(int index) = 0;

    /// Runs the answer to an event of a control: what fails in it ends here and shows in the status bar.
    template <class Answer>
    void Event(Answer&& answer) {
        try {
            answer();
        } catch (const std::exception& error) {
            Note(Qt8(error.what()));
        }
    }
};
