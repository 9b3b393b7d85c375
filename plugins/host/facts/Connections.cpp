#include "Accounts.h"
#include "Commands.h"
#include "HostError.h"
#include "NetAddress.h"
#include "TextTools.h"

#include <algorithm>
#include <array>

namespace HostFacts {

namespace {

struct Table {
    const char* path;
    const char* protocol;
    long family;
};

constexpr std::array kTables = {Table{"/proc/net/tcp", "tcp", 4}, Table{"/proc/net/tcp6", "tcp", 6},
                                Table{"/proc/net/udp", "udp", 4},
                                Table{"/proc/net/udp6", "udp", 6}};

struct Endpoint {
    std::string address;
    long port = 0;
};

struct Connection {
    Endpoint local;
    Endpoint remote;
    std::string state;
    long receiveQueue = 0;
    long sendQueue = 0;
    long uid = 0;
    long inode = 0;
};

constexpr long kClosed = 7;

/// The kernel gives datagram sockets the states of TCP: "closed" is one without a remote end.
std::string StateName(long state, const Table& table) {
    static constexpr std::array names = {
        "",           "established", "syn-sent",    "syn-received", "fin-wait-1",
        "fin-wait-2", "time-wait",   "closed",      "close-wait",   "last-ack",
        "listening",  "closing",     "syn-received"};
    if (state == kClosed && std::string_view(table.protocol) == "udp") {
        return "unconnected";
    }
    const bool isKnown = state > 0 && static_cast<std::size_t>(state) < names.size();
    return isKnown ? names[static_cast<std::size_t>(state)] : std::to_string(state);
}

Endpoint ParseEndpoint(std::string_view text) {
    const auto parts = Split(text, ':');
    if (parts.size() != 2) {
        throw HostError("'" + std::string(text) + "' is not an address and a port");
    }
    return {AddressOfWords(parts[0]), HexValue(parts[1])};
}

Connection ParseConnection(std::string_view line, const Table& table) {
    const auto words = Words(line);
    const auto queues = words.size() < 10 ? std::vector<std::string_view>() : Split(words[4], ':');
    if (queues.size() != 2) {
        throw HostError(std::string("Unable to read ") + table.path + ": unexpected contents");
    }
    Connection connection;
    connection.local = ParseEndpoint(words[1]);
    connection.remote = ParseEndpoint(words[2]);
    connection.state = StateName(HexValue(words[3]), table);
    connection.sendQueue = HexValue(queues[0]);
    connection.receiveQueue = HexValue(queues[1]);
    connection.uid = LeadingNumber(words[7]).value_or(0);
    connection.inode = LeadingNumber(words[9]).value_or(0);
    return connection;
}

std::vector<Connection> ReadTable(const HostFiles& files, const Table& table, bool isAskedFor) {
    // A kernel without IPv6 lacks two of the tables.
    const bool mayLack = table.family == 6 && !isAskedFor;
    const std::string text =
        mayLack ? files.ReadIfThere(table.path).value_or("") : files.Read(table.path);
    const auto lines = Lines(text);
    std::vector<Connection> connections;
    for (std::size_t i = 1; i < lines.size(); ++i) { // the first line names the columns
        connections.push_back(ParseConnection(lines[i], table));
    }
    return connections;
}

bool IsConnectionWanted(const Connection& connection, const Arguments& arguments) {
    const auto ports = arguments.Numbers("port");
    const auto isPort = [&](long port) {
        return port == connection.local.port || port == connection.remote.port;
    };
    return (ports.empty() || std::any_of(ports.begin(), ports.end(), isPort)) &&
           IsWanted(arguments.List("state"), connection.state) &&
           (connection.state == "listening" || !arguments.HasFlag("listening"));
}

void Write(const Connection& connection, const Table& table, AccountNames& names,
           ResultDocument& document) {
    const auto structure = document.OpenStructure("Connection");
    document.AddText("Protocol", table.protocol);
    document.AddNumber("Family", table.family);
    document.AddText("State", connection.state);
    document.AddText("User", names.UserName(connection.uid));
    document.AddNumber("Receive Queue", connection.receiveQueue);
    document.AddNumber("Send Queue", connection.sendQueue);
    document.AddNumber("Inode", connection.inode);
    document.AddText("Local Address", connection.local.address);
    document.AddNumber("Local Port", connection.local.port);
    document.AddText("Remote Address", connection.remote.address);
    document.AddNumber("Remote Port", connection.remote.port);
}

} // namespace

void ListConnections(const Request& request, ResultDocument& document) {
    const Arguments& arguments = request.arguments;
    const auto protocols = arguments.List("protocol");
    const auto family = arguments.Number("family");
    AccountNames names(request.files);
    const auto list = document.OpenList();
    for (const Table& table : kTables) {
        if (!IsWanted(protocols, table.protocol) || family.value_or(table.family) != table.family) {
            continue;
        }
        for (const auto& connection : ReadTable(request.files, table, family.has_value())) {
            if (IsConnectionWanted(connection, arguments)) {
                Write(connection, table, names, document);
            }
        }
    }
}

} // namespace HostFacts
