#include <CppTools/callspec/OutputSpec.h>
#include <CppTools/metaobj/CppToolException.h>
#include <CppTools/metaobj/MetaBool.h>
#include <CppTools/metaobj/MetaInt.h>
#include <CppTools/metaobj/MetaList.h>
#include <CppTools/metaobj/MetaString.h>
#include <CppTools/metaobj/MetaStruct.h>
#include <CppTools/metaobj/Mismatch.h>

namespace CppTools::CallSpec {

namespace {

const std::string _docMissingStaticString = "Documentation missing";

} // namespace

std::shared_ptr<OutputSpec> OutputSpec::New() {
    return std::make_shared<OutputSpec>();
}

void OutputSpec::SetDescription(const std::string& description) {
    description_ = description;
}

const std::string& OutputSpec::GetDescription() const {
    return description_.empty() ? _docMissingStaticString : description_;
}

void OutputSpec::SetRootObject(std::shared_ptr<MetaObj::MetaObject>&& root) {
    if (!root) {
        throw CppToolException("Root object cannot be set to null");
    }
    rootObject_ = std::move(root);
}

void OutputSpec::SetRootObject(const std::shared_ptr<MetaObj::MetaObject>& root) {
    SetRootObject(std::shared_ptr<MetaObj::MetaObject>(root));
}

void OutputSpec::SetRootObject(const std::shared_ptr<MetaObj::MetaBool>& root) {
    SetRootObject(std::shared_ptr<MetaObj::MetaObject>(root));
}

void OutputSpec::SetRootObject(const std::shared_ptr<MetaObj::MetaInt>& root) {
    SetRootObject(std::shared_ptr<MetaObj::MetaObject>(root));
}

void OutputSpec::SetRootObject(const std::shared_ptr<MetaObj::MetaString>& root) {
    SetRootObject(std::shared_ptr<MetaObj::MetaObject>(root));
}

void OutputSpec::SetRootObject(const std::shared_ptr<MetaObj::MetaList>& root) {
    SetRootObject(std::shared_ptr<MetaObj::MetaObject>(root));
}

void OutputSpec::SetRootObject(const std::shared_ptr<MetaObj::MetaStruct>& root) {
    SetRootObject(std::shared_ptr<MetaObj::MetaObject>(root));
}

bool OutputSpec::Validate(const std::shared_ptr<Output>& output,
                          std::vector<std::string>* errors) const {
    using MetaObj::ReportMismatch;
    if (!rootObject_) {
        ReportMismatch(errors, "No root object set for output spec. Root object for output spec "
                               "must be set for proper validation of output.");
        return false;
    }
    if (!output->GetRootObject()) {
        ReportMismatch(errors, "No root object set for output. The command did not provide proper "
                               "output.");
        return false;
    }
    return rootObject_->IsSameStructure(output->GetRootObject(), errors);
}

} // namespace CppTools::CallSpec
