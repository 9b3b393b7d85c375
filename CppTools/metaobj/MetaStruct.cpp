#include <CppTools/metaobj/CppToolException.h>
#include <CppTools/metaobj/MetaStruct.h>
#include <CppTools/metaobj/Mismatch.h>
#include <CppTools/metaobj/PlainText.h>
#include <CppTools/metaobj/StructFields.h>
#include <CppTools/metaobj/ValueCast.h>

#include <algorithm>

namespace CppTools::MetaObj {

namespace {

const std::string _docMissingStaticString = "Documentation missing";

bool IsAsciiAlphanumeric(char character) {
    return (character >= 'a' && character <= 'z') || (character >= 'A' && character <= 'Z') ||
           (character >= '0' && character <= '9');
}

std::shared_ptr<StructShape> ShapeOfNew(std::string&& typeName) {
    if (auto shape = StructShape::FindRecent(typeName, nullptr)) {
        return shape; // of a type whose name was checked
    }
    if (!IsValidStructName(typeName)) {
        throw CppToolException("Invalid name specified for MetaStruct: " + typeName);
    }
    return StructShape::New({std::move(typeName), nullptr});
}

std::shared_ptr<StructShape> ShapeOfNew(const std::shared_ptr<MetaStruct>& definition) {
    const std::string& typeName = definition->GetTypeName();
    auto shape = StructShape::FindRecent(typeName, definition.get());
    return shape ? shape : StructShape::New({typeName, definition});
}

} // namespace

bool IsValidStructName(const std::string& name) {
    return !name.empty() && std::all_of(name.begin(), name.end(), IsAsciiAlphanumeric);
}

bool IsValidFieldName(const std::string& /*name*/) {
    return true;
}

MetaStruct::MetaStruct(std::string typeName, FactoryFlag flag)
    : MetaObject(MetaType::Struct, flag), shape_(ShapeOfNew(std::move(typeName))) {}

MetaStruct::MetaStruct(const std::shared_ptr<MetaStruct>& definition, FactoryFlag flag)
    : MetaObject(MetaType::Struct, flag), shape_(ShapeOfNew(definition)) {
    definition->LockStructure();
}

MetaStruct::~MetaStruct() = default;

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

const std::string& MetaStruct::GetTypeName() const {
    return shape_->GetType()->name;
}

bool MetaStruct::HasStructureDefinition() const {
    return GetStructureDefinition() != nullptr;
}

const std::shared_ptr<MetaStruct>& MetaStruct::GetStructureDefinition() const {
    return shape_->GetType()->definition;
}

bool MetaStruct::HasField(const std::string& name) const {
    return StructFields(*this).Find(name) != nullptr;
}

std::shared_ptr<MetaObject> MetaStruct::GetField(const std::string& name) const {
    auto* const value = StructFields(*this).Find(name);
    return value != nullptr ? value->AsObject() : nullptr;
}

MetaType MetaStruct::GetFieldType(const std::string& name) const {
    const auto* value = StructFields(*this).Find(name);
    if (value == nullptr) {
        throw 1;
    }
    return value->GetType();
}

const std::string& MetaStruct::GetFieldDocumentation(const std::string& name) const {
    if (!HasField(name)) {
        throw CppToolException("Field " + name + " is not present in the structure " +
                               GetTypeName());
    }
    const auto& documentation = shape_->Find(name)->second.documentation;
    return documentation ? *documentation : _docMissingStaticString;
}

std::vector<std::string> MetaStruct::GetFieldNames() const {
    std::vector<std::string> names;
    names.reserve(values_.size());
    for (const auto& [name, value] : StructFields(*this)) {
        names.push_back(name);
    }
    return names;
}

void MetaStruct::RemoveField(const std::string& name) {
    if (locked_) {
        throw CppToolException("Structure is locked, unable to remove fields");
    }
    auto* const value = StructFields(*this).Find(name);
    if (value == nullptr) {
        return;
    }
    value->Remove();
    ++removed_;
    if (removed_ > values_.size() / 2) {
        TakeOwnShape();
    }
}

bool MetaStruct::MatchesStructureDefinition() const {
    return !HasStructureDefinition() || IsSameStructure(GetStructureDefinition(), nullptr);
}

void MetaStruct::SetField(const std::string& name, const std::shared_ptr<MetaObject>& value,
                          const std::string& documentation) {
    if (!value) {
        throw CppToolException("Invalid NULL value was assigned to the field " + name +
                               " in the structure " + GetTypeName());
    }
    SlotFor(name, documentation).Set(value);
    StructFields::Publish(*value);
}

FieldValue& MetaStruct::SlotFor(std::string_view name, const std::string& documentation) {
    const auto* entry = shape_->Find(name, values_.size());
    const std::size_t slot = entry != nullptr ? entry->second.slot : values_.size();
    const bool isNew = StructFields(*this).AtSlot(slot) == nullptr;
    if (isNew && (locked_ || entry == nullptr)) { // what is in the shape was checked for another
        CheckNewField(std::string(name));
    }
    if (entry == nullptr || !entry->second.IsDocumentedBy(documentation)) {
        return NewSlotFor(name, documentation);
    }
    if (slot >= values_.size()) {
        if (values_.empty()) {
            values_.reserve(shape_->GetCount());
        }
        values_.resize(slot + 1);
    }
    return values_[slot];
}

void MetaStruct::CheckNewField(const std::string& name) const {
    if (!IsValidFieldName(name)) {
        throw CppToolException("Unable to set new field " + name + " on structure " +
                               GetTypeName() +
                               ", because the field name contains invalid character. Can only be "
                               "alphanumeric characters and '_'");
    }
    if (locked_) {
        throw CppToolException("Unable to set new field " + name +
                               " on structure. Structure has been locked");
    }
    const auto& definition = GetStructureDefinition();
    if (definition && !definition->HasField(name)) {
        throw CppToolException("Unable to set new field " + name +
                               " on structure.  The field does not match the Structure definition "
                               "for this MetaStruct.");
    }
}

FieldValue& MetaStruct::NewSlotFor(std::string_view name, const std::string& documentation) {
    if (shape_->IsPublished()) {
        TakeOwnShape();
    }
    shape_->Set(name, documentation.empty() ? nullptr
                                            : std::make_shared<const std::string>(documentation));
    values_.resize(shape_->GetCount());
    return values_[shape_->Find(name, values_.size() - 1)->second.slot];
}

void MetaStruct::TakeOwnShape() {
    auto own = std::make_shared<StructShape>(shape_->GetType());
    std::vector<FieldValue> values;
    values.reserve(values_.size());
    for (std::size_t slot = 0; slot < values_.size(); ++slot) {
        if (values_[slot].IsPresent()) {
            const auto& [name, field] = shape_->AtSlot(slot);
            own->Set(name, field.documentation);
            values.push_back(std::move(values_[slot]));
        }
    }
    shape_ = std::move(own);
    values_ = std::move(values);
    removed_ = 0;
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
    const auto* structure = ValueAs<MetaStruct>(*other);
    if (structure == nullptr) {
        ReportMismatch(errors, "Unable to cast to MetaStruct, runtime error?");
        return false;
    }
    if (structure->GetTypeName() != GetTypeName()) {
        ReportMismatch(errors, "Type names do not match.");
    }
    return HasSameFields(*structure, errors);
}

bool MetaStruct::HasSameFields(const MetaStruct& other, std::vector<std::string>* errors) const {
    const StructFields mine(*this);
    const StructFields theirs(other);
    if (mine.HasSameScalars(theirs)) {
        return true;
    }
    const std::size_t count = mine.GetCount();
    const std::size_t otherCount = theirs.GetCount();
    if (count != otherCount) {
        ReportMismatch(errors, "Mismatch on number of fields set in struct. Expected " +
                                   std::to_string(count) + " found " + std::to_string(otherCount));
    }
    auto candidate = theirs.begin();
    for (const auto& [name, value] : mine) {
        while (candidate != theirs.end() && (*candidate).name < name) {
            ++candidate;
        }
        if (candidate == theirs.end() || (*candidate).name != name) {
            ReportMismatch(errors, "Missing field in input: " + name);
            return false;
        }
        if (!value.IsSameStructure((*candidate).value, errors)) {
            ReportMismatch(errors, "Type mismatch on field: " + name);
            return false;
        }
    }
    return count == otherCount;
}

void StructFields::Publish(const MetaObject& value) {
    const auto* structure = ValueAs<MetaStruct>(value);
    if (structure != nullptr && !structure->shape_->IsPublished()) {
        StructShape::Publish(structure->shape_);
    }
}

std::string MetaStruct::ToString() const {
    std::string text;
    text.reserve(values_.size() * PlainTextWriter::kRoomPerItem);
    PlainTextWriter(text).AppendStruct(*this);
    return text;
}

} // namespace CppTools::MetaObj
