#include <CppTools/host/Pattern.h>
#include <CppTools/metaobj/CppToolException.h>
#include <CppTools/metaobj/MetaStruct.h>
#include <CppTools/metaobj/Mismatch.h>
#include <CppTools/metaobj/PlainText.h>

namespace CppTools::MetaObj {

namespace {

const std::string _docMissingStaticString = "Documentation missing";

} // namespace

bool IsValidStructName(const std::string& name) {
    static const Host::Pattern pattern("[a-zA-Z0-9]+");
    return pattern.Matches(name);
}

bool IsValidFieldName(const std::string& /*name*/) {
    return true;
}

MetaStruct::MetaStruct(std::string typeName, FactoryFlag flag)
    : MetaObject(MetaType::Struct, flag), typeName_(std::move(typeName)) {
    if (!IsValidStructName(typeName_)) {
        throw CppToolException("Invalid name specified for MetaStruct: " + typeName_);
    }
}

MetaStruct::MetaStruct(const std::shared_ptr<MetaStruct>& definition, FactoryFlag flag)
    : MetaObject(MetaType::Struct, flag), structureDefinition_(definition),
      typeName_(definition->typeName_) {
    definition->LockStructure();
}

std::shared_ptr<MetaStruct> MetaStruct::New(const std::string& typeName) {
    return std::make_shared<MetaStruct>(typeName, FactoryFlag{});
}

std::shared_ptr<MetaStruct> MetaStruct::New(std::string&& typeName) {
    return std::make_shared<MetaStruct>(std::move(typeName), FactoryFlag{});
}

std::shared_ptr<MetaStruct> MetaStruct::New(const char* typeName) {
    return std::make_shared<MetaStruct>(std::string(typeName), FactoryFlag{});
}

std::shared_ptr<MetaStruct> MetaStruct::New(const std::shared_ptr<MetaStruct>& definition) {
    return std::make_shared<MetaStruct>(definition, FactoryFlag{});
}

bool MetaStruct::HasField(const std::string& name) const {
    return fields_.contains(name);
}

std::shared_ptr<MetaObject> MetaStruct::GetField(const std::string& name) const {
    const auto found = fields_.find(name);
    return found == fields_.end() ? nullptr : found->second.value;
}

MetaType MetaStruct::GetFieldType(const std::string& name) const {
    const auto found = fields_.find(name);
    if (found == fields_.end()) {
        throw 1;
    }
    return found->second.value->GetType();
}

const std::string& MetaStruct::GetFieldDocumentation(const std::string& name) const {
    const auto found = fields_.find(name);
    if (found == fields_.end()) {
        throw CppToolException("Field " + name + " is not present in the structure " + typeName_);
    }
    const std::string& documentation = found->second.documentation;
    return documentation.empty() ? _docMissingStaticString : documentation;
}

std::vector<std::string> MetaStruct::GetFieldNames() const {
    std::vector<std::string> names;
    names.reserve(fields_.size());
    for (const auto& [name, field] : fields_) {
        names.push_back(name);
    }
    return names;
}

void MetaStruct::RemoveField(const std::string& name) {
    if (locked_) {
        throw CppToolException("Structure is locked, unable to remove fields");
    }
    fields_.erase(name);
}

bool MetaStruct::MatchesStructureDefinition() const {
    return !structureDefinition_ || IsSameStructure(structureDefinition_, nullptr);
}

void MetaStruct::SetField(const std::string& name, const std::shared_ptr<MetaObject>& value,
                          const std::string& documentation) {
    if (!value) {
        throw CppToolException("Invalid NULL value was assigned to the field " + name +
                               " in the structure " + typeName_);
    }
    if (!IsValidFieldName(name)) {
        throw CppToolException("Unable to set new field " + name + " on structure " + typeName_ +
                               ", because the field name contains invalid character. Can only be "
                               "alphanumeric characters and '_'");
    }
    if (locked_ && !HasField(name)) {
        throw CppToolException("Unable to set new field " + name +
                               " on structure. Structure has been locked");
    }
    if (!locked_ && structureDefinition_ && !structureDefinition_->HasField(name)) {
        throw CppToolException("Unable to set new field " + name +
                               " on structure.  The field does not match the Structure definition "
                               "for this MetaStruct.");
    }
    fields_.insert_or_assign(name, Field{value, documentation});
}

bool MetaStruct::IsSameStructure(const std::shared_ptr<MetaObject>& other,
                                 std::vector<std::string>* errors) const {
    if (!other) {
        ReportMismatch(errors, "Invalid NULL input to MetaStruct validation.");
        return true;
    }
    if (other->GetType() != MetaType::Struct) {
        ReportMismatch(errors, "Type Mismatch in MetaStruct Validation: Expected type " +
                                   MetaTypeString(GetType()) + " got type " +
                                   MetaTypeString(other->GetType()));
        return false;
    }
    const auto* structure = dynamic_cast<const MetaStruct*>(other.get());
    if (structure == nullptr) {
        ReportMismatch(errors, "Unable to cast to MetaStruct, runtime error?");
        return false;
    }
    if (structure->typeName_ != typeName_) {
        ReportMismatch(errors, "Type names do not match.");
    }
    return HasSameFields(*structure, errors);
}

bool MetaStruct::HasSameFields(const MetaStruct& other, std::vector<std::string>* errors) const {
    const bool sameCount = fields_.size() == other.fields_.size();
    if (!sameCount) {
        ReportMismatch(errors, "Mismatch on number of fields set in struct. Expected " +
                                   std::to_string(fields_.size()) + " found " +
                                   std::to_string(other.fields_.size()));
    }
    for (const auto& [name, field] : fields_) {
        const auto found = other.fields_.find(name);
        if (found == other.fields_.end()) {
            ReportMismatch(errors, "Missing field in input: " + name);
            return false;
        }
        const std::shared_ptr<MetaObject>& candidate = found->second.value;
        if (candidate->GetType() != field.value->GetType() ||
            !field.value->IsSameStructure(candidate, errors)) {
            ReportMismatch(errors, "Type mismatch on field: " + name);
            return false;
        }
    }
    return sameCount;
}

std::string MetaStruct::ToString() const {
    std::string text;
    text.reserve(fields_.size() * PlainTextWriter::kRoomPerItem);
    PlainTextWriter(text).AppendStruct(*this);
    return text;
}

} // namespace CppTools::MetaObj
