#include "automation/Application.h"

#include <limits>
#include <string>
#include <utility>

#include "automation/ModelInterface.h"
#include "automation/Paths.h"
#include "burst/SetupFile.h"
#include "core/Errors.h"
#include "core/Numbers.h"
#include "core/cPart.h"
#include "machine/ProgramWindow.h"
#include "pll/cPLL.h"

namespace {

/// What the calls return that have nothing to tell, but must return something.
QDBusVariant Nothing() {
    return QDBusVariant(QString());
}

/// What is read of a field, as a 32-bit number.
std::int32_t Whole(const std::string& field, double v) {
    try {
        return RoundToLong(v);
    } catch (const ConversionError& error) {
        throw ConversionError("bit field '" + field + "': " + error.what());
    }
}

}   // namespace

Application::Application(cPart& part, ProgramWindow& window, std::function<void()> release)
    : part_(part), window_(window), release_(std::move(release)) {}

cPLL& Application::PLL(const std::string& name) const {
    return part_.PLLs().At(name);
}

cPrgmBits& Application::Field(const std::string& name) const {
    return part_.PrgmBits().At(name);
}

cPrgmPin& Application::Pin(const std::string& name) const {
    return part_.PrgmPins().At(name);
}

/// Writes, shows and loads. What a write that fails has done by then shows too, but isn't loaded.
template <class Write>
void Application::Change(Write write) {
    try {
        write();
    } catch (const UserError&) {
        part_.UpdateDisplays();
        throw;
    }
    part_.UpdateDisplays();
    part_.LoadChanges();
}

std::string Application::GetPDFrequency(const std::string& sPLL) const {
    return GeneralText(PLL(sPLL).PDFrequency());
}

std::int32_t Application::GetPrgmBits(const std::string& sPrgmBits) const {
    return Whole(sPrgmBits, Field(sPrgmBits).BitValue());
}

std::int32_t Application::GetPrgmBitValue(const std::string& sPrgmBits) const {
    return Whole(sPrgmBits, Field(sPrgmBits).Value());
}

bool Application::GetPrgmPins(const std::string& sPrgmPins) const {
    return Pin(sPrgmPins).Enabled();
}

double Application::GetVCOFrequency(const std::string& sPLL) const {
    return PLL(sPLL).VCOFrequency();
}

double Application::GetOSCinFrequency(const std::string& sPLL) const {
    return PLL(sPLL).XtalFrequency();
}

void Application::LoadPart() {
    part_.LoadAll();
}

/// Clients count from 0, the device from 1.
void Application::LoadReg(std::int16_t index) {
    constexpr std::int16_t kHighest = std::numeric_limits<std::int16_t>::max() - 1;
    if (index > kHighest) {
        throw ConversionError("LoadReg: argument 1 (Index) is " + std::to_string(index) +
                              ": the index of a register is " + std::to_string(kHighest) + " at most");
    }
    part_.LoadRegisterNumber(static_cast<std::int16_t>(index + 1));
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

std::string Application::RestoreSetup(const std::string& sName) {
    std::string file = sName;
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
    return file;
}

void Application::RunBurstMode() {
    part_.RunBurstCommands();
}

void Application::StopBurstMode() {
    part_.StopBurstCommands();
}

std::string Application::SelectPart(const std::string& sName) {
    std::string name = sName;
    window_.SelectDevice(name);
    return name;
}

void Application::SelectTab(const std::string& sTab) {
    window_.SelectTab(sTab);
}

void Application::SetMode(std::int16_t index) {
    window_.SetDeviceMode(index);
}

void Application::SetPDFrequency(const std::string& sPLL, double dFreq) {
    Change([&] { PLL(sPLL).PDFrequency(dFreq); });
}

void Application::SetPrgmBits(const std::string& sPrgmBits, double iValue) {
    Change([&] { Field(sPrgmBits).BitValue(iValue); });
}

void Application::SetPrgmBitValue(const std::string& sPrgmBits, double iValue) {
    Change([&] { Field(sPrgmBits).Value(iValue); });
}

void Application::SetPrgmPins(const std::string& sPrgmPins, bool bValue, bool bUpdate) {
    Pin(sPrgmPins).Enabled(bValue);
    if (bUpdate) {
        part_.UpdateDisplays();
        part_.UpdateOutputPins();
    }
}

void Application::SetVCOFrequency(const std::string& sPLL, double dFreq) {
    Change([&] { PLL(sPLL).VCOFrequency(dFreq); });
}

void Application::SetOSCinFrequency(const std::string& sPLL, double dFreq) {
    Change([&] { PLL(sPLL).XtalFrequency(dFreq); });
}

void Application::ShowTarnwick() {
    window_.RestoreWindow();
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

namespace {

/// Gives a member its number in the type library.
template <class Row>
void Member(Row& row, const char* dispId) {
    row.annotations << Interface::Annotation{"com.ostrel.Tarnwick2x.DispID", dispId};
}

}   // namespace

Interface ApplicationInterface() {
    ModelInterface<Application> face("com.ostrel.Tarnwick2x._Application");
    face.Annotate("com.ostrel.Tarnwick2x.TypeLibrary", "{FA19DE10-771F-45F8-8194-F4AA58861D1F}");
    face.Annotate("com.ostrel.Tarnwick2x.TypeLibraryVersion", "1.0");
    face.Annotate("com.ostrel.Tarnwick2x.Locale", "0x409");
    face.Annotate("com.ostrel.Tarnwick2x.Class", "{7F424405-EF8D-4792-9308-9DA098479696}");
    face.Annotate("com.ostrel.Tarnwick2x.ProgID", "Tarnwick2x.Application");
    face.Annotate("com.ostrel.Tarnwick2x.GUID", "{5B3B988B-9AD1-46E7-846E-1B980CAA1146}");
    auto& part = face.Add<QDBusObjectPath>(
        "Part", [](Application& a) { return a.Part(); }, nullptr);
    Member(part, "0x68030000");
    part.annotations << Interface::Annotation{kEmitsChanged, "const"};
    Member(face.Method("GetPDFrequency", "sPLL", "result", &Application::GetPDFrequency), "0x60030001");
    Member(face.Method("GetPrgmBits", "sPrgmBits", "result", &Application::GetPrgmBits), "0x60030002");
    Member(face.Method("GetPrgmBitValue", "sPrgmBits", "result", &Application::GetPrgmBitValue), "0x60030003");
    Member(face.Method("GetPrgmPins", "sPrgmPins", "result", &Application::GetPrgmPins), "0x60030004");
    Member(face.Method("GetVCOFrequency", "sPLL", "result", &Application::GetVCOFrequency), "0x60030005");
    Member(face.Method("GetOSCinFrequency", "sPLL", "result", &Application::GetOSCinFrequency), "0x60030006");
    Member(face.Method("LoadPart", "", "", &Application::LoadPart), "0x60030007");
    Member(face.Method("LoadReg", "Index", "", &Application::LoadReg), "0x60030008");
    Member(face.Method("Maximize", "", "", &Application::Maximize), "0x60030009");
    Member(face.Method("Minimize", "", "", &Application::Minimize), "0x6003000A");
    Member(face.Method("RestoreSetup", "sName", "sName", &Application::RestoreSetup), "0x6003000B");
    Member(face.Method("RunBurstMode", "", "", &Application::RunBurstMode), "0x6003000C");
    Member(face.Method("StopBurstMode", "", "", &Application::StopBurstMode), "0x6003000D");
    Member(face.Method("SelectPart", "sName", "sName", &Application::SelectPart), "0x6003000E");
    Member(face.Method("SelectTab", "sTab", "", &Application::SelectTab), "0x6003000F");
    Member(face.Method("SetMode", "Index", "", &Application::SetMode), "0x60030010");
    Member(face.Method("SetPDFrequency", "sPLL dFreq", "", &Application::SetPDFrequency), "0x60030011");
    Member(face.Method("SetPrgmBits", "sPrgmBits iValue", "", &Application::SetPrgmBits), "0x60030012");
    Member(face.Method("SetPrgmBitValue", "sPrgmBits iValue", "", &Application::SetPrgmBitValue), "0x60030013");
    Member(face.Method("SetPrgmPins", "sPrgmPins bValue bUpdate", "", &Application::SetPrgmPins), "0x60030014");
    Member(face.Method("SetPrgmPins", "sPrgmPins bValue", "",
                       [](Application& a, const std::string& pin, bool value) { a.SetPrgmPins(pin, value, true); }),
           "0x60030014");
    Member(face.Method("SetVCOFrequency", "sPLL dFreq", "", &Application::SetVCOFrequency), "0x60030015");
    Member(face.Method("SetOSCinFrequency", "sPLL dFreq", "", &Application::SetOSCinFrequency), "0x60030016");
    Member(face.Method("ShowTarnwick", "", "", &Application::ShowTarnwick), "0x60030017");
    Member(face.Method("GetAutoReload", "", "result", &Application::GetAutoReload), "0x6003001A");
    Member(face.Method("SetAutoReload", "bValue", "result", &Application::SetAutoReload), "0x6003001B");
    Member(face.Method("GetSaveSettings", "", "result", &Application::GetSaveSettings), "0x6003001C");
    Member(face.Method("SetSaveSettings", "bValue", "result", &Application::SetSaveSettings), "0x6003001D");
    return face;
}

Interface ObjectInterface() {
    ModelInterface<Application> face("com.ostrel.Tarnwick2x.Object");
    face.Method("Release", "", "", &Application::Release);
    return face;
}
