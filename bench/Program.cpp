#include "Program.h"

#include <filesystem>

Program::Program() {
    const std::filesystem::path folder = folder_.Path("");
    std::filesystem::copy(PARTS_DIR, folder);
    std::filesystem::copy(PROGRAM, folder / "tarnwick");
    const std::string log = "\nLOG=";
    std::string settings = folder_.Read("tarnwick.ini");
    settings.insert(settings.find(log) + log.size(), "port.log");
    folder_.File("tarnwick.ini", settings);
}

void Program::AddPart(const std::string& name, const std::string& contents) const {
    folder_.File(name + ".ini", contents);
}

void Program::Start(const QProcessEnvironment& environment) {
    QProcessEnvironment own = environment;
    own.insert(QStringLiteral("XDG_CONFIG_HOME"), QString::fromStdString(folder_.Path("config")));
    process_ = std::make_unique<Child>(QString::fromStdString(folder_.Path("tarnwick")), QStringList(), own);
}
