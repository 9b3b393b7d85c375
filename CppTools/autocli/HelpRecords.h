#pragma once

/// The names of the two help records and their fields: the contract between those who build the
/// records and the formatters that print them.
namespace CppTools::AutoCli::HelpRecords {

/// The help of one command.
inline constexpr const char* kCommandHelp = "TandrilCommandHelp";
inline constexpr const char* kParameterList = "Param List";
inline constexpr const char* kExampleList = "Example List";

/// One entry of `kParameterList`.
inline constexpr const char* kParameter = "TandrilCommandParameter";
inline constexpr const char* kShortName = "Short Name";
inline constexpr const char* kRequired = "Required";
inline constexpr const char* kSecret = "Secret";

/// One entry of `kExampleList`.
inline constexpr const char* kExample = "TandrilCommandExample";
inline constexpr const char* kSyntax = "Syntax";

/// The listing of a namespace.
inline constexpr const char* kNamespaceListing = "TandrilCommandPrint";
inline constexpr const char* kNodeList = "NamespaceNodes";

/// One entry of `kNodeList`.
inline constexpr const char* kNode = "NamespaceNode";
inline constexpr const char* kType = "Type";
inline constexpr const char* kNamespaceKind = "Namespace";
inline constexpr const char* kCommandKind = "Command";
inline constexpr const char* kUnknownKind = "Unknown";

/// Fields that several of the records have.
inline constexpr const char* kDispatcher = "Dispatcher";
inline constexpr const char* kPath = "Path";
inline constexpr const char* kName = "Name";
inline constexpr const char* kDescription = "Description";

} // namespace CppTools::AutoCli::HelpRecords
