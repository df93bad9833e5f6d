#include "Bus.h"
#include "Client.h"
#include "Figures.h"
#include "LargeDevice.h"
#include "OneProcessor.h"
#include "Program.h"
#include "Timing.h"

namespace {

constexpr int kRegisters = 6;
constexpr int kFields = 40;

/// A call is short beside what disturbs it: a round is the median of many.
double MedianCall(const std::function<void()>& call) {
    constexpr int kCalls = 200;
    std::vector<double> times;
    for (int i = 0; i < kCalls; ++i) {
        times.push_back(Seconds(call));
    }
    return Median(times);
}

void Measure(Figure& figure, const Client& client, const std::function<void()>& call) {
    constexpr int kRounds = 21;
    std::vector<Pair> pairs;
    for (int round = 0; round < kRounds; ++round) {
        const double ours = MedianCall(call);
        pairs.push_back({ours, MedianCall([&client] { client.Ping(); })});
    }
    Fill(figure, pairs, ReadableTime);
}

void MeasureAll(std::vector<Figure>& figures) {
    const OneProcessor processor;
    const Bus bus;
    Program program;
    program.AddPart("BENCH", LargeDevice(kRegisters, kFields, kFields - 2, 1));
    program.Start(bus.Environment());
    Client client(bus.Address());
    client.WaitForProgram();
    client.Attach();
    client.Call("SelectPart", {QStringLiteral("BENCH")});
    int written = 0;
    const auto get = [&client] { client.Call("GetPrgmBitValue", {QStringLiteral("F7")}); };
    const auto set = [&client, &written] {
        constexpr int kValues = 8;
        client.Call("SetPrgmBitValue", {QStringLiteral("F7"), static_cast<double>(++written % kValues)});
    };
    // The pages in front are those that show the field: each change is painted.
    client.Call("SelectTab", {QStringLiteral("Registers")});
    Measure(figures[0], client, get);
    Measure(figures[1], client, set);
    client.Call("SelectTab", {QStringLiteral("Bits/Pins")});
    Measure(figures[2], client, set);
    client.Release();
    program.Process().WaitForEnd();
}

}   // namespace

std::vector<Figure> AutomationFigures() {
    const std::string ping = "Peer.Ping of the service";
    const std::string change = "SetPrgmBitValue, drawn and loaded; the page in front: ";
    std::vector<Figure> figures{
        {"GetPrgmBitValue", ping, 2}, {change + "Registers", ping, 6}, {change + "Bits/Pins", ping, 6}};
    FillOrTell(figures, [&figures] { MeasureAll(figures); });
    return figures;
}
