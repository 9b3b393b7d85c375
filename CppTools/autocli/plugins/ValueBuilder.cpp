#include <CppTools/autocli/plugins/ValueBuilder.h>
#include <CppTools/callspec/ValueReading.h>
#include <CppTools/metaobj/CppToolException.h>
#include <CppTools/metaobj/MetaBool.h>
#include <CppTools/metaobj/MetaInt.h>
#include <CppTools/metaobj/MetaList.h>
#include <CppTools/metaobj/MetaString.h>
#include <CppTools/metaobj/StructFields.h>
#include <CppTools/metaobj/ValueCast.h>

#include <array>
#include <type_traits>
#include <utility>

namespace CppTools::AutoCli {

using MetaObj::MetaBool;
using MetaObj::MetaInt;
using MetaObj::MetaList;
using MetaObj::MetaObject;
using MetaObj::MetaString;
using MetaObj::MetaStruct;
using MetaObj::MetaType;

namespace {

MetaType ReadListType(const std::string& word) {
    static constexpr std::array<std::pair<std::string_view, MetaType>, 5> kTypes = {
        {{"string", MetaType::String},
         {"int", MetaType::Int},
         {"bool", MetaType::Bool},
         {"structure", MetaType::Struct},
         {"list", MetaType::List}}};
    for (const auto& [name, type] : kTypes) {
        if (name == word) {
            return type;
        }
    }
    throw CppToolException(
        "Invalid list type attribute.  Must be one of [string, int, bool, structure, list]");
}

bool HasTemplate(MetaType listType) {
    return listType == MetaType::Struct || listType == MetaType::List;
}

long ReadInteger(const std::string& text) {
    long number = 0;
    if (!text.empty() && !CallSpec::ReadLeadingInteger(text, number)) {
        throw CppToolException("Unable to read an int value from: '" + text + "'");
    }
    return number;
}

std::shared_ptr<MetaObject> CopyForTemplate(const MetaStruct& structure);

/// Sets a field of a copy. Lists are shared: each holds its items beside a template of its own, so
/// that copies would double with each level.
struct FieldCopier {
    template <typename Content>
    void operator()(const Content& content) const {
        if constexpr (std::is_same_v<Content, std::string_view>) {
            copy.SetField(name, std::string(content));
        } else if constexpr (std::is_same_v<Content, MetaObject>) {
            const auto* structure = MetaObj::ValueAs<MetaStruct>(content);
            copy.SetField(name,
                          structure != nullptr ? CopyForTemplate(*structure) : value.AsObject());
        } else {
            copy.SetField(name, content);
        }
    }

    MetaStruct& copy;
    const std::string& name;
    MetaObj::FieldValue& value;
};

/// A copy of a structure, and of those inside it, for use as a template.
std::shared_ptr<MetaObject> CopyForTemplate(const MetaStruct& structure) {
    MetaObj::StructFields::Publish(structure); // the rows to come begin like this one
    auto copy = MetaStruct::New(structure.GetTypeName());
    for (const auto& [name, value] : MetaObj::StructFields(structure)) {
        value.Visit(FieldCopier{*copy, name, value});
    }
    return copy;
}

std::shared_ptr<MetaList> NewListLike(MetaType type, const std::shared_ptr<MetaObject>& firstItem) {
    const auto* structure =
        firstItem != nullptr ? MetaObj::ValueAs<MetaStruct>(*firstItem) : nullptr;
    return MetaList::New(type, structure != nullptr ? CopyForTemplate(*structure) : firstItem);
}

std::shared_ptr<MetaObject> ToObject(long number) {
    return MetaInt::New(number);
}

std::shared_ptr<MetaObject> ToObject(bool value) {
    return MetaBool::New(value);
}

std::shared_ptr<MetaObject> ToObject(std::string&& text) {
    return MetaString::New(std::move(text));
}

std::shared_ptr<MetaObject> ToObject(std::shared_ptr<MetaObject>&& value) {
    return std::move(value);
}

} // namespace

const char* ValueBuilder::AttributeOf(std::string_view elementName) {
    return elementName == "field"       ? "name"
           : elementName == "structure" ? "typeName"
           : elementName == "list"      ? "type"
                                        : nullptr;
}

void ValueBuilder::StartElement(std::string_view name, const std::string& attribute) {
    EndText();
    if (passedOver_ > 0) {
        ++passedOver_;
    } else if (scalar_ || name == "text" || name == "comment") {
        PassOver();
    } else if (!levels_.empty() && levels_.back().structure) {
        StartInStructure(levels_.back(), name, attribute);
    } else if (levels_.empty() && std::exchange(hasBegun_, true)) {
        PassOver();
    } else {
        StartValue(name, attribute);
    }
}

void ValueBuilder::StartInStructure(Level& level, std::string_view name,
                                    const std::string& attribute) {
    if (level.field == FieldState::BeforeValue) {
        level.field = FieldState::BehindValue;
        StartValue(name, attribute);
    } else if (level.field == FieldState::BehindValue || name != "field") {
        PassOver();
    } else if (attribute.empty()) {
        throw CppToolException("Invalid <field> tag found.  <field> requires a 'name' attribute.");
    } else {
        level.field = FieldState::BeforeValue;
        level.fieldName = attribute;
    }
}

void ValueBuilder::StartValue(std::string_view name, const std::string& attribute) {
    if (name == "string") {
        StartScalar(Scalar::String);
    } else if (name == "int") {
        StartScalar(Scalar::Int);
    } else if (name == "bool") {
        StartScalar(Scalar::Bool);
    } else if (name == "structure") {
        levels_.push_back({.structure = MetaStruct::New(attribute)});
    } else if (name == "list") {
        const MetaType type = ReadListType(attribute);
        levels_.push_back({.structure = nullptr,
                           .listType = type,
                           .list = HasTemplate(type) ? nullptr : MetaList::New(type)});
    } else {
        throw CppToolException("Unable to make a MetaObject from a node with tag '" +
                               std::string(name) + "'");
    }
}

void ValueBuilder::StartScalar(Scalar kind) {
    scalar_ = kind;
    text_.clear();
}

void ValueBuilder::AddContent(Content kind, std::string_view text) {
    if (passedOver_ > 0 || !scalar_) {
        return;
    }
    if (kind == Content::Other || kind != lastContent_) {
        text_.clear();
    }
    text_ += text;
    lastContent_ = kind;
}

void ValueBuilder::EndElement() {
    EndText();
    if (passedOver_ > 0) {
        --passedOver_;
    } else if (scalar_) {
        EndScalar(*std::exchange(scalar_, std::nullopt));
    } else if (levels_.back().field != FieldState::Outside) {
        levels_.back().field = FieldState::Outside;
    } else {
        EndLevel();
    }
}

void ValueBuilder::EndScalar(Scalar kind) {
    switch (kind) {
    case Scalar::Int:
        return Deliver(ReadInteger(text_));
    case Scalar::Bool:
        return Deliver(text_ != "false" && text_ != "f" && text_ != "0");
    case Scalar::String:
        return Deliver(std::move(text_));
    }
}

void ValueBuilder::EndLevel() {
    const Level level = std::move(levels_.back());
    levels_.pop_back();
    if (level.structure) {
        Deliver(std::shared_ptr<MetaObject>(level.structure));
    } else {
        Deliver(std::shared_ptr<MetaObject>(level.list ? level.list
                                                       : NewListLike(level.listType, nullptr)));
    }
}

/// Hands a finished value to what it is in. Scalars stay what they are as long as they can.
template <typename Value>
void ValueBuilder::Deliver(Value&& value) {
    if (levels_.empty()) {
        value_ = ToObject(std::forward<Value>(value));
        return;
    }
    Level& level = levels_.back();
    if (level.structure) {
        level.structure->SetField(level.fieldName, std::forward<Value>(value));
        return;
    }
    const auto item = ToObject(std::forward<Value>(value));
    if (!level.list) {
        level.list = NewListLike(level.listType, item);
    }
    level.list->Add(item);
}

} // namespace CppTools::AutoCli
