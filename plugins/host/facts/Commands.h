#pragma once

#include "Arguments.h"
#include "HostFiles.h"
#include "ResultDocument.h"

#include <string>

/// The commands of this program. Each writes one result into the document; what it cannot find
/// out it throws as HostError or adds to the document's errors.
namespace HostFacts {

struct Request {
    const Arguments& arguments;
    const HostFiles& files;
    /// What came on standard input; empty for commands that are given none.
    const std::string& input;
};

void ListProcesses(const Request& request, ResultDocument& document);
void GetProcesses(const Request& request, ResultDocument& document);
void GetUptime(const Request& request, ResultDocument& document);
void GetLoad(const Request& request, ResultDocument& document);
void GetMemory(const Request& request, ResultDocument& document);
void ListUsers(const Request& request, ResultDocument& document);
void GetEnvironment(const Request& request, ResultDocument& document);
void ListFilesystems(const Request& request, ResultDocument& document);
void ListDevices(const Request& request, ResultDocument& document);
void ListInterfaces(const Request& request, ResultDocument& document);
void GetInterface(const Request& request, ResultDocument& document);
void ListRoutes(const Request& request, ResultDocument& document);
void ListConnections(const Request& request, ResultDocument& document);
void ListModules(const Request& request, ResultDocument& document);
void ListKernelParameters(const Request& request, ResultDocument& document);
void GetKernelParameters(const Request& request, ResultDocument& document);
void ListPackages(const Request& request, ResultDocument& document);
void GetPackages(const Request& request, ResultDocument& document);

} // namespace HostFacts
