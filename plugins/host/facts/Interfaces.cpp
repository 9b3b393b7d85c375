#include "Commands.h"
#include "HostError.h"
#include "InterfaceReader.h"
#include "TextTools.h"

namespace HostFacts {

namespace {

void WriteCommonFields(const Interface& interface, ResultDocument& document) {
    document.AddText("Name", interface.name);
    document.AddNumber("Index", interface.index);
    document.AddText("State", interface.state);
    document.AddSwitch("Up", interface.isUp);
    document.AddSwitch("Loopback", interface.isLoopback);
    document.AddNumber("MTU", interface.mtu);
    document.AddNumber("Speed", interface.speed);
    document.AddText("Hardware Address", interface.hardwareAddress);
}

std::vector<std::string> AddressTexts(const Interface& interface) {
    std::vector<std::string> texts;
    for (const InterfaceAddress& address : interface.addresses) {
        texts.push_back(address.address + "/" + std::to_string(address.prefixLength));
    }
    return texts;
}

void WriteAddresses(const Interface& interface, ResultDocument& document) {
    const auto field = document.OpenField("Addresses");
    const auto list = document.OpenList();
    for (const InterfaceAddress& address : interface.addresses) {
        const auto structure = document.OpenStructure("InterfaceAddress");
        document.AddNumber("Family", address.family);
        document.AddText("Address", address.address);
        document.AddNumber("Prefix Length", address.prefixLength);
    }
}

void WriteCounters(const HostFiles& files, const Interface& interface, ResultDocument& document) {
    const auto add = [&](const char* field, const char* counter) {
        document.AddNumber(field, InterfaceCounter(files, interface.name, counter));
    };
    add("Received", "rx_bytes");
    add("Received Packets", "rx_packets");
    add("Received Errors", "rx_errors");
    add("Received Drops", "rx_dropped");
    add("Sent", "tx_bytes");
    add("Sent Packets", "tx_packets");
    add("Sent Errors", "tx_errors");
    add("Sent Drops", "tx_dropped");
}

} // namespace

void ListInterfaces(const Request& request, ResultDocument& document) {
    const auto pattern = request.arguments.Text("match", "*");
    const auto up = request.arguments.Switch("up");
    const auto list = document.OpenList();
    for (const Interface& interface : ReadInterfaces(request.files)) {
        if (FitsPattern(interface.name, pattern) && up.value_or(interface.isUp) == interface.isUp) {
            const auto structure = document.OpenStructure("Interface");
            WriteCommonFields(interface, document);
            document.AddTexts("Addresses", AddressTexts(interface));
        }
    }
}

void GetInterface(const Request& request, ResultDocument& document) {
    const Interface interface = ReadInterface(request.files, request.arguments.Text("name", ""));
    const auto structure = document.OpenStructure("InterfaceDetail");
    WriteCommonFields(interface, document);
    WriteCounters(request.files, interface, document);
    WriteAddresses(interface, document);
}

} // namespace HostFacts
