#include "partfile/PartFileReader.h"

#include "core/DeviceDisplay.h"
#include "core/PartLimits.h"
#include "core/cPart.h"
#include "partfile/PartFile.h"
#include "ports/Connector.h"

void PartFileReader::ReadSetup() {
    part_.RegisterLength(file_.Short("SETUP", "REGISTER_LENGTH", "24", 1, kLongestRegister));
    part_.ControlLength(file_.Short("SETUP", "CONTROL_LENGTH", "3", 0, kLongestRegister));
    part_.PortAddress(file_.Short("SETUP", "ADDRESS", "&H378"));
    part_.ClockPosition(file_.Short("SETUP", "CLOCK", "1"));
    part_.DataPosition(file_.Short("SETUP", "DATA", "2"));
    part_.LEPosition(file_.Short("SETUP", "LE", "4"));
    part_.SBIEnable(file_.Boolean("SETUP", "SBI", "FALSE"));
    part_.HighByte(file_.Boolean("SETUP", "HIGHBYTE", "FALSE"));
    part_.InvertClock(file_.Boolean("SETUP", "INVERTCLOCK", "FALSE"));
    part_.Display().ShowVersion(file_.Text("SETUP", "VERSION", "a"),
                                file_.Text("SETUP", "VERSION_DESCRIPTION", "No ini description"));
}

void PartFileReader::ReadPins() {
    const std::string section = "PINS";
    const int count = file_.Short(section, "COUNT", "0");
    for (int i = 0; i < count; ++i) {
        const std::string name = file_.Text(section, PartFile::Key("NAME", i), PartFile::Key("Pin", i));
        const std::int16_t line = file_.Short(section, PartFile::Key("LOCATION", i), "3", 0, kPortLines - 1);
        const bool enabled = file_.Boolean(section, PartFile::Key("ENABLED", i), "False");
        lastName_ = name;
        if (!file_.Repeats(section, i, name, part_.PrgmPins().PositionOf(name), part_.Items().pins)) {
            part_.AddProgramPin(name, line);
            part_.PrgmPins().At(name).Enabled(enabled);
            part_.Items().pins.push_back(i);
        }
    }
}

void PartFileReader::ReadRegisters() {
    const std::string section = "REGISTERS";
    const int count = file_.Short(section, "COUNT", "0");
    for (int i = 0; i < count; ++i) {
        const std::string name = file_.Text(section, PartFile::Key("NAME", i), PartFile::Key("Reg", i));
        const std::int32_t mask = file_.Long(section, PartFile::Key("MASK", i), "3");
        const double value = file_.Double(section, PartFile::Key("VALUE", i), std::to_string(i));
        const bool low = file_.Boolean(section, PartFile::Key("LOWBYTE", i), "TRUE");
        const std::string partner = file_.Text(section, PartFile::Key("HIGHLOWREGISTER", i), "");
        lastName_ = name;
        if (!file_.Repeats(section, i, name, part_.Registers().PositionOf(name), part_.Items().registers)) {
            part_.AddRegister(name, mask, value, low, partner);
            part_.Items().registers.push_back(i);
        }
    }
}

void PartFileReader::ReadBits() {
    const int count = file_.Short("BITS", "COUNT", "0");
    for (int i = 0; i < count; ++i) {
        ReadField(i);
    }
}

void PartFileReader::ReadField(int item) {
    const std::string registerName = file_.Text("BITS", PartFile::Key("REG", item), lastName_);
    const std::string name = file_.Text("BITS", PartFile::Key("NAME", item), PartFile::Key("Reg", item));
    const std::string type = file_.Text("BITS", PartFile::Key("TYPE", item), "Bits");
    lastName_ = name;
    if (file_.Repeats("BITS", item, name, part_.PrgmBits().PositionOf(name), part_.Items().fields)) {
        return;
    }
    AddField(item, name, registerName, type);
    part_.Items().fields.push_back(item);
    ReadLists(item, name);
    ReadRules(item, name);
    if (type == "List") {
        part_.AddList(name, file_.Text("BITS", PartFile::Key("FRAME", item), "Frame"));
    }
}

void PartFileReader::AddField(int item, const std::string& name, const std::string& registerName,
                              const std::string& type) {
    const std::int16_t start = file_.Short("BITS", PartFile::Key("POS", item), "1");
    const std::int16_t length = file_.Short("BITS", PartFile::Key("LEN", item), "1");
    const bool display = file_.Boolean("BITS", PartFile::Key("DISPLAY", item), "False");
    const std::string frame = file_.Text("BITS", PartFile::Key("FRAME", item), "Frame");
    if (type == "Bit") {
        part_.AddProgramBit(name, registerName, start, length, display, frame);
    } else if (type == "Counter") {
        part_.AddCounter(name, registerName, start, length, display, frame);
    } else {
        part_.AddProgramBit(name, registerName, start, length, false);
    }
}

void PartFileReader::ReadLists(int item, const std::string& name) {
    const std::string section = "BITS";
    const int count = file_.Short(section, PartFile::Key("COUNT", item), "0");
    if (count < 1) {
        return;
    }
    const auto texts = [&](const char* property, int entries) {
        std::vector<std::string> list;
        list.reserve(static_cast<std::size_t>(entries));
        for (int entry = 0; entry < entries; ++entry) {
            list.push_back(file_.Text(section, PartFile::Key(property, item, entry), PartFile::Key("", entry)));
        }
        return list;
    };
    cPrgmBits& field = part_.PrgmBits().At(name);
    if (file_.Text(section, PartFile::Key("FORMAT", item), "String") == "String") {
        field.SetStringArray(texts("VAL", count));
        return;
    }
    std::vector<double> values;
    values.reserve(static_cast<std::size_t>(count));
    for (int entry = 0; entry < count; ++entry) {
        values.push_back(file_.Double(section, PartFile::Key("VAL", item, entry), PartFile::Key("", entry)));
    }
    field.SetValueArray(std::move(values));
    const int codes = file_.Short(section, PartFile::Key("COUNTB", item), "0");
    if (codes >= 1) {
        field.SetStringArray(texts("VALB", codes));
    }
}

void PartFileReader::ReadRules(int item, const std::string& name) {
    cPrgmBits& field = part_.PrgmBits().At(name);
    const auto number = [&](const char* property, const char* standard) {
        return file_.Double("BITS", PartFile::Key(property, item), standard);
    };
    const auto text = [&](const char* property) { return file_.Text("BITS", PartFile::Key(property, item), ""); };
    const auto flag = [&](const char* property, const char* standard) {
        return file_.Boolean("BITS", PartFile::Key(property, item), standard);
    };
    field.MinimumValue(number("MINIMUMVALUE", "0"));
    field.MaximumValue(number("MAXIMUMVALUE", "0"));
    field.ZeroValue(number("ZEROVALUE", "0"));
    field.StepValue(number("STEPVALUE", "1"));
    field.Units(text("UNITS"));
    field.LinkedBits(text("LINKEDBITS"));
    field.MirrorBits(text("MIRRORBITS"));
    field.StepValueBitName(text("STEPVALUEBITNAME"));
    field.Description(text("DESCRIPTION"));
    field.GreaterBitName(text("GREATERBITS"));
    field.GreaterEqual(flag("GREATERTHAN", "TRUE"));
    field.Polarity(flag("POLARITY", "FALSE"));
    field.PolarityPosition(file_.Short("BITS", PartFile::Key("POLARITYPOSITION", item), "0"));
    field.PolarityInverted(flag("POLARITYINVERTED", "FALSE"));
    field.DataInverted(flag("DATAINVERTED", "FALSE"));
}
