#include "PartFileWriter.h"

#include <array>

#include "FuzzInput.h"
#include "core/Numbers.h"

namespace {

constexpr std::array kFlags{"FALSE", "TRUE"};
constexpr std::array kMasks{"0", "3", "&HFF", "-1", "&H80000000"};
constexpr std::array kTypes{"Bit", "Counter", "List", "Bits"};
constexpr std::array kReals{"0", "1", "-1", "2", "0.5", "16", "-100", "1E9", "1E300", "7"};
constexpr std::array kEntries{"0", "1", "2", "4", "16", "2.5", "-3", "1E12", "Off", "Reserved", "", " 8 "};

class PartFileWriter {
public:
    explicit PartFileWriter(std::string_view bytes)
        : input_(bytes), registers_(input_.Below(5)), fields_(input_.Below(13)) {}

    std::string Written() {
        WriteSetup();
        WriteItems("PINS", input_.Below(4), &PartFileWriter::WritePin);
        WriteItems("REGISTERS", registers_, &PartFileWriter::WriteRegister);
        WriteItems("BITS", fields_, &PartFileWriter::WriteField);
        WriteItems("PLLS", input_.Below(4), &PartFileWriter::WritePLL);
        return text_;
    }

private:
    void Put(const std::string& key, const std::string& value) { text_ += key + '=' + value + '\n'; }
    void PutItem(const char* property, const std::string& value) { Put(property + Number(item_), value); }

    /// One time in four; else the key's default holds.
    void Perhaps(const char* property, const std::string& value) {
        if (input_.Below(4) == 3) {
            PutItem(property, value);
        }
    }

    static std::string Number(unsigned number) { return ItemNumber(static_cast<int>(number)); }

    template <class Choices>
    std::string OneOf(const Choices& choices) {
        return choices.at(input_.Below(static_cast<unsigned>(choices.size())));
    }

    /// The name of an item, and now and then of the one behind the last.
    std::string NameOf(char kind, unsigned count) {
        const unsigned missing = input_.Below(16) == 15 ? 1 : 0;
        return kind + std::to_string(input_.Below(count + missing + (count + missing == 0 ? 1 : 0)));
    }

    void WriteItems(const std::string& section, unsigned count, void (PartFileWriter::*write)()) {
        text_ += '[' + section + "]\n";
        Put("COUNT", std::to_string(count));
        for (item_ = 0; item_ < count; ++item_) {
            (this->*write)();
        }
    }

    void WriteSetup() {
        text_ += "[SETUP]\n";
        Put("REGISTER_LENGTH", std::to_string(1 + input_.Below(53)));
        Put("CONTROL_LENGTH", std::to_string(input_.Below(5)));
        for (const char* line : {"CLOCK", "DATA", "LE"}) {
            Put(line, std::to_string(1U << input_.Below(12)));
        }
        for (const char* flag : {"SBI", "HIGHBYTE", "INVERTCLOCK"}) {
            Put(flag, OneOf(kFlags));
        }
    }

    void WritePin() {
        PutItem("NAME", item_ == 0 ? "Trigger" : "P" + std::to_string(item_));
        PutItem("LOCATION", std::to_string(input_.Below(12)));
        PutItem("ENABLED", OneOf(kFlags));
    }

    void WriteRegister() {
        PutItem("NAME", "R" + std::to_string(item_));
        PutItem("MASK", OneOf(kMasks));
        PutItem("VALUE", std::to_string(static_cast<std::uint16_t>(input_.Short())));
        Perhaps("LOWBYTE", "FALSE");
        Perhaps("HIGHLOWREGISTER", NameOf('R', registers_));
    }

    void WriteField() {
        PutItem("NAME", "F" + std::to_string(item_));
        PutItem("REG", NameOf('R', registers_));
        const int position = static_cast<int>(input_.Below(44)) - 10;
        PutItem("POS", std::to_string(position < -2 ? -1 : position));
        PutItem("LEN", std::to_string(input_.Below(16) == 15 ? input_.Below(66) : input_.Below(9)));
        PutItem("TYPE", OneOf(kTypes));
        Perhaps("DISPLAY", "TRUE");
        WriteLists();
        for (const char* number : {"MINIMUMVALUE", "MAXIMUMVALUE", "ZEROVALUE", "STEPVALUE"}) {
            Perhaps(number, OneOf(kReals));
        }
        for (const char* other : {"LINKEDBITS", "MIRRORBITS", "STEPVALUEBITNAME", "GREATERBITS"}) {
            Perhaps(other, NameOf('F', fields_));
        }
        for (const char* flag : {"GREATERTHAN", "POLARITY", "POLARITYINVERTED", "DATAINVERTED"}) {
            Perhaps(flag, OneOf(kFlags));
        }
        Perhaps("POLARITYPOSITION", std::to_string(static_cast<int>(input_.Below(11)) - 2));
    }

    /// No list, texts, numbers, or numbers with codes.
    void WriteLists() {
        const unsigned form = input_.Below(4);
        PutItem("FORMAT", form == 1 ? "String" : "Number");
        if (form != 0) {
            WriteList("COUNT", "VAL");
        }
        if (form == 3) {
            WriteList("COUNTB", "VALB");
        }
    }

    void WriteList(const char* count, const char* property) {
        const unsigned entries = input_.Below(7);
        PutItem(count, std::to_string(entries));
        for (unsigned entry = 0; entry < entries; ++entry) {
            Put(property + Number(item_) + Number(entry), OneOf(kEntries));
        }
    }

    void WritePLL() {
        PutItem("NAME", "PLL" + std::to_string(item_));
        PutItem("N", NameOf('F', fields_));
        PutItem("R", NameOf('F', fields_));
        for (const char* other : {"PD", "IPO", "TRI", "NP", "RP", "FRACTNUM", "FRACTDEN"}) {
            Perhaps(other, NameOf('F', fields_));
        }
        Perhaps("OSCIN", OneOf(kReals));
    }

    FuzzInput input_;
    unsigned registers_;
    unsigned fields_;
    std::string text_;
    unsigned item_ = 0;
};

}   // namespace

std::string DescribedPartFile(std::string_view bytes) {
    return PartFileWriter(bytes).Written();
}
