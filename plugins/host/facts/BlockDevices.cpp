#include "Commands.h"
#include "HostError.h"
#include "TextTools.h"

#include <algorithm>

namespace HostFacts {

namespace {

struct Device {
    std::string name;
    /// The disk that a partition is part of; empty for a disk.
    std::string parent;
    long size = 0; // kB
    long partitions = 0;
    bool isReadOnly = false;
    bool isRemovable = false;
    bool isRotational = false;
    std::string model;
};

/// The kernel writes a slash within a device's name as "!" here.
std::string DeviceName(std::string directoryName) {
    std::replace(directoryName.begin(), directoryName.end(), '!', '/');
    return directoryName;
}

/// The kernel counts 512-byte sectors here, whatever the device's own are.
long SizeInKiloBytes(const HostFiles& files, const std::string& directory) {
    return files.Number(directory + "/size", 0) / 2;
}

bool IsOne(const HostFiles& files, const std::string& path) {
    return files.Number(path, 0) == 1;
}

std::vector<std::string> PartitionDirectories(const HostFiles& files, const std::string& disk) {
    std::vector<std::string> names = files.Names(disk);
    std::erase_if(names, [&](const std::string& name) {
        return !files.Exists(disk + "/" + name + "/partition");
    });
    return names;
}

Device ReadDisk(const HostFiles& files, const std::string& name) {
    const std::string directory = "/sys/block/" + name;
    Device device;
    device.name = DeviceName(name);
    device.size = SizeInKiloBytes(files, directory);
    device.partitions = static_cast<long>(PartitionDirectories(files, directory).size());
    device.isReadOnly = IsOne(files, directory + "/ro");
    device.isRemovable = IsOne(files, directory + "/removable");
    device.isRotational = IsOne(files, directory + "/queue/rotational");
    device.model = Trim(files.FirstLine(directory + "/device/model"));
    return device;
}

Device ReadPartition(const HostFiles& files, const std::string& diskName, const Device& disk,
                     const std::string& name) {
    const std::string directory = "/sys/block/" + diskName + "/" + name;
    Device device = disk;
    device.name = DeviceName(name);
    device.parent = disk.name;
    device.size = SizeInKiloBytes(files, directory);
    device.partitions = 0;
    device.isReadOnly = IsOne(files, directory + "/ro");
    return device;
}

void AppendDisk(std::vector<Device>& devices, const Request& request, const std::string& name) {
    devices.push_back(ReadDisk(request.files, name));
    if (!request.arguments.HasFlag("partitions")) {
        return;
    }
    const Device disk = devices.back();
    for (const auto& partition : PartitionDirectories(request.files, "/sys/block/" + name)) {
        devices.push_back(ReadPartition(request.files, name, disk, partition));
    }
}

/// A device that is taken away while it is read is left out.
std::vector<Device> ReadDevices(const Request& request) {
    std::vector<Device> devices;
    for (const std::string& name : request.files.Names("/sys/block")) {
        try {
            AppendDisk(devices, request, name);
        } catch (const HostError& error) {
            if (!error.IsGone()) {
                throw;
            }
        }
    }
    return devices;
}

bool IsDeviceWanted(const Device& device, const Arguments& arguments) {
    const bool isRotational = arguments.Switch("rotational").value_or(device.isRotational);
    return (device.size > 0 || arguments.HasFlag("all")) && device.isRotational == isRotational &&
           device.size >= arguments.Number("minimum-size").value_or(0);
}

} // namespace

void ListDevices(const Request& request, ResultDocument& document) {
    const std::vector<Device> devices = ReadDevices(request);
    const auto list = document.OpenList();
    for (const Device& device : devices) {
        if (!IsDeviceWanted(device, request.arguments)) {
            continue;
        }
        const auto structure = document.OpenStructure("BlockDevice");
        document.AddText("Name", device.name);
        document.AddText("Kind", device.parent.empty() ? "disk" : "partition");
        document.AddText("Parent", device.parent);
        document.AddNumber("Size", device.size);
        document.AddNumber("Partitions", device.partitions);
        document.AddSwitch("Read Only", device.isReadOnly);
        document.AddSwitch("Removable", device.isRemovable);
        document.AddSwitch("Rotational", device.isRotational);
        document.AddText("Model", device.model);
    }
}

} // namespace HostFacts
