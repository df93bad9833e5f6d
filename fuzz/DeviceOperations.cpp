#include "DeviceOperations.h"

#include <array>
#include <bit>
#include <string>
#include <vector>

#include "FuzzInput.h"
#include "burst/BurstText.h"
#include "burst/cBurst.h"
#include "core/Errors.h"
#include "core/FieldEntry.h"
#include "core/LineUse.h"
#include "core/Numbers.h"
#include "core/cPart.h"
#include "pll/EntryTexts.h"
#include "pll/FrequencyEntry.h"
#include "pll/PLLSpinners.h"
#include "pll/StepCommands.h"
#include "pll/cPLL.h"

namespace {

/// One of the collection, or null where it is empty.
template <class T>
T* Any(Collection<T>& all, FuzzInput& input) {
    return all.Count() == 0 ? nullptr : all.Find(1 + input.Byte() % all.Count());
}

void Change(cPrgmBits& field, unsigned operation, FuzzInput& input) {
    switch (operation) {
        case 0:
            field.Value(input.Number());
            break;
        case 1:
            field.BitValue(input.Number());
            break;
        case 2:
            field.Increment();
            break;
        case 3:
            field.Decrement();
            break;
        case 4:
            field.ToggleBit();
            break;
        default:
            field.SetNegative();
            field.SetPositive();
    }
}

/// What the registers hold, to the bit: it may be no number.
std::vector<std::uint64_t> Held(const cPart& part) {
    std::vector<std::uint64_t> held;
    for (const cRegister& one : part.Registers()) {
        held.push_back(std::bit_cast<std::uint64_t>(one.Value()));
    }
    return held;
}

void OnField(cPrgmBits& field, FuzzInput& input) {
    constexpr unsigned kChanges = 6;
    switch (const unsigned operation = input.Below(8)) {
        default: {
            const auto before = Held(field.Parent());
            try {
                Change(field, operation, input);
            } catch (const UserError&) {
                Expect(Held(field.Parent()) == before, "an operation that fails has changed nothing");
            }
            break;
        }
        case kChanges:
            if (const auto asked = ParseFieldEntry(field, input.Text())) {
                field.Value(*asked);
                FieldEntryNote(field, *asked);
            }
            break;
        case kChanges + 1:
            FieldLimits(field);
            ParseFieldEntry(field, field.Text());
            static_cast<void>(field.Maximum() + field.Minimum() + field.TotalLength() + field.PolarityValue());
    }
}

void OnRegister(cRegister& one, FuzzInput& input) {
    switch (input.Below(5)) {
        case 0:
            one.Value(input.Number());
            break;
        case 1:
            one.ToggleBit(input.Short());
            break;
        case 2:
            one.ClrBit(static_cast<std::int16_t>(input.Byte()));
            break;
        case 3: {
            const double bits = input.Number();
            const std::int16_t position = static_cast<std::int16_t>(input.Below(70) - 2);
            one.SetBits(bits, position, static_cast<std::int16_t>(input.Below(70)), input.Flag());
            break;
        }
        default:
            static_cast<void>(one.GetBits(input.Short(), input.Short(), input.Flag()));
            static_cast<void>(one.RegisterString());
    }
}

void OnPLL(cPart& part, FuzzInput& input) {
    const int index = static_cast<int>(input.Below(4));
    const auto box = static_cast<EntryBox>(input.Below(7));
    switch (input.Below(6)) {
        case 0:
            Enter(part, index, box, GeneralText(input.Number()), input.Flag());
            break;
        case 1:
            Spin(part, index, static_cast<PLLSpinner>(input.Below(5)), input.Flag(), GeneralText(input.Number()));
            break;
        case 2:
            input.Flag() ? StepN(part, index, input.Flag() ? 10 : -1, GeneralText(input.Number()))
                         : StepNumerator(part, index, input.Flag());
            break;
        case 3:
            EntryHint(part, index, box);
            break;
        case 4:
            SetFrequency(part, index, static_cast<EntryBox>(input.Below(3)), input.Text());
            break;
        default:
            if (cPLL* pll = LoadedPLL(part, index)) {
                pll->XtalFrequency(input.Number());
                pll->NValue(input.Number());
                pll->RValue(input.Number());
                pll->PDFrequency(input.Number());
                pll->VCOFrequency(input.Number());
            }
    }
}

void OnWiring(cPart& part, FuzzInput& input) {
    switch (input.Below(7)) {
        case 0:
            part.RegisterLength(static_cast<std::int16_t>(input.Below(60)));
            break;
        case 1:
            part.SBIEnable(input.Flag());
            break;
        case 2:
            part.HighByte(input.Flag());
            part.InvertClock(input.Flag());
            break;
        case 3:
            part.ClockPosition(input.Short());
            part.DataPosition(input.Short());
            part.LEPosition(input.Short());
            break;
        case 4:
            part.PortAddress(input.Short());
            break;
        case 5:
            part.OutputPinValue(input.Short());
            break;
        default:
            if (cPrgmPin* pin = Any(part.PrgmPins(), input)) {
                pin->Position(static_cast<std::int16_t>(input.Below(16)));
                pin->Toggle();
            }
            LineUses(part);
    }
}

void Load(cPart& part, FuzzInput& input) {
    switch (input.Below(6)) {
        case 0:
            part.LoadAll();
            break;
        case 1:
            part.LoadChanges();
            break;
        case 2:
            part.LoadRegisterNumber(static_cast<std::int16_t>(input.Below(8)));
            break;
        case 3:
            part.UpdateOutputPins();
            break;
        case 4:
            part.LoadValue(input.Number());
            break;
        default:
            part.ReadRegister(input.Short());
    }
}

void OnBurst(cPart& part, FuzzInput& input) {
    const auto kind = static_cast<std::int16_t>(input.Below(7));
    const cRegister* loaded = Any(part.Registers(), input);
    const std::string name = kind == BurstKind::Delay ? std::to_string(input.Byte()) : loaded ? loaded->ID() : "none";
    const auto position = static_cast<std::int16_t>(input.Below(8));
    switch (input.Below(8)) {
        case 0:
        case 1:
            part.AddBurstCommand(name, kind);
            break;
        case 2:
            part.AddBurstCommand(name, kind, position);
            break;
        case 3:
            part.ChangeBurstCommand(position, name, kind);
            break;
        case 4:
            part.DeleteBurstCommand(position);
            break;
        case 5:
            part.RestoreBurstCommand(position);
            break;
        case 6:
            part.RunBurstCommands();
            break;
        default:
            BurstText(part, input.Flag());
    }
}

void OperateOnce(cPart& part, FuzzInput& input) {
    switch (input.Below(8)) {
        case 0:
        case 1:
            if (cPrgmBits* field = Any(part.PrgmBits(), input)) {
                OnField(*field, input);
            }
            break;
        case 2:
            if (cRegister* one = Any(part.Registers(), input)) {
                OnRegister(*one, input);
            }
            break;
        case 3:
            OnPLL(part, input);
            break;
        case 4:
            OnWiring(part, input);
            break;
        case 5:
            Load(part, input);
            break;
        case 6:
            OnBurst(part, input);
            break;
        default:
            part.UpdateDisplays();
    }
}

}   // namespace

void OperateDevice(cPart& part, FuzzInput& input) {
    while (!input.Empty()) {
        IgnoringFailures([&] { OperateOnce(part, input); });
        Expect(!part.Updating(), "no redraw is left running");
        Expect(!part.BurstRunning(), "no burst is left running");
        Expect(part.FieldVisits() == 0, "no field is left visited");
    }
}
