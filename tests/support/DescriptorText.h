#pragma once

#include <string>

/// Texts of plug-in descriptors.
namespace TestSupport {

inline std::string Descriptor(const std::string& content) {
    return "<plugin><version>1.0.0</version>" + content + "</plugin>\n";
}

/// A descriptor with one namespace and nothing in it.
inline std::string NamespaceDescriptor(const std::string& path,
                                       const std::string& description = "A namespace.") {
    return Descriptor("<namespaces><namespace path=\"" + path + "\"><description>" + description +
                      "</description></namespace></namespaces>");
}

/// A descriptor that `Initialize` refuses without a word of the XML library's own.
inline std::string OutdatedDescriptor() {
    return "<plugin><version>1.0</version></plugin>\n";
}

/// What `Initialize` says to that.
inline std::string OutdatedMessage(const std::string& path) {
    return "Unable to handle XML Plugin " + path +
           ".  There was an error while parsing: Unknown tandril extention version.  Valid "
           "versions are: '1.0.0'";
}

} // namespace TestSupport
