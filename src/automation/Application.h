#pragma once

#include <QDBusObjectPath>
#include <QDBusVariant>
#include <cstdint>
#include <functional>
#include <string>

#include "automation/Interface.h"

class cPLL;
class cPart;
class cPrgmBits;
class cPrgmPin;
class ProgramWindow;

/// What a client drives. It holds no state: each call is handed on to the window or the device, and throws what
/// they throw. com.ostrel.Tarnwick2x.xml tells what each member does.
class Application {
public:
    /// `release` ends the object.
    Application(cPart& part, ProgramWindow& window, std::function<void()> release);

    [[nodiscard]] std::string GetPDFrequency(const std::string& sPLL) const;
    [[nodiscard]] std::int32_t GetPrgmBits(const std::string& sPrgmBits) const;
    [[nodiscard]] std::int32_t GetPrgmBitValue(const std::string& sPrgmBits) const;
    [[nodiscard]] bool GetPrgmPins(const std::string& sPrgmPins) const;
    [[nodiscard]] double GetVCOFrequency(const std::string& sPLL) const;
    [[nodiscard]] double GetOSCinFrequency(const std::string& sPLL) const;
    void LoadPart();
    void LoadReg(std::int16_t index);
    void Maximize();
    void Minimize();
    [[nodiscard]] QDBusObjectPath Part() const;
    std::string RestoreSetup(const std::string& sName);
    void RunBurstMode();
    void StopBurstMode();
    std::string SelectPart(const std::string& sName);
    void SelectTab(const std::string& sTab);
    void SetMode(std::int16_t index);
    void SetPDFrequency(const std::string& sPLL, double dFreq);
    void SetPrgmBits(const std::string& sPrgmBits, double iValue);
    void SetPrgmBitValue(const std::string& sPrgmBits, double iValue);
    void SetPrgmPins(const std::string& sPrgmPins, bool bValue, bool bUpdate);
    void SetVCOFrequency(const std::string& sPLL, double dFreq);
    void SetOSCinFrequency(const std::string& sPLL, double dFreq);
    void ShowTarnwick();
    [[nodiscard]] bool GetAutoReload() const;
    QDBusVariant SetAutoReload(bool bValue);
    [[nodiscard]] bool GetSaveSettings() const;
    QDBusVariant SetSaveSettings(bool bValue);

    void Release();

private:
    [[nodiscard]] cPLL& PLL(const std::string& name) const;
    [[nodiscard]] cPrgmBits& Field(const std::string& name) const;
    [[nodiscard]] cPrgmPin& Pin(const std::string& name) const;
    template <class Write>
    void Change(Write write);

    cPart& part_;
    ProgramWindow& window_;
    std::function<void()> release_;
};

// The interfaces of an Application object.
Interface ApplicationInterface();
Interface ObjectInterface();
