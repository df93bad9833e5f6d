#pragma once

#include <string>

/// The program's window as another program uses it.
class ProgramWindow {
public:
    ProgramWindow() = default;
    ProgramWindow(const ProgramWindow&) = delete;
    ProgramWindow& operator=(const ProgramWindow&) = delete;
    virtual ~ProgramWindow() = default;

    virtual void ShowWindow() = 0;      ///< As large or small as it is, minimised too.
    virtual void RestoreWindow() = 0;   ///< Shows it in front; a minimised one becomes what it was before.
    virtual void MaximizeWindow() = 0;
    virtual void MinimizeWindow() = 0;

    /// Asks the window to close, by the rules that hold for the user too.
    virtual void UnloadWindow() = 0;

    /// While a client holds the window the user can't close it.
    virtual void HeldByClient(bool held) = 0;

    /// Selects a device; `name` becomes the path of its part file.
    virtual void SelectDevice(std::string& name) = 0;

    /// Makes the page with that caption current: the last of several, the first page of all for an unknown one.
    virtual void SelectTab(const std::string& caption) = 0;

    /// Gives the device the state of a mode, counted from 0.
    virtual void SetDeviceMode(int index) = 0;

    // The check marks of two options.
    [[nodiscard]] virtual bool AutoReloadChange() const = 0;
    virtual void AutoReloadChange(bool on) = 0;
    [[nodiscard]] virtual bool SaveSettings() const = 0;
    virtual void SaveSettings(bool on) = 0;

    /// The folder of the part files, with a separator at its end.
    [[nodiscard]] virtual const std::string& ProgramPath() const = 0;

    /// A line in the status bar.
    virtual void Tell(const std::string& text) = 0;
    /// How the automation stands, at the right of the status bar.
    virtual void TellAutomation(const std::string& text) = 0;

    /// While calls of a client run nothing waits for a click: a message goes to the status bar instead.
    virtual void Unattended(bool unattended) = 0;
};
