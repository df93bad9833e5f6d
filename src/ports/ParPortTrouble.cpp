#include "ports/ParPortTrouble.h"

static constexpr const char* kPortsFolder = "/proc/sys/dev/parport";

static std::string Joined(const std::vector<std::string>& words, const char* between) {
    std::string text;
    for (const std::string& word : words) {
        text += (text.empty() ? "" : between) + word;
    }
    return text;
}

static std::string MissingModules(PortCalls& calls) {
    std::vector<std::string> missing;
    for (const char* module : {"parport_pc", "ppdev"}) {
        if (calls.Names(std::string("/sys/module/") + module).empty()) {
            missing.emplace_back(module);
        }
    }
    return Joined(missing, " ");
}

std::string NoParPort(PortCalls& calls, const std::string& device) {
    if (const std::string missing = MissingModules(calls); !missing.empty()) {
        return "no such device, for the kernel's modules aren't loaded: sudo modprobe -a " + missing;
    }
    std::vector<std::string> ports;
    for (const std::string& name : calls.Names(kPortsFolder)) {
        if (name.starts_with("parport") && "/dev/" + name != device) {
            ports.push_back("/dev/" + name);
        }
    }
    if (!ports.empty()) {
        return "no such device, but there is " + Joined(ports, ", ") + ": name it as DEVICE in tarnwick.ini";
    }
    return "the kernel found no parallel port: switch it on in the firmware's set-up or put the card in, then "
           "sudo modprobe -r parport_pc; sudo modprobe parport_pc";
}

std::string NoParPortRights(PortCalls& calls, const std::string& device) {
    const DeviceRights rights = calls.Rights(device.c_str());
    const std::string denied = "permission denied for the user " + rights.user + ": ";
    if (!rights.groupWrites) {
        return denied + "no group may write the device, install 70-tarnwick-parport.rules as docs/ports.md tells";
    }
    if (rights.member) {
        return denied + "the group " + rights.group + " doesn't suffice, look for access lists: getfacl " + device;
    }
    if (rights.listed) {
        return denied + "you are in the group " + rights.group + " by now, log out and in again";
    }
    return denied + "sudo adduser " + rights.user + " " + rights.group + ", then log out and in again";
}

std::string ParPortHeld(PortCalls& calls, const std::string& device, const std::string& holder) {
    if (!holder.starts_with("ppdev")) {
        return "held by the driver " + holder + ": wait for its end, or sudo modprobe -r " + holder;
    }
    const std::vector<std::string> users = calls.Users(device);
    return users.empty() ? "held by another program: find it with sudo fuser -v " + device + " and end it"
                         : "held by another program, end it: " + Joined(users, ", ");
}

std::string ParPortDrivers(unsigned number) {
    return std::string(kPortsFolder) + "/parport" + std::to_string(number) + "/devices";
}
