#include <CppTools/host/Unicode.h>
#include <CppTools/metaobj/MetaBool.h>
#include <CppTools/metaobj/MetaInt.h>
#include <CppTools/metaobj/MetaString.h>

namespace CppTools::MetaObj {

std::string MetaBool::ToString() const {
    return value_ ? "true" : "false";
}

std::string MetaInt::ToString() const {
    return std::to_string(value_);
}

std::shared_ptr<MetaString> MetaString::New(const char* text) {
    return New(std::string(text));
}

std::shared_ptr<MetaString> MetaString::New(const std::string& text) {
    return New(std::string(text));
}

std::shared_ptr<MetaString> MetaString::New(std::string&& text) {
    if (text.empty()) {
        return New();
    }
    return std::make_shared<MetaString>(std::move(text), FactoryFlag{});
}

std::shared_ptr<MetaString> MetaString::NewUtf8WithEscapes(std::string&& text) {
    if (!Host::IsValidUtf8(text)) {
        text = Host::EscapeInvalidUtf8(text);
    }
    return New(std::move(text));
}

std::string MetaString::ToString() const {
    return value_;
}

} // namespace CppTools::MetaObj
