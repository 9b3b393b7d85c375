#include <CppTools/autocli/Namespace.h>
#include <CppTools/autocli/plugins/NoFormatters.h>
#include <CppTools/autocli/plugins/SharedLibraryPlugin.h>
#include <CppTools/host/RegularFile.h>
#include <CppTools/metaobj/CppToolException.h>

#include <dlfcn.h>

namespace CppTools::AutoCli {

namespace {

constexpr const char* kEntryPoint = "AutoCli_RegisterNamespaces";

std::string LoaderError() {
    const char* text = dlerror();
    return text != nullptr ? text : "(null)";
}

} // namespace

SharedLibraryPlugin::SharedLibraryPlugin(const std::string& path) : path_(path) {}

SharedLibraryPlugin::~SharedLibraryPlugin() = default;

std::shared_ptr<SharedLibraryPlugin> SharedLibraryPlugin::New(const std::string& path) {
    return std::make_shared<SharedLibraryPlugin>(path);
}

void SharedLibraryPlugin::Initialize() {
    registerFn_ = nullptr;
    if (Host::IsSpecialFile(path_)) {
        throw CppToolException("Unable to load plugin from " + path_ + " : " + path_ +
                               ": not a regular file");
    }
    handle_.reset(dlopen(path_.c_str(), RTLD_LAZY | RTLD_GLOBAL));
    if (!handle_) {
        throw CppToolException("Unable to load plugin from " + path_ + " : " + LoaderError());
    }
    void* const entryPoint = dlsym(handle_.get(), kEntryPoint);
    if (entryPoint == nullptr) {
        const std::string reason = LoaderError();
        handle_.reset();
        throw CppToolException("Unable to get plugin registration point from " + path_ + " : " +
                               reason);
    }
    registerFn_ = reinterpret_cast<RegisterFunction>(entryPoint);
}

const std::string& SharedLibraryPlugin::GetName() const {
    return path_;
}

void SharedLibraryPlugin::RegisterNamespaces(std::shared_ptr<Namespace> root) {
    if (registerFn_ != nullptr) {
        registerFn_(std::move(root));
    }
}

bool SharedLibraryPlugin::HasFormatter(const std::string& /*name*/) {
    return false;
}

std::shared_ptr<Formatter> SharedLibraryPlugin::GetFormatter(const std::string& /*name*/) {
    return nullptr;
}

std::vector<std::shared_ptr<Formatter>>& SharedLibraryPlugin::GetFormatters() {
    return NoFormatters();
}

void SharedLibraryPlugin::LibraryCloser::operator()(void* handle) const noexcept {
    dlclose(handle);
}

} // namespace CppTools::AutoCli
