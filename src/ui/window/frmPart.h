#pragma once

#include <QElapsedTimer>
#include <QMainWindow>
#include <QPointer>
#include <QSet>
#include <QTabWidget>
#include <optional>
#include <string>
#include <vector>

#include "core/DeviceDisplay.h"
#include "machine/ProgramWindow.h"
#include "settings/SettingsFile.h"
#include "ui/window/MainMenu.h"
#include "ui/window/PageHost.h"
#include "ui/window/QtMachine.h"
#include "ui/window/StatusStrip.h"

class BitsPage;
class BurstPage;
class PLLPage;
class PortPage;
class RegistersPage;
class frmAboutBox;

/// The program's one window. It shows the device object's state, answers the user, and keeps the device menus, the
/// recent list and the check marks of the options.
class frmPart : public QMainWindow, public DeviceDisplay, public PageHost, public ProgramWindow {
    Q_OBJECT

public:
    /// `appPath` is the program's folder, with a separator at its end. Device and port must outlive the window.
    frmPart(cPart& part, Port& port, const std::string& appPath);
    ~frmPart() override;

    /// The start: the device's first lengths, the device menus and the recent list from the settings file.
    void Form_Load();

    // The part file's version, as the about box shows it.
    std::string txtINIVersion;
    std::string txtINIVerDescr;
    /// True while another program holds the window: it can't be closed then.
    bool bOLEServer = false;
    std::int16_t SelectedBurstLine = 0;   ///< The burst list's line that was clicked last, counted from 1.

    /// Selects a device. `partName` becomes the path of its part file. `partType` counts by being there.
    void SetupPartForm(std::string& partName, const std::optional<std::string>& partType = {});
    [[nodiscard]] std::string GetPartType(const std::string& partName) const;

    [[nodiscard]] const std::string& AppPath() const noexcept { return appPath_; }
    [[nodiscard]] QTabWidget& Pages() const { return *tabPart_; }
    [[nodiscard]] MainMenu& Menu() { return menu_; }
    [[nodiscard]] StatusStrip& Status() const { return *status_; }

    // PageHost
    [[nodiscard]] cPart& Device() override { return part_; }
    [[nodiscard]] Dialogs& Asking() override { return dialogs_; }
    [[nodiscard]] bool AutoReloadChange() const override;
    [[nodiscard]] PrescalerMode PrescalerCheck() const override;
    void Note(const QString& text) override;
    void NoteState(const QString& text, bool untilLoad) override;
    [[nodiscard]] bool StateIsNoted() override;
    void SelectPage(int index) override;

    // ProgramWindow
    void ShowWindow() override { show(); }
    void RestoreWindow() override;
    void MaximizeWindow() override { showMaximized(); }
    void MinimizeWindow() override { showMinimized(); }
    void UnloadWindow() override;
    void HeldByClient(bool held) override { bOLEServer = held; }
    void SelectDevice(std::string& name) override { SetupPartForm(name); }
    void SelectTab(const std::string& caption) override;
    void SetDeviceMode(int index) override { mnuMode_Click(index); }
    void AutoReloadChange(bool on) override;
    [[nodiscard]] bool SaveSettings() const override;
    void SaveSettings(bool on) override;
    [[nodiscard]] const std::string& ProgramPath() const override { return appPath_; }
    void Tell(const std::string& text) override { Note(Qt8(text)); }
    void TellAutomation(const std::string& text) override { status_->ShowAutomation(Qt8(text)); }
    void Unattended(bool unattended) override { dialogs_.Unattended(unattended); }

    // DeviceDisplay
    void ShowPLLs() override;
    void ShowBits() override;
    void ShowRegisters() override;
    void ShowPort() override;
    void ShowBurst(bool vectors) override;
    void ClearForm() override;
    void RemovePLLPages() override;
    void RebuildRulers() override;
    void AddRegisterRow(const cRegister& added) override;
    void AddPinBox(const cPrgmPin& added) override;
    void AddCheckBox(const cPrgmBits& added, std::string_view group) override;
    void AddCounterBox(const cPrgmBits& added, std::string_view group) override;
    void AddListBox(const cPrgmBits& field, std::string_view group) override;
    void AddPLLPage(int index, const std::string& name) override;
    void AddFreePLLPage(const std::string& name) override;
    void BindPLLBlocks(int index, const PLLBlocks& blocks) override;
    void BindFraction(int index, const std::string& numerator, const std::string& denominator) override;
    void ShowBurstRunning(bool running) override;
    void ShowBurstProgress(std::uint64_t passes, std::uint64_t writes) override;
    [[nodiscard]] bool BurstLoops() const override;
    void ShowDeviceName(const std::string& name) override;
    void ShowVersion(const std::string& version, const std::string& description) override;
    void ShowSBIButtons() override;
    void ShowBurstControls() override;
    void AddMode(int index, const std::string& caption) override;

protected:
    void closeEvent(QCloseEvent* event) override;
    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    void BuildPages();
    void EnterPage(QWidget& page);
    void Turn(int page);
    void Freshen();
    void WireMenu();
    void WireStepCommands();
    void OnMenu(const char* item, void (frmPart::*answer)());
    void BuildDeviceMenus();
    void PickDevice(std::size_t group, const std::string& device);
    void mnuRecent_Click(const std::string& device);
    void mnuMode_Click(int index);
    void mnuAddMode_Click();
    void AddNewMode(const std::string& name);
    void mnuSave_Click();
    void mnuRestore_Click();
    void mnuAutoReload_Click();
    void mnuAutoReloadChange_Click();
    void mnuPreCheck_Click(const char* chosen);
    void mnuDocuments_Click();
    void mnuOstrelWireless_Click();
    void mnuAbout_Click();
    void tmrAutoReload_Timer();
    void ChoosePrescalerCheck(const char* chosen);
    void UpdateRecentParts(const std::string& device);
    struct DevicePages {
        RegistersPage* registers;
        BitsPage* bits;
        BurstPage* burst;
    };
    DevicePages& ForDevice();
    [[nodiscard]] std::string SaveDevice();
    [[nodiscard]] bool AsksBeforeClosing();
    [[nodiscard]] std::vector<std::string> ReferenceTexts() const;
    [[nodiscard]] PLLPage* CurrentPLLPage() const;
    void WhenIdle();
    void ShowProblems();
    void NoteProgress();
    [[nodiscard]] std::vector<double> NotedState(bool untilLoad);
    void NamePLLPage(int page, const std::string& name);   ///< And makes it current.

    cPart& part_;
    Port& port_;
    std::string appPath_;
    SettingsFile settings_;
    QtDialogs dialogs_;
    bool unloading_ = false;   ///< The window closes without asking the user.
    QtEventPump pump_{dialogs_};
    QtTimer tmrAutoReload_;
    MainMenu menu_;
    StatusStrip* status_;
    QTabWidget* tabPart_;
    bool turning_ = false;   ///< The program itself turns the pages.
    QPointer<QWidget> shownPage_;
    QSet<const QWidget*> workedPages_;   ///< Where a control of the device had the focus.
    PortPage* portPage_ = nullptr;
    std::optional<DevicePages> devicePages_;   ///< Reached by ForDevice().
    struct BurstProgress {
        std::uint64_t passes = 0;
        std::uint64_t writes = 0;
    };
    BurstProgress burstProgress_;
    QElapsedTimer sinceProgress_;
    struct StateNote {
        std::vector<double> state;
        bool untilLoad;
    };
    std::optional<StateNote> stateNote_;   ///< What the status bar's line is true of, if it is about the device.
    QPointer<frmAboutBox> aboutBox_;       ///< The one that is open, if any.
    std::vector<PLLPage*> pllPages_;       ///< By PLL index; the first stands from the first device on.
    std::vector<PLLPage*> freePages_;      ///< Behind them; they belong to no PLL.
};
