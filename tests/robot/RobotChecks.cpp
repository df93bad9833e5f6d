#include "RobotChecks.h"

#include <QCheckBox>
#include <QComboBox>
#include <QPushButton>
#include <algorithm>
#include <bit>
#include <cmath>
#include <sstream>

#include "burst/cBurst.h"
#include "core/Errors.h"
#include "core/Numbers.h"
#include "pll/cPLL.h"
#include "support/TestPart.h"
#include "ui/bits/BitRow.h"
#include "ui/controls/TextBox.h"
#include "ui/registers/RegisterBitsBox.h"
#include "ui/window/frmPart.h"

namespace {

constexpr int kLeastPages = 5;
constexpr int kFirstPLLPage = 4;
constexpr int kRegistersPage = 1;
constexpr int kBitsPage = 2;

QString Name(const char* array, int index) {
    return QStringLiteral("%1(%2)").arg(QLatin1String(array)).arg(index);
}

}   // namespace

void RobotChecks::Equal(const std::string& what, const std::string& screen, const std::string& model) {
    ++checked_;
    if (screen != model) {
        Fail(what + " shows \"" + screen + "\", the device says \"" + model + "\"");
    }
}

/// What can't be read from the device isn't compared: the screen marks it in its own way.
template <class Read>
void RobotChecks::Compare(const std::string& what, const std::string& screen, Read read) {
    std::string model;
    if (IgnoringFailures([&] { model = read(); })) {
        Equal(what, screen, model);
    }
}

void RobotChecks::Before() {
    values_.clear();
    addresses_.clear();
    device_ = part_.DeviceNumber();
    page_ = window_.Pages().currentIndex();
    NoteValues();
    wiring_ = Wiring();
}

std::string RobotChecks::After(const std::vector<PortWrite>& writes) {
    faults_.clear();
    NoteValues();
    CheckIdle();
    CheckWrites(writes);
    CheckCounts();
    // What changes on one page redraws the others as far as the answer to that control says; not all of them do. And
    // showing a PLL repairs an R of 0, after the registers may have been drawn.
    if (!Stayed(kRegistersPage)) {
        part_.UpdateRegisterDisplay();
    }
    CheckRegisters();
    if (!Stayed(kBitsPage)) {
        part_.UpdateBitDisplay();
    }
    CheckFields();
    CheckPins();
    CheckPLLs();
    return faults_;
}

bool RobotChecks::Stayed(int page) const {
    return page_ == page && window_.Pages().currentIndex() == page;
}

void RobotChecks::NoteValues() {
    const int bits = std::clamp<int>(part_.RegisterLength(), 0, 63);
    const std::uint64_t mask = (std::uint64_t{1} << static_cast<unsigned>(bits)) - 1;
    for (const cRegister& one : part_.Registers()) {
        // Of a value that is too wide a load drops the lowest bits.
        const double value = one.Value();
        const int digits = value >= 1 && std::isfinite(value) ? std::ilogb(value) + 1 : 1;
        values_.insert(WholeBits(std::ldexp(value, -std::max(0, digits - bits))) & mask);
    }
    for (const cBurst& command : part_.BurstCmds()) {
        values_.insert(WholeBits(command.Register()) & mask);
    }
    addresses_.insert(static_cast<std::uint16_t>(part_.PortAddress()));
    const bool empty = part_.BurstCmds().Count() == 0;
    listed_ = empty ? RawWiring() : listed_;
    mixedList_ = !empty && (mixedList_ || listed_ != RawWiring());
}

void RobotChecks::CheckIdle() {
    if (part_.Updating()) {
        Fail("a redraw is left running");
    }
    if (part_.BurstRunning()) {
        Fail("a burst is left running");
    }
}

RobotWiring RobotChecks::RawWiring() const {
    return {part_.ClockPosition(), part_.DataPosition(), part_.LEPosition(), part_.RegisterLength(),
            part_.InvertClock()};
}

/// What the receiver sees is plain only where three lines do nothing else, without framing and pairs.
std::optional<RobotWiring> RobotChecks::Wiring() const {
    const RobotWiring wiring = RawWiring();
    int used = part_.OutputPinValue();
    for (const cPrgmPin& pin : part_.PrgmPins()) {
        used |= pin.Value();
    }
    for (const int line : {wiring.clock, wiring.data, wiring.le}) {
        if (std::popcount(static_cast<std::uint16_t>(line)) != 1 || line > 0x800 || (used & line) != 0) {
            return std::nullopt;
        }
        used |= line;
    }
    const bool frames = std::any_of(part_.BurstCmds().begin(), part_.BurstCmds().end(), [](const cBurst& command) {
        return command.Command() == BurstKind::StartSBI || command.Command() == BurstKind::StopSBI;
    });
    const bool plain = !frames && !mixedList_ && !part_.SBIEnable() && !part_.HighByte() && !part_.LEModeHigh();
    return plain && wiring.bits > 0 && wiring.bits < 54 ? std::optional(wiring) : std::nullopt;
}

void RobotChecks::CheckWrites(const std::vector<PortWrite>& writes) {
    if (writes.size() % 2 != 0) {
        Fail("half a port word was written");
        return;
    }
    for (std::size_t i = 0; i < writes.size(); i += 2) {
        const auto control = static_cast<std::uint16_t>(writes[i].port + kControlOffset);
        if (!addresses_.contains(writes[i].port) || writes[i + 1].port != control || writes[i + 1].value > 0x0F) {
            Fail("write " + std::to_string(i) + " is no word at the device's address");
            return;
        }
    }
    if (const auto now = Wiring(); now && now == wiring_ && device_ == part_.DeviceNumber()) {
        CheckLoads(writes, *now);
    }
}

void RobotChecks::CheckLoads(const std::vector<PortWrite>& writes, const RobotWiring& wiring) {
    std::vector<int> words;
    for (std::size_t i = 0; i < writes.size(); i += 2) {
        words.push_back((writes[i + 1].value ^ kInvertedControls) << 8 | writes[i].value);
    }
    std::string held;
    for (const std::uint64_t value : values_) {
        held += " " + HexText(value);
    }
    std::istringstream loads(Shifted(words, wiring.clock, wiring.data, wiring.le, wiring.inverted));
    const auto length = static_cast<std::size_t>(wiring.bits);
    for (std::string bits; std::getline(loads, bits, '|') && !loads.eof();) {
        if (bits.size() < length) {
            continue;   // LE rose without a load.
        }
        ++decoded_;
        const std::uint64_t value = std::stoull(bits.substr(bits.size() - length), nullptr, 2);
        if (!values_.contains(value)) {
            Fail("loaded " + HexText(value) + ", which no register holds: " + held);
            return;   // A burst has thousands.
        }
    }
}

int RobotChecks::Members(const char* array) const {
    int count = 0;
    while (window_.findChild<QWidget*>(Name(array, count)) != nullptr) {
        ++count;
    }
    return count;
}

void RobotChecks::CheckCounts() {
    const int plls = part_.PLLs().Count();
    Equal("the number of pages", std::to_string(window_.Pages().count()),
          std::to_string(std::max(kLeastPages, kFirstPLLPage + plls)));
    Equal("the number of VCO boxes", std::to_string(Members("txtVCO")), std::to_string(std::max(1, plls)));
    for (const char* array : {"txtRegBits", "lblRegName", "cmdLoadReg"}) {
        Equal(array, std::to_string(Members(array)), std::to_string(std::max(1, part_.Registers().Count())));
    }
    // Members that are left over from another device would have no place in the arrays, but stay on the page.
    const auto all = window_.findChildren<QCheckBox*>();
    const auto isPin = [](const QCheckBox* box) { return box->objectName().startsWith(QLatin1String("chkPrgmPin")); };
    Equal("the number of pin boxes", std::to_string(std::count_if(all.begin(), all.end(), isPin)),
          std::to_string(std::max(1, part_.PrgmPins().Count())));
    const auto nameless =
        std::count_if(all.begin(), all.end(), [](const auto* box) { return box->objectName().isEmpty(); });
    Equal("check boxes of an earlier device", std::to_string(nameless), "0");
    const auto boxes = window_.findChildren<RegisterBitsBox*>().size();
    Equal("rows of bits", std::to_string(boxes), std::to_string(std::max(1, part_.Registers().Count())));
}

void RobotChecks::CheckRegisters() {
    const bool lowFirst = window_.findChild<QPushButton*>(QStringLiteral("cmdBitOrder"))->text().startsWith('L');
    const BitRow bits(part_.RegisterLength(), part_.ControlLength(),
                      lowFirst ? BitRow::Order::LowFirst : BitRow::Order::HighFirst);
    for (int i = 0; i < part_.Registers().Count(); ++i) {
        const cRegister& one = part_.Registers().At(i + 1);
        const auto* row = window_.findChild<RegisterBitsBox*>(Name("txtRegBits", i));
        if (row != nullptr) {
            Equal("register " + one.ID(), row->text().toStdString(), bits.Text(one.Value()).toStdString());
        }
    }
}

void RobotChecks::CheckFields() {
    const auto field = [this](const QWidget* control) -> cPrgmBits& {
        return part_.PrgmBits().At(control->accessibleName().toStdString());
    };
    const auto each = [this](const char* array, auto check) {
        QWidget* control = nullptr;
        for (int i = 0; (control = window_.findChild<QWidget*>(Name(array, i))) != nullptr; ++i) {
            if (!control->isHidden() && control->isEnabled() && !part_.ID().empty()) {
                if (part_.PrgmBits().Find(control->accessibleName().toStdString()) == nullptr) {
                    Fail(std::string(array) + " stands for '" + control->accessibleName().toStdString() + "'");
                }
                check(control);
            }
        }
    };
    each("chkPrgmBit", [&](QWidget* control) {
        Compare("check box " + control->accessibleName().toStdString(),
                BooleanText(qobject_cast<QCheckBox*>(control)->isChecked()),
                [&] { return BooleanText(field(control).Value() != 0); });
    });
    each("txtCntrVal", [&](QWidget* control) {
        const auto* box = qobject_cast<TextBox*>(control);
        if (!box->UserChanged()) {
            Compare("counter " + box->accessibleName().toStdString(), box->text().toStdString(),
                    [&] { return field(control).Text(); });
        }
    });
    each("cmbBits", [&](QWidget* control) {
        const auto* list = qobject_cast<QComboBox*>(control);
        Compare("list " + list->accessibleName().toStdString(), std::to_string(list->currentIndex()), [&] {
            const double bits = field(control).BitValue();
            return std::to_string(bits < list->count() ? static_cast<int>(bits) : -1);
        });
    });
}

/// The page brings its pins into line when it shows.
void RobotChecks::CheckPins() {
    for (int i = 0; i < part_.PrgmPins().Count(); ++i) {
        const auto* box = window_.findChild<QCheckBox*>(Name("chkPrgmPin", i));
        if (box != nullptr && box->isVisible()) {
            Equal("pin " + box->accessibleName().toStdString(), BooleanText(box->isChecked()),
                  BooleanText(part_.PrgmPins().At(i + 1).Enabled()));
        }
    }
}

void RobotChecks::CheckPLLs() {
    for (int i = 0; i < part_.PLLs().Count(); ++i) {
        cPLL& pll = part_.PLLs().At(i + 1);
        const auto box = [&](const char* array, auto read) {
            const auto* control = window_.findChild<TextBox*>(Name(array, i));
            if (control != nullptr && !control->UserChanged()) {
                Compare(std::string(array) + " of " + pll.ID(), control->text().toStdString(),
                        [&] { return GeneralText(read()); });
            }
        };
        box("txtRCounter", [&] { return pll.RValue(); });
        box("txtNCounter", [&] { return pll.NValue(); });
        box("txtOsc", [&] { return pll.XtalFrequency(); });
        box("txtFpd", [&] { return pll.PDFrequency(); });
        box("txtVCO", [&] { return pll.VCOFrequency(); });
    }
}
