#include <sys/resource.h>

#include <QCoreApplication>
#include <cstdio>
#include <memory>

#include "Bus.h"
#include "Client.h"
#include "Growth.h"
#include "LargeDevice.h"
#include "OneProcessor.h"
#include "Program.h"
#include "Timing.h"

namespace {

struct Times {
    std::vector<double> get;
    std::vector<double> visit;
    std::vector<double> attach;
    std::vector<double> end;
};

void GetValue(const Client& client, const QString& application) {
    client.CallAt(application, "GetPrgmBitValue", {QStringLiteral("F7")});
}

/// The program with so many clients, each with an object of its own, from its start to its end. The many are held by
/// another process: they cost this one nothing.
void OneLife(int clients, Times& times) {
    constexpr int kFields = 10;
    constexpr int kCalls = 1000;
    constexpr int kVisits = 20;
    constexpr int kMore = 5;
    const OneProcessor processor;
    const Bus bus;
    Program program;
    program.AddPart("BENCH", LargeDevice(1, kFields, kFields - 2, 1));
    program.Start(bus.Environment());
    Client one(bus.Address());
    one.WaitForProgram();
    one.Attach();
    one.Call("SelectPart", {QStringLiteral("BENCH")});
    Child holder(QCoreApplication::applicationFilePath(),
                 {QStringLiteral("hold"), bus.Address(), QString::number(clients - 1)}, bus.Environment());
    static_cast<void>(holder.FirstLine());
    for (int i = 0; i < kCalls; ++i) {
        times.get.push_back(Seconds([&one] { GetValue(one, one.Application()); }));
    }
    for (int i = 0; i < kVisits; ++i) {
        times.visit.push_back(Seconds([&] { GetValue(Client(bus.Address()), one.Application()); }));
    }
    std::vector<std::unique_ptr<Client>> more;
    for (int i = 0; i < kMore; ++i) {
        times.attach.push_back(Seconds([&] {
            more.push_back(std::make_unique<Client>(bus.Address()));
            more.back()->Attach();
        }));
    }
    times.end.push_back(Seconds([&] {
        one.Release();
        program.Process().WaitForEnd();
    }));
}

std::vector<double> WithClients(int clients) {
    constexpr int kLives = 3;
    Times times;
    for (int i = 0; i < kLives; ++i) {
        OneLife(clients, times);
    }
    return {Median(times.get), Median(times.visit), Median(times.attach), Median(times.end)};
}

/// Each client is an open file.
void AllowManyFiles() {
    rlimit limit{};
    ::getrlimit(RLIMIT_NOFILE, &limit);
    limit.rlim_cur = limit.rlim_max;
    ::setrlimit(RLIMIT_NOFILE, &limit);
}

}   // namespace

void HoldClients(const QString& bus, int clients) {
    AllowManyFiles();
    std::vector<std::unique_ptr<Client>> held;
    for (int i = 0; i < clients; ++i) {
        held.push_back(std::make_unique<Client>(bus));
        held.back()->Attach();
    }
    std::puts("held");
    std::fflush(stdout);
    QCoreApplication::exec();
}

std::vector<Growth> ClientGrowth() {
    AllowManyFiles();   // Of the bus, which takes the limit over.
    return Grow({{"GetPrgmBitValue of one", Expected::Constant},
                 {"one more comes, calls another's object and leaves", Expected::Constant},
                 {"one more comes and attaches", Expected::Constant},
                 {"one releases its object: the program ends", Expected::Proportional}},
                WithClients);
}
