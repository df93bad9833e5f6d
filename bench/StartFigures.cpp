#include "Bus.h"
#include "Client.h"
#include "Figures.h"
#include "Program.h"
#include "Screen.h"
#include "Timing.h"
#include "core/Numbers.h"

// Both programs are started in turn on a virtual screen that is black. A window is shown when the middle of the screen,
// which it covers, isn't black any more: it is mapped and painted then.

namespace {

const QString kDevice = QStringLiteral("QRV8320");   // The largest that is shipped.

/// What one start of a program took.
struct Start {
    double shown;    ///< Seconds, the new process included.
    double memory;   ///< kB resident when it had been idle for a while.
};

double SecondsUntilShown(const Screen& screen, const std::function<void()>& start) {
    WaitFor("the window before to go", [&screen] { return screen.IsBlack(); });
    return Seconds([&] {
        start();
        WaitFor("a window", [&screen] { return !screen.IsBlack(); });
    });
}

double IdleMemory(const Child& process) {
    constexpr double kSettles = 0.5;
    Sleep(kSettles);
    return process.Memory();
}

/// Each page is looked at, so that all has been built that a page builds when it is first seen.
void ShowAllPages(const Client& client) {
    client.Call("SelectPart", {kDevice});
    for (const char* page : {"Port Setup", "Registers", "Bits/Pins", "BurstMode", "RF PLL"}) {
        client.Call("SelectTab", {QString::fromLatin1(page)});
        constexpr double kPainted = 0.05;
        Sleep(kPainted);
    }
}

Start StartOurs(const Screen& screen, const Bus& bus) {
    Program program;
    const double shown = SecondsUntilShown(screen, [&] { program.Start(bus.Environment(screen.Display())); });
    Client client(bus.Address());
    client.WaitForProgram();
    client.Attach();
    ShowAllPages(client);
    const double memory = IdleMemory(program.Process());
    client.Release();
    program.Process().WaitForEnd();
    return {shown, memory};
}

Start StartEmpty(const Screen& screen, const Bus& bus) {
    std::unique_ptr<Child> window;
    const double shown = SecondsUntilShown(screen, [&] {
        window =
            std::make_unique<Child>(QStringLiteral(EMPTY_WINDOW), QStringList(), bus.Environment(screen.Display()));
    });
    return {shown, IdleMemory(*window)};
}

void MeasureAll(std::vector<Figure>& figures) {
    constexpr int kPairs = 15;
    const Bus bus;
    const Screen screen;
    std::vector<Pair> shown;
    std::vector<Pair> memory;
    for (int i = 0; i <= kPairs; ++i) {
        const Start ours = StartOurs(screen, bus);
        const Start empty = StartEmpty(screen, bus);
        if (i > 0) {   // The first pair has read both from the disk.
            shown.push_back({ours.shown, empty.shown});
            memory.push_back({ours.memory, empty.memory});
        }
    }
    Fill(figures[0], shown, ReadableTime);
    Fill(figures[1], memory, [](double kilobytes) { return GeneralText(RoundHalfEven(kilobytes / 100) / 10) + " MB"; });
}

}   // namespace

std::vector<Figure> StartFigures() {
    const std::string empty = "the same of an empty window of that size";
    std::vector<Figure> figures{{"start, from the new process to the window shown", empty, 2},
                                {"resident memory with " + kDevice.toStdString() + ", all pages seen", empty, 1.5}};
    FillOrTell(figures, [&figures] { MeasureAll(figures); });
    return figures;
}
