#include <CppTools/autocli/plugins/NoFormatters.h>
#include <CppTools/autocli/plugins/Plugin.h>

namespace CppTools::AutoCli {

Plugin::~Plugin() = default;

std::vector<std::shared_ptr<Formatter>>& NoFormatters() {
    static std::vector<std::shared_ptr<Formatter>> none;
    return none;
}

} // namespace CppTools::AutoCli
