#include "Accounts.h"

#include "TextTools.h"

#include <grp.h>
#include <pwd.h>

namespace HostFacts {

namespace {

const char kPasswdFile[] = "/etc/passwd";
const char kGroupFile[] = "/etc/group";

std::vector<Account> ParseAccounts(const std::string& text) {
    std::vector<Account> accounts;
    for (const std::string_view line : Lines(text)) {
        const auto fields = Split(line, ':');
        if (fields.size() < 7) {
            continue;
        }
        const auto uid = LeadingNumber(fields[2]);
        const auto gid = LeadingNumber(fields[3]);
        if (uid && gid) {
            accounts.push_back({std::string(fields[0]), *uid, *gid, std::string(fields[4]),
                                std::string(fields[5]), std::string(fields[6])});
        }
    }
    return accounts;
}

std::map<long, std::string> ReadGroupNames(const HostFiles& files) {
    std::map<long, std::string> names;
    const std::string text = files.ReadIfThere(kGroupFile).value_or("");
    for (const std::string_view line : Lines(text)) {
        const auto fields = Split(line, ':');
        const auto gid = fields.size() < 3 ? std::nullopt : LeadingNumber(fields[2]);
        if (gid) {
            names.emplace(*gid, fields[0]);
        }
    }
    return names;
}

std::string AskForUser(long uid) {
    const passwd* const account = getpwuid(static_cast<uid_t>(uid));
    return account != nullptr ? account->pw_name : std::to_string(uid);
}

std::string AskForGroup(long gid) {
    const group* const entry = getgrgid(static_cast<gid_t>(gid));
    return entry != nullptr ? entry->gr_name : std::to_string(gid);
}

} // namespace

std::vector<Account> ReadAccounts(const HostFiles& files) {
    return ParseAccounts(files.Read(kPasswdFile));
}

AccountNames::AccountNames(const HostFiles& files)
    : asksSystem_(files.IsLive()), groups_(ReadGroupNames(files)) {
    for (Account& account : ParseAccounts(files.ReadIfThere(kPasswdFile).value_or(""))) {
        users_.emplace(account.uid, std::move(account.name));
    }
}

std::string AccountNames::UserName(long uid) {
    const auto [entry, isNew] = users_.try_emplace(uid);
    if (isNew) {
        entry->second = asksSystem_ ? AskForUser(uid) : std::to_string(uid);
    }
    return entry->second;
}

std::string AccountNames::GroupName(long gid) {
    const auto [entry, isNew] = groups_.try_emplace(gid);
    if (isNew) {
        entry->second = asksSystem_ ? AskForGroup(gid) : std::to_string(gid);
    }
    return entry->second;
}

} // namespace HostFacts
