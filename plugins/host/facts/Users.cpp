#include "Accounts.h"
#include "Commands.h"
#include "ProcessReader.h"
#include "TextTools.h"

#include <algorithm>
#include <map>

namespace HostFacts {

namespace {

/// Debian gives the numbers 1000 to 59999 to people; root and services have all others.
bool IsSystemAccount(const Account& account) {
    return account.uid < 1000 || account.uid > 59999;
}

bool MayLogIn(const Account& account) {
    return !account.shell.ends_with("/nologin") && !account.shell.ends_with("/false");
}

std::map<long, long> ProcessesOfUsers(const HostFiles& files) {
    std::map<long, long> counts;
    for (const Process& process : ReadProcesses(files)) {
        ++counts[process.uid];
    }
    return counts;
}

bool IsAccountWanted(const Account& account, const Arguments& arguments) {
    const auto uids = arguments.Numbers("uid");
    const bool isUidWanted =
        uids.empty() || std::find(uids.begin(), uids.end(), account.uid) != uids.end();
    const bool isSystem = IsSystemAccount(account);
    const bool mayLogIn = MayLogIn(account);
    return isUidWanted && IsWanted(arguments.List("name"), account.name) &&
           arguments.Switch("system").value_or(isSystem) == isSystem &&
           arguments.Switch("login").value_or(mayLogIn) == mayLogIn;
}

} // namespace

void ListUsers(const Request& request, ResultDocument& document) {
    const std::vector<Account> accounts = ReadAccounts(request.files);
    const std::map<long, long> processes = ProcessesOfUsers(request.files);
    AccountNames names(request.files);
    const auto list = document.OpenList();
    for (const Account& account : accounts) {
        if (!IsAccountWanted(account, request.arguments)) {
            continue;
        }
        const auto count = processes.find(account.uid);
        const auto structure = document.OpenStructure("User");
        document.AddText("Name", account.name);
        document.AddNumber("UID", account.uid);
        document.AddNumber("GID", account.gid);
        document.AddText("Group", names.GroupName(account.gid));
        document.AddSwitch("System", IsSystemAccount(account));
        document.AddSwitch("Login", MayLogIn(account));
        document.AddNumber("Processes", count == processes.end() ? 0 : count->second);
        document.AddText("Home", account.home);
        document.AddText("Shell", account.shell);
        document.AddText("Full Name", account.fullName);
    }
}

} // namespace HostFacts
