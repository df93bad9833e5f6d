#include <QFileDialog>
#include <QInputDialog>
#include <QLineEdit>
#include <algorithm>
#include <cerrno>
#include <cstdlib>
#include <cstring>
#include <filesystem>
#include <fstream>
#include <functional>
#include <iterator>
#include <map>

#include "ports/PortDrivers.h"
#include "ui/WindowFixture.h"

// The real window and the real port records on a small disk that gets full or read-only, or loses their folder.

namespace {

namespace fs = std::filesystem;

std::string Contents(const fs::path& path) {
    std::ifstream in(path, std::ios::binary);
    return {std::istreambuf_iterator<char>(in), {}};
}

/// What happens to the disk of a folder, and how it goes by: commands, run in the folder's parent with its name in $f.
struct Fault {
    const char* name;
    int reason;
    const char* begin;
    const char* end;
};

const std::vector<Fault> kFaults{
    {"full", ENOSPC, "! dd if=/dev/zero of=filler bs=4k 2>/dev/null", "rm filler"},
    // Over itself: what is open for writing, as the records are, keeps a disk from becoming read-only.
    {"read-only", EROFS, "mount --bind $f $f && mount -o remount,bind,ro $f", "umount $f"},
    {"removed", ENOENT, "cp -r $f kept && rm -r $f", "mv kept $f"}};

void Shell(const TempFolder& folder, const std::string& command) {
    const std::string path = folder.Path("");
    EXPECT_EQ(std::system(("cd " + path + "/.. && f=$(basename " + path + ") && " + command).c_str()), 0) << command;
}

class RealDisks : public WindowFixture {
public:
    RealDisks() {
        if (fs::space(folder.Path("")).capacity > 2'000'000) {
            throw std::runtime_error("this fills the disk: start it by small-disk.sh");
        }
        folder.File("tarnwick.ini",
                    "[MENUSINGPLL]\nCOUNT=2\nITEM00=ONE\nITEM01=TWO\n[RECENTPARTS]\nCOUNT=2\nITEM00=TWO\nITEM01=ONE\n");
        for (const char* name : {"ONE", "TWO"}) {
            WritePart(name, "[REGISTERS]\nCOUNT=1\nNAME00=A\nMASK00=0\nVALUE00=165\n" + std::string(5000, ';') + '\n');
        }
        folder.File("set-up.mac", "old");
    }

    [[nodiscard]] std::map<std::string, std::string> Files() const {
        std::map<std::string, std::string> files;
        for (const auto& entry : fs::directory_iterator(folder.Path(""))) {
            files[entry.path().filename().string()] = Contents(entry.path());
        }
        return files;
    }

    // The saves. Each gives what the user is told, if it fails.

    QString LeaveDevice(bool /*fails*/) {
        part.ClearPLL();
        return Window().Status().NoteText();
    }
    QString CloseWindow(bool fails) {
        const QString heard = Hear(fails, [this] { Window().close(); });
        EXPECT_EQ(Window().isVisible(), fails);
        Window().show();
        return heard;
    }
    QString SaveMode(bool fails) {
        Answer<QInputDialog>([](QInputDialog& box) { box.accept(); });
        return Hear(fails, [this] { Choose("mnuAddMode"); });
    }
    QString SaveSetup(bool fails) {
        Answer<QFileDialog>([this](QFileDialog& box) {
            box.setOption(QFileDialog::DontConfirmOverwrite);
            box.findChild<QLineEdit*>()->setText(QString::fromStdString(folder.Path("set-up.mac")));
            QMetaObject::invokeMethod(&box, "accept");
        });
        return Hear(fails, [this] { Choose("mnuSave"); });
    }

    struct Save {
        const char* file;
        const char* device;   ///< The one to be saved, or that the recent list begins with.
        QString (RealDisks::*run)(bool fails);
    };

    void Prepare(const Save& save) {
        const bool recent = save.file == std::string("tarnwick.ini");
        Choose(recent ? "mnuSingQRVxxxx(0)" : save.device);
        Choose(save.device);   // Saves the recent list as the first choice left it.
        Child<QAction>("mnuSaveDeviceSettings")->setChecked(!recent);
        Register("A").Value(++value_);
    }

    void Check(const Save& save, const Fault& fault) {
        Prepare(save);
        const auto before = Files();
        Shell(folder, fault.begin);
        const std::string told = (this->*save.run)(true).toStdString();
        Shell(folder, fault.end);
        EXPECT_NE(told.find(folder.Path(save.file) + ": " + std::strerror(fault.reason)), std::string::npos) << told;
        EXPECT_TRUE(Files() == before);

        Prepare(save);
        EXPECT_EQ((this->*save.run)(false), "");
        EXPECT_NE(Files()[save.file], before.at(save.file));
        EXPECT_EQ(Files().size(), before.size());
    }

private:
    /// What the box says that a failing save opens. It is left by the answer that changes nothing.
    QString Hear(bool fails, const std::function<void()>& save) {
        QString heard;
        if (fails) {
            Answer<QMessageBox>([&heard](QMessageBox& box) {
                heard = box.text();
                box.accept();
            });
        }
        save();
        Settle();
        return heard;
    }

    int value_ = 0;
};

TEST_F(RealDisks, ASaveThatFailsTellsWhyLeavesTheFileWholeAndWorksAgainLater) {
    const std::vector<Save> saves{{"ONE.ini", "mnuSingQRVxxxx(0)", &RealDisks::LeaveDevice},
                                  {"tarnwick.ini", "mnuSingQRVxxxx(1)", &RealDisks::LeaveDevice},
                                  {"ONE.ini", "mnuSingQRVxxxx(0)", &RealDisks::CloseWindow},
                                  {"ONE.ini", "mnuSingQRVxxxx(0)", &RealDisks::SaveMode},
                                  {"set-up.mac", "mnuSingQRVxxxx(0)", &RealDisks::SaveSetup}};
    for (const Save& save : saves) {
        for (const Fault& fault : kFaults) {
            SCOPED_TRACE(std::string(save.file) + ", disk " + fault.name);
            // Without its file there is no recent list.
            if (fault.reason != ENOENT || save.file != std::string("tarnwick.ini")) {
                Check(save, fault);
            }
        }
    }
}

/// Writes to the port until it is idle. Gives the lines of the log.
std::ptrdiff_t Write(Port& port, int count, const std::string& log) {
    for (int i = 0; i < count; ++i) {
        port.WritePort(0x378, static_cast<std::uint8_t>(i));
    }
    port.Idle();
    const std::string text = Contents(log);
    EXPECT_TRUE(text.empty() || text.ends_with('\n')) << "a torn line";
    return std::ranges::count(text, '\n');
}

TEST_F(RealDisks, ARecordThatFailsTellsWhyEndsWithAWholeLineAndWorksAtTheNextStart) {
    const std::string log = folder.Path("port.log");
    for (const Fault& fault : kFaults) {
        for (const bool running : {false, true}) {
            SCOPED_TRACE(std::string(fault.name) + (running ? " while recording" : " at the start"));
            const MadePort made = MakePort({.log = "port.log", .trace = "port.vcd"}, folder.Path(""));
            if (running) {
                made.port->OpenTVicPort();
                EXPECT_EQ(Write(*made.port, 10, log), 10);
            }
            Shell(folder, fault.begin);
            if (!running) {
                made.port->OpenTVicPort();
            }
            const std::ptrdiff_t lines = Write(*made.port, 1000, log);
            const std::string told = made.port->Status().summary;
            Shell(folder, fault.end);
            // What is open already may still be written.
            const bool goesOn = running && fault.reason == EROFS;
            const std::string reason = running && fault.reason == ENOENT ? "deleted" : std::strerror(fault.reason);
            for (const std::string& file : {"log " + log, "trace " + folder.Path("port.vcd")}) {
                EXPECT_EQ(told.find(file + ": ") == std::string::npos, goesOn) << told;
                EXPECT_EQ(told.find(reason) == std::string::npos, goesOn) << told;
            }
            EXPECT_EQ(lines == 1010, goesOn);
            made.port->CloseTVicPort();
            made.port->OpenTVicPort();
            EXPECT_EQ(Write(*made.port, 1000, log), 1000);
            EXPECT_EQ(made.port->Status().summary.find("lost"), std::string::npos);
            fs::remove(log);
        }
    }
}

}   // namespace
