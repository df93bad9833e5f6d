#include <algorithm>
#include <cmath>
#include <map>
#include <string>
#include <vector>

#include "core/FieldBits.h"
#include "core/FieldEntry.h"
#include "core/Numbers.h"
#include "core/cPart.h"
#include "partfile/PartCheck.h"
#include "partfile/PartFile.h"

namespace {

/// Finds out what a field holds at the start, and whether that could be set.
class StartCheck {
public:
    StartCheck(cPart& part, PartFile& file) : part_(part), file_(file) {}

    void Run() {
        for (int i = 1; i <= part_.Registers().Count(); ++i) {
            CheckRegister(i);
        }
        CheckAddresses();
        for (const cPrgmBits& field : part_.PrgmBits()) {
            // Names that stand for nothing were reported where they stand.
            IgnoringFailures([&] { CheckField(field); });
        }
    }

private:
    void Report(int registerPlace, const std::string& text) {
        const int item = FileItems::At(part_.Items().registers, registerPlace - 1);
        file_.Report(Severity::Warning, "REGISTERS", PartFile::Key("VALUE", item), text);
    }

    void CheckRegister(int place) {
        const double value = part_.Registers().At(place).Value();
        const std::string shown = GeneralText(value);
        if (value < 0) {
            Report(place, shown + " is negative: a register starts from 0 up");
        } else if (std::floor(value) != value) {
            Report(place, shown + " is not whole: the register starts with " + GeneralText(std::floor(value)));
        } else if (value >= std::ldexp(1.0, part_.RegisterLength())) {
            Report(place, FileText(value) + " has more than the register's " + std::to_string(part_.RegisterLength()) +
                              " bits");
        }
    }

    /// Where all have the address 0, the device has none.
    void CheckAddresses() {
        std::map<std::uint64_t, std::vector<int>> places;
        for (int i = 1; i <= part_.Registers().Count(); ++i) {
            if (const cRegister& one = part_.Registers().At(i); HasAddress(one)) {
                places[WholeBits(one.Value()) & AddressBits()].push_back(i);
            }
        }
        for (const auto& [address, same] : places) {
            for (std::size_t i = 1; i < same.size() && (address != 0 || places.size() > 1); ++i) {
                Report(same[i], "the lowest " + std::to_string(part_.ControlLength()) + " bits of '" + NameAt(same[i]) +
                                    "', its address, are those of '" + NameAt(same[0]) +
                                    "': the device can't tell them apart");
            }
        }
    }

    /// An SBI device counts its registers, the high part of a pair doesn't latch, and bits in a field are no address.
    bool HasAddress(const cRegister& one) const {
        if (AddressBits() == 0 || part_.SBIEnable() || (part_.HighByte() && !one.LowByte())) {
            return false;
        }
        const auto& fields = part_.PrgmBits();
        return std::none_of(fields.begin(), fields.end(), [&](const cPrgmBits& field) {
            return field.Position() >= 0 && field.Register() == one.ID() && (BitsOf(field) & AddressBits()) != 0;
        });
    }

    std::uint64_t AddressBits() const { return FieldRun(0, part_.ControlLength()); }
    const std::string& NameAt(int place) const { return part_.Registers().At(place).ID(); }

    void CheckField(const cPrgmBits& field) {
        place_ = part_.Registers().PositionOf(field.Register());
        if (place_ == 0 || field.Position() < 0) {
            return;
        }
        if (field.HasList()) {
            CheckEntry(field);
        } else {
            CheckLimits(field);
        }
        CheckGreater(field);
    }

    static std::string Starts(const cPrgmBits& field, double value) {
        return "'" + field.ID() + "' starts at " + GeneralText(value);
    }

    void CheckEntry(const cPrgmBits& field) {
        const double bits = field.BitValue();
        bool found = bits < field.ArrayCount();
        if (field.HasValueList() && field.HasStringList()) {
            found = false;
            for (const std::string& code : field.StringList()) {
                found = found || ParseNumber(code) == bits;
            }
        }
        if (!found) {
            Report(place_, "'" + field.ID() + "' starts with the bits " + GeneralText(bits) +
                               ", for which its list has no entry");
        }
    }

    void CheckLimits(const cPrgmBits& field) {
        // The value of a signed field is the magnitude; the text has the sign.
        const double value =
            field.Polarity() ? ParseFieldEntry(field, field.Text()).value_or(field.Value()) : field.Value();
        if (value < field.MinimumValue()) {
            Report(place_, Starts(field, value) + ", below its MINIMUMVALUE of " + GeneralText(field.MinimumValue()));
        } else if (field.MaximumValue() > 0 && value > field.MaximumValue()) {
            Report(place_, Starts(field, value) + ", above its MAXIMUMVALUE of " + GeneralText(field.MaximumValue()));
        }
    }

    void CheckGreater(const cPrgmBits& field) {
        const cPrgmBits* limit = part_.PrgmBits().Find(field.GreaterBitName());
        if (limit == nullptr) {
            return;
        }
        const double value = field.Value();
        const double bound = limit->Value();
        if (field.GreaterEqual() ? value < bound : value > bound) {
            Report(place_, Starts(field, value) + (field.GreaterEqual() ? ", below '" : ", above '") + limit->ID() +
                               "', which starts at " + GeneralText(bound));
        }
    }

    cPart& part_;
    PartFile& file_;
    int place_ = 0;   ///< Of the register of the field at hand, counted from 1.
};

}   // namespace

void CheckStartValues(cPart& part, PartFile& file) {
    StartCheck(part, file).Run();
}
