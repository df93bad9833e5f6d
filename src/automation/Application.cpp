#include "automation/Application.h"

#include <utility>

#include "automation/Paths.h"
#include "burst/SetupFile.h"
#include "core/Errors.h"
#include "core/Numbers.h"
#include "core/cPart.h"
#include "platform/ProgramWindow.h"
#include "pll/cPLL.h"

namespace {

/// What the calls return that have nothing to tell, but must return something.
QDBusVariant Nothing() {
    return QDBusVariant(QString());
}

/// What is read of a field, as a 32-bit number.
int Whole(const QString& field, double v) {
    try {
        return RoundToLong(v);
    } catch (const ConversionError& error) {
        throw ConversionError("bit field '" + field.toStdString() + "': " + error.what());
    }
}

}   // namespace

Application::Application(cPart& part, ProgramWindow& window, std::function<void()> release)
    : part_(part), window_(window), release_(std::move(release)) {}

cPLL& Application::PLL(const QString& name) const {
    return part_.PLLs().At(name.toStdString());
}

cPrgmBits& Application::Field(const QString& name) const {
    return part_.PrgmBits().At(name.toStdString());
}

cPrgmPin& Application::Pin(const QString& name) const {
    return part_.PrgmPins().At(name.toStdString());
}

void Application::ShowAndLoad() {
    part_.UpdateDisplays();
    part_.LoadChanges();
}

QString Application::GetPDFrequency(const QString& sPLL) const {
    return QString::fromStdString(GeneralText(PLL(sPLL).PDFrequency()));
}

int Application::GetPrgmBits(const QString& sPrgmBits) const {
    return Whole(sPrgmBits, Field(sPrgmBits).BitValue());
}

int Application::GetPrgmBitValue(const QString& sPrgmBits) const {
    return Whole(sPrgmBits, Field(sPrgmBits).Value());
}

bool Application::GetPrgmPins(const QString& sPrgmPins) const {
    return Pin(sPrgmPins).Enabled();
}

double Application::GetVCOFrequency(const QString& sPLL) const {
    return PLL(sPLL).VCOFrequency();
}

double Application::GetOSCinFrequency(const QString& sPLL) const {
    return PLL(sPLL).XtalFrequency();
}

void Application::LoadPart() {
    part_.LoadAll();
}

/// Clients count from 0, the device from 1.
void Application::LoadReg(short index) {
    part_.LoadRegisterNumber(RoundToShort(index + 1.0));
}

void Application::Maximize() {
    window_.MaximizeWindow();
}

void Application::Minimize() {
    window_.MinimizeWindow();
}

QDBusObjectPath Application::Part() const {
    return QDBusObjectPath(kPartPath);
}

QString Application::RestoreSetup(const QString& sName) {
    std::string file = sName.toStdString();
    if (file.find_first_of("\\/") == std::string::npos) {
        file.insert(0, window_.ProgramPath());
    }
    const SetupReport report = LoadBurstCommands(part_, file);
    if (!report.applied) {
        throw RefusedError(report.Message());
    }
    if (const std::string message = report.Message(); !message.empty()) {
        window_.Tell(message);
    }
    return QString::fromStdString(file);
}

void Application::RunBurstMode() {
    part_.RunBurstCommands();
}

void Application::StopBurstMode() {
    part_.StopBurstCommands();
}

QString Application::SelectPart(const QString& sName) {
    std::string name = sName.toStdString();
    window_.SelectDevice(name);
    return QString::fromStdString(name);
}

void Application::SelectTab(const QString& sTab) {
    window_.SelectTab(sTab.toStdString());
}

void Application::SetMode(short index) {
    window_.SetDeviceMode(index);
}

void Application::SetPDFrequency(const QString& sPLL, double dFreq) {
    PLL(sPLL).PDFrequency(dFreq);
    ShowAndLoad();
}

void Application::SetPrgmBits(const QString& sPrgmBits, double iValue) {
    Field(sPrgmBits).BitValue(iValue);
    ShowAndLoad();
}

void Application::SetPrgmBitValue(const QString& sPrgmBits, double iValue) {
    Field(sPrgmBits).Value(iValue);
    ShowAndLoad();
}

void Application::SetPrgmPins(const QString& sPrgmPins, bool bValue, bool bUpdate) {
    Pin(sPrgmPins).Enabled(bValue);
    if (bUpdate) {
        part_.UpdateDisplays();
        part_.UpdateOutputPins();
    }
}

void Application::SetVCOFrequency(const QString& sPLL, double dFreq) {
    PLL(sPLL).VCOFrequency(dFreq);
    ShowAndLoad();
}

void Application::SetOSCinFrequency(const QString& sPLL, double dFreq) {
    PLL(sPLL).XtalFrequency(dFreq);
    ShowAndLoad();
}

void Application::ShowTarnwick() {
    window_.ShowWindow();
}

bool Application::GetAutoReload() const {
    return window_.AutoReloadChange();
}

QDBusVariant Application::SetAutoReload(bool bValue) {
    window_.AutoReloadChange(bValue);
    return Nothing();
}

bool Application::GetSaveSettings() const {
    return window_.SaveSettings();
}

QDBusVariant Application::SetSaveSettings(bool bValue) {
    window_.SaveSettings(bValue);
    return Nothing();
}

void Application::Release() {
    release_();
}
