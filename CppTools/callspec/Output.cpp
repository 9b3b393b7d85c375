#include <CppTools/callspec/Output.h>
#include <CppTools/metaobj/MetaBool.h>
#include <CppTools/metaobj/MetaInt.h>
#include <CppTools/metaobj/MetaList.h>
#include <CppTools/metaobj/MetaString.h>
#include <CppTools/metaobj/MetaStruct.h>

namespace CppTools::CallSpec {

Output::Output() = default;
Output::~Output() = default;

std::shared_ptr<Output> Output::New() {
    return std::make_shared<Output>();
}

void Output::AddErrorMessage(const std::string& message) {
    errors_.push_back(message);
}

void Output::AddErrorMessage(const char* message) {
    errors_.emplace_back(message);
}

void Output::AddErrorMessage(std::string&& message) {
    errors_.push_back(std::move(message));
}

void Output::SetRootObject(const std::shared_ptr<MetaObj::MetaObject>& root) {
    rootObject_ = root;
}

void Output::SetRootObject(const std::shared_ptr<MetaObj::MetaBool>& root) {
    rootObject_ = root;
}

void Output::SetRootObject(const std::shared_ptr<MetaObj::MetaInt>& root) {
    rootObject_ = root;
}

void Output::SetRootObject(const std::shared_ptr<MetaObj::MetaString>& root) {
    rootObject_ = root;
}

void Output::SetRootObject(const std::shared_ptr<MetaObj::MetaList>& root) {
    rootObject_ = root;
}

void Output::SetRootObject(const std::shared_ptr<MetaObj::MetaStruct>& root) {
    rootObject_ = root;
}

} // namespace CppTools::CallSpec
