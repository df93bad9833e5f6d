#include "automation/DeviceInterfaces.h"
#include "automation/ModelInterface.h"
#include "automation/Paths.h"
#include "burst/cBurst.h"
#include "core/cPart.h"
#include "pll/cPLL.h"

// What the device consists of. Parent and Part both are the one device object.

namespace {

QDBusObjectPath PartPath() {
    return QDBusObjectPath(kPartPath);
}

void AddFieldProperties(ModelInterface<cPrgmBits>& face) {
    using F = cPrgmBits;
    face.ReadWrite<std::string>("Description", &F::Description, &F::Description);
    face.WriteOnly<std::string>("StepValueBitName", &F::StepValueBitName);
    face.WriteOnly<std::string>("GreaterBitName", &F::GreaterBitName);
    face.WriteOnly<bool>("GreaterEqual", &F::GreaterEqual);
    face.ReadWrite<double>("MinimumValue", &F::MinimumValue, &F::MinimumValue);
    face.ReadWrite<double>("MaximumValue", &F::MaximumValue, &F::MaximumValue);
    face.ReadWrite<double>("ZeroValue", &F::ZeroValue, &F::ZeroValue);
    face.ReadWrite<double>("StepValue", &F::StepValue, &F::StepValue);
    face.ReadWrite<bool>("Polarity", &F::Polarity, &F::Polarity);
    face.ReadWrite<std::int16_t>("PolarityPosition", &F::PolarityPosition, &F::PolarityPosition);
    face.ReadWrite<bool>("PolarityInverted", &F::PolarityInverted, &F::PolarityInverted);
    face.ReadWrite<std::string>("FormatString", &F::FormatString, &F::FormatString);
    face.ReadWrite<bool>("DataInverted", &F::DataInverted, &F::DataInverted);
    face.ReadWrite<std::string>("ID", &F::ID, &F::ID);
    face.Add<QDBusObjectPath>(
        "Parent", [](F&) { return PartPath(); }, nullptr);
    face.Add<QDBusObjectPath>(
        "Part", [](F&) { return PartPath(); }, nullptr);
    face.ReadWrite<std::string>("Register", &F::Register, &F::Register);
    face.ReadWrite<std::int16_t>("Position", &F::Position, &F::Position);
    face.ReadWrite<std::int16_t>("Length", &F::Length, &F::Length);
    face.ReadWrite<bool>("Display", &F::Display, &F::Display);
    face.ReadWrite<std::string>("LinkedBits", &F::LinkedBits, &F::LinkedBits);
    face.WriteOnly<std::string>("MirrorBits", &F::MirrorBits);
    face.WriteOnly<std::string>("Units", &F::Units);
    face.ReadOnly<std::int16_t>("ArrayCount", &F::ArrayCount);
    face.ReadWrite<double>("BitValue", &F::BitValue, &F::BitValue);
    face.ReadWrite<double>("Value", &F::Value, &F::Value);
    face.Add<std::string>(
        "Text", [](F& f) { return f.Text(); }, nullptr);
    face.ReadOnly<std::int16_t>("PolarityValue", &F::PolarityValue);
    face.ReadOnly<std::int16_t>("TotalLength", &F::TotalLength);
}

void AddFieldMethods(ModelInterface<cPrgmBits>& face) {
    using F = cPrgmBits;
    face.Method("GetStringArray", "", "highest texts", [](F& f) {
        std::vector<std::string> texts;
        const std::int16_t highest = f.GetStringArray(texts);
        return std::pair(highest, texts);
    });
    face.Method("ToggleBit", "", "", &F::ToggleBit);
    face.Method("SetPositive", "", "", &F::SetPositive);
    face.Method("SetNegative", "", "", &F::SetNegative);
    face.Method("Increment", "", "", &F::Increment);
    face.Method("Decrement", "", "", &F::Decrement);
    face.Method("Maximum", "", "result", &F::Maximum);
    face.Method("Minimum", "", "result", &F::Minimum);
    face.Method("InitializeValueArray", "values", "", &F::InitializeValueArray);
    face.Method("InitializeStringArray", "texts", "", &F::InitializeStringArray);
    face.Method("SetStringArray", "texts", "", &F::SetStringArray);
    face.Method("SetValueArray", "values", "", &F::SetValueArray);
}

}   // namespace

Interface RegisterInterface() {
    using R = cRegister;
    ModelInterface<R> face("com.ostrel.Tarnwick2x.Register");
    face.Annotate(kEmitsChanged, "false");
    face.ReadWrite<double>("Value", &R::Value, &R::Value);
    face.ReadWrite<std::int32_t>("Mask", &R::Mask, &R::Mask);
    face.ReadWrite<bool>("LowByte", &R::LowByte, &R::LowByte);
    face.ReadWrite<std::string>("HighLowRegister", &R::HighLowRegister, &R::HighLowRegister);
    face.ReadWrite<std::string>("ID", &R::ID, &R::ID);
    face.Add<QDBusObjectPath>(
        "Parent", [](R&) { return PartPath(); }, nullptr);
    // Reading it has an effect, so that it is a method: who only looks through the properties must not change them.
    face.Method("Change", "", "result", [](R& r) { return r.Change(); });
    face.WriteOnly<bool>("Change", &R::Change);
    face.Method("ClrBit", "Position", "", &R::ClrBit);
    face.Method("RegisterString", "", "result", &R::RegisterString);
    face.Method("SetBits", "bits Position Bitlength inv", "", &R::SetBits);
    face.Method("SetBits", "bits Position Bitlength", "",
                [](R& r, double bits, std::int16_t at, std::int16_t length) { r.SetBits(bits, at, length); });
    face.Method("GetBits", "Position Bitlength inv", "result", &R::GetBits);
    face.Method("GetBits", "Position Bitlength", "result",
                [](R& r, std::int16_t at, std::int16_t length) { return r.GetBits(at, length); });
    face.Method("ToggleBit", "Position", "", &R::ToggleBit);
    return face;
}

Interface PrgmBitsInterface() {
    ModelInterface<cPrgmBits> face("com.ostrel.Tarnwick2x.PrgmBits");
    face.Annotate(kEmitsChanged, "false");
    AddFieldProperties(face);
    AddFieldMethods(face);
    return face;
}

Interface PrgmPinInterface() {
    using P = cPrgmPin;
    ModelInterface<P> face("com.ostrel.Tarnwick2x.PrgmPin");
    face.Annotate(kEmitsChanged, "false");
    face.ReadWrite<std::string>("ID", &P::ID, &P::ID);
    face.Add<QDBusObjectPath>(
        "Parent", [](P&) { return PartPath(); }, nullptr);
    face.Add<QDBusObjectPath>(
        "Part", [](P&) { return PartPath(); }, nullptr);
    face.ReadWrite<bool>("Trigger", &P::Trigger, &P::Trigger);
    face.ReadWrite<std::int16_t>("Position", &P::Position, &P::Position);
    face.ReadOnly<std::int16_t>("Value", &P::Value);
    face.ReadWrite<bool>("Enabled", &P::Enabled, &P::Enabled);
    face.Method("Toggle", "", "", &P::Toggle);
    return face;
}

Interface PLLInterface() {
    using L = cPLL;
    ModelInterface<L> face("com.ostrel.Tarnwick2x.PLL");
    face.Annotate(kEmitsChanged, "false");
    face.ReadOnly<std::string>("NumeratorName", &L::NumeratorName);
    face.ReadOnly<std::string>("DenominatorName", &L::DenominatorName);
    face.ReadOnly<std::string>("RCounterName", &L::RCounterName);
    face.ReadOnly<std::string>("NCounterName", &L::NCounterName);
    face.WriteOnly<bool>("VCOFixed", &L::VCOFixed);
    face.ReadWrite<bool>("FractCarry", &L::FractCarry, &L::FractCarry);
    face.Add<QDBusObjectPath>(
        "Part", [](L&) { return PartPath(); }, nullptr);
    face.Add<QDBusObjectPath>(
        "Parent", [](L&) { return PartPath(); }, nullptr);
    face.WriteOnly<std::string>("NCounter", &L::NCounter);
    face.WriteOnly<std::string>("RCounter", &L::RCounter);
    face.WriteOnly<std::string>("Numerator", &L::Numerator);
    face.WriteOnly<std::string>("Denominator", &L::Denominator);
    face.ReadWrite<std::string>("ID", &L::ID, &L::ID);
    face.ReadWrite<double>("XtalFrequency", &L::XtalFrequency, &L::XtalFrequency);
    face.Add<double>(
        "VCOFrequency", [](L& l) { return l.VCOFrequency(); }, [](L& l, double v) { l.VCOFrequency(v); });
    face.Add<double>(
        "PDFrequency", [](L& l) { return l.PDFrequency(); }, [](L& l, double v) { l.PDFrequency(v); });
    face.ReadWrite<double>("NValue", &L::NValue, &L::NValue);
    face.ReadWrite<double>("RValue", &L::RValue, &L::RValue);
    face.ReadWrite<std::int32_t>("NumValue", &L::NumValue, &L::NumValue);
    face.ReadWrite<std::int32_t>("DenValue", &L::DenValue, &L::DenValue);
    face.Add<double>(
        "Resolution", [](L& l) { return l.Resolution(); }, nullptr);
    return face;
}

Interface BurstCommandInterface() {
    using B = cBurst;
    ModelInterface<B> face("com.ostrel.Tarnwick2x.BurstCommand");
    face.Annotate(kEmitsChanged, "false");
    face.ReadWrite<std::int16_t>("Command", &B::Command, &B::Command);
    face.ReadWrite<std::int32_t>("Delay", &B::Delay, &B::Delay);
    face.Add<std::string>(
        "Description", [](B& b) { return b.Description(); },
        [](B& b, const std::string& text) { b.Description(text); });
    face.WriteOnly<bool>("LowByte", &B::LowByte);
    face.Add<std::string>(
        "Pattern", [](B& b) { return b.Pattern(); }, nullptr);
    face.Add<QDBusObjectPath>(
        "Part", [](B&) { return PartPath(); }, nullptr);
    face.ReadWrite<double>("Register", &B::Register, &B::Register);
    face.Add<std::string>(
        "RegisterName", [](B& b) { return b.RegisterName(); },
        [](B& b, const std::string& name) { b.RegisterName(name); });
    face.ReadWrite<std::int16_t>("OutputPinValue", &B::OutputPinValue, &B::OutputPinValue);
    face.Method("Execute", "", "", &B::Execute);
    return face;
}
