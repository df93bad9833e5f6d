#pragma once

#include <QDBusObjectPath>
#include <QDBusVariant>
#include <QObject>
#include <QString>
#include <functional>

class cPLL;
class cPart;
class cPrgmBits;
class cPrgmPin;
class ProgramWindow;

/// What a client drives. It holds no state: each call is handed on to the window or the device, and throws what
/// they throw. com.ostrel.Tarnwick2x.xml tells what each member does.
class Application : public QObject {
    Q_OBJECT
    Q_PROPERTY(QDBusObjectPath Part READ Part)

public:
    /// `release` ends the object.
    Application(cPart& part, ProgramWindow& window, std::function<void()> release);

    [[nodiscard]] QString GetPDFrequency(const QString& sPLL) const;
    [[nodiscard]] int GetPrgmBits(const QString& sPrgmBits) const;
    [[nodiscard]] int GetPrgmBitValue(const QString& sPrgmBits) const;
    [[nodiscard]] bool GetPrgmPins(const QString& sPrgmPins) const;
    [[nodiscard]] double GetVCOFrequency(const QString& sPLL) const;
    [[nodiscard]] double GetOSCinFrequency(const QString& sPLL) const;
    void LoadPart();
    void LoadReg(short index);
    void Maximize();
    void Minimize();
    [[nodiscard]] QDBusObjectPath Part() const;
    QString RestoreSetup(const QString& sName);
    void RunBurstMode();
    void StopBurstMode();
    QString SelectPart(const QString& sName);
    void SelectTab(const QString& sTab);
    void SetMode(short index);
    void SetPDFrequency(const QString& sPLL, double dFreq);
    void SetPrgmBits(const QString& sPrgmBits, double iValue);
    void SetPrgmBitValue(const QString& sPrgmBits, double iValue);
    void SetPrgmPins(const QString& sPrgmPins, bool bValue, bool bUpdate = true);
    void SetVCOFrequency(const QString& sPLL, double dFreq);
    void SetOSCinFrequency(const QString& sPLL, double dFreq);
    void ShowTarnwick();
    [[nodiscard]] bool GetAutoReload() const;
    QDBusVariant SetAutoReload(bool bValue);
    [[nodiscard]] bool GetSaveSettings() const;
    QDBusVariant SetSaveSettings(bool bValue);

    void Release();

private:
    [[nodiscard]] cPLL& PLL(const QString& name) const;
    [[nodiscard]] cPrgmBits& Field(const QString& name) const;
    [[nodiscard]] cPrgmPin& Pin(const QString& name) const;
    void ShowAndLoad();

    cPart& part_;
    ProgramWindow& window_;
    std::function<void()> release_;
};
