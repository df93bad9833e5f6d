#include "automation/DeviceInterfaces.h"
#include "automation/ModelInterface.h"
#include "automation/Paths.h"
#include "burst/cBurst.h"
#include "core/Numbers.h"
#include "core/PartLimits.h"
#include "core/cPart.h"
#include "pll/cPLL.h"

namespace {

using Part = ModelInterface<cPart>;

using Name = const std::string&;

constexpr int kLongestBinaryString = 4096;

/// The number if it lies within the bounds.
template <class Integer>
Integer Within(const char* what, Integer v, int lowest, int highest) {
    if (v < lowest || v > highest) {
        throw ConversionError(std::string(what) + " can't be " + std::to_string(v) + ": " + std::to_string(lowest) +
                              " to " + std::to_string(highest) + " are possible");
    }
    return v;
}

template <class Item>
std::vector<std::string> Names(const Collection<Item>& items) {
    const auto names = items.Names();
    return {names.begin(), names.end()};
}

/// The path of the object of that name or at that position, once it is sure that there is one.
template <class Item>
QDBusObjectPath Named(const char* collection, const Collection<Item>& items, const std::string& name) {
    static_cast<void>(items.At(name));
    return ItemPath(collection, items.PositionOf(name));
}
template <class Item>
QDBusObjectPath Placed(const char* collection, const Collection<Item>& items, std::int32_t position) {
    static_cast<void>(items.At(position));
    return ItemPath(collection, position);
}

void AddCollections(Part& face) {
    using Place = std::int32_t;
    face.Method("Registers", "name", "result",
                [](cPart& p, Name name) { return Named("Registers", p.Registers(), name); });
    face.Method("PLLs", "name", "result", [](cPart& p, Name name) { return Named("PLLs", p.PLLs(), name); });
    face.Method("PrgmBits", "name", "result",
                [](cPart& p, Name name) { return Named("PrgmBits", p.PrgmBits(), name); });
    face.Method("PrgmPins", "name", "result",
                [](cPart& p, Name name) { return Named("PrgmPins", p.PrgmPins(), name); });
    face.Method("RegisterAt", "position", "result",
                [](cPart& p, Place at) { return Placed("Registers", p.Registers(), at); });
    face.Method("PLLAt", "position", "result", [](cPart& p, Place at) { return Placed("PLLs", p.PLLs(), at); });
    face.Method("PrgmBitsAt", "position", "result",
                [](cPart& p, Place at) { return Placed("PrgmBits", p.PrgmBits(), at); });
    face.Method("PrgmPinAt", "position", "result",
                [](cPart& p, Place at) { return Placed("PrgmPins", p.PrgmPins(), at); });
    face.Method("BurstCmds", "position", "result",
                [](cPart& p, Place at) { return Placed("BurstCmds", p.BurstCmds(), at); });
    face.Method("MacroCmds", "position", "result",
                [](cPart& p, Place at) { return Placed("MacroCmds", p.MacroCmds(), at); });
    using Texts = std::vector<std::string>;
    face.Add<Texts>(
        "RegisterNames", [](cPart& p) { return Names(p.Registers()); }, nullptr);
    face.Add<Texts>(
        "PLLNames", [](cPart& p) { return Names(p.PLLs()); }, nullptr);
    face.Add<Texts>(
        "PrgmBitsNames", [](cPart& p) { return Names(p.PrgmBits()); }, nullptr);
    face.Add<Texts>(
        "PrgmPinNames", [](cPart& p) { return Names(p.PrgmPins()); }, nullptr);
    face.Add<std::int32_t>(
        "BurstCmdsCount", [](cPart& p) { return p.BurstCmds().Count(); }, nullptr);
    face.Add<std::int32_t>(
        "MacroCmdsCount", [](cPart& p) { return p.MacroCmds().Count(); }, nullptr);
    face.Add<Texts>(
        "FileProblems",
        [](cPart& p) {
            Texts texts;
            for (const Problem& problem : p.FileProblems().All()) {
                texts.push_back(problem.Message());
            }
            return texts;
        },
        nullptr);
}

void AddProperties(Part& face) {
    face.ReadWrite<bool>("HighByte", &cPart::HighByte, &cPart::HighByte);
    face.ReadWrite<bool>("SBIEnable", &cPart::SBIEnable, &cPart::SBIEnable);
    face.ReadWrite<std::int16_t>("Lines", &cPart::Lines, &cPart::Lines);
    face.ReadOnly<std::int16_t>("Shapes", &cPart::Shapes);
    face.ReadOnly<std::int16_t>("Labels", &cPart::Labels);
    face.ReadWrite<bool>("LEModeHigh", &cPart::LEModeHigh, &cPart::LEModeHigh);
    face.ReadWrite<bool>("InvertClock", &cPart::InvertClock, &cPart::InvertClock);
    face.ReadOnly<bool>("BurstRunning", &cPart::BurstRunning);
    face.ReadWrite<std::string>("InitFile", &cPart::InitFile, &cPart::InitFile);
    face.ReadWrite<std::string>("ID", &cPart::ID, &cPart::ID);
    face.ReadWrite<bool>("Updating", &cPart::Updating, &cPart::Updating);
    face.ReadWrite<std::int16_t>("OutputPinValue", &cPart::OutputPinValue, &cPart::OutputPinValue);
    face.ReadWrite<std::int16_t>("DataPosition", &cPart::DataPosition, &cPart::DataPosition);
    face.ReadWrite<std::int16_t>("ClockPosition", &cPart::ClockPosition, &cPart::ClockPosition);
    face.ReadWrite<std::int16_t>("LEPosition", &cPart::LEPosition, &cPart::LEPosition);
    face.ReadWrite<std::int16_t>("PortAddress", &cPart::PortAddress, &cPart::PortAddress);
    face.Add<std::int16_t>(
        "RegisterLength", [](cPart& p) { return p.RegisterLength(); },
        [](cPart& p, std::int16_t bits) { p.RegisterLength(Within("RegisterLength", bits, 1, kLongestRegister)); });
    face.Add<std::int16_t>(
        "ControlLength", [](cPart& p) { return p.ControlLength(); },
        [](cPart& p, std::int16_t bits) { p.ControlLength(Within("ControlLength", bits, 0, kLongestRegister)); });
}

void AddMaking(Part& face) {
    face.Method("AddPLL", "name N R", "", &cPart::AddPLL);
    face.Method("SetupPLLFraction", "name numerator denominator", "", &cPart::SetupPLLFraction);
    face.Method("SetupPLL", "PD IPO TRI NP RP", "", &cPart::SetupPLL);
    face.Method("SetupFraction", "numerator denominator", "", &cPart::SetupFraction);
    face.Method("AddPLLTab", "name lines shapes labels", "", &cPart::AddPLLTab);
    face.Method("AddRegister", "name mask value lowByte highLowRegister", "", &cPart::AddRegister);
    face.Method("AddProgramBit", "name RegName strt l disp group", "", &cPart::AddProgramBit);
    face.Method("AddProgramBit", "name RegName strt l disp", "",
                [](cPart& p, Name name, Name registerName, std::int16_t start, std::int16_t length, bool display) {
                    p.AddProgramBit(name, registerName, start, length, display);
                });
    face.Method("AddCounter", "name RegName strt l disp group", "", &cPart::AddCounter);
    face.Method("AddCounter", "name RegName strt l disp", "",
                [](cPart& p, Name name, Name registerName, std::int16_t start, std::int16_t length, bool display) {
                    p.AddCounter(name, registerName, start, length, display);
                });
    face.Method("AddList", "PrgmBitName group", "", &cPart::AddList);
    face.Method("AddProgramPin", "name Pos", "", &cPart::AddProgramPin);
}

void AddDisplays(Part& face) {
    face.Method("UpdatePLLDisplay", "", "", &cPart::UpdatePLLDisplay);
    face.Method("UpdateRegisterDisplay", "", "", &cPart::UpdateRegisterDisplay);
    face.Method("UpdatePortDisplay", "", "", &cPart::UpdatePortDisplay);
    face.Method("UpdateDisplays", "", "", &cPart::UpdateDisplays);
    face.Method("UpdateBurstDisplay", "", "", &cPart::UpdateBurstDisplay);
    face.Method("DisplayBurstVector", "", "", &cPart::DisplayBurstVector);
    face.Method("UpdateBitDisplay", "", "", &cPart::UpdateBitDisplay);
    face.Method("ClearPLL", "", "", &cPart::ClearPLL);
}

void AddLoading(Part& face) {
    face.Method("SetOutPins", "v", "", &cPart::SetOutPins);
    face.Method("ClearOutPins", "v", "", &cPart::ClearOutPins);
    face.Method("ToggleOutPins", "v", "", &cPart::ToggleOutPins);
    face.Method("ResetOutputPins", "", "", &cPart::ResetOutputPins);
    face.Method("UpdateOutputPins", "", "", &cPart::UpdateOutputPins);
    face.Method("LoadChanges", "", "", &cPart::LoadChanges);
    face.Method("LoadRegisterNumber", "regNumber", "", &cPart::LoadRegisterNumber);
    face.Method("LoadAll", "", "", &cPart::LoadAll);
    face.Method("LoadRegister", "sReg", "sReg", [](cPart& p, std::string name) {
        p.LoadRegister(name);
        return name;
    });
    face.Method("LoadValue", "dReg", "", &cPart::LoadValue);
    face.Method("ReadRegister", "regNumber", "result", &cPart::ReadRegister);
    face.Method("StartSBILoad", "", "", &cPart::StartSBILoad);
    face.Method("StopSBILoad", "", "", &cPart::StopSBILoad);
}

void AddBinaryStrings(Part& face) {
    face.Method("ConvertBase10", "d sNewBaseDigits", "result", &cPart::ConvertBase10);
    face.Method("ConvertBinaryToHex", "BinaryValue", "result BinaryValue", [](cPart& p, std::string text) {
        const std::string hex = p.ConvertBinaryToHex(text);
        return std::pair(hex, text);
    });
    face.Method("BinaryToDecimal", "BinaryValue", "result", &cPart::BinaryToDecimal);
    face.Method("BinaryStringAnd", "sOne sTwo", "result", &cPart::BinaryStringAnd);
    face.Method("BinaryStringOr", "sOne sTwo", "result", &cPart::BinaryStringOr);
    face.Method("BinaryStringNot", "sOne LoopLen", "result", [](cPart& p, const std::string& one, std::int32_t length) {
        return p.BinaryStringNot(one, Within("LoopLen", length, 0, kLongestBinaryString));
    });
    face.Method("BinaryStringNot", "sOne", "result",
                [](cPart& p, const std::string& one) { return p.BinaryStringNot(one); });
}

void AddBurst(Part& face) {
    face.Method("AddBurstCommand", "name kind position", "",
                [](cPart& p, const std::string& name, std::int16_t kind, std::int16_t position) {
                    p.AddBurstCommand(name, kind, position);
                });
    face.Method("AddBurstCommand", "name kind", "",
                [](cPart& p, const std::string& name, std::int16_t kind) { p.AddBurstCommand(name, kind); });
    face.Method("ChangeBurstCommand", "position name kind", "", &cPart::ChangeBurstCommand);
    face.Method("DeleteBurstCommand", "position", "", &cPart::DeleteBurstCommand);
    face.Method("DeleteBurstCommands", "", "", &cPart::DeleteBurstCommands);
    face.Method("RestoreBurstCommand", "position", "", &cPart::RestoreBurstCommand);
    face.Method("RunBurstCommands", "", "", &cPart::RunBurstCommands);
    face.Method("StopBurstCommands", "", "", &cPart::StopBurstCommands);
}

}   // namespace

Interface PartInterface() {
    Part face("com.ostrel.Tarnwick2x.Part");
    face.Annotate(kEmitsChanged, "false");
    AddCollections(face);
    AddProperties(face);
    AddMaking(face);
    AddDisplays(face);
    AddLoading(face);
    AddBinaryStrings(face);
    AddBurst(face);
    return face;
}
