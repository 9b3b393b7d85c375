#pragma once

#include "HostFiles.h"

#include <map>
#include <string>
#include <vector>

namespace HostFacts {

struct Account {
    std::string name;
    long uid = 0;
    long gid = 0;
    std::string fullName;
    std::string home;
    std::string shell;
};

/// The accounts of /etc/passwd, in its order. Lines that are no accounts (too few fields, no
/// number where one belongs) are passed over. Throws HostError.
std::vector<Account> ReadAccounts(const HostFiles& files);

/// Numbers of users and groups to names. A number that nobody has a name for stays a number.
class AccountNames {
  public:
    explicit AccountNames(const HostFiles& files);

    std::string UserName(long uid);
    std::string GroupName(long gid);

  private:
    bool asksSystem_;
    std::map<long, std::string> users_;
    std::map<long, std::string> groups_;
};

} // namespace HostFacts
