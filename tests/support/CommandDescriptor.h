#pragma once

#include "DescriptorText.h"

#include <string>

/// Texts of plug-in descriptors with one command, "demo.run", that is complete until a test takes
/// something away.
namespace TestSupport {

/// The pieces of one command.
struct CommandPieces {
    std::string attributes = R"(path="demo.run")";
    std::string description = "<description>Runs.</description>";
    std::string metaData = "";
    std::string inputSpec = "<input-spec/>";
    std::string outputSpec = "<output-spec><string/></output-spec>";
    std::string formatParameters = "<format-parameters/>";
    std::string execute = "<execute>true</execute>";
    std::string standardInput = "";

    std::string ToElement() const {
        return "<command " + attributes + ">" + description + metaData + inputSpec + outputSpec +
               formatParameters + execute + standardInput + "</command>";
    }
};

inline std::string NamespaceElement(const std::string& path, const std::string& description) {
    return "<namespace path=\"" + path + "\"><description>" + description +
           "</description></namespace>";
}

inline std::string NamespacesElement(const std::string& namespaces) {
    return "<namespaces>" + namespaces + "</namespaces>";
}

inline std::string CommandsElement(const std::string& commands) {
    return "<commands>" + commands + "</commands>";
}

/// A complete command at another path.
inline std::string CommandElementAt(const std::string& path) {
    CommandPieces pieces;
    pieces.attributes = "path=\"" + path + "\"";
    return pieces.ToElement();
}

/// The namespace "demo" and the command in it.
inline std::string CommandDescriptor(const CommandPieces& pieces) {
    return Descriptor(NamespacesElement(NamespaceElement("demo", "Demonstrations.")) +
                      CommandsElement(pieces.ToElement()));
}

inline std::string ParameterElement(const std::string& attributes, const std::string& content) {
    return "<parameter " + attributes + ">" + content + "</parameter>";
}

/// The same with a command that declares these parameters.
inline std::string ParameterDescriptor(const std::string& parameters) {
    CommandPieces pieces;
    pieces.inputSpec = "<input-spec>" + parameters + "</input-spec>";
    return CommandDescriptor(pieces);
}

/// What stands in front of everything that goes wrong in a descriptor.
inline std::string DescriptorMessage(const std::string& path, const std::string& reason) {
    return "Unable to handle XML Plugin " + path + ".  There was an error while parsing: " + reason;
}

/// What stands behind that when the fault is in the command.
inline std::string CommandMessage(const std::string& reason) {
    return "Unable to register the command 'tandril demo.run'  Error was " + reason;
}

} // namespace TestSupport
